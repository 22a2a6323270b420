// What a screen reader finds in a window that is drawn by hand: the window itself and, as children numbered
// from 1, the parts of it that can be seen. One class answers for all of them; the window says what there is.
#pragma once

#include <oleacc.h>

#include <memory>
#include <string>

namespace dravik::win32 {

class AccessibleContent {
  public:
    virtual ~AccessibleContent() = default;

    virtual LONG role() const = 0;  // ROLE_SYSTEM_...
    virtual LONG childRole(int) const { return ROLE_SYSTEM_GRAPHIC; }
    // STATE_SYSTEM_... bits of the window, besides those that every window has.
    virtual LONG state() const { return 0; }
    virtual std::wstring name() const = 0;
    virtual std::wstring description() const { return {}; }
    virtual int children() const { return 0; }
    virtual std::wstring childName(int) const { return {}; }
    // In client coordinates.
    virtual RECT childPlace(int) const { return {}; }
    virtual LONG childState(int) const { return 0; }
    // 0 for none.
    virtual int focusedChild() const { return 0; }
    // Where a child can have the focus.
    virtual void focusChild(int) {}
};

// The object of a window's part, OBJID_...; fails where there is none.
HRESULT accessibleObject(HWND window, LONG part, REFIID iid, void** object);

// The answer to WM_GETOBJECT. The object handed out keeps working, with failures, when the window or `owner`,
// whose part the content is, has gone.
LRESULT accessibleAnswer(HWND window, AccessibleContent& content, std::weak_ptr<void> owner, WPARAM wParam);

// What a window of a class of this module answers to WM_GETOBJECT for OBJID_QUERYCLASSNAMEIDX to be taken for
// the system's control of that class; 0 for a class without a number.
LRESULT accessibleClass(const wchar_t* systemClass) noexcept;

// Gives a native control a name of its own, where the system offers that.
void annotateName(HWND window, const std::wstring& name) noexcept;

}  // namespace dravik::win32
