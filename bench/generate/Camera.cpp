#include "generate/Camera.h"

#include <algorithm>
#include <cmath>

#include "generate/Field.h"

namespace dravik {

using namespace engine;
namespace {

// From the print's points to the image's: a slant and a turn about the print's origin, then a shift.
struct Placement {
    float cosine, sine, slant, shiftX = 0, shiftY = 0;

    explicit Placement(const View& view)
        : cosine(std::cos(view.angle * 0.0174533f)),
          sine(std::sin(view.angle * 0.0174533f)),
          slant(view.slant) {}
    void toImage(float x, float y, float& u, float& v) const {
        const float sx = x - slant * y;
        u = cosine * sx - sine * y + shiftX;
        v = sine * sx + cosine * y + shiftY;
    }
    void toPrint(float u, float v, float& x, float& y) const {
        const float du = u - shiftX, dv = v - shiftY;
        y = -sine * du + cosine * dv;
        x = cosine * du + sine * dv + slant * y;
    }
};

struct Extent {
    float left = 1e9f, top = 1e9f, right = -1e9f, bottom = -1e9f;
    void include(float x, float y) {
        left = std::min(left, x);
        right = std::max(right, x);
        top = std::min(top, y);
        bottom = std::max(bottom, y);
    }
};

template <float (Print::*value)(int, int) const>
float inkAt(const Print& print, float x, float y) {
    const float u = x - 0.5f, v = y - 0.5f, fx = std::floor(u), fy = std::floor(v);
    const int c = static_cast<int>(fx), r = static_cast<int>(fy);
    const float across = u - fx, down = v - fy;
    return ((print.*value)(c, r) * (1 - across) + (print.*value)(c + 1, r) * across) * (1 - down) +
           ((print.*value)(c, r + 1) * (1 - across) + (print.*value)(c + 1, r + 1) * across) * down;
}

void light(Field& field, const View& view, Random& random) {
    const float w = static_cast<float>(field.width), h = static_cast<float>(field.height);
    const float turn = random.between(0, 6.2832f), dx = std::cos(turn), dy = std::sin(turn);
    const float spotX = random.between(0, w), spotY = random.between(0, h),
                reach = random.between(0.15f, 0.5f) * w;
    const float edge = random.between(-0.3f, 0.3f), soft = random.between(0.005f, 0.1f);
    for (int y = 0; y < field.height; ++y)
        for (int x = 0; x < field.width; ++x) {
            const float u = static_cast<float>(x) / w - 0.5f, v = static_cast<float>(y) / h - 0.5f;
            const float along = u * dx + v * dy;
            float factor = 1 + view.gradient * along - view.vignette * 2 * (u * u + v * v);
            if (view.shadow > 0) factor *= 1 - view.shadow / (1 + std::exp(-(along - edge) / soft));
            const float px = (static_cast<float>(x) - spotX) / reach,
                        py = (static_cast<float>(y) - spotY) / reach;
            factor *= 1 + view.spot * std::exp(-px * px - py * py);
            field.at(x, y) *= factor;
        }
}

void texture(Field& field, const View& view, float cap, Random& random) {
    const auto add = [&](float alongRows, float bothWays, float deviation) {
        // Made larger than the image: at the field's own borders filters have less to even out.
        const int room = static_cast<int>(3 * std::max(alongRows, bothWays)) + 2;
        Field texture(field.width + 2 * room, field.height + 2 * room);
        for (float& value : texture.values) value = random.normal();
        texture.smoothRows(alongRows);
        texture.blur(bothWays);
        texture.scaleTo(deviation);
        for (int y = 0; y < field.height; ++y)
            for (int x = 0; x < field.width; ++x) field.at(x, y) += texture.at(x + room, y + room);
    };
    if (view.brushed > 0) add(0.8f * cap, 0, view.brushed);
    if (view.mottled > 0) add(0, random.between(0.1f, 0.8f) * cap, view.mottled);
}

void dirt(Field& field, const View& view, float cap, Random& random) {
    const float w = static_cast<float>(field.width), h = static_cast<float>(field.height);
    const auto mark = [&](float x0, float y0, float x1, float y1, float radius, float level) {
        Print one(field.width, field.height);
        one.stroke(x0, y0, x1, y1, radius, 1, 0);
        const int top = std::max(0, static_cast<int>(std::min(y0, y1) - radius - 2));
        const int bottom = std::min(field.height, static_cast<int>(std::max(y0, y1) + radius + 3));
        for (int y = top; y < bottom; ++y)
            for (int x = 0; x < field.width; ++x) field.at(x, y) += level * one.ink(x, y);
    };
    for (int i = 0; i < view.specks; ++i) {
        const float x = random.between(0, w), y = random.between(0, h);
        mark(x, y, x, y, random.between(0.4f, std::max(0.6f, 0.03f * cap)),
             random.between(0.3f, 1.0f) * view.contrast * (random.chance(0.5f) ? 1.0f : -1.0f));
    }
    for (int i = 0; i < view.scratches; ++i)
        mark(random.between(0, w), random.between(0, h), random.between(0, w), random.between(0, h),
             random.between(0.35f, std::max(0.5f, 0.02f * cap)),
             random.between(0.15f, 0.45f) * view.contrast * (random.chance(0.5f) ? 1.0f : -1.0f));
}

}  // namespace

Picture seen(const Print& print, const View& view, Random& random) {
    const float cap = print.capHeight;
    Placement placement(view);
    Extent ink, inPrint;
    for (int y = 0; y < print.height(); ++y)
        for (int x = 0; x < print.width(); ++x)
            if (print.owner(x, y) >= 0) {
                float u, v;
                placement.toImage(static_cast<float>(x) + 0.5f, static_cast<float>(y) + 0.5f, u, v);
                ink.include(u, v);
                inPrint.include(static_cast<float>(x), static_cast<float>(y));
            }
    placement.shiftX = std::round(view.marginLeft * cap) - ink.left + random.share();
    placement.shiftY = std::round(view.marginTop * cap) - ink.top + random.share();
    Field field(static_cast<int>(ink.right - ink.left + (view.marginLeft + view.marginRight) * cap) + 2,
                static_cast<int>(ink.bottom - ink.top + (view.marginTop + view.marginBottom) * cap) + 2);
    Picture picture;
    picture.whole = GreyImage(field.width, field.height);
    const float printed = view.paper + (view.darkPrint ? -view.contrast : view.contrast);
    const float thick = std::max(0.7f, 0.04f * cap), plate = view.frame > 0 ? 2.2f * view.frame : 0.7f;
    for (int y = 0; y < field.height; ++y)
        for (int x = 0; x < field.width; ++x) {
            float px, py;
            placement.toPrint(static_cast<float>(x) + 0.5f, static_cast<float>(y) + 0.5f, px, py);
            float amount = inkAt<&Print::ink>(print, px, py);
            picture.whole.row(y)[static_cast<std::size_t>(x)] =
                static_cast<std::uint8_t>(std::lround(255 * inkAt<&Print::whole>(print, px, py)));
            // Distance from the box around the print.
            const float outX = std::max({inPrint.left - px, px - inPrint.right, 0.0f});
            const float outY = std::max({inPrint.top - py, py - inPrint.bottom, 0.0f});
            const float out = std::max(outX, outY);
            if (view.frame > 0)
                amount =
                    std::max(amount, std::clamp(thick - std::abs(out - view.frame * cap) + 0.5f, 0.0f, 1.0f));
            float level = view.paper + amount * (printed - view.paper);
            if (view.surround >= 0)
                level += (view.surround - level) * std::clamp(out - plate * cap + 0.5f, 0.0f, 1.0f);
            field.at(x, y) = level;
        }
    texture(field, view, cap, random);
    dirt(field, view, cap, random);
    light(field, view, random);
    field.blur(view.blur * cap);
    for (float& value : field.values) value += view.noise * random.normal();
    if (view.jpeg > 0) field.compress(view.jpeg);
    if (view.binary)
        for (float& value : field.values) value = (value > 0.5f * (view.paper + printed)) ? 255.0f : 0.0f;

    picture.image = field.image();
    picture.characters.resize(print.characters.size());
    std::vector<Extent> extents(print.characters.size());
    for (int y = 0; y < print.height(); ++y)
        for (int x = 0; x < print.width(); ++x)
            if (const int owner = print.owner(x, y); owner >= 0) {
                float u, v;
                placement.toImage(static_cast<float>(x) + 0.5f, static_cast<float>(y) + 0.5f, u, v);
                extents[static_cast<std::size_t>(owner)].include(u, v);
            }
    for (std::size_t i = 0; i < extents.size(); ++i) {
        SeenCharacter& one = picture.characters[i];
        one.printed = print.characters[i];
        one.left = static_cast<int>(std::floor(extents[i].left));
        one.top = static_cast<int>(std::floor(extents[i].top));
        one.right = static_cast<int>(std::ceil(extents[i].right));
        one.bottom = static_cast<int>(std::ceil(extents[i].bottom));
        float x, y, u;
        placement.toPrint(0.5f * (extents[i].left + extents[i].right),
                          0.5f * (extents[i].top + extents[i].bottom), x, y);
        placement.toImage(x, print.baselines[static_cast<std::size_t>(one.printed.line)], u, one.baseline);
    }
    return picture;
}

}  // namespace dravik
