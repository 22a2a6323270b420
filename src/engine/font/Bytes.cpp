#include "engine/font/Bytes.h"

#include <array>
#include <bit>
#include <cmath>

#include "base/Failure.h"

namespace dravik::engine {
namespace {

constexpr auto kChecksumTable = [] {
    std::array<std::uint32_t, 256> table{};
    for (std::uint32_t i = 0; i < 256; ++i) {
        std::uint32_t value = i;
        for (int bit = 0; bit < 8; ++bit) value = (value >> 1) ^ ((value & 1) ? 0xEDB88320u : 0u);
        table[i] = value;
    }
    return table;
}();

}  // namespace

std::uint32_t checksum(std::span<const std::uint8_t> bytes) {
    std::uint32_t value = 0xFFFFFFFFu;
    for (const std::uint8_t byte : bytes) value = (value >> 8) ^ kChecksumTable[(value ^ byte) & 0xFF];
    return ~value;
}

void ByteWriter::whole(std::uint64_t value, std::size_t size) {
    for (std::size_t i = 0; i < size; ++i) bytes_.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
}

void ByteWriter::real(float value) {
    whole(std::bit_cast<std::uint32_t>(value), 4);
}

void ByteWriter::real(double value) {
    whole(std::bit_cast<std::uint64_t>(value), 8);
}

void ByteWriter::reals(std::span<const float> values) {
    for (const float value : values) real(value);
}

void ByteWriter::countedText(std::string_view value) {
    u32(value.size());
    text(value);
}

void ByteWriter::setWhole(std::size_t place, std::uint64_t value, std::size_t size) {
    for (std::size_t i = 0; i < size; ++i) bytes_[place + i] = static_cast<std::uint8_t>(value >> (8 * i));
}

void ByteReader::refuse(const std::string& problem) const {
    throw Failure(RuntimeError::DeviceIoError, what_ + " cannot be used: " + problem);
}

void ByteReader::check(bool good, const char* problem) const {
    if (!good) refuse(std::string("damaged, ") + problem);
}

std::span<const std::uint8_t> ByteReader::take(std::size_t size) {
    if (size > rest_.size()) refuse("damaged, it ends early");
    const auto part = rest_.first(size);
    rest_ = rest_.subspan(size);
    return part;
}

std::uint64_t ByteReader::whole(std::size_t size) {
    std::uint64_t value = 0;
    const auto part = take(size);
    for (std::size_t i = 0; i < size; ++i) value |= static_cast<std::uint64_t>(part[i]) << (8 * i);
    return value;
}

float ByteReader::real32() {
    const float value = std::bit_cast<float>(u32());
    check(std::isfinite(value), "a number is undefined");
    return value;
}

double ByteReader::real64() {
    const double value = std::bit_cast<double>(u64());
    check(std::isfinite(value), "a number is undefined");
    return value;
}

std::size_t ByteReader::count(std::size_t size, std::uint64_t most) {
    const std::uint32_t value = u32();
    check(value <= most && value <= rest_.size() / size, "a count is too large");
    return value;
}

void ByteReader::reals(std::span<float> values) {
    for (float& value : values) value = real32();
}

std::vector<float> ByteReader::realVector(std::size_t count) {
    check(count <= rest_.size() / 4, "a count is too large");
    std::vector<float> values(count);
    reals(values);
    return values;
}

std::string ByteReader::countedText(std::uint64_t most) {
    const auto bytes = take(count(1, most));
    return {bytes.begin(), bytes.end()};
}

}  // namespace dravik::engine
