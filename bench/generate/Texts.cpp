#include "generate/Texts.h"

#include <utility>

namespace dravik {

namespace {

const std::string kCapitals = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";
const std::string kFigures = "0123456789";
const std::string kLetters = "abcdefghijklmnopqrstuvwxyz";
const std::string kMarks = "-=.,:;\"'_*+/";

std::string some(Random& random, const std::string& from, int count) {
    std::string text;
    for (int i = 0; i < count; ++i) text += random.of(from);
    return text;
}

std::string date(Random& random) {
    const auto two = [&](int low, int high) {
        const int value = random.whole(low, high);
        return std::string(value < 10 ? "0" : "") + std::to_string(value);
    };
    const std::string separator(1, random.of(std::string("./- ")));
    const std::string day = two(1, 28), month = two(1, 12),
                      year = (random.chance(0.5f) ? "20" : "") + two(20, 39);
    return random.chance(0.6f) ? day + separator + month + separator + year
                               : year + separator + month + separator + day;
}

std::string line(Random& random) {
    switch (random.whole(0, 9)) {
        case 0:
            return date(random);
        case 1:
            return random.of(std::vector<std::string>{"EXP ", "BB=", "Mfg ", "USE BY ", "EXP:", "BBE "}) +
                   date(random);
        case 2:
            return random.of(std::vector<std::string>{"LOT ", "L", "Batch:", "SN:", "Lot:", "No. "}) +
                   some(random, kFigures, random.whole(4, 8)) + some(random, kCapitals, random.whole(0, 1));
        case 3:
            return some(random, kFigures, random.whole(5, 13));
        case 4:
            return some(random, kCapitals + kFigures, random.whole(5, 13));
        case 5:
            return some(random, kLetters, random.whole(5, 11));
        case 6:
            return some(random, kCapitals, random.whole(2, 3)) + "-" +
                   some(random, kFigures, random.whole(3, 6)) + "-" +
                   some(random, kCapitals, random.whole(1, 3));
        case 7:
            return some(random, kCapitals + kFigures + kLetters + kMarks, random.whole(6, 12));
        case 8:
            return "*" + some(random, kFigures, 3) + "+" + some(random, kFigures, random.whole(2, 5)) + "*";
        default:
            return some(random, kCapitals, 1) + some(random, kLetters, random.whole(3, 6)) + " " +
                   some(random, kFigures, random.whole(2, 5));
    }
}

}  // namespace

std::vector<std::string> partText(Random& random, int lines) {
    std::vector<std::string> text;
    while (static_cast<int>(text.size()) < lines) text.push_back(line(random));
    return text;
}

std::vector<std::string> sheetText(Random& random) {
    std::vector<std::string> text;
    const int rows = random.whole(1, 6), columns = random.whole(6, 14);
    for (int row = 0; row < rows; ++row) text.push_back(some(random, kCapitals + kFigures, columns));
    return text;
}

std::vector<std::string> unusualText(Random& random) {
    if (random.chance(0.7f)) return {some(random, kCapitals + kFigures + kLetters, random.whole(1, 3))};
    std::vector<std::string> text(static_cast<std::size_t>(random.whole(6, 11)));
    for (std::string& row : text)
        while (row.size() < 40)
            row += (row.empty() ? "" : " ") +
                   (random.chance(0.15f) ? line(random) : some(random, kLetters, random.whole(2, 9))) +
                   (random.chance(0.15f) ? "." : "");
    return text;
}

std::vector<std::string> charsetText(Random& random, int lines) {
    std::string all = kCapitals + kFigures + kLetters + kMarks;
    for (std::size_t i = all.size() - 1; i > 0; --i)
        std::swap(all[i], all[static_cast<std::size_t>(random.whole(0, static_cast<int>(i)))]);
    std::vector<std::string> text;
    const std::size_t count = static_cast<std::size_t>(lines), each = (all.size() + count - 1) / count;
    for (std::size_t from = 0; from < all.size(); from += each) text.push_back(all.substr(from, each));
    return text;
}

}  // namespace dravik
