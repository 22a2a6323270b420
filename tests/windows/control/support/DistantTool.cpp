#include "windows/control/support/DistantTool.h"

#include <future>

#include "windows/control/support/Bench.h"

namespace dravik::test {
namespace {

using com::ComPtr;
using Bytes = std::vector<char>;

constexpr int kAttempts = 400;
constexpr DWORD kPauseMs = 50;

// A new tool on its way to another apartment or process.
Bytes handedOut(DWORD context) {
    const ComPtr<IUnknown> tool = controlModule().make(CLSID_EmbeddedStep);
    ComPtr<IStream> stream;
    HGLOBAL memory = nullptr;
    if (!tool || FAILED(CreateStreamOnHGlobal(nullptr, TRUE, stream.put())) ||
        FAILED(CoMarshalInterface(stream.get(), __uuidof(IEmbeddedStep), tool.get(), context, nullptr,
                                  MSHLFLAGS_NORMAL)) ||
        FAILED(GetHGlobalFromStream(stream.get(), &memory)))
        throw std::runtime_error("the tool cannot be handed out");
    const char* bytes = static_cast<const char*>(GlobalLock(memory));
    const Bytes copy(bytes, bytes + GlobalSize(memory));
    GlobalUnlock(memory);
    return copy;
}

ComPtr<IEmbeddedStep> received(const Bytes& bytes) {
    ComPtr<IStream> stream;
    ComPtr<IEmbeddedStep> step;
    if (FAILED(CreateStreamOnHGlobal(nullptr, TRUE, stream.put()))) return step;
    stream->Write(bytes.data(), static_cast<ULONG>(bytes.size()), nullptr);
    stream->Seek({}, STREAM_SEEK_SET, nullptr);
    CoUnmarshalInterface(stream.get(), __uuidof(IEmbeddedStep), step.putVoid());
    return step;
}

void serveMessages() {
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
}

HANDLE startServer(const std::string& file) {
    wchar_t program[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    std::wstring line = L"\"" + std::wstring(program) + L"\" --serve-tool \"" + win32::wide(file) + L"\"";
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &process))
        throw std::runtime_error("the tool's process does not start");
    CloseHandle(process.hThread);
    return process.hProcess;
}

}  // namespace

DistantTool::DistantTool(Home home) {
    if (home == Home::Apartment) {
        std::promise<Bytes> promised;
        std::future<Bytes> bytes = promised.get_future();
        thread_ = std::thread([&] {
            CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
            threadIdentifier_ = GetCurrentThreadId();
            promised.set_value(handedOut(MSHCTX_INPROC));
            serveMessages();
            CoUninitialize();
        });
        step_ = received(bytes.get());
    } else {
        const TemporaryFolder folder;
        const std::string file = folder.path("tool");
        process_ = startServer(file);
        for (int attempt = 0; attempt < kAttempts && !std::filesystem::exists(toPath(file)); ++attempt)
            Sleep(kPauseMs);
        std::ifstream in(toPath(file), std::ios::binary);
        step_ = received(Bytes(std::istreambuf_iterator<char>(in), {}));
    }
    if (!step_) throw std::runtime_error("the tool does not arrive");
}

void DistantTool::end() {
    if (process_) {
        TerminateProcess(process_, 1);
        WaitForSingleObject(process_, INFINITE);
        CloseHandle(process_);
        process_ = nullptr;
    } else if (thread_.joinable()) {
        PostThreadMessageW(threadIdentifier_, WM_QUIT, 0, 0);
        thread_.join();
    }
    step_ = nullptr;
}

int serveTool(const std::wstring& file) {
    OleInitialize(nullptr);
    const Bytes bytes = handedOut(MSHCTX_LOCAL);
    const std::wstring beside = file + L".new";
    std::ofstream(std::filesystem::path(beside), std::ios::binary)
        .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    std::filesystem::rename(beside, file);
    serveMessages();
    return 0;
}

}  // namespace dravik::test
