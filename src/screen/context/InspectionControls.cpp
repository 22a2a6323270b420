#include "screen/context/InspectionControls.h"

#include <string>
#include <string_view>

#include "screen/context/Pictures.h"

namespace dravik::screen {
namespace {

struct CellRow {
    std::string_view captions;
    int top;  // twips
};

constexpr std::array<CellRow, 6> kCellRows = {{
    {"ABCDEFGHIJKLM", 270},
    {"NOPQRSTUVWXYZ", 660},
    {"0123456789", 1140},
    {"abcdefghijklm", 1620},
    {"nopqrstuvwxyz", 2010},
    {"*+-=/.,:;\"'_", 2490},
}};
constexpr std::array<int, 13> kCellLefts = {180,  570,  960,  1335, 1725, 2115, 2505,
                                            2895, 3270, 3660, 4050, 4440, 4830};
constexpr int kCellSize = 345;
constexpr int kEqualsLeft = 1350;  // the "=" cell stands a little to the right of its column
constexpr int kCellPoints = 12;

constexpr std::array<std::string_view, 6> kNotes = {"Not In Font", "0", "1 +", "5 +", "10+", "Included"};

std::unique_ptr<ui::Label> cell(std::string name, std::string caption) {
    auto label = std::make_unique<ui::Label>(std::move(name), std::move(caption));
    label->setCell(true);
    label->setUsesMnemonic(false);
    label->setAlignment(ui::Label::Alignment::Center);
    label->setBackColor(ui::kScrollBarColor);
    return label;
}

std::string indexed(std::string_view name, std::size_t index) {
    return std::string(name) + "(" + std::to_string(index) + ")";
}

}  // namespace

OverviewControls::OverviewControls() {
    for (const auto& line : kCellRows)
        for (const char caption : line.captions) {
            lblChar.push_back(cell(indexed("lblChar", lblChar.size()), std::string(1, caption)));
            lblChar.back()->setFontSize(kCellPoints);
        }
    for (std::size_t i = 0; i < kNotes.size(); ++i) {
        lblKey.push_back(std::make_unique<ui::Label>(indexed("lblKey", i)));
        lblKey.back()->setCell(true);
        lblKey.back()->setAccessibleName(std::string(kNotes[i]));
        lblNote.push_back(std::make_unique<ui::Label>(indexed("lblNote", i), std::string(kNotes[i])));
    }
    lblEmpty.setCell(true);
    lblEmpty.setAlignment(ui::Label::Alignment::Center);
    lblEmpty.setBackColor(ui::kScrollBarColor);

    tlbChars.add("Graphical", "Graphical", ui::ToolButton::Style::Push, pictures::graphical());
    tlbChars.add("Numeric", "Numeric", ui::ToolButton::Style::Push, pictures::numeric());
    tlbChars.add("Histogram", "Histogram", ui::ToolButton::Style::Push, pictures::histogram());
    tlbChars.add("Array", "Array", ui::ToolButton::Style::Push, pictures::array());
    tlbChars.add("Undo", "Undo", ui::ToolButton::Style::Push, pictures::undo());
    tlbChars.add("Log", "Log", ui::ToolButton::Style::Check, pictures::log());
}

ui::Layout OverviewControls::arrangement() {
    std::vector<std::pair<ui::Widget*, ui::Place>> places;
    std::size_t index = 0;
    for (const auto& line : kCellRows)
        for (std::size_t k = 0; k < line.captions.size(); ++k, ++index) {
            const int left = line.captions[k] == '=' ? kEqualsLeft : kCellLefts[k];
            places.push_back({lblChar[index].get(), {left, line.top, kCellSize, kCellSize}});
        }
    std::vector<std::vector<ui::Layout>> legend;
    for (std::size_t i = 0; i < lblKey.size(); ++i)
        legend.push_back({ui::item(*lblKey[i]).atLeast(kCellSize, 255).ownSize(), ui::item(*lblNote[i])});
    return ui::row({ui::fixed(places).atLeast(4830 + kCellSize + 180, 2490 + kCellSize + 180),
                    ui::column({ui::item(lblNumTrained), ui::table(std::move(legend)),
                                ui::item(lblEmpty).atLeast(900, 345).ownSize(), ui::space()}),
                    ui::space()});
}

}  // namespace dravik::screen
