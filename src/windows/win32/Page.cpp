#include "windows/win32/Page.h"

#include <algorithm>
#include <set>

#include "ui/Visit.h"
#include "windows/win32/CellPeer.h"
#include "windows/win32/Module.h"
#include "windows/win32/Peers.h"
#include "windows/win32/Win32Platform.h"
#include "windows/win32/WinText.h"

namespace dravik::win32 {
namespace {

constexpr wchar_t kClassName[] = L"DravikFormPage";

}  // namespace

Page::Page(ui::Form& form, Win32Platform& platform, int dpi, const Ambient& ambient)
    : form_(form), platform_(platform), look_(std::make_unique<Look>(dpi, ambient)) {}

Page::~Page() {
    close();
}

void Page::create(HWND parent) {
    INITCOMMONCONTROLSEX wanted{sizeof(INITCOMMONCONTROLSEX), ICC_BAR_CLASSES | ICC_PROGRESS_CLASS |
                                                                  ICC_UPDOWN_CLASS | ICC_STANDARD_CLASSES};
    InitCommonControlsEx(&wanted);
    HWND made = nullptr;
    {
        const Styles styles;
        made = CreateWindowExW(WS_EX_CONTROLPARENT, drawnClass(kClassName), wide(form_.caption()).c_str(),
                               WS_CHILD | WS_CLIPCHILDREN | WS_CLIPSIBLINGS, 0, 0, 0, 0, parent, nullptr,
                               moduleInstance(), nullptr);
    }
    if (!made) throw Failure(RuntimeError::OutOfMemory, "no window: " + lastErrorText(GetLastError()));
    takeOver(made);
    toolTips_.open(window());
    toolTips_.setFont(look_->font());
    addPeers(form_.layout(), window(), nullptr);
    connections_.push_back(form_.destroyed.connect([this] { detach(); }));
    followTimers();
    showDefaultButton(nullptr);
    knownPreferred_ = preferred();
    SetWindowPos(window(), nullptr, 0, 0, knownPreferred_.width, knownPreferred_.height,
                 SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOMOVE);
}

void Page::arrangeFirst() {
    if (std::exchange(open_, true)) return;
    arrange();
}

void Page::close() noexcept {
    detach();
    if (window()) DestroyWindow(window());
}

void Page::detach() noexcept {
    if (!attached_) return;
    attached_ = false;
    platform_.focusLeft(window());
    connections_.clear();
    for (std::size_t i = 0; window() && i < form_.timers.size(); ++i) KillTimer(window(), i + 1);
    for (const auto& peer : peers_) peer->detach();
}

void Page::addPeers(const ui::Layout& layout, HWND parent, Peer* container) {
    CellBoard* board = nullptr;
    if (layout.kind == ui::Layout::Kind::Widget) {
        ui::Layout alone;
        alone.children.push_back(layout);
        addPeers(alone, parent, container);
        return;
    }
    for (const ui::Layout& child : layout.children) {
        if (child.kind != ui::Layout::Kind::Widget) {
            addPeers(child, parent, container);
            continue;
        }
        const bool isCell =
            child.widget->kind() == ui::WidgetKind::Label && static_cast<ui::Label&>(*child.widget).isCell();
        if (isCell && !board) board = boards_.emplace_back(std::make_shared<CellBoard>(*this)).get();
        const auto peer = isCell
                              ? makeCell(static_cast<ui::Label&>(*child.widget), *this, *board)
                              : ui::visit(*child.widget, [this](auto& model) { return make(model, *this); });
        peers_.push_back(peer);
        peer->start(parent, container);
    }
}

Peer* Page::peerOf(HWND window) const {
    for (; window && window != this->window(); window = GetParent(window))
        if (const auto found = byWindow_.find(window); found != byWindow_.end()) return found->second;
    return nullptr;
}

ui::LayoutGeometry Page::geometryOf(const ui::Layout& layout) const {
    return ui::LayoutGeometry(layout, look_->dpi(), [this](const ui::Widget& widget) {
        Peer* peer = platform_.peerOf(widget);
        return peer ? peer->measure() : ui::Measure{};
    });
}

void Page::place(const std::vector<ui::PlacedWidget>& placed) {
    // Being shown erases everything; until then nothing need be erased where it comes to stand.
    const UINT unseen = IsWindowVisible(window()) ? 0u : SWP_DEFERERASE;
    HDWP batch = BeginDeferWindowPos(static_cast<int>(placed.size()));
    const auto move = [&batch, unseen](HWND window, const RECT& to, bool stands) {
        const bool appears = !(GetWindowLongPtrW(window, GWL_STYLE) & WS_VISIBLE);
        if ((appears || !stands) && batch)
            batch = DeferWindowPos(batch, window, nullptr, to.left, to.top, widthOf(to), heightOf(to),
                                   SWP_NOZORDER | SWP_NOACTIVATE | (appears ? SWP_SHOWWINDOW : 0u) | unseen);
    };
    std::vector<std::pair<std::shared_ptr<Peer>, ui::Box>> moved;
    std::set<CellBoard*> boards;
    for (const ui::PlacedWidget& item : placed) {
        Peer* peer = platform_.peerOf(*item.widget);
        if (!peer || !peer->window()) continue;
        const RECT to = peer->windowPlace(item.box);
        if (CellBoard* board = peer->board()) {
            board->put(static_cast<CellPeer&>(*peer), to);
            boards.insert(board);
        } else {
            move(peer->window(), to, peer->stands(to));
        }
        moved.emplace_back(peer->shared_from_this(), item.box);
    }
    for (CellBoard* board : boards) {
        const RECT before = board->bounds();
        const RECT to = board->settle();
        move(board->window(), to, EqualRect(&before, &to));
    }
    if (batch) EndDeferWindowPos(batch);
    for (const auto& [peer, box] : moved)
        if (peer->window()) peer->placed(box);
}

ui::Extent Page::minimum() const {
    if (!attached_) return {};
    const int margins = 2 * look_->px(ui::kMargin);
    const ui::Extent inside = geometryOf(form_.layout()).minimum();
    return {inside.width + margins, inside.height + margins};
}

ui::Extent Page::preferred() const {
    if (!attached_) return knownPreferred_;
    const int margins = 2 * look_->px(ui::kMargin);
    const ui::Extent inside = geometryOf(form_.layout()).preferred();
    return {inside.width + margins, inside.height + margins};
}

void Page::arrange() {
    willArrange_ = false;
    if (!attached_ || !window() || arranging_ || !open_) return;
    arranging_ = true;
    bool resized = false;
    guarded([&] {
        RECT client{};
        GetClientRect(window(), &client);
        const int margin = look_->px(ui::kMargin);
        const ui::LayoutGeometry geometry = geometryOf(form_.layout());
        place(geometry.place({margin, margin, client.right - 2 * margin, client.bottom - 2 * margin}));
        const ui::Extent wanted{geometry.preferred().width + 2 * margin,
                                geometry.preferred().height + 2 * margin};
        resized = std::exchange(knownPreferred_, wanted) != wanted;
    });
    arranging_ = false;
    // Whoever is told gives the page another size, which arranges it again.
    if (resized) guarded([this] { tell(sizeChanged); });
}

void Page::arrangeSoon() {
    if (!willArrange_ && window() && !arranging_ && open_)
        willArrange_ = PostMessageW(window(), kArrange, 0, 0) != FALSE;
}

void Page::changed() {
    if (!willTellChange_ && window() && (appearanceChanged || mnemonicsChanged))
        willTellChange_ = PostMessageW(window(), kChanged, 0, 0) != FALSE;
}

void Page::tellChange() {
    willTellChange_ = false;
    if (!attached_) return;
    if (std::exchange(toldMnemonics_, mnemonics()) != toldMnemonics_)
        guarded([this] { tell(mnemonicsChanged); });
    guarded([this] { tell(appearanceChanged); });
}

void Page::renewLook(int dpi, const Ambient& ambient) {
    // The windows still use what the look before made.
    const auto before = std::exchange(look_, std::make_unique<Look>(dpi, ambient));
    toolTips_.setFont(look_->font());
    for (const auto& peer : peers_)
        if (peer->window() && peer->attached()) peer->lookChanged();
    arrange();
    changed();
    if (window()) RedrawWindow(window(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

void Page::setDpi(int dpi) {
    if (attached_ && dpi != look_->dpi()) renewLook(std::clamp(dpi, 48, 960), look_->ambient());
}

void Page::setAmbient(const Ambient& ambient) {
    if (attached_ && !(ambient == look_->ambient())) renewLook(look_->dpi(), ambient);
}

void Page::systemChanged() {
    if (!attached_) return;
    for (const auto& [window, peer] : byWindow_) SendMessageW(window, WM_SYSCOLORCHANGE, 0, 0);
    renewLook(look_->dpi(), look_->ambient());
}

void Page::setInert(bool inert) {
    if (std::exchange(inert_, inert) == inert || !window()) return;
    EnableWindow(window(), !inert);
    for (std::size_t i = 0; attached_ && i < form_.timers.size(); ++i) showTimer(i);
}

void Page::followTimers() {
    for (std::size_t i = 0; i < form_.timers.size(); ++i) {
        connections_.push_back(form_.timers[i]->changed.connect([this, i] { showTimer(i); }));
        showTimer(i);
    }
}

void Page::showTimer(std::size_t index) {
    const ui::Timer& timer = *form_.timers[index];
    if (!window()) return;
    if (timer.enabled() && !inert_)
        SetTimer(window(), index + 1, static_cast<UINT>(timer.interval()), nullptr);
    else
        KillTimer(window(), index + 1);
}

// A tick that opens a box is not through before the box is answered; until then no other one comes, which
// could open the next box above it.
void Page::tick(std::size_t index) {
    if (ticking_ || !form_.timers[index]->enabled()) return;
    ticking_ = true;
    guarded([&] { form_.timers[index]->tick(); });
    ticking_ = false;
}

}  // namespace dravik::win32
