// Part images in hundreds of faces under all conditions, what the engine finds in them, and what is truly
// there: what the engine's networks are fitted on.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "engine/segmentation/Segmentation.h"
#include "generate/Camera.h"
#include "generate/Conditions.h"
#include "generate/Typeface.h"

namespace dravik {

// Of what is no character that the recogniser knows.
inline constexpr std::uint8_t kNoneOfThem = 74;

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

// `touching` is the share of images in which some characters are moved against those before them. Nothing
// where the face has none of the text's characters.
std::optional<FittingImage> fittingImage(Faces& faces, float touching, Random& random);

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
