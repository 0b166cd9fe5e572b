// One exchange of the companion with its server.
#pragma once

#include "vgui/assist/companion_fields.h"
#include "vgui/assist/companion_pipe.h"
#include "vgui/assist/companion_progress.h"

#include <optional>
#include <vector>

// The state of one call of CompanionInfomation, which says what the texts mean. COM must be initialised.
class COleAssist
{
public:
    COleAssist(HWND owner, LPCWSTR arguments, UINT mode);

    // The whole exchange. True when the user cancelled.
    bool Run();

private:
    bool StartProgress();
    void PrepareWindow();
    void ShowOrHide() const;
    void HandleMessages();
    void Answer();
    [[nodiscard]] bool KeepWaiting();
    void Apply(const std::vector<CString>& messages);
    void ApplyMessage(const CString& message);
    void ApplyStep(const CString& message);
    void ApplyResults(const CString& message);
    void PushTotal(int total);
    void PopTotal();
    [[nodiscard]] int Total() const;
    void ShowMessage();
    void WriteResults() const;
    void WriteSection(LPCWSTR section, const CString& text) const;
    void AnnounceCancel() const;

    CString m_strArguments;
    UINT m_nMode;
    HWND m_hOwner;
    CompanionPipe m_pipe;
    CompanionProgress m_progress;
    int m_nEnableCancel = 0;
    CString m_strPipeName;
    CString m_strCaption;
    CString m_strMessage;
    CString m_strRecord;
    CString m_strLastAnalysisInfo;
    CString m_strProfile;
    std::vector<int> m_totals;  // of the steps begun, the newest last
    ULONGLONG m_startTime = 0;  // seconds of VGSecondsNow
    HWND m_hProgress = nullptr; // the dialog's window once it was found
    std::optional<bool> m_show; // what the server wants of that window; nothing before it has said so
    companion::Inbox m_inbox;
    bool m_cancelled = false;
    ULONGLONG m_giveUpTime = 0; // milliseconds of GetTickCount64, 0 while nobody has cancelled
};
