#include "quillon/files/VariableExpansion.h"

#include "quillon/files/PathNames.h"

#include <algorithm>
#include <cstdlib>
#include <string>
#include <string_view>
#include <utility>

namespace quillon {

namespace {

constexpr char reference = '$';
/// Stands for a "$" that is not looked at again.
constexpr char settledReference = 127;
constexpr std::string_view nameEnds = "/ \t\f\n";
/// What a variable that refers to itself is stopped by.
constexpr int mostReplacements = 1000;

std::string_view withoutTrailingSlashes(std::string_view text) {
    while (text.ends_with('/')) {
        text.remove_suffix(1);
    }
    return text;
}

/// The value of the variable whose name stands in the text, to be freed; null when it is unset. The name is
/// ended in its place for a moment: of a text of many "$" each has all the rest for its name, and a copy for
/// each would take the square of the text's length.
char* valueOf(std::string& text, std::size_t begin, std::size_t end, LmAbstractEnv& env) {
    const char behind = std::exchange(text[end], '\0');
    char* const value = env.getEnv(&text[begin]);
    text[end] = behind;
    return value;
}

void replaceReferences(std::string& text, bool stripTrailingSlashes, LmAbstractEnv& env) {
    int replacements = 0;
    std::size_t end = 0; // of the name, which many references may share
    for (std::size_t start = text.find(reference);
         start != std::string::npos && replacements < mostReplacements; start = text.find(reference, start)) {
        if (end <= start) {
            end = std::min(text.find_first_of(nameEnds, start), text.size());
        }
        char* const value = valueOf(text, start + 1, end, env);
        if (value == nullptr) {
            text[start] = settledReference;
            continue;
        }
        const std::string_view found = value;
        text.replace(start, end - start, stripTrailingSlashes ? withoutTrailingSlashes(found) : found);
        std::free(value);
        end = 0;
        ++replacements;
    }
}

} // namespace

void expandVariables(LmStr& text, bool stripTrailingSlashes, LmAbstractEnv& env) {
    std::string expanded = text.c_str();
    if (expanded.find_first_of({reference, settledReference}) == std::string::npos) {
        return;
    }
    replaceReferences(expanded, stripTrailingSlashes, env);
    std::replace(expanded.begin(), expanded.end(), settledReference, reference);
    text = LmStr(std::string_view(expanded));
}

void expandVariables(LmStr& text, LmAbstractEnv& env) {
    expandVariables(text, false, env);
}

void expandVariables(LmStr& text, bool stripTrailingSlashes) {
    LmSystemEnv env;
    expandVariables(text, stripTrailingSlashes, env);
}

LmStr expandedVariables(const LmStr& text, bool stripTrailingSlashes, LmAbstractEnv& env) {
    LmStr expanded = text;
    expandVariables(expanded, stripTrailingSlashes, env);
    return expanded;
}

LmStr expandedVariables(const LmStr& text, LmAbstractEnv& env) {
    return expandedVariables(text, false, env);
}

LmStr expandedVariables(const LmStr& text, bool stripTrailingSlashes) {
    LmSystemEnv env;
    return expandedVariables(text, stripTrailingSlashes, env);
}

bool abbreviateWithVariable(LmStr& path, const char* name, LmAbstractEnv& env) {
    const LmStr directory = envString(name, env);
    if (directory == "") {
        return false;
    }
    const std::string_view value = withoutTrailingSlashes(directory.view());
    const LmStr whole = path;
    std::string_view rest = whole.c_str();
    if (!rest.starts_with(value)) {
        return false;
    }
    rest.remove_prefix(value.size());
    rest.remove_prefix(std::min(rest.find_first_not_of('/'), rest.size()));
    const LmStr abbreviated = LmStr("$") + name;
    path = rest.empty() ? abbreviated : joinPath(abbreviated, LmStr(rest));
    return true;
}

bool abbreviateWithVariable(LmStr& path, const char* name) {
    LmSystemEnv env;
    return abbreviateWithVariable(path, name, env);
}

} // namespace quillon
