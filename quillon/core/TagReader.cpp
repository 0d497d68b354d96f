#include "quillon/core/TagReader.h"

#include "quillon/core/CharClass.h"
#include "quillon/core/StreamExtraction.h"
#include "quillon/core/TokenReader.h"

#include <algorithm>
#include <cstring>
#include <string>

namespace quillon {

namespace {

/// The characters of a block: those that wait in a stream's buffer, refilled until the end of the input, or
/// those of a text in memory.
class BlockSource {
public:
    explicit BlockSource(std::streambuf& buffer)
        : buffer(&buffer), at(ReadArea(buffer).begin()), end(ReadArea(buffer).end()) {}
    BlockSource(const char* begin, const char* end) : at(begin), end(end) {}

    /// Whether a character is left; `peek` is then the next one.
    bool hasNext() { return at != end || refill(); }
    char peek() const { return *at; }
    void take() { ++at; }
    /// The position in the text in memory, or in the stream's buffer.
    const char* position() const { return at; }

    /// Takes the characters up to the first of `stops`, or up to the end of what waits, and returns them.
    std::string_view takeUntil(std::string_view stops) {
        const std::string_view waiting(at, static_cast<std::size_t>(end - at));
        const std::string_view taken = waiting.substr(0, waiting.find_first_of(stops));
        at += taken.size();
        return taken;
    }

    /// Tells the stream's buffer what has been taken.
    void commit() {
        if (buffer != nullptr) {
            ReadArea area(*buffer);
            area.take(static_cast<std::size_t>(at - area.begin()));
        }
    }

private:
    bool refill() {
        if (buffer == nullptr) {
            return false;
        }
        commit();
        const bool more = buffer->sgetc() != std::char_traits<char>::eof();
        const ReadArea area(*buffer);
        at = area.begin();
        end = area.end();
        return more;
    }

    std::streambuf* buffer = nullptr;
    const char* at;
    const char* end;
};

/// Walks over the text of a block, from behind the line of its opening brace to its closing brace.
class BlockScanner {
public:
    /// `stored`, which may be null, receives the block's text.
    BlockScanner(BlockSource& source, std::string* stored, const LmStr& tag, LmStatus& status)
        : source(source), stored(stored), tag(tag), status(status) {}

    /// Walks to the end. Returns whether the block is well-formed; what is wrong is reported.
    bool scan() {
        while (depth > 0) {
            skipBlanks();
            if (!source.hasNext()) {
                return reportEndOfFile();
            }
            if (source.peek() == '#') {
                dropRestOfLine();
            } else if (source.peek() == '}' && !scanClosingBrace()) {
                return false;
            }
            if (depth > 0) {
                scanRestOfLine();
            }
        }
        return true;
    }

    /// Where the brace stands that closed the block.
    const char* closingBrace() const { return closing; }

private:
    void store(std::string_view text) {
        if (stored != nullptr) {
            stored->append(text);
        }
    }

    void storeNext() {
        const char c = source.peek();
        store({&c, 1});
        source.take();
    }

    bool nextIs(char c) { return source.hasNext() && source.peek() == c; }
    bool nextIsBlank() { return nextIs(' ') || nextIs('\t'); }
    bool nextIsLineEnd() { return nextIs('\n') || nextIs('\r'); }

    void skipBlanks() {
        while (nextIsBlank()) {
            source.take();
        }
    }

    void dropRestOfLine() {
        while (source.hasNext() && source.peek() != '\n') {
            source.takeUntil("\n");
        }
    }

    /// A closing brace begins the line; only a comment may follow it.
    bool scanClosingBrace() {
        closing = source.position();
        source.take();
        --depth;
        skipBlanks();
        if (nextIs('#')) {
            dropRestOfLine();
        }
        if (source.hasNext() && !nextIsLineEnd()) {
            status.pushErrorf("Invalid character ('%c') trailing '%c' for '%s'.", source.peek(), '}',
                              tag.c_str());
            return false;
        }
        if (depth > 0) {
            store("}");
        } else {
            takeLineEnd();
        }
        return true;
    }

    void takeLineEnd() {
        if (nextIs('\r')) {
            source.take();
        }
        if (nextIs('\n')) {
            source.take();
        }
    }

    void scanRestOfLine() {
        while (source.hasNext()) {
            store(source.takeUntil(std::string_view("{\\\n\r\0", 5)));
            if (!source.hasNext()) {
                return;
            }
            switch (source.peek()) {
            case '{':
                scanOpeningBrace();
                break;
            case '\\':
                storeNext();
                storeContinuedLines();
                break;
            case '\n':
                storeNext();
                return;
            case '\r':
                source.take();
                return;
            case '\0':
                // A line's text ends at a NUL, as everywhere; the block goes on with the next line.
                dropRestOfLine();
                break;
            default:
                // The waiting characters were used up, and more have come.
                break;
            }
        }
    }

    /// A brace opens a nested block only as the last thing on its line but for a comment.
    void scanOpeningBrace() {
        storeNext();
        while (nextIsBlank()) {
            storeNext();
        }
        if (nextIs('#')) {
            storeToLineEnd();
        }
        if (nextIsLineEnd()) {
            ++depth;
        }
    }

    /// Stores the rest of the physical line and returns its last character.
    char storeToLineEnd() {
        char last = '\0';
        while (source.hasNext() && !nextIsLineEnd()) {
            const std::string_view taken = source.takeUntil(std::string_view("\n\r\0", 3));
            if (taken.empty()) {
                dropRestOfLine();
                break;
            }
            store(taken);
            last = taken.back();
        }
        return last;
    }

    /// Behind a backslash: when the line ends there, its end and the next line are stored whole, and so is
    /// each line that follows one that ends in a backslash.
    void storeContinuedLines() {
        for (bool continued = nextIsLineEnd(); continued;) {
            storeLineEnd();
            continued = storeToLineEnd() == '\\' && nextIsLineEnd();
        }
    }

    /// Stores the end of a line; CR LF is one end, and LF in the text.
    void storeLineEnd() {
        if (nextIs('\r')) {
            source.take();
            if (!nextIs('\n')) {
                store("\r");
                return;
            }
        }
        storeNext();
    }

    bool reportEndOfFile() {
        status.pushError(LmStr("Hit end of file without reading '}' for tag ") + tag);
        return false;
    }

    BlockSource& source;
    std::string* stored;
    const LmStr& tag;
    LmStatus& status;
    int depth = 1;
    const char* closing = nullptr;
};

// --- Items
// --------------------------------------------------------------------------------------------------

LmStr trimmed(LmStr text) {
    text.trim();
    return text;
}

/// Takes "TAG: value"; a value that ends in a backslash goes on in the next line.
void readSimpleItem(std::istream& input, const LmStr& line, int colon, LmStr& tag, LmStr& value) {
    tag = trimmed(line.left(colon));
    value = line.skip(colon + 1);
    while (value.length() > 0 && value.c_str()[value.length() - 1] == '\\') {
        value.setChar(value.length() - 1, '\n');
        LmStr next;
        next.readLine(input);
        if (!next.isNull()) {
            value += next;
        }
    }
    value.trim();
}

/// Takes "TAG {" and the lines up to the brace that closes the block.
bool readBlockItem(std::istream& input, const LmStr& line, int brace, LmStr& tag, LmStr& value,
                   LmStatus& status) {
    tag = trimmed(line.left(brace));
    LmStr trailing = trimmed(line.skip(brace + 1));
    skipSpaceAndComments(trailing, true, false);
    if (trailing.length() > 0) {
        status.pushErrorf("Invalid characters trailing '{' for '%s'.", tag.c_str());
        return false;
    }
    std::string stored;
    BlockSource source(*input.rdbuf());
    BlockScanner scanner(source, &stored, tag, status);
    const bool complete = scanner.scan();
    source.commit();
    value = LmStr(std::string_view(stored));
    return complete;
}

} // namespace

bool readTag(std::istream& input, LmStr& tag, LmStr& value, int* isSimple, LmStatus& status) {
    LmStr line;
    do {
        line.readLine(input);
        if (line.isNull()) {
            return true;
        }
        line.trimLeft();
        if (isSimple != nullptr) {
            *isSimple = 0;
        }
    } while (line.length() == 0 || *line.c_str() == '#');

    int position = 0;
    if (line.find(':', &position)) {
        readSimpleItem(input, line, position, tag, value);
        if (isSimple != nullptr) {
            *isSimple = 1;
        }
        return true;
    }
    if (line.find('{', &position)) {
        return readBlockItem(input, line, position, tag, value, status);
    }
    // The line itself is taken as a format, so a '%' in it is seen as a conversion; users know these texts.
    status.pushError(formatWithoutArguments((LmStr("No ':' or '{' following tag '") + line + "'.").c_str()));
    return false;
}

BlockRange findBlockEnd(const char* text, const LmStr& tag, LmStatus& status) {
    BlockSource source(text, text + std::strlen(text));
    BlockScanner scanner(source, nullptr, tag, status);
    if (!scanner.scan()) {
        return {text, text};
    }
    return {text, scanner.closingBrace()};
}

bool looksLikeOption(const LmStr& text) {
    return *text.c_str() == '-' && !text.toFloat(nullptr);
}

// --- Loops over items
// ---------------------------------------------------------------------------------------

TaggedItems::TaggedItems(std::istream& input, LmStatus& status) : input(input), status(status) {}

TaggedItems::TaggedItems(const LmStr& blockText, LmStatus& status)
    : blockStream(std::in_place, blockText.c_str(), static_cast<std::size_t>(blockText.length())),
      input(*blockStream), status(status) {}

bool TaggedItems::next() {
    tag_.reset();
    value_.reset();
    failed_ = !readTag(input, tag_, value_, &simple, status);
    return !failed_ && !tag_.isNull();
}

} // namespace quillon
