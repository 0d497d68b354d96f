#pragma once

#include "quillon/core/LmStr.h"
#include "quillon/files/LmAbstractEnv.h"

namespace quillon {

/// Replaces each "$NAME" by the variable's value in `env`; a name ends at '/', blank, tab, form feed or LF.
/// What a value refers to is replaced in its turn, an undefined variable stays as it stands, and a byte 127
/// becomes "$". After 1000 replacements the rest stays as it stands. With `stripTrailingSlashes` values lose
/// the '/' characters at their end.
void expandVariables(LmStr& text, bool stripTrailingSlashes, LmAbstractEnv& env);
void expandVariables(LmStr& text, LmAbstractEnv& env);
/// The same with the environment of the process. Paths read from files are expanded with the slashes
/// stripped.
void expandVariables(LmStr& text, bool stripTrailingSlashes = false);

/// `expandVariables` on a copy.
LmStr expandedVariables(const LmStr& text, bool stripTrailingSlashes, LmAbstractEnv& env);
LmStr expandedVariables(const LmStr& text, LmAbstractEnv& env);
LmStr expandedVariables(const LmStr& text, bool stripTrailingSlashes = false);

/// The reverse, for writing: a path that begins with the value of the variable `name` begins with "$", the
/// name and one '/' instead. Returns whether the path was changed. A longer word is cut too, by design: with
/// a value "/data" the path "/database" becomes "$NAME/base".
bool abbreviateWithVariable(LmStr& path, const char* name, LmAbstractEnv& env);
bool abbreviateWithVariable(LmStr& path, const char* name);

} // namespace quillon
