// The part beside the page: the image with its found characters, what the font reads in it, and the strip of
// opened images.
#pragma once

#include <QWidget>
#include <vector>

#include "trainer/Trainer.h"

class QFrame;
class QLabel;

namespace dravik::qt {

class ElidedLabel;
class PartView;
class ReadingView;
class WindowActions;

class PartPane : public QWidget {
  public:
    PartPane(trainer::Trainer& trainer, WindowActions& actions, QWidget* parent);

    // Opens files and folders; what cannot be opened is named in the banner above the image.
    void open(const std::vector<std::string>& paths);

  private:
    void showPart();
    void showPreview();
    void showReading();
    void showCheck();
    void followCheck();
    void showScale();
    void showProblems(const QString& text);
    void connectActions();

    trainer::Trainer& trainer_;
    WindowActions& actions_;
    ElidedLabel* name_;
    QLabel* scale_;
    QFrame* problems_;
    QLabel* problemText_;
    PartView* view_;
    QLabel* preview_;
    ReadingView* reading_;
    QLabel* check_;
    std::vector<ui::Connection> connections_;
};

}  // namespace dravik::qt
