// A file that grows by whole records: what append() has taken is with the system when it returns, so that it
// outlives this process, and after flush() it is on the disk.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace dravik {

class AppendFile {
  public:
    // Opens the file, or makes it and its folder, to go on behind its first `size` bytes; what stands there,
    // such as half a record, is cut off. A new file takes over mode and group of the file `rightsOf`, if
    // there is one. Names are UTF-8. Raises Failure that names the file: Device I/O error (57) when it is
    // shorter than that, Disk full (61), Permission denied (70), Path/File access error (75), Path not found
    // (76).
    explicit AppendFile(const std::string& file, std::uint64_t size = 0, const std::string& rightsOf = {});
    AppendFile(AppendFile&&) noexcept;
    AppendFile& operator=(AppendFile&&) noexcept;
    ~AppendFile();

    // All of it or nothing: on a failure, raised as above, the file is as long as it was.
    void append(std::span<const std::uint8_t> bytes);
    // Takes away what was appended behind the first `size` bytes. When that fails, raised as above, it is
    // taken away before something is appended once more.
    void cutBack(std::uint64_t size);
    // Brings what was appended to the disk. May run on one other thread than append(), which it does not
    // block. Once it has failed it fails always: what had reached the disk by then is not known.
    void flush();

    // In bytes.
    std::uint64_t size() const noexcept;

  private:
    struct Open;
    std::unique_ptr<Open> open_;
};

}  // namespace dravik
