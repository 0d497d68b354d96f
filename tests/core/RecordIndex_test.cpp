#include "quillon/core/RecordIndex.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace quillon {
namespace {

struct Record {
    std::int32_t id;
};

/// Holds an index of the records against a scan for each id around theirs.
void expectFindsAsAScan(const std::vector<Record>& records) {
    RecordIndex<Record> index;
    for (const Record& record : records) {
        index.add(&record);
        index.add(nullptr);
    }
    index.finish();
    for (std::int32_t id = -3; id <= 10; ++id) {
        const auto scanned = std::ranges::find(records, id, &Record::id);
        EXPECT_EQ(index.find(id), scanned == records.end() ? nullptr : &*scanned) << id;
    }
}

TEST(RecordIndex, FindsTheFirstRecordOfAnIdInAnyOrder) {
    expectFindsAsAScan({});
    expectFindsAsAScan({{1}, {2}, {3}});
    expectFindsAsAScan({{1}, {1}, {2}, {2}, {3}});
    expectFindsAsAScan({{1}, {2}, {2}, {4}, {5}});
    expectFindsAsAScan({{0}, {2}, {3}, {7}});
    expectFindsAsAScan({{-2}, {-1}, {3}, {4}});
    expectFindsAsAScan({{5}, {3}, {3}, {1}, {5}, {2}});
}

} // namespace
} // namespace quillon
