// A family with INCLUDE sections and the same family written by hand without them.

#include "quillon/core/LmStatus.h"
#include "quillon/model/ModelReader.h"
#include "quillon/model/ModelWriter.h"
#include "quillon/problem/LqProblemDefData.h"
#include "quillon/problem/ProblemDefReader.h"
#include "quillon/problem/ProblemDefWriter.h"
#include "quillon/tool/Info.h"
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
        EXPECT_TRUE(readProblemDefFile(definition, (folder + "/" + name).c_str(), withIncludes));
        EXPECT_EQ(test::takeChain(), test::StatusChain{});
    }

    static void read(LqBodyDefData& model, const std::string& name, const LqProblemDefData& definition,
                     bool withIncludes) {
        EXPECT_TRUE(readModelFile(model, (folder + "/" + name).c_str(), definition, withIncludes));
        EXPECT_EQ(test::takeChain(), test::StatusChain{});
    }

    static std::string written(const LqProblemDefData& definition) {
        std::ostringstream output;
        writeProblemDefStream(definition, output);
        return output.str();
    }

    static std::string written(const LqBodyDefData& model, const LqProblemDefData& definition) {
        std::ostringstream output;
        writeModelStream(model, output, definition);
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
}

/// The report of a family; with a warning that stands, which makes the driver merge the includes.
std::string reportOf(const std::string& specification, bool merged) {
    if (merged) {
        pushWarning("earlier");
    }
    std::ostringstream out;
    std::ostringstream messages;
    runInfo((folder + "/" + specification).c_str(), out, messages);
    const test::StatusChain earlier = {test::warning("earlier")};
    EXPECT_EQ(test::takeChain(), merged ? earlier : test::StatusChain{});
    return out.str();
}

TEST_F(CrowdExample, ReportsTheMergedFamilyAsTheFlatOne) {
    const std::string flat = reportOf("flat.zvx", false);
    EXPECT_TRUE(flat.starts_with("sys_var v1 description=\"Bench Lift\" ")) << flat;
    EXPECT_EQ(reportOf("flat.zvx", true), flat);
    EXPECT_EQ(reportOf("crowd.zvx", true), flat);
}

TEST_F(CrowdExample, ReportsTheFamilyWithoutItsIncludesInACleanRun) {
    const std::string report = reportOf("crowd.zvx", false);
    EXPECT_EQ(report.find("Hips"), std::string::npos);
    EXPECT_NE(reportOf("flat.zvx", false), report);
}

} // namespace
} // namespace quillon
