#include "vgui/assist/ole_assist.h"

#include "vgui/assist/companion_history.h"

using companion::FindField;
using companion::FindNumber;

namespace
{

constexpr wchar_t kDefaultPipe[] = L"\\\\.\\pipe\\CompanionNamePipe";
constexpr int kDefaultTotal = 100;
constexpr UINT kWriteAlways = 10000;     // the mode
constexpr DWORD kReadSize = 260;         // bytes
constexpr ULONGLONG kWindowWait = 3;     // seconds for the dialog's window to come up
constexpr ULONGLONG kCancelGrace = 2000; // milliseconds for a silent server after a cancel

// Only half of each answer is sent, since its characters are counted as bytes: servers expect that.
constexpr wchar_t kContinue[] = L"Continue";
constexpr wchar_t kCancel[] = L"Cancel";

} // namespace

COleAssist::COleAssist(HWND owner, LPCWSTR arguments, UINT mode)
    : m_strArguments(arguments), m_nMode(mode), m_hOwner(owner)
{
    m_strPipeName = FindField(m_strArguments, L"?PipeName", companion::kMaxName).value_or(kDefaultPipe);
    m_nEnableCancel = FindNumber(m_strArguments, L"?EnableCancel").value_or(0);
    m_strCaption = FindField(m_strArguments, L"?Title").value_or(L"温馨提示");
    m_strMessage = FindField(m_strArguments, L"?Message").value_or(CString());
    m_strProfile = FindField(m_strArguments, L"?Profile", companion::kMaxName).value_or(CString());
}

bool COleAssist::Run()
{
    if (!m_pipe.Open(m_strPipeName) || !m_progress.Create() || !StartProgress()) {
        // The server need not wait for the user.
        m_pipe.Close();
        AfxMessageBox(L"没有得到通信管道");
        return false;
    }
    HandleMessages();
    // Before the pipe closes, for that is when the server looks for them.
    if (m_cancelled)
        AnnounceCancel();
    WriteResults();
    m_progress.EndTimeLine();
    if (::IsWindow(m_hProgress))
        SaveCompanionPlace(*CWnd::FromHandle(m_hProgress));
    m_progress.Stop();
    m_pipe.Close();
    return m_cancelled;
}

bool COleAssist::StartProgress()
{
    m_startTime = VGSecondsNow();
    if (!m_progress.Start(m_hOwner, m_nEnableCancel != 0))
        return false;
    m_progress.SetTitle(m_strCaption);
    PushTotal(FindNumber(m_strArguments, L"?Total").value_or(kDefaultTotal));
    ShowMessage();
    PrepareWindow();
    m_progress.BeginTimeLine(m_startTime);
    return true;
}

// The shell makes the window in a thread of its own, so it may not be there at once, nor with its title.
void COleAssist::PrepareWindow()
{
    if (m_hProgress != nullptr || VGSecondsNow() - m_startTime > kWindowWait)
        return;
    m_hProgress = m_progress.FindDialogWindow();
    if (m_hProgress == nullptr)
        return;
    RestoreCompanionPlace(*CWnd::FromHandle(m_hProgress));
    ::SetWindowPos(m_hProgress, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    if (HMENU menu = ::GetSystemMenu(m_hProgress, FALSE))
        ::EnableMenuItem(menu, SC_CLOSE, MF_BYCOMMAND | MF_GRAYED);
    const HWND cancel = ::GetDlgItem(m_hProgress, IDCANCEL);
    if (m_nEnableCancel == 0 && cancel != nullptr)
        ::SendMessageW(cancel, WM_SHOWWINDOW, FALSE, 0);
    ShowOrHide();
}

void COleAssist::ShowOrHide() const
{
    if (m_show && ::IsWindow(m_hProgress))
        ::ShowWindow(m_hProgress, *m_show ? SW_SHOW : SW_HIDE);
}

void COleAssist::HandleMessages()
{
    BYTE buffer[kReadSize];
    for (;;) {
        const DWORD size = m_pipe.Read(buffer, kReadSize, [this] { return KeepWaiting(); });
        // A server that never pauses lets nothing ask in KeepWaiting.
        PrepareWindow();
        // A server that has ended is not cancelled any more; one that has said nothing since the cancel finds
        // its answer when it comes back.
        const bool gaveUp = m_giveUpTime != 0 && ::GetTickCount64() >= m_giveUpTime;
        if (size == 0 && !gaveUp)
            break;
        // Before the answer, after which there may be the next message.
        const bool goesOn = size == kReadSize && m_pipe.HasMore();
        m_cancelled = m_progress.HasUserCancelled();
        Answer();
        if (m_cancelled)
            break;
        Apply(m_inbox.Take(buffer, size, goesOn));
    }
    Apply(m_inbox.TakeRest());
}

void COleAssist::Answer()
{
    const wchar_t* const text = m_cancelled ? kCancel : kContinue;
    m_pipe.Write(text, static_cast<DWORD>(wcslen(text)), [this] { return KeepWaiting(); });
}

bool COleAssist::KeepWaiting()
{
    PrepareWindow();
    if (m_nEnableCancel == 0 || !m_progress.HasUserCancelled())
        return true;
    const ULONGLONG now = ::GetTickCount64();
    if (m_giveUpTime == 0)
        m_giveUpTime = now + kCancelGrace;
    return now < m_giveUpTime;
}

void COleAssist::Apply(const std::vector<CString>& messages)
{
    for (const CString& message : messages)
        ApplyMessage(message);
}

void COleAssist::ApplyMessage(const CString& message)
{
    if (const auto show = FindNumber(message, L"?ShowWindow")) {
        m_show = *show != 0;
        ShowOrHide();
    }
    if (const auto text = FindField(message, L"?Message")) {
        m_strMessage = *text;
        ShowMessage();
    }
    if (const auto object = FindField(message, L"?CurObject"))
        m_progress.SetLine(CompanionProgress::kObjectLine, *object);
    ApplyStep(message);
    ApplyResults(message);
}

void COleAssist::ApplyStep(const CString& message)
{
    if (const auto total = FindNumber(message, L"?Total"))
        PushTotal(*total);
    if (const auto step = FindNumber(message, L"?Process"))
        m_progress.SetProgress(*step, Total());
    if (FindField(message, L"?EndProcess"))
        PopTotal();
}

void COleAssist::ApplyResults(const CString& message)
{
    const auto record = FindField(message, L"?Record");
    const auto info = FindField(message, L"?LastAnalysisInfo");
    if (record)
        m_strRecord = *record;
    if (info)
        m_strLastAnalysisInfo = *info;
    if (m_nMode == kWriteAlways && (record || info))
        WriteResults();
}

void COleAssist::PushTotal(int total)
{
    m_totals.push_back(total);
    m_progress.SetProgress(0, total);
}

void COleAssist::PopTotal()
{
    if (!m_totals.empty())
        m_totals.pop_back();
    m_progress.SetProgress(0, Total());
}

int COleAssist::Total() const
{
    return m_totals.empty() ? kDefaultTotal : m_totals.back();
}

void COleAssist::ShowMessage()
{
    if (!m_progress.IsTimeShown())
        m_progress.SetLine(CompanionProgress::kTimeLine, m_strMessage);
    m_progress.SetLine(CompanionProgress::kMessageLine, m_strMessage);
}

void COleAssist::WriteResults() const
{
    WriteSection(L"Analysis", m_strRecord);
    WriteSection(L"AnalysisInfo", m_strLastAnalysisInfo);
}

void COleAssist::WriteSection(LPCWSTR section, const CString& text) const
{
    if (!text.IsEmpty() && !m_strProfile.IsEmpty())
        ::WritePrivateProfileSectionW(section, companion::ProfileBlock(text).c_str(), m_strProfile);
}

// This is how the server learns of the cancellation even when it does not read its answers.
void COleAssist::AnnounceCancel() const
{
    CString own = m_strPipeName;
    own.Replace(kDefaultPipe, L"");
    if (!own.IsEmpty())
        ::GlobalAddAtomW(own);
}
