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

void writeScaleFloatText(ReportText& out, const ScaleFloat& number) {
    if (number.measuredId == 0) {
        out << number.value;
        return;
    }
    LmOSStream stream;
    number.print(stream);
    out << stream.str();
}

bool isInfiniteLimit(const ScaleFloat& limit) {
    return limit.measuredId == 0 && limit.offset == 0.0F &&
           (limit.value == greatestReal || limit.value == -greatestReal);
}

void writeScaleMappingText(ReportText& out, const LqBasicVarMapping<ScaleFloat>& mapping) {
    if (mapping.id > 0) {
        out << "s" << mapping.id;
    }
    if (mapping.id >= 0) {
        return;
    }
    const char* separator = "";
    if (mapping.constant != ScaleFloat{}) {
        writeScaleFloatText(out, mapping.constant);
        separator = "+";
    }
    for (const LqLinearTerm<ScaleFloat>* term : mapping.termList()) {
        out << separator;
        if (term->coefficient != ScaleFloat{.value = 1.0F}) {
            writeScaleFloatText(out, term->coefficient);
            out << "*";
        }
        out << "s" << term->sysVar;
        separator = "+";
    }
}

// --- Records of definitions and poses ----------------------------------------------------------------------

namespace {

void writeLimit(ReportText& out, const char* label, const ScaleFloat& limit) {
    out << label;
    writeScaleFloatText(out, limit);
}

void writeVector(ReportText& out, const char* label, const LmVec3& vector) {
    out << label;
    writeVector3(out, vector);
}

/// The vector divided by its magnitude; NaN for a zero vector.
void writeDirection(ReportText& out, const char* label, const LmVec3& vector) {
    const float magnitude = length(vector);
    writeVector(out, label, {vector[0] / magnitude, vector[1] / magnitude, vector[2] / magnitude});
}

/// The first word of a line and the pose that the record belongs to, if it does.
void beginRecord(ReportText& out, const char* word, const LmStr& poseName) {
    out << word;
    if (!poseName.isNull()) {
        out << " pose=" << poseName;
    }
}

void writeTransforms(ReportText& out, const LqScaleDefData::PositionConst_t& constraint) {
    ValueList list(out, "transforms");
    for (int k = 0; k < constraint.transformOrder.count(); ++k) {
        if (constraint.mapping[k].id != 0) {
            writeScaleMappingText(list.addEntry(transformLabel(constraint.transformOrder[k])),
                                  constraint.mapping[k]);
        }
    }
}

} // namespace

void writeLimitOverrides(ReportText& out, const LmStr& poseName,
                         const LmArray<LqScaleDefData::LimitOverride_t>& overrides) {
    for (const LqScaleDefData::LimitOverride_t& limits : overrides) {
        beginRecord(out, "scaling_sys_var_limit_override", poseName);
        out << " sys_var=v" << limits.sysVarId;
        if (limits.lower.baseValue() > -greatestReal) {
            writeLimit(out, " lower_limit=", limits.lower);
        }
        if (limits.upper.baseValue() < greatestReal) {
            writeLimit(out, " upper_limit=", limits.upper);
        }
        out << "\n";
    }
}

void writeVectorConstraints(ReportText& out, const LmStr& poseName,
                            const LmArray<LqScaleDefData::GlobalConst_t>& constraints) {
    for (const LqScaleDefData::GlobalConst_t& constraint : constraints) {
        beginRecord(out, "scaling_vector_constraint", poseName);
        out << " body=" << constraint.bodyName;
        writeDirection(out, " local_direction=", constraint.local);
        writeDirection(out, " global_direction=", constraint.global);
        out << " weight=" << length(constraint.local) * length(constraint.global) << "\n";
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
        writeVector(out, " local=", local);
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
            writeLimit(out, " lower_limit=", var.lower);
        }
        if (!isInfiniteLimit(var.upper)) {
            writeLimit(out, " upper_limit=", var.upper);
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
        writeVector(out, " direction=", *axes[axis]);
        if (body.scale[axis].id != 0) {
            out << " value=";
            writeScaleMappingText(out, body.scale[axis]);
        }
        out << "\n";
    }
}

void writeTempMarker(ReportText& out, const LqScaleDefData::TempData_t& temp) {
    out << "temp_marker id=" << temp.id << " body=" << temp.attachedBody;
    if (!temp.relativeBody.isNull() && temp.relativeBody != temp.attachedBody) {
        out << " relative_body=" << temp.relativeBody;
    }
    out << " weight=" << temp.weight << " local=(";
    const char* separator = "";
    for (const ScaleFloat& coordinate : temp.position) {
        out << separator;
        writeScaleFloatText(out, coordinate);
        separator = " ";
    }
    out << ")\n";
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
