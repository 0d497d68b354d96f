#include "quillon/tool/ScalingReport.h"

#include "quillon/core/LmSStream.h"
#include "quillon/geometry/Vec3.h"
#include "quillon/tool/ReportAttributes.h"

#include <limits>
#include <string>
#include <string_view>

namespace quillon {

namespace {

using ScaleFloat = LqScaleDefData::ScaleFloat;

constexpr float greatestReal = std::numeric_limits<float>::max();

} // namespace

LmStr scaleFloatText(const ScaleFloat& number) {
    if (number.measuredId == 0) {
        return numberText(number.value);
    }
    LmOSStream stream;
    number.print(stream);
    return LmStr(stream.str());
}

bool isInfiniteLimit(const ScaleFloat& limit) {
    return limit.measuredId == 0 && limit.offset == 0.0F &&
           (limit.value == greatestReal || limit.value == -greatestReal);
}

namespace {

void appendScaleFloat(std::string& text, const ScaleFloat& number) {
    if (number.measuredId == 0) {
        appendNumber(text, number.value);
    } else {
        text += scaleFloatText(number).view();
    }
}

} // namespace

LmStr scaleMappingText(const LqBasicVarMapping<ScaleFloat>& mapping) {
    if (mapping.id == 0) {
        return {};
    }
    std::string text;
    if (mapping.id > 0) {
        text = "s";
        text += std::to_string(mapping.id);
        return LmStr(std::string_view(text));
    }
    if (mapping.constant != ScaleFloat{}) {
        appendScaleFloat(text, mapping.constant);
    }
    for (const LqLinearTerm<ScaleFloat>* term : mapping.termList()) {
        text += text.empty() ? "" : "+";
        if (term->coefficient != ScaleFloat{.value = 1.0F}) {
            appendScaleFloat(text, term->coefficient);
            text += "*";
        }
        text += "s";
        text += std::to_string(term->sysVar);
    }
    return LmStr(std::string_view(text));
}

// --- Records of definitions and poses ----------------------------------------------------------------------

namespace {

LmStr vectorText(const LmVec3& vector) {
    return writeVector3(vector[0], vector[1], vector[2]);
}

/// The vector divided by its magnitude; NaN for a zero vector.
LmStr directionText(const LmVec3& vector) {
    const float magnitude = length(vector);
    return writeVector3(vector[0] / magnitude, vector[1] / magnitude, vector[2] / magnitude);
}

/// The first word of a line and the pose that the record belongs to, if it does.
void beginRecord(ReportText& out, const char* word, const LmStr& poseName) {
    out << word;
    if (!poseName.isNull()) {
        out << " pose=" << poseName;
    }
}

void writeTransforms(ReportText& out, const LqScaleDefData::PositionConst_t& constraint) {
    LmDArray<ValueSpec> entries;
    for (int k = 0; k < constraint.transformOrder.count(); ++k) {
        const LmStr text = scaleMappingText(constraint.mapping[k]);
        if (!text.isNull()) {
            entries.append({transformLabel(constraint.transformOrder[k]), text});
        }
    }
    if (entries.count() != 0) {
        writeValueList(out, "transforms", entries);
    }
}

} // namespace

void writeLimitOverrides(ReportText& out, const LmStr& poseName,
                         const LmArray<LqScaleDefData::LimitOverride_t>& overrides) {
    for (const LqScaleDefData::LimitOverride_t& limits : overrides) {
        beginRecord(out, "scaling_sys_var_limit_override", poseName);
        out << " sys_var=v" << limits.sysVarId;
        if (limits.lower.baseValue() > -greatestReal) {
            out << " lower_limit=" << scaleFloatText(limits.lower);
        }
        if (limits.upper.baseValue() < greatestReal) {
            out << " upper_limit=" << scaleFloatText(limits.upper);
        }
        out << "\n";
    }
}

void writeVectorConstraints(ReportText& out, const LmStr& poseName,
                            const LmArray<LqScaleDefData::GlobalConst_t>& constraints) {
    for (const LqScaleDefData::GlobalConst_t& constraint : constraints) {
        beginRecord(out, "scaling_vector_constraint", poseName);
        out << " body=" << constraint.bodyName << " local_direction=" << directionText(constraint.local)
            << " global_direction=" << directionText(constraint.global)
            << " weight=" << length(constraint.local) * length(constraint.global) << "\n";
    }
}

void writePositionConstraint(ReportText& out, const LmStr& poseName,
                             const LqScaleDefData::PositionConst_t& constraint) {
    beginRecord(out, "scaling_position_constraint", poseName);
    out << " body=" << constraint.body;
    if (constraint.parent != "GLOBAL") {
        out << " parent_body=" << constraint.parent;
    }
    out << " weight=" << constraint.weight;
    const LmVec3& local = constraint.localPosition;
    if (local[0] != 0.0F || local[1] != 0.0F || local[2] != 0.0F) {
        out << " local=" << vectorText(local);
    }
    writeTransformAttribute(out, "base_transform", constraint.baseTranslation, constraint.baseRotation);
    writeTransforms(out, constraint);
    out << "\n";
}

// --- The section -------------------------------------------------------------------------------------------

namespace {

void writeScaleVars(ReportText& out, const LqScaleDefData& scaleDef) {
    int number = 0;
    for (const LqScaleDefData::ScaleVar& var : scaleDef.scaleVars) {
        out << "scaling_var s" << ++number << " name=" << var.name;
        if (!var.description.isNull()) {
            out << " description=\"" << var.description << "\"";
        }
        if (!isInfiniteLimit(var.lower)) {
            out << " lower_limit=" << scaleFloatText(var.lower);
        }
        if (!isInfiniteLimit(var.upper)) {
            out << " upper_limit=" << scaleFloatText(var.upper);
        }
        out << "\n";
    }
}

void writeParameters(ReportText& out, const LqScaleDefData& scaleDef) {
    out << "scaling_params scale_real_count=" << scaleDef.realCount
        << " default_real_weight=" << scaleDef.defaultRealWeight << "\n";
}

void writeWeightOverrides(ReportText& out, const LqScaleDefData& scaleDef) {
    for (const LqScaleDefData::RealWeightOverride_t& real : scaleDef.realWeightOverrides) {
        out << "scaling_real_weight_override marker_id=" << real.markerId << " weight=" << real.weight
            << "\n";
    }
    for (const LqScaleDefData::ArtificialWeightOverride_t& pair : scaleDef.artificialWeightOverrides) {
        out << "scaling_artificial_weight_override marker_id=" << pair.firstMarkerId
            << " other_marker_id=" << pair.secondMarkerId << " weight=" << pair.weight << "\n";
    }
}

void writeBodyScaling(ReportText& out, const LqScaleDefData::BodyParams_t& body) {
    const LmVec3* const axes[] = {&body.firstAxis, &body.secondAxis, &body.thirdAxis};
    for (std::size_t axis = 0; axis < body.scale.size(); ++axis) {
        out << "body_scaling_transform";
        if (!body.bodyName.isNull()) {
            out << " body=" << body.bodyName;
        }
        out << " direction=" << vectorText(*axes[axis]);
        const LmStr value = scaleMappingText(body.scale[axis]);
        if (!value.isNull()) {
            out << " value=" << value;
        }
        out << "\n";
    }
}

void writeTempMarker(ReportText& out, const LqScaleDefData::TempData_t& temp) {
    out << "temp_marker id=" << temp.id << " body=" << temp.attachedBody;
    if (!temp.relativeBody.isNull() && temp.relativeBody != temp.attachedBody) {
        out << " relative_body=" << temp.relativeBody;
    }
    out << " weight=" << temp.weight << " local=(" << scaleFloatText(temp.position[0]) << " "
        << scaleFloatText(temp.position[1]) << " " << scaleFloatText(temp.position[2]) << ")\n";
}

void writePositionConstraints(ReportText& out, const LmStr& poseName,
                              const LmArray<LqScaleDefData::PositionConst_t>& constraints) {
    for (const LqScaleDefData::PositionConst_t& constraint : constraints) {
        writePositionConstraint(out, poseName, constraint);
    }
}

/// In a pose vector constraints come before position constraints, outside of poses behind them.
void writePose(ReportText& out, const LqScaleDefData::Pose_t& pose) {
    out << "scaling_pose " << pose.name << "\n";
    writeLimitOverrides(out, pose.name, pose.limitOverrides);
    writeVectorConstraints(out, pose.name, pose.globalConstraints);
    writePositionConstraints(out, pose.name, pose.positionConstraints);
}

} // namespace

void writeScalingSection(ReportText& out, const LqScaleDefData& scaleDef) {
    if (scaleDef.isEmpty()) {
        return;
    }
    writeScaleVars(out, scaleDef);
    writeParameters(out, scaleDef);
    writeWeightOverrides(out, scaleDef);
    writeLimitOverrides(out, LmStr(), scaleDef.limitOverrides);
    for (const LqScaleDefData::BodyParams_t& body : scaleDef.bodyParams) {
        writeBodyScaling(out, body);
    }
    for (const LqScaleDefData::TempData_t& temp : scaleDef.temps) {
        writeTempMarker(out, temp);
    }
    writePositionConstraints(out, LmStr(), scaleDef.positionConstraints);
    writeVectorConstraints(out, LmStr(), scaleDef.globalConstraints);
    for (const LqScaleDefData::Pose_t* pose : scaleDef.poses) {
        if (pose != nullptr) {
            writePose(out, *pose);
        }
    }
}

} // namespace quillon
