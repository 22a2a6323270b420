// Works modal dialogs from code: while one blocks its caller, the script finds it by name and acts on it. For
// scripted sessions and tests. Everything waits for a condition, nothing for a fixed time.
#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <deque>
#include <functional>

class QWidget;

namespace dravik::test {

// Runs the event loop until the condition holds; false when it does not within the time.
bool waitUntil(const std::function<bool()>& condition, int milliseconds = 20000);

// Lets deferred work of the event loop happen.
void settle();

// Types a text over what is selected in a widget, character by character, as the keyboard would; the empty
// text deletes the selection.
void typeText(QWidget& into, const QString& text);
void pressKey(QWidget& in, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

class DialogScript : public QObject {
  public:
    using Step = std::function<void(QWidget& dialog)>;

    DialogScript() = default;
    ~DialogScript() override;

    // The next modal window or pop-up menu must have this object name and is worked by the step. Steps run in
    // order.
    void expect(const QString& name, Step step);
    // Message boxes while none is expected: their text is kept and the button of that text is pressed if it
    // is there, else the escape button.
    void answerOthers(const QString& button) {
        otherButton_ = button;
        schedule();
    }

    bool finished() const noexcept { return steps_.empty(); }
    // What did not come out: dialogs that did not appear in time or were not expected.
    const QStringList& problems() const noexcept { return problems_; }
    const QStringList& messages() const noexcept { return messages_; }
    void forgetMessages() { messages_.clear(); }

  private:
    struct Expected {
        QString name;
        Step step;
    };

    void poll();
    void schedule();
    bool answer(QWidget& dialog);

    std::deque<Expected> steps_;
    QString otherButton_;
    QStringList problems_;
    QStringList messages_;
    QObject* lastWorked_ = nullptr;
    int waited_ = 0;
    bool scheduled_ = false;
};

}  // namespace dravik::test
