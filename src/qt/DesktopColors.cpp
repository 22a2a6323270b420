#include "qt/DesktopColors.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <utility>

namespace dravik::qt {
namespace {

constexpr char kService[] = "org.freedesktop.portal.Desktop";
constexpr char kPath[] = "/org/freedesktop/portal/desktop";
constexpr char kInterface[] = "org.freedesktop.portal.Settings";
constexpr char kGroup[] = "org.freedesktop.appearance";
constexpr char kKey[] = "color-scheme";
constexpr unsigned kPrefersDark = 1;

}  // namespace

DesktopColors::DesktopColors(std::function<void(bool dark)> changed) : changed_(std::move(changed)) {
    if (!qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS")) return;  // else one would be started
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) return;
    if (!bus.connect(kService, kPath, kInterface, QStringLiteral("SettingChanged"), this,
                     SLOT(settingChanged(QString, QString, QDBusVariant))))
        qWarning("what the desktop says of its colours is not heard");
    QDBusMessage question =
        QDBusMessage::createMethodCall(kService, kPath, kInterface, QStringLiteral("Read"));
    question << QString::fromLatin1(kGroup) << QString::fromLatin1(kKey);
    auto* answer = new QDBusPendingCallWatcher(bus.asyncCall(question), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        const QDBusPendingReply<QDBusVariant> reply = *answer;
        if (!reply.isError()) take(reply.value().variant());
        answer->deleteLater();
    });
}

void DesktopColors::settingChanged(const QString& group, const QString& key, const QDBusVariant& value) {
    if (group == QLatin1String(kGroup) && key == QLatin1String(kKey)) take(value.variant());
}

// The answer to a question is a variant in a variant.
void DesktopColors::take(const QVariant& value) {
    if (value.canConvert<QDBusVariant>()) return take(value.value<QDBusVariant>().variant());
    changed_(value.toUInt() == kPrefersDark);
}

}  // namespace dravik::qt
