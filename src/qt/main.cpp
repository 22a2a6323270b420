// dravik-trainer: headless commands, the window, or a scripted session in the window.
#include <QApplication>
#include <QCoreApplication>
#include <QDir>
#include <QSettings>
#include <QTemporaryDir>
#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

#include "base/Failure.h"
#include "qt/DialogScript.h"
#include "qt/MainWindow.h"
#include "qt/QtConversions.h"
#include "qt/QtDemoHands.h"
#include "qt/QtImage.h"
#include "qt/QtPlatform.h"
#include "qt/Theme.h"
#include "trainer/commands/Arguments.h"
#include "trainer/commands/CommandLine.h"

namespace {

using namespace dravik;
using namespace dravik::qt;

int complain(const std::string& problem, int code) {
    std::cerr << "dravik-trainer: " << problem << std::endl;
    return code;
}

bool hasDisplay() {
#ifdef Q_OS_LINUX
    return std::getenv("DISPLAY") || std::getenv("WAYLAND_DISPLAY") || std::getenv("QT_QPA_PLATFORM");
#else
    return true;
#endif
}

bool errIsTerminal() {
#ifdef Q_OS_UNIX
    return isatty(STDERR_FILENO) != 0;
#else
    return false;
#endif
}

// What the off-screen platform cannot do does not concern whoever runs a session there.
void withoutPlatformNoise(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (message.startsWith(QLatin1String("This plugin does not support"))) return;
    std::cerr << qFormatLogMessage(type, context, message).toStdString() << std::endl;
}

// The sample parts that the guide's pictures show: all but the last teach.
std::vector<std::string> guideParts() {
    std::vector<std::string> paths;
    const std::string parts = DRAVIK_PARTS;
    for (const char* number : {"0", "1", "2"})
        paths.push_back(parts + "/rendered_charset/hack_00" + number + ".png");
    for (const char* number : {"1", "2", "3", "4", "5", "6", "7", "0"})
        paths.push_back(parts + "/rendered_lines/hack_00" + number + ".png");
    return paths;
}

int runDemo(const std::string& folder, const trainer::WindowOptions& options,
            trainer::DemoSession::Kind kind) {
    if (!QDir().mkpath(qtText(folder))) return complain(folder + ": the folder cannot be made", 1);
    // A session that anyone can repeat touches neither the operator's fonts nor the window's remembered
    // place.
    const QTemporaryDir own;
    if (!own.isValid()) return complain("no temporary folder can be made: " + utf8(own.errorString()), 1);
    QSettings::setDefaultFormat(QSettings::IniFormat);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, own.path());
    const JobFolder jobs(options.jobs.empty() ? utf8(own.filePath(QStringLiteral("Jobs"))) : options.jobs);

    QtPlatform platform;
    DialogScript ending;  // outlives the control, which asks about a changed font when a session broke off
    trainer::Trainer trainer(platform, jobs, decodeImageFile, false);
    MainWindow window(trainer, platform);
    platform.setMainWindow(&window);
    int code = 0;
    try {
        const bool guide = kind == trainer::DemoSession::Kind::Guide && options.paths.empty();
        QtDemoHands hands(window);
        trainer::DemoSession(hands, trainer, folder, std::cout, kind)
            .run(guide ? guideParts() : options.paths);
    } catch (...) {
        code = complain("the session did not come out: " + currentFailure().description(), 1);
    }
    if (code == 0) std::cout << "Everything came out. Pictures are in " << folder << std::endl;
    ending.answerOthers(QStringLiteral("No"));
    return code;
}

int runWindow(const trainer::WindowOptions& options) {
    QtPlatform platform;
    trainer::Trainer trainer(platform, options.jobs.empty() ? JobFolder() : JobFolder(options.jobs),
                             decodeImageFile, true);
    MainWindow window(trainer, platform);
    platform.setMainWindow(&window);
    window.show();
    if (!options.paths.empty()) window.open(options.paths);
    return QApplication::exec();
}

int run(int argc, char** argv) {
    QCoreApplication::setOrganizationName(QStringLiteral("Dravik"));
    QCoreApplication::setApplicationName(QStringLiteral("Dravik Trainer"));
    std::vector<std::string> arguments(argv + 1, argv + argc);
    if (trainer::isHeadlessCommand(arguments)) {
        const QCoreApplication application(argc, argv);  // image formats are plug-ins of it
        return trainer::runHeadless(arguments, decodeImageFile, std::cout, std::cerr, errIsTerminal());
    }

    if (!hasDisplay()) {
        const bool demo = std::any_of(arguments.begin(), arguments.end(), [](const std::string& argument) {
            return argument.starts_with("--demo") || argument.starts_with("--screenshots");
        });
        if (!demo)
            return complain("there is no display; the commands learn, read and fonts need none (see --help)",
                            1);
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    if (qgetenv("QT_QPA_PLATFORM") == "offscreen") qInstallMessageHandler(withoutPlatformNoise);
    const QApplication application(argc, argv);
    arguments.clear();
    for (const QString& argument : QCoreApplication::arguments().mid(1)) arguments.push_back(utf8(argument));
    const std::string demo = trainer::takeOption(arguments, "--demo");
    const std::string screenshots = trainer::takeOption(arguments, "--screenshots");
    const std::string theme = trainer::takeOption(arguments, "--theme");
    const trainer::WindowOptions options = trainer::windowOptions(arguments);
    if (!options.problem.empty()) return complain(options.problem, 2);
    if (!theme.empty() && theme != "light" && theme != "dark" && theme != "system")
        return complain("--theme is light, dark or system", 2);
    useTheme(theme == "dark" ? Theme::Dark : theme == "light" ? Theme::Light : Theme::System);
    if (!demo.empty()) return runDemo(demo, options, trainer::DemoSession::Kind::Story);
    if (!screenshots.empty()) return runDemo(screenshots, options, trainer::DemoSession::Kind::Guide);
    return runWindow(options);
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return run(argc, argv);
    } catch (...) {
        return complain(dravik::currentFailure().description(), 1);
    }
}
