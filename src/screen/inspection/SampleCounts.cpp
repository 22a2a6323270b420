#include "screen/inspection/SampleCounts.h"

#include "base/Conversions.h"
#include "base/NumberFormat.h"
#include "base/OutputFile.h"
#include "base/Text.h"
#include "tool/Samples.h"

namespace dravik::screen {
namespace {

void writeDump(OutputFile& out, const tool::RecordTable& table) {
    const int columns = table.upperColumn();
    std::string line;
    for (int column = 0; column <= columns; ++column) line += tool::cellText(table.cell(0, column)) + ',';
    out.write(line + "\r\n");
    for (int row = 1; row <= table.upperRow(); ++row) {
        line = std::to_string(row - 1) + ',' + table.character(row) + ',';
        for (int column = 2; column <= columns; ++column) {
            const tool::Cell cell = table.cell(row, column);
            line += (tool::isNumeric(cell) ? formatNumber(tool::cellNumber(cell), "0.000")
                                           : tool::cellText(cell)) +
                    ',';
        }
        out.write(line + "\r\n");
    }
}

}  // namespace

std::int16_t SampleCounts::numberOfAll(std::int32_t selector, const char* name) {
    std::int16_t result = 0;
    errors_.procedures().run(std::string("Dravikdlg.") + name, name, [&] {
        const auto table = tool_->GetSampleData(selector, tool::kSampleFields);
        if (!table) throw Failure(RuntimeError::TypeMismatch);
        result = toInt16(table->upperRow());
    });
    return result;
}

std::int16_t SampleCounts::NumberUncommittedAll() {
    return numberOfAll(tool::kAllUncommitted, "NumberUncommittedAll");
}

std::int16_t SampleCounts::NumberCommittedAll() {
    return numberOfAll(tool::kAllCommitted, "NumberCommittedAll");
}

std::int16_t SampleCounts::NumberCommitted(const std::string& c) {
    std::int16_t result = 0;
    errors_.procedures().run("Dravikdlg.NumberCommitted", "NumberCommitted", [&] {
        if (!tool_.m_ToolBound) {
            result = kNoToolCount;
            return;
        }
        const auto table = tool_->GetSampleData(tool::kAllCommitted, tool::kSampleFields);
        if (!table) return;
        int count = 0;
        const bool single = characterCount(c) == 1;
        const std::int32_t wanted = codeOf(c);
        for (const std::int32_t code : table->codes()) count += single && code == wanted;
        result = toInt16(count);
    });
    return result;
}

std::int16_t SampleCounts::NumberTrained(const std::string& c) {
    std::int16_t result = 0;
    errors_.procedures().run("Dravikdlg.NumberTrained", "NumberTrained", [&] {
        if (!tool_.m_ToolBound) {
            result = kNoToolCount;
            return;
        }
        const auto table = tool_->GetSampleData(tool::kAllTrained, tool::kCharacterFields);
        if (!table) return;
        for (int row = 1; row <= table->upperRow(); ++row)
            if (table->character(row) == c) {
                result = toInt16(table->number(row, 2));
                return;
            }
    });
    return result;
}

void SampleCounts::SaveUncommitted() {
    errors_.procedures().run("Dravikdlg.SaveUncommitted", "SaveUncommitted", [&] {
        const auto table = tool_->GetSampleData(tool::kAllUncommitted, tool::kSampleFields);
        OutputFile out(errors_.procedures().log().folder().uncommittedDump(), OutputFile::Start::Empty);
        if (table && !table->isEmpty()) writeDump(out, *table);
        out.close();
    });
}

}  // namespace dravik::screen
