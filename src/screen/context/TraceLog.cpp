#include "screen/context/TraceLog.h"

#include <algorithm>
#include <limits>

#include "base/Failure.h"
#include "base/OutputFile.h"
#include "screen/context/modGlobals.h"

namespace dravik::screen {
namespace {

constexpr std::string_view kHeader = "#\tDate\tTime\tEntry\r\n";

// A record is one line of four fields, whatever a tool's description holds.
std::string inOneField(std::string_view entry) {
    std::string field(entry);
    std::replace_if(
        field.begin(), field.end(), [](char c) { return c == '\r' || c == '\n' || c == '\t'; }, ' ');
    return field;
}

void writeLine(const std::string& file, OutputFile::Start start, std::string_view line) {
    OutputFile out(file, start);
    out.write(line);
    out.close();
}

}  // namespace

void TraceLog::DlgEventLog(std::string_view entry, bool startNewLog) {
    if (!g_bTrace) return;
    try {
        const std::string file = folder_.traceLog();
        if (startNewLog || g_lLogEntry == 0) writeLine(file, OutputFile::Start::Empty, kHeader);
        writeLine(file, OutputFile::Start::AtEnd,
                  std::to_string(g_lLogEntry) + "\t" + platform_.dateText() + "\t" + platform_.timeText() +
                      "\t" + inOneField(entry) + "\r\n");
        if (g_lLogEntry == std::numeric_limits<std::int32_t>::max()) throw Failure(RuntimeError::Overflow);
        ++g_lLogEntry;
    } catch (...) {
        platform_.messageBox({"Last entry was " + std::string(entry), "DlgEventLog",
                              ui::MessageBox::Buttons::Ok, ui::MessageBox::Icon::Critical});
    }
}

}  // namespace dravik::screen
