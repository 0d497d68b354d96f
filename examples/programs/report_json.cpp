// report_json PROBLEM.zvx > out.json: what `quillon info` reports of a problem, and what it leaves out, as
// JSON.
//
// The names are those of the report. What there is not is left out; a number that is none or infinite is
// null, and bytes that are no UTF-8 become replacement characters. INCLUDE sections are merged.

#include "json/Scaling.h"
#include "json/Values.h"

#include "quillon/core/LmListView.h"
#include "quillon/core/LmStatus.h"
#include "quillon/limits/LimitsReader.h"
#include "quillon/model/BodyChain.h"
#include "quillon/tool/LqProblemBundle.h"
#include "quillon/tool/LqProblemSpec.h"
#include "quillon/tool/ProblemSpecReader.h"
#include "quillon/core/RecordIndex.h"

#include <exception>
#include <iostream>

using namespace quillon;

/// The problem definition with what the limits and the model hold for its records.
class Problem {
public:
    explicit Problem(const LqProblemBundle& family)
        : bundle(family), bodies(family.problemDef, family.model) {
        for (const LqVarLimits* record : LmListView<const LqVarLimits>(bundle.limits.vars)) {
            limits.add(record);
        }
        limits.finish();
        for (const auto* kind : {&bundle.model.realMarkers, &bundle.model.fixMarkers,
                                 &bundle.model.doubleMarkers, &bundle.model.artificialMarkers}) {
            for (const LqBDMarker* place : *kind) {
                places.add(place);
            }
        }
        places.finish();
    }

    Json json() const {
        return {{"sys_vars", all(bundle.problemDef.sysVars)},
                {"bodies", all(bundle.problemDef.bodies)},
                {"real_markers", all(bundle.problemDef.realMarkers)},
                {"fix_markers", all(bundle.problemDef.fixMarkers)},
                {"double_markers", all(bundle.problemDef.doubleMarkers)},
                {"artificial_pairs", all(bundle.problemDef.artificialMarkers)}};
    }

private:
    template <class Record>
    Json all(const LmArray<Record*>& records) const {
        Json out = Json::array();
        for (const Record* record : records) {
            out.push_back(one(*record));
        }
        return out;
    }

    Json one(const LqPDDSysVar& sysVar) const {
        Json out = {{"id", sysVar.id}, {"description", sysVar.description}};
        if (const LqVarLimits* const found = limits.find(sysVar.id)) {
            addLimits(out, *found);
        }
        return out;
    }

    static void addLimits(Json& out, const LqVarLimits& limits) {
        if (limits.hasLowerLimit()) {
            out["lower_limit"] = limits.lowerValue;
        }
        if (!limits.lowerWeight.notSet) {
            out["lower_limit_weight"] = limits.lowerWeight.value;
        }
        if (limits.hasUpperLimit()) {
            out["upper_limit"] = limits.upperValue;
        }
        if (!limits.upperWeight.notSet) {
            out["upper_limit_weight"] = limits.upperWeight.value;
        }
        if (limits.guideWeight != 0) {
            out["guide"] = limits.guideValue;
            out["guide_weight"] = limits.guideWeight;
        }
    }

    Json one(const LqPDDBodyMap& body) const {
        Json out = {{"name", body.name},
                    {"id", body.graphicsNumber},
                    {"parent", body.parentName},
                    {"type", body.type}};
        if (const LqBDBody* const geometry = bodies.findGeometry(body.name)) {
            addGeometry(out, *geometry, body.type);
        }
        out["transforms"] = transformsJson(body.transformOrder, body.mappings);
        return out;
    }

    static void addGeometry(Json& out, const LqBDBody& geometry, std::int32_t type) {
        LmVec3 translation{};
        LmMat3 rotation{};
        getTranslation(geometry.baseTransform, translation);
        getRotation(geometry.baseTransform, rotation);
        out["base_transform"] = baseTransformJson(translation, rotation);
        if (type == bodyTypeOne) {
            out["twist_length"] = geometry.vectorLength;
            out["twist_direction"] = geometry.vectorDirection;
        }
    }

    Json one(const LqPDDFixMarker& marker) const {
        return withPlace({{"id", marker.id}, {"body", marker.bodyName}, {"weight", marker.weight}},
                         marker.id);
    }

    Json one(const LqPDDRealMarker& marker) const {
        Json out = one(static_cast<const LqPDDFixMarker&>(marker));
        out["prediction_type"] = marker.predictionType;
        return out;
    }

    Json one(const LqPDDDoubleMarker& marker) const {
        Json out = one(static_cast<const LqPDDFixMarker&>(marker));
        out["double_id"] = marker.doubleId;
        return out;
    }

    Json one(const LqPDDArtificialMarker& pair) const {
        return {{"id", pair.id},
                {"other_id", pair.otherId},
                {"weight", pair.weight},
                {"artificial_markers",
                 {withPlace({{"id", pair.id}, {"body", pair.bodyName}}, pair.id),
                  withPlace({{"id", pair.otherId}, {"body", pair.otherBodyName}}, pair.otherId)}}};
    }

    Json withPlace(Json marker, std::int32_t id) const {
        if (const LqBDMarker* const place = places.find(id)) {
            marker["local"] = place->position;
        }
        return marker;
    }

    const LqProblemBundle& bundle;
    BodyIndex bodies;
    RecordIndex<LqVarLimits> limits;
    RecordIndex<LqBDMarker> places;
};

static bool read(LqProblemBundle& bundle, LqProblemSpec& spec, const LmStr& path) {
    readProblemSpec(spec, path, currentStatus());
    const auto isToBeRead = [](const LmStr& file) { return !errorStands() && !file.isNull(); };
    if (isToBeRead(spec.problemDefinition)) {
        bundle.problemDef.readProblemDefFile(spec.problemDefinition, true);
    }
    if (isToBeRead(spec.unscaledBodyDef)) {
        bundle.model.readModelFile(spec.unscaledBodyDef, bundle.problemDef, true);
    }
    if (isToBeRead(spec.limits)) {
        readLimitsFile(bundle.limits, spec.limits, true);
    }
    if (isToBeRead(spec.scaleDefinition)) {
        bundle.scaleDef.readFile(spec.scaleDefinition, bundle.problemDef, false);
    }
    return !errorStands();
}

static void write(std::ostream& output, const LqProblemBundle& bundle, const LqProblemSpec& spec) {
    Json document = Problem(bundle).json();
    if (!spec.scaleDefinition.isNull()) {
        document["scaling"] = bundle.scaleDef;
    }
    output << document.dump(2, ' ', false, Json::error_handler_t::replace) << std::endl;
}

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "Usage: report_json PROBLEM.zvx\n";
        return 1;
    }
    LqProblemBundle bundle;
    LqProblemSpec spec;
    try {
        if (read(bundle, spec, argv[1])) {
            write(std::cout, bundle, spec);
        }
    } catch (const std::exception& failure) {
        pushError(failure.what());
    }
    const int result = currentStatus().printStatusToError();
    if (!std::cout) {
        std::cerr << "Unable to write the document.\n";
        return 1;
    }
    return result;
}
