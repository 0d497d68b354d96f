#include "quillon/files/TerminalRun.h"

#include "quillon/core/LmStatus.h"
#include "quillon/files/ProgramSearch.h"
#include "quillon/files/ShellResult.h"

#include <array>
#include <cstdlib>

namespace quillon {

namespace {

/// A terminal program and its words for the title and the name of its window.
struct Terminal {
    const char* program;
    const char* titleOption;
    const char* nameOption;
};

/// In the order in which they are preferred.
constexpr std::array<Terminal, 2> terminals = {{
    {"konsole", "--title", "--name"},
    {"rxvt", "-title", "-n"},
}};

constexpr const char* beforeCommand = "-e sh -c '";
/// Keeps the window open until the user presses Enter.
constexpr const char* behindCommand = ";echo \"Command COMPLETE\";read dummy_read_var' &";

const Terminal* findTerminal() {
    for (const Terminal& terminal : terminals) {
        if (findOnPathEnv(terminal.program)) {
            return &terminal;
        }
    }
    return nullptr;
}

LmStr optionWithText(const char* option, const LmStr& text) {
    return text.isNull() ? LmStr("") : LmStr(option) + " \"" + text + "\" ";
}

LmStr commandLineFor(const Terminal& terminal, const LmStr& command, const LmStr& title, const LmStr& name) {
    LmStr line = LmStr(terminal.program) + " ";
    line += optionWithText(terminal.titleOption, title);
    line += optionWithText(terminal.nameOption, name);
    return line + beforeCommand + command + behindCommand;
}

} // namespace

bool runInTerminal(const LmStr& command, const LmStr& title, const LmStr& name) {
    const Terminal* const terminal = findTerminal();
    if (terminal == nullptr) {
        pushErrorf("Unable to execute terminal program.  Supported terminals are konsole and rxvt.");
        return false;
    }
    if (!shellCouldBeRun(std::system(commandLineFor(*terminal, command, title, name).c_str()))) {
        pushErrorf("Unable to execute command \"%s\".", command.c_str());
        return false;
    }
    return true;
}

} // namespace quillon
