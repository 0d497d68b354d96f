// What the writers of all files do when the disk takes no more. Those of the limits have more to tell, and
// tests beside theirs.

#include "quillon/files/LmCompOFStream.h"
#include "quillon/files/LmOFStream.h"
#include "quillon/limits/LimitsReader.h"
#include "quillon/limits/LimitsWriter.h"
#include "quillon/model/LqBodyDefData.h"
#include "quillon/problem/LqProblemDefData.h"
#include "quillon/tool/LqProblemBundle.h"
#include "quillon/tool/LqProblemSpec.h"
#include "quillon/tool/ProblemSpecReader.h"
#include "quillon/tool/ProblemSpecWriter.h"
#include "tests/files/FileTestSupport.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/ScratchDirectory.h"
#include "tests/support/StatusChain.h"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <functional>
#include <iostream>
#include <string>
#include <sys/resource.h>
#include <vector>

namespace quillon {
namespace {

using test::error;
using test::StatusChain;

/// A family that fills more than the first kilobyte of each of its files but the specification.
class FullDisk : public testing::Test {
protected:
    struct Writer {
        const char* name;
        std::function<void(const LmStr&)> toFile;
        std::function<void(std::ostream&)> toStream;
        StatusChain told; ///< when nothing at all can be written
    };

    void SetUp() override {
        const std::string stem =
            (std::filesystem::path(QUILLON_SOURCE_DIR) / "examples/walker/walker.").string();
        readProblemSpec(spec, (stem + "zvx").c_str(), currentStatus());
        bundle.problemDef.readProblemDefFile((stem + "probdef").c_str(), false);
        bundle.model.readModelFile((stem + "model").c_str(), bundle.problemDef, false);
        readLimitsFile(bundle.limits, (stem + "limits").c_str(), false);
        bundle.scaleDef.readFile((stem + "scaledef").c_str(), bundle.problemDef, false);
        spec.model = "a";
        ASSERT_EQ(test::chainOf(), StatusChain{});
    }

    std::vector<Writer> writers() {
        return {
            {"specification",
             [this](const LmStr& path) { writeProblemSpec(spec, path, currentStatus()); },
             [this](std::ostream& output) { writeProblemSpecStream(spec, output); },
             {}},
            {"problem definition",
             [this](const LmStr& path) { bundle.problemDef.writeProblemDefFile(path); },
             [this](std::ostream& output) { bundle.problemDef.writeProblemDefStream(output); },
             {}},
            {"model",
             [this](const LmStr& path) { bundle.model.writeModelFile(path, bundle.problemDef); },
             [this](std::ostream& output) { bundle.model.writeModelStream(output, bundle.problemDef); },
             {}},
            {"limits",
             [this](const LmStr& path) { writeLimitsFile(bundle.limits, path); },
             [this](std::ostream& output) { writeTaggedLimits(bundle.limits, output); },
             {error("Unable to write header info."), error("Unable to write data file id.")}},
            {"scale definition",
             [this](const LmStr& path) { bundle.scaleDef.writeFile(path, bundle.problemDef); },
             [this](std::ostream& output) { bundle.scaleDef.write(output, bundle.problemDef); },
             {error("Unable to write \"/dev/full\"."), error("Unable to write data file id.")}},
        };
    }

    /// Runs `body` in a child whose files cannot grow beyond so many bytes. Without `ignoresSignal` the
    /// system ends whoever tries.
    static support::ChildResult withFilesOf(rlim_t bytes, bool ignoresSignal,
                                            const std::function<void()>& body) {
        return support::runFunction([&] {
            std::signal(SIGXFSZ, ignoresSignal ? SIG_IGN : SIG_DFL);
            rlimit before{};
            getrlimit(RLIMIT_FSIZE, &before);
            const rlimit limit = {bytes, before.rlim_max};
            setrlimit(RLIMIT_FSIZE, &limit);
            body();
            setrlimit(RLIMIT_FSIZE, &before); // a build that counts lines writes its counts at the end
            test::printChain();
        });
    }

    test::CleanStatus clean;
    const support::ScratchDirectory scratch;
    LqProblemBundle bundle;
    LqProblemSpec spec;
};

// Only the headers of limits and scale definitions are looked after while they are written.
TEST_F(FullDisk, PassesTheWritersOfFilesInSilence) {
    for (const Writer& writer : writers()) {
        SCOPED_TRACE(writer.name);
        writer.toFile("/dev/full");
        EXPECT_EQ(test::takeChain(), writer.told);
    }
}

TEST_F(FullDisk, MakesTheWriterOfAProblemDefinitionAnswerNo) {
    EXPECT_FALSE(bundle.problemDef.writeProblemDefFile("/dev/full"));
    EXPECT_TRUE(bundle.problemDef.writeProblemDefFile((scratch / "a").c_str()));
    EXPECT_EQ(test::takeChain(), StatusChain{});
}

TEST_F(FullDisk, ShowsInAStreamOfOnesOwn) {
    std::vector<Writer> all = writers();
    all.push_back(
        {"older limits", {}, [this](std::ostream& output) { writeOlderLimits(bundle.limits, output); }, {}});
    for (const Writer& writer : all) {
        SCOPED_TRACE(writer.name);
        const auto writeTo = [&writer](const char* path) {
            LmOFStream output(path);
            writer.toStream(output);
            output.close();
            return output.good();
        };
        EXPECT_FALSE(writeTo("/dev/full"));
        currentStatus().clear();
        EXPECT_TRUE(writeTo((scratch / "a").c_str()));
        EXPECT_EQ(test::takeChain(), StatusChain{});
    }
}

// The older limits are written to streams alone, and nothing is told there.
TEST_F(FullDisk, PassesTheWriterOfOlderLimitsInSilence) {
    LmOFStream output("/dev/full");
    writeOlderLimits(bundle.limits, output);
    EXPECT_TRUE(output.bad());
    EXPECT_EQ(test::takeChain(), StatusChain{});
}

// What becomes of the file is the tool's affair, which complains in words of its own.
TEST_F(FullDisk, DoesNotShowInACompressedStream) {
    const std::string path = scratch / "a.gz";
    std::filesystem::create_symlink("/dev/full", path);
    const support::ChildResult result = support::runFunction([&] {
        LmCompOFStream output;
        output.open(path.c_str());
        bundle.model.writeModelStream(output, bundle.problemDef);
        output.close();
        std::cout << (output.good() ? "good" : "fail") << '\n';
        test::printChain();
    });
    EXPECT_EQ(result.outcome, "0");
    EXPECT_EQ(result.out, "good\n");
    EXPECT_NE(result.err, "");
    EXPECT_FALSE(result.leftProcesses);
}

TEST_F(FullDisk, LeavesTheBeginningOfAFileThatMayNotGrow) {
    for (const Writer& writer : writers()) {
        SCOPED_TRACE(writer.name);
        const std::string whole = scratch / "whole";
        writer.toFile(whole.c_str());
        const std::string part = scratch / "part";
        const support::ChildResult result = withFilesOf(100, true, [&] { writer.toFile(part.c_str()); });
        EXPECT_EQ(result.outcome, "0");
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(support::readBytes(part), support::readBytes(whole).substr(0, 100));
    }
}

TEST_F(FullDisk, OfLimitsThatAreCheckedIsToldInTheBodyToo) {
    const std::string path = scratch / "a";
    const support::ChildResult result =
        withFilesOf(100, true, [&] { writeLimitsFileChecked(bundle.limits, path.c_str()); });
    EXPECT_EQ(result.out, "error: \"Couldn't write file \"" + path + "\".\"\n");
}

TEST_F(FullDisk, EndsAProgramThatDoesNotIgnoreTheSignal) {
    for (const Writer& writer : writers()) {
        const support::ChildResult result =
            withFilesOf(100, false, [&] { writer.toFile((scratch / "a").c_str()); });
        EXPECT_EQ(result.outcome, "SIGXFSZ") << writer.name;
    }
}

} // namespace
} // namespace quillon
