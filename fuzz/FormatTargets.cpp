// The targets that read one file, the last one of an input; files in front of it say what it is read with.

#include "fuzz/Formats.h"
#include "fuzz/FuzzTargets.h"
#include "fuzz/InputParts.h"
#include "quillon/scale/LqMeasuredData.h"

#include <cmath>

namespace quillon::fuzz {

namespace {

/// Reads a definition that another file needs. False without one.
bool readDefinition(const std::string& text, LqProblemDefData& definition) {
    std::istringstream input(text);
    const bool isRead = definition.readProblemDefStream(input, false);
    currentStatus().clear();
    return isRead;
}

} // namespace

void checkProblemDef(std::string_view input) {
    LqProblemDefData data;
    checkFormat(problemDefFormat(), lineEnded(input), data);
}

void checkModel(std::string_view input) {
    const std::vector<std::string> parts = partsOf(input, 2);
    LqProblemDefData definition;
    LqBodyDefData model;
    if (readDefinition(parts[0], definition)) {
        checkFormat(modelFormat(definition), parts[1], model);
    }
}

void checkLimits(std::string_view input) {
    LqLimitsData limits;
    checkFormat(limitsFormat(), std::string(input), limits);
    LqLimitsData older;
    checkFormat(olderLimitsFormat(), std::string(input), older);
}

void checkScaleDef(std::string_view input) {
    const std::vector<std::string> parts = partsOf(input, 2);
    LqProblemDefData definition;
    if (!readDefinition(parts[0], definition)) {
        return;
    }
    bool isRead[2] = {};
    for (const bool lenient : {false, true}) {
        const FileFormat<LqScaleDefData> format = scaleDefFormat(definition, lenient);
        LqScaleDefData data;
        isRead[lenient ? 1 : 0] = checkFormat(format, parts[1], data);
    }
    require(!isRead[0] || isRead[1], "what is read strictly is read leniently", parts[1]);
}

void checkMeasuredData(std::string_view input) {
    const auto sameBits = [](const LqMeasuredData& left, const LqMeasuredData& right) {
        return std::equal(left.begin(), left.end(), right.begin(), right.end(), [](float one, float other) {
            return one == other || (std::isnan(one) && std::isnan(other));
        });
    };
    // There is no writer: a plain list of what was read stands for it.
    const FileFormat<LqMeasuredData> format = {
        [](std::istream& stream, LqMeasuredData& data) {
            data.read(stream);
            return !errorStands();
        },
        [](std::ostream& stream, const LqMeasuredData& data) {
            stream << "Kym Measured File\nv1.00\n" << data.count() << "\n";
            stream.precision(9);
            for (const float constant : data) {
                stream << constant << "\n";
            }
        },
        sameBits,
        [](const LqMeasuredData& data) {
            return std::all_of(data.begin(), data.end(),
                               [](float constant) { return std::isfinite(constant); });
        }};
    LqMeasuredData data;
    checkFormat(format, std::string(input), data);
}

} // namespace quillon::fuzz
