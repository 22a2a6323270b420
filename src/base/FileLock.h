// The right to change something, held by one object on one machine at a time and given up at the latest when
// its process ends, however that ends. Where it is held a file says by whom.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace dravik {

class FileLock {
  public:
    // Takes the lock that the file of that name (UTF-8) stands for, making the file and its folder; nothing
    // when another object holds it, be it in this process or in another. Raises Failure that names the file
    // when it cannot be made or the file system has no locks.
    static std::optional<FileLock> take(const std::string& file);
    // Who holds it: "process 1234 on HOST since 2026-11-22 07:10:03"; "another program" when that cannot be
    // read.
    static std::string holder(const std::string& file);

    FileLock(FileLock&&) noexcept = default;
    FileLock& operator=(FileLock&&) noexcept = default;
    // Gives it up and takes the file away.
    ~FileLock() = default;

  private:
    explicit FileLock(std::shared_ptr<void> held) : held_(std::move(held)) {}
    std::shared_ptr<void> held_;  // what the system gave
};

}  // namespace dravik
