#include "screen/samples/SampleDeletion.h"

#include <algorithm>

#include "base/Conversions.h"
#include "base/Text.h"
#include "tool/Samples.h"

namespace dravik::screen {
// Walks rows 1 to upper bound - 1: the loop ends as soon as it reaches the last row, which is not looked at.
// A table with a single record is therefore walked past its end, which raises Subscript out of range.
template <class Matches>
void SampleDeletion::deleteCommitted(const tool::RecordTable& table, Matches matches, std::int16_t& deleted,
                                     ActScope& act) {
    const int last = table.upperRow();
    int row = 1;
    refillingOnFailure([&] {
        do {
            if (matches(row)) {
                context_.tool->DeleteSample(
                    tool::sampleIdentifier(tool::SampleKind::Committed, row - 1 - deleted));
                act.sample(table.character(row));
                deleted = toInt16(deleted + 1);
            }
            ++row;
        } while (row != last);
    });
}

// What was deleted before the failure has moved the samples behind it: the grid must not go on with the
// numbers from before.
template <class Deletion>
void SampleDeletion::refillingOnFailure(Deletion deletion) {
    try {
        deletion();
    } catch (...) {
        grid_.FillSamplesArray();
        throw;
    }
}

std::int16_t SampleDeletion::DeleteChar(std::int16_t kind, const std::string& c) {
    ActScope act(context_, OperatorAct::Kind::DeletionOfCharacter, c);
    const auto body = [&]() -> std::int16_t {
        std::int16_t deleted = 0;
        if (kind == kDeleteUncommitted) {
            context_.platform.messageBox(
                {"The feature to delete Uncommitted Samples is not implemented.\r"
                 "See 'DeleteAllSamples'.",
                 ""});
        } else if (kind == kDeleteCommitted) {
            const auto table = context_.tool->GetSampleData(tool::kAllCommitted, tool::kSampleFields);
            if (!table) return 0;
            counts_.NumberCommitted(c);
            deleteCommitted(
                *table, [&](int row) { return table->character(row) == c; }, deleted, act);
        }
        context_.tool.setFontChanged(true);
        grid_.FillSamplesArray();
        return deleted;
    };
    return context_.procedures.run("Dravikdlg.DeleteChar", "DeleteChar", body, std::int16_t{-1});
}

std::int16_t SampleDeletion::DeleteSamplesByDistance(const std::string& Character, double MinDistance,
                                                     double MaxDistance) {
    ActScope act(context_, OperatorAct::Kind::DeletionByDistance, Character);
    const std::string entry = "Dravikdlg.DeleteSamplesByDistance(" + Character + "," +
                              numberText(MinDistance) + "," + numberText(MaxDistance) + ")";
    return context_.procedures.run(entry, "DeleteSamplesByDistance", [&]() -> std::int16_t {
        const auto table = context_.tool->GetSampleData(tool::kAllCommitted, tool::kSampleFields);
        if (!table) return 0;
        std::int16_t deleted = 0;
        deleteCommitted(
            *table,
            [&](int row) {
                if (table->character(row) != Character) return false;
                const double distance = table->number(row, 2);
                return MinDistance <= distance && distance <= MaxDistance;
            },
            deleted, act);
        context_.tool.setFontChanged(true);
        grid_.FillSamplesArray();
        return deleted;
    });
}

void SampleDeletion::DeleteAllSamples(std::int16_t kind) {
    const char* entry = kind == kDeleteCommitted     ? "DeleteSamples(committed)"
                        : kind == kDeleteUncommitted ? "DeleteSamples(uncommitted)"
                                                     : "Dravikdlg.DeleteAllSamples";
    ActScope act(context_, OperatorAct::Kind::Include);
    context_.procedures.run(entry, "DeleteAllSamples", [&] {
        if (kind == kDeleteUncommitted) {
            const auto table = context_.tool->GetSampleData(tool::kAllUncommitted, tool::kSampleFields);
            if (!table) return act.takenBack();
            const int last = table->upperRow();
            for (int call = 0; call <= last; ++call)
                context_.tool->DeleteSample(tool::sampleIdentifier(tool::SampleKind::Uncommitted, 0));
            act.takenBack();
            context_.includes.m_PendingInclude.clear();
        }
        grid_.FillSamplesArray();
    });
}

void SampleDeletion::DeleteLast() {
    ActScope act(context_, OperatorAct::Kind::UndoOfInclude);
    context_.procedures.run("Dravikdlg.DeleteLast", "DeleteLast", [&] {
        const auto table = context_.tool->GetSampleData(tool::kAllCommitted, tool::kSampleFields);
        if (!table) return;
        const int last = table->upperRow();
        const int length = toInt32(static_cast<double>(characterCount(context_.includes.m_LastInclude)));
        if (length == 0) return;
        // The highest identifier names the place behind the last sample; the others are the last include's
        // samples.
        const auto left =
            static_cast<int>(std::min(static_cast<std::uint32_t>(length), context_.includes.committed));
        if (left == 0) return;
        refillingOnFailure([&] {
            for (int index = last; index >= last - left; --index) {
                context_.tool->DeleteSample(tool::sampleIdentifier(tool::SampleKind::Committed, index));
                if (index < 0 || index == last) continue;
                --context_.includes.committed;
                act.sample(table->character(index + 1));
            }
        });
        context_.tool.setFontChanged(true);
        context_.includes.m_IncludedChars =
            withoutLast(context_.includes.m_IncludedChars, static_cast<std::size_t>(length));
        context_.errors.UserMsg("Removed last included: " + context_.includes.m_LastInclude);
        context_.includes.m_LastInclude.clear();
        context_.screen.sbr.panel("LastInclude").setText("");
        context_.screen.overview.tlbChars.button("Undo").setEnabled(false);
        context_.screen.overview.tlbChars.button("Undo").setToolTip("Nothing to undo");
        HighlightIncluded(context_.includes.m_IncludedChars);
        grid_.FillSamplesArray();
    });
}

void SampleDeletion::HighlightIncluded(const std::string& IncludedChars) {
    context_.procedures.run("Dravikdlg.HighlightIncluded", "HighlightIncluded", [&] {
        overview_.UpdateCharDisplay();
        for (const auto& label : context_.screen.overview.lblChar) {
            if (!contains(IncludedChars, label->caption())) continue;
            label->setBackColor(kIncludedColor);
            label->setAccessibleName(label->accessibleName() + ", included");
        }
    });
}

std::optional<tool::CharacterSet> SampleDeletion::FontWithoutChar(const std::string& c) {
    return context_.procedures.run("Dravikdlg.FontWithoutChar", "FontWithoutChar", [&] {
        tool::CharacterSet set = context_.tool->GetCharacterSet();
        std::erase(set, c);
        return std::optional(std::move(set));
    });
}

void SampleDeletion::forgetIncludes() {
    context_.includes = {};
    context_.screen.sbr.panel("LastInclude").setText("");
    context_.screen.overview.tlbChars.button("Undo").setEnabled(false);
    context_.screen.overview.tlbChars.button("Undo").setToolTip("Nothing to undo");
}

}  // namespace dravik::screen
