// report_json PROBLEM.zvx > out.json: what `quillon info` reports of a problem, and what it leaves out, as
// JSON. The keys are the names of the report. INCLUDE sections are merged.

#include "quillon/core/LmListView.h"
#include "quillon/core/LmStatus.h"
#include "quillon/core/RecordIndex.h"
#include "quillon/model/BodyChain.h"
#include "quillon/tool/LqProblemBundle.h"
#include "quillon/tool/LqProblemSpec.h"
#include "quillon/tool/ProblemFamily.h"

#include <exception>
#include <iostream>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

using namespace quillon;
using namespace quillon::scaleDef;

/// Keeps its keys in order, and reals as singles, which need fewer digits than doubles to be read back.
using Json =
    nlohmann::basic_json<nlohmann::ordered_map, std::vector, std::string, bool, int, unsigned, float>;

/// An object of keys and values in turn. A key whose value is null is left out.
static Json object(const char* key, const Json& value, const auto&... rest) {
    Json out = value.is_null() ? Json::object() : Json::object({{key, value}});
    if constexpr (sizeof...(rest) != 0) {
        out.update(object(rest...));
    }
    return out;
}

static Json when(bool exists, const Json& value) {
    return exists ? value : Json();
}

/// An array of what `describe` makes of the records.
static Json all(const auto& records, const auto& describe) {
    Json out = Json::array();
    for (const auto& record : records) {
        out.push_back(describe(record));
    }
    return out;
}

/// A number, or the measured constant that it follows from.
template <>
struct nlohmann::adl_serializer<ScaleFloat> {
    static void to_json(Json& out, const ScaleFloat& number) {
        out = number.measuredId == 0
                  ? Json(number.value)
                  : object("measured", number.measuredId, "factor", when(number.value != 0, number.value),
                           "offset", when(number.value == 0, number.offset));
    }
};

/// The variable that a mapping follows, or its constant and terms, or nothing.
static const auto mappingJson = [](const auto& mapping) {
    const Json terms = all(mapping.termList(), [](const auto* term) {
        return object("var", term->sysVar, "factor", term->coefficient);
    });
    return object("var", when(mapping.id > 0, mapping.id), "constant", when(mapping.id < 0, mapping.constant),
                  "terms", when(mapping.id < 0, terms));
};

static Json problemJson(const LqProblemBundle& family) {
    const LqProblemDefData& problem = family.problemDef;
    const BodyIndex bodies(problem, family.model);
    RecordIndex<LqVarLimits> limitsOfVars;
    limitsOfVars.addAll(LmListView<const LqVarLimits>(family.limits.vars));
    limitsOfVars.finish();
    RecordIndex<LqBDMarker> places;
    for (const auto* kind : {&family.model.realMarkers, &family.model.fixMarkers, &family.model.doubleMarkers,
                             &family.model.artificialMarkers}) {
        places.addAll(*kind);
    }
    places.finish();
    Json out;
    out["sys_vars"] = all(problem.sysVars, [&](const LqPDDSysVar* var) {
        const LqVarLimits* const found = limitsOfVars.find(var->id);
        const LqVarLimits limits = found == nullptr ? LqVarLimits() : *found;
        return object("id", var->id, "description", var->description.view(), "lower_limit",
                      when(limits.hasLowerLimit(), limits.lowerValue), "lower_limit_weight",
                      when(!limits.lowerWeight.notSet, limits.lowerWeight.value), "upper_limit",
                      when(limits.hasUpperLimit(), limits.upperValue), "upper_limit_weight",
                      when(!limits.upperWeight.notSet, limits.upperWeight.value), "guide",
                      when(limits.guideWeight != 0, limits.guideValue), "guide_weight",
                      when(limits.guideWeight != 0, limits.guideWeight));
    });
    out["bodies"] = all(problem.bodies, [&](const LqPDDBodyMap* body) {
        const LqBDBody* const found = bodies.findGeometry(body->name);
        const LqBDBody geometry = found == nullptr ? LqBDBody() : *found;
        const bool isTwist = found != nullptr && body->type == bodyTypeOne;
        return object(
            "name", body->name.view(), "id", body->graphicsNumber, "parent", body->parentName.view(), "type",
            body->type, "base_transform", when(found != nullptr, geometry.baseTransform), "twist_length",
            when(isTwist, geometry.vectorLength), "twist_direction", when(isTwist, geometry.vectorDirection),
            "transform_order", body->transformOrder, "mappings", all(body->mappings, mappingJson));
    });
    const auto local = [&](int id) {
        const LqBDMarker* const place = places.find(id);
        return place == nullptr ? Json() : Json(place->position);
    };
    const auto marker = [&](const LqPDDFixMarker* one, const auto&... more) {
        return object("id", one->id, "body", one->bodyName.view(), "weight", one->weight, "local",
                      local(one->id), more...);
    };
    out["real_markers"] = all(problem.realMarkers, marker);
    out["fix_markers"] = all(problem.fixMarkers, marker);
    out["double_markers"] = all(problem.doubleMarkers, [&](const LqPDDDoubleMarker* one) {
        return marker(one, "double_id", one->doubleId);
    });
    out["artificial_pairs"] = all(problem.artificialMarkers, [&](const LqPDDArtificialMarker* pair) {
        return marker(pair, "other_id", pair->otherId, "other_body", pair->otherBodyName.view(),
                      "other_local", local(pair->otherId));
    });
    return out;
}

/// Adds what holds in one pose, or in all of them.
static Json withOverrides(Json out, const auto& holder) {
    out["sys_var_limit_overrides"] = all(holder.limitOverrides, [](const LimitOverride_t& limits) {
        return object("sys_var", limits.sysVarId, "lower_limit",
                      when(limits.lower.value != noLowerLimit, limits.lower), "upper_limit",
                      when(limits.upper.value != noUpperLimit, limits.upper));
    });
    out["sys_var_guide_overrides"] = all(holder.sysVarGuideOverrides, [](const SysVarGuideOverride& guide) {
        return object("sys_var", guide.sysVarId, "guide", guide.value, "guide_weight", guide.weight);
    });
    out["vector_constraints"] = all(holder.globalConstraints, [](const GlobalConst_t& vector) {
        return object("body", vector.bodyName.view(), "local_direction", normalized(vector.local),
                      "global_direction", normalized(vector.global), "weight",
                      length(vector.local) * length(vector.global));
    });
    out["position_constraints"] = all(holder.positionConstraints, [](const PositionConst_t& position) {
        return object("body", position.body.view(), "parent_body", position.parent.view(), "weight",
                      position.weight, "local", position.localPosition, "base_translation",
                      position.baseTranslation, "base_rotation", position.baseRotation, "transform_order",
                      position.transformOrder, "mappings", all(position.mapping, mappingJson));
    });
    return out;
}

static Json scalingJson(const LqScaleDefData& data) {
    Json out = object("scale_real_count", data.realCount, "default_real_weight", data.defaultRealWeight);
    out["scaling_vars"] = all(data.scaleVars, [](const ScaleVar& var) {
        return object("name", var.name.view(), "description",
                      when(!var.description.isNull(), var.description.view()), "lower_limit",
                      when(var.lower.value != noLowerLimit, var.lower), "upper_limit",
                      when(var.upper.value != noUpperLimit, var.upper));
    });
    out["real_weight_overrides"] = all(data.realWeightOverrides, [](const RealWeightOverride_t& real) {
        return object("marker_id", real.markerId, "weight", real.weight);
    });
    out["artificial_weight_overrides"] = all(data.artificialWeightOverrides, [](const auto& pair) {
        return object("marker_id", pair.firstMarkerId, "other_marker_id", pair.secondMarkerId, "weight",
                      pair.weight);
    });
    out["body_scalings"] = all(data.bodyParams, [](const BodyParams_t& body) {
        return object("body", body.bodyName.view(), "directions",
                      Json::array({body.firstAxis, body.secondAxis, body.thirdAxis}), "values",
                      all(body.scale, mappingJson));
    });
    out["temp_markers"] = all(data.temps, [](const TempData_t& temp) {
        return object("id", temp.id, "body", temp.attachedBody.view(), "relative_body",
                      temp.relativeBody.view(), "weight", temp.weight, "local", temp.position);
    });
    out["poses"] = all(data.poses, [](const Pose_t* pose) {
        return withOverrides(object("name", pose->name.view()), *pose);
    });
    return withOverrides(out, data);
}

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "Usage: report_json PROBLEM.zvx\n";
        return 1;
    }
    LqProblemSpec spec;
    LqProblemBundle family;
    try {
        if (readProblemFamily(spec, family, argv[1])) {
            Json document = problemJson(family);
            document.update(
                object("scaling", when(!spec.scaleDefinition.isNull(), scalingJson(family.scaleDef))));
            std::cout << document.dump(2, ' ', false, Json::error_handler_t::replace) << std::endl;
        }
    } catch (const std::exception& failure) {
        pushError(failure.what());
    }
    const int result = currentStatus().printStatusToError();
    if (!std::cout) {
        std::cerr << "Unable to write the document.\n";
    }
    return std::cout ? result : 1;
}
