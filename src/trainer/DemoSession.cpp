#include "trainer/DemoSession.h"

#include <algorithm>
#include <filesystem>
#include <ostream>
#include <utility>

#include "base/Paths.h"
#include "base/Text.h"
#include "trainer/commands/SampleList.h"

namespace dravik::trainer {
namespace {

constexpr char kFontName[] = "demo";
constexpr char kFirstSet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
constexpr char kFirstSetOption[] = "InitCharSet(7)";
constexpr char kListName[] = "lines.tsv";
constexpr int kTrainingPatience = 120000;  // milliseconds
constexpr char kWrongLabel[] = "W";        // given to the first character of the guide's last lesson
constexpr char kWrongCell[] = "lblChar(22)";
constexpr std::size_t kLongestQuestion = 90;  // characters that are repeated of a question

std::string normalPath(const std::string& path) {
    return fromPath(std::filesystem::absolute(toPath(path)).lexically_normal());
}

std::string nameOf(const std::string& path) {
    return fromPath(toPath(path).filename());
}

std::string readText(const Reading& reading) {
    std::string text;
    for (const auto& line : reading.lines)
        for (const auto& character : line) text += character.character;
    return text;
}

// A question in one line, its beginning if it is long.
std::string shortened(std::string question) {
    std::replace_if(
        question.begin(), question.end(), [](char c) { return c == '\r' || c == '\n'; }, ' ');
    return characterCount(question) > kLongestQuestion ? question.substr(0, kLongestQuestion) + "..."
                                                       : question;
}

void require(bool condition, const std::string& what) {
    if (!condition) throw DemoFailure(what);
}

}  // namespace

DemoSession::DemoSession(DemoHands& hands, Trainer& trainer, std::string folder, std::ostream& out, Kind kind)
    : hands_(hands), trainer_(trainer), folder_(std::move(folder)), out_(out), kind_(kind) {}

void DemoSession::say(const std::string& line) {
    out_ << line << std::endl;
}

void DemoSession::picture(const std::string& name) {
    ++pictures_;
    const std::string number = (pictures_ < 10 ? "0" : "") + std::to_string(pictures_) + "-";
    const std::string pictureName = (kind_ == Kind::Story ? number : "") + name + ".png";
    hands_.picture(fromPath(toPath(folder_) / toPath(pictureName)));
    say("  picture " + pictureName);
}

void DemoSession::plan(const std::vector<std::string>& paths) {
    std::vector<std::vector<Task>> tasks;
    for (const auto& path : paths) {
        const bool isFolder = std::filesystem::is_directory(toPath(path));
        const auto folder = isFolder ? toPath(path) : toPath(path).parent_path();
        const auto list = readSampleList(fromPath(folder / kListName));
        tasks.emplace_back();
        for (const auto& sample : list)
            if (isFolder || sample.image == nameOf(path))
                tasks.back().push_back({normalPath(sample.path), sample.text});
        require(!tasks.back().empty(), path + ": its text does not stand in " + kListName);
    }
    require(!tasks.empty(), "no images are given");
    readings_ = std::move(tasks.back());
    tasks.pop_back();
    for (auto& some : tasks) lessons_.insert(lessons_.end(), some.begin(), some.end());
    if (lessons_.empty()) {
        lessons_.assign(readings_.begin(), readings_.end() - 1);
        readings_.erase(readings_.begin(), readings_.end() - 1);
    }
    require(!lessons_.empty(), "at least two images are needed: one to teach from and one to read");
}

void DemoSession::run(const std::vector<std::string>& paths) {
    plan(paths);
    say("The window is open: \"" + hands_.show() + "\"");
    picture("window-empty");

    std::vector<std::string> images;
    for (const auto& task : lessons_) images.push_back(task.image);
    for (const auto& task : readings_) images.push_back(task.image);
    hands_.open(images);
    require(trainer_.parts().count() == static_cast<int>(images.size()), "not every image could be opened");
    say("Opened " + std::to_string(images.size()) + " images");
    picture("images-opened");

    makeFont();
    showMismatch(lessons_.front());
    if (kind_ == Kind::Guide) {
        showOtherDialogs(lessons_.front());
        auto& wrong = lessons_.back().text;
        wrong = kWrongLabel + wrong.substr(characters(wrong).front().size());
    }
    for (const auto& task : lessons_) include(task);
    learn();
    save();
    bool allRight = true;
    for (const auto& task : readings_) read(task, allRight);
    inspect();
    std::string problems;
    for (const auto& problem : hands_.problems()) problems += (problems.empty() ? "" : "; ") + problem;
    require(problems.empty(), problems);
    require(allRight, "not every image was read right");
}

void DemoSession::makeFont() {
    hands_.expectForm("dlgFontManager", [this] {
        picture("font-manager");
        hands_.expectForm("dlgFontNew", [this] {
            hands_.type("txtFontName", kFontName);
            require(hands_.caption(kFirstSetOption) == kFirstSet, "the first set stands elsewhere");
            hands_.click(kFirstSetOption);
            picture("new-font");
            hands_.click("OKButton");
        });
        hands_.answerBoxes(ui::Answer::Yes);
        hands_.click("cmdNewFont");
        picture("font-made");
        hands_.click("OKButton");
    });
    hands_.click("cmdSelectFont");
    const std::string font = trainer_.control().selectedFont();
    require(font == kFontName, "the new font is not selected: \"" + font + "\" is");
    say("Made and selected the font \"" + font + "\"");
    picture("font-selected");
}

void DemoSession::makeCurrent(const std::string& image) {
    auto& parts = trainer_.parts();
    for (int i = 0; i < parts.count(); ++i)
        if (parts.path(i) == image) parts.setCurrent(i);
    require(parts.current() >= 0 && parts.path(parts.current()) == image, image + " is not open");
    require(parts.problem().empty(), parts.problem());
}

void DemoSession::showMismatch(const Task& task) {
    makeCurrent(task.image);
    hands_.type("txtSampleInput", withoutLast(task.text, 2));
    say("Typed a text that is two characters short: " + trainer_.previewText());
    require(trainer_.mismatch() != 0, "the mismatch is not noticed");
    picture("mismatch");
}

void DemoSession::include(const Task& task) {
    makeCurrent(task.image);
    hands_.type("txtSampleInput", task.text);
    const bool first = &task == &lessons_.front();
    if (first) picture("text-typed");
    hands_.answerBoxes(ui::Answer::Yes);
    hands_.click("cmdInclude");
    const std::string message = hands_.message();
    std::string line = nameOf(task.image) + ": " + message;
    for (const std::string& question : hands_.messages()) line += " [asked: " + shortened(question) + "]";
    say("Included " + line);
    require(message.find(" samples included.") != std::string::npos, "the include was refused: " + line);
    if (first) picture("included");
}

void DemoSession::learn() {
    hands_.click("cmdTrain");
    require(trainer_.isTraining() || hands_.canClick("cmdSaveFont"),
            "learning did not start: " + hands_.message());
    say("Learning");
    picture("learning");
    require(hands_.waitUntil([&] { return !trainer_.isTraining(); }, kTrainingPatience),
            "learning did not end");
    require(hands_.canClick("cmdSaveFont"), "learning ended without a result: " + hands_.message());
    say("Learnt: " + hands_.caption("lblStatus"));
    picture("learnt");
}

void DemoSession::save() {
    hands_.click("cmdSaveFont");
    require(hands_.message() == "Saved font", "the font was not saved: " + hands_.message());
    require(!trainer_.control().m_FontChanged(), "the saved font still counts as changed");
    say("Saved " + trainer_.folder().fontFile(kFontName));
    picture("saved");
}

void DemoSession::read(const Task& task, bool& allRight) {
    hands_.type("txtSampleInput", "");
    makeCurrent(task.image);
    const Reading& reading = trainer_.reading();
    const std::string text = readText(reading);
    const bool right = text == task.text;
    allRight = allRight && right;
    say("Read " + nameOf(task.image) + ": " + (reading.available ? text : reading.note) +
        (right ? " (right)" : " (WRONG, the part says " + task.text + ")"));
    picture("reading");
}

void DemoSession::inspect() {
    const bool guide = kind_ == Kind::Guide;
    hands_.clickTool("tlbChars", "Numeric");
    picture("samples-table");
    hands_.clickTool("tlbChars", "Graphical");
    hands_.clickTool("tlbChars", "Array");
    picture("feature-array");
    if (guide) {
        hands_.clickTool("tlbArray", "StdDev");
        picture("deviation-array");
    }
    hands_.closeForms();
    const char* cell = guide ? kWrongCell : "lblChar(0)";
    hands_.openMenu("mnuMain", cell, "Show Font Histogram", [this] { picture("character-menu"); });
    picture("font-histogram");
    hands_.openMenu("mnuMain", cell, "Show Histogram", [] {});
    picture("character-histogram");
    if (guide) {
        // The bar with the sample that has the wrong label.
        hands_.goToLastBar("chart");
        hands_.openMenu("mnuHistogram", "chart", "", [this] { picture("histogram-menu"); });
    }
    hands_.closeForms();
    say("Looked at the samples, the features and the histograms");
}

// The boxes and dialogs that the story does not come by.
void DemoSession::showOtherDialogs(const Task& task) {
    makeCurrent(task.image);
    hands_.type("txtSampleInput", withoutLast(task.text, 2));
    hands_.expectBox([this] { picture("count-message"); });
    hands_.click("cmdInclude");
    hands_.expectForm("dlgFontManager", [this] {
        hands_.expectForm("dlgFontName", [this] {
            picture("font-name");
            hands_.click("CancelButton");
        });
        hands_.click("cmdRenameFont");
        hands_.click("CancelButton");
    });
    hands_.click("cmdSelectFont");
}

}  // namespace dravik::trainer
