#pragma once

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define QUILLON_CHECKS_ADDRESSES true
#endif
#elif defined(__SANITIZE_ADDRESS__)
#define QUILLON_CHECKS_ADDRESSES true
#endif
#ifndef QUILLON_CHECKS_ADDRESSES
#define QUILLON_CHECKS_ADDRESSES false
#endif

namespace quillon::support {

/// Whether the build checks addresses at run time. Tests that limit the address space leave no room for that.
inline constexpr bool checksAddresses = QUILLON_CHECKS_ADDRESSES;

} // namespace quillon::support
