#include "trainer/commands/HeadlessSession.h"

#include <algorithm>
#include <utility>

#include "base/Failure.h"
#include "base/Text.h"
#include "screen/fonts/FontName.h"

namespace dravik::trainer {
namespace {

constexpr char kFontManager[] = "dlgFontManager";
constexpr char kNewFont[] = "dlgFontNew";
constexpr char kErrorMark[] = " Err ";
constexpr char kDialogErrorMark[] = " err ";

template <class Kind>
Kind& widget(const ui::Form& form, const std::string& name) {
    if (auto* found = dynamic_cast<Kind*>(form.find(name))) return *found;
    throw Failure(RuntimeError::InternalError, "Form " + form.name() + " has no " + name);
}

// The words of a failure that is reported as source, mark, number and description; nothing when it is not
// one.
std::optional<std::string> failureWords(const std::string& text, const std::string& mark) {
    const auto at = text.find(mark);
    if (at == std::string::npos) return std::nullopt;
    const auto blank = text.find(' ', at + mark.size());
    return blank == std::string::npos ? text : text.substr(blank + 1);
}

std::optional<std::string> dialogFailure(const ui::Form& form) {
    for (const auto& panel : widget<ui::StatusBar>(form, "sbr").panels())
        if (auto words = failureWords(panel->text(), kDialogErrorMark)) return words;
    return std::nullopt;
}

}  // namespace

HeadlessSession::HeadlessSession(JobFolder folder)
    : folder_(std::move(folder)),
      tool_(std::make_shared<engine::EmbeddedTool>(folder_)),
      control_(platform_, folder_) {
    connection_ = screen().sbr.changed.connect([this](ui::Change) {
        if (messages_.empty() || messages_.back() != message()) messages_.push_back(message());
    });
    control_.setStep(tool_);
}

void HeadlessSession::press(ui::Button& button) {
    if (!button.enabled())
        throw Failure(RuntimeError::InvalidProcedureCall, button.caption() + " is not available");
    forget();
    button.press();
}

void HeadlessSession::forget() {
    messages_.clear();
    platform_.forget();
}

void HeadlessSession::selectFont(const std::string& name) {
    std::string problem;
    platform_.script(kFontManager, [&](ui::Form& manager) {
        try {
            useFontManager(manager, name);
        } catch (...) {
            problem = currentFailure().description();
        }
    });
    platform_.script(kNewFont, [&](ui::Form& form) {
        widget<ui::TextBox>(form, "txtFontName").setText(name);
        widget<ui::OptionButton>(form, "InitCharSet(0)").setChosen(true);
        widget<ui::Button>(form, "OKButton").press();
    });
    press(screen().font.cmdSelectFont);
    platform_.script(kFontManager, {});
    platform_.script(kNewFont, {});
    if (!problem.empty()) throw Failure(RuntimeError::InvalidProcedureCall, problem);
    if (const auto words = failure()) throw Failure(RuntimeError::InvalidProcedureCall, *words);
    if (control_.selectedFont().empty())
        throw Failure(RuntimeError::InvalidProcedureCall, "it was not selected");
}

void HeadlessSession::useFontManager(ui::Form& manager, const std::string& name) {
    auto& fonts = widget<ui::ListBox>(manager, "lbFonts");
    if (const auto words = dialogFailure(manager)) throw Failure(RuntimeError::InvalidProcedureCall, *words);

    if (const auto existing = fontNamed(name, fonts.items())) {
        fonts.setText(*existing);
    } else {
        const auto before = fonts.items();
        widget<ui::Button>(manager, "cmdNewFont").press();
        if (const auto words = dialogFailure(manager))
            throw Failure(RuntimeError::InvalidProcedureCall, *words);
        const auto& asked = platform_.asked();
        if (!asked.empty() && asked.front().box.buttons == ui::MessageBox::Buttons::YesNo)
            throw Failure(RuntimeError::FileAlreadyExists,
                          "there is a font whose name differs only in the case of its letters");
        if (!asked.empty()) throw Failure(RuntimeError::BadFileName, onOneLine(asked.front().box.text));
        if (fonts.text().empty() || std::find(before.begin(), before.end(), fonts.text()) != before.end())
            throw Failure(RuntimeError::InternalError, "it was not created");
    }
    widget<ui::Button>(manager, "OKButton").press();
}

std::string HeadlessSession::message() {
    return screen().sbr.panel("Message").text();
}

bool HeadlessSession::said(const std::string& text) const {
    return std::find(messages_.begin(), messages_.end(), text) != messages_.end();
}

std::optional<std::string> HeadlessSession::failure() const {
    for (const auto& message : messages_)
        if (auto words = failureWords(message, kErrorMark)) return words;
    return std::nullopt;
}

std::optional<std::string> fontNamed(const std::string& name, const std::vector<std::string>& fonts) {
    for (const auto& wanted : {name, screen::CleanFontName(name)})
        if (std::find(fonts.begin(), fonts.end(), wanted) != fonts.end()) return wanted;
    return std::nullopt;
}

std::string onOneLine(const std::string& text) {
    std::string line;
    for (const char c : text) {
        const bool blank = c == ' ' || c == '\t' || c == '\r' || c == '\n';
        if (!blank)
            line += c;
        else if (!line.empty() && line.back() != ' ')
            line += ' ';
    }
    return trimmed(line);
}

}  // namespace dravik::trainer
