// Works modal windows from code: while one blocks its caller, the script finds it by name and acts on it. For
// scripted sessions and tests. Everything waits for a condition, nothing for a fixed time.
#pragma once

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "drivers/win32/Operator.h"

namespace dravik::test {

class DialogScript {
  public:
    using Step = std::function<void(HWND window)>;

    static constexpr char kMessageBox[] = "messageBox";
    static constexpr char kMenu[] = "menu";

    DialogScript() = default;
    DialogScript(const DialogScript&) = delete;
    DialogScript& operator=(const DialogScript&) = delete;
    ~DialogScript();

    // The next modal window must be the form of that name, a message box or a menu, and is worked by the
    // step. Steps run in order.
    void expect(std::string name, Step step);
    // A box of that title, answered with a button (IDYES, ...), and a menu of which the first item that
    // begins so is picked; "" closes it.
    void expectBox(std::wstring title, int button);
    void expectMenu(std::wstring item);
    // Message boxes while none is expected: their text is kept and the button with this id is pressed if it
    // is there, else the box is closed. Menus that are not expected are closed.
    void answerOthers(int button);

    bool finished() const noexcept { return steps_.empty(); }
    // Everything that was expected has come up.
    bool satisfied() const noexcept { return finished() && problems_.empty(); }
    // What did not come out: windows that did not appear in time or were not expected.
    const std::vector<std::string>& problems() const noexcept { return problems_; }
    const std::vector<std::string>& messages() const noexcept { return messages_; }
    void forgetMessages() { messages_.clear(); }

  private:
    struct Expected {
        std::string name;
        Step step;
    };

    static void CALLBACK timerCame(HWND window, UINT message, UINT_PTR id, DWORD time);
    void schedule();
    void poll();

    std::deque<Expected> steps_;
    int otherButton_ = 0;
    std::vector<std::string> problems_;
    std::vector<std::string> messages_;
    HWND lastWorked_ = nullptr;
    int waited_ = 0;
    UINT_PTR timer_ = 0;
};

// Picks the first item whose caption (access key marks left out) begins so; closes the menu when there is
// none.
void pickMenuItem(HWND menuWindow, const std::wstring& caption);

}  // namespace dravik::test
