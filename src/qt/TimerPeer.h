// Drives a timer of the models as long as it is enabled and this object lives.
#pragma once

#include <QTimer>

#include "ui/Timer.h"

namespace dravik::qt {

class TimerPeer : public QTimer {
  public:
    // The timer outlives the peer.
    TimerPeer(ui::Timer& timer, QObject* parent);

  private:
    ui::Connection changed_;
};

}  // namespace dravik::qt
