#include "support/TraceLog.h"

#include <fstream>
#include <limits>
#include <utility>

#include "base/Failure.h"
#include "base/Paths.h"
#include "support/modGlobals.h"

namespace dravik {
namespace {

constexpr std::string_view kHeader = "#\tDate\tTime\tEntry\r\n";

void writeLine(const std::string& file, std::ios::openmode mode, std::string_view line) {
    std::ofstream out(toPath(file), mode | std::ios::binary);
    out << line;
    out.close();
    if (!out) throw Failure(RuntimeError::PathFileAccessError);
}

}  // namespace

TraceLog::TraceLog(Platform& platform, JobFolder folder) : platform_(platform), folder_(std::move(folder)) {}

void TraceLog::DlgEventLog(std::string_view entry, bool startNewLog) {
    if (!g_bTrace) return;
    try {
        const std::string file = folder_.traceLog();
        if (startNewLog || g_lLogEntry == 0) writeLine(file, std::ios::trunc, kHeader);
        writeLine(file, std::ios::app,
                  std::to_string(g_lLogEntry) + "\t" + platform_.dateText() + "\t" + platform_.timeText() +
                      "\t" + std::string(entry) + "\r\n");
        if (g_lLogEntry == std::numeric_limits<std::int32_t>::max()) throw Failure(RuntimeError::Overflow);
        ++g_lLogEntry;
    } catch (...) {
        platform_.messageBox({"Last entry was " + std::string(entry), "DlgEventLog", MessageBox::Buttons::Ok,
                              MessageBox::Icon::Critical});
    }
}

std::string TraceLog::FontCreatedText(const std::string& fontName) const {
    try {
        return "Font created " + platform_.fileDateText(folder_.fontFile(fontName));
    } catch (...) {
        return "Creation date unknown";
    }
}

}  // namespace dravik
