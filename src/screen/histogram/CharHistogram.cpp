#include "screen/histogram/CharHistogram.h"

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

// The Distances of the character's samples in the order of the table, which may be nothing.
std::vector<double> distancesOf(const tool::RecordTable* samples, const std::string& character) {
    const std::int32_t code = codeOf(character);
    std::vector<double> distances;
    if (!samples || characterOf(code) != character) return distances;
    const auto codes = samples->codes();
    const auto values = samples->values();
    for (std::size_t i = 0; i < codes.size(); ++i)
        if (codes[i] == code) distances.push_back(values[i]);
    return distances;
}

}  // namespace

tool::RecordTablePtr CharHistogram::recordsFor(std::int16_t type) {
    if (type == kCharacterDistance)
        return context_.tool->GetSampleData(tool::kAllCommitted, tool::kSampleFields);
    if (type == kFontHistogram)
        return context_.tool->GetSampleData(tool::kAllTrained, tool::kCharacterFields);
    return nullptr;
}

void CharHistogram::DisplayCharHistogram(const std::string& character, std::int16_t type, In place) {
    const std::string entry = "DravikDlg.DisplayCharHistogram(" + character + ", " + typeName(type) + ")";
    context_.procedures.run(entry, "DisplayCharHistogram", [&] {
        ui::StatusPanel& message = context_.screen.sbr.panel("Message");
        const std::string before = message.text();
        message.setText("Creating histogram...");
        const auto records = recordsFor(type);
        const bool none = type == kCharacterDistance ? distancesOf(records.get(), character).empty()
                                                     : !records || records->isEmpty();
        const bool refills = place == In::OpenForm && isOpen();
        if (none && !refills) return;
        openForm(place);
        if (type == kCharacterDistance) {
            showCharacter(records, character);
        } else {
            showFont(records);
        }
        if (none) message.setText(before);
        context_.platform.show(*m_dlgHist_);
    });
}

void CharHistogram::refill() {
    if (!isOpen()) return;
    context_.procedures.run("", "DisplayCharHistogram", [&] {
        const std::string character = m_dlgHist_->currentCharacter();
        const auto records = recordsFor(m_dlgHist_->mode());
        if (m_dlgHist_->mode() == kFontHistogram) {
            if (!records || records->isEmpty()) return release();
            showFont(records);
        } else {
            if (distancesOf(records.get(), character).empty()) return release();
            showCharacter(records, character);
        }
    });
}

bool CharHistogram::isOpen() const {
    return m_dlgHist_ && m_dlgHist_->loaded();
}

void CharHistogram::showCharacter(const tool::RecordTablePtr& samples, const std::string& character) {
    m_dlgHist_->setCaption("Histogram of Distance values for " + character);
    m_dlgHist_->SetCharHistogram(distancesOf(samples.get(), character), character, fontArray_);
}

void CharHistogram::showFont(const tool::RecordTablePtr& characters) {
    std::vector<double> counts;
    std::vector<std::string> chars;
    std::vector<double> max;
    if (characters) {
        const auto values = characters->values();
        counts.assign(values.begin(), values.end());
        std::optional<tool::RecordTablePtr> samples;
        for (const auto code : characters->codes()) {
            chars.push_back(characterOf(code));
            max.push_back(MaxCharDistance(chars.back(), samples));
        }
    }
    m_dlgHist_->setCaption("Frequency Histogram for Font");
    m_dlgHist_->SetFontHistogram(counts, chars, max);
}

double CharHistogram::MaxCharDistance(const std::string& character) {
    std::optional<tool::RecordTablePtr> samples;
    return MaxCharDistance(character, samples);
}

double CharHistogram::MaxCharDistance(const std::string& character,
                                      std::optional<tool::RecordTablePtr>& samples) {
    return context_.procedures.run("Dravikdlg.MaxCharDistance", "MaxCharDistance", [&] {
        if (!samples) samples = recordsFor(kCharacterDistance);
        double largest = 0;
        for (const double distance : distancesOf(samples->get(), character))
            if (distance >= largest) largest = distance;
        return largest;
    });
}

void CharHistogram::openForm(In place) {
    if (isOpen() && place == In::OpenForm) return;
    release();
    m_dlgHist_ = std::make_unique<dlgCharHist>(context_.log, context_.platform, control_);
    m_dlgHist_->load();
}

void CharHistogram::release() {
    if (m_dlgHist_) m_dlgHist_->unload();
    m_dlgHist_.reset();
}

}  // namespace dravik::screen
