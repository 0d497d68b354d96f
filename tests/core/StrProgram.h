#pragma once

#include "quillon/core/LmStr.h"

#include "tests/core/StrForms.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace quillon::test {

/// A random program of string operations, run on LmStr and on std::string side by side.
///
/// Many strings are alive at a time and share texts, so an operation that writes to a shared text shows in
/// another string.
class StrProgram {
public:
    /// `draw(limit)` gives a number from 0 up to, not including, the limit.
    explicit StrProgram(std::function<std::size_t(std::size_t)> draw) : below(std::move(draw)) {}

    void step() {
        Pair& pair = pairs[below(pairs.size())];
        if (pair.model.size() > longest) {
            shorten(pair);
        }
        switch (below(5)) {
        case 0:
            assign(pair);
            break;
        case 1:
            grow(pair);
            break;
        case 2:
            shrink(pair);
            break;
        case 3:
            replace(pair);
            break;
        default:
            question(pair);
            break;
        }
    }

    void compareAll() const {
        for (const Pair& pair : pairs) {
            ASSERT_FALSE(pair.string.isNull());
            ASSERT_EQ(textOf(pair.string), pair.model) << "after " << lastOperation;
            ASSERT_EQ(pair.string.length(), static_cast<int>(pair.model.size()));
            ASSERT_EQ(pair.string.c_str()[pair.model.size()], '\0');
        }
    }

private:
    static constexpr std::size_t longest = 300;

    /// One string in both representations.
    struct Pair {
        LmStr string = LmStr("");
        std::string model;
    };

    std::function<std::size_t(std::size_t)> below;
    std::array<Pair, 8> pairs;
    const char* lastOperation = "nothing";

    static bool isSpace(char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; }
    int position(const Pair& pair) { return static_cast<int>(below(pair.model.size() + 1)); }

    char anyCharacter() {
        static const std::string characters = "aabbAB01 \t\n_-\xE9\xFF";
        return characters[below(characters.size())];
    }

    std::string anyText(std::size_t atMost) {
        std::string text(below(atMost + 1), ' ');
        std::generate(text.begin(), text.end(), [this] { return anyCharacter(); });
        return text;
    }

    /// A random range of the string.
    struct Range {
        int start;
        int count;
        std::size_t first() const { return static_cast<std::size_t>(start); }
        std::size_t size() const { return static_cast<std::size_t>(count); }
    };
    Range anyRange(const Pair& pair) {
        const int start = below(3) == 0 ? 0 : position(pair);
        const int behind = static_cast<int>(pair.model.size()) - start;
        return {start, static_cast<int>(below(static_cast<std::size_t>(behind) + 1))};
    }

    void shorten(Pair& pair) {
        lastOperation = "setLength";
        pair.string.setLength(10);
        pair.model.resize(10);
    }

    void assign(Pair& pair) {
        const Pair& other = pairs[below(pairs.size())];
        const Range range = anyRange(other);
        switch (below(7)) {
        case 0:
            lastOperation = "assignment";
            pair.string = other.string;
            pair.model = other.model;
            break;
        case 1: {
            lastOperation = "right";
            const std::string tail = other.model.substr(other.model.size() - range.size());
            pair.string = other.string.right(range.count);
            pair.model = tail;
            break;
        }
        case 2: {
            lastOperation = "assignment of the own or another tail";
            const std::string tail = other.model.substr(range.first());
            pair.string = other.string.c_str() + range.start;
            pair.model = tail;
            break;
        }
        case 3: {
            lastOperation = "mid";
            const std::string middle =
                range.count == 0 ? other.model : other.model.substr(range.first(), range.size());
            pair.string = other.string.mid(range.start, range.count);
            pair.model = middle;
            break;
        }
        case 4: {
            lastOperation = "midClipped";
            const std::string middle = other.model.substr(range.first(), range.size());
            pair.string = other.string.midClipped(range.start, range.count);
            pair.model = middle;
            break;
        }
        case 5: {
            lastOperation = "without";
            std::string rest = other.model;
            rest.erase(range.first(), range.size());
            pair.string = other.string.without(range.start, range.count);
            pair.model = rest;
            break;
        }
        default:
            lastOperation = "assignment of a text";
            pair.model = anyText(40);
            pair.string = pair.model.c_str();
            break;
        }
    }

    void grow(Pair& pair) {
        const Pair& other = pairs[below(pairs.size())];
        const std::string text = anyText(12);
        const int place = position(pair);
        const auto at = static_cast<std::size_t>(place);
        switch (below(8)) {
        case 0:
            lastOperation = "insert";
            pair.string.insert(place, text.c_str());
            pair.model.insert(at, text);
            break;
        case 1: {
            lastOperation = "insert of the own text";
            const Range range = anyRange(pair);
            const std::string own = pair.model.substr(range.first(), range.size());
            pair.string.insert(place, pair.string.c_str() + range.start, range.count);
            pair.model.insert(at, own);
            break;
        }
        case 2:
            lastOperation = "append of a string";
            pair.string += other.string;
            pair.model += std::string(other.model);
            break;
        case 3:
            lastOperation = "append of a character";
            pair.string += 'c';
            pair.model += 'c';
            break;
        case 4:
            lastOperation = "prependFill";
            pair.string.prependFill(place % 7, '.');
            pair.model.insert(0, at % 7, '.');
            break;
        case 5:
            lastOperation = "appendPadded";
            pair.string.appendPadded(text.c_str(), 5);
            pair.model += (text + "     ").substr(0, 5);
            break;
        case 6:
            lastOperation = "concatenation";
            pair.string = pair.string + other.string;
            pair.model = pair.model + other.model;
            break;
        default:
            lastOperation = "setLength";
            pair.string.setLength(place + 3);
            pair.model.resize(at + 3, ' ');
            break;
        }
    }

    void shrink(Pair& pair) {
        const Range range = anyRange(pair);
        switch (below(7)) {
        case 0:
            lastOperation = "remove";
            pair.string.remove(range.start, range.count);
            pair.model.erase(range.first(), range.size());
            break;
        case 1:
            lastOperation = "remove at the front";
            pair.string.remove(0, range.count);
            pair.model.erase(0, range.size());
            break;
        case 2: {
            lastOperation = "trimLeft";
            pair.string.trimLeft();
            pair.model.erase(pair.model.begin(),
                             std::find_if_not(pair.model.begin(), pair.model.end(), isSpace));
            break;
        }
        case 3:
            lastOperation = "trimRight";
            pair.string.trimRight();
            while (!pair.model.empty() && isSpace(pair.model.back())) {
                pair.model.pop_back();
            }
            break;
        case 4:
            lastOperation = "removeWhitespace";
            pair.string.removeWhitespace();
            std::erase_if(pair.model, isSpace);
            break;
        case 5: {
            lastOperation = "popLine";
            LmStr line = pair.string.popLine();
            const std::size_t end = std::min(pair.model.find('\n'), pair.model.size());
            ASSERT_EQ(textOf(line), pair.model.substr(0, end));
            ASSERT_EQ(pair.string.isNull(), end == pair.model.size());
            if (pair.string.isNull()) {
                pair.string = "";
            }
            pair.model.erase(0, end + 1);
            break;
        }
        default:
            lastOperation = "left";
            pair.string = pair.string.left(range.start);
            pair.model.resize(range.first());
            break;
        }
    }

    static std::string withAllReplaced(std::string text, const std::string& target, const std::string& by) {
        for (std::size_t at = text.find(target); at != std::string::npos;
             at = text.find(target, at + by.size())) {
            text.replace(at, target.size(), by);
        }
        return text;
    }

    void replace(Pair& pair) {
        const Range range = anyRange(pair);
        const std::string target = std::string(1, anyCharacter()) + anyText(1);
        const std::string by = anyText(4);
        const std::size_t found = pair.model.find(target);
        switch (below(7)) {
        case 0:
            lastOperation = "replaceRange";
            pair.string.replaceRange(range.start, range.count, by.c_str());
            pair.model.replace(range.first(), range.size(), by);
            break;
        case 1:
            lastOperation = "replaceFirst";
            pair.string.replaceFirst(target.c_str(), by.c_str());
            if (found != std::string::npos) {
                pair.model.replace(found, target.size(), by);
            }
            break;
        case 2:
            lastOperation = "replaceAll";
            pair.string.replaceAll(target.c_str(), by.c_str());
            pair.model = withAllReplaced(pair.model, target, by);
            break;
        case 3:
            lastOperation = "removeFirst";
            pair.string.removeFirst(target.c_str());
            if (found != std::string::npos) {
                pair.model.erase(found, target.size());
            }
            break;
        case 4:
            lastOperation = "toUpper";
            pair.string.toUpper();
            std::transform(pair.model.begin(), pair.model.end(), pair.model.begin(),
                           [](char c) { return 'a' <= c && c <= 'z' ? static_cast<char>(c - 32) : c; });
            break;
        case 5:
            lastOperation = "setChar";
            if (!pair.model.empty()) {
                const int at = range.start % static_cast<int>(pair.model.size());
                pair.string.setChar(at, '*');
                pair.model[static_cast<std::size_t>(at)] = '*';
            }
            break;
        default:
            lastOperation = "format";
            pair.string.format("<%s|%d>", pair.string.c_str(), range.count);
            pair.model = "<" + pair.model + "|" + std::to_string(range.count) + ">";
            break;
        }
    }

    void question(Pair& pair) {
        const Pair& other = pairs[below(pairs.size())];
        const std::string target = anyText(3);
        const char c = anyCharacter();
        lastOperation = "a question";
        int found = -1;
        const std::size_t at = pair.model.find(target);
        ASSERT_EQ(pair.string.find(target.c_str(), &found), at != std::string::npos);
        ASSERT_EQ(found, at == std::string::npos ? -1 : static_cast<int>(at));
        const std::size_t last = pair.model.rfind(c);
        ASSERT_EQ(pair.string.lastIndexOf(c),
                  last == std::string::npos ? 2147483647 : static_cast<int>(last));
        ASSERT_EQ(pair.string.count(c), std::count(pair.model.begin(), pair.model.end(), c));
        ASSERT_EQ(pair.string < other.string, pair.model < other.model);
        ASSERT_EQ(pair.string == other.string, pair.model == other.model);
        ASSERT_EQ(pair.string.endsWith(other.string), pair.model.ends_with(other.model));
        ASSERT_EQ(pair.string.startsWith(target.c_str()) == 0, pair.model.starts_with(target));
        ASSERT_EQ(pair.string.split(c).count(), std::count(pair.model.begin(), pair.model.end(), c) + 1);
    }
};

} // namespace quillon::test
