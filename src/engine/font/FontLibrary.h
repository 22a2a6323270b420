// The fonts in the jobs folder: their names, files and order, and which one is selected.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/JobFolder.h"

namespace dravik::engine {

class FontLibrary {
  public:
    // With `remembers` the selected font's name is kept in the jobs folder from one start to the next.
    FontLibrary(JobFolder folder, bool remembers);

    // Names in alphabetical order without regard to case. The step's datum is a 16-bit mask over this list,
    // so that a selected font that it could not reach is listed first. None when there is no jobs folder yet;
    // raises Path/File access error (75) for a jobs folder that is none or cannot be looked into.
    std::vector<std::string> names() const;

    // A name as its font is spelt. Names that differ only in case are one font: without a font of just that
    // name the one in another case is meant, and the name itself is given when there is neither. Raises as
    // names() and file() do.
    std::string spelling(const std::string& name) const;
    // The file of a font spelt so. Raises Bad file name (52) for a name that cannot be one of a file.
    std::string file(const std::string& name) const;
    // The same; raises File not found (53) when there is no such font.
    std::string existingFile(const std::string& name) const;
    // The file of a font to come; raises File already exists (58) when there is one of that name in any case,
    // unless that is the font `renamed`.
    std::string freeFile(const std::string& name, const std::string& renamed = {}) const;

    const std::optional<std::string>& selected() const noexcept { return selected_; }
    // Remembering it is an extra: failing to write it down is no failure.
    void select(std::optional<std::string> name);
    // The mask of the selected font in names(), 0 for none.
    double selectionMask() const;

  private:
    std::string memory() const;

    JobFolder folder_;
    bool remembers_;
    std::optional<std::string> selected_;
};

}  // namespace dravik::engine
