// The platform of the screen in Qt. Everything modal comes up over the window that the operator is working
// in.
#pragma once

#include <QPointer>
#include <QWidget>
#include <unordered_map>

#include "ui/Platform.h"

namespace dravik::qt {

class FormWindow;

class QtPlatform : public ui::Platform {
  public:
    QtPlatform() = default;
    ~QtPlatform() override;

    // The window over which dialogs come up and with which the child windows close.
    void setMainWindow(QWidget* window) { mainWindow_ = window; }

    ui::Answer messageBox(const ui::MessageBox& box) override;
    void showModal(ui::Form& form) override;
    void show(ui::Form& form) override;
    void popUpMenu(ui::PopupMenu& menu, ui::Widget& at, double x, double y) override;
    // The same over any widget, at a place of the display.
    static void showMenu(ui::PopupMenu& menu, QWidget& over, QPoint place);
    void setClipboardText(const std::string& text) override;
    std::string fileDateText(const std::string& path) override;
    std::string dateText() override;
    std::string timeText() override;
    void setBusy(bool busy) override;

  private:
    QWidget* parentWindow() const;

    QPointer<QWidget> mainWindow_;
    std::unordered_map<ui::Form*, QPointer<FormWindow>> windows_;
};

}  // namespace dravik::qt
