#include "quillon/tool/ProblemFamily.h"

#include "quillon/tool/LqProblemBundle.h"
#include "quillon/tool/LqProblemSpec.h"
#include "tests/support/EnvironmentValue.h"
#include "tests/support/ScratchDirectory.h"
#include "tests/support/StatusChain.h"

#include <gtest/gtest.h>

#include <string>

namespace quillon {
namespace {

class ProblemFamily : public testing::Test {
protected:
    bool read(const std::string& path) { return readProblemFamily(spec, family, path.c_str()); }

    bool readSpecOf(const std::string& entries) {
        const std::string path = scratch / "problem.zvx";
        support::writeBytes(path, "Kym Problem Specification File\nv1.00\n" + entries + "Match: BodyName\n");
        return read(path);
    }

    const std::string crowd = std::string(QUILLON_SOURCE_DIR) + "/examples/crowd";
    support::ScratchDirectory scratch;
    test::EnvironmentValue directory{"DRENK_DATA_DIR", crowd};
    test::CleanStatus clean;
    LqProblemSpec spec;
    LqProblemBundle family;
};

TEST_F(ProblemFamily, IsReadWithItsIncludes) {
    EXPECT_TRUE(read(crowd + "/crowd.zvx"));
    EXPECT_EQ(test::takeChain(), test::StatusChain{});
    LqProblemDefData flat;
    EXPECT_TRUE(flat.readProblemDefFile((crowd + "/flat.probdef").c_str(), false));
    EXPECT_TRUE(equals(family.problemDef, flat));
    EXPECT_EQ(static_cast<int>(family.model.storedBodies().size()), flat.bodies.count());
    EXPECT_NE(family.limits.vars.count(), 0);
    EXPECT_NE(family.scaleDef.bodyParams.count(), 0);
}

TEST_F(ProblemFamily, MayLackFiles) {
    EXPECT_TRUE(readSpecOf("PROBDEF: " + crowd + "/flat.probdef\n"));
    EXPECT_EQ(test::takeChain(), test::StatusChain{});
    EXPECT_NE(family.problemDef.bodies.count(), 0);
    EXPECT_EQ(family.model.storedBodies().size(), 0U);
}

TEST_F(ProblemFamily, EndsAtTheFirstFileThatCannotBeRead) {
    EXPECT_FALSE(readSpecOf("PROBDEF: " + crowd + "/flat.probdef\nUNSCALEDBODYDEF: absent\nLIMITS: " + crowd +
                            "/flat.limits\n"));
    EXPECT_EQ(test::takeChain(), (test::StatusChain{test::error("Unable to open \"absent\"."),
                                                    test::error("File does not exist.")}));
    EXPECT_NE(family.problemDef.bodies.count(), 0);
    EXPECT_EQ(family.limits.vars.count(), 0);
    EXPECT_FALSE(read("absent.zvx"));
}

} // namespace
} // namespace quillon
