#include "tests/examples/ExamplePrograms.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <map>
#include <sstream>

namespace quillon::test {
namespace {

using support::readBytes;
using support::ScratchDirectory;
using support::writeBytes;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::Pair;
using ::testing::SizeIs;
using ::testing::StartsWith;

// --- Families made of their rows -----------------------------------------------------------------

struct BodyRow {
    std::string name;
    std::string parent = "ReferenceSystemZero";
    std::string order = "1 2 3 6 5 4";
    std::string mappings = "0\n0\n0\n0\n0\n0\n";
    std::string translation = "0 0 0";
    int type = 0;
    std::string vector = ""; ///< of the model: its length and its direction
};

struct MarkerRow {
    int id;
    std::string body;
    std::string place;
};

std::string testFile(const std::string& name) {
    return std::string(QUILLON_SOURCE_DIR) + "/tests/examples/" + name;
}

std::string counted(std::size_t count, const std::string& rows) {
    return std::to_string(count) + " # of them\n" + rows;
}

/// In quotes, or, for a name that holds one, in 20 columns.
std::string nameField(const std::string& name) {
    return name.find('"') == std::string::npos ? '"' + name + "\" "
                                               : name + std::string(20 - name.size(), ' ');
}

std::string definitionOf(const std::vector<BodyRow>& bodies, const std::vector<MarkerRow>& markers) {
    std::string bodyRows;
    for (const BodyRow& body : bodies) {
        const std::string typeVar = body.type == 0 ? "" : " 0\n";
        bodyRows += " " + nameField(body.name) + nameField(body.parent) + "1 " + std::to_string(body.type) +
                    "\n" + body.order + "\n" + body.mappings + typeVar;
    }
    std::string markerRows;
    for (const MarkerRow& marker : markers) {
        markerRows += std::to_string(marker.id) + " 0 1.000    " + nameField(marker.body) + "\n";
    }
    return "Kym Problem Definition File\nv1.00\n" + counted(2, "1 Swing\n2 Sway\n") +
           counted(bodies.size(), bodyRows) + counted(markers.size(), markerRows) + counted(0, "") +
           counted(0, "") + counted(0, "");
}

std::string modelOf(const std::vector<BodyRow>& bodies, const std::vector<MarkerRow>& markers) {
    std::string bodyRows;
    for (const BodyRow& body : bodies) {
        bodyRows += " " + body.name + "\n1 0 0\n0 1 0\n0 0 1\n" + body.translation + "\n" + body.vector;
    }
    std::string markerRows;
    for (const MarkerRow& marker : markers) {
        markerRows += std::to_string(marker.id) + " " + marker.place + "\n";
    }
    return "Kym Model File\nv1.00\n0 ; of cameras\n" + counted(bodies.size(), bodyRows) +
           counted(markers.size(), markerRows) + counted(0, "") + counted(0, "") + counted(0, "");
}

class SkeletonSvg : public testing::Test {
protected:
    void writeFamily(const std::string& definition, const std::string& model) const {
        writeBytes(scratch / "a.zvx", "Kym Problem Specification File\nv1.00\nPROBDEF: a.probdef\n"
                                      "UNSCALEDBODYDEF: a.model\nMatch: BodyName\n");
        writeBytes(scratch / "a.probdef", definition);
        writeBytes(scratch / "a.model", model);
    }

    ProgramRun drawnFamily() const { return runExample({"skeleton_svg", "a.zvx"}, scratch); }

    ProgramRun draw(const std::vector<BodyRow>& bodies, const std::vector<MarkerRow>& markers = {}) const {
        writeFamily(definitionOf(bodies, markers), modelOf(bodies, markers));
        return drawnFamily();
    }

    ScratchDirectory scratch;
};

// --- What stands in a picture --------------------------------------------------------------------

std::vector<std::string> linesOf(const std::string& text) {
    std::istringstream input(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(input, line);) {
        lines.push_back(line);
    }
    return lines;
}

/// "x y" of a circle.
std::string centre(const std::string& line) {
    std::string out;
    for (const std::string& attribute : {std::string("cx=\""), std::string("cy=\"")}) {
        const std::size_t start = line.find(attribute) + attribute.size();
        out += (out.empty() ? "" : " ") + line.substr(start, line.find('"', start) - start);
    }
    return out;
}

/// The circles of the bodies by their names as they are written, each in front and side view.
std::map<std::string, std::vector<std::string>> placesOfBodies(const std::string& picture) {
    static const std::string before = "<title>";
    std::map<std::string, std::vector<std::string>> places;
    for (const std::string& line : linesOf(picture)) {
        if (line.find(" r=\"4.0\"") != std::string::npos) {
            const std::size_t start = line.find(before) + before.size();
            places[line.substr(start, line.find("</title>") - start)].push_back(centre(line));
        }
    }
    return places;
}

/// The circles of the markers in their order, in the front view and then in the side view.
std::vector<std::string> placesOfMarkers(const std::string& picture) {
    std::vector<std::string> places;
    for (const std::string& line : linesOf(picture)) {
        if (line.find(" r=\"3.5\"") != std::string::npos) {
            places.push_back(centre(line));
        }
    }
    return places;
}

/// The lines that hold the text.
std::vector<std::string> linesWith(const std::string& picture, const std::string& text) {
    std::vector<std::string> lines = linesOf(picture);
    std::erase_if(lines, [&](const std::string& line) { return line.find(text) == std::string::npos; });
    return lines;
}

/// What keeps the text from being XML, as far as tags and the edges of text go: empty when nothing does.
std::string faultOf(const std::string& text) {
    std::vector<std::string> open;
    std::size_t place = 0;
    while ((place = text.find('<', place)) != std::string::npos) {
        const std::size_t end = text.find('>', place);
        const std::size_t next = text.find('<', place + 1);
        if (end == std::string::npos || next < end) {
            return "a tag without an end at " + std::to_string(place);
        }
        const std::string tag = text.substr(place + 1, end - place - 1);
        const std::string name = tag.substr(0, tag.find(' '));
        if (tag.starts_with('/')) {
            if (open.empty() || "/" + open.back() != tag) {
                return "<" + tag + "> closes nothing";
            }
            open.pop_back();
        } else if (!tag.ends_with('/')) {
            open.push_back(name);
        }
        place = end;
    }
    return open.empty() ? "" : "<" + open.back() + "> stays open";
}

// --- Whole pictures ------------------------------------------------------------------------------

// The arm is turned by a quarter about x, so that what is below it in its own frame stands out along y: the
// hand is at (0.5, 1, 2), and its marker half a unit below. A unit is 450 pixels.
TEST_F(SkeletonSvg, ShowsAnArmItsHandAndTheMarkerOnIt) {
    EXPECT_EQ(draw({{.name = "Arm", .mappings = "0\n0\n0\n0\n0\n-1\n1.5707963\n", .translation = "0 0 2"},
                    {.name = "Hand", .parent = "Arm", .translation = "0.5 0 -1"}},
                   {{1, "Hand", "0 -0.5 0"}}),
              (ProgramRun{"0", readBytes(testFile("arm_and_hand.svg")), ""}));
}

TEST_F(SkeletonSvg, ShowsEmptyViewsWhereNothingStands) {
    EXPECT_EQ(draw({}), (ProgramRun{"0", readBytes(testFile("nothing.svg")), ""}));
}

// --- Places --------------------------------------------------------------------------------------

// Both turn by a quarter about z and go one along x. The one that turns first goes along the y of its parent.
TEST_F(SkeletonSvg, ALaterTransformationHappensInTheFrameThatTheEarlierOnesLeave) {
    const ProgramRun run = draw(
        {{.name = "TurnsFirst", .order = "6 1 2 3 5 4", .mappings = "-1\n1.5707963\n-1\n1\n0\n0\n0\n0\n"},
         {.name = "GoesFirst", .mappings = "-1\n1\n0\n0\n-1\n1.5707963\n0\n0\n"}});
    EXPECT_THAT(placesOfBodies(run.out),
                ElementsAre(Pair("GoesFirst", ElementsAre("60.0 60.0", "1060.0 60.0")),
                            Pair("TurnsFirst", ElementsAre("510.0 60.0", "610.0 60.0"))));
}

// A body at (1, 2, 3) of a frame that is turned by a half about z and lies at (10, 20, 30): (9, 18, 33).
TEST_F(SkeletonSvg, TheBaseTransformHappensBehindTheTransformations) {
    const std::vector<BodyRow> bodies = {{.name = "Body", .mappings = "-1\n1\n-1\n2\n-1\n3\n0\n0\n0\n"},
                                         {.name = "Origin"}};
    writeFamily(definitionOf(bodies, {}), "Kym Model File\nv1.00\n0 # of cameras\n2 # of bodies\n"
                                          " Body\n-1 0 0\n0 -1 0\n0 0 1\n10 20 30\n"
                                          " Origin\n1 0 0\n0 1 0\n0 0 1\n0 0 0\n0\n0\n0\n0\n");
    EXPECT_THAT(placesOfBodies(drawnFamily().out),
                ElementsAre(Pair("Body", ElementsAre("510.0 60.0", "835.0 60.0")),
                            Pair("Origin", ElementsAre("60.0 885.0", "610.0 885.0"))));
}

TEST_F(SkeletonSvg, OfALinearCombinationTheConstantCounts) {
    const ProgramRun run =
        draw({{.name = "Body", .mappings = "0\n0\n-3\n1\n1 5.0\n2 7.0\n0\n0\n0\n"}, {.name = "Origin"}});
    EXPECT_THAT(placesOfBodies(run.out),
                ElementsAre(Pair("Body", ElementsAre("100.0 60.0", "280.0 60.0")),
                            Pair("Origin", ElementsAre("100.0 960.0", "280.0 960.0"))));
}

// The vector ends at (0, 3, 0), five along its direction from the body at (0, 0, 4).
TEST_F(SkeletonSvg, ABodyOfTypeOneRunsAlongItsVector) {
    const ProgramRun run =
        draw({{.name = "Body", .translation = "0 0 4", .type = 1, .vector = "5\n0 0.3 -0.4\n"}});
    EXPECT_THAT(linesWith(run.out, "M60.0 60.0L510.0 660.0"), SizeIs(1)) << "in the front view";
    EXPECT_THAT(linesWith(run.out, "M650.0 60.0L650.0 660.0"), SizeIs(1)) << "in the side view";
}

TEST_F(SkeletonSvg, AVectorWithoutADirectionIsNotShown) {
    const ProgramRun run = draw({{.name = "Body", .type = 1, .vector = "5\n0 0 0\n"}});
    EXPECT_EQ(run.err, "");
    EXPECT_THAT(linesWith(run.out, "M100.0 60.0L100.0 60.0"), SizeIs(2)) << "lines without a length";
    EXPECT_THAT(linesWith(run.out, "<path"), SizeIs(2 + 2 + 1));
}

TEST_F(SkeletonSvg, AThinLineRunsFromABodyToEachOfItsMarkers) {
    const ProgramRun run = draw({{.name = "Body"}}, {{1, "Body", "0 0 0.5"}, {2, "Body", "0 0 -1"}});
    EXPECT_THAT(linesWith(run.out, "stroke-width=\"1.0\""),
                ElementsAre(StartsWith("<path d=\"M100.0 360.0L100.0 60.0\""),
                            StartsWith("<path d=\"M100.0 360.0L100.0 960.0\""),
                            StartsWith("<path d=\"M280.0 360.0L280.0 60.0\""),
                            StartsWith("<path d=\"M280.0 360.0L280.0 960.0\"")));
}

// Two dots at one place: the second label stands below the first one.
TEST_F(SkeletonSvg, LabelsDoNotStandOnEachOther) {
    const ProgramRun run =
        draw({}, {{1, "ReferenceSystemZero", "0 0 0"}, {2, "ReferenceSystemZero", "0 0 0"}});
    EXPECT_THAT(
        linesWith(run.out, "font-size=\"9\""),
        ElementsAre(StartsWith("<text x=\"104.0\" y=\"63.5\""), StartsWith("<text x=\"104.0\" y=\"72.5\""),
                    StartsWith("<text x=\"284.0\" y=\"63.5\""), StartsWith("<text x=\"284.0\" y=\"72.5\"")));
}

// Calculated from the files of the example, apart from the library.
TEST_F(SkeletonSvg, TheWalkerStandsWhereItsFilesPutIt) {
    copyFamily("walker", scratch);
    const ProgramRun run = runExample({"skeleton_svg", "walker.zvx"}, scratch);
    EXPECT_EQ(run.outcome, "0");
    EXPECT_EQ(run.err, "");
    std::map<std::string, std::vector<std::string>> bodies = placesOfBodies(run.out);
    EXPECT_EQ(bodies.size(), 23u);
    EXPECT_THAT(bodies["Pelvis"], ElementsAre("252.8 481.5", "619.5 481.5"));
    EXPECT_THAT(bodies["UpperSpine"], ElementsAre("252.8 342.8", "592.1 342.8"));
    EXPECT_THAT(bodies["Head"], ElementsAre("252.8 165.5", "623.9 165.5"));
    EXPECT_THAT(bodies["LeftForearm"], ElementsAre("384.4 407.8", "571.6 407.8"));
    EXPECT_THAT(bodies["RightHand"], ElementsAre("87.1 535.0", "575.6 535.0"));
    EXPECT_THAT(bodies["LeftFoot"], ElementsAre("287.6 924.5", "608.4 924.5"));
    EXPECT_THAT(bodies["RightToes"], ElementsAre("200.1 950.1", "681.1 950.1"));

    const std::vector<std::string> markers = placesOfMarkers(run.out);
    ASSERT_EQ(markers.size(), 2u * 69);
    const auto marker = [&](std::size_t id) { return std::vector{markers[id - 1], markers[69 + id - 1]}; };
    EXPECT_THAT(marker(1), ElementsAre("288.9 107.5", "677.0 107.5"));
    EXPECT_THAT(marker(41), ElementsAre("299.1 947.9", "715.6 947.9"));
    EXPECT_THAT(marker(52), ElementsAre("252.8 952.8", "619.5 952.8"));
    EXPECT_THAT(marker(54), ElementsAre("252.8 60.0", "637.0 60.0"));
    EXPECT_THAT(marker(68), ElementsAre("304.4 960.0", "748.5 960.0"));
    EXPECT_EQ(faultOf(run.out), "");
}

TEST_F(SkeletonSvg, DrawsWhatTheReadmeShows) {
    const std::string readme = readBytes(std::string(QUILLON_SOURCE_DIR) + "/README.md");
    EXPECT_NE(readme.find("](docs/pictures/walker.svg)"), std::string::npos);
    EXPECT_NE(readme.find("`skeleton_svg walker.zvx > walker.svg`"), std::string::npos);
    copyFamily("walker", scratch);
    EXPECT_EQ(
        runExample({"skeleton_svg", "walker.zvx"}, scratch),
        (ProgramRun{"0", readBytes(std::string(QUILLON_SOURCE_DIR) + "/docs/pictures/walker.svg"), ""}));
}

// --- Chains --------------------------------------------------------------------------------------

TEST_F(SkeletonSvg, AChainEndsWhereItBranches) {
    const ProgramRun run = draw({{.name = "Root"},
                                 {.name = "Upper", .parent = "Root"},
                                 {.name = "Left", .parent = "Upper"},
                                 {.name = "Right", .parent = "Upper"},
                                 {.name = "Hand", .parent = "Right"},
                                 {.name = "Other"}});
    EXPECT_THAT(linesWith(run.out, "font-size=\"12\""),
                ElementsAre(EndsWith(">Root to Upper</text>"), EndsWith(">Left</text>"),
                            EndsWith(">Right to Hand</text>"), EndsWith(">Other</text>")));
}

TEST_F(SkeletonSvg, ThereIsNoLegendOfMoreChainsThanColours) {
    std::vector<BodyRow> bodies(8);
    for (BodyRow& body : bodies) {
        body.name = "Body" + std::to_string(&body - bodies.data());
    }
    EXPECT_THAT(linesWith(draw(bodies).out, "font-size=\"12\""), SizeIs(8));
    bodies.push_back({.name = "Body8"});
    EXPECT_THAT(linesWith(draw(bodies).out, "font-size=\"12\""), SizeIs(0));
}

// 100 000 bodies, from the last to the first.
TEST_F(SkeletonSvg, AChainMayBeOfAnyLength) {
    constexpr int count = 100000;
    std::vector<BodyRow> bodies(count);
    for (int k = 0; k < count; ++k) {
        BodyRow& body = bodies[static_cast<std::size_t>(k)];
        body.name = std::to_string(k);
        body.parent = k + 1 < count ? std::to_string(k + 1) : "ReferenceSystemZero";
        body.translation = "0 0 0.125";
    }
    writeFamily(definitionOf(bodies, {}), modelOf(bodies, {}));
    const support::ChildResult run = support::runProgram(
        {"/bin/sh", "-c", "exec " QUILLON_EXAMPLE_PROGRAMS "/skeleton_svg a.zvx > out.svg"},
        {.timeLimit = std::chrono::seconds(100), .directory = scratch.path()});
    EXPECT_EQ(run.outcome, "0");
    EXPECT_EQ(run.err, "");
    const std::string picture = readBytes(scratch / "out.svg");
    // A view has two lines for itself and three for a body.
    EXPECT_EQ(std::ranges::count(picture, '\n'), 2 + 2 * (2 + 3 * count) + 2 + 1);
    for (const char* place :
         {"<circle cx=\"100.0\" cy=\"60.0\" r=\"4.0\" stroke=\"#5a6b7b\" fill=\"#fff\"><title>0</title>",
          "<circle cx=\"280.0\" cy=\"960.0\" r=\"4.0\" stroke=\"#5a6b7b\" "
          "fill=\"#fff\"><title>99999</title>"}) {
        EXPECT_NE(picture.find(place), std::string::npos) << place;
    }
}

// --- Names ---------------------------------------------------------------------------------------

TEST_F(SkeletonSvg, NamesAreXmlWhateverTheyHold) {
    struct Case {
        std::string name;
        std::string written;
    };
    const Case cases[] = {
        {R"(<A>&"B")", "&lt;A&gt;&amp;\"B\""},
        {"tab\tand\x01\x1F\x7F", "tab?and???"},
        {"\xC3\xA9 Latin \xE9.", "?? Latin ?."},
    };
    for (const Case& each : cases) {
        const ProgramRun run = draw({{.name = each.name}});
        EXPECT_EQ(run.err, "");
        EXPECT_THAT(placesOfBodies(run.out), ElementsAre(Pair(each.written, SizeIs(2))));
        EXPECT_THAT(linesWith(run.out, ">" + each.written + "</text>"), SizeIs(1));
        EXPECT_EQ(faultOf(run.out), "");
    }
}

// --- What cannot be drawn ------------------------------------------------------------------------

TEST_F(SkeletonSvg, ABodyWithoutAPlaceIsAnError) {
    struct Case {
        std::vector<BodyRow> bodies;
        std::string message;
    };
    const Case cases[] = {
        {{{.name = "A", .parent = "A"}}, "Body A is above itself."},
        {{{.name = "Hand", .parent = "A"}, {.name = "A", .parent = "B"}, {.name = "B", .parent = "A"}},
         "Body A is above itself."},
        {{{.name = "A", .parent = "B"}}, "Body A hangs on a body that is not in the problem definition."},
        {{{.name = "A", .translation = "1e39 0 0"}}, "Body A has no finite place."},
        {{{.name = "A", .translation = "3e38 0 0"}, {.name = "B", .parent = "A", .translation = "3e38 0 0"}},
         "Body B has no finite place."},
        {{{.name = "A", .type = 1, .vector = "1e39\n0 0 1\n"}}, "Body A has no finite place."},
        {{{.name = "A", .mappings = "-1\n1e39\n0\n0\n0\n0\n0\n"}}, "Body A has no finite place."},
    };
    for (const Case& each : cases) {
        EXPECT_EQ(draw(each.bodies), (ProgramRun{"1", "", printedError({each.message})}));
    }
    writeFamily(definitionOf({{.name = "A"}, {.name = "B"}}, {}), modelOf({{.name = "A"}}, {}));
    EXPECT_EQ(drawnFamily(), (ProgramRun{"1", "", printedError({"Body B is not in the model."})}));
}

TEST_F(SkeletonSvg, AMarkerWithoutAPlaceIsLeftOutWithAWarning) {
    const std::vector<BodyRow> bodies = {{.name = "A"}};
    const std::string without = draw(bodies, {{2, "A", "0 0 0"}}).out;
    const std::string warning = printedWarning({"Marker 1 has no place and is left out."});
    EXPECT_EQ(draw(bodies, {{1, "A", "0 1e39 0"}, {2, "A", "0 0 0"}}), (ProgramRun{"0", without, warning}));
    EXPECT_EQ(draw(bodies, {{1, "B", "0 0 0"}, {2, "A", "0 0 0"}}), (ProgramRun{"0", without, warning}));
    writeFamily(definitionOf(bodies, {{1, "A", ""}, {2, "A", ""}}), modelOf(bodies, {{2, "", "0 0 0"}}));
    EXPECT_EQ(drawnFamily(), (ProgramRun{"0", without, warning}));
}

TEST_F(SkeletonSvg, TheGreatestNumbersStillMakeAPicture) {
    const ProgramRun run = draw(
        {{.name = "A", .translation = "3e38 3e38 3e38"}, {.name = "B", .translation = "-3e38 -3e38 -3e38"}});
    EXPECT_THAT(placesOfBodies(run.out), ElementsAre(Pair("A", ElementsAre("510.0 60.0", "1060.0 60.0")),
                                                     Pair("B", ElementsAre("60.0 510.0", "610.0 510.0"))));
}

TEST_F(SkeletonSvg, TellsItsUse) {
    const ProgramRun usage{"1", "", "Usage: skeleton_svg PROBLEM.zvx\n"};
    EXPECT_EQ(runExample({"skeleton_svg"}, scratch), usage);
    EXPECT_EQ(runExample({"skeleton_svg", "a.zvx", "b.zvx"}, scratch), usage);
}

TEST_F(SkeletonSvg, WhatCannotBeReadIsAnError) {
    EXPECT_EQ(drawnFamily(),
              (ProgramRun{"1", "", printedError({"Unable to open \"a.zvx\".", "File does not exist."})}));
    writeBytes(scratch / "a.zvx",
               "Kym Problem Specification File\nv1.00\nPROBDEF: a.probdef\nMatch: BodyName\n");
    writeBytes(scratch / "a.probdef", definitionOf({}, {}));
    EXPECT_EQ(
        drawnFamily(),
        (ProgramRun{"1", "",
                    printedError({"The specification does not name a problem definition and a model."})}));
}

TEST_F(SkeletonSvg, APictureThatCannotBeWrittenIsAnError) {
    copyFamily("walker", scratch);
    EXPECT_EQ(runOnFullOutput({"skeleton_svg", "walker.zvx"}, scratch),
              (ProgramRun{"1", "", "Unable to write the picture.\n"}));
}

} // namespace
} // namespace quillon::test
