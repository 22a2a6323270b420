// Cells that stand together are parts of one window. They are one stop of the Tab key; arrow keys, Home and
// End move between them. A screen reader finds a table with a child for each cell, numbered from 1 as they
// were added. Having a window for each cell would be most of what opening a page takes.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "windows/win32/Accessible.h"
#include "windows/win32/AnsweredWindow.h"

namespace dravik::win32 {

class CellPeer;
class Page;
class Peer;

class CellBoard : public AnsweredWindow,
                  public std::enable_shared_from_this<CellBoard>,
                  private AccessibleContent {
  public:
    explicit CellBoard(Page& page) : page_(page) {}

    void add(CellPeer& cell);
    // The window, made for the first cell that asks. Hidden: it is shown when it is placed for the first
    // time.
    HWND open(HWND parent);
    int numberOf(const CellPeer& cell) const;

    // A place for a cell, in the parent's coordinates.
    void put(CellPeer& cell, const RECT& place);
    // Around all cells that are seen, in the parent's coordinates; from then on the window's place.
    RECT settle();
    const RECT& bounds() const noexcept { return bounds_; }

    // The cell that Tab comes to: where the focus was last. Nothing when none can take it.
    const CellPeer* tabStop() const;
    void focus(CellPeer& cell);
    // Where the focus goes when it comes to the window next.
    void prefer(CellPeer& cell);
    // The nearest cell in the direction of an arrow key, the first or last one for Home and End; nothing when
    // the key is another one or no cell stands there.
    Peer* neighbour(const CellPeer& from, UINT key) const;

    // The window is shown, and enabled, as long as a cell is.
    void showVisible();
    void showEnabled();

  private:
    LRESULT answer(UINT message, WPARAM wParam, LPARAM lParam) override;
    std::shared_ptr<void> kept() override { return weak_from_this().lock(); }
    void windowGoes() override;
    void makeCurrent(CellPeer& cell);
    CellPeer* at(POINT place) const;
    void paint(HDC dc, const RECT& client, const RECT& dirty);
    int partNamed(ATOM name) const;

    LONG role() const override;
    std::wstring name() const override;
    int children() const override { return static_cast<int>(cells_.size()); }
    LONG childRole(int) const override;
    std::wstring childName(int id) const override;
    RECT childPlace(int id) const override;
    LONG childState(int id) const override;
    int focusedChild() const override;
    void focusChild(int id) override;
    CellPeer& child(int id) const { return *cells_[static_cast<std::size_t>(id - 1)]; }

    Page& page_;
    std::vector<CellPeer*> cells_;
    CellPeer* current_ = nullptr;
    RECT bounds_{};
};

}  // namespace dravik::win32
