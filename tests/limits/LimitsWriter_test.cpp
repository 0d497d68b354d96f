#include "quillon/limits/LimitsWriter.h"

#include "quillon/limits/LimitsReader.h"
#include "tests/limits/LimitsText.h"
#include "tests/support/CommaLocale.h"
#include "tests/support/EnvironmentValue.h"
#include "tests/support/FlushMarks.h"
#include "tests/support/LimitedBuffer.h"
#include "tests/support/NoFreeDescriptors.h"
#include "tests/support/ScratchDirectory.h"
#include "tests/support/StatusChain.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

namespace quillon {
namespace {

using test::error;
using test::linesOf;
using test::StatusChain;
using test::takeChain;
using testing::IsEmpty;

const std::string header = "Kym System Variable Limits File\nv2.00\n";

std::string written(const LqLimitsData& limits) {
    std::ostringstream output;
    writeTaggedLimits(limits, output);
    return output.str();
}

class LimitsWriter : public testing::Test {
protected:
    test::CleanStatus cleanStatus;
};

TEST_F(LimitsWriter, NoRecordsAreTheHeaderAlone) {
    EXPECT_EQ(written(LqLimitsData()), header);
}

TEST_F(LimitsWriter, WritesEveryPartOfARecordAndOfAnInclude) {
    const test::EnvironmentValue drenk("DRENK_DATA_DIR", "/data/");
    LqLimitsData limits;
    limits.setLowerLimit(7, -1.5F);
    limits.setLowerWeight(7, 2);
    limits.setUpperLimit(7, 1.5F);
    limits.setGuideValue(7, 0.25F);
    limits.setGuideWeight(7, 4);
    limits.setUpperLimit(3, 0.123F);
    limits.setUpperWeight(3, 0.12345F);
    limits.setLowerLimit(9, 1e6F);
    limits.addInclude("/data/limits/arm.limits", 40);
    limits.addInclude("leg.limits", -1);
    limits.addInclude("/data", 0);
    EXPECT_EQ(written(limits), header + "GUIDE_WEIGHT_SCALE: linear\n"
                                        "VARIABLE {\n"
                                        "  ID: 3\n"
                                        "  UPPER {\n"
                                        "    VALUE: 0.12\n"
                                        "    WEIGHT: 0.1235\n"
                                        "  }\n"
                                        "}\n"
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
                                        "  ID: 9\n"
                                        "  LOWER {\n"
                                        "    VALUE: 1000000.00\n"
                                        "  }\n"
                                        "}\n"
                                        "INCLUDE {\n"
                                        "  FILE_NAME: $DRENK_DATA_DIR/limits/arm.limits\n"
                                        "  SYSTEM_VARIABLE_ID_OFFSET: 40\n"
                                        "}\n"
                                        "INCLUDE {\n"
                                        "  FILE_NAME: leg.limits\n"
                                        "}\n"
                                        "INCLUDE {\n"
                                        "  FILE_NAME: $DRENK_DATA_DIR\n"
                                        "  SYSTEM_VARIABLE_ID_OFFSET: 0\n"
                                        "}\n");
    EXPECT_THAT(takeChain(), IsEmpty());
}

TEST_F(LimitsWriter, LeavesOutRecordsWithoutLimitsAndGuide) {
    LqLimitsData limits;
    limits.varForEdit(1);
    limits.setUpperWeight(2, 5);
    limits.setGuideValue(3, 5);
    EXPECT_EQ(written(limits), header + "VARIABLE {\n"
                                        "  ID: 3\n"
                                        "  GUIDE {\n"
                                        "    VALUE: 5.00\n"
                                        "  }\n"
                                        "}\n");
}

TEST_F(LimitsWriter, AGuideWeightAloneIsWrittenWithItsValueOf0) {
    LqLimitsData limits;
    limits.setGuideWeight(3, 5);
    EXPECT_EQ(written(limits), header + "GUIDE_WEIGHT_SCALE: linear\n"
                                        "VARIABLE {\n"
                                        "  ID: 3\n"
                                        "  GUIDE {\n"
                                        "    VALUE: 0.00\n"
                                        "    WEIGHT: 5.00\n"
                                        "  }\n"
                                        "}\n");
}

TEST_F(LimitsWriter, OneGuideWeightIsEnoughForTheScaleAndNoneLeavesItOut) {
    LqLimitsData limits;
    limits.setGuideValue(3, 5);
    limits.setGuideWeight(3, -0.0F);
    const std::string first = "VARIABLE {\n  ID: 3\n  GUIDE {\n    VALUE: 5.00\n  }\n}\n";
    EXPECT_EQ(written(limits), header + first);
    limits.setGuideWeight(9, 0.001F);
    EXPECT_EQ(written(limits),
              header + "GUIDE_WEIGHT_SCALE: linear\n" + first +
                  "VARIABLE {\n  ID: 9\n  GUIDE {\n    VALUE: 0.00\n    WEIGHT: 0.00\n  }\n}\n");
}

TEST_F(LimitsWriter, AWeightThatIsSetIsWrittenEvenWhenItIs0ButNotWithoutItsLimit) {
    LqLimitsData limits;
    limits.setUpperLimit(3, 1);
    limits.setUpperWeight(3, 0);
    limits.setLowerWeight(3, 2);
    EXPECT_EQ(written(limits), header + "VARIABLE {\n"
                                        "  ID: 3\n"
                                        "  UPPER {\n"
                                        "    VALUE: 1.00\n"
                                        "    WEIGHT: 0.0000\n"
                                        "  }\n"
                                        "}\n");
}

TEST_F(LimitsWriter, RepeatedIdsAreAllWrittenInListOrder) {
    LqLimitsData limits;
    for (const int id : {9, 2, 9}) {
        auto* const record = new LqVarLimits(id);
        record->switchLowerLimit(true);
        limits.vars.append(record);
    }
    const auto block = [](const char* id) {
        return "VARIABLE {\n  ID: " + std::string(id) + "\n  LOWER {\n    VALUE: 0.00\n  }\n}\n";
    };
    EXPECT_EQ(written(limits), header + block("9") + block("2") + block("9"));
}

TEST_F(LimitsWriter, TheHeaderLinesAreFlushed) {
    LqLimitsData limits;
    limits.setUpperLimit(3, 1);
    test::FlushMarks marks;
    std::ostream output(&marks);
    writeTaggedLimits(limits, output);
    EXPECT_EQ(marks.text(), "Kym System Variable Limits File\n|v2.00\n|"
                            "VARIABLE {\n  ID: 3\n  UPPER {\n    VALUE: 1.00\n  }\n}\n");
}

TEST_F(LimitsWriter, AWeightReadWithoutAScaleIsWrittenSquaredAndLinear) {
    LqLimitsData limits;
    std::istringstream input(header + "VARIABLE {\nID: 3\nGUIDE {\nWEIGHT: 3\n}\n}\n");
    ASSERT_TRUE(readLimitsStream(limits, input, false));
    EXPECT_EQ(limits.guideWeight(3), 9.0F);
    EXPECT_EQ(written(limits), header + "GUIDE_WEIGHT_SCALE: linear\n"
                                        "VARIABLE {\n"
                                        "  ID: 3\n"
                                        "  GUIDE {\n"
                                        "    VALUE: 0.00\n"
                                        "    WEIGHT: 9.00\n"
                                        "  }\n"
                                        "}\n");
}

TEST_F(LimitsWriter, LeavesTheStreamInFixedPointLeftJustifiedWithTwoDecimals) {
    LqLimitsData limits;
    limits.setUpperLimit(1, 2);
    limits.setUpperWeight(1, 3);
    std::ostringstream output;
    writeTaggedLimits(limits, output);
    EXPECT_EQ(output.precision(), 2);
    EXPECT_EQ(output.flags() & std::ios::floatfield, std::ios::fixed);
    EXPECT_EQ(output.flags() & std::ios::adjustfield, std::ios::left);
}

TEST_F(LimitsWriter, WritesTheSameWhateverBaseOrRealFormatTheStreamHas) {
    LqLimitsData limits;
    limits.setUpperLimit(255, 2.25F);
    limits.setUpperWeight(255, 3);
    limits.addInclude("arm.limits", 40);
    std::ostringstream output;
    output << std::hex << std::scientific << std::internal;
    output.precision(11);
    writeTaggedLimits(limits, output);
    EXPECT_EQ(output.str(), written(limits));
}

TEST_F(LimitsWriter, AFileDoesNotFollowTheGlobalLocale) {
    LqLimitsData limits;
    limits.setUpperLimit(12345, 1234.5F);
    limits.setGuideWeight(12345, 0.5F);
    const support::ScratchDirectory scratch;
    const std::string path = scratch / "x.limits";
    const std::string olderPath = scratch / "older.limits";
    support::writeBytes(olderPath, "1 Field Number\n1 12345\n1234.5\n");
    LqLimitsData back;
    LqLimitsData older;
    float version = 0;
    {
        const test::CommaLocale comma;
        writeLimitsFile(limits, path.c_str());
        EXPECT_TRUE(readLimitsFile(back, path.c_str(), false));
        EXPECT_TRUE(readLimitsFile(older, olderPath.c_str(), false));
        EXPECT_TRUE(checkLimitsFile(path.c_str(), &version));
    }
    EXPECT_THAT(takeChain(), IsEmpty());
    EXPECT_EQ(support::readBytes(path), written(limits));
    EXPECT_EQ(linesOf(back), linesOf(limits));
    EXPECT_EQ(version, 2.0F);
    ASSERT_NE(older.findVar(12345), nullptr);
    EXPECT_EQ(older.findVar(12345)->upperValue, 1234.5F);
}

TEST_F(LimitsWriter, ReportsAHeaderThatCannotBeWritten) {
    test::LimitedBuffer noRoom(0);
    std::ostream output(&noRoom);
    writeTaggedLimits(LqLimitsData(), output);
    EXPECT_EQ(takeChain(),
              (StatusChain{error("Unable to write header info."), error("Unable to write data file id.")}));
    test::LimitedBuffer roomForTheId(32);
    std::ostream cutOutput(&roomForTheId);
    writeTaggedLimits(LqLimitsData(), cutOutput);
    EXPECT_EQ(takeChain(), (StatusChain{error("Unable to write header info."),
                                        error("Unable to write data file version.")}));
}

TEST_F(LimitsWriter, WritesFiles) {
    const support::ScratchDirectory scratch;
    LqLimitsData limits;
    limits.setUpperLimit(3, 1);
    const std::string text = header + "VARIABLE {\n  ID: 3\n  UPPER {\n    VALUE: 1.00\n  }\n}\n";
    const std::string path = scratch / "x.limits";
    writeLimitsFile(limits, path.c_str());
    EXPECT_EQ(support::readBytes(path), text);
    const std::string checkedPath = scratch / "y.limits";
    writeLimitsFileChecked(limits, checkedPath.c_str());
    EXPECT_EQ(support::readBytes(checkedPath), text);
    EXPECT_THAT(takeChain(), IsEmpty());
}

TEST_F(LimitsWriter, ReportsAFileThatCannotBeWritten) {
    const support::ScratchDirectory scratch;
    const std::string directory = scratch.path().string();
    const StatusChain chain = {error("File \"" + directory + "\" is unwritable."),
                               error("File is a directory.")};
    writeLimitsFile(LqLimitsData(), directory.c_str());
    EXPECT_EQ(takeChain(), chain);
    writeLimitsFileChecked(LqLimitsData(), directory.c_str());
    EXPECT_EQ(takeChain(), chain);
}

TEST_F(LimitsWriter, ReportsAFileThatCannotBeCreated) {
    const support::ScratchDirectory scratch;
    const std::string path = scratch / "x.limits";
    {
        const test::NoFreeDescriptors none;
        writeLimitsFile(LqLimitsData(), path.c_str());
        writeLimitsFileChecked(LqLimitsData(), path.c_str());
    }
    const test::StatusLine line = error("Couldn't create file \"" + path + "\".");
    EXPECT_EQ(takeChain(), (StatusChain{line, line}));
}

TEST_F(LimitsWriter, OnlyTheCheckedVariantReportsAFullDisk) {
    const StatusChain headerChain = {error("Unable to write header info."),
                                     error("Unable to write data file id.")};
    writeLimitsFile(LqLimitsData(), "/dev/full");
    EXPECT_EQ(takeChain(), headerChain);
    writeLimitsFileChecked(LqLimitsData(), "/dev/full");
    StatusChain checkedChain = headerChain;
    checkedChain.insert(checkedChain.begin(), error("Couldn't write file \"/dev/full\"."));
    EXPECT_EQ(takeChain(), checkedChain);
}

} // namespace
} // namespace quillon
