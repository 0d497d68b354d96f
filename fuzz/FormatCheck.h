#pragma once

#include "fuzz/Require.h"
#include "tests/core/PiecewiseBuf.h"
#include "tests/support/StatusChain.h"

#include <algorithm>
#include <functional>
#include <istream>
#include <sstream>
#include <string>

namespace quillon::fuzz {

/// How one kind of file is read and written.
template <class Data>
struct FileFormat {
    std::function<bool(std::istream&, Data&)>
        read; ///< whether it was read whole; reports on the current status
    std::function<void(std::ostream&, const Data&)> write;
    std::function<bool(const Data&, const Data&)> same;
    std::function<bool(const Data&)> isRepresentable; ///< whether what is written comes back
    /// Whether the texts of what was read once and twice are the same.
    std::function<bool(const std::string&, const std::string&)> sameText = std::equal_to<>();
};

inline bool hasError(const test::StatusChain& chain) {
    return std::any_of(chain.begin(), chain.end(),
                       [](const test::StatusLine& line) { return line.kind == test::Kind::Error; });
}

template <class Data>
std::string textOf(const FileFormat<Data>& format, const Data& data) {
    std::ostringstream output;
    format.write(output, data);
    return output.str();
}

/// Holds the same file in pieces, so that numbers and names straddle their ends, against the whole one.
template <class Data>
void checkInPieces(const FileFormat<Data>& format, const std::string& text, const Data& whole,
                   const test::StatusChain& said, bool isRead) {
    test::PiecewiseBuf pieces;
    pieces.start(text, 1 + text.size() % 90);
    std::istream input(&pieces);
    Data data;
    require(format.read(input, data) == isRead, "a file in pieces is read as in one", text);
    require(test::takeChain() == said, "of a file in pieces the same is said as of one", text);
    if (isRead && format.isRepresentable(whole)) {
        require(textOf(format, data) == textOf(format, whole), "a file in pieces holds the same as in one",
                text);
    }
}

/// Reads what was read and written once again: it is the same, and what is written of it too.
template <class Data>
void checkRoundTrip(const FileFormat<Data>& format, const Data& data) {
    const std::string text = textOf(format, data);
    std::istringstream input(text);
    Data back;
    require(format.read(input, back), "what was written is read", text);
    require(!hasError(test::takeChain()), "what was written is read without an error", text);
    const std::string again = textOf(format, back);
    require(format.sameText(again, text), "what was read is written as it was",
            text + "\nand then\n" + again);
    std::istringstream secondInput(again);
    Data second;
    require(format.read(secondInput, second), "what was written twice is read", text);
    currentStatus().clear();
    require(format.same(second, back), "what was written and read comes back equal", text);
}

/// Reads a text, with all checks that hold for a file of any kind. Gives whether it was read whole.
template <class Data>
bool checkFormat(const FileFormat<Data>& format, const std::string& text, Data& data) {
    std::istringstream input(text);
    const bool isRead = format.read(input, data);
    const test::StatusChain said = test::takeChain();
    require(isRead != hasError(said), "a file that is not read whole leaves an error", text);
    checkInPieces(format, text, data, said, isRead);
    if (isRead && format.isRepresentable(data)) {
        checkRoundTrip(format, data);
    }
    return isRead;
}

} // namespace quillon::fuzz
