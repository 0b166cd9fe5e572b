// Command targets and the object that updates user-interface items.
#pragma once

class CCmdUI;
class CFrameWnd;
class CMenu;
class CWnd;

struct AFX_EVENTSINKMAP;

// Events of ActiveX controls; the other macros of event sink maps are in afxdisp.h.
#define DECLARE_EVENTSINK_MAP()                                                                              \
protected:                                                                                                   \
    static const AFX_EVENTSINKMAP* PASCAL GetThisEventSinkMap();                                             \
    virtual const AFX_EVENTSINKMAP* GetEventSinkMap() const;

struct AFX_CMDHANDLERINFO {
    CCmdTarget* pTarget;
    AFX_PMSG pmf;
};

// An object that takes part in command routing through its message map.
class AFX_SUBSET_API CCmdTarget : public CObject
{
    DECLARE_DYNAMIC(CCmdTarget)

public:
    // Routes a command, control notification or update request to this object's message map, most derived
    // class first. nCode is the notification code, with the message in its high word for WM_NOTIFY and
    // reflected forms. TRUE when a handler has taken it; with pHandlerInfo the handler is only looked up.
    virtual BOOL OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo);

    void BeginWaitCursor();
    void EndWaitCursor();
    void RestoreWaitCursor();

protected:
    CCmdTarget() = default;

    static const AFX_MSGMAP* PASCAL GetThisMessageMap();
    virtual const AFX_MSGMAP* GetMessageMap() const;
    DECLARE_EVENTSINK_MAP()

    friend class CWnd;
    friend class COleControlSite;
};

// One menu item, button or other control that is being brought up to date.
class AFX_SUBSET_API CCmdUI
{
public:
    CCmdUI() = default;
    virtual ~CCmdUI() = default;

    UINT m_nID = 0;
    UINT m_nIndex = 0;
    CMenu* m_pMenu = nullptr;
    CMenu* m_pSubMenu = nullptr;
    CWnd* m_pOther = nullptr;
    BOOL m_bEnableChanged = FALSE;
    BOOL m_bContinueRouting = FALSE;
    UINT m_nIndexMax = 0;

    virtual void Enable(BOOL bOn = TRUE);
    virtual void SetCheck(int nCheck = 1); // 0 off, 1 on, 2 undetermined
    virtual void SetRadio(BOOL bOn = TRUE);
    virtual void SetText(LPCTSTR lpszText);
    void ContinueRouting() { m_bContinueRouting = TRUE; }

    // Asks the target for the item's state. bDisableIfNoHndler: disable it when nothing would handle it.
    BOOL DoUpdate(CCmdTarget* pTarget, BOOL bDisableIfNoHndler);
};

// Shows the hourglass until the end of the block.
class AFX_SUBSET_API CWaitCursor
{
public:
    CWaitCursor();
    ~CWaitCursor();
    CWaitCursor(const CWaitCursor&) = delete;
    CWaitCursor& operator=(const CWaitCursor&) = delete;
    void Restore();
};
