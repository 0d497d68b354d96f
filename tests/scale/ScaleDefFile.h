#pragma once

#include "quillon/problem/LqProblemDefData.h"
#include "quillon/scale/LqScaleDefData.h"
#include "tests/support/StatusChain.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

/// What the tests of whole scale definition files share.
namespace quillon::test {

enum class Reading { Strict, Lenient };

/// The parts of a file in their order. Each is good by itself, so that a test changes one of them.
struct ScaleDefText {
    std::string counts = "REAL_COUNT: 2\nDEFAULT_REAL_WEIGHT: 1\n";
    std::string limits = "LIMIT_ADJUSTMENTS {\n\n}\n";
    std::string sections = "";
    std::string globals = "GLOBAL_CONSTRAINTS {\n}\n";
    std::string temps = "TEMPS {\n}\n";

    std::string items() const { return counts + limits + sections + globals + temps; }
};

/// A tag with a block of lines, which end in a newline.
inline std::string block(const std::string& tag, const std::string& lines) {
    return tag + " {\n" + lines + "}\n";
}

/// Bodies "pelvis" and "thigh", three real markers, and the system variables 3 "knee_x" and 4 "hip x".
class ScaleDefFile : public testing::Test {
protected:
    ScaleDefFile() {
        problemDef.addBody("pelvis", referenceSystemName, 1);
        problemDef.addBody("thigh", "pelvis", 2);
        problemDef.sysVars.append(new LqPDDSysVar(3, "knee_x"));
        problemDef.sysVars.append(new LqPDDSysVar(4, "hip x"));
        for (int id = 1; id <= 3; ++id) {
            problemDef.addRealMarker(LqPDDRealMarker(id, 0, 1, "thigh"));
        }
    }

    /// Reads the items of a file.
    bool readItems(const std::string& items, Reading reading = Reading::Strict) {
        std::istringstream input(items);
        return definition.readBody(input, problemDef, reading == Reading::Lenient);
    }

    /// Reads the items into a new definition, and returns the chain.
    StatusChain chainOfItems(const std::string& items, Reading reading = Reading::Strict) {
        definition = LqScaleDefData();
        const bool whole = readItems(items, reading);
        EXPECT_EQ(whole, !errorStands());
        return takeChain();
    }

    StatusChain chainOfText(const ScaleDefText& text, Reading reading = Reading::Strict) {
        return chainOfItems(text.items(), reading);
    }

    CleanStatus cleanStatus;
    LqProblemDefData problemDef;
    LqScaleDefData definition;
};

} // namespace quillon::test
