#include "ui/TextBox.h"

#include <algorithm>
#include <utility>

namespace dravik::ui {

void TextBox::edit(std::string text) {
    if (pasteFilter) {
        const auto start = std::mismatch(text_.begin(), text_.end(), text.begin(), text.end()).second;
        const auto tail = std::mismatch(text_.rbegin(), text_.rend() - (start - text.begin()), text.rbegin(),
                                        std::make_reverse_iterator(start));
        const auto end = tail.second.base();
        // One typed character is several bytes, none of which can be taken for another one.
        const auto isFirstByte = [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; };
        if (std::count_if(start, end, isFirstByte) > 1)
            text = std::string(text.begin(), start) + pasteFilter(std::string(start, end)) +
                   std::string(end, text.end());
    }
    setText(std::move(text));
}

}  // namespace dravik::ui
