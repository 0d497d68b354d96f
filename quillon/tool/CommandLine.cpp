#include "quillon/tool/CommandLine.h"

#include "quillon/core/LmStatus.h"
#include "quillon/tool/Info.h"
#include "quillon/tool/Version.h"

#include <ostream>
#include <string_view>

namespace quillon {

namespace {

int refuse(std::ostream& messages, std::string_view message) {
    messages << message;
    return 1;
}

int printVersion(std::ostream& out, std::ostream& messages) {
    out << "quillon " << version << "\n"
        << "Copyright (c) the quillon authors.\n";
    out.flush();
    return out.fail() ? refuse(messages, "Unable to write the version.\n") : 0;
}

int info(const char* path, std::ostream& out, std::ostream& messages) {
    runInfo(path, out, messages);
    out.flush();
    const int result = currentStatus().printStatus(messages);
    // A report that was cut short must never look like a success.
    return out.fail() ? refuse(messages, "Unable to write the report.\n") : result;
}

} // namespace

int runCommandLine(std::span<const char* const> arguments, std::ostream& out, std::ostream& messages) {
    if (arguments.empty()) {
        return refuse(messages, "Usage: quillon info <.zvx>\n");
    }
    const std::string_view operation = arguments.front();
    if (arguments.size() == 1 && operation == "-v") {
        return printVersion(out, messages);
    }
    if (arguments.size() == 1 && operation == "-changes") {
        return 0;
    }
    if (operation != "info") {
        messages << "Unknown operation: " << operation << "\n";
        return 1;
    }
    if (arguments.size() == 1) {
        return refuse(messages, "No value given for <.zvx>\n");
    }
    if (arguments.size() > 2) {
        return refuse(messages, "Too many parameters given.\n");
    }
    return info(arguments[1], out, messages);
}

} // namespace quillon
