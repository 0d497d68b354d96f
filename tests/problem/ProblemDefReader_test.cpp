#include "quillon/problem/LqProblemDefData.h"

#include "tests/problem/ProblemDefFileText.h"
#include "tests/problem/ProblemDefSamples.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/NoFreeDescriptors.h"
#include "tests/support/ScratchDirectory.h"
#include "tests/support/StatusChain.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string_view>

namespace quillon::test {
namespace {

using namespace std::string_literals;

using Names = std::vector<std::string>;
using Ids = std::vector<int>;

// --- Name fields ---------------------------------------------------------------------------------

struct NameCase {
    const char* what;
    std::string text;
    std::string name;
    std::string rest;
    StatusChain chain;
};

TEST(NameField, IsReadByColumnsOrByQuotes) {
    const StatusChain noClosingQuote = {error("Name has an opening quote but no closing quote.")};
    const NameCase cases[] = {
        {"20 columns", "Hips                rest", "Hips                ", "rest", {}},
        {"20 characters", "ABCDEFGHIJKLMNOPQRSTrest", "ABCDEFGHIJKLMNOPQRST", "rest", {}},
        {"ends its line early", "Hips\nrest", "Hips", "rest", {}},
        {"ends its line with a carriage return", "Hips\r\nrest", "Hips\r", "rest", {}},
        {"newline in column 20", "ABCDEFGHIJKLMNOPQRS\nrest", "ABCDEFGHIJKLMNOPQRS", "rest", {}},
        {"newline behind column 20", "ABCDEFGHIJKLMNOPQRST\nrest", "ABCDEFGHIJKLMNOPQRST", "\nrest", {}},
        {"newline in the first column", "\nHips\nrest", "\nHips", "rest", {}},
        {"ends the stream", "Hips", "Hips", "", {}},
        {"nothing", "", "", "", {}},
        {"quote behind the first column", " \"Hips\"             rest", " \"Hips\"             ", "rest", {}},
        {"quoted", "\"Hips\" rest", "Hips", "rest", {}},
        {"quoted, long", "\"" + std::string(3000, 'x') + "\" rest", std::string(3000, 'x'), "rest", {}},
        {"quoted, with blanks", "\"  Left Hip  \" rest", "  Left Hip  ", "rest", {}},
        {"quoted, empty", "\"\" rest", "", "rest", {}},
        {"high bytes",
         "H\xfc"
         "te\xa0               rest",
         "H\xfc"
         "te\xa0               ",
         "rest",
         {}},
        {"NUL", "Hi\0ps              "s + " rest", "Hi", "rest", {}},
        {"NUL in the first column", "\0Hips              "s + " rest", "", "rest", {}},
        {"quoted NUL", "\"Hi\0ps\" rest"s, "Hi", "rest", {}},
        {"quote and newline", "\"Hips\nrest", "", "rest", noClosingQuote},
        {"quote and the end of the stream", "\"Hips", "", "", noClosingQuote},
        {"quote alone", "\"", "", "", noClosingQuote},
        {"tab behind the quote",
         "\"Hips\"\trest",
         "",
         "rest",
         {error("No space after closing quote around body name Hips.\n")}},
        {"newline behind the quote",
         "\"Hips\"\nrest",
         "",
         "rest",
         {error("No space after closing quote around body name Hips.\n")}},
        {"nothing behind the quote",
         "\"Hips\"",
         "",
         "",
         {error("No space after closing quote around body name Hips.\n")}},
    };
    const CleanStatus clean;
    for (const NameCase& each : cases) {
        std::istringstream input(each.text);
        EXPECT_EQ(LqProblemDefData::readNameField(input).view(), each.name) << each.what;
        EXPECT_EQ(takeChain(), each.chain) << each.what;
        input.clear();
        EXPECT_EQ(std::string(std::istreambuf_iterator<char>(input), {}), each.rest) << each.what;
    }
}

/// A buffer that hands out one character at a time.
class DrippingBuffer : public std::streambuf {
public:
    explicit DrippingBuffer(std::string all) : text(std::move(all)) {}

protected:
    int_type underflow() override {
        if (next == text.size()) {
            return traits_type::eof();
        }
        char* const at = text.data() + next++;
        setg(at, at, at + 1);
        return traits_type::to_int_type(*at);
    }

private:
    std::string text;
    std::size_t next = 0;
};

TEST(NameField, IsReadFromAStreamThatArrivesInPieces) {
    const CleanStatus clean;
    DrippingBuffer buffer("ABCDEFGHIJKLMNOPQRST\"ABCDEFGHIJKLMNOPQRSTU\" Hips\nrest");
    std::istream input(&buffer);
    EXPECT_TRUE(LqProblemDefData::readNameField(input) == "ABCDEFGHIJKLMNOPQRST");
    EXPECT_TRUE(LqProblemDefData::readNameField(input) == "ABCDEFGHIJKLMNOPQRSTU");
    EXPECT_TRUE(LqProblemDefData::readNameField(input) == "Hips");
    EXPECT_EQ(input.get(), 'r');
}

// --- Whole definitions ---------------------------------------------------------------------------

const FileText figure = {
    "  3    # of variables -- var num, description\n"
    "    1    Hips X\n"
    "    2    \n"
    "    3  \t the  third\t \n",
    "  2    # of bodies, body names, parent names, graphics #, type\n"
    " Hips                ReferenceSystemZero       11   0\n"
    "    1   2   3   6   5   4\n"
    "   1\n"
    "   0\n"
    "  -1\n"
    " 0.500000\n"
    "  -3\n"
    " -2.250000\n"
    "    2   1.000000\n"
    "    3   -0.125000\n"
    "   3\n"
    "   0\n"
    " Hand                Hips                      -2   1  text behind the numbers\n"
    "    6   6   4   1   2   3  and here\n"
    "   0\n"
    "   0\n"
    "   0\n"
    "   0\n"
    "   0\n"
    "   0 and here\n"
    "   2 and here\n",
    "  2    # real markers, marker#, pred type #, weight, body name\n"
    "    1   7   0.500    Hips                \n"
    "    2   0   1.000    Hand\n",
    "  1    # fix markers, ID, weight, body name\n"
    "    3   2.000  Hips                and here\n",
    "  1    # double markers, ID, double ID, weight, body name\n"
    "    4   1   0.250    Hand                and here\n",
    "  1    # artificial pairs, pt1#, pt2#, weight, body1 name, body2 name\n"
    "    5   6  -0.750    Hips                    Hand                \n",
};

void fillFigure(LqProblemDefData& data) {
    addSysVar(data, 1, "Hips X");
    addSysVar(data, 2, "");
    addSysVar(data, 3, "the  third");
    LqPDDBodyMap& hips = data.addBody("Hips", "ReferenceSystemZero", 11);
    hips.setMapping(0, 1);
    hips.setMapping(2, constantMapping(0.5F));
    hips.setMapping(3, combination(-2.25F, {{2, 1.0F}, {3, -0.125F}}));
    hips.setMapping(4, 3);
    LqPDDBodyMap& hand = data.addBody("Hand", "Hips", -2);
    hand.type = 1;
    hand.typeOneVar = 2;
    const int order[] = {6, 6, 4, 1, 2, 3};
    std::copy(std::begin(order), std::end(order), hand.transformOrder.begin());
    data.addRealMarker(LqPDDRealMarker(1, 7, 0.5F, "Hips"));
    data.addRealMarker(LqPDDRealMarker(2, 0, 1.0F, "Hand"));
    addFixMarker(data, LqPDDFixMarker(3, 2.0F, "Hips"));
    addDoubleMarker(data, LqPDDDoubleMarker(4, 1, 0.25F, "Hand"));
    data.addArtificialMarker(LqPDDArtificialMarker(5, 6, -0.75F, "Hips", "Hand"));
}

TEST(ProblemDefReader, ReadsAllSections) {
    LqProblemDefData expected;
    fillFigure(expected);
    LqProblemDefData data;
    EXPECT_EQ(chainAfterReading(data, figure.text()), StatusChain{});
    EXPECT_TRUE(equals(data, expected));
}

TEST(ProblemDefReader, ReadsLinesThatEndWithCarriageReturns) {
    std::string text;
    for (const char c : figure.text()) {
        text += c == '\n' ? "\r\n"s : std::string(1, c);
    }
    LqProblemDefData expected;
    fillFigure(expected);
    LqProblemDefData data;
    EXPECT_EQ(chainAfterReading(data, text), StatusChain{});
    EXPECT_TRUE(equals(data, expected));
}

TEST(ProblemDefReader, ReadsAStreamThatArrivesInPieces) {
    const CleanStatus clean;
    DrippingBuffer buffer(figure.text());
    std::istream input(&buffer);
    LqProblemDefData expected;
    fillFigure(expected);
    LqProblemDefData data;
    EXPECT_TRUE(data.readProblemDefStream(input, false));
    EXPECT_TRUE(equals(data, expected));
}

TEST(ProblemDefReader, ReplacesWhatTheDefinitionHeld) {
    LqProblemDefData data;
    fillFigure(data);
    data.addGlobalDirectionMarker(LqPDDGlobalDirectionMarker());
    data.addInclude(LqPDDInclude("arm.prb"));
    EXPECT_EQ(chainAfterReading(data, FileText().text()), StatusChain{});
    EXPECT_TRUE(data.isBlank());
}

TEST(ProblemDefReader, ReadsOneSectionInPlaceOfAnother) {
    const CleanStatus clean;
    LqProblemDefData data;
    fillFigure(data);
    data.removeBody("Hips");
    std::istringstream input("1\n  8 0.5  Prop                \n  0\n");
    EXPECT_TRUE(data.readFixMarkers(input));
    EXPECT_EQ(idsOf(data.fixMarkers), Ids{8});
    EXPECT_TRUE(data.readBodies(input));
    EXPECT_EQ(data.bodies.count(), 0);
    EXPECT_EQ(takeChain(), StatusChain{});
}

TEST(ProblemDefReader, GoesOnAtTheNextSectionBehindACountOfZero) {
    LqProblemDefData data;
    EXPECT_EQ(chainAfterReading(data, header + "0 variables\n0\n1\n1 0 1    Hips\n0\n0\n0"), StatusChain{});
    EXPECT_EQ(idsOf(data.realMarkers), Ids{1});
}

TEST(ProblemDefReader, ReportsABadHeader) {
    const std::pair<const char*, StatusChain> cases[] = {
        {"", {error("File is not a Kym Problem Definition File"), error("Unable to read data file header.")}},
        {"Kym Model File\nv1.00\n",
         {error("File is not a Kym Problem Definition File"), error("Invalid datafile header id.")}},
        {"Kym Problem Definition File\nv2.00\n",
         {error("Unsupported datafile version 2.00. Application uses version 1.00.")}},
    };
    for (const auto& [text, chain] : cases) {
        LqProblemDefData data;
        fillFigure(data);
        EXPECT_EQ(chainAfterReading(data, text), chain) << text;
        EXPECT_TRUE(data.isBlank()) << text;
        std::istringstream input(text);
        EXPECT_FALSE(LqProblemDefData::readProblemDefHeader(input)) << text;
        currentStatus().clear();
    }
    std::istringstream input("Kym Problem Definition File, by hand\nx1.75\n");
    EXPECT_TRUE(LqProblemDefData::readProblemDefHeader(input));
}

// --- Cancelling ----------------------------------------------------------------------------------

/// A user who cancels when asked for the n-th time, counted from 1.
class CancellingUser {
public:
    explicit CancellingUser(int nthTime) : timesLeft(nthTime) {
        setCancelHook([](void* user) { return static_cast<CancellingUser*>(user)->ask(); }, this);
    }
    CancellingUser(const CancellingUser&) = delete;
    CancellingUser& operator=(const CancellingUser&) = delete;
    ~CancellingUser() { setCancelHook(nullptr, nullptr); }

    int timesAsked() const { return asked; }

private:
    int ask() {
        ++asked;
        return --timesLeft == 0 ? 1 : 0;
    }

    int timesLeft;
    int asked = 0;
};

std::string repeated(int count, const std::string& row) {
    std::string text = std::to_string(count) + "\n";
    for (int i = 0; i < count; ++i) {
        text += row;
    }
    return text;
}

std::string manyBodies(int count) {
    std::string text = std::to_string(count) + "\n";
    for (int i = 0; i < count; ++i) {
        text += bodyText("Body " + std::to_string(i), "Hips");
    }
    return text;
}

FileText crowd(int rows) {
    return {repeated(rows, "  1    x\n"),
            manyBodies(rows),
            repeated(rows, "1 0 1    Hips\n"),
            repeated(rows, "1 1  Hips                \n"),
            repeated(rows, "1 1 1    Hips                \n"),
            repeated(rows, "1 1 1    Hips                    Hand\n")};
}

Ids countsOf(const LqProblemDefData& data) {
    return {data.sysVars.count(),    data.bodies.count(),        data.realMarkers.count(),
            data.fixMarkers.count(), data.doubleMarkers.count(), data.artificialMarkers.count()};
}

TEST(ProblemDefReader, NeverAsksForACancelInASectionOfThreeRows) {
    CancellingUser user(1);
    LqProblemDefData data;
    EXPECT_EQ(chainAfterReading(data, crowd(3).text()), StatusChain{});
    EXPECT_EQ(user.timesAsked(), 0);
}

TEST(ProblemDefReader, AsksForACancelAfterTheFourthRecordAndEveryThirdOneAfterIt) {
    CancellingUser user(0);
    LqProblemDefData data;
    EXPECT_EQ(chainAfterReading(data, crowd(12).text()), StatusChain{});
    EXPECT_EQ(user.timesAsked(), 6 * 3);
    EXPECT_EQ(countsOf(data), (Ids{12, 12, 12, 12, 12, 12}));
}

TEST(ProblemDefReader, KeepsTheRecordsInFrontOfACancelAndReadsNoFurtherSection) {
    const int rows = 11;
    for (int section = 0; section < 6; ++section) {
        for (int time = 1; time <= 3; ++time) {
            CancellingUser user(3 * section + time);
            Ids counts(6, 0);
            std::fill_n(counts.begin(), section, rows);
            counts[static_cast<std::size_t>(section)] = 1 + 3 * time;
            LqProblemDefData data;
            EXPECT_EQ(chainAfterReading(data, crowd(rows).text()),
                      (StatusChain{warning("Read aborted."), error("Canceled.")}));
            EXPECT_EQ(countsOf(data), counts);
        }
    }
}

TEST(ProblemDefReader, ReportsTheFileThatACancelLeftUnread) {
    const CleanStatus clean;
    const support::ScratchDirectory scratch;
    const std::string path = scratch / "crowd.prb";
    support::writeBytes(path, crowd(5).text());
    CancellingUser user(2);
    LqProblemDefData data;
    EXPECT_FALSE(data.readProblemDefFile(path.c_str(), false));
    EXPECT_EQ(takeChain(), (StatusChain{error("Unable to read '" + path + "'."), warning("Read aborted."),
                                        error("Canceled.")}));
    EXPECT_EQ(countsOf(data), (Ids{5, 4, 0, 0, 0, 0}));
}

// --- Files ---------------------------------------------------------------------------------------

TEST(ProblemDefReader, ReadsAFile) {
    const CleanStatus clean;
    const support::ScratchDirectory scratch;
    const std::string path = scratch / "figure.prb";
    support::writeBytes(path, figure.text());
    LqProblemDefData data;
    EXPECT_TRUE(data.readProblemDefFile(path.c_str(), false));
    EXPECT_EQ(takeChain(), StatusChain{});
    LqProblemDefData expected;
    fillFigure(expected);
    EXPECT_TRUE(equals(data, expected));
}

TEST(ProblemDefReader, ReportsAFileThatIsNotThere) {
    const CleanStatus clean;
    const support::ScratchDirectory scratch;
    const std::string path = scratch / "missing.prb";
    LqProblemDefData data;
    EXPECT_FALSE(data.readProblemDefFile(path.c_str(), false));
    EXPECT_EQ(takeChain(),
              (StatusChain{error("Unable to open \"" + path + "\"."), error("File does not exist.")}));
}

TEST(ProblemDefReader, ReportsAFileThatDoesNotOpenAlthoughItMayBeRead) {
    const CleanStatus clean;
    const support::ScratchDirectory scratch;
    const std::string path = scratch / "figure.prb";
    support::writeBytes(path, figure.text());
    LqProblemDefData data;
    fillFigure(data);
    {
        const NoFreeDescriptors none;
        EXPECT_FALSE(data.readProblemDefFile(path.c_str(), false));
    }
    EXPECT_EQ(takeChain(), StatusChain{error("Unable to open '" + path + "'.")});
    EXPECT_EQ(namesOf(data.bodies), (Names{"Hips", "Hand"}));
}

TEST(ProblemDefReader, AnErrorThatStandsAlreadyStopsTheReadingBehindTheHeader) {
    const CleanStatus clean;
    pushError("earlier");
    LqProblemDefData data;
    fillFigure(data);
    std::istringstream input(figure.text());
    EXPECT_FALSE(data.readProblemDefStream(input, false));
    EXPECT_EQ(takeChain(), StatusChain{error("earlier")});
    EXPECT_TRUE(data.isBlank());
    pushWarning("earlier");
    std::istringstream again(figure.text());
    EXPECT_TRUE(data.readProblemDefStream(again, false));
    EXPECT_EQ(takeChain(), StatusChain{warning("earlier")});
    EXPECT_EQ(namesOf(data.bodies), (Names{"Hips", "Hand"}));
}

TEST(ProblemDefReader, ReportsTheFileOverItsDefect) {
    const CleanStatus clean;
    const support::ScratchDirectory scratch;
    const std::string path = scratch / "short.prb";
    support::writeBytes(path, header + "0\n");
    LqProblemDefData data;
    EXPECT_FALSE(data.readProblemDefFile(path.c_str(), false));
    EXPECT_EQ(takeChain(), (StatusChain{error("Unable to read '" + path + "'."),
                                        error("Unable to read number of bodies.")}));
}

TEST(ProblemDefReader, NeverReturnsWhenTheLastMappingHasNoNewline) {
    const std::string text = header + "0\n1\n" + bodyText("Hips", "ReferenceSystemZero");
    support::ChildOptions options;
    options.timeLimit = std::chrono::milliseconds(300);
    const support::ChildResult result = support::runFunction(
        [&text] {
            LqProblemDefData data;
            std::istringstream input(text.substr(0, text.size() - 1));
            data.readProblemDefStream(input, false);
        },
        options);
    EXPECT_EQ(result.outcome, "TIMEOUT");
}

} // namespace
} // namespace quillon::test
