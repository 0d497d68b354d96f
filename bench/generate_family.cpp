// Writes a problem family of any size to a directory:
//
//     generate_family BODIES DIRECTORY [chain|tree [further]]
//
// gives family.zvx, .probdef, .model, .limits and .scaledef: BODIES bodies and system variables, three real
// markers for each body, a tenth as many fix, double and artificial ones, limits for all variables, and a
// scaling and a constraint for each body with a scaling variable for every ten. With `further` there are also
// files that `quillon info` does not read for that problem: family.older_limits, a constant for each body in
// family.measured, and long.zvx, a specification with notes on every body. The same arguments give the same
// bytes. The formats are written out here once more, without the library, so that a fault in its readers
// cannot hide behind the same fault in its writers.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

namespace {

/// A small generator of numbers that look arbitrary and are the same everywhere.
class Numbers {
public:
    explicit Numbers(std::uint64_t seed) : state_(seed) {}

    // Two numbers are never drawn within one call: compilers evaluate arguments in an order of their own.
    int below(int bound) { return static_cast<int>(next() % static_cast<std::uint64_t>(bound)); }

    double between(double low, double high) {
        return low + (high - low) * static_cast<double>(next() >> 11) / 9007199254740992.0;
    }

private:
    std::uint64_t next() {
        state_ = state_ * 6364136223846793005U + 1442695040888963407U;
        const std::uint64_t mixed = (state_ ^ (state_ >> 33)) * 0xff51afd7ed558ccdU;
        return mixed ^ (mixed >> 29);
    }

    std::uint64_t state_;
};

/// An output file; ends the program when it cannot be written.
class File {
public:
    explicit File(const std::filesystem::path& path)
        : path_(path.string()), file_(std::fopen(path_.c_str(), "wb")) {
        if (file_ == nullptr) {
            fail();
        }
    }
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    ~File() {
        if (std::fclose(file_) != 0) {
            fail();
        }
    }

    [[gnu::format(printf, 2, 3)]] void print(const char* format, ...) {
        va_list arguments;
        va_start(arguments, format);
        // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized): the line above begins it
        const int written = std::vfprintf(file_, format, arguments);
        va_end(arguments);
        if (written < 0) {
            fail();
        }
    }

    /// A name of up to 20 characters fills 20 columns, a longer one stands in quotes with a blank behind it.
    void printNameField(const std::string& name) {
        print(name.size() <= 20 ? "%-20s" : "\"%s\" ", name.c_str());
    }

private:
    [[noreturn]] void fail() const {
        std::perror(path_.c_str());
        std::exit(1);
    }

    std::string path_;
    std::FILE* file_;
};

constexpr const char* globalFrame = "ReferenceSystemZero";
constexpr int markersPerBody = 3;
constexpr int cameraCount = 1;

enum class Shape { chain, tree };

struct Body {
    std::string name;
    std::string parent;
    bool twist;
};

struct Family {
    std::vector<Body> bodies;
    int rareMarkers = 0; // of each of the kinds fix, double and artificial

    int size() const { return static_cast<int>(bodies.size()); }
    int realMarkers() const { return markersPerBody * size(); }
    const std::string& bodyOfMarker(int marker) const {
        return bodies[static_cast<std::size_t>(marker) % bodies.size()].name;
    }
};

/// Lengths below, at and beyond the 20 columns of a name field all occur.
std::string bodyName(int number) {
    static constexpr std::array<const char*, 10> parts = {
        "Hip", "Spine", "Neck", "UpperArm", "Forearm", "LeftHand", "RightShinbone", "Toe", "Tail", "Wing"};
    std::string name = parts[static_cast<std::size_t>(number) % parts.size()];
    name += "_" + std::to_string(number);
    if (number % 13 == 5) {
        name.resize(std::max<std::size_t>(name.size(), 20), 'x');
    } else if (number % 13 == 9) {
        name += "_of the longer names";
    }
    return name;
}

Family makeFamily(int bodyCount, Shape shape) {
    Family family;
    family.rareMarkers = (bodyCount + 9) / 10;
    for (int i = 0; i < bodyCount; ++i) {
        const int parent = shape == Shape::chain ? i - 1 : (i - 1) / 4;
        family.bodies.push_back({bodyName(i), i == 0 ? globalFrame : bodyName(parent), i % 7 == 3});
    }
    return family;
}

void writeSpecification(const std::filesystem::path& path) {
    File file(path);
    file.print("Kym Problem Specification File\nv1.00\n");
    file.print("PROBDEF: family.probdef\nUNSCALEDBODYDEF: family.model\nSCALEDEF: family.scaledef\n");
    file.print("LIMITS: family.limits\nMatch: BodyName\nmade by: generate_family\n");
}

void writeSystemVariables(File& file, const Family& family) {
    static constexpr std::array<const char*, 5> motions = {"flexion", "abduction", "twist, inner and outer",
                                                           "x", "slide"};
    file.print("  %d    # of variables -- var num, description\n", family.size());
    for (int i = 0; i < family.size(); ++i) {
        const std::string& name = family.bodies[static_cast<std::size_t>(i)].name;
        file.print("  %3d    %s %s\n", i + 1, name.c_str(),
                   motions[static_cast<std::size_t>(i) % motions.size()]);
    }
}

/// The six mappings of a body: its own variable, a constant, a combination of two variables, and three that
/// are not driven.
void writeMappings(File& file, int own, int variableCount, Numbers& numbers) {
    file.print(" %3d\n", own);
    file.print(" %3d\n %.6f\n", -1, numbers.between(-2.0, 2.0));
    file.print(" %3d\n %.6f", -3, numbers.between(-1.0, 1.0));
    for (int term = 0; term < 2; ++term) {
        const double coefficient = numbers.between(-1.5, 1.5);
        file.print("\n    %d   %.6f", numbers.below(variableCount) + 1, coefficient);
    }
    file.print("\n");
    for (int k = 0; k < 3; ++k) {
        file.print(" %3d\n", 0);
    }
}

void writeBodies(File& file, const Family& family, Numbers& numbers) {
    file.print("  %d    # of bodies, body names, parent names, graphics #, type\n", family.size());
    for (int i = 0; i < family.size(); ++i) {
        const Body& body = family.bodies[static_cast<std::size_t>(i)];
        file.print(" ");
        file.printNameField(body.name);
        file.printNameField(body.parent);
        file.print("%8d%4d\n", i + 1, body.twist ? 1 : 0);
        file.print(i % 2 == 0 ? "    1   2   3   4   5   6\n" : "    6   4   5   3   1   2\n");
        writeMappings(file, i + 1, family.size(), numbers);
        if (body.twist) {
            file.print(" %3d\n", i + 1);
        }
    }
}

void writeMarkers(File& file, const Family& family, Numbers& numbers) {
    int id = 1;
    file.print("  %d    # real markers, marker#, pred type #, weight, body name\n", family.realMarkers());
    for (int i = 0; i < family.realMarkers(); ++i) {
        file.print("  %3d   %d %7.3f    ", id++, i % 3, numbers.between(0.1, 2.0));
        file.printNameField(family.bodyOfMarker(i / markersPerBody));
        file.print("\n");
    }
    file.print("  %d    # fix markers, ID, weight, body name\n", family.rareMarkers);
    for (int i = 0; i < family.rareMarkers; ++i) {
        file.print("  %3d %7.3f  ", id++, numbers.between(0.1, 2.0));
        file.printNameField(family.bodyOfMarker(i * 10));
        file.print("\n");
    }
    file.print("  %d    # double markers, ID, double ID, weight, body name\n", family.rareMarkers);
    for (int i = 0; i < family.rareMarkers; ++i) {
        const double weight = numbers.between(0.1, 2.0);
        file.print("  %3d %3d %7.3f    ", id++, numbers.below(family.realMarkers()) + 1, weight);
        file.printNameField(family.bodyOfMarker(i * 10 + 3));
        file.print("\n");
    }
    file.print("  %d    # artificial pairs, pt1#, pt2#, weight, body1 name, body2 name\n",
               family.rareMarkers);
    for (int i = 0; i < family.rareMarkers; ++i) {
        file.print("  %3d %3d %7.3f    ", id, id + 1, numbers.between(0.1, 2.0));
        id += 2;
        file.printNameField(family.bodyOfMarker(i * 10 + 1));
        file.print("    ");
        file.printNameField(i % 5 == 0 ? globalFrame : family.bodyOfMarker(i * 10 + 7));
        file.print("\n");
    }
}

void writeProblemDefinition(const std::filesystem::path& path, const Family& family) {
    Numbers numbers(1);
    File file(path);
    file.print("Kym Problem Definition File\nv1.00\n");
    writeSystemVariables(file, family);
    writeBodies(file, family, numbers);
    writeMarkers(file, family, numbers);
}

/// Three rows of a rotation by angles about x, y and z, and one of a translation in metres.
void writeBaseMatrix(File& file, Numbers& numbers) {
    const double a = numbers.between(-3.1, 3.1);
    const double b = numbers.between(-1.5, 1.5);
    const double c = numbers.between(-3.1, 3.1);
    file.print("  %.6f    %.6f    %.6f\n", std::cos(b) * std::cos(c),
               std::sin(a) * std::sin(b) * std::cos(c) - std::cos(a) * std::sin(c),
               std::cos(a) * std::sin(b) * std::cos(c) + std::sin(a) * std::sin(c));
    file.print("  %.6f    %.6f    %.6f\n", std::cos(b) * std::sin(c),
               std::sin(a) * std::sin(b) * std::sin(c) + std::cos(a) * std::cos(c),
               std::cos(a) * std::sin(b) * std::sin(c) - std::sin(a) * std::cos(c));
    file.print("  %.6f    %.6f    %.6f\n", -std::sin(b), std::sin(a) * std::cos(b),
               std::cos(a) * std::cos(b));
    const double z = numbers.between(0.0, 1.0);
    const double y = numbers.between(-0.5, 0.5);
    const double x = numbers.between(-0.5, 0.5);
    file.print("  %.6f    %.6f    %.6f\n", x, y, z);
}

/// The count of a section of points, and a position for each of `count` ids from `id` on, which ends behind
/// them.
void writePoints(File& file, const char* comment, int countToWrite, int count, int& id, int linesBehind,
                 Numbers& numbers) {
    file.print("%d    ; # of %s\n", countToWrite, comment);
    for (int i = 0; i < count; ++i) {
        const double z = numbers.between(-0.3, 0.3);
        const double y = numbers.between(-0.3, 0.3);
        const double x = numbers.between(-0.3, 0.3);
        file.print("  %d   %.6g   %.6g   %.6g\n", id++, x, y, z);
        for (int line = 0; line < linesBehind; ++line) {
            file.print("       1         30      15.0\n");
        }
    }
}

void writeModel(const std::filesystem::path& path, const Family& family) {
    Numbers numbers(2);
    File file(path);
    file.print("Kym Model File\nv1.00\n%d    ; # of cameras\n%d    ; # of bodies\n", cameraCount,
               family.size());
    for (const Body& body : family.bodies) {
        file.print(" %s\n", body.name.c_str());
        writeBaseMatrix(file, numbers);
        if (body.twist) {
            file.print("  %.6f\n", numbers.between(0.1, 0.6));
            const double y = numbers.between(-1.0, 1.0);
            const double x = numbers.between(-1.0, 1.0);
            file.print("  %.6f  %.6f  %.6f\n", x, y, -1.0);
        }
    }
    int id = 1;
    writePoints(file, "real points", family.realMarkers(), family.realMarkers(), id, cameraCount, numbers);
    writePoints(file, "fixed points ", family.rareMarkers, family.rareMarkers, id, 0, numbers);
    writePoints(file, "double points", family.rareMarkers, family.rareMarkers, id, 0, numbers);
    writePoints(file, "artificial pairs", family.rareMarkers, 2 * family.rareMarkers, id, 0, numbers);
}

void writeLimit(File& file, const char* keyword, double value, bool weighted, Numbers& numbers) {
    file.print("  %s {\n    VALUE: %.2f\n", keyword, value);
    if (weighted) {
        file.print("    WEIGHT: %.4f\n", numbers.between(0.01, 5.0));
    }
    file.print("  }\n");
}

/// Lower, upper and both limits, with and without weights, and a guide for one variable in three.
void writeLimits(const std::filesystem::path& path, const Family& family) {
    Numbers numbers(3);
    File file(path);
    file.print("Kym System Variable Limits File\nv2.00\nGUIDE_WEIGHT_SCALE: linear\n");
    for (int i = 0; i < family.size(); ++i) {
        file.print("VARIABLE {\n  ID: %d\n", i + 1);
        if (i % 4 != 1) {
            writeLimit(file, "LOWER", numbers.between(-3.0, 0.0), i % 2 == 0, numbers);
        }
        if (i % 4 != 2) {
            writeLimit(file, "UPPER", numbers.between(0.0, 3.0), i % 5 == 0, numbers);
        }
        if (i % 3 == 0) {
            writeLimit(file, "GUIDE", numbers.between(-0.5, 0.5), true, numbers);
        }
        file.print("}\n");
    }
}

/// Limit adjustments and scaling variables for every tenth body, a scaling and a constraint for each, two
/// poses.
void writeScaleDefinition(const std::filesystem::path& path, const Family& family) {
    Numbers numbers(4);
    File file(path);
    file.print("Kym Scale Definition File\nv1.00\nREAL_COUNT: %d\nDEFAULT_REAL_WEIGHT: 1\n",
               family.realMarkers());
    file.print("LIMIT_ADJUSTMENTS {\n");
    for (int i = 0; i < family.size(); i += 10) {
        file.print("  %d %.3f *\n", i + 1, numbers.between(-2.0, 0.0));
    }
    file.print("}\nSCALING_VARIABLES {\n");
    for (int i = 0; i < family.size(); i += 10) {
        file.print("  size_%d %.2f [m1 + 0.5]  \"size of %s\"\n", i / 10, numbers.between(0.1, 0.9),
                   family.bodies[static_cast<std::size_t>(i)].name.c_str());
    }
    file.print("}\nPOSE {\n  NAME: standing\n}\nPOSE {\n  NAME: walking\n}\nBODY_SCALINGS {\n");
    for (int i = 0; i < family.size(); ++i) {
        const double factor = numbers.between(0.1, 2.0);
        const double constant = numbers.between(0.0, 1.0);
        file.print("  \"%s\"\n    1 0 0\n    0 1 0\n    size_%d\n    0\n    -2 %.3f size_%d %.3f\n",
                   family.bodies[static_cast<std::size_t>(i)].name.c_str(), i / 10, constant, i / 10, factor);
    }
    file.print("}\nGLOBAL_CONSTRAINTS {\n");
    static constexpr std::array<const char*, 3> axes = {"1 0 0", "0 1 0", "0 0 1"};
    for (int i = 0; i < family.size(); ++i) {
        const auto axis = static_cast<std::size_t>(i % 3);
        file.print("  \"%s\" %s  %s\n", family.bodies[static_cast<std::size_t>(i)].name.c_str(), axes[axis],
                   axes[(axis + static_cast<std::size_t>(i % 2)) % 3]);
    }
    file.print("}\nTEMPS {\n}\n");
}

// --- Files beside the problem --------------------------------------------------------------------

/// The modes in turn, each with the limits that it asks for.
void writeOlderLimits(const std::filesystem::path& path, const Family& family) {
    static constexpr std::array<int, 4> modes = {2, -1, 1, 0};
    Numbers numbers(5);
    File file(path);
    file.print("            1               Field Number\n");
    for (int i = 0; i < family.size(); ++i) {
        const int mode = modes[static_cast<std::size_t>(i) % modes.size()];
        file.print("             %d          %3d\n", mode, i + 1);
        if (mode == -1 || mode == 2) {
            file.print("   %9.4f\n", numbers.between(-3.0, 0.0));
        }
        if (mode == 1 || mode == 2) {
            file.print("   %9.4f\n", numbers.between(0.0, 3.0));
        }
    }
}

void writeMeasuredData(const std::filesystem::path& path, const Family& family) {
    Numbers numbers(6);
    File file(path);
    file.print("Kym Measured File\nv1.00\n%d\n", family.size());
    for (int i = 0; i < family.size(); ++i) {
        const std::string& name = family.bodies[static_cast<std::size_t>(i)].name;
        file.print(i % 4 == 0 ? "%.5g # %s\n" : "%.5g\n", numbers.between(0.05, 180.0), name.c_str());
    }
}

/// A specification that has been kept for long: remarks, blank lines, and user values that are given again
/// and again, some over two lines.
void writeLongSpecification(const std::filesystem::path& path, const Family& family) {
    Numbers numbers(7);
    File file(path);
    file.print("Kym Problem Specification File\nv1.00\n");
    file.print("PROBDEF: family.probdef\nUNSCALEDBODYDEF: family.model\nSCALEDEF: family.scaledef\n");
    file.print("LIMITS: family.older_limits\nMatch: BodyName\n");
    for (int i = 0; i < family.size(); ++i) {
        const std::string& name = family.bodies[static_cast<std::size_t>(i)].name;
        file.print("\n# session %d: the markers of %s were taped once more\n", i + 1, name.c_str());
        file.print("operator: A. Reader\nsubject mass: %.1f\n", numbers.between(50.0, 100.0));
        if (i % 5 == 0) {
            file.print("remarks: %s had slipped by %.1f mm,\\\n    see the notes\n", name.c_str(),
                       numbers.between(0.5, 9.5));
        }
    }
}

} // namespace

int main(int argumentCount, char** arguments) {
    const bool tree = argumentCount > 3 && std::strcmp(arguments[3], "tree") == 0;
    const bool chain = argumentCount == 3 || (argumentCount > 3 && std::strcmp(arguments[3], "chain") == 0);
    const int bodyCount = argumentCount > 2 ? std::atoi(arguments[1]) : 0;
    const bool further = argumentCount == 5 && std::strcmp(arguments[4], "further") == 0;
    if (bodyCount < 1 || tree == chain || (argumentCount > 4 && !further)) {
        std::fputs("Usage: generate_family BODIES DIRECTORY [chain|tree [further]]\n", stderr);
        return 1;
    }
    const Family family = makeFamily(bodyCount, tree ? Shape::tree : Shape::chain);
    const std::filesystem::path directory = arguments[2];
    std::filesystem::create_directories(directory);
    writeSpecification(directory / "family.zvx");
    writeProblemDefinition(directory / "family.probdef", family);
    writeModel(directory / "family.model", family);
    writeLimits(directory / "family.limits", family);
    writeScaleDefinition(directory / "family.scaledef", family);
    if (further) {
        writeOlderLimits(directory / "family.older_limits", family);
        writeMeasuredData(directory / "family.measured", family);
        writeLongSpecification(directory / "long.zvx", family);
    }
}
