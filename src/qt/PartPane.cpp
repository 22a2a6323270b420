#include "qt/PartPane.h"

#include <QEvent>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

#include "qt/ElidedLabel.h"
#include "qt/Guard.h"
#include "qt/PartView.h"
#include "qt/PictureIcon.h"
#include "qt/QtConversions.h"
#include "qt/ReadingView.h"
#include "qt/Theme.h"
#include "qt/ThumbnailStrip.h"
#include "qt/WindowMenus.h"
#include "trainer/window/ActionPictures.h"

namespace dravik::qt {

constexpr int kIconSide = 18;

PartPane::PartPane(trainer::TrainerWindow& model, const WindowMenus& menus, QWidget* parent)
    : QWidget(parent), model_(model) {
    setObjectName(QStringLiteral("partPane"));
    auto* tools = new QToolBar(this);
    tools->setIconSize(QSize(kIconSide, kIconSide));
    menus.fill(*tools);
    // Its own is black in every theme.
    if (auto* more = tools->findChild<QToolButton*>(QStringLiteral("qt_toolbar_ext_button")))
        more->setIcon(pictureIcon(trainer::morePicture()));
    name_ = new ElidedLabel(this);
    name_->setObjectName(QStringLiteral("partName"));
    scale_ = new QLabel(this);
    scale_->setObjectName(QStringLiteral("partScale"));
    makeProblems();
    view_ = new PartView(model.view, this);
    view_->setObjectName(QStringLiteral("partView"));
    view_->setMinimumHeight(trainer::PartViewModel::kLeastHeight);
    preview_ = addText("previewText");
    auto* reading = new ReadingView(model.reading, this);
    reading->setObjectName(QStringLiteral("reading"));
    auto* readingTitle = new QLabel(QString::fromUtf8(trainer::kReadingCaption), this);
    readingTitle->setBuddy(reading);
    notice_ = addText("notice");
    notice_->setWordWrap(true);
    // The image does not move by what is said.
    notice_->setMinimumHeight(notice_->fontMetrics().height() + 2 * notice_->margin());
    check_ = addText("heldOutCheck");
    check_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    check_->setWordWrap(true);
    check_->setToolTip(QString::fromUtf8(trainer::kCheckTip));
    auto* strip = new ThumbnailStrip(model.strip, this);
    strip->setObjectName(QStringLiteral("thumbnails"));

    auto* bar = new QHBoxLayout;
    bar->addWidget(tools);
    bar->addWidget(name_, 1);
    bar->addWidget(scale_);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(3, 9, 9, 9);
    column->setSpacing(6);
    column->addLayout(bar);
    column->addWidget(problems_);
    column->addWidget(view_, 1);
    for (QWidget* below : {static_cast<QWidget*>(notice_), static_cast<QWidget*>(preview_),
                           static_cast<QWidget*>(readingTitle), static_cast<QWidget*>(reading),
                           static_cast<QWidget*>(check_), static_cast<QWidget*>(strip)})
        column->addWidget(below);

    textsChanged_ = model.textsChanged.connect([this] { showTexts(); });
    showTexts();
}

QLabel* PartPane::addText(const char* name) {
    auto* label = new QLabel(this);
    label->setObjectName(QString::fromUtf8(name));
    label->setTextFormat(Qt::PlainText);
    label->setMargin(3);
    return label;
}

void PartPane::makeProblems() {
    problems_ = new QFrame(this);
    problems_->setObjectName(QStringLiteral("problems"));
    problems_->setFrameStyle(QFrame::StyledPanel | QFrame::Plain);
    problemText_ = new QLabel(problems_);
    problemText_->setObjectName(QStringLiteral("problemText"));
    problemText_->setTextFormat(Qt::PlainText);
    problemText_->setWordWrap(true);
    auto* dismiss = new QToolButton(problems_);
    dismiss->setObjectName(QStringLiteral("dismissProblems"));
    dismiss->setText(QStringLiteral("\u2715"));
    dismiss->setAutoRaise(true);
    dismiss->setToolTip(QString::fromUtf8(trainer::kDismissTip));
    dismiss->setAccessibleName(QString::fromUtf8(trainer::kDismissTip));
    connect(dismiss, &QToolButton::clicked, this, [this] { model_.dismissProblems(); });
    auto* row = new QHBoxLayout(problems_);
    row->setContentsMargins(8, 4, 4, 4);
    row->addWidget(problemText_, 1);
    row->addWidget(dismiss, 0, Qt::AlignTop);
}

void PartPane::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && check_) showTexts();
}

void PartPane::showTexts() {
    guarded([&] {
        QPalette warning;
        warning.setColor(QPalette::WindowText, warningColor(palette()));
        name_->setText(qtText(model_.partName()));
        name_->setOwnToolTip(qtText(model_.partTip()));
        scale_->setText(qtText(model_.scaleText()));
        view_->setAccessibleDescription(qtText(model_.viewDescription()));

        QStringList problems;
        for (const std::string& problem : model_.problems()) problems << qtText(problem);
        problemText_->setText(problems.join(QLatin1Char('\n')));
        problemText_->setPalette(warning);
        problems_->setVisible(!problems.isEmpty());

        const bool warns = model_.previewWarns();
        preview_->setText(qtText(model_.previewText()));
        QFont font = this->font();
        font.setBold(warns);
        preview_->setFont(font);
        preview_->setFrameStyle(warns ? static_cast<int>(QFrame::Box) | static_cast<int>(QFrame::Plain)
                                      : static_cast<int>(QFrame::NoFrame));
        preview_->setPalette(warns ? warning : QPalette());

        notice_->setText(qtText(model_.noticeText()));
        check_->setText(qtText(model_.checkText()));
        check_->setVisible(!model_.checkText().empty());
    });
}

}  // namespace dravik::qt
