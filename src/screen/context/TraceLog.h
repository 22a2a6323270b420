// The trace log: one line per procedure entry in "dravik_log.txt" of the jobs folder, written and closed at
// once so that it survives a crash of the host.
#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "base/JobFolder.h"
#include "ui/Platform.h"

namespace dravik::screen {

class TraceLog {
  public:
    // The platform outlives the log.
    TraceLog(ui::Platform& platform, JobFolder folder) : platform_(platform), folder_(std::move(folder)) {}

    // Appends an entry while g_bTrace is set; does nothing otherwise. The first entry of a thread, or
    // `startNewLog`, begins a fresh file. A failure is shown in a message box and never raised.
    void DlgEventLog(std::string_view entry, bool startNewLog);

    void trace(std::string_view entry) { DlgEventLog(entry, false); }

  private:
    ui::Platform& platform_;
    JobFolder folder_;
};

}  // namespace dravik::screen
