#include "evaluate/PlainPeer.h"

#include <algorithm>
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>
#include <vector>

namespace dravik {

using namespace engine;
namespace {

struct Part {
    cv::Rect box;
    int area = 0;
};

std::vector<Part> parts(const cv::Mat& ink) {
    cv::Mat labels, statistics, centroids;
    const int count = cv::connectedComponentsWithStats(ink, labels, statistics, centroids, 8);
    std::vector<Part> result;
    for (int i = 1; i < count; ++i) {
        const auto value = [&](int column) { return statistics.at<int>(i, column); };
        const Part part{{value(cv::CC_STAT_LEFT), value(cv::CC_STAT_TOP), value(cv::CC_STAT_WIDTH),
                         value(cv::CC_STAT_HEIGHT)},
                        value(cv::CC_STAT_AREA)};
        if (part.area >= 4 && part.box.width < 0.8 * ink.cols && part.box.height < 0.95 * ink.rows)
            result.push_back(part);
    }
    return result;
}

// The height that all but a fifth of the ink does not exceed.
int usualHeight(std::vector<Part> of) {
    std::sort(of.begin(), of.end(), [](const Part& a, const Part& b) { return a.box.height < b.box.height; });
    double all = 0, below = 0;
    for (const Part& part : of) all += part.area;
    for (const Part& part : of)
        if ((below += part.area) >= 0.8 * all) return part.box.height;
    return 0;
}

bool oneAboveOther(const cv::Rect& a, const cv::Rect& b, int height) {
    const int shared = std::min(a.x + a.width, b.x + b.width) - std::max(a.x, b.x);
    const int gap = std::max(a.y, b.y) - std::min(a.y + a.height, b.y + b.height);
    return 2 * shared > std::min(a.width, b.width) && gap < 0.45 * height && (a | b).height < 1.4 * height;
}

// Two short strokes side by side at one height.
bool quotes(const cv::Rect& a, const cv::Rect& b, int height) {
    const int gap = std::max(a.x, b.x) - std::min(a.x + a.width, b.x + b.width);
    return gap < 0.3 * height && std::abs(a.y - b.y) < 0.1 * height &&
           std::abs(a.height - b.height) < 0.15 * height && std::max(a.height, b.height) < 0.5 * height &&
           a.height > a.width && b.height > b.width;
}

}  // namespace

std::size_t countPlainly(const GreyImage& image) {
    cv::Mat grey(image.height(), image.width(), CV_8UC1);
    for (int y = 0; y < image.height(); ++y) std::copy(image.row(y).begin(), image.row(y).end(), grey.ptr(y));
    cv::medianBlur(grey, grey, 3);
    cv::GaussianBlur(grey, grey, {3, 3}, 0);
    cv::Mat ground, difference, ink;
    const int wide = (std::min(grey.rows, grey.cols) / 2) | 1;
    cv::blur(grey, ground, {wide, wide});
    cv::blur(ground, ground, {wide, wide});
    cv::subtract(grey, ground, difference, {}, CV_16S);
    // Print takes less room than its background: the longer tail is the print.
    cv::Mat cube;
    difference.convertTo(cube, CV_64F);
    if (cv::sum(cube.mul(cube).mul(cube))[0] < 0) difference = -difference;
    cv::normalize(difference, difference, 0, 255, cv::NORM_MINMAX);
    difference.convertTo(ink, CV_8U);
    cv::threshold(ink, ink, 0, 255, cv::THRESH_BINARY | cv::THRESH_OTSU);
    std::vector<Part> found = parts(ink);
    constexpr std::size_t kMostParts = 3000;  // more is noise, and merging takes the square of them
    if (found.size() > kMostParts) return found.size();

    if (found.empty()) return 0;
    // Many small parts of one size are dots.
    std::vector<int> extents;
    for (const Part& part : found) extents.push_back(std::max(part.box.width, part.box.height));
    std::nth_element(extents.begin(), extents.begin() + static_cast<std::ptrdiff_t>(extents.size() / 2),
                     extents.end());
    const int usual = extents[extents.size() / 2];
    const auto alike = std::count_if(extents.begin(), extents.end(),
                                     [usual](int e) { return 10 * e >= 6 * usual && 10 * e <= 17 * usual; });
    if (found.size() > 50 && static_cast<double>(alike) > 0.7 * static_cast<double>(extents.size())) {
        const int side = usual | 1;
        cv::morphologyEx(ink, ink, cv::MORPH_CLOSE,
                         cv::getStructuringElement(cv::MORPH_ELLIPSE, {side, side}));
        found = parts(ink);
    }
    const int height = usualHeight(found);
    std::erase_if(found, [height](const Part& part) { return part.area < 0.008 * height * height; });
    for (std::size_t i = 0; i < found.size(); ++i)
        for (std::size_t j = i + 1; j < found.size(); ++j)
            if (oneAboveOther(found[i].box, found[j].box, height) ||
                quotes(found[i].box, found[j].box, height)) {
                found[i].box |= found[j].box;
                found.erase(found.begin() + static_cast<std::ptrdiff_t>(j));
                j = i;
            }
    return found.size();
}

}  // namespace dravik
