#include "qt/MainWindow.h"

#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QDragEnterEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QImageWriter>
#include <QLineEdit>
#include <QMenuBar>
#include <QMimeData>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QSettings>
#include <QSplitter>
#include <QUrl>
#include <utility>

#include "base/Failure.h"
#include "qt/FormPage.h"
#include "qt/Guard.h"
#include "qt/PartPane.h"
#include "qt/QtConversions.h"
#include "qt/QtImage.h"
#include "qt/TimerPeer.h"
#include "qt/WindowMenus.h"

namespace dravik::qt {
namespace {

using trainer::TrainerWindow;

constexpr char kGeometryKey[] = "window/geometry";
constexpr char kSplitterKey[] = "window/splitter";
constexpr char kKeptGroup[] = "window/";  // what the window keeps by name

// What the desktop draws around the window takes no more than this, before it is seen.
constexpr QSize kFrame(16, 48);

std::vector<std::string> localPaths(const QMimeData& data) {
    std::vector<std::string> paths;
    for (const QUrl& url : data.urls())
        if (url.isLocalFile()) paths.push_back(utf8(url.toLocalFile()));
    return paths;
}

void writePng(const QImage& picture, const std::string& file) {
    QImageWriter writer(qtText(file), "png");
    if (!writer.write(picture))
        throw Failure(RuntimeError::DeviceIoError, file + ": " + utf8(writer.errorString()));
}

// "Images (*.png *.jpg);;All files (*)"
QString filterText(const std::vector<trainer::FileFilter>& filters) {
    QStringList texts;
    for (const trainer::FileFilter& filter : filters) {
        QStringList patterns;
        for (const std::string& pattern : filter.patterns) patterns << qtText(pattern);
        texts << QStringLiteral("%1 (%2)").arg(qtText(filter.name), patterns.join(QLatin1Char(' ')));
    }
    return texts.join(QStringLiteral(";;"));
}

}  // namespace

MainWindow::MainWindow(trainer::Trainer& trainer, ui::Platform& platform) : model_(trainer, platform, *this) {
    setObjectName(QStringLiteral("mainWindow"));
    setAcceptDrops(true);
    const auto* menus = new WindowMenus(model_.actions, *menuBar(), this);
    splitter_ = new QSplitter(this);
    splitter_->addWidget(makeScreen());
    splitter_->addWidget(new PartPane(model_, *menus, splitter_));
    splitter_->setStretchFactor(0, 0);
    splitter_->setStretchFactor(1, 1);
    splitter_->setChildrenCollapsible(false);
    setCentralWidget(splitter_);
    for (ui::Timer* timer : model_.timers()) new TimerPeer(*timer, this);

    const auto showTitle = [this] { setWindowTitle(qtText(model_.title())); };
    titleChanged_ = trainer.titleChanged.connect(showTitle);
    showTitle();
    restore();
    guarded([&] { trainer.control().form().activate(); });
}

MainWindow::~MainWindow() {
    page_->detach();
    gallery_->detach();
    delete splitter_;  // what looks at the model, before that goes
}

QWidget* MainWindow::makeScreen() {
    auto* scroll = new QScrollArea(splitter_);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->setFocusPolicy(Qt::NoFocus);  // what is in it comes into view with the focus
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    page_ = new FormPage(model_.trainer().control().form(), scroll);
    scroll->setWidget(page_);
    scroll->installEventFilter(this);
    for (QLineEdit* box : page_->findChildren<QLineEdit*>()) box->installEventFilter(this);
    scroll->setMinimumWidth(page_->minimumSizeHint().width() +
                            scroll->verticalScrollBar()->sizeHint().width());
    gallery_ = new FormPage(model_.gallery, splitter_);
    gallery_->setObjectName(QStringLiteral("gallery"));
    auto* column = new QSplitter(Qt::Vertical, splitter_);
    column->setObjectName(QStringLiteral("screenColumn"));
    column->addWidget(scroll);
    column->addWidget(gallery_);
    column->setChildrenCollapsible(false);
    column->setStretchFactor(0, 1);
    column->setStretchFactor(1, 0);
    column->setSizes(
        {TrainerWindow::kFirstHeight - TrainerWindow::kGalleryHeight, TrainerWindow::kGalleryHeight});
    const auto showGallery = [this] { gallery_->setVisible(model_.gallery.isShown()); };
    galleryShown_ = model_.gallery.shownChanged.connect(showGallery);
    showGallery();
    return column;
}

void MainWindow::open(const std::vector<std::string>& paths) {
    guarded([&] { model_.open(paths); });
}

std::vector<std::string> MainWindow::choosePaths(const trainer::FileQuestion& question) {
    const QString title = qtText(question.title);
    const QString folder = qtText(question.folder);
    QStringList chosen;
    if (question.asksForFolder)
        chosen << QFileDialog::getExistingDirectory(this, title, folder);
    else
        chosen = QFileDialog::getOpenFileNames(this, title, folder, filterText(question.filters));
    std::vector<std::string> paths;
    for (const QString& path : chosen)
        if (!path.isEmpty()) paths.push_back(utf8(path));
    return paths;
}

std::string MainWindow::chooseNewFile(const trainer::FileQuestion& question) {
    QWidget* over = QApplication::activeModalWidget();
    const QString folder = qtText(question.folder.empty() ? kept("folder") : question.folder);
    return utf8(QFileDialog::getSaveFileName(over ? over : this, qtText(question.title),
                                             QDir(folder).filePath(qtText(question.fileName)),
                                             filterText(question.filters)));
}

std::vector<std::string> MainWindow::clipboardImages(const std::string& newFile) {
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    if (!data) return {};
    if (auto paths = localPaths(*data); !paths.empty()) return paths;
    const auto picture = qvariant_cast<QImage>(data->imageData());
    if (picture.isNull()) return {};
    writePng(picture, newFile);
    return {newFile};
}

void MainWindow::writeImage(const engine::GreyImage& image, const std::string& file) {
    writePng(toQImage(image), file);
}

std::string MainWindow::kept(const std::string& key) const {
    return utf8(QSettings().value(QLatin1String(kKeptGroup) + qtText(key)).toString());
}

void MainWindow::keep(const std::string& key, const std::string& text) {
    QSettings().setValue(QLatin1String(kKeptGroup) + qtText(key), qtText(text));
}

bool MainWindow::showGuide() {
    const QFileInfo guide(QCoreApplication::applicationDirPath() +
                          QStringLiteral("/../share/doc/dravik-trainer/html/operator-guide.html"));
    return guide.exists() && QDesktopServices::openUrl(QUrl::fromLocalFile(guide.canonicalFilePath()));
}

void MainWindow::restore() {
    const QSettings settings;
    const bool placed = restoreGeometry(settings.value(QLatin1String(kGeometryKey)).toByteArray());
    const QSize room = screen()->availableGeometry().size();
    const QSize wanted = placed ? size() : QSize(TrainerWindow::kFirstWidth, TrainerWindow::kFirstHeight);
    if (!isMaximized() && !isFullScreen()) resize(wanted.boundedTo(room - kFrame));
    if (!splitter_->restoreState(settings.value(QLatin1String(kSplitterKey)).toByteArray()))
        splitter_->setSizes({TrainerWindow::kFirstScreenWidth,
                             TrainerWindow::kFirstWidth - TrainerWindow::kFirstScreenWidth});
}

void MainWindow::remember() {
    QSettings settings;
    settings.setValue(QLatin1String(kGeometryKey), saveGeometry());
    settings.setValue(QLatin1String(kSplitterKey), splitter_->saveState());
}

void MainWindow::resizeEvent(QResizeEvent* event) {
    QMainWindow::resizeEvent(event);
    guarded([&] { model_.arrangeFor(height()); });
}

void MainWindow::showEvent(QShowEvent* event) {
    QMainWindow::showEvent(event);
    if (!std::exchange(shown_, true)) guarded([&] { model_.giveFocus(); });
}

void MainWindow::closeEvent(QCloseEvent* event) {
    if (!model_.hasEnded()) {
        remember();
        if (guarded([&] { model_.close(); }) && !model_.hasEnded()) return event->ignore();
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

// The page keys go from part to part, also where the page's scroll area would take them; a picture or files
// on the clipboard are not for the box that has the focus.
bool MainWindow::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride &&
        static_cast<QKeyEvent*>(event)->matches(QKeySequence::Paste)) {
        const QMimeData* data = QGuiApplication::clipboard()->mimeData();
        if (data && (!localPaths(*data).empty() || (data->hasImage() && !data->hasText()))) {
            event->ignore();
            return true;
        }
        return false;
    }
    if (qobject_cast<QLineEdit*>(watched)) return QMainWindow::eventFilter(watched, event);
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
        guarded([&] { model_.actions.previous.trigger(); });
    else if (event->key() == Qt::Key_PageDown)
        guarded([&] { model_.actions.next.trigger(); });
    else
        QMainWindow::keyPressEvent(event);
}

}  // namespace dravik::qt
