// merge PROBLEM.zvx FOLDER: writes a family with INCLUDE sections as one without them.
//
// FOLDER, which is made if it is not there, gets the files under the name of the specification, each with its
// own ending, and a specification that names them; their paths are printed. A file without INCLUDE sections
// is copied as it is. A file that is there already is never touched, so no input is lost, and after a failure
// those that were written are removed.

#include "quillon/core/LmStatus.h"
#include "quillon/files/FileAccess.h"
#include "quillon/files/LmCompIFStream.h"
#include "quillon/files/LmOFStream.h"
#include "quillon/files/PathNames.h"
#include "quillon/limits/LimitsReader.h"
#include "quillon/limits/LimitsWriter.h"
#include "quillon/tool/LqProblemBundle.h"
#include "quillon/tool/LqProblemSpec.h"
#include "quillon/tool/ProblemFamily.h"
#include "quillon/tool/ProblemSpecWriter.h"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

using namespace quillon;

using Writer = std::function<void(std::ostream&)>;

/// One file that is to be written.
struct MergedFile {
    LmStr path;
    Writer write;
};

static void writeSpec(LqProblemSpec& spec, std::ostream& output) {
    if (!spec.model.isNull()) {
        writeProblemSpecStream(spec, output);
        return;
    }
    // The writer always makes a MODEL entry, which a family without one must not get.
    spec.model = "";
    std::ostringstream text;
    writeProblemSpecStream(spec, text);
    spec.model.reset();
    const std::string emptyEntry = "MODEL: \n";
    std::string lines = text.str();
    lines.erase(lines.find(emptyEntry), emptyEntry.size());
    output << lines;
}

/// The files of the merged family. `spec` names them afterwards, in place of those that were read.
static std::vector<MergedFile> mergedFiles(LqProblemSpec& spec, const LqProblemBundle& family,
                                           const LmStr& path, const LmStr& folder) {
    std::string name = std::filesystem::path(path.c_str()).filename().string();
    name.erase(std::min(name.rfind(".zvx"), name.size())); // and an ending of compression behind it
    const auto newPath = [&](const char* extension) { return joinPathExt(folder, name.c_str(), extension); };
    std::vector<MergedFile> files;
    const auto add = [&](LmStr& entry, const char* extension, int includeCount, const Writer& write) {
        const Writer copy = [original = entry](std::ostream& output) {
            LmCompIFStream input;
            input.open(original);
            output << input.rdbuf();
        };
        entry = newPath(extension);
        files.push_back({entry, includeCount == 0 ? copy : write});
    };
    LqProblemBundle single; // each file once more, without its includes, to see whether it has any
    if (!spec.problemDefinition.isNull()) {
        single.problemDef.readProblemDefFile(spec.problemDefinition, false);
        add(spec.problemDefinition, "probdef", single.problemDef.includes.count(),
            [&](std::ostream& output) { family.problemDef.writeProblemDefStream(output); });
    }
    if (!spec.unscaledBodyDef.isNull()) {
        single.model.readModelFile(spec.unscaledBodyDef, family.problemDef, false);
        add(spec.unscaledBodyDef, "model", single.model.includes.count(),
            [&](std::ostream& output) { family.model.writeModelStream(output, family.problemDef); });
    }
    if (!spec.limits.isNull()) {
        readLimitsFile(single.limits, spec.limits, false);
        add(spec.limits, "limits", single.limits.includes.count(),
            [&](std::ostream& output) { writeTaggedLimits(family.limits, output); });
    }
    if (!spec.scaleDefinition.isNull()) {
        add(spec.scaleDefinition, "scaledef", 0, nullptr);
    }
    files.push_back({newPath("zvx"), [&](std::ostream& output) { writeSpec(spec, output); }});
    return files;
}

/// Whether all files can be made where none has been.
static bool prepareFolder(const LmStr& folder, const std::vector<MergedFile>& files) {
    for (const MergedFile& file : files) {
        std::error_code unknown;
        if (std::filesystem::is_regular_file(file.path.c_str(), unknown)) {
            pushErrorf("\"%s\" is there already.", file.path.c_str());
            return false;
        }
    }
    std::error_code failure;
    std::filesystem::create_directories(folder.c_str(), failure);
    if (failure) {
        pushErrorf("Unable to make the directory \"%s\".", folder.c_str());
        return false;
    }
    return true;
}

static bool writeWhole(const MergedFile& file) {
    if (checkFileWritable(file.path)) {
        LmOFStream output(file.path);
        file.write(output);
        output.close(); // a full disk shows only once the buffer is on it
        if (output.fail()) {
            pushErrorf("Unable to write \"%s\".", file.path.c_str());
        }
    }
    return !errorStands();
}

/// Reads the merged files and warns of those that have lost something, as numbers with more decimals than
/// their format writes. Returns whether they could be read.
static bool readBack(const LmStr& specPath, const LqProblemBundle& family) {
    LqProblemSpec spec;
    LqProblemBundle back;
    if (!readProblemFamily(spec, back, specPath)) {
        pushError("The merged files cannot be read back.");
        return false;
    }
    currentStatus().clear(); // of warnings that the original gave, too
    const auto warnUnless = [](bool isSame, const LmStr& path) {
        if (!isSame) {
            pushWarning("\"" + path + "\" holds its numbers less exactly than the original.");
        }
    };
    warnUnless(equals(back.problemDef, family.problemDef), spec.problemDefinition);
    warnUnless(back.model.equals(family.model), spec.unscaledBodyDef);
    warnUnless(back.limits.equalEffective(family.limits), spec.limits);
    warnUnless(back.scaleDef == family.scaleDef, spec.scaleDefinition);
    return true;
}

static bool merge(const LmStr& path, const LmStr& folder) {
    LqProblemSpec spec;
    LqProblemBundle family;
    if (!readProblemFamily(spec, family, path)) {
        return false;
    }
    currentStatus().printStatusToError(); // warnings, which would be in the way of further readers
    const std::vector<MergedFile> files = mergedFiles(spec, family, path, folder);
    if (!prepareFolder(folder, files)) {
        return false;
    }
    if (!std::all_of(files.begin(), files.end(), writeWhole) || !readBack(files.back().path, family)) {
        for (const MergedFile& file : files) {
            std::error_code unknown;
            if (std::filesystem::is_regular_file(file.path.c_str(), unknown)) {
                std::filesystem::remove(file.path.c_str(), unknown);
            }
        }
        return false;
    }
    for (const MergedFile& file : files) {
        std::cout << file.path << "\n";
    }
    return true;
}

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "Usage: merge PROBLEM.zvx FOLDER\n";
        return 1;
    }
    merge(argv[1], argv[2]);
    std::cout.flush();
    const int result = currentStatus().printStatusToError();
    if (std::cout.fail()) {
        std::cerr << "Unable to write the paths of the merged files.\n";
        return 1;
    }
    return result;
}
