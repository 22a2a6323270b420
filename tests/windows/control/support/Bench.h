// A control in a host with the embedded tool as its step, a font to work on and an image to include from; and
// hands for the operator.
#pragma once

#include <DravikDlgLib.h>
#include <DravikLib.h>
#include <gtest/gtest.h>
#include "windows/control/support/Hosts.h"

#include "windows/control/support/Robot.h"

namespace dravik {

using namespace test;
using namespace com;

// The library stays loaded, and the classes registered, while the program runs.
const ControlModule& controlModule();

class Bench {
  public:
    // "strict", "atl" or "sheet".
    explicit Bench(const std::string& host);

    // Hands the embedded step over, a new one unless it is given, with a fresh font "bench" selected, and its
    // image showing the text.
    void bind(const std::string& shown, ComPtr<IEmbeddedStep> embedded = {});
    // The same with a new step that has a jobs folder of its own.
    void bind(const std::string& shown, const std::string& jobs);
    void show(const std::string& text);

    HWND page() const { return host->window(); }
    // txtCharSet is the first edit box of the screen, txtSampleInput the second.
    HWND input() const;
    HWND button(const wchar_t* caption) const;
    // The cell of a character in the overview: its window, its number as a screen reader counts, its middle.
    struct Cell {
        HWND window = nullptr;
        LONG number = 0;
        POINT middle{};
    };
    Cell cell(wchar_t character) const;
    std::wstring status() const;
    void type(const wchar_t* text);
    // Presses a button and handles messages, whatever comes up meanwhile.
    void press(const wchar_t* caption);
    void rightClick(const Cell& cell);
    bool waitForStatus(const std::wstring& text);
    // Include of the text that is shown, from typing to the message.
    void include(const wchar_t* text, int characters);
    // Learn until the run has ended.
    void learn();

    Robot robot;  // is there for what the host's end brings up
    std::unique_ptr<Host> host;
    ComPtr<IEmbeddedStep> step;
};

}  // namespace dravik
