// Faces from font files: outlines, bitmaps (printed as dots) and single strokes.
#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_OUTLINE_H

#include <algorithm>
#include <cctype>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <stdexcept>
#include <utility>
#include <vector>

#include "generate/DotFaces.h"

namespace dravik {

namespace {

namespace fs = std::filesystem;

std::string fontFile(const std::string& name) {
    std::vector<std::string> found;
    for (const char* folder : {"/usr/share/fonts", "/usr/share/wine/fonts"}) {
        std::error_code error;
        fs::recursive_directory_iterator at(folder, error);
        for (; !error && at != fs::recursive_directory_iterator(); at.increment(error))
            if (at->path().filename() == name) found.push_back(at->path().string());
    }
    if (found.empty()) throw std::runtime_error("Font file " + name + " is not installed");
    return *std::min_element(found.begin(), found.end());
}

class FontFileHandle {
  public:
    explicit FontFileHandle(const std::string& file) {
        if (FT_Init_FreeType(&library_) || FT_New_Face(library_, file.c_str(), 0, &face_))
            throw std::runtime_error("Cannot open the font file " + file);
    }
    ~FontFileHandle() {
        FT_Done_Face(face_);
        FT_Done_FreeType(library_);
    }
    FontFileHandle(const FontFileHandle&) = delete;
    FontFileHandle& operator=(const FontFileHandle&) = delete;
    FT_Face face() const { return face_; }

  private:
    FT_Library library_ = nullptr;
    FT_Face face_ = nullptr;
};

class OutlineFace : public Typeface {
  public:
    explicit OutlineFace(const std::string& file) : file_(file) {
        load('H', 1000);
        perCap_ = 1000 / (static_cast<float>(file_.face()->glyph->metrics.height) / 64);
    }

    bool has(char character) const override {
        return FT_Get_Char_Index(file_.face(), static_cast<unsigned char>(character)) != 0;
    }

  protected:
    Extent extent(char character, const PrintStyle& style) const override {
        load(character, style.capHeight * perCap_);
        const FT_Glyph_Metrics& metrics = file_.face()->glyph->metrics;
        const auto pixels = [](FT_Pos units) { return static_cast<float>(units) / 64; };
        return {pixels(metrics.horiAdvance), pixels(metrics.horiBearingX),
                pixels(metrics.horiBearingX + metrics.width)};
    }
    void draw(Print& print, char character, float x, float y, const PrintStyle& style, int owner,
              Random&) const override {
        load(character, style.capHeight * perCap_);
        FT_GlyphSlot glyph = file_.face()->glyph;
        const float left = std::floor(x), bottom = std::floor(y);
        FT_Outline_Translate(&glyph->outline, static_cast<FT_Pos>((x - left) * 64),
                             static_cast<FT_Pos>((bottom - y) * 64));
        if (FT_Render_Glyph(glyph, FT_RENDER_MODE_NORMAL)) return;
        const FT_Bitmap& bitmap = glyph->bitmap;
        for (int row = 0; row < static_cast<int>(bitmap.rows); ++row)
            for (int column = 0; column < static_cast<int>(bitmap.width); ++column)
                print.put(static_cast<int>(left) + glyph->bitmap_left + column,
                          static_cast<int>(bottom) - glyph->bitmap_top + row,
                          static_cast<float>(bitmap.buffer[row * bitmap.pitch + column]) / 255, owner);
    }

  private:
    void load(char character, float size) const {
        FT_Set_Char_Size(file_.face(), 0, static_cast<FT_F26Dot6>(size * 64), 72, 72);
        if (FT_Load_Char(file_.face(), static_cast<unsigned char>(character),
                         FT_LOAD_NO_HINTING | FT_LOAD_NO_BITMAP))
            throw std::runtime_error(std::string("The font has no character ") + character);
    }
    FontFileHandle file_;
    float perCap_ = 1;
};

std::unique_ptr<Typeface> bitmapFace(const FontFileHandle& file) {
    FT_Select_Size(file.face(), 0);
    DotFace::Patterns patterns;
    int rows = 2, advance = 1;
    for (int c = '!'; c < 127; ++c) {
        if (FT_Load_Char(file.face(), static_cast<FT_ULong>(c), FT_LOAD_DEFAULT)) continue;
        const FT_GlyphSlot glyph = file.face()->glyph;
        const FT_Bitmap& bitmap = glyph->bitmap;
        auto& dots = patterns[static_cast<char>(c)];
        int top = -100, bottom = 100;
        for (int row = 0; row < static_cast<int>(bitmap.rows); ++row)
            for (int column = 0; column < static_cast<int>(bitmap.width); ++column)
                if (bitmap.buffer[row * bitmap.pitch + column / 8] >> (7 - column % 8) & 1) {
                    dots.push_back({glyph->bitmap_left + column, glyph->bitmap_top - 1 - row});
                    top = std::max(top, dots.back().row);
                    bottom = std::min(bottom, dots.back().row);
                }
        if (c == 'H') rows = top - bottom + 1;
        advance = static_cast<int>(glyph->advance.x / 64);
    }
    return std::make_unique<DotFace>(std::move(patterns), rows, advance);
}

// Characters of a face that may look like another: I and l, 0 and O.
constexpr std::size_t kMostTwins = 4;

// Dots where the outlines, brought to so few rows, are mostly ink.
std::unique_ptr<Typeface> rasteredFace(const FontFileHandle& file, int rows) {
    FT_Face face = file.face();
    const auto heightOfCapitals = [&](int size) {
        FT_Set_Pixel_Sizes(face, 0, static_cast<FT_UInt>(size));
        if (FT_Load_Char(face, 'H', FT_LOAD_RENDER | FT_LOAD_TARGET_MONO | FT_LOAD_NO_BITMAP)) return 0;
        return static_cast<int>(face->glyph->bitmap.rows);
    };
    int size = rows;
    while (size < 4 * rows && heightOfCapitals(size) < rows) ++size;
    if (heightOfCapitals(size) != rows) throw std::runtime_error("The font has no size of so many rows");
    DotFace::Patterns patterns;
    std::set<std::vector<std::pair<int, int>>> shapes;
    int widest = 0;
    for (int c = '!'; c < 127; ++c) {
        if (FT_Load_Char(face, static_cast<FT_ULong>(c),
                         FT_LOAD_RENDER | FT_LOAD_TARGET_MONO | FT_LOAD_NO_BITMAP))
            continue;
        const FT_GlyphSlot glyph = face->glyph;
        const FT_Bitmap& bitmap = glyph->bitmap;
        auto& dots = patterns[static_cast<char>(c)];
        int left = 1000, right = 0;
        for (int row = 0; row < static_cast<int>(bitmap.rows); ++row)
            for (int column = 0; column < static_cast<int>(bitmap.width); ++column)
                if (bitmap.buffer[row * bitmap.pitch + column / 8] >> (7 - column % 8) & 1) {
                    dots.push_back({column, glyph->bitmap_top - 1 - row});
                    left = std::min(left, column);
                    right = std::max(right, column);
                }
        std::vector<std::pair<int, int>> shape;
        for (DotFace::Dot& dot : dots) {
            dot.column -= left;
            shape.emplace_back(dot.column, dot.row);
        }
        shapes.insert(std::move(shape));
        if (std::isalnum(c)) widest = std::max(widest, right - left + 1);
    }
    if (shapes.size() + kMostTwins < patterns.size())
        throw std::runtime_error("Characters look alike in so few rows");
    // Evenly spaced, as dot printers do.
    for (auto& [character, dots] : patterns) {
        int width = 0;
        for (const DotFace::Dot& dot : dots) width = std::max(width, dot.column + 1);
        for (DotFace::Dot& dot : dots) dot.column += (widest - width) / 2;
    }
    return std::make_unique<DotFace>(std::move(patterns), rows, widest + 1);
}

class StrokeFace : public Typeface {
  public:
    explicit StrokeFace(const std::string& file) {
        std::ifstream in(file);
        std::string row, record;
        char character = ' ';
        while (std::getline(in, row)) {
            record += row;
            if (record.size() < 8) continue;
            const std::size_t pairs = static_cast<std::size_t>(std::stoi(record.substr(5, 3)));
            if (record.size() < 8 + 2 * pairs) continue;
            add(character++, record.substr(8, 2 * pairs));
            record.clear();
        }
        if (glyphs_.count('H') == 0) throw std::runtime_error("No strokes in the font file " + file);
    }

    bool has(char character) const override { return glyphs_.count(character) > 0; }

  protected:
    Extent extent(char character, const PrintStyle& style) const override {
        const Glyph& glyph = glyphs_.at(character);
        const float unit = style.capHeight / kCapUnits, pen = 0.5f * style.pen * style.capHeight;
        float left = 1e9f, right = -1e9f;
        for (const PenStroke& stroke : glyph.strokes) {
            left = std::min({left, stroke.x0, stroke.x1});
            right = std::max({right, stroke.x0, stroke.x1});
        }
        if (glyph.strokes.empty()) left = right = 0;
        return {glyph.advance * unit, left * unit - pen, right * unit + pen};
    }
    void draw(Print& print, char character, float x, float y, const PrintStyle& style, int owner,
              Random&) const override {
        const float unit = style.capHeight / kCapUnits, pen = 0.5f * style.pen * style.capHeight;
        for (const PenStroke& stroke : glyphs_.at(character).strokes)
            print.stroke(x + stroke.x0 * unit, y + stroke.y0 * unit, x + stroke.x1 * unit,
                         y + stroke.y1 * unit, pen, 1, owner);
    }

  private:
    static constexpr float kCapUnits = 21;
    struct Glyph {
        float advance = 0;
        std::vector<PenStroke> strokes;
    };

    // Pairs of letters, each a number from 'R': first the sides, then points; " R" lifts the pen.
    void add(char character, const std::string& pairs) {
        Glyph& glyph = glyphs_[character];
        const auto value = [&](std::size_t i) { return static_cast<float>(pairs[i] - 'R'); };
        if (pairs.size() < 2) return;
        const float left = value(0);
        glyph.advance = value(1) - left;
        bool down = false;
        float x = 0, y = 0;
        for (std::size_t i = 2; i + 1 < pairs.size(); i += 2) {
            if (pairs[i] == ' ') {
                down = false;
                continue;
            }
            const float nextX = value(i) - left, nextY = value(i + 1) - 9;
            if (down) glyph.strokes.push_back({x, y, nextX, nextY});
            x = nextX;
            y = nextY;
            down = true;
        }
    }
    std::map<char, Glyph> glyphs_;
};

}  // namespace

std::unique_ptr<Typeface> faceFromFile(const std::string& fileName) {
    const std::string file = fontFile(fileName);
    if (const FontFileHandle handle(file); !FT_IS_SCALABLE(handle.face())) return bitmapFace(handle);
    return std::make_unique<OutlineFace>(file);
}

std::unique_ptr<Typeface> faceOfDots(const std::string& fileName, int rows) {
    return rasteredFace(FontFileHandle(fontFile(fileName)), rows);
}

std::unique_ptr<Typeface> faceOfStrokes(const std::string& fileName) {
    return std::make_unique<StrokeFace>("/usr/share/hershey-fonts/" + fileName);
}

}  // namespace dravik
