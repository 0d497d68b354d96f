#pragma once

#include "quillon/model/LqBodyDefData.h"

#include <array>
#include <cstddef>

/// The layout of the model file, which its reader and its writer share.
namespace quillon::modelFormat {

// Behind the counts; readers skip the rest of the line.
inline constexpr const char* cameraCountComment = "    ; # of cameras";
inline constexpr const char* bodyCountComment = "    ; # of bodies";

/// The line behind a real marker for each camera. Its numbers mean nothing here, and readers skip it.
inline constexpr const char* cameraLine = "       1         30      15.0";

/// The elements of a base matrix in the order of the file: three to a row, the columns of the rotation first
/// and the translation last. The fourth column of the matrix is always 0, 0, 0, 1 and in no file.
inline constexpr std::array<std::array<std::size_t, 3>, 4> transformRows = {
    {{0, 4, 8}, {1, 5, 9}, {2, 6, 10}, {12, 13, 14}}};
/// Of the numbers of a base matrix, a length and a direction.
inline constexpr int transformDecimals = 6;

/// One of the marker sections: a count line and then a row for each marker.
struct MarkerSection {
    LmDArray<LqBDMarker*> LqBodyDefData::*markers; ///< the array of the model
    int recordsPerCount;                           ///< artificial markers are counted in pairs
    bool hasCameraLines;                           ///< each row is followed by a line for each camera
    const char* countComment;                      ///< what the writer puts behind the count

    // What the reader reports.
    const char* countUnreadable;    ///< the count is missing
    const char* idUnreadable;       ///< a row is missing
    const char* positionUnreadable; ///< a row has too few numbers
};

/// The marker sections in file order.
inline constexpr std::array<MarkerSection, 4> markerSections = {{
    {&LqBodyDefData::realMarkers, 1, true, "    ; # of real points", //
     "Unable to read number of real points.", "Unable to read real marker number.",
     "Unable to read real position."},
    {&LqBodyDefData::fixMarkers, 1, false, "    ; # of fixed points ", // with its blank at the end
     "Unable to read number of fixed markers.", "Unable to read fixed marker number.",
     "Unable to read fixed marker position."},
    {&LqBodyDefData::doubleMarkers, 1, false, "    ; # of double points",
     "Unable to read number of double markers.", "Unable to read double marker number.",
     "Unable to read double marker position."},
    {&LqBodyDefData::artificialMarkers, 2, false, "    ; # of artificial pairs",
     "Unable to read number of artificial markers.", "Unable to read artificial marker number.",
     "Unable to read artificial marker position."},
}};

} // namespace quillon::modelFormat
