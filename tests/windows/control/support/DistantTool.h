// An embedded step that lives in a process of its own and is called through the system's proxies.
#pragma once

#include <DravikLib.h>

#include <string>

#include "windows/com/ComPtr.h"

namespace dravik::test {

class DistantTool {
  public:
    // The control must be registered; raises std::runtime_error when there is no such tool.
    DistantTool();
    DistantTool(const DistantTool&) = delete;
    DistantTool& operator=(const DistantTool&) = delete;
    ~DistantTool();

    const com::ComPtr<IEmbeddedStep>& step() const { return step_; }
    // The process dies.
    void end();

  private:
    com::ComPtr<IEmbeddedStep> step_;
    HANDLE process_;
};

// What the process of a tool does, this program with the command line "--serve-tool FILE": hands the tool out
// in that file and serves it until it is ended.
int serveTool(const std::wstring& file);

}  // namespace dravik::test
