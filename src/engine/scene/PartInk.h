// The ink of a part of a scene, from which characters are taken by the boxes that an operator gave them.
#pragma once

#include <cstdint>
#include <vector>

#include "engine/image/RotatedBox.h"
#include "engine/scene/Scene.h"

namespace dravik::engine {

// Ink pixels of a part, and which of them are a character's already.
class PartInk {
  public:
    // The part stays where it is; its ink may be separated anew where a box seems empty.
    explicit PartInk(ScenePart& part);

    void take(const Piece& piece);

    // What is in a box of the whole picture.
    Piece pieceIn(const RotatedBox& box);

    // Whether the part shows all of the box.
    bool shows(const RotatedBox& box) const;

  private:
    std::size_t index(int x, int y) const;
    bool isInk(int x, int y) const;
    // The box in ink pixels.
    RotatedBox ownBox(const RotatedBox& box) const;
    template <typename Body>
    void eachPixel(const RotatedBox& own, Body body) const;
    template <typename Choice>
    Piece runsIn(const RotatedBox& own, Choice isOfIt) const;
    void separate(const RotatedBox& own);

    ScenePart& part_;
    InkImage& ink_;
    std::vector<std::uint8_t> taken_;
};

}  // namespace dravik::engine
