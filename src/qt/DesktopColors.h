// Whether the desktop wants dark windows, as its settings portal says it, now and whenever that changes.
#pragma once

#include <QDBusMessage>
#include <QObject>
#include <functional>

namespace dravik::qt {

class DesktopColors : public QObject {
    Q_OBJECT

  public:
    // `changed` is called when the answer arrives, some time later, and when it becomes another one; never
    // where the session has no such portal.
    explicit DesktopColors(std::function<void(bool dark)> changed);

  private Q_SLOTS:
    void settingChanged(const QDBusMessage& message);

  private:
    void take(const QVariant& value);

    const std::function<void(bool dark)> changed_;
};

}  // namespace dravik::qt
