#include "drivers/qt/DialogScript.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDeadlineTimer>
#include <QDialog>
#include <QEventLoop>
#include <QKeyEvent>
#include <QMessageBox>
#include <QTimer>

#include "base/Failure.h"
#include "qt/QtConversions.h"

namespace dravik::test {
namespace {

constexpr int kPollMilliseconds = 10;
constexpr int kPatienceMilliseconds = 20000;

QString plain(QString text) {
    return text.remove(QLatin1Char('&'));
}

}  // namespace

bool waitUntil(const std::function<bool()>& condition, int milliseconds) {
    const QDeadlineTimer deadline(milliseconds);
    QTimer wake;  // so that a condition that changes without an event is seen too
    wake.start(kPollMilliseconds);
    while (!condition()) {
        if (deadline.hasExpired()) return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }
    return true;
}

void settle() {
    for (int i = 0; i < 3; ++i) QCoreApplication::processEvents();
}

void pressKey(QWidget& in, int key, Qt::KeyboardModifiers modifiers) {
    QKeyEvent press(QEvent::KeyPress, key, modifiers);
    QApplication::sendEvent(&in, &press);
    QKeyEvent release(QEvent::KeyRelease, key, modifiers);
    QApplication::sendEvent(&in, &release);
}

void typeText(QWidget& into, const QString& text) {
    if (text.isEmpty()) pressKey(into, Qt::Key_Delete);
    for (const QChar character : text) {
        QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(character));
        QApplication::sendEvent(&into, &press);
    }
}

DialogScript::~DialogScript() = default;

void DialogScript::expect(const QString& name, Step step) {
    steps_.push_back({name, std::move(step)});
    waited_ = 0;
    schedule();
}

void DialogScript::schedule() {
    if (scheduled_) return;
    scheduled_ = true;
    // A single shot each time: the next one also comes while a step blocks in a dialog that it opened.
    QTimer::singleShot(kPollMilliseconds, this, [this] {
        scheduled_ = false;
        poll();
    });
}

void DialogScript::poll() {
    schedule();
    QWidget* popup = QApplication::activePopupWidget();
    QWidget* dialog = popup ? popup : QApplication::activeModalWidget();
    if (!dialog || !dialog->isVisible()) {
        lastWorked_ = nullptr;
        waited_ += kPollMilliseconds;
        if (!steps_.empty() && waited_ > kPatienceMilliseconds) {
            problems_ << QStringLiteral("%1 did not appear").arg(steps_.front().name);
            steps_.clear();
        }
        return;
    }
    if (!steps_.empty() && dialog->objectName() == steps_.front().name && dialog != lastWorked_) {
        const Step step = std::move(steps_.front().step);
        steps_.pop_front();
        waited_ = 0;
        lastWorked_ = dialog;
        if (qobject_cast<QMessageBox*>(dialog)) messages_ << qobject_cast<QMessageBox*>(dialog)->text();
        try {
            step(*dialog);
        } catch (...) {
            problems_ << qt::qtText(currentFailure().description());
            dialog->close();
        }
        lastWorked_ = nullptr;
        return;
    }
    if (dialog == lastWorked_) return;  // its step is still at work
    if (answer(*dialog)) return;
    waited_ += kPollMilliseconds;
    if (waited_ > kPatienceMilliseconds) {
        waited_ = 0;
        problems_ << QStringLiteral("%1 was not expected").arg(dialog->objectName());
        steps_.clear();
        dialog->close();
    }
}

bool DialogScript::answer(QWidget& dialog) {
    auto* box = qobject_cast<QMessageBox*>(&dialog);
    if (!box || otherButton_.isEmpty()) return false;
    messages_ << box->text();
    QAbstractButton* pressed = box->escapeButton();
    for (QAbstractButton* button : box->buttons())
        if (plain(button->text()) == otherButton_) pressed = button;
    if (pressed)
        pressed->click();
    else
        box->close();
    return true;
}

}  // namespace dravik::test
