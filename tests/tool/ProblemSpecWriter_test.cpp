#include "quillon/tool/ProblemSpecWriter.h"

#include "quillon/files/LmDirLayout.h"
#include "quillon/tool/LqProblemSpec.h"
#include "quillon/tool/ProblemSpecReader.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/CommaLocale.h"
#include "tests/support/NoFreeDescriptors.h"
#include "tests/support/ScratchDirectory.h"
#include "tests/support/StatusChain.h"

#include <cstdlib>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iostream>
#include <sstream>

namespace quillon {
namespace {

using support::ScratchDirectory;
using test::chainOf;
using test::error;
using testing::ElementsAre;

std::string written(const LqProblemSpec& spec) {
    std::ostringstream output;
    writeProblemSpecStream(spec, output);
    return output.str();
}

/// What a process with these data directory variables writes for a model path in "/data".
std::string modelLineWith(const char* drenk, const char* kym, bool tarvisMode) {
    const support::ChildResult child = support::runFunction([=] {
        const auto set = [](const char* name, const char* value) {
            value == nullptr ? unsetenv(name) : setenv(name, value, 1);
        };
        set("DRENK_DATA_DIR", drenk);
        set("KYM_DATA_DIR", kym);
        set("RQ_DATA_DIR", "/data");
        if (tarvisMode) {
            dirLayout().enableTarvisMode();
        }
        LqProblemSpec spec;
        spec.model = "/data/subject/model";
        std::cout << written(spec) << std::flush;
    });
    EXPECT_EQ(child.outcome, "0");
    return child.out;
}

TEST(ProblemSpecWriter, WritesTheEntriesInTheirOrder) {
    LqProblemSpec spec;
    spec.model = "m";
    spec.problemDefinition = "p";
    spec.unscaledBodyDef = "u";
    spec.scaleDefinition = "s";
    spec.limits = "l";
    spec.searchParameters = "sp";
    spec.setMatchBy(LqMatchBy::BodyName);
    spec.userValues = {{"b", "2"}, {"a", "1"}, {"empty", ""}, {"B", "3: 4"}};
    EXPECT_EQ(written(spec), "Kym Problem Specification File\n"
                             "v1.00\n"
                             "MODEL: m\n"
                             "PROBDEF: p\n"
                             "UNSCALEDBODYDEF: u\n"
                             "SCALEDEF: s\n"
                             "LIMITS: l\n"
                             "SEARCHPARAMETERS: sp\n"
                             "Match: BodyName\n"
                             "B: 3: 4\n"
                             "a: 1\n"
                             "b: 2\n");
}

TEST(ProblemSpecWriter, LeavesOutNullPathsAndMatchWithoutAProblemDefinition) {
    LqProblemSpec spec;
    spec.model = "m";
    spec.setMatchBy(LqMatchBy::BodyName);
    EXPECT_EQ(written(spec), "Kym Problem Specification File\nv1.00\nMODEL: m\n");
    spec.problemDefinition = "p";
    spec.setMatchBy(LqMatchBy::BodyID);
    EXPECT_EQ(written(spec), "Kym Problem Specification File\nv1.00\nMODEL: m\nPROBDEF: p\nMatch: BodyID\n");
}

TEST(ProblemSpecWriter, EndsByAMemoryFaultWithoutAModel) {
    EXPECT_EQ(support::runFunction([] { written(LqProblemSpec()); }).outcome, "SIGSEGV");
}

TEST(ProblemSpecWriter, AbbreviatesPathsByTheNameOfTheDataDirectory) {
    const std::string header = "Kym Problem Specification File\nv1.00\n";
    EXPECT_EQ(modelLineWith("/data", nullptr, false), header + "MODEL: $DRENK_DATA_DIR/subject/model\n");
    EXPECT_EQ(modelLineWith(nullptr, "/data/", false), header + "MODEL: $KYM_DATA_DIR/subject/model\n");
    EXPECT_EQ(modelLineWith("/elsewhere", "/data", false), header + "MODEL: /data/subject/model\n");
    EXPECT_EQ(modelLineWith("/elsewhere", nullptr, true), header + "MODEL: $RQ_DATA_DIR/subject/model\n");
}

TEST(ProblemSpecWriter, WritesAFileInPlaceOfWhatStoodThere) {
    const ScratchDirectory scratch;
    support::writeBytes(scratch / "a.zvx", std::string(500, 'x'));
    LqProblemSpec spec;
    spec.model = "m";
    LmStatus status;
    writeProblemSpec(spec, (scratch / "a.zvx").c_str(), status);
    EXPECT_THAT(chainOf(status), ElementsAre());
    EXPECT_EQ(support::readBytes(scratch / "a.zvx"), written(spec));
}

TEST(ProblemSpecWriter, WritesAndReadsBackUnderALocaleWithADecimalComma) {
    const ScratchDirectory scratch;
    const std::string path = scratch / "a.zvx";
    const test::CommaLocale comma;
    LqProblemSpec spec;
    spec.model = "m";
    LmStatus status;
    writeProblemSpec(spec, path.c_str(), status);
    EXPECT_EQ(support::readBytes(path), "Kym Problem Specification File\nv1.00\nMODEL: m\n");
    LqProblemSpec readBack;
    readProblemSpec(readBack, path.c_str(), status);
    EXPECT_THAT(chainOf(status), ElementsAre());
    EXPECT_TRUE(readBack == spec);
}

TEST(ProblemSpecWriter, ReportsAFileThatPassesTheCheckAndDoesNotOpen) {
    const ScratchDirectory scratch;
    const std::string path = scratch / "a.zvx";
    LqProblemSpec spec;
    spec.model = "m";
    LmStatus status;
    {
        const test::NoFreeDescriptors none;
        writeProblemSpec(spec, path.c_str(), status);
    }
    EXPECT_THAT(chainOf(status), ElementsAre(error("Unable to open '" + path + "'.")));
}

TEST(ProblemSpecWriter, ReportsAFileThatCannotBeWritten) {
    const ScratchDirectory scratch;
    const std::string path = scratch / "missing/a.zvx";
    LmStatus status;
    LqProblemSpec spec;
    spec.model = "m";
    writeProblemSpec(spec, path.c_str(), status);
    EXPECT_THAT(chainOf(status),
                ElementsAre(error("File \"" + path + "\" is unwritable."),
                            error("Parent directory \"" + (scratch / "missing") + "\" does not exist.")));
}

} // namespace
} // namespace quillon
