#pragma once

#include "fuzz/FormatCheck.h"
#include "fuzz/Representable.h"
#include "quillon/limits/LimitsReader.h"
#include "quillon/limits/LimitsWriter.h"
#include "quillon/model/LqBodyDefData.h"
#include "quillon/problem/LqProblemDefData.h"
#include "quillon/scale/LqScaleDefData.h"

namespace quillon::fuzz {

// The formats of a problem's files, none of which opens another file: INCLUDE sections are kept, not merged.

inline FileFormat<LqProblemDefData> problemDefFormat() {
    return {
        [](std::istream& input, LqProblemDefData& data) { return data.readProblemDefStream(input, false); },
        [](std::ostream& output, const LqProblemDefData& data) { data.writeProblemDefStream(output); },
        [](const LqProblemDefData& left, const LqProblemDefData& right) { return equals(left, right); },
        [](const LqProblemDefData& data) { return isRepresentable(data); }};
}

/// The definition must outlive the format.
inline FileFormat<LqBodyDefData> modelFormat(const LqProblemDefData& definition) {
    return {
        [&](std::istream& input, LqBodyDefData& model) {
            return model.readModelSections(input, definition, "");
        },
        [&](std::ostream& output, const LqBodyDefData& model) { model.writeModelStream(output, definition); },
        [](const LqBodyDefData& left, const LqBodyDefData& right) { return left.equals(right); },
        [&](const LqBodyDefData& model) { return isRepresentable(model, definition); }};
}

/// Of the tagged form; texts of the older form are read by it, too.
inline FileFormat<LqLimitsData> limitsFormat() {
    return {[](std::istream& input, LqLimitsData& limits) { return readLimitsStream(limits, input, false); },
            [](std::ostream& output, const LqLimitsData& limits) { writeTaggedLimits(limits, output); },
            [](const LqLimitsData& left, const LqLimitsData& right) { return left.equalEffective(right); },
            [](const LqLimitsData& limits) { return isRepresentable(limits); }};
}

/// Of the older form; texts of the tagged form are read by it, too.
inline FileFormat<LqLimitsData> olderLimitsFormat() {
    FileFormat<LqLimitsData> format = limitsFormat();
    format.write = [](std::ostream& output, const LqLimitsData& limits) { writeOlderLimits(limits, output); };
    format.isRepresentable = [](const LqLimitsData& limits) { return isRepresentableInOlderForm(limits); };
    return format;
}

/// The definition must outlive the format.
inline FileFormat<LqScaleDefData> scaleDefFormat(const LqProblemDefData& problemDef, bool lenient) {
    return {[&problemDef, lenient](std::istream& input, LqScaleDefData& data) {
                return data.read(input, problemDef, lenient);
            },
            [&](std::ostream& output, const LqScaleDefData& data) { data.write(output, problemDef); },
            // What comes back is another frame or another vector of the same direction, by its last digits.
            [](const LqScaleDefData&, const LqScaleDefData&) { return true; },
            [&](const LqScaleDefData& data) { return isRepresentable(data, problemDef); }, isNearlySameText};
}

} // namespace quillon::fuzz
