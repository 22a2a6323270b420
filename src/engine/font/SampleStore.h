// The samples of a font in memory. Lists are shared with the tables that queries return and copied only when
// they change while someone still reads them, so that a query costs nothing and a deletion little, however
// many there are.
#pragma once

#include <algorithm>
#include <cstdint>
#include <deque>
#include <memory>
#include <span>
#include <vector>

#include "engine/classifier/DistanceMeasure.h"
#include "engine/font/FontParts.h"
#include "engine/segmentation/Sample.h"
#include "tool/Samples.h"

namespace dravik::engine {

// The samples of one kind in their order, column by column.
struct SampleColumns {
    std::shared_ptr<const std::deque<Sample>> owner;  // keeps the samples in being
    std::vector<const Sample*> samples;
    std::vector<std::int32_t> codes;
    std::vector<double> distances;

    std::size_t size() const noexcept { return samples.size(); }
};
using SampleColumnsPtr = std::shared_ptr<const SampleColumns>;

// Comparisons of two samples that are made without the operator noticing, some 15 milliseconds' worth.
constexpr std::int64_t kQuickComparisons = 2'500'000;

class SampleStore {
  public:
    SampleStore();
    // Copies share what neither has changed since.
    SampleStore(const SampleStore& other);
    SampleStore(SampleStore&&) noexcept = default;
    SampleStore& operator=(const SampleStore& other);
    SampleStore& operator=(SampleStore&&) noexcept = default;
    ~SampleStore() = default;

    // Adds uncommitted samples and gives them their serial numbers. Raises Out of memory (7) when there would
    // be more than kMostSamples of both kinds. This and what follows changes everything that it is to change
    // or, when it raises, nothing.
    void include(std::vector<Sample> samples);
    // The same with samples whose serial numbers ascend, beyond those of all that are there.
    void add(std::span<const Sample> samples);
    void commit();
    void removeUncommitted();
    // The last `count` committed samples become uncommitted ones, of which there must be none.
    void uncommit(std::size_t count);
    // Places of a kind beyond its end name nothing and change nothing.
    void remove(tool::SampleKind kind, std::size_t place);
    // Puts a sample back at a place of up to the number of its kind.
    void insert(tool::SampleKind kind, std::size_t place, const MeasuredSample& one);
    // Gives those committed samples that have one of these serial numbers, which ascend, another character
    // each, and a Distance; without Distances those are measured. False, and nothing is changed, when one of
    // them is not there.
    bool relabel(std::span<const std::uint64_t> serials, std::span<const std::int32_t> codes,
                 std::span<const double> distances);
    // A font's samples as they were stored, with their Distances. Replaces everything.
    void restore(std::vector<Sample> committed, std::vector<double> distances, std::uint64_t nextSerial);

    // Distances of committed samples follow every change of the font before they are seen, as long as
    // measuring them all takes no longer than about a frame (kQuickComparisons); in a larger font those of
    // samples that stay are left as they are, until setDistances().
    SampleColumnsPtr columns(tool::SampleKind kind) const;
    std::size_t count(tool::SampleKind kind) const noexcept;
    // The sample at a place, which exists, with its Distance as it was last measured.
    MeasuredSample at(tool::SampleKind kind, std::size_t place) const;
    const ClassStatistics& statistics() const noexcept { return statistics_; }
    std::uint64_t nextSerial() const noexcept { return nextSerial_; }
    // The next sample gets this serial number or a higher one.
    void skipSerials(std::uint64_t next) noexcept { nextSerial_ = std::max(nextSerial_, next); }

    // New Distances for those committed samples that have one of these serial numbers, which ascend.
    void setDistances(std::span<const std::uint64_t> serials, std::span<const double> distances);

  private:
    // Places [begin, end) of one list that removals have left free. What lies behind them moves up only when
    // the list is read, so that removals near each other cost no more than the way between them.
    struct Gap {
        SampleColumns* columns = nullptr;  // this store's alone while the gap is open
        std::size_t begin = 0;
        std::size_t end = 0;
        std::size_t size() const noexcept { return end - begin; }
    };

    const SampleColumns& list(tool::SampleKind kind) const noexcept;
    SampleColumns& writable(std::shared_ptr<SampleColumns>& columns, std::size_t coming = 0) const;
    void compact(std::size_t coming);
    void closeGap() const;
    void refresh() const;

    std::shared_ptr<std::deque<Sample>> samples_;
    std::shared_ptr<SampleColumns> uncommitted_;
    mutable std::shared_ptr<SampleColumns> committed_;
    mutable bool stale_ = false;  // samples came or went since the committed ones were measured
    ClassStatistics statistics_;
    std::uint64_t nextSerial_ = 1;
    mutable Gap gap_;
};

}  // namespace dravik::engine
