// Events: a signal calls its subscribers in the order in which they came. Subscribing, leaving and even
// destroying the signal while it is calling are safe. One thread only.
#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace dravik::ui {

namespace detail {
struct SlotState {
    bool alive = true;
};
}  // namespace detail

// A subscription that ends with this object.
class Connection {
  public:
    Connection() = default;
    explicit Connection(std::weak_ptr<detail::SlotState> slot) : slot_(std::move(slot)) {}
    Connection(Connection&& other) noexcept : slot_(std::exchange(other.slot_, {})) {}
    Connection& operator=(Connection&& other) noexcept {
        if (this != &other) {
            disconnect();
            slot_ = std::exchange(other.slot_, {});
        }
        return *this;
    }
    ~Connection() { disconnect(); }

    void disconnect() noexcept {
        if (const auto slot = slot_.lock()) slot->alive = false;
        slot_.reset();
    }

  private:
    std::weak_ptr<detail::SlotState> slot_;
};

template <class... Args>
class Signal {
  public:
    using Slot = std::function<void(Args...)>;

    Signal() : state_(std::make_shared<State>()) {}
    Signal(const Signal&) = delete;
    Signal& operator=(const Signal&) = delete;
    ~Signal() { state_->closed = true; }

    // For as long as the signal lives.
    void subscribe(Slot slot) { add(std::move(slot)); }

    // Until the returned connection is destroyed.
    [[nodiscard]] Connection connect(Slot slot) { return Connection(add(std::move(slot))); }

    void operator()(Args... args) const {
        const auto state = state_;
        ++state->depth;
        const Leave leave{*state};
        for (std::size_t i = 0; i < state->slots.size() && !state->closed; ++i) {
            const auto entry = state->slots[i];
            if (entry->alive) entry->slot(args...);
        }
    }

  private:
    struct Entry : detail::SlotState {
        Slot slot;
    };
    struct State {
        std::vector<std::shared_ptr<Entry>> slots;
        int depth = 0;
        bool closed = false;
    };
    struct Leave {
        State& state;
        ~Leave() { --state.depth; }
    };

    std::shared_ptr<Entry> add(Slot slot) {
        if (state_->depth == 0) std::erase_if(state_->slots, [](const auto& entry) { return !entry->alive; });
        auto entry = std::make_shared<Entry>();
        entry->slot = std::move(slot);
        state_->slots.push_back(entry);
        return entry;
    }

    std::shared_ptr<State> state_;
};

}  // namespace dravik::ui
