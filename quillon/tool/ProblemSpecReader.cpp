#include "quillon/tool/ProblemSpecReader.h"

#include "quillon/core/DataHeader.h"
#include "quillon/core/TagReader.h"
#include "quillon/files/CompressedNames.h"
#include "quillon/files/LmCompIFStream.h"
#include "quillon/files/VariableExpansion.h"
#include "quillon/tool/LqProblemSpec.h"

#include <cstring>

namespace quillon {

namespace {

/// The items of one file, from behind its header to its end.
class SpecItemReader {
public:
    SpecItemReader(LqProblemSpec& target, LmStatus& status) : target(target), status(status) {}

    void read(std::istream& input) {
        TaggedItems items(input, status);
        while (items.next()) {
            if (!items.isSimple()) {
                status.pushErrorf("Multi-line user values are not supported.");
                return;
            }
            if (!readItem(items.tag(), items.value())) {
                return;
            }
        }
        if (!items.failed()) {
            checkMatch();
        }
    }

private:
    bool readItem(const LmStr& tag, const LmStr& value) {
        const LmStr line = tag + ": " + value;
        for (const LqSpecPath& entry : specPaths) {
            if (line.startsWith(entry.keyword) == 0) {
                return readPath(entry, textBehind(line, entry.keyword));
            }
        }
        if (line.startsWith(unscaledModelsKeyword) == 0) {
            return readPath(specPaths[unscaledBodyDefRow], textBehind(line, unscaledModelsKeyword));
        }
        if (line.startsWith(matchKeyword) == 0) {
            return readMatch(textBehind(line, matchKeyword));
        }
        target.userValues[tag] = value;
        return true;
    }

    static LmStr textBehind(const LmStr& line, const char* keyword) {
        LmStr text = line.skip(static_cast<int>(std::strlen(keyword)));
        text.trimLeft();
        return text;
    }

    bool readPath(const LqSpecPath& entry, LmStr text) {
        LmStr& path = target.*entry.path;
        if (!path.isNull()) {
            status.pushErrorf("There can only be one %s.", entry.name);
            return false;
        }
        expandVariables(text, true);
        path = text;
        refreshTime(target, entry);
        return true;
    }

    bool readMatch(const LmStr& text) {
        if (matchSeen) {
            status.pushErrorf("Match: identifier found twice.");
            return false;
        }
        if (text.startsWith(matchBodyID) == 0) {
            target.setMatchBy(LqMatchBy::BodyID);
        } else if (text.startsWith(matchBodyName) == 0) {
            target.setMatchBy(LqMatchBy::BodyName);
        } else {
            status.pushErrorf("Invalid identifier after Match: encountered.");
            return false;
        }
        matchSeen = true;
        return true;
    }

    void checkMatch() {
        const bool hasProblemDefinition = !target.problemDefinition.isNull();
        if (hasProblemDefinition && !matchSeen) {
            status.pushErrorf("There MUST ba a Match: identifier if there is a problem definition.");
        } else if (!hasProblemDefinition && matchSeen) {
            status.pushErrorf(
                "There MUST be a problem definition in order for there to be a Match: identifier.");
        }
    }

    static constexpr int unscaledBodyDefRow = 2;
    static_assert(specPaths[unscaledBodyDefRow].path == &LqProblemSpec::unscaledBodyDef);

    LqProblemSpec& target;
    LmStatus& status;
    bool matchSeen = false;
};

} // namespace

void readProblemSpec(LqProblemSpec& target, const LmStr& path, LmStatus& status) {
    if (!compressedFileReadable(path, status)) {
        return;
    }
    LmCompIFStream input;
    input.open(path, status);
    if (input.fail()) {
        status.pushErrorf("Unable to open '%s'.", path.c_str());
        return;
    }
    readProblemSpecStream(target, input, status);
}

void readProblemSpecStream(LqProblemSpec& target, std::istream& input, LmStatus& status) {
    for (const LqSpecPath& entry : specPaths) {
        (target.*entry.path).reset();
        target.*entry.time = 0;
    }
    const bool statusWasEmpty = !status.hasEntries();
    if (!readFormatHeader(input, DataFileFormat::ProblemSpec, status) || !statusWasEmpty) {
        status.pushErrorf("File is not a valid problem specification file.");
        return;
    }
    SpecItemReader(target, status).read(input);
}

} // namespace quillon
