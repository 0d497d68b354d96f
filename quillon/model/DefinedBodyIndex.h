#pragma once

#include <string_view>
#include <unordered_map>

namespace quillon {

struct LqPDDBodyMap;
class LqProblemDefData;

/// The bodies of a problem definition by their exact names; the first of equal names is found. The definition
/// stays as it is while its index is in use.
///
/// A merge of model files makes one for all of them: each looks up its few bodies in a definition that may
/// hold those of a crowd.
class DefinedBodyIndex {
public:
    explicit DefinedBodyIndex(const LqProblemDefData& definition); ///< which outlives it

    /// The body, or null.
    const LqPDDBodyMap* find(std::string_view name) const;

private:
    std::unordered_map<std::string_view, const LqPDDBodyMap*> bodies;
};

} // namespace quillon
