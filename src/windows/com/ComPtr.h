// A counted reference to a COM object.
#pragma once

#include <utility>

namespace dravik::com {

template <typename T>
class ComPtr {
  public:
    ComPtr() = default;
    ComPtr(std::nullptr_t) {}
    // Counts the object once more.
    ComPtr(T* object) : object_(object) {
        if (object_) object_->AddRef();
    }
    ComPtr(const ComPtr& other) : ComPtr(other.object_) {}
    ComPtr(ComPtr&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    template <typename U>
    ComPtr(const ComPtr<U>& other) : ComPtr(static_cast<T*>(other.get())) {}
    ComPtr& operator=(ComPtr other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }
    ~ComPtr() {
        if (object_) object_->Release();
    }

    // Takes over a reference that is counted already.
    static ComPtr attach(T* object) {
        ComPtr result;
        result.object_ = object;
        return result;
    }
    // Gives the reference away.
    T* detach() noexcept { return std::exchange(object_, nullptr); }

    T* get() const noexcept { return object_; }
    T* operator->() const noexcept { return object_; }
    T& operator*() const noexcept { return *object_; }
    explicit operator bool() const noexcept { return object_ != nullptr; }

    // Where a function leaves a reference; the one held before is given up.
    T** put() noexcept {
        *this = nullptr;
        return &object_;
    }
    void** putVoid() noexcept { return reinterpret_cast<void**>(put()); }

    // The object's other interface, nothing when it has none.
    template <typename U>
    ComPtr<U> as() const {
        ComPtr<U> other;
        if (object_ && FAILED(object_->QueryInterface(__uuidof(U), other.putVoid()))) return nullptr;
        return other;
    }

  private:
    T* object_ = nullptr;
};

// Answers a QueryInterface: counts and hands out the reference.
template <typename T>
HRESULT handOut(T* object, void** out) {
    object->AddRef();
    *out = object;
    return S_OK;
}

}  // namespace dravik::com
