#include "engine/SampleStore.h"

#include <string>
#include <utility>

#include "base/Failure.h"

namespace dravik {
namespace {

void checkCount(std::size_t present, std::size_t coming, const char* kind) {
    if (present + coming > static_cast<std::size_t>(kMostSamples))
        throw Failure(RuntimeError::OutOfMemory, "A font holds at most " + std::to_string(kMostSamples) +
                                                     " " + kind + " samples; " + std::to_string(present) +
                                                     " are there and " + std::to_string(coming) +
                                                     " would come");
}

void append(SampleColumns& columns, const Sample& sample, double distance) {
    columns.samples.push_back(&sample);
    columns.codes.push_back(sample.code);
    columns.distances.push_back(distance);
}

}  // namespace

SampleStore::SampleStore()
    : samples_(std::make_shared<std::deque<Sample>>()),
      uncommitted_(std::make_shared<SampleColumns>()),
      committed_(std::make_shared<SampleColumns>()) {
    uncommitted_->owner = committed_->owner = samples_;
}

SampleColumns& SampleStore::writable(std::shared_ptr<SampleColumns>& columns) {
    if (columns.use_count() > 1) columns = std::make_shared<SampleColumns>(*columns);
    columns->owner = samples_;
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
    checkCount(uncommitted_->size(), samples.size(), "uncommitted");
    if (samples.empty()) return;
    compact(samples.size());
    SampleColumns& columns = writable(uncommitted_);
    const DistanceMeasure measure(statistics_);
    for (Sample& sample : samples) {
        sample.serial = nextSerial_++;
        const Sample& kept = samples_->emplace_back(sample);
        append(columns, kept, measure.distance(kept, false));
    }
}

void SampleStore::commit() {
    checkCount(committed_->size(), uncommitted_->size(), "committed");
    if (uncommitted_->size() == 0) return;
    const SampleColumnsPtr coming = uncommitted_;
    uncommitted_ = std::make_shared<SampleColumns>();
    uncommitted_->owner = samples_;
    for (const Sample* sample : coming->samples) statistics_.add(*sample);
    const DistanceMeasure measure(statistics_);
    SampleColumns& columns = writable(committed_);
    for (const Sample* sample : coming->samples) append(columns, *sample, measure.distance(*sample, true));
}

void SampleStore::remove(SampleKind kind, std::size_t place) {
    auto& list = kind == SampleKind::Committed ? committed_ : uncommitted_;
    if (place >= list->size()) return;
    SampleColumns& columns = writable(list);
    const auto at = static_cast<std::ptrdiff_t>(place);
    if (kind == SampleKind::Committed) statistics_.remove(*columns.samples[place]);
    columns.samples.erase(columns.samples.begin() + at);
    columns.codes.erase(columns.codes.begin() + at);
    columns.distances.erase(columns.distances.begin() + at);
}

void SampleStore::removeUncommitted() {
    uncommitted_ = std::make_shared<SampleColumns>();
    uncommitted_->owner = samples_;
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
    SampleColumns& columns = writable(committed_);
    // Committed samples are in the order of their serial numbers, so that one walk matches both.
    std::size_t at = 0;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        while (at < serials.size() && serials[at] < columns.samples[i]->serial) ++at;
        if (at < serials.size() && serials[at] == columns.samples[i]->serial)
            columns.distances[i] = distances[at];
    }
}

}  // namespace dravik
