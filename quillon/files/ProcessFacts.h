#pragma once

#include "quillon/core/LmStr.h"

namespace quillon {

/// Puts the identity of the system's present run, NUL-terminated, into `buffer` of `size` bytes, at most
/// `size` - 2 characters of it. Returns its length, 0 on failure.
int readBootId(char* buffer, int size);

/// Whether a signal could be sent to the process.
bool processAlive(int pid);

/// Puts the name of the real user into `buffer` of `size` bytes. False if the name is unknown or does not
/// fit.
bool loginName(char* buffer, int size);

/// Name and home directory of the effective user; outputs may be null. False if the user is unknown, and then
/// nothing is written.
bool effectiveUserInfo(LmStr* nameOut, LmStr* homeOut);

/// The host's name, cut at 80 characters; empty when the system does not tell.
LmStr hostName();

long clockTicksPerSecond(); ///< the length of a clock tick is its inverse, in seconds
/// The number of processors in use by the system.
int cpuCount();

/// Sleeps `n` clock ticks; not at all for n below 1.
void sleepTicks(long n);

} // namespace quillon
