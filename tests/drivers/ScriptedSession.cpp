#include "drivers/ScriptedSession.h"

#include <filesystem>
#include <ostream>
#include <utility>

#include "base/Paths.h"
#include "base/Text.h"
#include "trainer/commands/SampleList.h"

namespace dravik::test {
namespace {

constexpr char kFontName[] = "demo";
constexpr char kFirstSet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
constexpr char kFirstSetOption[] = "InitCharSet(7)";
constexpr char kListName[] = "lines.tsv";
constexpr int kTrainingPatience = 120000;  // milliseconds
constexpr char kWrongLabel[] = "W";        // given to the first character of the guide's last lesson
constexpr char kWrongCell[] = "lblChar(22)";

std::string normalPath(const std::string& path) {
    return fromPath(std::filesystem::absolute(toPath(path)).lexically_normal());
}

std::string nameOf(const std::string& path) {
    return fromPath(toPath(path).filename());
}

void require(bool condition, const std::string& what) {
    if (!condition) throw SessionFailure(what);
}

}  // namespace

ScriptedSession::ScriptedSession(WindowDriver& driver, trainer::Trainer& trainer, std::string folder,
                                 std::ostream& out, Kind kind)
    : driver_(driver), trainer_(trainer), folder_(std::move(folder)), out_(out), kind_(kind) {}

void ScriptedSession::say(const std::string& line) {
    out_ << line << std::endl;
}

void ScriptedSession::picture(const std::string& name) {
    ++pictures_;
    const std::string number = (pictures_ < 10 ? "0" : "") + std::to_string(pictures_) + "-";
    const std::string pictureName = (kind_ == Kind::Story ? number : "") + name + ".png";
    driver_.picture(fromPath(toPath(folder_) / toPath(pictureName)));
    say("  picture " + pictureName);
}

ScriptedSession::Task ScriptedSession::taskOf(const std::string& image) const {
    for (const auto& sample : trainer::readSampleList(fromPath(toPath(image).parent_path() / kListName)))
        if (sample.image == nameOf(image)) return {normalPath(sample.path), sample.text};
    throw SessionFailure(image + ": its text does not stand in " + kListName);
}

void ScriptedSession::run(const std::vector<std::string>& images) {
    require(images.size() > 1, "at least two images are needed: one to teach from and one to read");
    for (const auto& image : images) lessons_.push_back(taskOf(image));
    reading_ = std::move(lessons_.back());
    lessons_.pop_back();
    say("The window is open: \"" + driver_.show() + "\"");
    picture("window-empty");

    driver_.open(images);
    require(trainer_.parts().count() == static_cast<int>(images.size()), "not every image could be opened");
    say("Opened " + std::to_string(images.size()) + " images");
    picture("images-opened");

    makeFont();
    makeCurrent(lessons_.front().image);
    picture("text-proposed");
    showMismatch(lessons_.front());
    if (kind_ == Kind::Guide) {
        showOtherDialogs(lessons_.front());
        auto& wrong = lessons_.back().text;
        wrong = kWrongLabel + wrong.substr(characters(wrong).front().size());
    }
    for (const auto& task : lessons_) include(task);
    learn();
    save();
    read();
    if (kind_ == Kind::Guide) showImageTools();
    inspect();
    std::string problems;
    for (const auto& problem : driver_.problems()) problems += (problems.empty() ? "" : "; ") + problem;
    require(problems.empty(), problems);
}

void ScriptedSession::makeFont() {
    driver_.expectForm("dlgFontManager", [this] {
        picture("font-manager");
        driver_.expectForm("dlgFontNew", [this] {
            driver_.type("txtFontName", kFontName);
            require(driver_.caption(kFirstSetOption) == kFirstSet, "the first set stands elsewhere");
            driver_.click(kFirstSetOption);
            picture("new-font");
            driver_.click("OKButton");
        });
        driver_.answerBoxes(ui::Answer::Yes);
        driver_.click("cmdNewFont");
        picture("font-made");
        driver_.click("OKButton");
    });
    driver_.click("cmdSelectFont");
    const std::string font = trainer_.control().selectedFont();
    require(font == kFontName, "the new font is not selected: \"" + font + "\" is");
    say("Made and selected the font \"" + font + "\"");
    picture("font-selected");
}

void ScriptedSession::makeCurrent(const std::string& image) {
    auto& parts = trainer_.parts();
    for (int i = 0; i < parts.count(); ++i)
        if (parts.path(i) == image) parts.setCurrent(i);
    require(parts.current() >= 0 && parts.path(parts.current()) == image, image + " is not open");
    require(parts.problem().empty(), parts.problem());
}

void ScriptedSession::showMismatch(const Task& task) {
    makeCurrent(task.image);
    driver_.type("txtSampleInput", withoutLast(task.text, 2));
    say("Typed a text that is two characters short: " + trainer_.previewText());
    require(trainer_.mismatch() != 0, "the mismatch is not noticed");
    picture("mismatch");
}

void ScriptedSession::include(const Task& task) {
    makeCurrent(task.image);
    driver_.type("txtSampleInput", task.text);
    const bool first = &task == &lessons_.front();
    if (first) picture("text-typed");
    driver_.answerBoxes(ui::Answer::Yes);
    if (kind_ == Kind::Guide && &task == &lessons_.back())
        driver_.expectForm("includeQuestion", [this] {
            picture("wrong-label");
            driver_.click("cmdInclude");
        });
    driver_.click("cmdInclude");
    const std::string message = driver_.message();
    std::string line = nameOf(task.image) + ": " + message;
    for (const std::string& question : driver_.messages())
        line += " [asked: " + question.substr(0, question.find_first_of("\r\n")) + "]";
    say("Included " + line);
    require(message.find(" samples included.") != std::string::npos, "the include was refused: " + line);
    if (first) picture("included");
}

void ScriptedSession::learn() {
    driver_.click("cmdTrain");
    require(trainer_.isTraining() || driver_.canClick("cmdSaveFont"),
            "learning did not start: " + driver_.message());
    say("Learning");
    picture("learning");
    require(driver_.waitUntil([&] { return !trainer_.isTraining(); }, kTrainingPatience),
            "learning did not end");
    require(driver_.canClick("cmdSaveFont"), "learning ended without a result: " + driver_.message());
    say("Learnt: " + driver_.caption("lblStatus"));
    picture("learnt");
}

void ScriptedSession::save() {
    driver_.click("cmdSaveFont");
    require(driver_.message() == "Saved font", "the font was not saved: " + driver_.message());
    require(!trainer_.control().m_FontChanged(), "the saved font still counts as changed");
    say("Saved " + trainer_.folder().fontFile(kFontName));
    picture("saved");
}

void ScriptedSession::read() {
    driver_.type("txtSampleInput", "");
    makeCurrent(reading_.image);
    const trainer::Reading& reading = trainer_.reading();
    std::string text;
    for (const auto& line : reading.lines)
        for (const auto& character : line) text += character.character;
    say("Read " + nameOf(reading_.image) + ": " + (reading.available ? text : reading.note));
    picture("reading");
    require(text == reading_.text, "it was read wrong, the part says " + reading_.text);
}

void ScriptedSession::inspect() {
    const bool guide = kind_ == Kind::Guide;
    driver_.clickTool("tlbChars", "Numeric");
    picture("samples-table");
    driver_.clickTool("tlbChars", "Graphical");
    driver_.clickTool("tlbChars", "Array");
    picture("feature-array");
    if (guide) {
        driver_.clickTool("tlbArray", "StdDev");
        picture("deviation-array");
    }
    driver_.closeForms();
    const char* cell = guide ? kWrongCell : "lblChar(0)";
    driver_.openMenu("mnuMain", cell, "Show Font Histogram", [this] { picture("character-menu"); });
    picture("font-histogram");
    driver_.trigger("showGallery");
    driver_.openMenu("mnuMain", cell, "Show Histogram", [] {});
    picture("character-histogram");
    if (guide) {
        // The bar with the sample that has the wrong label.
        driver_.pressLeft("chart");
        driver_.openMenu("mnuHistogram", "chart", "", [this] { picture("histogram-menu"); });
    }
    driver_.closeForms();
    picture("gallery");
    driver_.trigger("readAll");
    require(driver_.waitUntil([&] { return !driver_.canClick("cmdReadAllStop"); }, kTrainingPatience),
            "the images were not read");
    picture("read-all");
    driver_.closeForms();
    say("Looked at the samples, the features and the histograms");
}

// On the image that was read last, of which nothing is left afterwards.
void ScriptedSession::showImageTools() {
    const auto found = trainer_.preview();
    require(found.size() > 4, "there is little to draw a region around");
    const auto& first = found.front().box;
    const auto& last = found[found.size() / 2].box;
    driver_.trigger("regionForImage");
    const float left = first.centreX - first.width, right = last.centreX + 0.6f * last.width;
    trainer_.adjustments().setRegion(
        engine::RotatedBox{(left + right) / 2, first.centreY, right - left, 1.7f * first.height, 0}, true);
    require(trainer_.preview().size() < found.size(), "the region takes nothing away");
    driver_.trigger("region");
    picture("region");
    driver_.trigger("region");
    driver_.expectForm("imageSettingsForm", [this] {
        picture("image-settings");
        driver_.click("CancelButton");
    });
    driver_.trigger("imageSettings");
    driver_.trigger("clearRegion");
    driver_.trigger("regionForImage");
    driver_.type("txtSampleInput", reading_.text);
    for (const char* action : {"addCharacter", "removeCharacter"}) driver_.trigger(action);
    driver_.pressLeft("partView");
    driver_.trigger("joinCharacters");
    require(trainer_.preview().size() + 1 == found.size() && trainer_.mismatch() == 0,
            "the characters were not corrected");
    picture("correct-characters");
    driver_.trigger("restoreCharacters");
    driver_.trigger("correctCharacters");
    say("Drew a region and corrected characters");
}

// The boxes and dialogs that the story does not come by.
void ScriptedSession::showOtherDialogs(const Task& task) {
    makeCurrent(task.image);
    driver_.type("txtSampleInput", withoutLast(task.text, 2));
    driver_.expectBox([this] { picture("count-message"); });
    driver_.click("cmdInclude");
    driver_.expectForm("dlgFontManager", [this] {
        driver_.expectForm("dlgFontName", [this] {
            picture("font-name");
            driver_.click("CancelButton");
        });
        driver_.click("cmdRenameFont");
        driver_.click("CancelButton");
    });
    driver_.click("cmdSelectFont");
}

}  // namespace dravik::test
