#pragma once

#include <sys/resource.h>

namespace quillon::test {

/// For the length of a scope no file can be opened: the process has no file descriptor left.
class NoFreeDescriptors {
public:
    NoFreeDescriptors() {
        getrlimit(RLIMIT_NOFILE, &before);
        rlimit none = before;
        none.rlim_cur = 0;
        setrlimit(RLIMIT_NOFILE, &none);
    }
    NoFreeDescriptors(const NoFreeDescriptors&) = delete;
    NoFreeDescriptors& operator=(const NoFreeDescriptors&) = delete;
    ~NoFreeDescriptors() { setrlimit(RLIMIT_NOFILE, &before); }

private:
    rlimit before{};
};

} // namespace quillon::test
