#include "quillon/tool/ProblemDefReport.h"

#include "quillon/core/LmListView.h"
#include "quillon/core/NameIndex.h"
#include "quillon/core/RecordIndex.h"
#include "quillon/geometry/Mat4.h"
#include "quillon/tool/LqProblemBundle.h"
#include "quillon/tool/ReportAttributes.h"

#include <optional>
#include <ostream>
#include <span>
#include <string>
#include <string_view>

namespace quillon {

void writeMappingText(ReportText& out, const LqBasicVarMapping<float>& mapping) {
    if (mapping.id > 0) {
        out << "v" << mapping.id;
    }
    if (mapping.id >= 0) {
        return;
    }
    const char* separator = "";
    if (mapping.constant != 0.0F) {
        out << mapping.constant;
        separator = "+";
    }
    for (const LqLinearTerm<float>* term : mapping.termList()) {
        // A "+" stands before a negative coefficient too: readers of the report split the text at it.
        out << separator;
        if (term->coefficient != 1.0F) {
            out << term->coefficient << "*";
        }
        out << "v" << term->sysVar;
        separator = "+";
    }
}

namespace {

bool isNamedFrame(const LmStr& bodyName) {
    return !bodyName.isNull() && bodyName != referenceSystemName;
}

/// One problem's lines, with the look-ups that they need.
class ProblemDefSection {
public:
    ProblemDefSection(ReportText& out, std::ostream& messages, const LqProblemBundle& bundle)
        : out(out), messages(messages), bundle(bundle), modelBodies(bundle.model.storedBodies()) {
        indexLimits();
        indexModelBodies();
        indexModelMarkers();
    }

    void write() {
        writeAll(bundle.problemDef.sysVars, &ProblemDefSection::writeSysVar);
        writeAll(bundle.problemDef.bodies, &ProblemDefSection::writeBody);
        writeAll(bundle.problemDef.realMarkers, &ProblemDefSection::writeRealMarker);
        writeAll(bundle.problemDef.artificialMarkers, &ProblemDefSection::writeArtificialPair);
    }

private:
    // --- Look-ups --------------------------------------------------------------------------------

    void indexLimits() {
        limitsById.addAll(LmListView<const LqVarLimits>(bundle.limits.vars));
        limitsById.finish();
    }

    void indexModelBodies() {
        modelBodyPlaces.reserve(modelBodies.size());
        for (std::size_t i = 0; i < modelBodies.size(); ++i) {
            modelBodyPlaces.add(modelBodies[i]->name.view(), static_cast<std::int32_t>(i));
        }
    }

    void indexModelMarkers() {
        const LqBodyDefData& model = bundle.model;
        for (const auto* markers :
             {&model.realMarkers, &model.fixMarkers, &model.doubleMarkers, &model.artificialMarkers}) {
            modelMarkers.addAll(*markers);
        }
        modelMarkers.finish();
    }

    template <class Record>
    void writeAll(const LmArray<Record*>& records, void (ProblemDefSection::*writeOne)(const Record&)) {
        for (const Record* record : records) {
            if (record != nullptr) {
                (this->*writeOne)(*record);
            }
        }
    }

    // --- System variables ------------------------------------------------------------------------

    void writeSysVar(const LqPDDSysVar& sysVar) {
        out << "sys_var v" << sysVar.id;
        if (!sysVar.description.isNull()) {
            out << " description=\"" << sysVar.description << "\"";
        }
        if (const LqVarLimits* const limits = limitsById.find(sysVar.id)) {
            writeLimits(*limits);
        }
        out << "\n";
    }

    void writeLimits(const LqVarLimits& limits) {
        if (limits.hasLowerLimit()) {
            out << " lower_limit=" << limits.lowerValue;
        }
        if (!limits.lowerWeight.notSet) {
            out << " lower_limit_weight=" << limits.lowerWeight.value;
        }
        if (limits.hasUpperLimit()) {
            out << " upper_limit=" << limits.upperValue;
        }
        if (!limits.upperWeight.notSet) {
            out << " upper_limit_weight=" << limits.upperWeight.value;
        }
        if (limits.guideWeight != 0.0F) {
            out << " guide=" << limits.guideValue << " guide_weight=" << limits.guideWeight;
        }
    }

    // --- Bodies ----------------------------------------------------------------------------------

    void writeBody(const LqPDDBodyMap& body) {
        out << "body " << body.name;
        if (body.graphicsNumber != 0) {
            out << " id=" << body.graphicsNumber;
        }
        if (isNamedFrame(body.parentName)) {
            out << " parent=\"" << body.parentName << "\"";
        }
        writeBodyType(body.type);
        writeModelAttributes(body);
        writeTransforms(body);
        out << "\n";
    }

    void writeBodyType(std::int32_t type) {
        if (type == bodyTypeOne) {
            out << " type=twist";
        } else if (type != 0) {
            out << " type=" << type;
        }
    }

    void writeModelAttributes(const LqPDDBodyMap& body) {
        const std::optional<std::int32_t> place = modelBodyPlaces.find(body.name.view());
        if (!place.has_value()) {
            remark("Body " + body.name + " is missing in the unscaled body def\n");
            return;
        }
        const LqBDBody& modelBody = *modelBodies[static_cast<std::size_t>(*place)];
        LmVec3 translation{};
        LmMat3 rotation{};
        getTranslation(modelBody.baseTransform, translation);
        getRotation(modelBody.baseTransform, rotation);
        writeTransformAttribute(out, "base_transform", translation, rotation);
        if (body.type == bodyTypeOne) {
            out << " twist_length=" << modelBody.vectorLength << " twist_direction=";
            writeVector3(out, modelBody.vectorDirection);
        }
    }

    void writeTransforms(const LqPDDBodyMap& body) {
        ValueList list(out, "transforms");
        for (int k = 0; k < body.mappings.count(); ++k) {
            if (body.mappings[k].id != 0) {
                writeMappingText(list.addEntry(transformLabel(body.transformOrder[k])), body.mappings[k]);
            }
        }
    }

    // --- Markers ---------------------------------------------------------------------------------

    void writeRealMarker(const LqPDDRealMarker& marker) {
        out << "real_marker id=" << marker.id;
        if (isNamedFrame(marker.bodyName)) {
            out << " body=" << marker.bodyName;
        }
        out << " weight=" << marker.weight;
        if (!writeLocal(marker.id)) {
            remark(LmStr("Marker ") + std::to_string(marker.id).c_str() +
                   " is not in the unscaled bodydef.\n");
        }
        out << "\n";
    }

    void writeArtificialPair(const LqPDDArtificialMarker& pair) {
        out << "artificial_pair id=" << pair.id << " other_id=" << pair.otherId << " weight=" << pair.weight
            << "\n";
        writeArtificialMarker(pair.id, pair.bodyName);
        writeArtificialMarker(pair.otherId, pair.otherBodyName);
    }

    void writeArtificialMarker(std::int32_t id, const LmStr& bodyName) {
        out << "artificial_marker id=" << id << " body=" << bodyName;
        writeLocal(id);
        out << "\n";
    }

    /// Writes the marker's position in the model; false when it has none.
    bool writeLocal(std::int32_t id) {
        const LqBDMarker* const marker = modelMarkers.find(id);
        if (marker == nullptr) {
            return false;
        }
        out << " local=";
        writeVector3(out, marker->position);
        return true;
    }

    void remark(const LmStr& text) { messages << text; }

    ReportText& out;
    std::ostream& messages;
    const LqProblemBundle& bundle;
    const std::span<LqBDBody* const> modelBodies;
    RecordIndex<LqVarLimits> limitsById;
    NameIndex modelBodyPlaces; // in `modelBodies`
    RecordIndex<LqBDMarker> modelMarkers;
};

} // namespace

void writeProblemDefSection(ReportText& out, std::ostream& messages, const LqProblemBundle& bundle) {
    ProblemDefSection(out, messages, bundle).write();
}

} // namespace quillon
