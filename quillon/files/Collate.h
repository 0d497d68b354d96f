#pragma once

#include "quillon/core/LmStr.h"

namespace quillon {

/// Sets the locale of the process to "POSIX" if LANG names one, so that it never stands in the way of reading
/// numbers from data files. Only the first call does something. A missing LANG is told on standard error.
void fixLocale();

/// Below, equal to or above 0 as `text` sorts before, with or behind `other` in the process's locale, which
/// `fixLocale` sets first.
int collate(const LmStr& text, const LmStr& other);

} // namespace quillon
