// What a screen reader finds in a window: names of its parts, numbered from 1, and where the focus is in it.
// The whole window is number 0.
#pragma once

#include <windows.h>

#include <oleacc.h>

#include <string>

namespace dravik::test {

class AccessibleWindow {
  public:
    explicit AccessibleWindow(HWND window) {
        AccessibleObjectFromWindow(window, static_cast<DWORD>(OBJID_CLIENT), __uuidof(IAccessible),
                                   reinterpret_cast<void**>(&object_));
    }
    AccessibleWindow(const AccessibleWindow&) = delete;
    AccessibleWindow& operator=(const AccessibleWindow&) = delete;
    ~AccessibleWindow() {
        if (object_) object_->Release();
    }

    LONG parts() const {
        LONG count = 0;
        if (object_) object_->get_accChildCount(&count);
        return count;
    }
    std::wstring name(LONG part = 0) const {
        if (!object_) return L"no object";
        BSTR name = nullptr;
        object_->get_accName(number(part), &name);
        const std::wstring result = name ? name : L"";
        SysFreeString(name);
        return result;
    }
    LONG role(LONG part = 0) const {
        VARIANT role = number(-1);
        if (object_) object_->get_accRole(number(part), &role);
        return role.lVal;
    }
    LONG state(LONG part = 0) const {
        VARIANT state = number(-1);
        if (object_) object_->get_accState(number(part), &state);
        return state.lVal;
    }
    // Of the screen.
    RECT place(LONG part = 0) const {
        LONG left = 0;
        LONG top = 0;
        LONG width = 0;
        LONG height = 0;
        if (object_) object_->accLocation(&left, &top, &width, &height, number(part));
        return {left, top, left + width, top + height};
    }
    // -1 outside; of the screen.
    LONG at(LONG x, LONG y) const {
        VARIANT part = number(-1);
        return object_ && object_->accHitTest(x, y, &part) == S_OK ? part.lVal : -1;
    }
    // -1 when it is not in this window.
    LONG focused() const {
        VARIANT part = number(-1);
        if (!object_ || object_->get_accFocus(&part) != S_OK || part.vt != VT_I4) return -1;
        return part.lVal;
    }
    void focus(LONG part) const {
        if (object_) object_->accSelect(SELFLAG_TAKEFOCUS, number(part));
    }

  private:
    static VARIANT number(LONG value) {
        VARIANT result{};
        result.vt = VT_I4;
        result.lVal = value;
        return result;
    }

    IAccessible* object_ = nullptr;
};

}  // namespace dravik::test
