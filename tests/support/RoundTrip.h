#pragma once

#include "tests/support/StatusChain.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace quillon::test {

/// What `write(output)` writes.
template <class Write>
std::string writtenBy(Write write) {
    std::ostringstream output;
    write(output);
    return output.str();
}

/// Expects that what `write(output, data)` writes is read without a word by `read(input, target)`, gives data
/// that `same(target, data)` calls equal, and is written again byte by byte. Gives the text.
template <class Data, class Write, class Read, class Same>
std::string expectRoundTrip(const Data& data, Write write, Read read, Same same) {
    const std::string text = writtenBy([&](std::ostream& output) { write(output, data); });
    std::istringstream input(text);
    Data back;
    read(input, back);
    EXPECT_EQ(takeChain(), StatusChain{}) << text;
    EXPECT_TRUE(same(back, data)) << text;
    EXPECT_EQ(writtenBy([&](std::ostream& output) { write(output, back); }), text);
    return text;
}

} // namespace quillon::test
