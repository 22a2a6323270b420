#include "activex/host/DemoSession.h"

#include <commctrl.h>

#include <algorithm>
#include <filesystem>
#include <ostream>

#include "activex/host/PngFile.h"
#include "activex/win32/Peer.h"
#include "activex/win32/WinText.h"
#include "base/Paths.h"
#include "base/Text.h"
#include "trainer/SampleList.h"

namespace dravik {
namespace {

constexpr char kFontName[] = "demo";
constexpr wchar_t kFirstSet[] = L"ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
constexpr char kListName[] = "lines.tsv";
constexpr int kTrainingPatience = 120000;
constexpr char kWrongLabel[] = "W";  // given to the first character of the guide's last lesson
constexpr char kWrongCell[] = "lblChar(22)";
// Places in the toolbars.
constexpr int kGraphical = 0;
constexpr int kNumeric = 1;
constexpr int kArray = 3;
constexpr int kDeviation = 1;

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

void press(HWND dialog, const std::string& name) {
    if (const HWND button = findWindowNamed(dialog, name)) SendMessageW(button, BM_CLICK, 0, 0);
}

bool isForm(HWND window) {
    wchar_t name[64] = {};
    GetClassNameW(window, name, static_cast<int>(std::size(name)));
    return std::wstring_view(name) == L"DravikFormWindow";
}

}  // namespace

DemoSession::DemoSession(MainWindow& window, Trainer& trainer, std::string folder, std::ostream& out,
                         Kind kind)
    : window_(window), trainer_(trainer), folder_(std::move(folder)), out_(out), kind_(kind) {}

void DemoSession::say(const std::string& line) {
    out_ << line << std::endl;
}

void DemoSession::require(bool condition, const std::string& what) const {
    if (!condition) throw DemoFailure(what);
}

HWND DemoSession::find(const std::string& name) const {
    for (const HWND top : shownWindows())
        if (const HWND found = findWindowNamed(top, name)) return found;
    throw DemoFailure("there is no control named " + name);
}

void DemoSession::click(const std::string& name) {
    require(canClick(name), name + " cannot be clicked");
    SendMessageW(find(name), BM_CLICK, 0, 0);
    settle();
}

void DemoSession::clickTool(const std::string& bar, int index) {
    const HWND tools = find(bar);
    RECT place{};
    SendMessageW(tools, TB_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&place));
    const LPARAM at = MAKELPARAM((place.left + place.right) / 2, (place.top + place.bottom) / 2);
    SendMessageW(tools, WM_LBUTTONDOWN, MK_LBUTTON, at);
    SendMessageW(tools, WM_LBUTTONUP, 0, at);
    settle();
}

void DemoSession::typeInto(const std::string& name, const std::string& text) {
    const HWND edit = find(name);
    require(IsWindowEnabled(edit), name + " cannot be typed into");
    SetFocus(edit);
    typeOver(edit, wide(text));
    settle();
    require(utf8(windowText(edit)) == text, "the text was not typed as it should be");
}

std::string DemoSession::message() const {
    const HWND bar = find("sbr");
    std::wstring text(LOWORD(SendMessageW(bar, SB_GETTEXTLENGTHW, 0, 0)) + 1u, L'\0');
    SendMessageW(bar, SB_GETTEXTW, 0, reinterpret_cast<LPARAM>(text.data()));
    text.pop_back();
    return utf8(text);
}

// The window with everything that stands over it, as the operator sees it.
void DemoSession::picture(const std::string& name) {
    settle();
    for (const HWND window : shownWindows())
        RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    RECT frame{};
    GetWindowRect(window_.window(), &frame);
    Canvas all(widthOf(frame), heightOf(frame));
    std::vector<HWND> windows = shownWindows();
    std::reverse(windows.begin(), windows.end());
    std::stable_partition(windows.begin(), windows.end(),
                          [this](HWND window) { return window == window_.window(); });
    for (const HWND window : windows) {
        RECT place{};
        GetWindowRect(window, &place);
        const HDC dc = GetWindowDC(window);
        BitBlt(all.dc(), place.left - frame.left, place.top - frame.top, widthOf(place), heightOf(place), dc,
               0, 0, SRCCOPY);
        ReleaseDC(window, dc);
    }
    ++pictures_;
    const std::string number = (pictures_ < 10 ? "0" : "") + std::to_string(pictures_) + "-";
    const std::string pictureName = (kind_ == Kind::Story ? number : "") + name + ".png";
    writePng(fromPath(toPath(folder_) / toPath(pictureName)), all);
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
    window_.show();
    require(waitUntil([&] { return IsWindowVisible(window_.window()) != FALSE; }),
            "the window did not appear");
    say("The window is open: \"" + utf8(windowText(window_.window())) + "\"");
    picture("window-empty");

    std::vector<std::string> images;
    for (const auto& task : lessons_) images.push_back(task.image);
    for (const auto& task : readings_) images.push_back(task.image);
    window_.open(images);
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
    for (const auto& problem : script_.problems()) problems += (problems.empty() ? "" : "; ") + problem;
    require(problems.empty(), problems);
    require(allRight, "not every image was read right");
}

void DemoSession::makeFont() {
    script_.expect("dlgFontManager", [this](HWND manager) {
        picture("font-manager");
        script_.expect("dlgFontNew", [this](HWND dialog) {
            typeOver(findWindowNamed(dialog, "txtFontName"), wide(kFontName));
            for (int i = 0;
                 const HWND option = findWindowNamed(dialog, "InitCharSet(" + std::to_string(i) + ")"); ++i)
                if (windowText(option) == kFirstSet) SendMessageW(option, BM_CLICK, 0, 0);
            picture("new-font");
            press(dialog, "OKButton");
        });
        script_.answerOthers(IDYES);
        press(manager, "cmdNewFont");
        picture("font-made");
        press(manager, "OKButton");
    });
    click("cmdSelectFont");
    const std::string font = trainer_.screen().selectedFont();
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
    typeInto("txtSampleInput", withoutLast(task.text, 2));
    say("Typed a text that is two characters short: " + trainer_.previewText());
    require(trainer_.mismatch() != 0, "the mismatch is not noticed");
    picture("mismatch");
}

void DemoSession::include(const Task& task) {
    makeCurrent(task.image);
    typeInto("txtSampleInput", task.text);
    const bool first = &task == &lessons_.front();
    if (first) picture("text-typed");
    script_.forgetMessages();
    script_.answerOthers(IDYES);
    click("cmdInclude");
    std::string line = nameOf(task.image) + ": " + message();
    for (std::string words : script_.messages()) {
        std::replace_if(
            words.begin(), words.end(), [](char c) { return c == '\r' || c == '\n'; }, ' ');
        line += " [asked: " + (characterCount(words) > 90 ? words.substr(0, 90) + "..." : words) + "]";
    }
    say("Included " + line);
    require(message().find(" samples included.") != std::string::npos, "the include was refused: " + line);
    if (first) picture("included");
}

void DemoSession::learn() {
    click("cmdTrain");
    require(trainer_.screen().isTraining() || canClick("cmdSaveFont"),
            "learning did not start: " + message());
    say("Learning");
    picture("learning");
    require(waitUntil([&] { return !trainer_.screen().isTraining(); }, kTrainingPatience),
            "learning did not end");
    require(canClick("cmdSaveFont"), "learning ended without a result: " + message());
    say("Learnt: " + utf8(windowText(find("lblStatus"))));
    picture("learnt");
}

void DemoSession::save() {
    click("cmdSaveFont");
    require(message() == "Saved font", "the font was not saved: " + message());
    require(!trainer_.screen().isFontChanged(), "the saved font still counts as changed");
    say("Saved " + trainer_.folder().fontFile(kFontName));
    picture("saved");
}

void DemoSession::read(const Task& task, bool& allRight) {
    typeInto("txtSampleInput", "");
    makeCurrent(task.image);
    const Reading& reading = trainer_.reading();
    const std::string text = readText(reading);
    const bool right = text == task.text;
    allRight = allRight && right;
    say("Read " + nameOf(task.image) + ": " + (reading.available ? text : reading.note) +
        (right ? " (right)" : " (WRONG, the part says " + task.text + ")"));
    picture("reading");
}

void DemoSession::closeForms() {
    for (const HWND window : shownWindows())
        if (isForm(window)) SendMessageW(window, WM_CLOSE, 0, 0);
    settle();
}

void DemoSession::openMenu(const char* cell, const std::wstring& entry, const char* pictureName) {
    script_.expect(DialogScript::kMenu, [this, entry, pictureName](HWND menu) {
        if (pictureName) picture(pictureName);
        pickMenuItem(menu, entry);
    });
    const HWND view = find(cell);
    SetActiveWindow(GetAncestor(view, GA_ROOT));
    SetFocus(view);
    pressKey(view, VK_APPS);
    settle();
    require(script_.finished(), std::string("the menu of ") + cell + " did not open");
}

void DemoSession::inspect() {
    clickTool("tlbChars", kNumeric);
    picture("samples-table");
    clickTool("tlbChars", kGraphical);
    clickTool("tlbChars", kArray);
    picture("feature-array");
    if (kind_ == Kind::Guide) {
        clickTool("tlbArray", kDeviation);
        picture("deviation-array");
    }
    closeForms();
    const char* cell = kind_ == Kind::Guide ? kWrongCell : "lblChar(0)";
    openMenu(cell, L"Show Font Histogram", "character-menu");
    picture("font-histogram");
    openMenu(cell, L"Show Histogram", nullptr);
    picture("character-histogram");
    if (kind_ == Kind::Guide) {
        // Points at the last bar, where the sample with the wrong label is, and opens its menu.
        const HWND chart = find("chart");
        SetFocus(chart);
        pressKey(chart, VK_LEFT);
        openMenu("chart", L"", "histogram-menu");
    }
    closeForms();
    say("Looked at the samples, the features and the histograms");
}

// The boxes and dialogs that the story does not come by.
void DemoSession::showOtherDialogs(const Task& task) {
    makeCurrent(task.image);
    typeInto("txtSampleInput", withoutLast(task.text, 2));
    script_.expect(DialogScript::kMessageBox, [this](HWND box) {
        picture("count-message");
        SendMessageW(box, WM_CLOSE, 0, 0);
    });
    click("cmdInclude");
    script_.expect("dlgFontManager", [this](HWND manager) {
        script_.expect("dlgFontName", [this](HWND dialog) {
            picture("font-name");
            press(dialog, "CancelButton");
        });
        press(manager, "cmdRenameFont");
        press(manager, "CancelButton");
    });
    click("cmdSelectFont");
}

}  // namespace dravik
