#pragma once

// The pages of the documentation as the tests see them.

#include "tests/support/ScratchDirectory.h"

#include <algorithm>
#include <filesystem>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

namespace quillon::test {

/// What a comment of a page says about it, or about the code block behind: `<!-- example: path -->`.
struct PageNote {
    std::string kind;    ///< the word before the colon
    std::string content; ///< what is behind it, with single blanks
    std::string block;   ///< the text of the code block that begins in the next line, if there is one
};

/// One page, and what the tests look for in it.
struct Page {
    std::filesystem::path path;
    std::string text;
    std::vector<PageNote> notes;
    std::vector<std::string> codeSpans; ///< of the whole page
    std::vector<std::string> messages;  ///< first cells of the tables that are headed "Message"
};

inline std::vector<std::string> wordsOf(const std::string& text) {
    std::istringstream input(text);
    std::vector<std::string> words;
    for (std::string word; input >> word;) {
        words.push_back(word);
    }
    return words;
}

inline std::vector<PageNote> notesOf(const std::string& text) {
    static const std::regex form("<!-- ([a-z]+): ([^>]*?) -->\n(```[a-z]*\n)?");
    std::vector<PageNote> notes;
    for (std::sregex_iterator match(text.begin(), text.end(), form), end; match != end; ++match) {
        PageNote note{(*match)[1], "", ""};
        for (const std::string& word : wordsOf((*match)[2])) {
            note.content += (note.content.empty() ? "" : " ") + word;
        }
        if ((*match)[3].matched) {
            const auto begin = static_cast<std::size_t>(match->position() + match->length());
            const std::size_t close =
                text.compare(begin, 3, "```") == 0 ? begin : text.find("\n```", begin) + 1;
            note.block = text.substr(begin, close - begin);
        }
        notes.push_back(note);
    }
    return notes;
}

inline std::vector<std::string> codeSpansOf(const std::string& text) {
    static const std::regex span("`([^`\n]+)`");
    std::vector<std::string> spans;
    for (std::sregex_iterator match(text.begin(), text.end(), span), end; match != end; ++match) {
        spans.push_back((*match)[1]);
    }
    return spans;
}

inline std::vector<std::string> messagesOf(const std::string& text) {
    std::istringstream lines(text);
    std::vector<std::string> messages;
    bool inMessages = false;
    for (std::string line; std::getline(lines, line);) {
        inMessages = line.starts_with("| Message |") || (inMessages && line.starts_with("|"));
        if (inMessages && line.starts_with("| `")) {
            messages.push_back(codeSpansOf(line).front());
        }
    }
    return messages;
}

inline Page pageAt(const std::filesystem::path& path) {
    const std::string text = support::readBytes(path);
    return {path, text, notesOf(text), codeSpansOf(text), messagesOf(text)};
}

/// All pages of the documentation, by their paths. They are read once.
inline const std::vector<Page>& allPages() {
    static const std::vector<Page> pages = [] {
        std::vector<Page> found;
        const std::filesystem::path folder = std::filesystem::path(QUILLON_SOURCE_DIR) / "docs";
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
            if (entry.path().extension() == ".md") {
                found.push_back(pageAt(entry.path()));
            }
        }
        std::ranges::sort(found, {}, &Page::path);
        return found;
    }();
    return pages;
}

} // namespace quillon::test
