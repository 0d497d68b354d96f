#include "quillon/model/LqBodyDefData.h"

#include "tests/model/ModelText.h"
#include "tests/support/CancelHook.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/NoFreeDescriptors.h"
#include "tests/support/ScratchDirectory.h"
#include "tests/support/StatusChain.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

namespace quillon {
namespace {

using support::ScratchDirectory;
using support::writeBytes;
using test::bodyNamesOf;
using test::error;
using test::idsOf;
using test::linesOf;
using test::StatusChain;
using test::takeChain;
using test::warning;
using testing::ElementsAre;
using testing::IsEmpty;

const std::string header = "Kym Model File\nv1.00\n";
const std::string noCameras = "0    ; # of cameras\n";
const std::string identityRows = "  1.000000    0.000000    0.000000\n"
                                 "  0.000000    1.000000    0.000000\n"
                                 "  0.000000    0.000000    1.000000\n"
                                 "  0.000000    0.000000    0.000000\n";
const std::string identityText = "[1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1]";
const std::string noMarkers = "0\n0\n0\n0\n";

/// A body of the file without vectors.
std::string plainBody(const std::string& name) {
    return " " + name + "\n" + identityRows;
}

class ModelReaderTest : public testing::Test {
protected:
    ModelReaderTest() {
        test::addBodies(definition, {{"Plain", 0}, {"Twist", 1}, {"Slide", 2}, {"Both", 3}, {"Arm_l", 0}});
    }

    bool read(const std::string& text) {
        std::istringstream input(text);
        return model.readModelSections(input, definition, "");
    }

    /// Reads what stands behind the header and a camera count of 0.
    bool readSections(const std::string& text) { return read(header + noCameras + text); }

    /// Reads the marker sections of a model without bodies.
    bool readMarkers(const std::string& text) { return readSections("0\n" + text); }

    test::CleanStatus cleanStatus;
    LqProblemDefData definition;
    LqBodyDefData model;
};

// --- What is read --------------------------------------------------------------------------------

TEST_F(ModelReaderTest, ReadsEverySection) {
    EXPECT_TRUE(read("Kym Model File\n"
                     "v1.00\n"
                     "2    ; # of cameras\n"
                     "3    ; # of bodies\n"
                     " Twist\n"
                     "  1.000000    2.000000    3.000000\n"
                     "  4.000000    5.000000    6.000000\n"
                     "  7.000000    8.000000    9.000000\n"
                     "  10.500000    -11.000000    12.000000\n"
                     "  2.5\n"
                     "  0  1  0\n"
                     " Slide\n" +
                     identityRows +
                     "  1  0  -1\n"
                     " Plain\n" +
                     identityRows +
                     "2    ; # of real points\n"
                     "  1   0.1   0.2   0.3\n"
                     "       1         30      15.0\n"
                     "       1         30      15.0\n"
                     "  2   1e3   -5   6\n"
                     "anything at all\n"
                     "\n"
                     "1    ; # of fixed points \n"
                     "  3   1   2   3\n"
                     "1    ; # of double points\n"
                     "  4   1   2   3\n"
                     "2    ; # of artificial pairs\n"
                     "  5   1   0   0\n"
                     "  6   2   0   0\n"
                     "  7   3   0   0\n"
                     "  8   4   0   0\n"));
    EXPECT_THAT(takeChain(), IsEmpty());
    EXPECT_THAT(linesOf(model),
                ElementsAre("cameras 2",
                            "body Twist [1 4 7 0 2 5 8 0 3 6 9 0 10.5 -11 12 1] length 2.5 direction 0 1 0",
                            "body Slide " + identityText + " length 0 direction 1 0 -1",
                            "body Plain " + identityText + " length 0 direction 0 0 0",
                            "real 1: 0.100000001 0.200000003 0.300000012", "real 2: 1000 -5 6",
                            "fix 3: 1 2 3", "double 4: 1 2 3", "artificial 5: 1 0 0", "artificial 6: 2 0 0",
                            "artificial 7: 3 0 0", "artificial 8: 4 0 0"));
}

TEST_F(ModelReaderTest, OneArtificialPairCountsAsTwoMarkersAndIsFoundByBothIds) {
    EXPECT_TRUE(readMarkers("0\n0\n0\n1\n 4 1 2 3\n 5 4 5 6\n"));
    EXPECT_EQ(model.markerCount(), 2);
    EXPECT_EQ(model.findMarker(4), model.artificialMarkers[0]);
    EXPECT_EQ(model.findMarker(5), model.artificialMarkers[1]);
}

TEST_F(ModelReaderTest, ABodyOfBothTypesHasALengthAndADirection) {
    EXPECT_TRUE(readSections("1\n" + plainBody("Both") + "  3\n  1  2  3\n" + noMarkers));
    EXPECT_THAT(linesOf(model),
                ElementsAre("cameras 0", "body Both " + identityText + " length 3 direction 1 2 3"));
}

TEST_F(ModelReaderTest, ALengthTooSmallFor32BitsIsNotZeroAndIsKeptAs0) {
    EXPECT_TRUE(readSections("1\n" + plainBody("Twist") + "  1e-60\n  0  0  1\n" + noMarkers));
    EXPECT_THAT(takeChain(), IsEmpty());
    EXPECT_EQ(model.bodies[0]->vectorLength, 0.0F);
    EXPECT_TRUE(readSections("1\n" + plainBody("Twist") + "  -2\n  0  0  1\n" + noMarkers));
    EXPECT_EQ(model.bodies[0]->vectorLength, -2.0F);
}

TEST_F(ModelReaderTest, ANameIsTheWholeTrimmedLine) {
    const std::string longName(600, 'n');
    test::addBodies(definition, {{longName, 0}, {"two words", 0}, {"", 0}, {"h\xFCgel", 0}});
    EXPECT_TRUE(readSections("5\n \t two words \t\n" + identityRows + longName + "\n" + identityRows + "\n" +
                             identityRows + "h\xFCgel\n" + identityRows + std::string("Plain\0ly\n", 9) +
                             identityRows + noMarkers));
    EXPECT_THAT(takeChain(), IsEmpty());
    // Strings hold no NUL byte; one in the file ends the name.
    EXPECT_THAT(bodyNamesOf(model), ElementsAre("two words", longName, "", "h\xFCgel", "Plain"));
}

TEST_F(ModelReaderTest, CarriageReturnsDoNotMatter) {
    std::string text =
        header + "1\n1\n" + plainBody("Twist") + "  2\n  0  1  0\n1\n 1 1 2 3\n camera\n1\n 2 1 2 3\n0\n0\n";
    for (std::size_t at = text.find('\n'); at != std::string::npos; at = text.find('\n', at + 2)) {
        text.insert(at, "\r");
    }
    EXPECT_TRUE(read(text));
    EXPECT_THAT(takeChain(), IsEmpty());
    EXPECT_THAT(linesOf(model),
                ElementsAre("cameras 1", "body Twist " + identityText + " length 2 direction 0 1 0",
                            "real 1: 1 2 3", "fix 2: 1 2 3"));
}

TEST_F(ModelReaderTest, TextBehindTheDataOfALineIsSkippedUpTo80Characters) {
    // With its blank and its newline 80 characters.
    const std::string comment = " " + std::string(78, 'c') + "\n";
    const std::string row = "1 0 0" + comment;
    EXPECT_TRUE(read(header + "0" + comment + "1" + comment + " Twist\n" + row + row + row + row + "2" +
                     comment + "0 0 1" + comment + "1" + comment + "1 1 2 3" + comment + "0" + comment + "0" +
                     comment + "0" + comment));
    EXPECT_THAT(takeChain(), IsEmpty());
    EXPECT_THAT(idsOf(model.realMarkers), ElementsAre(1));
    EXPECT_FALSE(read(header + "0" + comment + "0 c" + comment + noMarkers));
    EXPECT_EQ(takeChain(), (StatusChain{error("Unable to read number of real points.")}));
}

TEST_F(ModelReaderTest, BehindEachRealMarkerStandsOneLineForEachCamera) {
    EXPECT_TRUE(read(header + "2\n0\n2\n 1 1 2 3\n 7 7 7 7\n 8 8 8 8\n 2 1 2 3\nx\ny\n1\n 3 1 2 3\n0\n0\n"));
    EXPECT_THAT(takeChain(), IsEmpty());
    EXPECT_THAT(idsOf(model.realMarkers), ElementsAre(1, 2));
    EXPECT_THAT(idsOf(model.fixMarkers), ElementsAre(3));
}

TEST_F(ModelReaderTest, ANegativeCameraCountMeansNoCameraLines) {
    EXPECT_TRUE(read(header + "-3\n0\n1\n 1 1 2 3\n0\n0\n0\n"));
    EXPECT_EQ(model.cameraCount, -3);
    EXPECT_THAT(idsOf(model.realMarkers), ElementsAre(1));
}

TEST_F(ModelReaderTest, ACameraCountFarAboveTheLinesOfTheFileFailsAtOnce) {
    EXPECT_FALSE(read(header + "2000000000\n0\n2\n 1 1 2 3\n 2 1 2 3\n"));
    EXPECT_EQ(takeChain(), (StatusChain{error("Unable to read real marker number.")}));
}

TEST_F(ModelReaderTest, AModelMayHaveFewerBodiesThanTheDefinition) {
    EXPECT_TRUE(readSections("0\n" + noMarkers));
    EXPECT_THAT(takeChain(), IsEmpty());
    EXPECT_TRUE(model.isBlank());
}

TEST_F(ModelReaderTest, TheFirstOfTwoDefinedBodiesOfOneNameSaysTheType) {
    test::addBodies(definition, {{"Plain", 1}});
    EXPECT_TRUE(readSections("1\n" + plainBody("Plain") + noMarkers));
    EXPECT_THAT(takeChain(), IsEmpty());
}

TEST_F(ModelReaderTest, ASuffixIsLookedUpWithTheNameAndNotStored) {
    const std::string text = header + noCameras + "1\n" + plainBody("Arm") + noMarkers;
    std::istringstream input(text);
    EXPECT_TRUE(model.readModelSections(input, definition, "_l"));
    EXPECT_THAT(bodyNamesOf(model), ElementsAre("Arm"));
    std::istringstream again(text);
    EXPECT_FALSE(model.readModelSections(again, definition, "_r"));
    EXPECT_EQ(takeChain(),
              (StatusChain{error("The base matrix for body 'Arm_r' is given, but there is no such "
                                 "body in the problem definition.")}));
}

TEST_F(ModelReaderTest, ReadingReplacesTheRecordsButKeepsTheDefinition) {
    model.problemDef = &definition;
    model.addRealMarker({9, {}});
    model.addGlobalDirectionMarker({9, {}});
    model.includes.append(new LqBDInclude());
    EXPECT_TRUE(readMarkers("1\n 1 1 2 3\n0\n0\n0\n"));
    EXPECT_THAT(linesOf(model), ElementsAre("cameras 0", "real 1: 1 2 3"));
    EXPECT_EQ(model.problemDef, &definition);
}

// --- Headers -------------------------------------------------------------------------------------

TEST_F(ModelReaderTest, TakesHeadersThatAreGoodEnough) {
    for (const char* text : {"Kym Model File, second edition\nv1.00\n", "Kym Model File\nv1.99\n",
                             "Kym Model File\n \n x 1.5 and more\n", "Kym Model File\nv1"}) {
        std::istringstream input(text);
        EXPECT_TRUE(LqBodyDefData::readModelHeader(input)) << text;
        EXPECT_THAT(takeChain(), IsEmpty());
    }
    // A first line beyond 79 characters is cut and the rest of it skipped.
    EXPECT_TRUE(read("Kym Model File" + std::string(100, 'x') + "\nv1.00\n0\n0\n" + noMarkers));
    EXPECT_THAT(takeChain(), IsEmpty());
}

TEST_F(ModelReaderTest, ReportsABadHeader) {
    struct Case {
        const char* text;
        StatusChain chain;
    };
    const Case cases[] = {
        {"", {error("Unable to read Header Identification.")}},
        {"\nv1.00\n", {error("Unable to read Header Identification.")}},
        {"Kym Model", {error("Invalid datafile header id.")}},
        {"kym Model File\nv1.00\n", {error("Invalid datafile header id.")}},
        {" Kym Model File\nv1.00\n", {error("Invalid datafile header id.")}},
        {"Kym Model File\nv2.00\n",
         {error("Unsupported datafile version 2.00. Application uses version 1.00.")}},
        {"Kym Model File\nv0.99\n",
         {error("Unsupported datafile version 0.99. Application uses version 1.00.")}},
        {"Kym Model File\nversion 1\n", {error("Unable to read version number.")}},
        {"Kym Model File\n", {error("Unable to read version number.")}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        model.addRealMarker({9, {}});
        model.cameraCount = 4;
        EXPECT_FALSE(read(c.text));
        StatusChain chain = c.chain;
        chain.insert(chain.begin(), error("Not a valid Kym Model File."));
        EXPECT_EQ(takeChain(), chain);
        EXPECT_THAT(linesOf(model), ElementsAre("cameras 4"));
    }
}

// --- Numbers that cannot be read -----------------------------------------------------------------

TEST_F(ModelReaderTest, ANumberThatCannotBeReadLeavesTheModelEmpty) {
    struct Case {
        std::string sections;
        const char* message;
    };
    const std::string plain = plainBody("Plain");
    const Case cases[] = {
        {"", "Unable to read number of bodies."},
        {"bodies\n", "Unable to read number of bodies."},
        {"1\n", "Unable to read body name of body #1."},
        {"2\n" + plain, "Unable to read body name of body #2."},
        {"1\n Plain\nx 0 0\n", "Unable to read transformation row 1 for 'Plain'."},
        {"1\n Plain\n1 0 0\n0 x 0\n", "Unable to read transformation row 2 for 'Plain'."},
        {"1\n Plain\n1 0 0\n0 1 0\n0 0 x\n", "Unable to read transformation row 3 for 'Plain'."},
        {"2\n" + plain + " Plain\n1 0 0\n0 1 0\n0 0 1\n0 0",
         "Unable to read transformation row 4 for 'Plain'."},
        // The rows come before the name is looked up.
        {"1\n Gone\nx 0 0\n", "Unable to read transformation row 1 for 'Gone'."},
        {"2\n" + plain + plainBody("Twist") + "long\n", "Unable to read vector length for 'Twist'."},
        {"1\n" + plainBody("Twist") + "2\n0 1 up\n", "Unable to read vector direction for 'Twist'."},
        {"1\n" + plainBody("Slide") + "0 1", "Unable to read vector direction for 'Slide'."},
        {"1\n" + plain, "Unable to read number of real points."},
        {"1\n" + plain + "x\n", "Unable to read number of real points."},
        {"0\n2\n 1 1 2 3\n", "Unable to read real marker number."},
        {"0\n1\n x 1 2 3\n", "Unable to read real marker number."},
        {"0\n1\n 1 1 x 3\n", "Unable to read real position."},
        {"0\n1\n 1.5 2 3\n", "Unable to read number of fixed markers."},
        {"0\n0\n", "Unable to read number of fixed markers."},
        {"0\n0\n1\n x", "Unable to read fixed marker number."},
        {"0\n0\n1\n 1 1 2", "Unable to read fixed marker position."},
        {"0\n0\n0\nx", "Unable to read number of double markers."},
        {"0\n0\n0\n1\n", "Unable to read double marker number."},
        {"0\n0\n0\n1\n 1 x", "Unable to read double marker position."},
        {"0\n0\n0\n0\n", "Unable to read number of artificial markers."},
        {"0\n0\n0\n0\n1\n 1 1 2 3\n", "Unable to read artificial marker number."},
        {"0\n0\n0\n0\n1\n 1 1 2 3\n 2 1 2 x\n", "Unable to read artificial marker position."},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.sections);
        EXPECT_FALSE(read(header + "3\n" + c.sections));
        EXPECT_EQ(takeChain(), (StatusChain{error(c.message)}));
        EXPECT_THAT(linesOf(model), ElementsAre("cameras 3"));
        EXPECT_TRUE(model.isBlank());
    }
}

TEST_F(ModelReaderTest, ACameraCountThatCannotBeReadShowsAtTheBodies) {
    EXPECT_FALSE(read(header + "two\n0\n" + noMarkers));
    EXPECT_EQ(takeChain(), (StatusChain{error("Unable to read number of bodies.")}));
}

TEST_F(ModelReaderTest, CountsFarAboveTheRowsFailAtTheFirstMissingRow) {
    EXPECT_FALSE(readSections("20000000\n" + plainBody("Plain")));
    EXPECT_EQ(takeChain(), (StatusChain{error("Unable to read body name of body #2.")}));
    EXPECT_FALSE(readMarkers("20000000\n 1 1 2 3\n"));
    EXPECT_EQ(takeChain(), (StatusChain{error("Unable to read real marker number.")}));
    EXPECT_FALSE(readMarkers("0\n0\n0\n20000000\n 1 1 2 3\n"));
    EXPECT_EQ(takeChain(), (StatusChain{error("Unable to read artificial marker number.")}));
    EXPECT_FALSE(readSections("20000000\n" + plainBody("Plain") + plainBody("Gone")));
    EXPECT_EQ(takeChain().size(), 1U);
    EXPECT_EQ(model.bodies.count(), 20000000);
    EXPECT_THAT(bodyNamesOf(model), ElementsAre("Plain"));
}

TEST_F(ModelReaderTest, ANegativeOrTooGreatCountEndsTheProcess) {
    struct Case {
        const char* sections;
        const char* refused;
    };
    const Case cases[] = {
        {"-1\n", "-1 elements, total size: 18446744073709551608"},
        {"0\n-1\n", "-1 elements, total size: 18446744073709551608"},
        {"0\n0\n0\n0\n-1\n", "-2 elements, total size: 18446744073709551600"},
        // Doubled in 64 bits, and then more than an array may hold.
        {"0\n0\n0\n0\n1500000000\n", "3000000000 elements, total size: 24000000000"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.sections);
        const support::ChildResult child = support::runFunction([&] { readSections(c.sections); });
        EXPECT_EQ(child.outcome, "SIGABRT");
        EXPECT_EQ(child.err,
                  "\nUnable to allocate memory!\nAttempted to allocate " + std::string(c.refused) + ".\n\n");
    }
}

// --- Bodies that do not fit ----------------------------------------------------------------------

std::string missingBodyMessage(const std::string& name) {
    return "The base matrix for body '" + name +
           "' is given, but there is no such body in the problem definition.";
}

TEST_F(ModelReaderTest, ABodyThatTheDefinitionLacksEndsTheReadingWithTheBodiesInFrontOfIt) {
    for (const char* name : {"Gone", "plain", "ReferenceSystemZero", "Plain Plain", ""}) {
        SCOPED_TRACE(name);
        EXPECT_FALSE(readSections("3\n" + plainBody("Plain") + plainBody(name) + plainBody("Plain") +
                                  "1\n 1 1 2 3\n0\n0\n0\n"));
        EXPECT_EQ(takeChain(), (StatusChain{error(missingBodyMessage(name))}));
        EXPECT_THAT(bodyNamesOf(model), ElementsAre("Plain"));
        EXPECT_EQ(model.bodies.count(), 3);
        EXPECT_EQ(model.bodies[1], nullptr);
        EXPECT_EQ(model.bodies[2], nullptr);
        EXPECT_EQ(model.markerCount(), 0);
    }
}

TEST_F(ModelReaderTest, ALengthOfZeroEndsTheReadingWithTheBodiesInFrontOfIt) {
    for (const char* length : {"0", "-0.0", "0e5", "1e-400"}) {
        SCOPED_TRACE(length);
        EXPECT_FALSE(
            readSections("2\n" + plainBody("Plain") + plainBody("Twist") + length + "\n0 0 1\n" + noMarkers));
        EXPECT_EQ(takeChain(), (StatusChain{error("Body 'Twist' has a zero type one vector length.")}));
        EXPECT_THAT(bodyNamesOf(model), ElementsAre("Plain"));
        EXPECT_EQ(model.bodies.count(), 2);
    }
}

TEST_F(ModelReaderTest, MessagesOnASuffixedBodyNameTheBodyOfTheDefinitionOrOfTheModel) {
    definition.findBody("Arm_l")->type = 3;
    struct Case {
        const char* vectors;
        const char* message;
    };
    for (const Case& c : {Case{"x\n", "Unable to read vector length for 'Arm_l'."},
                          Case{"0\n", "Body 'Arm' has a zero type one vector length."},
                          Case{"1\nx\n", "Unable to read vector direction for 'Arm_l'."}}) {
        std::istringstream input(header + noCameras + "1\n" + plainBody("Arm") + c.vectors);
        EXPECT_FALSE(model.readModelSections(input, definition, "_l"));
        EXPECT_EQ(takeChain(), (StatusChain{error(c.message)}));
    }
}

TEST_F(ModelReaderTest, AMessageOnALongNameIsCutButNotTheOneOnAMissingBody) {
    const std::string name(1100, 'n');
    EXPECT_FALSE(readSections("1\n" + name + "\nx"));
    const std::string start = "Unable to read transformation row 1 for '";
    EXPECT_EQ(takeChain(), (StatusChain{error(start + std::string(1023 - start.size(), 'n'))}));
    EXPECT_FALSE(readSections("1\n" + name + "\n" + identityRows));
    EXPECT_EQ(takeChain(), (StatusChain{error(missingBodyMessage(name))}));
}

// --- Cancelling ----------------------------------------------------------------------------------

std::string markerRows(int count) {
    std::string rows = std::to_string(count) + "\n";
    for (int id = 1; id <= count; ++id) {
        rows += "  " + std::to_string(id) + "   1   2   3\n";
    }
    return rows;
}

std::string bodies(int count) {
    std::string text = std::to_string(count) + "\n";
    for (int i = 0; i < count; ++i) {
        text += plainBody("Plain");
    }
    return text;
}

TEST_F(ModelReaderTest, EachSectionAsksForACancelAfterTheFourthRecordAndThenAfterEveryThird) {
    struct Case {
        int records;
        int timesAsked;
    };
    for (const Case& c : {Case{3, 0}, Case{4, 1}, Case{6, 1}, Case{7, 2}, Case{9, 2}, Case{10, 3}}) {
        SCOPED_TRACE(c.records);
        for (const std::string& sections :
             {bodies(c.records) + noMarkers, "0\n" + markerRows(c.records) + "0\n0\n0\n",
              "0\n0\n" + markerRows(c.records) + "0\n0\n", "0\n0\n0\n" + markerRows(c.records) + "0\n"}) {
            const test::CancelAtAsking hook(0);
            EXPECT_TRUE(readSections(sections));
            EXPECT_EQ(hook.timesAsked(), c.timesAsked);
        }
    }
    // Each section counts anew; two artificial pairs are four records.
    const test::CancelAtAsking hook(0);
    EXPECT_TRUE(readSections(bodies(3) + markerRows(3) + markerRows(3) + markerRows(3) +
                             "2\n 1 1 2 3\n 2 1 2 3\n 3 1 2 3\n 4 1 2 3\n"));
    EXPECT_EQ(hook.timesAsked(), 1);
}

TEST_F(ModelReaderTest, ACancelKeepsTheRecordsReadSoFarAndReadsNoLaterSection) {
    const StatusChain canceled = {warning("Read aborted."), error("Canceled.")};
    {
        const test::CancelAtAsking hook(1);
        EXPECT_FALSE(readSections(bodies(9) + markerRows(2) + "0\n0\n0\n"));
        EXPECT_EQ(takeChain(), canceled);
        EXPECT_EQ(model.bodies.count(), 4);
        EXPECT_EQ(model.storedBodies().size(), 4U);
        EXPECT_EQ(model.markerCount(), 0);
    }
    {
        const test::CancelAtAsking hook(2);
        EXPECT_FALSE(readSections(bodies(1) + markerRows(1) + markerRows(9) + markerRows(2) + "0\n"));
        EXPECT_EQ(takeChain(), canceled);
        EXPECT_EQ(model.bodies.count(), 1);
        EXPECT_EQ(model.realMarkers.count(), 1);
        EXPECT_EQ(model.fixMarkers.count(), 7);
        EXPECT_EQ(model.doubleMarkers.count(), 0);
    }
}

TEST_F(ModelReaderTest, ACancelAtTheLastRecordOfASectionStopsTheLaterOnes) {
    const test::CancelAtAsking hook(1);
    EXPECT_FALSE(readSections(bodies(4) + markerRows(1) + "0\n0\n0\n"));
    EXPECT_EQ(takeChain(), (StatusChain{warning("Read aborted."), error("Canceled.")}));
    EXPECT_EQ(model.markerCount(), 0);
}

// --- Files ---------------------------------------------------------------------------------------

class ModelFile : public ModelReaderTest {
protected:
    std::string path() const { return scratch / "x.model"; }

    ScratchDirectory scratch;
};

TEST_F(ModelFile, ReadsAFile) {
    writeBytes(path(), header + noCameras + "1\n" + plainBody("Plain") + noMarkers);
    EXPECT_TRUE(model.readModelFile(path().c_str(), definition, true));
    EXPECT_THAT(bodyNamesOf(model), ElementsAre("Plain"));
    model.clear();
    model.problemDef = &definition;
    EXPECT_TRUE(model.readModelFile(path().c_str(), false));
    EXPECT_THAT(bodyNamesOf(model), ElementsAre("Plain"));
    EXPECT_THAT(takeChain(), IsEmpty());
}

TEST_F(ModelFile, ReadsAFileWithASuffix) {
    writeBytes(path(), header + noCameras + "1\n" + plainBody("Arm") + noMarkers);
    EXPECT_TRUE(model.readModelFileWithSuffix(path().c_str(), definition, "_l", false));
    EXPECT_THAT(bodyNamesOf(model), ElementsAre("Arm"));
    EXPECT_FALSE(model.readModelFile(path().c_str(), definition, false));
    EXPECT_EQ(takeChain(),
              (StatusChain{error("Unable to read '" + path() + "'."), error(missingBodyMessage("Arm"))}));
}

TEST_F(ModelFile, ReportsTheFileOverTheCause) {
    writeBytes(path(), "Kym Model File\nv2.00\n");
    EXPECT_FALSE(model.readModelFile(path().c_str(), definition, false));
    EXPECT_EQ(takeChain(),
              (StatusChain{error("Unable to read '" + path() + "'."), error("Not a valid Kym Model File."),
                           error("Unsupported datafile version 2.00. Application uses version 1.00.")}));
}

TEST_F(ModelFile, SaysThatItWasNotReadAfterACancel) {
    writeBytes(path(), header + noCameras + bodies(4) + noMarkers);
    const test::CancelAtAsking hook(1);
    EXPECT_FALSE(model.readModelFile(path().c_str(), definition, false));
    EXPECT_EQ(takeChain(), (StatusChain{error("Unable to read '" + path() + "'."), warning("Read aborted."),
                                        error("Canceled.")}));
}

TEST_F(ModelFile, ReportsAFileThatCannotBeRead) {
    model.addRealMarker({9, {}});
    const StatusChain missing = {error("Unable to open \"" + path() + "\"."), error("File does not exist.")};
    EXPECT_FALSE(model.readModelFile(path().c_str(), definition, false));
    EXPECT_EQ(takeChain(), missing);
    EXPECT_FALSE(LqBodyDefData::hasModelHeader(path().c_str()));
    EXPECT_EQ(takeChain(), missing);
    const std::string directory = scratch.path().string();
    EXPECT_FALSE(model.readModelFile(directory.c_str(), definition, false));
    EXPECT_EQ(takeChain(), (StatusChain{error(directory + " is a directory.")}));
    EXPECT_THAT(idsOf(model.realMarkers), ElementsAre(9));
}

TEST_F(ModelFile, ReportsAFileThatDoesNotOpenAlthoughItMayBeRead) {
    // Nothing of the fixture is touched while no descriptor is free: run-time checks of its type need one.
    LqBodyDefData& target = model;
    const LqProblemDefData& known = definition;
    const LmStr file = path().c_str();
    writeBytes(path(), header);
    {
        const test::NoFreeDescriptors none;
        EXPECT_FALSE(target.readModelFile(file, known, false));
        EXPECT_FALSE(LqBodyDefData::hasModelHeader(file));
    }
    const test::StatusLine line = error("Unable to open model file '" + path() + "'.");
    EXPECT_EQ(takeChain(), (StatusChain{line, line}));
}

TEST_F(ModelFile, TellsWhetherAFileHasAModelHeader) {
    writeBytes(path(), header + "nothing of use");
    EXPECT_TRUE(LqBodyDefData::hasModelHeader(path().c_str()));
    EXPECT_THAT(takeChain(), IsEmpty());
    writeBytes(path(), "Kym Measured File\nv1.00\n");
    EXPECT_FALSE(LqBodyDefData::hasModelHeader(path().c_str()));
    EXPECT_EQ(takeChain(),
              (StatusChain{error("Error reading '" + path() + "'."), error("Invalid datafile header id.")}));
}

TEST_F(ModelFile, ReadingWithoutADefinitionEndsTheProcess) {
    EXPECT_EQ(support::runFunction([&] { model.readModelFile(path().c_str(), false); }).outcome, "SIGSEGV");
}

} // namespace
} // namespace quillon
