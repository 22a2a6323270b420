#include "screen/context/Screen.h"

#include <array>
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
        lblKey.back()->setCell(true, false);
        lblKey.back()->setAccessibleName(std::string(kNotes[i]));
        lblNote.push_back(std::make_unique<ui::Label>(indexed("lblNote", i), std::string(kNotes[i])));
    }
    lblEmpty.setCell(true, false);
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

Screen::Screen() {
    numeric.cboDisplay.setListIndex(kDisplayCommitted);
    sbr.add("Message", "", 3000, true);
    sbr.add("LastInclude", "", 1800).setToolTip("Last text included");

    font.fraFont.setLayout(ui::column({
        ui::row({ui::item(font.lblFontName), ui::item(font.lblSelectedFont).stretched(),
                 ui::item(font.lblFontDateTime).stretched(2), ui::item(font.cmdSelectFont)}),
        ui::row({ui::item(font.LabelCharSet), ui::item(font.txtCharSet).stretched()}),
    }));
    font.lblSelectedFont.setUsesMnemonic(false);
    font.lblSelectedFont.setBold(true);

    sample.fraSample.setLayout(ui::column({
        ui::item(sample.txtSampleInput),
        ui::row({ui::item(sample.chkCase), ui::space(), ui::item(sample.cmdInclude)}),
    }));

    train.fraTrain.setLayout(ui::column({
        ui::row({ui::item(train.cmdTrain), ui::item(train.cmdStop), ui::item(train.cmdSaveFont),
                 ui::item(train.cmdRevert), ui::space()}),
        ui::row(
            {ui::item(train.lblTimeout), ui::item(train.cboTimeout), ui::item(train.prgTrain).stretched()}),
        ui::item(train.lblStatus),
    }));

    overview.fraChar.setLayout(overview.arrangement());

    fraControls.setLayout(ui::row({ui::item(cmdTest), ui::item(grid2).stretched()}));
    fraControls.setVisible(false);

    form.setLayout(ui::column({
        ui::item(font.fraFont),
        ui::row({ui::item(sample.fraSample).stretched(2), ui::item(train.fraTrain).stretched(3)}),
        ui::item(overview.tlbChars),
        ui::item(overview.fraChar).stretched(),
        ui::row({ui::item(numeric.lblCharData), ui::space(), ui::item(numeric.lblDisplay),
                 ui::item(numeric.cboDisplay)}),
        ui::item(numeric.grid).stretched(),
        ui::item(fraControls),
        ui::item(sbr),
    }));
    form.timers = {&train.tmrTrain};
    form.defaultButton = &sample.cmdInclude;
    form.defaultField = &sample.txtSampleInput;
    form.resizable = true;

    font.cmdSelectFont.setToolTip("Choose, make, rename, duplicate or delete a font");
    font.txtCharSet.setToolTip("The characters that the font is to know");
    sample.txtSampleInput.setToolTip("Type the characters printed on the part, then Include");
    sample.chkCase.setToolTip("Type in any case: the text follows the case of the font's characters");
    sample.cmdInclude.setToolTip("Add the characters of the current image to the font's samples");
    train.cmdTrain.setToolTip("Train the font from its samples");
    train.cmdStop.setToolTip("Stop the training run");
    train.cmdSaveFont.setToolTip("Keep the result of the training");
    train.cmdRevert.setToolTip("Go back to the last saved training");
    train.cboTimeout.setToolTip("Time limit of a training run");
    overview.tlbChars.button("Graphical").setToolTip("Show the characters as cells");
    overview.tlbChars.button("Numeric").setToolTip("Show the samples as a table");
    overview.tlbChars.button("Histogram").setToolTip("Histograms are in the right-click menu of a character");
    overview.tlbChars.button("Array").setToolTip("Show the feature array of the font's first character");
    overview.tlbChars.button("Undo").setToolTip("Nothing to undo");
    overview.tlbChars.button("Undo").setEnabled(false);
    overview.tlbChars.button("Log").setToolTip("Write every step to the trace log");
    font.txtCharSet.setAccessibleName("Character Set");
    sample.txtSampleInput.setAccessibleName("Text or Character to Include");
    train.cboTimeout.setAccessibleName("Timeout");
    numeric.cboDisplay.setAccessibleName("Display");
    overview.tlbChars.setAccessibleName("Views");
    train.prgTrain.setAccessibleName("Training progress");
    numeric.grid.setAccessibleName("Samples");
}

void Screen::SetGraphicalView(bool bGraphical) {
    numeric.lblCharData.setVisible(!bGraphical);
    numeric.lblDisplay.setVisible(!bGraphical);
    numeric.grid.setVisible(!bGraphical);
    numeric.cboDisplay.setVisible(!bGraphical);
    overview.fraChar.setVisible(bGraphical);
}

}  // namespace dravik::screen
