#include "generate/Print.h"

#include <algorithm>
#include <cmath>

namespace dravik {

// Calls `act` with the place and how far it is covered.
template <typename Act>
void Print::along(float x0, float y0, float x1, float y1, float radius, Act act) {
    const float dx = x1 - x0, dy = y1 - y0, length = dx * dx + dy * dy;
    const int top = static_cast<int>(std::floor(std::min(y0, y1) - radius - 1));
    const int bottom = static_cast<int>(std::ceil(std::max(y0, y1) + radius + 1));
    const int left = static_cast<int>(std::floor(std::min(x0, x1) - radius - 1));
    const int right = static_cast<int>(std::ceil(std::max(x0, x1) + radius + 1));
    for (int y = std::max(0, top); y <= std::min(height_ - 1, bottom); ++y)
        for (int x = std::max(0, left); x <= std::min(width_ - 1, right); ++x) {
            const float px = static_cast<float>(x) + 0.5f - x0, py = static_cast<float>(y) + 0.5f - y0;
            const float part = length > 0 ? std::clamp((px * dx + py * dy) / length, 0.0f, 1.0f) : 0.0f;
            const float distance = std::hypot(px - part * dx, py - part * dy);
            const float covered = std::clamp(radius - distance + 0.5f, 0.0f, 1.0f);
            if (covered > 0) act(x, y, covered);
        }
}

void Print::stroke(float x0, float y0, float x1, float y1, float radius, float amount, int owner) {
    along(x0, y0, x1, y1, radius, [&](int x, int y, float covered) { put(x, y, covered * amount, owner); });
}

void Print::wholeStroke(float x0, float y0, float x1, float y1, float radius) {
    along(x0, y0, x1, y1, radius, [&](int x, int y, float covered) { putWhole(x, y, covered); });
}

void Print::scrape(float x0, float y0, float x1, float y1, float radius) {
    along(x0, y0, x1, y1, radius, [&](int x, int y, float covered) {
        float& here = ink_[at(x, y)];
        here = std::min(here, 1 - covered);
        if (here < 0.4f) owners_[at(x, y)] = -1;
    });
}

void Print::spread(float pixels) {
    const bool wider = pixels > 0;
    for (float left = std::abs(pixels); left > 0; left -= 1) {
        const float step = std::min(1.0f, left);
        const std::vector<float> before = ink_;
        const std::vector<int> owned = owners_;
        const auto value = [&](int x, int y) { return inside(x, y) ? before[at(x, y)] : 0.0f; };
        for (int y = 0; y < height_; ++y)
            for (int x = 0; x < width_; ++x) {
                float here = value(x, y);
                for (const auto& [dx, dy] : {std::pair{-1, 0}, {1, 0}, {0, -1}, {0, 1}}) {
                    const float other = value(x + dx, y + dy);
                    if (wider && other * step > here) {
                        here = other * step;
                        if (here > 0.4f && owners_[at(x, y)] < 0)
                            owners_[at(x, y)] = owned[at(x + dx, y + dy)];
                    }
                    if (!wider) here = std::min(here, 1 - (1 - other) * step);
                }
                ink_[at(x, y)] = here;
                if (here < 0.4f) owners_[at(x, y)] = -1;
            }
    }
}

}  // namespace dravik
