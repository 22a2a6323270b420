#include "qt/PartPane.h"

#include <QAction>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QStyle>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>

#include "qt/ElidedLabel.h"
#include "qt/Guard.h"
#include "qt/PartView.h"
#include "qt/QtConversions.h"
#include "qt/QtImage.h"
#include "qt/ReadingView.h"
#include "qt/Theme.h"
#include "qt/ThumbnailStrip.h"
#include "qt/WindowActions.h"

namespace dravik::qt {

constexpr std::size_t kMostProblemLines = 4;
constexpr int kIconSide = 18;

PartPane::PartPane(trainer::Trainer& trainer, WindowActions& actions, QWidget* parent)
    : QWidget(parent), trainer_(trainer), actions_(actions) {
    setObjectName(QStringLiteral("partPane"));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(3, 9, 9, 9);
    column->setSpacing(6);

    auto* bar = new QHBoxLayout;
    auto* tools = new QToolBar(this);
    tools->setIconSize(QSize(kIconSide, kIconSide));
    tools->addActions({actions.previous, actions.next});
    tools->addSeparator();
    tools->addActions({actions.zoomOut, actions.zoomIn, actions.fit, actions.actualSize});
    name_ = new ElidedLabel(this);
    name_->setObjectName(QStringLiteral("partName"));
    scale_ = new QLabel(this);
    scale_->setObjectName(QStringLiteral("partScale"));
    bar->addWidget(tools);
    bar->addWidget(name_, 1);
    bar->addWidget(scale_);
    column->addLayout(bar);

    problems_ = new QFrame(this);
    problems_->setObjectName(QStringLiteral("problems"));
    problems_->setFrameStyle(QFrame::StyledPanel | QFrame::Plain);
    auto* problemRow = new QHBoxLayout(problems_);
    problemRow->setContentsMargins(8, 4, 4, 4);
    problemText_ = new QLabel(problems_);
    problemText_->setObjectName(QStringLiteral("problemText"));
    problemText_->setTextFormat(Qt::PlainText);
    problemText_->setWordWrap(true);
    auto* dismiss = new QToolButton(problems_);
    dismiss->setObjectName(QStringLiteral("dismissProblems"));
    dismiss->setText(QStringLiteral("\u2715"));
    dismiss->setAutoRaise(true);
    dismiss->setToolTip(QStringLiteral("Dismiss"));
    dismiss->setAccessibleName(QStringLiteral("Dismiss the message"));
    connect(dismiss, &QToolButton::clicked, problems_, &QWidget::hide);
    problemRow->addWidget(problemText_, 1);
    problemRow->addWidget(dismiss, 0, Qt::AlignTop);
    problems_->hide();
    column->addWidget(problems_);

    view_ = new PartView(this);
    view_->setObjectName(QStringLiteral("partView"));
    column->addWidget(view_, 1);

    preview_ = new QLabel(this);
    preview_->setObjectName(QStringLiteral("previewText"));
    preview_->setTextFormat(Qt::PlainText);
    preview_->setMargin(3);
    column->addWidget(preview_);

    auto* readingTitle = new QLabel(QStringLiteral("The font &reads:"), this);
    reading_ = new ReadingView(this);
    reading_->setObjectName(QStringLiteral("reading"));
    readingTitle->setBuddy(reading_);
    column->addWidget(readingTitle);
    column->addWidget(reading_);
    check_ = new QLabel(this);
    check_->setObjectName(QStringLiteral("heldOutCheck"));
    check_->setTextFormat(Qt::PlainText);
    check_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    check_->setWordWrap(true);
    check_->setMargin(3);
    check_->setToolTip(QStringLiteral("Samples of the font read by fonts that were taught without them"));
    column->addWidget(check_);

    auto* strip = new ThumbnailStrip(trainer.parts(), this);
    strip->setObjectName(QStringLiteral("thumbnails"));
    column->addWidget(strip);

    connections_.push_back(trainer.parts().currentChanged.connect([this] { showPart(); }));
    connections_.push_back(trainer.parts().listChanged.connect([this] { showPart(); }));
    connections_.push_back(trainer.previewChanged.connect([this] { showPreview(); }));
    connections_.push_back(trainer.readingChanged.connect([this] { showReading(); }));
    connections_.push_back(trainer.checkChanged.connect([this] { showCheck(); }));
    followCheck();
    connect(view_, &PartView::scaleChanged, this, [this] { showScale(); });
    connectActions();
    showPart();
    showPreview();
    showReading();
    showCheck();
    showScale();
}

void PartPane::connectActions() {
    const auto on = [this](QAction* action, auto body) {
        connect(action, &QAction::triggered, this, [body] { guarded(body); });
    };
    auto& parts = trainer_.parts();
    on(actions_.previous, [&parts] { parts.previous(); });
    on(actions_.next, [&parts] { parts.next(); });
    on(actions_.closeImage, [&parts] {
        if (parts.current() >= 0) parts.close(parts.current());
    });
    on(actions_.closeAll, [&parts] { parts.closeAll(); });
    on(actions_.zoomIn, [this] { view_->zoomIn(); });
    on(actions_.zoomOut, [this] { view_->zoomOut(); });
    on(actions_.fit, [this] { view_->fit(); });
    on(actions_.actualSize, [this] { view_->setScale(1 / view_->devicePixelRatioF()); });
}

void PartPane::open(const std::vector<std::string>& paths) {
    std::vector<std::string> problems;
    if (!guarded([&] { problems = trainer_.parts().open(paths); })) return;
    QStringList lines;
    for (std::size_t i = 0; i < std::min(problems.size(), kMostProblemLines); ++i)
        lines << qtText(problems[i]);
    if (problems.size() > kMostProblemLines)
        lines << QStringLiteral("... and %1 more").arg(problems.size() - kMostProblemLines);
    showProblems(lines.join(QLatin1Char('\n')));
}

void PartPane::showProblems(const QString& text) {
    problemText_->setText(text);
    QPalette colors;
    colors.setColor(QPalette::WindowText, warningColor(palette()));
    problemText_->setPalette(colors);
    problems_->setVisible(!text.isEmpty());
}

void PartPane::showPart() {
    guarded([&] {
        const auto& parts = trainer_.parts();
        const int current = parts.current();
        const bool open = current >= 0;
        QString message;
        if (!open)
            message =
                QStringLiteral("Open part images or drop them here\n\nFile \u2192 Open Images... (Ctrl+O)");
        else if (!parts.problem().empty())
            message = qtText(parts.problem());
        view_->setImage(parts.image().empty() ? QImage() : toQImage(parts.image()), message);
        const QString position =
            open ? QStringLiteral("%1 of %2   ").arg(current + 1).arg(parts.count()) : QString();
        name_->setText(open ? position + qtText(parts.name(current)) : QString());
        name_->setOwnToolTip(open ? qtText(parts.path(current)) : QString());
        actions_.previous->setEnabled(current > 0);
        actions_.next->setEnabled(open && current + 1 < parts.count());
        actions_.closeImage->setEnabled(open);
        actions_.closeAll->setEnabled(parts.count() > 0);
        for (QAction* action : {actions_.zoomIn, actions_.zoomOut, actions_.fit, actions_.actualSize})
            action->setEnabled(!parts.image().empty());
        showScale();
    });
}

void PartPane::showPreview() {
    guarded([&] {
        view_->setCharacters(trainer_.preview(), trainer_.mismatch());
        const bool warning = trainer_.mismatch() != 0;
        preview_->setText((warning ? QStringLiteral("\u26A0 ") : QString()) + qtText(trainer_.previewText()));
        QFont font = this->font();
        font.setBold(warning);
        preview_->setFont(font);
        preview_->setFrameStyle(warning ? static_cast<int>(QFrame::Box) | static_cast<int>(QFrame::Plain)
                                        : static_cast<int>(QFrame::NoFrame));
        QPalette colors;
        if (warning) colors.setColor(QPalette::WindowText, warningColor(palette()));
        preview_->setPalette(colors);
    });
}

void PartPane::showReading() {
    guarded([&] { reading_->setReading(trainer_.reading()); });
}

void PartPane::showCheck() {
    guarded([&] {
        check_->setText(qtText(trainer_.checkText()));
        check_->setVisible(!trainer_.checkText().empty());
    });
}

// Ticks for the trainer as long as it has to look whether the check has ended.
void PartPane::followCheck() {
    ui::Timer& timer = trainer_.checkTimer();
    auto* ticking = new QTimer(this);
    ticking->setInterval(timer.interval());
    connect(ticking, &QTimer::timeout, this, [&timer] { guarded([&] { timer.tick(); }); });
    const auto follow = [&timer, ticking] {
        if (timer.enabled())
            ticking->start();
        else
            ticking->stop();
    };
    connections_.push_back(timer.changed.connect(follow));
    follow();
}

void PartPane::showScale() {
    actions_.fit->setChecked(view_->fits());
    const bool shown = !trainer_.parts().image().empty();
    scale_->setText(
        shown ? QStringLiteral("%1 %").arg(qRound(view_->scale() * view_->devicePixelRatioF() * 100))
              : QString());
}

}  // namespace dravik::qt
