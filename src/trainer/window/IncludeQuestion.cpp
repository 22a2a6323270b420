#include "trainer/window/IncludeQuestion.h"

#include <algorithm>
#include <utility>

namespace dravik::trainer {
namespace {

constexpr std::size_t kMostNamed = 8;

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
    : ui::Form("includeQuestion", "Is the Text Right?") {
    std::vector<ui::Layout> lines;
    const auto say = [&](const std::string& text) {
        lblFound.push_back(
            std::make_unique<ui::Label>("lblFound(" + std::to_string(lblFound.size()) + ")", text));
        lblFound.back()->setUsesMnemonic(false);
        lines.push_back(ui::item(*lblFound.back()));
    };
    for (std::size_t i = 0; i < std::min(found.size(), kMostNamed); ++i) say(contradictionText(found[i]));
    if (found.size() > kMostNamed) say("... and " + std::to_string(found.size() - kMostNamed) + " more");
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
