#include "screen/shell/DravikDlg.h"

#include <utility>
#include <vector>

#include "screen/context/ScreenContext.h"
#include "screen/context/modGlobals.h"
#include "screen/inspection/SampleCounts.h"
#include "screen/samples/Inclusion.h"
#include "screen/samples/SampleCommit.h"
#include "screen/samples/SampleDeletion.h"
#include "screen/shell/ChildForms.h"
#include "screen/shell/PopupMenus.h"
#include "screen/shell/StepBinding.h"
#include "screen/shell/ToolbarButtons.h"
#include "screen/training/FontSelection.h"
#include "screen/training/TrainingRun.h"

namespace dravik::screen {

struct DravikDlg::Parts {
    Parts(ui::Platform& platform, JobFolder folder) : context(platform, std::move(folder)) {}

    ScreenContext context;
    tool::StepPtr rootStep;
    bool readOnly = false;
    bool stateFlagC = false;
    bool terminated = false;
    std::vector<std::string> stringList;

    SampleCounts counts{context};
    CharOverview overview{context, counts};
    SamplesGrid grid{context};
    SampleDeletion deletion{context, counts, overview, grid};
    SampleCommit commit{context, deletion, overview, grid};
    Inclusion inclusion{context, commit, deletion, grid};
    FontSelection selection{context, grid};
    TrainingRun run{context, overview, selection};
    StepBinding binding{context, overview, grid, selection, run};
    ChildForms forms{context, overview, deletion};
    ToolbarButtons toolbar{context, overview, deletion, forms};
    PopupMenus menus{context, counts, deletion, overview, grid, forms};

    void UserControl_Initialize();
    void refreshAfterHistory(const ScreenState& state, bool fontChanged);
    void wire();
};

// The order matters: choosing the first timeout runs the timeout handler, which finds no tool yet and says so
// in the status bar until a step is bound.
void DravikDlg::Parts::UserControl_Initialize() {
    context.procedures.run("Dravikdlg.UserControl_Initialize", "UserControl_Initialize", [&] {
        auto& screen = context.screen;
        context.tool.tool.reset();
        readOnly = false;
        rootStep.reset();
        context.tool.m_FontIndex = kFontUnknown;
        screen.train.cboTimeout.setListIndex(0);
        context.tool.m_ToolBound = false;
        stateFlagC = false;
        overview.SetGraphicalView(true);
        overview.InitColorKey();
        screen.numeric.grid.setRedraw(false);
        screen.train.cmdSaveFont.setEnabled(false);
        screen.train.cmdRevert.setEnabled(false);
        screen.train.cmdStop.setEnabled(false);
        stringList.assign(1, "");
        // Tracing goes on from page to page of a thread.
        screen.overview.tlbChars.button("Log").setPressed(g_bTrace);
    });
}

void DravikDlg::Parts::refreshAfterHistory(const ScreenState& state, bool fontChanged) {
    context.procedures.run("Dravikdlg.RefreshAfterHistory", "RefreshAfterHistory", [&] {
        context.tool.setFontChanged(fontChanged);
        context.setState(state);
        binding.showCharacterSet();
        grid.showAnew();
        deletion.HighlightIncluded(state.markedChars);
        if (!state.awaitsDecision && !context.screen.train.cmdStop.enabled())
            context.screen.train.cmdTrain.setEnabled(selection.ReadyToTrain());
        binding.showTrainDate();
        forms.refill();
    });
}

void DravikDlg::Parts::wire() {
    auto& screen = context.screen;
    auto& font = screen.font;
    auto& sample = screen.sample;
    auto& train = screen.train;

    font.cmdSelectFont.click.subscribe([this] { selection.SelectFont(); });
    font.txtCharSet.textChanged.subscribe([this] { selection.txtCharSet_Change(); });
    const auto leaveFont = [this] {
        deletion.forgetIncludes();
        forms.closeHistogram();
    };
    selection.fontLoaded = leaveFont;
    binding.stepLeft = leaveFont;
    selection.fillItems = [this] { binding.FillItems(); };

    sample.cmdInclude.click.subscribe([this] { inclusion.Include(); });
    sample.chkCase.click.subscribe([this] { inclusion.chkCase_Click(); });
    sample.txtSampleInput.textChanged.subscribe([this] { inclusion.txtSampleInput_Change(); });

    train.cboTimeout.click.subscribe([this] { run.cboTimeout_Click(); });
    train.cmdTrain.click.subscribe([this] { run.cmdTrain_Click(); });
    train.cmdStop.click.subscribe([this] { run.cmdStop_Click(); });
    train.cmdRevert.click.subscribe([this] { run.cmdRevert_Click(); });
    train.cmdSaveFont.click.subscribe([this] {
        context.procedures.trace("Dravikdlg.cmdSaveFont_Click");
        run.SaveFont();
    });
    train.tmrTrain.tick.subscribe([this] { run.tmrTrain_Timer(); });
    run.cmdInclude_Click = [this] { inclusion.Include(); };

    screen.cmdTest.click.subscribe(
        [this] { context.procedures.run("Dravikdlg.cmdTest_Click", "Test", [] {}); });

    screen.overview.tlbChars.buttonClick.subscribe(
        [this](ui::ToolButton& button) { toolbar.tlbChars_ButtonClick(button); });
    for (std::size_t i = 0; i < screen.overview.lblChar.size(); ++i) {
        ui::Label& cell = *screen.overview.lblChar[i];
        cell.mouseMove.subscribe([this, &cell](const ui::MouseEvent&) { overview.lblChar_MouseMove(cell); });
        cell.mouseDown.subscribe([this, index = static_cast<int>(i)](const ui::MouseEvent& event) {
            menus.lblChar_MouseDown(index, event);
        });
    }

    screen.numeric.cboDisplay.click.subscribe([this] {
        context.procedures.trace("Dravikdlg.cboDisplay_Click");
        grid.FillSamplesArray();
    });
    screen.numeric.grid.mouseDown.subscribe(
        [this](const ui::MouseEvent& event) { menus.grid_MouseDown(event); });
    screen.numeric.grid.keyDown.subscribe([this](int key, int shift) { grid.grid_KeyDown(key, shift); });
}

DravikDlg::DravikDlg(ui::Platform& platform, JobFolder folder)
    : parts_(std::make_unique<Parts>(platform, std::move(folder))) {
    parts_->wire();
    parts_->UserControl_Initialize();
    parts_->context.tool.fontChangedSet = [this] { fontStateChanged(); };
    parts_->binding.filled = [this] { fontStateChanged(); };
}

DravikDlg::~DravikDlg() {
    UserControl_Terminate();
}

void DravikDlg::UserControl_Terminate() {
    if (std::exchange(parts_->terminated, true)) return;
    const Procedures procedures(parts_->context.log, [this](std::string_view, const Failure& failure) {
        parts_->context.platform.messageBox({std::to_string(failure.number()) + " " + failure.description(),
                                             "Error in UserControl_Terminate"});
    });
    procedures.run("Dravikdlg.UserControl_Terminate", "UserControl_Terminate", [&] {
        parts_->forms.release();
        if (parts_->context.tool.m_FontChanged()) {
            const ui::Answer answer = parts_->context.platform.messageBox(
                {"The font has changed since it was last saved.\r\rSave changes?", "Font Changed",
                 ui::MessageBox::Buttons::YesNo});
            if (answer == ui::Answer::Yes) parts_->context.tool->SaveFont(selectedFontCaption());
        }
        parts_->rootStep.reset();
    });
    auto& train = parts_->context.screen.train;
    train.tmrTrain.setEnabled(false);
    if (!train.cmdStop.enabled()) return;
    // Nobody would hear of the run's end.
    try {
        parts_->context.tool->StopTraining();
    } catch (...) {
        return;  // the page that could tell of it is gone
    }
}

void DravikDlg::letGoOfStep() noexcept {
    parts_->rootStep.reset();
    parts_->context.tool.tool.reset();
}

ui::Form& DravikDlg::form() noexcept {
    return parts_->context.screen.form;
}

Screen& DravikDlg::screen() noexcept {
    return parts_->context.screen;
}

void DravikDlg::setReadOnly(bool readOnly) {
    parts_->context.procedures.trace("Dravikdlg.StepEditor_ReadOnly");
    parts_->readOnly = readOnly;
}

bool DravikDlg::readOnly() const {
    parts_->context.procedures.trace("Dravikdlg.StepEditor_ReadOnly");
    return parts_->readOnly;
}

void DravikDlg::setRootStep(tool::StepPtr step) {
    parts_->context.procedures.trace("Dravikdlg.StepEditor_RootStep");
    parts_->rootStep = std::move(step);
}

void DravikDlg::tellFailure(std::string_view source, const Failure& failure) {
    parts_->context.errors.ReportError(source, failure);
}

void DravikDlg::setStep(tool::StepPtr step) {
    bindStep(std::move(step));
}

bool DravikDlg::bindStep(tool::StepPtr step) {
    return parts_->binding.setStep(std::move(step));
}

tool::StepPtr DravikDlg::step() const {
    parts_->context.procedures.trace("Dravikdlg.StepEditor_Step");
    return parts_->context.tool.tool;
}

std::int16_t DravikDlg::DeleteSamplesByDistance(const std::string& Character, double MinDistance,
                                                double MaxDistance) {
    return parts_->deletion.DeleteSamplesByDistance(Character, MinDistance, MaxDistance);
}

void DravikDlg::HighlightIncluded(const std::string& IncludedChars) {
    parts_->deletion.HighlightIncluded(IncludedChars);
}

std::string DravikDlg::FontTrainDate(const std::string& Font) {
    return parts_->selection.FontTrainDate(Font);
}

ScreenState DravikDlg::state() const {
    return parts_->context.state();
}

void DravikDlg::refreshAfterHistory(const ScreenState& state, bool fontChanged) {
    parts_->refreshAfterHistory(state, fontChanged);
}

void DravikDlg::showFont(const std::string& name) {
    parts_->selection.ShowFont(name);
}

ui::Signal<>& DravikDlg::actBegun() noexcept {
    return parts_->context.actBegun;
}

ui::Signal<const OperatorAct&>& DravikDlg::actEnded() noexcept {
    return parts_->context.actEnded;
}

ui::Signal<const PointedBar&>& DravikDlg::barPointed() noexcept {
    return parts_->context.barPointed;
}

ui::Signal<const std::string&>& DravikDlg::failureReported() noexcept {
    return parts_->context.errors.reported;
}

bool DravikDlg::m_FontChanged() const noexcept {
    return parts_->context.tool.m_FontChanged();
}

std::string DravikDlg::selectedFont() const {
    return parts_->context.tool.fontLoaded ? selectedFontCaption() : std::string();
}

const std::string& DravikDlg::selectedFontCaption() const {
    return parts_->context.screen.font.lblSelectedFont.caption();
}

}  // namespace dravik::screen
