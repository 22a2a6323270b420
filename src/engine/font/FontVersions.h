// Earlier versions of the fonts in a fonts folder, in its folder History: what saves replaced, what was
// deleted, and changes that were dropped. A font's own file is whole at any instant, whatever becomes of the
// versions.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "engine/font/FontFile.h"
#include "tool/FontHistory.h"

namespace dravik::engine {

// Of each font the last saved versions and the last discarded changes are kept, of all fonts together the
// last deleted ones. What a deleted font had been before goes with it.
constexpr std::size_t kSavedVersions = 5;
constexpr std::size_t kDiscardedVersions = 5;
constexpr std::size_t kDeletedFonts = 20;

class FontVersions {
  public:
    // The fonts folder; nothing is made before there is something to keep.
    explicit FontVersions(std::string fontsFolder);

    // What is kept of a font, newest first; of all fonts for "". `when` is the time of the save for a saved
    // version, else that of the deletion or of dropping the changes. One that cannot be read is there,
    // without samples. Raises Path/File access error (75) when History cannot be looked into.
    std::vector<tool::FontVersion> list(const std::string& font,
                                        std::vector<std::string>* problems = nullptr) const;
    // The font that it was. Raises File not found (53), as decodeFont() does, and Invalid procedure call (5)
    // for changes that were kept as they came.
    FontRecord read(const tool::FontVersion& version) const;
    // Its file.
    std::string file(const tool::FontVersion& version) const;

    // Each keeps one more and lets the oldest go; all raise Failure that names the file, and then keep
    // nothing. The font's file as it is, which is about to be replaced or deleted; one that is the same as
    // the last that was kept is not kept twice.
    void keepSaved(const std::string& font);
    // Gives the file that it is kept in.
    std::string keepDeleted(const std::string& font);
    // Changes that were dropped: the bytes of a font file that has them.
    void keepDiscarded(const std::string& font, std::span<const std::uint8_t> bytes);
    // The same as a file of another kind, which is moved here.
    void keepJournal(const std::string& font, const std::string& journal);

    // What was kept of a font goes along with its new name.
    void rename(const std::string& from, const std::string& to);

  private:
    std::string folderFor(const std::string& font) const;
    std::string keepFile(const std::string& font, tool::FontVersion::Kind kind);
    std::string freeFile(const std::string& font, tool::FontVersion::Kind kind,
                         std::string_view extension) const;
    void prune(const std::string& font) const;

    std::string folder_;
};

// Writes a font to its file, which may be there already. What was in the file is kept as a version, and as
// its backup unless it has neither samples nor training; a font that is the same as its file changes neither.
// What was written is read back before it takes the file's place. Raises as exportFont() does; the font is
// then as it was.
void writeFont(const FontRecord& font, const std::string& file);

// Deletes a font: it stays as a version, and as its backup as above. Raises as retireFile() does.
void retireFont(const std::string& file);

// Gives a font another name, and its versions with it; raises as renameFile() does.
void renameFont(const std::string& from, const std::string& to);

}  // namespace dravik::engine
