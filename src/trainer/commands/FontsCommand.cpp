#include <ostream>

#include "base/Failure.h"
#include "trainer/commands/Commands.h"
#include "trainer/commands/HeadlessSession.h"

namespace dravik::trainer {

int listFonts(const JobFolder& folder, const CommandStreams& streams) {
    engine::EmbeddedTool tool(folder);
    HeadlessPlatform platform;
    const auto fonts = tool.GetFontList();
    streams.out << "font\tcharacters\tsamples\ttrained\tdate\n";
    bool all = true;
    for (const auto& name : fonts) {
        try {
            const auto font = tool.summary(name);
            std::string characterSet;
            for (const auto& character : font.characterSet) characterSet += character;
            streams.out << name << '\t' << characterSet << '\t' << font.samples << '\t'
                        << (font.trained ? "yes" : "no") << '\t'
                        << platform.fileDateText(folder.fontFile(name)) << '\n';
        } catch (...) {
            streams.problem("font " + name + ": " + currentFailure().description());
            all = false;
        }
    }
    return all ? 0 : 1;
}

}  // namespace dravik::trainer
