#include "quillon/core/NameIndex.h"

#include <algorithm>
#include <bit>
#include <functional>
#include <utility>

namespace quillon {

namespace {

constexpr std::size_t fewestSlots = 16;

std::uint32_t hashOf(std::string_view name) {
    const std::uint64_t hash = std::hash<std::string_view>()(name);
    return static_cast<std::uint32_t>(hash ^ (hash >> 32));
}

} // namespace

void NameIndex::reserve(std::size_t count) {
    entries.reserve(count);
    const std::size_t slotCount = std::bit_ceil(std::max(2 * count, fewestSlots));
    if (slotCount > slots.size()) {
        rehash(slotCount);
    }
}

bool NameIndex::add(std::string_view name, std::int32_t number) {
    if (2 * (entries.size() + 1) > slots.size()) {
        rehash(std::max(2 * slots.size(), fewestSlots));
    }
    const std::uint32_t hash = hashOf(name);
    Slot& slot = slots[slotOf(name, hash)];
    if (slot.entry != 0) {
        return false;
    }
    entries.push_back({name, number});
    slot = {hash, static_cast<std::uint32_t>(entries.size())};
    return true;
}

std::optional<std::int32_t> NameIndex::find(std::string_view name) const {
    if (slots.empty()) {
        return std::nullopt;
    }
    const Slot& slot = slots[slotOf(name, hashOf(name))];
    return slot.entry == 0 ? std::nullopt : std::optional(entries[slot.entry - 1].number);
}

/// The slot that holds the name, or the free one where it would go.
std::size_t NameIndex::slotOf(std::string_view name, std::uint32_t hash) const {
    const std::size_t mask = slots.size() - 1;
    std::size_t at = hash & mask;
    while (slots[at].entry != 0 && (slots[at].hash != hash || entries[slots[at].entry - 1].name != name)) {
        at = (at + 1) & mask;
    }
    return at;
}

void NameIndex::rehash(std::size_t slotCount) {
    const std::vector<Slot> old = std::exchange(slots, std::vector<Slot>(slotCount));
    const std::size_t mask = slotCount - 1;
    for (const Slot& slot : old) {
        if (slot.entry != 0) {
            std::size_t at = slot.hash & mask;
            while (slots[at].entry != 0) {
                at = (at + 1) & mask;
            }
            slots[at] = slot;
        }
    }
}

} // namespace quillon
