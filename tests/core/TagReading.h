#pragma once

#include "quillon/core/TagReader.h"
#include "tests/core/StrForms.h"
#include "tests/support/StatusChain.h"

#include <gtest/gtest.h>

#include <istream>
#include <optional>
#include <ostream>
#include <string>

// One tagged item as tests compare it, taken in each of the ways that the library has.

namespace quillon::test {

/// What one reading gave.
struct TagReading {
    bool result = true;
    std::optional<std::string> tag = std::nullopt;
    std::optional<std::string> value = std::nullopt;
    bool simple = false;
    StatusChain chain = {};

    friend bool operator==(const TagReading&, const TagReading&) = default;
    friend std::ostream& operator<<(std::ostream& output, const TagReading& item) {
        return output << (item.result ? "true" : "false") << ", tag " << testing::PrintToString(item.tag)
                      << ", value " << testing::PrintToString(item.value)
                      << (item.simple ? ", simple, " : ", block, ") << testing::PrintToString(item.chain);
    }
};

/// By `readTag`.
inline TagReading readOne(std::istream& input) {
    TagReading item;
    LmStr tag;
    LmStr value;
    int isSimple = 0;
    LmStatus status;
    item.result = readTag(input, tag, value, &isSimple, status);
    item.chain = takeChain(status);
    if (item.result && !tag.isNull()) {
        item.tag = textOf(tag);
        item.value = textOf(value);
        item.simple = isSimple == 1;
    }
    return item;
}

/// By `TaggedItems`.
inline TagReading takeOne(TaggedItems& items, LmStatus& status) {
    TagReading item;
    const bool found = items.next();
    item.result = !items.failed();
    item.chain = takeChain(status);
    if (found) {
        item.tag = textOf(items.tag());
        item.value = textOf(items.value());
        item.simple = items.isSimple();
        EXPECT_EQ(items.valueText(), *item.value);
    }
    return item;
}

/// Whether the reading ended behind this one.
inline bool isLast(const TagReading& item) {
    return !item.result || !item.tag;
}

} // namespace quillon::test
