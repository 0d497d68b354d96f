#pragma once

// The blocks of arrays, in the place of those of the library: a program that links this file in front of the
// library gets blocks whose refusal can be survived.

namespace quillon::fuzz {

/// Thrown in the place of the end of the process that an impossible count has.
struct RefusedCount {};

} // namespace quillon::fuzz
