#include "quillon/tool/CommandLine.h"
#include "quillon/tool/DescriptorBuf.h"

#include <csignal>
#include <iostream>
#include <ostream>
#include <span>
#include <unistd.h>

int main(int argumentCount, char** arguments) {
    // Some who start programs ignore the end of their children, and that is handed on: the shell that starts
    // the tool for a compressed file could then not be waited for.
    std::signal(SIGCHLD, SIG_DFL);
    quillon::DescriptorBuf buffer(STDOUT_FILENO);
    std::ostream out(&buffer);
    // A process may be started without even its own name.
    const std::span<const char* const> all(arguments, static_cast<std::size_t>(argumentCount));
    return quillon::runCommandLine(all.empty() ? all : all.subspan(1), out, std::cerr);
}
