#include "engine/font/SampleStore.h"

#include <algorithm>
#include <string>
#include <utility>

#include "base/Failure.h"

namespace dravik::engine {
namespace {

// Committed and uncommitted ones count together, so that every sample that was included can be committed.
void checkCount(std::size_t present, std::size_t coming) {
    if (present + coming > static_cast<std::size_t>(tool::kMostSamples))
        throw Failure(RuntimeError::OutOfMemory, "A font holds at most " +
                                                     std::to_string(tool::kMostSamples) + " samples; " +
                                                     std::to_string(present) + " are there and " +
                                                     std::to_string(coming) + " would come");
}

void append(SampleColumns& columns, const Sample& sample, double distance) {
    columns.samples.push_back(&sample);
    columns.codes.push_back(sample.code);
    columns.distances.push_back(distance);
}

template <class Columns, class Change>
void forEachColumn(Columns& columns, Change change) {
    change(columns.samples);
    change(columns.codes);
    change(columns.distances);
}

}  // namespace

SampleStore::SampleStore()
    : samples_(std::make_shared<std::deque<Sample>>()),
      uncommitted_(std::make_shared<SampleColumns>()),
      committed_(std::make_shared<SampleColumns>()) {
    uncommitted_->owner = committed_->owner = samples_;
}

SampleStore::SampleStore(const SampleStore& other) {
    *this = other;
}

SampleStore& SampleStore::operator=(const SampleStore& other) {
    other.closeGap();
    samples_ = other.samples_;
    uncommitted_ = other.uncommitted_;
    committed_ = other.committed_;
    stale_ = other.stale_;
    statistics_ = other.statistics_;
    nextSerial_ = other.nextSerial_;
    gap_ = {};
    return *this;
}

const SampleColumns& SampleStore::list(tool::SampleKind kind) const noexcept {
    return kind == tool::SampleKind::Committed ? *committed_ : *uncommitted_;
}

// Alone in having the list, which has room for as many more.
SampleColumns& SampleStore::writable(std::shared_ptr<SampleColumns>& columns, std::size_t coming) const {
    if (columns.use_count() > 1) columns = std::make_shared<SampleColumns>(*columns);
    columns->owner = samples_;
    forEachColumn(*columns, [coming](auto& column) {
        const std::size_t wanted = column.size() + coming;
        if (wanted > column.capacity()) column.reserve(std::max(wanted, 2 * column.capacity()));
    });
    return *columns;
}

// Deleted samples stay in the shared pool while tables may show them; once they outnumber the rest the pool
// is renewed.
void SampleStore::compact(std::size_t coming) {
    const std::size_t alive = uncommitted_->size() + committed_->size() + coming;
    if (samples_->size() < 2 * alive + 4096) return;
    auto pool = std::make_shared<std::deque<Sample>>();
    const auto moved = [&pool](const SampleColumns& old) {
        auto columns = std::make_shared<SampleColumns>();
        columns->owner = pool;
        for (std::size_t i = 0; i < old.size(); ++i)
            append(*columns, pool->emplace_back(*old.samples[i]), old.distances[i]);
        return columns;
    };
    auto uncommitted = moved(*uncommitted_), committed = moved(*committed_);
    uncommitted_ = std::move(uncommitted);
    committed_ = std::move(committed);
    samples_ = std::move(pool);
}

void SampleStore::include(std::vector<Sample> samples) {
    std::uint64_t serial = nextSerial_;
    for (Sample& sample : samples) sample.serial = serial++;
    add(samples);
}

void SampleStore::add(std::span<const Sample> samples) {
    closeGap();
    checkCount(committed_->size() + uncommitted_->size(), samples.size());
    if (samples.empty()) return;
    compact(samples.size());
    SampleColumns& columns = writable(uncommitted_, samples.size());
    const DistanceMeasure measure(statistics_, committed_->samples);
    const std::size_t before = samples_->size();
    try {
        samples_->insert(samples_->end(), samples.begin(), samples.end());
    } catch (...) {
        samples_->resize(before);
        throw;
    }
    for (std::size_t i = before; i < samples_->size(); ++i)
        append(columns, (*samples_)[i], measure.distance((*samples_)[i]));
    nextSerial_ = std::max(nextSerial_, samples.back().serial + 1);
}

void SampleStore::commit() {
    closeGap();
    if (uncommitted_->size() == 0) return;
    const SampleColumnsPtr coming = uncommitted_;
    auto none = std::make_shared<SampleColumns>();
    none->owner = samples_;
    SampleColumns& columns = writable(committed_, coming->size());
    ClassStatistics statistics = statistics_;
    for (const Sample* sample : coming->samples) statistics.add(*sample);
    std::vector<double> distances(coming->size());
    if (statistics.comparisons() > kQuickComparisons) {
        std::vector<const Sample*> all;
        all.reserve(columns.size() + coming->size());
        all.insert(all.end(), columns.samples.begin(), columns.samples.end());
        all.insert(all.end(), coming->samples.begin(), coming->samples.end());
        const DistanceMeasure measure(statistics, all);
        for (std::size_t i = 0; i < distances.size(); ++i)
            distances[i] = measure.distance(*coming->samples[i]);
    }
    for (std::size_t i = 0; i < distances.size(); ++i) append(columns, *coming->samples[i], distances[i]);
    statistics_ = std::move(statistics);
    uncommitted_ = std::move(none);
    stale_ = true;
}

void SampleStore::uncommit(std::size_t count) {
    closeGap();
    if (count == 0) return;
    ClassStatistics statistics = statistics_;
    const std::span<const Sample* const> all = committed_->samples;
    for (const Sample* sample : all.last(count)) statistics.remove(*sample);
    auto back = std::make_shared<SampleColumns>();
    const DistanceMeasure measure(statistics, all.first(all.size() - count));
    for (const Sample* sample : all.last(count)) append(*back, *sample, measure.distance(*sample));
    back->owner = samples_;
    forEachColumn(writable(committed_), [count](auto& column) { column.resize(column.size() - count); });
    statistics_ = std::move(statistics);
    uncommitted_ = std::move(back);
    stale_ = true;
}

std::size_t SampleStore::count(tool::SampleKind kind) const noexcept {
    const SampleColumns& columns = list(kind);
    return columns.size() - (gap_.columns == &columns ? gap_.size() : 0);
}

MeasuredSample SampleStore::at(tool::SampleKind kind, std::size_t place) const {
    const SampleColumns& columns = list(kind);
    const bool behindGap = gap_.columns == &columns && place >= gap_.begin;
    const std::size_t index = behindGap ? place + gap_.size() : place;
    return {*columns.samples[index], columns.distances[index]};
}

SampleColumnsPtr SampleStore::columns(tool::SampleKind kind) const {
    closeGap();
    if (kind == tool::SampleKind::Uncommitted) return uncommitted_;
    refresh();
    return committed_;
}

void SampleStore::refresh() const {
    if (!stale_ || statistics_.comparisons() > kQuickComparisons) return;
    SampleColumns& columns = writable(committed_);
    const DistanceMeasure measure(statistics_, columns.samples);
    for (std::size_t i = 0; i < columns.size(); ++i)
        columns.distances[i] = measure.distance(*columns.samples[i]);
    stale_ = false;
}

void SampleStore::remove(tool::SampleKind kind, std::size_t place) {
    auto& list = kind == tool::SampleKind::Committed ? committed_ : uncommitted_;
    if (gap_.columns != list.get()) closeGap();
    if (place >= list->size() - gap_.size()) return;
    stale_ |= kind == tool::SampleKind::Committed;
    SampleColumns& columns = writable(list);
    if (!gap_.columns) gap_ = {&columns, place, place};
    const Gap old = gap_;
    const auto at = [](std::size_t index) { return static_cast<std::ptrdiff_t>(index); };
    if (place < old.begin) {
        gap_ = {&columns, place, old.end - (old.begin - 1 - place)};
        if (kind == tool::SampleKind::Committed) statistics_.remove(*columns.samples[place]);
        forEachColumn(columns, [&](auto& column) {
            const auto start = column.begin();
            std::move_backward(start + at(place + 1), start + at(old.begin), start + at(old.end));
        });
    } else {
        const std::size_t removed = place + old.size();
        gap_ = {&columns, place, removed + 1};
        if (kind == tool::SampleKind::Committed) statistics_.remove(*columns.samples[removed]);
        forEachColumn(columns, [&](auto& column) {
            const auto start = column.begin();
            std::move(start + at(old.end), start + at(removed), start + at(old.begin));
        });
    }
}

void SampleStore::closeGap() const {
    if (!gap_.columns) return;
    const Gap gap = std::exchange(gap_, {});
    forEachColumn(*gap.columns, [&](auto& column) {
        const auto start = column.begin();
        column.erase(start + static_cast<std::ptrdiff_t>(gap.begin),
                     start + static_cast<std::ptrdiff_t>(gap.end));
    });
}

void SampleStore::removeUncommitted() {
    closeGap();
    auto none = std::make_shared<SampleColumns>();
    none->owner = samples_;
    uncommitted_ = std::move(none);
}

void SampleStore::insert(tool::SampleKind kind, std::size_t place, const MeasuredSample& one) {
    closeGap();
    compact(1);
    const bool committed = kind == tool::SampleKind::Committed;
    SampleColumns& columns = writable(committed ? committed_ : uncommitted_, 1);
    const Sample& kept = samples_->emplace_back(one.sample);
    if (committed) statistics_.add(kept);
    const auto at = static_cast<std::ptrdiff_t>(place);
    columns.samples.insert(columns.samples.begin() + at, &kept);
    columns.codes.insert(columns.codes.begin() + at, kept.code);
    columns.distances.insert(columns.distances.begin() + at, one.distance);
    stale_ |= committed;
}

// Tables that show a sample keep it as it was.
bool SampleStore::relabel(std::span<const std::uint64_t> serials, std::span<const std::int32_t> codes,
                          std::span<const double> distances) {
    closeGap();
    compact(serials.size());
    SampleColumns& columns = writable(committed_);
    std::vector<std::size_t> places;
    places.reserve(serials.size());
    for (const std::uint64_t serial : serials) {
        const auto place = std::lower_bound(
            columns.samples.begin(), columns.samples.end(), serial,
            [](const Sample* sample, std::uint64_t wanted) { return sample->serial < wanted; });
        if (place == columns.samples.end() || (*place)->serial != serial) return false;
        places.push_back(static_cast<std::size_t>(place - columns.samples.begin()));
    }
    ClassStatistics statistics = statistics_;
    const std::size_t before = samples_->size();
    try {
        for (std::size_t i = 0; i < places.size(); ++i) {
            Sample& sample = samples_->emplace_back(*columns.samples[places[i]]);
            statistics.remove(sample);
            sample.code = codes[i];
            statistics.add(sample);
        }
    } catch (...) {
        samples_->resize(before);
        throw;
    }
    for (std::size_t i = 0; i < places.size(); ++i) {
        columns.samples[places[i]] = &(*samples_)[before + i];
        columns.codes[places[i]] = codes[i];
    }
    statistics_ = std::move(statistics);
    stale_ = true;
    if (!distances.empty()) {
        for (std::size_t i = 0; i < places.size(); ++i) columns.distances[places[i]] = distances[i];
    } else if (statistics_.comparisons() > kQuickComparisons) {
        const DistanceMeasure measure(statistics_, columns.samples);
        for (const std::size_t place : places)
            columns.distances[place] = measure.distance(*columns.samples[place]);
    }
    return true;
}

void SampleStore::restore(std::vector<Sample> committed, std::vector<double> distances,
                          std::uint64_t nextSerial) {
    SampleStore fresh;
    for (std::size_t i = 0; i < committed.size(); ++i) {
        const Sample& kept = fresh.samples_->emplace_back(committed[i]);
        fresh.statistics_.add(kept);
        append(*fresh.committed_, kept, distances[i]);
    }
    fresh.nextSerial_ = nextSerial;
    *this = std::move(fresh);
}

void SampleStore::setDistances(std::span<const std::uint64_t> serials, std::span<const double> distances) {
    closeGap();
    SampleColumns& columns = writable(committed_);
    // Committed samples are in the order of their serial numbers, so that one walk matches both.
    std::size_t at = 0;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        while (at < serials.size() && serials[at] < columns.samples[i]->serial) ++at;
        if (at < serials.size() && serials[at] == columns.samples[i]->serial)
            columns.distances[i] = distances[at];
    }
}

}  // namespace dravik::engine
