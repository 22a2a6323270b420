// Hosts and tools that do what they should not: nothing may crash, leak or take an operator's work away.
#include "screen/support/RecordingTool.h"
#include "windows/control/support/Bench.h"

namespace dravik::test {
namespace {

std::string trainDate(IUnknown* control, const char* font) {
    const Bstr name{std::string_view(font)};
    BSTR text = name.get();
    Bstr date;
    EXPECT_EQ(ComPtr<IUnknown>(control).as<_DravikDlg>()->FontTrainDate(&text, date.put()), S_OK);
    return date.utf8();
}

TEST(HostileHost, PassesNothingWhereSomethingIsNeeded) {
    StrictHost host(newControl());
    const auto object = host.as<IOleObject>();
    const auto view = host.as<IViewObject2>();
    const auto dialog = host.as<_DravikDlg>();
    const auto editor = host.as<::StepEditor>();
    BSTR text = nullptr;
    double number = 0;
    short count = 0;
    const RECT turned{100, 100, 50, 50};
    const HRESULT refused[] = {
        object->GetClientSite(nullptr),
        object->SetExtent(DVASPECT_CONTENT, nullptr),
        object->GetExtent(DVASPECT_CONTENT, nullptr),
        object->Unadvise(77),
        host.as<IOleControl>()->GetControlInfo(nullptr),
        host.as<IOleControl>()->OnMnemonic(nullptr),
        host.as<IOleInPlaceObject>()->SetObjectRects(nullptr, nullptr),
        host.as<IOleInPlaceObject>()->SetObjectRects(&turned, &turned),
        host.as<IOleInPlaceActiveObject>()->TranslateAccelerator(nullptr),
        view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 0),
        host.as<IPersistStreamInit>()->Load(nullptr),
        host.as<IPersistStreamInit>()->Save(nullptr, TRUE),
        host.as<IPersistStorage>()->Save(nullptr, TRUE),
        host.as<IPersistPropertyBag>()->Save(nullptr, TRUE, TRUE),
        host.as<IConnectionPointContainer>()->FindConnectionPoint(DIID___DravikDlg, nullptr),
        host.as<IQuickActivate>()->QuickActivate(nullptr, nullptr),
        dialog->FontTrainDate(nullptr, nullptr),
        dialog->FontTrainDate(&text, nullptr),
        dialog->HighlightIncluded(nullptr),
        dialog->DeleteSamplesByDistance(&text, &number, nullptr, &count),
        editor->get_ReadOnly(nullptr),
        editor->get_Step(nullptr),
    };
    for (std::size_t i = 0; i < std::size(refused); ++i) EXPECT_TRUE(FAILED(refused[i])) << "call " << i;
    // Calls that may go without.
    EXPECT_EQ(object->DoVerb(OLEIVERB_INPLACEACTIVATE, nullptr, nullptr, 0, nullptr, nullptr), S_OK);
    EXPECT_EQ(editor->putref_RootStep(nullptr), S_OK);
    EXPECT_EQ(editor->putref_Step(nullptr), S_OK);
    VARIANT_BOOL readOnly = VARIANT_FALSE;
    EXPECT_EQ(editor->put_ReadOnly(VARIANT_TRUE), S_OK);
    EXPECT_EQ(editor->get_ReadOnly(&readOnly), S_OK);
    EXPECT_EQ(readOnly, VARIANT_TRUE);
    EXPECT_EQ(view->SetAdvise(DVASPECT_CONTENT, 0, nullptr), S_OK);
    EXPECT_EQ(trainDate(host.control(), ""), "unknown");
}

TEST(HostileHost, HasNoSiteOrNoneForAWindow) {
    ComPtr<IUnknown> control = newControl();
    const auto object = control.as<IOleObject>();
    EXPECT_TRUE(FAILED(object->DoVerb(OLEIVERB_SHOW, nullptr, nullptr, 0, nullptr, nullptr)));
    EXPECT_EQ(trainDate(control.get(), "x"), "unknown");
    EXPECT_EQ(object->Close(OLECLOSE_PROMPTSAVE), S_OK);

    StrictHost host(newControl(), false);
    host.site().offersInPlaceSite = false;
    EXPECT_TRUE(FAILED(host.verb(OLEIVERB_SHOW)));
    EXPECT_EQ(host.window(), nullptr);
    host.site().offersInPlaceSite = true;
    EXPECT_EQ(host.verb(OLEIVERB_SHOW), S_OK);
    EXPECT_TRUE(IsWindowVisible(host.window()));
    EXPECT_EQ(host.verb(OLEIVERB_HIDE), S_OK);
    EXPECT_FALSE(IsWindowVisible(host.window()));
    EXPECT_TRUE(FAILED(host.verb(OLEIVERB_OPEN)));
    EXPECT_THAT(host.site().faults, IsEmpty());
}

TEST(HostileHost, CallsAfterClosingAndShowsTheControlAgain) {
    Bench bench("strict", "HELLO");
    const ComPtr<IUnknown> control(bench.host->control());
    auto step = bench.faultyStep();
    const std::weak_ptr<FaultyStep> watched = step;
    EXPECT_EQ(bench.give(std::exchange(step, nullptr)), S_OK);
    EXPECT_FALSE(watched.expired());
    const auto object = control.as<IOleObject>();
    bench.include("HELLO");
    bench.script.expectBox(L"Font Changed", IDYES);
    EXPECT_EQ(object->Close(OLECLOSE_NOSAVE), S_OK);
    EXPECT_TRUE(bench.script.satisfied());
    EXPECT_EQ(object->Close(OLECLOSE_NOSAVE), S_OK);  // asks once only
    EXPECT_EQ(bench.host->window(), nullptr);
    EXPECT_TRUE(watched.expired()) << "the closed control keeps it";
    EXPECT_FALSE(trainDate(control.get(), "bench").empty());

    EXPECT_EQ(bench.strict().verb(OLEIVERB_SHOW), S_OK);
    bench.host->pump();
    ASSERT_TRUE(IsWindow(bench.page()));
    EXPECT_FALSE(bench.boundStep()) << "the step is the host's to give again";
    ASSERT_EQ(control.as<::StepEditor>()->putref_Step(bench.step.as<IDispatch>().get()), S_OK);
    EXPECT_TRUE(IsWindowEnabled(bench.button(L"&Include")));
    bench.host->close();
    EXPECT_THAT(bench.site().faults, IsEmpty());
}

// An operator's round with whatever the tool makes of it.
void useEverything(Bench& bench) {
    const auto press = [&](const wchar_t* caption) {
        if (IsWindowEnabled(bench.button(caption))) bench.press(caption);
    };
    bench.type(L"HELLO");
    press(L"&Include");
    press(L"Learn");
    const ULONGLONG start = GetTickCount64();
    bench.host->pumpUntil([&] { return GetTickCount64() - start > 400; });
    press(L"Stop");
    press(L"Save Font");
    press(L"Revert");
    for (const wchar_t* pick : {L"Show Character Array for L", L"Show StdDev Array for L",
                                L"Show Histogram for L", L"Show Font Histogram"}) {
        const Bench::Cell cell = bench.cell(L'L');
        if (AccessibleWindow(cell.window).name(cell.number).find(L"not in font") != std::wstring::npos)
            continue;
        bench.script.expectMenu(pick);
        bench.rightClick(cell);
        EXPECT_TRUE(bench.script.satisfied()) << utf8(std::wstring_view(pick));
    }
    for (const int place : {1, 2, 3, 4, 0}) bench.pressTool(place);  // back to the cells at last
}

// After a tool's failures the screen works again; what an include left uncommitted goes first.
void includeAgain(Bench& bench) {
    bench.show("LOLO");
    bench.type(L"LOLO");
    bench.press(L"&Include");
    bench.include("LOLO");
}

TEST(HostileTool, FailsAtEveryOperationInTurn) {
    Bench bench("strict", "HELLO");
    auto faulty = bench.faultyStep();
    std::set<std::string> operations;
    faulty->before = [&](const std::string& operation) { operations.insert(operation); };
    EXPECT_EQ(bench.give(faulty), S_OK);
    useEverything(bench);
    faulty->before = nullptr;
    EXPECT_GT(operations.size(), 14u);
    for (const std::string& operation : operations) {
        SCOPED_TRACE(operation);
        bench.show("HELLO");
        faulty->failing = operation;
        EXPECT_EQ(bench.give(faulty), S_OK);
        bench.host->pump();
        useEverything(bench);
        faulty->failing.clear();
    }
    includeAgain(bench);
    useEverything(bench);
    bench.closeUnsaved();
}

// In the middle of every operation the tool takes its time, lets messages in and calls the control back.
TEST(HostileTool, IsSlowAndCallsBack) {
    Bench bench("strict", "HELLO");
    auto faulty = bench.faultyStep();
    int calls = 0;
    bool inside = false;
    faulty->before = [&](const std::string&) {
        ++calls;
        if (std::exchange(inside, true)) return;
        Sleep(20);
        bench.host->pump();
        EXPECT_EQ(trainDate(bench.host->control(), "nobody"), "unknown");
        EXPECT_TRUE(bench.boundStep());
        inside = false;
    };
    EXPECT_EQ(bench.give(faulty), S_OK);
    useEverything(bench);
    EXPECT_GT(calls, 10);
    faulty->before = nullptr;
    includeAgain(bench);
    bench.closeUnsaved();
    EXPECT_THAT(bench.script.messages(), IsEmpty());
}

// Whose cells are all the same.
RecordTablePtr tableOf(std::size_t rows, std::size_t columns, const Cell& cell) {
    return std::make_shared<CellTable>(std::vector(rows, std::vector(columns, cell)));
}

TEST(HostileTool, ReturnsTablesOfTheWrongShape) {
    const std::vector<std::tuple<std::size_t, std::size_t, Cell>> shapes = {
        {0, 0, {}}, {5, 1, 65.0}, {5, 54, "no number"}, {5, 54, {}}, {5, 54, 1e300}, {3, 2000, 72.0}};
    for (const auto& [rows, columns, cell] : shapes) {
        SCOPED_TRACE(testing::Message() << rows << " rows of " << columns);
        Bench bench("strict", "HELLO");
        auto faulty = bench.faultyStep();
        faulty->table = tableOf(rows, columns, cell);
        EXPECT_EQ(bench.give(faulty), S_OK);
        bench.host->pump();
        useEverything(bench);
        EXPECT_EQ(trainDate(bench.host->control(), "nobody"), "unknown");
        bench.host->close();
    }
}

// Bits of the processor's word for vector operations that keep an operation from raising an exception.
constexpr unsigned kQuiet = 0x0E80;  // invalid, division by zero, overflow, underflow

TEST(HostileHost, LetsFloatingPointOperationsRaiseExceptions) {
    Bench bench("strict", "HELLO");
    bench.include("HELLO");
    auto faulty = bench.faultyStep();
    for (const double value : {std::nan(""), HUGE_VAL, 1e300}) {
        faulty->table = tableOf(5, 54, value);
        const unsigned before = __builtin_ia32_stmxcsr();
        __builtin_ia32_ldmxcsr(before & ~kQuiet);
        const HRESULT bound = bench.give(faulty);
        const unsigned after = __builtin_ia32_stmxcsr();
        __builtin_ia32_ldmxcsr(before);
        EXPECT_EQ(bound, S_OK);
        EXPECT_EQ(after & kQuiet, 0u) << "the host's setting is its own";
    }
    bench.closeUnsaved();
}

TEST(HostileHost, ClosesTheControlFromInsideOfItsOwnCalls) {
    for (const char* operation : {"IncludeSamples", "GetSampleData", "CommitNewSamples", "StartTraining"}) {
        SCOPED_TRACE(operation);
        Bench bench("strict", "HELLO");
        auto faulty = bench.faultyStep();
        EXPECT_EQ(bench.give(faulty), S_OK);
        bool closed = false;
        faulty->before = [&](const std::string& called) {
            if (called != operation || closed) return;
            closed = true;
            bench.closeUnsaved();
        };
        bench.type(L"HELLO");
        bench.press(L"&Include");
        if (!closed) bench.press(L"Learn");
        EXPECT_TRUE(closed);
    }
    EXPECT_EQ(controlFile()("DllCanUnloadNow"), S_OK);
}

TEST(HostileHost, DestroysTheWindowUnderTheControl) {
    Bench bench("strict", "HELLO");
    DestroyWindow(bench.page());
    EXPECT_EQ(bench.host->window(), nullptr);
    EXPECT_EQ(bench.strict().verb(OLEIVERB_SHOW), S_OK);
    bench.include("HELLO");
    bench.closeUnsaved();
    EXPECT_THAT(bench.site().faults, IsEmpty());
}

TEST(HostileHost, AbandonsControlsInAnyOrder) {
    {
        ComPtr<IUnknown> never = newControl();  // neither shown nor closed
        StrictHost first(newControl()), second(newControl());
        first.pump();
        ComPtr<IUnknown> kept(second.control());
        second.close();
        auto quick = newControl();
        quick.as<IOleObject>()->SetClientSite(&first.site());
    }
    EXPECT_EQ(controlFile()("DllCanUnloadNow"), S_OK);
}

// Waits as a thread with windows must: what other threads send them is answered meanwhile.
void waitFor(const std::atomic<int>& count, int wanted) {
    MSG message;
    for (; count < wanted; Sleep(1)) PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE | PM_QS_SENDMESSAGE);
}

// All controls live and are called at the same time; only their windows are made, drawn and destroyed in
// turn. Wine's gdi32 shares what it knows of fonts' scripts between threads without a lock: programs that
// make text boxes in several threads at once crash there, those without a control as well.
TEST(Control, LivesInSeveralApartmentsAtOnce) {
    constexpr int kApartments = 3;
    constexpr int kCalls = 200;
    std::atomic<int> shown = 0, called = 0, gone = 0, right = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < kApartments; ++i)
        threads.emplace_back([&, i] {
            CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
            {
                waitFor(shown, i);
                StrictHost host(newControl());
                host.pump();
                ++shown;
                waitFor(shown, kApartments);
                for (int call = 0; call < kCalls; ++call)
                    right += trainDate(host.control(), "x") == "unknown";
                ++called;
                waitFor(called, kApartments);
                waitFor(gone, i);
            }
            ++gone;
            CoUninitialize();
        });
    for (auto& thread : threads) thread.join();
    EXPECT_EQ(right, kApartments * kCalls);
    EXPECT_EQ(controlFile()("DllCanUnloadNow"), S_OK);
}

}  // namespace
}  // namespace dravik::test
