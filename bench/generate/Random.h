// Random choices that come out the same with every standard library, so that a seed names one set of images.
#pragma once

#include <cmath>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace dravik {

class Random {
  public:
    explicit Random(std::uint32_t seed) : engine_(seed) {}

    // 0 to less than 1.
    float share() { return static_cast<float>(engine_() >> 8) * (1.0f / 16777216.0f); }
    float between(float low, float high) { return low + (high - low) * share(); }
    // Evenly on a logarithmic scale, for sizes.
    float size(float low, float high) { return low * std::pow(high / low, share()); }
    int whole(int low, int high) {
        return low + static_cast<int>(share() * static_cast<float>(high - low + 1));
    }
    bool chance(float probability) { return share() < probability; }
    // Mean 0, deviation 1; the sum of four even values is near enough to normal and quick.
    float normal() { return (share() + share() + share() + share() - 2) * 1.7320508f; }
    template <typename T>
    const T& of(const std::vector<T>& choices) {
        return choices[static_cast<std::size_t>(whole(0, static_cast<int>(choices.size()) - 1))];
    }
    char of(const std::string& choices) {
        return choices[static_cast<std::size_t>(whole(0, static_cast<int>(choices.size()) - 1))];
    }

  private:
    std::mt19937 engine_;
};

}  // namespace dravik
