// The grid of Windows: what it draws, asks for and tells, with many records.
#include <oleacc.h>
#include "windows/win32/support/Shown.h"

#include "shown/Numbers.h"

namespace dravik::test {
namespace {

// Row and column, the first record's row 1.
using Cells = std::vector<std::pair<int, int>>;

class GridOfWindows : public testing::Test {
  protected:
    void fill(int records, int columns) {
        source = std::make_shared<Numbers>(records + 1, columns);
        grid.setSource(source);
        settle();
    }
    HWND view() const { return shown.view(grid); }
    SCROLLINFO bar() const {
        SCROLLINFO info{};
        info.cbSize = sizeof info;
        info.fMask = SIF_ALL;
        GetScrollInfo(view(), SB_VERT, &info);
        return info;
    }
    // Which of the seen cells have that ground, row by row.
    Cells cellsOfColor(COLORREF color) {
        const auto shows = picture(view());
        const RECT window = placeOf(view());
        const AccessibleWindow heard(view());
        Cells cells;
        for (LONG part = grid.columns() + 1; part <= heard.parts(); ++part) {
            const RECT place = heard.place(part);
            const int x = static_cast<int>(place.left - window.left) + kInsideCell;
            const int y = static_cast<int>(place.top - window.top) + kInsideCell;
            if (x < 0 || x >= shows->width() || y < 0 || y >= shows->height()) continue;
            if (colorAt(*shows, x, y) == color) cells.push_back(cellOf(heard.name(part)));
        }
        return cells;
    }
    static Cells block(int top, int left, int bottom, int right) {
        Cells cells;
        for (int row = top; row <= bottom; ++row)
            for (int column = left; column <= right; ++column) cells.emplace_back(row, column);
        return cells;
    }

    // Behind the frame of the focus and before the text.
    static constexpr int kInsideCell = 3;
    // As Numbers names its cells.
    static std::pair<int, int> cellOf(const std::wstring& text) {
        const int number = _wtoi(text.c_str());
        return {number / 100, number % 100};
    }

    Grid grid{"grid"};
    std::shared_ptr<Numbers> source;
    Shown shown{column({item(grid).stretched()}), 420, 300};
};

TEST_F(GridOfWindows, ShowsAnyNumberOfRecordsByAskingForThoseThatAreSeen) {
    fill(99'999, 54);
    EXPECT_LT(source->asked, 54 * 120);
    source->asked = 0;
    SetFocus(view());
    pressKey(VK_END, kCtrlMask);
    EXPECT_EQ(grid.row(), 99'999);
    EXPECT_EQ(grid.column(), 53);
    EXPECT_LT(source->asked, 54 * 40);
    EXPECT_EQ(bar().nMax, 99'998);
    EXPECT_EQ(bar().nPos + static_cast<int>(bar().nPage), 99'999) << "the last record is in view";
    SendMessageW(view(), WM_VSCROLL, SB_TOP, 0);
    EXPECT_EQ(bar().nPos, 0);
    mouse(view(), WM_MOUSEWHEEL, 10, 10, static_cast<WPARAM>(-2 * WHEEL_DELTA) << 16 & 0xFFFF0000);
    EXPECT_EQ(bar().nPos, 6);
    fill(3, 2);
    EXPECT_FALSE(GetWindowLongPtrW(view(), GWL_STYLE) & WS_VSCROLL) << "no bar without need";
    EXPECT_EQ(grid.row(), 3);
}

TEST_F(GridOfWindows, MarksTheSelectedCellsAndNoOthers) {
    fill(200, 3);
    const COLORREF marked = GetSysColor(COLOR_HIGHLIGHT), markedElsewhere = GetSysColor(COLOR_BTNSHADOW);
    SetFocus(view());
    // The end of a selection may lie before its start.
    for (const auto& [row, column, rowEnd, columnEnd] :
         std::vector<std::array<int, 4>>{{1, 1, 1, 1}, {4, 2, 5, 2}, {5, 2, 1, 0}, {2, 1, 3, 0}}) {
        grid.select(row, column, rowEnd, columnEnd);
        EXPECT_EQ(cellsOfColor(marked), block(std::min(row, rowEnd), std::min(column, columnEnd),
                                              std::max(row, rowEnd), std::max(column, columnEnd)));
    }
    SetFocus(shown.host->window());
    settle();
    EXPECT_EQ(cellsOfColor(markedElsewhere), block(2, 0, 3, 1)) << "without the focus it is grey";
    EXPECT_EQ(cellsOfColor(marked), Cells());

    SetFocus(view());
    grid.select(198, 0, 200, 1);
    EXPECT_EQ(cellsOfColor(marked), Cells()) << "out of view";
    SendMessageW(view(), WM_VSCROLL, SB_BOTTOM, 0);
    EXPECT_EQ(cellsOfColor(marked), block(198, 0, 200, 1));
}

TEST_F(GridOfWindows, DrawsNothingWhileItIsSwitchedOff) {
    fill(5, 3);
    SetFocus(view());
    grid.select(2, 0, 2, 0);
    grid.setRedraw(false);
    auto empty = picture(view());
    EXPECT_GT(countOf(*empty, GetSysColor(COLOR_WINDOW)), empty->width() * empty->height() * 9 / 10);
}

TEST_F(GridOfWindows, TellsAScreenReaderItsHeadingsAndCells) {
    fill(2, 2);
    IAccessible* table = nullptr;
    ASSERT_EQ(AccessibleObjectFromWindow(view(), static_cast<DWORD>(OBJID_CLIENT), __uuidof(IAccessible),
                                         reinterpret_cast<void**>(&table)),
              S_OK);
    const AccessibleWindow heard(view());
    EXPECT_EQ(heard.parts(), 6);
    EXPECT_EQ(heard.name(2), L"Head 1");
    EXPECT_EQ(heard.name(5), L"200");
    EXPECT_EQ(heard.role(5), ROLE_SYSTEM_CELL);
    grid.select(2, 0, 2, 0);
    EXPECT_TRUE(heard.state(5) & STATE_SYSTEM_SELECTED);
    // It outlives the window.
    shown.page.reset();
    LONG count = 0;
    EXPECT_EQ(table->get_accChildCount(&count), CO_E_OBJNOTCONNECTED);
    EXPECT_EQ(table->Release(), 0u);
}

}  // namespace
}  // namespace dravik::test
