// A form in a window of its own: a dialog that remembers its place by the form's name, unloads the form when
// the operator closes it and goes away with the form.
#pragma once

#include <QDialog>

#include "ui/Form.h"

namespace dravik::qt {

class FormPage;

class FormWindow : public QDialog {
    Q_OBJECT

  public:
    // The form is loaded. Nothing is shown yet.
    FormWindow(ui::Form& form, QWidget* parent, bool modal);
    ~FormWindow() override;

    // Escape and the window's own close button.
    void reject() override;

  Q_SIGNALS:
    // The form is unloaded or gone: the window is hidden and will be deleted.
    void finishedWithForm();

  protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void letGo();
    QString geometryKey() const;

    ui::Form* form_;
    FormPage* page_;
    ui::Connection changed_;
    ui::Connection unloaded_;
    ui::Connection destroyed_;
};

}  // namespace dravik::qt
