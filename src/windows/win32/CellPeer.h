// A cell of the character overview or of a feature array: a flat square with a border, one short text and its
// own back colour, which the keyboard reaches too. It is a part of the window of its board.
#pragma once

#include "ui/Label.h"
#include "windows/win32/DrawnPeer.h"

namespace dravik::win32 {

class CellPeer : public PeerOf<ui::Label, DrawnPeer> {
  public:
    CellPeer(ui::Label& model, Page& page) : PeerOf(model, page), takesFocus_(model.takesFocus()) {}

    // Before start().
    void join(CellBoard& board);
    CellBoard* board() const override { return board_; }
    // The window is there no more.
    void lose() noexcept { standIn(nullptr); }

    bool takesFocus() const override { return takesFocus_; }
    bool isTabStop() const override;
    void focus() override;
    void showEnabled() override;
    void lookChanged() override;
    void placed(const ui::Box& box) override;
    POINT toView(double x, double y) const override;
    ModelPlace fromView(POINT place) const override;

    // In the coordinates of the board's parent; true when it is another one than before.
    bool setPlace(const RECT& place);
    const RECT& place() const noexcept { return place_; }
    // On the board.
    RECT shownPlace() const;
    bool isSeen() const { return attached() && model_.visible(); }
    std::wstring accessibleName() const;

    // The focus moves to or from it inside of the board.
    void arrive();
    void leave();
    void paintAt(HDC dc, const RECT& place);
    LRESULT answer(UINT message, WPARAM wParam, LPARAM lParam) override {
        return Peer::answer(message, wParam, lParam);
    }

  protected:
    HWND make(HWND parent) override;
    void opened(HWND made) override { standIn(made); }
    void started() override;
    HFONT wantedFont() const override;
    ui::Measure ask() override;
    void show(ui::Change change) override;
    LRESULT message(UINT message, WPARAM wParam, LPARAM lParam) override;
    void redraw() const override;
    void menuKeyPressed() override { fireMouseDown(ui::kRightButton, 0, centre()); }
    void keyPressed(UINT key) override;
    void paint(HDC dc, const RECT& client, const RECT&) override { paintAt(dc, client); }

  private:
    POINT centre() const;
    void focused();
    void notify(DWORD event) const;
    void showTip();

    const bool takesFocus_;
    CellBoard* board_ = nullptr;
    RECT place_{};
    bool byMouse_ = false;
};

}  // namespace dravik::win32
