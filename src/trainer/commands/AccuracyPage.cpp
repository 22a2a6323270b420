#include "trainer/commands/AccuracyPage.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <span>
#include <string_view>
#include <vector>

#include "base/NumberFormat.h"
#include "base/Text.h"
#include "base/TimeText.h"
#include "engine/font/Bytes.h"
#include "engine/font/SampleOrigin.h"

namespace dravik::trainer {
namespace {

constexpr double kDoubtfulDistance = 0.5;
constexpr std::size_t kMostDoubtful = 60;
constexpr std::size_t kMostOfAPair = 12;
constexpr std::size_t kMostPairs = 50;
constexpr int kFewSamples = 3;

constexpr std::string_view kStyle =
    "body{font:15px/1.5 sans-serif;max-width:60em;margin:2em auto;padding:0 1em;color:#222;background:#fff}"
    "h1{font-size:1.6em}h2{font-size:1.2em;margin-top:2em}"
    "table{border-collapse:collapse}td,th{border:1px solid #bbb;padding:.2em .6em;text-align:left}"
    "td.n{text-align:right}.few{background:#fde2e2}"
    "figure{display:inline-block;margin:.3em;text-align:center;vertical-align:top}"
    "figure img{height:64px;image-rendering:auto;border:1px solid #ccc}"
    "figcaption{font-size:.8em;max-width:9em;overflow-wrap:anywhere}";

std::string escaped(std::string_view text) {
    std::string result;
    for (const char c : text) {
        switch (c) {
            case '&':
                result += "&amp;";
                break;
            case '<':
                result += "&lt;";
                break;
            case '>':
                result += "&gt;";
                break;
            case '"':
                result += "&quot;";
                break;
            case '\'':
                result += "&#39;";
                break;
            default:
                result += static_cast<unsigned char>(c) < 0x20 ? ' ' : c;
        }
    }
    return result;
}

std::string base64(std::span<const std::uint8_t> bytes) {
    constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string result;
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        std::uint32_t three = 0;
        for (std::size_t k = 0; k < 3; ++k) three = three << 8 | (i + k < bytes.size() ? bytes[i + k] : 0u);
        for (std::size_t k = 0; k < 4; ++k)
            result += i + k > bytes.size() ? '=' : kDigits[three >> (18 - 6 * k) & 63];
    }
    return result;
}

void put32(std::vector<std::uint8_t>& bytes, std::uint32_t value) {
    for (int shift = 24; shift >= 0; shift -= 8) bytes.push_back(static_cast<std::uint8_t>(value >> shift));
}

void putChunk(std::vector<std::uint8_t>& file, std::string_view type,
              const std::vector<std::uint8_t>& content) {
    put32(file, static_cast<std::uint32_t>(content.size()));
    const std::size_t start = file.size();
    file.insert(file.end(), type.begin(), type.end());
    file.insert(file.end(), content.begin(), content.end());
    put32(file, engine::checksum(std::span(file).subspan(start)));
}

// A grey picture of 8 bits a pixel, whose pixels are stored as they are: at most 32 x 32 of them.
std::vector<std::uint8_t> pngOf(const engine::GreyImage& image) {
    std::vector<std::uint8_t> rows;
    for (int y = 0; y < image.height(); ++y) {
        rows.push_back(0);
        rows.insert(rows.end(), image.row(y).begin(), image.row(y).end());
    }
    std::uint32_t a = 1, b = 0;
    for (const std::uint8_t byte : rows) a = (a + byte) % 65521, b = (b + a) % 65521;
    const auto size = static_cast<std::uint16_t>(rows.size());
    std::vector<std::uint8_t> data{0x78, 0x01, 1};
    for (const std::uint16_t value : {size, static_cast<std::uint16_t>(~size)}) {
        data.push_back(static_cast<std::uint8_t>(value));
        data.push_back(static_cast<std::uint8_t>(value >> 8));
    }
    data.insert(data.end(), rows.begin(), rows.end());
    put32(data, b << 16 | a);

    std::vector<std::uint8_t> file{0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    std::vector<std::uint8_t> head;
    put32(head, static_cast<std::uint32_t>(image.width()));
    put32(head, static_cast<std::uint32_t>(image.height()));
    head.insert(head.end(), {8, 0, 0, 0, 0});
    putChunk(file, "IHDR", head);
    putChunk(file, "IDAT", data);
    putChunk(file, "IEND", {});
    return file;
}

std::string imageName(const engine::Sample& sample) {
    if (!sample.origin || !sample.origin->image) return {};
    const std::string& path = sample.origin->image->name;
    return path.substr(path.find_last_of("/\\") + 1);
}

std::string figure(const engine::Sample& sample, const std::string& words) {
    std::string html = "<figure>";
    if (sample.origin && !sample.origin->picture.empty())
        html += "<img alt=\"" + escaped(characterOf(sample.code)) + "\" src=\"data:image/png;base64," +
                base64(pngOf(engine::unpacked(sample.origin->picture))) + "\">";
    html += "<figcaption>" + escaped(words);
    if (const std::string name = imageName(sample); !name.empty()) html += "<br>" + escaped(name);
    return html + "</figcaption></figure>\n";
}

std::string rowOf(std::initializer_list<std::string> cells, const char* kind = "td") {
    std::string html = "<tr>";
    for (const std::string& cell : cells)
        html += std::string("<") + kind + ">" + escaped(cell) + "</" + kind + ">";
    return html + "</tr>\n";
}

std::string charactersTable(const engine::SampleColumns& samples) {
    struct Counted {
        int samples = 0;
        double largest = 0;
    };
    std::map<std::int32_t, Counted> characters;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        Counted& one = characters[samples.codes[i]];
        ++one.samples;
        one.largest = std::max(one.largest, samples.distances[i]);
    }
    std::string html = "<table>\n" + rowOf({"Character", "Samples", "Largest Distance"}, "th");
    for (const auto& [code, one] : characters)
        html += (one.samples < kFewSamples ? "<tr class=\"few\"><td>" : "<tr><td>") +
                escaped(characterOf(code)) + "</td><td class=\"n\">" + std::to_string(one.samples) +
                "</td><td class=\"n\">" + formatNumber(one.largest, "0.000") + "</td></tr>\n";
    return html + "</table>\n<p>Marked: fewer than " + std::to_string(kFewSamples) + " samples.</p>\n";
}

const engine::Sample* sampleOf(const engine::SampleColumns& samples, std::uint64_t serial) {
    const auto found = std::lower_bound(
        samples.samples.begin(), samples.samples.end(), serial,
        [](const engine::Sample* sample, std::uint64_t wanted) { return sample->serial < wanted; });
    return found != samples.samples.end() && (*found)->serial == serial ? *found : nullptr;
}

std::string checkSection(const engine::SampleColumns& samples, const engine::HeldOutResult* check) {
    if (!check) return "<p>Nothing could be checked: that takes two samples each of two characters.</p>\n";
    std::string html = "<p>" + escaped(engine::heldOutText(*check)) + "</p>\n";
    if (check->confusions.empty()) return html;
    html += "<h2>Confusions</h2>\n<table>\n" + rowOf({"Character", "Read as", "Times"}, "th");
    for (const engine::Confusion& one : check->confusions)
        html += rowOf({characterOf(one.code), characterOf(one.readAs), std::to_string(one.count)});
    html += "</table>\n";
    for (std::size_t i = 0; i < std::min(check->confusions.size(), kMostPairs); ++i) {
        const engine::Confusion& pair = check->confusions[i];
        std::size_t shown = 0;
        for (const engine::MisreadSample& one : check->misread) {
            if (one.code != pair.code || one.readAs != pair.readAs || shown == kMostOfAPair) continue;
            const engine::Sample* sample = sampleOf(samples, one.serial);
            if (!sample) continue;
            html += figure(*sample, characterOf(one.code) + ", read as " + characterOf(one.readAs));
            ++shown;
        }
    }
    return html;
}

std::string doubtfulSection(const engine::SampleColumns& samples) {
    std::vector<std::size_t> doubtful;
    for (std::size_t i = 0; i < samples.size(); ++i)
        if (samples.distances[i] >= kDoubtfulDistance) doubtful.push_back(i);
    std::stable_sort(doubtful.begin(), doubtful.end(), [&samples](std::size_t a, std::size_t b) {
        return samples.distances[a] > samples.distances[b];
    });
    std::string html = "<h2>Doubtful samples</h2>\n<p>" + std::to_string(doubtful.size()) +
                       " of Distance 0.5 or more: they look as much like another character.</p>\n";
    for (std::size_t i = 0; i < std::min(doubtful.size(), kMostDoubtful); ++i)
        html +=
            figure(*samples.samples[doubtful[i]], characterOf(samples.codes[doubtful[i]]) + ", Distance " +
                                                      formatNumber(samples.distances[doubtful[i]], "0.000"));
    if (doubtful.size() > kMostDoubtful)
        html += "<p>The first " + std::to_string(kMostDoubtful) + " are shown.</p>\n";
    return html;
}

}  // namespace

std::string accuracyPage(const AccuracyReport& report) {
    const engine::SampleColumns& samples = *report.samples;
    std::string html =
        "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n<title>Accuracy of font " +
        escaped(report.font) + "</title>\n<style>" + std::string(kStyle) +
        "</style>\n</head>\n<body>\n<h1>Accuracy of font " + escaped(report.font) + "</h1>\n<p>Page of " +
        escaped(localTimeText()) + "; font file of " +
        escaped(report.written.empty() ? "no save yet" : report.written) + ", " +
        (report.isTrained ? "trained" : "not trained") + ", " + std::to_string(samples.size()) +
        (samples.size() == 1 ? " sample" : " samples") + ".</p>\n<h2>Held-out check</h2>\n";
    html += checkSection(samples, report.check);
    html += doubtfulSection(samples);
    html += "<h2>Samples per character</h2>\n" + charactersTable(samples);
    return html + "</body>\n</html>\n";
}

}  // namespace dravik::trainer
