#include "desktop/DemoSession.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QFileInfo>
#include <QLineEdit>
#include <QMenu>
#include <QPainter>
#include <QPixmap>
#include <QRadioButton>
#include <algorithm>
#include <filesystem>
#include <ostream>

#include "base/Paths.h"
#include "base/Text.h"
#include "desktop/QtConversions.h"
#include "trainer/SampleList.h"

namespace dravik {
namespace {

constexpr char kFontName[] = "demo";
constexpr char kFirstSet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
constexpr char kListName[] = "lines.tsv";
constexpr int kTrainingPatience = 120000;
constexpr char kWrongLabel[] = "W";  // given to the first character of the guide's last lesson
constexpr char kWrongCell[] = "lblChar(22)";

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

// How many windows it stands on.
int height(const QWidget& top) {
    int windows = top.windowType() == Qt::Popup ? 100 : 0;
    for (const QWidget* below = top.parentWidget(); below; below = below->parentWidget())
        windows += below->isWindow();
    return windows;
}

void press(QWidget& dialog, const char* name) {
    if (auto* button = dialog.findChild<QAbstractButton*>(QLatin1String(name))) button->click();
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

QWidget& DemoSession::find(const char* name) const {
    auto* found = window_.findChild<QWidget*>(QLatin1String(name));
    require(found != nullptr, std::string("there is no control named ") + name);
    return *found;
}

void DemoSession::click(const char* name) {
    auto* button = qobject_cast<QAbstractButton*>(&find(name));
    require(button && button->isEnabled(), std::string(name) + " cannot be clicked");
    button->click();
}

void DemoSession::typeInto(const char* name, const std::string& text) {
    auto* input = qobject_cast<QLineEdit*>(&find(name));
    require(input && input->isEnabled(), std::string(name) + " cannot be typed into");
    input->selectAll();
    typeText(*input, qtText(text));
    require(utf8(input->text()) == text, "the text was not typed as it should be");
}

std::string DemoSession::message() const {
    return trainer_.control().screen().sbr.panel("Message").text();
}

// The window with everything that stands over it, as the operator sees it.
void DemoSession::picture(const std::string& name) {
    waitUntil([&] { return window_.isVisible(); });
    for (int i = 0; i < 5; ++i) QCoreApplication::processEvents();
    QPixmap all = window_.grab();
    QPainter painter(&all);
    // Their own order is none: a dialog stands over the one that opened it, and what pops up over all.
    QWidgetList tops = QApplication::topLevelWidgets();
    std::stable_sort(tops.begin(), tops.end(),
                     [](const QWidget* a, const QWidget* b) { return height(*a) < height(*b); });
    for (const QWidget* top : tops) {
        if (top == &window_ || !top->isVisible() || !(top->isWindow())) continue;
        QPoint place = top->pos() - window_.pos();
        const QRect inside(QPoint(0, 0), window_.size() - top->size());
        if (inside.isValid())
            place = {std::clamp(place.x(), 0, inside.right()), std::clamp(place.y(), 0, inside.bottom())};
        const QRect frame(place, top->size());
        painter.fillRect(frame.adjusted(-1, -1, 1, 1), window_.palette().color(QPalette::Dark));
        painter.drawPixmap(place, const_cast<QWidget*>(top)->grab());
    }
    painter.end();
    ++pictures_;
    const std::string number = (pictures_ < 10 ? "0" : "") + std::to_string(pictures_) + "-";
    const std::string pictureName = (kind_ == Kind::Story ? number : "") + name + ".png";
    const std::string file = folder_ + "/" + pictureName;
    require(all.save(qtText(file)), "the picture " + file + " cannot be written");
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
    require(waitUntil([&] { return window_.isVisible(); }), "the window did not appear");
    say("The window is open: \"" + trainer_.title() + "\"");
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
    require(script_.problems().isEmpty(), utf8(script_.problems().join(QStringLiteral("; "))));
    require(allRight, "not every image was read right");
}

void DemoSession::makeFont() {
    script_.expect(QStringLiteral("dlgFontManagerWindow"), [this](QWidget& manager) {
        picture("font-manager");
        script_.expect(QStringLiteral("dlgFontNewWindow"), [this](QWidget& dialog) {
            if (auto* name = dialog.findChild<QLineEdit*>(QStringLiteral("txtFontName"))) {
                name->selectAll();
                typeText(*name, QLatin1String(kFontName));
            }
            for (auto* option : dialog.findChildren<QRadioButton*>())
                if (option->text() == QLatin1String(kFirstSet)) option->click();
            picture("new-font");
            press(dialog, "OKButton");
        });
        script_.answerOthers(QStringLiteral("Yes"));
        press(manager, "cmdNewFont");
        picture("font-made");
        press(manager, "OKButton");
    });
    click("cmdSelectFont");
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
    script_.answerOthers(QStringLiteral("Yes"));
    click("cmdInclude");
    std::string line = nameOf(task.image) + ": " + message();
    for (const QString& asked : script_.messages()) {
        const auto words = utf8(asked.simplified());
        line += " [asked: " + (characterCount(words) > 90 ? words.substr(0, 90) + "..." : words) + "]";
    }
    say("Included " + line);
    require(message().find(" samples included.") != std::string::npos, "the include was refused: " + line);
    if (first) picture("included");
}

void DemoSession::learn() {
    auto& train = trainer_.control().screen().train;
    click("cmdTrain");
    require(train.tmrTrain.enabled() || train.cmdSaveFont.enabled(), "learning did not start: " + message());
    say("Learning");
    picture("learning");
    require(waitUntil([&] { return !train.tmrTrain.enabled(); }, kTrainingPatience), "learning did not end");
    require(train.cmdSaveFont.enabled(), "learning ended without a result: " + message());
    say("Learnt: " + train.lblStatus.caption());
    picture("learnt");
}

void DemoSession::save() {
    click("cmdSaveFont");
    require(message() == "Saved font", "the font was not saved: " + message());
    require(!trainer_.control().m_FontChanged(), "the saved font still counts as changed");
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
    for (auto* dialog : window_.findChildren<QDialog*>())
        if (dialog->isVisible()) dialog->close();
}

void DemoSession::openMenu(const char* cell, const char* item, const char* pictureName) {
    script_.expect(QStringLiteral("mnuMain"), [this, item, pictureName](QWidget& popup) {
        if (pictureName) picture(pictureName);
        auto* action = popup.findChild<QAction*>(QLatin1String(item));
        if (action && action->isEnabled()) {
            static_cast<QMenu&>(popup).setActiveAction(action);
            pressKey(popup, Qt::Key_Return);
        } else {
            popup.close();
        }
    });
    auto& view = find(cell);
    view.setFocus();
    pressKey(view, Qt::Key_Menu);
}

void DemoSession::inspect() {
    click("tlbChars.Numeric");
    picture("samples-table");
    click("tlbChars.Graphical");
    click("tlbChars.Array");
    picture("feature-array");
    if (kind_ == Kind::Guide) {
        click("tlbArray.StdDev");
        picture("deviation-array");
    }
    closeForms();
    const char* cell = kind_ == Kind::Guide ? kWrongCell : "lblChar(0)";
    openMenu(cell, "mnuMainFontHist", "character-menu");
    picture("font-histogram");
    openMenu(cell, "mnuMainCharHist", nullptr);
    picture("character-histogram");
    if (kind_ == Kind::Guide) inspectHistogram();
    closeForms();
    say("Looked at the samples, the features and the histograms");
}

// Points at the last bar, where the sample with the wrong label is, and opens its menu.
void DemoSession::inspectHistogram() {
    QWidget& chart = find("chart");
    chart.setFocus();
    pressKey(chart, Qt::Key_Left);
    script_.expect(QStringLiteral("mnuHistogram"), [this](QWidget& popup) {
        picture("histogram-menu");
        popup.close();
    });
    pressKey(chart, Qt::Key_Menu);
}

// The boxes and dialogs that the story does not come by.
void DemoSession::showOtherDialogs(const Task& task) {
    makeCurrent(task.image);
    typeInto("txtSampleInput", withoutLast(task.text, 2));
    script_.expect(QStringLiteral("messageBox"), [this](QWidget& box) {
        picture("count-message");
        if (auto* button = box.findChild<QAbstractButton*>()) button->click();
    });
    click("cmdInclude");
    script_.expect(QStringLiteral("dlgFontManagerWindow"), [this](QWidget& manager) {
        script_.expect(QStringLiteral("dlgFontNameWindow"), [this](QWidget& dialog) {
            picture("font-name");
            press(dialog, "CancelButton");
        });
        press(manager, "cmdRenameFont");
        press(manager, "CancelButton");
    });
    click("cmdSelectFont");
}

}  // namespace dravik
