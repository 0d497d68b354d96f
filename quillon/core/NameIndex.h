#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace quillon {

/// Finds numbers by names. Of equal names the one that was added first counts, as in a scan from the front.
///
/// The texts of the names stay with their owners, which keep them as they are meanwhile. Look-ups touch one
/// place of one table, which matters for the names of a crowd: no memory is near then.
class NameIndex {
public:
    /// Makes room for `count` names; more may be added.
    void reserve(std::size_t count);

    /// Adds a name with its number. False when the name is there already, which then keeps its number.
    bool add(std::string_view name, std::int32_t number);

    /// The number of that name; none when the name was not added.
    std::optional<std::int32_t> find(std::string_view name) const;

    bool contains(std::string_view name) const { return find(name).has_value(); } ///< whether it was added

private:
    struct Entry {
        std::string_view name;
        std::int32_t number;
    };

    /// Where an entry is: behind `entry` places, counted from 1, in `entries`; 0 for no entry.
    struct Slot {
        std::uint32_t hash;
        std::uint32_t entry;
    };

    void rehash(std::size_t slotCount);
    std::size_t slotOf(std::string_view name, std::uint32_t hash) const;

    std::vector<Entry> entries; ///< in the order of adding
    std::vector<Slot> slots; ///< a power of two of them, at least half of them free; entries go to the next
};

} // namespace quillon
