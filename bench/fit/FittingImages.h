// Part images in hundreds of faces under all conditions, what the engine finds in them, and what is truly
// there: what the engine's networks are fitted on.
#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "engine/recogniser/RecognisedCharacters.h"
#include "engine/segmentation/Segmentation.h"
#include "generate/Camera.h"
#include "generate/Conditions.h"
#include "generate/Typeface.h"

namespace dravik {

// Of what is no character that the recogniser knows.
inline constexpr std::uint8_t kNoneOfThem = static_cast<std::uint8_t>(engine::kRecognisedCharacters.size());

enum class FaceKind : std::uint8_t { Outline, Strokes, Dots, Raster };

struct FaceName {
    FaceKind kind;
    std::string file;
};

// The faces of a file that names one in each row: outline|strokes|dots|raster FILE. Each is opened when it is
// first wanted.
class Faces {
  public:
    explicit Faces(const std::string& file);

    struct Drawn {
        FaceKind kind;
        const Typeface* face;
    };
    // Two of three images are of outlines or strokes, the others of dots: of dot faces, or of outlines
    // brought to a few rows.
    Drawn any(Random& random);

  private:
    // Null when the outlines have no such size.
    const Typeface* opened(const FaceName& name, int rows);

    std::vector<FaceName> outlines_, dots_, rasters_;
    std::map<std::pair<std::string, int>, std::unique_ptr<Typeface>> faces_;
};

struct FittingImage {
    FaceKind kind;
    Conditions conditions;
    Picture picture;
};

// Shares of images: in which some characters are moved against those before them, of usual conditions, and of
// those under which fonts are learnt; the others' are extreme.
struct FittingShares {
    float touching = 0, usual = 0.45f, learning = 0.2f;
};

// Nothing where the face has none of the text's characters.
std::optional<FittingImage> fittingImage(Faces& faces, const FittingShares& shares, Random& random);

// What a program does that makes something of such images: `PROGRAM FACES FOLDER IMAGES SEED [FIRST]`. Image
// FIRST and those after it depend on SEED and their number alone, so that a set may be made in parts. Returns
// the program's exit status.
template <typename Output, typename Add>
int ofFittingImages(int argc, char** argv, const FittingShares& shares, Add add) {
    if (argc < 5) {
        std::fprintf(stderr, "usage: %s FACES FOLDER IMAGES SEED [FIRST]\n", argv[0]);
        return 2;
    }
    try {
        Faces faces(argv[1]);
        Output output(argv[2]);
        const auto number = [&](int place) { return static_cast<std::uint32_t>(std::atoll(argv[place])); };
        const std::uint32_t begin = number(4) * 1'000'003u + (argc > 5 ? number(5) : 0);
        for (std::uint32_t i = 0; i < number(3); ++i) {
            Random random(begin + i);
            if (const std::optional<FittingImage> image = fittingImage(faces, shares, random))
                add(*image, output, random);
        }
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return 1;
    }
    return 0;
}

// What the engine finds; mostly by one look that suits the print, since the search for the best one takes
// long.
engine::Segmentation foundIn(const FittingImage& image, Random& random);

// A true character in the frame of what was found.
struct TrueCharacter {
    engine::Box box;
    float baseline = 0;
    std::uint8_t label = kNoneOfThem;  // its place in recognisedCharacters()
};

std::vector<TrueCharacter> trueCharacters(const Picture& picture, const engine::Segmentation& found);

}  // namespace dravik
