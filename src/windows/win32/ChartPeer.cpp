// Draws a chart's scene in its user units, aligned to the device's pixels.
#include <algorithm>
#include <cmath>

#include "windows/win32/Accessible.h"
#include "windows/win32/DrawnPeer.h"
#include "windows/win32/Page.h"
#include "windows/win32/Peers.h"
#include "windows/win32/WinText.h"

namespace dravik::win32 {
namespace {

constexpr double kOutlineShare = 0.5;
constexpr double kLeastContrast = 2.0;  // a bar that stands out less from the surface gets an outline

void hatch(HDC dc, const RECT& place, COLORREF color) {
    const Brush lines(CreateHatchBrush(HS_BDIAGONAL, color));
    SetBkMode(dc, TRANSPARENT);
    FillRect(dc, &place, lines.get());
}

class ChartPeer : public PeerOf<ui::Chart, DrawnPeer>, private AccessibleContent {
  public:
    using PeerOf::PeerOf;

    bool takesFocus() const override { return true; }

    POINT toView(double x, double y) const override {
        const ui::ChartScale& scale = model_.scale();
        const SIZE size = clientSize();
        return {std::lround((x - scale.left) / (scale.right - scale.left) * size.cx),
                std::lround((y - scale.top) / (scale.bottom - scale.top) * size.cy)};
    }
    ModelPlace fromView(POINT place) const override {
        const ui::ChartScale& scale = model_.scale();
        const SIZE size = clientSize();
        return {scale.left + place.x / std::max<double>(size.cx, 1) * (scale.right - scale.left),
                scale.top + place.y / std::max<double>(size.cy, 1) * (scale.bottom - scale.top)};
    }

  protected:
    HWND make(HWND parent) override { return makeDrawn(L"DravikChart", parent, WS_TABSTOP); }

    ui::Measure ask() override {
        return {{look().px(320), look().px(180)}, {look().px(640), look().px(340)}, true, true, true, true};
    }

    void show(ui::Change change) override {
        if (change == ui::Change::Items) {
            redraw();
            NotifyWinEvent(EVENT_OBJECT_REORDER, window(), OBJID_CLIENT, CHILDID_SELF);
        } else if (change == ui::Change::Selection) {
            redraw();
            if (pointed() >= 0) NotifyWinEvent(EVENT_OBJECT_FOCUS, window(), OBJID_CLIENT, focusedChild());
        } else {
            DrawnPeer::show(change);
        }
    }

    LRESULT message(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == WM_LBUTTONDOWN) {
            SetFocus(window());
            return 0;
        }
        return DrawnPeer::message(message, wParam, lParam);
    }
    void menuKeyPressed() override {
        act([&] { model_.keyDown(ui::kKeyMenu, 0); });
    }

    AccessibleContent* accessibleContent() override { return this; }

    void paint(HDC dc, const RECT& client, const RECT&) override {
        if (!attached()) return;
        const COLORREF background = look().color(model_.backColor());
        fill(dc, client, background);
        const ui::ChartScene& scene = model_.scene();
        const int hair = look().px(1);
        for (const ui::ChartLabel& label : scene.labels)
            if (label.visible) paintLabel(dc, label);
        for (std::size_t i = 0; i < scene.bars.size(); ++i) {
            const ui::ChartBar& bar = scene.bars[i];
            if (!bar.visible) continue;
            const RECT place = barPlace(bar);
            const COLORREF color = look().color(bar.fill);
            fill(dc, place, color);
            if (bar.hatched) hatch(dc, place, background);
            // Bars that touch or overlap stay told apart by a hair line.
            fill(dc, {place.left - hair, place.top, place.left, place.bottom}, background);
            if (heightOf(place) > 0 &&
                (look().highContrast() || contrast(color, background) < kLeastContrast))
                frame(dc, place, look().line(background, kOutlineShare), hair);
            if (hasFocus() && static_cast<int>(i) == pointed()) {
                RECT mark = place;
                InflateRect(&mark, 3 * hair, 3 * hair);
                frame(dc, mark, look().system(COLOR_HIGHLIGHT), 2 * hair);
            }
        }
        for (const ui::ChartLine& line : scene.lines)
            if (line.visible) paintLine(dc, line);
        if (hasFocus()) frame(dc, client, look().system(COLOR_HIGHLIGHT), hair);
    }

  private:
    SIZE clientSize() const {
        RECT client{};
        GetClientRect(window(), &client);
        return {client.right, client.bottom};
    }

    RECT barPlace(const ui::ChartBar& bar) const {
        const POINT a = toView(bar.left, bar.top);
        const POINT b = toView(bar.left + bar.width, bar.top - bar.height);
        return {std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x), std::max(a.y, b.y)};
    }

    int pointed() const {
        return model_.pointed() < static_cast<int>(model_.scene().bars.size()) ? model_.pointed() : -1;
    }

    // A line that the ground would swallow is drawn in black or white where strong contrasts are wanted.
    COLORREF shownOn(COLORREF background, COLORREF color) const {
        const bool swallowed = look().highContrast() && contrast(color, background) < kLeastContrast;
        return swallowed ? readableOn(background) : color;
    }

    void paintLine(HDC dc, const ui::ChartLine& line) const {
        const int thick = std::max(1, look().px(line.borderWidth));
        const COLORREF color = shownOn(look().color(model_.backColor()), look().color(line.color));
        const POINT from = toView(line.x1, line.y1);
        const POINT to = toView(line.x2, line.y2);
        if (from.x == to.x || from.y == to.y) {
            const bool upright = from.x == to.x;
            RECT place{std::min(from.x, to.x), std::min(from.y, to.y), std::max(from.x, to.x) + 1,
                       std::max(from.y, to.y) + 1};
            if (upright) {
                place.left -= thick / 2;
                place.right = place.left + thick;
            } else {
                place.top -= thick / 2;
                place.bottom = place.top + thick;
            }
            fill(dc, place, color);
            return;
        }
        const Pen pen(CreatePen(PS_SOLID, thick, color));
        const Selected selected(dc, pen.get());
        MoveToEx(dc, from.x, from.y, nullptr);
        LineTo(dc, to.x, to.y);
    }

    void paintLabel(HDC dc, const ui::ChartLabel& label) const {
        const HFONT font = look().font(false, label.fontSize);
        const int high = look().lineHeight(font);
        const POINT corner = toView(label.left, label.top);
        const POINT end = toView(label.left + label.width, label.top);
        RECT place{corner.x, corner.y, end.x, corner.y + high};
        if (label.verticallyCentered) OffsetRect(&place, 0, -high / 2);
        if (!ui::isSystemColor(label.backColor)) fill(dc, place, look().color(label.backColor));
        UINT flags = DT_SINGLELINE | DT_NOCLIP | DT_NOPREFIX | DT_VCENTER;
        if (label.alignment == ui::ChartLabel::Alignment::Center) flags |= DT_CENTER;
        if (label.alignment == ui::ChartLabel::Alignment::End) flags |= DT_RIGHT;
        const Selected selected(dc, font);
        SetBkMode(dc, TRANSPARENT);
        SetTextColor(dc, look().textColorOn(label.backColor, ui::kWindowTextColor));
        const std::wstring caption = wide(label.caption);
        DrawTextW(dc, caption.c_str(), static_cast<int>(caption.size()), &place, flags);
    }

    // For a screen reader: one child for each visible bar.
    LONG role() const override { return ROLE_SYSTEM_CHART; }
    std::wstring name() const override { return wide(model_.accessibleName()); }
    std::wstring description() const override {
        return pointed() < 0 ? std::wstring()
                             : wide(model_.scene().bars[static_cast<std::size_t>(pointed())].accessibleName);
    }
    int children() const override {
        const auto& bars = model_.scene().bars;
        return static_cast<int>(
            std::count_if(bars.begin(), bars.end(), [](const ui::ChartBar& bar) { return bar.visible; }));
    }
    const ui::ChartBar& visibleBar(int child) const {
        for (const ui::ChartBar& bar : model_.scene().bars)
            if (bar.visible && --child == 0) return bar;
        throw Failure(RuntimeError::SubscriptOutOfRange);
    }
    std::wstring childName(int child) const override { return wide(visibleBar(child).accessibleName); }
    RECT childPlace(int child) const override { return barPlace(visibleBar(child)); }
    LONG childState(int) const override { return STATE_SYSTEM_READONLY; }
    int focusedChild() const override {
        if (pointed() < 0) return 0;
        const auto& bars = model_.scene().bars;
        return static_cast<int>(std::count_if(bars.begin(), bars.begin() + pointed() + 1,
                                              [](const ui::ChartBar& bar) { return bar.visible; }));
    }
};

}  // namespace

std::shared_ptr<Peer> make(ui::Chart& model, Page& page) {
    return std::make_shared<ChartPeer>(model, page);
}

}  // namespace dravik::win32
