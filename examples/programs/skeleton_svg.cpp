// skeleton_svg PROBLEM.zvx > out.svg: draws the skeleton from the front and from the side, every variable
// being 0.
//
// x points forward, y to the left and z up; a grey line is the floor, where z is 0. A body runs from its
// place to those of the bodies that hang on it, one of type one along its vector, too, and one without either
// to its farthest marker. Bodies have one colour up to where they branch.

#include "skeleton/Bodies.h"
#include "skeleton/Markers.h"
#include "skeleton/Svg.h"

#include "quillon/tool/LqProblemSpec.h"
#include "quillon/tool/ProblemSpecReader.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iomanip>
#include <iostream>
#include <sstream>
#include <string>

using namespace skeleton;
using svg::Spot;

// Lengths of the picture are pixels.
static constexpr double greatestWidth = 450;
static constexpr double greatestHeight = 900;
static constexpr double leastWidth = 80;
static constexpr double gap = 20;
static constexpr std::array colours = {"#5a6b7b", "#b5179e", "#c77700", "#4269d0",
                                       "#d1495b", "#00838f", "#2e8b57", "#7a5c3e"};

class Picture {
public:
    Picture(const Bodies& drawnBodies, const Markers& drawnMarkers)
        : bodies(drawnBodies), markers(drawnMarkers), extent(bodies, markers) {
        scale = std::min({greatestWidth / extent.size(0), greatestWidth / extent.size(1),
                          greatestHeight / extent.size(2)});
        scale = std::isfinite(scale) ? scale : 1;
        out << std::fixed << std::setprecision(1);
    }

    std::string svg() {
        drawView("front", 1);
        drawView("side", 0);
        drawLegend();
        std::ostringstream head;
        head << "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" << std::lround(left) << "\" height=\""
             << std::lround(bottom) << "\" font-family=\"sans-serif\">\n"
             << "<rect width=\"100%\" height=\"100%\" fill=\"#fff\"/>\n";
        return head.str() + out.str() + "</svg>\n";
    }

private:
    static const char* colour(const Body& body) {
        return body.record == nullptr ? "#555" : colours[body.chain % colours.size()];
    }

    // --- A view: z upwards, another axis to the right --------------------------------------------

    void drawView(const char* title, std::size_t axis) {
        const double width = std::max(extent.size(axis) * scale, leastWidth) + 4 * gap;
        const double height = extent.size(2) * scale + 4 * gap;
        across = axis;
        middle = left + width / 2;
        out << "<rect x=\"" << left << "\" y=\"" << gap << "\" width=\"" << width << "\" height=\"" << height
            << "\" rx=\"6\" fill=\"none\" stroke=\"#ccc\"/>\n";
        if (extent.lowest[2] <= 0 && extent.highest[2] >= 0) {
            const double floor = spot({}).y;
            svg::drawLine(out, {left, floor}, {left + width, floor}, "#ccc", 1);
        }
        svg::drawText(out, {left + gap / 2, 2 * gap}, 14, title);
        drawBodies();
        drawMarkers();
        left += width + gap;
        bottom = height + 2 * gap;
    }

    Spot spot(const LmVec3& place) const {
        return {middle + (static_cast<double>(place[across]) - extent.middle(across)) * scale,
                3 * gap + (extent.highest[2] - static_cast<double>(place[2])) * scale};
    }

    void drawBodies() {
        for (const Body& body : bodies.all) {
            out << "<g><title>" << svg::escaped(name(body)) << "</title>\n";
            for (const LmVec3& end : body.ends) {
                svg::drawLine(out, spot(body.place), spot(end), colour(body), 5);
            }
            svg::drawCircle(out, spot(body.place), 4, colour(body), "#fff");
            out << "</g>\n";
        }
    }

    void drawMarkers() {
        svg::Labels labels;
        for (const Body& body : bodies.all) {
            std::ranges::for_each(body.ends,
                                  [&](const LmVec3& end) { labels.keepFree(spot(body.place), spot(end)); });
        }
        for (const Marker& marker : markers.all) {
            drawMarker(spot(marker.place), colour(*marker.body), marker.isReal);
            labels.keepFree(spot(marker.place));
        }
        std::ostringstream ids;
        ids << std::fixed << std::setprecision(1);
        for (const Marker& marker : markers.all) {
            const std::string id = std::to_string(marker.id);
            const Spot dot = spot(marker.place);
            const svg::LabelPlace label = labels.place(dot, 5.8 * static_cast<double>(id.size()));
            if (label.isFar) {
                svg::drawLine(out, dot, label.side, "#999", 0.6);
            }
            svg::drawText(ids, label.corner, 9, id);
        }
        out << ids.str();
    }

    /// A white edge parts a disc from the body behind it.
    void drawMarker(Spot dot, const char* colour, bool isReal) {
        svg::drawCircle(out, dot, isReal ? 3.5 : 3, isReal ? "#fff" : colour, isReal ? colour : "#fff");
    }

    // --- The legend ------------------------------------------------------------------------------

    /// Not of a crowd, which has more chains than colours.
    bool hasChainLegend() const { return bodies.chains.size() <= colours.size(); }

    static std::string name(const Body& body) { return std::string(body.record->name.view()); }

    void drawLegend() {
        std::size_t longest = 0;
        double y = 2 * gap;
        const auto explain = [&](const std::string& text) {
            svg::drawText(out, {left + 1.5 * gap, y + 4}, 12, text);
            longest = std::max(longest, text.size());
            y += gap;
        };
        for (std::size_t chain = 0; chain < bodies.chains.size() && hasChainLegend(); ++chain) {
            const auto& [first, last] = bodies.chains[chain];
            svg::drawLine(out, {left, y}, {left + gap, y}, colours[chain], 5);
            explain(first == last ? name(*first) : name(*first) + " to " + name(*last));
        }
        for (const bool isReal : {true, false}) {
            drawMarker({left + gap / 2, y}, "#555", isReal);
            explain(isReal ? "real marker" : "fix, double or artificial marker");
        }
        left += 2.5 * gap + 7 * static_cast<double>(longest);
        bottom = std::max(bottom, y);
    }

    const Bodies& bodies;
    const Markers& markers;
    const Extent extent;
    std::ostringstream out;
    double scale = 1;       // pixels for a unit of length
    double left = gap;      // of what is drawn next
    double bottom = 0;      // of the picture
    double middle = 0;      // of the view
    std::size_t across = 0; // the axis that points to the right in the view
};

static bool read(LqProblemDefData& problem, LqBodyDefData& model, const LmStr& path) {
    LqProblemSpec spec;
    readProblemSpec(spec, path, currentStatus());
    if (errorStands()) {
        return false;
    }
    if (spec.problemDefinition.isNull() || spec.unscaledBodyDef.isNull()) {
        pushError("The specification does not name a problem definition and a model.");
        return false;
    }
    return problem.readProblemDefFile(spec.problemDefinition, true) &&
           model.readModelFile(spec.unscaledBodyDef, problem, true);
}

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "Usage: skeleton_svg PROBLEM.zvx\n";
        return 1;
    }
    LqProblemDefData problem;
    LqBodyDefData model;
    if (read(problem, model, argv[1])) {
        Bodies bodies(problem, model);
        Markers markers(problem, model, bodies);
        if (bodies.place()) {
            markers.place();
            std::cout << Picture(bodies, markers).svg() << std::flush;
        }
    }
    const int result = currentStatus().printStatusToError();
    if (!std::cout) {
        std::cerr << "Unable to write the picture.\n";
        return 1;
    }
    return result;
}
