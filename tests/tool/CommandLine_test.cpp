#include "quillon/tool/CommandLine.h"

#include "quillon/core/LmStatus.h"
#include "quillon/tool/DescriptorBuf.h"
#include "tests/support/CancelHook.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/CommaLocale.h"
#include "tests/support/ScratchDirectory.h"
#include "tests/support/StatusChain.h"

#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <iostream>
#include <optional>
#include <sstream>
#include <string>
#include <unistd.h>
#include <vector>

namespace quillon {
namespace {

using support::ScratchDirectory;
using support::writeBytes;

struct Outcome {
    int exitCode = 0;
    std::string out;
    std::string messages;

    friend bool operator==(const Outcome&, const Outcome&) = default;
    friend std::ostream& operator<<(std::ostream& output, const Outcome& outcome) {
        return output << outcome.exitCode << "\n--- out\n"
                      << outcome.out << "--- messages\n"
                      << outcome.messages;
    }
};

Outcome runWith(const std::vector<const char*>& arguments) {
    std::ostringstream out;
    std::ostringstream messages;
    Outcome outcome;
    outcome.exitCode = runCommandLine(arguments, out, messages);
    outcome.out = out.str();
    outcome.messages = messages.str();
    return outcome;
}

TEST(CommandLine, AnswersEachRowOfItsTable) {
    struct Case {
        std::vector<const char*> arguments;
        Outcome outcome;
    };
    const Case cases[] = {
        {{}, {1, "", "Usage: quillon info <.zvx>\n"}},
        {{"-v"}, {0, "quillon 0.0.0a\nCopyright (c) the quillon authors.\n", ""}},
        {{"-changes"}, {0, "", ""}},
        {{"info"}, {1, "", "No value given for <.zvx>\n"}},
        {{"info", "a", "b"}, {1, "", "Too many parameters given.\n"}},
        {{"info", "a", "b", "c"}, {1, "", "Too many parameters given.\n"}},
        {{"-v", "x"}, {1, "", "Unknown operation: -v\n"}},
        {{"-changes", "x"}, {1, "", "Unknown operation: -changes\n"}},
        {{"Info", "a", "b", "c"}, {1, "", "Unknown operation: Info\n"}},
        {{""}, {1, "", "Unknown operation: \n"}},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(runWith(c.arguments), c.outcome);
    }
}

TEST(CommandLine, UsageErrorsLeaveTheStatusAlone) {
    const test::CleanStatus clean;
    pushWarning("stands");
    runWith({});
    runWith({"info"});
    EXPECT_EQ(test::chainOf(), test::StatusChain{test::warning("stands")});
}

/// A family without problem definition and model, whose limits and scale definition are blank.
std::string writeFamily(const ScratchDirectory& scratch) {
    writeBytes(scratch / "limits", "Kym System Variable Limits File\nv2.00\n");
    writeBytes(scratch / "scale", "Kym Scale Definition File\nv1.00\nREAL_COUNT: 0\nDEFAULT_REAL_WEIGHT: 0\n"
                                  "LIMIT_ADJUSTMENTS {\n# none\n}\nGLOBAL_CONSTRAINTS {\n}\nTEMPS {\n}\n");
    writeBytes(scratch / "a.zvx", "Kym Problem Specification File\nv1.00\nLIMITS: " + (scratch / "limits") +
                                      "\nSCALEDEF: " + (scratch / "scale") + "\n");
    return scratch / "a.zvx";
}

TEST(CommandLine, WarningStandingBeforeMakesTheSpecificationInvalid) {
    const test::CleanStatus clean;
    const ScratchDirectory scratch;
    const std::string path = writeFamily(scratch);
    pushWarning("Early.");
    EXPECT_EQ(
        runWith({"info", path.c_str()}),
        (Outcome{1, "", "\n\nERROR: File is not a valid problem specification file.\n       Early.\n\n"}));
}

TEST(CommandLine, ReportsAProblemDefinitionThatTheUserCancelled) {
    const test::CleanStatus clean;
    const ScratchDirectory scratch;
    const std::string path = scratch / "a.zvx";
    writeBytes(path, "Kym Problem Specification File\nv1.00\nPROBDEF: " + (scratch / "p") +
                         "\nMatch: BodyID\nLIMITS: " + (scratch / "limits") + "\n");
    writeBytes(scratch / "p", "Kym Problem Definition File\nv1.00\n5\n1 a\n2 b\n3 c\n4 d\n5 e\n");
    const test::CancelAtAsking hook(1);
    EXPECT_EQ(runWith({"info", path.c_str()}),
              (Outcome{1, "",
                       "Read " + path + "\n\n\nERROR: Unable to read '" + (scratch / "p") +
                           "'.\n       Read aborted.\n       Canceled.\n\n"}));
}

TEST(CommandLine, AWarningHidesTheErrorBelowItAndMakesTheLaterReadersLenient) {
    const test::CleanStatus clean;
    const ScratchDirectory scratch;
    const std::string path = scratch / "a.zvx";
    writeBytes(path, "Kym Problem Specification File\nv1.00\nUNSCALEDBODYDEF: " + (scratch / "model") +
                         "\nLIMITS: " + (scratch / "limits") + "\nSCALEDEF: " + (scratch / "scale") + "\n");
    writeBytes(scratch / "model", "Kym Model File\nv1.00\n0\n0\n4\n1 0 0 0\n2 0 0 0\n3 0 0 0\n4 0 0 0\n"
                                  "0\n0\n0\n");
    writeBytes(scratch / "limits", "Kym System Variable Limits File\nv2.00\n");
    writeBytes(scratch / "scale", "Kym Scale Definition File\nv1.00\nREAL_COUNT: 2\nDEFAULT_REAL_WEIGHT: 1\n"
                                  "LIMIT_ADJUSTMENTS {\nelbow 0 1\n}\nGLOBAL_CONSTRAINTS {\n}\nTEMPS {\n}\n");
    // A host program reports something of its own when it is asked behind the fourth marker.
    setCancelHook(
        [](void*) {
            pushError("An error of the host.");
            pushWarning("And a warning.");
            return 0;
        },
        nullptr);
    const Outcome outcome = runWith({"info", path.c_str()});
    setCancelHook(nullptr, nullptr);
    EXPECT_EQ(outcome,
              (Outcome{0, "scaling_params scale_real_count=2 default_real_weight=1\n",
                       "Read " + path + "\nRead " + (scratch / "model") + "\nRead " + (scratch / "limits") +
                           "\nRead " + (scratch / "scale") +
                           "\n\n\n"
                           "WARNING: Variable 'elbow' is not in the problem definition.\n"
                           "         The SCALE_REAL_COUNT (2) is greater than the number of reals in the\n"
                           "         problem definition (0).\n"
                           "         \n"
                           "         And a warning.\n"
                           "         An error of the host.\n\n"}));
    EXPECT_FALSE(currentStatus().hasEntries()) << "printing empties the chain";
}

TEST(CommandLine, ReportsTheSameUnderALocaleWithADecimalComma) {
    const auto walk = [](bool withComma) {
        return support::runFunction([withComma] {
            std::filesystem::current_path(std::filesystem::path(QUILLON_SOURCE_DIR) / "examples" / "walker");
            std::optional<test::CommaLocale> comma;
            if (withComma) {
                comma.emplace();
            }
            const Outcome outcome = runWith({"info", "walker.zvx"});
            std::cout << outcome << std::flush;
        });
    };
    const support::ChildResult classic = walk(false);
    EXPECT_EQ(classic.outcome, "0");
    EXPECT_TRUE(classic.out.starts_with("0\n--- out\nsys_var v1 ")) << classic.out;
    EXPECT_EQ(walk(true).out, classic.out);
}

TEST(CommandLine, FailsWhenTheReportCannotBeWritten) {
    const test::CleanStatus clean;
    const ScratchDirectory scratch;
    const std::string path = writeFamily(scratch);
    const std::vector<const char*> arguments = {"info", path.c_str()};
    std::ostringstream out;
    out.setstate(std::ios::badbit);
    std::ostringstream messages;
    EXPECT_EQ(runCommandLine(arguments, out, messages), 1);
    EXPECT_EQ(messages.str(), "Read " + path + "\nRead " + (scratch / "limits") + "\nRead " +
                                  (scratch / "scale") + "\nUnable to write the report.\n");
}

TEST(CommandLine, FailsWhenTheVersionCannotBeWritten) {
    const std::vector<const char*> arguments = {"-v"};
    std::ostringstream out;
    out.setstate(std::ios::badbit);
    std::ostringstream messages;
    EXPECT_EQ(runCommandLine(arguments, out, messages), 1);
    EXPECT_EQ(messages.str(), "Unable to write the version.\n");
}

TEST(DescriptorBuf, WritesAllThatTheStreamTakes) {
    const ScratchDirectory scratch;
    std::string expected;
    {
        const int descriptor = ::open((scratch / "out").c_str(), O_CREAT | O_WRONLY, 0644);
        ASSERT_GE(descriptor, 0);
        DescriptorBuf buffer(descriptor);
        std::ostream out(&buffer);
        for (int i = 0; i < 70000; ++i) {
            out.put(static_cast<char>('a' + i % 26));
            expected += static_cast<char>('a' + i % 26);
        }
        const std::string large(200000, 'x');
        out << "head" << large << "tail";
        expected += "head" + large + "tail";
        EXPECT_TRUE(out.good());
        out.flush();
        ::close(descriptor);
    }
    EXPECT_EQ(support::readBytes(scratch / "out"), expected);
}

TEST(DescriptorBuf, FailsTheStreamWhenTheDeviceIsFull) {
    const int descriptor = ::open("/dev/full", O_WRONLY);
    ASSERT_GE(descriptor, 0);
    DescriptorBuf buffer(descriptor);
    std::ostream out(&buffer);
    out << "text";
    EXPECT_TRUE(out.good()) << "nothing has been written yet";
    out.flush();
    EXPECT_TRUE(out.bad());
    out.clear();
    out << std::string(100000, 'x');
    EXPECT_TRUE(out.bad());
    ::close(descriptor);
}

} // namespace
} // namespace quillon
