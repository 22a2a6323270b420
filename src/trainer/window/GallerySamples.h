// Which samples of a font a gallery shows and in which order: those of one character, of all, or some that
// were pointed at elsewhere; the largest Distance first, as what looks least like its own character is what
// to look at.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "engine/embedded/HeldOutCheck.h"
#include "engine/font/SampleStore.h"
#include "ui/PictureGrid.h"

namespace dravik::trainer {

// Distances from this on are drawn as a warning: the sample looks as much like another character.
constexpr double kWarningDistance = 0.5;

// What is to be shown.
struct ShownSamples {
    enum class Kind { All, Character, Range, Numbers, Misread };
    Kind kind = Kind::All;
    std::int32_t code = 0;                 // Character and Range
    double lower = 0, upper = 0;           // Range: Distances, both included
    std::vector<std::uint64_t> serials{};  // Numbers, ascending
    bool operator==(const ShownSamples&) const = default;
};

class GallerySamples : public ui::PictureSource {
  public:
    // Committed samples, not null. `misread` are those of the last held-out check, in the order in which they
    // are shown.
    GallerySamples(engine::SampleColumnsPtr samples, const ShownSamples& shown,
                   std::span<const engine::MisreadSample> misread = {});

    int count() const override { return static_cast<int>(places_.size()); }
    ui::PictureItem item(int index) const override;

    // Among all samples, from 0.
    std::size_t placeOf(int index) const { return places_[static_cast<std::size_t>(index)]; }
    const engine::Sample& sample(int index) const { return *samples_->samples[placeOf(index)]; }

  private:
    std::optional<std::uint32_t> placeOfSerial(std::uint64_t serial) const;

    engine::SampleColumnsPtr samples_;
    std::vector<std::uint32_t> places_;
    std::vector<std::int32_t> readAs_;  // of each place, for misread ones
};

}  // namespace dravik::trainer
