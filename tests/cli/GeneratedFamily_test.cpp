// Runs the program over generated families, whose files are written without the library.

#include "tests/support/ChildProcess.h"
#include "tests/support/ScratchDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace quillon {
namespace {

using support::ChildOptions;
using support::ChildResult;
using support::ScratchDirectory;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::Pair;

std::vector<std::string> linesOf(const std::string& text) {
    std::istringstream input(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(input, line);) {
        lines.push_back(line);
    }
    return lines;
}

/// How many lines of a report begin with each word.
std::map<std::string, int> countKinds(const std::string& report) {
    std::map<std::string, int> kinds;
    for (const std::string& line : linesOf(report)) {
        ++kinds[line.substr(0, line.find(' '))];
    }
    return kinds;
}

class GeneratedFamily : public ::testing::TestWithParam<const char*> {
protected:
    void SetUp() override {
        if (std::string(QUILLON_GENERATE_FAMILY).empty()) {
            GTEST_SKIP() << "The generator belongs to the benchmarks, and they are not built.";
        }
    }

    ChildResult reportOf(int bodies) const {
        const std::string directory = scratch_.path().string();
        const ChildResult made =
            support::runProgram({QUILLON_GENERATE_FAMILY, std::to_string(bodies), directory, GetParam()});
        EXPECT_EQ(made.outcome, "0") << made.err;
        ChildOptions options;
        options.directory = scratch_.path();
        return support::runProgram({QUILLON_TOOL, "info", "family.zvx"}, options);
    }

    const ScratchDirectory scratch_;
};

TEST_P(GeneratedFamily, IsReadWholeAndReportedLineByLine) {
    const ChildResult result = reportOf(1000);
    EXPECT_EQ(result.outcome, "0");
    EXPECT_EQ(result.err, "Read family.zvx\nRead family.probdef\nRead family.model\nRead family.limits\n"
                          "Read family.scaledef\n");
    EXPECT_THAT(countKinds(result.out),
                ElementsAre(Pair("artificial_marker", 200), Pair("artificial_pair", 100), Pair("body", 1000),
                            Pair("body_scaling_transform", 3000), Pair("real_marker", 3000),
                            Pair("scaling_params", 1), Pair("scaling_pose", 2),
                            Pair("scaling_sys_var_limit_override", 100), Pair("scaling_var", 100),
                            Pair("scaling_vector_constraint", 1000), Pair("sys_var", 1000)));
}

TEST_P(GeneratedFamily, KeepsTheValuesOfItsFiles) {
    const std::vector<std::string> lines = linesOf(reportOf(12).out);
    EXPECT_THAT(lines,
                Contains("sys_var v1 description=\"Hip_0 flexion\" lower_limit=-0.5 "
                         "lower_limit_weight=4.405 upper_limit=0.94 upper_limit_weight=4.9987 guide=0.23 "
                         "guide_weight=3.1993"));
    EXPECT_THAT(lines, Contains("sys_var v2 description=\"Spine_1 abduction\" upper_limit=0.21"));
    EXPECT_THAT(lines,
                Contains("real_marker id=36 body=Spine_11 weight=1.71 local=(0.0350685 0.132845 0.286837)"));
    EXPECT_THAT(lines, Contains("artificial_pair id=43 other_id=44 weight=0.776"));
    EXPECT_THAT(
        lines,
        Contains("artificial_marker id=44 body=LeftHand_5xxxxxxxxxx local=(0.193531 -0.206242 0.137112)"));
}

std::string shapeName(const ::testing::TestParamInfo<const char*>& shape) {
    return shape.param;
}

INSTANTIATE_TEST_SUITE_P(Shapes, GeneratedFamily, ::testing::Values("chain", "tree"), shapeName);

} // namespace
} // namespace quillon
