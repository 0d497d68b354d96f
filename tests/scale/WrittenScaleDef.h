#pragma once

#include "quillon/scale/LqScaleDefData.h"
#include "tests/scale/ScaleDefFile.h"
#include "tests/scale/ScaleSamples.h"
#include "tests/support/RoundTrip.h"

/// What the tests of the scale definition's writer share.
namespace quillon::test {

/// The heading of a SCALING_VARIABLES block with rows.
inline const std::string variableHeading = "  # variable name    lower limit (none)  upper limit (none)\n";

/// The sections of a written file that a test cares about; the others are as for a definition of nothing.
struct WrittenText {
    std::string counts = "REAL_COUNT: 0\nDEFAULT_REAL_WEIGHT: 0\n";
    std::string realWeights = "";
    std::string artificialWeights = "";
    std::string limits = "";
    std::string guides = "";
    std::string variables = "";
    std::string poses = "";
    std::string bodies = "";
    std::string positions = "";
    std::string globals = "";
    std::string temps = "";

    std::string all() const {
        return "Kym Scale Definition File\nv1.00\n" + counts + block("REAL_WEIGHT_OVERRIDES", realWeights) +
               block("ARTIFICIAL_PAIR_WEIGHT_OVERRIDES", artificialWeights) +
               block("LIMIT_ADJUSTMENTS", limits) + guides + block("SCALING_VARIABLES", variables) + poses +
               block("BODY_SCALINGS", bodies) + positions + block("GLOBAL_CONSTRAINTS", globals) +
               block("TEMPS", temps);
    }
};

/// Writes `definition`, with the problem definition of `ScaleDefFile`.
class WrittenScaleDef : public ScaleDefFile {
protected:
    std::string written() const {
        return writtenBy([&](std::ostream& output) { definition.write(output, problemDef); });
    }

    /// Writes the definition, with a row of limits when it has none, and reads it into a new one.
    StatusChain chainOfReadingBack(LqScaleDefData& back) {
        if (definition.limitOverrides.count() == 0) {
            definition.limitOverrides.append(limit(3));
        }
        std::istringstream input(written());
        back.read(input, problemDef, false);
        return takeChain();
    }
};

} // namespace quillon::test
