#include "screen/inspection/CharOverview.h"

#include <array>

#include "base/Conversions.h"
#include "base/Text.h"
#include "tool/Samples.h"

namespace dravik::screen {
namespace {

// The legend: its six states in order, which are also the colours of the cells.
constexpr std::array<ui::Color, 6> kStateColors = {
    ui::kScrollBarColor, 0xFFFFFF, 0xC0C0FF, 0x80FFFF, 0xFF00, 0xFF8080};
constexpr ui::Color kNotInFont = kStateColors[0];
constexpr ui::Color kUntrained = kStateColors[1];

ui::Color trainedColor(std::int16_t count) {
    if (count == 0) return kStateColors[1];
    if (count < 5) return kStateColors[2];
    if (count < 10) return kStateColors[3];
    return kStateColors[4];
}

// The count that the cell's colour tells roughly.
std::string figureOf(std::int16_t count) {
    return count == 0 ? "" : count < 100 ? std::to_string(count) : "99+";
}

}  // namespace

void CharOverview::UpdateCharDisplay() {
    auto& overview = context_.screen.overview;
    context_.procedures.run("Dravikdlg.UpdateCharDisplay", "UpdateCharDisplay", [&] {
        const tool::CharacterSet set = context_.tool->GetCharacterSet();
        std::string all;
        for (const auto& character : set) all += character;
        overview.lblEmpty.setBackColor(set.empty() ? kUntrained : kNotInFont);
        overview.lblEmpty.setBold(set.empty());
        for (const auto& cell : overview.lblChar) {
            const bool inFont = contains(all, cell->caption());
            cell->setBackColor(inFont ? kUntrained : kNotInFont);
            cell->setBold(inFont);
            cell->setFigure("");
            cell->setAccessibleName(cell->caption() + (inFont ? ", 0 trained" : ", not in font"));
        }
        UpdateTrainStatus();
    });
}

void CharOverview::UpdateTrainStatus() {
    context_.procedures.run("Dravikdlg.UpdateTrainStatus", "UpdateTrainStatus", [&] {
        const auto table = context_.tool->GetSampleData(tool::kAllTrained, tool::kCharacterFields);
        if (!table) return;
        for (int row = 1; row <= table->upperRow(); ++row) {
            const std::string character = table->character(row);
            const std::int16_t count = toInt16(table->number(row, 2));
            for (const auto& cell : context_.screen.overview.lblChar) {
                if (cell->caption() != character) continue;
                cell->setBackColor(trainedColor(count));
                cell->setFigure(figureOf(count));
                cell->setAccessibleName(character + ", " + std::to_string(count) + " trained");
            }
        }
    });
}

void CharOverview::SetFontArray() {
    context_.procedures.run("Dravikdlg.SetFontArray", "SetFontArray", [&] {
        if (context_.tool.m_FontIndex == kFontUnknown) return;
        const auto table = context_.tool->GetSampleData(tool::kAllTrained, tool::kCharacterFields);
        if (!table) return;
        for (int row = 1; row <= table->upperRow(); ++row) {
            if (row == 1) fontArray_.clear();
            fontArray_.push_back(table->character(row));
        }
    });
}

void CharOverview::lblChar_MouseMove(ui::Label& cell) {
    context_.procedures.run("Dravikdlg.lblChar_MouseMove", "lblChar_MouseMove", [&] {
        cell.setToolTip(cell.caption() + " -- " + std::to_string(counts_.NumberTrained(cell.caption())) +
                        " trained");
    });
}

void CharOverview::SetGraphicalView(bool bGraphical) {
    context_.procedures.run("Dravikdlg.SetGraphicalView", "SetGraphicalView",
                            [&] { context_.screen.SetGraphicalView(bGraphical); });
}

void CharOverview::InitColorKey() {
    context_.procedures.trace("Dravikdlg.InitColorKey");
    for (std::size_t i = 0; i < context_.screen.overview.lblKey.size(); ++i)
        context_.screen.overview.lblKey[i]->setBackColor(kStateColors[i]);
}

std::string CharOverview::firstOfFontArray() const {
    if (fontArray_.empty()) throw Failure(RuntimeError::SubscriptOutOfRange);
    return fontArray_.front();
}

}  // namespace dravik::screen
