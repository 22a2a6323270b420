// What is done with arbitrary bytes: each function takes any input, uses what comes out of it as the program
// would, and aborts when something comes out that must not. Run by the fuzzers, and as tests on the inputs
// kept in fuzz/inputs.
#pragma once

#include <cstdint>
#include <span>

namespace dravik {

// A font file, or the part of one between header and checksum, which are put around it.
void tryFontFile(std::span<const std::uint8_t> bytes);

// A font's journal, or entries of one, which are completed and put behind one that fits the font.
void tryJournal(std::span<const std::uint8_t> bytes);

// The content of a sample list.
void trySampleList(std::span<const std::uint8_t> bytes);

// An image: its width less 1, twice its height and how its pixels repeat, one byte each; then pixels.
void tryImage(std::span<const std::uint8_t> bytes);

}  // namespace dravik
