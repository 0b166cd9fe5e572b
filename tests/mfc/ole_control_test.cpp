#include "tests/support/active_x_control.h"
#include "tests/support/census.h"
#include "tests/support/input.h"
#include "tests/support/pixels.h"
#include "tests/support/pump.h"
#include "tests/support/recorder.h"

#include <afxocc.h>
#include <gtest/gtest.h>

using namespace support;

namespace
{

constexpr CLSID kClass = {0x6D1E0B7C, 0x9A3F, 0x4D28, {0xB5, 0x60, 0x17, 0xC4, 0x8E, 0x2B, 0x9D, 0x41}};
constexpr UINT kId = 40;
const CRect kPlace(10, 20, 90, 60);

// The object that stands for the control.
class Wrapper : public CWnd
{
    DECLARE_EVENTSINK_MAP()

public:
    using CWnd::Create;
    BOOL Create(CWnd& parent, UINT id = kId, DWORD style = WS_VISIBLE | WS_TABSTOP)
    {
        return CreateControl(kClass, L"标题", style, kPlace, &parent, id);
    }
    void PostNcDestroy() override { ++gone; }

    // Reflected: whether the window is not to see the click.
    BOOL OnClick(long x, long y)
    {
        clicked = {x, y};
        return keepsClicks;
    }

    CPoint clicked;
    BOOL keepsClicks = FALSE;
    int gone = 0;
};

BEGIN_EVENTSINK_MAP(Wrapper, CWnd)
ON_EVENT_REFLECT(Wrapper, ActiveXControlClass::kClickEvent, &Wrapper::OnClick, VTS_I4 VTS_I4)
END_EVENTSINK_MAP()

// The window that contains controls.
class Container : public HostWnd
{
    DECLARE_EVENTSINK_MAP()

public:
    BOOL PreTranslateMessage(MSG* msg) override
    {
        return HostWnd::PreTranslateMessage(msg) || PreTranslateInput(msg);
    }
    BOOL OnAmbientProperty(COleControlSite* site, DISPID dispid, VARIANT* value) override
    {
        if (dispid == DISPID_AMBIENT_SCALEUNITS)
            AfxThrowNotSupportedException();
        if (dispid != DISPID_AMBIENT_UIDEAD)
            return HostWnd::OnAmbientProperty(site, dispid, value);
        *value = COleVariant(static_cast<long>(site->GetDlgCtrlID())).Detach();
        return TRUE;
    }

    void OnClick(UINT id, long x, long y) { clicks.push_back({id, {x, y}}); }
    BOOL OnAsk(LPCTSTR question, VARIANT_BOOL* answer, VARIANT* any)
    {
        asked = question;
        if (destroyedByEvent != nullptr)
            destroyedByEvent->DestroyWindow();
        if (asked == L"throw")
            AfxThrowNotSupportedException();
        *answer = VARIANT_TRUE;
        *any = COleVariant(L"任意").Detach();
        return TRUE;
    }

    struct Clicked {
        UINT id;
        CPoint point;
    };
    std::vector<Clicked> clicks;
    CString asked;
    CWnd* destroyedByEvent = nullptr;
};

BEGIN_EVENTSINK_MAP(Container, HostWnd)
ON_EVENT_RANGE(Container, kId, kId + 1, ActiveXControlClass::kClickEvent, &Container::OnClick,
               VTS_I4 VTS_I4 VTS_I4)
ON_EVENT(Container, kId, ActiveXControlClass::kAskEvent, &Container::OnAsk, VTS_BSTR VTS_PBOOL VTS_PVARIANT)
END_EVENTSINK_MAP()

class OleControl : public CensusTest
{
protected:
    void SetUp() override
    {
        AfxEnableControlContainer();
        ASSERT_TRUE(host.Open({200, 100}));
    }
    void TearDown() override
    {
        if (host.m_hWnd != nullptr)
            host.DestroyWindow();
        EXPECT_EQ(registered.controls, 0);
        EXPECT_EQ(registered.Logged("sink left behind"), 0);
    }

    ActiveXControlClass registered{kClass};
    Container host;
    Wrapper control;
};

} // namespace

TEST_F(OleControl, IsActiveInPlaceUnderItsObject)
{
    ASSERT_TRUE(control.Create(host));
    EXPECT_EQ(registered.Logged("InitNew"), 1);
    EXPECT_EQ(control.m_hWnd, registered.window);
    EXPECT_EQ(CWnd::FromHandlePermanent(registered.window), &control);
    EXPECT_EQ(host.GetDlgItem(kId), &control);
    EXPECT_EQ(control.GetParent(), &host);
    EXPECT_NE(control.GetStyle() & WS_TABSTOP, 0u);
    EXPECT_STREQ(registered.properties.at(DISPID_CAPTION).bstrVal, L"标题");
    CString text;
    WCHAR cut[2];
    control.GetWindowText(text);
    EXPECT_STREQ(text, L"标题");
    EXPECT_EQ(control.GetWindowText(cut, 2), 1);
    EXPECT_STREQ(cut, L"标");
    EXPECT_EQ(control.GetWindowTextLength(), 2);
    EXPECT_NE(control.GetControlUnknown(), nullptr);
    ASSERT_NE(host.GetOleControlSite(kId), nullptr);
    EXPECT_EQ(host.GetOleControlSite(kId)->m_pWndCtrl, &control);
    EXPECT_EQ(host.GetOleControlSite(kId + 1), nullptr);
    EXPECT_TRUE(WaitForPixel(host.m_hWnd, kPlace.TopLeft(), ActiveXControlClass::kColor));
    EXPECT_EQ(WindowPixel(host.m_hWnd, kPlace.BottomRight()), HostWnd::kBackground);

    control.MoveWindow(0, 5, 30, 40);
    EXPECT_EQ(registered.place, CRect(0, 5, 30, 45));
    control.SetWindowPos(nullptr, 50, 50, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    EXPECT_EQ(registered.place, CRect(50, 50, 80, 90));
    control.EnableWindow(FALSE);
    EXPECT_EQ(registered.properties.at(DISPID_ENABLED).boolVal, VARIANT_FALSE);
    control.ShowWindow(SW_HIDE);
    EXPECT_FALSE(control.IsWindowVisible());

    EXPECT_FALSE(control.Create(host)); // it is one already
    EXPECT_TRUE(control.DestroyWindow());
    EXPECT_EQ(control.m_hWnd, nullptr);
    EXPECT_EQ(control.GetControlUnknown(), nullptr);
    EXPECT_EQ(control.gone, 1);
    EXPECT_EQ(registered.window, nullptr);
    EXPECT_EQ(registered.controls, 0);
    EXPECT_FALSE(control.DestroyWindow());
    EXPECT_EQ(host.GetOleControlSite(kId), nullptr);
}

TEST_F(OleControl, StylesAndOwnSize)
{
    const CPoint origin(7, 8);
    ASSERT_TRUE(
        control.CreateControl(kClass, nullptr, WS_DISABLED | WS_BORDER, &origin, nullptr, &host, kId));
    EXPECT_FALSE(control.IsWindowVisible());
    EXPECT_EQ(registered.properties.at(DISPID_ENABLED).boolVal, VARIANT_FALSE);
    EXPECT_EQ(registered.properties.at(DISPID_BORDERSTYLE).iVal, 1);
    EXPECT_EQ(registered.properties.count(DISPID_CAPTION), 0u);
    CRect place;
    control.GetWindowRect(place);
    host.ScreenToClient(place);
    // An inch by half an inch.
    CClientDC screen(nullptr);
    const CSize inch(screen.GetDeviceCaps(LOGPIXELSX), screen.GetDeviceCaps(LOGPIXELSY) / 2);
    EXPECT_EQ(place, CRect(origin, inch));
}

TEST_F(OleControl, GoesWithItsWindowOrItsObject)
{
    ASSERT_TRUE(control.Create(host));
    {
        Wrapper other;
        ASSERT_TRUE(other.Create(host, kId + 1));
        EXPECT_EQ(registered.controls, 2);
    }
    EXPECT_EQ(registered.controls, 1);
    EXPECT_EQ(registered.Logged("InPlaceDeactivate"), 1);
    host.DestroyWindow();
    EXPECT_EQ(control.m_hWnd, nullptr);
    EXPECT_EQ(control.GetControlUnknown(), nullptr);
    EXPECT_EQ(control.gone, 1);
    EXPECT_EQ(registered.controls, 0);
    EXPECT_EQ(registered.Logged("InPlaceDeactivate without a window"), 0);
    long result = 4;
    control.InvokeHelper(1, DISPATCH_METHOD, VT_I4, &result, nullptr);
    EXPECT_EQ(result, 4);
}

TEST_F(OleControl, ADestroyedSiteIsGone)
{
    ASSERT_TRUE(control.Create(host));
    EXPECT_TRUE(host.GetOleControlSite(kId)->DestroyControl());
    EXPECT_EQ(host.GetOleControlSite(kId), nullptr);
    EXPECT_EQ(control.gone, 1);
    ASSERT_TRUE(control.Create(host));
    ASSERT_NE(host.GetOleControlSite(kId), nullptr);
    EXPECT_EQ(host.GetOleControlSite(kId)->m_pWndCtrl, &control);
}

TEST_F(OleControl, IsEndedWhileItWorks)
{
    CWnd* ended = &control;
    registered.during = [&](const std::string& method) {
        if (method == "InPlaceActivate")
            ended->DestroyWindow();
    };
    EXPECT_FALSE(control.Create(host));
    EXPECT_EQ(registered.controls, 0);

    registered.during = nullptr;
    ASSERT_TRUE(control.Create(host));
    registered.during = [&](const std::string&) { control.DestroyWindow(); };
    control.MoveWindow(0, 0, 5, 5);
    EXPECT_EQ(registered.controls, 0);
    EXPECT_NE(registered.place, CRect(0, 0, 5, 5));

    ended = &host;
    registered.during = [&](const std::string&) { ended->DestroyWindow(); };
    EXPECT_FALSE(control.Create(host));
    EXPECT_EQ(host.m_hWnd, nullptr);
}

TEST_F(OleControl, ControlsMayGoOverAMnemonic)
{
    Wrapper other;
    ASSERT_TRUE(control.Create(host));
    ASSERT_TRUE(other.Create(host, kId + 1));
    host.SetFocus();
    registered.refuseMnemonics = true;
    Wrapper* ended = &other; // then itself
    for (const int asked : {1, 2}) {
        registered.during = [&](const std::string&) { ended->DestroyWindow(); };
        Key('Q', {VK_MENU});
        EXPECT_EQ(registered.Logged("OnMnemonic"), asked);
        EXPECT_EQ(registered.controls, 2 - asked);
        ended = &control;
    }
}

TEST_F(OleControl, RefusalsLeaveNothing)
{
    CWnd noWindow;
    EXPECT_FALSE(control.CreateControl(kClass, nullptr, WS_VISIBLE, kPlace, &noWindow, kId));
    EXPECT_FALSE(control.CreateControl(kClass, nullptr, WS_VISIBLE, kPlace, nullptr, kId));
    EXPECT_FALSE(control.CreateControl(L"VGui.NoSuchClass", nullptr, WS_VISIBLE, kPlace, &host, kId));
    EXPECT_FALSE(control.CreateControl(CLSID_NULL, nullptr, WS_VISIBLE, kPlace, &host, kId));
    registered.refuseActivation = true;
    EXPECT_FALSE(control.Create(host));
    registered.refuseActivation = false;
    registered.refuseState = true;
    EXPECT_FALSE(control.Create(host));
    registered.refuseState = false;
    EXPECT_EQ(registered.controls, 0);
    EXPECT_EQ(control.gone, 0);

    AfxGetModuleState()->m_bControlContainer = FALSE;
    EXPECT_FALSE(control.Create(host));
    AfxEnableControlContainer();

    LPOLESTR text = nullptr;
    ::StringFromCLSID(kClass, &text);
    EXPECT_TRUE(control.CreateControl(text, nullptr, WS_VISIBLE, kPlace, &host, kId));
    ::CoTaskMemFree(text);
}

TEST_F(OleControl, NeedsItsLicenseKey)
{
    CLSID licensed = kClass;
    ++licensed.Data1;
    ActiveXControlClass guarded(licensed, L"钥匙");
    EXPECT_FALSE(control.CreateControl(licensed, nullptr, WS_VISIBLE, kPlace, &host, kId));
    const BSTR key = ::SysAllocString(L"钥匙");
    EXPECT_TRUE(
        control.CreateControl(licensed, nullptr, WS_VISIBLE, kPlace, &host, kId, nullptr, FALSE, key));
    ::SysFreeString(key);
    control.DestroyWindow();
    EXPECT_EQ(guarded.controls, 0);
}

TEST_F(OleControl, LoadsItsStateFromAFile)
{
    CMemFile file;
    file.Write("..stateREST", 11);
    file.Seek(2, CFile::begin);
    ASSERT_TRUE(control.CreateControl(kClass, nullptr, WS_VISIBLE, kPlace, &host, kId, &file));
    EXPECT_EQ(registered.loaded, "state");
    EXPECT_EQ(registered.Logged("InitNew"), 0);
    EXPECT_EQ(file.GetPosition(), 7u);
    control.DestroyWindow();

    // Too short, at its end, and a stream where a storage is asked for.
    EXPECT_FALSE(control.CreateControl(kClass, nullptr, WS_VISIBLE, kPlace, &host, kId, &file));
    file.SeekToEnd();
    EXPECT_FALSE(control.CreateControl(kClass, nullptr, WS_VISIBLE, kPlace, &host, kId, &file));
    file.SeekToBegin();
    EXPECT_FALSE(control.CreateControl(kClass, nullptr, WS_VISIBLE, kPlace, &host, kId, &file, TRUE));
}

TEST_F(OleControl, LoadsItsStateFromAStorage)
{
    ILockBytes* bytes = nullptr;
    IStorage* storage = nullptr;
    IStream* stream = nullptr;
    constexpr DWORD mode = STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE;
    ASSERT_EQ(::CreateILockBytesOnHGlobal(nullptr, TRUE, &bytes), S_OK);
    ASSERT_EQ(::StgCreateDocfileOnILockBytes(bytes, mode, 0, &storage), S_OK);
    ASSERT_EQ(storage->CreateStream(ActiveXControlClass::kStreamName, mode, 0, 0, &stream), S_OK);
    EXPECT_EQ(stream->Write("saved", 5, nullptr), S_OK);
    stream->Release();
    storage->Release();
    HGLOBAL memory = nullptr;
    ASSERT_EQ(::GetHGlobalFromILockBytes(bytes, &memory), S_OK);
    CMemFile file;
    file.Write(::GlobalLock(memory), static_cast<UINT>(::GlobalSize(memory)));
    ::GlobalUnlock(memory);
    bytes->Release();
    file.SeekToBegin();
    EXPECT_TRUE(control.CreateControl(kClass, nullptr, WS_VISIBLE, kPlace, &host, kId, &file, TRUE));
    EXPECT_EQ(registered.loaded, "saved");
}

TEST_F(OleControl, EventsReachTheSinkMaps)
{
    ASSERT_TRUE(control.Create(host));
    Click(ClientToScreen(registered.window, {12, 5}));
    EXPECT_EQ(control.clicked, CPoint(12, 5));
    ASSERT_EQ(host.clicks.size(), 1u);
    EXPECT_EQ(host.clicks[0].id, kId);
    EXPECT_EQ(host.clicks[0].point, CPoint(12, 5));
    control.keepsClicks = TRUE;
    registered.Fire(ActiveXControlClass::kClickEvent, {COleVariant(L"3"), 4L}); // converted
    EXPECT_EQ(control.clicked, CPoint(3, 4));
    EXPECT_EQ(host.clicks.size(), 1u);

    EXPECT_EQ(registered.Fire(ActiveXControlClass::kClickEvent, {3L}), DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(registered.Fire(ActiveXControlClass::kClickEvent, {COleVariant(L"x"), 4L}),
              DISP_E_TYPEMISMATCH);
    EXPECT_EQ(registered.Fire(99, {}), S_OK); // nobody's
}

TEST_F(OleControl, EventHandlersAnswerThrowAndEndTheControl)
{
    ASSERT_TRUE(control.Create(host));
    VARIANT_BOOL answer = VARIANT_FALSE;
    VARIANT any{};
    VARIANT answerReference{};
    answerReference.vt = VT_BOOL | VT_BYREF;
    answerReference.pboolVal = &answer;
    VARIANT anyReference{};
    anyReference.vt = VT_VARIANT | VT_BYREF;
    anyReference.pvarVal = &any;
    const auto ask = [&](LPCTSTR question) {
        return registered.Fire(ActiveXControlClass::kAskEvent, {question, answerReference, anyReference});
    };
    EXPECT_EQ(ask(L"问题?"), S_OK);
    EXPECT_STREQ(host.asked, L"问题?");
    EXPECT_EQ(answer, VARIANT_TRUE);
    ASSERT_EQ(any.vt, VT_BSTR);
    EXPECT_STREQ(any.bstrVal, L"任意");
    ::VariantClear(&any);
    EXPECT_EQ(registered.Fire(ActiveXControlClass::kAskEvent, {L"", 1L, anyReference}), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(ask(L"throw"), E_NOTIMPL);

    host.destroyedByEvent = &control;
    EXPECT_EQ(ask(L"end"), S_OK);
    EXPECT_EQ(registered.controls, 0);
    ::VariantClear(&any);
}

TEST_F(OleControl, TellsTheSurroundings)
{
    ASSERT_TRUE(control.Create(host));
    COleVariant value;
    EXPECT_EQ(registered.Ambient(DISPID_AMBIENT_USERMODE, value), S_OK);
    EXPECT_EQ(value.boolVal, VARIANT_TRUE);
    EXPECT_EQ(registered.Ambient(DISPID_AMBIENT_UIDEAD, value), S_OK);
    EXPECT_EQ(value.lVal, static_cast<LONG>(kId)); // the window's own answer
    EXPECT_EQ(registered.Ambient(DISPID_AMBIENT_BACKCOLOR, value), S_OK);
    EXPECT_EQ(value.vt, VT_I4);
    EXPECT_EQ(registered.Ambient(DISPID_AMBIENT_FONT, value), S_OK);
    ASSERT_EQ(value.vt, VT_DISPATCH);
    COleDispatchDriver font(value.pdispVal, FALSE);
    CString name;
    font.GetProperty(DISPID_FONT_NAME, VT_BSTR, &name);
    EXPECT_FALSE(name.IsEmpty());
    EXPECT_EQ(registered.Ambient(DISPID_AMBIENT_SCALEUNITS, value), E_NOTIMPL); // what it throws
    EXPECT_EQ(registered.Ambient(-1, value), DISP_E_MEMBERNOTFOUND);
}

TEST_F(OleControl, KeysReachTheActiveControl)
{
    CEdit edit;
    ASSERT_TRUE(edit.Create(WS_CHILD | WS_VISIBLE | WS_TABSTOP, CRect(100, 10, 180, 30), &host, 9));
    ASSERT_TRUE(control.Create(host));
    edit.SetFocus();
    Key(ActiveXControlClass::kAccelerator);
    EXPECT_EQ(registered.Logged("TranslateAccelerator"), 0);
    Key('Q', {VK_MENU});
    EXPECT_EQ(registered.Logged("OnMnemonic"), 1);

    Key(VK_TAB);
    EXPECT_EQ(::GetFocus(), registered.window);
    Key(ActiveXControlClass::kAccelerator);
    EXPECT_EQ(registered.Logged("TranslateAccelerator"), 1);
    Key(VK_TAB); // not the control's: on to the next one
    EXPECT_EQ(::GetFocus(), edit.m_hWnd);

    control.SetFocus();
    Wrapper other;
    ASSERT_TRUE(other.Create(host, kId + 1));
    other.SetFocus(); // one control has the user interface
    EXPECT_EQ(registered.Logged("UIDeactivate"), 1);
}
