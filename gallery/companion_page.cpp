// The page of the companion: this program started once more exports drawings, and the shell's progress dialog
// shows how far it is.
#include "gallery/pages.h"
#include "gallery/resource.h"

#include <shlwapi.h>
#include <thread>

namespace
{

constexpr ULONGLONG kStartTimeout = 10000; // milliseconds for the other process to come up
constexpr ULONGLONG kShotTimeout = 5000;   // milliseconds for the dialog to show what the picture wants
constexpr DWORD kInterval = 20;
constexpr wchar_t kTitle[] = L"导出图纸 Export";

// The other process. It ends by itself after its one client, or else with a Start that fails.
class DemoProcess
{
public:
    // Waits until the pipe is there; false when that does not come about.
    bool Start()
    {
        m_pipe.Format(L"\\\\.\\pipe\\vgui-gallery-%lu-%llu", ::GetCurrentProcessId(), ::GetTickCount64());
        wchar_t program[MAX_PATH];
        ::GetModuleFileNameW(nullptr, program, MAX_PATH);
        // By its name: these pages may be shown by another program of the same folder.
        ::PathRemoveFileSpecW(program);
        if (!::PathAppendW(program, L"gallery.exe"))
            return false;
        CString command;
        command.Format(L"\"%s\" --companion-server %s", program, m_pipe.GetString());
        STARTUPINFOW startup{};
        startup.cb = sizeof startup;
        PROCESS_INFORMATION process{};
        if (!::CreateProcessW(program, command.GetBuffer(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                              &startup, &process))
            return false;
        ::CloseHandle(process.hThread);
        const bool ready = WaitForPipe(process.hProcess);
        // It would wait for its client for ever.
        if (!ready)
            ::TerminateProcess(process.hProcess, 1);
        ::CloseHandle(process.hProcess);
        return ready;
    }
    [[nodiscard]] CString Arguments(bool cancellable) const
    {
        CString arguments;
        arguments.Format(L"?PipeName=%s?Title=%s?EnableCancel=%d", m_pipe.GetString(), kTitle, cancellable);
        return arguments;
    }

private:
    bool WaitForPipe(HANDLE process) const
    {
        const ULONGLONG end = ::GetTickCount64() + kStartTimeout;
        while (!::WaitNamedPipeW(m_pipe, kInterval)) {
            if (::GetTickCount64() > end || ::WaitForSingleObject(process, kInterval) == WAIT_OBJECT_0)
                return false;
        }
        return true;
    }

    CString m_pipe;
};

class CompanionDlg : public PageDlg
{
    DECLARE_MESSAGE_MAP()

public:
    explicit CompanionDlg(CWnd* owner) : PageDlg(IDD_COMPANION, owner) { m_bHelpBtn = false; }

    void Shoot(ShotWriter& shots)
    {
        shots.Take(*this, L"companion");
        DemoProcess demo;
        if (!demo.Start())
            return shots.Fail(L"companion-progress");
        // In a thread of its own, so that this one can take the picture.
        std::thread call([&] { CompanionInfomation(nullptr, 0, demo.Arguments(true), 0); });
        const ULONGLONG end = ::GetTickCount64() + kShotTimeout;
        HWND dialog = nullptr;
        while (!ShowsTime(dialog) && ::GetTickCount64() < end) {
            HandlePendingMessages();
            ::Sleep(kInterval);
            dialog = ::FindWindowW(nullptr, kTitle);
        }
        if (dialog != nullptr) {
            shots.TakeAsItIs(*CWnd::FromHandle(dialog), L"companion-progress");
            ::PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
        } else {
            shots.Fail(L"companion-progress");
        }
        call.join();
    }

protected:
    BOOL OnInitDialog() override
    {
        PageDlg::OnInitDialog();
        CheckDlgButton(IDC_COMPANION_CANCEL, BST_CHECKED);
        return TRUE;
    }
    afx_msg void OnStart()
    {
        DemoProcess demo;
        if (!demo.Start()) {
            SetDlgItemText(IDC_COMPANION_TOLD, L"另一进程没有启动。 The other process does not start.");
            return;
        }
        const bool cancellable = IsDlgButtonChecked(IDC_COMPANION_CANCEL) == BST_CHECKED;
        const UINT cancelled = CompanionInfomation(m_hWnd, 0, demo.Arguments(cancellable), 0);
        SetDlgItemText(IDC_COMPANION_TOLD, cancelled != 0 ? L"已取消。 Cancelled." : L"已完成。 Done.");
    }

private:
    static bool ShowsTime(HWND dialog)
    {
        for (HWND child = dialog == nullptr ? nullptr : ::GetWindow(dialog, GW_CHILD); child != nullptr;
             child = ::GetWindow(child, GW_HWNDNEXT)) {
            wchar_t text[64] = L"";
            ::GetWindowTextW(child, text, static_cast<int>(std::size(text)));
            if (wcsncmp(text, L"使用时间", 4) == 0)
                return true;
        }
        return false;
    }
};

BEGIN_MESSAGE_MAP(CompanionDlg, PageDlg)
    ON_BN_CLICKED(IDC_COMPANION_START, &CompanionDlg::OnStart)
END_MESSAGE_MAP()

} // namespace

GalleryPage CompanionPage()
{
    return {L"另一进程的进度 Companion",
            L"由另一进程通过命名管道驱动的进度对话框。\n"
            L"A progress dialog that another process drives through a named pipe.",
            [](const PageHost& host) -> std::unique_ptr<PageDlg> {
                return std::make_unique<CompanionDlg>(&host.window);
            },
            [](PageDlg& page, const PageHost&, ShotWriter& shots) {
                static_cast<CompanionDlg&>(page).Shoot(shots);
            }};
}
