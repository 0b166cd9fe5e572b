// The shell's progress dialog as the companion uses it.
#pragma once

#include "vgui/foundation/gdi_scope.h"

#include <atomic>
#include <memory>
#include <shlobj.h>
#include <vector>

// Owns the dialog: it is stopped and released at the end.
class CompanionProgress
{
public:
    static constexpr DWORD kTimeLine = 1;
    static constexpr DWORD kObjectLine = 2;
    static constexpr DWORD kMessageLine = 3;

    CompanionProgress() = default;
    CompanionProgress(const CompanionProgress&) = delete;
    CompanionProgress& operator=(const CompanionProgress&) = delete;
    ~CompanionProgress() { Stop(); }

    // False when the shell has no such dialog. COM must be initialised.
    bool Create();
    // False when the shell does not show the dialog.
    bool Start(HWND owner, bool cancellable);
    // Ends the time line, too.
    void Stop();

    void SetTitle(LPCWSTR title);
    void SetLine(DWORD line, LPCWSTR text) { m_dialog.Get()->SetLine(line, text, FALSE, nullptr); }
    // Negative numbers count as 0.
    void SetProgress(int completed, int total);
    [[nodiscard]] bool HasUserCancelled() const { return m_dialog.Get()->HasUserCancelled() != FALSE; }

    // The dialog's window, which belongs to a thread of the shell; null while it is not there or does not
    // have its title yet.
    [[nodiscard]] HWND FindDialogWindow() const;

    // Shows the time that has passed since startTime (seconds of VGSecondsNow) in kTimeLine, once a second,
    // from a thread of its own. Does nothing when there can be no thread.
    void BeginTimeLine(ULONGLONG startTime);
    // Returns when the thread has ended.
    void EndTimeLine();
    // Whether the time has been shown once.
    [[nodiscard]] bool IsTimeShown() const { return m_timeShown; }

private:
    struct Releaser {
        void operator()(IProgressDialog* dialog) const { dialog->Release(); }
    };

    static UINT RunTimeLine(LPVOID parameter);

    VOwnedHandle<IProgressDialog*, Releaser> m_dialog;
    bool m_started = false;
    CString m_title;
    std::vector<HWND> m_formerWindows; // what the process had before the dialog
    std::unique_ptr<CWinThread> m_timeLine;
    ULONGLONG m_startTime = 0;
    VOwnedKernelHandle m_endTimeLine; // signalled to end the thread
    std::atomic<bool> m_timeShown = false;
};

// Seconds of a clock that nobody sets.
inline ULONGLONG VGSecondsNow()
{
    return ::GetTickCount64() / 1000;
}
