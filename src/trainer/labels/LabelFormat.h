// What the labels of a print have in common: from texts of one length that were included before, how likely a
// character is at a place. It decides between shapes that hardly differ, never against a clear one.
#pragma once

#include <cstddef>
#include <deque>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace dravik::trainer {

class LabelFormat {
  public:
    // The newest texts of a length are those that count.
    void add(std::string_view text);

    // How many times likelier the character is at this place of a text of that length than of a place of
    // which nothing is known.
    double weight(std::size_t length, std::size_t place, std::string_view character) const;

  private:
    std::map<std::size_t, std::deque<std::vector<std::string>>> texts_;  // by length, the newest last
};

}  // namespace dravik::trainer
