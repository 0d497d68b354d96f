// The targets below the files: tagged items, strings, and the texts in them.

#include "fuzz/FuzzTargets.h"
#include "fuzz/InputParts.h"
#include "fuzz/Require.h"
#include "quillon/core/LmSStream.h"
#include "quillon/core/TagReader.h"
#include "quillon/files/Colour.h"
#include "quillon/files/VariableExpansion.h"
#include "tests/core/PiecewiseBuf.h"
#include "tests/core/StrProgram.h"
#include "tests/core/TagReading.h"
#include "tests/files/MapEnv.h"

#include <algorithm>
#include <cctype>

namespace quillon::fuzz {

namespace {

/// The text up to its first NUL: strings hold none.
std::string upToNul(std::string_view input) {
    return std::string(input.substr(0, input.find('\0')));
}

// --- Tagged items --------------------------------------------------------------------------------

/// Takes the items of a text, and of the blocks in it, in each way that there is.
void checkItems(const std::string& text, int depth) {
    constexpr int deepest = 30;
    LmISStream memory(text.c_str(), text.size());
    test::PiecewiseBuf buf;
    buf.start(text, 1 + text.size() % 90);
    std::istream pieces(&buf);
    LmStatus status;
    TaggedItems items(text, status);
    for (;;) {
        const test::TagReading one = test::readOne(memory);
        require(test::readOne(pieces) == one, "a text in pieces holds the same items", text);
        require(test::takeOne(items, status) == one, "a text gives the same items without a stream", text);
        if (test::isLast(one)) {
            return;
        }
        if (!one.simple && depth < deepest) {
            checkItems(*one.value, depth + 1);
        }
    }
}

/// Holds the reading of a block against the finding of its end. The text begins behind the opening brace.
void checkBlock(const std::string& text) {
    const std::string whole = "TAG {\n" + text;
    LmISStream input(whole.c_str());
    const test::TagReading block = test::readOne(input);
    LmStatus status;
    const BlockRange range = findBlockEnd(text.c_str(), "TAG", status);
    require(test::takeChain(status) == block.chain, "finding a block says the same as reading it", text);
    require(range.begin == text.c_str(), "a block is found where it begins", text);
    if (block.result) {
        require(*range.end == '}', "a block ends at its brace", text);
        require(static_cast<std::size_t>(range.end - range.begin) >= block.value->size(),
                "the value of a block lies in its text", text);
    } else {
        require(range.end == range.begin, "a block without an end is empty", text);
    }
}

} // namespace

void checkTags(std::string_view input) {
    const std::string text = upToNul(input);
    checkItems(text, 0);
    checkBlock(text);
}

// --- Strings -------------------------------------------------------------------------------------

void checkStrings(std::string_view input) {
    constexpr int mostSteps = 1000;
    // A string that differs from its model then ends the process.
    GTEST_FLAG_SET(throw_on_failure, true);
    test::StrProgram program([&input](std::size_t limit) {
        std::size_t drawn = 0;
        if (!input.empty()) {
            drawn = static_cast<unsigned char>(input.front());
            input.remove_prefix(1);
        }
        return drawn % limit;
    });
    for (int step = 0; step < mostSteps && !input.empty(); ++step) {
        program.step();
        program.compareAll();
    }
}

namespace {

bool isBreak(char c) {
    return c == ' ' || c == '\t' || c == '\n';
}

std::string withoutBreaks(std::string text) {
    std::erase_if(text, isBreak);
    return text;
}

int columnsOf(std::string_view line, int tabWidth) {
    int column = 0;
    for (const char c : line) {
        column = c == '\t' ? (column / tabWidth + 1) * tabWidth : column + 1;
    }
    return column;
}

} // namespace

void checkWordWrap(std::string_view input) {
    if (input.size() < 2) {
        return;
    }
    const int width = static_cast<unsigned char>(input[0]) % 80;
    const int tabWidth = 1 + static_cast<unsigned char>(input[1]) % 16;
    const std::string text = upToNul(input.substr(2));
    const std::string wrapped(LmStr(std::string_view(text)).wordWrap(width, tabWidth).view());
    require(withoutBreaks(wrapped) == withoutBreaks(text), "wrapping keeps all but blanks", text);
    require(std::count(wrapped.begin(), wrapped.end(), '\n') >= std::count(text.begin(), text.end(), '\n'),
            "wrapping keeps the ends of lines", text);
    for (std::string_view rest = wrapped; !rest.empty();) {
        const std::string_view line = rest.substr(0, rest.find('\n'));
        rest.remove_prefix(std::min(line.size() + 1, rest.size()));
        require(columnsOf(line, tabWidth) <= width || std::none_of(line.begin() + 1, line.end(), isBreak),
                "only a single word stands beyond the width", wrapped);
    }
}

// --- Variables -----------------------------------------------------------------------------------

namespace {

/// What replacing one variable after the other gives.
std::string plainlyExpanded(std::string text, bool stripTrailingSlashes,
                            const std::map<std::string, std::string>& values) {
    constexpr int mostReplacements = 1000;
    std::size_t start = text.find('$');
    for (int replacements = 0; replacements < mostReplacements && start != std::string::npos;) {
        const std::string token = text.substr(start, text.find_first_of("/ \t\f\n", start) - start);
        const auto found = values.find(token.substr(1));
        if (found == values.end()) {
            start = text.find('$', start + 1);
            continue;
        }
        std::string value = found->second;
        while (stripTrailingSlashes && value.ends_with('/')) {
            value.pop_back();
        }
        text.replace(start, token.size(), value);
        start = text.find('$', start); // what a value holds is replaced, too
        ++replacements;
    }
    // This byte stands for a "$" that is settled, wherever it comes from.
    std::replace(text.begin(), text.end(), '\x7f', '$');
    return text;
}

/// A path that a variable shortens is the same path, but for slashes, once it is expanded.
void checkAbbreviation(const std::string& path, const std::string& name, const std::string& value) {
    test::MapEnv env{{name, value}};
    LmStr shortened{std::string_view(path)};
    if (!abbreviateWithVariable(shortened, name.c_str(), env)) {
        require(shortened == path.c_str(), "a path that is not shortened stays", path);
        return;
    }
    const auto withoutSlashes = [](std::string text) {
        std::erase(text, '/');
        return text;
    };
    if ((name + value + path).find_first_of("$\x7f") == std::string::npos &&
        name.find_first_of("/ \t\f\n") == std::string::npos) {
        expandVariables(shortened, true, env);
        require(withoutSlashes(shortened.c_str()) == withoutSlashes(path), "a shortened path expands", path);
    }
}

} // namespace

/// The lines "NAME=value" of the first part are the environment, the second part is the text.
void checkVariables(std::string_view input) {
    const std::vector<std::string> parts = partsOf(input, 2);
    test::MapEnv env{};
    std::string_view lines = parts[0];
    while (!lines.empty()) {
        const std::string line = upToNul(lines.substr(0, lines.find('\n')));
        lines.remove_prefix(lines.find('\n') + 1);
        const std::size_t sign = line.find('=');
        if (sign != std::string::npos && sign > 0) {
            env.values[line.substr(0, sign)] = line.substr(sign + 1);
        }
    }
    const std::string text = upToNul(parts[1]);
    for (const bool stripTrailingSlashes : {false, true}) {
        const LmStr expanded = expandedVariables(LmStr(std::string_view(text)), stripTrailingSlashes, env);
        require(expanded == plainlyExpanded(text, stripTrailingSlashes, env.values).c_str(),
                "variables become their values one by one", text);
    }
    for (const auto& [name, value] : env.values) {
        checkAbbreviation(text, name, value);
    }
}

// --- Colours -------------------------------------------------------------------------------------

void checkColours(std::string_view input) {
    const std::string text = upToNul(input);
    const LmStr whole{std::string_view(text)};
    std::uint32_t colour = 0;
    int start = 0;
    int end = 0;
    const bool isPrefix = parseColourPrefix(colour, start, end, whole);
    std::uint32_t alone = 0;
    const bool isAlone = parseColour(alone, whole);
    require(isAlone == (isPrefix && start == 0 && end == whole.length()), "a colour alone fills its text",
            text);
    LmStr rest = whole;
    std::uint32_t eaten = 0;
    require(readColor(rest, eaten) == isPrefix, "what begins with a colour is eaten", text);
    if (!isPrefix) {
        require(test::takeChain() == test::StatusChain{test::error("Invalid color value.")},
                "what is no colour is told", text);
        LmStr trimmed = whole;
        trimmed.trimLeft();
        require(rest == trimmed && eaten == 0, "what is no colour stays, without its leading blanks", text);
        return;
    }
    require(eaten == colour && rest == whole.skip(end), "a colour leaves what follows it", text);
    require(0 <= start && start < end && end <= whole.length(), "a colour has its place", text);
    const LmStr written = colourToString(colour);
    std::uint32_t back = 0;
    require(parseColour(back, written) && back == (colour & 0xffffffU), "a colour comes back", text);
    if (text[static_cast<std::size_t>(start)] == '#') {
        LmStr given = whole.midClipped(start, end - start);
        given.toLower();
        require(written == given, "a colour is written as it was read", text);
    }
}

} // namespace quillon::fuzz
