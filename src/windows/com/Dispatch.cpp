#include "windows/com/Dispatch.h"

#include <array>
#include <optional>

#include "windows/com/Boundary.h"
#include "windows/com/Module.h"
#include "windows/com/Variant.h"

namespace dravik::com {
namespace {

constexpr std::array kKinds = {INVOKE_FUNC, INVOKE_PROPERTYGET, INVOKE_PROPERTYPUT, INVOKE_PROPERTYPUTREF};

// A function's description, given back to the type info that it came from.
class Function {
  public:
    Function(ITypeInfo& info, UINT index) : info_(&info) { check(info.GetFuncDesc(index, &description_)); }
    Function(const Function&) = delete;
    Function& operator=(const Function&) = delete;
    ~Function() { info_->ReleaseFuncDesc(description_); }
    const FUNCDESC* operator->() const { return description_; }

  private:
    ITypeInfo* info_;
    FUNCDESC* description_ = nullptr;
};

// The type that a parameter refers to when the method reads a variable of the caller, and possibly sets it.
std::optional<VARTYPE> referredType(const ELEMDESC& parameter) {
    if (parameter.tdesc.vt != VT_PTR || (parameter.paramdesc.wParamFlags & PARAMFLAG_FRETVAL))
        return std::nullopt;
    const VARTYPE type = parameter.tdesc.lptdesc->vt;
    switch (type) {
        case VT_BSTR:
        case VT_R8:
        case VT_R4:
        case VT_I4:
        case VT_I2:
        case VT_BOOL:
        case VT_VARIANT:
            return type;
        default:
            return std::nullopt;
    }
}

// An argument as the method wants it, and where its value goes afterwards.
struct Converted {
    Variant value;
    VARIANT* origin = nullptr;
};

// Turns the argument into a reference of that type; what it refers to may be a converted copy. False when the
// value cannot be converted.
bool refer(VARIANT& argument, VARTYPE type, LCID locale, Converted& converted) {
    if (argument.vt == (VT_BYREF | type)) return true;
    if (argument.vt == (VT_BYREF | VT_VARIANT)) converted.origin = argument.pvarVal;
    VARIANT inner = innermost(argument);
    if (type == VT_VARIANT) {
        if (FAILED(VariantCopyInd(converted.value.put(), &inner))) return false;
    } else if (isNothing(inner) && inner.vt != VT_EMPTY) {
        return false;
    } else if (FAILED(VariantChangeTypeEx(converted.value.put(), &inner, locale, 0, type))) {
        return false;
    }
    argument.vt = static_cast<VARTYPE>(VT_BYREF | type);
    argument.byref =
        type == VT_VARIANT ? static_cast<void*>(&converted.value.get()) : &converted.value.get().llVal;
    return true;
}

}  // namespace

void Dispatch::load() {
    if (!infos_.empty()) return;
    std::vector<ComPtr<ITypeInfo>> infos;
    std::multimap<DISPID, std::pair<INVOKEKIND, Member>> members;
    for (std::size_t face = 0; face < faces_.size(); ++face) {
        auto info = typeInfoOf(faces_[face].identifier);
        TYPEATTR* attributes = nullptr;
        check(info->GetTypeAttr(&attributes));
        const UINT functions = attributes->cFuncs;
        info->ReleaseTypeAttr(attributes);
        for (UINT index = 0; index < functions; ++index) {
            const Function function(*info, index);
            if (function->wFuncFlags & FUNCFLAG_FRESTRICTED) continue;  // those of IDispatch itself
            members.emplace(function->memid, std::pair(function->invkind, Member{face, index}));
        }
        infos.push_back(std::move(info));
    }
    infos_ = std::move(infos);
    members_ = std::move(members);
}

HRESULT Dispatch::typeInfoCount(UINT* count) noexcept {
    if (!count) return E_POINTER;
    *count = 1;
    return S_OK;
}

HRESULT Dispatch::typeInfo(UINT index, ITypeInfo** info) noexcept {
    if (!info) return E_POINTER;
    *info = nullptr;
    if (index != 0) return DISP_E_BADINDEX;
    return comCall(IID_IDispatch, L"", [&] {
        load();
        *info = ComPtr(infos_.front()).detach();
    });
}

HRESULT Dispatch::idsOfNames(LPOLESTR* names, UINT count, DISPID* ids) noexcept {
    if (!names || !ids || count == 0) return E_INVALIDARG;
    return comCall(IID_IDispatch, L"", [&]() -> HRESULT {
        load();
        for (const auto& info : infos_) {
            const HRESULT found = info->GetIDsOfNames(names, count, ids);
            // Another code with an identifier means that only some parameter's name is unknown.
            if (SUCCEEDED(found) || (found == DISP_E_UNKNOWNNAME && ids[0] != DISPID_UNKNOWN)) return found;
        }
        for (UINT name = 0; name < count; ++name) ids[name] = DISPID_UNKNOWN;
        return DISP_E_UNKNOWNNAME;
    });
}

const Dispatch::Member* Dispatch::find(DISPID id, WORD& flags) const {
    const auto [first, last] = members_.equal_range(id);
    for (const INVOKEKIND kind : kKinds) {
        if (!(flags & kind)) continue;
        for (auto member = first; member != last; ++member) {
            if (member->second.first != kind) continue;
            flags = static_cast<WORD>(kind);
            return &member->second.second;
        }
    }
    // A script that assigns without saying that it means the object.
    if (flags & DISPATCH_PROPERTYPUT) {
        for (auto member = first; member != last; ++member) {
            if (member->second.first != INVOKE_PROPERTYPUTREF) continue;
            flags = DISPATCH_PROPERTYPUTREF;
            return &member->second.second;
        }
    }
    return nullptr;
}

HRESULT Dispatch::invoke(DISPID id, LCID locale, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                         EXCEPINFO* exception, UINT* wrongArgument) noexcept {
    if (!parameters || (parameters->cArgs > 0 && !parameters->rgvarg) ||
        (parameters->cNamedArgs > 0 && !parameters->rgdispidNamedArgs) ||
        parameters->cNamedArgs > parameters->cArgs)
        return E_INVALIDARG;
    return comCall(IID_IDispatch, L"", [&]() -> HRESULT {
        load();
        const Member* member = find(id, flags);
        return member ? call(*member, id, locale, flags, *parameters, result, exception, wrongArgument)
                      : DISP_E_MEMBERNOTFOUND;
    });
}

HRESULT Dispatch::call(const Member& member, DISPID id, LCID locale, WORD flags, DISPPARAMS& parameters,
                       VARIANT* result, EXCEPINFO* exception, UINT* wrongArgument) {
    ITypeInfo& info = *infos_[member.face];
    const LCID spoken = locale == LOCALE_NEUTRAL ? LOCALE_INVARIANT : locale;
    const Function function(info, member.function);
    std::vector<VARIANT> arguments(parameters.rgvarg, parameters.rgvarg + parameters.cArgs);
    std::vector<Converted> converted(arguments.size());
    for (UINT place = 0; place < parameters.cArgs; ++place) {
        // Named arguments come first, the others from the last to the first.
        DISPID parameter = static_cast<DISPID>(parameters.cArgs - 1 - place);
        if (place < parameters.cNamedArgs && parameters.rgdispidNamedArgs[place] != DISPID_PROPERTYPUT)
            parameter = parameters.rgdispidNamedArgs[place];
        if (parameter < 0 || parameter >= function->cParams) continue;
        const auto type = referredType(function->lprgelemdescParam[parameter]);
        if (!type) {
            arguments[place] = innermost(arguments[place]);
            // What scripts have for no object.
            if (flags == DISPATCH_PROPERTYPUTREF && arguments[place].vt <= VT_NULL) {
                arguments[place].vt = VT_DISPATCH;
                arguments[place].pdispVal = nullptr;
            }
        } else if (!refer(arguments[place], *type, spoken, converted[place])) {
            if (wrongArgument) *wrongArgument = place;
            return DISP_E_TYPEMISMATCH;
        }
    }
    DISPPARAMS passed{arguments.data(), parameters.rgdispidNamedArgs, parameters.cArgs,
                      parameters.cNamedArgs};
    SetErrorInfo(0, nullptr);
    UINT wrong = 0;
    const HRESULT code =
        info.Invoke(faces_[member.face].interfacePointer, id, flags, &passed, result, exception, &wrong);
    if (wrongArgument && (code == DISP_E_TYPEMISMATCH || code == DISP_E_PARAMNOTFOUND))
        *wrongArgument = wrong;
    if (FAILED(code)) return code;
    for (Converted& one : converted)
        if (one.origin) check(VariantCopy(one.origin, &one.value.get()));
    return S_OK;
}

}  // namespace dravik::com
