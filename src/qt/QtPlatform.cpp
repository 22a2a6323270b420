#include "qt/QtPlatform.h"

#include <QApplication>
#include <QClipboard>
#include <QDateTime>
#include <QEventLoop>
#include <QFileInfo>
#include <QGridLayout>
#include <QHash>
#include <QLabel>
#include <QLocale>
#include <QMenu>
#include <QMessageBox>
#include <QScreen>
#include <algorithm>

#include "qt/FormWindow.h"
#include "qt/Guard.h"
#include "qt/Peer.h"
#include "qt/QtConversions.h"

namespace dravik::qt {
namespace {

QMessageBox::StandardButtons qtButtons(ui::MessageBox::Buttons buttons) {
    switch (buttons) {
        case ui::MessageBox::Buttons::YesNo:
            return QMessageBox::Yes | QMessageBox::No;
        case ui::MessageBox::Buttons::YesNoCancel:
            return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
        default:
            return QMessageBox::Ok;
    }
}

QMessageBox::StandardButton escapeButton(ui::MessageBox::Buttons buttons) {
    switch (buttons) {
        case ui::MessageBox::Buttons::YesNo:
            return QMessageBox::No;
        case ui::MessageBox::Buttons::YesNoCancel:
            return QMessageBox::Cancel;
        default:
            return QMessageBox::Ok;
    }
}

QMessageBox::Icon qtIcon(ui::MessageBox::Icon icon) {
    switch (icon) {
        case ui::MessageBox::Icon::Critical:
            return QMessageBox::Critical;
        case ui::MessageBox::Icon::Information:
            return QMessageBox::Information;
        default:
            return QMessageBox::NoIcon;
    }
}

// Hours, minutes and seconds in the user's form, without the time zone that the long form ends with.
QString timeForm(const QTime& time) {
    const QLocale locale;
    QString format = locale.timeFormat(QLocale::LongFormat);
    format.remove(QLatin1Char('t'));
    return locale.toString(time, format.trimmed()).trimmed();
}

}  // namespace

QtPlatform::~QtPlatform() {
    for (auto& [form, window] : windows_) delete window.data();
}

QWidget* QtPlatform::parentWindow() const {
    if (QWidget* modal = QApplication::activeModalWidget()) return modal;
    if (QWidget* active = QApplication::activeWindow(); active && active->isVisible()) return active;
    return mainWindow_;
}

namespace {

// A text typed by the operator is one word, however long: the box is to be wide enough for it. Qt wraps at
// half the screen or 500, and cuts off what is wider than the screen less 480. A minimum below the first
// would clip a box that Qt takes for narrow, so that an ordinary text gets none.
void makeRoomForLongWords(QMessageBox& dialog) {
    auto* label = dialog.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
    if (!label) return;
    int widest = 0;
    const QStringList lines = dialog.text().split(QLatin1Char('\n'));
    for (const QString& line : lines)
        if (line.trimmed().indexOf(QLatin1Char(' ')) < 0 || line.startsWith(QLatin1Char(' ')))
            widest = std::max(widest, label->fontMetrics().horizontalAdvance(line));
    constexpr int kMargin = 16;
    constexpr int kIconAndBorders = 120;
    const int screen = dialog.screen()->availableGeometry().width();
    const int wrapped = std::min(screen / 2, 500);
    const int most = (screen <= 1024 ? screen : std::min(screen - 480, 1000)) - kIconAndBorders;
    if (widest > wrapped - kIconAndBorders)
        label->setMinimumWidth(std::min(std::max(widest + kMargin, wrapped), most));
}

// So that the title is seen whole.
void makeRoomForTitle(QMessageBox& dialog) {
    constexpr int kButtons = 120;  // of the window, beside the title
    auto* rows = qobject_cast<QGridLayout*>(dialog.layout());
    if (!rows) return;
    const int title = dialog.fontMetrics().horizontalAdvance(dialog.windowTitle()) * 5 / 4;  // it may be bold
    rows->addItem(new QSpacerItem(title + kButtons, 0), rows->rowCount(), 0, 1, rows->columnCount());
}

}  // namespace

ui::Answer QtPlatform::messageBox(const ui::MessageBox& box) {
    QMessageBox dialog(parentWindow());
    dialog.setObjectName(QStringLiteral("messageBox"));
    dialog.setTextFormat(Qt::PlainText);
    dialog.setWindowTitle(qtText(box.title));
    dialog.setText(qtText(box.text).replace(QLatin1Char('\r'), QLatin1Char('\n')));
    makeRoomForLongWords(dialog);
    dialog.setIcon(qtIcon(box.icon));
    dialog.setStandardButtons(qtButtons(box.buttons));
    dialog.setEscapeButton(escapeButton(box.buttons));
    makeRoomForTitle(dialog);  // in the arrangement that the buttons have made
    switch (dialog.exec()) {
        case QMessageBox::Yes:
            return ui::Answer::Yes;
        case QMessageBox::No:
            return ui::Answer::No;
        case QMessageBox::Cancel:
            return ui::Answer::Cancel;
        default:
            return ui::Answer::Ok;
    }
}

void QtPlatform::showModal(ui::Form& form) {
    form.load();
    if (!form.loaded()) return;
    QPointer<FormWindow> window = new FormWindow(form, parentWindow(), true);
    QEventLoop loop;
    QObject::connect(window, &FormWindow::finishedWithForm, &loop, &QEventLoop::quit);
    QObject::connect(window, &QObject::destroyed, &loop, &QEventLoop::quit);
    bool closed = false;
    QObject::connect(window, &FormWindow::finishedWithForm, &loop, [&closed] { closed = true; });
    window->show();
    guarded([&] { form.activate(); });
    if (window && !closed) loop.exec();
    delete window;
}

void QtPlatform::show(ui::Form& form) {
    QPointer<FormWindow>& window = windows_[&form];
    if (!window) {
        form.load();
        if (!form.loaded()) return;
        window = new FormWindow(form, mainWindow_, false);
        QObject::connect(window, &FormWindow::finishedWithForm, window, [this, key = &form] {
            const auto found = windows_.find(key);
            if (found == windows_.end()) return;
            if (found->second) found->second->deleteLater();
            windows_.erase(found);
        });
    }
    window->show();
    window->raise();
    window->activateWindow();
    form.activate();
}

void QtPlatform::popUpMenu(ui::PopupMenu& menu, ui::Widget& at, double x, double y) {
    if (const Peer* peer = Peer::of(at))
        showMenu(menu, peer->view(), peer->view().mapToGlobal(peer->toView(x, y).toPoint()));
}

void QtPlatform::showMenu(ui::PopupMenu& menu, QWidget& over, QPoint place) {
    QMenu shown(&over);
    shown.setObjectName(qtText(menu.name));
    QHash<const QAction*, ui::MenuItem*> items;
    for (const auto& item : menu.items()) {
        QAction* action = item->isSeparator() ? shown.addSeparator() : shown.addAction(qtText(item->caption));
        action->setObjectName(qtText(item->name));
        action->setEnabled(item->enabled);
        items.insert(action, item.get());
    }
    const QAction* picked = shown.exec(place);
    if (ui::MenuItem* item = items.value(picked)) item->click();
}

void QtPlatform::setClipboardText(const std::string& text) {
    QGuiApplication::clipboard()->setText(qtText(text));
}

std::string QtPlatform::fileDateText(const std::string& path) {
    const QFileInfo file(qtText(path));
    if (!file.exists()) throw Failure(RuntimeError::FileNotFound);
    const QDateTime changed = file.lastModified();
    return utf8(QLocale().toString(changed.date(), QLocale::ShortFormat) + QLatin1Char(' ') +
                timeForm(changed.time()));
}

std::string QtPlatform::dateText() {
    return utf8(QLocale().toString(QDate::currentDate(), QLocale::ShortFormat));
}

std::string QtPlatform::timeText() {
    return utf8(timeForm(QTime::currentTime()));
}

void QtPlatform::setBusy(bool busy) {
    if (busy)
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QGuiApplication::restoreOverrideCursor();
}

}  // namespace dravik::qt
