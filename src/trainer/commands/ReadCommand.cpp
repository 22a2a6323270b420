#include <ostream>

#include "base/Failure.h"
#include "base/FileSystem.h"
#include "base/NumberFormat.h"
#include "engine/embedded/EmbeddedTool.h"
#include "tool/FontName.h"
#include "trainer/commands/Commands.h"

namespace dravik::trainer {
namespace {

// The characters of every line, "\n" (backslash, n) between lines.
std::string textOf(const std::vector<engine::ReadCharacter>& characters, double rejectLimit) {
    std::string text;
    for (std::size_t i = 0; i < characters.size(); ++i) {
        if (i > 0 && characters[i].place.line != characters[i - 1].place.line) text += "\\n";
        text += engine::shownCharacter(characters[i], rejectLimit);
    }
    return text;
}

std::string confidencesOf(const std::vector<engine::ReadCharacter>& characters) {
    std::string text;
    for (const engine::ReadCharacter& one : characters)
        text += (text.empty() ? "" : " ") + formatNumber(one.confidence, "0.000");
    return text;
}

void loadTrainedFont(engine::EmbeddedTool& tool, const std::string& name, const JobFolder& folder) {
    const auto fonts = tool.GetFontList();
    const auto font = tool::fontNamed(name, fonts);
    if (!font) {
        std::string others;
        for (const auto& other : fonts) others += (others.empty() ? "; there are " : ", ") + other;
        throw Failure(RuntimeError::FileNotFound, "no such font in " + folder.fontsFolder() + others);
    }
    tool.LoadFont(*font);
    if (!tool.isTrained()) throw Failure(RuntimeError::InvalidProcedureCall, "is not trained");
}

}  // namespace

int readImages(const ReadOptions& options, const engine::ImageDecoder& decoder,
               const CommandStreams& streams) {
    engine::EmbeddedTool tool(options.folder);
    try {
        loadTrainedFont(tool, options.font, options.folder);
        streams.tellRecovered(tool);
    } catch (...) {
        streams.problem("font " + options.font + ": " + currentFailure().description());
        return 1;
    }

    bool all = true;
    for (const auto& image : options.images) {
        try {
            tool.setImage(decoder(image));
            const auto read = tool.read();
            streams.out << image << '\t' << textOf(read, options.rejectLimit);
            if (options.showsConfidence) streams.out << '\t' << confidencesOf(read);
            streams.out << std::endl;
        } catch (...) {
            const auto problem = currentFailure().description();
            const bool isNamed = problem.find(nameOf(image)) != std::string::npos;
            streams.problem(isNamed ? problem : image + ": " + problem);
            all = false;
        }
    }
    return all ? 0 : 1;
}

}  // namespace dravik::trainer
