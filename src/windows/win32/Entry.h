// While code of this module runs on behalf of somebody outside of it (a call of the host, a window message, a
// timer), that call may end the very object that it came through: a message box runs a loop, a tool calls
// back. What must not go before the outermost such call has left is handed over here.
#pragma once

#include <functional>
#include <utility>

#include "windows/headers/FloatingPoint.h"

namespace dravik::win32 {

class Entry {
  public:
    Entry() noexcept { ++state().depth; }
    Entry(const Entry&) = delete;
    Entry& operator=(const Entry&) = delete;
    ~Entry() {
        if (--state().depth == 0) runWaiting();
    }

    // This thread is inside of a call from outside.
    static bool inside() noexcept { return state().depth > 0; }

    // Runs `work` as soon as the thread has left the outermost call: at once when it is in none.
    static void whenOutside(std::function<void()> work) {
        if (!inside()) {
            work();
            return;
        }
        auto* waiting = new Waiting{std::move(work), nullptr};
        auto** last = &state().first;
        while (*last) last = &(*last)->next;
        *last = waiting;
    }

  private:
    QuietFloatingPoint quiet_;

    struct Waiting {
        std::function<void()> work;
        Waiting* next;
    };
    // Trivial, since destructors of thread variables could run after the module is unloaded; the list is
    // empty whenever the depth is 0.
    struct State {
        int depth;
        Waiting* first;
    };

    static State& state() noexcept {
        thread_local State value{0, nullptr};
        return value;
    }

    // Work that is done here may enter again and leave more work behind.
    static void runWaiting() noexcept {
        while (Waiting* waiting = state().first) {
            state().first = waiting->next;
            ++state().depth;
            try {
                waiting->work();
            } catch (...) {
            }
            delete waiting;
            --state().depth;
        }
    }
};

}  // namespace dravik::win32
