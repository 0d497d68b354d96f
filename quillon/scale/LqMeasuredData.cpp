#include "quillon/scale/LqMeasuredData.h"

#include "quillon/core/DataHeader.h"
#include "quillon/core/LmStatus.h"
#include "quillon/files/FileAccess.h"
#include "quillon/files/LmIFStream.h"
#include "quillon/scale/ScaleTokens.h"

#include <algorithm>
#include <vector>

namespace quillon {

bool LqMeasuredData::readHeader(std::istream& input) {
    return readFormatHeader(input, DataFileFormat::Measured);
}

void LqMeasuredData::read(std::istream& input) {
    if (!readHeader(input)) {
        pushErrorf("File does not contain measured data.");
        return;
    }
    const int newCount = scaleDef::readIntValue(input, "measured count");
    if (errorStands()) {
        return;
    }
    if (newCount != count()) {
        resizeKeeping(newCount);
    }
    for (float& constant : *this) {
        constant = scaleDef::readFloatValue(input, "measured entry");
        if (errorStands()) {
            return;
        }
    }
}

/// Keeps the old values as far as they fit. New elements are 0 without being written, so that a count far
/// above what the file holds takes no memory. A negative count is refused, which ends the process.
void LqMeasuredData::resizeKeeping(int newCount) {
    const std::vector<float> kept(begin(), begin() + std::clamp(newCount, 0, count()));
    setLengthZeroed(newCount);
    std::copy(kept.begin(), kept.end(), begin());
}

void LqMeasuredData::readFile(const LmStr& path) {
    if (!checkFileReadable(path)) {
        return;
    }
    LmIFStream file(path);
    if (!file) {
        pushErrorf("Unable to open \"%s\".", path.c_str());
        return;
    }
    read(file);
    if (errorStands()) {
        pushErrorf("Unable to read \"%s\".", path.c_str());
    }
}

bool LqMeasuredData::isMeasuredFile(const LmStr& path) {
    // The two sentences have changed places against those of reading; they are kept as users know them.
    if (!checkFileReadable(path)) {
        pushErrorf("Unable to open \"%s\".", path.c_str());
        return false;
    }
    LmIFStream file(path);
    if (!file) {
        pushErrorf("Couldn't open \"%s\".", path.c_str());
        return false;
    }
    return readHeader(file);
}

} // namespace quillon
