#pragma once

namespace quillon {

/// Ends the process by SIGSEGV without a message, whatever the build type, compiler or signal handlers.
///
/// The one outcome of reaching for the text of a null string, for an entry of an empty status chain, or for
/// the node of a cursor that has none. It is a defined end: nothing leans on undefined behaviour.
[[noreturn]] void endByMemoryFault();

} // namespace quillon
