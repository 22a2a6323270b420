// Where the system keeps its files: one jobs folder with the fonts, images that are not files of the
// operator's own, the trace log and the diagnostic dump. On
// Windows it is fixed, "C:\Tamlux\Jobs\"; elsewhere the same tree lies under a folder that the program
// chooses.
#pragma once

#include <string>
#include <string_view>

namespace dravik {

constexpr std::string_view kFontExtension = ".nnd";

class JobFolder {
  public:
    // The fixed folder on Windows; elsewhere $XDG_DATA_HOME/tamlux/Jobs, or ~/.local/share/tamlux/Jobs.
    JobFolder();
    // Another folder, UTF-8; a trailing separator is optional. Nothing is created.
    explicit JobFolder(std::string folder);

    // All with a trailing separator, as shown to the operator.
    const std::string& folder() const noexcept { return folder_; }
    std::string fontsFolder() const;
    std::string imagesFolder() const;

    std::string fontFile(const std::string& fontName) const;
    std::string labelsFile() const;
    std::string traceLog() const;
    std::string uncommittedDump() const;

  private:
    std::string folder_;
};

}  // namespace dravik
