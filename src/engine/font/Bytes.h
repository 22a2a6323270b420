// Numbers and texts to and from bytes, as the files of a font hold them: little-endian, IEEE 754 numbers that
// are always finite, and a checksum.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace dravik::engine {

// CRC-32, reflected, polynomial EDB88320.
std::uint32_t checksum(std::span<const std::uint8_t> bytes);

class ByteWriter {
  public:
    void whole(std::uint64_t value, std::size_t size);
    void u32(std::size_t value) { whole(value, 4); }
    void u64(std::uint64_t value) { whole(value, 8); }
    void i32(std::int32_t value) { whole(static_cast<std::uint32_t>(value), 4); }
    void i64(std::int64_t value) { whole(static_cast<std::uint64_t>(value), 8); }
    void real(float value);
    void real(double value);
    void reals(std::span<const float> values);
    void text(std::string_view value) { bytes_.insert(bytes_.end(), value.begin(), value.end()); }
    // With its length before it.
    void countedText(std::string_view value);
    void raw(std::span<const std::uint8_t> value) { bytes_.insert(bytes_.end(), value.begin(), value.end()); }
    void setWhole(std::size_t place, std::uint64_t value, std::size_t size);
    std::vector<std::uint8_t>& bytes() { return bytes_; }

  private:
    std::vector<std::uint8_t> bytes_;
};

// Every operation raises Device I/O error (57), which says "WHAT cannot be used: " and why.
class ByteReader {
  public:
    // `what` outlives it.
    ByteReader(std::span<const std::uint8_t> bytes, const std::string& what) : rest_(bytes), what_(what) {}

    [[noreturn]] void refuse(const std::string& problem) const;
    void check(bool good, const char* problem) const;
    std::span<const std::uint8_t> take(std::size_t size);
    // The next bytes to be read by themselves.
    ByteReader part(std::size_t size) { return ByteReader(take(size), what_); }
    std::uint64_t whole(std::size_t size);
    std::uint32_t u32() { return static_cast<std::uint32_t>(whole(4)); }
    std::uint64_t u64() { return whole(8); }
    std::int32_t i32() { return static_cast<std::int32_t>(u32()); }
    std::int64_t i64() { return static_cast<std::int64_t>(u64()); }
    float real32();
    double real64();
    // A count of elements of `size` bytes each, which must still be there.
    std::size_t count(std::size_t size, std::uint64_t most);
    void reals(std::span<float> values);
    std::vector<float> realVector(std::size_t count);
    std::string countedText(std::uint64_t most);
    std::size_t left() const { return rest_.size(); }
    bool atEnd() const { return rest_.empty(); }

  private:
    std::span<const std::uint8_t> rest_;
    const std::string& what_;
};

}  // namespace dravik::engine
