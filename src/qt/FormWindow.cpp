#include "qt/FormWindow.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QSettings>
#include <QVBoxLayout>

#include "qt/FormPage.h"
#include "qt/Guard.h"
#include "qt/QtConversions.h"

namespace dravik::qt {

FormWindow::FormWindow(ui::Form& form, QWidget* parent, bool modal) : QDialog(parent), form_(&form) {
    setObjectName(qtText(form.name()) + QStringLiteral("Window"));
    setWindowTitle(qtText(form.caption()));
    setModal(modal);
    page_ = new FormPage(form, this);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(page_);
    if (!form.resizable) column->setSizeConstraint(QLayout::SetFixedSize);
    connect(page_, &FormPage::escaped, this, &FormWindow::reject);

    changed_ = form.changed.connect([this](ui::Change change) {
        if (change == ui::Change::Caption) setWindowTitle(qtText(form_->caption()));
    });
    unloaded_ = form.unloaded.connect([this] { letGo(); });
    destroyed_ = form.destroyed.connect([this] { letGo(); });
    restoreGeometry(QSettings().value(geometryKey()).toByteArray());
}

FormWindow::~FormWindow() {
    if (form_) letGo();
}

QString FormWindow::geometryKey() const {
    return QStringLiteral("forms/%1/geometry").arg(objectName());
}

void FormWindow::letGo() {
    if (!form_) return;
    form_ = nullptr;
    QSettings().setValue(geometryKey(), saveGeometry());
    page_->detach();
    hide();
    Q_EMIT finishedWithForm();
}

void FormWindow::reject() {
    if (form_) guarded([&] { form_->unload(); });
}

void FormWindow::closeEvent(QCloseEvent* event) {
    reject();
    event->ignore();  // letGo() hides the window
}

// Comes here only when nothing inside has the focus; the dialog's own answers to Enter and Escape are not
// wanted.
void FormWindow::keyPressEvent(QKeyEvent* event) {
    if (!page_->answerKey(*event)) event->ignore();
}

}  // namespace dravik::qt
