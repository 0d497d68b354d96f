#include "quillon/problem/MappingText.h"

#include "quillon/core/LmStatus.h"
#include "quillon/core/NumberPrinting.h"
#include "quillon/core/StreamExtraction.h"

#include <algorithm>
#include <chrono>
#include <memory>
#include <ostream>
#include <thread>

namespace quillon {

namespace {

// The columns of the text form.
constexpr int idWidth = 3;
constexpr int constantWidth = 3;

/// Drops characters up to and including the next newline. Deliberately goes on asking at the end of the
/// stream: every line of a well-formed file is ended, and callers depend on a newline having been taken. Only
/// a device that fails, which will not get better, ends the asking.
bool skipThroughNewline(std::istream& input) {
    constexpr std::chrono::milliseconds pauseAtEnd(10);
    ReadArea area(*input.rdbuf());
    char c = '\0';
    while (c != '\n') {
        const char* const newline = std::find(area.begin(), area.end(), '\n');
        // The last character of what waits is left to the extraction, which sees to the stream's state.
        area.take(static_cast<std::size_t>(newline - area.begin()));
        if (!extractChar(input, c)) {
            if (input.bad()) {
                pushErrorf("Error reading file.");
                return false;
            }
            std::this_thread::sleep_for(pauseAtEnd);
        }
    }
    return true;
}

bool reportInvalidTerm(std::int32_t sysVar, std::int32_t highestSysVar) {
    if (sysVar > highestSysVar) {
        pushErrorf("Invalid system variable (%d) in linear combination term.  The highest variable is %d.",
                   sysVar, highestSysVar);
    } else {
        pushErrorf("Invalid system variable (%d) in linear combination term.", sysVar);
    }
    return false;
}

bool readTerms(LqBasicVarMapping<float>& mapping, std::istream& input, std::int32_t highestSysVar) {
    // The lowest id has one term more than fits into 32 bits with its sign turned.
    const std::int64_t termCount = -std::int64_t{mapping.id} - 1;
    for (std::int64_t k = 1; k <= termCount; ++k) {
        auto term = std::make_unique<LqLinearTerm<float>>();
        if (!readLinearTerm(*term, input, highestSysVar)) {
            pushErrorf("Unable to read linear combination term %lld.", static_cast<long long>(k));
            return false;
        }
        mapping.terms.append(term.release());
    }
    return true;
}

} // namespace

bool readMapping(LqBasicVarMapping<float>& mapping, std::istream& input, std::int32_t highestSysVar) {
    mapping = LqBasicVarMapping<float>();
    if (!extractInt(input, mapping.id)) {
        pushErrorf("Unable to read system variable id for mapping.");
        return false;
    }
    if (mapping.id > highestSysVar) {
        pushErrorf("Invalid system variable (%d) specified for transformation.  "
                   "The highest system variable is %d.",
                   mapping.id, highestSysVar);
        return false;
    }
    if (mapping.id < 0) {
        if (!extractFloat(input, mapping.constant)) {
            pushErrorf("Unable to constant for mapping.");
            return false;
        }
        if (!readTerms(mapping, input, highestSysVar)) {
            return false;
        }
    }
    return skipThroughNewline(input) && !errorStands();
}

bool readLinearTerm(LqLinearTerm<float>& term, std::istream& input, std::int32_t highestSysVar) {
    if (!extractInt(input, term.sysVar)) {
        pushErrorf("Unable to read system variable id for coefficient.");
        return false;
    }
    if (term.sysVar < 1 || term.sysVar > highestSysVar) {
        return reportInvalidTerm(term.sysVar, highestSysVar);
    }
    if (!extractFloat(input, term.coefficient)) {
        pushErrorf("Unable to read coefficient.");
        return false;
    }
    return !errorStands();
}

void writeMapping(const LqBasicVarMapping<float>& mapping, std::ostream& output) {
    output.put(' ');
    output.width(idWidth);
    printInt(output, mapping.id);
    if (mapping.id >= 0) {
        return;
    }
    output << "\n " << std::flush;
    output.width(constantWidth);
    printReal(output, mapping.constant);
    for (const LqLinearTerm<float>* term : mapping.termList()) {
        output << "\n    " << std::flush;
        printInt(output, term->sysVar);
        output << "   ";
        printReal(output, term->coefficient);
    }
}

} // namespace quillon
