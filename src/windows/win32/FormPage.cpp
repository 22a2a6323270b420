#include "windows/win32/FormPage.h"

#include "windows/win32/Dpi.h"
#include "windows/win32/Guard.h"
#include "windows/win32/Page.h"

namespace dravik::win32 {

FormPage::FormPage(ui::Form& form, HWND parent, Win32Platform& platform, const Ambient& ambient)
    : page_(std::make_shared<Page>(form, platform, dpiOf(parent), ambient)) {
    page_->sizeChanged = [this] {
        if (sizeChanged) sizeChanged();
    };
    page_->focusEntered = [this] {
        if (focusEntered) focusEntered();
    };
    page_->focusGone = [this] {
        if (focusLeft) focusLeft();
    };
    page_->escaped = [this] {
        if (escaped) escaped();
    };
    page_->appearanceChanged = [this] {
        if (appearanceChanged) appearanceChanged();
    };
    page_->mnemonicsChanged = [this] {
        if (mnemonicsChanged) mnemonicsChanged();
    };
    try {
        page_->create(parent);
    } catch (...) {
        page_->close();
        throw;
    }
}

FormPage::~FormPage() {
    page_->sizeChanged = nullptr;
    page_->focusEntered = nullptr;
    page_->focusGone = nullptr;
    page_->escaped = nullptr;
    page_->appearanceChanged = nullptr;
    page_->mnemonicsChanged = nullptr;
    page_->close();
}

HWND FormPage::window() const noexcept {
    return page_->window();
}

void FormPage::detach() noexcept {
    page_->detach();
}

SIZE FormPage::minimumSize() const {
    const ui::Extent size = page_->minimum();
    return {size.width, size.height};
}

SIZE FormPage::preferredSize() const {
    const ui::Extent size = page_->preferred();
    return {size.width, size.height};
}

void FormPage::setBounds(const RECT& bounds) {
    if (!page_->window()) return;
    SetWindowPos(page_->window(), nullptr, bounds.left, bounds.top, widthOf(bounds), heightOf(bounds),
                 SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS);
    page_->arrangeFirst();
}

void FormPage::setVisible(bool visible) {
    if (!page_->window()) return;
    if (visible) page_->arrangeFirst();
    ShowWindow(page_->window(), visible ? SW_SHOWNA : SW_HIDE);
}

void FormPage::setDpi(int dpi) {
    page_->setDpi(dpi);
}

int FormPage::dpi() const noexcept {
    return page_->look().dpi();
}

void FormPage::setAmbient(const Ambient& ambient) {
    page_->setAmbient(ambient);
}

void FormPage::setInert(bool inert) {
    page_->setInert(inert);
}

void FormPage::setDefaultShown(bool shown) {
    page_->setDefaultShown(shown);
}

bool FormPage::answersEnter() const noexcept {
    return page_->attached() && page_->form().defaultButton;
}

void FormPage::systemChanged() {
    page_->systemChanged();
}

bool FormPage::translateKey(const MSG& message, bool& leftPage) {
    const auto page = page_;
    return page->translateKey(message, leftPage);
}

bool FormPage::focusFirst() {
    return page_->focusEnd(false);
}

bool FormPage::focusLast() {
    return page_->focusEnd(true);
}

bool FormPage::hasFocusInside() const {
    return page_->hasFocusInside();
}

bool FormPage::restoreFocus() {
    return page_->restoreFocus();
}

void FormPage::giveFocusBackSoon() {
    if (page_->window()) PostMessageW(page_->window(), Page::kGiveFocusBack, 0, 0);
}

std::vector<wchar_t> FormPage::mnemonics() const {
    return page_->mnemonics();
}

bool FormPage::pressMnemonic(wchar_t key) {
    const auto page = page_;
    return page->pressMnemonic(key);
}

void FormPage::draw(HDC dc, const RECT& place) const {
    page_->draw(dc, place);
}

}  // namespace dravik::win32
