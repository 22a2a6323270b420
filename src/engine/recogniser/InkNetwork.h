// Tells print from the rest of a picture, pixel by pixel, where no threshold does: faint print on a restless
// ground, across shadows, torn, or made of dots, which it joins to strokes. A convolutional network, fitted
// on part images in hundreds of faces; it looks at the picture in three sizes and puts them together again
// (after O. Ronneberger, P. Fischer, T. Brox: U-Net, 2015). Its weights are part of the program; tools/fit.sh
// makes them.
#pragma once

#include <string_view>

#include "engine/image/GreyImage.h"
#include "engine/kernels/MatrixKernels.h"

namespace dravik::engine {

// Heights of capitals, in pixels, that the network knows.
inline constexpr float kLeastInkHeight = 10, kMostInkHeight = 34;

// Print, dark or light, as white on black: of each pixel the log odds (natural) that it is print, -2.7 at 0
// to 2.7 at 255. May be called by many threads at once.
// The same to the last bit by all kernels.
GreyImage inkOf(const GreyImage& picture, const MatrixKernels& kernels = usedKernels());

// Where the weights come from: inputs, faces with the versions of their packages, seeds, counts, scores.
std::string_view inkNetworkOrigin();

}  // namespace dravik::engine
