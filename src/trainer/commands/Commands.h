// The commands behind the command line, and what the command line may ask for. Each writes its results
// to `out` and its problems to `err`, one line each, and returns the exit code: 0 done, 1 failed in whole or
// in part, 130 interrupted.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "base/JobFolder.h"
#include "engine/classifier/Confidence.h"
#include "engine/image/ImageDecoder.h"
#include "engine/segmentation/SegmentationSettings.h"
#include "tool/FontHistory.h"

namespace dravik::trainer {

inline constexpr char kProgram[] = "dravik-trainer";

struct CommandStreams {
    std::ostream& out;
    std::ostream& err;
    bool errIsTerminal = false;
    std::istream* in = nullptr;  // null: the program's own

    // One line on `err`, with the program's name in front.
    void problem(const std::string& text) const;
    // A line on `err` for each font that has unsaved changes of an earlier program again.
    void tellRecovered(tool::FontHistory& fonts) const;
};

// The text on one line: line breaks and tabs become blanks, and blanks in a row become one.
std::string onOneLine(const std::string& text);

// Settings that are given take the place of the font's own.
struct SettingsOptions {
    std::optional<engine::RotatedBox> region;
    bool wholeImage = false;  // no region
    std::optional<engine::Polarity> polarity;
    std::optional<engine::PrintKind> kind;
    std::optional<int> smallestHeight;

    engine::SegmentationSettings over(engine::SegmentationSettings settings) const;
};

struct LearnOptions {
    std::string font;
    std::string samples;                    // the list's file
    std::optional<std::string> characters;  // the set that the font is to have
    std::optional<std::int32_t> seconds;    // time limit of the run
    SettingsOptions settings;               // which the font then has
    JobFolder folder;
};

int learnFont(const LearnOptions& options, const engine::ImageDecoder& decoder,
              const CommandStreams& streams);

struct ReadOptions {
    // What is printed of each image: its text on a line, a row of comma-separated values, or an object with
    // all that is known of its characters.
    enum class Format { Lines, Csv, Json };

    std::string font;
    std::vector<std::string> images;  // files, folders, and "-" for names on standard input, one a line
    std::string samples;              // a list of images with the text that each should have; "" for none
    Format format = Format::Lines;
    int threads = 0;                            // that read at once; 0 for one on each processor
    double rejectLimit = engine::kRejectLimit;  // readings with less confidence are printed as "?"
    bool showsConfidence = false;
    bool usesContext = true;  // characters help to tell their neighbours
    SettingsOptions settings;
    JobFolder folder;
};

int readImages(const ReadOptions& options, const engine::ImageDecoder& decoder,
               const CommandStreams& streams);

struct FontsOptions {
    JobFolder folder;
};

int listFonts(const FontsOptions& options, const CommandStreams& streams);

struct VersionsOptions {
    std::string font;  // "" for all
    JobFolder folder;
};

// Lists what is kept of fonts as they once were.
int listVersions(const VersionsOptions& options, const CommandStreams& streams);

struct RestoreOptions {
    std::string font;     // whose version
    std::string version;  // its identifier; "" for the newest that was saved or deleted
    std::string as;       // the font that it becomes; "" for that of its own name
    JobFolder folder;
};

int restoreVersion(const RestoreOptions& options, const CommandStreams& streams);

struct ReportOptions {
    std::string font;
    std::string file;  // HTML
    JobFolder folder;
};

// Checks a font and writes its accuracy page.
int reportFont(const ReportOptions& options, const CommandStreams& streams);

}  // namespace dravik::trainer
