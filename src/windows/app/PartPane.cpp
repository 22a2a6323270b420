#include "windows/app/PartPane.h"

#include <algorithm>

#include "windows/win32/Guard.h"
#include "windows/win32/Module.h"
#include "windows/win32/Peer.h"
#include "windows/win32/Win32Platform.h"
#include "windows/win32/WinText.h"

namespace dravik::app {
namespace {

constexpr int kMargin = 9;

}  // namespace

PartPane::Bar::Bar(const trainer::ActionList& actions) : ui::Form("partBar", "") {
    for (const trainer::Action* action : actions) {
        if (!action) continue;
        const trainer::ActionFace& face = action->face();
        tools
            .add(face.name, "", face.checkable ? ui::ToolButton::Style::Check : ui::ToolButton::Style::Push,
                 face.picture)
            .setToolTip(face.tip);
        show(*action);
    }
    name.setUsesMnemonic(false);
    std::vector<ui::Layout> lines;
    for (std::size_t i = 0; i < trainer::TrainerWindow::kMostProblemLines; ++i) {
        problems.push_back(std::make_unique<ui::Label>("problemText(" + std::to_string(i) + ")"));
        problems.back()->setUsesMnemonic(false);
        lines.push_back(ui::row({ui::item(*problems.back()).stretched()}));
    }
    dismiss.setToolTip(trainer::kDismissTip);
    setLayout(ui::column({ui::row({ui::item(tools), ui::item(name).stretched(), ui::item(scale)}),
                          ui::row({ui::column(std::move(lines)).stretched(), ui::item(dismiss).ownSize()})}));
}

void PartPane::Bar::show(const trainer::Action& action) {
    tools.button(action.name()).setEnabled(action.enabled());
    tools.button(action.name()).setPressed(action.checked());
}

PartPane::Captions::Captions() : ui::Form("partCaptions", "") {
    preview.setUsesMnemonic(false);
    notice.setUsesMnemonic(false);
    setLayout(ui::column({ui::row({ui::item(notice).stretched()}), ui::row({ui::item(preview).stretched()}),
                          ui::item(title)}));
}

PartPane::PartPane(HWND parent, SharedLook& shared, trainer::TrainerWindow& model,
                   win32::Win32Platform& platform)
    : DrawnWindow(shared), model_(model), bar_(model.actions.toolbar()) {
    create(L"DravikPartPane", "partPane", parent, WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN,
           WS_EX_CONTROLPARENT);
    const auto page = [&](ui::Form& form) {
        auto made = std::make_unique<win32::FormPage>(form, window(), platform, look().ambient());
        made->setVisible(true);
        made->sizeChanged = [this] { arrange(); };
        return made;
    };
    bar_.timers = model.timers();
    barPage_ = page(bar_);
    view_ = std::make_unique<PartView>(window(), shared, model, platform);
    captionsPage_ = page(captions_);
    reading_ = std::make_unique<ReadingView>(window(), shared, model.reading, platform);
    check_ = CreateWindowExW(0, L"STATIC", L"", WS_CHILD | SS_LEFT | SS_NOPREFIX, 0, 0, 0, 0, window(),
                             nullptr, win32::moduleInstance(), nullptr);
    SetPropW(check_, win32::nameMark("heldOutCheck").c_str(), check_);
    SendMessageW(check_, WM_SETFONT, reinterpret_cast<WPARAM>(look().font()), FALSE);
    strip_ = std::make_unique<ThumbnailStrip>(window(), shared, model.strip);

    connectTools();
    bar_.dismiss.click.subscribe([this] { model_.dismissProblems(); });
    connections_.push_back(model.textsChanged.connect([this] { win32::guarded([this] { showTexts(); }); }));
    connections_.push_back(model.reading.changed.connect([this] { arrange(); }));
    showTexts();
}

PartPane::~PartPane() {
    connections_.clear();
    if (check_) RemovePropW(check_, win32::nameMark("heldOutCheck").c_str());
}

void PartPane::connectTools() {
    for (trainer::Action* action : model_.actions.toolbar())
        if (action) connections_.push_back(action->changed.connect([this, action] { bar_.show(*action); }));
    bar_.tools.buttonClick.subscribe([this](ui::ToolButton& button) {
        trainer::Action& action = model_.actions.find(button.key);
        action.trigger();
        bar_.show(action);  // a check button has changed by itself
    });
}

void PartPane::showTexts() {
    const bool onLight = win32::readableOn(look().background()) == 0;
    const ui::Color warning = onLight ? ui::kWarningColor : ui::kWarningColorOnDark;
    bar_.name.setCaption(model_.partName());
    bar_.name.setToolTip(model_.partTip());
    bar_.scale.setCaption(model_.scaleText());
    const std::vector<std::string>& problems = model_.problems();
    for (std::size_t i = 0; i < bar_.problems.size(); ++i) {
        bar_.problems[i]->setForeColor(warning);
        bar_.problems[i]->setCaption(i < problems.size() ? problems[i] : std::string());
        bar_.problems[i]->setVisible(i < problems.size());
    }
    bar_.dismiss.setVisible(!problems.empty());
    captions_.preview.setForeColor(model_.previewWarns() ? warning : ui::kWindowTextColor);
    captions_.preview.setBold(model_.previewWarns());
    captions_.preview.setCaption(model_.previewText());
    captions_.notice.setCaption(model_.noticeText());
    captions_.notice.setToolTip(model_.noticeText());
    showCheck();
    arrange();
}

void PartPane::showCheck() {
    const std::wstring text = win32::wide(model_.checkText());
    if (win32::windowText(check_) == text) return;
    SetWindowTextW(check_, text.c_str());
    ShowWindow(check_, text.empty() ? SW_HIDE : SW_SHOWNA);
    InvalidateRect(check_, nullptr, TRUE);
}

int PartPane::leastWidth() const {
    return barPage_->minimumSize().cx;
}

void PartPane::setDpi(int dpi) {
    for (win32::FormPage* page : {barPage_.get(), captionsPage_.get()}) page->setDpi(dpi);
    reading_->showReading();
    model_.view.setDisplay(shared().display());
    model_.strip.setDisplay(shared().display());
    SendMessageW(check_, WM_SETFONT, reinterpret_cast<WPARAM>(look().font()), TRUE);
    arrange();
}

void PartPane::systemChanged(const win32::Ambient& ambient) {
    for (win32::FormPage* page : {barPage_.get(), captionsPage_.get()}) {
        page->setAmbient(ambient);
        page->systemChanged();
    }
    showTexts();
    RedrawWindow(window(), nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN);
}

int PartPane::checkHeight(int width) const {
    const std::wstring text = win32::wide(model_.checkText());
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
    // Where room is short the strip gives way first.
    const int others = barHeight + captionsHeight + readingHeight + checked + 3 * margin +
                       look().px(trainer::PartViewModel::kLeastHeight);
    const int stripHeight = std::clamp<int>(static_cast<int>(area.bottom) - others, strip_->leastHeight(),
                                            strip_->preferredHeight());
    strip_->setBounds({margin, bottom - stripHeight, area.right - margin, bottom});
    bottom -= stripHeight + look().px(6);
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
    if (GetFocus() == view_->window() && view_->takesKey(VK_TAB)) return true;
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
        default:
            return DrawnWindow::answer(message, wParam, lParam);
    }
}

}  // namespace dravik::app
