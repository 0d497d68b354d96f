#include "quillon/scale/LqMeasuredData.h"

#include "quillon/core/LmSStream.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/NoFreeDescriptors.h"
#include "tests/support/ScratchDirectory.h"
#include "tests/support/StatusChain.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

namespace quillon {
namespace {

using support::ScratchDirectory;
using test::error;
using test::StatusChain;
using testing::ElementsAre;
using testing::IsEmpty;

const std::string header = "Kym Measured File\nv1.00\n";

class MeasuredData : public testing::Test {
protected:
    void read(const std::string& text) {
        LmISStream input(text.c_str());
        measured.read(input);
    }

    std::vector<float> constants() const { return {measured.begin(), measured.end()}; }

    /// A file in the scratch directory with this text.
    LmStr fileWith(const std::string& text) const {
        const std::string path = scratch / "subject.measured";
        support::writeBytes(path, text);
        return path.c_str();
    }

    LqMeasuredData measured;
    ScratchDirectory scratch;

private:
    test::CleanStatus cleanStatus;
};

std::string quoted(const LmStr& path) {
    return '"' + std::string(path.view()) + '"';
}

TEST_F(MeasuredData, StartsEmpty) {
    EXPECT_THAT(constants(), IsEmpty());
}

TEST_F(MeasuredData, ReadsCountAndConstantsWithComments) {
    read(header + "3\n172.5\n41.25 # a comment\n88\n");
    EXPECT_THAT(constants(), ElementsAre(172.5F, 41.25F, 88.0F));
    EXPECT_EQ(test::takeChain(), StatusChain{});
}

TEST_F(MeasuredData, ReadsNothingBehindTheLastConstant) {
    read(header + "# how many\n 2 1 2 and more text");
    EXPECT_THAT(constants(), ElementsAre(1.0F, 2.0F));
    EXPECT_EQ(test::takeChain(), StatusChain{});
}

TEST_F(MeasuredData, TheLastConstantMayEndTheFile) {
    read(header + "1 88");
    EXPECT_THAT(constants(), ElementsAre(88.0F));
    EXPECT_EQ(test::takeChain(), StatusChain{});
}

TEST_F(MeasuredData, ACountOfZeroEmptiesTheArrayAndEndsTheReading) {
    read(header + "2 1 2");
    read(header + "0 not a number");
    EXPECT_THAT(constants(), IsEmpty());
    EXPECT_EQ(measured.data(), nullptr);
    EXPECT_EQ(test::takeChain(), StatusChain{});
}

TEST_F(MeasuredData, ACountOfZeroForAnEmptyArrayReadsNothingEither) {
    read(header + "0 not a number");
    EXPECT_THAT(constants(), IsEmpty());
    EXPECT_EQ(test::takeChain(), StatusChain{});
}

TEST_F(MeasuredData, AnotherCountResizes) {
    read(header + "2 1 2");
    read(header + "3 4 5 6");
    EXPECT_THAT(constants(), ElementsAre(4.0F, 5.0F, 6.0F));
    read(header + "1 7");
    EXPECT_THAT(constants(), ElementsAre(7.0F));
    EXPECT_EQ(test::takeChain(), StatusChain{});
}

TEST_F(MeasuredData, TheElementThatFailsIsStoredAndThoseBehindItKeepTheirValue) {
    read(header + "3 1 2 3");
    read(header + "3 4 x 6");
    EXPECT_THAT(constants(), ElementsAre(4.0F, 0.0F, 3.0F));
    EXPECT_EQ(test::takeChain(), StatusChain{error("Error reading measured entry.")});
}

TEST_F(MeasuredData, NewElementsThatAreNotReachedAreZero) {
    read(header + "2 1 2");
    read(header + "4 9");
    EXPECT_THAT(constants(), ElementsAre(9.0F, 0.0F, 0.0F, 0.0F));
    EXPECT_EQ(test::takeChain(), StatusChain{error("Error reading measured entry.")});
    read(header + "5 1 2 3 4 5");
    read(header + "6 9 x");
    EXPECT_THAT(constants(), ElementsAre(9.0F, 0.0F, 3.0F, 4.0F, 5.0F, 0.0F));
    EXPECT_EQ(test::takeChain(), StatusChain{error("Error reading measured entry.")});
}

TEST_F(MeasuredData, WithoutACountTheArrayIsLeft) {
    read(header + "2 1 2");
    for (const char* text : {"", "x", "# nothing\n"}) {
        read(header + text);
        EXPECT_THAT(constants(), ElementsAre(1.0F, 2.0F));
        EXPECT_EQ(test::takeChain(), StatusChain{error("Error reading measured count.")});
    }
}

TEST_F(MeasuredData, BehindAnOlderErrorTheArrayIsLeft) {
    read(header + "2 1 2");
    pushErrorf("Older.");
    read(header + "3 4 5 6");
    EXPECT_THAT(constants(), ElementsAre(1.0F, 2.0F));
    EXPECT_EQ(test::takeChain(), StatusChain{error("Older.")});
}

TEST_F(MeasuredData, BehindAnOlderWarningItIsReadAllTheSame) {
    pushWarningf("Older.");
    read(header + "1 4");
    EXPECT_THAT(constants(), ElementsAre(4.0F));
    EXPECT_EQ(test::takeChain(), StatusChain{test::warning("Older.")});
}

TEST_F(MeasuredData, ACountBeyond32BitsIsNone) {
    read(header + "2 1 2");
    read(header + "99999999999 1 2");
    EXPECT_THAT(constants(), ElementsAre(1.0F, 2.0F));
    EXPECT_EQ(test::takeChain(), StatusChain{error("Error reading measured count.")});
}

TEST_F(MeasuredData, ConstantsThatFitOnlyDoublePrecisionBecomeInfiniteOrZero) {
    read(header + "4 1e39 -1e39 1e-46 1e-400");
    EXPECT_THAT(constants(), ElementsAre(HUGE_VALF, -HUGE_VALF, 0.0F, 0.0F));
    EXPECT_EQ(test::takeChain(), StatusChain{});
}

TEST_F(MeasuredData, AConstantBeyondDoublePrecisionCannotBeRead) {
    read(header + "3 1 2 3");
    read(header + "3 4 1e400 6");
    EXPECT_THAT(constants(), ElementsAre(4.0F, HUGE_VALF, 3.0F));
    EXPECT_EQ(test::takeChain(), StatusChain{error("Error reading measured entry.")});
}

TEST_F(MeasuredData, ANegativeCountIsRefusedByTheArray) {
    const support::ChildResult result = support::runFunction([] {
        LmISStream input("Kym Measured File\nv1.00\n-3\n");
        LqMeasuredData().read(input);
    });
    EXPECT_EQ(result.outcome, "SIGABRT");
    EXPECT_EQ(result.err, "\nUnable to allocate memory!\nAttempted to allocate -3 elements, total size: "
                          "18446744073709551604.\n\n");
}

TEST_F(MeasuredData, ACountFarAboveTheConstantsTakesNoMemory) {
    const support::ChildResult result = support::runFunction([] {
        LqMeasuredData measured;
        measured.append(1);
        LmISStream input("Kym Measured File\nv1.00\n100000000 5 6\n");
        measured.read(input);
        const bool asExpected = measured.count() == 100000000 && measured[0] == 5 && measured[1] == 6 &&
                                measured[2] == 0 &&
                                test::takeChain() == StatusChain{error("Error reading measured entry.")};
        std::_Exit(asExpected ? 0 : 1);
    });
    EXPECT_EQ(result.outcome, "0");
#if !defined(__SANITIZE_ADDRESS__)
    EXPECT_LT(result.peakMemory, 100 * 1024) << "of the 400 MB that the elements would take";
#endif
}

// --- The header -------------------------------------------------------------------------------------------

TEST_F(MeasuredData, TakesEveryVersionOfTheSameWholePart) {
    for (const char* text : {"Kym Measured File\nv1.00\n", "Kym Measured File\nv1.99\n",
                             "Kym Measured File, second edition\nx1\n"}) {
        LmISStream input(text);
        EXPECT_TRUE(LqMeasuredData::readHeader(input)) << text;
        EXPECT_EQ(test::takeChain(), StatusChain{}) << text;
    }
}

TEST_F(MeasuredData, RefusesAnotherHeader) {
    const struct {
        std::string text;
        const char* message;
    } cases[] = {
        {"", "Error reading file."},
        {"Kym Measured File" + std::string(64, ' ') + "\nv1.00\n", "Error reading file."},
        {"Kym Measured\nv1.00\n", "Invalid datafile header id."},
        {"Kym Model File\nv1.00\n", "Invalid datafile header id."},
        {"Kym Measured File\n", "Unable to read datafile version number."},
        {"Kym Measured File\n v1.00\n", "Unable to read datafile version number."},
        {"Kym Measured File\nvx\n", "Unable to read datafile version number."},
        {"Kym Measured File\nv0.99\n", "Unsupported datafile version 0.99.  Application uses version 1.00."},
        {"Kym Measured File\nv2.5\n", "Unsupported datafile version 2.50.  Application uses version 1.00."},
    };
    for (const auto& each : cases) {
        LmISStream input(each.text.c_str());
        EXPECT_FALSE(LqMeasuredData::readHeader(input)) << each.text;
        EXPECT_EQ(test::takeChain(), StatusChain{error(each.message)}) << each.text;
    }
}

TEST_F(MeasuredData, ABadHeaderStopsTheReadingAndLeavesTheArray) {
    read(header + "2 1 2");
    read("Kym Model File\nv1.00\n1 5");
    EXPECT_THAT(constants(), ElementsAre(1.0F, 2.0F));
    EXPECT_EQ(test::takeChain(), (StatusChain{error("File does not contain measured data."),
                                              error("Invalid datafile header id.")}));
}

// --- Files ------------------------------------------------------------------------------------------------

TEST_F(MeasuredData, ReadsAFile) {
    measured.readFile(fileWith(header + "3\n172.5\n41.25 # a comment\n88\n"));
    EXPECT_THAT(constants(), ElementsAre(172.5F, 41.25F, 88.0F));
    EXPECT_EQ(test::takeChain(), StatusChain{});
}

TEST_F(MeasuredData, ReportsTheFileOnTopOfWhatIsWrongInIt) {
    const LmStr path = fileWith(header + "3 1");
    measured.readFile(path);
    EXPECT_EQ(test::takeChain(), (StatusChain{error("Unable to read " + quoted(path) + "."),
                                              error("Error reading measured entry.")}));
    pushErrorf("Older.");
    measured.readFile(fileWith(header + "1 5"));
    EXPECT_EQ(test::takeChain(),
              (StatusChain{error("Unable to read " + quoted(path) + "."), error("Older.")}));
    const LmStr other = fileWith("Kym Model File\n");
    measured.readFile(other);
    EXPECT_EQ(test::takeChain(), (StatusChain{error("Unable to read " + quoted(other) + "."),
                                              error("File does not contain measured data."),
                                              error("Invalid datafile header id.")}));
}

TEST_F(MeasuredData, ReportsAFileThatIsNotThere) {
    const LmStr path = (scratch / "absent").c_str();
    measured.readFile(path);
    EXPECT_EQ(test::takeChain(),
              (StatusChain{error("Unable to open " + quoted(path) + "."), error("File does not exist.")}));
    EXPECT_FALSE(LqMeasuredData::isMeasuredFile(path));
    EXPECT_EQ(test::takeChain(),
              (StatusChain{error("Unable to open " + quoted(path) + "."),
                           error("Unable to open " + quoted(path) + "."), error("File does not exist.")}));
}

TEST_F(MeasuredData, ReportsAFileThatCannotBeOpened) {
    const LmStr path = fileWith(header + "0");
    {
        const test::NoFreeDescriptors noFreeDescriptors;
        measured.readFile(path);
        EXPECT_EQ(test::takeChain(), StatusChain{error("Unable to open " + quoted(path) + ".")});
        EXPECT_FALSE(LqMeasuredData::isMeasuredFile(path));
        EXPECT_EQ(test::takeChain(), StatusChain{error("Couldn't open " + quoted(path) + ".")});
    }
}

TEST_F(MeasuredData, AFileIsOneByItsHeaderAlone) {
    EXPECT_TRUE(LqMeasuredData::isMeasuredFile(fileWith(header + "no count")));
    EXPECT_EQ(test::takeChain(), StatusChain{});
    EXPECT_FALSE(LqMeasuredData::isMeasuredFile(fileWith("Kym Model File\nv1.00\n")));
    EXPECT_EQ(test::takeChain(), StatusChain{error("Invalid datafile header id.")});
}

} // namespace
} // namespace quillon
