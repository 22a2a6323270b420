#include "windows/control/HostSite.h"

#include <cstdlib>

namespace dravik::control {
namespace {

constexpr int kPointsPerInch = 72;
constexpr int kDesignDpi = 96;
constexpr long kHundredth = 10000;  // of a currency's unit

}  // namespace

void HostSite::set(IOleClientSite* site) {
    control_ = nullptr;
    ambients_ = nullptr;
    client_ = site;
    if (!site) return;
    site->QueryInterface(IID_IOleControlSite, reinterpret_cast<void**>(control_.put()));
    site->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(ambients_.put()));
}

com::ComPtr<IOleInPlaceSite> HostSite::inPlace() const {
    com::ComPtr<IOleInPlaceSite> site;
    if (client_) client_->QueryInterface(IID_IOleInPlaceSite, reinterpret_cast<void**>(site.put()));
    return site;
}

void HostSite::setAmbients(IDispatch* ambients) {
    if (ambients) ambients_ = ambients;
}

VARIANT HostSite::property(DISPID id, VARTYPE type) const {
    VARIANT value;
    VariantInit(&value);
    if (!ambients_) return value;
    DISPPARAMS none{nullptr, nullptr, 0, 0};
    const HRESULT got = ambients_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none,
                                          &value, nullptr, nullptr);
    if (FAILED(got) || FAILED(VariantChangeType(&value, &value, 0, type))) {
        VariantClear(&value);
        VariantInit(&value);
    }
    return value;
}

bool HostSite::flag(DISPID id, bool otherwise) const {
    const VARIANT value = property(id, VT_BOOL);
    return value.vt == VT_BOOL ? value.boolVal != VARIANT_FALSE : otherwise;
}

bool HostSite::userMode() const {
    return flag(DISPID_AMBIENT_USERMODE, true);
}

bool HostSite::displayAsDefault() const {
    return flag(DISPID_AMBIENT_DISPLAYASDEFAULT, true);
}

bool HostSite::uiDead() const {
    return flag(DISPID_AMBIENT_UIDEAD, false);
}

win32::Ambient HostSite::ambient() const {
    win32::Ambient result;
    const VARIANT back = property(DISPID_AMBIENT_BACKCOLOR, VT_I4);
    COLORREF color = 0;
    if (back.vt == VT_I4 && SUCCEEDED(OleTranslateColor(static_cast<OLE_COLOR>(back.lVal), nullptr, &color)))
        result.backColor = color;
    const VARIANT fore = property(DISPID_AMBIENT_FORECOLOR, VT_I4);
    if (fore.vt == VT_I4 && SUCCEEDED(OleTranslateColor(static_cast<OLE_COLOR>(fore.lVal), nullptr, &color)))
        result.foreColor = color;

    VARIANT object = property(DISPID_AMBIENT_FONT, VT_DISPATCH);
    com::ComPtr<IFont> font;
    if (object.vt == VT_DISPATCH && object.pdispVal)
        object.pdispVal->QueryInterface(IID_IFont, reinterpret_cast<void**>(font.put()));
    VariantClear(&object);
    HFONT handle = nullptr;
    CY size{};
    LOGFONTW description{};
    if (font && SUCCEEDED(font->get_hFont(&handle)) && SUCCEEDED(font->get_Size(&size)) &&
        GetObjectW(handle, sizeof description, &description) != 0) {
        const auto hundredths = static_cast<int>(size.int64 * 100 / kHundredth);
        description.lfHeight = -MulDiv(hundredths, kDesignDpi, kPointsPerInch * 100);
        description.lfWidth = 0;
        result.font = description;
    }
    return result;
}

void HostSite::showObject() const {
    if (client_) client_->ShowObject();
}

void HostSite::onFocus(bool gained) const {
    if (control_) control_->OnFocus(gained ? TRUE : FALSE);
}

void HostSite::controlInfoChanged() const {
    if (control_) control_->OnControlInfoChanged();
}

}  // namespace dravik::control
