#include "screen/context/ScreenContext.h"

namespace dravik::screen {

ScreenState ScreenContext::state() {
    const auto& undo = screen.overview.tlbChars.button("Undo");
    const bool running = screen.train.cmdStop.enabled();
    ScreenState state;
    state.m_LastInclude = includes.m_LastInclude;
    state.m_IncludedChars = includes.m_IncludedChars;
    state.committed = includes.committed;
    state.addedChars = includes.added;
    for (const auto& cell : screen.overview.lblChar)
        if (cell->backColor() == kIncludedColor) state.markedChars += cell->caption();
    state.message = screen.sbr.panel("Message").text();
    state.undoToolTip = undo.toolTip();
    state.figures = screen.train.lblStatus.caption();
    state.undoEnabled = undo.enabled();
    state.awaitsDecision = !running && !screen.font.cmdSelectFont.enabled();
    // Disabled by a run, Include may be pressed again after it.
    state.includeEnabled = running || state.awaitsDecision || screen.sample.cmdInclude.enabled();
    state.saveEnabled = !running && screen.train.cmdSaveFont.enabled();
    state.revertEnabled = !running && screen.train.cmdRevert.enabled();
    return state;
}

void ScreenContext::setState(const ScreenState& state) {
    includes.m_LastInclude = state.m_LastInclude;
    includes.m_IncludedChars = state.m_IncludedChars;
    includes.m_PendingInclude.clear();
    includes.committed = state.committed;
    includes.added = state.addedChars;
    screen.sbr.panel("LastInclude").setText(state.m_LastInclude);
    screen.sbr.panel("Message").setText(state.message);
    auto& undo = screen.overview.tlbChars.button("Undo");
    undo.setToolTip(state.undoToolTip);
    undo.setEnabled(state.undoEnabled);
    screen.train.lblStatus.setCaption(state.figures);
    if (screen.train.cmdStop.enabled()) return;
    const bool free = !state.awaitsDecision;
    screen.train.prgTrain.setValue(free ? 0 : 100);
    screen.train.cmdSaveFont.setEnabled(state.saveEnabled);
    screen.train.cmdRevert.setEnabled(state.revertEnabled);
    screen.sample.cmdInclude.setEnabled(free && state.includeEnabled);
    screen.sample.txtSampleInput.setEnabled(free);
    screen.train.cboTimeout.setEnabled(free);
    screen.font.cmdSelectFont.setEnabled(free);
    if (!free) screen.train.cmdTrain.setEnabled(false);
}

}  // namespace dravik::screen
