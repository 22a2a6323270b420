// What an AppendFile asks of the system: one open file, cut, written and flushed. Each answers the system's
// error, 0 for none.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace dravik {

class GrowingFile {
  public:
    // Opens or makes it; a new one gets the rights of the file `rightsOf`, if there is one. Raises as
    // AppendFile does.
    static std::unique_ptr<GrowingFile> open(const std::string& file, const std::string& rightsOf);

    GrowingFile() = default;
    GrowingFile(const GrowingFile&) = delete;
    GrowingFile& operator=(const GrowingFile&) = delete;
    virtual ~GrowingFile() = default;

    virtual std::uint64_t size() = 0;
    virtual int cut(std::uint64_t size) = 0;
    virtual int write(std::span<const std::uint8_t> bytes, std::uint64_t place) = 0;
    // May run on one other thread than the others.
    virtual int flush() = 0;
};

}  // namespace dravik
