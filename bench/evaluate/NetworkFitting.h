// Fits a RectifiedNetwork: Adam on the logistic loss of each row, and where rows compete, on that of a right
// one being the likeliest of its group as well; steps fall to nothing along a cosine.
#pragma once

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <random>
#include <vector>

#include "engine/segmentation/RectifiedNetwork.h"

namespace dravik {

using namespace engine;

template <std::size_t Traits>
struct FitGroup {
    std::vector<std::array<double, Traits>> rows;
    std::vector<bool> right;
};

struct FitSettings {
    int rounds = 120;
    double rate = 0.01;
    double decay = 1e-4;
    double competition = 0;  // weight of the loss of the group beside that of its rows
    std::uint32_t seed = 1;
};

template <typename Network>
Network fitted(std::vector<FitGroup<Network::kTraits>> groups, const FitSettings& settings) {
    constexpr std::size_t n = Network::kTraits, each = n + 2, all = Network::kUnits * each + 1,
                          last = all - 1;
    // Traits are brought to one spread; that goes into the weights at the end.
    std::array<double, n> mean{}, spread{};
    double count = 0;
    for (const auto& group : groups) count += static_cast<double>(group.rows.size());
    for (std::size_t i = 0; i < n; ++i) {
        for (const auto& group : groups)
            for (const auto& row : group.rows) mean[i] += row[i] / count;
        for (const auto& group : groups)
            for (const auto& row : group.rows) spread[i] += std::pow(row[i] - mean[i], 2) / count;
        spread[i] = std::sqrt(spread[i]) + 1e-3;
        for (auto& group : groups)
            for (auto& row : group.rows) row[i] = (row[i] - mean[i]) / spread[i];
    }
    std::vector<double> weights(all), slope(all), first(all), second(all);
    std::mt19937 random(settings.seed);
    for (double& weight : weights) weight = 0.5 * (static_cast<double>(random()) / 4294967296.0 - 0.5);
    std::vector<std::array<double, Network::kUnits>> active;
    std::vector<double> odds, errors;
    const std::size_t batch =
        std::max<std::size_t>(1, static_cast<std::size_t>(32 * static_cast<double>(groups.size()) / count));
    const double steps =
        settings.rounds * std::ceil(static_cast<double>(groups.size()) / static_cast<double>(batch));
    double step = 0;
    for (int round = 0; round < settings.rounds; ++round) {
        for (std::size_t i = groups.size() - 1; i > 0; --i) std::swap(groups[i], groups[random() % (i + 1)]);
        for (std::size_t from = 0; from < groups.size(); from += batch) {
            std::fill(slope.begin(), slope.end(), 0.0);
            for (std::size_t g = from; g < std::min(groups.size(), from + batch); ++g) {
                const auto& group = groups[g];
                active.assign(group.rows.size(), {});
                odds.assign(group.rows.size(), weights[last]);
                errors.assign(group.rows.size(), 0);
                double most = -1e9;
                for (std::size_t r = 0; r < group.rows.size(); ++r) {
                    for (std::size_t u = 0; u < Network::kUnits; ++u) {
                        const double* w = &weights[u * each];
                        double sum = w[n];
                        for (std::size_t i = 0; i < n; ++i) sum += w[i] * group.rows[r][i];
                        active[r][u] = std::max(0.0, sum);
                        odds[r] += w[n + 1] * active[r][u];
                    }
                    most = std::max(most, odds[r]);
                    errors[r] = 1 / (1 + std::exp(-odds[r])) - (group.right[r] ? 1 : 0);
                }
                double sum = 0, right = 0;
                for (std::size_t r = 0; r < odds.size(); ++r) {
                    sum += std::exp(odds[r] - most);
                    right += group.right[r] ? std::exp(odds[r] - most) : 0;
                }
                if (right > 0 && right < sum)
                    for (std::size_t r = 0; r < odds.size(); ++r) {
                        const double e = std::exp(odds[r] - most);
                        errors[r] += settings.competition * (e / sum - (group.right[r] ? e / right : 0));
                    }
                for (std::size_t r = 0; r < odds.size(); ++r) {
                    const double error = errors[r] / 32;
                    slope[last] += error;
                    for (std::size_t u = 0; u < Network::kUnits; ++u) {
                        if (active[r][u] <= 0) continue;
                        double* s = &slope[u * each];
                        const double back = error * weights[u * each + n + 1];
                        for (std::size_t i = 0; i < n; ++i) s[i] += back * group.rows[r][i];
                        s[n] += back;
                        s[n + 1] += error * active[r][u];
                    }
                }
            }
            ++step;
            const double rate =
                settings.rate * 0.5 * (1 + std::cos(3.14159265 * std::min(1.0, step / steps)));
            for (std::size_t i = 0; i < all; ++i) {
                const double g = slope[i] + settings.decay * weights[i];
                first[i] = 0.9 * first[i] + 0.1 * g;
                second[i] = 0.999 * second[i] + 0.001 * g * g;
                weights[i] -= rate * (first[i] / (1 - std::pow(0.9, step))) /
                              (std::sqrt(second[i] / (1 - std::pow(0.999, step))) + 1e-8);
            }
        }
    }
    Network network;
    network.bias = static_cast<float>(weights[last]);
    for (std::size_t u = 0; u < Network::kUnits; ++u) {
        const double* w = &weights[u * each];
        double bias = w[n];
        for (std::size_t i = 0; i < n; ++i) {
            network.units[u].weights[i] = static_cast<float>(w[i] / spread[i]);
            bias -= w[i] / spread[i] * mean[i];
        }
        network.units[u].bias = static_cast<float>(bias);
        network.units[u].share = static_cast<float>(w[n + 1]);
    }
    return network;
}

// As its source file has it.
template <typename Network>
void printNetwork(const Network& network) {
    const auto number = [](float value) {
        char text[32];
        std::snprintf(text, sizeof text, "%.4g", static_cast<double>(value));
        std::string result = text;
        if (result.find_first_of(".e") == std::string::npos) result += ".0";
        return result + "f";
    };
    std::printf("    %s,\n    {{\n", number(network.bias).c_str());
    for (const auto& unit : network.units) {
        std::printf("        {{");
        for (std::size_t i = 0; i < unit.weights.size(); ++i)
            std::printf("%s%s", i ? ", " : "", number(unit.weights[i]).c_str());
        std::printf("}, %s, %s},\n", number(unit.bias).c_str(), number(unit.share).c_str());
    }
    std::printf("    }}};\n");
}

}  // namespace dravik
