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

void SamplesGrid::FillSamplesArray() {
    context_.procedures.run("Dravikdlg.FillSamplesArray", "FillSamplesArray", [&] {
        const Display display = displayOf(context_.screen.numeric.cboDisplay.listIndex());
        records_.reset();
        auto table = context_.tool->GetSampleData(display.selector, display.fields);
        if (!table || table->isEmpty()) return;
        table->codes();  // what is not a table of records is refused before it is shown
        records_ = table;
        context_.screen.numeric.grid.setSource(std::make_shared<RecordSource>(std::move(table)));
        context_.screen.numeric.grid.setAlign(0, ui::CellAlign::Center);
        context_.screen.numeric.grid.setAlign(1, ui::CellAlign::Center);
        if (sortedByCharacter_ == 1) {
            context_.screen.numeric.grid.setColumn(1);
            context_.screen.numeric.grid.sortByText(1);
        }
    });
}

void SamplesGrid::showAnew() {
    FillSamplesArray();
    if (!records_) context_.screen.numeric.grid.setSource(nullptr);
}

void SamplesGrid::grid_KeyDown(int KeyCode, int Shift) {
    const std::string entry =
        "Dravikdlg.grid_KeyDown(" + std::to_string(KeyCode) + "," + std::to_string(Shift) + ")";
    context_.procedures.run(entry, "grid_KeyDown", [&] {
        if (KeyCode == ui::kKeyInsert && Shift == ui::kCtrlMask) copySelection();
        if (KeyCode == ui::kKeyDelete) deleteSelection();
    });
}

void SamplesGrid::sortByHeading() {
    ui::Grid& grid = context_.screen.numeric.grid;
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
    const ui::Grid& grid = context_.screen.numeric.grid;
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
    context_.platform.setClipboardText(text);
}

void SamplesGrid::deleteSelection() {
    ActScope act(context_, OperatorAct::Kind::DeletionInGrid);
    const auto kind = displayOf(context_.screen.numeric.cboDisplay.listIndex()).deletedAs;
    if (kind && showsRecords()) deleteRows(*kind, act);
    context_.errors.UserMsg("Deleted samples. Learn again to update graphical display.");
    FillSamplesArray();
}

// The rows of a font that is gone, of a kind without records, or from before a failure name no samples.
bool SamplesGrid::showsRecords() const {
    const ui::Grid& grid = context_.screen.numeric.grid;
    return records_ && grid.redraw() && grid.row() > 0 && grid.row() < grid.rows();
}

void SamplesGrid::deleteRows(tool::SampleKind kind, ActScope& act) {
    const ui::Grid& grid = context_.screen.numeric.grid;
    const int count = grid.rowSelection() - grid.row() + 1;
    const std::int32_t number = toInt32(leadingNumber(grid.text(grid.row(), 0)));
    const auto records = records_;
    try {
        for (int call = 0; call < count; ++call) {
            context_.tool->DeleteSample(tool::sampleIdentifier(kind, number));
            context_.tool.setFontChanged(true);
            // The next sample has moved into the place of the one deleted.
            const int row = number + call + 1;
            if (row <= records->upperRow()) act.sample(records->character(row));
        }
    } catch (...) {
        // The numbers of the rows shown are no longer those of the samples.
        FillSamplesArray();
        throw;
    }
}

}  // namespace dravik::screen
