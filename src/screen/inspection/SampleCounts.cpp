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
    return context_.procedures.run(std::string("Dravikdlg.") + name, name, [&] {
        const auto table = context_.tool->GetSampleData(selector, tool::kSampleFields);
        if (!table) throw Failure(RuntimeError::TypeMismatch);
        return toInt16(table->upperRow());
    });
}

std::int16_t SampleCounts::NumberUncommittedAll() {
    return numberOfAll(tool::kAllUncommitted, "NumberUncommittedAll");
}

std::int16_t SampleCounts::NumberCommittedAll() {
    return numberOfAll(tool::kAllCommitted, "NumberCommittedAll");
}

std::int16_t SampleCounts::NumberCommitted(const std::string& c) {
    return context_.procedures.run("Dravikdlg.NumberCommitted", "NumberCommitted", [&]() -> std::int16_t {
        if (!context_.tool.m_ToolBound) return kNoToolCount;
        const auto table = context_.tool->GetSampleData(tool::kAllCommitted, tool::kSampleFields);
        if (!table) return 0;
        int count = 0;
        const bool single = characterCount(c) == 1;
        const std::int32_t wanted = codeOf(c);
        for (const std::int32_t code : table->codes()) count += single && code == wanted;
        return toInt16(count);
    });
}

std::int16_t SampleCounts::NumberTrained(const std::string& c) {
    return context_.procedures.run("Dravikdlg.NumberTrained", "NumberTrained", [&]() -> std::int16_t {
        if (!context_.tool.m_ToolBound) return kNoToolCount;
        const auto table = context_.tool->GetSampleData(tool::kAllTrained, tool::kCharacterFields);
        if (!table) return 0;
        for (int row = 1; row <= table->upperRow(); ++row)
            if (table->character(row) == c) return toInt16(table->number(row, 2));
        return 0;
    });
}

void SampleCounts::SaveUncommitted() {
    context_.procedures.run("Dravikdlg.SaveUncommitted", "SaveUncommitted", [&] {
        const auto table = context_.tool->GetSampleData(tool::kAllUncommitted, tool::kSampleFields);
        OutputFile out(context_.jobs.uncommittedDump(), OutputFile::Start::Empty);
        if (table && !table->isEmpty()) writeDump(out, *table);
        out.close();
    });
}

}  // namespace dravik::screen
