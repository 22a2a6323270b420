#include "qt/MainWindow.h"

#include <QAction>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QFileDialog>
#include <QImageReader>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QScrollArea>
#include <QScrollBar>
#include <QSettings>
#include <QSplitter>

#include "qt/FormPage.h"
#include "qt/Guard.h"
#include "qt/PartPane.h"
#include "qt/QtConversions.h"
#include "qt/WindowActions.h"

namespace dravik::qt {
namespace {

constexpr char kGeometryKey[] = "window/geometry";
constexpr char kSplitterKey[] = "window/splitter";
constexpr char kFolderKey[] = "window/folder";
constexpr QSize kFirstSize(1280, 800);
constexpr int kFirstPageWidth = 640;

std::vector<std::string> localPaths(const QMimeData& data) {
    std::vector<std::string> paths;
    for (const QUrl& url : data.urls())
        if (url.isLocalFile()) paths.push_back(utf8(url.toLocalFile()));
    return paths;
}

QString imageFilter() {
    QStringList patterns;
    for (const QByteArray& format : QImageReader::supportedImageFormats())
        patterns << QStringLiteral("*.") + QString::fromLatin1(format);
    return QStringLiteral("Images (%1);;All files (*)").arg(patterns.join(QLatin1Char(' ')));
}

}  // namespace

MainWindow::MainWindow(trainer::Trainer& trainer) : trainer_(trainer) {
    setObjectName(QStringLiteral("mainWindow"));
    setAcceptDrops(true);
    actions_ = new WindowActions(this, trainer.control().screen());
    actions_->fillMenus(*menuBar());

    splitter_ = new QSplitter(this);
    auto* scroll = new QScrollArea(splitter_);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    page_ = new FormPage(trainer.control().form(), scroll);
    scroll->setWidget(page_);
    scroll->installEventFilter(this);
    scroll->setMinimumWidth(page_->minimumSizeHint().width() +
                            scroll->verticalScrollBar()->sizeHint().width());
    pane_ = new PartPane(trainer, *actions_, splitter_);
    splitter_->addWidget(scroll);
    splitter_->addWidget(pane_);
    splitter_->setStretchFactor(0, 0);
    splitter_->setStretchFactor(1, 1);
    splitter_->setChildrenCollapsible(false);
    setCentralWidget(splitter_);

    const auto showTitle = [this] { setWindowTitle(qtText(trainer_.title())); };
    titleChanged_ = trainer.titleChanged.connect(showTitle);
    showTitle();
    connectActions();
    restore();
    guarded([&] { trainer_.control().form().activate(); });
}

MainWindow::~MainWindow() {
    page_->detach();
}

void MainWindow::connectActions() {
    connect(actions_->openImages, &QAction::triggered, this, [this] { chooseImages(); });
    connect(actions_->openFolder, &QAction::triggered, this, [this] { chooseFolder(); });
    connect(actions_->quit, &QAction::triggered, this, [this] { close(); });
    connect(actions_->keys, &QAction::triggered, this, [this] { showKeys(); });
    connect(actions_->about, &QAction::triggered, this, [this] { showAbout(); });
}

void MainWindow::open(const std::vector<std::string>& paths) {
    pane_->open(paths);
}

void MainWindow::chooseImages() {
    const QStringList files =
        QFileDialog::getOpenFileNames(this, QStringLiteral("Open Part Images"),
                                      QSettings().value(QLatin1String(kFolderKey)).toString(), imageFilter());
    if (files.isEmpty()) return;
    QSettings().setValue(QLatin1String(kFolderKey), QFileInfo(files.front()).absolutePath());
    std::vector<std::string> paths;
    for (const QString& file : files) paths.push_back(utf8(file));
    open(paths);
}

void MainWindow::chooseFolder() {
    const QString folder =
        QFileDialog::getExistingDirectory(this, QStringLiteral("Open Folder of Part Images"),
                                          QSettings().value(QLatin1String(kFolderKey)).toString());
    if (folder.isEmpty()) return;
    QSettings().setValue(QLatin1String(kFolderKey), folder);
    open({utf8(folder)});
}

void MainWindow::showKeys() {
    QMessageBox box(QMessageBox::NoIcon, QStringLiteral("Keys"),
                    QStringLiteral("Alt+Left, Alt+Right, Page Up, Page Down\tprevious and next image\n"
                                   "Ctrl and the wheel, Ctrl++, Ctrl+-\tzoom\n"
                                   "Ctrl+0, Ctrl+1\tfit, actual size\n"
                                   "Enter\tinclude the typed text\n"
                                   "Ctrl+L, Ctrl+S\tlearn, save the font\n"
                                   "Arrow keys in the characters\tfrom cell to cell\n"
                                   "Menu key, Shift+F10\tmenu of a character or of the samples\n"
                                   "Shift+arrows, Ctrl+A, Ctrl+Insert, Delete\tselect, copy, delete samples\n"
                                   "Ctrl+Enter in the samples\tsort by the current column\n"
                                   "Left, Right in a histogram\tfrom bar to bar"),
                    QMessageBox::Ok, this);
    box.setObjectName(QStringLiteral("keysBox"));
    box.exec();
}

void MainWindow::showAbout() {
    QMessageBox box(
        QMessageBox::NoIcon, QStringLiteral("About Dravik Trainer"),
        QStringLiteral("Dravik Trainer %1\n\nBuilds and maintains OCR fonts from part images.\n\nFonts: %2")
            .arg(QStringLiteral(DRAVIK_VERSION), qtText(trainer_.folder().fontsFolder())),
        QMessageBox::Ok, this);
    box.setTextFormat(Qt::PlainText);
    box.setObjectName(QStringLiteral("aboutBox"));
    box.exec();
}

void MainWindow::restore() {
    const QSettings settings;
    if (!restoreGeometry(settings.value(QLatin1String(kGeometryKey)).toByteArray())) resize(kFirstSize);
    if (!splitter_->restoreState(settings.value(QLatin1String(kSplitterKey)).toByteArray()))
        splitter_->setSizes({kFirstPageWidth, kFirstSize.width() - kFirstPageWidth});
}

void MainWindow::remember() {
    QSettings settings;
    settings.setValue(QLatin1String(kGeometryKey), saveGeometry());
    settings.setValue(QLatin1String(kSplitterKey), splitter_->saveState());
}

void MainWindow::closeEvent(QCloseEvent* event) {
    if (!ended_) {
        ended_ = true;
        remember();
        guarded([&] { trainer_.control().UserControl_Terminate(); });
        page_->detach();
    }
    event->accept();
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
    if (!localPaths(*event->mimeData()).empty()) event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event) {
    event->acceptProposedAction();
    open(localPaths(*event->mimeData()));
}

// The page keys go from part to part, also where the page's scroll area would take them.
bool MainWindow::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_PageUp || key->key() == Qt::Key_PageDown) {
            keyPressEvent(key);
            return true;
        }
    }
    return QMainWindow::eventFilter(watched, event);
}

void MainWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_PageUp)
        actions_->previous->trigger();
    else if (event->key() == Qt::Key_PageDown)
        actions_->next->trigger();
    else
        QMainWindow::keyPressEvent(event);
}

}  // namespace dravik::qt
