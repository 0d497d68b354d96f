#include "quillon/problem/LqProblemDefData.h"

#include "tests/problem/ProblemDefFileText.h"
#include "tests/problem/ProblemDefSamples.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/StatusChain.h"

#include <gtest/gtest.h>

#include <sstream>

namespace quillon::test {
namespace {

using namespace std::string_literals;

using Names = std::vector<std::string>;
using Ids = std::vector<int>;

// What each row of the six sections may hold, and what is said of one that is not right.

// --- System variables ----------------------------------------------------------------------------

struct DefectCase {
    const char* what;
    std::string section;
    StatusChain chain;
    int completed;
};

TEST(ProblemDefReader, ReportsDefectsOfSystemVariables) {
    const DefectCase cases[] = {
        {"no count", "", {error("Unable to read number of system variables.")}, 0},
        {"a word", "x\n", {error("Unable to read number of system variables.")}, 0},
        {"too large", "2147483648\n", {error("Unable to read number of system variables.")}, 0},
        {"no row", "2\n", {error("Unable to read system variable id.")}, 0},
        {"one row", "2\n 1 x\n", {error("Unable to read system variable id.")}, 1},
        {"an id that is a word", "2\n 1 x\n x x\n", {error("Unable to read system variable id.")}, 1},
        {"nothing behind the id", "2\n 1 x\n 2", {error("Unable to read system variable description.")}, 1},
        {"80 characters behind the id",
         "2\n 1 x\n 2" + std::string(80, 'x') + "\n",
         {error("Unable to read system variable description.")},
         1},
    };
    for (const DefectCase& each : cases) {
        LqProblemDefData data;
        EXPECT_EQ(chainAfterReading(data, header + each.section), each.chain) << each.what;
        EXPECT_EQ(data.sysVars.count(), each.completed) << each.what;
    }
}

TEST(ProblemDefReader, ReadsDescriptionsOfUpTo79CharactersWithTheirBlanks) {
    FileText file;
    file.sysVars = "4\n  1    " + std::string(75, 'x') + "\n2\n3 H\xfc\xa0\n4 a\0b\n"s;
    LqProblemDefData data;
    EXPECT_EQ(chainAfterReading(data, file.text()), StatusChain{});
    EXPECT_TRUE(data.sysVars[0]->description == std::string(75, 'x').c_str());
    EXPECT_TRUE(data.sysVars[1]->description == "");
    EXPECT_TRUE(data.sysVars[2]->description == "H\xfc\xa0");
    EXPECT_TRUE(data.sysVars[3]->description == "a");
}

TEST(ProblemDefReader, EndsTheProcessForANegativeNumberOfVariablesOrBodies) {
    const std::string texts[] = {header + "-1\n", header + "0\n-1\n"};
    for (const std::string& text : texts) {
        const support::ChildResult result = support::runFunction([&text] {
            LqProblemDefData data;
            std::istringstream input(text);
            data.readProblemDefStream(input, false);
        });
        EXPECT_EQ(result.outcome, "SIGABRT");
        EXPECT_EQ(result.err, "\nUnable to allocate memory!\nAttempted to allocate -1 elements, total size: "
                              "18446744073709551608.\n\n");
    }
}

TEST(ProblemDefReader, FailsFastOnACountFarAboveTheRows) {
    FileText variables;
    variables.sysVars = "50000000\n 1 x\n x\n";
    EXPECT_EQ(chainAfterReading(variables), StatusChain{error("Unable to read system variable id.")});
    FileText bodies;
    bodies.bodies = "50000000\n";
    bodies.realMarkers.clear();
    bodies.fixMarkers.clear();
    bodies.doubleMarkers.clear();
    bodies.artificialMarkers.clear();
    EXPECT_EQ(chainAfterReading(bodies), StatusChain{error("Unable to read body name.")});
    FileText markers;
    markers.realMarkers = "50000000\n x\n";
    EXPECT_EQ(chainAfterReading(markers),
              StatusChain{error("Unable to read Real marker ID, prediction type and weight.")});
}

// --- Bodies --------------------------------------------------------------------------------------

TEST(ProblemDefReader, ReportsDefectsOfBodies) {
    const std::string firstBody = bodyText("Hips", "ReferenceSystemZero");
    const std::string head = " Hand                Hips                       2   0\n";
    const DefectCase cases[] = {
        {"no count", "", {error("Unable to read number of bodies.")}, 0},
        {"no row", "2\n" + firstBody, {error("Unable to read body name.")}, 1},
        {"no parent", "2\n" + firstBody + " Hand", {error("Unable to read parent name.")}, 1},
        {"tab behind the quoted name",
         "2\n" + firstBody + " \"Hand\"\tHips                       2   0\n",
         {error("Unable to read body name."), error("No space after closing quote around body name Hand.\n")},
         1},
        {"open quote of the parent",
         "2\n" + firstBody + " Hand                \"Hips                      2   0\n",
         {error("Unable to read parent name."), error("Name has an opening quote but no closing quote.")},
         1},
        {"number is a word",
         "2\n" + firstBody + " Hand                Hips                       x   0\n",
         {error("Unable to read body id and type number for body Hand                \n.")},
         1},
        {"type is a word",
         "2\n" + firstBody + " \"Hand \" Hips                       2   x\n",
         {error("Unable to read body id and type number for body Hand \n.")},
         1},
        {"order entry of 7",
         "2\n" + firstBody + head + " 1 2 3 7 5 4\n" + sixNoMappings,
         {error("Unable to read transformation order for body Hand                ."),
          error("Invalid transformation 7 specified in transformation order.")},
         1},
        {"order entry of 0",
         "2\n" + firstBody + head + " 0 2 3 6 5 4\n" + sixNoMappings,
         {error("Unable to read transformation order for body Hand                ."),
          error("Invalid transformation 0 specified in transformation order.")},
         1},
        {"order entry is a word",
         "2\n" + firstBody + head + " 1 2 3 6 5 x\n" + sixNoMappings,
         {error("Unable to read transformation order for body Hand                ."),
          error("Invalid transformation 0 specified in transformation order.")},
         1},
        {"order ends with the file",
         "2\n" + firstBody + head + " 1 2 3",
         {error("Unable to read transformation order for body Hand                ."),
          error("Invalid transformation 0 specified in transformation order.")},
         1},
        {"third mapping",
         "2\n" + firstBody + head + usualOrder + noMapping + noMapping + "-2 0.5 1 1\n",
         {error("Unable to read transformation 3 for body Hand                ."),
          error("Unable to read linear combination term 1."),
          error("Invalid system variable (1) in linear combination term.  The highest variable is 0.")},
         1},
        {"type one variable",
         "2\n" + firstBody + " Hand                Hips                       2   1\n" + usualOrder +
             sixNoMappings + "x\n",
         {error("Unable to read type one variable")},
         1},
        {"type two variable",
         "2\n" + firstBody + " Hand                Hips                       2   3\n" + usualOrder +
             sixNoMappings + "1\nx\n",
         {error("Unable to read type two variable")},
         1},
        {"name of blanks",
         "2\n" + firstBody + bodyText("", "Hips", "       7   0\n"),
         {error("Body with ID 7 has no name.")},
         1},
        {"parent of blanks",
         "2\n" + firstBody + bodyText("Hand", "", "      -7   0\n"),
         {error("Body with ID -7 has no parent name.")},
         1},
        {"name known with other blanks around it",
         "2\n" + firstBody + bodyText("  Hips", "x"),
         {error("Multiple bodies are named \"Hips\".")},
         1},
        {"name known and no parent",
         "2\n" + firstBody + bodyText("Hips", ""),
         {error("Multiple bodies are named \"Hips\".")},
         1},
    };
    for (const DefectCase& each : cases) {
        LqProblemDefData data;
        EXPECT_EQ(chainAfterReading(data, header + "0\n" + each.section), each.chain) << each.what;
        EXPECT_EQ(namesOf(data.bodies), each.completed == 1 ? Names{"Hips"} : Names{}) << each.what;
        EXPECT_EQ(data.bodies.count(), each.completed) << each.what;
    }
}

TEST(ProblemDefReader, TakesNamesThatDifferInCaseForTwoBodies) {
    FileText file;
    file.bodies = "2\n" + bodyText("Hips", "ReferenceSystemZero") + bodyText("hips", "Hips");
    LqProblemDefData data;
    EXPECT_EQ(chainAfterReading(data, file.text()), StatusChain{});
    EXPECT_EQ(namesOf(data.bodies), (Names{"Hips", "hips"}));
}

TEST(ProblemDefReader, ReadsOneLineForEachBitOfABodysType) {
    struct TypeCase {
        const char* type;
        const char* lines;
        int typeOneVar;
        int typeTwoVar;
    };
    const TypeCase cases[] = {
        {"0", "", 0, 0}, {"1", " 5 one\n", 5, 0}, {"2", " 6 two\n", 0, 6}, {"3", " 5 one\n 6 two\n", 5, 6},
        {"4", "", 0, 0}, {"7", "5\n6\n", 5, 6},   {"-1", "5\n6\n", 5, 6}};
    for (const TypeCase& each : cases) {
        FileText file;
        file.bodies = "2\n" + bodyText("Hips", "ReferenceSystemZero", "1 "s + each.type + "\n") + each.lines +
                      bodyText("Hand", "Hips");
        LqProblemDefData data;
        EXPECT_EQ(chainAfterReading(data, file.text()), StatusChain{}) << each.type;
        EXPECT_EQ(namesOf(data.bodies), (Names{"Hips", "Hand"})) << each.type;
        EXPECT_EQ(data.bodies[0]->typeOneVar, each.typeOneVar) << each.type;
        EXPECT_EQ(data.bodies[0]->typeTwoVar, each.typeTwoVar) << each.type;
    }
}

TEST(ProblemDefReader, SkipsOneCharacterOfAnyKindInFrontOfABody) {
    FileText file;
    file.bodies = "2\n" + bodyText("Hips", "ReferenceSystemZero") + bodyText("Hand", "Hips");
    file.bodies.replace(file.bodies.find(" Hand"), 1, "x");
    LqProblemDefData data;
    EXPECT_EQ(chainAfterReading(data, file.text()), StatusChain{});
    EXPECT_EQ(namesOf(data.bodies), (Names{"Hips", "Hand"}));
}

TEST(ProblemDefReader, ReadsNamesThatTouchAndQuotedNames) {
    FileText file;
    file.bodies = "2\n"
                  " ABCDEFGHIJKLMNOPQRSTReferenceSystemZero        1   0\n" +
                  usualOrder + sixNoMappings +
                  " \"ABCDEFGHIJKLMNOPQRSTU\" ABCDEFGHIJKLMNOPQRST       2   0\n" + usualOrder +
                  sixNoMappings;
    LqProblemDefData data;
    EXPECT_EQ(chainAfterReading(data, file.text()), StatusChain{});
    EXPECT_EQ(namesOf(data.bodies), (Names{"ABCDEFGHIJKLMNOPQRST", "ABCDEFGHIJKLMNOPQRSTU"}));
    EXPECT_TRUE(data.bodies[1]->parentName == "ABCDEFGHIJKLMNOPQRST");
}

TEST(ProblemDefReader, NamesABodyOfAnyLengthInItsErrors) {
    const std::string name(3000, 'x');
    FileText file;
    file.bodies = "1\n \"" + name + "\" Hips                 x\n";
    EXPECT_EQ(chainAfterReading(file),
              StatusChain{error("Unable to read body id and type number for body " + name + "\n.")});
}

// --- Markers -------------------------------------------------------------------------------------

struct MarkerDefectCase {
    const char* what;
    std::string FileText::*section;
    std::string text;
    StatusChain chain;
    int completed;
};

TEST(ProblemDefReader, ReportsDefectsOfMarkers) {
    const StatusChain openQuote = {error("Name has an opening quote but no closing quote.")};
    const auto below = [](StatusChain chain, const char* text) {
        chain.insert(chain.begin(), error(text));
        return chain;
    };
    const MarkerDefectCase cases[] = {
        {"real count", &FileText::realMarkers, "x\n", {error("Unable to read number of Real markers.")}, 0},
        {"real count below 0",
         &FileText::realMarkers,
         "-1\n",
         {error("The number of Real markers must be specified by a positive integer.")},
         0},
        {"real weight",
         &FileText::realMarkers,
         "2\n1 0 1    Hips\n2 0 x    Hips\n",
         {error("Unable to read Real marker ID, prediction type and weight.")},
         1},
        {"real prediction type",
         &FileText::realMarkers,
         "2\n1 0 1    Hips\n2 x 1    Hips\n",
         {error("Unable to read Real marker ID, prediction type and weight.")},
         1},
        {"real name", &FileText::realMarkers, "2\n1 0 1    Hips\n2 0 1    \"Hips\n",
         below(openQuote, "Unable to read Real marker body name."), 1},
        {"fix count", &FileText::fixMarkers, "x\n", {error("Unable to read number of Fix markers.")}, 0},
        {"fix count below 0",
         &FileText::fixMarkers,
         "-1\n",
         {error("The number of Fix markers must be specified by a positive integer.")},
         0},
        {"fix weight",
         &FileText::fixMarkers,
         "2\n1 1  Hips\n                2 x  Hips\n",
         {error("Unable to read Fix marker ID and weight.")},
         1},
        {"fix name", &FileText::fixMarkers, "2\n1 1  Hips                \n2 1  \"Hips\n",
         below(openQuote, "Unable to read Fix marker body name."), 1},
        {"double count",
         &FileText::doubleMarkers,
         "x\n",
         {error("Unable to read number of Double markers.")},
         0},
        {"double count below 0",
         &FileText::doubleMarkers,
         "-2\n",
         {error("The number of Double markers must be specified by a positive integer.")},
         0},
        {"double id",
         &FileText::doubleMarkers,
         "2\n1 9 1    Hips                \n2 x 1    Hips\n",
         {error("Unable to read Double marker ID, double ID and weight.")},
         1},
        {"double name", &FileText::doubleMarkers, "2\n1 9 1    Hips                \n2 9 1    \"Hips\n",
         below(openQuote, "Unable to read Double marker body name."), 1},
        {"artificial count",
         &FileText::artificialMarkers,
         "x\n",
         {error("Unable to read number of artificial markers.")},
         0},
        {"artificial count below 0",
         &FileText::artificialMarkers,
         "-1\n",
         {error("The number of Artificial markers must be specified by a positive integer.")},
         0},
        {"artificial weight",
         &FileText::artificialMarkers,
         "2\n1 9 1    Hips                    Hand\n2 9\n",
         {error("Unable to read Artificial marker IDs and weight.")},
         1},
        {"artificial name", &FileText::artificialMarkers,
         "2\n1 9 1    Hips                    Hand\n2 9 1    \"Hips\n",
         below(openQuote, "Unable to read Artificial marker body name."), 1},
        {"artificial other name",
         &FileText::artificialMarkers,
         "2\n1 9 1    Hips                    Hand\n2 9 1    Hips                ",
         {error("Unable to read Artificial marker other body name.")},
         1},
    };
    for (const MarkerDefectCase& each : cases) {
        FileText file;
        file.*each.section = each.text;
        const std::string text = file.text();
        // Sections behind the defect are not there, so that a reader that went on would report them.
        const std::string untilDefect = text.substr(0, text.find(each.text) + each.text.size());
        LqProblemDefData data;
        EXPECT_EQ(chainAfterReading(data, untilDefect), each.chain) << each.what;
        EXPECT_EQ(data.realMarkers.count() + data.fixMarkers.count() + data.doubleMarkers.count() +
                      data.artificialMarkers.count(),
                  each.completed)
            << each.what;
    }
}

TEST(ProblemDefReader, StopsAfterTheRealMarkersWhenThereAreMinusOneFixMarkers) {
    const CleanStatus clean;
    LqProblemDefData data;
    std::istringstream input("1\n1 0 1    Hips\n-1\n1\n1 1 1    Hips\n");
    EXPECT_FALSE(data.readMarkers(input));
    EXPECT_EQ(takeChain(),
              StatusChain{error("The number of Fix markers must be specified by a positive integer.")});
    EXPECT_EQ(idsOf(data.realMarkers), Ids{1});
    EXPECT_EQ(data.doubleMarkers.count(), 0);
}

TEST(ProblemDefReader, ReadsMarkerNamesThatEndTheirLines) {
    FileText file;
    file.realMarkers = "3\n1 0 1    Hips\n2 0 1    ABCDEFGHIJKLMNOPQRST\n3 0 1    \"Left Hand\" \n";
    file.artificialMarkers = "1\n4 5 1    Hips                    Hand\n";
    LqProblemDefData data;
    EXPECT_EQ(chainAfterReading(data, file.text()), StatusChain{});
    EXPECT_TRUE(data.realMarkers[0]->bodyName == "Hips");
    EXPECT_TRUE(data.realMarkers[1]->bodyName == "ABCDEFGHIJKLMNOPQRST");
    EXPECT_TRUE(data.realMarkers[2]->bodyName == "Left Hand");
    EXPECT_TRUE(data.artificialMarkers[0]->otherBodyName == "Hand");
}

TEST(ProblemDefReader, DropsTheLineBehindAFixMarkersNameThatEndsItsLine) {
    FileText file;
    file.fixMarkers = "2\n1 1  Hips\ndropped\n2 1  Hand                \n";
    LqProblemDefData data;
    EXPECT_EQ(chainAfterReading(data, file.text()), StatusChain{});
    EXPECT_EQ(idsOf(data.fixMarkers), (Ids{1, 2}));
}

TEST(ProblemDefReader, StoresAMarkerWhoseNameIsBlank) {
    FileText file;
    file.realMarkers = "1\n    1   0   1.000                        \n";
    file.artificialMarkers = "1\n    1   2   1.000                                                \n";
    LqProblemDefData data;
    EXPECT_EQ(chainAfterReading(data, file.text()), StatusChain{});
    EXPECT_TRUE(data.realMarkers[0]->bodyName == "");
    EXPECT_TRUE(data.artificialMarkers[0]->bodyName == "");
    EXPECT_TRUE(data.artificialMarkers[0]->otherBodyName == "");
}

TEST(ProblemDefReader, SkipsCountedCharactersWhateverTheyAre) {
    FileText file;
    file.realMarkers = "1\n1 0 1.5\n###Hips                \n";
    file.fixMarkers = "1\n1 1.5;;Hips                \n";
    LqProblemDefData data;
    EXPECT_EQ(chainAfterReading(data, file.text()), StatusChain{});
    EXPECT_TRUE(data.realMarkers[0]->bodyName == "Hips");
    EXPECT_TRUE(data.fixMarkers[0]->bodyName == "Hips");
}

TEST(ProblemDefReader, TakesAnyIdsAndNarrowsWeights) {
    FileText file;
    file.realMarkers = "3\n-5 0 0.1    Hips\n-5 0 1e39    Hips\n2147483647 0 1e-60    Hips\n";
    LqProblemDefData data;
    EXPECT_EQ(chainAfterReading(data, file.text()), StatusChain{});
    EXPECT_EQ(idsOf(data.realMarkers), (Ids{-5, -5, 2147483647}));
    EXPECT_EQ(data.realMarkers[0]->weight, static_cast<float>(0.1));
    EXPECT_EQ(data.realMarkers[1]->weight, std::numeric_limits<float>::infinity());
    EXPECT_EQ(data.realMarkers[2]->weight, 0.0F);
}

// --- The rest of a line --------------------------------------------------------------------------

/// A line's text and what follows it, with its newline 80 characters.
const std::string comment = " " + std::string(78, 'c') + "\n";

TEST(ProblemDefReader, SkipsTheRestOfALineUpTo80Characters) {
    FileText file;
    file.sysVars = "1" + comment + "  1    x\n";
    file.bodies = "1" + comment + " Hips                ReferenceSystemZero        1   3" + comment +
                  "    1   2   3   6   5   4" + comment + sixNoMappings + "   1" + comment + "   1" + comment;
    file.realMarkers = "1" + comment + "1 0 1    Hips\n";
    file.fixMarkers = "2" + comment + "2 1  Hips                " + comment + "3 1  \"Hips\" " + comment;
    file.doubleMarkers =
        "2" + comment + "4 1 1    Hips                " + comment + "5 1 1    \"Hips\" " + comment;
    file.artificialMarkers = "1" + comment + "6 7 1    Hips                    Hips\n";
    LqProblemDefData data;
    EXPECT_EQ(chainAfterReading(data, file.text()), StatusChain{});
    EXPECT_EQ(namesOf(data.bodies), Names{"Hips"});
    EXPECT_EQ(idsOf(data.fixMarkers), (Ids{2, 3}));
    EXPECT_EQ(idsOf(data.doubleMarkers), (Ids{4, 5}));
    EXPECT_EQ(pairIdsOf(data), (std::vector<std::pair<int, int>>{{6, 7}}));
}

TEST(ProblemDefReader, ReadsTheEightyFirstCharacterBehindTheDataOfALineAsData) {
    // 80 characters are skipped, so that the next count or row stands behind them on the same line.
    const std::string skipped(80, 'c');
    FileText file;
    file.sysVars = "0" + skipped;
    file.fixMarkers = "1" + skipped + "2 1  Hips                " + skipped;
    file.doubleMarkers = "1\n4 1 1    Hips                " + skipped;
    file.artificialMarkers = "1" + skipped + "6 7 1    Hips                    Hips\n";
    LqProblemDefData data;
    EXPECT_EQ(chainAfterReading(data, file.text()), StatusChain{});
    EXPECT_EQ(idsOf(data.fixMarkers), Ids{2});
    EXPECT_EQ(idsOf(data.doubleMarkers), Ids{4});
    EXPECT_EQ(pairIdsOf(data), (std::vector<std::pair<int, int>>{{6, 7}}));
    FileText cut;
    cut.bodies = "0" + skipped + "c\n";
    EXPECT_EQ(chainAfterReading(cut), StatusChain{error("Unable to read number of Real markers.")});
}

TEST(ProblemDefReader, NothingIsSkippedBehindTheNamesOfRealAndArtificialMarkers) {
    FileText real;
    real.realMarkers = "2\n1 0 1    Hips                2 0 1    Hand\n";
    real.artificialMarkers = "2\n3 4 1    Hips                    Hips                5 6 1    Hand"
                             "                    Hand\n";
    LqProblemDefData data;
    EXPECT_EQ(chainAfterReading(data, real.text()), StatusChain{});
    EXPECT_EQ(idsOf(data.realMarkers), (Ids{1, 2}));
    EXPECT_EQ(pairIdsOf(data), (std::vector<std::pair<int, int>>{{3, 4}, {5, 6}}));
    FileText commented;
    commented.realMarkers = "2\n1 0 1    Hips                and more\n2 0 1    Hand\n";
    EXPECT_EQ(chainAfterReading(commented),
              StatusChain{error("Unable to read Real marker ID, prediction type and weight.")});
}

} // namespace
} // namespace quillon::test
