#pragma once

/// The words of the scale definition file, which its readers and its writer share. All are compared without
/// regard to case when read.
namespace quillon::scaleDefFormat {

// The items of the file. Those that a pose may hold too are marked.
inline constexpr const char* realCountKey = "REAL_COUNT";
inline constexpr const char* defaultRealWeightKey = "DEFAULT_REAL_WEIGHT";
inline constexpr const char* realWeightOverridesKey = "REAL_WEIGHT_OVERRIDES";
inline constexpr const char* artificialWeightOverridesKey = "ARTIFICIAL_PAIR_WEIGHT_OVERRIDES";
inline constexpr const char* limitAdjustmentsKey = "LIMIT_ADJUSTMENTS"; // in a pose too
inline constexpr const char* scalingVariablesKey = "SCALING_VARIABLES";
inline constexpr const char* poseKey = "POSE";
inline constexpr const char* bodyScalingsKey = "BODY_SCALINGS";
inline constexpr const char* positionConstraintKey = "POSITION_CONSTRAINT"; // in a pose too
inline constexpr const char* guideOverrideKey = "SYS_VAR_GUIDE_OVERRIDE";   // in a pose too
inline constexpr const char* globalConstraintsKey = "GLOBAL_CONSTRAINTS";   // in a pose too
inline constexpr const char* tempsKey = "TEMPS";

// A guide override.
inline constexpr const char* sysVarKey = "SYS_VAR";
inline constexpr const char* valueKey = "VALUE";
inline constexpr const char* weightKey = "WEIGHT"; // of a position constraint too

// A pose.
inline constexpr const char* nameKey = "NAME";

// A position constraint.
inline constexpr const char* bodyKey = "BODY";
inline constexpr const char* parentKey = "PARENT";
inline constexpr const char* localPositionKey = "LOCAL_POSITION";
inline constexpr const char* baseTranslationKey = "BASE_TRANSLATION";
inline constexpr const char* baseRotationKey = "BASE_ROTATION";
inline constexpr const char* transformOrderKey = "TRANSFORM_ORDER";
inline constexpr const char* mappingKey = "MAPPING";
/// Stands for the global frame in the place of a body.
inline constexpr const char* globalName = "GLOBAL";

// A temporary marker.
/// Stands between the relative and the attached body.
inline constexpr char bodySeparator = '/';

} // namespace quillon::scaleDefFormat
