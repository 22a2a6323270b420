// Cells that stand together are one stop of the Tab key; arrow keys, Home and End move between them.
#pragma once

#include "activex/win32/Windows.h"

#include <vector>

namespace dravik {

class Peer;

class CellGroup {
  public:
    void add(Peer& cell);
    // The Tab key comes to this cell from now on.
    void setTabStop(const Peer& cell) noexcept { tabStop_ = &cell; }
    bool isTabStop(const Peer& cell) const noexcept { return tabStop_ == &cell; }
    // The nearest cell in the direction of an arrow key, the first or last one for Home and End; nothing when
    // the key is another one or no cell stands there.
    Peer* neighbour(const Peer& from, UINT key) const;

  private:
    std::vector<Peer*> cells_;
    const Peer* tabStop_ = nullptr;
};

}  // namespace dravik
