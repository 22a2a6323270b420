// The files that versions of a font are kept in, in a folder of the font: the name says when each was kept,
// and why.
#pragma once

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

#include "tool/FontHistory.h"

namespace dravik::engine {

using VersionTime = std::chrono::sys_time<std::chrono::milliseconds>;

// Of changes that were kept as they came.
constexpr std::string_view kJournalExtension = ".journal";

struct VersionFile {
    std::string font;
    std::string identifier;
    VersionTime time;
    tool::FontVersion::Kind kind = tool::FontVersion::Kind::Saved;
    std::string file;  // with its folder
};

// "20260331-140509-007", of universal time.
std::string versionIdentifier(VersionTime time);
std::string versionFileName(const std::string& identifier, tool::FontVersion::Kind kind,
                            std::string_view extension);

// What is in a folder; nothing where there is none. Raises Failure that names it.
std::vector<std::string> versionEntries(const std::string& folder);
// The versions among it, newest first.
std::vector<VersionFile> versionFilesIn(const std::string& folder, const std::string& font);

}  // namespace dravik::engine
