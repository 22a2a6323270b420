#include <algorithm>
#include <ostream>
#include <system_error>

#include "base/Failure.h"
#include "base/FileSystem.h"
#include "base/OutputFile.h"
#include "base/Text.h"
#include "base/TimeText.h"
#include "engine/embedded/EmbeddedTool.h"
#include "engine/font/FontVersions.h"
#include "tool/FontName.h"
#include "trainer/commands/AccuracyPage.h"
#include "trainer/commands/Commands.h"

namespace dravik::trainer {
namespace {

using tool::FontVersion;

// When the file was written; raises File not found (53).
std::string fileDateText(const std::string& file) {
    std::error_code error;
    const auto written = fileTime(file, error);
    if (error) throw Failure(RuntimeError::FileNotFound);
    return localTimeText(written);
}

const char* nameOf(FontVersion::Kind kind) {
    switch (kind) {
        case FontVersion::Kind::Saved:
            return "saved";
        case FontVersion::Kind::Deleted:
            return "deleted";
        case FontVersion::Kind::Discarded:
            return "discarded";
    }
    return "";
}

// What is kept of a font: of just that name, else of the one whose name differs in case. Raises File not
// found (53) when that is nothing.
std::vector<FontVersion> versionsOf(const engine::FontVersions& kept, const std::string& font,
                                    std::vector<std::string>* problems = nullptr) {
    std::vector<FontVersion> versions = kept.list(font, problems);
    if (!versions.empty()) return versions;
    for (const FontVersion& one : kept.list(""))
        if (lowerCase(one.font) == lowerCase(tool::CleanFontName(font))) return kept.list(one.font, problems);
    throw Failure(RuntimeError::FileNotFound, "no earlier version is kept");
}

// Raises File not found (53).
FontVersion chosen(const std::vector<FontVersion>& versions, const std::string& identifier) {
    const auto version = std::find_if(versions.begin(), versions.end(), [&](const FontVersion& one) {
        return identifier.empty() ? one.kind != FontVersion::Kind::Discarded : one.identifier == identifier;
    });
    if (version != versions.end()) return *version;
    if (!identifier.empty())
        throw Failure(RuntimeError::FileNotFound, "there is no version " + identifier +
                                                      "; fonts --versions " + versions.front().font +
                                                      " lists them");
    throw Failure(RuntimeError::FileNotFound,
                  "only changes that were discarded are kept; restore one of them by --version");
}

}  // namespace

int listFonts(const FontsOptions& options, const CommandStreams& streams) {
    const JobFolder& folder = options.folder;
    engine::EmbeddedTool tool(folder);
    const auto fonts = tool.GetFontList();
    streams.out << "font\tcharacters\tsamples\ttrained\tdate\n";
    bool all = true;
    for (const auto& name : fonts) {
        try {
            const auto font = tool.summary(name);
            std::string characterSet;
            for (const auto& character : font.characterSet) characterSet += character;
            streams.out << name << '\t' << characterSet << '\t' << font.samples << '\t'
                        << (font.trained ? "yes" : "no") << '\t' << fileDateText(folder.fontFile(name))
                        << '\n';
        } catch (...) {
            streams.problem("font " + name + ": " + currentFailure().description());
            all = false;
        }
    }
    return all ? 0 : 1;
}

int listVersions(const VersionsOptions& options, const CommandStreams& streams) {
    try {
        const engine::FontVersions kept(options.folder.fontsFolder());
        std::vector<std::string> problems;
        const auto versions =
            options.font.empty() ? kept.list("", &problems) : versionsOf(kept, options.font, &problems);
        streams.out << "font\tversion\tkind\tsamples\ttrained\tdate\n";
        for (const FontVersion& one : versions)
            streams.out << one.font << '\t' << one.identifier << '\t' << nameOf(one.kind) << '\t'
                        << one.samples << '\t' << (one.trained ? "yes" : "no") << '\t'
                        << localTimeText(one.when) << '\n';
        for (const auto& problem : problems) streams.problem(problem);
        return problems.empty() ? 0 : 1;
    } catch (...) {
        streams.problem((options.font.empty() ? "" : "font " + options.font + ": ") +
                        currentFailure().description());
    }
    return 1;
}

int reportFont(const ReportOptions& options, const CommandStreams& streams) {
    try {
        engine::EmbeddedTool tool(options.folder);
        const auto font = tool::fontNamed(options.font, tool.GetFontList());
        if (!font)
            throw Failure(RuntimeError::FileNotFound, "no such font in " + options.folder.fontsFolder());
        tool.LoadFont(*font);
        streams.tellRecovered(tool);
        AccuracyReport report{*font, fileDateText(options.folder.fontFile(*font)), tool.isTrained(),
                              tool.samples(tool::SampleKind::Committed), nullptr};
        const auto check = engine::checkHeldOut(*report.samples, engine::kTrainingSeed, [] { return true; });
        if (check) report.check = &*check;
        OutputFile page(options.file, OutputFile::Start::Empty);
        page.write(accuracyPage(report));
        page.close();
        streams.out << "wrote " << options.file << std::endl;
        return 0;
    } catch (...) {
        streams.problem("font " + options.font + ": " + currentFailure().description());
    }
    return 1;
}

int restoreVersion(const RestoreOptions& options, const CommandStreams& streams) {
    try {
        const engine::FontVersions kept(options.folder.fontsFolder());
        const FontVersion version = chosen(versionsOf(kept, options.font), options.version);
        const std::string name = options.as.empty() ? version.font : tool::CleanFontName(options.as);
        if (tool::isReservedFontName(name))
            throw Failure(RuntimeError::BadFileName,
                          "Font name 'new' is reserved, please select a different name");
        engine::EmbeddedTool tool(options.folder);
        tool.restoreVersion(version, name);
        streams.out << "restored " << version.font << ' ' << version.identifier << " ("
                    << nameOf(version.kind) << ' ' << localTimeText(version.when) << ", " << version.samples
                    << " samples) to " << options.folder.fontFile(name) << std::endl;
        return 0;
    } catch (...) {
        streams.problem("font " + options.font + ": " + currentFailure().description());
    }
    return 1;
}

}  // namespace dravik::trainer
