#include "qt/WindowActions.h"

#include <QAction>
#include <QKeySequence>
#include <QMenu>
#include <QMenuBar>

#include "qt/Guard.h"
#include "qt/PictureIcon.h"
#include "qt/QtConversions.h"
#include "screen/context/Screen.h"

namespace dravik::qt {
namespace {

using Kind = ui::PictureShape::Kind;

ui::PictureShape line(std::vector<ui::PicturePoint> points) {
    return {Kind::Polyline, std::move(points), false, 1.6};
}

ui::PictureShape lens() {
    return {Kind::Ellipse, {{2, 2}, {11, 11}}, false, 1.5};
}

ui::Picture arrow(bool left) {
    return left ? ui::Picture{line({{10, 3}, {5, 8}, {10, 13}})}
                : ui::Picture{line({{6, 3}, {11, 8}, {6, 13}})};
}

ui::Picture magnifier(bool plus) {
    ui::Picture picture = {lens(), line({{10, 10}, {14, 14}}), line({{4.5, 6.5}, {8.5, 6.5}})};
    if (plus) picture.push_back(line({{6.5, 4.5}, {6.5, 8.5}}));
    return picture;
}

ui::Picture fitting() {
    return {line({{2, 5.5}, {2, 2}, {5.5, 2}}),
            line({{10.5, 2}, {14, 2}, {14, 5.5}}),
            line({{14, 10.5}, {14, 14}, {10.5, 14}}),
            line({{5.5, 14}, {2, 14}, {2, 10.5}}),
            {Kind::Polygon, {{5, 5}, {11, 5}, {11, 11}, {5, 11}}, false, 1.3}};
}

ui::Picture oneToOne() {
    return {line({{2, 5}, {4, 3.5}, {4, 12.5}}),
            line({{11, 5}, {13, 3.5}, {13, 12.5}}),
            {Kind::Ellipse, {{7, 5.2}, {8.6, 6.8}}, true, 0},
            {Kind::Ellipse, {{7, 9.6}, {8.6, 11.2}}, true, 0}};
}

}  // namespace

WindowActions::WindowActions(QObject* parent, screen::Screen& screen) : QObject(parent) {
    const auto tr = [](const char* text) { return QString::fromUtf8(text); };
    openImages = make("openImages", tr("&Open Images..."), tr("Open part images"));
    openImages->setShortcut(QKeySequence::Open);
    openFolder = make("openFolder", tr("Open &Folder..."), tr("Open every image of a folder"));
    openFolder->setShortcut(Qt::CTRL | Qt::SHIFT | Qt::Key_O);
    closeImage = make("closeImage", tr("&Close Image"), tr("Take the current image from the list"));
    closeImage->setShortcut(QKeySequence::Close);
    closeAll = make("closeAll", tr("Close &All"), tr("Take all images from the list"));
    quit = make("quit", tr("&Quit"), tr("End the program"));
    quit->setShortcut(Qt::CTRL | Qt::Key_Q);
    quit->setMenuRole(QAction::QuitRole);

    previous = make("previous", tr("&Previous"), tr("Previous image"), arrow(true));
    previous->setShortcut(Qt::ALT | Qt::Key_Left);
    next = make("next", tr("&Next"), tr("Next image"), arrow(false));
    next->setShortcut(Qt::ALT | Qt::Key_Right);
    zoomIn = make("zoomIn", tr("Zoom &In"), tr("Zoom in"), magnifier(true));
    zoomIn->setShortcuts({QKeySequence(QKeySequence::ZoomIn), QKeySequence(Qt::CTRL | Qt::Key_Equal)});
    zoomOut = make("zoomOut", tr("Zoom &Out"), tr("Zoom out"), magnifier(false));
    zoomOut->setShortcut(QKeySequence::ZoomOut);
    fit = make("fit", tr("&Fit"), tr("Fit the whole image"), fitting());
    fit->setShortcut(Qt::CTRL | Qt::Key_0);
    fit->setCheckable(true);
    actualSize =
        make("actualSize", tr("&Actual Size"), tr("One image pixel to one pixel of the display"), oneToOne());
    actualSize->setShortcut(Qt::CTRL | Qt::Key_1);

    bind("fontSelect", tr("Select &Font..."), screen.font.cmdSelectFont)->setShortcut(Qt::CTRL | Qt::Key_F);
    bind("fontInclude", tr("&Include"), screen.sample.cmdInclude);
    bind("fontLearn", tr("&Learn"), screen.train.cmdTrain)->setShortcut(Qt::CTRL | Qt::Key_L);
    bind("fontStop", tr("S&top"), screen.train.cmdStop)->setShortcut(Qt::CTRL | Qt::Key_Period);
    bind("fontSave", tr("&Save"), screen.train.cmdSaveFont)->setShortcut(QKeySequence::Save);
    bind("fontRevert", tr("&Revert"), screen.train.cmdRevert);

    keys = make("keys", tr("&Keys"), tr("What the keys do"));
    keys->setShortcut(QKeySequence::HelpContents);
    about = make("about", tr("&About Dravik Trainer"), tr("About this program"));
    about->setMenuRole(QAction::AboutRole);
}

QAction* WindowActions::make(const char* name, const QString& text, const QString& tip,
                             const ui::Picture& picture) {
    auto* action = new QAction(text, this);
    action->setObjectName(QString::fromLatin1(name));
    action->setToolTip(tip);
    if (!picture.empty()) action->setIcon(pictureIcon(picture));
    return action;
}

QAction* WindowActions::bind(const char* name, const QString& text, ui::Button& button) {
    QAction* action = make(name, text, qtText(button.toolTip()));
    action->setEnabled(button.enabled());
    connections_.push_back(button.changed.connect([action, &button](ui::Change change) {
        if (change == ui::Change::Enabled) action->setEnabled(button.enabled());
    }));
    connect(action, &QAction::triggered, this, [&button] { guarded([&] { button.press(); }); });
    fontActions_.push_back(action);
    return action;
}

// Access keys of the menus keep clear of those on the page.
void WindowActions::fillMenus(QMenuBar& menuBar) const {
    QMenu* file = menuBar.addMenu(QStringLiteral("&File"));
    file->addActions({openImages, openFolder});
    file->addSeparator();
    file->addActions({closeImage, closeAll});
    file->addSeparator();
    file->addAction(quit);
    QMenu* image = menuBar.addMenu(QStringLiteral("I&mage"));
    image->addActions({previous, next});
    image->addSeparator();
    image->addActions({zoomIn, zoomOut, fit, actualSize});
    QMenu* font = menuBar.addMenu(QStringLiteral("F&ont"));
    for (QAction* action : fontActions_) font->addAction(action);
    QMenu* help = menuBar.addMenu(QStringLiteral("&Help"));
    help->addActions({keys, about});
}

}  // namespace dravik::qt
