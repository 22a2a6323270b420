#include "windows/control/ConnectionPoints.h"

#include <algorithm>
#include <vector>

#include "DravikDlgLib.h"
#include "windows/headers/ComObject.h"

namespace dravik::control {
namespace {

void addReference(IConnectionPoint* point) {
    point->AddRef();
}
void addReference(CONNECTDATA& connection) {
    connection.pUnk->AddRef();
}
void release(IConnectionPoint* point) {
    point->Release();
}
void release(CONNECTDATA& connection) {
    connection.pUnk->Release();
}

// An enumerator over elements that hold a reference each.
template <class Interface, class Element>
class Enumerator final : public ComObject<Interface> {
  public:
    // Takes a reference of each element.
    explicit Enumerator(std::vector<Element> elements, std::size_t next = 0)
        : elements_(std::move(elements)), next_(next) {
        for (auto& element : elements_) addReference(element);
    }

    HRESULT STDMETHODCALLTYPE Next(ULONG count, Element* elements, ULONG* fetched) override {
        if (fetched) *fetched = 0;
        if (!elements || (!fetched && count != 1)) return E_POINTER;
        ULONG got = 0;
        for (; got < count && next_ < elements_.size(); ++got, ++next_) {
            elements[got] = elements_[next_];
            addReference(elements[got]);
        }
        if (fetched) *fetched = got;
        return got == count ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Skip(ULONG count) override {
        const std::size_t left = elements_.size() - next_;
        next_ += std::min<std::size_t>(count, left);
        return count <= left ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Reset() override {
        next_ = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Clone(Interface** clone) override {
        if (!clone) return E_POINTER;
        *clone = new (std::nothrow) Enumerator(elements_, next_);
        return *clone ? S_OK : E_OUTOFMEMORY;
    }

  private:
    ~Enumerator() override {
        for (auto& element : elements_) release(element);
    }

    std::vector<Element> elements_;
    std::size_t next_;
};

}  // namespace

HRESULT ConnectionPoint::QueryInterface(REFIID iid, void** object) {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (iid != IID_IUnknown && iid != IID_IConnectionPoint) return E_NOINTERFACE;
    *object = static_cast<IConnectionPoint*>(this);
    AddRef();
    return S_OK;
}

HRESULT ConnectionPoint::GetConnectionInterface(IID* iid) {
    if (!iid) return E_POINTER;
    *iid = outgoing_;
    return S_OK;
}

HRESULT ConnectionPoint::GetConnectionPointContainer(IConnectionPointContainer** container) {
    if (!container) return E_POINTER;
    *container = &container_;
    container_.AddRef();
    return S_OK;
}

HRESULT ConnectionPoint::Advise(IUnknown* sink, DWORD* cookie) {
    return entered([&]() -> HRESULT {
        if (!cookie) return E_POINTER;
        *cookie = 0;
        if (!sink) return E_POINTER;
        com::ComPtr<IUnknown> wanted;
        if (FAILED(sink->QueryInterface(outgoing_, reinterpret_cast<void**>(wanted.put())))) {
            // A sink of the event interface may be a plain IDispatch.
            if (outgoing_ != DIID___DravikDlg ||
                FAILED(sink->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(wanted.put()))))
                return CONNECT_E_CANNOTCONNECT;
        }
        *cookie = ++last_;
        sinks_.emplace(*cookie, std::move(wanted));
        return S_OK;
    });
}

HRESULT ConnectionPoint::Unadvise(DWORD cookie) {
    return entered([&]() -> HRESULT {
        const auto found = sinks_.find(cookie);
        if (found == sinks_.end()) return CONNECT_E_NOCONNECTION;
        const com::ComPtr<IUnknown> sink = std::move(found->second);
        sinks_.erase(found);
        return S_OK;
    });
}

HRESULT ConnectionPoint::EnumConnections(IEnumConnections** connections) {
    return entered([&]() -> HRESULT {
        if (!connections) return E_POINTER;
        std::vector<CONNECTDATA> elements;
        for (const auto& [cookie, sink] : sinks_) elements.push_back({sink.get(), cookie});
        *connections = new Enumerator<IEnumConnections, CONNECTDATA>(std::move(elements));
        return S_OK;
    });
}

ConnectionPoints::ConnectionPoints(IUnknown& control)
    : Facet(control),
      events_(control, *this, DIID___DravikDlg),
      propertyChanges_(control, *this, IID_IPropertyNotifySink) {}

HRESULT ConnectionPoints::EnumConnectionPoints(IEnumConnectionPoints** points) {
    return entered([&]() -> HRESULT {
        if (!points) return E_POINTER;
        std::vector<IConnectionPoint*> elements{&events_, &propertyChanges_};
        *points = new Enumerator<IEnumConnectionPoints, IConnectionPoint*>(std::move(elements));
        return S_OK;
    });
}

HRESULT ConnectionPoints::FindConnectionPoint(REFIID iid, IConnectionPoint** point) {
    if (!point) return E_POINTER;
    *point = nullptr;
    for (ConnectionPoint* candidate : {&events_, &propertyChanges_})
        if (candidate->outgoing() == iid) *point = candidate;
    if (!*point) return CONNECT_E_NOCONNECTION;
    (*point)->AddRef();
    return S_OK;
}

}  // namespace dravik::control
