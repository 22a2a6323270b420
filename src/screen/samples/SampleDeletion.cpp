#include "screen/samples/SampleDeletion.h"

#include "base/Conversions.h"
#include "base/Text.h"
#include "tool/Samples.h"

namespace dravik::screen {
namespace {

constexpr ui::Color kIncludedColor = ui::rgb(128, 128, 255);

}  // namespace

SampleDeletion::SampleDeletion(tool::ToolBinding& tool, modErrors& errors, ui::Platform& platform,
                               IncludeState& includes, SampleCounts& counts, CharOverview& overview,
                               SamplesGrid& grid)
    : tool_(tool),
      errors_(errors),
      platform_(platform),
      includes_(includes),
      counts_(counts),
      overview_(overview),
      grid_(grid) {}

// Walks rows 1 to upper bound - 1: the loop ends as soon as it reaches the last row, which is not looked at.
// A table with a single record is therefore walked past its end, which raises Subscript out of range.
template <class Matches>
void SampleDeletion::deleteCommitted(const tool::RecordTable& table, Matches matches, std::int16_t& deleted) {
    const int last = table.upperRow();
    int row = 1;
    do {
        if (matches(row)) {
            tool_->DeleteSample(tool::sampleIdentifier(tool::SampleKind::Committed, row - 1 - deleted));
            deleted = toInt16(deleted + 1);
        }
        ++row;
    } while (row != last);
}

std::int16_t SampleDeletion::DeleteChar(std::int16_t kind, const std::string& c) {
    std::int16_t result = 0;
    const bool done = errors_.procedures().run("Dravikdlg.DeleteChar", "DeleteChar", [&] {
        std::int16_t deleted = 0;
        if (kind == kDeleteUncommitted) {
            platform_.messageBox(
                {"The feature to delete Uncommitted Samples is not implemented.\r"
                 "See 'DeleteAllSamples'.",
                 ""});
        } else if (kind == kDeleteCommitted) {
            const auto table = tool_->GetSampleData(tool::kAllCommitted, tool::kSampleFields);
            if (!table) return;
            counts_.NumberCommitted(c);
            deleteCommitted(
                *table, [&](int row) { return table->character(row) == c; }, deleted);
        }
        tool_.setFontChanged(true);
        grid_.FillSamplesArray();
        result = deleted;
    });
    return done ? result : std::int16_t{-1};
}

std::int16_t SampleDeletion::DeleteSamplesByDistance(const std::string& Character, double MinDistance,
                                                     double MaxDistance) {
    std::int16_t result = 0;
    const std::string entry = "Dravikdlg.DeleteSamplesByDistance(" + Character + "," +
                              numberText(MinDistance) + "," + numberText(MaxDistance) + ")";
    errors_.procedures().run(entry, "DeleteSamplesByDistance", [&] {
        const auto table = tool_->GetSampleData(tool::kAllCommitted, tool::kSampleFields);
        if (!table) return;
        std::int16_t deleted = 0;
        deleteCommitted(
            *table,
            [&](int row) {
                if (table->character(row) != Character) return false;
                const double distance = table->number(row, 2);
                return MinDistance <= distance && distance <= MaxDistance;
            },
            deleted);
        tool_.setFontChanged(true);
        grid_.FillSamplesArray();
        result = deleted;
    });
    return result;
}

void SampleDeletion::DeleteAllSamples(std::int16_t kind) {
    const char* entry = kind == kDeleteCommitted     ? "DeleteSamples(committed)"
                        : kind == kDeleteUncommitted ? "DeleteSamples(uncommitted)"
                                                     : "Dravikdlg.DeleteAllSamples";
    errors_.procedures().run(entry, "DeleteAllSamples", [&] {
        if (kind == kDeleteUncommitted) {
            const auto table = tool_->GetSampleData(tool::kAllUncommitted, tool::kSampleFields);
            if (!table) return;
            const int last = table->upperRow();
            for (int call = 0; call <= last; ++call)
                tool_->DeleteSample(tool::sampleIdentifier(tool::SampleKind::Uncommitted, 0));
            includes_.m_PendingInclude.clear();
        }
        grid_.FillSamplesArray();
    });
}

void SampleDeletion::DeleteLast() {
    errors_.procedures().run("Dravikdlg.DeleteLast", "DeleteLast", [&] {
        const auto table = tool_->GetSampleData(tool::kAllCommitted, tool::kSampleFields);
        if (!table) return;
        const int last = table->upperRow();
        const int length = toInt32(static_cast<double>(characterCount(includes_.m_LastInclude)));
        if (length == 0) return;
        // The highest identifier names the place behind the last sample; the others are the last include's
        // samples.
        for (int index = last; index >= last - length; --index)
            tool_->DeleteSample(tool::sampleIdentifier(tool::SampleKind::Committed, index));
        tool_.setFontChanged(true);
        includes_.m_IncludedChars = withoutLast(includes_.m_IncludedChars, static_cast<std::size_t>(length));
        errors_.UserMsg("Removed last included: " + includes_.m_LastInclude);
        includes_.m_LastInclude.clear();
        errors_.sbr().panel("LastInclude").setText("");
        overview_.controls().tlbChars.button("Undo").setEnabled(false);
        HighlightIncluded(includes_.m_IncludedChars);
        grid_.FillSamplesArray();
    });
}

void SampleDeletion::HighlightIncluded(const std::string& IncludedChars) {
    errors_.procedures().run("Dravikdlg.HighlightIncluded", "HighlightIncluded", [&] {
        overview_.UpdateCharDisplay();
        for (const auto& label : overview_.controls().lblChar) {
            if (!contains(IncludedChars, label->caption())) continue;
            label->setBackColor(kIncludedColor);
            label->setAccessibleName(label->accessibleName() + ", included");
        }
    });
}

std::optional<tool::CharacterSet> SampleDeletion::FontWithoutChar(const std::string& c) {
    std::optional<tool::CharacterSet> result;
    errors_.procedures().run("Dravikdlg.FontWithoutChar", "FontWithoutChar", [&] {
        tool::CharacterSet set = tool_->GetCharacterSet();
        std::erase(set, c);
        result = std::move(set);
    });
    return result;
}

void SampleDeletion::forgetIncludes() {
    includes_ = {};
    errors_.sbr().panel("LastInclude").setText("");
    overview_.controls().tlbChars.button("Undo").setEnabled(false);
    overview_.controls().tlbChars.button("Undo").setToolTip("Nothing to undo");
}

}  // namespace dravik::screen
