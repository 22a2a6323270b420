#include "Ranking.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <random>
#include <set>

namespace dravik {

using namespace engine;

Planted planted(std::vector<Sample> samples, double share, std::uint32_t seed) {
    std::mt19937 random(seed);
    std::set<std::int32_t> distinct;
    for (const Sample& sample : samples) distinct.insert(sample.code);
    const std::vector<std::int32_t> codes(distinct.begin(), distinct.end());
    Planted result{std::move(samples), {}, 0};
    result.wrong.resize(result.samples.size());
    const auto wanted =
        static_cast<std::size_t>(std::lround(share * static_cast<double>(result.samples.size())));
    while (result.count < wanted) {
        const std::size_t place = random() % result.samples.size();
        const std::int32_t code = codes[random() % codes.size()];
        if (result.wrong[place] || code == result.samples[place].code) continue;
        result.wrong[place] = true;
        result.samples[place].code = code;
        ++result.count;
    }
    return result;
}

Ranking ranking(const std::vector<double>& values, const Planted& labels) {
    std::vector<std::size_t> order(values.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::sort(order.begin(), order.end(),
              [&](std::size_t a, std::size_t b) { return values[a] < values[b]; });
    // Samples of equal value share the middle of their ranks, and the places at the edge.
    const double wrong = static_cast<double>(labels.count),
                 right = static_cast<double>(values.size()) - wrong;
    double ranks = 0, found = 0;
    for (std::size_t from = 0; from < order.size();) {
        std::size_t to = from;
        double here = 0;
        for (; to < order.size() && values[order[to]] == values[order[from]]; ++to)
            here += labels.wrong[order[to]];
        ranks += here * 0.5 * static_cast<double>(from + to + 1);
        const std::size_t edge = order.size() - labels.count;
        if (to > edge)
            found += here * static_cast<double>(to - std::max(from, edge)) / static_cast<double>(to - from);
        from = to;
    }
    return {(ranks - wrong * (wrong + 1) / 2) / (wrong * right), found / wrong};
}

}  // namespace dravik
