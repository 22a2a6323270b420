// IDispatch for an object with any number of dual interfaces whose members have names and identifiers of
// their own, read from the type libraries of the module. Made for scripts: arguments that refer to variables
// of any type are converted to what the method wants and written back.
#pragma once

#include <map>
#include <memory>
#include <vector>

#include "windows/com/ComPtr.h"

namespace dravik::com {

class Dispatch {
  public:
    // `interfacePointer` is the object seen through the interface; not counted.
    struct Face {
        IID identifier;
        IUnknown* interfacePointer;
    };

    // The first face is the one that GetTypeInfo describes.
    explicit Dispatch(std::vector<Face> faces) : faces_(std::move(faces)) {}

    // The methods of IDispatch. They let no exception out.
    HRESULT typeInfoCount(UINT* count) noexcept;
    HRESULT typeInfo(UINT index, ITypeInfo** info) noexcept;
    HRESULT idsOfNames(LPOLESTR* names, UINT count, DISPID* ids) noexcept;
    // `locale` is the one that texts given for numbers are written in; 0 for none.
    HRESULT invoke(DISPID id, LCID locale, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                   EXCEPINFO* exception, UINT* wrongArgument) noexcept;

  private:
    struct Member {
        std::size_t face = 0;
        UINT function = 0;
    };

    void load();
    // The function that is meant, `flags` narrowed to its kind; nothing when there is none.
    const Member* find(DISPID id, WORD& flags) const;
    HRESULT call(const Member& member, DISPID id, LCID locale, WORD flags, DISPPARAMS& parameters,
                 VARIANT* result, EXCEPINFO* exception, UINT* wrongArgument);

    std::vector<Face> faces_;
    std::vector<ComPtr<ITypeInfo>> infos_;
    std::multimap<DISPID, std::pair<INVOKEKIND, Member>> members_;
};

// The methods of IDispatch for a class with a dual interface, which `Base` is or has.
template <class Base>
class CalledByNames : public Base {
  public:
    // `names` may be a part of the object itself.
    template <class... Arguments>
    explicit CalledByNames(Dispatch& names, Arguments&... arguments) : Base(arguments...), names_(names) {}

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override { return names_.typeInfoCount(count); }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID, ITypeInfo** info) override {
        return names_.typeInfo(index, info);
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override {
        return names_.idsOfNames(names, count, ids);
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID locale, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* exception, UINT* wrongArgument) override {
        return names_.invoke(id, locale, flags, parameters, result, exception, wrongArgument);
    }

  private:
    Dispatch& names_;
};

}  // namespace dravik::com
