// The program's window: the control's page on the left, the part on the right, menus above.
#pragma once

#include <QMainWindow>

#include "camera/Cameras.h"
#include "qt/Theme.h"
#include "trainer/window/TrainerWindow.h"

class QSplitter;

namespace dravik::qt {

class FormPage;

class MainWindow : public QMainWindow, private trainer::WindowSystem {
  public:
    // Both outlive the window.
    MainWindow(trainer::Trainer& trainer, ui::Platform& platform);
    ~MainWindow() override;

    trainer::TrainerWindow& model() noexcept { return model_; }
    // Image files and folders.
    void open(const std::vector<std::string>& paths);
    // Keeps the window's place for the next start.
    void remember();

  protected:
    // Asks about unsaved changes first, and stays when the operator cancels.
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    std::vector<std::string> choosePaths(const trainer::FileQuestion& question) override;
    std::string chooseNewFile(const trainer::FileQuestion& question) override;
    std::vector<std::string> clipboardImages(const std::string& newFile) override;
    std::string kept(const std::string& key) const override;
    void keep(const std::string& key, const std::string& text) override;
    bool hasCameras() const override { return camera::hasCameras(); }
    std::unique_ptr<camera::Camera> makeCamera() override { return camera::makeCamera(); }
    void writeImage(const engine::GreyImage& image, const std::string& file) override;
    void showTheme(trainer::Theme theme) override { useTheme(theme); }
    bool showGuide() override;
    void closeWindow() override { close(); }

    QWidget* makeScreen();
    void restore();

    trainer::TrainerWindow model_;
    QSplitter* splitter_;
    FormPage* page_;
    FormPage* gallery_;
    bool shown_ = false;
    ui::Connection titleChanged_;
    ui::Connection galleryShown_;
};

}  // namespace dravik::qt
