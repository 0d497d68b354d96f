// marker_places PROBLEM_DEFINITION MODEL: prints where each real marker is when every variable is 0.

#include "quillon/core/LmStatus.h"
#include "quillon/geometry/Mat4.h"
#include "quillon/model/BodyChain.h"
#include "quillon/model/LqBodyDefData.h"
#include "quillon/problem/LqProblemDefData.h"

#include <iostream>

using namespace quillon;

static LmVec3 globalPlace(const LqProblemDefData& problem, const LqBodyDefData& model,
                          const LqPDDRealMarker& marker) {
    LmVec3 place = model.findMarker(marker.id)->position;
    if (marker.bodyName != referenceSystemName) {
        LmMat4 toGlobal = identityMat4;
        chainTransform(toGlobal, problem, model, marker.bodyName, referenceSystemName);
        transformPoint(place, place, toGlobal);
    }
    return place;
}

int main(int argc, char** argv) {
    LqProblemDefData problem;
    LqBodyDefData model;
    if (argc == 3 && problem.readProblemDefFile(argv[1], true) &&
        model.readModelFile(argv[2], problem, true)) {
        for (const LqPDDRealMarker* marker : problem.realMarkers) {
            if (model.findMarker(marker->id) == nullptr) {
                pushErrorf("Marker %d is not in the model.", marker->id);
                break;
            }
            const LmVec3 place = globalPlace(problem, model, *marker);
            std::cout << marker->id << ": " << place[0] << " " << place[1] << " " << place[2] << "\n";
        }
    }
    return currentStatus().printStatusToError();
}
