#pragma once

#include "quillon/core/LmArray.h"
#include "quillon/core/LmStr.h"
#include "quillon/geometry/Mat3.h"
#include "quillon/geometry/Vec3.h"
#include "quillon/problem/LqBasicVarMapping.h"
#include "quillon/problem/LqPDDBodyMap.h"
#include "quillon/scale/ScaleFloat.h"

#include <array>
#include <cstdint>

// The records of a scale definition. They are members of `LqScaleDefData` by name; they stand outside of it
// because their arrays must know how to move them. Ids of markers and system variables are those of the
// problem definition. Records compare field by field, so that a NaN is unequal to itself.

namespace quillon::scaleDef {

/// A value that follows scaling variables: `sysVar` in its terms is the id of a `ScaleVar`, which is its
/// position counted from 1.
using ScaleMapping = LqBasicVarMapping<ScaleFloat>;

/// The weight of one real marker.
struct RealWeightOverride_t {
    std::int32_t markerId = 0; ///< 1 to `realCount`
    float weight = 0;          ///< in place of `defaultRealWeight`

    friend bool operator==(const RealWeightOverride_t&, const RealWeightOverride_t&) = default;
};

/// The weight of a pair of artificial markers, whose ids lie above `realCount`.
struct ArtificialWeightOverride_t {
    std::int32_t firstMarkerId = 0;  ///< the id of the pair
    std::int32_t secondMarkerId = 0; ///< its other id
    float weight = 0;                ///< of the pair

    friend bool operator==(const ArtificialWeightOverride_t&, const ArtificialWeightOverride_t&) = default;
};

/// The limits of a system variable while scaling. A limit that is absent is `noLowerLimit`, `noUpperLimit`.
struct LimitOverride_t {
    std::int32_t sysVarId = -1; ///< in the problem definition
    ScaleFloat lower;           ///< or `noLowerLimit`
    ScaleFloat upper;           ///< or `noUpperLimit`

    friend bool operator==(const LimitOverride_t&, const LimitOverride_t&) = default;
};

/// A value that a system variable is drawn towards, and how strongly.
struct SysVarGuideOverride {
    std::int32_t sysVarId = 0; ///< in the problem definition
    float value = 0;           ///< towards which
    float weight = 0;          ///< how strongly

    friend bool operator==(const SysVarGuideOverride&, const SysVarGuideOverride&) = default;
};

/// Makes a body's local vector point along a global one. Readers give the two equal magnitudes.
struct GlobalConst_t {
    LmStr bodyName{""}; ///< in the problem definition
    LmVec3 local = {};  ///< in the frame of the body
    LmVec3 global = {}; ///< in the global frame

    friend bool operator==(const GlobalConst_t&, const GlobalConst_t&) = default;
};

/// A position constraint: holds a body in place relative to another one. The mappings stand by axis, whatever
/// the order; reports nevertheless label mapping k with entry k of `transformOrder`.
struct PositionConst_t {
    /// Transformation order 1 to 6 and six mappings of id 0, all fixed at 0.
    PositionConst_t();

    LmArray<int> transformOrder{
        transformCount}; ///< 1, 2, 3 translate along x, y, z; 4, 5, 6 rotate about them
    LmArray<ScaleMapping> mapping{transformCount}; ///< X, Y, Z translation, X, Y, Z rotation
    LmStr body{""};                                ///< the constrained body or "GLOBAL"
    LmStr parent{""};                              ///< the body that it is constrained to or "GLOBAL"
    float weight = 1;                              ///< how strongly
    LmVec3 localPosition = {};                     ///< in the constrained body
    LmVec3 baseTranslation = {};                   ///< in the frame of the parent
    LmMat3 baseRotation = identityMat3;            ///< in the frame of the parent
};

bool operator==(const PositionConst_t& left, const PositionConst_t& right); ///< field by field

/// A body that is scaled along three axes, which form a right-handed orthonormal frame.
struct BodyParams_t {
    LmStr bodyName{""};                ///< in the problem definition
    LmVec3 firstAxis = {};             ///< of length 1
    LmVec3 secondAxis = {};            ///< of length 1
    LmVec3 thirdAxis = {};             ///< first x second
    std::array<ScaleMapping, 3> scale; ///< along the first, the second and the third axis
};

bool operator==(const BodyParams_t& left, const BodyParams_t& right); ///< field by field

/// A marker that exists only while scaling.
struct TempData_t {
    std::int32_t id = 0;                ///< behind those of the real markers
    std::array<ScaleFloat, 3> position; ///< x, y, z in the frame of `relativeBody`
    LmStr attachedBody{""};             ///< that it moves with
    LmStr relativeBody{""};             ///< equal to `attachedBody` when the file names one body
    float weight = 0;                   ///< in the fit

    friend bool operator==(const TempData_t&, const TempData_t&) = default;
};

/// A scaling variable. Its id is its position in the definition, counted from 1.
struct ScaleVar {
    LmStr name{""};    ///< unique in a definition
    LmStr description; ///< null when none is given
    ScaleFloat lower;  ///< or `noLowerLimit`
    ScaleFloat upper;  ///< or `noUpperLimit`

    friend bool operator==(const ScaleVar&, const ScaleVar&) = default;
};

} // namespace quillon::scaleDef

namespace quillon {

// Strings, mappings, arrays and plain numbers: none of the records holds a pointer into itself.
template <>
struct MovesByBytes<scaleDef::GlobalConst_t> : std::true_type {};
template <>
struct MovesByBytes<scaleDef::PositionConst_t> : std::true_type {};
template <>
struct MovesByBytes<scaleDef::BodyParams_t> : std::true_type {};
template <>
struct MovesByBytes<scaleDef::TempData_t> : std::true_type {};
template <>
struct MovesByBytes<scaleDef::ScaleVar> : std::true_type {};

} // namespace quillon

namespace quillon::scaleDef {

/// One pose in which the subject is measured, with what holds in this pose only.
struct Pose_t {
    LmStr name{""};                                     ///< not empty
    LmDArray<LimitOverride_t> limitOverrides;           ///< in this pose
    LmDArray<SysVarGuideOverride> sysVarGuideOverrides; ///< by ascending `sysVarId`, each id once
    LmDArray<GlobalConst_t> globalConstraints;          ///< in this pose
    LmDArray<PositionConst_t> positionConstraints;      ///< in this pose
};

/// Compares the name and the four arrays, record by record in order.
bool operator==(const Pose_t& left, const Pose_t& right);

} // namespace quillon::scaleDef
