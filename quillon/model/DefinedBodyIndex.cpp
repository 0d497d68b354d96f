#include "quillon/model/DefinedBodyIndex.h"

#include "quillon/problem/LqProblemDefData.h"

namespace quillon {

DefinedBodyIndex::DefinedBodyIndex(const LqProblemDefData& definition) {
    bodies.reserve(static_cast<std::size_t>(definition.bodies.count()));
    for (const LqPDDBodyMap* body : definition.bodies) {
        if (body != nullptr) {
            bodies.try_emplace(body->name.view(), body);
        }
    }
}

const LqPDDBodyMap* DefinedBodyIndex::find(std::string_view name) const {
    const auto found = bodies.find(name);
    return found == bodies.end() ? nullptr : found->second;
}

} // namespace quillon
