#include "quillon/problem/LqPDDBodyMap.h"

namespace quillon {

LqPDDBodyMap& LqPDDBodyMap::operator=(const LqPDDBodyMap& other) {
    name = other.name;
    parentName = other.parentName;
    graphicsNumber = other.graphicsNumber;
    type = other.type;
    transformOrder = other.transformOrder;
    mappings = other.mappings;
    typeOneVar = other.typeOneVar;
    typeTwoVar = other.typeTwoVar;
    return *this;
}

void LqPDDBodyMap::setMapping(int index, const LqBasicVarMapping<float>& mapping) {
    if (index >= 0 && index < mappings.count()) {
        mappings[index] = mapping;
    }
}

void LqPDDBodyMap::setMapping(TransformPosition position, const LqBasicVarMapping<float>& mapping) {
    if (position.number >= 1) {
        setMapping(position.number - 1, mapping);
    }
}

void LqPDDBodyMap::setMapping(int index, std::int32_t id) {
    setMapping(index, LqBasicVarMapping<float>(id));
}

namespace {

/// Calls `use` with the id of every system variable that the body refers to, whatever its `type` says. Stops
/// when `use` answers true, and gives that answer.
template <class Use>
bool forSysVarsUntil(const LqPDDBodyMap& body, const Use& use) {
    const auto useId = [&use](std::int32_t id) { return id > 0 && use(id); };
    for (const LqBasicVarMapping<float>& mapping : body.mappings) {
        if (useId(mapping.id)) {
            return true;
        }
        for (const LqLinearTerm<float>* term : mapping.termList()) {
            if (useId(term->sysVar)) {
                return true;
            }
        }
    }
    return useId(body.typeOneVar) || useId(body.typeTwoVar);
}

} // namespace

std::set<std::int32_t> bodySysVars(const LqPDDBodyMap& body) {
    std::set<std::int32_t> ids;
    forSysVarsUntil(body, [&ids](std::int32_t id) {
        ids.insert(id);
        return false;
    });
    return ids;
}

bool bodyUsesSysVar(const LqPDDBodyMap& body, std::int32_t id) {
    return forSysVarsUntil(body, [id](std::int32_t used) { return used == id; });
}

} // namespace quillon
