#include "screen/shell/StepBinding.h"

#include <utility>

#include "base/Conversions.h"

namespace dravik::screen {
namespace {

constexpr auto kGeneralFailure = static_cast<std::int32_t>(0x80004005u);
constexpr int kMostFonts = 33;

}  // namespace

StepBinding::StepBinding(tool::ToolBinding& tool, modErrors& errors, FontControls& font,
                         SampleControls& sample, TrainingControls& train, CharOverview& overview,
                         SamplesGrid& grid, FontSelection& selection, TrainingRun& run)
    : tool_(tool),
      errors_(errors),
      font_(font),
      sample_(sample),
      train_(train),
      overview_(overview),
      grid_(grid),
      selection_(selection),
      run_(run) {}

void StepBinding::setStep(tool::StepPtr step) {
    if (!step) throw Failure(RuntimeError::ObjectNotSet);
    if (step->programIdentifier() != tool::kDravikStep)
        throw Failure(kGeneralFailure, "Given step is not Dravik Tool", "DravikPage.DravikPage");
    step->fontTool();  // a step that only calls itself a font tool is refused before anything changes
    tool_.tool = std::move(step);
    tool_.m_ToolBound = true;
    tool_.setFontChanged(false);
    FillItems();
}

void StepBinding::FillItems() {
    errors_.procedures().run("Dravikdlg.FillItems", "FillItems", [&] {
        run_.GetTrainTimeout();
        const auto fonts = tool_->GetFontList();
        sample_.cmdInclude.setEnabled(true);
        grid_.controls().grid.setRedraw(true);
        if (selection_.m_FontIndex == kFontUnknown) loadSelectedFont(fonts);

        const tool::CharacterSet set = tool_->GetCharacterSet();
        font_.txtCharSet.setLocked(true);
        std::string text;
        for (const auto& character : set) text += character;
        font_.txtCharSet.setText("");
        if (!set.empty()) font_.txtCharSet.setText(text);
        font_.txtCharSet.setLocked(false);
        grid_.FillSamplesArray();
        overview_.UpdateCharDisplay();
        train_.cmdTrain.setEnabled(selection_.ReadyToTrain());
        font_.lblFontDateTime.setCaption(selection_.FontTrainDate(font_.lblSelectedFont.caption()));
    });
    if (filled) filled();
}

void StepBinding::loadSelectedFont(const std::vector<std::string>& fonts) {
    int mask = toInt16(tool_.tool->datum(tool::kSelectedFontDatum));
    if (mask < 1) {
        font_.lblSelectedFont.setCaption("<None>");
        sample_.cmdInclude.setEnabled(false);
        train_.cmdTrain.setEnabled(false);
        grid_.controls().grid.setRedraw(false);
        return;
    }
    for (std::int16_t index = 0; index < kMostFonts; ++index, mask /= 2) {
        if (mask % 2 == 0) continue;
        selection_.m_FontIndex = index;
        break;
    }
    const auto index = static_cast<std::size_t>(selection_.m_FontIndex);
    if (index >= fonts.size()) throw Failure(RuntimeError::SubscriptOutOfRange);
    tool_->LoadFont(fonts[index]);
    font_.lblSelectedFont.setCaption(fonts[index]);
}

}  // namespace dravik::screen
