#pragma once

#include "quillon/core/LmStatus.h"

namespace quillon::test {

/// Registers a cancel hook for the length of a scope that says yes when it is asked for the n-th time,
/// counted from 1, and counts how often it was asked. With n of 0 it never does.
class CancelAtAsking {
public:
    explicit CancelAtAsking(int n) : yesAt(n) { setCancelHook(&CancelAtAsking::ask, this); }
    CancelAtAsking(const CancelAtAsking&) = delete;
    CancelAtAsking& operator=(const CancelAtAsking&) = delete;
    ~CancelAtAsking() { setCancelHook(nullptr, nullptr); }

    int timesAsked() const { return asked; }

private:
    static int ask(void* self) {
        auto* const hook = static_cast<CancelAtAsking*>(self);
        return ++hook->asked == hook->yesAt ? 1 : 0;
    }

    int yesAt;
    int asked = 0;
};

} // namespace quillon::test
