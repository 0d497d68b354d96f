#include "quillon/problem/LqProblemDefData.h"

#include "tests/problem/ProblemDefSamples.h"
#include "tests/support/CommaLocale.h"
#include "tests/support/NoFreeDescriptors.h"
#include "tests/support/ScratchDirectory.h"
#include "tests/support/StatusChain.h"

#include <gtest/gtest.h>

#include <iomanip>
#include <iterator>
#include <sstream>

namespace quillon::test {
namespace {

TEST(NameField, OfUpToTwentyCharactersFillsItsColumnsAndALongerOneIsQuoted) {
    const std::pair<const char*, const char*> cases[] = {
        {"", "                    |"},
        {"Hips", "Hips                |"},
        {"Left \"Hip\"", "Left \"Hip\"          |"},
        {"ABCDEFGHIJKLMNOPQRST", "ABCDEFGHIJKLMNOPQRST|"},
        {"ABCDEFGHIJKLMNOPQRSTU", "\"ABCDEFGHIJKLMNOPQRSTU\" |"},
    };
    for (const auto& [name, field] : cases) {
        std::ostringstream output;
        output << std::right << std::setw(30);
        LqProblemDefData::writeNameField(output, name);
        EXPECT_EQ(output.str() + "|", field);
    }
}

TEST(NameField, OfANullNameIsBlank) {
    std::ostringstream output;
    LqProblemDefData::writeNameField(output, LmStr());
    EXPECT_EQ(output.str(), std::string(20, ' '));
}

void fillSample(LqProblemDefData& data) {
    addSysVar(data, 1, "Hips X");
    addSysVar(data, 12, "");
    addSysVar(data, 1234, "Hips rotation");
    LqPDDBodyMap& hips = data.addBody("Hips", "ReferenceSystemZero", 1);
    hips.setMapping(0, 1);
    hips.setMapping(1, constantMapping(0.5F));
    hips.setMapping(2, combination(-2.25F, {{3, 1.0F}, {1000, -0.125F}}));
    hips.setMapping(5, 2);
    LqPDDBodyMap& arm = data.addBody("ABCDEFGHIJKLMNOPQRST", "Hips", 23);
    arm.type = 1;
    arm.typeOneVar = 2;
    arm.typeTwoVar = 3;
    LqPDDBodyMap& hand = data.addBody("ABCDEFGHIJKLMNOPQRSTU", "ABCDEFGHIJKLMNOPQRST", -1);
    hand.type = 3;
    hand.typeOneVar = 1;
    hand.typeTwoVar = 2;
    data.addRealMarker(LqPDDRealMarker(1, 2, 0.5F, "Hips"));
    data.addRealMarker(LqPDDRealMarker(1002, 33, 1234.5678F, "ABCDEFGHIJKLMNOPQRSTU"));
    data.addGlobalDirectionMarker(LqPDDGlobalDirectionMarker(3, 1.0F, "Hips"));
    addFixMarker(data, LqPDDFixMarker(4, 1.0F, "Hips"));
    addDoubleMarker(data, LqPDDDoubleMarker(5, 1, 0.0004F, "Hips"));
    data.addArtificialMarker(LqPDDArtificialMarker(6, 7, -1.0F, "Hips", "ABCDEFGHIJKLMNOPQRST"));
}

const std::string sampleSections = "  3    # of variables -- var num, description\n"
                                   "    1    Hips X\n"
                                   "   12    \n"
                                   "  1234    Hips rotation\n"
                                   "  3    # of bodies, body names, parent names, graphics #, type\n"
                                   " Hips                ReferenceSystemZero        1   0\n"
                                   "    1   2   3   6   5   4\n"
                                   "   1\n"
                                   "  -1\n"
                                   " 0.500000\n"
                                   "  -3\n"
                                   " -2.250000\n"
                                   "    3   1.000000\n"
                                   "    1000   -0.125000\n"
                                   "   0\n"
                                   "   0\n"
                                   "   2\n"
                                   " ABCDEFGHIJKLMNOPQRSTHips                      23   1\n"
                                   "    1   2   3   6   5   4\n"
                                   "   0\n"
                                   "   0\n"
                                   "   0\n"
                                   "   0\n"
                                   "   0\n"
                                   "   0\n"
                                   "   2\n"
                                   " \"ABCDEFGHIJKLMNOPQRSTU\" ABCDEFGHIJKLMNOPQRST      -1   3\n"
                                   "    1   2   3   6   5   4\n"
                                   "   0\n"
                                   "   0\n"
                                   "   0\n"
                                   "   0\n"
                                   "   0\n"
                                   "   0\n"
                                   "  2    # real markers, marker#, pred type #, weight, body name\n"
                                   "    1   2   0.500    Hips                \n"
                                   "  1002   33 1234.568    \"ABCDEFGHIJKLMNOPQRSTU\" \n"
                                   "  1    # fix markers, ID, weight, body name\n"
                                   "    4   1.000  Hips                \n"
                                   "  1    # double markers, ID, double ID, weight, body name\n"
                                   "    5   1   0.000    Hips                \n"
                                   "  1    # artificial pairs, pt1#, pt2#, weight, body1 name, body2 name\n"
                                   "    6   7  -1.000    Hips                    ABCDEFGHIJKLMNOPQRST\n";

TEST(ProblemDefWriter, WritesAllSectionsInTheirColumns) {
    LqProblemDefData data;
    fillSample(data);
    std::ostringstream sections;
    data.writeProblemDefSections(sections);
    EXPECT_EQ(sections.str(), sampleSections);
    std::ostringstream stream;
    data.writeProblemDefStream(stream);
    EXPECT_EQ(stream.str(), "Kym Problem Definition File\nv1.00\n" + sampleSections);
}

TEST(ProblemDefWriter, WritesAnEmptyDefinitionAsZeroCounts) {
    std::ostringstream output;
    LqProblemDefData().writeProblemDefStream(output);
    EXPECT_EQ(output.str(), "Kym Problem Definition File\nv1.00\n"
                            "  0    # of variables -- var num, description\n"
                            "  0    # of bodies, body names, parent names, graphics #, type\n"
                            "  0    # real markers, marker#, pred type #, weight, body name\n"
                            "  0    # fix markers, ID, weight, body name\n"
                            "  0    # double markers, ID, double ID, weight, body name\n"
                            "  0    # artificial pairs, pt1#, pt2#, weight, body1 name, body2 name\n");
}

TEST(ProblemDefWriter, WritesTheSameWhateverFormatTheStreamHasAndLeavesItSo) {
    LqProblemDefData data;
    fillSample(data);
    std::ostringstream output;
    output << std::hex << std::showbase << std::showpos << std::uppercase << std::scientific << std::left;
    output.precision(11);
    output.fill('*');
    output.width(40);
    const std::ios_base::fmtflags flags = output.flags();
    data.writeProblemDefSections(output);
    EXPECT_EQ(output.str(), sampleSections);
    EXPECT_EQ(output.flags(), flags);
    EXPECT_EQ(output.precision(), 11);
    EXPECT_EQ(output.width(), 40);
    EXPECT_EQ(output.fill(), '*');
}

TEST(ProblemDefWriter, EachSectionPutsTheFormatOfTheStreamBack) {
    LqProblemDefData data;
    fillSample(data);
    using WriteSection = void (LqProblemDefData::*)(std::ostream&) const;
    const WriteSection writers[] = {
        &LqProblemDefData::writeSysVars,       &LqProblemDefData::writeBodies,
        &LqProblemDefData::writeRealMarkers,   &LqProblemDefData::writeFixMarkers,
        &LqProblemDefData::writeDoubleMarkers, &LqProblemDefData::writeArtificialMarkers};
    std::string sections;
    for (const WriteSection write : writers) {
        std::ostringstream output;
        output << std::oct << std::showpos << std::scientific << std::internal;
        output.precision(2);
        output.width(9);
        const std::ios_base::fmtflags flags = output.flags();
        (data.*write)(output);
        EXPECT_EQ(output.flags(), flags);
        EXPECT_EQ(output.precision(), 2);
        EXPECT_EQ(output.width(), 9);
        sections += output.str();
    }
    EXPECT_EQ(sections, sampleSections);
}

TEST(ProblemDefWriter, PassesOverNullSlots) {
    LqProblemDefData data;
    data.addBody("Hips", "ReferenceSystemZero", 1);
    data.addRealMarker(LqPDDRealMarker(1, 2, 0.5F, "Hips"));
    std::ostringstream before;
    data.writeProblemDefStream(before);
    appendNullSlots(data);
    std::ostringstream after;
    data.writeProblemDefStream(after);
    EXPECT_EQ(after.str(), before.str());
}

TEST(ProblemDefWriter, WritesAFileThatReadsBack) {
    const CleanStatus clean;
    const support::ScratchDirectory scratch;
    const std::string path = scratch / "sample.prb";
    LqProblemDefData data;
    addSysVar(data, 1, "Hips X");
    data.addBody("ABCDEFGHIJKLMNOPQRST", "ReferenceSystemZero", 1).setMapping(0, 1);
    data.addBody("ABCDEFGHIJKLMNOPQRSTU", "ABCDEFGHIJKLMNOPQRST", 2);
    EXPECT_TRUE(data.writeProblemDefFile(path.c_str()));
    LqProblemDefData readBack;
    EXPECT_TRUE(readBack.readProblemDefFile(path.c_str(), false));
    EXPECT_EQ(takeChain(), StatusChain{});
    EXPECT_TRUE(equals(readBack, data));
}

TEST(ProblemDefWriter, CutsWeightsToThreeDecimalsAndMappingsToSix) {
    const CleanStatus clean;
    LqProblemDefData data;
    data.addBody("Hips", "ReferenceSystemZero", 1).setMapping(0, constantMapping(0.12345678F));
    addFixMarker(data, LqPDDFixMarker(1, 0.12345678F, "Hips"));
    std::stringstream stream;
    data.writeProblemDefStream(stream);
    LqProblemDefData readBack;
    EXPECT_TRUE(readBack.readProblemDefStream(stream, false));
    EXPECT_EQ(readBack.bodies[0]->mappings[0].constant, 0.123457F);
    EXPECT_EQ(readBack.fixMarkers[0]->weight, 0.123F);
}

TEST(ProblemDefWriter, ABodyOfBothTypesCannotBeReadBack) {
    const CleanStatus clean;
    LqProblemDefData data;
    fillSample(data);
    data.sysVars[2]->id = 3;
    data.bodies[0]->setMapping(2, 0);
    std::stringstream stream;
    data.writeProblemDefStream(stream);
    LqProblemDefData readBack;
    EXPECT_FALSE(readBack.readProblemDefStream(stream, false));
    // The line of the count of real markers and the row of the first one are taken for the type lines, the id
    // of the second one for the count, and the count line of the fix markers for a row.
    EXPECT_EQ(takeChain(), StatusChain{error("Unable to read Real marker ID, prediction type and weight.")});
}

TEST(ProblemDefWriter, ReportsAPathThatCannotBeWritten) {
    const CleanStatus clean;
    const support::ScratchDirectory scratch;
    const std::string path = scratch.path().string();
    EXPECT_FALSE(LqProblemDefData().writeProblemDefFile(path.c_str()));
    EXPECT_EQ(takeChain(),
              (StatusChain{error("File \"" + path + "\" is unwritable."), error("File is a directory.")}));
}

TEST(ProblemDefWriter, ReportsAFileThatCannotBeCreated) {
    const CleanStatus clean;
    const support::ScratchDirectory scratch;
    const std::string path = scratch / "sample.prb";
    {
        const NoFreeDescriptors none;
        EXPECT_FALSE(LqProblemDefData().writeProblemDefFile(path.c_str()));
    }
    EXPECT_EQ(takeChain(), StatusChain{error("Couldn't create file \"" + path + "\".")});
}

TEST(ProblemDefWriter, AFileDoesNotFollowTheGlobalLocale) {
    const CleanStatus clean;
    const support::ScratchDirectory scratch;
    const std::string path = scratch / "sample.prb";
    LqProblemDefData data;
    fillSample(data);
    data.bodies[0]->setMapping(2, constantMapping(1234.5F));
    data.bodies[2]->type = 1;
    std::ostringstream expected;
    data.writeProblemDefStream(expected);
    LqProblemDefData readBack;
    {
        const CommaLocale comma;
        EXPECT_TRUE(data.writeProblemDefFile(path.c_str()));
        EXPECT_TRUE(readBack.readProblemDefFile(path.c_str(), false));
    }
    EXPECT_EQ(takeChain(), StatusChain{});
    EXPECT_EQ(support::readBytes(path), expected.str());
    ASSERT_EQ(readBack.realMarkers.count(), 2);
    EXPECT_EQ(readBack.bodies[0]->mappings[2].constant, 1234.5F);
    EXPECT_EQ(readBack.sysVars[2]->id, 1234);
    EXPECT_EQ(readBack.realMarkers[1]->weight, 1234.568F);
}

} // namespace
} // namespace quillon::test
