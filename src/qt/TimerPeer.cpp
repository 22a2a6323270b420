#include "qt/TimerPeer.h"

#include "qt/Guard.h"
#include "qt/QtConversions.h"

namespace dravik::qt {

TimerPeer::TimerPeer(ui::Timer& timer, QObject* parent) : QTimer(parent) {
    setObjectName(qtText(timer.name()));
    setInterval(timer.interval());
    connect(this, &QTimer::timeout, this, [&timer] { guarded([&] { timer.tick(); }); });
    const auto follow = [this, &timer] {
        if (timer.enabled() && !isActive()) start();
        if (!timer.enabled()) stop();
    };
    changed_ = timer.changed.connect(follow);
    follow();
}

}  // namespace dravik::qt
