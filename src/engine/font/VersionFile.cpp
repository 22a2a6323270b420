#include "engine/font/VersionFile.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <optional>
#include <system_error>
#include <utility>

#include "base/Failure.h"
#include "base/FileSystem.h"
#include "base/JobFolder.h"

namespace dravik::engine {
namespace {

using Kind = tool::FontVersion::Kind;

constexpr std::string_view kWords[] = {".saved", ".deleted", ".discarded"};  // by kind

std::optional<VersionTime> timeOf(std::string_view identifier) {
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
    const VersionTime time = std::chrono::sys_days(date) + std::chrono::hours(values[3]) +
                             std::chrono::minutes(values[4]) + std::chrono::seconds(values[5]) +
                             std::chrono::milliseconds(values[6]);
    return versionIdentifier(time) == identifier ? std::optional(time) : std::nullopt;
}

std::optional<VersionFile> entryOf(const std::string& folder, const std::string& font,
                                   const std::string& name) {
    const std::size_t point = name.find('.');
    const std::string_view ending = std::string_view(name).substr(std::min(point, name.size()));
    const auto time = timeOf(std::string_view(name).substr(0, point));
    if (!time) return std::nullopt;
    for (const Kind kind : {Kind::Saved, Kind::Deleted, Kind::Discarded}) {
        const std::string_view word = kWords[static_cast<std::size_t>(kind)];
        if (!ending.starts_with(word)) continue;
        const std::string_view extension = ending.substr(word.size());
        if (extension == kFontExtension || (kind == Kind::Discarded && extension == kJournalExtension))
            return VersionFile{font, name.substr(0, point), *time, kind, folder + name};
    }
    return std::nullopt;
}

}  // namespace

std::string versionIdentifier(VersionTime time) {
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

std::string versionFileName(const std::string& identifier, Kind kind, std::string_view extension) {
    std::string name = identifier;
    return name.append(kWords[static_cast<std::size_t>(kind)]).append(extension);
}

std::vector<std::string> versionEntries(const std::string& folder) {
    if (isStillToCome(folder)) return {};
    std::error_code error;
    std::vector<std::string> names = namesIn(folder, error);
    if (error)
        throw fileFailure(RuntimeError::PathFileAccessError, "Cannot list the versions in", folder,
                          error.message());
    return names;
}

std::vector<VersionFile> versionFilesIn(const std::string& folder, const std::string& font) {
    std::vector<VersionFile> entries;
    for (const std::string& name : versionEntries(folder))
        if (auto entry = entryOf(folder, font, name)) entries.push_back(std::move(*entry));
    std::sort(entries.begin(), entries.end(),
              [](const VersionFile& a, const VersionFile& b) { return a.identifier > b.identifier; });
    return entries;
}

}  // namespace dravik::engine
