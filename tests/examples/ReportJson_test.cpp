#include "tests/examples/ExamplePrograms.h"
#include "tests/support/EnvironmentValue.h"

#include <utility>

namespace quillon::test {
namespace {

using support::readBytes;
using support::writeBytes;

/// The text with another one in place of a part that stands in it once.
std::string with(const std::string& text, const std::string& part, const std::string& replacement) {
    const std::size_t place = text.find(part);
    EXPECT_NE(place, std::string::npos) << part;
    EXPECT_EQ(text.find(part, place + 1), std::string::npos) << part;
    return place == std::string::npos ? text : std::string(text).replace(place, part.size(), replacement);
}

/// The program on the pendulum, which the build leaves out where the library for JSON is not at hand.
class ReportJson : public testing::Test {
protected:
    void SetUp() override {
        if (!std::filesystem::exists(std::string(QUILLON_EXAMPLE_PROGRAMS) + "/report_json")) {
            GTEST_SKIP() << "report_json was not built";
        }
        copyFamily("pendulum", scratch);
    }

    ProgramRun report(const std::string& file = "pendulum.zvx") const {
        return runExample({"report_json", file}, scratch);
    }

    const support::ScratchDirectory scratch;
    const std::string pendulum = readBytes(std::string(QUILLON_SOURCE_DIR) + "/tests/examples/pendulum.json");
};

// --- Whole documents -----------------------------------------------------------------------------

TEST_F(ReportJson, TellsAllOfThePendulum) {
    EXPECT_EQ(report(), (ProgramRun{"0", pendulum, ""}));
}

TEST_F(ReportJson, IncludesAreMerged) {
    copyFamily("crowd", scratch);
    const EnvironmentValue directory("DRENK_DATA_DIR", ".");
    const ProgramRun merged = report("crowd.zvx");
    EXPECT_EQ(merged.outcome, "0");
    EXPECT_EQ(merged, report("flat.zvx"));
}

// What limits and scale definition would add is not there. The spacer on z is a constant and two terms.
TEST_F(ReportJson, WithoutLimitsScaleDefinitionAndModelTheRestStands) {
    writeBytes(scratch / "a.zvx",
               "Kym Problem Specification File\nv1.00\nPROBDEF: a.probdef\nMatch: BodyName\n");
    writeBytes(scratch / "a.probdef", "Kym Problem Definition File\nv1.00\n"
                                      "  2    # of variables\n    1    Swing\n    2    Sway\n"
                                      "  1    # of bodies\n"
                                      " Arm                 ReferenceSystemZero        0   0\n"
                                      "    3   2   1   6   5   4\n"
                                      "  -3\n 0.500000\n    2   2.000000\n    1   -1.500000\n"
                                      "   0\n   2\n   0\n   0\n  -1\n 0.000000\n"
                                      "  1    # real markers\n    1   4   1.000    Arm                 \n"
                                      "  0    # fix markers\n  0    # double markers\n"
                                      "  1    # artificial pairs\n"
                                      "    2   3   0.250    ReferenceSystemZero     Arm                 \n");
    EXPECT_EQ(report("a.zvx"), (ProgramRun{"0", R"({
  "sys_vars": [
    {
      "id": 1,
      "description": "Swing"
    },
    {
      "id": 2,
      "description": "Sway"
    }
  ],
  "bodies": [
    {
      "name": "Arm",
      "id": 0,
      "parent": "ReferenceSystemZero",
      "type": 0,
      "transform_order": [
        3,
        2,
        1,
        6,
        5,
        4
      ],
      "mappings": [
        {
          "constant": 0.5,
          "terms": [
            {
              "var": 2,
              "factor": 2.0
            },
            {
              "var": 1,
              "factor": -1.5
            }
          ]
        },
        {},
        {
          "var": 2
        },
        {},
        {},
        {
          "constant": 0.0,
          "terms": []
        }
      ]
    }
  ],
  "real_markers": [
    {
      "id": 1,
      "body": "Arm",
      "weight": 1.0
    }
  ],
  "fix_markers": [],
  "double_markers": [],
  "artificial_pairs": [
    {
      "id": 2,
      "body": "ReferenceSystemZero",
      "weight": 0.25,
      "other_id": 3,
      "other_body": "Arm"
    }
  ]
}
)",
                                           ""}));
}

// The vectors have the length 2, and their product is the weight.
TEST_F(ReportJson, WhatHoldsInAllPosesStandsOutsideOfThem) {
    replaceIn(scratch / "pendulum.scaledef", "LIMIT_ADJUSTMENTS {",
              "ARTIFICIAL_PAIR_WEIGHT_OVERRIDES {\n  5 6 0.25\n}\nLIMIT_ADJUSTMENTS {");
    replaceIn(scratch / "pendulum.scaledef", "\nGLOBAL_CONSTRAINTS {\n}",
              "\nGLOBAL_CONSTRAINTS {\n  Bob      2 0 0    0 -2 0\n}");
    std::string expected = with(pendulum, R"("artificial_weight_overrides": [])",
                                R"("artificial_weight_overrides": [
      {
        "marker_id": 5,
        "other_marker_id": 6,
        "weight": 0.25
      }
    ])");
    expected = with(expected, R"("vector_constraints": [])", R"("vector_constraints": [
      {
        "body": "Bob",
        "local_direction": [
          1.0,
          0.0,
          0.0
        ],
        "global_direction": [
          0.0,
          -1.0,
          0.0
        ],
        "weight": 4.0
      }
    ])");
    EXPECT_EQ(report(), (ProgramRun{"0", expected, ""}));
}

// --- Values --------------------------------------------------------------------------------------

TEST_F(ReportJson, NumbersHaveTheDigitsThatGiveTheSingleBack) {
    replaceIn(scratch / "pendulum.model", "0.02   0   -0.75", "16777217   1e-7   -3.4028235e38");
    replaceIn(scratch / "pendulum.model", "  2   0   0   -0.1", "  2   0.0800003   0.33333333333   1e-45");
    std::string expected = with(pendulum, "0.02,\n        0.0,\n        -0.75\n",
                                "1.6777216e+07,\n        1e-07,\n        -3.4028235e+38\n");
    expected = with(expected, "0.0,\n        0.0,\n        -0.1\n",
                    "0.0800003,\n        0.33333334,\n        1e-45\n");
    EXPECT_EQ(report(), (ProgramRun{"0", expected, ""}));
}

TEST_F(ReportJson, InfiniteNumbersAreNull) {
    replaceIn(scratch / "pendulum.limits", "VALUE: -1.2", "VALUE: -1e39");
    replaceIn(scratch / "pendulum.limits", "VALUE: 1.2", "VALUE: 1e39");
    const std::string expected = with(with(pendulum, R"("lower_limit": -1.2,)", R"("lower_limit": null,)"),
                                      R"("upper_limit": 1.2)", R"("upper_limit": null)");
    EXPECT_EQ(report(), (ProgramRun{"0", expected, ""}));
}

// Vectors of length 0 have no direction.
TEST_F(ReportJson, WhatIsNoNumberIsNull) {
    replaceIn(scratch / "pendulum.scaledef", "Arm      0 0 1    0 0 1", "Arm      0 0 0    0 0 0");
    const std::string direction = R"([
              0.0,
              0.0,
              1.0
            ],
            )";
    const std::string none = R"([
              null,
              null,
              null
            ],
            )";
    const std::string expected = with(
        pendulum,
        R"("local_direction": )" + direction + R"("global_direction": )" + direction + R"("weight": 1.0)",
        R"("local_direction": )" + none + R"("global_direction": )" + none + R"("weight": 0.0)");
    EXPECT_EQ(report(), (ProgramRun{"0", expected, ""}));
}

TEST_F(ReportJson, BytesThatAreNoUtf8AreReplaced) {
    replaceIn(scratch / "pendulum.probdef", "    3    Twist", "    3    T\xFFw\xC3\xA9st\xC3");
    replaceIn(scratch / "pendulum.scaledef", "\"Twist\" ", "3");
    const std::string expected = with(pendulum, "\"Twist\"", "\"T\xEF\xBF\xBDw\xC3\xA9st\xEF\xBF\xBD\"");
    EXPECT_EQ(report(), (ProgramRun{"0", expected, ""}));
}

TEST_F(ReportJson, QuotesAndControlBytesAreEscaped) {
    replaceIn(scratch / "pendulum.probdef", "    3    Twist", "    3    \"T\"\\\x01");
    replaceIn(scratch / "pendulum.scaledef", "\"Twist\" ", "3");
    EXPECT_EQ(report(), (ProgramRun{"0", with(pendulum, R"("Twist")", R"("\"T\"\\\u0001")"), ""}));
}

TEST_F(ReportJson, WarningsDoNotKeepTheDocumentBack) {
    replaceIn(scratch / "pendulum.scaledef", "Arm      0 0 1    0 0 1", "Arm      0 0 1    0 0 4");
    EXPECT_EQ(report(),
              (ProgramRun{
                  "0",
                  with(pendulum, R"("weight": 1.0
          }
        ],
        "position_constraints": [
          {)",
                       R"("weight": 4.0
          }
        ],
        "position_constraints": [
          {)"),
                  printedWarning({"A global constraint was specified for body Arm which has differing",
                                  "magnitudes for the local and global vectors.  Adjusting the vectors."})}));
}

// --- What has no document ------------------------------------------------------------------------

TEST_F(ReportJson, TellsItsUse) {
    const ProgramRun usage{"1", "", "Usage: report_json PROBLEM.zvx\n"};
    EXPECT_EQ(runExample({"report_json"}, scratch), usage);
    EXPECT_EQ(runExample({"report_json", "pendulum.zvx", "pendulum.zvx"}, scratch), usage);
}

TEST_F(ReportJson, ReadingEndsAtTheFirstError) {
    EXPECT_EQ(
        report("missing.zvx"),
        (ProgramRun{"1", "", printedError({"Unable to open \"missing.zvx\".", "File does not exist."})}));
    // The first of the files in the order of reading is told of, so the last one is spoilt first.
    const std::pair<const char*, std::vector<std::string>> spoilt[] = {
        {"pendulum.scaledef",
         {"Unable to read \"pendulum.scaledef\".", "File does not contain a scale definition.",
          "Error reading file."}},
        {"pendulum.limits",
         {"Unable to read limit data file \"pendulum.limits\".",
          "Not a valid Kym System Variable Limits File.", "Unable to validate datafile header.",
          "Unable to read datafile version number."}},
        {"pendulum.model",
         {"Unable to read 'pendulum.model'.", "Not a valid Kym Model File.",
          "Unable to read Header Identification."}},
        {"pendulum.probdef",
         {"Unable to read 'pendulum.probdef'.", "File is not a Kym Problem Definition File",
          "Unable to read data file header."}},
    };
    for (const auto& [file, chain] : spoilt) {
        writeBytes(scratch / file,
                   file == std::string("pendulum.limits") ? "Kym System Variable Limits File\n" : "");
        EXPECT_EQ(report(), (ProgramRun{"1", "", printedError(chain)}));
    }
}

TEST_F(ReportJson, ADocumentThatCannotBeWrittenIsAnError) {
    EXPECT_EQ(runOnFullOutput({"report_json", "pendulum.zvx"}, scratch),
              (ProgramRun{"1", "", "Unable to write the document.\n"}));
}

} // namespace
} // namespace quillon::test
