#include "RenderedText.h"

#include <ft2build.h>
#include FT_FREETYPE_H

#include <algorithm>
#include <cmath>
#include <map>
#include <memory>
#include <stdexcept>

namespace dravik {

using namespace engine;
using namespace tool;
namespace {

class FontFace {
  public:
    explicit FontFace(const std::string& file) {
        if (FT_Init_FreeType(&library_) != 0) throw std::runtime_error("FreeType does not start");
        if (FT_New_Face(library_, file.c_str(), 0, &face_) != 0)
            throw std::runtime_error("cannot read font " + file);
        for (const char c : kOverviewCharacters)
            if (FT_Get_Char_Index(face_, static_cast<FT_ULong>(c)) == 0)
                throw std::runtime_error("font " + file + " lacks " + c);
    }
    FontFace(const FontFace&) = delete;
    FontFace& operator=(const FontFace&) = delete;
    ~FontFace() {
        FT_Done_Face(face_);
        FT_Done_FreeType(library_);
    }
    FT_Face get() const { return face_; }

  private:
    FT_Library library_ = nullptr;
    FT_Face face_ = nullptr;
};

struct Canvas {
    int width, height;
    std::vector<float> values;
    Canvas(int w, int h, float value = 0)
        : width(w), height(h), values(static_cast<std::size_t>(w) * static_cast<std::size_t>(h), value) {}
    float& at(int x, int y) {
        return values[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                      static_cast<std::size_t>(x)];
    }
};

void blur(Canvas& canvas, float sigma) {
    if (sigma < 0.1f) return;
    const int reach = static_cast<int>(std::ceil(3 * sigma));
    std::vector<float> weights;
    float sum = 0;
    for (int i = -reach; i <= reach; ++i) {
        weights.push_back(std::exp(-0.5f * static_cast<float>(i * i) / (sigma * sigma)));
        sum += weights.back();
    }
    for (const bool across : {true, false}) {
        Canvas out(canvas.width, canvas.height);
        for (int y = 0; y < canvas.height; ++y)
            for (int x = 0; x < canvas.width; ++x) {
                float value = 0;
                for (int i = -reach; i <= reach; ++i) {
                    const int u = std::clamp(x + (across ? i : 0), 0, canvas.width - 1);
                    const int v = std::clamp(y + (across ? 0 : i), 0, canvas.height - 1);
                    value += weights[static_cast<std::size_t>(i + reach)] * canvas.at(u, v);
                }
                out.at(x, y) = value / sum;
            }
        canvas = std::move(out);
    }
}

}  // namespace

const std::string kOverviewCharacters =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789abcdefghijklmnopqrstuvwxyz-=.,:;\"'/_*+";

RenderedLine renderedLine(const std::string& fontFile, const std::string& text, Tier tier,
                          std::mt19937& random) {
    static std::map<std::string, std::unique_ptr<FontFace>> faces;
    std::unique_ptr<FontFace>& face = faces[fontFile];
    if (!face) face = std::make_unique<FontFace>(fontFile);
    const auto between = [&random](float low, float high) {
        return low + (high - low) * static_cast<float>(random() % 65536) / 65535.0f;
    };
    const int bad = static_cast<int>(tier);
    const float size = between(bad == 2 ? 24.0f : 28.0f, 52);
    const float slope = std::tan(between(-1, 1) * (bad == 0 ? 0.5f : 3.0f) / 57.3f);
    FT_Set_Char_Size(face->get(), 0, static_cast<FT_F26Dot6>(size * 64), 72, 72);

    const int margin = static_cast<int>(size);
    const float spacing = between(0.04f, 0.2f) * size;
    const int width = static_cast<int>(static_cast<float>(text.size()) * 1.25f * size) + 2 * margin;
    const int height = static_cast<int>(2.2f * size + std::abs(slope) * static_cast<float>(width)) + margin;
    Canvas ink(width, height), strongest(width, height);
    std::vector<int> owner(ink.values.size(), -1);
    float pen = static_cast<float>(margin);
    const float base = 1.5f * size + (slope < 0 ? -slope * static_cast<float>(width) : 0);
    for (std::size_t c = 0; c < text.size(); ++c) {
        const float x = pen + between(-0.3f, 0.3f), y = base + slope * x + between(-0.3f, 0.3f);
        FT_Matrix turn{0x10000, static_cast<FT_Fixed>(slope * 65536), static_cast<FT_Fixed>(-slope * 65536),
                       0x10000};
        FT_Vector shift{static_cast<FT_Pos>((x - std::floor(x)) * 64),
                        static_cast<FT_Pos>((std::ceil(y) - y) * 64)};
        FT_Set_Transform(face->get(), &turn, &shift);
        if (FT_Load_Char(face->get(), static_cast<FT_ULong>(text[c]), FT_LOAD_NO_HINTING | FT_LOAD_RENDER) !=
            0)
            throw std::runtime_error("cannot draw with " + fontFile);
        const FT_GlyphSlot slot = face->get()->glyph;
        for (int row = 0; row < static_cast<int>(slot->bitmap.rows); ++row)
            for (int column = 0; column < static_cast<int>(slot->bitmap.width); ++column) {
                const int px = static_cast<int>(std::floor(x)) + slot->bitmap_left + column;
                const int py = static_cast<int>(std::ceil(y)) - slot->bitmap_top + row;
                if (px < 0 || py < 0 || px >= width || py >= height) continue;
                const float cover =
                    static_cast<float>(slot->bitmap.buffer[row * slot->bitmap.pitch + column]) / 255;
                if (cover > strongest.at(px, py)) {
                    strongest.at(px, py) = cover;
                    owner[static_cast<std::size_t>(py * width + px)] = static_cast<int>(c);
                }
                ink.at(px, py) = std::min(1.0f, ink.at(px, py) + cover);
            }
        pen += static_cast<float>(slot->linearHoriAdvance) / 65536 + spacing;
    }

    // Thicker or thinner strokes: the level at which a blurred edge is cut again.
    if (bad > 0) {
        blur(ink, 0.03f * size);
        const float level = 0.5f + between(-1, 1) * (bad == 1 ? 0.12f : 0.22f);
        for (float& value : ink.values) value = std::clamp((value - level) * 0.08f * size + 0.5f, 0.0f, 1.0f);
    }
    if (bad == 2)
        for (int spots = 0; spots < static_cast<int>(text.size()); ++spots) {
            const int x = static_cast<int>(between(0, static_cast<float>(width - 1)));
            const int y = static_cast<int>(between(0, static_cast<float>(height - 1)));
            const int reach = static_cast<int>(between(0.5f, 0.05f * size));
            const float value = random() % 2 == 0 ? 1.0f : 0.0f;
            for (int v = std::max(0, y - reach); v <= std::min(height - 1, y + reach); ++v)
                for (int u = std::max(0, x - reach); u <= std::min(width - 1, x + reach); ++u)
                    ink.at(u, v) = value;
        }
    blur(ink, bad == 0 ? between(0.3f, 0.7f) : bad == 1 ? between(0.4f, 1.2f) : between(0.8f, 0.06f * size));

    const bool dark = random() % 2 == 0;
    const float contrast = bad == 0 ? between(120, 200) : bad == 1 ? between(80, 160) : between(50, 110);
    const float paper = dark ? between(contrast + 20, 235) : between(20, 235 - contrast);
    const float uneven = bad == 0 ? 0 : between(-0.3f, 0.3f) * contrast;
    std::normal_distribution<float> noise(0, contrast * (bad == 0   ? 0.01f
                                                         : bad == 1 ? between(0.02f, 0.05f)
                                                                    : between(0.05f, 0.12f)));
    GreyImage image(width, height);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const float light = uneven * (static_cast<float>(x) / static_cast<float>(width) - 0.5f);
            const float value = paper + light + (dark ? -contrast : contrast) * ink.at(x, y) + noise(random);
            image(x, y) = static_cast<std::uint8_t>(std::clamp(value, 0.0f, 255.0f));
        }

    RenderedLine line;
    line.text = text;
    // As characters are looked at: at 32 pixels or a little more, small ones twice as large.
    const float capital = 0.7f * size;
    const float scale = capital < 19.2f ? 0.5f : std::max(1.0f, std::round(capital / 32));
    line.found.ink = Binarizer(image, {0, 0, width, height}, scale)
                         .separate(dark, std::max(8, static_cast<int>(std::lround(0.75f * capital / scale))));
    line.found.frame.slope = slope;
    // Ink belongs to the nearest character, as far as two pixels away.
    for (int round = 0; round < 2; ++round) {
        const std::vector<int> before = owner;
        for (int y = 1; y + 1 < height; ++y)
            for (int x = 1; x + 1 < width; ++x) {
                int& own = owner[static_cast<std::size_t>(y * width + x)];
                for (const int next : {-1, 1, -width, width})
                    if (own < 0) own = before[static_cast<std::size_t>(y * width + x + next)];
            }
    }
    line.found.glyphs.resize(text.size());
    for (int y = 0; y < line.found.ink.height; ++y)
        for (int x = 0; x < line.found.ink.width; ++x) {
            const int column = std::min(width - 1, static_cast<int>(static_cast<float>(x) * scale));
            const int row = std::min(height - 1, static_cast<int>(static_cast<float>(y) * scale));
            const int own = owner[static_cast<std::size_t>(row * width + column)];
            if (own < 0 || line.found.ink.at(x, y) < 128) continue;
            Piece& piece = line.found.glyphs[static_cast<std::size_t>(own)].piece;
            ++piece.area;
            if (!piece.runs.empty() && piece.runs.back().y == y && piece.runs.back().x1 == x)
                ++piece.runs.back().x1;
            else
                piece.runs.push_back({x, x + 1, y});
        }
    std::vector<Box> boxes;
    for (std::size_t i = 0; i < line.found.glyphs.size();) {
        Piece& piece = line.found.glyphs[i].piece;
        if (piece.area == 0) {
            line.found.glyphs.erase(line.found.glyphs.begin() + static_cast<std::ptrdiff_t>(i));
            line.text.erase(i, 1);
            continue;
        }
        piece.measure(line.found.frame);
        if (piece.box.height() > 0.3f * size / scale) boxes.push_back(piece.box);
        ++i;
    }
    line.found.lines.push_back(measureLine(boxes, capital / scale));
    return line;
}

}  // namespace dravik
