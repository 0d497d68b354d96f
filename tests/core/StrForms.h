#pragma once

#include "quillon/core/LmStr.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace quillon {

/// How googletest shows a string.
inline void PrintTo(const LmStr& text, std::ostream* output) {
    if (text.isNull()) {
        *output << "null";
    } else {
        *output << '"' << text.c_str() << '"';
    }
}

} // namespace quillon

namespace quillon::test {

/// The characters of a string, also of one with bytes that are not text.
inline std::string textOf(const LmStr& text) {
    return std::string(text.view());
}

/// Runs `check` on a string with the given text in each of its forms: alone, at an offset, shared, and shared
/// at an offset. Whatever `check` does to the string, the copies that share its text keep theirs.
template <class Check>
void forEachForm(const std::string& text, const Check& check) {
    for (const bool atOffset : {false, true}) {
        for (const bool shared : {false, true}) {
            SCOPED_TRACE(testing::Message() << '"' << text << '"' << (atOffset ? ", at an offset" : "")
                                            << (shared ? ", shared" : ""));
            const std::string front = "ab \tc";
            const LmStr whole((front + text).c_str());
            LmStr string = atOffset ? whole.right(static_cast<int>(text.size())) : LmStr(text.c_str());
            if (atOffset && !shared && !text.empty()) {
                LmStr alone((front + text + text + front).c_str());
                alone.remove(0, 2);
                alone.remove(0, 3);
                alone.setLength(static_cast<int>(text.size()));
                string = std::move(alone);
            }
            const LmStr keeper = shared ? string : LmStr();
            check(string);
            if (shared) {
                EXPECT_EQ(textOf(keeper), text) << "a copy has changed";
            }
            EXPECT_EQ(textOf(whole), front + text) << "the string that was cut has changed";
        }
    }
}

/// The texts of an array of strings.
inline std::vector<std::string> textsOf(const LmDArray<LmStr>& strings) {
    std::vector<std::string> texts;
    for (const LmStr& string : strings) {
        texts.push_back(textOf(string));
    }
    return texts;
}

} // namespace quillon::test
