#include "vgui/assist/assist_system.h"

#include "tests/assist/assist_host.h"
#include "tests/support/census.h"
#include "tests/support/import_patch.h"
#include "tests/support/input.h"
#include "tests/support/modal.h"
#include "tests/support/pump.h"
#include "tests/support/recorder.h"
#include "tests/support/rounds.h"
#include "vgui/assist/assist_msg.h"
#include "vgui/assist/assist_player.h"

#include <algorithm>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <map>

using namespace support;

namespace
{

namespace fs = std::filesystem;
using Texts = std::vector<std::wstring>;

constexpr int kPlayer = 1000;
constexpr int kVideos = 1001;
constexpr int kInstructions = 1002;
constexpr int kFullScreen = 1008;
constexpr UINT kPlayback[] = {1004, 1005, 1006, 1007, 1008, 1015, 1016, 1017, 1018};
constexpr wchar_t kTopic[] = L"CPlanDlg";
constexpr wchar_t kFileDialogTitle[] = L"选择视频配置文件";

class FakePlayer : public VAssistPlayer
{
public:
    explicit FakePlayer(Texts& calls) : m_calls(calls) {}

    bool Create(CWnd& parent, const CRect& place) override
    {
        return m_window.Create(L"player", WS_CHILD | WS_VISIBLE | SS_NOTIFY, place, &parent) != FALSE;
    }
    CWnd* Window() override { return &m_window; }
    void Navigate(LPCWSTR url) override { m_calls.push_back(url); }
    void SetFullScreen(BOOL fullScreen) override
    {
        m_calls.push_back(fullScreen ? L"full screen" : L"windowed");
    }

private:
    Texts& m_calls;
    CStatic m_window;
};

class PlayingDlg : public CAssistSystemDlg
{
public:
    using CAssistSystemDlg::m_player;

    Texts calls;
    int iconsErased = 0;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        iconsErased += message == WM_ICONERASEBKGND;
        return CAssistSystemDlg::WindowProc(message, wParam, lParam);
    }
    std::unique_ptr<VAssistPlayer> CreatePlayer() override { return std::make_unique<FakePlayer>(calls); }
};

// A host with some topics.
class SampleHost
{
protected:
    SampleHost()
    {
        const fs::path folder = host.Videos() / L"设置" / L"工程 设置";
        AssistHost::Write(folder / L"first.swf", L"");
        AssistHost::Write(folder / L"二.SWF", L"");
        AssistHost::Write(folder / L"first.txt", L"one\r\n\r\n三");
        AssistHost::Write(folder / L"notes.doc", L"");
        fs::create_directories(folder / L"folder.swf");
        AssistHost::Write(host.Videos() / L"empty" / L"note.txt", L"");
        AssistHost::Write(host.Videos() / L"AssistSystem.ini",
                          L"[CPlanDlg]\r\nCaption=工程 设置\r\nDirectory=设置\\工程 设置\r\n"
                          L"[Empty]\r\nDirectory=empty\r\n[Bare]\r\nCaption=only\r\n");
    }
    ~SampleHost()
    {
        if (CAssistSystemDlg* const dialog = Find())
            dialog->DestroyWindow();
    }

    static bool Enter(const wchar_t* topic)
    {
        const bool entered = EnterAssistSystem(topic, nullptr, nullptr);
        PumpMessages();
        return entered;
    }
    // The open help dialog, null when there is none; fails when there are several.
    static CAssistSystemDlg* Find()
    {
        CAssistSystemDlg* found = nullptr;
        for (HWND window = ::GetTopWindow(nullptr); window != nullptr;
             window = ::GetWindow(window, GW_HWNDNEXT)) {
            if (auto* dialog = dynamic_cast<CAssistSystemDlg*>(CWnd::FromHandlePermanent(window))) {
                EXPECT_EQ(found, nullptr);
                found = dialog;
            }
        }
        return found;
    }
    static Texts Titles(CWnd& dialog)
    {
        const CListCtrl& list = static_cast<CListCtrl&>(*dialog.GetDlgItem(kVideos));
        Texts titles;
        for (int i = 0; i < list.GetItemCount(); ++i)
            titles.emplace_back(list.GetItemText(i, 0).GetString());
        std::sort(titles.begin(), titles.end());
        return titles;
    }
    static void Select(CWnd& dialog, const wchar_t* title)
    {
        auto& list = static_cast<CListCtrl&>(*dialog.GetDlgItem(kVideos));
        LVFINDINFO info{};
        info.flags = LVFI_STRING;
        info.psz = title;
        const auto item = static_cast<int>(
            list.SendMessage(LVM_FINDITEM, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&info)));
        list.SetItemState(item, LVIS_SELECTED, LVIS_SELECTED);
    }
    static std::wstring ChildText(CWnd& dialog, int id) { return WindowText(dialog.GetDlgItem(id)->m_hWnd); }
    static bool IsPlaybackEnabled(CWnd& dialog)
    {
        const bool enabled = dialog.GetDlgItem(kFullScreen)->IsWindowEnabled();
        for (const UINT id : kPlayback)
            EXPECT_EQ(dialog.GetDlgItem(id)->IsWindowEnabled(), enabled) << id;
        return enabled;
    }

    AssistHost host;
};

class AssistSystem : public CensusTest, protected SampleHost
{
};

// No census: Wine's file dialog keeps an accelerator table each time.
class AssistSystemFiles : public testing::Test, protected SampleHost
{
};

class AssistSystemPlayer : public AssistSystem
{
protected:
    void SetUp() override
    {
        dialog = new PlayingDlg; // goes with its window
        ASSERT_TRUE(dialog->LoadTopic(kTopic) && dialog->Open());
        dialog->SetWindowPos(nullptr, 20, 10, 1000, 700, SWP_NOZORDER);
        dialog->ShowWindow(SW_SHOW);
        dialog->SetForegroundWindow();
        PumpMessages();
    }
    [[nodiscard]] HWND Player() const { return dialog->m_player->Window()->m_hWnd; }
    [[nodiscard]] std::map<HWND, CRect> VisibleChildren() const
    {
        std::map<HWND, CRect> children;
        for (HWND child = ::GetWindow(dialog->m_hWnd, GW_CHILD); child != nullptr;
             child = ::GetWindow(child, GW_HWNDNEXT)) {
            if (::IsWindowVisible(child))
                ::GetWindowRect(child, &children[child]);
        }
        return children;
    }

    PlayingDlg* dialog = nullptr;
};

// Runs an action once, just before some window gets a message.
class OnceBefore
{
public:
    OnceBefore(UINT message, WPARAM wParam, std::function<void()> action)
        : m_hook(::SetWindowsHookEx(WH_CALLWNDPROC, Hook, nullptr, ::GetCurrentThreadId()))
    {
        s_message = message;
        s_wParam = wParam;
        s_action = std::move(action);
    }
    ~OnceBefore() { ::UnhookWindowsHookEx(m_hook); }
    OnceBefore(const OnceBefore&) = delete;
    OnceBefore& operator=(const OnceBefore&) = delete;

private:
    static LRESULT CALLBACK Hook(int code, WPARAM wParam, LPARAM lParam)
    {
        const auto& sent = *reinterpret_cast<const CWPSTRUCT*>(lParam);
        if (code == HC_ACTION && sent.message == s_message && sent.wParam == s_wParam && s_action)
            std::exchange(s_action, nullptr)();
        return ::CallNextHookEx(nullptr, code, wParam, lParam);
    }

    static inline UINT s_message = 0;
    static inline WPARAM s_wParam = 0;
    static inline std::function<void()> s_action;
    HHOOK m_hook;
};

HWND WINAPI RefuseDialog(HINSTANCE, LPCDLGTEMPLATEW, HWND, DLGPROC, LPARAM)
{
    return nullptr;
}

CRect Place(HWND window)
{
    CRect rect;
    ::GetWindowRect(window, rect);
    return rect;
}

} // namespace

TEST_F(AssistSystem, ShowsTheVideosAndInstructionsOfATopic)
{
    ASSERT_TRUE(Enter(kTopic));
    CAssistSystemDlg& dialog = *Find();
    EXPECT_TRUE(dialog.IsZoomed());
    EXPECT_EQ(::GetForegroundWindow(), dialog.m_hWnd);
    EXPECT_EQ(WindowText(dialog.m_hWnd), L"帮助系统 - 工程 设置");
    EXPECT_EQ(Titles(dialog), (Texts{L"first", L"二"}));
    Select(dialog, L"first");
    EXPECT_EQ(ChildText(dialog, kInstructions), L"one\r\n\r\n三\r\n");
    Select(dialog, L"二");
    EXPECT_EQ(ChildText(dialog, kInstructions), L"无");
    EXPECT_TRUE(IsPlaybackEnabled(dialog));
    EXPECT_EQ(dialog.SendMessage(CAssistSystemDlg::kShowAgain), 1);

    Key(VK_RETURN);
    EXPECT_TRUE(dialog.IsWindowVisible());
    Key(VK_ESCAPE);
    EXPECT_EQ(Find(), nullptr);
}

TEST_F(AssistSystem, ReadsInstructionsInAnyEncoding)
{
    const fs::path file = host.Videos() / L"设置" / L"工程 设置" / L"二.txt";
    const std::string longLine(3000, 'x');
    std::wstring empty;
    for (int line = 0; line < 513; ++line)
        empty += L"\r\n";
    struct Case {
        std::string bytes;
        std::wstring text;
    };
    for (const Case& c : {
             Case{"\xE4\xB8\x89", L"三\r\n"},
             Case{"\xEF\xBB\xBF\xE4\xB8\x89\n", L"三\r\n"},
             Case{"a\r\n\nb", L"a\r\n\r\nb\r\n"},
             // The end of what is shown lies inside a character.
             Case{"\xE4\xB8\x89\n" + std::string((1 << 20) - 6, '\r') + "\n\xE4\xB8\x89", L"三\r\n" + empty},
             Case{longLine, std::wstring(2047, L'x') + L"\r\n" + std::wstring(953, L'x') + L"\r\n"},
         }) {
        std::ofstream(file, std::ios::binary) << c.bytes;
        ASSERT_TRUE(Enter(kTopic));
        Select(*Find(), L"first");
        Select(*Find(), L"二");
        EXPECT_EQ(ChildText(*Find(), kInstructions), c.text);
    }
}

TEST_F(AssistSystem, ShowsOneTopicAtATime)
{
    ASSERT_TRUE(Enter(kTopic));
    const HWND window = Find()->m_hWnd;
    ASSERT_TRUE(Enter(L"Empty"));
    EXPECT_EQ(Find()->m_hWnd, window);
    EXPECT_EQ(Titles(*Find()), Texts());
    EXPECT_FALSE(IsPlaybackEnabled(*Find()));
    // A topic without a caption keeps the one before.
    EXPECT_EQ(WindowText(window), L"帮助系统 - 工程 设置");
    ASSERT_TRUE(Enter(kTopic));
    EXPECT_TRUE(IsPlaybackEnabled(*Find()));

    const auto answer = AnswerMessageBox(IDOK);
    EXPECT_FALSE(Enter(L""));
    EXPECT_EQ(Find(), nullptr);
    ASSERT_TRUE(Enter(L"Empty"));
    EXPECT_EQ(WindowText(Find()->m_hWnd), L"帮助系统");
}

TEST_F(AssistSystem, SaysWhyATopicCannotBeShown)
{
    const auto expectMessage = [](const wchar_t* topic, const wchar_t* text) {
        const auto answer = AnswerMessageBox(IDOK);
        EXPECT_FALSE(Enter(topic));
        EXPECT_EQ(answer.Text(), text);
    };
    expectMessage(L"", L"传入的目录为空，无法初始化视频列表！");
    expectMessage(nullptr, L"传入的目录为空，无法初始化视频列表！");
    host.WriteProduct(L"Software\\VGuiTests\\Nobody");
    expectMessage(kTopic, L"注册表文件已损坏，请重新安装！");
    host.WriteProduct(L"");
    expectMessage(kTopic, L"无法读取 产品信息 的 注册表位置！");
    fs::remove(host.Sys(L"product.ini"));
    expectMessage(kTopic, L"无法读取 产品信息 的 注册表位置！");
    EXPECT_EQ(Find(), nullptr);
}

TEST_F(AssistSystem, FindsTheTopicFileInTheHostsFolderWhenTheVideosHaveNone)
{
    fs::rename(host.Videos() / L"AssistSystem.ini", host.Sys(L"AssistSystem.ini"));
    ASSERT_TRUE(Enter(kTopic));
    EXPECT_EQ(Titles(*Find()).size(), 2u);
}

TEST_F(AssistSystemFiles, AsksWhereTheVideosAre)
{
    AssistHost::SetVideoRoot(L"");
    {
        const auto answer = AnswerMessageBox(IDCANCEL);
        EXPECT_FALSE(Enter(kTopic));
        EXPECT_EQ(answer.Caption(), kFileDialogTitle);
        EXPECT_EQ(AssistHost::VideoRoot(), L"");
    }
    const auto answer = AnswerFileDialog(host.Videos() / L"AssistSystem.ini");
    ASSERT_TRUE(Enter(kTopic));
    EXPECT_EQ(AssistHost::VideoRoot(), host.Videos());
    // The folder counts from the next call on.
    EXPECT_EQ(WindowText(Find()->m_hWnd), L"帮助系统 - 工程 设置");
    EXPECT_EQ(Titles(*Find()), Texts());
    ASSERT_TRUE(Enter(kTopic));
    EXPECT_EQ(Titles(*Find()).size(), 2u);
}

TEST_F(AssistSystemFiles, AsksForTheFileOfATopicWithoutAFolder)
{
    const fs::path other = host.Videos() / L"other" / L"topics.ini";
    AssistHost::Write(other, L"[Bare]\r\nCaption=其他\r\n");
    AssistHost::Write(host.Videos() / L"root.swf", L"");
    {
        const auto answer = AnswerMessageBox(IDCANCEL);
        EXPECT_FALSE(Enter(L"Bare"));
        EXPECT_EQ(answer.Caption(), kFileDialogTitle);
    }
    const auto answer = AnswerFileDialog(other);
    ASSERT_TRUE(Enter(L"Bare"));
    EXPECT_EQ(WindowText(Find()->m_hWnd), L"帮助系统 - 其他");
    EXPECT_EQ(Titles(*Find()), Texts{L"root"});
    EXPECT_EQ(AssistHost::VideoRoot(), other.parent_path());
}

TEST_F(AssistSystemFiles, ShowsTheMissingRecordWhenTheProductWantsIt)
{
    // Numbers below 1 are not kept, others are.
    for (const auto& [line, shown] :
         {std::pair{L"CustomFlag=0", false}, {L"CustomFlag=4096", true}, {L"CustomFlag=1", true}}) {
        host.WriteProduct(AssistHost::RegistryKey(), line);
        std::wstring body;
        auto notice = WhenModal([&](HWND dialog) {
            body = WindowText(::GetDlgItem(dialog, 1002));
            PostButton(dialog, shown ? IDOK : IDCANCEL);
        });
        auto file = AnswerMessageBox(IDCANCEL);
        EXPECT_FALSE(Enter(L"Bare"));
        EXPECT_EQ(notice.Caption(), shown ? L"无法读取 Bare 的目录" : kFileDialogTitle) << line;
        const std::wstring record =
            L"[Bare]\r\nCaption=标题（如：工程设置）\r\nDirectory=相对路径（如：设置\\工程设置）";
        EXPECT_EQ(body, shown ? record : L"");
        EXPECT_EQ(file.Shown(), shown) << line;
        file.Withdraw();
    }
}

TEST_F(AssistSystemFiles, SurvivesTheEndOfItsDialogWhileAFileIsChosen)
{
    const fs::path file = host.Videos() / L"no captions.ini";
    AssistHost::Write(file, L"");
    HostWnd main; // the file dialog's owner
    ASSERT_TRUE(Enter(kTopic));
    ASSERT_TRUE(main.Open());
    const auto answer = WhenModal([&](HWND box) {
        Find()->DestroyWindow();
        ::SetWindowText(FileNameField(box), file.c_str());
        PostButton(box, IDOK);
    });
    EXPECT_FALSE(Enter(L"Bare"));
    EXPECT_EQ(Find(), nullptr);
}

TEST_F(AssistSystemFiles, DoesNotOpenWhenItsOwnerHasGoneMeanwhile)
{
    AssistHost::SetVideoRoot(L"");
    HostWnd owner;
    HostWnd main;
    ASSERT_TRUE(owner.Open());
    ASSERT_TRUE(main.Open());
    const auto answer = WhenModal([&](HWND box) {
        owner.DestroyWindow();
        ::SetWindowText(FileNameField(box), (host.Videos() / L"AssistSystem.ini").c_str());
        PostButton(box, IDOK);
    });
    EXPECT_FALSE(EnterAssistSystem(kTopic, &owner, nullptr));
    EXPECT_EQ(AssistHost::VideoRoot(), host.Videos());
    EXPECT_EQ(Find(), nullptr);
}

TEST_F(AssistSystemFiles, BelongsToTheWindowOfAnOwnerThatLostItMeanwhile)
{
    AssistHost::SetVideoRoot(L"");
    HostWnd owner;
    HostWnd main;
    ASSERT_TRUE(owner.Open());
    ASSERT_TRUE(main.Open());
    HWND window = nullptr;
    const auto answer = WhenModal([&](HWND box) {
        window = owner.Detach();
        ::SetWindowText(FileNameField(box), (host.Videos() / L"AssistSystem.ini").c_str());
        PostButton(box, IDOK);
    });
    EXPECT_TRUE(EnterAssistSystem(kTopic, &owner, nullptr));
    ASSERT_NE(Find(), nullptr);
    EXPECT_EQ(::GetWindow(Find()->m_hWnd, GW_OWNER), window);
    ::DestroyWindow(window);
    EXPECT_EQ(Find(), nullptr);
}

TEST_F(AssistSystemFiles, TakesThePlaceOfAHelpThatOpenedMeanwhile)
{
    AssistHost::SetVideoRoot(L"");
    const auto answer = WhenModal([&](HWND box) {
        AssistHost::SetVideoRoot(host.Videos());
        EXPECT_TRUE(Enter(kTopic));
        ::SetWindowText(FileNameField(box), (host.Videos() / L"AssistSystem.ini").c_str());
        PostButton(box, IDOK);
    });
    EXPECT_TRUE(Enter(L"Empty"));
    ASSERT_NE(Find(), nullptr);
    EXPECT_EQ(WindowText(Find()->m_hWnd), L"帮助系统");
}

TEST_F(AssistSystem, OpensAgainAfterItCouldNot)
{
    {
        const ImportPatch refusal(L"mfcsubset.dll", "CreateDialogIndirectParamW",
                                  reinterpret_cast<void*>(RefuseDialog));
        ASSERT_TRUE(refusal.IsInPlace());
        EXPECT_FALSE(Enter(kTopic));
        EXPECT_EQ(Find(), nullptr);
    }
    EXPECT_TRUE(Enter(kTopic));
}

TEST_F(AssistSystem, TakesNoTopicWhileItOpens)
{
    bool entered = true;
    // It has listed the topic's videos then and not yet loaded one.
    const OnceBefore column(LVM_INSERTCOLUMN, 0, [&] { entered = EnterAssistSystem(L"", nullptr, nullptr); });
    EXPECT_TRUE(Enter(kTopic));
    EXPECT_FALSE(entered);
    ASSERT_NE(Find(), nullptr);
    EXPECT_EQ(WindowText(Find()->m_hWnd), L"帮助系统 - 工程 设置");
}

TEST_F(AssistSystem, MayBeClosedWhileItComesToTheFront)
{
    {
        const OnceBefore maximised(WM_SIZE, SIZE_MAXIMIZED, [] { Find()->DestroyWindow(); });
        EXPECT_FALSE(Enter(kTopic));
        EXPECT_EQ(Find(), nullptr);
    }
    enum class When { Opening, Changing, LeavingFullScreen };
    for (const When when : {When::Opening, When::Changing, When::LeavingFullScreen}) {
        SCOPED_TRACE(static_cast<int>(when));
        HostWnd owner; // ends, and the help with it, when it is not active any more
        ASSERT_TRUE(owner.Open());
        if (when != When::Opening) {
            ASSERT_TRUE(EnterAssistSystem(L"Empty", &owner, nullptr));
            PumpMessages();
            if (when == When::LeavingFullScreen)
                Find()->EnterFullScreen();
            owner.SetForegroundWindow();
            ASSERT_TRUE(PumpUntil([&] { return ::GetActiveWindow() == owner.m_hWnd; }));
        }
        bool ended = false;
        owner.SetAnswer([&](UINT message, WPARAM wParam, LPARAM) -> std::optional<LRESULT> {
            if (message != WM_ACTIVATE || LOWORD(wParam) != WA_INACTIVE || std::exchange(ended, true))
                return std::nullopt;
            owner.DestroyWindow();
            return 0;
        });
        EXPECT_FALSE(EnterAssistSystem(L"Empty", &owner, nullptr));
        EXPECT_EQ(owner.m_hWnd, nullptr);
        EXPECT_EQ(Find(), nullptr);
    }
}

TEST_F(AssistSystem, DoesNothingWithoutAWindow)
{
    CAssistSystemDlg dialog;
    dialog.EnterFullScreen();
    EXPECT_FALSE(dialog.IsFullScreen());
    dialog.LeaveFullScreen();
    dialog.FillVideoList();
}

TEST_F(AssistSystem, SaysThatAVideoIsMissing)
{
    ASSERT_TRUE(Enter(kTopic));
    Select(*Find(), L"first");
    fs::remove(host.Videos() / L"设置" / L"工程 设置" / L"二.SWF");
    fs::create_directories(host.Videos() / L"设置" / L"工程 设置" / L"二.SWF");
    const auto answer = AnswerMessageBox(IDOK);
    Select(*Find(), L"二");
    EXPECT_FALSE(answer.Shown()) << "inside the list's notification";
    EXPECT_TRUE(PumpUntil([&] { return answer.Shown(); }));
    EXPECT_EQ(answer.Text(),
              L"文件 " + (host.Videos() / L"设置" / L"工程 设置" / L"二.swf").wstring() + L" 不存在！");
    EXPECT_FALSE(IsPlaybackEnabled(*Find()));
    Select(*Find(), L"二");
    Select(*Find(), L"first"); // in time
    EXPECT_TRUE(IsPlaybackEnabled(*Find()));
    PumpMessages();

    const auto end = WhenModal([](HWND box) {
        Find()->DestroyWindow();
        if (::IsWindow(box)) // it may have belonged to the dialog
            PostButton(box, IDOK);
    });
    Select(*Find(), L"二");
    EXPECT_TRUE(PumpUntil([&] { return end.Shown(); }));
    EXPECT_EQ(Find(), nullptr);
}

TEST_F(AssistSystem, NoticesHaveTwoForms)
{
    CAssistMsg message;
    message.SetMsg(L"text\r\nmore", CAssistMsg::Incomplete);
    std::wstring body;
    const auto answer = WhenModal([&](HWND dialog) {
        body = WindowText(::GetDlgItem(dialog, 1002));
        PostButton(dialog, IDOK);
    });
    EXPECT_EQ(message.DoModal(), IDOK);
    EXPECT_EQ(answer.Caption(), L"温馨提示");
    EXPECT_EQ(answer.Text(), L"帮助系统尚未完善！");
    EXPECT_EQ(body, L"text\r\nmore");
}

TEST_F(AssistSystem, NoticeRoundsLeaveNothing)
{
    ExpectRoundsLeaveNothing([] {
        for (const int mode : {CAssistMsg::MissingEntry, CAssistMsg::Incomplete}) {
            CAssistMsg message;
            message.SetMsg(L"text", mode);
            const auto answer = AnswerMessageBox(IDOK);
            ASSERT_EQ(message.DoModal(), IDOK);
        }
    });
}

TEST_F(AssistSystemPlayer, PlaysTheSelectedVideo)
{
    AssistHost::SetVideoRoot(host.Videos().wstring() + L"\\");
    ASSERT_TRUE(dialog->LoadTopic(kTopic));
    dialog->FillVideoList();
    Select(*dialog, L"first");
    dialog->calls.clear();
    Select(*dialog, L"二");
    EXPECT_EQ(dialog->calls, Texts{host.Videos() / L"设置" / L"工程 设置" / L"二.swf"});

    // What played before ends when there is nothing else to play.
    fs::remove(host.Videos() / L"设置" / L"工程 设置" / L"first.swf");
    dialog->calls.clear();
    const auto answer = AnswerMessageBox(IDOK);
    Select(*dialog, L"first");
    EXPECT_EQ(dialog->calls, Texts{L"about:blank"});
    EXPECT_TRUE(PumpUntil([&] { return answer.Shown(); }));
    dialog->calls.clear();
    ASSERT_TRUE(dialog->LoadTopic(L"Empty"));
    dialog->FillVideoList();
    EXPECT_EQ(dialog->calls, Texts{L"about:blank"});
}

TEST_F(AssistSystemPlayer, FillsTheScreenAndReturns)
{
    const CRect screen(0, 0, ::GetSystemMetrics(SM_CXSCREEN), ::GetSystemMetrics(SM_CYSCREEN));
    const std::map<HWND, CRect> children = VisibleChildren();
    const CRect place = Place(dialog->m_hWnd);
    const LONG_PTR style = dialog->GetStyle();
    const std::function<void()> toggles[] = {
        [this] { Click(dialog->GetDlgItem(kFullScreen)->m_hWnd); }, [] { Key(VK_ESCAPE); },
        [this] { DoubleClick(CenterOf(Player())); }, [this] { DoubleClick(CenterOf(Player())); }};
    bool full = false;
    for (const auto& toggle : toggles) {
        dialog->calls.clear();
        toggle();
        full = !full;
        ASSERT_EQ(dialog->IsFullScreen(), full);
        EXPECT_EQ(dialog->calls, Texts{full ? L"full screen" : L"windowed"});
        EXPECT_EQ(Place(dialog->m_hWnd), full ? screen : place);
        EXPECT_EQ(VisibleChildren(), full ? (std::map<HWND, CRect>{{Player(), screen}}) : children);
        EXPECT_EQ(static_cast<LONG_PTR>(dialog->GetStyle()) == style, !full);
    }
}

TEST_F(AssistSystemPlayer, KeepsTheFocusWhenThereIsNothingToPlay)
{
    dialog->GetDlgItem(kVideos)->SetFocus();
    ASSERT_TRUE(dialog->LoadTopic(L"Empty"));
    dialog->FillVideoList();
    EXPECT_FALSE(IsPlaybackEnabled(*dialog));
    EXPECT_EQ(::GetDlgCtrlID(::GetFocus()), kVideos);
    ASSERT_TRUE(dialog->LoadTopic(kTopic));
    dialog->FillVideoList();
    dialog->GetDlgItem(kFullScreen)->SetFocus();
    ASSERT_TRUE(dialog->LoadTopic(L"Empty"));
    dialog->FillVideoList();
    EXPECT_EQ(::GetDlgCtrlID(::GetFocus()), IDCANCEL);
}

TEST_F(AssistSystemPlayer, KeepsItsControlsInPlace)
{
    // How the edges follow: left, top, right, bottom.
    const std::map<int, CRect> follows{{1010, {0, 0, 0, 1}}, {1002, {0, 0, 0, 1}}, {1000, {0, 0, 1, 1}},
                                       {1009, {0, 1, 1, 1}}, {1015, {1, 1, 1, 1}}, {1008, {0, 1, 0, 1}},
                                       {1004, {0, 1, 0, 1}}, {1018, {0, 1, 0, 1}}, {2, {0, 1, 0, 1}},
                                       {1001, {0, 0, 0, 0}}, {1013, {0, 0, 0, 0}}};
    std::map<int, CRect> before;
    for (const auto& [id, edges] : follows)
        before[id] = Place(dialog->GetDlgItem(id)->m_hWnd);
    const CSize grown(77, 53);
    const CRect place = Place(dialog->m_hWnd);
    dialog->SetWindowPos(nullptr, 0, 0, place.Width() + grown.cx, place.Height() + grown.cy,
                         SWP_NOMOVE | SWP_NOZORDER);
    for (const auto& [id, edges] : follows) {
        CRect expected = before[id];
        expected.InflateRect(-edges.left * grown.cx, -edges.top * grown.cy, edges.right * grown.cx,
                             edges.bottom * grown.cy);
        EXPECT_EQ(Place(dialog->GetDlgItem(id)->m_hWnd), expected) << id;
    }
    EXPECT_EQ(Place(Player()), Place(dialog->GetDlgItem(kPlayer)->m_hWnd));
}

TEST_F(AssistSystemPlayer, ListsTitlesInOneColumn)
{
    const fs::path folder = host.Videos() / L"设置" / L"工程 设置";
    const auto columnWidth = [this] {
        dialog->FillVideoList();
        return static_cast<int>(dialog->GetDlgItem(kVideos)->SendMessage(LVM_GETCOLUMNWIDTH, 0));
    };
    EXPECT_EQ(columnWidth(), 100);
    const std::wstring longest(40, L'w');
    AssistHost::Write(folder / (longest + L".swf"), L"");
    CClientDC dc(dialog);
    CFont* const former = dc.SelectObject(dialog->GetFont());
    TEXTMETRIC metrics;
    dc.GetTextMetrics(&metrics);
    dc.SelectObject(former);
    EXPECT_EQ(columnWidth(), 40 * (metrics.tmAveCharWidth + 2));
    ASSERT_TRUE(dialog->LoadTopic(L"Empty"));
    EXPECT_EQ(columnWidth(), 150);
}

TEST_F(AssistSystemPlayer, IgnoresWhatItsHiddenControlsSay)
{
    const std::map<HWND, CRect> children = VisibleChildren();
    dialog->calls.clear();
    for (const int id : {1004, 1005, 1006, 1007, 1016, 1017, 1018})
        dialog->GetDlgItem(id)->SendMessage(BM_CLICK);
    NMHDR released{dialog->GetDlgItem(1009)->m_hWnd, 1009, static_cast<UINT>(NM_RELEASEDCAPTURE)};
    EXPECT_EQ(dialog->SendMessage(WM_NOTIFY, 1009, reinterpret_cast<LPARAM>(&released)), 0);
    EXPECT_EQ(dialog->calls, Texts());
    EXPECT_EQ(VisibleChildren(), children);

    dialog->ShowWindow(SW_HIDE);
    EXPECT_EQ(dialog->SendMessage(CAssistSystemDlg::kShowAgain), 1);
    EXPECT_FALSE(dialog->IsWindowVisible());
    const auto icon = static_cast<LRESULT>(dialog->SendMessage(WM_GETICON, ICON_BIG));
    EXPECT_NE(icon, 0);
    EXPECT_EQ(dialog->SendMessage(WM_GETICON, ICON_SMALL), icon);
    EXPECT_EQ(dialog->SendMessage(WM_QUERYDRAGICON), icon);
}

TEST_F(AssistSystemPlayer, PaintsItsIconWhenMinimised)
{
    dialog->ShowWindow(SW_MINIMIZE);
    ASSERT_TRUE(dialog->IsIconic());
    dialog->iconsErased = 0;
    dialog->SendMessage(WM_PAINT);
    EXPECT_EQ(dialog->iconsErased, 1);
    dialog->ShowWindow(SW_RESTORE);
    dialog->SendMessage(WM_PAINT);
    EXPECT_EQ(dialog->iconsErased, 1);
}

TEST_F(AssistSystemPlayer, HasAMinimumSize)
{
    const auto sized = [this](UINT side, CRect rect) {
        dialog->SendMessage(WM_SIZING, side, reinterpret_cast<LPARAM>(&rect));
        return rect;
    };
    EXPECT_EQ(sized(WMSZ_BOTTOMRIGHT, CRect(10, 10, 100, 100)), CRect(10, 10, 895, 510));
    EXPECT_EQ(sized(WMSZ_TOPLEFT, CRect(900, 600, 1000, 700)), CRect(115, 200, 1000, 700));
    EXPECT_EQ(sized(WMSZ_RIGHT, CRect(10, 10, 1000, 700)), CRect(10, 10, 1000, 700));
}
