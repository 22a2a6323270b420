#include "evaluate/TrueBoxes.h"

#include <fstream>
#include <sstream>

namespace dravik {

using namespace engine;
namespace {

std::vector<std::string> columnsOf(const std::string& row) {
    std::vector<std::string> result;
    std::stringstream in(row);
    for (std::string one; std::getline(in, one, '\t');) result.push_back(one);
    return result;
}

}  // namespace

std::map<std::string, Truth> truths(const std::string& folder) {
    std::map<std::string, Truth> result;
    std::ifstream meta(folder + "/meta.tsv"), boxes(folder + "/boxes.tsv");
    for (std::string row; std::getline(meta, row);) {
        const auto columns = columnsOf(row);
        if (columns.size() > 3 && columns[0] != "file") result[columns[0]].dark = columns[3] == "dark";
    }
    for (std::string row; std::getline(boxes, row);) {
        const auto columns = columnsOf(row);
        if (columns.size() < 10 || columns[0] == "file") continue;
        Truth& truth = result[columns[0]];
        truth.capHeight = std::stof(columns[9]);
        truth.characters.push_back(
            {std::stof(columns[4]), std::stof(columns[5]), std::stof(columns[6]), std::stof(columns[7])});
    }
    return result;
}

Box inFrame(const Box& box, const Frame& frame, int left, int top, float scale) {
    const float x = (box.middleX() - static_cast<float>(left)) / scale,
                y = (box.middleY() - static_cast<float>(top)) / scale;
    const float along = frame.along(x, y), across = frame.across(x, y);
    const float half = 0.5f * box.width() / scale, tall = 0.5f * box.height() / scale;
    return {along - half, across - tall, along + half, across + tall};
}

}  // namespace dravik
