// The dialog of the assist system: a list of videos, their instructions and a player.
#pragma once

#include "vgui/controls/image_button.h"
#include "vgui/dialogs/dlg_resizer.h"
#include "vgui/export.h"

#include <afxcmn.h>
#include <afxwin.h>
#include <memory>
#include <vector>

class VAssistPlayer;

// Modeless; made with new, since it deletes itself after its window. EnterAssistSystem makes and shows the
// one of the process. Where nothing can play videos, the player's place says so, and all else works.
class VGUI_API CAssistSystemDlg : public CDialog
{
    DECLARE_DYNAMIC(CAssistSystemDlg)

public:
    // Posted or sent to a visible dialog, it is shown once more; the result is 1.
    static constexpr UINT kShowAgain = 0x7101;
    // The dialog posts it to itself: the selected video's file has gone.
    static constexpr UINT kTellMissing = 0x7102;

    // parent: the owner, null for the main window.
    explicit CAssistSystemDlg(CWnd* parent = nullptr);
    CAssistSystemDlg(const CAssistSystemDlg&) = delete;
    CAssistSystemDlg& operator=(const CAssistSystemDlg&) = delete;
    ~CAssistSystemDlg() override;

    // Finds the topic's videos and its caption; shows why not in a message box or lets the user choose a
    // file. False when the topic cannot be shown, folder and caption then stay as they are, or when the user
    // has closed the dialog meanwhile.
    bool LoadTopic(LPCWSTR topic);
    // Creates the window from the library's template and fills it. False when it cannot be created or is
    // closed meanwhile; the object is gone then.
    bool Open();
    // Shows the caption and the videos of the topic and loads the first one. When its file has gone, a
    // message box tells so as soon as messages are dispatched.
    void FillVideoList();

    // Has the player cover the whole screen.
    void EnterFullScreen();
    // Returns the player to its place.
    void LeaveFullScreen();
    // Whether the player covers the whole screen.
    [[nodiscard]] bool IsFullScreen() const { return m_bFullScreen; }

    BOOL PreTranslateMessage(MSG* pMsg) override;

protected:
    void DoDataExchange(CDataExchange* pDX) override;
    BOOL OnInitDialog() override;
    // Enter does nothing.
    void OnOK() override;
    void OnCancel() override;
    void PostNcDestroy() override;
    // Called once for the window. Null: there is nothing to play videos with.
    virtual std::unique_ptr<VAssistPlayer> CreatePlayer();

    afx_msg void OnSize(UINT nType, int cx, int cy);
    // At least 885 x 500 pixels.
    afx_msg void OnSizing(UINT nSide, LPRECT lpRect);
    afx_msg void OnTimer(UINT_PTR nIDEvent);
    afx_msg void OnVideoChanged(NMHDR* pNMHDR, LRESULT* pResult);
    afx_msg void OnFullScreen();
    afx_msg void OnUnusedButton(UINT nID);
    afx_msg void OnTrackReleased(NMHDR* pNMHDR, LRESULT* pResult);
    afx_msg LRESULT OnShowAgain(WPARAM wParam, LPARAM lParam);
    afx_msg LRESULT OnTellMissing(WPARAM wParam, LPARAM lParam);
    afx_msg void OnPaint();
    afx_msg HCURSOR OnQueryDragIcon();
    DECLARE_MESSAGE_MAP()

    VButtonST m_btnExit;                     // closes the dialog
    VButtonST m_btnFullScreen;               // enters full screen
    CEdit m_edtInstructions;                 // of the video that is selected
    CListCtrl m_lstVideos;                   // the titles
    std::unique_ptr<VAssistPlayer> m_player; // null: there is none
    HICON m_hIcon;                           // shared, not owned
    CString m_strFolder;                     // of the topic's videos, with a separator at the end
    CString m_strCaption;                    // of the topic
    bool m_bFullScreen = false;              // the player covers the whole screen
    CRect m_rcDialog;                        // what full screen returns to, in screen coordinates
    CRect m_rcPlayer;                        // the player's place, likewise
    VDlgResizer m_resizer;                   // lays out the controls

private:
    void RegisterControls();
    void MakePlayer();
    // The player's window, or the control that says that there is none.
    [[nodiscard]] CWnd& PlayerWindow() const;
    [[nodiscard]] bool IsForPlayer(HWND window) const;
    void PlacePlayer();
    // Moves the focus, of which the host is told: the dialog may be gone afterwards.
    void EnablePlayback(bool enable);
    void LoadVideo();
    void StopVideo();
    void HideOtherControls();
    [[nodiscard]] int TitleWidth(int longest);

    bool m_opening = false;     // Open is under way
    std::vector<HWND> m_hidden; // what full screen has hidden
    CString m_missing;          // the file that is still to be told of
};
