#include "quillon/core/TagReader.h"

#include "quillon/core/CharClass.h"
#include "quillon/core/LmSStream.h"
#include "quillon/core/StreamExtraction.h"
#include "quillon/core/WaitingLine.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <istream>
#include <new>
#include <optional>
#include <string>

namespace quillon {

namespace {

/// A mark for each character.
using CharSet = std::array<bool, 256>;

constexpr CharSet charSet(std::string_view characters) {
    CharSet set{};
    for (const char c : characters) {
        set[static_cast<unsigned char>(c)] = true;
    }
    return set;
}

constexpr CharSet blanks = charSet(" \t");
constexpr CharSet newline = charSet("\n");
constexpr CharSet lineEnds = charSet({"\n\r\0", 3});
constexpr CharSet specialInLine = charSet({"{\\\n\r\0", 5});

/// The characters of a block: those that wait in a stream's buffer, refilled until the end of the input, or
/// those of a text in memory.
class BlockSource {
public:
    explicit BlockSource(std::istream& stream)
        : stream(&stream), at(ReadArea(*stream.rdbuf()).begin()), end(ReadArea(*stream.rdbuf()).end()) {}
    BlockSource(const char* begin, const char* end) : at(begin), end(end) {}

    /// Whether a character is left; `peek` is then the next one.
    bool hasNext() { return at != end || refill(); }
    char peek() const { return *at; }
    void take() { ++at; }
    /// The position in the text in memory, or in the stream's buffer.
    const char* position() const { return at; }

    /// Takes the characters up to the first that is marked in `stops`, or up to the end of what waits, and
    /// returns them.
    std::string_view takeUntil(const CharSet& stops) {
        const char* const begin = at;
        while (at != end && !stops[static_cast<unsigned char>(*at)]) {
            ++at;
        }
        return {begin, static_cast<std::size_t>(at - begin)};
    }

    /// Takes what `takeUntil` takes, and the newline where it ends at one.
    std::string_view takeUntilOrLineEnd(const CharSet& stops) {
        const std::string_view taken = takeUntil(stops);
        if (at == end || *at != '\n') {
            return taken;
        }
        ++at;
        return {taken.data(), taken.size() + 1};
    }

    /// Takes all characters that are marked in `skipped`.
    void skip(const CharSet& skipped) {
        while (hasNext() && skipped[static_cast<unsigned char>(*at)]) {
            ++at;
        }
    }

    /// Tells the stream's buffer what has been taken.
    void commit() {
        if (stream != nullptr) {
            ReadArea area(*stream->rdbuf());
            area.take(static_cast<std::size_t>(at - area.begin()));
        }
    }

private:
    bool refill() {
        if (stream == nullptr) {
            return false;
        }
        commit();
        const bool more = hasMore();
        const ReadArea area(*stream->rdbuf());
        at = area.begin();
        end = area.end();
        return more && at != end;
    }

    /// Asks the buffer. A device that fails ends the input, as it does for every other extraction.
    bool hasMore() {
        try {
            return stream->rdbuf()->sgetc() != std::char_traits<char>::eof();
        } catch (...) {
            stream->setstate(std::ios_base::badbit);
            return false;
        }
    }

    std::istream* stream = nullptr;
    const char* at;
    const char* end;
};

/// Walks over the text of a block, from behind the line of its opening brace to its closing brace.
class BlockScanner {
public:
    /// `stored`, which may be null, receives the block's text.
    BlockScanner(BlockSource& source, std::string* stored, std::string_view tag, LmStatus& status)
        : source(source), stored(stored), tag(tag), status(status) {}

    /// Walks to the end. Returns whether the block is well-formed; what is wrong is reported.
    bool scan() {
        while (depth > 0) {
            source.skip(blanks);
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

    void dropRestOfLine() {
        while (source.hasNext() && source.peek() != '\n') {
            source.takeUntil(newline);
        }
    }

    /// A closing brace begins the line; only a comment may follow it.
    bool scanClosingBrace() {
        closing = source.position();
        source.take();
        --depth;
        source.skip(blanks);
        if (nextIs('#')) {
            dropRestOfLine();
        }
        if (source.hasNext() && !nextIsLineEnd()) {
            status.pushErrorf("Invalid character ('%c') trailing '%c' for '%s'.", source.peek(), '}',
                              std::string(tag).c_str());
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
            const std::string_view taken = source.takeUntilOrLineEnd(specialInLine);
            store(taken);
            if (taken.ends_with('\n') || !source.hasNext()) {
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
            const std::string_view taken = source.takeUntil(lineEnds);
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
        status.pushError(LmStr("Hit end of file without reading '}' for tag ") + LmStr(tag));
        return false;
    }

    BlockSource& source;
    std::string* stored;
    std::string_view tag;
    LmStatus& status;
    int depth = 1;
    const char* closing = nullptr;
};

// --- Items ---------------------------------------------------------------------------------------

std::string_view trimmedLeft(std::string_view text) {
    while (!text.empty() && isSpace(text.front())) {
        text.remove_prefix(1);
    }
    return text;
}

std::string_view trimmed(std::string_view text) {
    text = trimmedLeft(text);
    while (!text.empty() && isSpace(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

/// Where the items of a stream, or of a text in memory, are taken from.
class ItemInput {
public:
    explicit ItemInput(std::istream& stream) : stream(&stream) {}
    explicit ItemInput(std::string_view text) : rest(text) {}

    /// Takes a line as `LmStr::readLine` does; false at the end of the input. The text of the line stays
    /// until the next call.
    bool takeLine(std::string_view& line) {
        if (const std::optional<WaitingLine> found = findWaitingLine(waiting())) {
            line = found->text;
            take(found->taken);
            lineStays_ = stream == nullptr;
            return true;
        }
        lineStays_ = false;
        if (stream != nullptr) {
            longLine.readLine(*stream);
        } else if (rest.empty()) {
            return false;
        } else {
            LmISStream restStream(rest.data(), rest.size());
            longLine.readLine(restStream);
            take(static_cast<std::size_t>(ReadArea(*restStream.rdbuf()).begin() - rest.data()));
        }
        line = longLine.view();
        return !longLine.isNull();
    }

    bool lineStays() const { return lineStays_; }

    /// Where a block's text begins.
    BlockSource blockSource() const {
        return stream != nullptr ? BlockSource(*stream) : BlockSource(rest.data(), rest.data() + rest.size());
    }

    /// Goes on behind what was taken of a block.
    void goOnBehind(BlockSource& source) {
        source.commit();
        if (stream == nullptr) {
            take(static_cast<std::size_t>(source.position() - rest.data()));
        }
    }

    /// What is left of a text in memory.
    std::string_view left() const { return rest; }

private:
    /// The characters that can be looked at; none of a stream that has to be asked first.
    std::string_view waiting() const { return stream == nullptr ? rest : waitingChars(*stream); }

    void take(std::size_t count) {
        if (stream != nullptr) {
            takeWaiting(*stream, count);
        } else {
            rest.remove_prefix(count);
        }
    }

    std::istream* stream = nullptr;
    std::string_view rest;
    LmStr longLine;
    bool lineStays_ = false;
};

/// Takes the value of "TAG: value", which goes on in the next line as long as it ends in a backslash.
void readSimpleValue(ItemInput& input, std::string_view firstLine, TaggedItem& item) {
    item.isSimple = true;
    if (input.lineStays() && !firstLine.ends_with('\\')) {
        item.value = trimmed(firstLine);
        return;
    }
    std::string& value = item.gathered;
    value = firstLine;
    while (value.ends_with('\\')) {
        value.back() = '\n';
        std::string_view line;
        if (input.takeLine(line)) {
            value += line;
        }
    }
    item.value = trimmed(value);
}

/// Scans a block whose text is gathered, for which there may not be enough memory.
bool scanGathering(BlockScanner& scanner, LmStatus& status) {
    try {
        return scanner.scan();
    } catch (const std::bad_alloc&) {
        status.pushErrorf("Insufficient memory.");
        return false;
    }
}

/// Takes the lines of "TAG {" up to the brace that closes the block. `trailing` is the text behind the brace.
bool readBlockValue(ItemInput& input, std::string_view trailing, TaggedItem& item, LmStatus& status) {
    trailing = trimmed(trailing);
    if (!trailing.empty() && trailing.front() != '#') {
        status.pushErrorf("Invalid characters trailing '{' for '%s'.", item.tag.c_str());
        return false;
    }
    item.gathered.clear();
    BlockSource source = input.blockSource();
    BlockScanner scanner(source, &item.gathered, item.tag, status);
    const bool complete = scanGathering(scanner, status);
    input.goOnBehind(source);
    item.value = item.gathered;
    return complete;
}

/// Takes one item. False when an error has been reported.
bool readItem(ItemInput& input, TaggedItem& item, LmStatus& status) {
    item.found = false;
    item.tag.clear();
    std::string_view line;
    do {
        if (!input.takeLine(line)) {
            return true;
        }
        line = trimmedLeft(line);
        item.isSimple = false;
    } while (line.empty() || line.front() == '#');

    item.found = true;
    if (const std::size_t colon = line.find(':'); colon != std::string_view::npos) {
        item.tag = trimmed(line.substr(0, colon));
        readSimpleValue(input, line.substr(colon + 1), item);
        return true;
    }
    if (const std::size_t brace = line.find('{'); brace != std::string_view::npos) {
        item.tag = trimmed(line.substr(0, brace));
        return readBlockValue(input, line.substr(brace + 1), item, status);
    }
    // The line itself is taken as a format, so a '%' in it is seen as a conversion; users know these texts.
    const LmStr message = LmStr("No ':' or '{' following tag '") + LmStr(line) + "'.";
    status.pushError(formatWithoutArguments(message.c_str()));
    return false;
}

} // namespace

bool readTag(std::istream& input, LmStr& tag, LmStr& value, int* isSimple, LmStatus& status) {
    ItemInput items(input);
    TaggedItem item;
    item.isSimple = isSimple != nullptr && *isSimple != 0;
    const bool good = readItem(items, item, status);
    if (isSimple != nullptr) {
        *isSimple = item.isSimple ? 1 : 0;
    }
    if (good && item.found) {
        tag = LmStr(std::string_view(item.tag));
        value = LmStr(item.value);
    }
    return good;
}

BlockRange findBlockEnd(const char* text, const LmStr& tag, LmStatus& status) {
    BlockSource source(text, text + std::strlen(text));
    BlockScanner scanner(source, nullptr, tag.view(), status);
    if (!scanner.scan()) {
        return {text, text};
    }
    return {text, scanner.closingBrace()};
}

bool looksLikeOption(const LmStr& text) {
    return *text.c_str() == '-' && !text.toFloat(nullptr);
}

// --- Loops over items ----------------------------------------------------------------------------

TaggedItems::TaggedItems(std::istream& input, LmStatus& status) : input(&input), status(status) {}

TaggedItems::TaggedItems(std::string_view blockText, LmStatus& status) : rest(blockText), status(status) {}

TaggedItems::TaggedItems(const LmStr& blockText, LmStatus& status) : TaggedItems(blockText.view(), status) {}

bool TaggedItems::next() {
    value_.reset();
    ItemInput items = input != nullptr ? ItemInput(*input) : ItemInput(rest);
    failed_ = !readItem(items, item, status);
    rest = items.left();
    if (!failed_ && !item.found && input != nullptr && input->bad()) {
        // The text behind which a device failed must not pass for a whole one.
        status.pushError("Error reading file.");
        failed_ = true;
    }
    return !failed_ && item.found;
}

LmStr& TaggedItems::value() {
    if (value_.isNull()) {
        value_ = LmStr(item.value);
    }
    return value_;
}

bool TaggedItems::tagIs(std::string_view keyword) const {
    return std::ranges::equal(item.tag, keyword, {}, upperOf, upperOf);
}

} // namespace quillon
