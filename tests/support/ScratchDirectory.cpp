#include "tests/support/ScratchDirectory.h"

#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <system_error>

namespace quillon::support {

namespace fs = std::filesystem;

ScratchDirectory::ScratchDirectory() {
    std::string name = (fs::temp_directory_path() / "quillon-test-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) {
        throw std::system_error(errno, std::generic_category(), name);
    }
    path_ = name;
}

ScratchDirectory::~ScratchDirectory() {
    std::error_code ignored;
    // A test may have taken the permissions away that the removal needs.
    for (fs::recursive_directory_iterator entry(path_, ignored), end; !ignored && entry != end;
         entry.increment(ignored)) {
        if (entry->is_directory(ignored) && !entry->is_symlink(ignored)) {
            fs::permissions(entry->path(), fs::perms::owner_all, fs::perm_options::add, ignored);
        }
    }
    fs::remove_all(path_, ignored);
}

std::string readBytes(const fs::path& path) {
    std::ifstream input(path, std::ios::binary);
    if (!input) {
        throw std::system_error(errno, std::generic_category(), path.string());
    }
    return {std::istreambuf_iterator<char>(input), std::istreambuf_iterator<char>()};
}

void writeBytes(const fs::path& path, std::string_view bytes) {
    std::ofstream output(path, std::ios::binary);
    output.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    output.close();
    if (!output) {
        throw std::system_error(errno, std::generic_category(), path.string());
    }
}

} // namespace quillon::support
