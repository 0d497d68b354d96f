#pragma once

#include "quillon/core/LmArray.h"
#include "quillon/core/LmStr.h"

#include <iosfwd>

namespace quillon {

/// What was measured on one subject: element k holds measured constant number k + 1.
///
/// Scale definitions refer to the constants by number only, so that one definition serves many subjects. The
/// file holds, behind its header, the count and that many reals, separated by white space; comments begin
/// with '#'. Failures are reported on the current status. There is no writer: the files come from elsewhere.
class LqMeasuredData : public LmDArray<float> {
public:
    using LmDArray<float>::LmDArray;

    /// Reads the two header lines, and answers whether they are those of a measured data file.
    static bool readHeader(std::istream& input);
    /// Reads header, count and constants. After a failure in front of the constants the array is as before;
    /// later, it has its new length, and the elements that were not reached keep their value or are 0.
    void read(std::istream& input);
    /// `read` from the file at a path, with the path in an error on top of those of reading.
    void readFile(const LmStr& path);
    /// Whether the file can be opened and has a good header.
    static bool isMeasuredFile(const LmStr& path);

private:
    void resizeKeeping(int newCount);
};

} // namespace quillon
