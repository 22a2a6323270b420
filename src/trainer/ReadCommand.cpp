#include <ostream>

#include "base/Failure.h"
#include "trainer/Commands.h"
#include "trainer/HeadlessSession.h"

namespace dravik {
namespace {

// The characters of every line, "\n" (backslash, n) between lines.
std::string textOf(const std::vector<ReadCharacter>& characters) {
    std::string text;
    for (std::size_t i = 0; i < characters.size(); ++i) {
        if (i > 0 && characters[i].place.line != characters[i - 1].place.line) text += "\\n";
        text += characters[i].character;
    }
    return text;
}

void loadTrainedFont(EmbeddedTool& tool, const std::string& name, const JobFolder& folder) {
    const auto fonts = tool.GetFontList();
    const auto font = fontNamed(name, fonts);
    if (!font) {
        std::string others;
        for (const auto& other : fonts) others += (others.empty() ? "; there are " : ", ") + other;
        throw Failure(RuntimeError::FileNotFound, "no such font in " + folder.fontsFolder() + others);
    }
    tool.LoadFont(*font);
    if (!tool.isTrained()) throw Failure(RuntimeError::InvalidProcedureCall, "is not trained");
}

}  // namespace

int readImages(const std::string& font, const std::vector<std::string>& images, const JobFolder& folder,
               const ImageDecoder& decoder, const CommandStreams& streams) {
    EmbeddedTool tool(folder);
    try {
        loadTrainedFont(tool, font, folder);
    } catch (...) {
        streams.problem("font " + font + ": " + currentFailure().description());
        return 1;
    }

    bool all = true;
    for (const auto& image : images) {
        try {
            tool.setImage(decoder(image));
            streams.out << image << '\t' << textOf(tool.read()) << std::endl;
        } catch (...) {
            streams.problem(currentFailure().description());
            all = false;
        }
    }
    return all ? 0 : 1;
}

}  // namespace dravik
