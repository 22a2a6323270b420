#include "RenderedPart.h"

#include <ft2build.h>
#include FT_FREETYPE_H

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <random>
#include <stdexcept>

namespace dravik {

using namespace engine;
namespace {

struct Library {
    FT_Library handle = nullptr;
    Library() {
        if (FT_Init_FreeType(&handle)) throw std::runtime_error("FreeType does not start");
    }
    ~Library() { FT_Done_FreeType(handle); }
};

FT_Library library() {
    static const Library only;
    return only.handle;
}

// A page of ink, 0 to 1.
struct Page {
    int width, height;
    std::vector<float> ink;
    Page(int w, int h)
        : width(w), height(h), ink(static_cast<std::size_t>(w) * static_cast<std::size_t>(h)) {}
    float& at(int x, int y) {
        return ink[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                   static_cast<std::size_t>(x)];
    }
};

// Blurred by the weights of a normal distribution, along rows and then along columns.
void blur(Page& page, double sigma) {
    if (sigma < 0.2) return;
    const int reach = static_cast<int>(std::ceil(3 * sigma));
    std::vector<float> weights;
    float sum = 0;
    for (int i = -reach; i <= reach; ++i) {
        weights.push_back(static_cast<float>(std::exp(-i * i / (2 * sigma * sigma))));
        sum += weights.back();
    }
    const auto pass = [&](int dx, int dy) {
        Page from = page;
        for (int y = 0; y < page.height; ++y)
            for (int x = 0; x < page.width; ++x) {
                float value = 0;
                for (int i = -reach; i <= reach; ++i)
                    value += weights[static_cast<std::size_t>(i + reach)] *
                             from.at(std::clamp(x + i * dx, 0, page.width - 1),
                                     std::clamp(y + i * dy, 0, page.height - 1));
                page.at(x, y) = value / sum;
            }
    };
    pass(1, 0);
    pass(0, 1);
}

}  // namespace

struct OutlineFont::Face {
    FT_Face handle = nullptr;
    explicit Face(const std::string& file) {
        if (FT_New_Face(library(), file.c_str(), 0, &handle))
            throw std::runtime_error(file + ": no outline font");
    }
    ~Face() { FT_Done_Face(handle); }
};

OutlineFont::OutlineFont(const std::string& file)
    : face_(std::make_unique<Face>(file)), name_(std::filesystem::path(file).stem().string()) {}

OutlineFont::~OutlineFont() = default;
OutlineFont::OutlineFont(OutlineFont&&) noexcept = default;

GreyImage OutlineFont::part(const std::vector<std::string>& lines, std::uint32_t seed, double faults) const {
    std::mt19937 bits(seed);
    const auto any = [&bits](double low, double high) {
        return low + (high - low) * static_cast<double>(bits()) / 4294967296.0;
    };
    const double size = any(30, 70), turn = faults * any(-0.025, 0.025), slant = faults * any(-0.06, 0.06),
                 stretch = 1 + faults * any(-0.06, 0.06);
    const FT_Face face = face_->handle;
    FT_Set_Pixel_Sizes(face, 0, static_cast<FT_UInt>(size));
    const auto fixed = [](double value) { return static_cast<FT_Fixed>(value * 65536); };
    FT_Matrix matrix{fixed(stretch * std::cos(turn)), fixed(slant - std::sin(turn)),
                     fixed(stretch * std::sin(turn)), fixed(std::cos(turn))};
    FT_Set_Transform(face, &matrix, nullptr);

    std::size_t longest = 1;
    for (const std::string& line : lines) longest = std::max(longest, line.size());
    const int margin = static_cast<int>(size);
    Page page(static_cast<int>(static_cast<double>(longest) * size) + 2 * margin,
              static_cast<int>(static_cast<double>(lines.size()) * 1.7 * size) + 2 * margin);
    for (std::size_t l = 0; l < lines.size(); ++l) {
        double along = 0;
        for (const char character : lines[l]) {
            if (FT_Load_Char(face, static_cast<unsigned char>(character),
                             FT_LOAD_NO_HINTING | FT_LOAD_RENDER))
                throw std::runtime_error(name_ + " cannot draw " + character);
            const FT_Bitmap& bitmap = face->glyph->bitmap;
            const double down = (static_cast<double>(l) + 1) * 1.7 * size;
            const int left = margin + static_cast<int>(along * std::cos(turn) + down * std::sin(turn)) +
                             face->glyph->bitmap_left;
            const int top = static_cast<int>(down * std::cos(turn) - along * std::sin(turn)) + margin / 2 -
                            face->glyph->bitmap_top;
            for (int y = 0; y < static_cast<int>(bitmap.rows); ++y)
                for (int x = 0; x < static_cast<int>(bitmap.width); ++x)
                    if (left + x >= 0 && left + x < page.width && top + y >= 0 && top + y < page.height)
                        page.at(left + x, top + y) +=
                            static_cast<float>(bitmap.buffer[y * bitmap.pitch + x]) / 255;
            along += static_cast<double>(face->glyph->advance.x) / 64 / stretch + any(0.12, 0.3) * size;
        }
    }
    blur(page, faults * any(0, 0.035) * size);

    const bool dark = any(0, 1) < 0.7;
    const double contrast = any(60, 160), paper = dark ? any(contrast + 20, 245) : any(10, 235 - contrast);
    const double light = faults * any(0, 40), direction = any(0, 6.28), noise = faults * any(1, 12);
    GreyImage image(page.width, page.height);
    for (int y = 0; y < page.height; ++y)
        for (int x = 0; x < page.width; ++x) {
            const double u = static_cast<double>(x) / page.width - 0.5,
                         v = static_cast<double>(y) / page.height - 0.5;
            const double grey =
                paper + light * (u * std::cos(direction) + v * std::sin(direction)) +
                noise * (any(-1, 1) + any(-1, 1) + any(-1, 1)) -
                (dark ? contrast : -contrast) * std::min(1.0, static_cast<double>(page.at(x, y)));
            image(x, y) = static_cast<std::uint8_t>(std::clamp(grey, 0.0, 255.0));
        }
    return image;
}

std::vector<std::string> installedFonts() {
    std::vector<std::string> files;
    for (const char* file :
         {"truetype/liberation/LiberationMono-Regular.ttf", "truetype/hack/Hack-Regular.ttf",
          "truetype/dejavu/DejaVuSans.ttf", "opentype/ocr-b/OCRB.otf",
          "truetype/liberation/LiberationSans-Bold.ttf", "truetype/liberation/LiberationSerif-Regular.ttf"}) {
        std::string path = std::string("/usr/share/fonts/") + file;
        if (std::filesystem::exists(path)) files.push_back(std::move(path));
    }
    return files;
}

}  // namespace dravik
