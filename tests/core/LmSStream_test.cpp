#include "quillon/core/LmSStream.h"

#include "quillon/core/LmStr.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/CommaLocale.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <ios>
#include <string>
#include <sys/resource.h>
#include <type_traits>

#if defined(__SANITIZE_ADDRESS__)
#define QUILLON_ADDRESS_SANITIZER 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define QUILLON_ADDRESS_SANITIZER 1
#endif
#endif

namespace quillon {
namespace {

using support::ChildResult;
using support::runFunction;

constexpr int endOfFile = std::char_traits<char>::eof();

/// Opens what a stream buffer keeps to itself.
class OpenBuf : public LmSStreamBuf {
public:
    using LmSStreamBuf::LmSStreamBuf;
    using LmSStreamBuf::overflow;
    using LmSStreamBuf::sync;
    using LmSStreamBuf::underflow;
};

/// Characters that tell their place.
std::string patternOf(std::size_t count) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i) {
        text += static_cast<char>('!' + i % 89);
    }
    return text;
}

// --- Writing -------------------------------------------------------------------------------------

TEST(LmOSStream, IsAnOutputStreamOnABlockOf1024Bytes) {
    LmOSStream output;
    EXPECT_TRUE((std::is_base_of_v<std::ostream, LmOSStream>));
    EXPECT_TRUE((std::is_base_of_v<LmSStreamBase, LmOSStream>));
    EXPECT_EQ(output.rdbuf()->size(), 1024);
    EXPECT_EQ(static_cast<std::ios&>(output).rdbuf(), output.rdbuf());
    EXPECT_STREQ(output.str(), "");
    EXPECT_TRUE(output.good());
}

TEST(LmOSStream, HasTheFormatOfANewStream) {
    LmOSStream output;
    output << 42 << ' ' << 1.0 / 3.0 << ' ' << 1234567.0F << ' ' << 0.1F << ' ' << true << ' ' << -7L;
    EXPECT_STREQ(output.str(), "42 0.333333 1.23457e+06 0.1 1 -7");
    EXPECT_EQ(output.precision(), 6);
    EXPECT_EQ(output.flags(), std::ios::skipws | std::ios::dec);
}

TEST(MemoryStreams, WriteAndReadAPointUnderALocaleWithADecimalComma) {
    const test::CommaLocale comma;
    LmOSStream output;
    output << 1234.5 << ' ' << 1000000;
    EXPECT_STREQ(output.str(), "1234.5 1000000");
    LmISStream input("1234.5 7");
    double real = 0;
    int integer = 0;
    EXPECT_TRUE(input >> real >> integer);
    EXPECT_EQ(real, 1234.5);
    EXPECT_EQ(integer, 7);
}

TEST(LmOSStream, WritesStrings) {
    LmOSStream output;
    output << LmStr("abc") << "def" << 'g' << std::flush << std::endl;
    EXPECT_STREQ(output.str(), "abcdefg\n");
    EXPECT_TRUE(output.good());
}

TEST(LmOSStream, AFullBlockGrowsForTheTerminator) {
    LmOSStream output;
    const std::string text = patternOf(1024);
    output << text;
    EXPECT_EQ(output.rdbuf()->size(), 1024);
    EXPECT_EQ(output.str(), text);
    EXPECT_EQ(output.rdbuf()->size(), 2048);
    EXPECT_EQ(output.str()[1024], '\0');
    EXPECT_EQ(output.rdbuf()->writtenCount(), 1024U);
    EXPECT_EQ(output.str(), text);
    EXPECT_EQ(output.rdbuf()->size(), 2048) << "the write position stands at the end no more";
}

TEST(LmOSStream, OneCharacterLessDoesNotGrow) {
    LmOSStream output;
    output << patternOf(1023);
    EXPECT_EQ(output.str(), patternOf(1023));
    EXPECT_EQ(output.rdbuf()->size(), 1024);
}

TEST(LmOSStream, GrowsBySteps) {
    const std::string text = patternOf(10000);
    LmOSStream whole;
    whole << text.substr(0, 2500);
    EXPECT_EQ(whole.rdbuf()->size(), 3072);
    EXPECT_EQ(whole.str(), text.substr(0, 2500));
    LmOSStream oneByOne;
    for (std::size_t i = 0; i < text.size(); ++i) {
        oneByOne << text[i];
        ASSERT_EQ(oneByOne.rdbuf()->writtenCount(), i + 1);
        if (i % 1000 == 0) {
            ASSERT_EQ(oneByOne.str(), text.substr(0, i + 1));
        }
    }
    EXPECT_EQ(oneByOne.str(), text);
    EXPECT_EQ(oneByOne.rdbuf()->size(), 10240);
}

TEST(LmOSStream, WritingGoesOnAtTheTerminator) {
    LmOSStream output;
    output << "abc";
    EXPECT_STREQ(output.str(), "abc");
    output << "def";
    EXPECT_STREQ(output.str(), "abcdef");
    output << patternOf(1018);
    EXPECT_EQ(output.str(), "abcdef" + patternOf(1018));
    output << "next";
    EXPECT_EQ(output.str(), "abcdef" + patternOf(1018) + "next");
}

TEST(LmOSStream, CannotBeSoughtIn) {
    LmOSStream output;
    output << "abc";
    EXPECT_EQ(output.tellp(), std::streampos(-1));
}

TEST(LmOSStream, PresetsItsText) {
    LmOSStream output;
    output << "what was there before";
    output.presetText("abc");
    EXPECT_STREQ(output.str(), "abc");
    EXPECT_EQ(output.rdbuf()->writtenCount(), 3U);
    EXPECT_EQ(output.rdbuf()->size(), 1024);
    output << "def";
    EXPECT_STREQ(output.str(), "abcdef");
    output.presetText("");
    EXPECT_STREQ(output.str(), "");
    output << patternOf(3000);
    EXPECT_EQ(output.str(), patternOf(3000));
    output.presetText("short");
    output << patternOf(3067);
    EXPECT_EQ(output.str(), "short" + patternOf(3067));
}

TEST(LmOSStream, APresetTextGrowsTheBlockToItsOwnLength) {
    const struct {
        std::size_t length;
        int size;
    } cases[] = {{1023, 1024}, {1024, 1024}, {1025, 1025}, {5000, 5000}};
    for (const auto& each : cases) {
        LmOSStream output;
        output.presetText(patternOf(each.length).c_str());
        EXPECT_EQ(output.rdbuf()->size(), each.size);
        output << "x";
        EXPECT_EQ(output.str(), patternOf(each.length) + "x");
    }
}

TEST(LmSStreamBuf, OverflowWithRoomLeftStoresNothing) {
    OpenBuf buffer;
    EXPECT_EQ(buffer.overflow('x'), 0);
    EXPECT_STREQ(buffer.str(), "");
    EXPECT_EQ(buffer.size(), 1024);
}

TEST(LmSStreamBuf, OverflowOfAFullBlockGrows) {
    OpenBuf buffer;
    const std::string text = patternOf(1024);
    buffer.sputn(text.data(), 1024);
    EXPECT_EQ(buffer.overflow('x'), 'x');
    EXPECT_EQ(buffer.size(), 2048);
    EXPECT_EQ(buffer.writtenCount(), 1025U);
    EXPECT_EQ(buffer.str(), text + "x");
    EXPECT_EQ(buffer.overflow('y'), 0);
    EXPECT_EQ(buffer.str(), text + "x");
}

TEST(LmSStreamBuf, OverflowWithoutACharacterGrowsOnly) {
    OpenBuf buffer;
    buffer.sputn(patternOf(1024).data(), 1024);
    buffer.overflow(endOfFile);
    EXPECT_EQ(buffer.size(), 2048);
    EXPECT_EQ(buffer.writtenCount(), 1024U);
    EXPECT_EQ(buffer.str(), patternOf(1024));
}

TEST(LmSStreamBuf, SyncsAndNeverRefills) {
    OpenBuf buffer;
    EXPECT_EQ(buffer.sync(), 0);
    EXPECT_EQ(buffer.pubsync(), 0);
    EXPECT_EQ(buffer.underflow(), endOfFile);
    buffer.sputn("abc", 3);
    EXPECT_EQ(buffer.underflow(), endOfFile);
    EXPECT_EQ(buffer.sgetc(), endOfFile);
}

TEST(LmSStreamBuf, HighBytesAreCharacters) {
    OpenBuf buffer;
    const std::string text(3000, '\xFF');
    EXPECT_EQ(buffer.sputn(text.data(), 3000), 3000);
    EXPECT_EQ(buffer.str(), text);
    LmISStream input(text.c_str());
    EXPECT_EQ(input.get(), 0xFF);
}

TEST(LmSStreamBuf, DumpsWhatTheWriteAreaHolds) {
    const struct {
        std::size_t written;
        std::string dump;
    } cases[] = {{0, ""},
                 {3, patternOf(3)},
                 {1024, patternOf(1024)},
                 // A growth moves the start of the write area behind the character that caused it.
                 {1025, ""},
                 {1030, patternOf(1030).substr(1025)}};
    for (const auto& each : cases) {
        const ChildResult result = runFunction([&each] {
            LmOSStream output;
            output << patternOf(each.written);
            output.rdbuf()->dumpBuffer();
        });
        EXPECT_EQ(result.outcome, "0");
        EXPECT_EQ(result.err, "Buffer is '" + each.dump + "'\n");
    }
    const ChildResult afterStr = runFunction([] {
        LmOSStream output;
        output << patternOf(1024);
        output.str();
        output << "abc";
        output.rdbuf()->dumpBuffer();
    });
    EXPECT_EQ(afterStr.err, "Buffer is 'abc'\n");
}

// --- Reading -------------------------------------------------------------------------------------

TEST(LmISStream, ReadsTheTextWithoutCopyingIt) {
    char text[] = "12 word";
    LmISStream input(text);
    EXPECT_EQ(input.rdbuf()->size(), 0);
    text[1] = '9';
    int number = 0;
    std::string word;
    input >> number >> word;
    EXPECT_EQ(number, 19);
    EXPECT_EQ(word, "word");
    EXPECT_TRUE(input.eof());
    EXPECT_FALSE(input.fail());
    EXPECT_EQ(input.get(), endOfFile);
    EXPECT_TRUE(input.fail());
}

TEST(LmISStream, OnAnEmptyTextIsAtTheEnd) {
    LmISStream input("");
    EXPECT_TRUE(input.good());
    std::string word;
    input >> word;
    EXPECT_EQ(input.rdstate(), std::ios::eofbit | std::ios::failbit);
}

TEST(LmISStream, EndsAtTheTerminatorOrAtTheLength) {
    LmISStream terminated("ab\0cd");
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(terminated), {}), "ab");
    LmISStream counted("abcdef", 3);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(counted), {}), "abc");
}

TEST(LmISStream, PutsBackWhatWasRead) {
    LmISStream input("ab");
    EXPECT_EQ(input.get(), 'a');
    input.unget();
    EXPECT_EQ(input.get(), 'a');
    input.putback('a');
    EXPECT_EQ(input.peek(), 'a');
}

TEST(LmISStream, HasNoBlock) {
    LmISStream input("abc");
    EXPECT_EQ(input.rdbuf()->str(), nullptr);
    input.rdbuf()->presetText("other");
    EXPECT_EQ(input.get(), 'a') << "presetting does nothing without a block";
}

// --- Ends of the process -------------------------------------------------------------------------

TEST(LmSStreamAbort, WritingWithoutABlockAborts) {
    const ChildResult result = runFunction([] {
        LmISStream input("abc");
        input.rdbuf()->sputc('x');
    });
    EXPECT_EQ(result.outcome, "SIGABRT");
    EXPECT_EQ(result.err, "\nUnable to allocate stream buffer, aborting.\n");
    EXPECT_EQ(result.out, "");
}

TEST(LmSStreamAbort, WritingWithoutABlockMayFailInstead) {
    OpenBuf buffer("abc", 3);
    buffer.setAbortOnFailure(false);
    EXPECT_EQ(buffer.overflow('x'), endOfFile);
    EXPECT_EQ(buffer.sputc('x'), endOfFile);
}

#ifndef QUILLON_ADDRESS_SANITIZER

/// Takes all memory that there is to be had in blocks of the given size and below.
void useUpMemory() {
    const rlimit limit{1, 1};
    setrlimit(RLIMIT_AS, &limit);
    for (std::size_t size = std::size_t{1} << 20; size >= 512; size /= 2) {
        // Volatile, or the optimiser drops blocks that nobody looks at.
        void* volatile block = nullptr;
        do {
            block = std::malloc(size);
        } while (block != nullptr);
    }
}

TEST(LmSStreamAbort, WithoutMemoryForTheFirstBlock) {
    const ChildResult unused = runFunction([] {
        useUpMemory();
        const LmOSStream output;
    });
    EXPECT_EQ(unused.outcome, "0") << "only the first character ends the process";
    const ChildResult used = runFunction([] {
        useUpMemory();
        LmOSStream output;
        output << 'x';
    });
    EXPECT_EQ(used.outcome, "SIGABRT");
    EXPECT_EQ(used.err, "\nUnable to allocate stream buffer, aborting.\n");
}

TEST(LmSStreamAbort, WithoutMemoryToGrow) {
    const ChildResult result = runFunction([] {
        const std::string text = patternOf(1024);
        LmOSStream output;
        output << text;
        useUpMemory();
        output << 'x';
    });
    EXPECT_EQ(result.outcome, "SIGABRT");
    EXPECT_EQ(result.err, "\nUnable to increase stream buffer size, aborting.\n");
    EXPECT_EQ(result.out, "");
}

TEST(LmSStreamAbort, GrowingMayFailInstead) {
    const ChildResult result = runFunction([] {
        const std::string text = patternOf(1024);
        LmOSStream output;
        output.rdbuf()->setAbortOnFailure(false);
        output << text;
        useUpMemory();
        output << 'x';
        if (output.bad() && output.rdbuf()->writtenCount() == 1024) {
            std::_Exit(7);
        }
    });
    EXPECT_EQ(result.outcome, "7");
}

#endif

} // namespace
} // namespace quillon
