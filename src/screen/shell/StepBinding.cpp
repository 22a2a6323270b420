#include "screen/shell/StepBinding.h"

#include <utility>

#include "base/Conversions.h"

namespace dravik::screen {
namespace {

constexpr auto kGeneralFailure = static_cast<std::int32_t>(0x80004005u);
constexpr int kMostFonts = 33;

}  // namespace

bool StepBinding::setStep(tool::StepPtr step) {
    if (!isUsable(step)) return false;
    if (context_.tool.tool && context_.tool.tool != step) leaveStep();
    context_.tool.tool = std::move(step);
    context_.tool.m_ToolBound = true;
    context_.tool.setFontChanged(false);
    FillItems();
    return true;
}

bool StepBinding::isUsable(const tool::StepPtr& step) {
    std::string identifier;
    const auto asked = [&] {
        if (!step) throw Failure(RuntimeError::ObjectNotSet);
        identifier = step->programIdentifier();
        // A step that only calls itself a font tool is found out before anything changes.
        if (identifier == tool::kDravikStep) step->fontTool();
        return true;
    };
    if (!context_.procedures.run("", "StepEditor_Step", asked)) return false;
    if (identifier != tool::kDravikStep)
        throw Failure(kGeneralFailure, "Given step is not Dravik Tool", "DravikPage.DravikPage");
    return true;
}

void StepBinding::leaveStep() {
    run_.leave();
    if (stepLeft) stepLeft();
}

void StepBinding::FillItems() {
    context_.procedures.run("Dravikdlg.FillItems", "FillItems", [&] {
        run_.GetTrainTimeout();
        const auto fonts = context_.tool->GetFontList();
        context_.screen.sample.cmdInclude.setEnabled(true);
        context_.screen.numeric.grid.setRedraw(true);
        if (context_.tool.m_FontIndex == kFontUnknown) loadSelectedFont(fonts);

        showCharacterSet();
        grid_.FillSamplesArray();
        overview_.UpdateCharDisplay();
        context_.screen.train.cmdTrain.setEnabled(selection_.ReadyToTrain());
        showTrainDate();
    });
    if (filled) filled();
}

void StepBinding::showCharacterSet() {
    ui::TextBox& box = context_.screen.font.txtCharSet;
    std::string text;
    for (const auto& character : context_.tool->GetCharacterSet()) text += character;
    box.setLocked(true);
    box.setText("");
    if (!text.empty()) box.setText(text);
    box.setLocked(false);
}

void StepBinding::showTrainDate() {
    auto& font = context_.screen.font;
    font.lblFontDateTime.setCaption(selection_.FontTrainDate(font.lblSelectedFont.caption()));
}

void StepBinding::loadSelectedFont(const std::vector<std::string>& fonts) {
    int mask = toInt16(context_.tool.tool->datum(tool::kSelectedFontDatum));
    if (mask < 1) {
        context_.tool.fontLoaded = false;
        context_.screen.font.lblSelectedFont.setCaption("<None>");
        context_.screen.sample.cmdInclude.setEnabled(false);
        context_.screen.train.cmdTrain.setEnabled(false);
        context_.screen.numeric.grid.setRedraw(false);
        return;
    }
    for (std::int16_t index = 0; index < kMostFonts; ++index, mask /= 2) {
        if (mask % 2 == 0) continue;
        context_.tool.m_FontIndex = index;
        break;
    }
    const auto index = static_cast<std::size_t>(context_.tool.m_FontIndex);
    if (index >= fonts.size()) throw Failure(RuntimeError::SubscriptOutOfRange);
    context_.tool->LoadFont(fonts[index]);
    context_.tool.fontLoaded = true;
    context_.screen.font.lblSelectedFont.setCaption(fonts[index]);
}

}  // namespace dravik::screen
