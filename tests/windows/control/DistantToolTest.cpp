// A tool in another apartment, which the control reaches through the system's proxies and which may go away.
#include <future>

#include "windows/control/support/Bench.h"

namespace dravik::test {
namespace {

// An embedded step in an apartment of its own, served there until the object ends.
class DistantTool {
  public:
    DistantTool() {
        std::promise<std::pair<DWORD, IStream*>> handed;
        thread_ = std::thread([&handed] {
            OleInitialize(nullptr);
            {
                const ComPtr<IUnknown> tool = controlFile().make(CLSID_EmbeddedStep);
                IStream* stream = nullptr;
                CoMarshalInterThreadInterfaceInStream(__uuidof(IEmbeddedStep), tool.get(), &stream);
                handed.set_value({GetCurrentThreadId(), stream});
                MSG message;
                while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
                CoDisconnectObject(tool.get(), 0);
            }
            OleUninitialize();
        });
        const auto [id, stream] = handed.get_future().get();
        id_ = id;
        CoGetInterfaceAndReleaseStream(stream, __uuidof(IEmbeddedStep), step.putVoid());
    }
    DistantTool(const DistantTool&) = delete;
    DistantTool& operator=(const DistantTool&) = delete;
    ~DistantTool() { end(); }
    // It goes away though it is held.
    void end() {
        if (!thread_.joinable()) return;
        PostThreadMessageW(id_, WM_QUIT, 0, 0);
        thread_.join();
    }

    ComPtr<IEmbeddedStep> step;

  private:
    DWORD id_ = 0;
    std::thread thread_;
};

TEST(DistantTools, AreTaughtLikeNearOnesAndMayGoAway) {
    const TemporaryFolder folder;
    DistantTool tool;
    ASSERT_EQ(tool.step->put_JobsFolder(Bstr(folder.path()).get()), S_OK);
    Bench bench("strict");
    bench.bind("HELLO", tool.step);
    bench.include("HELLO");
    bench.learn();
    bench.press(L"Save Font");
    EXPECT_TRUE(bench.waitForStatus(L"Saved font")) << utf8(bench.status());

    bench.show("LOLO");
    bench.type(L"LOLO");
    tool.end();
    bench.press(L"&Include");
    EXPECT_EQ(bench.status(), L"Adjust OCR tool and try Include again.");
    bench.host->close();
    EXPECT_THAT(bench.script.messages(), IsEmpty());
}

}  // namespace
}  // namespace dravik::test
