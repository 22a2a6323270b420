#include "evaluate/Counting.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <map>
#include <memory>
#include <set>
#include <sstream>
#include <vector>

#include "engine/LabelledImages.h"
#include "engine/PngFile.h"
#include "engine/classifier/SceneReading.h"
#include "engine/recogniser/BaseReader.h"
#include "engine/segmentation/Segmentation.h"
#include "evaluate/PlainPeer.h"
#include "evaluate/Times.h"

namespace dravik {

using namespace engine;
namespace {

struct Share {
    int exact = 0, plain = 0, all = 0;
    void add(bool right, bool plainRight = false) {
        ++all;
        exact += right ? 1 : 0;
        plain += plainRight ? 1 : 0;
    }
};

void print(const std::string& name, const Share& share) {
    if (share.all)
        std::printf("  %-20s %5d of %5d  %6.2f %%   plain %6.2f %%\n", name.c_str(), share.exact, share.all,
                    100.0 * share.exact / share.all, 100.0 * share.plain / share.all);
}

std::vector<std::string> fields(const std::string& row, char separator) {
    std::vector<std::string> result;
    std::stringstream in(row);
    for (std::string field; std::getline(in, field, separator);) result.push_back(field);
    return result;
}

// Tier and tags of each file.
std::map<std::string, std::vector<std::string>> kinds(const std::string& folder) {
    std::map<std::string, std::vector<std::string>> result;
    std::ifstream table(folder + "/meta.tsv");
    for (std::string row; std::getline(table, row);) {
        const std::vector<std::string> columns = fields(row, '\t');
        if (columns.size() < 8 || columns[0] == "file") continue;
        std::vector<std::string>& kind = result[columns[0]];
        kind = {columns[2]};
        for (const std::string& tag : fields(columns[7], ',')) kind.push_back(tag);
    }
    return result;
}

void countDigits(const std::string& file) {
    const GreyImage mosaic = readPng(file);
    constexpr int kCell = 28;
    Share share;
    for (int top = 0; top + kCell <= mosaic.height(); top += kCell)
        for (int left = 0; left + kCell <= mosaic.width(); left += kCell) {
            GreyImage cell(kCell, kCell);
            for (int y = 0; y < kCell; ++y)
                for (int x = 0; x < kCell; ++x) cell(x, y) = mosaic(left + x, top + y);
            share.add(segment(cell, takeWholeCharacters).glyphs.size() == 1, countPlainly(cell) == 1);
        }
    print("printed_digits", share);
}

void countPage(const std::string& name, const std::string& image, const std::string& text) {
    std::ifstream in(text);
    int expected = 0, lines = 0;
    for (std::string row; std::getline(in, row);) {
        // A character of several bytes counts once.
        const auto count = std::count_if(row.begin(), row.end(), [](char c) {
            return static_cast<unsigned char>(c) > ' ' && (static_cast<unsigned char>(c) & 0xC0) != 0x80;
        });
        expected += static_cast<int>(count);
        lines += count > 0;
    }
    const Segmentation found = segment(readPng(image), takeWholeCharacters);
    std::printf("  %-20s %zu characters in %zu lines found, %d in %d expected\n", name.c_str(),
                found.glyphs.size(), found.lines.size(), expected, lines);
}

}  // namespace

void countFolder(const std::string& folder, bool verbose) {
    const auto kindOf = kinds(folder);
    Share all, calm, dots, strokes;
    std::map<std::string, Share> byKind, byFont;
    for (const LabelledImage& image : labelledImages(folder)) {
        const auto pixels = std::make_shared<GreyImage>(readPng(image.file));
        const Scene scene = findScene(pixels);
        const std::size_t found = scene.characters(), expected = characterCount(image.text);
        const bool right = found == expected;
        const bool plain = countPlainly(*pixels) == expected;
        all.add(right, plain);
        (image.font.starts_with("dot") ? dots : strokes).add(right, plain);
        if (const auto kind = kindOf.find(image.name); kind != kindOf.end()) {
            if (kind->second.front() != "hard") calm.add(right, plain);
            for (const std::string& one : kind->second) byKind[one].add(right, plain);
            byFont[image.font].add(right, plain);
        }
        if (verbose && !right) {
            std::printf("    %s: %zu of %zu, lines", image.name.c_str(), found, expected);
            std::map<int, int> counts;
            for (const PlacedGlyph& glyph : allPlaces(scene)) ++counts[glyph.line];
            for (const auto& [line, count] : counts) std::printf(" %d", count);
            if (const auto kind = kindOf.find(image.name); kind != kindOf.end())
                for (const std::string& one : kind->second) std::printf(" %s", one.c_str());
            std::printf("  %s\n", image.text.c_str());
        }
    }
    std::printf("%s\n", folder.c_str());
    print("all", all);
    print("clean and typical", calm);
    print("hard", byKind["hard"]);
    print("dot matrix", dots);
    print("not dot matrix", strokes);
    for (const auto& [kind, share] : byKind)
        if (kind != "-" && kind != "hard") print("  " + kind, share);
    for (const auto& [font, share] : byFont)
        if (share.exact < share.all) print("  font " + font, share);
}

void countShared(const std::string& folder) {
    for (const char* name : {"rendered_lines", "rendered_charset", "ocrb_lines", "photo"})
        countFolder(folder + "/" + name, true);
    countDigits(folder + "/printed_digits/mosaic.png");
    for (const std::string page : {"eurotext", "phototest"})
        countPage(page, folder + "/scans/" + page + ".png", folder + "/scans/" + page + ".txt");
}

void countScenes(const std::string& folder, bool verbose) {
    const auto kindOf = kinds(folder);
    Share all;
    std::map<std::string, Share> byKind;
    Times times;
    double sum = 0;
    for (const LabelledImage& image : labelledImages(folder)) {
        const auto pixels = std::make_shared<GreyImage>(readPng(image.file));
        const double start = processorTime();
        const Scene scene = findScene(pixels);
        const double time = processorTime() - start;
        const std::vector<PlacedGlyph> places = allPlaces(scene);
        times.add(image.name, places.empty() ? 0 : static_cast<std::size_t>(places.back().line) + 1, time);
        sum += time;
        const std::size_t expected = characterCount(image.text);
        const bool right = scene.characters() == expected;
        all.add(right);
        std::string kindText;
        if (const auto kind = kindOf.find(image.name); kind != kindOf.end())
            for (const std::string& one : kind->second) {
                byKind[one].add(right);
                kindText += " " + one;
            }
        if (verbose && !right) {
            std::printf("    %s: %zu of %zu, lines", image.name.c_str(), scene.characters(), expected);
            for (const ScenePart& part : scene.parts) std::printf(" %zu", part.found.glyphs.size());
            std::printf("%s  %s\n", kindText.c_str(), image.text.c_str());
        }
    }
    std::printf("%s: %.1f ms of processor time a picture\n", folder.c_str(), sum / std::max(1, all.all));
    times.print();
    print("all", all);
    for (const auto& [kind, share] : byKind) print("  " + kind, share);
}

}  // namespace dravik
