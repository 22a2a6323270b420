#include "engine/image/SmallPicture.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <span>

#include "engine/image/Thumbnail.h"

namespace dravik::engine {
namespace {

constexpr int kLevels = 16;
constexpr int kLevelStep = 255 / (kLevels - 1);

// How likely a bit is 0, in 2^12, learnt quickly as there are few of them.
using Likelihood = std::uint16_t;
constexpr int kLikelihoodBits = 12;
constexpr int kLearning = 4;
constexpr std::uint32_t kLeastRange = 1u << 24;

void learn(Likelihood& zero, bool bit) {
    if (bit)
        zero = static_cast<Likelihood>(zero - (zero >> kLearning));
    else
        zero = static_cast<Likelihood>(zero + (((1 << kLikelihoodBits) - zero) >> kLearning));
}

// An arithmetic coder of bits.
class BitEncoder {
  public:
    void code(Likelihood& zero, bool bit) {
        const std::uint32_t bound = (range_ >> kLikelihoodBits) * zero;
        if (bit) {
            low_ += bound;
            range_ -= bound;
        } else {
            range_ = bound;
        }
        learn(zero, bit);
        for (; range_ < kLeastRange; range_ <<= 8) shift();
    }

    // Of all numbers that say the same the one that ends with the most zeros, which need not be there.
    std::vector<std::uint8_t> end() {
        const std::uint64_t last = low_ + range_ - 1;
        int zeros = 32;
        while ((last >> zeros << zeros) < low_) --zeros;
        low_ = last >> zeros << zeros;
        for (int i = 0; i < 4; ++i) shift();
        while (!bytes_.empty() && bytes_.back() == 0) bytes_.pop_back();
        return std::move(bytes_);
    }

  private:
    void shift() {
        if (low_ >> 32)
            for (std::size_t i = bytes_.size(); i-- > 0 && ++bytes_[i] == 0;) continue;
        bytes_.push_back(static_cast<std::uint8_t>(low_ >> 24));
        low_ = (low_ & 0x00FFFFFFu) << 8;
    }

    std::uint64_t low_ = 0;
    std::uint32_t range_ = 0xFFFFFFFFu;
    std::vector<std::uint8_t> bytes_;
};

class BitDecoder {
  public:
    explicit BitDecoder(std::span<const std::uint8_t> bytes) : bytes_(bytes) {
        for (int i = 0; i < 4; ++i) value_ = value_ << 8 | next();
    }

    bool code(Likelihood& zero) {
        const std::uint32_t bound = (range_ >> kLikelihoodBits) * zero;
        const bool bit = value_ >= bound;
        if (bit) {
            value_ -= bound;
            range_ -= bound;
        } else {
            range_ = bound;
        }
        learn(zero, bit);
        for (; range_ < kLeastRange; range_ <<= 8) value_ = value_ << 8 | next();
        return bit;
    }

  private:
    std::uint32_t next() {
        if (bytes_.empty()) return 0;
        const std::uint8_t byte = bytes_.front();
        bytes_ = bytes_.subspan(1);
        return byte;
    }

    std::span<const std::uint8_t> bytes_;
    std::uint32_t range_ = 0xFFFFFFFFu;
    std::uint32_t value_ = 0;
};

// What of a picture is known before a pixel is: a guess of its level, and how much goes on around it.
struct Expected {
    int level = 0;
    std::size_t activity = 0;
};

constexpr std::size_t kActivities = 4;
constexpr std::size_t kSteps = kLevels;

// The likelihoods that both directions learn alike.
struct Likelihoods {
    static constexpr Likelihood kEven = 1 << (kLikelihoodBits - 1);
    using Steps = std::array<Likelihood, kSteps>;
    std::array<Steps, kActivities> steps;  // whether the guess is further off
    std::array<Likelihood, kActivities> sign;

    Likelihoods() {
        for (Steps& one : steps) one.fill(kEven);
        sign.fill(kEven);
    }
};

// Levels row by row.
class Levels {
  public:
    Levels(int width, int height)
        : width_(width), levels_(static_cast<std::size_t>(width) * static_cast<std::size_t>(height)) {}

    std::uint8_t& at(int x, int y) {
        return levels_[static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) +
                       static_cast<std::size_t>(x)];
    }

    // From the pixels on the left, above, and above on the left.
    Expected expected(int x, int y) {
        const int left = x > 0 ? at(x - 1, y) : y > 0 ? at(x, y - 1) : kLevels - 1;
        const int above = y > 0 ? at(x, y - 1) : left;
        const int corner = x > 0 && y > 0 ? at(x - 1, y - 1) : above;
        const int change = std::abs(left - corner) + std::abs(above - corner);
        const std::size_t activity = change == 0 ? 0 : change <= 2 ? 1 : change <= 6 ? 2 : 3;
        if (corner >= std::max(left, above)) return {std::min(left, above), activity};
        if (corner <= std::min(left, above)) return {std::max(left, above), activity};
        return {left + above - corner, activity};
    }

  private:
    int width_;
    std::vector<std::uint8_t> levels_;
};

// The difference between a pixel and its guess: its sign, then one step after the other. Only steps that stay
// within the levels are told.
template <class TellBit>
int differenceOf(const Expected& expected, Likelihoods& likelihoods, TellBit bit) {
    const std::size_t activity = expected.activity;
    if (!bit(likelihoods.steps[activity][0], 0)) return 0;
    const int room[] = {kLevels - 1 - expected.level, expected.level};
    const bool down = room[0] == 0 || (room[1] > 0 && bit(likelihoods.sign[activity], -1));
    int steps = 1;
    while (steps < room[down] && bit(likelihoods.steps[activity][static_cast<std::size_t>(steps)], steps))
        ++steps;
    return down ? -steps : steps;
}

std::vector<std::uint8_t> packed(const GreyImage& image) {
    BitEncoder encoder;
    Likelihoods likelihoods;
    Levels levels(image.width(), image.height());
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const Expected expected = levels.expected(x, y);
            const int level = (image(x, y) + kLevelStep / 2) / kLevelStep;
            const int difference = level - expected.level;
            differenceOf(expected, likelihoods, [&](Likelihood& likelihood, int step) {
                const bool tells = step < 0 ? difference < 0 : std::abs(difference) > step;
                encoder.code(likelihood, tells);
                return tells;
            });
            levels.at(x, y) = static_cast<std::uint8_t>(level);
        }
    return encoder.end();
}

}  // namespace

SmallPicture smallPicture(const GreyImage& image, const Region& box) {
    const int margin = std::max(box.width(), box.height()) / 8 + 1;
    const Region seen{std::max(box.left - margin, 0), std::max(box.top - margin, 0),
                      std::min(box.right + margin, image.width()),
                      std::min(box.bottom + margin, image.height())};
    if (seen.width() <= 0 || seen.height() <= 0) return {};
    const GreyImage part(&image.row(seen.top)[static_cast<std::size_t>(seen.left)], seen.width(),
                         seen.height(), image.width());
    const GreyImage small = thumbnailOf(part, kSmallPictureSide);
    SmallPicture picture{static_cast<std::uint8_t>(small.width()), static_cast<std::uint8_t>(small.height()),
                         packed(small)};
    if (picture.packed.size() > kLongestPackedPicture) return {};
    return picture;
}

GreyImage unpacked(const SmallPicture& picture) {
    GreyImage image(picture.width, picture.height);
    BitDecoder decoder(picture.packed);
    Likelihoods likelihoods;
    Levels levels(image.width(), image.height());
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const Expected expected = levels.expected(x, y);
            const int level =
                expected.level + differenceOf(expected, likelihoods, [&](Likelihood& likelihood, int) {
                    return decoder.code(likelihood);
                });
            levels.at(x, y) = static_cast<std::uint8_t>(level);
            image(x, y) = static_cast<std::uint8_t>(level * kLevelStep);
        }
    return image;
}

}  // namespace dravik::engine
