#include "quillon/core/CharClass.h"
#include "quillon/core/LmStr.h"
#include "quillon/core/StreamExtraction.h"

#include <algorithm>
#include <cstring>
#include <istream>
#include <memory>
#include <string>

namespace quillon {

namespace {

constexpr int eof = std::char_traits<char>::eof();

/// Takes the characters up to white space, which stays, or to the end of the input.
std::string takeWord(std::istream& input) {
    std::streambuf& buffer = *input.rdbuf();
    std::string word;
    for (int c = buffer.sgetc(); c != eof && !isSpace(static_cast<char>(c)); c = buffer.snextc()) {
        word += static_cast<char>(c);
    }
    return word;
}

} // namespace

void LmStr::readWord(std::istream& input) {
    const std::istream::sentry leadingSpaceSkipped(input);
    if (!leadingSpaceSkipped || !input.good()) {
        return;
    }
    ReadArea area(*input.rdbuf());
    const char* const end = std::find_if(area.begin(), area.end(), isSpace);
    const auto count = static_cast<std::size_t>(end - area.begin());
    if (end != area.end()) {
        *this = LmStr(std::string_view(area.begin(), count));
        area.take(count);
        return;
    }
    *this = LmStr(std::string_view(takeWord(input)));
}

std::istream& operator>>(std::istream& input, LmStr& text) {
    text.readWord(input);
    return input;
}

namespace {

constexpr int lineChunkSize = 256;

/// The whole of a line that waits in the stream's buffer and fits into one chunk, or false.
bool takeWaitingLine(std::istream& input, LmStr& line) {
    if (!input.good() || input.tie() != nullptr) {
        return false;
    }
    ReadArea area(*input.rdbuf());
    const auto waiting = static_cast<std::size_t>(area.end() - area.begin());
    const std::size_t searched = std::min(waiting, std::size_t{lineChunkSize});
    const void* const newline = searched == 0 ? nullptr : std::memchr(area.begin(), '\n', searched);
    if (newline == nullptr) {
        return false;
    }
    const auto length = static_cast<std::size_t>(static_cast<const char*>(newline) - area.begin());
    const bool endsInCr = length > 0 && area.begin()[length - 1] == '\r';
    line = LmStr(std::string_view(area.begin(), endsInCr ? length - 1 : length));
    area.take(length + 1);
    return true;
}

/// Takes the line end that follows a chunk; false when the line goes on.
bool takeLineEnd(std::istream& input) {
    const int c = input.peek();
    if (c == '\n' || c == '\r') {
        input.get();
        return true;
    }
    if (c == eof) {
        input.clear();
        return true;
    }
    return false;
}

} // namespace

void LmStr::readLine(std::istream& input) {
    if (takeWaitingLine(input, *this)) {
        return;
    }
    std::string line;
    do {
        char chunk[lineChunkSize];
        input.get(chunk, lineChunkSize);
        auto count = static_cast<std::size_t>(input.gcount());
        if (input.eof() && count == 0 && line.empty()) {
            reset();
            return;
        }
        if (input.fail()) {
            input.clear();
        }
        if (count > 0 && chunk[count - 1] == '\r') {
            --count;
        }
        line.append(chunk, count);
    } while (!takeLineEnd(input));
    *this = LmStr(std::string_view(line));
}

void LmStr::readUntil(std::istream& input, int max, char delimiter) {
    const auto block = std::make_unique<char[]>(static_cast<std::size_t>(max) + 1);
    input.get(block.get(), max + 1, delimiter);
    *this = LmStr(std::string_view(block.get(), static_cast<std::size_t>(input.gcount())));
}

} // namespace quillon
