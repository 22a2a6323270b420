// A file that is written piece by piece, from its start or at its end. The C library's files are behind it:
// the streams of the C++ one would make the control for Windows a third larger.
#pragma once

#include <string>
#include <string_view>

#include "base/FileSystem.h"

namespace dravik {

class OutputFile {
  public:
    enum class Start { Empty, AtEnd };

    // The name is UTF-8. All raise the Failure of numberOfErrno: Path not found (76), Permission denied (70),
    // Disk full (61) and so on.
    OutputFile(const std::string& file, Start start);

    void write(std::string_view text);
    // Hands everything to the system.
    void close();

  private:
    FilePtr file_;
};

}  // namespace dravik
