#pragma once

#include "quillon/core/LmStr.h"

#include <cstdint>
#include <map>

namespace quillon {

/// How the bodies of a problem definition are matched to those of a model.
enum class LqMatchBy : std::int32_t { BodyID = 0, BodyName = 1 };

/// The contents of a problem specification file: the paths of a problem's files, each with the time of its
/// last change in seconds since 1970 (0 when unknown), and free user values. A path that the file does not
/// give is the null string.
class LqProblemSpec {
public:
    LqProblemSpec() = default;
    /// Copies paths, times and `matchBy`. The copy deliberately starts without user values: they belong to
    /// the file that they were read from.
    LqProblemSpec(const LqProblemSpec& other);
    LqProblemSpec& operator=(const LqProblemSpec& other) = default;
    ~LqProblemSpec() = default;

    /// Whether all six paths are null; `matchBy` and the user values are not looked at.
    bool isBlank() const;
    LqMatchBy matchBy() const { return matchBy_; }                   ///< of `Match:`
    void setMatchBy(LqMatchBy newMatchBy) { matchBy_ = newMatchBy; } ///< of `Match:`
    /// Sets the time of each path that is not null from the file that it names.
    void refreshTimes();

    LmStr model;                            ///< of `MODEL:`
    std::int64_t modelTime = 0;             ///< of that file
    LmStr problemDefinition;                ///< of `PROBDEF:`
    std::int64_t problemDefinitionTime = 0; ///< of that file
    LmStr unscaledBodyDef;                  ///< of `UNSCALEDBODYDEF:`
    std::int64_t unscaledBodyDefTime = 0;   ///< of that file
    LmStr scaleDefinition;                  ///< of `SCALEDEF:`
    std::int64_t scaleDefinitionTime = 0;   ///< of that file
    LmStr limits;                           ///< of `LIMITS:`
    std::int64_t limitsTime = 0;            ///< of that file
    LmStr searchParameters;                 ///< of `SEARCHPARAMETERS:`
    std::int64_t searchParametersTime = 0;  ///< of that file
    std::map<LmStr, LmStr> userValues;      ///< by their tags

private:
    LqMatchBy matchBy_ = LqMatchBy::BodyID;
};

/// Compares all paths, all times, `matchBy`, and the user values in order.
bool operator==(const LqProblemSpec& a, const LqProblemSpec& b);

/// One path of a problem specification with its time, as a row of `specPaths`.
struct LqSpecPath {
    const char* keyword;               ///< begins its line in the file, with the colon
    const char* name;                  ///< what messages call it
    LmStr LqProblemSpec::*path;        ///< the field of the path
    std::int64_t LqProblemSpec::*time; ///< the field of its time
    bool mayBeCompressed; ///< whether its time is that of its compressed variant when only that exists
};

/// The paths in the order in which they are written.
inline constexpr LqSpecPath specPaths[] = {
    {"MODEL:", "MODEL", &LqProblemSpec::model, &LqProblemSpec::modelTime, true},
    {"PROBDEF:", "PROBDEF", &LqProblemSpec::problemDefinition, &LqProblemSpec::problemDefinitionTime, false},
    {"UNSCALEDBODYDEF:", "UNSCALEDBODYDEF", &LqProblemSpec::unscaledBodyDef,
     &LqProblemSpec::unscaledBodyDefTime, false},
    {"SCALEDEF:", "SCALEDEF", &LqProblemSpec::scaleDefinition, &LqProblemSpec::scaleDefinitionTime, false},
    {"LIMITS:", "LIMITS", &LqProblemSpec::limits, &LqProblemSpec::limitsTime, false},
    {"SEARCHPARAMETERS:", "SEARCHPARAMETERS", &LqProblemSpec::searchParameters,
     &LqProblemSpec::searchParametersTime, false},
};

/// An older keyword of the `UNSCALEDBODYDEF:` entry, which is read and never written.
inline constexpr const char* unscaledModelsKeyword = "UNSCALEDMODELS:";
inline constexpr const char* matchKeyword = "Match:";
inline constexpr const char* matchBodyID = "BodyID";
inline constexpr const char* matchBodyName = "BodyName";

/// Sets one time from the file that its path names; 0 when there is none or it cannot be read.
void refreshTime(LqProblemSpec& spec, const LqSpecPath& entry);

} // namespace quillon
