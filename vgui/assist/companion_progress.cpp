#include "vgui/assist/companion_progress.h"

#include "vgui/assist/companion_fields.h"
#include "vgui/assist/companion_pipe.h"

#include <algorithm>

namespace
{

// CLSID_ProgressDialog and IID_IProgressDialog, which not every system's libraries have.
constexpr GUID kProgressDialogClass{
    0xF8383852, 0xFCD3, 0x11D1, {0xA6, 0xB9, 0x00, 0x60, 0x97, 0xDF, 0x5B, 0xD4}};
constexpr GUID kProgressDialogInterface{
    0xEBBC7C04, 0x315E, 0x11D2, {0xB6, 0x2F, 0x00, 0x60, 0x97, 0xDF, 0x5B, 0xD4}};
constexpr UINT kAnimation = 165;      // in shell32.dll
constexpr DWORD kTimeInterval = 1000; // milliseconds

// Windows with a caption of this process, but of other threads than this one.
BOOL CALLBACK AddCandidate(HWND window, LPARAM parameter)
{
    DWORD process = 0;
    const DWORD thread = ::GetWindowThreadProcessId(window, &process);
    const bool hasCaption = (::GetWindowLongPtrW(window, GWL_STYLE) & WS_CAPTION) == WS_CAPTION;
    if (process == ::GetCurrentProcessId() && thread != ::GetCurrentThreadId() && hasCaption)
        reinterpret_cast<std::vector<HWND>*>(parameter)->push_back(window);
    return TRUE;
}

std::vector<HWND> ListCandidates()
{
    std::vector<HWND> windows;
    ::EnumWindows(AddCandidate, reinterpret_cast<LPARAM>(&windows));
    return windows;
}

// Sends no message, so that a thread that is busy does not hold this one up.
CString TitleOf(HWND window)
{
    constexpr int kSize = companion::kMaxText + 1;
    CString title;
    ::InternalGetWindowText(window, title.GetBuffer(kSize), kSize);
    title.ReleaseBuffer();
    return title;
}

CString TimeText(ULONGLONG seconds)
{
    CString text;
    text.Format(L"使用时间:%02d:%02d:%02d", static_cast<int>(seconds / 3600 % 24),
                static_cast<int>(seconds / 60 % 60), static_cast<int>(seconds % 60));
    return text;
}

} // namespace

bool CompanionProgress::Create()
{
    IProgressDialog* dialog = nullptr;
    ::CoCreateInstance(kProgressDialogClass, nullptr, CLSCTX_INPROC_SERVER, kProgressDialogInterface,
                       reinterpret_cast<void**>(&dialog));
    m_dialog.Reset(dialog);
    return dialog != nullptr;
}

bool CompanionProgress::Start(HWND owner, bool cancellable)
{
    IProgressDialog* const dialog = m_dialog.Get();
    m_formerWindows = ListCandidates();
    dialog->SetAnimation(::GetModuleHandleW(L"shell32.dll"), kAnimation);
    m_started = SUCCEEDED(dialog->StartProgressDialog(
        owner, nullptr, PROGDLG_AUTOTIME | (cancellable ? 0 : PROGDLG_NOCANCEL), nullptr));
    if (!m_started)
        return false;
    dialog->SetCancelMsg(L"请等待过程完成", nullptr);
    dialog->Timer(PDTIMER_RESET, nullptr);
    return true;
}

void CompanionProgress::Stop()
{
    EndTimeLine();
    if (m_started)
        m_dialog.Get()->StopProgressDialog();
    m_started = false;
}

void CompanionProgress::SetTitle(LPCWSTR title)
{
    m_title = title;
    m_dialog.Get()->SetTitle(title);
}

void CompanionProgress::SetProgress(int completed, int total)
{
    m_dialog.Get()->SetProgress(std::max(completed, 0), std::max(total, 0));
}

HWND CompanionProgress::FindDialogWindow() const
{
    const std::vector<HWND> windows = ListCandidates();
    const auto found = std::find_if(windows.begin(), windows.end(), [this](HWND window) {
        // Another thread of the host may open windows, too.
        return TitleOf(window) == m_title &&
               std::find(m_formerWindows.begin(), m_formerWindows.end(), window) == m_formerWindows.end();
    });
    return found == windows.end() ? nullptr : *found;
}

void CompanionProgress::BeginTimeLine(ULONGLONG startTime)
{
    m_timeShown = false;
    m_startTime = startTime;
    m_endTimeLine.Reset(::CreateEventW(nullptr, TRUE, FALSE, nullptr));
    if (!m_endTimeLine)
        return;
    m_timeLine.reset(AfxBeginThread(RunTimeLine, this, THREAD_PRIORITY_NORMAL, 0, CREATE_SUSPENDED));
    if (m_timeLine == nullptr)
        return;
    m_timeLine->m_bAutoDelete = FALSE;
    m_timeLine->ResumeThread();
}

// The shell's dialog takes calls from any thread.
UINT CompanionProgress::RunTimeLine(LPVOID parameter)
{
    CompanionProgress& progress = *static_cast<CompanionProgress*>(parameter);
    while (::WaitForSingleObject(progress.m_endTimeLine.Get(), kTimeInterval) == WAIT_TIMEOUT) {
        progress.m_timeShown = true;
        progress.SetLine(kTimeLine, TimeText(VGSecondsNow() - progress.m_startTime));
    }
    return 0;
}

void CompanionProgress::EndTimeLine()
{
    if (m_timeLine == nullptr)
        return;
    ::SetEvent(m_endTimeLine.Get());
    // The thread may be sending a message to the dialog, and that one to a window of this thread.
    VGWaitForHandle(m_timeLine->m_hThread, [] { return true; });
    m_timeLine.reset();
}
