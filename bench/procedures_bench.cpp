// The screen's procedures on a font of 10,000 samples: filling the grid, both histograms, an include. The
// same source is built for Linux, where the tool is called directly, and for Windows, where it is called
// through COM. Median of several runs, in milliseconds.
#include <algorithm>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#ifdef _WIN32
#include "windows/com/ComFontTool.h"
#include "windows/com/ComStep.h"
#endif
#include "Median.h"
#include "base/Text.h"
#include "contract/DrawnText.h"
#include "engine/embedded/EmbeddedTool.h"
#include "screen/shell/DravikDlg.h"
#include "support/TemporaryFolder.h"
#include "tool/Samples.h"

namespace {

using namespace dravik;
using namespace dravik::engine;
using namespace dravik::screen;
using namespace dravik::tool;
using namespace dravik::ui;
#ifdef _WIN32
using namespace dravik::com;
#endif

constexpr int kSamples = 10'000;
constexpr char kLine[] = "0123456789ABCEHLT0123456789";

// Shows nothing, picks from menus as told.
class Desk : public Platform {
  public:
    std::string pick;

    Answer messageBox(const MessageBox&) override { return Answer::No; }
    void showModal(Form& form) override { form.unload(); }
    void show(Form& form) override { form.activate(); }
    void popUpMenu(PopupMenu& menu, Widget&, double, double) override {
        if (!pick.empty()) menu.item(pick).click();
    }
    void setClipboardText(const std::string&) override {}
    std::string fileDateText(const std::string&) override { return "today"; }
    std::string dateText() override { return "today"; }
    std::string timeText() override { return "now"; }
    void setBusy(bool) override {}
};

#ifdef _WIN32
// The embedded tool called through its COM object and the typed interface, as one of another module would be.
class StepThroughCom : public Step {
  public:
    explicit StepThroughCom(const StepPtr& step)
        : step_(step), object_(comFromStep(step)), tool_(fontToolOf(object_.get())) {}

    std::string programIdentifier() override { return step_->programIdentifier(); }
    double datum(const std::string& name) override { return step_->datum(name); }
    FontTool& fontTool() override { return *tool_; }

  private:
    StepPtr step_;
    ComPtr<IUnknown> object_;
    decltype(fontToolOf(nullptr)) tool_;
};

StepPtr asHosted(const StepPtr& step) {
    return std::make_shared<StepThroughCom>(step);
}
#else
StepPtr asHosted(const StepPtr& step) {
    return step;
}
#endif

template <class Work>
void report(const char* what, const Work& work) {
    std::printf("%-20s %8.3f ms\n", what, medianTime(work));
}

void measure() {
    const TemporaryFolder folder;
    const auto tool = std::make_shared<EmbeddedTool>(JobFolder(folder.path()));
    tool->CreateFont("F");
    tool->SetCharacterSet(characters("0123456789ABCEHLT"));
    const std::vector<std::string> lines(50, kLine);
    tool->setImage(drawn(lines));
    std::string text;
    for (const std::string& line : lines) text += line;
    for (std::size_t samples = 0; samples < kSamples; samples += text.size()) {
        tool->IncludeSamples(text);
        tool->CommitNewSamples();
    }
    tool->SaveFont("F");
    tool->SetTrainTimeout(1);
    tool->StartTraining();
    while (!tool->IsTrainingDone()) {
    }

    Desk desk;
    DravikDlg screen(desk, JobFolder(folder.path()));
    screen.setStep(asHosted(tool));
    auto& controls = screen.screen();
    report("fill the grid", [&] { controls.numeric.cboDisplay.setListIndex(0); });
    const auto cell = std::find_if(controls.overview.lblChar.begin(), controls.overview.lblChar.end(),
                                   [](const auto& label) { return label->caption() == "7"; });
    for (const char* pick : {"mnuMainFontHist", "mnuMainCharHist"}) {
        desk.pick = pick;
        report(pick, [&] { (*cell)->mouseDown({kRightButton, 0, 0, 0}); });
    }
    tool->setImage(drawn({kLine}));
    report("include", [&] {
        controls.sample.txtSampleInput.setText(kLine);
        controls.sample.cmdInclude.press();
    });
    std::printf("(%s)\n", controls.sbr.panel("Message").text().c_str());
}

}  // namespace

int main() {
#ifdef _WIN32
    if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) return 2;
#endif
    measure();
#ifdef _WIN32
    CoUninitialize();
#endif
    return 0;
}
