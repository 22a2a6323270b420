#include "trainer/commands/HeadlessPlatform.h"

#include <array>
#include <chrono>
#include <ctime>
#include <system_error>
#include <utility>

#include "base/Failure.h"
#include "base/Paths.h"

namespace dravik::trainer {
namespace {

using SystemClock = std::chrono::system_clock;

std::string localText(SystemClock::time_point time, const char* form) {
    const auto seconds = SystemClock::to_time_t(time);
    std::array<char, 32> text{};
    const auto* local = std::localtime(&seconds);
    return local ? std::string(text.data(), std::strftime(text.data(), text.size(), form, local))
                 : std::string();
}

ui::Answer answerTo(const ui::MessageBox& box) {
    switch (box.buttons) {
        case ui::MessageBox::Buttons::Ok:
            return ui::Answer::Ok;
        case ui::MessageBox::Buttons::YesNo:
        case ui::MessageBox::Buttons::YesNoCancel:
            break;
    }
    return box.title == "Warning: Invalid Characters" ? ui::Answer::Yes : ui::Answer::No;
}

}  // namespace

void HeadlessPlatform::script(const std::string& formName, std::function<void(ui::Form&)> steps) {
    scripts_[formName] = std::move(steps);
}

ui::Answer HeadlessPlatform::messageBox(const ui::MessageBox& box) {
    const auto answer = answerTo(box);
    asked_.push_back({box, answer});
    return answer;
}

void HeadlessPlatform::showModal(ui::Form& form) {
    form.activate();
    if (const auto steps = scripts_.find(form.name()); steps != scripts_.end()) steps->second(form);
    form.unload();
}

void HeadlessPlatform::show(ui::Form& form) {
    form.activate();
}

void HeadlessPlatform::popUpMenu(ui::PopupMenu&, ui::Widget&, double, double) {}

void HeadlessPlatform::setClipboardText(const std::string&) {}

std::string HeadlessPlatform::fileDateText(const std::string& path) {
    std::error_code error;
    const auto written = std::filesystem::last_write_time(toPath(path), error);
    if (error) throw Failure(RuntimeError::FileNotFound);
    const auto time = std::chrono::file_clock::to_sys(written);
    return localText(std::chrono::time_point_cast<SystemClock::duration>(time), "%Y-%m-%d %H:%M:%S");
}

std::string HeadlessPlatform::dateText() {
    return localText(SystemClock::now(), "%Y-%m-%d");
}

std::string HeadlessPlatform::timeText() {
    return localText(SystemClock::now(), "%H:%M:%S");
}

void HeadlessPlatform::setBusy(bool) {}

}  // namespace dravik::trainer
