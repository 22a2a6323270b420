// What a container that takes the rules at their word asks of a control.
#include "windows/control/support/Bench.h"

namespace dravik::test {
namespace {

TEST(Container, IsKeptInformedInTheRightOrder) {
    StrictHost host(newControl(), false);
    auto& site = host.site();
    DWORD status = 0;
    ASSERT_EQ(host.as<IOleObject>()->GetMiscStatus(DVASPECT_CONTENT, &status), S_OK);
    constexpr DWORD kNeeded = OLEMISC_SETCLIENTSITEFIRST | OLEMISC_ACTIVATEWHENVISIBLE;
    EXPECT_EQ(status & kNeeded, kNeeded);

    ASSERT_EQ(host.verb(OLEIVERB_INPLACEACTIVATE), S_OK);
    EXPECT_THAT(site.calls, ElementsAre("CanInPlaceActivate", "OnInPlaceActivate", "OnControlInfoChanged"));
    EXPECT_EQ(insideOf(host.window()).right, site.place.right);

    // The keyboard focus makes the control active with its user interface.
    SetFocus(host.window());
    host.pump();
    EXPECT_EQ(site.count("OnUIActivate"), 1);
    EXPECT_EQ(site.count("SetActiveObject"), 1);
    EXPECT_EQ(site.focus, 1);
    ASSERT_EQ(host.as<IOleInPlaceObject>()->UIDeactivate(), S_OK);
    EXPECT_EQ(site.count("OnUIDeactivate"), 1);
    ASSERT_EQ(host.as<IOleInPlaceObject>()->InPlaceDeactivate(), S_OK);
    EXPECT_EQ(site.calls.back(), "OnInPlaceDeactivate");
    EXPECT_EQ(host.window(), nullptr);
    ASSERT_EQ(host.verb(OLEIVERB_UIACTIVATE), S_OK);
    EXPECT_TRUE(host.window() && IsChild(host.window(), GetFocus()));
    host.close();
    EXPECT_THAT(site.faults, IsEmpty());
    EXPECT_EQ(site.calls.back(), "OnInPlaceDeactivate");
}

TEST(Container, IsToldOfEverythingModal) {
    Bench bench("strict", "HELLO");
    auto& site = bench.site();
    int during = 0;
    bench.script.expect("dlgFontManager", [&](HWND form) {
        during = site.modeless;
        PostMessageW(form, WM_CLOSE, 0, 0);
    });
    bench.press(L"Select Font");
    ASSERT_TRUE(bench.host->pumpUntil([&] { return bench.script.satisfied() && site.modeless == 0; }));
    EXPECT_EQ(during, 1);
    EXPECT_TRUE(IsWindowEnabled(bench.host->frame()));
}

TEST(Container, GivesKeysAndGetsThoseThatLeave) {
    StrictHost host(newControl());
    auto& site = host.site();
    host.pump();
    EXPECT_GE(host.controlInfo().cAccel, 2);  // Alt+I, in both cases
    EXPECT_EQ(host.controlInfo().dwFlags, DWORD{CTRLINFO_EATS_RETURN})
        << "Enter includes, Escape is the host's";

    const auto translate = [&](UINT message, WPARAM key) {
        MSG event{GetFocus(), message, key, 0, 0, {}};
        return host.as<IOleInPlaceActiveObject>()->TranslateAccelerator(&event);
    };
    EXPECT_EQ(translate(WM_SYSCHAR, 'q'), S_FALSE);
    EXPECT_EQ(translate(WM_KEYDOWN, VK_ESCAPE), S_FALSE);
    EXPECT_EQ(translate(WM_KEYDOWN, VK_F5), S_FALSE);
    for (int i = 0; i < 60 && site.keys.empty(); ++i) translate(WM_KEYDOWN, VK_TAB);
    EXPECT_EQ(site.keys, (std::vector<UINT_PTR>{VK_TAB}));
    site.offersControlSite = false;
    host.as<IOleObject>()->SetClientSite(&site);
    EXPECT_EQ(translate(WM_KEYDOWN, VK_TAB), S_FALSE) << "without a site that takes it the key is the host's";
}

TEST(Container, SetsAmbientProperties) {
    StrictHost host(newControl(), false);
    auto& site = host.site();
    site.ambients.emplace(DISPID_AMBIENT_BACKCOLOR, Variant(static_cast<std::int32_t>(RGB(10, 200, 30))));
    wchar_t name[] = L"Tahoma";
    FONTDESC description{sizeof description, name, {}, FW_NORMAL, 0, FALSE, FALSE, FALSE};
    description.cySize.int64 = 180000;  // 18 points
    ComPtr<IDispatch> font;
    ASSERT_EQ(OleCreateFontIndirect(&description, IID_IDispatch, font.putVoid()), S_OK);
    ASSERT_EQ(host.verb(OLEIVERB_SHOW), S_OK);
    host.pump();
    EXPECT_EQ(colorAt(*picture(host.window()), 2, 2), RGB(10, 200, 30));
    const HWND learn = child(host.window(), L"Button", L"Learn");
    const int before = heightOf(placeOf(learn));
    host.ambientChanged(DISPID_AMBIENT_FONT, Variant(font.get()));
    EXPECT_GT(heightOf(placeOf(learn)), before);

    // In a designer the screen is there but does nothing.
    host.ambientChanged(DISPID_AMBIENT_USERMODE, Variant(false));
    EXPECT_TRUE(IsWindowVisible(learn));
    EXPECT_FALSE(IsWindowEnabled(GetWindow(host.window(), GW_CHILD)));
    MSG key{host.window(), WM_KEYDOWN, VK_TAB, 0, 0, {}};
    EXPECT_EQ(host.as<IOleInPlaceActiveObject>()->TranslateAccelerator(&key), S_FALSE);
}

// A picture of the control by itself, of that many pixels.
std::unique_ptr<win32::Canvas> pictureOf(IViewObject2* view, SIZE size) {
    // Beside something else.
    constexpr LONG kLeft = 50;
    win32::Canvas both(kLeft + size.cx, size.cy);
    win32::fill(both.dc(), {0, 0, kLeft, size.cy}, RGB(1, 2, 3));
    const RECTL place{kLeft, 0, kLeft + size.cx, size.cy};
    EXPECT_EQ(
        view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, both.dc(), &place, nullptr, nullptr, 0),
        S_OK);
    EXPECT_EQ(GetPixel(both.dc(), kLeft - 1, 20), RGB(1, 2, 3));
    auto picture = std::make_unique<win32::Canvas>(size.cx, size.cy);
    BitBlt(picture->dc(), 0, 0, size.cx, size.cy, both.dc(), kLeft, 0, SRCCOPY);
    GdiFlush();
    return picture;
}

// Share of the pixels in which two pictures of one size differ.
double difference(win32::Canvas& one, win32::Canvas& other) {
    int different = 0;
    for (std::size_t i = 0; i < one.pixels().size(); ++i)
        different += (one.pixels()[i] & 0xFFFFFF) != (other.pixels()[i] & 0xFFFFFF);
    return double(different) / static_cast<double>(one.pixels().size());
}

TEST(Container, GetsThePictureThatTheActiveControlWouldBe) {
    StrictHost host(newControl(), false);
    const auto view = host.as<IViewObject2>();
    for (const SIZE size : {SIZE{700, 600}, {620, 880}}) {
        host.site().place = {0, 0, size.cx, size.cy};
        const auto inactive = pictureOf(view.get(), size);
        ASSERT_EQ(host.verb(OLEIVERB_INPLACEACTIVATE), S_OK);
        std::unique_ptr<Canvas> active;
        EXPECT_TRUE(host.pumpUntil([&] {
            active = picture(host.window());
            return difference(*inactive, *active) < 0.002;
        })) << difference(*inactive, *active);
        host.as<IOleInPlaceObject>()->InPlaceDeactivate();
    }
}

class Bag final : public ComObject<IPropertyBag> {
  public:
    HRESULT STDMETHODCALLTYPE Read(LPCOLESTR name, VARIANT* value, IErrorLog*) override {
        const auto found = values_.find(name);
        return found == values_.end() ? E_INVALIDARG : VariantCopy(value, &found->second.get());
    }
    HRESULT STDMETHODCALLTYPE Write(LPCOLESTR name, VARIANT* value) override {
        return VariantCopy(&values_[name].get(), value);
    }

  private:
    std::map<std::wstring, Variant> values_;
};

// Of these numbers, to be read from its start.
ComPtr<IStream> streamOf(const std::vector<std::int32_t>& numbers = {}) {
    ComPtr<IStream> stream;
    EXPECT_EQ(CreateStreamOnHGlobal(nullptr, TRUE, stream.put()), S_OK);
    stream->Write(numbers.data(), static_cast<ULONG>(numbers.size() * sizeof(std::int32_t)), nullptr);
    stream->Seek({}, STREAM_SEEK_SET, nullptr);
    return stream;
}

TEST(Container, KeepsTheExtentInAnyStore) {
    const auto extentOf = [](IUnknown* control) {
        SIZEL extent{};
        ComPtr<IUnknown>(control).as<IOleObject>()->GetExtent(DVASPECT_CONTENT, &extent);
        return std::pair(extent.cx, extent.cy);
    };
    const auto saved = newControl();
    EXPECT_EQ(saved.as<IPersistStreamInit>()->IsDirty(), S_FALSE);
    const auto setExtent = [&](LONG width, LONG height) {
        SIZEL extent{width, height};
        EXPECT_EQ(saved.as<IOleObject>()->SetExtent(DVASPECT_CONTENT, &extent), S_OK);
        EXPECT_EQ(saved.as<IPersistStreamInit>()->IsDirty(), S_OK);
    };
    const auto fromStream = newControl();
    for (const LONG width : {2147483647L, 12345L}) {  // what is taken can be read again
        setExtent(width, 23456);
        const auto stream = streamOf();
        ASSERT_EQ(saved.as<IPersistStreamInit>()->Save(stream.get(), TRUE), S_OK);
        EXPECT_EQ(saved.as<IPersistStreamInit>()->IsDirty(), S_FALSE);
        stream->Seek({}, STREAM_SEEK_SET, nullptr);
        EXPECT_EQ(fromStream.as<IPersistStreamInit>()->Load(stream.get()), S_OK);
        EXPECT_EQ(extentOf(fromStream.get()), std::pair(width, 23456L));
    }
    // A damaged stream is refused and leaves the control as it was: cut short, another mark, a senseless
    // size.
    for (const std::vector<std::int32_t>& numbers :
         {std::vector<std::int32_t>{}, {0x4B565244}, {1, 1, 100, 100}, {0x4B565244, 1, -5, 100}}) {
        EXPECT_TRUE(FAILED(fromStream.as<IPersistStreamInit>()->Load(streamOf(numbers).get())));
        EXPECT_EQ(extentOf(fromStream.get()), std::pair(12345L, 23456L));
    }

    const auto bag = ComPtr<Bag>::attach(new Bag);
    ASSERT_EQ(saved.as<IPersistPropertyBag>()->Save(bag.get(), TRUE, TRUE), S_OK);
    const auto fromBag = newControl().as<IPersistPropertyBag>();
    ASSERT_EQ(fromBag->Load(bag.get(), nullptr), S_OK);
    EXPECT_EQ(extentOf(fromBag.get()), std::pair(12345L, 23456L));

    ComPtr<IStorage> storage;
    ASSERT_EQ(
        StgCreateDocfile(nullptr, STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE | STGM_DELETEONRELEASE,
                         0, storage.put()),
        S_OK);
    const auto persist = saved.as<IPersistStorage>();
    ASSERT_EQ(persist->Save(storage.get(), FALSE), S_OK);
    ASSERT_EQ(persist->SaveCompleted(nullptr), S_OK);
    const auto fromStorage = newControl();
    ASSERT_EQ(fromStorage.as<IPersistStorage>()->Load(storage.get()), S_OK);
    EXPECT_EQ(extentOf(fromStorage.get()), std::pair(12345L, 23456L));
}

TEST(Container, ConnectsAndReadsTheClass) {
    const auto control = newControl();
    ComPtr<IConnectionPoint> events;
    ASSERT_EQ(control.as<IConnectionPointContainer>()->FindConnectionPoint(DIID___DravikDlg, events.put()),
              S_OK);
    const auto sink = StrictSite::make(nullptr, {});  // a plain IDispatch is a sink
    DWORD cookie = 0;
    ASSERT_EQ(events->Advise(static_cast<IOleClientSite*>(sink.get()), &cookie), S_OK);
    EXPECT_EQ(sink->references(), 2u);
    EXPECT_EQ(events->Unadvise(cookie), S_OK);
    EXPECT_EQ(events->Unadvise(cookie), CONNECT_E_NOCONNECTION);
    EXPECT_EQ(sink->references(), 1u);

    const auto info = control.as<IProvideClassInfo2>();
    GUID source{};
    ASSERT_EQ(info->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &source), S_OK);
    EXPECT_TRUE(source == DIID___DravikDlg);
    ComPtr<ITypeInfo> type;
    ASSERT_EQ(info->GetClassInfo(type.put()), S_OK);
    Bstr name;
    ASSERT_EQ(type->GetDocumentation(MEMBERID_NIL, name.put(), nullptr, nullptr, nullptr), S_OK);
    EXPECT_EQ(name.utf8(), "DravikDlg");
}

}  // namespace
}  // namespace dravik::test
