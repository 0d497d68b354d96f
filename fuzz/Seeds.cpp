#include "fuzz/FuzzTargets.h"
#include "fuzz/InputParts.h"
#include "tests/support/RandomSource.h"
#include "tests/support/ScratchDirectory.h"

#include <algorithm>
#include <filesystem>
#include <map>

namespace quillon::fuzz {

namespace {

namespace fs = std::filesystem;

constexpr std::uintmax_t longestFile = 20000;
constexpr int madeInputs = 40;

/// The texts of one directory's files by their extensions.
using Files = std::multimap<std::string, std::string>;

/// The directories below the examples and the whole runs of the tests.
std::vector<Files> directories() {
    std::map<fs::path, Files> found;
    for (const char* const root : {"examples", "tests/cli"}) {
        for (const fs::directory_entry& entry :
             fs::recursive_directory_iterator(fs::path(QUILLON_SOURCE_DIR) / root)) {
            if (entry.is_regular_file() && !entry.is_symlink() && entry.file_size() <= longestFile) {
                found[entry.path().parent_path()].emplace(entry.path().extension(),
                                                          support::readBytes(entry.path()));
            }
        }
    }
    std::vector<Files> all;
    for (auto& [path, files] : found) {
        all.push_back(std::move(files));
    }
    return all;
}

/// One file of each of these extensions, each but the last the first one of its kind: every combination with
/// the last. A directory without one of them gives none.
void addJoined(const Files& files, const std::vector<std::string>& extensions,
               std::vector<std::string>& seeds) {
    std::string front;
    for (std::size_t i = 0; i + 1 < extensions.size(); ++i) {
        const auto first = files.find(extensions[i]);
        if (first == files.end()) {
            return;
        }
        front += lineEnded(first->second) + std::string(partSeparator);
    }
    const auto [begin, end] = files.equal_range(extensions.back());
    for (auto last = begin; last != end; ++last) {
        seeds.push_back(front + last->second);
    }
}

const std::map<std::string_view, std::vector<std::vector<std::string>>>& extensionsOfTargets() {
    static const std::map<std::string_view, std::vector<std::vector<std::string>>> extensions = {
        {"problem_spec", {{".zvx"}}},
        {"problem_def", {{".probdef"}}},
        {"model", {{".probdef", ".model"}}},
        {"limits", {{".limits"}}},
        {"scale_def", {{".probdef", ".scaledef"}}},
        {"measured_data", {{".measured"}}},
        {"family", {{".probdef", ".model", ".limits", ".scaledef"}}},
        {"tags", {{".limits"}, {".scaledef"}}},
    };
    return extensions;
}

} // namespace

std::vector<std::string> seedsOf(const FuzzTarget& target) {
    std::vector<std::string> seeds;
    const auto wanted = extensionsOfTargets().find(target.name);
    if (wanted != extensionsOfTargets().end()) {
        for (const Files& files : directories()) {
            for (const std::vector<std::string>& extensions : wanted->second) {
                addJoined(files, extensions, seeds);
            }
        }
    }
    test::RandomSource random(1);
    for (int i = 0; i < madeInputs && target.makeInput != nullptr; ++i) {
        seeds.push_back(target.makeInput(random));
    }
    if (seeds.empty()) {
        seeds.push_back("A=/data/\nB=$A/b\n%%%%\n$A/x $B/y $C/z\n");
        seeds.push_back("\x14\x08one two\tthree\n\nfour five six seven eight nine ten\n");
        seeds.push_back(random.text(400, test::letters::line));
    }
    std::sort(seeds.begin(), seeds.end());
    seeds.erase(std::unique(seeds.begin(), seeds.end()), seeds.end());
    return seeds;
}

} // namespace quillon::fuzz
