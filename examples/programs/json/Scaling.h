// A scale definition as JSON.
#pragma once

#include "Values.h"

#include "quillon/scale/LqScaleDefData.h"

namespace quillon::scaleDef {

inline void to_json(Json& out, const RealWeightOverride_t& real) {
    out = {{"marker_id", real.markerId}, {"weight", real.weight}};
}

inline void to_json(Json& out, const ArtificialWeightOverride_t& pair) {
    out = {
        {"marker_id", pair.firstMarkerId}, {"other_marker_id", pair.secondMarkerId}, {"weight", pair.weight}};
}

/// Adds the limits that there are.
inline void addLimits(Json& out, const ScaleFloat& lower, const ScaleFloat& upper) {
    if (lower != ScaleFloat{.value = noLowerLimit}) {
        out["lower_limit"] = lower;
    }
    if (upper != ScaleFloat{.value = noUpperLimit}) {
        out["upper_limit"] = upper;
    }
}

inline void to_json(Json& out, const LimitOverride_t& limits) {
    out = {{"sys_var", limits.sysVarId}};
    addLimits(out, limits.lower, limits.upper);
}

inline void to_json(Json& out, const SysVarGuideOverride& guide) {
    out = {{"sys_var", guide.sysVarId}, {"guide", guide.value}, {"guide_weight", guide.weight}};
}

inline void to_json(Json& out, const ScaleVar& var) {
    out = {{"name", var.name}};
    if (!var.description.isNull()) {
        out["description"] = var.description;
    }
    addLimits(out, var.lower, var.upper);
}

inline Json axisJson(const LmVec3& direction, const ScaleMapping& scale) {
    Json out = {{"direction", direction}};
    if (scale.id != 0) {
        out["value"] = scale;
    }
    return out;
}

inline void to_json(Json& out, const BodyParams_t& body) {
    out = {{"body", body.bodyName},
           {"axes",
            {axisJson(body.firstAxis, body.scale[0]), axisJson(body.secondAxis, body.scale[1]),
             axisJson(body.thirdAxis, body.scale[2])}}};
}

inline void to_json(Json& out, const TempData_t& temp) {
    out = {{"id", temp.id},
           {"body", temp.attachedBody},
           {"relative_body", temp.relativeBody},
           {"weight", temp.weight},
           {"local", temp.position}};
}

inline void to_json(Json& out, const PositionConst_t& constraint) {
    out = {{"body", constraint.body},
           {"parent_body", constraint.parent},
           {"weight", constraint.weight},
           {"local", constraint.localPosition},
           {"base_transform", baseTransformJson(constraint.baseTranslation, constraint.baseRotation)},
           {"transforms", transformsJson(constraint.transformOrder, constraint.mapping)}};
}

/// The magnitudes of the vectors are the weight.
inline void to_json(Json& out, const GlobalConst_t& constraint) {
    out = {{"body", constraint.bodyName},
           {"local_direction", normalized(constraint.local)},
           {"global_direction", normalized(constraint.global)},
           {"weight", length(constraint.local) * length(constraint.global)}};
}

inline void to_json(Json& out, const Pose_t* pose) {
    out = {{"name", pose->name},
           {"sys_var_limit_overrides", pose->limitOverrides},
           {"sys_var_guide_overrides", pose->sysVarGuideOverrides},
           {"vector_constraints", pose->globalConstraints},
           {"position_constraints", pose->positionConstraints}};
}

} // namespace quillon::scaleDef

namespace quillon {

inline void to_json(Json& out, const LqScaleDefData& scaling) {
    Json vars = Json::array();
    for (const scaleDef::ScaleVar& var : scaling.scaleVars) {
        vars.push_back({{"id", vars.size() + 1}});
        vars.back().update(Json(var));
    }
    out = {{"scaling_vars", vars},
           {"scale_real_count", scaling.realCount},
           {"default_real_weight", scaling.defaultRealWeight},
           {"real_weight_overrides", scaling.realWeightOverrides},
           {"artificial_weight_overrides", scaling.artificialWeightOverrides},
           {"sys_var_limit_overrides", scaling.limitOverrides},
           {"sys_var_guide_overrides", scaling.sysVarGuideOverrides},
           {"body_scalings", scaling.bodyParams},
           {"temp_markers", scaling.temps},
           {"position_constraints", scaling.positionConstraints},
           {"vector_constraints", scaling.globalConstraints},
           {"poses", scaling.poses}};
}

} // namespace quillon
