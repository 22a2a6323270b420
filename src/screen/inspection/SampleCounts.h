// How many samples the font holds, by kind and by character, and the diagnostic dump of the uncommitted ones.
#pragma once

#include <cstdint>
#include <string>

#include "screen/context/ScreenContext.h"

namespace dravik::screen {

// What the counts by character answer while no tool is bound.
constexpr std::int16_t kNoToolCount = -9999;

class SampleCounts {
  public:
    explicit SampleCounts(ScreenContext& context) : context_(context) {}

    // Counts that a 16-bit integer cannot hold, and a query without an answer, are reported; the result is
    // then 0.
    std::int16_t NumberUncommittedAll();
    std::int16_t NumberCommittedAll();
    // kNoToolCount while no tool is bound; `c` is one character.
    std::int16_t NumberCommitted(const std::string& c);
    std::int16_t NumberTrained(const std::string& c);

    // Writes every uncommitted sample with its features to "checknew.csv" in the jobs folder, replacing the
    // file.
    void SaveUncommitted();

  private:
    std::int16_t numberOfAll(std::int32_t selector, const char* name);

    ScreenContext& context_;
};

}  // namespace dravik::screen
