// The part beside the page: the image with its found characters, what the font reads in it, and the strip of
// opened images.
#pragma once

#include <QWidget>
#include <vector>

#include "trainer/window/TrainerWindow.h"

class QFrame;
class QLabel;

namespace dravik::qt {

class ElidedLabel;
class WindowMenus;

class PartPane : public QWidget {
  public:
    // The model outlives the pane.
    PartPane(trainer::TrainerWindow& model, const WindowMenus& menus, QWidget* parent);

  protected:
    void changeEvent(QEvent* event) override;

  private:
    QLabel* addText(const char* name);
    void makeProblems();
    void showTexts();

    trainer::TrainerWindow& model_;
    ElidedLabel* name_;
    QLabel* scale_;
    QFrame* problems_;
    QLabel* problemText_;
    QWidget* view_;
    QLabel* preview_;
    QLabel* notice_;
    QLabel* check_ = nullptr;
    ui::Connection textsChanged_;
};

}  // namespace dravik::qt
