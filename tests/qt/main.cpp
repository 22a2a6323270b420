// Runs without a display and without touching the settings of whoever runs it.
#include <gtest/gtest.h>

#include <QApplication>
#include <QFont>
#include <QSettings>
#include <QTemporaryDir>

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    const QApplication application(argc, argv);
    // How much room the screen takes depends on it.
    QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 9));
    const QTemporaryDir settings;
    QCoreApplication::setOrganizationName(QStringLiteral("Dravik"));
    QCoreApplication::setApplicationName(QStringLiteral("Desktop tests"));
    QSettings::setDefaultFormat(QSettings::IniFormat);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, settings.path());
    return RUN_ALL_TESTS();
}
