#include "generate/Scene.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace dravik {
namespace {

constexpr int kNobody = -1;  // owns what is no character

struct Area {
    float left, top, right, bottom;
    float width() const { return right - left; }
    float height() const { return bottom - top; }
};

void fill(Print& print, const Area& area, float amount) {
    for (int y = static_cast<int>(area.top); y < static_cast<int>(area.bottom); ++y)
        for (int x = static_cast<int>(area.left); x < static_cast<int>(area.right); ++x)
            print.put(x, y, amount, kNobody);
}

Area areaOf(const Print& print) {
    Area area{1e9f, 1e9f, 0, 0};
    for (int y = 0; y < print.height(); ++y)
        for (int x = 0; x < print.width(); ++x)
            if (print.owner(x, y) >= 0) {
                area.left = std::min(area.left, static_cast<float>(x));
                area.top = std::min(area.top, static_cast<float>(y));
                area.right = std::max(area.right, static_cast<float>(x + 1));
                area.bottom = std::max(area.bottom, static_cast<float>(y + 1));
            }
    return area;
}

// Bars of one to four modules with gaps of one to four.
void barcode(Print& print, const Area& text, Random& random) {
    const float cap = print.capHeight, module = std::max(1.5f, random.between(0.07f, 0.16f) * cap);
    const float height = random.between(1.2f, 3.5f) * cap, gap = random.between(0.5f, 1.3f) * cap;
    const float width = std::max(30 * module, random.between(0.6f, 1.2f) * text.width());
    const float left = text.left + random.between(-0.1f, 0.4f) * (text.width() - width);
    const float top = random.chance(0.7f) ? text.top - gap - height : text.bottom + gap;
    for (float x = left; x < left + width;) {
        const float bar = module * static_cast<float>(random.whole(1, 4));
        fill(print, {x, top, std::min(x + bar, left + width), top + height}, 1);
        x += bar + module * static_cast<float>(random.whole(1, 4));
    }
}

// Squares, half of them printed, inside a border of which two sides are solid.
void squares(Print& print, const Area& text, Random& random) {
    const float cap = print.capHeight, module = std::max(2.0f, random.between(0.12f, 0.35f) * cap);
    const int count = random.whole(10, 22);
    const float side = module * static_cast<float>(count), gap = random.between(0.8f, 2.0f) * cap;
    const float left = random.chance(0.5f) ? text.left - gap - side : text.right + gap;
    const float top = 0.5f * (text.top + text.bottom - side);
    for (int r = 0; r < count; ++r)
        for (int c = 0; c < count; ++c) {
            const bool solid = c == 0 || r == count - 1;
            const bool timed = (r == 0 && c % 2 == 0) || (c == count - 1 && r % 2 == 1);
            const bool inside = c > 0 && r > 0 && c < count - 1 && r < count - 1;
            if (!solid && !timed && !(inside && random.chance(0.5f))) continue;
            const float x = left + module * static_cast<float>(c), y = top + module * static_cast<float>(r);
            fill(print, {x, y, x + module, y + module}, 1);
        }
}

void frame(Print& print, const Area& text, Random& random) {
    const float cap = print.capHeight, out = random.between(0.5f, 1.2f) * cap;
    const float pen = random.between(0.02f, 0.07f) * cap + 0.5f, amount = random.between(0.6f, 1.0f);
    const float l = text.left - out, t = text.top - out, r = text.right + out, b = text.bottom + out;
    print.stroke(l, t, r, t, pen, amount, kNobody);
    print.stroke(r, t, r, b, pen, amount, kNobody);
    print.stroke(r, b, l, b, pen, amount, kNobody);
    print.stroke(l, b, l, t, pen, amount, kNobody);
}

// Filled and hollow shapes, some overlapping.
void logo(Print& print, const Area& text, Random& random) {
    const float cap = print.capHeight, size = random.between(1.5f, 4.0f) * cap;
    const float gap = random.between(0.8f, 2.0f) * cap;
    const bool beside = random.chance(0.6f);
    const float x = beside ? (random.chance(0.5f) ? text.left - gap - size : text.right + gap)
                           : random.between(text.left, std::max(text.left, text.right - size));
    const float y = beside ? 0.5f * (text.top + text.bottom - size) : text.top - gap - size;
    const int shapes = random.whole(1, 3);
    for (int i = 0; i < shapes; ++i) {
        const float u = x + random.between(0.25f, 0.75f) * size, v = y + random.between(0.25f, 0.75f) * size;
        const float reach = random.between(0.15f, 0.4f) * size;
        switch (random.whole(0, 2)) {
            case 0:
                print.stroke(u, v, u, v, reach, 1, kNobody);
                break;
            case 1:
                for (int part = 0; part < 24; ++part) {
                    const float a = 0.2618f * static_cast<float>(part), b = a + 0.2618f;
                    print.stroke(u + reach * std::cos(a), v + reach * std::sin(a), u + reach * std::cos(b),
                                 v + reach * std::sin(b), 0.12f * reach + 1, 1, kNobody);
                }
                break;
            default:
                for (float down = -reach; down < reach; down += 1)
                    print.stroke(u - 0.5f * (down + reach), v + down, u + 0.5f * (down + reach), v + down,
                                 0.6f, 1, kNobody);
        }
    }
}

void hole(Print& print, const Area& text, Random& random) {
    const float cap = print.capHeight, reach = random.between(0.8f, 2.5f) * cap;
    const float gap = random.between(0.6f, 1.8f) * cap + reach;
    const bool left = random.chance(0.5f);
    const float x = left ? text.left - gap : text.right + gap;
    const float y = random.between(text.top, text.bottom);
    print.stroke(x, y, x, y, reach, random.between(0.5f, 1.0f), kNobody);
}

// Long straight lines, as of an edge or a seam.
void edges(Print& print, const Area& text, Random& random) {
    const float cap = print.capHeight, w = static_cast<float>(print.width());
    const int count = random.whole(1, 2);
    for (int i = 0; i < count; ++i) {
        const float away = random.between(1.0f, 2.5f) * cap, turn = random.between(-0.05f, 0.05f) * w;
        const float y = random.chance(0.5f) ? text.top - away : text.bottom + away;
        print.stroke(0, y - turn, w, y + turn, random.between(0.02f, 0.1f) * cap + 0.5f,
                     random.between(0.4f, 1.0f), kNobody);
    }
}

}  // namespace

Conditions sceneConditions(Random& random, bool dots) {
    Conditions c = learningConditions(random, dots);
    View& view = c.view;
    c.tier = random.chance(0.5f) ? Tier::Clean : Tier::Typical;
    c.lines = random.of(std::vector<int>{1, 1, 2, 2, 3, 4});
    c.style.capHeight = random.size(dots ? 26.0f : 18.0f, 60);
    c.style.tracking = random.between(0.02f, 0.2f);
    view.angle = random.chance(0.3f)    ? random.between(-2, 2)
                 : random.chance(0.85f) ? random.between(-25, 25)
                                        : random.between(-45, 45);
    view.tags.emplace_back(std::abs(view.angle) > 25  ? "steep"
                           : std::abs(view.angle) > 6 ? "turned"
                                                      : "upright");
    for (float* margin : {&view.marginLeft, &view.marginRight, &view.marginTop, &view.marginBottom})
        *margin = random.between(2, 9);
    if (random.chance(0.3f)) view.brushed = random.between(1, 0.06f * view.contrast);
    if (random.chance(0.2f)) view.mottled = random.between(1, 0.06f * view.contrast);
    if (random.chance(0.3f)) view.specks = random.whole(2, 30);
    if (random.chance(0.25f)) view.scratches = random.whole(1, 4);
    if (random.chance(0.2f)) view.shadow = random.between(0.15f, 0.4f);
    return c;
}

Print withSurroundings(const Print& print, std::vector<std::string>& tags, Random& random) {
    const int room = static_cast<int>(9 * print.capHeight);
    Print scene(print.width() + 2 * room, print.height() + 2 * room);
    scene.capHeight = print.capHeight;
    scene.characters = print.characters;
    for (const float baseline : print.baselines)
        scene.baselines.push_back(baseline + static_cast<float>(room));
    for (int y = 0; y < print.height(); ++y)
        for (int x = 0; x < print.width(); ++x)
            scene.put(x + room, y + room, print.ink(x, y), print.owner(x, y));
    const Area text = areaOf(scene);
    using Draw = void (*)(Print&, const Area&, Random&);
    const std::array<std::pair<const char*, Draw>, 6> things = {{{"barcode", barcode},
                                                                 {"squares", squares},
                                                                 {"framed", frame},
                                                                 {"logo", logo},
                                                                 {"hole", hole},
                                                                 {"edges", edges}}};
    std::array<bool, things.size()> taken{};
    for (int count = random.whole(0, 3); count > 0; --count) {
        const std::size_t which =
            static_cast<std::size_t>(random.whole(0, static_cast<int>(things.size()) - 1));
        if (std::exchange(taken[which], true)) continue;
        things[which].second(scene, text, random);
        tags.emplace_back(things[which].first);
    }
    return scene;
}

}  // namespace dravik
