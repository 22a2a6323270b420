#include <ostream>

#include "base/Text.h"
#include "trainer/commands/Commands.h"

namespace dravik::trainer {

void CommandStreams::problem(const std::string& text) const {
    out.flush();
    err << kProgram << ": " << onOneLine(text) << std::endl;
}

void CommandStreams::tellRecovered(tool::FontHistory& fonts) const {
    for (const tool::RecoveredChanges& found : fonts.takeRecovered()) problem(tool::recoveredText(found));
}

engine::SegmentationSettings SettingsOptions::over(engine::SegmentationSettings settings) const {
    if (region || wholeImage) settings.region = region;
    settings.print.polarity = polarity.value_or(settings.print.polarity);
    settings.print.kind = kind.value_or(settings.print.kind);
    settings.print.smallestHeight = smallestHeight.value_or(settings.print.smallestHeight);
    return settings;
}

std::string onOneLine(const std::string& text) {
    std::string line;
    for (const char c : text) {
        const bool blank = c == ' ' || c == '\t' || c == '\r' || c == '\n';
        if (!blank)
            line += c;
        else if (!line.empty() && line.back() != ' ')
            line += ' ';
    }
    return trimmed(line);
}

}  // namespace dravik::trainer
