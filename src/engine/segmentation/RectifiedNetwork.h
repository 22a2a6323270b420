// A small network of one hidden layer of rectified units, whose weights are constants of the program: log
// odds from a handful of traits. Fitted on generated images by the evaluation tool.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>

namespace dravik::engine {

template <std::size_t Traits, std::size_t Units>
struct RectifiedNetwork {
    static constexpr std::size_t kTraits = Traits, kUnits = Units;
    struct Unit {
        std::array<float, Traits> weights{};
        float bias = 0;
        float share = 0;  // of the log odds
    };

    float bias = 0;
    std::array<Unit, Units> units{};

    double operator()(const std::array<double, Traits>& traits) const {
        double odds = static_cast<double>(bias);
        for (const Unit& unit : units) {
            double sum = static_cast<double>(unit.bias);
            for (std::size_t i = 0; i < Traits; ++i) sum += static_cast<double>(unit.weights[i]) * traits[i];
            odds += static_cast<double>(unit.share) * std::max(0.0, sum);
        }
        return odds;
    }
};

}  // namespace dravik::engine
