#include "screen/inspection/CharArray.h"

#include <array>
#include <utility>

#include "base/Conversions.h"
#include "base/NumberFormat.h"
#include "base/Text.h"
#include "screen/inspection/FeatureStatistics.h"
#include "tool/Samples.h"

namespace dravik::screen {
namespace {

constexpr int kLastFeature = tool::kFeatureCount - 1;

int firstFeatureColumn(const tool::RecordTable& table) {
    return table.upperColumn() - kLastFeature;
}

// Calls `visit` with each row, from 1, whose character is the given one.
template <class Visit>
void eachRowOf(const tool::RecordTable& table, const std::string& character, Visit visit) {
    const std::int32_t code = codeOf(character);
    if (characterOf(code) != character) return;
    const auto codes = table.codes();
    for (std::size_t i = 0; i < codes.size(); ++i)
        if (codes[i] == code) visit(static_cast<int>(i) + 1);
}

}  // namespace

void CharArray::openForm() {
    if (m_dlgArray_ && m_dlgArray_->loaded()) return;
    m_dlgArray_ = std::make_unique<dlgCharArray>(context_.log, context_.platform);
    m_dlgArray_->SetArray.subscribe(
        [this](const std::string& character, std::int16_t mode) { control_.SetArray(character, mode); });
    m_dlgArray_->load();
    context_.procedures.trace("DravikDlg.DisplayCharArray: Set m_dlgArray = New dlgCharArray");
}

void CharArray::DisplayCharArray(const std::string& character, bool bStdDev) {
    context_.procedures.run("Dravikdlg.DisplayCharArray(" + character + ")", "DisplayCharArray", [&] {
        std::array<std::int16_t, tool::kFeatureCount> values{};
        if (const auto table = context_.tool->GetSampleData(tool::kAllTrained, tool::kCharacterFields)) {
            context_.procedures.trace("lUBound1 = " + std::to_string(table->upperRow()));
            context_.procedures.trace("lUBound2 = " + std::to_string(table->upperColumn()));
            eachRowOf(*table, character, [&](int row) {
                for (int k = 0; k < tool::kFeatureCount; ++k)
                    values[static_cast<std::size_t>(k)] =
                        scaledFeature(table->number(row, firstFeatureColumn(*table) + k));
            });
        }

        openForm();
        control_.SetFontArray();
        m_dlgArray_->setMessage("");
        m_dlgArray_->SetCharacter(character, &fontArray_, bStdDev ? kStdDevMode : kCharArrayMode);
        for (std::size_t k = 0; k < values.size(); ++k) {
            m_dlgArray_->shadeCell(k, values[k]);
            // The deviations follow; until they are known no figure of another character stands in their
            // place.
            m_dlgArray_->setCell(k, bStdDev ? "" : std::to_string(values[k]));
            m_dlgArray_->lblCell[k]->setToolTip("");
        }
        if (bStdDev && !CalculateStdDev(character))
            m_dlgArray_->setMessage("No deviations: " + context_.screen.sbr.panel("Message").text());
        context_.platform.show(*m_dlgArray_);
    });
}

bool CharArray::CalculateStdDev(const std::string& character) {
    return context_.procedures.run("Dravikdlg.CalculateStdDev", "CalculateStdDev", [&] {
        const auto table = context_.tool->GetSampleData(tool::kAllCommitted, tool::kSampleFields);
        if (!m_dlgArray_) throw Failure(RuntimeError::ObjectNotSet);
        std::int16_t count = 0;
        std::array<FeatureStatistics, tool::kFeatureCount> statistics;
        if (table)
            eachRowOf(*table, character, [&](int row) {
                count = toInt16(count + 1);
                for (int k = 0; k < tool::kFeatureCount; ++k)
                    statistics[static_cast<std::size_t>(k)].add(
                        scaledFeature(table->number(row, firstFeatureColumn(*table) + k)));
            });

        if (count == 0) {
            context_.errors.UserMsg("Number of samples = 0");
            for (std::size_t k = 0; k < statistics.size(); ++k) m_dlgArray_->setCell(k, "n/a");
            return true;
        }
        std::array<double, tool::kFeatureCount> sd{};
        for (std::size_t k = 0; k < sd.size(); ++k) sd[k] = statistics[k].deviation(count);
        for (std::size_t k = 0; k < sd.size(); ++k) {
            m_dlgArray_->setCell(k, formatNumber(sd[k], "##0.0"));
            m_dlgArray_->lblCell[k]->setToolTip(std::to_string(statistics[k].minimum()) + " to " +
                                                std::to_string(statistics[k].maximum()));
        }
        return true;
    });
}

void CharArray::PrintFeatureVect() {
    context_.procedures.run("Dravikdlg.PrintFeatureVect", "PrintFeatureVect", [&] {
        if (const auto vSamples = context_.tool->GetSampleData(tool::kAllUncommitted, tool::kSampleFields))
            context_.procedures.trace("uncommitted UBound(vSamples, 0) = " +
                                      std::to_string(vSamples->upperRow()));
    });
}

void CharArray::release() {
    if (m_dlgArray_) m_dlgArray_->unload();
    m_dlgArray_.reset();
}

}  // namespace dravik::screen
