#include "quillon/files/CompressionTools.h"

#include "tests/files/FileTestSupport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <thread>

namespace quillon {
namespace {

using test::chainOf;
using test::error;
using test::StatusChain;

TEST(CompressionTools, ReportAnUnknownKey) {
    LmStatus status;
    EXPECT_FALSE(startDecompression("bz2", "a.bz2", "pipe", status));
    EXPECT_EQ(test::takeChain(status), (StatusChain{error("Unknown compression extension 'bz2'.")}));
    EXPECT_FALSE(startCompression("GZ", "pipe", "a.GZ", status));
    EXPECT_EQ(test::takeChain(status), (StatusChain{error("Unknown compression extension 'GZ'.")}));
}

TEST(CompressionTools, TakeTheNamesIntoTheCommandLineAsTheyStand) {
    // Nothing but the line of the shell is run: a comment sign hides what the tools would do.
    const auto result = support::runFunction([] {
        LmStatus status;
        std::cout << startDecompression("gz", "/dev/null; echo 1 %s %d %%; #", "p", status);
        std::cout << startCompression("Z", "/dev/null >/dev/null; echo 2 %s; #", "a", status);
        std::cout << '\n';
        test::printChain(status);
    });
    EXPECT_EQ(result.outcome, "0");
    EXPECT_EQ(result.out, "1 %s %d %%\n2 %s\n11\n");
}

TEST(PipeNumbers, AreDrawnOnceEachFromAnyThread) {
    constexpr int drawnByEach = 1000;
    std::array<std::vector<std::int32_t>, 4> drawn;
    std::vector<std::thread> threads;
    for (std::vector<std::int32_t>& numbers : drawn) {
        threads.emplace_back([&numbers] {
            for (int i = 0; i < drawnByEach; ++i) {
                numbers.push_back(nextPipeNumber());
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    std::vector<std::int32_t> all;
    for (const std::vector<std::int32_t>& numbers : drawn) {
        all.insert(all.end(), numbers.begin(), numbers.end());
    }
    std::sort(all.begin(), all.end());
    EXPECT_EQ(all.back() - all.front(), 4 * drawnByEach - 1);
    EXPECT_EQ(std::adjacent_find(all.begin(), all.end()), all.end());
}

TEST(Pipe, IsOpenToTheUserAloneAndCanBeRemovedTwice) {
    LmStatus status;
    LmStr name = "";
    createPipe("compifstream", 7000, name, status);
    EXPECT_EQ(name, ("/var/tmp/compifstream7000." + std::to_string(getpid())).c_str());
    struct stat facts = {};
    ASSERT_EQ(stat(name.c_str(), &facts), 0);
    EXPECT_EQ(facts.st_mode, S_IFIFO | 0600U);
    removePipe(name);
    EXPECT_EQ(name, "");
    removePipe(name);
    EXPECT_EQ(test::pipesOf(), std::vector<std::string>{});
    EXPECT_EQ(chainOf(status), StatusChain{});
}

TEST(Pipe, ThatCannotBeMadeIsReportedAndNobodyElsesIsTakenAway) {
    LmStatus status;
    LmStr first = "";
    createPipe("compofstream", 7001, first, status);
    LmStr second = "";
    createPipe("compofstream", 7001, second, status);
    EXPECT_EQ(second, "");
    EXPECT_EQ(chainOf(status),
              (StatusChain{error("Unable to create named pipe \"" + std::string(first.c_str()) + "\"."),
                           error("File exists")}));
    removePipe(second);
    EXPECT_TRUE(test::isThere(first.c_str()));
    removePipe(first);
}

} // namespace
} // namespace quillon
