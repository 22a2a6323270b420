// The inside of a form: its controls, its timers, and Enter and Escape for its default and cancel buttons.
// Stands in a window of its own or in the program's window.
#pragma once

#include <QWidget>
#include <vector>

#include "ui/Form.h"

namespace dravik::qt {

class FormLayout;
class Peer;
class TimerPeer;

class FormPage : public QWidget {
    Q_OBJECT

  public:
    FormPage(ui::Form& form, QWidget* parent);

    ui::Form& form() noexcept { return form_; }
    // The form is going away: stops the timers and lets every peer go.
    void detach() noexcept;
    // Enter and Escape; false for every other key.
    bool answerKey(const QKeyEvent& event);
    bool isDefaultField(const QWidget* focused) const;

  Q_SIGNALS:
    // Escape was pressed and the form has no cancel button.
    void escaped();

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    // Colours that the controls have taken from the palette follow it.
    void changeEvent(QEvent* event) override;

  private:
    std::vector<Peer*> peers() const;

    ui::Form& form_;
    FormLayout* inside_;
    bool attached_ = true;
    std::vector<TimerPeer*> timers_;
};

}  // namespace dravik::qt
