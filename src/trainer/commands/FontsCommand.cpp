#include <array>
#include <chrono>
#include <ctime>
#include <filesystem>
#include <ostream>
#include <system_error>

#include "base/Failure.h"
#include "base/Paths.h"
#include "engine/embedded/EmbeddedTool.h"
#include "trainer/commands/Commands.h"

namespace dravik::trainer {
namespace {

// When the file was written, in local time and in the form that sorts: "2026-03-31 14:05:09". Raises File not
// found (53).
std::string fileDateText(const std::string& path) {
    using SystemClock = std::chrono::system_clock;
    std::error_code error;
    const auto written = std::filesystem::last_write_time(toPath(path), error);
    if (error) throw Failure(RuntimeError::FileNotFound);
    const auto seconds = SystemClock::to_time_t(
        std::chrono::time_point_cast<SystemClock::duration>(std::chrono::file_clock::to_sys(written)));
    std::array<char, 32> text{};
    const auto* local = std::localtime(&seconds);
    if (!local) return {};
    return {text.data(), std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M:%S", local)};
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

}  // namespace dravik::trainer
