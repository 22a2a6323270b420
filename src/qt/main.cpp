// dravik-trainer: the commands, or the window.
#include <QApplication>
#include <QCoreApplication>
#include <QIcon>
#include <algorithm>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

#include "base/Failure.h"
#include "qt/Display.h"
#include "qt/EndSignals.h"
#include "qt/MainWindow.h"
#include "qt/QtImage.h"
#include "qt/QtPlatform.h"
#include "trainer/commands/CommandLine.h"

namespace {

using namespace dravik;
using namespace dravik::qt;

bool errIsTerminal() {
#ifdef Q_OS_UNIX
    return isatty(STDERR_FILENO) != 0;
#else
    return false;
#endif
}

trainer::CommandStreams streams() {
    return {std::cout, std::cerr, errIsTerminal()};
}

trainer::CommandLine parsed(int argc, char** argv) {
    return trainer::parseCommandLine({argv + 1, argv + argc});
}

// Qt takes options of its own out of the arguments, such as the -session of a session manager: one dash.
bool mayBeForQt(const trainer::CommandLine& line, int argc, char** argv) {
    const auto* notice = std::get_if<trainer::Notice>(&line);
    return notice && notice->status == 2 &&
           std::any_of(argv + 1, argv + argc, [](const std::string& argument) {
               return argument.starts_with('-') && !argument.starts_with("--");
           });
}

int runWindow(const trainer::WindowOptions& options) {
    // The desktop's entry of an installed program, and its icon.
    QGuiApplication::setDesktopFileName(QLatin1String(trainer::kProgram));
    QApplication::setWindowIcon(QIcon::fromTheme(QLatin1String(trainer::kProgram)));
    QtPlatform platform;
    trainer::Trainer trainer(platform, options.folder, decodeImageFile, true);
    MainWindow window(trainer, platform);
    platform.setMainWindow(&window);
    window.model().showTheme(options.theme);
    const EndSignals signals([&window] { window.remember(); });
    trainer.setPatience(trainer::kPatience);
    window.show();
    if (!options.paths.empty()) window.open(options.paths);
    return QApplication::exec();
}

int run(int argc, char** argv) {
    QCoreApplication::setOrganizationName(QStringLiteral("Dravik"));
    QCoreApplication::setApplicationName(QStringLiteral("Dravik Trainer"));
    auto line = parsed(argc, argv);
    std::unique_ptr<QCoreApplication> application;
    const std::optional<std::string> missing = missingForDisplay();
    if (!missing && (std::holds_alternative<trainer::WindowOptions>(line) || mayBeForQt(line, argc, argv))) {
        application = std::make_unique<QApplication>(argc, argv);
        line = parsed(argc, argv);
    } else {
        application = std::make_unique<QCoreApplication>(argc, argv);  // image formats are plug-ins of it
    }
    const auto* window = std::get_if<trainer::WindowOptions>(&line);
    if (!window) return trainer::runCommand(line, decodeImageFile, streams());
    if (!missing) return runWindow(*window);
    streams().problem(*missing + "; the commands learn, read and fonts need none (see --help)");
    return 1;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return run(argc, argv);
    } catch (...) {
        streams().problem(dravik::currentFailure().description());
        return 1;
    }
}
