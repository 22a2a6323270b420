// The program's window: the control's page on the left, the part on the right, menus above.
#pragma once

#include <QMainWindow>
#include <vector>

#include "trainer/Trainer.h"

class QSplitter;

namespace dravik::qt {

class FormPage;
class PartPane;
class WindowActions;

class MainWindow : public QMainWindow {
  public:
    explicit MainWindow(trainer::Trainer& trainer);
    ~MainWindow() override;

    // Image files and folders.
    void open(const std::vector<std::string>& paths);

  protected:
    // Ends the control first, which offers to save a changed font.
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void connectActions();
    void chooseImages();
    void chooseFolder();
    void showKeys();
    void showAbout();
    void restore();
    void remember();

    trainer::Trainer& trainer_;
    WindowActions* actions_;
    QSplitter* splitter_;
    FormPage* page_;
    PartPane* pane_;
    ui::Connection titleChanged_;
    bool ended_ = false;
};

}  // namespace dravik::qt
