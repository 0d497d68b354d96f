// A family with INCLUDE sections and the same family written by hand without them.

#include "quillon/limits/LimitsReader.h"
#include "quillon/limits/LimitsWriter.h"
#include "quillon/model/LqBodyDefData.h"
#include "quillon/problem/LqProblemDefData.h"
#include "quillon/scale/LqScaleDefData.h"
#include "quillon/tool/Info.h"
#include "quillon/tool/LqProblemBundle.h"
#include "quillon/tool/ProblemReport.h"
#include "tests/model/ModelText.h"
#include "tests/problem/ProblemDefText.h"
#include "tests/support/EnvironmentValue.h"
#include "tests/support/ScratchDirectory.h"
#include "tests/support/StatusChain.h"

#include <gtest/gtest.h>

#include <sstream>

namespace quillon {
namespace {

const std::string folder = std::string(QUILLON_SOURCE_DIR) + "/examples/crowd";

std::string textOfFile(const std::string& name) {
    return support::readBytes(folder + "/" + name);
}

class CrowdExample : public testing::Test {
protected:
    static void read(LqProblemDefData& definition, const std::string& name, bool withIncludes) {
        EXPECT_TRUE(definition.readProblemDefFile((folder + "/" + name).c_str(), withIncludes));
        EXPECT_EQ(test::takeChain(), test::StatusChain{});
    }

    static void read(LqBodyDefData& model, const std::string& name, const LqProblemDefData& definition,
                     bool withIncludes) {
        EXPECT_TRUE(model.readModelFile((folder + "/" + name).c_str(), definition, withIncludes));
        EXPECT_EQ(test::takeChain(), test::StatusChain{});
    }

    static void read(LqLimitsData& limits, const std::string& name, bool withIncludes) {
        EXPECT_TRUE(readLimitsFile(limits, (folder + "/" + name).c_str(), withIncludes));
        EXPECT_EQ(test::takeChain(), test::StatusChain{});
    }

    static std::string written(const LqProblemDefData& definition) {
        std::ostringstream output;
        definition.writeProblemDefStream(output);
        return output.str();
    }

    static std::string written(const LqBodyDefData& model, const LqProblemDefData& definition) {
        std::ostringstream output;
        model.writeModelStream(output, definition);
        return output.str();
    }

    static std::string written(const LqLimitsData& limits) {
        std::ostringstream output;
        writeTaggedLimits(limits, output);
        return output.str();
    }

    test::CleanStatus clean;
    test::EnvironmentValue directory{"DRENK_DATA_DIR", folder};
};

TEST_F(CrowdExample, TheDefinitionMergesToTheOneWrittenByHand) {
    LqProblemDefData merged;
    read(merged, "crowd.probdef", true);
    LqProblemDefData flat;
    read(flat, "flat.probdef", false);
    EXPECT_EQ(test::linesOf(merged), test::linesOf(flat));
    EXPECT_TRUE(equals(merged, flat));
    EXPECT_EQ(written(merged), textOfFile("flat.probdef"));
}

TEST_F(CrowdExample, TheModelMergesToTheOneWrittenByHand) {
    LqProblemDefData definition;
    read(definition, "crowd.probdef", true);
    LqBodyDefData merged;
    read(merged, "crowd.model", definition, true);
    LqBodyDefData flat;
    read(flat, "flat.model", definition, false);
    EXPECT_EQ(test::linesOf(merged), test::linesOf(flat));
    EXPECT_TRUE(merged.equals(flat));
    EXPECT_EQ(written(merged, definition), textOfFile("flat.model"));
}

TEST_F(CrowdExample, IsWrittenAsItIsWhenItIsNotMerged) {
    LqProblemDefData definition;
    read(definition, "crowd.probdef", false);
    EXPECT_EQ(written(definition), textOfFile("crowd.probdef"));
    LqBodyDefData model;
    read(model, "crowd.model", definition, false);
    EXPECT_EQ(written(model, definition), textOfFile("crowd.model"));
    LqLimitsData limits;
    read(limits, "crowd.limits", false);
    EXPECT_EQ(written(limits), textOfFile("crowd.limits"));
}

TEST_F(CrowdExample, TheLimitsMergeToThoseWrittenByHand) {
    LqLimitsData merged;
    read(merged, "crowd.limits", true);
    EXPECT_EQ(written(merged), textOfFile("flat.limits"));
    LqLimitsData flat;
    read(flat, "flat.limits", false);
    EXPECT_TRUE(merged.equalEffective(flat));
}

TEST_F(CrowdExample, ReportsTheMergedFamilyAsTheFlatOne) {
    LqProblemBundle merged;
    read(merged.problemDef, "crowd.probdef", true);
    read(merged.model, "crowd.model", merged.problemDef, true);
    read(merged.limits, "crowd.limits", true);
    merged.scaleDef.readFile((folder + "/crowd.scaledef").c_str(), merged.problemDef, false);
    EXPECT_EQ(test::takeChain(), test::StatusChain{});
    std::ostringstream report;
    std::ostringstream remarks;
    writeProblemReport(report, remarks, merged);
    EXPECT_EQ(remarks.str(), "");
    std::ostringstream flatReport;
    std::ostringstream messages;
    runInfo((folder + "/flat.zvx").c_str(), flatReport, messages);
    EXPECT_EQ(test::takeChain(), test::StatusChain{});
    EXPECT_EQ(report.str(), flatReport.str());
}

} // namespace
} // namespace quillon
