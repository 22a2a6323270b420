// A control in a host with the embedded tool as its step, a font to work on and an image to include from; and
// hands for the operator.
#pragma once

#include <DravikDlgLib.h>
#include <DravikLib.h>

#include "support/Accessible.h"
#include "support/Testing.h"
#include "ui/Widget.h"
#include "windows/com/ComStep.h"
#include "windows/com/ComText.h"
#include "windows/com/support/ControlFile.h"
#include "windows/control/support/FaultyStep.h"
#include "windows/control/support/Hosts.h"
#include "windows/win32/WinText.h"

namespace dravik::test {

using namespace win32;

// The library stays loaded, and the classes registered, while the program runs.
const ControlFile& controlFile();
ComPtr<IUnknown> newControl();
// Runs what needs the control registered in an apartment of its own; gives its result, 1 when it raises
// something.
int withRegisteredControl(const std::function<int()>& work);

class Bench {
  public:
    // "strict", "atl" or "sheet". With a text that the image is to show, a step is bound.
    explicit Bench(const std::string& host, const char* shown = nullptr);
    ~Bench() {
        host.reset();
        EXPECT_THAT(script.problems(), IsEmpty());
    }

    // Hands the embedded step over, a new one unless it is given, with a fresh font "bench" selected, and its
    // image showing the text.
    void bind(const std::string& shown, ComPtr<IEmbeddedStep> embedded = {});
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
    // Include of a text, from showing it to the message.
    void include(const std::string& text);
    // Learn until the run has ended.
    void learn();
    // The host closes; should the control ask, the changes of the font are not saved.
    void closeUnsaved();

    template <class Interface>
    ComPtr<Interface> as() const {
        return ComPtr<IUnknown>(host->control()).as<Interface>();
    }
    // The step that the control says it has.
    ComPtr<IUnknown> boundStep() const {
        ComPtr<IDispatch> step;
        EXPECT_EQ(as<::StepEditor>()->get_Step(step.put()), S_OK);
        return step.as<IUnknown>();
    }
    HRESULT give(const StepPtr& other) const {
        return as<::StepEditor>()->putref_Step(comFromStep(other).as<IDispatch>().get());
    }
    // A step that goes wrong as told, around the bound one.
    std::shared_ptr<FaultyStep> faultyStep() const {
        return std::make_shared<FaultyStep>(stepFromCom(step.as<IUnknown>().get()));
    }
    StrictHost& strict() const { return static_cast<StrictHost&>(*host); }
    StrictSite& site() const { return strict().site(); }
    // Handles messages until everything that was expected has come up.
    bool allCame() {
        return host->pumpUntil([this] { return script.satisfied(); });
    }
    // Presses the button at that place of the toolbar.
    void pressTool(int place) const;

    // Answers what comes up modally while a test waits in a nested loop, also what the host's end brings up;
    // what nobody expected is written down and closed.
    DialogScript script;
    std::unique_ptr<Host> host;
    ComPtr<IEmbeddedStep> step;
};

}  // namespace dravik::test
