// dravik-pictures: pictures of the trainer's window under Qt; with QT_QPA_PLATFORM=offscreen it needs no
// display.
#include <QApplication>
#include <QSettings>
#include <cstdlib>
#include <iostream>

#include "drivers/pictures/Pictures.h"
#include "drivers/qt/DialogScript.h"
#include "drivers/qt/QtWindowDriver.h"
#include "qt/MainWindow.h"
#include "qt/QtConversions.h"
#include "qt/QtImage.h"
#include "qt/QtPlatform.h"
#include "qt/Theme.h"
#include "support/TemporaryFolder.h"

namespace {

using namespace dravik;

// What the off-screen platform cannot do does not concern whoever runs a session there.
void withoutPlatformNoise(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (message.startsWith(QLatin1String("This plugin does not support"))) return;
    std::cerr << qFormatLogMessage(type, context, message).toStdString() << std::endl;
}

}  // namespace

int main(int argc, char** argv) {
    qInstallMessageHandler(withoutPlatformNoise);
    const QApplication application(argc, argv);
    const TemporaryFolder own;
    QSettings::setDefaultFormat(QSettings::IniFormat);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, qt::qtText(own.path()));
    QCoreApplication::setOrganizationName(QStringLiteral("Dravik"));
    QCoreApplication::setApplicationName(QStringLiteral("Dravik Trainer"));
    qt::useTheme(trainer::Theme::System);
    qt::QtPlatform platform;
    test::DialogScript
        ending;  // outlives the screen, which asks about a changed font when a session broke off
    trainer::Trainer trainer(platform, JobFolder(own.path("Jobs")), qt::decodeImageFile, false);
    qt::MainWindow window(trainer, platform);
    platform.setMainWindow(&window);
    test::QtWindowDriver driver(window);
    const int status = test::makePictures({argv + 1, argv + argc}, driver, trainer);
    ending.answerOthers(QStringLiteral("No"));
    return status;
}
