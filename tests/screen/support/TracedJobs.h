// A jobs folder of its own for one test, with the trace counter reset and tracing switched off at the end;
// reads back what was traced.
#pragma once

#include <fstream>
#include <string>
#include <vector>

#include "base/JobFolder.h"
#include "screen/context/modGlobals.h"
#include "support/TemporaryFolder.h"

namespace dravik::test {

using namespace screen;

class TracedJobs {
  public:
    TracedJobs() { g_lLogEntry = 0; }
    ~TracedJobs() {
        g_bTrace = false;
        g_lLogEntry = 0;
    }

    JobFolder folder() const { return JobFolder(folder_.path()); }

    // The entry texts of the log in order, without the header.
    std::vector<std::string> entries() const {
        std::vector<std::string> result;
        std::ifstream in(folder().traceLog(), std::ios::binary);
        for (std::string line; std::getline(in, line);) {
            if (line.ends_with('\r')) line.pop_back();
            if (line.starts_with('#')) continue;
            for (int field = 0; field < 3; ++field) line.erase(0, line.find('\t') + 1);
            result.push_back(line);
        }
        return result;
    }

  private:
    TemporaryFolder folder_;
};

}  // namespace dravik::test
