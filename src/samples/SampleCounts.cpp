#include "samples/SampleCounts.h"

#include <cerrno>
#include <fstream>

#include "base/Conversions.h"
#include "base/NumberFormat.h"
#include "base/Paths.h"
#include "base/Text.h"
#include "tool/Samples.h"

namespace dravik {
namespace {

void writeDump(std::ostream& out, const RecordTable& table) {
    const int columns = table.upperColumn();
    for (int column = 0; column <= columns; ++column) out << cellText(table.cell(0, column)) << ',';
    out << "\r\n";
    for (int row = 1; row <= table.upperRow(); ++row) {
        out << row - 1 << ',' << table.character(row) << ',';
        for (int column = 2; column <= columns; ++column) {
            const Cell cell = table.cell(row, column);
            out << (isNumeric(cell) ? formatNumber(cellNumber(cell), "0.000") : cellText(cell)) << ',';
        }
        out << "\r\n";
    }
}

Failure fileFailure(int error) {
    switch (error) {
        case ENOENT:
            return Failure(RuntimeError::PathNotFound);
        case EACCES:
        case EROFS:
            return Failure(RuntimeError::PermissionDenied);
        case ENOSPC:
            return Failure(RuntimeError::DiskFull);
        default:
            return Failure(RuntimeError::PathFileAccessError);
    }
}

}  // namespace

std::int16_t SampleCounts::numberOfAll(std::int32_t selector, const char* name) {
    std::int16_t result = 0;
    errors_.procedures().run(std::string("Dravikdlg.") + name, name, [&] {
        const auto table = tool_->GetSampleData(selector, kSampleFields);
        if (!table) throw Failure(RuntimeError::TypeMismatch);
        result = toInt16(table->upperRow());
    });
    return result;
}

std::int16_t SampleCounts::NumberUncommittedAll() {
    return numberOfAll(kAllUncommitted, "NumberUncommittedAll");
}

std::int16_t SampleCounts::NumberCommittedAll() {
    return numberOfAll(kAllCommitted, "NumberCommittedAll");
}

std::int16_t SampleCounts::NumberCommitted(const std::string& c) {
    std::int16_t result = 0;
    errors_.procedures().run("Dravikdlg.NumberCommitted", "NumberCommitted", [&] {
        if (!tool_.m_ToolBound) {
            result = kNoToolCount;
            return;
        }
        const auto table = tool_->GetSampleData(kAllCommitted, kSampleFields);
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
        const auto table = tool_->GetSampleData(kAllTrained, kCharacterFields);
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
        const auto table = tool_->GetSampleData(kAllUncommitted, kSampleFields);
        errno = 0;
        std::ofstream out(toPath(errors_.procedures().log().folder().uncommittedDump()),
                          std::ios::binary | std::ios::trunc);
        if (!out) throw fileFailure(errno);
        if (table && !table->isEmpty()) writeDump(out, *table);
        out.close();
        if (!out) throw fileFailure(errno);
    });
}

}  // namespace dravik
