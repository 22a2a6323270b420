#include "qt/Display.h"

#include <QDir>
#include <QFileInfo>
#include <QLibraryInfo>

namespace dravik::qt {

std::optional<std::string> missingForDisplay() {
#ifdef Q_OS_LINUX
    if (!qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") || !qEnvironmentVariableIsEmpty("DISPLAY")) return {};
    const QString wayland = qEnvironmentVariable("WAYLAND_DISPLAY");
    if (wayland.isEmpty()) return "there is no display";
    const QDir platforms(QLibraryInfo::path(QLibraryInfo::PluginsPath) + QStringLiteral("/platforms"));
    if (platforms.entryList({QStringLiteral("libqwayland*")}, QDir::Files).isEmpty())
        return "Qt has no plug-in here for the Wayland display (Debian package qt6-wayland)";
    const QDir sockets(qEnvironmentVariable("XDG_RUNTIME_DIR", QStringLiteral(".")));
    if (!QFileInfo::exists(sockets.absoluteFilePath(wayland)))
        return "the Wayland display " + wayland.toStdString() + " is not there";
#endif
    return {};
}

}  // namespace dravik::qt
