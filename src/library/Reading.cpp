#include "library/Reading.h"

#include <cstring>
#include <memory>
#include <optional>
#include <utility>

#include "base/JobFolder.h"
#include "engine/font/FontLibrary.h"
#include "library/Boundary.h"
#include "library/Images.h"
#include "tool/FontName.h"

using namespace dravik;
using namespace dravik::library;

struct dravik_font {
    explicit dravik_font(const engine::FontRecord& font) : reader(font) {
        for (const std::string& character : reader.characters()) characters += character;
    }
    const engine::FontReader reader;
    std::string characters;
};

dravik_reading::dravik_reading(std::vector<engine::ReadCharacter> all, double limit)
    : read(std::move(all)), rejectLimit(limit) {
    std::size_t count = 0;
    for (const engine::ReadCharacter& one : read) count += one.alternatives.size();
    alternatives.reserve(count);
    characters.reserve(read.size());
    for (const engine::ReadCharacter& one : read) {
        if (!characters.empty() && characters.back().line != one.place.line) text += '\n';
        text += engine::shownCharacter(one, limit);
        const dravik_alternative* first = alternatives.data() + alternatives.size();
        for (const engine::Alternative& other : one.alternatives)
            alternatives.push_back({other.character.c_str(), other.confidence});
        const engine::FoundCharacter& place = one.place;
        characters.push_back({one.character.c_str(),
                              one.confidence,
                              {place.left, place.top, place.right, place.bottom},
                              place.line,
                              static_cast<std::int32_t>(one.alternatives.size()),
                              one.alternatives.empty() ? nullptr : first});
    }
}

namespace {

dravik_font* opened(const std::string& file) {
    const engine::FontRecord record = engine::readFont(file);
    if (record.training.empty())
        throw Refusal{DRAVIK_NOT_TRAINED, "The font in \"" + file + "\" is not trained"};
    return new dravik_font(record);
}

}  // namespace

const char* dravik_version() {
    return DRAVIK_VERSION;
}

dravik_status dravik_font_open(const char* file, dravik_font** font, dravik_error* error) {
    return guarded(error, [&] {
        checkPointer(file, "file");
        checkPointer(font, "font");
        *font = opened(file);
    });
}

dravik_status dravik_font_open_named(const char* jobs, const char* name, dravik_font** font,
                                     dravik_error* error) {
    return guarded(error, [&] {
        checkText(name, "name");
        checkPointer(font, "font");
        const JobFolder folder = jobs ? JobFolder(jobs) : JobFolder();
        const std::optional<std::string> found =
            tool::fontNamed(name, engine::FontLibrary(folder, false).names());
        if (!found)
            throw Refusal{DRAVIK_NOT_FOUND,
                          "There is no font \"" + std::string(name) + "\" in " + folder.fontsFolder()};
        *font = opened(folder.fontFile(*found));
    });
}

void dravik_font_free(dravik_font* font) {
    delete font;
}

const char* dravik_font_characters(const dravik_font* font) {
    return font ? font->characters.c_str() : "";
}

dravik_status dravik_font_read(const dravik_font* font, const dravik_image* image,
                               const dravik_settings* settings, dravik_reading** reading,
                               dravik_error* error) {
    return guarded(error, [&] {
        checkPointer(font, "font");
        checkPointer(reading, "reading");
        const ImagePart part = partToRead(image, settings, font->reader.settings());
        std::vector<engine::ReadCharacter> read = font->reader.read(part.pixels, part.settings);
        for (engine::ReadCharacter& one : read) {
            one.place.left += part.left;
            one.place.right += part.left;
            one.place.top += part.top;
            one.place.bottom += part.top;
        }
        *reading =
            new dravik_reading(std::move(read), settings ? settings->rejectLimit : engine::kRejectLimit);
    });
}

void dravik_reading_free(dravik_reading* reading) {
    delete reading;
}

const char* dravik_reading_text(const dravik_reading* reading) {
    return reading ? reading->text.c_str() : "";
}

const dravik_character* dravik_reading_characters(const dravik_reading* reading, size_t* count) {
    *count = reading ? reading->characters.size() : 0;
    return *count > 0 ? reading->characters.data() : nullptr;
}
