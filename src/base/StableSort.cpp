#include "base/StableSort.h"

#include <numeric>

namespace dravik {

std::vector<std::uint32_t> stableOrder(std::size_t count, const void* context,
                                       bool (*less)(const void*, std::uint32_t, std::uint32_t)) {
    std::vector<std::uint32_t> order(count);
    std::iota(order.begin(), order.end(), 0u);
    std::stable_sort(order.begin(), order.end(),
                     [&](std::uint32_t one, std::uint32_t other) { return less(context, one, other); });
    return order;
}

}  // namespace dravik
