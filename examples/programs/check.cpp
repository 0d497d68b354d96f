// check PROBLEM.zvx [MEASURED]: reads a family with its includes and runs all checks of whole files.
//
// Standard output has a line for each file: its path and "ok", "ok, with warnings", "failed" or, when the
// problem definition that it belongs to could not be read, "not checked"; an entry that the specification
// lacks is "not named". What is wrong goes to standard error. The exit code is 1 unless all is well.

#include "quillon/core/LmStatus.h"
#include "quillon/limits/LimitsChecks.h"
#include "quillon/limits/LimitsReader.h"
#include "quillon/model/ModelChecks.h"
#include "quillon/scale/LqMeasuredData.h"
#include "quillon/tool/LqProblemBundle.h"
#include "quillon/tool/LqProblemSpec.h"
#include "quillon/tool/ProblemSpecReader.h"

#include <functional>
#include <iostream>
#include <string_view>
#include <unordered_map>
#include <vector>

using namespace quillon;

/// Reports the first body that is above itself: a walk over its parents would not end.
static void checkForCircles(const LqProblemDefData& definition) {
    std::unordered_map<std::string_view, const LqPDDBodyMap*> bodyOfName;
    for (const LqPDDBodyMap* body : definition.bodies) {
        bodyOfName.try_emplace(body->name.view(), body);
    }
    bodyOfName.erase(referenceSystemName); // the global frame, whatever body is called like it

    std::unordered_map<const LqPDDBodyMap*, const LqPDDBodyMap*> startOfWalk;
    for (const LqPDDBodyMap* start : definition.bodies) {
        const LqPDDBodyMap* body = start;
        while (body != nullptr && startOfWalk.try_emplace(body, start).second) {
            const auto parent = bodyOfName.find(body->parentName.view());
            body = parent == bodyOfName.end() ? nullptr : parent->second;
        }
        if (body != nullptr && startOfWalk[body] == start) {
            pushError("Body " + body->name + " is above itself in the problem definition.");
            return;
        }
    }
}

static void checkTempIds(const LqScaleDefData& scaleDef) {
    if (!scaleDef.tempsFollowReals()) {
        pushError("The first temporary marker does not have the id behind REAL_COUNT.");
    } else if (!scaleDef.tempIdsAreConsecutive()) {
        pushError("The temporary markers are not consecutively numbered.");
    }
}

/// Reports limits that lie the wrong way round, and references that the measured data do not have. Without
/// measured data only those limits are looked at that need none.
static void checkAgainstMeasured(const LqScaleDefData& scaleDef, const LqMeasuredData* measured) {
    if (measured == nullptr) {
        LqScaleDefData literals;
        for (const LqScaleDefData::LimitOverride_t& limits : scaleDef.limitOverrides) {
            if (limits.lower.measuredId == 0 && limits.upper.measuredId == 0) {
                literals.addLimitOverride(limits);
            }
        }
        literals.validateMeasured(nullptr);
        return;
    }
    scaleDef.validateMeasured(measured);
    for (const LqScaleDefData::TempData_t& temp : scaleDef.temps) {
        for (const LqScaleDefData::ScaleFloat& coordinate : temp.position) {
            if (errorStands() || !LqScaleDefData::validateMeasuredRef(coordinate, measured)) {
                return;
            }
        }
    }
}

class FamilyCheck {
public:
    /// Reads and checks all files. Returns whether they are good. `measuredPath` may be null.
    bool check(const LmStr& path, const LmStr& measuredPath) {
        if (checkFile(path, Alone, [&] { readProblemSpec(spec, path, currentStatus()); }, {})) {
            checkSkeleton();
            checkLimitsAndScaling(measuredPath);
        }
        return isGood;
    }

private:
    using Step = std::function<void()>;
    /// Which steps need a problem definition that could be read.
    enum Needs { Alone, ChecksNeedDefinition, AllNeedsDefinition };

    void checkSkeleton() {
        if (isNamed(spec.problemDefinition, "PROBDEF")) {
            hasDefinition = checkFile(spec.problemDefinition, Alone,
                                      [&] { definition.readProblemDefFile(spec.problemDefinition, true); },
                                      {[&] { definition.checkProblemDef(currentStatus()); },
                                       [&] { definition.checkRealMarkerBodies(currentStatus()); },
                                       [&] { checkForCircles(definition); }});
        }
        data.model.problemDef = &definition;
        if (isNamed(spec.unscaledBodyDef, "UNSCALEDBODYDEF")) {
            checkFile(spec.unscaledBodyDef, AllNeedsDefinition,
                      [&] { data.model.readModelFile(spec.unscaledBodyDef, true); },
                      {[&] { data.model.checkModel(); },
                       [&] { matchProblemDef(definition, data.model, currentStatus()); }});
        }
    }

    void checkLimitsAndScaling(const LmStr& measuredPath) {
        if (isNamed(spec.limits, "LIMITS")) {
            checkFile(spec.limits, ChecksNeedDefinition,
                      [&] { readLimitsFile(data.limits, spec.limits, true); },
                      {[&] { checkLimits(data.limits, definition); }});
        }
        LqMeasuredData measured;
        const bool hasMeasured = !measuredPath.isNull() &&
                                 checkFile(measuredPath, Alone, [&] { measured.readFile(measuredPath); }, {});
        if (isNamed(spec.scaleDefinition, "SCALEDEF")) {
            checkFile(spec.scaleDefinition, AllNeedsDefinition,
                      [&] { data.scaleDef.readFile(spec.scaleDefinition, definition, false); },
                      {[&] { checkTempIds(data.scaleDef); },
                       [&] { checkAgainstMeasured(data.scaleDef, hasMeasured ? &measured : nullptr); }});
        }
    }

    /// Whether the specification names the file: the readers do not take an absent path.
    static bool isNamed(const LmStr& path, const char* keyword) {
        if (path.isNull()) {
            std::cout << keyword << ": not named" << std::endl;
        }
        return !path.isNull();
    }

    /// Takes the steps that can be taken, prints the line of the file, and returns whether it could be read.
    bool checkFile(const LmStr& path, Needs needs, const Step& read, const std::vector<Step>& checks) {
        outcome = hasDefinition || needs == Alone ? "ok" : "not checked";
        const bool isRead = (hasDefinition || needs != AllNeedsDefinition) && passes(path, read);
        for (const Step& check : checks) {
            if (isRead && (hasDefinition || needs == Alone)) {
                passes(path, check);
            }
        }
        std::cout << path << ": " << outcome << std::endl;
        isGood = isGood && outcome.starts_with("ok");
        return isRead;
    }

    /// Takes one step, which reports on the current status, and prints what it says.
    bool passes(const LmStr& path, const Step& step) {
        step();
        if (errorStands()) {
            outcome = "failed";
            pushError("The check of \"" + path + "\" failed.");
        } else if (currentStatus().hasEntries()) {
            outcome = outcome == "ok" ? "ok, with warnings" : outcome;
            pushWarning("The check of \"" + path + "\" gave a warning.");
        }
        return currentStatus().printStatusToError() == 0;
    }

    LqProblemSpec spec;
    LqProblemBundle data;
    LqProblemDefData& definition = data.problemDef;
    bool hasDefinition = false;
    bool isGood = true;
    std::string_view outcome; // of the file that is being checked
};

int main(int argc, char** argv) {
    if (argc != 2 && argc != 3) {
        std::cerr << "Usage: check PROBLEM.zvx [MEASURED]\n";
        return 1;
    }
    FamilyCheck family;
    const bool isGood = family.check(argv[1], argc == 3 ? argv[2] : LmStr());
    if (std::cout.fail()) {
        std::cerr << "Unable to write the results.\n";
        return 1;
    }
    return isGood ? 0 : 1;
}
