#include "library/Verification.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <utility>

#include "base/Text.h"
#include "library/Boundary.h"
#include "library/Reading.h"

namespace dravik::library {
namespace {

// Of leaving a character out of the pairing, of pairing it wrongly, and wrongly with one that was thought
// possible.
constexpr int kAlone = 10, kWrong = 10, kPossible = 9;

int costOf(const std::string& expected, const engine::ReadCharacter& read) {
    if (read.character == expected) return 0;
    return confidenceOf(read, expected) > 0 ? kPossible : kWrong;
}

}  // namespace

std::vector<std::string> printedCharacters(std::string_view text) {
    std::vector<std::string> all = characters(text);
    std::erase_if(all, [](const std::string& one) { return one == " " || one == "\n"; });
    return all;
}

double confidenceOf(const engine::ReadCharacter& read, const std::string& character) {
    if (read.character == character) return read.confidence;
    const auto found =
        std::find_if(read.alternatives.begin(), read.alternatives.end(),
                     [&](const engine::Alternative& one) { return one.character == character; });
    return found == read.alternatives.end() ? 0 : found->confidence;
}

// The cheapest way through all prefixes of both (Wagner and Fischer, "The string-to-string correction
// problem", 1974).
std::vector<Pairing> paired(std::span<const std::string> expected,
                            std::span<const engine::ReadCharacter> read) {
    enum Step : std::uint8_t { Both, ExpectedAlone, ReadAlone };
    const std::size_t width = read.size() + 1;
    std::vector<Step> steps((expected.size() + 1) * width, ReadAlone);
    std::vector<int> before(width), costs(width);
    for (std::size_t j = 0; j < width; ++j) costs[j] = kAlone * static_cast<int>(j);
    for (std::size_t i = 1; i <= expected.size(); ++i) {
        std::swap(before, costs);
        costs[0] = kAlone * static_cast<int>(i);
        steps[i * width] = ExpectedAlone;
        for (std::size_t j = 1; j < width; ++j) {
            Step& step = steps[i * width + j];
            const int both = before[j - 1] + costOf(expected[i - 1], read[j - 1]);
            const int expectedAlone = before[j] + kAlone, readAlone = costs[j - 1] + kAlone;
            costs[j] = std::min({both, expectedAlone, readAlone});
            step = costs[j] == both ? Both : costs[j] == expectedAlone ? ExpectedAlone : ReadAlone;
        }
    }
    std::vector<Pairing> result;
    for (std::size_t i = expected.size(), j = read.size(); i > 0 || j > 0;) {
        const Step step = steps[i * width + j];
        Pairing one;
        if (step != ReadAlone) one.expected = static_cast<int>(--i);
        if (step != ExpectedAlone) one.read = static_cast<int>(--j);
        result.push_back(one);
    }
    std::reverse(result.begin(), result.end());
    return result;
}

}  // namespace dravik::library

using namespace dravik;
using namespace dravik::library;

struct dravik_verification {
    std::vector<std::string> expected, read;  // whose texts the characters name
    std::vector<dravik_verified> characters;
};

dravik_status dravik_reading_verify(const dravik_reading* reading, const char* expected,
                                    dravik_verification** verification, dravik_error* error) {
    return guarded(error, [&] {
        checkPointer(reading, "reading");
        checkText(expected, "expected");
        checkPointer(verification, "verification");
        auto result = std::make_unique<dravik_verification>();
        result->expected = printedCharacters(expected);
        for (const engine::ReadCharacter& one : reading->read) result->read.push_back(one.character);
        for (const Pairing& pair : paired(result->expected, reading->read)) {
            dravik_verified& one =
                result->characters.emplace_back(dravik_verified{DRAVIK_MISSING, pair.read, "", "", 0});
            if (pair.expected >= 0)
                one.expected = result->expected[static_cast<std::size_t>(pair.expected)].c_str();
            if (pair.read < 0) continue;
            const engine::ReadCharacter& read = reading->read[static_cast<std::size_t>(pair.read)];
            one.read = result->read[static_cast<std::size_t>(pair.read)].c_str();
            one.verdict = DRAVIK_UNEXPECTED;
            if (pair.expected < 0) continue;
            one.confidence = confidenceOf(read, one.expected);
            one.verdict = read.character != one.expected           ? DRAVIK_WRONG
                          : read.confidence < reading->rejectLimit ? DRAVIK_DOUBTFUL
                                                                   : DRAVIK_RIGHT;
        }
        *verification = result.release();
    });
}

void dravik_verification_free(dravik_verification* verification) {
    delete verification;
}

int dravik_verification_passed(const dravik_verification* verification) {
    return verification &&
           std::all_of(verification->characters.begin(), verification->characters.end(),
                       [](const dravik_verified& one) { return one.verdict == DRAVIK_RIGHT; });
}

const dravik_verified* dravik_verification_characters(const dravik_verification* verification,
                                                      size_t* count) {
    *count = verification ? verification->characters.size() : 0;
    return *count > 0 ? verification->characters.data() : nullptr;
}
