#pragma once

#include "quillon/problem/LqProblemDefData.h"
#include "quillon/scale/LqScaleDefData.h"
#include "quillon/scale/ScaleDefContext.h"
#include "tests/support/StatusChain.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

/// What the tests of the section readers share: definitions to read against, and records as text, with nine
/// significant digits, so that equal texts mean equal floats.
namespace quillon::test {

inline std::string textOf(const scaleDef::ScaleFloat& value) {
    std::ostringstream text;
    text.precision(9);
    if (value.measuredId == 0) {
        text << value.value;
    } else {
        text << "[m" << value.measuredId << " factor " << value.value << " offset " << value.offset << ']';
    }
    return text.str();
}

/// "0", "var 2", "-1 0.5" or "-2 0.5 + 2 * var 1".
inline std::string textOf(const scaleDef::ScaleMapping& mapping) {
    if (mapping.id >= 0) {
        return mapping.id == 0 ? "0" : "var " + std::to_string(mapping.id);
    }
    std::string text = std::to_string(mapping.id) + " " + textOf(mapping.constant);
    for (const LqLinearTerm<scaleDef::ScaleFloat>* term : mapping.termList()) {
        text += " + " + textOf(term->coefficient) + " * var " + std::to_string(term->sysVar);
    }
    return text;
}

template <class Numbers>
std::string textOfNumbers(const Numbers& numbers) {
    std::ostringstream text;
    text.precision(9);
    const char* before = "(";
    for (const auto& number : numbers) {
        text << before << number;
        before = " ";
    }
    text << ')';
    return text.str();
}

inline std::string textOf(const scaleDef::GlobalConst_t& row) {
    return std::string(row.bodyName.view()) + ": " + textOfNumbers(row.local) + " along " +
           textOfNumbers(row.global);
}

/// "thigh on GLOBAL: at (0 0 0) order (1 2 3 6 5 4) weight 1 mapping 0, 0, 0, 0, 0, 0 base (0 0 0) turned
/// (1 0 0 0 1 0 0 0 1)" in one line.
inline std::string textOf(const scaleDef::PositionConst_t& record) {
    std::ostringstream text;
    text.precision(9);
    text << record.body << " on " << record.parent << ": at " << textOfNumbers(record.localPosition)
         << " order " << textOfNumbers(record.transformOrder) << " weight " << record.weight << " mapping ";
    const char* before = "";
    for (const scaleDef::ScaleMapping& mapping : record.mapping) {
        text << before << textOf(mapping);
        before = ", ";
    }
    text << " base " << textOfNumbers(record.baseTranslation) << " turned "
         << textOfNumbers(record.baseRotation);
    return text.str();
}

inline std::string textOf(const scaleDef::BodyParams_t& body) {
    return std::string(body.bodyName.view()) + ": " + textOfNumbers(body.firstAxis) + " by " +
           textOf(body.scale[0]) + ", " + textOfNumbers(body.secondAxis) + " by " + textOf(body.scale[1]) +
           ", " + textOfNumbers(body.thirdAxis) + " by " + textOf(body.scale[2]);
}

inline std::string textOf(const scaleDef::TempData_t& temp) {
    std::ostringstream text;
    text.precision(9);
    text << temp.id << " at " << textOf(temp.position[0]) << ' ' << textOf(temp.position[1]) << ' '
         << textOf(temp.position[2]) << " of '" << temp.relativeBody << "' on '" << temp.attachedBody
         << "' weight " << temp.weight;
    return text.str();
}

/// The records of an array, one line each.
template <class Record>
std::vector<std::string> linesOf(const LmArray<Record>& records) {
    std::vector<std::string> lines;
    for (const Record& record : records) {
        lines.push_back(textOf(record));
    }
    return lines;
}

/// Bodies "pelvis", "thigh", "shank" and "left foot", the system variable 4 "knee_x", and the scaling
/// variables 1 "height" and 2 "arm width".
class ScaleSections : public testing::Test {
protected:
    ScaleSections() {
        problemDef.addBody("pelvis", referenceSystemName, 1);
        problemDef.addBody("thigh", "pelvis", 2);
        problemDef.addBody("shank", "thigh", 3);
        problemDef.addBody("left foot", "shank", 4);
        problemDef.sysVars.append(new LqPDDSysVar(4, "knee_x"));
        for (const char* name : {"height", "arm width"}) {
            scaleDef::ScaleVar scaleVar;
            scaleVar.name = name;
            definition.scaleVars.append(scaleVar);
        }
    }

    CleanStatus cleanStatus;
    LqProblemDefData problemDef;
    LqScaleDefData definition;
};

} // namespace quillon::test
