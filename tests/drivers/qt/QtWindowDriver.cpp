#include "drivers/qt/QtWindowDriver.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPainter>
#include <QPixmap>
#include <algorithm>
#include <utility>

#include "qt/QtConversions.h"

namespace dravik::test {
namespace {

constexpr int kPatience = 20000;  // milliseconds

// How many windows it stands on.
int height(const QWidget& top) {
    int windows = top.windowType() == Qt::Popup ? 100 : 0;
    for (const QWidget* below = top.parentWidget(); below; below = below->parentWidget())
        windows += below->isWindow();
    return windows;
}

std::vector<std::string> textsOf(const QStringList& list) {
    std::vector<std::string> texts;
    for (const QString& text : list) texts.push_back(qt::utf8(text));
    return texts;
}

}  // namespace

template <class View>
View& QtWindowDriver::find(const std::string& name) const {
    const QWidget* dialog = QApplication::activeModalWidget();
    View* found = dialog ? dialog->findChild<View*>(qt::qtText(name)) : nullptr;
    if (!found) found = window_.findChild<View*>(qt::qtText(name));
    if (!found) throw SessionFailure("there is no control named " + name);
    return *found;
}

std::string QtWindowDriver::show() {
    window_.show();
    if (!waitUntil([&] { return window_.isVisible(); }, kPatience))
        throw SessionFailure("the window did not appear");
    return qt::utf8(window_.windowTitle());
}

void QtWindowDriver::closeForms() {
    for (auto* dialog : window_.findChildren<QDialog*>())
        if (dialog->isVisible()) dialog->close();
}

bool QtWindowDriver::canClick(const std::string& name) const {
    return find<QAbstractButton>(name).isEnabled();
}

void QtWindowDriver::click(const std::string& name) {
    if (!canClick(name)) throw SessionFailure(name + " cannot be clicked");
    find<QAbstractButton>(name).click();
}

void QtWindowDriver::type(const std::string& name, const std::string& text) {
    auto& input = find<QLineEdit>(name);
    if (!input.isEnabled()) throw SessionFailure(name + " cannot be typed into");
    input.selectAll();
    typeText(input, qt::qtText(text));
    if (qt::utf8(input.text()) != text) throw SessionFailure("the text was not typed as it should be");
}

std::string QtWindowDriver::caption(const std::string& name) const {
    auto& view = find<QWidget>(name);
    if (const auto* button = qobject_cast<const QAbstractButton*>(&view)) return qt::utf8(button->text());
    return qt::utf8(find<QLabel>(name).text());
}

void QtWindowDriver::pressLeft(const std::string& view) {
    auto& found = find<QWidget>(view);
    found.setFocus();
    pressKey(found, Qt::Key_Left);
}

void QtWindowDriver::expectForm(const std::string& form, Step step) {
    script_.expect(qt::qtText(form + "Window"), [step = std::move(step)](QWidget&) { step(); });
}

void QtWindowDriver::expectBox(Step step) {
    script_.expect(QStringLiteral("messageBox"), [step = std::move(step)](QWidget& box) {
        step();
        if (auto* button = box.findChild<QAbstractButton*>()) button->click();
    });
}

void QtWindowDriver::openMenu(const std::string& menu, const std::string& at, const std::string& item,
                              Step step) {
    script_.expect(qt::qtText(menu), [item, step = std::move(step)](QWidget& popup) {
        step();
        for (QAction* action : popup.actions()) {
            const QString text = action->text().remove(QLatin1Char('&'));
            if (item.empty() || !text.startsWith(qt::qtText(item)) || !action->isEnabled()) continue;
            static_cast<QMenu&>(popup).setActiveAction(action);
            return pressKey(popup, Qt::Key_Return);
        }
        popup.close();
    });
    auto& view = find<QWidget>(at);
    view.setFocus();
    pressKey(view, Qt::Key_Menu);
    if (!script_.finished()) throw SessionFailure("the menu of " + at + " did not open");
}

void QtWindowDriver::answerBoxes(ui::Answer answer) {
    script_.forgetMessages();
    script_.answerOthers(answer == ui::Answer::Yes ? QStringLiteral("Yes") : QStringLiteral("No"));
}

std::vector<std::string> QtWindowDriver::messages() const {
    return textsOf(script_.messages());
}

std::vector<std::string> QtWindowDriver::problems() const {
    return textsOf(script_.problems());
}

bool QtWindowDriver::waitUntil(const std::function<bool()>& condition, int milliseconds) {
    return test::waitUntil(condition, milliseconds);
}

void QtWindowDriver::picture(const std::string& file) {
    for (int i = 0; i < 5; ++i) QCoreApplication::processEvents();
    QPixmap all = window_.grab();
    QPainter painter(&all);
    // Their own order is none: a dialog stands over the one that opened it, and what pops up over all.
    QWidgetList tops = QApplication::topLevelWidgets();
    std::stable_sort(tops.begin(), tops.end(),
                     [](const QWidget* a, const QWidget* b) { return height(*a) < height(*b); });
    for (const QWidget* top : tops) {
        if (top == &window_ || !top->isVisible() || !top->isWindow()) continue;
        QPoint place = top->pos() - window_.pos();
        const QRect inside(QPoint(0, 0), window_.size() - top->size());
        if (inside.isValid())
            place = {std::clamp(place.x(), 0, inside.right()), std::clamp(place.y(), 0, inside.bottom())};
        const QRect frame(place, top->size());
        painter.fillRect(frame.adjusted(-1, -1, 1, 1), window_.palette().color(QPalette::Dark));
        painter.drawPixmap(place, const_cast<QWidget*>(top)->grab());
    }
    painter.end();
    if (!all.save(qt::qtText(file))) throw SessionFailure("the picture " + file + " cannot be written");
}

}  // namespace dravik::test
