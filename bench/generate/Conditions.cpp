#include "generate/Conditions.h"

#include <algorithm>

namespace dravik {

using namespace engine;
namespace {

void tag(Conditions& conditions, const char* name) {
    conditions.view.tags.emplace_back(name);
}

// Does something to some images, and names what was done.
template <typename Change>
void sometimes(Conditions& conditions, Random& random, float probability, const char* name, Change change) {
    if (!random.chance(probability)) return;
    change();
    tag(conditions, name);
}

void levels(View& view, Random& random, float low, float high) {
    view.darkPrint = random.chance(0.55f);
    view.contrast = random.between(low, high);
    const float base = random.between(12, 243 - view.contrast);
    view.paper = view.darkPrint ? base + view.contrast : base;
}

void margins(Conditions& conditions, Random& random) {
    View& view = conditions.view;
    float low = 0.4f, high = 1.5f;
    const float kind = random.share();
    if (kind < 0.12f) {
        low = 0.12f;
        high = 0.35f;
        tag(conditions, "tight");
    } else if (kind > 0.86f) {
        low = 1.5f;
        high = 6;
        tag(conditions, "wide");
    }
    for (float* margin : {&view.marginLeft, &view.marginRight, &view.marginTop, &view.marginBottom})
        *margin = random.between(low, high);
}

void dotStyle(PrintStyle& style, Tier tier, Random& random) {
    style.dot = random.between(0.5f, 1.15f);
    style.dotStretch = random.between(0.85f, 1.15f);
    style.dotFade = tier == Tier::Clean ? 0.1f : 0.3f;
    style.dotJitter = tier == Tier::Clean ? random.between(0, 0.04f) : random.between(0, 0.1f);
    style.dotMissing = tier == Tier::Clean     ? 0
                       : tier == Tier::Typical ? random.between(0, 0.02f)
                                               : random.between(0, 0.07f);
    style.tracking = random.chance(0.4f) ? random.between(0, 0.25f) : 0;
}

void typicalWear(Conditions& c, Random& random) {
    View& view = c.view;
    view.gradient = random.between(-0.35f, 0.35f);
    view.vignette = random.chance(0.3f) ? random.between(0, 0.25f) : 0;
    sometimes(c, random, 0.3f, "brushed", [&] { view.brushed = random.between(1, 0.07f * view.contrast); });
    sometimes(c, random, 0.15f, "mottled", [&] { view.mottled = random.between(1, 0.08f * view.contrast); });
    sometimes(c, random, 0.2f, "spot", [&] { view.spot = random.between(-0.35f, 0.35f); });
    sometimes(c, random, 0.15f, "jpeg", [&] { view.jpeg = random.whole(45, 90); });
    if (random.chance(0.2f)) {
        c.spread = random.between(-0.015f, 0.03f);
        tag(c, c.spread < 0 ? "thin" : "spread");
    }
    if (random.chance(0.12f)) {
        view.surround = random.chance(0.5f) ? random.between(0, 30) : random.between(220, 255);
        tag(c, "surround");
    } else if (random.chance(0.1f)) {
        view.frame = random.between(0.5f, 1.1f);
        tag(c, "frame");
    }
    sometimes(c, random, 0.1f, "specks", [&] { view.specks = random.whole(1, 10); });
}

void hardWear(Conditions& c, Random& random) {
    typicalWear(c, random);
    View& view = c.view;
    view.gradient = random.between(-0.6f, 0.6f);
    sometimes(c, random, 0.2f, "shadow", [&] { view.shadow = random.between(0.2f, 0.5f); });
    sometimes(c, random, 0.25f, "broken", [&] { c.breaks = random.whole(2, 10); });
    sometimes(c, random, 0.2f, "touch", [&] { c.style.pairTouching = 0.2f; });
    sometimes(c, random, 0.3f, "specks", [&] { view.specks = random.whole(5, 40); });
    sometimes(c, random, 0.2f, "scratches", [&] { view.scratches = random.whole(1, 4); });
    sometimes(c, random, 0.15f, "jpeg", [&] { view.jpeg = random.whole(15, 45); });
    sometimes(c, random, 0.15f, "wander", [&] { c.style.wander = random.between(0.01f, 0.04f); });
}

// A thresholded picture: black and white only, its edges rough.
void sheet(Conditions& c, Random& random, bool dots) {
    View& view = c.view;
    view.binary = true;
    view.paper = view.darkPrint ? 200.0f : 55.0f;
    view.contrast = 145;
    view.blur = random.between(0.01f, 0.04f);
    view.noise = random.between(5, c.tier == Tier::Hard ? 40 : 25);
    if (!dots) {
        c.style.cell = random.between(0.95f, 1.4f);
        c.style.wander = random.chance(0.5f) ? random.between(0, 0.06f) : 0;
        c.style.lineStep = random.between(1.25f, 2.0f);
    }
    tag(c, "binary");
}

// Marks that wear and careless printing leave, each with its own probability.
void usualWear(Conditions& c, Random& random) {
    View& view = c.view;
    const bool hard = c.tier == Tier::Hard;
    view.gradient = random.between(-0.45f, 0.45f);
    sometimes(c, random, 0.45f, "brushed",
              [&] { view.brushed = random.between(1, (hard ? 0.09f : 0.06f) * view.contrast); });
    sometimes(c, random, 0.3f, "spot", [&] { view.spot = random.between(-0.35f, 0.35f); });
    if (random.chance(hard ? 0.2f : 0.4f)) {
        c.spread = random.between(-0.015f, 0.025f);
        tag(c, c.spread < 0 ? "thin" : "spread");
    }
    sometimes(c, random, hard ? 0.5f : 0.1f, "broken", [&] { c.breaks = random.whole(1, hard ? 6 : 2); });
    if (!hard) return;
    sometimes(c, random, 0.35f, "specks", [&] { view.specks = random.whole(3, 20); });
    sometimes(c, random, 0.15f, "touch", [&] { c.style.pairTouching = 0.2f; });
}

}  // namespace

Conditions usualConditions(Random& random, bool dots) {
    Conditions c;
    View& view = c.view;
    const float kind = random.share();
    c.tier = kind < 0.4f ? Tier::Clean : kind < 0.83f ? Tier::Typical : Tier::Hard;
    c.lines = random.chance(0.75f) ? 1 : 2;
    c.style.capHeight = random.size(20, 45);
    c.style.lineStep = random.between(1.5f, 2.0f);
    c.style.pen = random.between(0.09f, 0.17f);
    c.style.tracking = random.chance(0.4f) ? random.between(0, 0.15f) : 0;
    if (dots) {
        dotStyle(c.style, c.tier, random);
        c.style.dot = random.between(0.7f, 1.1f);
    }
    for (float* margin : {&view.marginLeft, &view.marginRight, &view.marginTop, &view.marginBottom})
        *margin = random.between(0.6f, 1.8f);
    switch (c.tier) {
        case Tier::Clean:
            levels(view, random, 100, 215);
            view.angle = random.between(-1, 1);
            view.blur = random.between(0, 0.02f);
            view.noise = random.between(0, 3);
            view.gradient = random.between(-0.1f, 0.1f);
            break;
        case Tier::Typical:
            levels(view, random, 60, 160);
            view.angle = random.between(-3, 3);
            view.blur = random.between(0.01f, 0.04f);
            view.noise = random.between(1, 6);
            usualWear(c, random);
            break;
        case Tier::Hard:
            levels(view, random, 35, 80);
            view.angle = random.between(-3, 3);
            view.blur = random.between(0.02f, 0.05f);
            view.noise = random.between(4, std::min(12.0f, 0.2f * view.contrast));
            usualWear(c, random);
            break;
    }
    return c;
}

Conditions extremeConditions(Random& random, bool dots) {
    Conditions c;
    View& view = c.view;
    const float kind = random.share();
    c.tier = kind < 0.35f ? Tier::Clean : kind < 0.72f ? Tier::Typical : Tier::Hard;
    c.lines = random.chance(0.68f) ? 1 : random.chance(0.8f) ? 2 : random.whole(3, 5);
    c.style.lineStep = random.between(1.45f, 2.1f);
    c.style.pen = random.between(0.08f, 0.18f);
    c.style.tracking = random.chance(0.3f) ? random.between(0, 0.2f) : 0;
    if (dots) dotStyle(c.style, c.tier, random);
    view.slant = random.chance(0.15f) ? random.between(-0.1f, 0.25f) : 0;
    if (view.slant != 0) tag(c, "slant");
    margins(c, random);
    float least = 12, most = 70;
    switch (c.tier) {
        case Tier::Clean:
            least = 20, most = 200;
            levels(view, random, 90, 215);
            view.angle = random.between(-1, 1);
            view.blur = random.between(0, 0.02f);
            view.noise = random.between(0, 3);
            view.gradient = random.between(-0.1f, 0.1f);
            break;
        case Tier::Typical:
            least = 15, most = 100;
            levels(view, random, 50, 160);
            view.angle = random.between(-2, 2);
            view.blur = random.between(0.01f, 0.04f);
            view.noise = random.between(1, std::min(8.0f, 0.1f * view.contrast));
            typicalWear(c, random);
            break;
        case Tier::Hard:
            levels(view, random, 24, 80);
            view.angle = random.between(-3, 3);
            view.blur = random.between(0.02f, 0.06f);
            view.noise = random.between(2, std::min(14.0f, 0.22f * view.contrast));
            hardWear(c, random);
            break;
    }
    c.style.capHeight = random.size(dots ? std::max(22.0f, least) : least, most);
    if (random.chance(0.08f)) sheet(c, random, dots);
    return c;
}

Conditions learningConditions(Random& random, bool dots) {
    Conditions c;
    View& view = c.view;
    const bool clean = random.chance(0.5f);
    c.tier = clean ? Tier::Clean : Tier::Typical;
    c.style.capHeight = random.size(dots ? 30 : 24, 70);
    c.style.lineStep = random.between(1.6f, 2.0f);
    c.style.tracking = random.between(0.05f, 0.2f);
    c.style.pen = random.between(0.09f, 0.16f);
    if (dots) dotStyle(c.style, c.tier, random);
    levels(view, random, clean ? 90 : 60, clean ? 200 : 150);
    view.angle = clean ? random.between(-1, 1) : random.between(-2, 2);
    view.blur = random.between(0, clean ? 0.02f : 0.035f);
    view.noise = clean ? random.between(0, 3) : random.between(1, 6);
    view.gradient = random.between(-0.2f, 0.2f);
    return c;
}

void damage(Print& print, const Conditions& conditions, Random& random) {
    const float cap = print.capHeight, w = static_cast<float>(print.width()),
                h = static_cast<float>(print.height());
    print.spread(conditions.spread * cap);
    for (int i = 0; i < conditions.breaks; ++i) {
        const float x = random.between(0, w), y = random.between(0, h),
                    reach = random.between(0.3f, 1.5f) * cap;
        const float turn = random.between(0, 6.2832f);
        print.scrape(x, y, x + reach * std::cos(turn), y + reach * std::sin(turn),
                     random.between(0.008f, 0.03f) * cap);
    }
}

}  // namespace dravik
