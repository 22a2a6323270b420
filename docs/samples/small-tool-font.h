// What the small font tool (small-tool.cpp) works with: a font and the file that keeps it, and the characters
// of an image. It reads by the nearest mean, which is enough for clean print whose characters do not touch.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <limits>
#include <map>
#include <string>
#include <utility>
#include <vector>

using Features = std::array<double, 49>;  // the print in 7 x 7 fields of the character, each 0 to 1

struct Sample {
    wchar_t character;
    Features features;
};

// How unlike two are, 0 to 1.
inline double distance(const Features& one, const Features& other) {
    double sum = 0;
    for (std::size_t i = 0; i < one.size(); ++i) sum += std::abs(one[i] - other[i]);
    return sum / static_cast<double>(one.size());
}

struct Font {
    struct Trained {
        long count = 0;
        Features mean{};
    };

    std::wstring characters;
    std::vector<Sample> uncommitted, committed;
    std::map<wchar_t, Trained> trained;

    void train() {
        trained.clear();
        for (const Sample& sample : committed) {
            Trained& one = trained[sample.character];
            ++one.count;
            for (std::size_t i = 0; i < one.mean.size(); ++i)
                one.mean[i] += (sample.features[i] - one.mean[i]) / static_cast<double>(one.count);
        }
    }
    // The set in its order, and behind it what was trained beside.
    std::wstring listed() const {
        std::wstring all = characters;
        for (const auto& [character, one] : trained)
            if (all.find(character) == std::wstring::npos) all += character;
        return all;
    }
    double distanceOf(const Sample& sample) const {
        const auto found = trained.find(sample.character);
        return found == trained.end() ? 0 : distance(sample.features, found->second.mean);
    }
    wchar_t read(const Features& features) const {
        wchar_t best = L'?';
        double nearest = std::numeric_limits<double>::max();
        for (const auto& [character, one] : trained)
            if (const double here = distance(features, one.mean); here < nearest)
                nearest = here, best = character;
        return best;
    }

    // Uncommitted samples are not kept. The file is complete or it is as before.
    bool save(const std::filesystem::path& path) const {
        std::filesystem::path beside = path;
        beside += L".new";
        {
            std::ofstream out(beside);
            out << characters.size();
            for (const wchar_t character : characters) out << ' ' << static_cast<unsigned>(character);
            out << '\n' << committed.size() << '\n';
            for (const Sample& sample : committed) write(out, sample.character, 0, sample.features);
            out << trained.size() << '\n';
            for (const auto& [character, one] : trained) write(out, character, one.count, one.mean);
            if (!out.flush()) return false;
        }
        std::error_code problem;
        std::filesystem::rename(beside, path, problem);
        return !problem;
    }
    bool load(const std::filesystem::path& path) {
        Font read;
        std::ifstream in(path);
        std::size_t count = 0;
        unsigned character = 0;
        long times = 0;
        Features features{};
        const auto next = [&] {
            in >> character >> times;
            for (double& feature : features) in >> feature;
            return static_cast<bool>(in);
        };
        for (in >> count; count > 0 && in >> character; --count)
            read.characters += static_cast<wchar_t>(character);
        for (in >> count; count > 0 && next(); --count)
            read.committed.push_back({static_cast<wchar_t>(character), features});
        for (in >> count; count > 0 && next(); --count)
            read.trained[static_cast<wchar_t>(character)] = {times, features};
        if (in) *this = std::move(read);
        return static_cast<bool>(in);
    }

  private:
    static void write(std::ofstream& out, wchar_t character, long times, const Features& features) {
        out << static_cast<unsigned>(character) << ' ' << times;
        for (const double feature : features) out << ' ' << feature;
        out << '\n';
    }
};

// Grey levels, and the characters that they show: lines divided by blank rows, characters by blank columns.
class Image {
  public:
    Image() = default;
    Image(int width, int height, std::vector<unsigned char> levels)
        : width_(width), height_(height), levels_(std::move(levels)) {
        const auto [darkest, lightest] = std::minmax_element(levels_.begin(), levels_.end());
        threshold_ = (*darkest + *lightest + 1) / 2;
        const auto dark =
            std::count_if(levels_.begin(), levels_.end(), [&](int level) { return level < threshold_; });
        printIsDark_ = 2 * dark < static_cast<std::ptrdiff_t>(levels_.size());
    }
    bool empty() const { return levels_.empty(); }

    std::vector<std::vector<Features>> lines() const {
        std::vector<std::vector<Features>> all;
        for (const auto& [top, bottom] :
             stretches(height_, [&](int y) { return print(0, y, width_, y + 1) > 0; })) {
            all.emplace_back();
            for (const auto& [left, right] :
                 stretches(width_, [&, t = top, b = bottom](int x) { return print(x, t, x + 1, b) > 0; }))
                all.back().push_back(features(left, top, right, bottom));
        }
        return all;
    }

  private:
    // Where one piece begins and where it has ended, from 0 to `size`.
    template <typename HasPrint>
    static std::vector<std::pair<int, int>> stretches(int size, HasPrint hasPrint) {
        std::vector<std::pair<int, int>> all;
        bool inside = false;
        for (int at = 0; at < size; ++at) {
            const bool here = hasPrint(at);
            if (here && !inside) all.emplace_back(at, at);
            if (here) all.back().second = at + 1;
            inside = here;
        }
        return all;
    }
    // The part of the box that is print.
    double print(int left, int top, int right, int bottom) const {
        int count = 0;
        for (int y = top; y < bottom; ++y)
            for (int x = left; x < right; ++x)
                count += (levels_[static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) +
                                  static_cast<std::size_t>(x)] < threshold_) == printIsDark_;
        return static_cast<double>(count) / ((right - left) * (bottom - top));
    }
    Features features(int left, int top, int right, int bottom) const {
        const auto place = [](int begin, int end, int field) { return begin + (end - begin) * field / 7; };
        Features all{};
        for (int field = 0; field < 49; ++field) {
            const int x = place(left, right, field % 7), y = place(top, bottom, field / 7);
            all[static_cast<std::size_t>(field)] =
                print(x, y, std::max(x + 1, place(left, right, field % 7 + 1)),
                      std::max(y + 1, place(top, bottom, field / 7 + 1)));
        }
        return all;
    }

    int width_ = 0, height_ = 0;
    std::vector<unsigned char> levels_;
    int threshold_ = 0;
    bool printIsDark_ = true;
};
