#include "screen/histogram/HistogramData.h"

#include <algorithm>
#include <numeric>

#include "base/Conversions.h"
#include "base/Failure.h"

namespace dravik::screen {
namespace {

void requireValues(std::span<const double> values) {
    if (values.empty()) throw Failure(RuntimeError::SubscriptOutOfRange);
}

}  // namespace

double MinValue(std::span<const double> values) {
    requireValues(values);
    return *std::min_element(values.begin(), values.end());
}

double MaxValue(std::span<const double> values) {
    requireValues(values);
    return *std::max_element(values.begin(), values.end());
}

double AvgValue(std::span<const double> values) {
    requireValues(values);
    return std::accumulate(values.begin(), values.end(), 0.0) / static_cast<double>(values.size());
}

DistanceBins binDistances(std::span<const double> distances) {
    const double largest = MaxValue(distances);
    const double divisor = largest == 0 ? 1.0 : largest;
    DistanceBins bins;
    bins.width = largest / kBins;
    for (const double distance : distances) {
        const double r = distance / divisor * kBins;
        const int bin = r < 0.5 ? 0 : toInt16(r - 0.501);
        if (bin >= kBins) throw Failure(RuntimeError::SubscriptOutOfRange);
        auto& count = bins.counts[static_cast<std::size_t>(bin)];
        count = toInt16(count + 1);
        bins.largestCount = std::max(bins.largestCount, count);
    }
    return bins;
}

}  // namespace dravik::screen
