// A folder of labelled images: lines.tsv names each file and its text, "\n" between lines.
#pragma once

#include <fstream>
#include <string>
#include <vector>

#include "base/Text.h"

namespace dravik {

struct LabelledImage {
    std::string file;  // with its folder
    std::string font;  // the part of the file's name before "_"
    std::string name;
    std::string text;  // without blanks and line ends, as the characters stand in reading order
};

// Empty when the folder has no lines.tsv.
inline std::vector<LabelledImage> labelledImages(const std::string& folder) {
    std::vector<LabelledImage> images;
    std::ifstream table(folder + "/lines.tsv");
    for (std::string row; std::getline(table, row);) {
        if (!row.empty() && row.back() == '\r') row.pop_back();
        const std::size_t tab = row.find('\t');
        if (tab == std::string::npos || row.find(".png") == std::string::npos) continue;
        LabelledImage image;
        image.name = row.substr(0, tab);
        image.file = folder + "/" + image.name;
        image.font = image.name.substr(0, image.name.find('_'));
        for (std::size_t i = tab + 1; i < row.size(); ++i) {
            if (row[i] == '\\' && i + 1 < row.size() && row[i + 1] == 'n')
                ++i;
            else if (row[i] != ' ')
                image.text += row[i];
        }
        images.push_back(std::move(image));
    }
    return images;
}

}  // namespace dravik
