#include "screen/context/ScreenState.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace dravik::screen {
namespace {

constexpr std::string_view kMagic = "DRSS";
constexpr std::uint32_t kVersion = 2;
constexpr std::size_t kWordSize = 4;

constexpr std::array kTexts = {&ScreenState::m_LastInclude, &ScreenState::m_IncludedChars,
                               &ScreenState::message,       &ScreenState::undoToolTip,
                               &ScreenState::figures,       &ScreenState::addedChars,
                               &ScreenState::markedChars};
constexpr std::size_t kTextsOfVersion1 = 5;
constexpr std::array kSwitches = {&ScreenState::undoEnabled, &ScreenState::includeEnabled,
                                  &ScreenState::saveEnabled, &ScreenState::revertEnabled,
                                  &ScreenState::awaitsDecision};

// FNV-1a, which notices every change of a single byte.
std::uint32_t checksum(std::string_view bytes) {
    std::uint32_t sum = 2166136261u;
    for (const char byte : bytes) sum = (sum ^ static_cast<unsigned char>(byte)) * 16777619u;
    return sum;
}

void putWord(std::string& bytes, std::uint32_t word) {
    for (std::size_t i = 0; i < kWordSize; ++i) bytes.push_back(static_cast<char>(word >> (8 * i) & 0xff));
}

class Reader {
  public:
    explicit Reader(std::string_view bytes) : rest_(bytes) {}

    std::optional<std::string_view> take(std::size_t size) {
        if (size > rest_.size()) return std::nullopt;
        const auto taken = rest_.substr(0, size);
        rest_.remove_prefix(size);
        return taken;
    }
    std::optional<std::uint32_t> word() {
        const auto bytes = take(kWordSize);
        if (!bytes) return std::nullopt;
        std::uint32_t word = 0;
        for (std::size_t i = 0; i < kWordSize; ++i)
            word |= static_cast<std::uint32_t>(static_cast<unsigned char>((*bytes)[i])) << (8 * i);
        return word;
    }
    bool atEnd() const { return rest_.empty(); }

  private:
    std::string_view rest_;
};

}  // namespace

std::string encode(const ScreenState& state) {
    std::string bytes(kMagic);
    putWord(bytes, kVersion);
    for (const auto text : kTexts) {
        putWord(bytes, static_cast<std::uint32_t>((state.*text).size()));
        bytes += state.*text;
    }
    putWord(bytes, state.committed);
    for (const auto on : kSwitches) bytes.push_back(state.*on ? 1 : 0);
    putWord(bytes, checksum(bytes));
    return bytes;
}

std::optional<ScreenState> decodeScreenState(std::string_view bytes) {
    if (bytes.size() < kWordSize) return std::nullopt;
    const std::string_view content = bytes.substr(0, bytes.size() - kWordSize);
    if (Reader(bytes.substr(content.size())).word() != checksum(content)) return std::nullopt;

    Reader reader(content);
    if (reader.take(kMagic.size()) != kMagic) return std::nullopt;
    const auto version = reader.word();
    if (version != 1 && version != kVersion) return std::nullopt;
    ScreenState state;
    for (const auto text : std::span(kTexts).first(version == 1 ? kTextsOfVersion1 : kTexts.size())) {
        const auto size = reader.word();
        const auto value = size ? reader.take(*size) : std::nullopt;
        if (!value) return std::nullopt;
        state.*text = *value;
    }
    const auto committed = reader.word();
    if (!committed) return std::nullopt;
    state.committed = *committed;
    for (const auto on : kSwitches) {
        const auto value = reader.take(1);
        if (!value || (value->front() & ~1) != 0) return std::nullopt;
        state.*on = value->front() == 1;
    }
    if (!reader.atEnd()) return std::nullopt;
    return state;
}

}  // namespace dravik::screen
