// Sorting that keeps equal elements in their order, by one function for elements of every type. The standard
// library makes its sort anew for each type, kilobytes of code each time; this one moves each element once.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <utility>
#include <vector>

namespace dravik {

// The places from 0 to `count` in their new order. `less` is given `context` and two places.
std::vector<std::uint32_t> stableOrder(std::size_t count, const void* context,
                                       bool (*less)(const void* context, std::uint32_t one,
                                                    std::uint32_t other));

template <typename Iterator, typename Less>
void stableSort(Iterator first, Iterator last, Less less) {
    const auto isLess = [&](std::uint32_t one, std::uint32_t other) {
        return less(first[one], first[other]);
    };
    using Context = decltype(isLess);
    const std::vector<std::uint32_t> order =
        stableOrder(static_cast<std::size_t>(last - first), &isLess,
                    [](const void* context, std::uint32_t one, std::uint32_t other) {
                        return (*static_cast<const Context*>(context))(one, other);
                    });
    std::vector<typename std::iterator_traits<Iterator>::value_type> sorted;
    sorted.reserve(order.size());
    for (const std::uint32_t place : order) sorted.push_back(std::move(first[place]));
    std::move(sorted.begin(), sorted.end(), first);
}

}  // namespace dravik
