#include "engine/font/FontVersions.h"

#include <algorithm>
#include <chrono>
#include <map>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>

#include "base/AtomicFile.h"
#include "base/Failure.h"
#include "base/FileSystem.h"
#include "base/JobFolder.h"
#include "base/StableSort.h"
#include "engine/font/VersionFile.h"

namespace dravik::engine {
namespace {

using Kind = tool::FontVersion::Kind;

// The entries of one kind beyond the first `most`, which are the newest.
void removeBeyond(std::vector<VersionFile>& entries, Kind kind, std::size_t most) {
    std::size_t count = 0;
    std::erase_if(entries, [&](const VersionFile& entry) {
        if (entry.kind != kind || ++count <= most) return false;
        removeFile(entry.file);
        return true;
    });
}

std::string fontOf(const std::string& file) {
    const std::string name = nameOf(file);
    return name.ends_with(kFontExtension) ? name.substr(0, name.size() - kFontExtension.size()) : name;
}

FontVersions versionsBeside(const std::string& file) {
    return FontVersions(file.substr(0, file.size() - nameOf(file).size()));
}

// Whether the file holds samples or a training, or what cannot be read here, as a later version. A font is
// written several times while it is made; what it was then is not worth keeping.
bool holdsWork(const std::string& file) {
    try {
        const FontRecord font = readFont(file);
        return !font.samples.empty() || !font.training.empty();
    } catch (const Failure&) {
        return true;
    }
}

// A save or deletion that was ended in the middle leaves a version of what still is the font; so does
// restoring one.
bool isTheFontNow(const VersionFile& entry, const std::string& fontsFolder) {
    try {
        return haveSameContent(entry.file, fontsFolder + entry.font + std::string(kFontExtension));
    } catch (const Failure&) {
        return false;
    }
}

}  // namespace

FontVersions::FontVersions(std::string fontsFolder) : folder_(std::move(fontsFolder)) {}

std::string FontVersions::folderFor(const std::string& font) const {
    return folder_ + "History" + kSeparator + (font.empty() ? "" : font + kSeparator);
}

std::vector<tool::FontVersion> FontVersions::list(const std::string& font,
                                                  std::vector<std::string>* problems) const {
    std::vector<VersionFile> entries;
    for (const std::string& name : font.empty() ? versionEntries(folderFor("")) : std::vector{font}) {
        std::vector<VersionFile> some = versionFilesIn(folderFor(name), name);
        std::move(some.begin(), some.end(), std::back_inserter(entries));
    }
    stableSort(entries.begin(), entries.end(),
               [](const VersionFile& a, const VersionFile& b) { return a.identifier > b.identifier; });
    std::vector<tool::FontVersion> versions;
    for (const VersionFile& entry : entries) {
        if (isTheFontNow(entry, folder_)) continue;
        tool::FontVersion& version = versions.emplace_back();
        version.font = entry.font;
        version.identifier = entry.identifier;
        version.kind = entry.kind;
        version.when = entry.time;
        std::error_code error;
        if (entry.kind == Kind::Saved)
            if (const tool::FontTime written = fileTime(entry.file, error); !error) version.when = written;
        if (!entry.file.ends_with(kFontExtension)) continue;
        try {
            const FontRecord record = readFont(entry.file);
            version.samples = static_cast<int>(record.samples.size());
            version.trained = !record.training.empty();
        } catch (const Failure& failure) {
            if (problems) problems->push_back(failure.description());
        }
    }
    return versions;
}

std::string FontVersions::file(const tool::FontVersion& version) const {
    const auto named = [&](std::string_view extension) {
        return folderFor(version.font) + versionFileName(version.identifier, version.kind, extension);
    };
    std::string journal = named(kJournalExtension);
    return fileExists(journal) ? journal : named(kFontExtension);
}

FontRecord FontVersions::read(const tool::FontVersion& version) const {
    const std::string path = file(version);
    if (path.ends_with(kJournalExtension))
        throw fileFailure(RuntimeError::InvalidProcedureCall, "Cannot restore", path,
                          "these changes belong to a font that is not there");
    return readFont(path);
}

std::string FontVersions::freeFile(const std::string& font, Kind kind, std::string_view extension) const {
    VersionTime time = std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now());
    // Newer than all that there is, whatever became of the clock.
    if (const auto entries = versionFilesIn(folderFor(font), font); !entries.empty())
        time = std::max(time, entries.front().time + std::chrono::milliseconds(1));
    std::string file = folderFor(font) + versionFileName(versionIdentifier(time), kind, extension);
    if (entryKind(folderFor(font)) == EntryKind::None) {
        const bool isFirst = entryKind(folderFor("")) == EntryKind::None;
        makeFolderOf(file);
        if (isFirst) giveRights(folderFor(""), folder_);
        giveRights(folderFor(font), folder_);
    }
    return file;
}

std::string FontVersions::keepFile(const std::string& font, Kind kind) {
    const std::string source = linkedFile(folder_ + font + std::string(kFontExtension));
    if (kind == Kind::Saved) {
        const auto entries = versionFilesIn(folderFor(font), font);
        const auto last = std::find_if(entries.begin(), entries.end(),
                                       [](const VersionFile& entry) { return entry.kind == Kind::Saved; });
        if (last != entries.end() && haveSameContent(last->file, source)) return {};
    }
    std::string file = freeFile(font, kind, kFontExtension);
    keepSecond(source, file);
    flushFolderOf(file);
    prune(font);
    return file;
}

void FontVersions::keepSaved(const std::string& font) {
    keepFile(font, Kind::Saved);
}

std::string FontVersions::keepDeleted(const std::string& font) {
    return keepFile(font, Kind::Deleted);
}

void FontVersions::keepDiscarded(const std::string& font, std::span<const std::uint8_t> bytes) {
    const std::string file = freeFile(font, Kind::Discarded, kFontExtension);
    try {
        writeWholeFile(file, bytes, false);
    } catch (const Unflushed& doubt) {
        removeFile(file);
        throw fileFailure(static_cast<RuntimeError>(doubt.number()), "Cannot write", file,
                          "it may not reach the disk");
    }
    prune(font);
}

void FontVersions::keepJournal(const std::string& font, const std::string& journal) {
    FlushDoubt doubt;  // it is in one of both places
    doubt.allow([&] {
        moveFile(journal, freeFile(font, Kind::Discarded, kJournalExtension), IfTaken::Refuse, "Cannot keep");
    });
    prune(font);
}

void FontVersions::rename(const std::string& from, const std::string& to) {
    if (entryKind(folderFor(from)) == EntryKind::None) return;
    if (entryKind(folderFor(to)) == EntryKind::None) {
        moveFile(folderFor("") + from, folderFor("") + to, IfTaken::Refuse, "Cannot rename");
        return;
    }
    for (const std::string& name : versionEntries(folderFor(from)))
        moveFile(folderFor(from) + name, folderFor(to) + name, IfTaken::Refuse, "Cannot rename");
    removeFolder(folderFor("") + from);
}

void FontVersions::prune(const std::string& font) const {
    try {
        // Copies that were ended in the middle; whoever keeps a version of a font is the only one who changes
        // it.
        for (const std::string& name : versionEntries(folderFor(font)))
            if (name.ends_with(kUnfinished)) removeFile(folderFor(font) + name);
        std::vector<VersionFile> own = versionFilesIn(folderFor(font), font);
        removeBeyond(own, Kind::Saved, kSavedVersions);
        removeBeyond(own, Kind::Discarded, kDiscardedVersions);

        std::vector<VersionFile> deleted;
        std::map<std::string, std::vector<VersionFile>> all;
        for (const std::string& name : versionEntries(folderFor(""))) {
            all[name] = versionFilesIn(folderFor(name), name);
            for (const VersionFile& entry : all[name])
                if (entry.kind == Kind::Deleted) deleted.push_back(entry);
        }
        std::sort(deleted.begin(), deleted.end(),
                  [](const VersionFile& a, const VersionFile& b) { return a.identifier > b.identifier; });
        for (std::size_t i = kDeletedFonts; i < deleted.size(); ++i) {
            const std::string& name = deleted[i].font;
            removeFile(deleted[i].file);
            std::vector<VersionFile>& rest = all[name];
            std::erase_if(rest, [&](const VersionFile& entry) { return entry.file == deleted[i].file; });
            const bool isLast = std::none_of(rest.begin(), rest.end(), [](const VersionFile& entry) {
                return entry.kind == Kind::Deleted;
            });
            if (!isLast || fileExists(folder_ + name + std::string(kFontExtension))) continue;
            for (const VersionFile& entry : rest) removeFile(entry.file);
            removeFolder(folderFor("") + name);
        }
    } catch (const Failure&) {
        return;  // what is too much goes the next time
    }
}

void writeFont(const FontRecord& font, const std::string& file) {
    const std::vector<std::uint8_t> bytes = checkedBytes(font, file);
    std::error_code error;
    const bool isSame =
        fileSize(file, error) == bytes.size() && !error && readWholeFile(file, bytes.size()) == bytes;
    const bool replacesWork = !isSame && fileExists(file) && holdsWork(file);
    if (replacesWork) {
        try {
            versionsBeside(file).keepSaved(fontOf(file));
        } catch (const Failure&) {
            // The backup still keeps it; what is new must not be lost for what is old.
        }
    }
    writeFontBytes(bytes, file, replacesWork || (!isSame && !fileExists(backupOf(file))));
}

void retireFont(const std::string& file) {
    if (!fileExists(file)) return retireFile(file, true);
    const std::string kept = versionsBeside(file).keepDeleted(fontOf(file));
    try {
        retireFile(file, !fileExists(backupOf(file)) || holdsWork(file));
    } catch (const Unflushed&) {
        throw;
    } catch (...) {
        removeFile(kept);
        throw;
    }
}

void renameFont(const std::string& from, const std::string& to) {
    FlushDoubt doubt;
    doubt.allow([&] { renameFile(from, to); });
    try {
        versionsBeside(from).rename(fontOf(from), fontOf(to));
    } catch (const Failure&) {
        // They stay under the old name, where they are found too.
    }
    doubt.tell();
}

}  // namespace dravik::engine
