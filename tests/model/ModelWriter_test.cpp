#include "quillon/model/LqBodyDefData.h"

#include "tests/model/ModelText.h"
#include "tests/support/CommaLocale.h"
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

std::string written(const LqBodyDefData& model, const LqProblemDefData& definition) {
    std::ostringstream output;
    model.writeModelStream(output, definition);
    return output.str();
}

LqBDBody body(const char* name, const LmMat4& transform = identityMat4) {
    LqBDBody made;
    made.name = name;
    made.baseTransform = transform;
    made.vectorLength = 2.123456789F;
    made.vectorDirection = {0, 0.5F, -1e-7F};
    return made;
}

const std::string identityRows = "  1.000000    0.000000    0.000000\n"
                                 "  0.000000    1.000000    0.000000\n"
                                 "  0.000000    0.000000    1.000000\n"
                                 "  0.000000    0.000000    0.000000\n";

const std::string noMarkers = "0    ; # of real points\n"
                              "0    ; # of fixed points \n"
                              "0    ; # of double points\n"
                              "0    ; # of artificial pairs\n";

class ModelWriter : public testing::Test {
protected:
    test::CleanStatus cleanStatus;
    LqProblemDefData definition;
    LqBodyDefData model;
};

TEST_F(ModelWriter, AnEmptyModelIsTheHeaderAndItsCounts) {
    EXPECT_EQ(written(model, definition), "Kym Model File\n"
                                          "v1.00\n"
                                          "0    ; # of cameras\n"
                                          "0    ; # of bodies\n"
                                          "0    ; # of real points\n"
                                          "0    ; # of fixed points \n"
                                          "0    ; # of double points\n"
                                          "0    ; # of artificial pairs\n");
}

TEST_F(ModelWriter, WritesEverySection) {
    test::addBodies(definition, {{"Twist", 1}, {"SLIDE", 2}, {"Both", 3}, {"Plain", 0}});
    model.cameraCount = 2;
    model.addBody(body("Twist", {1, 4, 7, 99, 2, 5, 8, 99, 3, 6, 9, 99, 10.5F, -11, 12.3456789F, 99}));
    model.addBody(body("Slide"));
    model.addBody(body("Both"));
    model.addBody(body("Plain"));
    model.addBody(body("Unknown"));
    model.addRealMarker({1, {0.1F, 1234567, -2}});
    model.addRealMarker({12345, {1, 2, 3.1415927F}});
    model.addGlobalDirectionMarker({3, {1, 2, 3}});
    model.fixMarkers.append(new LqBDMarker{4, {0, -0.0F, 1e-5F}});
    model.doubleMarkers.append(new LqBDMarker{-5, {1, 2, 3}});
    model.addArtificialPair({6, {1, 2, 3}}, {7, {4, 5, 6}});
    model.addArtificialPair({8, {1, 2, 3}}, {9, {4, 5, 6}});
    EXPECT_EQ(written(model, definition), "Kym Model File\n"
                                          "v1.00\n"
                                          "2    ; # of cameras\n"
                                          "5    ; # of bodies\n"
                                          " Twist\n"
                                          "  1.000000    2.000000    3.000000\n"
                                          "  4.000000    5.000000    6.000000\n"
                                          "  7.000000    8.000000    9.000000\n"
                                          "  10.500000    -11.000000    12.345679\n"
                                          "  2.12346\n"
                                          "  0  0.5  -1e-07\n"
                                          " Slide\n" +
                                              identityRows +
                                              "  0  0.5  -1e-07\n"
                                              " Both\n" +
                                              identityRows +
                                              "  2.12346\n"
                                              "  0  0.5  -1e-07\n"
                                              " Plain\n" +
                                              identityRows + " Unknown\n" + identityRows +
                                              "2    ; # of real points\n"
                                              "  1   0.1   1.23457e+06   -2\n"
                                              "       1         30      15.0\n"
                                              "       1         30      15.0\n"
                                              "  12345   1   2   3.14159\n"
                                              "       1         30      15.0\n"
                                              "       1         30      15.0\n"
                                              "1    ; # of fixed points \n"
                                              "  4   0   -0   1e-05\n"
                                              "1    ; # of double points\n"
                                              "  -5   1   2   3\n"
                                              "2    ; # of artificial pairs\n"
                                              "  6   1   2   3\n"
                                              "  7   4   5   6\n"
                                              "  8   1   2   3\n"
                                              "  9   4   5   6\n");
}

TEST_F(ModelWriter, WithoutBodiesTheMarkersHaveTheTwoDigitsOfTheVersion) {
    model.addRealMarker({1, {0.126F, 1234, -2}});
    EXPECT_EQ(written(model, definition), "Kym Model File\n"
                                          "v1.00\n"
                                          "0    ; # of cameras\n"
                                          "0    ; # of bodies\n"
                                          "1    ; # of real points\n"
                                          "  1   0.13   1.2e+03   -2\n"
                                          "0    ; # of fixed points \n"
                                          "0    ; # of double points\n"
                                          "0    ; # of artificial pairs\n");
}

TEST_F(ModelWriter, TheFirstOfTwoDefinedBodiesOfOneNameSaysTheType) {
    test::addBodies(definition, {{"ARM", 0}, {"arm", 2}});
    model.addBody(body("arm"));
    EXPECT_EQ(written(model, definition),
              "Kym Model File\nv1.00\n0    ; # of cameras\n1    ; # of bodies\n arm\n" + identityRows +
                  noMarkers);
}

TEST_F(ModelWriter, NullSlotsBehindTheBodiesAreNotCounted) {
    model.bodies.setLengthZeroed(3);
    model.bodies[0] = new LqBDBody(body("arm"));
    EXPECT_EQ(written(model, definition),
              "Kym Model File\nv1.00\n0    ; # of cameras\n1    ; # of bodies\n arm\n" + identityRows +
                  noMarkers);
}

TEST_F(ModelWriter, WritesTheSameWhateverBaseOrRealFormatTheStreamHas) {
    model.cameraCount = 12;
    model.addBody(body("arm"));
    model.fixMarkers.append(new LqBDMarker{255, {0.1F, 1234567, -2}});
    std::ostringstream output;
    output << std::hex << std::scientific << std::internal;
    output.precision(11);
    model.writeModelStream(output, definition);
    EXPECT_EQ(output.str(), written(model, definition));
    EXPECT_EQ(output.flags() & (std::ios::fixed | std::ios::scientific | std::ios::left),
              std::ios::fmtflags());
    EXPECT_EQ(output.precision(), 6);
}

TEST_F(ModelWriter, AFileDoesNotFollowTheGlobalLocale) {
    test::addBodies(definition, {{"arm", 1}});
    model.addBody(body("arm", {1, 0, 0, 0, 0, 0.5F, 0, 0, 0, 0, 1, 0, 1234.5F, 0, 0, 1}));
    model.bodies[0]->vectorLength = 2.5F;
    model.fixMarkers.append(new LqBDMarker{12345, {0.5F, 1234.5F, -2}});
    const support::ScratchDirectory scratch;
    const std::string path = scratch / "x.model";
    LqBodyDefData back;
    {
        const test::CommaLocale comma;
        model.writeModelFile(path.c_str(), definition);
        EXPECT_TRUE(back.readModelFile(path.c_str(), definition, false));
        EXPECT_TRUE(LqBodyDefData::hasModelHeader(path.c_str()));
    }
    EXPECT_THAT(takeChain(), IsEmpty());
    EXPECT_EQ(support::readBytes(path), written(model, definition));
    EXPECT_EQ(linesOf(back), linesOf(model));
}

TEST_F(ModelWriter, WritesAFile) {
    const support::ScratchDirectory scratch;
    const std::string path = scratch / "x.model";
    model.cameraCount = 1;
    model.writeModelFile(path.c_str(), definition);
    EXPECT_EQ(support::readBytes(path),
              "Kym Model File\nv1.00\n1    ; # of cameras\n0    ; # of bodies\n" + noMarkers);
    EXPECT_THAT(takeChain(), IsEmpty());
}

TEST_F(ModelWriter, ReportsAFileThatCannotBeWritten) {
    const support::ScratchDirectory scratch;
    const std::string directory = scratch.path().string();
    model.writeModelFile(directory.c_str(), definition);
    EXPECT_EQ(takeChain(), (StatusChain{error("File \"" + directory + "\" is unwritable."),
                                        error("File is a directory.")}));
    const std::string path = scratch / "x.model";
    {
        const test::NoFreeDescriptors none;
        model.writeModelFile(path.c_str(), definition);
    }
    EXPECT_EQ(takeChain(), (StatusChain{error("Couldn't create file \"" + path + "\".")}));
}

} // namespace
} // namespace quillon
