#include "trainer/commands/ReadingFormat.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <ostream>
#include <string_view>

#include "base/NumberFormat.h"

namespace dravik::trainer {
namespace {

std::string confidencesOf(const std::vector<engine::ReadCharacter>& characters) {
    std::string text;
    for (const engine::ReadCharacter& one : characters)
        text += (text.empty() ? "" : " ") + formatNumber(one.confidence, "0.000");
    return text;
}

class Lines : public ReadingFormat {
  public:
    Lines(const ReadOptions& options, std::ostream& out) : options_(options), out_(out) {}

    void add(const ImageReading& reading) override {
        if (!reading.problem.empty()) return;
        out_ << reading.image << '\t' << reading.text(options_.rejectLimit);
        if (options_.showsConfidence) out_ << '\t' << confidencesOf(reading.characters);
        if (reading.expected)
            out_ << '\t' << (reading.isRight() ? "right" : "wrong, should be " + *reading.expected);
        out_ << std::endl;
    }

  private:
    const ReadOptions& options_;
    std::ostream& out_;
};

// RFC 4180, with a row of headings.
class Csv : public ReadingFormat {
  public:
    Csv(const ReadOptions& options, std::ostream& out) : options_(options), out_(out) {
        out_ << "image,text,confidence,expected,right,problem\r\n";
    }

    void add(const ImageReading& reading) override {
        const bool read = reading.problem.empty();
        out_ << quoted(reading.image) << ',' << (read ? quoted(reading.text(options_.rejectLimit)) : "")
             << ',' << (read ? formatNumber(reading.confidence(), "0.000") : "") << ','
             << quoted(reading.expected.value_or("")) << ','
             << (read && reading.expected ? reading.isRight() ? "yes" : "no" : "") << ','
             << quoted(reading.problem) << "\r\n";
        out_.flush();
    }

  private:
    static std::string quoted(const std::string& text) {
        if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
        std::string result = "\"";
        for (const char c : text) result += c == '"' ? std::string("\"\"") : std::string(1, c);
        return result + '"';
    }

    const ReadOptions& options_;
    std::ostream& out_;
};

// An array of objects (RFC 8259), one for each image.
class Json : public ReadingFormat {
  public:
    Json(const ReadOptions& options, std::ostream& out) : options_(options), out_(out) { out_ << '['; }

    void add(const ImageReading& reading) override {
        out_ << (first_ ? "\n" : ",\n") << "{\"image\": " << quoted(reading.image);
        first_ = false;
        if (reading.expected) out_ << ", \"expected\": " << quoted(*reading.expected);
        if (!reading.problem.empty()) {
            out_ << ", \"problem\": " << quoted(reading.problem) << '}';
            out_.flush();
            return;
        }
        out_ << ", \"text\": " << quoted(reading.text(options_.rejectLimit))
             << ", \"confidence\": " << formatNumber(reading.confidence(), "0.0000");
        if (reading.expected) out_ << ", \"right\": " << (reading.isRight() ? "true" : "false");
        out_ << ", \"characters\": [";
        const char* between = "\n  ";
        for (const engine::ReadCharacter& one : reading.characters) {
            out_ << between << "{\"character\": " << quoted(one.character)
                 << ", \"confidence\": " << formatNumber(one.confidence, "0.0000")
                 << ", \"line\": " << one.place.line << ", \"box\": [" << one.place.left << ", "
                 << one.place.top << ", " << one.place.right << ", " << one.place.bottom
                 << "], \"alternatives\": [";
            const char* separator = "";
            for (const engine::Alternative& other : one.alternatives) {
                out_ << separator << "{\"character\": " << quoted(other.character)
                     << ", \"confidence\": " << formatNumber(other.confidence, "0.0000") << '}';
                separator = ", ";
            }
            out_ << "]}";
            between = ",\n  ";
        }
        out_ << "]}";
        out_.flush();
    }
    void end() override { out_ << "\n]\n"; }

  private:
    static std::string quoted(std::string_view text) {
        std::string result = "\"";
        for (const char c : text) {
            std::array<char, 8> escape{};
            if (c == '"' || c == '\\')
                result += {'\\', c};
            else if (static_cast<unsigned char>(c) < 0x20)
                result.append(escape.data(), static_cast<std::size_t>(
                                                 std::snprintf(escape.data(), escape.size(), "\\u%04x", c)));
            else
                result += c;
        }
        return result + '"';
    }

    const ReadOptions& options_;
    std::ostream& out_;
    bool first_ = true;
};

}  // namespace

std::unique_ptr<ReadingFormat> readingFormat(const ReadOptions& options, std::ostream& out) {
    switch (options.format) {
        case ReadOptions::Format::Csv:
            return std::make_unique<Csv>(options, out);
        case ReadOptions::Format::Json:
            return std::make_unique<Json>(options, out);
        case ReadOptions::Format::Lines:
            break;
    }
    return std::make_unique<Lines>(options, out);
}

}  // namespace dravik::trainer
