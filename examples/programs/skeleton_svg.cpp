// skeleton_svg PROBLEM.zvx > out.svg: draws the skeleton of a problem from the front and from the side, every
// variable being 0: x points forward, y to the left and z up. Lines run from a body to those that hang on it
// and along its vector, thin ones to its markers. Bodies have one colour up to where they branch.

#include "quillon/model/LqBodyDefData.h"
#include "quillon/model/RestPose.h"
#include "quillon/problem/LqProblemDefData.h"
#include "quillon/tool/LqProblemSpec.h"
#include "quillon/tool/ProblemSpecReader.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iomanip>
#include <iostream>
#include <map>
#include <set>
#include <sstream>

using namespace quillon;

// Lengths of the picture are pixels.
static constexpr double greatestWidth = 450;
static constexpr double greatestHeight = 900;
static constexpr double gap = 20;
static constexpr const char* colours[] = {"#5a6b7b", "#b5179e", "#c77700", "#4269d0",
                                          "#d1495b", "#00838f", "#2e8b57", "#7a5c3e"};

/// The text between two tags. A byte that is not ASCII may be a character of no encoding.
static std::string escaped(std::string_view text) {
    std::string out;
    for (const char c : text) {
        const bool isPlain = c >= ' ' && c < '\x7F' && c != '<' && c != '>' && c != '&';
        out += isPlain ? std::string(1, c) : c == '<' ? "&lt;" : c == '>' ? "&gt;" : c == '&' ? "&amp;" : "?";
    }
    return out;
}

class Picture {
public:
    Picture(const LqProblemDefData& problem, const LqBodyDefData& model)
        : bodies(bodiesAtRest(problem, model)), markers(markersAtRest(problem, model, bodies)) {
        for (const BodyAtRest& body : bodies) {
            makeRoom(body.place);
            makeRoom(body.end);
        }
        std::ranges::for_each(markers, [this](const MarkerAtRest& marker) { makeRoom(marker.place); });
        scale = std::min({greatestWidth / size(0), greatestWidth / size(1), greatestHeight / size(2), 1e6});
    }

    void write(std::ostream& output) {
        svg << std::fixed << std::setprecision(1);
        drawView("front", 1);
        drawView("side", 0);
        drawLegend();
        output << "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" << std::lround(left) << "\" height=\""
               << std::lround(bottom) << "\" font-family=\"sans-serif\" stroke-linecap=\"round\">\n"
               << "<rect width=\"100%\" height=\"100%\" fill=\"#fff\"/>\n"
               << svg.str() << "</svg>" << std::endl;
    }

private:
    struct Spot {
        double x, y;
    };

    void makeRoom(const LmVec3& place) {
        for (std::size_t axis = 0; axis < place.size(); ++axis) {
            lowest[axis] = std::min(lowest[axis], static_cast<double>(place[axis]));
            highest[axis] = std::max(highest[axis], static_cast<double>(place[axis]));
        }
    }

    double size(std::size_t axis) const { return std::max(highest[axis] - lowest[axis], 0.0); }

    static const char* colour(const BodyAtRest* body) {
        return body == nullptr ? "#555" : colours[static_cast<std::size_t>(body->chain) % std::size(colours)];
    }

    const BodyAtRest* bodyAt(int index) const {
        return index < 0 ? nullptr : &bodies[static_cast<std::size_t>(index)];
    }

    void drawLine(Spot from, Spot to, const char* lineColour, double width) {
        svg << "<path d=\"M" << from.x << " " << from.y << "L" << to.x << " " << to.y << "\" stroke=\""
            << lineColour << "\" stroke-width=\"" << width << "\"/>\n";
    }

    void drawDot(Spot centre, double radius, const char* edge, const char* filling, std::string_view title) {
        svg << "<circle cx=\"" << centre.x << "\" cy=\"" << centre.y << "\" r=\"" << radius << "\" stroke=\""
            << edge << "\" fill=\"" << filling << "\"><title>" << escaped(title) << "</title></circle>\n";
    }

    void drawText(Spot start, int fontSize, std::string_view text) {
        svg << "<text x=\"" << start.x << "\" y=\"" << start.y << "\" font-size=\"" << fontSize
            << "\" stroke=\"#fff\" stroke-width=\"2\" paint-order=\"stroke\">" << escaped(text)
            << "</text>\n";
    }

    /// z points upwards, another axis to the right.
    void drawView(const char* title, std::size_t across) {
        const double width = std::max(size(across) * scale, 4 * gap) + 4 * gap;
        const double height = size(2) * scale + 4 * gap;
        const auto spot = [&, middle = left + width / 2](const LmVec3& place) {
            return Spot{middle +
                            (static_cast<double>(place[across]) - (lowest[across] + highest[across]) / 2) *
                                scale,
                        3 * gap + (highest[2] - static_cast<double>(place[2])) * scale};
        };
        svg << "<rect x=\"" << left << "\" y=\"" << gap << "\" width=\"" << width << "\" height=\"" << height
            << "\" rx=\"6\" fill=\"none\" stroke=\"#ccc\"/>\n";
        drawText({left + gap / 2, 2 * gap}, 14, title);
        for (const MarkerAtRest& marker : markers) {
            const BodyAtRest* const body = bodyAt(marker.body);
            drawLine(spot(body == nullptr ? marker.place : body->place), spot(marker.place), "#bbb", 1);
        }
        for (const BodyAtRest& body : bodies) {
            const BodyAtRest* const parent = bodyAt(body.parent);
            drawLine(spot(parent == nullptr ? body.place : parent->place), spot(body.place), colour(parent),
                     5);
            drawLine(spot(body.place), spot(body.end), colour(&body), 5);
        }
        for (const BodyAtRest& body : bodies) {
            drawDot(spot(body.place), 4, colour(&body), "#fff", body.body->name.view());
        }
        for (const MarkerAtRest& marker : markers) {
            drawDot(spot(marker.place), 3.5, "#fff", colour(bodyAt(marker.body)), std::to_string(marker.id));
        }
        std::set<std::pair<long, long>> taken; // by labels
        for (const MarkerAtRest& marker : markers) {
            auto [x, y] = spot(marker.place);
            for (int tries = 0; tries < 9 && !taken.emplace(std::lround(x / 14), std::lround(y / 9)).second;
                 ++tries) {
                y += 9;
            }
            drawText({x + 4, y + 3.5}, 9, std::to_string(marker.id));
        }
        left += width + gap;
        bottom = height + 2 * gap;
    }

    /// The first and the last body of each chain, if there are colours for all.
    void drawLegend() {
        std::map<int, std::pair<LmStr, LmStr>> chains;
        for (const BodyAtRest& body : bodies) {
            chains.try_emplace(body.chain, body.body->name, "").first->second.second = body.body->name;
        }
        double y = 2 * gap;
        for (const auto& [chain, names] : chains) {
            if (chains.size() > std::size(colours)) {
                break;
            }
            drawLine({left, y}, {left + gap, y}, colours[chain], 5);
            const auto& [first, last] = names;
            drawText({left + 1.5 * gap, y + 4}, 12, (first == last ? first : first + " to " + last).view());
            y += gap;
        }
        left += chains.empty() ? 0 : 12 * gap;
        bottom = std::max(bottom, y);
    }

    const std::vector<BodyAtRest> bodies;
    const std::vector<MarkerAtRest> markers;
    std::array<double, 3> lowest = {HUGE_VAL, HUGE_VAL, HUGE_VAL};
    std::array<double, 3> highest = {-HUGE_VAL, -HUGE_VAL, -HUGE_VAL};
    double scale = 1;  // pixels for a unit of length
    double left = gap; // of what is drawn next
    double bottom = 0; // of the picture
    std::ostringstream svg;
};

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "Usage: skeleton_svg PROBLEM.zvx\n";
        return 1;
    }
    LqProblemSpec spec;
    LqProblemDefData problem;
    LqBodyDefData model;
    readProblemSpec(spec, argv[1], currentStatus());
    if (!errorStands() && (spec.problemDefinition.isNull() || spec.unscaledBodyDef.isNull())) {
        pushError("The specification does not name a problem definition and a model.");
    }
    if (!errorStands() && problem.readProblemDefFile(spec.problemDefinition, true) &&
        model.readModelFile(spec.unscaledBodyDef, problem, true)) {
        Picture picture(problem, model);
        if (!errorStands()) {
            picture.write(std::cout);
        }
    }
    const int result = currentStatus().printStatusToError();
    if (!std::cout) {
        std::cerr << "Unable to write the picture.\n";
        return 1;
    }
    return result;
}
