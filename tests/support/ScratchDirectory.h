#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace quillon::support {

/// A new empty directory under the system's temporary directory, removed with all its content at the end.
class ScratchDirectory {
public:
    /// Makes the directory; throws when that is not possible.
    ScratchDirectory();
    ScratchDirectory(const ScratchDirectory&) = delete;
    ScratchDirectory& operator=(const ScratchDirectory&) = delete;
    ~ScratchDirectory();

    /// The absolute path of the directory.
    const std::filesystem::path& path() const { return path_; }

    /// The path of `name` inside the directory, as text.
    std::string operator/(std::string_view name) const { return (path_ / name).string(); }

private:
    std::filesystem::path path_;
};

/// All bytes of a file; throws when it cannot be read.
std::string readBytes(const std::filesystem::path& path);

/// Makes the file hold exactly `bytes`; throws when it cannot be written.
void writeBytes(const std::filesystem::path& path, std::string_view bytes);

} // namespace quillon::support
