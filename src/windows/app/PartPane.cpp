#include "windows/app/PartPane.h"

#include <algorithm>
#include <cmath>

#include "windows/app/ActionPictures.h"
#include "windows/win32/Guard.h"
#include "windows/win32/Module.h"
#include "windows/win32/Peer.h"
#include "windows/win32/Win32Platform.h"
#include "windows/win32/WinText.h"

namespace dravik::app {
namespace {

constexpr std::size_t kMostProblemLines = 4;
constexpr int kMargin = 9;
constexpr UINT_PTR kCheckTimer = 1;
constexpr ui::Color kWarning = ui::rgb(0xB8, 0x3A, 0x00);
constexpr ui::Color kWarningOnDark = ui::rgb(0xFF, 0x9E, 0x57);

}  // namespace

PartPane::Bar::Bar(std::size_t problemLines) : ui::Form("partBar", "") {
    tools.add("previous", "", ui::ToolButton::Style::Push, pictures::previousPart())
        .setToolTip("Previous image");
    tools.add("next", "", ui::ToolButton::Style::Push, pictures::nextPart()).setToolTip("Next image");
    tools.add("zoomOut", "", ui::ToolButton::Style::Push, pictures::zoomOut()).setToolTip("Zoom out");
    tools.add("zoomIn", "", ui::ToolButton::Style::Push, pictures::zoomIn()).setToolTip("Zoom in");
    tools.add("fit", "", ui::ToolButton::Style::Check, pictures::fitting()).setToolTip("Fit the whole image");
    tools.add("actualSize", "", ui::ToolButton::Style::Push, pictures::oneToOne())
        .setToolTip("One image pixel to one pixel of the display");
    name.setUsesMnemonic(false);
    std::vector<ui::Layout> lines;
    for (std::size_t i = 0; i < problemLines; ++i) {
        problems.push_back(std::make_unique<ui::Label>("problemText(" + std::to_string(i) + ")"));
        problems.back()->setUsesMnemonic(false);
        problems.back()->setVisible(false);
        lines.push_back(ui::row({ui::item(*problems.back()).stretched()}));
    }
    dismiss.setVisible(false);
    dismiss.setToolTip("Dismiss the message");
    setLayout(ui::column({ui::row({ui::item(tools), ui::item(name).stretched(), ui::item(scale)}),
                          ui::row({ui::column(std::move(lines)).stretched(), ui::item(dismiss).ownSize()})}));
}

PartPane::Captions::Captions() : ui::Form("partCaptions", "") {
    preview.setUsesMnemonic(false);
    setLayout(ui::column({ui::row({ui::item(preview).stretched()}), ui::item(title)}));
}

PartPane::PartPane(HWND parent, SharedLook& shared, trainer::Trainer& trainer, win32::Win32Platform& platform)
    : DrawnWindow(shared), trainer_(trainer), bar_(kMostProblemLines + 1) {
    create(L"DravikPartPane", "partPane", parent, WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN,
           WS_EX_CONTROLPARENT);
    const auto page = [&](ui::Form& form) {
        auto made = std::make_unique<win32::FormPage>(form, window(), platform);
        made->setVisible(true);
        made->sizeChanged = [this] { arrange(); };
        return made;
    };
    barPage_ = page(bar_);
    view_ = std::make_unique<PartView>(window(), shared);
    captionsPage_ = page(captions_);
    reading_ = std::make_unique<ReadingView>(window(), shared, platform);
    check_ = CreateWindowExW(0, L"STATIC", L"", WS_CHILD | SS_LEFT | SS_NOPREFIX, 0, 0, 0, 0, window(),
                             nullptr, win32::moduleInstance(), nullptr);
    SetPropW(check_, win32::nameMark("heldOutCheck").c_str(), check_);
    SendMessageW(check_, WM_SETFONT, reinterpret_cast<WPARAM>(look().font()), FALSE);
    strip_ = std::make_unique<ThumbnailStrip>(window(), shared, trainer.parts());

    bar_.tools.buttonClick.subscribe([this](ui::ToolButton& button) { pressed(button.key); });
    bar_.dismiss.click.subscribe([this] { showProblems({}); });
    view_->scaleChanged = [this] { showScale(); };
    const auto on = [this](auto& signal, void (PartPane::*body)()) {
        connections_.push_back(
            signal.connect([this, body] { win32::guarded([this, body] { (this->*body)(); }); }));
    };
    on(trainer.parts().currentChanged, &PartPane::showPart);
    on(trainer.parts().listChanged, &PartPane::showPart);
    on(trainer.previewChanged, &PartPane::showPreview);
    on(trainer.readingChanged, &PartPane::showReading);
    on(trainer.checkChanged, &PartPane::showCheck);
    on(trainer.checkTimer().changed, &PartPane::followCheck);
    followCheck();
    showPart();
    showPreview();
    showReading();
    showCheck();
}

PartPane::~PartPane() {
    connections_.clear();
    if (check_) RemovePropW(check_, win32::nameMark("heldOutCheck").c_str());
}

void PartPane::pressed(const std::string& key) {
    if (key == "previous") trainer_.parts().previous();
    if (key == "next") trainer_.parts().next();
    if (key == "zoomIn") view_->zoomIn();
    if (key == "zoomOut") view_->zoomOut();
    if (key == "fit") view_->fit();
    if (key == "actualSize") view_->setScale(1);
    showScale();
}

void PartPane::open(const std::vector<std::string>& paths) {
    std::vector<std::string> problems;
    if (!win32::guarded([&] { problems = trainer_.parts().open(paths); })) return;
    const std::size_t more = problems.size() > kMostProblemLines ? problems.size() - kMostProblemLines : 0;
    problems.resize(problems.size() - more);
    if (more > 0) problems.push_back("... and " + std::to_string(more) + " more");
    showProblems(problems);
}

void PartPane::showProblems(const std::vector<std::string>& lines) {
    const ui::Color warning = win32::readableOn(look().background()) == 0 ? kWarning : kWarningOnDark;
    for (std::size_t i = 0; i < bar_.problems.size(); ++i) {
        bar_.problems[i]->setForeColor(warning);
        bar_.problems[i]->setCaption(i < lines.size() ? lines[i] : std::string());
        bar_.problems[i]->setVisible(i < lines.size());
    }
    bar_.dismiss.setVisible(!lines.empty());
    arrange();
}

void PartPane::showPart() {
    const trainer::OpenedParts& parts = trainer_.parts();
    const int current = parts.current();
    const bool isOpen = current >= 0;
    std::string message;
    if (!isOpen)
        message = "Open part images or drop them here\n\nFile \u2192 Open Images... (Ctrl+O)";
    else if (!parts.problem().empty())
        message = parts.problem();
    view_->setImage(parts.image().empty() ? nullptr : &parts.image(), message);
    bar_.name.setCaption(isOpen ? std::to_string(current + 1) + " of " + std::to_string(parts.count()) +
                                      "   " + parts.name(current)
                                : std::string());
    bar_.name.setToolTip(isOpen ? parts.path(current) : std::string());
    bar_.tools.button("previous").setEnabled(current > 0);
    bar_.tools.button("next").setEnabled(isOpen && current + 1 < parts.count());
    for (const char* key : {"zoomIn", "zoomOut", "fit", "actualSize"})
        bar_.tools.button(key).setEnabled(!parts.image().empty());
    showScale();
}

void PartPane::showPreview() {
    view_->setCharacters(trainer_.preview(), trainer_.mismatch());
    const bool warning = trainer_.mismatch() != 0;
    const ui::Color color = win32::readableOn(look().background()) == 0 ? kWarning : kWarningOnDark;
    captions_.preview.setForeColor(warning ? color : ui::kWindowTextColor);
    captions_.preview.setBold(warning);
    captions_.preview.setCaption((warning ? "\u26A0 " : "") + trainer_.previewText());
}

void PartPane::showReading() {
    reading_->setReading(trainer_.reading());
    arrange();
}

void PartPane::showCheck() {
    SetWindowTextW(check_, win32::wide(trainer_.checkText()).c_str());
    ShowWindow(check_, trainer_.checkText().empty() ? SW_HIDE : SW_SHOWNA);
    arrange();
    InvalidateRect(check_, nullptr, TRUE);
}

// Ticks for the trainer as long as it has to look whether the check has ended.
void PartPane::followCheck() {
    const ui::Timer& timer = trainer_.checkTimer();
    if (timer.enabled())
        SetTimer(window(), kCheckTimer, static_cast<UINT>(timer.interval()), nullptr);
    else
        KillTimer(window(), kCheckTimer);
}

void PartPane::showScale() {
    bar_.tools.button("fit").setPressed(view_->fits());
    const bool shown = !trainer_.parts().image().empty();
    bar_.scale.setCaption(shown ? std::to_string(std::lround(view_->scale() * 100)) + " %" : std::string());
    if (stateChanged) stateChanged();
}

int PartPane::leastWidth() const {
    return barPage_->minimumSize().cx;
}

void PartPane::setDpi(int dpi) {
    for (win32::FormPage* page : {barPage_.get(), captionsPage_.get()}) page->setDpi(dpi);
    reading_->setReading(trainer_.reading());
    strip_->forgetPictures();
    SendMessageW(check_, WM_SETFONT, reinterpret_cast<WPARAM>(look().font()), TRUE);
    arrange();
}

void PartPane::systemChanged() {
    for (win32::FormPage* page : {barPage_.get(), captionsPage_.get()}) page->systemChanged();
    showPreview();
    RedrawWindow(window(), nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN);
}

int PartPane::checkHeight(int width) const {
    const std::wstring text = win32::wide(trainer_.checkText());
    if (text.empty() || width <= 0) return 0;
    const HDC dc = GetDC(window());
    RECT needed{0, 0, width, 0};
    {
        const win32::Selected font(dc, look().font());
        DrawTextW(dc, text.c_str(), static_cast<int>(text.size()), &needed,
                  DT_WORDBREAK | DT_NOPREFIX | DT_CALCRECT);
    }
    ReleaseDC(window(), dc);
    return needed.bottom;
}

// The pages bring their own margins.
void PartPane::arrange() {
    if (!strip_) return;
    const RECT area = client();
    const int margin = look().px(kMargin);
    const int barHeight = barPage_->preferredSize().cy;
    const int captionsHeight = captionsPage_->preferredSize().cy - margin / 2;
    const int inside = area.right - 2 * margin;
    const int checked = checkHeight(inside);
    const int readingHeight = reading_->preferredHeight();
    int bottom = area.bottom - margin;
    strip_->setBounds({margin, bottom - strip_->preferredHeight(), area.right - margin, bottom});
    bottom -= strip_->preferredHeight();
    bottom -= look().px(6);
    if (checked > 0) {
        SetWindowPos(check_, nullptr, margin, bottom - checked, inside, checked,
                     SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS);
        bottom -= checked + look().px(6);
    }
    reading_->setBounds({margin, bottom - readingHeight, area.right - margin, bottom});
    bottom -= readingHeight;
    captionsPage_->setBounds({0, bottom - captionsHeight, area.right, bottom});
    bottom -= captionsHeight;
    barPage_->setBounds({0, 0, area.right, barHeight});
    view_->setBounds({margin, barHeight, area.right - margin, bottom});
}

void PartPane::paint(HDC dc, const RECT& area) {
    win32::fill(dc, area, look().background());
}

std::vector<HWND> PartPane::stops() const {
    return {barPage_->window(), view_->window(), reading_->window(), strip_->window()};
}

bool PartPane::hasFocusInside() const {
    return IsChild(window(), GetFocus()) != FALSE;
}

void PartPane::focus(bool last) {
    if (last)
        SetFocus(strip_->window());
    else if (!barPage_->focusFirst())
        SetFocus(view_->window());
}

bool PartPane::translate(const MSG& message, bool& left) {
    left = false;
    if (message.message == WM_SYSCHAR && (message.wParam == 'r' || message.wParam == 'R')) {
        SetFocus(reading_->window());
        return true;
    }
    if (!hasFocusInside()) return false;
    for (win32::FormPage* page : {barPage_.get(), captionsPage_.get()}) {
        bool leftPage = false;
        if (page->translateKey(message, leftPage)) return true;
    }
    if (message.message != WM_KEYDOWN || message.wParam != VK_TAB || GetKeyState(VK_CONTROL) < 0)
        return false;
    const std::vector<HWND> windows = stops();
    const HWND focus = GetFocus();
    const auto now = std::find_if(windows.begin(), windows.end(),
                                  [&](HWND stop) { return stop == focus || IsChild(stop, focus); });
    const bool backwards = GetKeyState(VK_SHIFT) < 0;
    if (now == windows.end() || (backwards ? now == windows.begin() : now + 1 == windows.end())) {
        left = true;
        return false;
    }
    const HWND next = backwards ? *(now - 1) : *(now + 1);
    if (next == barPage_->window())
        barPage_->focusLast();
    else
        SetFocus(next);
    return true;
}

LRESULT PartPane::answer(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_SIZE:
            arrange();
            redraw();
            return 0;
        case WM_CTLCOLORSTATIC: {
            const auto dc = reinterpret_cast<HDC>(wParam);
            SetTextColor(dc, look().color(ui::kWindowTextColor));
            SetBkColor(dc, look().background());
            return reinterpret_cast<LRESULT>(look().brush(look().background()));
        }
        case WM_TIMER:
            if (wParam == kCheckTimer && trainer_.checkTimer().enabled()) trainer_.checkTimer().tick();
            return 0;
        default:
            return DrawnWindow::answer(message, wParam, lParam);
    }
}

}  // namespace dravik::app
