// The whole gallery under random input. VGUI_MONKEY_SEED says which, VGUI_MONKEY_SECONDS for how long;
// without them it is always the same, and short.
#include "tests/gallery/monkey.h"

#include "gallery/help_sample.h"
#include "gallery/main_dlg.h"
#include "tests/gallery/monkey_windows.h"
#include "tests/support/census.h"
#include "tests/support/modal.h"
#include "tests/support/pump.h"
#include "tests/support/recorder.h"

#include <afxdlgs.h>
#include <objidl.h>
#include <psapi.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <gdiplus.h>

namespace
{

constexpr unsigned kUsualSeed = 1;
constexpr int kUsualActions = 250;
constexpr DWORD kMilliseconds = 1000;
// Every suite runs twice; both rounds share the time.
constexpr DWORD kRounds = 2;

// What the gallery and the library say to a user, or on a system that lacks something.
constexpr std::string_view kKnownTexts[] = {
    "无法读取该图像。",
    "无法保存该图像。",
    "没有 OpenGL。",
    "没有得到通信管道",
    "acedHelp失败:",
    "无法读取 产品信息 的 注册表位置！",
    "注册表文件已损坏，请重新安装！",
    " 不存在！",
};

// A box that says anything else tells of a fault: a page that does not open, a wrong argument, a lack of
// memory.
bool IsKnown(const std::string& message)
{
    return std::ranges::any_of(
        kKnownTexts, [&](std::string_view text) { return message.find(text) != std::string::npos; });
}

unsigned Setting(const wchar_t* name)
{
    wchar_t text[16] = L"";
    ::GetEnvironmentVariable(name, text, static_cast<DWORD>(std::size(text)));
    return wcstoul(text, nullptr, 10);
}

monkey::Plan UsualOrWanted()
{
    const unsigned seed = Setting(L"VGUI_MONKEY_SEED");
    const DWORD duration = Setting(L"VGUI_MONKEY_SECONDS") * kMilliseconds / kRounds;
    return {seed != 0 ? seed : kUsualSeed, duration != 0 ? 0 : kUsualActions, duration};
}

// The library decodes pictures with GDI+, which it leaves to its host to start.
class GdiPlus
{
public:
    GdiPlus()
    {
        const Gdiplus::GdiplusStartupInput input;
        if (Gdiplus::GdiplusStartup(&m_token, &input, nullptr) != Gdiplus::Ok)
            m_token = 0;
    }
    ~GdiPlus()
    {
        if (m_token != 0)
            Gdiplus::GdiplusShutdown(m_token);
    }
    GdiPlus(const GdiPlus&) = delete;
    GdiPlus& operator=(const GdiPlus&) = delete;

private:
    ULONG_PTR m_token = 0;
};

// Links lead nowhere: no other program is started.
class NoShell
{
public:
    NoShell() : m_opener(VGSetShellOpener([](SHELLEXECUTEINFOW*) WINAPI -> BOOL { return FALSE; })) {}
    ~NoShell() { VGSetShellOpener(m_opener); }
    NoShell(const NoShell&) = delete;
    NoShell& operator=(const NoShell&) = delete;

private:
    VGShellOpener m_opener;
};

void ShowGallery()
{
    {
        MainDlg dialog;
        const support::MainWndScope main(&dialog);
        ASSERT_NE(dialog.DoModal(), -1);
    }
    // The main window's end asks the thread to end.
    support::PumpMessages();
}

std::filesystem::path PictureFolder()
{
    return std::filesystem::temp_directory_path() / "monkey-pictures";
}

// The cursors and icons of modules are shared, and stay from their first use on.
void LoadShared()
{
    const auto loadCursor = [](HMODULE from, LPCWSTR, LPWSTR name, LONG_PTR) -> BOOL {
        ::LoadCursor(from, name);
        return TRUE;
    };
    const auto loadIcon = [](HMODULE from, LPCWSTR, LPWSTR name, LONG_PTR) -> BOOL {
        ::LoadIcon(from, name);
        return TRUE;
    };
    std::array<HMODULE, 200> modules{};
    DWORD bytes = 0;
    ::EnumProcessModules(::GetCurrentProcess(), modules.data(), sizeof modules, &bytes);
    for (size_t i = 0; i < std::min(modules.size(), bytes / sizeof(HMODULE)); ++i) {
        ::EnumResourceNames(modules[i], RT_GROUP_CURSOR, loadCursor, 0);
        ::EnumResourceNames(modules[i], RT_GROUP_ICON, loadIcon, 0);
    }
}

// Shows all there is: the system keeps for good some of what it makes at the first use.
void UseEverythingOnce()
{
    const GdiPlus gdiPlus;
    PrepareHelpSample();
    MainDlg dialog;
    const support::MainWndScope main(&dialog);
    ASSERT_TRUE(dialog.Create(IDD_MAIN));
    for (const BOOL open : {TRUE, FALSE}) {
        const auto answer = support::AnswerMessageBox(IDCANCEL);
        CFileDialog(open, nullptr, nullptr, 0, nullptr, &dialog).DoModal();
    }
    ShotWriter pictures(PictureFolder().c_str());
    dialog.TakeShots(pictures);
    LoadShared(); // of what has been loaded for all that
    dialog.DestroyWindow();
    support::PumpMessages();
    std::filesystem::remove_all(PictureFolder());
}

void Play()
{
    const GdiPlus gdiPlus;
    const NoShell noShell;
    PrepareHelpSample();
    const monkey::Plan plan = UsualOrWanted();
    printf("monkey: VGUI_MONKEY_SEED=%u\n", plan.seed);
    std::set<std::string> messages;
    {
        monkey::Monkey monkey(plan, IDC_PAGES);
        while (!monkey.IsEnding() && !testing::Test::HasFatalFailure())
            ShowGallery();
        EXPECT_TRUE(support::PumpUntil([&] { return monkey.HasEnded(); }, 60 * kMilliseconds));
        messages = monkey.Messages();
        printf("monkey: %d actions\n", monkey.Actions());
    }
    for (const std::string& message : messages) {
        printf("monkey: a box said \"%s\"\n", message.c_str());
        EXPECT_TRUE(IsKnown(message)) << message;
    }
}

} // namespace

TEST(MonkeyTest, KnowsTheBoxesOfTheGallery)
{
    bool isBox = false;
    std::string text;
    const auto look = [&](HWND dialog) {
        isBox = monkey::KindOf(dialog) == monkey::WindowKind::System && monkey::IsMessageBox(dialog);
        text = monkey::TextsOf(dialog);
        support::PostButton(dialog, IDCANCEL);
    };
    for (const auto& [prompt, known] : {std::pair{L"无法保存该图像。 The picture cannot be saved.", true},
                                        {L"Encountered an improper argument.", false}}) {
        const auto answer = support::WhenModal(look);
        AfxMessageBox(prompt, MB_OKCANCEL | MB_ICONSTOP);
        EXPECT_TRUE(isBox);
        EXPECT_EQ(IsKnown(text), known) << text;
    }
    const auto answer = support::WhenModal(look);
    CFileDialog(TRUE).DoModal();
    EXPECT_FALSE(isBox);
}

TEST(MonkeyTest, GalleryStandsRandomInput)
{
    static int round = 0;
    if (++round == 1) {
        support::WarmUpSystem();
        UseEverythingOnce();
    }
    support::PumpMessages();
    // Nobody here has accelerators; Wine's file dialog leaves a table behind now and then. When Wine first
    // uses a colour's pen is not foreseeable here; the other suites count those pens.
    const support::Census census({"accelerator table", "pen of a system colour"});
    Play();
    // The first round is part of the warm-up.
    if (round > 1) {
        // What a browser still loads keeps a window for a while.
        if (!support::PumpUntil([&] { return static_cast<bool>(census.Unchanged()); }, 10 * kMilliseconds))
            census.ExpectUnchanged();
    }
}
