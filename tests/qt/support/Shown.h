// A form on the screen of Qt.
#pragma once

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QHeaderView>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QProgressBar>
#include <QToolButton>
#include <QtTest/QTest>

#include "drivers/qt/DialogScript.h"
#include "qt/AccessibleRoles.h"
#include "qt/FormPage.h"
#include "qt/GridView.h"
#include "qt/Peer.h"
#include "qt/QtPlatform.h"
#include "qt/Theme.h"
#include "shown/Seen.h"

namespace dravik::test {

using namespace qt;

class Shown {
  public:
    Shown() = default;
    explicit Shown(Layout layout, int width = 640, int height = 480) {
        form.setLayout(std::move(layout));
        show(width, height);
    }
    ~Shown() {
        if (page) page->detach();
        QApplication::setPalette(palette_);
    }
    void show(int width = 640, int height = 480) {
        page = std::make_unique<FormPage>(form, nullptr);
        page->resize(width, height);
        page->show();
        page->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(page.get()));
    }

    template <class View = QWidget>
    View& view(const char* name) const {
        auto* found = page->findChild<View*>(QLatin1String(name));
        if (!found) throw std::runtime_error(std::string("no view named ") + name);
        return *found;
    }

    void click(const Widget& widget, Point place = {5, 5}, int shift = 0) {
        const auto [view, at] = under(widget, place);
        QTest::mouseClick(view, Qt::LeftButton, modifiers(shift), at);
    }
    void press(const Widget& widget, int button, Point place, int shift = 0) {
        const auto [view, at] = under(widget, place);
        QTest::mousePress(view, button == kRightButton ? Qt::RightButton : Qt::LeftButton, modifiers(shift),
                          at);
    }
    void drag(const Widget& widget, Point from, Point to) {
        press(widget, kLeftButton, from);
        const auto [view, at] = under(widget, to);
        QMouseEvent move(QEvent::MouseMove, at, view->mapToGlobal(at), Qt::NoButton, Qt::LeftButton,
                         Qt::NoModifier);
        QApplication::sendEvent(view, &move);
        QTest::mouseRelease(view, Qt::LeftButton, {}, at);
    }
    void key(Key key, int shift = 0) {
        constexpr Qt::Key kKeys[] = {Qt::Key_Tab,   Qt::Key_Return, Qt::Key_Escape, Qt::Key_Up,
                                     Qt::Key_Down,  Qt::Key_Left,   Qt::Key_Right,  Qt::Key_Home,
                                     Qt::Key_End,   Qt::Key_Delete, Qt::Key_Menu,   Qt::Key_F10,
                                     Qt::Key_Space, Qt::Key_A,      Qt::Key_C};
        QTest::keyClick(QApplication::focusWidget(), kKeys[static_cast<int>(key)], modifiers(shift));
    }
    void type(const std::string& text) {
        typeText(*QApplication::focusWidget(), QString::fromStdString(text));
    }
    void accessKey(char letter) { QTest::keyClick(page.get(), letter, Qt::AltModifier); }
    void focus(const Widget& widget) {
        on(widget).clearFocus();
        on(widget).setFocus(Qt::TabFocusReason);
    }
    void clickEntry(const ListBox& list, int index) {
        auto& view = on<QListWidget>(list);
        QTest::mouseClick(view.viewport(), Qt::LeftButton, {},
                          view.visualItemRect(view.item(index)).center());
    }
    void clickTool(const Toolbar& bar, const std::string& key) { part<QToolButton>(bar, key).click(); }
    void clickArrow(const UpDown& arrows, bool up) { part<QToolButton>(arrows, up ? "up" : "down").click(); }
    void setCursor(const TextBox& box, int position) { on<QLineEdit>(box).setCursorPosition(position); }

    bool focused(const Widget& widget) const { return on(widget).hasFocus(); }
    bool enabled(const Widget& widget) const { return on(widget).isEnabled(); }
    bool visible(const Widget& widget) const { return on(widget).isVisible(); }
    Area area(const Widget& widget) const {
        const QRect place = on(widget).geometry();
        return {place.x(), place.y(), place.width(), place.height()};
    }
    std::string text(const TextBox& box) const { return on<QLineEdit>(box).text().toStdString(); }
    std::string selected(const TextBox& box) const { return on<QLineEdit>(box).selectedText().toStdString(); }
    int cursor(const TextBox& box) const { return on<QLineEdit>(box).cursorPosition(); }
    bool marked(const Widget& button) const { return on<QAbstractButton>(button).isChecked(); }
    int entries(const ComboBox& list) const { return on<QComboBox>(list).count(); }
    int entries(const ListBox& list) const { return on<QListWidget>(list).count(); }
    int chosen(const ComboBox& list) const { return on<QComboBox>(list).currentIndex(); }
    int chosen(const ListBox& list) const { return on<QListWidget>(list).currentRow(); }
    std::string panel(const StatusBar& bar, const std::string& key) const {
        return part<QLabel>(bar, key).text().toStdString();
    }
    bool pressed(const Toolbar& bar, const std::string& key) const {
        return part<QToolButton>(bar, key).isChecked();
    }
    int thousandths(const ProgressBar& bar) const { return on<QProgressBar>(bar).value(); }
    Point middleOf(const Grid& grid, int row, int column) const {
        auto& view = on<GridView>(grid);
        auto* head = view.horizontalHeader();
        const int x = head->sectionViewportPosition(column) + head->sectionSize(column) / 2;
        const QPoint place = row == 0
                                 ? head->mapTo(&view, QPoint(x, head->height() / 2))
                                 : view.viewport()->mapTo(
                                       &view, view.visualRect(view.model()->index(row - 1, column)).center());
        return {place.x(), place.y()};
    }
    Picture picture(const Widget& widget) const {
        const QImage image = on(widget).grab().toImage();
        Picture result{image.width(), image.height(), {}};
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x) result.pixels.push_back(model(image.pixelColor(x, y)));
        return result;
    }
    // What a screen reader says of it, or of a part of a chart, numbered from 1.
    std::string heard(const Widget& widget, int part = 0) const {
        installAccessibleRoles();
        QAccessibleInterface* heard = QAccessible::queryAccessibleInterface(&on(widget));
        return (part > 0 ? heard->child(part - 1) : heard)->text(QAccessible::Name).toStdString();
    }
    std::string role(const Widget& widget) const {
        installAccessibleRoles();
        const auto role = QAccessible::queryAccessibleInterface(&on(widget))->role();
        return role == QAccessible::Cell ? "cell" : role == QAccessible::Chart ? "chart" : "";
    }

    void useDark(bool dark) {
        useTheme(dark ? trainer::Theme::Dark : trainer::Theme::Light);
        settle();
    }
    Color colorOf(Color color) const { return model(qtColor(color, QApplication::palette())); }
    static double contrast(Color a, Color b) {
        const auto seen = [](Color color) { return QColor(redOf(color), greenOf(color), blueOf(color)); };
        return qt::contrast(seen(a), seen(b));
    }

    // What comes up next, one after the other: a box that is answered, or closed; a menu that is typed into,
    // where '!' is Escape; a form that is worked.
    void expectBox(std::optional<Answer> answer) {
        script.expect(QStringLiteral("messageBox"), [answer](QWidget& box) {
            if (!answer) return QTest::keyClick(&box, Qt::Key_Escape);
            const auto which = *answer == Answer::Yes ? QMessageBox::Yes : QMessageBox::No;
            dynamic_cast<QMessageBox&>(box).button(which)->click();
        });
    }
    void expectMenu(const PopupMenu& menu, const std::string& keys) {
        script.expect(QString::fromStdString(menu.name), [keys](QWidget& popup) {
            for (const char key : keys)
                key == '!' ? QTest::keyClick(&popup, Qt::Key_Escape) : QTest::keyClick(&popup, key);
        });
    }
    void expectForm(const Form& expected, std::function<void()> step) {
        script.expect(QString::fromStdString(expected.name() + "Window"),
                      [step = std::move(step)](QWidget&) { step(); });
    }
    std::string boxText() const { return script.messages().back().toStdString(); }
    bool allCameUp() const { return script.finished() && script.problems().isEmpty(); }
    static bool hasWindow(const std::string& title) { return windowOf(title) != nullptr; }
    static void closeWindow(const std::string& title) { windowOf(title)->close(); }
    static bool hasMenu() { return QApplication::activePopupWidget() != nullptr; }

    Form form{"form", "Form"};
    std::unique_ptr<FormPage> page;
    QtPlatform platform;
    DialogScript script;

  private:
    template <class View = QWidget>
    static View& on(const Widget& widget) {
        return dynamic_cast<View&>(Peer::of(widget)->view());
    }
    template <class View>
    static View& part(const Widget& widget, const std::string& key) {
        return *on(widget).findChild<View*>(QString::fromStdString(widget.name() + "." + key));
    }
    // A view may have others inside.
    static std::pair<QWidget*, QPoint> under(const Widget& widget, Point place) {
        QWidget& view = on(widget);
        QWidget* inside = view.childAt(place.x, place.y);
        if (!inside) inside = &view;
        return {inside, inside->mapFrom(&view, QPoint(place.x, place.y))};
    }
    static Qt::KeyboardModifiers modifiers(int shift) {
        return (shift & kShiftMask ? Qt::ShiftModifier : Qt::NoModifier) |
               (shift & kCtrlMask ? Qt::ControlModifier : Qt::NoModifier);
    }
    static Color model(const QColor& color) { return rgb(color.red(), color.green(), color.blue()); }
    static QWidget* windowOf(const std::string& title) {
        for (QWidget* top : QApplication::topLevelWidgets())
            if (top->windowTitle().toStdString() == title && top->isVisible()) return top;
        return nullptr;
    }

    const QPalette palette_ = QApplication::palette();
};

inline std::string clipboardText() {
    return QGuiApplication::clipboard()->text().toStdString();
}

}  // namespace dravik::test
