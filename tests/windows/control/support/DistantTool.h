// An embedded step that lives in another apartment of this process, or in a process of its own, and is called
// through the system's proxies.
#pragma once

#include <DravikLib.h>

#include <string>
#include <thread>

#include "windows/com/ComPtr.h"

namespace dravik::test {

class DistantTool {
  public:
    enum class Home { Apartment, Process };

    // The control must be registered; raises std::runtime_error when there is no such tool.
    explicit DistantTool(Home home);
    DistantTool(const DistantTool&) = delete;
    DistantTool& operator=(const DistantTool&) = delete;
    ~DistantTool() { end(); }

    const com::ComPtr<IEmbeddedStep>& step() const { return step_; }
    // The tool is gone, with its apartment or its process.
    void end();

  private:
    com::ComPtr<IEmbeddedStep> step_;
    std::thread thread_;
    DWORD threadIdentifier_ = 0;
    HANDLE process_ = nullptr;
};

// What the process of a tool does, this program with the command line "--serve-tool FILE": hands the tool out
// in that file and serves it until it is ended.
int serveTool(const std::wstring& file);

}  // namespace dravik::test
