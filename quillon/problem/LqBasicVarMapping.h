#pragma once

#include "quillon/core/LmArray.h"
#include "quillon/core/LmDoubleLinkedList.h"
#include "quillon/core/LmListView.h"

#include <cstdint>
#include <set>
#include <utility>

namespace quillon {

/// One term of a linear combination: `coefficient` times the system variable with the id `sysVar`.
template <class T>
struct LqLinearTerm {
    std::int32_t sysVar = 0; ///< the id of the variable
    T coefficient{};         ///< its factor
};

/// What drives one elementary transformation, with numbers of type T.
///
/// The `id` selects the form: 0 is not driven, N above 0 follows system variable N, -1 is `constant`, and
/// -(n + 1) is `constant` plus n `terms`. Owns its terms; a copy is deep.
template <class T>
class LqBasicVarMapping {
public:
    LqBasicVarMapping() = default;
    /// A mapping with this id, a zero constant and no terms.
    explicit LqBasicVarMapping(std::int32_t form) : id(form) {}
    LqBasicVarMapping(const LqBasicVarMapping& other) : id(other.id), constant(other.constant) {
        for (const LqLinearTerm<T>* term : other.termList()) {
            terms.append(new LqLinearTerm<T>(*term));
        }
    }
    LqBasicVarMapping(LqBasicVarMapping&& other) noexcept { swap(other); }
    LqBasicVarMapping& operator=(LqBasicVarMapping other) noexcept {
        swap(other);
        return *this;
    }
    ~LqBasicVarMapping() { clearTerms(); }

    std::int32_t id = 0;      ///< selects the form
    T constant{};             ///< meaningful when `id` is negative
    LmDoubleLinkedList terms; ///< of `LqLinearTerm<T>*`, owned, in file order

    /// The terms for a range-based loop, each as `LqLinearTerm<T>*`. The list stays as it is meanwhile.
    LmListView<LqLinearTerm<T>> termList() const { return LmListView<LqLinearTerm<T>>(terms); }

    /// Appends a term and sets `id` to match the number of terms.
    void appendTerm(std::int32_t sysVar, const T& coefficient) {
        terms.append(new LqLinearTerm<T>{sysVar, coefficient});
        matchIdToTerms();
    }

    /// Drops the terms on these ids, sets `id` to minus the number of remaining terms minus 1 and answers how
    /// many were dropped. Without a term left the mapping is a constant.
    int removeTerms(const std::set<std::int32_t>& ids) {
        const int countBefore = terms.count();
        LmDLListNode* next = nullptr;
        for (LmDLListNode* node = terms.firstLive(); node != nullptr; node = next) {
            next = nextLive(node);
            const auto* const term = static_cast<const LqLinearTerm<T>*>(node->data);
            if (ids.contains(term->sysVar)) {
                terms.removeNode(node);
                delete term;
            }
        }
        matchIdToTerms();
        return countBefore - terms.count();
    }

    /// Frees all terms; `id` stays.
    void clearTerms() {
        while (terms.count() != 0) {
            delete static_cast<LqLinearTerm<T>*>(terms.removeNode(terms.lastLive()));
        }
    }

    /// Exchanges two mappings. No cursor may stand on their terms.
    void swap(LqBasicVarMapping& other) noexcept {
        std::swap(id, other.id);
        std::swap(constant, other.constant);
        terms.swap(other.terms);
    }

private:
    void matchIdToTerms() { id = -terms.count() - 1; }
};

// The mapping holds no pointer into itself as long as its number type does not.
template <class T>
struct MovesByBytes<LqBasicVarMapping<T>> : MovesByBytes<T> {};

/// Compares `id`, the constant when `id` is negative, and the terms in order. Reals compare exactly, so that
/// a NaN is never equal, not even to itself.
template <class T>
bool equals(const LqBasicVarMapping<T>& left, const LqBasicVarMapping<T>& right) {
    if (left.id != right.id || left.terms.count() != right.terms.count()) {
        return false;
    }
    if (left.id < 0 && !(left.constant == right.constant)) {
        return false;
    }
    const LmListView<LqLinearTerm<T>> rightTerms = right.termList();
    auto other = rightTerms.begin();
    for (const LqLinearTerm<T>* term : left.termList()) {
        if (term->sysVar != (*other)->sysVar || !(term->coefficient == (*other)->coefficient)) {
            return false;
        }
        ++other;
    }
    return true;
}

} // namespace quillon
