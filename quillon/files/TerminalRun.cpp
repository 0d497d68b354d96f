#include "quillon/files/TerminalRun.h"

#include "quillon/core/LmStatus.h"
#include "quillon/files/ProgramSearch.h"
#include "quillon/files/ShellResult.h"

#include <array>
#include <cstdlib>

namespace quillon {

namespace {

/// A terminal program and how its command line is put together.
struct Terminal {
    const char* program;
    const char* titleOption;
    const char* nameOption;
    const char* start;
    std::array<const char*, 3> ends;
};

/// In the order in which they are preferred.
constexpr std::array<Terminal, 2> terminals = {{
    {"konsole",
     "--title",
     "--name",
     "-e sh -c '",
     {";echo \"Command COMPLETE\"", ";read dummy_read_var'", " &"}},
    {"rxvt", "-title", "-n", "-e sh -c '", {";echo \"Command COMPLETE\"", ";read dummy_read_var'", " &"}},
}};

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
    line += terminal.start;
    line += command;
    for (const char* const end : terminal.ends) {
        line += end;
    }
    return line;
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
