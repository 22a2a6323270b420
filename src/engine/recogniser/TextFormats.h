// What the texts of a print have in common: from texts of one length that are known, how likely a character
// is at a place. It decides between shapes that hardly differ, never against a clear one.
#pragma once

#include <cstddef>
#include <deque>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace dravik::engine {

class TextFormats {
  public:
    // The newest texts of a length are those that count.
    void add(std::string_view text);

    // How many times likelier the character is at this place of a text of that length than of a place of
    // which nothing is known; the second, as far as only its kind counts: capital, small letter, digit or
    // other.
    double weight(std::size_t length, std::size_t place, std::string_view character) const;
    double kindWeight(std::size_t length, std::size_t place, std::string_view character) const;

    // Whether the known texts of this one's length are of one format, each place having its kind, which this
    // one has too at most of its places.
    bool fit(std::span<const std::string> text) const;

  private:
    using Text = std::vector<std::string>;  // its characters
    const std::deque<Text>& texts(std::size_t length) const;

    std::map<std::size_t, std::deque<Text>> texts_;  // by length, the newest last
};

}  // namespace dravik::engine
