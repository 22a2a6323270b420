#include "engine/font/FontVersions.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <map>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>

#include "base/AtomicFile.h"
#include "base/Failure.h"
#include "base/FileSystem.h"
#include "base/StableSort.h"

namespace dravik::engine {
namespace {

using Kind = tool::FontVersion::Kind;
using Milliseconds = std::chrono::sys_time<std::chrono::milliseconds>;

constexpr std::string_view kExtension = ".nnd";
constexpr std::string_view kJournalExtension = ".journal";

constexpr std::string_view kWords[] = {".saved", ".deleted", ".discarded"};  // by kind

// "20260331-140509-007", of universal time.
std::string identifierOf(Milliseconds time) {
    const auto day = std::chrono::floor<std::chrono::days>(time);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss clock(time - day);
    std::array<char, 64> text{};
    const int size = std::snprintf(
        text.data(), text.size(), "%04d%02u%02u-%02d%02d%02d-%03d", static_cast<int>(date.year()),
        static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
        static_cast<int>(clock.hours().count()), static_cast<int>(clock.minutes().count()),
        static_cast<int>(clock.seconds().count()), static_cast<int>(clock.subseconds().count()));
    return {text.data(), static_cast<std::size_t>(size)};
}

std::optional<Milliseconds> timeOf(std::string_view identifier) {
    constexpr std::size_t kPlaces[][2] = {{0, 4}, {4, 2}, {6, 2}, {9, 2}, {11, 2}, {13, 2}, {16, 3}};
    std::array<int, 7> values{};
    if (identifier.size() != 19) return std::nullopt;
    for (std::size_t i = 0; i < values.size(); ++i) {
        const char* begin = identifier.data() + kPlaces[i][0];
        const char* end = begin + kPlaces[i][1];
        if (std::from_chars(begin, end, values[i]).ptr != end) return std::nullopt;
    }
    const std::chrono::year_month_day date{std::chrono::year(values[0]),
                                           std::chrono::month(static_cast<unsigned>(values[1])),
                                           std::chrono::day(static_cast<unsigned>(values[2]))};
    if (!date.ok()) return std::nullopt;
    const Milliseconds time = std::chrono::sys_days(date) + std::chrono::hours(values[3]) +
                              std::chrono::minutes(values[4]) + std::chrono::seconds(values[5]) +
                              std::chrono::milliseconds(values[6]);
    return identifierOf(time) == identifier ? std::optional(time) : std::nullopt;
}

// A file of History, as its name tells.
struct Entry {
    std::string font;
    std::string identifier;
    Milliseconds time;
    Kind kind = Kind::Saved;
    std::string file;
};

std::optional<Entry> entryOf(const std::string& folder, const std::string& font, const std::string& name) {
    const std::size_t point = name.find('.');
    const std::string_view ending = std::string_view(name).substr(std::min(point, name.size()));
    const auto time = timeOf(std::string_view(name).substr(0, point));
    if (!time) return std::nullopt;
    for (const Kind kind : {Kind::Saved, Kind::Deleted, Kind::Discarded}) {
        const std::string_view word = kWords[static_cast<std::size_t>(kind)];
        if (!ending.starts_with(word)) continue;
        const std::string_view extension = ending.substr(word.size());
        if (extension == kExtension || (kind == Kind::Discarded && extension == kJournalExtension))
            return Entry{font, name.substr(0, point), *time, kind, folder + name};
    }
    return std::nullopt;
}

// What is in a folder; nothing where there is none. Raises Failure that names it.
std::vector<std::string> entriesOf(const std::string& folder) {
    if (isStillToCome(folder)) return {};
    std::error_code error;
    std::vector<std::string> names = namesIn(folder, error);
    if (error)
        throw fileFailure(RuntimeError::PathFileAccessError, "Cannot list the versions in", folder,
                          error.message());
    return names;
}

// Newest first.
std::vector<Entry> entriesOf(const std::string& folder, const std::string& font) {
    std::vector<Entry> entries;
    for (const std::string& name : entriesOf(folder))
        if (auto entry = entryOf(folder, font, name)) entries.push_back(std::move(*entry));
    std::sort(entries.begin(), entries.end(),
              [](const Entry& a, const Entry& b) { return a.identifier > b.identifier; });
    return entries;
}

// The entries of one kind beyond the first `most`, which are the newest.
void removeBeyond(std::vector<Entry>& entries, Kind kind, std::size_t most) {
    std::size_t count = 0;
    std::erase_if(entries, [&](const Entry& entry) {
        if (entry.kind != kind || ++count <= most) return false;
        removeFile(entry.file);
        return true;
    });
}

std::string fontOf(const std::string& file) {
    const std::string name = nameOf(file);
    return name.ends_with(kExtension) ? name.substr(0, name.size() - kExtension.size()) : name;
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
bool isTheFontNow(const Entry& entry, const std::string& fontsFolder) {
    try {
        return haveSameContent(entry.file, fontsFolder + entry.font + std::string(kExtension));
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
    std::vector<Entry> entries;
    for (const std::string& name : font.empty() ? entriesOf(folderFor("")) : std::vector{font}) {
        std::vector<Entry> some = entriesOf(folderFor(name), name);
        std::move(some.begin(), some.end(), std::back_inserter(entries));
    }
    stableSort(entries.begin(), entries.end(),
               [](const Entry& a, const Entry& b) { return a.identifier > b.identifier; });
    std::vector<tool::FontVersion> versions;
    for (const Entry& entry : entries) {
        if (isTheFontNow(entry, folder_)) continue;
        tool::FontVersion& version = versions.emplace_back();
        version.font = entry.font;
        version.identifier = entry.identifier;
        version.kind = entry.kind;
        version.when = entry.time;
        std::error_code error;
        if (entry.kind == Kind::Saved)
            if (const tool::FontTime written = fileTime(entry.file, error); !error) version.when = written;
        if (!entry.file.ends_with(kExtension)) continue;
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
    const std::string start = folderFor(version.font) + version.identifier +
                              std::string(kWords[static_cast<std::size_t>(version.kind)]);
    std::string journal = start + std::string(kJournalExtension);
    return fileExists(journal) ? journal : start + std::string(kExtension);
}

FontRecord FontVersions::read(const tool::FontVersion& version) const {
    const std::string path = file(version);
    if (path.ends_with(kJournalExtension))
        throw fileFailure(RuntimeError::InvalidProcedureCall, "Cannot restore", path,
                          "these changes belong to a font that is not there");
    return readFont(path);
}

std::string FontVersions::freeFile(const std::string& font, Kind kind, std::string_view extension) const {
    Milliseconds time = std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now());
    // Newer than all that there is, whatever became of the clock.
    if (const auto entries = entriesOf(folderFor(font), font); !entries.empty())
        time = std::max(time, entries.front().time + std::chrono::milliseconds(1));
    std::string file = folderFor(font) + identifierOf(time);
    file.append(kWords[static_cast<std::size_t>(kind)]).append(extension);
    if (entryKind(folderFor(font)) == EntryKind::None) {
        const bool isFirst = entryKind(folderFor("")) == EntryKind::None;
        makeFolderOf(file);
        if (isFirst) giveRights(folderFor(""), folder_);
        giveRights(folderFor(font), folder_);
    }
    return file;
}

std::string FontVersions::keepFile(const std::string& font, Kind kind) {
    const std::string source = linkedFile(folder_ + font + std::string(kExtension));
    if (kind == Kind::Saved) {
        const auto entries = entriesOf(folderFor(font), font);
        const auto last = std::find_if(entries.begin(), entries.end(),
                                       [](const Entry& entry) { return entry.kind == Kind::Saved; });
        if (last != entries.end() && haveSameContent(last->file, source)) return {};
    }
    std::string file = freeFile(font, kind, kExtension);
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
    const std::string file = freeFile(font, Kind::Discarded, kExtension);
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
    for (const std::string& name : entriesOf(folderFor(from)))
        moveFile(folderFor(from) + name, folderFor(to) + name, IfTaken::Refuse, "Cannot rename");
    removeFolder(folderFor("") + from);
}

void FontVersions::prune(const std::string& font) const {
    try {
        // Copies that were ended in the middle; whoever keeps a version of a font is the only one who changes
        // it.
        for (const std::string& name : entriesOf(folderFor(font)))
            if (name.ends_with(kUnfinished)) removeFile(folderFor(font) + name);
        std::vector<Entry> own = entriesOf(folderFor(font), font);
        removeBeyond(own, Kind::Saved, kSavedVersions);
        removeBeyond(own, Kind::Discarded, kDiscardedVersions);

        std::vector<Entry> deleted;
        std::map<std::string, std::vector<Entry>> all;
        for (const std::string& name : entriesOf(folderFor(""))) {
            all[name] = entriesOf(folderFor(name), name);
            for (const Entry& entry : all[name])
                if (entry.kind == Kind::Deleted) deleted.push_back(entry);
        }
        std::sort(deleted.begin(), deleted.end(),
                  [](const Entry& a, const Entry& b) { return a.identifier > b.identifier; });
        for (std::size_t i = kDeletedFonts; i < deleted.size(); ++i) {
            const std::string& name = deleted[i].font;
            removeFile(deleted[i].file);
            std::vector<Entry>& rest = all[name];
            std::erase_if(rest, [&](const Entry& entry) { return entry.file == deleted[i].file; });
            const bool isLast = std::none_of(rest.begin(), rest.end(),
                                             [](const Entry& entry) { return entry.kind == Kind::Deleted; });
            if (!isLast || fileExists(folder_ + name + std::string(kExtension))) continue;
            for (const Entry& entry : rest) removeFile(entry.file);
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
