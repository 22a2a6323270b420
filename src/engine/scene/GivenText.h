// Characters of a picture whose text an operator has told.
#pragma once

#include <optional>
#include <span>
#include <stop_token>
#include <string>

#include "engine/scene/Scene.h"

namespace dravik::engine {

// The scene divided into exactly the characters of the text, where the picture may well show that text;
// nothing where a text with a character more or less would suit it better, and where most of the characters
// look like others. Takes some times as long as finding the characters did, at most.
std::optional<Scene> sceneWithText(const Scene& found, std::span<const std::string> text,
                                   const std::stop_token& stop = {});

}  // namespace dravik::engine
