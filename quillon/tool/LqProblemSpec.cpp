#include "quillon/tool/LqProblemSpec.h"

#include "quillon/files/FileAccess.h"
#include "quillon/files/FileTimes.h"

#include <algorithm>

namespace quillon {

namespace {

bool equalEntries(const LqProblemSpec& a, const LqProblemSpec& b) {
    return std::ranges::all_of(specPaths, [&](const LqSpecPath& entry) {
        return a.*entry.path == b.*entry.path && a.*entry.time == b.*entry.time;
    });
}

} // namespace

LqProblemSpec::LqProblemSpec(const LqProblemSpec& other) : matchBy_(other.matchBy_) {
    for (const LqSpecPath& entry : specPaths) {
        this->*entry.path = other.*entry.path;
        this->*entry.time = other.*entry.time;
    }
}

bool LqProblemSpec::isBlank() const {
    return std::ranges::all_of(specPaths,
                               [this](const LqSpecPath& entry) { return (this->*entry.path).isNull(); });
}

void LqProblemSpec::refreshTimes() {
    for (const LqSpecPath& entry : specPaths) {
        if (!(this->*entry.path).isNull()) {
            refreshTime(*this, entry);
        }
    }
}

bool operator==(const LqProblemSpec& a, const LqProblemSpec& b) {
    return equalEntries(a, b) && a.matchBy() == b.matchBy() && a.userValues == b.userValues;
}

void refreshTime(LqProblemSpec& spec, const LqSpecPath& entry) {
    const LmStr& path = spec.*entry.path;
    const bool exists = fileExists(path, entry.mayBeCompressed);
    spec.*entry.time = exists ? fileModifiedTime(path, entry.mayBeCompressed) : 0;
}

} // namespace quillon
