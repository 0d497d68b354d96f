#pragma once

#include <cstddef>
#include <cstdint>
#include <istream>
#include <string>
#include <string_view>

namespace quillon {

// All extraction of numbers, words and lines from a stream goes through these functions. Each gives exactly
// what the standard operation named with it gives in the classic locale with default flags: the value, the
// stream's state and the characters left. Streams of another locale or with other flags, and the rare token
// that touches the end of the stream's buffer, take the standard operation itself.
// Every function returns whether the stream has not failed.

/// `input >> value`.
bool extractInt(std::istream& input, std::int32_t& value);
/// `input >> value`.
bool extractDouble(std::istream& input, double& value);
/// Extracts a double and narrows it to 32 bits, as all reals of the data files are; writes `value` only when
/// the stream has not failed. A value beyond the range of a float becomes an infinity.
bool extractFloat(std::istream& input, float& value);
/// `input >> std::ws`.
bool skipWhiteSpace(std::istream& input);
/// `input.peek()`: the next character, which stays, or the stream's end mark.
int peekChar(std::istream& input);
/// `input.get()` as long as that is white space, and then `input.peek()`.
int peekBehindSpaces(std::istream& input);
/// `input.get()`: the next character or the stream's end mark.
int takeChar(std::istream& input);
/// `input.get(c)`.
bool extractChar(std::istream& input, char& c);
/// `input.ignore(count)`: skips exactly `count` characters, whatever they are.
bool skipChars(std::istream& input, int count);
/// `input.ignore(atMost, '\n')`: skips characters up to and including a newline, at most `atMost` of them.
bool skipRestOfLine(std::istream& input, int atMost = 80);
/// `input.getline` with a buffer of `bufferSize` characters: takes a line and its newline into `line`; a line
/// of `bufferSize` characters or more is a failure of the stream.
bool extractLine(std::istream& input, std::string& line, int bufferSize);
/// `input.get` with a buffer of `bufferSize` characters: takes at most `bufferSize` - 1 characters of the
/// line and leaves the newline; an empty line is a failure of the stream.
bool extractPartOfLine(std::istream& input, std::string& line, int bufferSize);

/// The characters that wait in the stream's buffer, and stay there until the next operation; none where the
/// stream has to be asked first.
std::string_view waitingChars(std::istream& input);
/// Takes `count` of the waiting characters.
void takeWaiting(std::istream& input, std::size_t count);
/// `input >> word`, if white space, word and the character behind it wait; else nothing is taken, and the
/// result is empty. The word stays until the next operation.
std::string_view takeWaitingWord(std::istream& input);

/// A 64-bit real narrowed to the 32 bits that it is stored in.
float narrowed(double value);

/// The characters of a stream's buffer that wait to be read. Reaches the protected pointers of the buffer, so
/// that a reader can look at many characters at once instead of asking for each.
class ReadArea {
public:
    explicit ReadArea(std::streambuf& buffer) : buffer(buffer) {} ///< of the buffer of a stream

    const char* begin() const { return (buffer.*(&Pointers::gptr))(); }
    const char* end() const { return (buffer.*(&Pointers::egptr))(); }
    /// Takes `count` of the waiting characters.
    void take(std::size_t count) { (buffer.*(&Pointers::gbump))(static_cast<int>(count)); }

private:
    /// Names the protected read pointers of a stream buffer. Never constructed.
    struct Pointers : std::streambuf {
        using std::streambuf::egptr;
        using std::streambuf::gbump;
        using std::streambuf::gptr;
    };

    std::streambuf& buffer;
};

} // namespace quillon
