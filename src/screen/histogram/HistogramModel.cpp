#include "screen/histogram/HistogramModel.h"

#include <algorithm>
#include <numeric>

#include "base/Conversions.h"
#include "base/Failure.h"
#include "base/NumberFormat.h"

namespace dravik::screen {
namespace {

constexpr std::size_t kManyValues = 26;
constexpr int kSmallLabel = 8;
constexpr int kLargeLabel = 10;
constexpr double kCharBarWidth = 1;
constexpr double kBinBarWidth = 2;
constexpr double kBinLabelWidth = 4;
constexpr char kDistancePicture[] = "0.000";
constexpr ui::Color kOverThreshold = ui::rgb(255, 0, 0);
constexpr ui::Color kBelowThreshold = ui::rgb(0, 0, 0);
constexpr ui::Color kNoSamples = ui::rgb(0, 0, 255);

// The upper bound decides, so it takes one value more than 26 for the small labels.
int labelPoints(const std::vector<double>& data) {
    return data.size() - 1 >= kManyValues ? kSmallLabel : kLargeLabel;
}

std::string samplesText(double count) {
    return numberText(count) + (count == 1 ? " sample" : " samples");
}

template <class Array>
const typename Array::value_type& element(const Array& array, std::size_t index) {
    if (index >= array.size()) throw Failure(RuntimeError::SubscriptOutOfRange);
    return array[index];
}

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

void HistogramModel::clear() {
    drawing.clear();
    data.clear();
    max.clear();
    chars.clear();
    bins = {};
}

void HistogramModel::loadCharacters() {
    drawing.load(data.size(), kCharBarWidth, kCharBarWidth, labelPoints(data));
    drawing.barTitle.clear();
}

void HistogramModel::placeCharacters(std::int16_t axisMaximum) {
    const double pitch = kAxisLength / static_cast<double>(data.size());
    for (std::size_t i = 0; i < data.size(); ++i) {
        const double left = static_cast<double>(i + 1) * pitch - kCharBarWidth / 2;
        if (data[i] == 0) {
            // Deliberately no empty slot: a small square below the axis.
            drawing.placeBar(i, left, 0, 1, true);
            drawing.shpData[i].fill = kNoSamples;
        } else {
            const double top = data[i] * kAxisHeight / axisMaximum;
            drawing.placeBar(i, left, top, top, true);
        }
        drawing.placeLabel(i, nameOf(i));
    }
}

void HistogramModel::loadBins() {
    drawing.load(kBins, kBinBarWidth, kBinLabelWidth, labelPoints(data));
    drawing.barTitle = "Distance";
}

void HistogramModel::placeBins() {
    for (std::size_t k = 0; k < bins.counts.size(); ++k) {
        const double left = static_cast<double>(k) * kAxisLength / kBins + 2;
        const double top = bins.counts[k] * kAxisHeight / bins.largestCount;
        drawing.placeBar(k, left, top, top, bins.counts[k] > 0);
        drawing.placeLabel(k, formatNumber(rangeOf(k).upper, kDistancePicture));
    }
}

int HistogramModel::colourByThreshold() {
    int exceeding = 0;
    for (std::size_t i = 0; i < drawing.shpData.size() && i < max.size(); ++i) {
        const bool over = max[i] >= threshold;
        drawing.shpData[i].fill = over ? kOverThreshold : kBelowThreshold;
        drawing.shpData[i].hatched = over;
        if (over) ++exceeding;
    }
    return exceeding;
}

void HistogramModel::nameBars() {
    for (std::size_t i = 0; i < drawing.shpData.size(); ++i)
        if (drawing.shpData[i].visible) drawing.shpData[i].accessibleName = accessibleNameOf(i);
}

std::string HistogramModel::accessibleNameOf(std::size_t bar) const {
    if (mode == kCharacterDistance)
        return "Distance " + formatNumber(rangeOf(bar).lower, kDistancePicture) + " to " +
               element(drawing.lblX, bar).caption + ", " + samplesText(countOf(bar));
    const double largest = maxOf(bar);
    return nameOf(bar) + ", " + samplesText(samplesOf(bar)) + ", largest Distance " +
           formatNumber(largest, kDistancePicture) + (largest >= threshold ? ", over the threshold" : "");
}

HistogramModel::Range HistogramModel::rangeOf(std::size_t bin) const {
    return {static_cast<double>(bin) * bins.width, static_cast<double>(bin + 1) * bins.width};
}

HistogramModel::Range HistogramModel::deletedWith(std::size_t bin) const {
    Range range = rangeOf(bin);
    if (bin + 1 == kBins && !data.empty()) range.upper = std::max(range.upper, MaxValue(data));
    return range;
}

std::int16_t HistogramModel::countOf(std::size_t bin) const {
    return element(bins.counts, bin);
}

double HistogramModel::samplesOf(std::size_t character) const {
    return element(data, character);
}

double HistogramModel::maxOf(std::size_t character) const {
    return element(max, character);
}

const std::string& HistogramModel::nameOf(std::size_t character) const {
    return element(chars, character);
}

}  // namespace dravik::screen
