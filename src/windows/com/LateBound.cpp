#include "windows/com/LateBound.h"

#include "windows/com/Boundary.h"
#include "windows/com/ComText.h"

namespace dravik::com {
namespace {

constexpr std::int32_t kNoSuchMember = 438;
constexpr std::int32_t kMostElements = 10'000'000;

}  // namespace

LateBound::LateBound(IUnknown* object)
    : object_(ComPtr<IUnknown>(object).as<IDispatch>()),
      scriptObject_(ComPtr<IUnknown>(object).as<IDispatchEx>()) {
    if (!object_ && !scriptObject_) throw Failure(RuntimeError::TypeMismatch);
}

bool LateBound::find(const std::wstring& name, DISPID& id) {
    if (const auto known = ids_.find(name); known != ids_.end()) {
        id = known->second;
        return true;
    }
    HRESULT result;
    if (scriptObject_) {
        const Bstr text{std::wstring_view(name)};
        result = scriptObject_->GetDispID(text.get(), fdexNameCaseInsensitive, &id);
        if (result == E_INVALIDARG) result = scriptObject_->GetDispID(text.get(), fdexNameCaseSensitive, &id);
    } else {
        auto text = const_cast<LPOLESTR>(name.c_str());
        result = object_->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_INVARIANT, &id);
    }
    if (FAILED(result)) return false;
    ids_.emplace(name, id);
    return true;
}

bool LateBound::has(const std::wstring& name) {
    DISPID id = DISPID_UNKNOWN;
    return find(name, id);
}

DISPID LateBound::idOf(const std::wstring& name) {
    DISPID id = DISPID_UNKNOWN;
    if (!find(name, id))
        throw Failure(kNoSuchMember, "Object doesn't support this property or method: " + utf8(name));
    return id;
}

Variant LateBound::invoke(DISPID id, WORD flags, std::span<Variant> arguments, DISPPARAMS named) {
    std::vector<VARIANT> reversed;
    reversed.reserve(arguments.size());
    for (auto argument = arguments.rbegin(); argument != arguments.rend(); ++argument)
        reversed.push_back(argument->get());
    DISPPARAMS parameters{reversed.data(), named.rgdispidNamedArgs, static_cast<UINT>(reversed.size()),
                          named.cNamedArgs};
    Variant result;
    EXCEPINFO exception{};
    HRESULT code;
    if (scriptObject_) {
        code = scriptObject_->InvokeEx(id, LOCALE_INVARIANT, flags, &parameters, &result.get(), &exception,
                                       nullptr);
    } else {
        UINT wrong = 0;
        code = object_->Invoke(id, IID_NULL, LOCALE_INVARIANT, flags, &parameters, &result.get(), &exception,
                               &wrong);
    }
    if (FAILED(code)) throw failureOf(code, exception);
    return result;
}

Variant LateBound::call(const std::wstring& name, std::span<Variant> arguments) {
    return invoke(idOf(name), DISPATCH_METHOD | DISPATCH_PROPERTYGET, arguments);
}

Variant LateBound::property(const std::wstring& name) {
    return invoke(idOf(name), DISPATCH_PROPERTYGET, {});
}

void LateBound::put(const std::wstring& name, Variant value) {
    DISPID named = DISPID_PROPERTYPUT;
    const WORD flags = isObject(value.get()) ? DISPATCH_PROPERTYPUTREF : DISPATCH_PROPERTYPUT;
    invoke(idOf(name), flags, {&value, 1}, {nullptr, &named, 0, 1});
}

Variant LateBound::defaultValue() {
    return invoke(DISPID_VALUE, DISPATCH_PROPERTYGET, {});
}

std::vector<Variant> elementsOf(IUnknown* scriptArray) {
    LateBound array(scriptArray);
    if (!array.has(L"length")) throw Failure(RuntimeError::TypeMismatch);
    const std::int32_t count = int32Of(array.property(L"length").get());
    if (count < 0 || count > kMostElements) throw Failure(RuntimeError::SubscriptOutOfRange);
    std::vector<Variant> elements;
    elements.reserve(static_cast<std::size_t>(count));
    for (std::int32_t place = 0; place < count; ++place) {
        const std::wstring name = std::to_wstring(place);
        elements.push_back(array.has(name) ? array.property(name) : Variant());
    }
    return elements;
}

}  // namespace dravik::com
