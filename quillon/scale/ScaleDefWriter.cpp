#include "quillon/scale/LqScaleDefData.h"

#include "quillon/core/DataHeader.h"
#include "quillon/core/LmStatus.h"
#include "quillon/core/NumberPrinting.h"
#include "quillon/files/FileAccess.h"
#include "quillon/files/LmOFStream.h"
#include "quillon/scale/ScaleDefFormat.h"
#include "quillon/scale/ScaleRecordWriter.h"

#include <algorithm>
#include <array>
#include <ostream>
#include <string_view>

namespace quillon {

namespace {

namespace format = scaleDefFormat;
using scaleDef::SysVarNames;
using scaleDef::writeField;

constexpr std::size_t scaledBodyNameWidth = 25;
constexpr std::string_view poseIndent = "  ";
constexpr int poseIndentLevel = 1;

/// The default format of a stream for the length of a scope, whatever format its user gave it.
class DefaultFormat {
public:
    explicit DefaultFormat(std::ostream& output) : restored(output) {
        constexpr std::streamsize significantDigits = 6;
        output.flags(std::ios_base::skipws | std::ios_base::dec);
        output.precision(significantDigits);
        output.width(0);
        output.fill(' ');
    }

private:
    FormatGuard restored;
};

// --- Markers and their weights -------------------------------------------------------------------

void writeCounts(const LqScaleDefData& source, std::ostream& output) {
    output << format::realCountKey << ": ";
    printInt(output, source.realCount);
    output << '\n' << format::defaultRealWeightKey << ": ";
    printReal(output, source.defaultRealWeight);
    output << '\n';
}

void writeRealWeights(const LqScaleDefData& source, std::ostream& output) {
    output << format::realWeightOverridesKey << " {\n";
    for (const scaleDef::RealWeightOverride_t& record : source.realWeightOverrides) {
        output << "  ";
        printInt(output, record.markerId);
        output << ' ';
        printReal(output, record.weight);
        output << '\n';
    }
    output << "}\n";
}

void writeArtificialWeights(const LqScaleDefData& source, std::ostream& output) {
    output << format::artificialWeightOverridesKey << " {\n";
    for (const scaleDef::ArtificialWeightOverride_t& record : source.artificialWeightOverrides) {
        output << "  ";
        printInt(output, record.firstMarkerId);
        output << ' ';
        printInt(output, record.secondMarkerId);
        output << ' ';
        printReal(output, record.weight);
        output << '\n';
    }
    output << "}\n";
}

// --- Scaling variables ---------------------------------------------------------------------------

void writeScalingVariable(const scaleDef::ScaleVar& scaleVar, std::size_t nameWidth, std::ostream& output) {
    output << "  ";
    writeField(output, scaleVar.name.view(), nameWidth);
    output << ' ';
    LqScaleDefData::writeScaleFloat(output, scaleVar.lower, scaleDef::noLowerLimit);
    output << ' ';
    LqScaleDefData::writeScaleFloat(output, scaleVar.upper, scaleDef::noUpperLimit);
    const std::string_view description = scaleVar.description.view();
    if (!description.empty()) {
        output << " \"" << description << '"';
    }
    output << '\n';
}

void writeScalingVariables(const LqScaleDefData& source, std::ostream& output) {
    output << format::scalingVariablesKey << " {\n";
    std::size_t nameWidth = 0;
    for (const scaleDef::ScaleVar& scaleVar : source.scaleVars) {
        nameWidth = std::max(nameWidth, scaleVar.name.view().size());
    }
    if (source.scaleVars.count() != 0) {
        output << "  # variable name    lower limit (none)  upper limit (none)\n";
    }
    for (const scaleDef::ScaleVar& scaleVar : source.scaleVars) {
        writeScalingVariable(scaleVar, nameWidth, output);
    }
    output << "}\n";
}

// --- Poses and position constraints --------------------------------------------------------------

void writePositionConstraints(const LqScaleDefData& source,
                              const LmDArray<scaleDef::PositionConst_t>& records, int indentLevel,
                              std::ostream& output) {
    for (const scaleDef::PositionConst_t& record : records) {
        source.writePositionConstraint(output, record, indentLevel);
    }
}

void writePose(const LqScaleDefData& source, const scaleDef::Pose_t& pose, const SysVarNames& names,
               std::ostream& output) {
    output << format::poseKey << " {\n" << poseIndent << format::nameKey << ": " << pose.name.view() << '\n';
    if (pose.limitOverrides.count() != 0) {
        scaleDef::writeLimitAdjustments(output, pose.limitOverrides, names, poseIndent);
    }
    scaleDef::writeGuideOverrides(output, pose.sysVarGuideOverrides, names, poseIndent);
    if (pose.globalConstraints.count() != 0) {
        scaleDef::writeGlobalConstraints(output, pose.globalConstraints, poseIndent);
    }
    writePositionConstraints(source, pose.positionConstraints, poseIndentLevel, output);
    output << "}\n";
}

void writePoses(const LqScaleDefData& source, const SysVarNames& names, std::ostream& output) {
    for (const scaleDef::Pose_t* pose : source.poses) {
        if (pose != nullptr) {
            writePose(source, *pose, names, output);
        }
    }
}

// --- Scaled bodies -------------------------------------------------------------------------------

/// What stands behind the lines of the first body, to tell the reader of the file what they are.
struct BodyComments {
    std::string_view name;
    std::string_view firstAxis;
    std::string_view secondAxis;
    std::string_view firstMapping;
};

constexpr BodyComments firstBodyComments = {.name = " # body name",
                                            .firstAxis = "    # first axis",
                                            .secondAxis = "    # second axis",
                                            .firstMapping = "                 # scaling vars"};

void writeAxis(const LmVec3& axis, std::string_view comment, std::ostream& output) {
    output << "    ";
    scaleDef::writeVector(output, axis);
    output << comment << '\n';
}

/// The third axis follows from the other two.
void writeScaledBody(const LqScaleDefData& source, const scaleDef::BodyParams_t& body,
                     const BodyComments& comments, std::ostream& output) {
    output << "  ";
    writeField(output, body.bodyName.view(), scaledBodyNameWidth);
    output << comments.name << '\n';
    writeAxis(body.firstAxis, comments.firstAxis, output);
    writeAxis(body.secondAxis, comments.secondAxis, output);
    std::string_view comment = comments.firstMapping;
    for (const scaleDef::ScaleMapping& mapping : body.scale) {
        output << "    ";
        source.writeScaleMapping(output, mapping);
        output << comment << '\n';
        comment = "";
    }
}

void writeBodyScalings(const LqScaleDefData& source, std::ostream& output) {
    output << format::bodyScalingsKey << " {\n";
    BodyComments comments = firstBodyComments;
    for (const scaleDef::BodyParams_t& body : source.bodyParams) {
        writeScaledBody(source, body, comments, output);
        comments = {};
    }
    output << "}\n";
}

// --- Temporary markers ---------------------------------------------------------------------------

void writeTemp(const scaleDef::TempData_t& temp, std::string_view comment, std::ostream& output) {
    output << "  ";
    printInt(output, temp.id);
    output << ' ';
    for (const scaleDef::ScaleFloat& coordinate : temp.position) {
        LqScaleDefData::writeScaleFloat(output, coordinate, 0.0F);
        output << ' ';
    }
    const std::string_view relative = temp.relativeBody.view();
    const std::string_view attached = temp.attachedBody.view();
    if (relative != attached) {
        output << relative << format::bodySeparator;
    }
    output << attached << ' ';
    printReal(output, temp.weight);
    output << comment << '\n';
}

void writeTemps(const LqScaleDefData& source, std::ostream& output) {
    output << format::tempsKey << " {\n";
    std::string_view comment = "                # id  local  body  weight";
    for (const scaleDef::TempData_t& temp : source.temps) {
        writeTemp(temp, comment, output);
        comment = "";
    }
    output << "}\n";
}

} // namespace

// --- The whole file ------------------------------------------------------------------------------

bool LqScaleDefData::writeFile(const LmStr& path, const LqProblemDefData& problemDef) const {
    if (!checkFileWritable(path)) {
        return false;
    }
    LmOFStream output(path);
    if (!output.is_open()) {
        pushErrorf("Couldn't create \"%s\".", path.c_str());
        return false;
    }
    write(output, problemDef);
    if (errorStands()) {
        pushErrorf("Unable to write \"%s\".", path.c_str());
        return false;
    }
    return true;
}

void LqScaleDefData::write(std::ostream& output, const LqProblemDefData& problemDef) const {
    writeHeader(output);
    if (!errorStands()) {
        writeBody(output, problemDef);
    }
}

void LqScaleDefData::writeHeader(std::ostream& output) {
    const DefaultFormat restored(output);
    writeCheckedDataHeader(output, scaleDefFileId, scaleDefFileVersion);
}

void LqScaleDefData::writeBody(std::ostream& output, const LqProblemDefData& problemDef) const {
    const DefaultFormat restored(output);
    const SysVarNames names(problemDef);
    writeCounts(*this, output);
    writeRealWeights(*this, output);
    writeArtificialWeights(*this, output);
    scaleDef::writeLimitAdjustments(output, limitOverrides, names, "");
    scaleDef::writeGuideOverrides(output, sysVarGuideOverrides, names, "");
    writeScalingVariables(*this, output);
    writePoses(*this, names, output);
    writeBodyScalings(*this, output);
    writePositionConstraints(*this, positionConstraints, 0, output);
    scaleDef::writeGlobalConstraints(output, globalConstraints, "");
    writeTemps(*this, output);
}

} // namespace quillon
