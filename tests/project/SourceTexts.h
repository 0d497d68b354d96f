#pragma once

// The texts in quotes of a source file, which are what its users read.

#include "tests/project/Pages.h"
#include "tests/support/ScratchDirectory.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <regex>
#include <string>
#include <string_view>
#include <vector>

namespace quillon::test {

/// The text with its escapes resolved; line ends and tabs count as blanks, since messages are compared in one
/// line.
inline std::string plainText(const std::string& quoted) {
    std::string text;
    for (std::size_t i = 0; i < quoted.size(); ++i) {
        if (quoted[i] != '\\') {
            text += quoted[i];
        } else {
            ++i;
            text += std::string_view("ntr").find(quoted[i]) == std::string_view::npos ? quoted[i] : ' ';
        }
    }
    return text;
}

/// The position behind the text in quotes that begins at `begin`.
inline std::size_t endOfQuoted(const std::string& source, std::size_t begin) {
    std::size_t end = begin + 1;
    while (end < source.size() && source[end] != source[begin]) {
        end += source[end] == '\\' ? 2U : 1U;
    }
    return std::min(end + 1, source.size());
}

/// The string literals of a source text without those of its includes, adjacent ones joined.
inline std::vector<std::string> stringLiterals(const std::string& source) {
    std::vector<std::string> literals;
    bool joins = false;
    std::size_t end = 0;
    for (std::size_t begin = 0; begin < source.size(); begin = end) {
        const char c = source[begin];
        end = begin + 1;
        if (c == '"') {
            end = endOfQuoted(source, begin);
            if (!joins) {
                literals.emplace_back();
            }
            literals.back() += plainText(source.substr(begin + 1, end - begin - 2));
            joins = true;
        } else if (c == '#' || source.compare(begin, 2, "//") == 0) {
            end = std::min(source.find('\n', begin), source.size());
        } else if (c == '\'' && begin > 0 &&
                   std::isalnum(static_cast<unsigned char>(source[begin - 1])) == 0) {
            end = endOfQuoted(source, begin);
            joins = false;
        } else if (std::isspace(static_cast<unsigned char>(c)) == 0) {
            joins = false;
        }
    }
    return literals;
}

/// A text with gaps: between its pieces may stand anything.
struct TextPattern {
    std::vector<std::string> pieces; ///< one more than there are gaps
};

/// The pattern of a text; each match of `gap` in it is a gap.
inline TextPattern patternOf(const std::string& text, const std::regex& gap) {
    TextPattern pattern;
    std::size_t done = 0;
    for (std::sregex_iterator match(text.begin(), text.end(), gap), end; match != end; ++match) {
        const auto position = static_cast<std::size_t>(match->position());
        pattern.pieces.push_back(text.substr(done, position - done));
        done = position + static_cast<std::size_t>(match->length());
    }
    pattern.pieces.push_back(text.substr(done));
    return pattern;
}

/// The pattern of a format of the `printf` kind; blanks at its ends do not count.
inline TextPattern formatPattern(std::string text) {
    static const std::regex conversion("%(?:\\.[0-9]+)?[a-z]+");
    text.erase(text.find_last_not_of(' ') + 1);
    text.erase(0, text.find_first_not_of(' '));
    return patternOf(text, conversion);
}

/// The pattern of a message in a page, with a gap for each `<word>`.
inline TextPattern pagePattern(const std::string& message) {
    static const std::regex placeholder("<[a-z ]+>");
    return patternOf(message, placeholder);
}

/// Whether the pattern fits the whole text.
inline bool fits(const TextPattern& pattern, const std::string& text) {
    const std::string& first = pattern.pieces.front();
    const std::string& last = pattern.pieces.back();
    if (pattern.pieces.size() == 1) {
        return text == first;
    }
    if (!text.starts_with(first) || !text.ends_with(last) || text.size() < first.size() + last.size()) {
        return false;
    }
    std::size_t from = first.size();
    for (std::size_t i = 1; i + 1 < pattern.pieces.size(); ++i) {
        const std::size_t found = text.find(pattern.pieces[i], from);
        if (found == std::string::npos) {
            return false;
        }
        from = found + pattern.pieces[i].size();
    }
    return from <= text.size() - last.size();
}

/// A text that the pattern fits.
inline std::string sampleOf(const TextPattern& pattern) {
    std::string sample = pattern.pieces.front();
    for (std::size_t i = 1; i < pattern.pieces.size(); ++i) {
        sample += "x" + pattern.pieces[i];
    }
    return sample;
}

/// The texts of the files that the page's notes of this kind name.
inline std::vector<std::string> literalsNamedBy(const Page& page, const std::string& kind) {
    std::vector<std::string> literals;
    for (const PageNote& note : page.notes) {
        if (note.kind == kind) {
            for (const std::string& file : wordsOf(note.content)) {
                const std::vector<std::string> more =
                    stringLiterals(support::readBytes(std::filesystem::path(QUILLON_SOURCE_DIR) / file));
                literals.insert(literals.end(), more.begin(), more.end());
            }
        }
    }
    return literals;
}

} // namespace quillon::test
