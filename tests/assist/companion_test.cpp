#include "vgui/assist/companion.h"

#include "tests/assist/companion_fixture.h"
#include "tests/support/import_patch.h"
#include "tests/support/input.h"
#include "tests/support/modal.h"
#include "tests/support/rounds.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <mutex>
#include <shlobj.h>

using namespace support;

namespace
{

using Lines = std::vector<std::string>;
using Texts = std::vector<std::wstring>;

constexpr CLSID kProgressDialogClass{
    0xF8383852, 0xFCD3, 0x11D1, {0xA6, 0xB9, 0x00, 0x60, 0x97, 0xDF, 0x5B, 0xD4}};
constexpr const char* kContinue = "8 Cont";
constexpr const char* kCancel = "6 Can";
constexpr UINT kWriteAlways = 10000;

// Stands in for the shell's dialog and writes down what it is told.
class RecordingDialog : public IProgressDialog, public IClassFactory
{
public:
    RecordingDialog()
    {
        ::OleInitialize(nullptr);
        ::CoRegisterClassObject(kProgressDialogClass, static_cast<IClassFactory*>(this), CLSCTX_INPROC_SERVER,
                                REGCLS_MULTIPLEUSE, &m_registration);
    }
    virtual ~RecordingDialog()
    {
        ::CoRevokeClassObject(m_registration);
        ::OleUninitialize();
        EXPECT_EQ(m_references, 1);
        EXPECT_EQ(m_started, m_stopped);
    }

    // Asked by HasUserCancelled, in the calling thread.
    std::function<bool()> cancelled = [] { return false; };
    HRESULT startResult = S_OK;
    // Told of every call, in the calling thread.
    std::function<void(const std::wstring&)> onCall = [](const std::wstring&) {};

    [[nodiscard]] Texts Calls()
    {
        const std::lock_guard lock(m_mutex);
        return m_calls;
    }
    [[nodiscard]] bool Has(const std::wstring& call)
    {
        const Texts calls = Calls();
        return std::find(calls.begin(), calls.end(), call) != calls.end();
    }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override
    {
        if (iid == IID_IClassFactory || iid == IID_IUnknown)
            *object = static_cast<IClassFactory*>(this);
        else
            *object = static_cast<IProgressDialog*>(this);
        ++m_references;
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }
    ULONG STDMETHODCALLTYPE Release() override { return --m_references; }
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID, void** object) override
    {
        *object = static_cast<IProgressDialog*>(this);
        ++m_references;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

    HRESULT STDMETHODCALLTYPE StartProgressDialog(HWND, IUnknown*, DWORD flags, LPCVOID) override
    {
        m_started += SUCCEEDED(startResult);
        Note(L"start " + std::to_wstring(flags));
        return startResult;
    }
    HRESULT STDMETHODCALLTYPE StopProgressDialog() override
    {
        ++m_stopped;
        return Note(L"stop");
    }
    HRESULT STDMETHODCALLTYPE SetTitle(PCWSTR title) override
    {
        return Note(std::wstring(L"title ") + title);
    }
    HRESULT STDMETHODCALLTYPE SetAnimation(HINSTANCE module, UINT id) override
    {
        EXPECT_EQ(module, ::GetModuleHandle(L"shell32.dll"));
        return Note(L"animation " + std::to_wstring(id));
    }
    BOOL STDMETHODCALLTYPE HasUserCancelled() override { return cancelled(); }
    HRESULT STDMETHODCALLTYPE SetProgress(DWORD completed, DWORD total) override
    {
        return Note(std::to_wstring(completed) + L" of " + std::to_wstring(total));
    }
    HRESULT STDMETHODCALLTYPE SetProgress64(ULONGLONG, ULONGLONG) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetLine(DWORD line, PCWSTR text, BOOL compact, LPCVOID) override
    {
        EXPECT_FALSE(compact);
        return Note(std::to_wstring(line) + L": " + text);
    }
    HRESULT STDMETHODCALLTYPE SetCancelMsg(PCWSTR text, LPCVOID) override
    {
        return Note(std::wstring(L"cancel ") + text);
    }
    HRESULT STDMETHODCALLTYPE Timer(DWORD action, LPCVOID) override
    {
        return Note(L"timer " + std::to_wstring(action));
    }

private:
    HRESULT Note(const std::wstring& call)
    {
        {
            const std::lock_guard lock(m_mutex);
            m_calls.push_back(call);
        }
        onCall(call);
        return S_OK;
    }

    std::mutex m_mutex; // the time used comes from another thread
    Texts m_calls;
    DWORD m_registration = 0;
    std::atomic<int> m_references = 1;
    int m_started = 0;
    int m_stopped = 0;
};

// A file in the temporary folder that is removed at the end.
class ProfileFile
{
public:
    ProfileFile()
        : m_path(std::filesystem::temp_directory_path() /
                 (L"companion 资料 " + std::to_wstring(::GetCurrentProcessId()) + L".ini"))
    {
    }
    ~ProfileFile()
    {
        std::error_code ignored;
        std::filesystem::remove(m_path, ignored);
    }
    ProfileFile(const ProfileFile&) = delete;
    ProfileFile& operator=(const ProfileFile&) = delete;

    [[nodiscard]] std::wstring Argument() const { return L"?Profile=" + m_path.wstring(); }
    [[nodiscard]] std::wstring Path() const { return m_path.wstring(); }
    [[nodiscard]] std::wstring Value(const wchar_t* section, const wchar_t* key) const
    {
        wchar_t value[300];
        ::GetPrivateProfileStringW(section, key, L"", value, 300, m_path.c_str());
        return value;
    }

private:
    std::filesystem::path m_path;
};

// A window with a caption, of a thread of its own.
class ForeignWindow
{
public:
    explicit ForeignWindow(const wchar_t* title)
        : m_thread([this, title] {
              m_window = ::CreateWindowEx(0, L"STATIC", title, WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 200,
                                          100, nullptr, nullptr, nullptr, nullptr);
              m_open.Set();
              for (MSG message; ::GetMessage(&message, nullptr, 0, 0) > 0;)
                  ::DispatchMessage(&message);
              ::DestroyWindow(m_window);
          })
    {
        EXPECT_TRUE(m_open.Wait());
    }
    ~ForeignWindow()
    {
        ::PostThreadMessage(::GetWindowThreadProcessId(m_window, nullptr), WM_QUIT, 0, 0);
        m_thread.join();
    }
    ForeignWindow(const ForeignWindow&) = delete;
    ForeignWindow& operator=(const ForeignWindow&) = delete;

    [[nodiscard]] HWND Window() const { return m_window; }
    [[nodiscard]] bool IsTopmost() const
    {
        return (::GetWindowLongPtr(m_window, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0;
    }

private:
    HWND m_window = nullptr;
    NamedEvent m_open;
    std::thread m_thread;
};

class Companion : public CompanionTest
{
protected:
    // Runs a call in this thread, with the recording dialog.
    UINT Call(const CompanionServer& server, const std::wstring& more = {}, UINT mode = 0)
    {
        return CompanionInfomation(nullptr, 0, server.Arguments(more).c_str(), mode);
    }

    RecordingDialog dialog;
};

class CompanionDialog : public CompanionTest
{
};

std::wstring ChildTexts(HWND dialog)
{
    std::wstring texts;
    for (HWND child = ::GetWindow(dialog, GW_CHILD); child != nullptr;
         child = ::GetWindow(child, GW_HWNDNEXT))
        texts += WindowText(child) + L"|";
    return texts;
}

bool TakeAtom(const std::wstring& name)
{
    const ATOM atom = ::GlobalFindAtomW(name.c_str());
    if (atom != 0)
        ::GlobalDeleteAtom(atom);
    return atom != 0;
}

DWORD s_openedPipe = 0; // the flags

// What the companion opens its pipe with.
HANDLE WINAPI RecordingCreateFile(LPCWSTR name, DWORD access, DWORD share, SECURITY_ATTRIBUTES* security,
                                  DWORD disposition, DWORD flags, HANDLE model)
{
    if (std::wstring_view(name).starts_with(L"\\\\.\\pipe\\"))
        s_openedPipe = flags;
    return ::CreateFileW(name, access, share, security, disposition, flags, model);
}

} // namespace

TEST_F(Companion, ShowsWhatTheFieldsSay)
{
    CompanionServer server({L"say", L"?Total=50?Message=copying", L"say", L"?Process=7", L"say",
                            L"?CurObject=图纸 1.dwg?Total=10?Process=3", L"say", L"?EndProcess?Process=9",
                            L"say", L"?EndProcess", L"say", L"?EndProcess", L"say",
                            L"?EndProcess?Process=-1"});
    EXPECT_EQ(Call(server, L"?Title=导出?Total=200?Message=first?EnableCancel=1"), 0u);
    EXPECT_EQ(dialog.Calls(), (Texts{L"animation 165", L"start 2",    L"cancel 请等待过程完成",
                                     L"timer 1",       L"title 导出", L"0 of 200",
                                     L"1: first",      L"3: first",   L"1: copying",
                                     L"3: copying",    L"0 of 50",    L"7 of 50",
                                     L"2: 图纸 1.dwg", L"0 of 10",    L"3 of 10",
                                     L"9 of 10",       L"0 of 50",    L"0 of 200",
                                     L"0 of 100",      L"0 of 100",   L"0 of 100",
                                     L"stop"}));
    EXPECT_EQ(server.Transcript(), Lines(7, kContinue));
}

TEST_F(Companion, HasDefaultsForWhatTheArgumentsLack)
{
    CompanionServer server({}, 1, L"\\\\.\\pipe\\CompanionNamePipe");
    EXPECT_EQ(CompanionInfomation(nullptr, 0, nullptr, 0), 0u);
    // No cancelling, and no more than the automatic time.
    for (const wchar_t* call : {L"start 66", L"title 温馨提示", L"0 of 100"})
        EXPECT_TRUE(dialog.Has(call)) << call;
}

TEST_F(Companion, CutsLongTexts)
{
    const std::wstring text(300, L'长');
    CompanionServer server({L"put", L"?CurObject=" + text + L"?Process=5", L"stall"});
    dialog.cancelled = [&] { return dialog.Has(L"5 of 100"); };
    EXPECT_EQ(Call(server, L"?EnableCancel=1?Title=" + text + L"?Message=" + text), 1u);
    const std::wstring cut(259, L'长');
    EXPECT_TRUE(dialog.Has(L"title " + cut));
    EXPECT_TRUE(dialog.Has(L"3: " + cut));
    // Longer than one read, too.
    EXPECT_TRUE(dialog.Has(L"2: " + cut));
}

TEST_F(Companion, TakesMessagesThatWereWrittenTogether)
{
    const NamedEvent applied;
    CompanionServer server({L"put", L"?CurObject=图纸", L"put", L"?Process=7", L"wait", applied.Name()});
    dialog.onCall = [&](const std::wstring& call) {
        if (call == L"7 of 100")
            applied.Set();
    };
    EXPECT_EQ(Call(server), 0u);
    EXPECT_TRUE(dialog.Has(L"2: 图纸"));
    EXPECT_EQ(server.Transcript(), Lines());
}

TEST_F(Companion, EndsItsThreadBeforeTheDialog)
{
    const NamedEvent ticked;
    CompanionServer server({L"wait", ticked.Name()});
    std::atomic<bool> ticking = false;
    const int threads = CountKernelObjects()["thread"];
    dialog.onCall = [&](const std::wstring& call) {
        if (call.starts_with(L"1: 使用时间:")) {
            ticking = true;
            ticked.Set();
            // The call ends while this goes on.
            ::Sleep(200);
            ticking = false;
        } else if (call == L"stop") {
            EXPECT_FALSE(ticking);
            EXPECT_LE(CountKernelObjects()["thread"], threads);
        }
    };
    EXPECT_EQ(Call(server), 0u);
    EXPECT_EQ(dialog.Calls().back(), L"stop");
}

TEST_F(Companion, LetsTheServerIdentifyButNotImpersonateItsClient)
{
    const ImportPatch patch(L"vgui.dll", "CreateFileW", reinterpret_cast<void*>(&RecordingCreateFile));
    ASSERT_TRUE(patch.IsInPlace());
    s_openedPipe = 0;
    const CompanionServer server({});
    EXPECT_EQ(Call(server), 0u);
    constexpr DWORD security = SECURITY_SQOS_PRESENT | SECURITY_IMPERSONATION | SECURITY_DELEGATION;
    EXPECT_EQ(s_openedPipe & security, DWORD{SECURITY_SQOS_PRESENT | SECURITY_IDENTIFICATION});
}

TEST_F(Companion, OutlivesServersOfEveryKind)
{
    const std::vector<Texts> servers{{},
                                     {L"die"},
                                     {L"put", L"?Total=3", L"die"},
                                     {L"raw", L"1"},
                                     {L"raw", L"261", L"answer", L"die"},
                                     {L"raw", L"4001"},
                                     {L"flood", L"200", L"die"},
                                     {L"put", L"?", L"die"},
                                     {L"put", L"?Message", L"answer"}};
    for (const Texts& steps : servers) {
        const CompanionServer server(steps);
        EXPECT_EQ(Call(server), 0u) << testing::PrintToString(steps);
    }
}

TEST_F(Companion, OutlivesAServerThatReadsNoAnswersAndDies)
{
    CompanionServer server({L"flood", L"5000"});
    // Once nothing moves, both ends of the pipe are full.
    std::thread end([&] {
        size_t calls = 0;
        for (int tries = 0, same = 0; same < 20 && tries < 2000; ++tries, ::Sleep(10)) {
            const size_t now = dialog.Calls().size();
            same = now > 300 && now == calls ? same + 1 : 0;
            calls = now;
        }
        server.Stop();
    });
    EXPECT_EQ(Call(server), 0u);
    end.join();
}

TEST_F(Companion, FindsItsWindowWithoutAPauseOfTheServer)
{
    files.WriteHistory("41\r\n32\r\n");
    const CompanionServer server({L"say", L"?Process=1?ShowWindow=0", L"say", L"?Process=2", L"say",
                                  L"?Process=3", L"say", L"?Process=4"});
    std::unique_ptr<ForeignWindow> other;
    std::unique_ptr<ForeignWindow> own;
    dialog.onCall = [&](const std::wstring& call) {
        if (call == L"1 of 100")
            other = std::make_unique<ForeignWindow>(L"另一个窗口");
        if (call == L"2 of 100")
            own = std::make_unique<ForeignWindow>(L"导出");
        if (call != L"3 of 100")
            return;
        EXPECT_TRUE(own->IsTopmost());
        EXPECT_FALSE(::IsWindowVisible(own->Window()));
        CRect place;
        ::GetWindowRect(own->Window(), place);
        EXPECT_EQ(place.TopLeft(), CPoint(41, 32));
        EXPECT_FALSE(other->IsTopmost());
    };
    EXPECT_EQ(Call(server, L"?Title=导出"), 0u);
    EXPECT_NE(own, nullptr);
}

TEST_F(Companion, EndsWithItsServerWhenTheCancelComesTooLate)
{
    CompanionServer server({L"say", L"?Process=1"});
    dialog.cancelled = [&] {
        if (!dialog.Has(L"1 of 100"))
            return false;
        (void)server.Transcript(); // until it has ended
        return true;
    };
    EXPECT_EQ(Call(server, L"?EnableCancel=1"), 0u);
    EXPECT_FALSE(TakeAtom(server.Pipe()));
}

TEST_F(Companion, CanBeCancelledUnderAFlood)
{
    const CompanionServer server({L"flood", L"5000"});
    dialog.cancelled = [&] { return dialog.Calls().size() > 300; };
    EXPECT_EQ(Call(server, L"?EnableCancel=1"), 1u);
    TakeAtom(server.Pipe());
}

TEST_F(Companion, AnswersCancelAndLeaves)
{
    CompanionServer server(
        {L"say", L"?Process=1", L"say", L"?Process=2", L"say", L"?Process=3", L"say", L"?Process=4"});
    dialog.cancelled = [&] { return dialog.Has(L"2 of 100"); };
    EXPECT_EQ(Call(server, L"?EnableCancel=1"), 1u);
    // The message that is answered so is not applied any more.
    EXPECT_FALSE(dialog.Has(L"3 of 100"));
    EXPECT_EQ(server.Transcript(), (Lines{kContinue, kContinue, kCancel, "gone"}));
    EXPECT_TRUE(TakeAtom(server.Pipe()));
}

TEST_F(Companion, NamesInItsAtomWhatIsAddedToTheDefaultPipe)
{
    for (const std::wstring own : {L"", L"-4711"}) {
        const CompanionServer server({L"say", L"?Process=1"}, 1, L"\\\\.\\pipe\\CompanionNamePipe" + own);
        dialog.cancelled = [] { return true; };
        EXPECT_EQ(Call(server, L"?EnableCancel=1"), 1u);
        EXPECT_EQ(TakeAtom(L"-4711"), !own.empty());
    }
}

TEST_F(Companion, CanBeCancelledWhileTheServerStalls)
{
    const NamedEvent stalls;
    CompanionServer server({L"say", L"?Process=1", L"set", stalls.Name(), L"stall"});
    dialog.cancelled = [&] { return stalls.IsSet(); };
    EXPECT_EQ(Call(server, L"?EnableCancel=1"), 1u);
    EXPECT_TRUE(TakeAtom(server.Pipe()));
    EXPECT_EQ(server.Transcript(), (Lines{kContinue, kCancel}));
}

TEST_F(Companion, WaitsALittleForABusyServerAfterACancel)
{
    const NamedEvent busy;
    const NamedEvent cancelled;
    CompanionServer server(
        {L"say", L"?Process=1", L"set", busy.Name(), L"wait", cancelled.Name(), L"say", L"?Process=2"});
    dialog.cancelled = [&] {
        if (busy.IsSet())
            cancelled.Set();
        return cancelled.IsSet();
    };
    EXPECT_EQ(Call(server, L"?EnableCancel=1"), 1u);
    EXPECT_EQ(server.Transcript(), (Lines{kContinue, kCancel}));
    TakeAtom(server.Pipe());
}

TEST_F(Companion, WritesTheResultsIntoTheProfileAtTheEndOrAtOnce)
{
    const struct {
        UINT mode;
        Texts rest; // of the server's steps
        std::wstring meanwhile, last, total;
    } cases[] = {
        {0, {L"say", L"?Record=a=4;?LastAnalysisInfo=total=9;;"}, L"", L"4", L"9"},
        {kWriteAlways, {L"die"}, L"1二", L"1二", L""},
    };
    for (const auto& item : cases) {
        const ProfileFile profile;
        const auto written = [&] {
            return profile.Value(L"Analysis", L"a") + profile.Value(L"Analysis", L"b") +
                   profile.Value(L"Analysis", L"c");
        };
        Texts steps{L"say", L"?Record=a=1;b=二;;c=3;", L"say", L"?CurObject=now"};
        steps.insert(steps.end(), item.rest.begin(), item.rest.end());
        const CompanionServer server(steps);
        std::wstring meanwhile;
        dialog.onCall = [&](const std::wstring& call) {
            if (call == L"2: now")
                meanwhile = written();
        };
        EXPECT_EQ(Call(server, profile.Argument(), item.mode), 0u);
        EXPECT_EQ(meanwhile, item.meanwhile);
        EXPECT_EQ(written(), item.last);
        EXPECT_EQ(profile.Value(L"AnalysisInfo", L"total"), item.total);
    }
}

TEST_F(Companion, SaysWhenThereIsNoPipe)
{
    const ProfileFile file;
    std::ofstream(std::filesystem::path(file.Path())) << "kept";
    for (const std::wstring& name :
         {std::wstring(L"\\\\.\\pipe\\no-such-pipe"), file.Path(), std::wstring()}) {
        const auto answer = AnswerMessageBox(IDOK);
        EXPECT_EQ(CompanionInfomation(nullptr, 0, (L"?PipeName=" + name).c_str(), 0), 0u);
        EXPECT_EQ(answer.Text(), L"没有得到通信管道");
    }
    EXPECT_EQ(FileBytes(file.Path()), "kept");
    EXPECT_EQ(dialog.Calls(), Texts());
}

TEST_F(Companion, SaysWhenThereIsNoDialog)
{
    const CompanionServer server({L"put", L"?Process=1"});
    dialog.startResult = E_FAIL;
    const auto answer = AnswerMessageBox(IDOK);
    EXPECT_EQ(Call(server), 0u);
    EXPECT_EQ(answer.Text(), L"没有得到通信管道");
    EXPECT_EQ(dialog.Calls(), (Texts{L"animation 165", L"start 66"}));
}

TEST_F(CompanionDialog, StandsAboveAllAndShowsTheTimeUsed)
{
    const NamedEvent seen, hidden, unseen, shown;
    CompanionServer server({L"say", L"?Message=copying?CurObject=plan.dwg", L"wait", seen.Name(), L"say",
                            L"?ShowWindow=0", L"set", hidden.Name(), L"wait", unseen.Name(), L"say",
                            L"?ShowWindow=1", L"say", L"?Process=1", L"set", shown.Name(), L"wait",
                            seen.Name()});
    CompanionCall call(server.Arguments(L"?Title=导出"));
    const HWND window = call.Dialog();
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(WindowText(window), L"导出");
    EXPECT_NE(::GetWindowLongPtr(window, GWL_EXSTYLE) & WS_EX_TOPMOST, 0);
    EXPECT_TRUE(PumpUntil([=] { return ChildTexts(window).find(L"plan.dwg") != std::wstring::npos; }));
    EXPECT_TRUE(
        PumpUntil([=] { return ChildTexts(window).find(L"使用时间:00:00:0") != std::wstring::npos; }));
    seen.Set();
    EXPECT_TRUE(PumpUntil([&] { return hidden.IsSet() && !::IsWindowVisible(window); }));
    unseen.Set();
    EXPECT_TRUE(PumpUntil([=] { return ::IsWindowVisible(window) != FALSE; }));
    EXPECT_EQ(call.Result(), 0u);
    EXPECT_FALSE(::IsWindow(window) && ::IsWindowVisible(window));
}

TEST_F(CompanionDialog, IsCancelledWithItsButton)
{
    const NamedEvent stalls;
    CompanionServer server({L"say", L"?Message=copying", L"set", stalls.Name(), L"stall"});
    CompanionCall call(server.Arguments(L"?EnableCancel=1"));
    const HWND window = call.Dialog();
    ASSERT_NE(window, nullptr);
    ASSERT_TRUE(PumpUntil([&] { return stalls.IsSet(); }));
    Click(::GetDlgItem(window, IDCANCEL));
    EXPECT_EQ(call.Result(), 1u);
    TakeAtom(server.Pipe());
}

TEST_F(CompanionDialog, LeavesNothingBehindAfterManyCalls)
{
    constexpr int kEnough = 10 * kRounds;
    CompanionServer server({L"say", L"?Total=5?Message=copying?Process=1"}, kEnough);
    ExpectRoundsLeaveNothing([&] {
        // The next client may come before the server waits for it.
        ASSERT_TRUE(::WaitNamedPipeW(server.Pipe().c_str(), kDefaultTimeout));
        ASSERT_EQ(CompanionInfomation(nullptr, 0, server.Arguments().c_str(), 0), 0u);
    });
    server.Stop();
}
