// The text of a picture: what it may hold, and where there is room for it.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace svg {

/// The bytes of the character at the front of the text, which is not empty; 0 if it is no UTF-8, or none that
/// XML can hold.
inline std::size_t characterLength(std::string_view text) {
    static constexpr std::uint32_t firstOfLength[] = {0, 0, 0x80, 0x800, 0x10000};
    const auto byte = [text](std::size_t k) { return std::uint32_t{static_cast<unsigned char>(text[k])}; };
    const std::uint32_t lead = byte(0);
    if (lead < 0x80) {
        return lead >= ' ' || lead == '\t' || lead == '\n' || lead == '\r' ? 1 : 0;
    }
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC0 || lead >= 0xF8 || text.size() < length) {
        return 0;
    }
    std::uint32_t character = lead & (0x7FU >> length);
    for (std::size_t k = 1; k < length; ++k) {
        if ((byte(k) & 0xC0) != 0x80) {
            return 0;
        }
        character = character << 6 | (byte(k) & 0x3F);
    }
    const bool isSurrogate = character >= 0xD800 && character <= 0xDFFF;
    const bool isNone = character == 0xFFFE || character == 0xFFFF || character > 0x10FFFF;
    return character < firstOfLength[length] || isSurrogate || isNone ? 0 : length;
}

/// The text between two tags or in the quotes of an attribute: a byte that cannot stand there becomes the
/// replacement character.
inline std::string escaped(std::string_view text) {
    std::string out;
    while (!text.empty()) {
        const std::size_t length = characterLength(text);
        switch (length == 0 ? '\0' : text.front()) {
        case '\0':
            out += "\xEF\xBF\xBD";
            break;
        case '<':
            out += "&lt;";
            break;
        case '>':
            out += "&gt;";
            break;
        case '&':
            out += "&amp;";
            break;
        case '"':
            out += "&quot;";
            break;
        default:
            out += text.substr(0, length);
        }
        text.remove_prefix(length == 0 ? 1 : length);
    }
    return out;
}

/// A point of the picture, in pixels.
struct Spot {
    double x;
    double y;
};

inline void drawLine(std::ostream& out, Spot from, Spot to, const char* colour, double width) {
    out << "<path d=\"M" << from.x << " " << from.y << "L" << to.x << " " << to.y << "\" stroke=\"" << colour
        << "\" stroke-width=\"" << width << "\" stroke-linecap=\"round\"/>\n";
}

inline void drawCircle(std::ostream& out, Spot centre, double radius, const char* colour,
                       const char* filling) {
    out << "<circle cx=\"" << centre.x << "\" cy=\"" << centre.y << "\" r=\"" << radius << "\" stroke=\""
        << colour << "\" fill=\"" << filling << "\"/>\n";
}

/// Writes a text from a spot on its ground line. A white edge keeps it readable on lines.
inline void drawText(std::ostream& out, Spot start, int size, std::string_view text) {
    out << "<text x=\"" << start.x << "\" y=\"" << start.y << "\" font-size=\"" << size
        << R"(" stroke="#fff" stroke-width="2" paint-order="stroke">)" << escaped(text) << "</text>\n";
}

/// Where a label stands.
struct LabelPlace {
    Spot corner; ///< its lower left one
    Spot side;   ///< where it is nearest to its dot
    bool isFar;  ///< whether only a line can say which dot it belongs to
};

/// Finds places for labels beside dots.
class Labels {
public:
    /// Lets no label stand on a dot, or on a line.
    void keepFree(Spot dot) { take({dot.x - 2, dot.y + 2}, 4, 4); }
    void keepFree(Spot from, Spot to) {
        const double steps = std::ceil(std::hypot(to.x - from.x, to.y - from.y) / 4) + 1;
        for (double step = 0; step <= steps; ++step) {
            keepFree({std::lerp(from.x, to.x, step / steps), std::lerp(from.y, to.y, step / steps)});
        }
    }

    /// Of eight places around the dot the first one that is free; of those farther and farther away when none
    /// is. In the thick of a crowd labels stand on each other.
    LabelPlace place(Spot dot, double width) {
        static constexpr Spot directions[] = {{1, 0}, {-1, 0}, {1, -1}, {-1, -1},
                                              {1, 1}, {-1, 1}, {0, -1}, {0, 1}};
        for (int ring = 0; ring < 5; ++ring) {
            for (const Spot& direction : directions) {
                const LabelPlace found = placeAt(dot, width, direction, ring);
                if (visit(found.corner, width, height, [this](std::size_t cell) { return !taken[cell]; })) {
                    take(found.corner, width, height);
                    return found;
                }
            }
        }
        return placeAt(dot, width, directions[0], 0);
    }

private:
    static constexpr long rows = 1024;
    static constexpr long columns = 1024;
    static constexpr double height = 7;

    static LabelPlace placeAt(Spot dot, double width, Spot direction, int ring) {
        const double distance = 4 + ring * height;
        const Spot side = {dot.x + direction.x * distance, dot.y + direction.y * distance};
        return {{side.x + (direction.x - 1) / 2 * width, side.y + (direction.y + 1) / 2 * height},
                side,
                ring > 0};
    }

    void take(Spot corner, double width, double boxHeight) {
        visit(corner, width, boxHeight, [this](std::size_t cell) { return taken[cell] = true; });
    }

    /// Visits the cells of a box, which is given by its lower left corner, until one says no. A picture has
    /// fewer cells of two pixels each way than there are; what lies beyond its edges counts at the other one.
    template <class Visitor>
    static bool visit(Spot corner, double width, double boxHeight, Visitor visitor) {
        const auto cell = [](double length) { return std::lround(length / 2); };
        for (long x = cell(corner.x); x <= cell(corner.x + width); ++x) {
            for (long y = cell(corner.y - boxHeight); y <= cell(corner.y); ++y) {
                if (!visitor(static_cast<std::size_t>((x & (columns - 1)) * rows + (y & (rows - 1))))) {
                    return false;
                }
            }
        }
        return true;
    }

    std::vector<bool> taken = std::vector<bool>(rows * columns);
};

} // namespace svg
