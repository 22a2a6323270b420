// How often each grey level or depth occurs.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace dravik::engine {

constexpr int kBins = 256;
using Histogram = std::array<std::uint32_t, kBins>;

// Counts every `step`-th of `count` values, in four tables that take turns: where a value follows its like,
// as in all background, one table would have to wait for itself.
class HistogramCounter {
  public:
    void add(const std::uint8_t* values, std::size_t count, std::size_t step = 1) {
        std::size_t i = 0;
        for (; i + 3 * step < count; i += 4 * step)
            for (std::size_t k = 0; k < 4; ++k) ++tables_[k][values[i + k * step]];
        for (; i < count; i += step) ++tables_[0][values[i]];
    }
    Histogram counts() const {
        Histogram result;
        for (std::size_t bin = 0; bin < kBins; ++bin)
            result[bin] = tables_[0][bin] + tables_[1][bin] + tables_[2][bin] + tables_[3][bin];
        return result;
    }

  private:
    std::array<Histogram, 4> tables_{};
};

// The value below which `share` of the counts from bin `from` on lie; -1 when fewer than `least` are counted.
inline int percentile(const Histogram& counts, int from, double share, std::uint32_t least) {
    std::uint32_t total = 0;
    for (std::size_t bin = static_cast<std::size_t>(from); bin < kBins; ++bin) total += counts[bin];
    if (total == 0 || total < least) return -1;
    std::uint32_t wanted = static_cast<std::uint32_t>(share * static_cast<double>(total));
    for (int bin = from; bin < kBins; ++bin) {
        const std::uint32_t here = counts[static_cast<std::size_t>(bin)];
        if (here > wanted) return bin;
        wanted -= here;
    }
    return kBins - 1;
}

}  // namespace dravik::engine
