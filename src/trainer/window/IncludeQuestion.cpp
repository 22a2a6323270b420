#include "trainer/window/IncludeQuestion.h"

#include <algorithm>
#include <utility>

namespace dravik::trainer {
namespace {

constexpr std::size_t kMostNamed = 8;

std::vector<std::string> linesOf(const std::vector<Contradiction>& found) {
    std::vector<std::string> lines;
    for (std::size_t i = 0; i < std::min(found.size(), kMostNamed); ++i)
        lines.push_back(contradictionText(found[i]));
    if (found.size() > kMostNamed)
        lines.push_back("... and " + std::to_string(found.size() - kMostNamed) + " more");
    return lines;
}

}  // namespace

std::string ordinal(std::size_t place) {
    const std::size_t number = place + 1, last = number % 10;
    const bool isTeen = number % 100 / 10 == 1;
    return std::to_string(number) + (isTeen || last < 1 || last > 3 ? "th"
                                     : last == 1                    ? "st"
                                     : last == 2                    ? "nd"
                                                                    : "rd");
}

std::string contradictionText(const Contradiction& one) {
    return ordinal(one.place) + " character: typed " + one.typed + ", looks like " + one.seen;
}

IncludeQuestion::IncludeQuestion(const std::vector<Contradiction>& found)
    : IncludeQuestion("Is the Text Right?", linesOf(found),
                      "A wrong label spoils the font. Include the text as it is?", "&Correct") {}

IncludeQuestion::IncludeQuestion(const std::string& what, const std::string& font)
    : IncludeQuestion("Included Already", {what + " is included in the font " + font + " already."},
                      "Its characters would count twice. Include it once more?", "&Do Not Include") {}

IncludeQuestion::IncludeQuestion(const std::string& title, const std::vector<std::string>& found,
                                 const std::string& question, const std::string& otherwise)
    : ui::Form("includeQuestion", title) {
    std::vector<ui::Layout> lines;
    for (const std::string& text : found) {
        lblFound.push_back(
            std::make_unique<ui::Label>("lblFound(" + std::to_string(lblFound.size()) + ")", text));
        lblFound.back()->setUsesMnemonic(false);
        lines.push_back(ui::item(*lblFound.back()));
    }
    lblQuestion.setCaption(question);
    CancelButton.setCaption(otherwise);
    lines.push_back(ui::item(lblQuestion));
    lines.push_back(ui::row({ui::space(), ui::item(cmdInclude), ui::item(CancelButton)}));
    setLayout(ui::column(std::move(lines)));
    defaultButton = cancelButton = &CancelButton;
    activated.subscribe([this] { CancelButton.setFocus(); });
    cmdInclude.click.subscribe([this] {
        includes_ = true;
        unload();
    });
    CancelButton.click.subscribe([this] { unload(); });
}

}  // namespace dravik::trainer
