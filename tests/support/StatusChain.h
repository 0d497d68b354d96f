#pragma once

#include "quillon/core/LmStatus.h"

#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace quillon::test {

enum class Kind { Error, Warning };

/// One entry of a status chain as tests compare it.
struct StatusLine {
    Kind kind;
    std::string text;

    friend bool operator==(const StatusLine&, const StatusLine&) = default;
    friend std::ostream& operator<<(std::ostream& output, const StatusLine& line) {
        return output << (line.kind == Kind::Error ? "error: \"" : "warning: \"") << line.text << '"';
    }
};

/// The entries of a status, newest first.
using StatusChain = std::vector<StatusLine>;

inline StatusLine error(std::string text) {
    return {Kind::Error, std::move(text)};
}

inline StatusLine warning(std::string text) {
    return {Kind::Warning, std::move(text)};
}

inline StatusChain chainOf(const LmStatus& status = currentStatus()) {
    StatusChain chain;
    for (const LmStatusEntry* entry = status.head(); entry != nullptr; entry = entry->next()) {
        chain.push_back({entry->isError() ? Kind::Error : Kind::Warning, entry->message().c_str()});
    }
    return chain;
}

/// The entries of a status, which is empty afterwards.
inline StatusChain takeChain(LmStatus& status = currentStatus()) {
    StatusChain chain = chainOf(status);
    status.clear();
    return chain;
}

/// Empties the current status at both ends of a scope, so that tests leave nothing to each other.
class CleanStatus {
public:
    CleanStatus() { currentStatus().clear(); }
    CleanStatus(const CleanStatus&) = delete;
    CleanStatus& operator=(const CleanStatus&) = delete;
    ~CleanStatus() { currentStatus().clear(); }
};

} // namespace quillon::test
