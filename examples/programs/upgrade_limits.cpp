// upgrade_limits OLD NEW: writes limits of the older form in the tagged form.
//
// The tagged form has two decimals, the older one four: variables whose limits are rounded are named in a
// warning. The older form has no weights, guides and includes, so the new file has none either.

#include "quillon/core/DataHeader.h"
#include "quillon/core/LmListView.h"
#include "quillon/core/LmStatus.h"
#include "quillon/files/FileAccess.h"
#include "quillon/files/LmIFStream.h"
#include "quillon/limits/LimitsReader.h"
#include "quillon/limits/LimitsWriter.h"

#include <cctype>
#include <filesystem>
#include <iostream>
#include <sstream>
#include <string>

using namespace quillon;

/// The text of the file when it is one of the older form and whole, else nothing and an error.
static std::string olderText(const LmStr& path) {
    LmIFStream input(path);
    std::ostringstream gathered;
    gathered << input.rdbuf();
    const std::string text = gathered.str();
    if (gathered.fail()) {
        pushErrorf("\"%s\" is empty, or cannot be read.", path.c_str());
    } else if (text.front() == limitsFileId.view().front()) {
        pushErrorf("\"%s\" is not in the older form.", path.c_str());
    } else if (std::isspace(static_cast<unsigned char>(text.back())) == 0) {
        // The reader drops a row that touches the end of the file.
        pushErrorf("The last line of \"%s\" has no line end.", path.c_str());
    }
    return errorStands() ? "" : text;
}

static bool readOlderFile(LqLimitsData& limits, const LmStr& path) {
    if (!checkFileReadable(path)) {
        return false;
    }
    std::istringstream text(olderText(path));
    if (errorStands()) {
        return false;
    }
    if (!readOlderLimits(limits, text)) {
        pushErrorf("Unable to read the limits of \"%s\".", path.c_str());
        return false;
    }
    return true;
}

/// Warns of limits that come back from the tagged form other than they were.
static void warnOfRounding(const LqLimitsData& limits) {
    std::stringstream text;
    writeTaggedLimits(limits, text);
    LqLimitsData back;
    if (!readTaggedLimits(back, text)) {
        return;
    }

    LmStr rounded("");
    const LmListView<const LqVarLimits> backRecords(back.vars);
    auto kept = backRecords.begin();
    for (const LqVarLimits* record : LmListView<const LqVarLimits>(limits.vars)) {
        if (record->mode == LimitNone) {
            continue; // the tagged form leaves it out
        }
        if ((*kept)->lowerValue != record->lowerValue || (*kept)->upperValue != record->upperValue) {
            rounded += (rounded.length() == 0 ? "" : ", ") + LmStr(std::to_string(record->id));
        }
        ++kept;
    }
    if (rounded.length() != 0) {
        pushWarning("Rounded to two decimals are the limits of variables: " + rounded);
    }
}

static void upgrade(const LmStr& oldPath, const LmStr& newPath) {
    LqLimitsData limits;
    std::error_code unknown;
    if (!readOlderFile(limits, oldPath)) {
        return;
    }
    if (std::filesystem::equivalent(oldPath.c_str(), newPath.c_str(), unknown)) {
        pushErrorf("\"%s\" is the file that is read.", newPath.c_str());
        return;
    }
    warnOfRounding(limits);
    if (!errorStands()) {
        writeLimitsFileChecked(limits, newPath);
    }
}

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "Usage: upgrade_limits OLD NEW\n";
        return 1;
    }
    upgrade(argv[1], argv[2]);
    return currentStatus().printStatusToError();
}
