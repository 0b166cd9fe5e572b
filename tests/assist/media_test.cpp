#include "vgui/assist/media.h"

#include "tests/assist/page_input.h"
#include "tests/support/active_x_control.h"
#include "tests/support/census.h"
#include "tests/support/html_object.h"
#include "tests/support/input.h"
#include "tests/support/pump.h"
#include "tests/support/recorder.h"
#include "tests/support/rounds.h"

#include <gtest/gtest.h>
#include <mshtml.h>

using namespace support;

namespace
{

constexpr UINT kId = 40;
const CRect kPlace(10, 20, 90, 60);
constexpr DISPID kDocument = 203; // of the browser
constexpr DISPID kFullScreen = 407;

// Keeps what views give to OutputDebugString while it lives.
class DebugTexts
{
public:
    DebugTexts() : m_handler(::AddVectoredExceptionHandler(1, &Handle)) { s_texts.clear(); }
    ~DebugTexts() { ::RemoveVectoredExceptionHandler(m_handler); }
    DebugTexts(const DebugTexts&) = delete;
    DebugTexts& operator=(const DebugTexts&) = delete;

    static std::vector<std::wstring> Take()
    {
        // Others, such as the test framework, use the same way.
        std::erase_if(s_texts, [](const std::wstring& text) { return !text.ends_with(L"ignored\r\n"); });
        return std::exchange(s_texts, {});
    }

private:
    // The texts come as exceptions; parameter 0 is the length with the terminator, 1 the text.
    static LONG CALLBACK Handle(EXCEPTION_POINTERS* exception)
    {
        constexpr DWORD printAnsi = 0x40010006;
        constexpr DWORD printWide = 0x4001000A;
        const EXCEPTION_RECORD& record = *exception->ExceptionRecord;
        if (record.ExceptionCode == printWide)
            s_texts.emplace_back(reinterpret_cast<LPCWSTR>(record.ExceptionInformation[1]));
        else if (record.ExceptionCode == printAnsi)
            s_texts.emplace_back(
                CString(reinterpret_cast<LPCSTR>(record.ExceptionInformation[1])).GetString());
        else
            return EXCEPTION_CONTINUE_SEARCH;
        return EXCEPTION_CONTINUE_EXECUTION;
    }

    static inline std::vector<std::wstring> s_texts;
    void* m_handler;
};

class View : public CMediaView
{
    DECLARE_DHTML_EVENT_MAP()

public:
    View() { ++alive; }
    ~View() override { --alive; }
    HRESULT OnClick(IHTMLElement*) { return ++clicks, S_OK; }

    static inline int alive = 0;
    int clicks = 0;
};

BEGIN_DHTML_EVENT_MAP(View)
DHTML_EVENT_ONCLICK(nullptr, OnClick)
DHTML_EVENT_ONBLUR(L"field", OnClick)
END_DHTML_EVENT_MAP()

// The program's window, which translates F1.
class Program : public HostWnd
{
public:
    BOOL PreTranslateMessage(MSG* msg) override
    {
        const bool mine = msg->wParam == VK_F1 && msg->hwnd == m_hWnd;
        translated += mine;
        return mine || HostWnd::PreTranslateMessage(msg);
    }

    int translated = 0;
};

// A view in a pane of the program, with a browser that records.
class MediaView : public CensusTest
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(program.Open({200, 100}));
        ASSERT_TRUE(pane.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, {0, 0, 200, 100}, &program, 1));
        view = new View;
        ASSERT_TRUE(view->Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, kPlace, &pane, kId));
        view->SetFocus();
        ASSERT_EQ(::GetFocus(), registered.window);
        program.RecordAlso(WM_KEYFIRST, WM_KEYLAST);
        program.SetAnswer([](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
            if (message >= WM_KEYFIRST && message <= WM_KEYLAST)
                return 0;
            return std::nullopt;
        });
    }
    void TearDown() override
    {
        if (program.m_hWnd != nullptr)
            program.DestroyWindow();
        EXPECT_EQ(View::alive, 0);
        EXPECT_EQ(registered.controls, 0);
    }

    ActiveXControlClass registered{CLSID_WebBrowser};
    Program program;
    CWnd pane;
    View* view = nullptr;
    DebugTexts texts;
};

class MediaCtrl : public CensusTest
{
protected:
    void SetUp() override { ASSERT_TRUE(host.Open({200, 100})); }
    void TearDown() override
    {
        if (host.m_hWnd != nullptr)
            host.DestroyWindow();
        EXPECT_EQ(registered.controls, 0);
    }

    HWND MakePlaceholder()
    {
        return ::CreateWindow(L"STATIC", L"", WS_CHILD | WS_VISIBLE, kPlace.left, kPlace.top, kPlace.Width(),
                              kPlace.Height(), host.m_hWnd, reinterpret_cast<HMENU>(kId), nullptr, nullptr);
    }
    static BOOL Create(CMediaCtrl& control, CWnd& parent)
    {
        return control.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, kPlace, &parent, kId);
    }

    ActiveXControlClass registered{CLSID_WebBrowser};
    HostWnd host;
};

} // namespace

TEST_F(MediaView, FunctionKeysGoToTheProgram)
{
    const PageInput page(registered.window);
    std::vector<UINT> keys{VK_HELP, VK_ESCAPE};
    for (UINT key = VK_F2; key <= VK_F12; ++key)
        keys.push_back(key);
    for (const UINT key : keys) {
        program.Clear();
        Key(key);
        ASSERT_EQ(program.Messages().size(), 2u) << key;
        for (const RecordedMessage& record : program.Messages()) {
            EXPECT_EQ(record.window, program.m_hWnd);
            EXPECT_EQ(record.wParam, key);
        }
        EXPECT_EQ(page.CountKey(key), 0) << key;
        EXPECT_EQ(DebugTexts::Take(), std::vector<std::wstring>(2, L"Function key ignored\r\n"));
    }
    EXPECT_EQ(registered.Logged("TranslateAccelerator"), 0);

    program.Clear();
    Key(VK_F1); // translated: not sent as well
    EXPECT_EQ(program.translated, 2);
    EXPECT_TRUE(program.Messages().empty());
    EXPECT_EQ(page.CountKey(VK_F1), 0);
    KeyDown(VK_F12 + 1); // one more function key, which is the page's
    KeyUp(VK_F12 + 1);
    EXPECT_EQ(page.CountKey(VK_F12 + 1), 2);
}

TEST_F(MediaView, BrowserCommandsDoNothing)
{
    const PageInput page(registered.window);
    const struct {
        UINT key;
        UINT modifier;
        LPCWSTR text; // null for a key that is the page's
    } cases[] = {
        {'N', VK_CONTROL, L"Ctrl-N ignored\r\n"},
        {'P', VK_CONTROL, L"Ctrl-P ignored\r\n"},
        {'D', VK_CONTROL, L"Ctrl-D ignored\r\n"},
        {VK_LEFT, VK_MENU, L"Atl-Left ignored\r\n"},
        {VK_RIGHT, VK_MENU, L"Atl-Right ignored\r\n"},
        {'N', VK_SHIFT, nullptr},
        {'C', VK_CONTROL, nullptr},
        {VK_LEFT, VK_CONTROL, nullptr},
        {VK_RIGHT, VK_SHIFT, nullptr},
    };
    for (const auto& [key, modifier, text] : cases) {
        int before = 0;
        bool isHeld = false;
        // When a late notice of the focus comes, the system takes over the display's keys, among which the
        // modifier is up: then it is pressed again.
        for (int tries = 0; tries < 10 && !isHeld; ++tries) {
            before = page.CountKey(key);
            DebugTexts::Take();
            // One by one: the view asks whether the modifier is down now.
            KeyDown(modifier);
            Key(key);
            isHeld = ::GetAsyncKeyState(modifier) < 0;
            KeyUp(modifier);
        }
        ASSERT_TRUE(isHeld) << modifier;
        EXPECT_EQ(page.CountKey(key) - before, text != nullptr ? 0 : 2) << key;
        EXPECT_EQ(DebugTexts::Take(),
                  text != nullptr ? std::vector<std::wstring>(2, text) : std::vector<std::wstring>());
    }
    EXPECT_TRUE(program.Messages().empty());
}

TEST_F(MediaView, RightClicksAreConsumed)
{
    const PageInput page(registered.window);
    Click(registered.window, MouseButton::Right);
    EXPECT_EQ(page.Count(WM_RBUTTONDOWN), 0);
    EXPECT_EQ(page.Count(WM_RBUTTONUP), 1);
    ::PostMessage(registered.window, WM_RBUTTONDBLCLK, 0, 0);
    PumpMessages();
    EXPECT_EQ(page.Count(WM_RBUTTONDBLCLK), 0);
    Click(registered.window);
    EXPECT_EQ(page.Count(WM_LBUTTONDOWN), 1);
}

TEST_F(MediaView, MayGoWhileTheProgramHandlesItsKey)
{
    program.SetAnswer([this](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (message == WM_KEYDOWN)
            view->DestroyWindow();
        return std::nullopt;
    });
    Key(VK_ESCAPE);
    EXPECT_EQ(View::alive, 0);
}

TEST_F(MediaView, SinksFollowTheDocument)
{
    HtmlObject first(__uuidof(HTMLDocumentEvents2));
    HtmlObject second(__uuidof(HTMLDocumentEvents2));
    HtmlObject field(__uuidof(HTMLElementEvents2));
    HtmlObject other;
    first.elements[L"field"] = &field;
    COleVariant& shown = registered.properties[kDocument];
    const COleVariant browser = ObjectVariant(nullptr);
    const COleVariant url(L"file:///C:/page.htm");

    shown = browser; // there is no document yet
    registered.Fire(DISPID_DOCUMENTCOMPLETE, {browser, url});
    shown = ObjectVariant(&first);
    registered.Fire(DISPID_DOCUMENTCOMPLETE, {browser, url});
    EXPECT_TRUE(first.IsConnected());
    EXPECT_TRUE(field.IsConnected());
    EXPECT_EQ(view->GetSinkDocument(), first.Dispatch());
    first.Fire(DISPID_EVMETH_ONCLICK, &other);
    field.Fire(static_cast<DISPID>(DISPID_EVMETH_ONBLUR), &other);
    EXPECT_EQ(view->clicks, 2);

    registered.Fire(DISPID_NAVIGATECOMPLETE2, {browser, url}); // of a frame of the same document
    EXPECT_TRUE(first.IsConnected());
    shown = ObjectVariant(&second);
    registered.Fire(DISPID_NAVIGATECOMPLETE2, {browser, url});
    EXPECT_FALSE(first.IsConnected());
    EXPECT_FALSE(field.IsConnected());
    EXPECT_EQ(first.references, 0);
    registered.Fire(DISPID_DOCUMENTCOMPLETE, {browser, url});
    EXPECT_TRUE(second.IsConnected());

    program.DestroyWindow();
    registered.properties.clear();
    EXPECT_FALSE(second.IsConnected());
    EXPECT_EQ(second.references, 0);
}

TEST_F(MediaCtrl, CoversAWindowOfItsOwnOrAControl)
{
    CMediaCtrl control;
    for (const bool subclassed : {false, true}) {
        if (subclassed) {
            ASSERT_NE(MakePlaceholder(), nullptr);
            ASSERT_TRUE(control.SubclassDlgItem(kId, &host));
        } else {
            ASSERT_TRUE(Create(control, host));
        }
        EXPECT_EQ(registered.controls, 1);
        ASSERT_NE(registered.window, nullptr);
        EXPECT_EQ(::GetParent(registered.window), control.m_hWnd);
        EXPECT_NE(control.GetStyle() & WS_CLIPCHILDREN, 0u);
        CRect place;
        ::GetWindowRect(registered.window, place);
        control.ScreenToClient(place);
        EXPECT_EQ(place, CRect(CPoint(), kPlace.Size()));
        control.MoveWindow(0, 0, 150, 90);
        EXPECT_EQ(registered.place, CRect(0, 0, 150, 90));
        control.DestroyWindow();
        EXPECT_EQ(registered.controls, 0);
        EXPECT_EQ(control.m_hWnd, nullptr);
    }
}

TEST_F(MediaCtrl, ForwardsToTheBrowser)
{
    CMediaCtrl control;
    control.Navigate(L"a"); // to nowhere
    control.SetFullScreen(TRUE);
    EXPECT_FALSE(control.GetFullScreen());
    ASSERT_TRUE(Create(control, host));
    registered.calls.clear();
    BYTE data[] = {1, 2};
    CByteArray posted;
    posted.Add(3);
    ITEMIDLIST desktop{};
    control.Navigate(L"C:\\film.swf", 2, L"_self", L"X: y", data, 2);
    control.Navigate2(&desktop);
    control.Navigate2(L"page", 0, posted);
    control.Navigate2(L"page");
    control.Play(1);
    control.Play(0);
    control.Navigate(nullptr);
    std::vector<DISPID> members;
    for (const ControlCall& call : registered.calls)
        members.push_back(call.member);
    EXPECT_EQ(members, (std::vector<DISPID>{104, 500, 500, 500, DISPID_REFRESH, 106}));
    EXPECT_STREQ(registered.calls[0].arguments[0].bstrVal, L"C:\\film.swf");

    control.SetFullScreen(7);
    EXPECT_EQ(registered.properties.at(kFullScreen).boolVal, VARIANT_TRUE);
    EXPECT_TRUE(control.GetFullScreen());
    control.SetFullScreen(0);
    EXPECT_FALSE(control.GetFullScreen());
}

TEST_F(MediaCtrl, WithoutABrowser)
{
    registered.refuseActivation = true;
    CMediaCtrl control;
    EXPECT_FALSE(Create(control, host));
    EXPECT_EQ(control.m_hWnd, nullptr);
    const HWND placeholder = MakePlaceholder();
    ASSERT_TRUE(control.SubclassWindow(placeholder));
    control.Navigate(L"a");
    control.Play(1);
    control.MoveWindow(0, 0, 5, 5);
    EXPECT_EQ(::GetWindow(placeholder, GW_CHILD), nullptr);
    registered.refuseActivation = false;
    control.DestroyWindow();
    EXPECT_TRUE(Create(control, host));
}

TEST_F(MediaCtrl, ManyRoundsLeaveNothing)
{
    ExpectRoundsLeaveNothing([this] {
        CMediaCtrl control;
        ASSERT_TRUE(Create(control, host));
        control.Navigate(L"C:\\film.swf");
        auto* const view = new View;
        ASSERT_TRUE(view->Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, kPlace, &host, kId + 1));
        view->DestroyWindow();
        control.DestroyWindow();
        ASSERT_TRUE(control.SubclassWindow(MakePlaceholder()));
        control.DestroyWindow();
    });
    EXPECT_EQ(View::alive, 0);
    EXPECT_EQ(registered.controls, 0);
}

// The system's own browser; whether it can show the page depends on its engine.
TEST(MediaBrowser, NavigatesInPlace)
{
    class Player : public CMediaCtrl
    {
    public:
        void OnBeforeNavigate2(LPCTSTR url, DWORD, LPCTSTR, CByteArray&, LPCTSTR, BOOL* cancel) override
        {
            asked = url;
            *cancel = TRUE;
        }
        CString asked;
    };
    HostWnd host;
    ASSERT_TRUE(host.Open({200, 100}));
    Player player;
    ASSERT_TRUE(player.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, kPlace, &host, kId));
    const HWND browser = ::GetWindow(player.m_hWnd, GW_CHILD);
    ASSERT_NE(browser, nullptr);
    CRect place;
    ::GetClientRect(browser, place);
    EXPECT_EQ(place, CRect(CPoint(), kPlace.Size()));
    player.SetFullScreen(1);
    EXPECT_TRUE(player.GetFullScreen());
    player.Navigate(L"about:blank");
    EXPECT_TRUE(PumpUntil([&] { return player.asked == L"about:blank"; }));
}
