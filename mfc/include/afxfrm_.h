// Frame windows.
#pragma once

struct CCreateContext {
    CRuntimeClass* m_pNewViewClass = nullptr;
    class CDocument* m_pCurrentDoc = nullptr;
    CFrameWnd* m_pCurrentFrame = nullptr;
};

// An overlapped main window. Deletes itself when its window is gone.
class AFX_SUBSET_API CFrameWnd : public CWnd
{
    DECLARE_DYNCREATE(CFrameWnd)

public:
    CFrameWnd() = default;
    static const CRect rectDefault;

    BOOL Create(LPCTSTR lpszClassName, LPCTSTR lpszWindowName, DWORD dwStyle = WS_OVERLAPPEDWINDOW,
                const RECT& rect = rectDefault, CWnd* pParentWnd = nullptr, LPCTSTR lpszMenuName = nullptr,
                DWORD dwExStyle = 0, CCreateContext* pContext = nullptr);
    virtual BOOL IsFrameWnd() const override;
    virtual CFrameWnd* GetActiveFrame();
    virtual void ActivateFrame(int nCmdShow = -1);

protected:
    virtual BOOL PreCreateWindow(CREATESTRUCT& cs) override;
    virtual void PostNcDestroy() override;
    afx_msg void OnClose();
    DECLARE_MESSAGE_MAP()
};
