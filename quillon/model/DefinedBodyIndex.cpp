#include "quillon/model/DefinedBodyIndex.h"

#include "quillon/problem/LqProblemDefData.h"

#include <optional>

namespace quillon {

DefinedBodyIndex::DefinedBodyIndex(const LqProblemDefData& problem) : definition(problem) {
    const int count = definition.bodies.count();
    places.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        if (const LqPDDBodyMap* const body = definition.bodies[i]) {
            places.add(body->name.view(), i);
        }
    }
}

const LqPDDBodyMap* DefinedBodyIndex::find(std::string_view name) const {
    const std::optional<std::int32_t> place = places.find(name);
    return place.has_value() ? definition.bodies[*place] : nullptr;
}

} // namespace quillon
