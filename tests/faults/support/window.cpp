// The trainer's window on a jobs folder, worked by script.
//   fault-window JOBS session STEP...
#include <QSettings>
#include <span>

#include "WindowSession.h"

int main(int count, char** words) {
    QApplication application(count, words);
    QCoreApplication::setOrganizationName(QStringLiteral("Dravik"));
    QCoreApplication::setApplicationName(QStringLiteral("Fault tests"));
    QSettings::setDefaultFormat(QSettings::IniFormat);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("settings"));
    const std::span arguments(words, static_cast<std::size_t>(count));
    if (arguments.size() < 3) return 2;
    try {
        dravik::test::WindowSession session(arguments[1]);
        return session.work({arguments.begin() + 3, arguments.end()}) ? 0 : 1;
    } catch (...) {
        std::cerr << "fault-window: " << dravik::currentFailure().description() << std::endl;
        return 1;
    }
}
