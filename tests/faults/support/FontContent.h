// What a font holds, as a short text that is the same for fonts with the same characters and samples, however
// they came about.
#pragma once

#include <functional>
#include <string>

#include "engine/font/FontFile.h"

namespace dravik::test {

inline std::string contentOf(const engine::FontRecord& font) {
    std::string bytes;
    for (const std::string& character : font.characterSet) bytes += character + '\n';
    for (const engine::Sample& sample : font.samples) {
        bytes += std::to_string(sample.code);
        bytes.append(reinterpret_cast<const char*>(sample.inputs.data()), sizeof sample.inputs);
    }
    return std::to_string(font.characterSet.size()) + "-" + std::to_string(font.samples.size()) + "-" +
           std::to_string(std::hash<std::string>{}(bytes));
}

}  // namespace dravik::test
