#include "generate/Typeface.h"

#include <algorithm>
#include <cmath>

namespace dravik {

Print Typeface::print(const std::vector<std::string>& lines, const PrintStyle& style, Random& random) const {
    const float cap = style.capHeight;
    const float room = 0.8f * cap + 4;
    std::vector<std::vector<float>> places(lines.size());
    float width = 0;
    for (std::size_t l = 0; l < lines.size(); ++l) {
        float x = 0, inkEnd = -1e9f;
        for (const char character : lines[l]) {
            const Extent extent = this->extent(character, style);
            float place = x;
            if (style.cell > 0) place += 0.5f * (style.cell * cap - extent.left - extent.right);
            if (character != ' ' && inkEnd > 0 && random.chance(style.pairTouching))
                place = std::min(place, inkEnd - extent.left - random.between(0.0f, 0.02f) * cap);
            places[l].push_back(place);
            if (character != ' ') inkEnd = place + extent.right;
            x = style.cell > 0 ? x + style.cell * cap : place + extent.advance + style.tracking * cap;
        }
        width = std::max(width, std::max(x, inkEnd));
    }
    const float height = cap * style.lineStep * static_cast<float>(lines.size() - 1) + 1.4f * cap;
    Print print(static_cast<int>(width + 2 * room), static_cast<int>(height + 2 * room));
    print.capHeight = cap;
    for (std::size_t l = 0; l < lines.size(); ++l) {
        const float baseline = room + cap * (1.2f + style.lineStep * static_cast<float>(l));
        print.baselines.push_back(baseline);
        for (std::size_t i = 0; i < lines[l].size(); ++i) {
            if (lines[l][i] == ' ') continue;
            const int owner = static_cast<int>(print.characters.size());
            print.characters.push_back(
                {std::string(1, lines[l][i]), static_cast<int>(l), static_cast<int>(i)});
            draw(print, lines[l][i], room + places[l][i], baseline + style.wander * cap * random.normal(),
                 style, owner, random);
        }
    }
    return print;
}

}  // namespace dravik
