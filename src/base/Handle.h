// Owns a handle of the system. A policy names the handle's type `Value`, the value `none()` that owns
// nothing, and how to `close` one.
#pragma once

#include <utility>

namespace dravik {

template <class Policy>
class Handle {
  public:
    using Value = typename Policy::Value;

    Handle() = default;
    explicit Handle(Value value) noexcept : value_(value) {}
    Handle(Handle&& other) noexcept : value_(other.release()) {}
    Handle& operator=(Handle&& other) noexcept {
        std::swap(value_, other.value_);
        return *this;
    }
    ~Handle() {
        if (*this) Policy::close(value_);
    }

    Value get() const noexcept { return value_; }
    explicit operator bool() const noexcept { return value_ != Policy::none(); }
    // Gives the handle away.
    Value release() noexcept { return std::exchange(value_, Policy::none()); }
    // Where a function leaves a handle; the one held before is closed.
    Value* put() noexcept {
        *this = Handle();
        return &value_;
    }

  private:
    Value value_ = Policy::none();
};

}  // namespace dravik
