// A file that is written piece by piece, from its start or at its end. The C library's files are behind it:
// the streams of the C++ one would make the control for Windows a third larger.
#pragma once

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

namespace dravik {

class OutputFile {
  public:
    enum class Start { Empty, AtEnd };

    // The name is UTF-8. Raises Path not found (76), Permission denied (70), Disk full (61) or Path/File
    // access error (75), as all others do.
    OutputFile(const std::string& file, Start start);

    void write(std::string_view text);
    // Hands everything to the system.
    void close();

  private:
    struct Closer {
        void operator()(std::FILE* file) const noexcept { std::fclose(file); }
    };

    std::unique_ptr<std::FILE, Closer> file_;
};

}  // namespace dravik
