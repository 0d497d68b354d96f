#include "quillon/limits/LimitsReader.h"

#include "tests/limits/LimitsText.h"
#include "tests/support/EnvironmentValue.h"
#include "tests/support/NoFreeDescriptors.h"
#include "tests/support/ScratchDirectory.h"
#include "tests/support/StatusChain.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <optional>
#include <sstream>

namespace quillon {
namespace {

using support::ScratchDirectory;
using support::writeBytes;
using test::error;
using test::linesOf;
using test::StatusChain;
using test::takeChain;
using testing::ElementsAre;
using testing::IsEmpty;

const std::string header = "Kym System Variable Limits File\nv2.00\n";

class LimitsReader : public testing::Test {
protected:
    /// Writes the text to a file and reads that into `limits`.
    bool readFile(const std::string& text) {
        writeBytes(path(), text);
        return readLimitsFile(limits, path().c_str(), false);
    }

    bool readItems(const std::string& items) { return readFile(header + items); }

    std::string path() const { return scratch / "x.limits"; }

    /// What the reading of the file reports, but for the sentence about the file on top of it.
    StatusChain chainBelowFile() const {
        StatusChain chain = takeChain();
        if (chain.empty() || !(chain.front() == unableToReadFile())) {
            ADD_FAILURE() << "no sentence about the file on top";
            return chain;
        }
        chain.erase(chain.begin());
        return chain;
    }

    test::StatusLine unableToReadFile() const {
        return error("Unable to read limit data file \"" + path() + "\".");
    }

    ScratchDirectory scratch;
    test::CleanStatus cleanStatus;
    LqLimitsData limits;
};

// --- What is read --------------------------------------------------------------------------------

TEST_F(LimitsReader, TwoHeaderLinesAloneYieldNoRecordsAndNoError) {
    EXPECT_TRUE(readItems(""));
    EXPECT_THAT(takeChain(), IsEmpty());
    EXPECT_THAT(linesOf(limits), IsEmpty());
}

TEST_F(LimitsReader, ReadsRecordsAndIncludesInFileOrder) {
    EXPECT_TRUE(readItems("GUIDE_WEIGHT_SCALE: linear\n"
                          "VARIABLE {\n"
                          "  ID: 7\n"
                          "  LOWER {\n"
                          "    VALUE: -1.50\n"
                          "    WEIGHT: 2.0000\n"
                          "  }\n"
                          "  UPPER {\n"
                          "    VALUE: 1.50\n"
                          "  }\n"
                          "  GUIDE {\n"
                          "    VALUE: 0.25\n"
                          "    WEIGHT: 4.00\n"
                          "  }\n"
                          "}\n"
                          "VARIABLE {\n"
                          "  ID: 3\n"
                          "  UPPER {\n"
                          "    WEIGHT: 0.5\n"
                          "    VALUE: 8\n"
                          "  }\n"
                          "}\n"
                          "VARIABLE {\n"
                          "  LOWER {\n"
                          "    VALUE: 1e2\n"
                          "  }\n"
                          "  ID: 3\n"
                          "}\n"
                          "INCLUDE {\n"
                          "  FILE_NAME: b.limits\n"
                          "  SYSTEM_VARIABLE_ID_OFFSET: 40\n"
                          "}\n"
                          "INCLUDE {\n"
                          "  FILE_NAME: a.limits\n"
                          "}\n"));
    EXPECT_THAT(takeChain(), IsEmpty());
    EXPECT_THAT(linesOf(limits), ElementsAre("7 mode 3 lower -1.5 * 2 upper 1.5 * unset(0) guide 0.25 * 4",
                                             "3 mode 1 lower 0 * unset(0) upper 8 * 0.5 guide 0 * 0",
                                             "3 mode 2 lower 100 * unset(0) upper 0 * unset(0) guide 0 * 0",
                                             "include b.limits offset 40", "include a.limits offset -1"));
}

struct VariableCase {
    const char* name;
    const char* block;
    const char* record;
};

TEST_F(LimitsReader, TakesVariableBlocks) {
    const VariableCase cases[] = {
        {"an id alone", "ID: 5", "5 mode 0 lower 0 * unset(0) upper 0 * unset(0) guide 0 * 0"},
        {"equal limits", "ID: 5\nLOWER {\nVALUE: 2\n}\nUPPER {\nVALUE: 2\n}",
         "5 mode 3 lower 2 * unset(0) upper 2 * unset(0) guide 0 * 0"},
        {"a guide alone", "ID: 5\nGUIDE {\nVALUE: 2\n}",
         "5 mode 0 lower 0 * unset(0) upper 0 * unset(0) guide 2 * 0"},
        {"an empty guide", "ID: 5\nGUIDE {\n}", "5 mode 0 lower 0 * unset(0) upper 0 * unset(0) guide 0 * 0"},
        {"a second guide resets the first", "ID: 5\nGUIDE {\nVALUE: 2\nWEIGHT: 3\n}\nGUIDE {\nWEIGHT: 4\n}",
         "5 mode 0 lower 0 * unset(0) upper 0 * unset(0) guide 0 * 16"},
        {"a weight without a value is dropped", "ID: 5\nUPPER {\nWEIGHT: 3\n}",
         "5 mode 0 lower 0 * unset(0) upper 0 * unset(0) guide 0 * 0"},
        {"a second block with a weight alone undoes the value of the first",
         "ID: 5\nLOWER {\nVALUE: 2\nWEIGHT: 3\n}\nLOWER {\nWEIGHT: 4\n}",
         "5 mode 0 lower 0 * unset(0) upper 0 * unset(0) guide 0 * 0"},
        {"a second block with a value alone undoes the weight of the first",
         "ID: 5\nLOWER {\nVALUE: 2\nWEIGHT: 3\n}\nLOWER {\nVALUE: 4\n}",
         "5 mode 2 lower 4 * unset(0) upper 0 * unset(0) guide 0 * 0"},
        {"a later number overwrites an earlier one",
         "ID: 5\nUPPER {\nVALUE: 1\nWEIGHT: 2\nWEIGHT: 3\nVALUE: 4\n}",
         "5 mode 1 lower 0 * unset(0) upper 4 * 3 guide 0 * 0"},
        {"unknown keys are skipped", "ID: 5\nLOVER {\nVALUE: x\n}\nguide {\nVALUE: 1\n}\nNOTE: arm",
         "5 mode 0 lower 0 * unset(0) upper 0 * unset(0) guide 0 * 0"},
        {"keys in any case", "iD: 5\nlower {\nvalue: 2\nWeight: 3\n}\nUpper {\nVaLuE: 4\n}",
         "5 mode 3 lower 2 * 3 upper 4 * unset(0) guide 0 * 0"},
        {"a value that goes on", "ID: 5\nUPPER {\nVALUE: 2.5 degrees\n}",
         "5 mode 1 lower 0 * unset(0) upper 2.5 * unset(0) guide 0 * 0"},
        {"a negative id", "ID: -5", "-5 mode 0 lower 0 * unset(0) upper 0 * unset(0) guide 0 * 0"},
        {"a value is narrowed from 64 bits", "ID: 5\nUPPER {\nVALUE: 0.1\n}",
         "5 mode 1 lower 0 * unset(0) upper 0.100000001 * unset(0) guide 0 * 0"},
        {"blocks on the line of their keys", "ID: 5\nLOWER: VALUE: 2\nGUIDE: WEIGHT: 3",
         "5 mode 2 lower 2 * unset(0) upper 0 * unset(0) guide 0 * 9"},
        {"numbers with signs and without digits on a side",
         "ID: \t+5 \t\nUPPER {\nVALUE: +.5\n}\nLOWER {\nVALUE: -5.\n}",
         "5 mode 3 lower -5 * unset(0) upper 0.5 * unset(0) guide 0 * 0"},
        {"hexadecimal reals", "ID: 5\nUPPER {\nVALUE: 0x1p3\n}",
         "5 mode 1 lower 0 * unset(0) upper 8 * unset(0) guide 0 * 0"},
        {"a real beyond 32 bits is infinite", "ID: 5\nUPPER {\nVALUE: 1e39\n}",
         "5 mode 1 lower 0 * unset(0) upper inf * unset(0) guide 0 * 0"},
        {"an id beyond 32 bits is cut", "ID: 99999999999",
         "1215752191 mode 0 lower 0 * unset(0) upper 0 * unset(0) guide 0 * 0"},
        {"what is skipped is not looked into",
         "NOTE {\nrubbish\n}\nVARIABLE {\nID: 9\n}\nINCLUDE {\n}\nVALUE: x\nID: 5",
         "5 mode 0 lower 0 * unset(0) upper 0 * unset(0) guide 0 * 0"},
        {"keys count whole",
         "I: 6\nIDS: 6\nID: 5\nLOWE {\nVALUE: 1\n}\nUPPERS {\nVALUE: 1\n}\nGuide {\nVALUE: 1\n}",
         "5 mode 0 lower 0 * unset(0) upper 0 * unset(0) guide 0 * 0"},
        {"the limits of a 32-bit real", "ID: 5\nUPPER {\nVALUE: 3.4028235e38\n}",
         "5 mode 1 lower 0 * unset(0) upper 3.40282347e+38 * unset(0) guide 0 * 0"},
    };
    for (const VariableCase& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_TRUE(readItems("VARIABLE {\n" + std::string(c.block) + "\n}\n"));
        EXPECT_THAT(takeChain(), IsEmpty());
        EXPECT_THAT(linesOf(limits), ElementsAre(c.record));
    }
}

TEST_F(LimitsReader, AnIdMayStandInABlockOfItsOwn) {
    EXPECT_FALSE(readItems("VARIABLE {\nID {\nx\n}\n}\n"));
    EXPECT_EQ(chainBelowFile(),
              (StatusChain{error("Unable to read limits for variable."),
                           error("Unable to read value for id."), error("Invalid integer value.")}));
    EXPECT_TRUE(readItems("VARIABLE {\nID {\n5\n}\n}\n"));
    EXPECT_THAT(test::idsOf(limits), ElementsAre(5));
}

TEST_F(LimitsReader, GuideWeightsAreSquaredUnlessTheScaleIsLinear) {
    struct Case {
        const char* before;
        const char* behind;
        float weight;
    };
    const Case cases[] = {
        {"", "", 9},
        {"GUIDE_WEIGHT_SCALE: quadratic\n", "", 9},
        {"GUIDE_WEIGHT_SCALE: linear\n", "", 3},
        {"", "GUIDE_WEIGHT_SCALE: linear\n", 3},
        // Every text but the one word counts as linear, whatever its case.
        {"GUIDE_WEIGHT_SCALE: Linear\n", "", 3},
        {"GUIDE_WEIGHT_SCALE: Quadratic\n", "", 3},
        {"GUIDE_WEIGHT_SCALE:\n", "", 3},
        {"GUIDE_WEIGHT_SCALE: quadratic # as ever\n", "", 3},
        {"GUIDE_WEIGHT_SCALE:\t quadratic \t\n", "", 9},
        {"GUIDE_WEIGHT_SCALE {\nquadratic\n}\n", "", 3},
        // The last one decides.
        {"GUIDE_WEIGHT_SCALE: linear\n", "GUIDE_WEIGHT_SCALE: quadratic\n", 9},
        {"GUIDE_WEIGHT_SCALE: quadratic\n", "GUIDE_WEIGHT_SCALE: linear\n", 3},
        // It may stand behind an include.
        {"", "INCLUDE {\nFILE_NAME: a.limits\n}\nGUIDE_WEIGHT_SCALE: linear\n", 3},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.before) + c.behind);
        EXPECT_TRUE(readItems(
            std::string(c.before) +
            "VARIABLE {\nID: 5\nUPPER {\nVALUE: 1\nWEIGHT: 2\n}\nGUIDE {\nWEIGHT: 3\n}\n}\n" + c.behind));
        EXPECT_THAT(takeChain(), IsEmpty());
        EXPECT_EQ(limits.guideWeight(5), c.weight);
        EXPECT_EQ(limits.findVar(5)->upperWeight.value, 2.0F);
    }
}

TEST_F(LimitsReader, GuideWeightsAreSquaredAs32BitReals) {
    struct Case {
        const char* weight;
        float squared;
    };
    for (const Case& c : {Case{"-3", 9}, Case{"0.1", 0.1F * 0.1F}, Case{"1e-30", 0},
                          Case{"1e20", std::numeric_limits<float>::infinity()}}) {
        EXPECT_TRUE(readItems("VARIABLE {\nID: 5\nGUIDE {\nWEIGHT: " + std::string(c.weight) + "\n}\n}\n"));
        EXPECT_EQ(limits.guideWeight(5), c.squared) << c.weight;
    }
}

TEST_F(LimitsReader, AVariableOrAnIncludeMayStandOnTheLineOfItsKey) {
    EXPECT_TRUE(readItems("VARIABLE: ID: 5\nINCLUDE: FILE_NAME: a:b.limits\n"));
    EXPECT_THAT(takeChain(), IsEmpty());
    EXPECT_THAT(linesOf(limits), ElementsAre("5 mode 0 lower 0 * unset(0) upper 0 * unset(0) guide 0 * 0",
                                             "include a:b.limits offset -1"));
}

TEST_F(LimitsReader, TheItemsBeginBehindTheVersionNumber) {
    const std::string id = "Kym System Variable Limits File\nv2.00";
    EXPECT_TRUE(readFile(id + " # of the arm\nVARIABLE {\nID: 5\n}\n"));
    EXPECT_THAT(test::idsOf(limits), ElementsAre(5));
    EXPECT_TRUE(readFile(id + "VARIABLE {\nID: 6\n}\n"));
    EXPECT_THAT(test::idsOf(limits), ElementsAre(6));
    EXPECT_FALSE(readFile(id + " of the arm\nVARIABLE {\nID: 7\n}\n"));
    EXPECT_EQ(chainBelowFile(), (StatusChain{error("No ':' or '{' following tag 'of the arm'.")}));
    EXPECT_THAT(test::idsOf(limits), ElementsAre(6));
}

TEST_F(LimitsReader, CarriageReturnsCommentsAndIndentationDoNotMatter) {
    EXPECT_TRUE(readFile("Kym System Variable Limits File\r\nv2.00\r\n"
                         "# a remark\r\n"
                         "\r\n"
                         "VARIABLE { # of the arm\r\n"
                         "\tID: 7\r\n"
                         "  # GUIDE {\r\n"
                         "  LOWER {\r\n"
                         "    VALUE: -1.50\r\n"
                         "  } # lower\r\n"
                         "}\r\n"));
    EXPECT_THAT(takeChain(), IsEmpty());
    EXPECT_THAT(linesOf(limits),
                ElementsAre("7 mode 2 lower -1.5 * unset(0) upper 0 * unset(0) guide 0 * 0"));
}

TEST_F(LimitsReader, AFileNameIsExpandedAndTheLastOneWins) {
    const test::EnvironmentValue directory("QUILLON_LIMITS_TEST_DIR", "/data/limits//");
    EXPECT_TRUE(readItems("INCLUDE {\n"
                          "  FILE_NAME: first.limits\n"
                          "  file_name: $QUILLON_LIMITS_TEST_DIR/arm.limits\n"
                          "  System_Variable_Id_Offset: 0 and no more\n"
                          "}\n"
                          "include {\n"
                          "  FILE_NAME: \xE9t\xE9.limits\n"
                          "  SYSTEM_VARIABLE_ID_OFFSET: 4\n"
                          "  SYSTEM_VARIABLE_ID_OFFSET: 5\n"
                          "}\n"));
    EXPECT_THAT(takeChain(), IsEmpty());
    EXPECT_THAT(linesOf(limits),
                ElementsAre("include /data/limits/arm.limits offset 0", "include \xE9t\xE9.limits offset 5"));
}

TEST_F(LimitsReader, AFileNameThatExpandsToNothingIsNone) {
    for (const char* value : {"", "/", "///"}) {
        const test::EnvironmentValue directory("QUILLON_LIMITS_TEST_DIR", value);
        EXPECT_FALSE(readItems("INCLUDE {\nFILE_NAME: $QUILLON_LIMITS_TEST_DIR\n}\n"));
        EXPECT_EQ(chainBelowFile(),
                  (StatusChain{error("Unable to read INCLUDE section."), error("No FILE_NAME specified.")}));
    }
    const test::EnvironmentValue none("QUILLON_LIMITS_TEST_DIR", std::nullopt);
    EXPECT_TRUE(readItems("INCLUDE {\nFILE_NAME: $QUILLON_LIMITS_TEST_DIR\n}\n"));
    EXPECT_THAT(linesOf(limits), ElementsAre("include $QUILLON_LIMITS_TEST_DIR offset -1"));
}

TEST_F(LimitsReader, ReadingReplacesWhatWasHeldAndKeepsOldRecordsAlive) {
    limits.setUpperLimit(1, 2);
    limits.addInclude("old.limits", 3);
    const LqVarLimits* const old = limits.findVar(1);
    EXPECT_TRUE(readItems("VARIABLE {\nID: 5\n}\n"));
    EXPECT_THAT(linesOf(limits), ElementsAre("5 mode 0 lower 0 * unset(0) upper 0 * unset(0) guide 0 * 0"));
    EXPECT_EQ(old->upperValue, 2.0F);
}

// --- What is refused -----------------------------------------------------------------------------

struct RefusedCase {
    const char* items;
    StatusChain chain;
};

TEST_F(LimitsReader, ReportsRefusedItemsAndLeavesTheTargetAsItWas) {
    const auto inVariable = [](StatusChain below) {
        below.insert(below.begin(), error("Unable to read limits for variable."));
        return below;
    };
    const auto inInclude = [](StatusChain below) {
        below.insert(below.begin(), error("Unable to read INCLUDE section."));
        return below;
    };
    const RefusedCase cases[] = {
        {"VARIABLE {\n}\n", inVariable({error("Id not specified for limits.")})},
        {"VARIABLE {\nLOWER {\nVALUE: 2\n}\nUPPER {\nVALUE: 1\n}\n}\n",
         inVariable({error("Id not specified for limits.")})},
        {"VARIABLE {\nID: 7\nID: 8\n}\n",
         inVariable({error("Id specified more than once for system variable id 7.")})},
        {"VARIABLE {\nID: 7\nID: x\n}\n",
         inVariable({error("Id specified more than once for system variable id 7.")})},
        {"VARIABLE {\nID: 7 # left arm\n}\n", inVariable({error("Unexpected data after the value of id.")})},
        {"VARIABLE {\nID: 0x10\n}\n", inVariable({error("Unexpected data after the value of id.")})},
        {"VARIABLE: ID: 7 8\n", inVariable({error("Unexpected data after the value of id.")})},
        {"VARIABLE {\nID: 7\nUPPER {\nVALUE: 1e999\n}\nLOWER {\nVALUE: y\n}\n}\n",
         inVariable({error("Unable to read value for the upper limit of system variable 7."),
                     error("Invalid floating point value.")})},
        {"VARIABLE {\nID: 7\nLOWER {\nVALUES: 1\n}\n}\n",
         inVariable({error("Unexpected key word \"VALUES\".")})},
        {"VARIABLE {\nID: seven\n}\n",
         inVariable({error("Unable to read value for id."), error("Invalid integer value.")})},
        {"VARIABLE {\nID:\n}\n",
         inVariable({error("Unable to read value for id."), error("Invalid integer value.")})},
        {"VARIABLE {\nID: 7 8\n}\n", inVariable({error("Unexpected data after the value of id.")})},
        {"VARIABLE {\nID: 7.5\n}\n", inVariable({error("Unexpected data after the value of id.")})},
        {"VARIABLE {\nID: 7\nLOWER {\nVALUE: low\n}\n}\n",
         inVariable({error("Unable to read value for the lower limit of system variable 7."),
                     error("Invalid floating point value.")})},
        {"VARIABLE {\nLOWER {\nVALUE: low\n}\nID: 7\n}\n",
         inVariable(
             {error("Unable to read value for the lower limit."), error("Invalid floating point value.")})},
        {"VARIABLE {\nID: 7\nLOWER {\nWEIGHT: inf\n}\n}\n",
         inVariable({error("Unable to read weight for the lower limit of system variable 7."),
                     error("Invalid floating point value.")})},
        {"VARIABLE {\nID: 7\nUPPER {\nVALUE: nan\n}\n}\n",
         inVariable({error("Unable to read value for the upper limit of system variable 7."),
                     error("Invalid floating point value.")})},
        {"VARIABLE {\nID: 7\nUPPER {\nWEIGHT:\n}\n}\n",
         inVariable({error("Unable to read weight for the upper limit of system variable 7."),
                     error("No value given.")})},
        {"VARIABLE {\nID: 7\nGUIDE {\nVALUE:\n}\n}\n",
         inVariable(
             {error("Unable to read value for the guide of system variable 7."), error("No value given.")})},
        {"VARIABLE {\nGUIDE {\nWEIGHT: x\n}\n}\n",
         inVariable({error("Unable to read weight for the guide."), error("Invalid floating point value.")})},
        {"VARIABLE {\nID: 7\nLOWER {\nVALU: 1\n}\n}\n", inVariable({error("Unexpected key word \"VALU\".")})},
        {"VARIABLE {\nID: 7\nGUIDE {\nID: 1\n}\n}\n", inVariable({error("Unexpected key word \"ID\".")})},
        {"VARIABLE {\nID: 7\nLOWER: 1\n}\n", inVariable({error("No ':' or '{' following tag '1'.")})},
        {"VARIABLE {\nID: 7\nlimp\n}\n", inVariable({error("No ':' or '{' following tag 'limp'.")})},
        {"VARIABLE {\nID: 7\nLOWER {\nVALUE: 2\n}\nUPPER {\nVALUE: 1\n}\n}\n",
         inVariable({error("Lower limit is greater than upper limit for system variable 7")})},
        {"VARIABLE {\nUPPER {\nVALUE: 1\n}\nLOWER {\nVALUE: 2\n}\nID: 7\n}\n",
         inVariable({error("Lower limit is greater than upper limit for system variable 7")})},
        {"VARIABLE {\nID: 7\n", {error("Hit end of file without reading '}' for tag VARIABLE")}},
        {"VARIABLE {\nID: 7\n} x\n", {error("Invalid character ('x') trailing '}' for 'VARIABLE'.")}},
        {"INCLUDE {\nFILE_NAME: a.limits\n}\nVariable {\nID: 7\n}\n",
         {error("Variable cannot be after a INCLUDE section.")}},
        {"INCLUDE {\nFILE_NAME: a.limits\n}\nVARIABLE {\nID: x\n}\n",
         {error("VARIABLE cannot be after a INCLUDE section.")}},
        {"INCLUDE {\nFILE_NAME: a\nFILE_NAME:\n}\n", inInclude({error("No FILE_NAME specified.")})},
        {"INCLUDE {\nSYSTEM_VARIABLE_ID_OFFSET:\n}\n",
         inInclude({error("Invalid value for SYSTEM_VARIABLE_ID_OFFSET."), error("Invalid integer value.")})},
        {"VAR {\n}\n", {error("Unexpected key word \"VAR\".")}},
        {"GUIDE_WEIGHT_SCALES: linear\n", {error("Unexpected key word \"GUIDE_WEIGHT_SCALES\".")}},
        {"GUIDE {\n}\n", {error("Unexpected key word \"GUIDE\".")}},
        {"INCLUDE {\n}\n", inInclude({error("No FILE_NAME specified.")})},
        {"INCLUDE {\nFILE_NAME:\n}\n", inInclude({error("No FILE_NAME specified.")})},
        {"INCLUDE {\nFILE_NAME: a\nsystem_variable_id_offset: x\n}\n",
         inInclude({error("Invalid value for system_variable_id_offset."), error("Invalid integer value.")})},
        {"INCLUDE {\nFILE_NAME: a\nBODY_NAME_SUFFIX: _l\n}\n",
         inInclude({error("Unexpected key word \"BODY_NAME_SUFFIX\".")})},
        {"INCLUDE {\nFILE_NAME\n}\n", inInclude({error("No ':' or '{' following tag 'FILE_NAME'.")})},
        {"VARIABLES {\n}\n", {error("Unexpected key word \"VARIABLES\".")}},
        {"VARIABL: 1\n", {error("Unexpected key word \"VARIABL\".")}},
        {": 1\n", {error("Unexpected key word \"\".")}},
        {"guide_weight_scale: linear\n", {error("Unexpected key word \"guide_weight_scale\".")}},
        {"\xC4RM: 1\n", {error("Unexpected key word \"\xC4RM\".")}},
        {"%s: 1\n", {error("Unexpected key word \"%s\".")}},
        {"VARIABLE {\nID: 1\n}\nINCLUDE {\nFILE_NAME: a\n}\nstray\n",
         {error("No ':' or '{' following tag 'stray'.")}},
    };
    limits.setUpperLimit(1, 2);
    limits.addInclude("old.limits", 3);
    const std::vector<std::string> before = linesOf(limits);
    for (const RefusedCase& c : cases) {
        SCOPED_TRACE(c.items);
        EXPECT_FALSE(readItems(c.items));
        EXPECT_EQ(chainBelowFile(), c.chain);
        EXPECT_EQ(linesOf(limits), before);
    }
}

TEST_F(LimitsReader, ReportsABadHeader) {
    const std::string id = "Kym System Variable Limits File";
    struct Case {
        std::string text;
        const char* cause;
    };
    const Case cases[] = {
        {"Kym System Variable Limits Fil\nv2.00\n", "Invalid datafile header id."},
        {"K", "Invalid datafile header id."},
        {"Kym Model File\nv2.00\n", "Invalid datafile header id."},
        {id + std::string(81 - id.size(), 'x') + "\nv2.00\n", "Error reading file."},
        {id + "\n", "Unable to read datafile version number."},
        {id + "\nvv2.00\n", "Unable to read datafile version number."},
        {id + "\nv1.99\n", "Unsupported datafile version 1.99.  Application uses version 2.00."},
        {id + "\nv3.00\n", "Unsupported datafile version 3.00.  Application uses version 2.00."},
        {id + "\nv-2\n", "Unsupported datafile version -2.00.  Application uses version 2.00."},
    };
    limits.setUpperLimit(1, 2);
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        EXPECT_FALSE(readFile(c.text));
        EXPECT_EQ(chainBelowFile(),
                  (StatusChain{error("Not a valid Kym System Variable Limits File."),
                               error("Unable to validate datafile header."), error(c.cause)}));
        EXPECT_THAT(test::idsOf(limits), ElementsAre(1));
    }
}

TEST_F(LimitsReader, TakesHeadersThatAreGoodEnough) {
    const std::string id = "Kym System Variable Limits File";
    const std::string cases[] = {
        id + std::string(80 - id.size(), 'x') + "\nv2.00\n",
        id + ", second edition\nv2.00\n",
        id + "\nv2.75\n",
        id + "\nx2\n",
        id + "\nv2",
    };
    for (const std::string& text : cases) {
        SCOPED_TRACE(text);
        EXPECT_TRUE(readFile(text));
        EXPECT_THAT(takeChain(), IsEmpty());
    }
}

TEST_F(LimitsReader, ReportsAFileThatCannotBeRead) {
    EXPECT_FALSE(readLimitsFile(limits, path().c_str(), false));
    EXPECT_EQ(takeChain(),
              (StatusChain{error("Unable to open \"" + path() + "\"."), error("File does not exist.")}));
    const std::string directory = scratch.path().string();
    EXPECT_FALSE(readLimitsFile(limits, directory.c_str(), false));
    EXPECT_EQ(takeChain(), (StatusChain{error(directory + " is a directory.")}));
}

TEST_F(LimitsReader, ReportsAFileThatDoesNotOpenAlthoughItMayBeRead) {
    writeBytes(path(), header);
    {
        const test::NoFreeDescriptors none;
        EXPECT_FALSE(readLimitsFile(limits, path().c_str(), false));
    }
    EXPECT_EQ(takeChain(), (StatusChain{error("Unable to open limit data file \"" + path() + "\".")}));
    {
        const test::NoFreeDescriptors none;
        EXPECT_FALSE(checkLimitsFile(path().c_str()));
    }
    EXPECT_EQ(takeChain(), (StatusChain{error("Unable to open limit data file '" + path() + "'.")}));
}

TEST_F(LimitsReader, AnErrorThatStandsAlreadyKeepsTheTargetAsItWas) {
    pushError("earlier");
    EXPECT_FALSE(readItems("VARIABLE {\nID: 5\n}\n"));
    EXPECT_EQ(takeChain(), (StatusChain{unableToReadFile(), error("earlier")}));
    EXPECT_THAT(linesOf(limits), IsEmpty());
}

TEST_F(LimitsReader, AWarningThatStandsAlreadyDoesNotHinderTheTaggedForm) {
    pushError("earlier");
    pushWarning("later");
    EXPECT_TRUE(readItems("VARIABLE {\nID: 5\n}\n"));
    EXPECT_EQ(takeChain(), (StatusChain{test::warning("later"), error("earlier")}));
    EXPECT_THAT(test::idsOf(limits), ElementsAre(5));
}

// --- Which status hears of it --------------------------------------------------------------------

TEST_F(LimitsReader, TheTaggedFormReportsIntoTheStatusOfTheCaller) {
    LmStatus status;
    std::istringstream input(header + "VARIABLE {\nID: 7\nLOWER {\nVALUE: low\n}\n}\n");
    EXPECT_FALSE(readLimitsStream(limits, input, false, status));
    EXPECT_EQ(takeChain(status),
              (StatusChain{error("Unable to read limits for variable."),
                           error("Unable to read value for the lower limit of system variable 7."),
                           error("Invalid floating point value.")}));
    EXPECT_THAT(takeChain(), IsEmpty());
}

TEST_F(LimitsReader, TheHeaderLinesReportOnTheCurrentStatus) {
    LmStatus status;
    std::istringstream input("Kym System Variable Limits File\nv1.00\n");
    EXPECT_FALSE(readTaggedLimits(limits, input, status));
    EXPECT_EQ(takeChain(status), (StatusChain{error("Not a valid Kym System Variable Limits File."),
                                              error("Unable to validate datafile header.")}));
    EXPECT_EQ(takeChain(),
              (StatusChain{error("Unsupported datafile version 1.00.  Application uses version 2.00.")}));
}

TEST_F(LimitsReader, TheOlderFormReportsOnTheCurrentStatus) {
    LmStatus status;
    std::istringstream input("x\n");
    EXPECT_FALSE(readLimitsStream(limits, input, false, status));
    EXPECT_THAT(takeChain(status), IsEmpty());
    EXPECT_EQ(takeChain(), (StatusChain{error("Unable to read first var limit."),
                                        error("Unable to read mode for limit.")}));
}

// --- The header alone ----------------------------------------------------------------------------

TEST_F(LimitsReader, CheckingAFileLooksAtItsHeaderAlone) {
    writeBytes(path(), "Kym System Variable Limits File\nv2.75\nnothing of use\n");
    float version = 0;
    EXPECT_TRUE(checkLimitsFile(path().c_str(), &version));
    EXPECT_EQ(version, 2.75F);
    EXPECT_TRUE(checkLimitsFile(path().c_str()));
    EXPECT_THAT(takeChain(), IsEmpty());
}

TEST_F(LimitsReader, CheckingAFileGivesTheVersionThatItRefuses) {
    writeBytes(path(), "Kym System Variable Limits File\nv3.25\n");
    float version = 0;
    EXPECT_FALSE(checkLimitsFile(path().c_str(), &version));
    EXPECT_EQ(version, 3.25F);
    EXPECT_EQ(takeChain(),
              (StatusChain{error("Unsupported datafile version 3.25.  Application uses version 2.00.")}));
}

TEST_F(LimitsReader, CheckingAFileReportsABadHeaderOrAFileThatCannotBeRead) {
    writeBytes(path(), "1 Field Number\n");
    EXPECT_FALSE(checkLimitsFile(path().c_str()));
    EXPECT_EQ(takeChain(), (StatusChain{error("Invalid datafile header id.")}));
    const std::string missing = scratch / "missing.limits";
    EXPECT_FALSE(checkLimitsFile(missing.c_str()));
    EXPECT_EQ(takeChain(),
              (StatusChain{error("Unable to open \"" + missing + "\"."), error("File does not exist.")}));
}

} // namespace
} // namespace quillon
