#include "screen/histogram/CharHistogram.h"

#include <span>
#include <unordered_map>
#include <utility>

#include "base/Text.h"
#include "tool/Samples.h"

namespace dravik::screen {
namespace {

const char* typeName(std::int16_t type) {
    switch (type) {
        case kFontHistogram:
            return "FontHistogram";
        case kCharacterDistance:
            return "CharacterDistance";
        default:
            return "*unknown type*";
    }
}

// The Distances of the character's samples in the order of the table.
std::vector<double> distancesOf(const tool::RecordTable& samples, const std::string& character) {
    const std::int32_t code = codeOf(character);
    std::vector<double> distances;
    if (characterOf(code) != character) return distances;
    const auto codes = samples.codes();
    const auto values = samples.values();
    for (std::size_t i = 0; i < codes.size(); ++i)
        if (codes[i] == code) distances.push_back(values[i]);
    return distances;
}

// The largest Distance of the samples of each character, by its code; 0 for one without samples. In one pass
// over the samples.
std::vector<double> largestDistances(const tool::RecordTable& samples, std::span<const std::int32_t> wanted) {
    const auto codes = samples.codes();
    const auto values = samples.values();
    std::unordered_map<std::int32_t, double> largest;
    for (const auto code : wanted) largest.emplace(code, 0.0);
    for (std::size_t i = 0; i < codes.size(); ++i)
        if (const auto found = largest.find(codes[i]); found != largest.end() && values[i] >= found->second)
            found->second = values[i];
    std::vector<double> max;
    for (const auto code : wanted) max.push_back(largest[code]);
    return max;
}

}  // namespace

tool::RecordTablePtr CharHistogram::recordsFor(std::int16_t type) {
    if (type == kCharacterDistance)
        return context_.tool->GetSampleData(tool::kAllCommitted, tool::kSampleFields);
    if (type == kFontHistogram)
        return context_.tool->GetSampleData(tool::kAllTrained, tool::kCharacterFields);
    return nullptr;
}

void CharHistogram::DisplayCharHistogram(const std::string& character, std::int16_t type) {
    const std::string entry = "DravikDlg.DisplayCharHistogram(" + character + ", " + typeName(type) + ")";
    context_.procedures.run(entry, "DisplayCharHistogram", [&] {
        context_.screen.sbr.panel("Message").setText("Creating histogram...");
        const auto records = recordsFor(type);
        if (!records || records->isEmpty()) return;
        if (type == kCharacterDistance) {
            showCharacter(*records, character);
        } else {
            showFont(*records);
        }
        context_.platform.show(*m_dlgHist_);
    });
}

void CharHistogram::refill() {
    if (!isOpen()) return;
    context_.procedures.run("", "DisplayCharHistogram", [&] {
        const std::string character = m_dlgHist_->currentCharacter();
        const std::int16_t type = m_dlgHist_->mode();
        const auto records = recordsFor(type);
        const bool none = !records || records->isEmpty();
        if (none || (type == kCharacterDistance && distancesOf(*records, character).empty()))
            return release();
        if (type == kCharacterDistance) {
            showCharacter(*records, character);
        } else {
            showFont(*records);
        }
    });
}

bool CharHistogram::isOpen() const {
    return m_dlgHist_ && m_dlgHist_->loaded();
}

void CharHistogram::showCharacter(const tool::RecordTable& samples, const std::string& character) {
    const auto distances = distancesOf(samples, character);
    openForm();
    m_dlgHist_->setCaption("Histogram of Distance values for " + character);
    m_dlgHist_->SetCharHistogram(distances, character, fontArray_);
}

void CharHistogram::showFont(const tool::RecordTable& characters) {
    const auto counts = characters.values();
    std::vector<std::string> chars;
    for (const auto code : characters.codes()) chars.push_back(characterOf(code));
    const auto max = maxCharDistances(characters);
    openForm();
    m_dlgHist_->setCaption("Frequency Histogram for Font");
    m_dlgHist_->SetFontHistogram({counts.begin(), counts.end()}, chars, max);
}

std::vector<double> CharHistogram::maxCharDistances(const tool::RecordTable& characters) {
    const auto wanted = characters.codes();
    const auto body = [&] {
        const auto samples = context_.tool->GetSampleData(tool::kAllCommitted, tool::kSampleFields);
        return samples ? largestDistances(*samples, wanted) : std::vector<double>(wanted.size());
    };
    return context_.procedures.run("", "MaxCharDistance", body, std::vector<double>(wanted.size()));
}

double CharHistogram::MaxCharDistance(const std::string& character) {
    return context_.procedures.run("Dravikdlg.MaxCharDistance", "MaxCharDistance", [&] {
        const auto samples = context_.tool->GetSampleData(tool::kAllCommitted, tool::kSampleFields);
        const std::int32_t code = codeOf(character);
        if (!samples || characterOf(code) != character) return 0.0;
        return largestDistances(*samples, {&code, 1}).front();
    });
}

void CharHistogram::openForm() {
    if (isOpen()) return;
    m_dlgHist_ = std::make_unique<dlgCharHist>(context_.log, context_.platform, control_);
    m_dlgHist_->load();
}

void CharHistogram::release() {
    if (m_dlgHist_) m_dlgHist_->unload();
    m_dlgHist_.reset();
}

}  // namespace dravik::screen
