#pragma once

#include "quillon/scale/LqMeasuredData.h"
#include "quillon/scale/LqScaleDefData.h"

#include <cstdint>
#include <initializer_list>
#include <limits>
#include <vector>

namespace quillon::test {

using Scale = LqScaleDefData;

inline constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

inline Scale::ScaleFloat literal(float value) {
    return {value, 0, 0};
}

/// "[m<id> <factor>]"
inline Scale::ScaleFloat scaleForm(std::int32_t id, float factor) {
    return {factor, 0, id};
}

/// "[m<id> + <offset>]"
inline Scale::ScaleFloat offsetForm(std::int32_t id, float offset) {
    return {0, offset, id};
}

inline LqMeasuredData measuredData(std::initializer_list<float> constants) {
    LqMeasuredData measured;
    for (const float constant : constants) {
        measured.append(constant);
    }
    return measured;
}

inline Scale::LimitOverride_t limit(std::int32_t sysVarId, float lower = 0, float upper = 0) {
    return {sysVarId, literal(lower), literal(upper)};
}

inline Scale::GlobalConst_t globalConstraint(const char* bodyName, const LmVec3& local = {0, 1, 0},
                                             const LmVec3& global = {0, 0, 1}) {
    return {bodyName, local, global};
}

inline Scale::PositionConst_t positionConstraint(const char* body, float weight = 1) {
    Scale::PositionConst_t constraint;
    constraint.body = body;
    constraint.parent = "GLOBAL";
    constraint.weight = weight;
    return constraint;
}

inline Scale::BodyParams_t scaledBody(const char* bodyName) {
    Scale::BodyParams_t record;
    record.bodyName = bodyName;
    record.firstAxis = {1, 0, 0};
    record.secondAxis = {0, 1, 0};
    record.thirdAxis = {0, 0, 1};
    return record;
}

inline Scale::TempData_t temp(std::int32_t id, const char* attached = "thigh",
                              const char* relative = "thigh") {
    return {id, {literal(1), literal(2), literal(3)}, attached, relative, 1};
}

inline Scale::ScaleVar scaleVar(const char* name, const char* description = "") {
    return {name, description, literal(0), literal(1)};
}

/// Appends a pose, which the definition owns, and gives it back.
inline Scale::Pose_t& addPose(Scale& definition, const char* name) {
    auto* const pose = new Scale::Pose_t;
    pose->name = name;
    definition.poses.append(pose);
    return *pose;
}

inline std::vector<int> idsOf(const LmArray<Scale::TempData_t>& temps) {
    std::vector<int> ids;
    for (const Scale::TempData_t& each : temps) {
        ids.push_back(each.id);
    }
    return ids;
}

/// The system variable ids of limit or guide overrides.
template <class Override>
std::vector<int> idsOf(const LmArray<Override>& overrides) {
    std::vector<int> ids;
    for (const Override& each : overrides) {
        ids.push_back(each.sysVarId);
    }
    return ids;
}

/// A definition in which every array and every field holds something of its own.
inline void fill(Scale& definition) {
    definition.realCount = 3;
    definition.defaultRealWeight = 0.5F;
    definition.realWeightOverrides.append({2, 0.25F});
    definition.artificialWeightOverrides.append({8, 9, 0.75F});
    definition.limitOverrides.append({1, literal(-1), scaleForm(1, 2)});
    definition.sysVarGuideOverrides.append({4, 1.5F, 2});
    definition.bodyParams.append(scaledBody("thigh"));
    definition.bodyParams[0].scale[0].id = 1;
    definition.bodyParams[0].scale[1].constant = literal(0.5F);
    definition.bodyParams[0].scale[1].appendTerm(2, scaleForm(1, 2));
    definition.temps.append(temp(4, "thigh", "shin"));
    definition.scaleVars.append(scaleVar("height", "Subject height"));
    definition.scaleVars.append(scaleVar("width"));
    definition.globalConstraints.append(globalConstraint("shin"));
    definition.positionConstraints.append(positionConstraint("pelvis", 2));
    Scale::Pose_t& pose = addPose(definition, "standing");
    pose.limitOverrides.append({5, literal(0), offsetForm(1, 1)});
    pose.sysVarGuideOverrides.append({6, 0.5F, 3});
    pose.globalConstraints.append(globalConstraint("foot"));
    pose.positionConstraints.append(positionConstraint("foot", 4));
    pose.positionConstraints[0].mapping[2].constant = literal(1);
    pose.positionConstraints[0].mapping[2].appendTerm(1, literal(3));
}

} // namespace quillon::test
