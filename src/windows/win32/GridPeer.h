// A grid drawn by hand: it asks the model for the texts of what is seen and for nothing else, so that any
// number of records is shown at once. Selection as in a flex grid: a rectangle from the current cell to a
// selection end.
#pragma once

#include <algorithm>
#include <string>
#include <utility>

#include "ui/Grid.h"
#include "windows/win32/Accessible.h"
#include "windows/win32/DrawnPeer.h"
#include "windows/win32/GridView.h"
#include "windows/win32/WinText.h"

namespace dravik::win32 {

class GridPeer : public PeerOf<ui::Grid, DrawnPeer>, private AccessibleContent {
  public:
    using PeerOf::PeerOf;

    bool takesFocus() const override { return true; }
    void placed(const ui::Box&) override { sized(); }
    void lookChanged() override;

  protected:
    HWND make(HWND parent) override;
    ui::Measure ask() override;
    bool firesMouse() const override { return false; }
    void show(ui::Change change) override;
    LRESULT message(UINT message, WPARAM wParam, LPARAM lParam) override;
    void menuKeyPressed() override;
    void keyPressed(UINT key) override;
    void paint(HDC dc, const RECT& client, const RECT& dirty) override;
    AccessibleContent* accessibleContent() override { return this; }

  private:
    bool isFilled() const { return attached() && model_.redraw() && model_.columns() > 0; }
    int records() const { return isFilled() ? std::max(model_.rows() - 1, 0) : 0; }

    std::wstring text(int row, int column) const;

    // Widths by the headings and the first and last records; the rest is not looked at.
    void fit();
    // Of the largest record number.
    std::size_t digits() const { return std::to_wstring(records()).size(); }
    void refill();
    void sized();
    void showScrollBars();
    void scrollTo(int top, int offset);

    // What the operator does. Rows and columns are -1 outside of the records.
    void scrolled(int bar, int request);
    void wheeled(bool across, int delta);
    void press(int button, int shift, int row, int column, POINT place);
    void pressed(int button, WPARAM keys, POINT place);
    void moved(POINT place);
    void released();
    void captureLost();
    bool showSizingPointer(int hit) const;
    // Past an edge the next row or column comes into view.
    void dragOn();
    void extendTo(POINT place, bool scrolls);
    void moveByKey(UINT key, bool control, bool extend);
    void select(int row, int column, int rowEnd, int columnEnd);

    bool isSelected(int row, int column) const;
    void drawRecord(HDC dc, int row, int column, const RECT& cell) const;
    void drawHeading(HDC dc, const RECT& place) const;
    void drawText(HDC dc, int row, int column, RECT cell) const;

    // For a screen reader: the headings, then the cells that are seen, row by row.
    LONG role() const override { return ROLE_SYSTEM_TABLE; }
    std::wstring name() const override { return wide(model_.accessibleName()); }
    std::wstring description() const override;
    int children() const override;
    std::pair<int, int> cellOf(int child) const;
    LONG childRole(int child) const override;
    std::wstring childName(int child) const override;
    RECT childPlace(int child) const override;
    LONG childState(int child) const override;
    int focusedChild() const override;

    GridView view_;
    int columns_ = -1;
    int wheel_ = 0;
    int resized_ = -1;
    bool fitted_ = false;
    std::size_t fittedDigits_ = 0;
    bool selecting_ = false;
    bool showingBars_ = false;
};

}  // namespace dravik::win32
