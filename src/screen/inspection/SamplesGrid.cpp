#include "screen/inspection/SamplesGrid.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <utility>

#include "base/Conversions.h"
#include "base/NumberFormat.h"
#include "tool/Samples.h"

namespace dravik::screen {
namespace {

struct Display {
    std::int32_t selector;
    std::span<const std::int16_t> fields;
    std::optional<tool::SampleKind> deletedAs;
};

Display displayOf(int listIndex) {
    switch (listIndex) {
        case kDisplayUncommitted:
            return {tool::kAllUncommitted, tool::kSampleFields, tool::SampleKind::Uncommitted};
        case kDisplayStatistics:
            return {tool::kAllTrained, tool::kCharacterFields, std::nullopt};
        default:
            return {tool::kAllCommitted, tool::kSampleFields, tool::SampleKind::Committed};
    }
}

// A record table as the grid shows it: sample number and character in front, numbers with three decimals.
class RecordSource : public ui::GridSource {
  public:
    explicit RecordSource(tool::RecordTablePtr table) : table_(std::move(table)) {}

    int rows() const override { return table_->upperRow() + 1; }
    int columns() const override { return table_->upperColumn() + 1; }

    std::string text(int row, int column) const override {
        if (column < 2) {
            if (row == 0) return {};
            return column == 0 ? std::to_string(row - 1) : table_->character(row);
        }
        const tool::Cell cell = table_->cell(row, column);
        return row > 0 && tool::isNumeric(cell) ? formatNumber(tool::cellNumber(cell), "0.000")
                                                : tool::cellText(cell);
    }

    double number(int row, int column) const override {
        return column == 0 ? row - 1 : ui::GridSource::number(row, column);
    }

  private:
    tool::RecordTablePtr table_;
};

}  // namespace

SamplesGrid::SamplesGrid(tool::ToolBinding& tool, modErrors& errors, ui::Platform& platform,
                         GridControls& controls)
    : tool_(tool), errors_(errors), platform_(platform), controls_(controls) {}

void SamplesGrid::FillSamplesArray() {
    errors_.procedures().run("Dravikdlg.FillSamplesArray", "FillSamplesArray", [&] {
        const Display display = displayOf(controls_.cboDisplay.listIndex());
        auto table = tool_->GetSampleData(display.selector, display.fields);
        if (!table || table->isEmpty()) return;
        controls_.grid.setSource(std::make_shared<RecordSource>(std::move(table)));
        controls_.grid.setCentered(0);
        controls_.grid.setCentered(1);
        if (sortedByCharacter_ == 1) {
            controls_.grid.setColumn(1);
            controls_.grid.sortByText(1);
        }
    });
}

void SamplesGrid::grid_KeyDown(int KeyCode, int Shift) {
    const std::string entry =
        "Dravikdlg.grid_KeyDown(" + std::to_string(KeyCode) + "," + std::to_string(Shift) + ")";
    errors_.procedures().run(entry, "grid_KeyDown", [&] {
        if (KeyCode == ui::kKeyInsert && Shift == ui::kCtrlMask) copySelection();
        if (KeyCode == ui::kKeyDelete) deleteSelection();
    });
}

void SamplesGrid::sortByHeading() {
    ui::Grid& grid = controls_.grid;
    if (grid.mouseRow() != 0) return;
    if (grid.mouseColumn() == 0) {
        grid.setColumn(0);
        sortedByCharacter_ = 0;
        grid.sortByNumber(0);
    } else if (grid.mouseColumn() == 1) {
        grid.setColumn(1);
        sortedByCharacter_ = 1;
        grid.sortByText(1);
    }
}

void SamplesGrid::copySelection() {
    const ui::Grid& grid = controls_.grid;
    std::string text;
    if (grid.rows() > 1) {
        const auto [top, bottom] = std::minmax({grid.row(), grid.rowSelection()});
        const auto [left, right] = std::minmax({grid.column(), grid.columnSelection()});
        for (int row = top; row <= bottom; ++row) {
            for (int column = left; column <= right; ++column) {
                text += grid.text(row, column);
                text += '\t';
            }
            text += "\r\n";
        }
    }
    platform_.setClipboardText(text);
}

void SamplesGrid::deleteSelection() {
    const ui::Grid& grid = controls_.grid;
    if (const auto kind = displayOf(controls_.cboDisplay.listIndex()).deletedAs) {
        const int count = grid.rowSelection() - grid.row() + 1;
        if (count > 0) tool_.setFontChanged(true);
        for (int call = 0; call < count; ++call)
            tool_->DeleteSample(
                tool::sampleIdentifier(*kind, toInt32(leadingNumber(grid.text(grid.row(), 0)))));
    }
    errors_.UserMsg("Deleted samples. Learn again to update graphical display.");
    FillSamplesArray();
}

}  // namespace dravik::screen
