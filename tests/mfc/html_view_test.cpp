#include "tests/support/active_x_control.h"
#include "tests/support/census.h"
#include "tests/support/html_object.h"
#include "tests/support/input.h"
#include "tests/support/pump.h"
#include "tests/support/recorder.h"

#include <afxhtml.h>
#include <gtest/gtest.h>
#include <shlobj.h>

using namespace support;

namespace
{

constexpr UINT kId = 40;
const CRect kPlace(10, 20, 90, 60);

class View : public CHtmlView
{
public:
    View() = default;
    BOOL Create(CWnd& parent)
    {
        return CHtmlView::Create(nullptr, L"视图", WS_CHILD | WS_VISIBLE, kPlace, &parent, kId);
    }
    void PostNcDestroy() override { ++gone; }

    void OnBeforeNavigate2(LPCTSTR url, DWORD flags, LPCTSTR frame, CByteArray& data, LPCTSTR headers,
                           BOOL* cancel) override
    {
        EXPECT_FALSE(*cancel);
        CString line;
        line.Format(L"before %s %u %s [%s]", url, flags, frame != nullptr ? frame : L"(none)", headers);
        for (INT_PTR i = 0; i < data.GetSize(); ++i)
            line.AppendFormat(L" %d", data[i]);
        events.push_back(line);
        *cancel = cancels;
    }
    void OnNavigateComplete2(LPCTSTR url) override { events.push_back(CString(L"navigated ") + url); }
    void OnDocumentComplete(LPCTSTR url) override { events.push_back(CString(L"complete ") + url); }
    void OnNavigateError(LPCTSTR url, LPCTSTR frame, DWORD error, BOOL*) override
    {
        CString line;
        line.Format(L"error %s %s %u", url, frame != nullptr ? frame : L"(none)", error);
        events.push_back(line);
    }
    void OnTitleChange(LPCTSTR text) override { events.push_back(CString(L"title ") + text); }
    void OnFullScreen(BOOL on) override { events.push_back(on ? L"full screen" : L"window"); }

    std::vector<CString> events;
    BOOL cancels = FALSE;
    int gone = 0;
};

class HtmlView : public CensusTest
{
protected:
    void SetUp() override { ASSERT_TRUE(host.Open({200, 100})); }
    void TearDown() override
    {
        if (host.m_hWnd != nullptr)
            host.DestroyWindow();
    }

    HostWnd host;
    View view;
};

// With a browser that records its calls.
class HtmlViewCalls : public HtmlView
{
protected:
    void SetUp() override
    {
        HtmlView::SetUp();
        ASSERT_TRUE(view.Create(host));
        registered.calls.clear();
    }
    void TearDown() override
    {
        HtmlView::TearDown();
        EXPECT_EQ(registered.controls, 0);
    }

    ActiveXControlClass registered{CLSID_WebBrowser};
};

// A parameter of a recorded call as text: bytes as numbers, what is left out as "-".
CString Text(const VARIANT& given)
{
    const VARIANT& value = given.vt == (VT_VARIANT | VT_BYREF) ? *given.pvarVal : given;
    if (value.vt == VT_ERROR)
        return value.scode == DISP_E_PARAMNOTFOUND ? L"-" : L"?";
    if (value.vt == (VT_ARRAY | VT_UI1)) {
        CString bytes;
        for (ULONG i = 0; i < value.parray->rgsabound[0].cElements; ++i)
            bytes.AppendFormat(L"%d ", static_cast<const BYTE*>(value.parray->pvData)[i]);
        return bytes;
    }
    COleVariant text;
    text.ChangeType(VT_BSTR, const_cast<VARIANT*>(&value));
    return text.bstrVal;
}

// A variable for an event's parameter by reference.
COleVariant ByRef(VARTYPE type, void* place)
{
    VARIANT value{};
    value.vt = static_cast<VARTYPE>(type | VT_BYREF);
    value.byref = place;
    COleVariant result;
    result.Attach(value);
    return result;
}

} // namespace

TEST_F(HtmlView, HoldsTheSystemsBrowser)
{
    ASSERT_TRUE(view.Create(host));
    const HWND browser = ::GetWindow(view.m_hWnd, GW_CHILD);
    ASSERT_NE(browser, nullptr);
    CRect place;
    ::GetWindowRect(browser, place);
    view.ScreenToClient(place);
    EXPECT_EQ(place, CRect(CPoint(), kPlace.Size()));

    EXPECT_FALSE(view.GetFullScreen());
    view.SetFullScreen(TRUE);
    EXPECT_TRUE(view.GetFullScreen());
    view.SetFullScreen(FALSE);
    EXPECT_EQ(view.events, (std::vector<CString>{L"full screen", L"window"}));
    view.SetSilent(TRUE);
    EXPECT_TRUE(view.GetSilent());

    view.cancels = TRUE;
    view.events.clear();
    view.Navigate(L"about:blank");
    EXPECT_TRUE(PumpUntil([&] { return !view.events.empty(); }));
    ASSERT_FALSE(view.events.empty());
    EXPECT_EQ(view.events[0].Left(19), L"before about:blank ");
    view.GoBack(); // there is nothing to go back to
    view.Stop();
    view.DestroyWindow();
    EXPECT_EQ(view.gone, 1);
}

TEST_F(HtmlViewCalls, NavigateWithTheirArguments)
{
    BYTE data[] = {1, 2, 3};
    CByteArray posted;
    posted.Add(7);
    constexpr DISPID navigate = 104;
    constexpr DISPID navigate2 = 500;
    ITEMIDLIST empty{}; // the desktop: nothing but the end
    const struct {
        std::function<void()> act;
        DISPID member;
        std::vector<CString> arguments;
    } cases[] = {
        {[&] { view.Navigate(L"C:\\a.swf"); }, navigate, {L"C:\\a.swf", L"0", L"-", L"-", L"-"}},
        {[&] { view.Navigate(L"http://a", navNoHistory, L"_top", L"X: y", data, 3); },
         navigate,
         {L"http://a", L"2", L"_top", L"1 2 3 ", L"X: y"}},
        {[&] { view.Navigate(L"http://a", 0, nullptr, nullptr, nullptr, 3); },
         navigate,
         {L"http://a", L"0", L"-", L"-", L"-"}},
        {[&] { view.Navigate2(L"b", navNoHistory, L"_top", L"X: y", data, 2); },
         navigate2,
         {L"b", L"2", L"_top", L"1 2 ", L"X: y"}},
        {[&] { view.Navigate2(L"c", 0, posted, L"frame"); }, navigate2, {L"c", L"0", L"frame", L"7 ", L"-"}},
        {[&] { view.Navigate2(&empty, navNoHistory); }, navigate2, {L"0 0 ", L"2", L"-", L"-", L"-"}},
        {[&] { view.GoBack(); }, 100, {}},
        {[&] { view.GoForward(); }, 101, {}},
        {[&] { view.GoHome(); }, 102, {}},
        {[&] { view.Refresh(); }, DISPID_REFRESH, {}},
        {[&] { view.Stop(); }, 106, {}},
    };
    std::vector<CString> arguments;
    DISPID member = 0;
    registered.answer = [&](const ControlCall& call, VARIANT*, EXCEPINFO*) {
        member = call.member;
        for (const COleVariant& argument : call.arguments)
            arguments.push_back(Text(argument));
        return S_OK;
    };
    for (const auto& [act, wanted, texts] : cases) {
        arguments.clear();
        act();
        EXPECT_EQ(member, wanted);
        EXPECT_EQ(arguments, texts);
    }
    registered.calls.clear();
    view.Navigate(nullptr);
    view.Navigate2(static_cast<LPCTSTR>(nullptr));
    view.Navigate2(static_cast<LPITEMIDLIST>(nullptr));
    EXPECT_TRUE(registered.calls.empty());
}

TEST_F(HtmlViewCalls, ReadsPropertiesOrNothing)
{
    EXPECT_EQ(view.GetLocationURL(), L"");
    EXPECT_EQ(view.GetHtmlDocument(), nullptr);
    EXPECT_EQ(view.GetReadyState(), READYSTATE_UNINITIALIZED);
    registered.properties[211] = COleVariant(L"file:///C:/a");
    registered.properties[212] = COleVariant(static_cast<short>(TRUE), VT_BOOL);
    registered.properties[DISPID_READYSTATE] = COleVariant(static_cast<long>(READYSTATE_COMPLETE));
    EXPECT_EQ(view.GetLocationURL(), L"file:///C:/a");
    EXPECT_TRUE(view.GetBusy());
    EXPECT_EQ(view.GetReadyState(), READYSTATE_COMPLETE);
    view.DestroyWindow();
    EXPECT_EQ(view.GetLocationURL(), L"");
    view.Navigate(L"a"); // to nowhere
}

TEST_F(HtmlViewCalls, PassesEventsOn)
{
    COleVariant url(L"http://a/");
    COleVariant number(static_cast<long>(64));
    COleVariant noText;
    const COleVariant page = ObjectVariant(nullptr);
    COleVariant error(static_cast<long>(404));
    COleVariant frame(L"left");
    COleVariant data;
    data.parray = ::SafeArrayCreateVector(VT_UI1, 0, 2);
    data.vt = VT_ARRAY | VT_UI1;
    static_cast<BYTE*>(data.parray->pvData)[1] = 9;
    VARIANT_BOOL cancel = VARIANT_FALSE;
    const auto any = [](COleVariant& value) { return ByRef(VT_VARIANT, static_cast<VARIANT*>(&value)); };

    registered.Fire(DISPID_BEFORENAVIGATE2, {page, any(url), any(number), any(noText), any(noText),
                                             any(noText), ByRef(VT_BOOL, &cancel)});
    EXPECT_EQ(cancel, VARIANT_FALSE);
    view.cancels = TRUE;
    registered.Fire(DISPID_BEFORENAVIGATE2, {page, any(url), any(number), any(frame), any(data), any(frame),
                                             ByRef(VT_BOOL, &cancel)});
    EXPECT_EQ(cancel, VARIANT_TRUE);
    registered.Fire(DISPID_NAVIGATECOMPLETE2, {page, any(url)});
    registered.Fire(DISPID_DOCUMENTCOMPLETE, {page, any(url)});
    registered.Fire(DISPID_NAVIGATEERROR, {page, any(url), any(frame), any(error), ByRef(VT_BOOL, &cancel)});
    registered.Fire(DISPID_TITLECHANGE, {COleVariant(L"标题")});
    EXPECT_EQ(view.events,
              (std::vector<CString>{L"before http://a/ 64 (none) []", L"before http://a/ 64 left [left] 0 9",
                                    L"navigated http://a/", L"complete http://a/",
                                    L"error http://a/ left 404", L"title 标题"}));
}

TEST_F(HtmlViewCalls, KeepsTheBrowserOverItsClientArea)
{
    view.MoveWindow(0, 0, 120, 70);
    EXPECT_EQ(registered.place, CRect(0, 0, 120, 70));
    view.SetFocus();
    EXPECT_EQ(::GetFocus(), registered.window);
    Key(ActiveXControlClass::kAccelerator);
    EXPECT_EQ(registered.Logged("TranslateAccelerator"), 1);
    host.SetFocus();
    Key(ActiveXControlClass::kAccelerator);
    EXPECT_EQ(registered.Logged("TranslateAccelerator"), 1);
}
