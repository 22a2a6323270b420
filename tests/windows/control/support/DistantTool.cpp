#include "windows/control/support/DistantTool.h"

#include <shlwapi.h>

#include "windows/control/support/Bench.h"

namespace dravik::test {
namespace {

constexpr int kAttempts = 400;
constexpr DWORD kPauseMs = 50;

HANDLE startServer(const std::wstring& file) {
    wchar_t program[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    std::wstring line = L"\"" + std::wstring(program) + L"\" --serve-tool \"" + file + L"\"";
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &process))
        throw std::runtime_error("the tool's process does not start");
    CloseHandle(process.hThread);
    return process.hProcess;
}

}  // namespace

DistantTool::DistantTool() {
    const TemporaryFolder folder;
    const std::wstring file = wide(folder.path("tool"));
    process_ = startServer(file);
    ComPtr<IStream> stream;
    for (int attempt = 0; attempt < kAttempts && !stream; ++attempt) {
        Sleep(kPauseMs);
        SHCreateStreamOnFileW(file.c_str(), STGM_READ, stream.put());
    }
    if (!stream || FAILED(CoUnmarshalInterface(stream.get(), __uuidof(IEmbeddedStep), step_.putVoid())))
        throw std::runtime_error("the tool does not arrive");
}

DistantTool::~DistantTool() {
    end();
    CloseHandle(process_);
}

void DistantTool::end() {
    TerminateProcess(process_, 1);
    WaitForSingleObject(process_, INFINITE);
    step_ = nullptr;
}

int serveTool(const std::wstring& file) {
    OleInitialize(nullptr);
    const ComPtr<IUnknown> tool = controlFile().make(CLSID_EmbeddedStep);
    const std::wstring beside = file + L".new";
    {
        ComPtr<IStream> stream;
        SHCreateStreamOnFileW(beside.c_str(), STGM_CREATE | STGM_WRITE, stream.put());
        CoMarshalInterface(stream.get(), __uuidof(IEmbeddedStep), tool.get(), MSHCTX_LOCAL, nullptr,
                           MSHLFLAGS_NORMAL);
    }
    std::filesystem::rename(beside, file);
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
    return 0;
}

}  // namespace dravik::test
