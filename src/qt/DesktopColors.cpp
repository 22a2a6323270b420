#include "qt/DesktopColors.h"

#include <QDBusConnection>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
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
    bus.connect(kService, kPath, kInterface, QStringLiteral("SettingChanged"), this,
                SLOT(settingChanged(QDBusMessage)));
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

void DesktopColors::settingChanged(const QDBusMessage& message) {
    const QList<QVariant> words = message.arguments();
    if (words.size() == 3 && words[0].toString() == QLatin1String(kGroup) &&
        words[1].toString() == QLatin1String(kKey))
        take(words[2]);
}

// What comes is a variant, or one in a variant.
void DesktopColors::take(const QVariant& value) {
    if (value.canConvert<QDBusVariant>()) return take(value.value<QDBusVariant>().variant());
    changed_(value.toUInt() == kPrefersDark);
}

}  // namespace dravik::qt
