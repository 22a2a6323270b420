// A disk that is full, by way of the limit of how large files may grow.
#pragma once

#include <signal.h>
#include <sys/resource.h>

namespace dravik::test {

// Files may not grow beyond `most` bytes while this lives, as on a full disk.
class FullDisk {
  public:
    explicit FullDisk(rlim_t most) {
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit limit = {most, before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
        handler_ = signal(SIGXFSZ, SIG_IGN);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;
    ~FullDisk() {
        setrlimit(RLIMIT_FSIZE, &before_);
        signal(SIGXFSZ, handler_);
    }

  private:
    rlimit before_{};
    void (*handler_)(int) = nullptr;
};

}  // namespace dravik::test
