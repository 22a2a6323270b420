// dravik-trainer: headless commands, or the window.
#include <QApplication>
#include <QCoreApplication>
#include <iostream>
#include <optional>
#include <string>
#include <vector>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

#include "base/Failure.h"
#include "qt/Display.h"
#include "qt/MainWindow.h"
#include "qt/QtConversions.h"
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

bool errIsTerminal() {
#ifdef Q_OS_UNIX
    return isatty(STDERR_FILENO) != 0;
#else
    return false;
#endif
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

    if (const std::optional<std::string> missing = missingForDisplay())
        return complain(*missing + "; the commands learn, read and fonts need none (see --help)", 1);
    const QApplication application(argc, argv);
    arguments.clear();
    for (const QString& argument : QCoreApplication::arguments().mid(1)) arguments.push_back(utf8(argument));
    const std::string theme = trainer::takeOption(arguments, "--theme");
    const trainer::WindowOptions options = trainer::windowOptions(arguments);
    if (!options.problem.empty()) return complain(options.problem, 2);
    if (!theme.empty() && theme != "light" && theme != "dark" && theme != "system")
        return complain("--theme is light, dark or system", 2);
    useTheme(theme == "dark" ? Theme::Dark : theme == "light" ? Theme::Light : Theme::System);
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
