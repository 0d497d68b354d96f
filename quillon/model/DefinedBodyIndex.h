#pragma once

#include "quillon/core/NameIndex.h"

#include <string_view>

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
    explicit DefinedBodyIndex(const LqProblemDefData& problem); ///< which outlives it

    /// The body, or null.
    const LqPDDBodyMap* find(std::string_view name) const;

private:
    const LqProblemDefData& definition;
    NameIndex places; ///< of the bodies in the definition
};

} // namespace quillon
