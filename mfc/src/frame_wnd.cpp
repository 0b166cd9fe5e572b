#include <afxwin.h>

IMPLEMENT_DYNCREATE(CFrameWnd, CWnd)

BEGIN_MESSAGE_MAP(CFrameWnd, CWnd)
    ON_WM_CLOSE()
END_MESSAGE_MAP()

const CRect CFrameWnd::rectDefault(CW_USEDEFAULT, CW_USEDEFAULT, 0, 0);

BOOL CFrameWnd::Create(LPCTSTR lpszClassName, LPCTSTR lpszWindowName, DWORD dwStyle, const RECT& rect,
                       CWnd* pParentWnd, LPCTSTR lpszMenuName, DWORD dwExStyle, CCreateContext* pContext)
{
    HMENU menu = nullptr;
    if (lpszMenuName != nullptr) {
        menu = ::LoadMenu(AfxFindResourceHandle(lpszMenuName, RT_MENU), lpszMenuName);
        if (menu == nullptr) {
            PostNcDestroy();
            return FALSE;
        }
    }
    const bool byDefault = rect.left == CW_USEDEFAULT;
    const int width = byDefault ? CW_USEDEFAULT : rect.right - rect.left;
    const int height = byDefault ? CW_USEDEFAULT : rect.bottom - rect.top;
    // After a failure this object is gone.
    if (CreateEx(dwExStyle, lpszClassName, lpszWindowName, dwStyle, rect.left, rect.top, width, height,
                 pParentWnd->GetSafeHwnd(), menu, pContext))
        return TRUE;
    if (menu != nullptr)
        ::DestroyMenu(menu);
    return FALSE;
}

BOOL CFrameWnd::PreCreateWindow(CREATESTRUCT& cs)
{
    if (cs.lpszClass == nullptr) {
        cs.lpszClass = AfxRegisterWndClass(CS_DBLCLKS, ::LoadCursor(nullptr, IDC_ARROW),
                                           reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1));
    }
    return TRUE;
}

BOOL CFrameWnd::IsFrameWnd() const
{
    return TRUE;
}

CFrameWnd* CFrameWnd::GetActiveFrame()
{
    return this;
}

void CFrameWnd::ActivateFrame(int nCmdShow)
{
    if (nCmdShow == -1) {
        if (!IsWindowVisible())
            nCmdShow = SW_SHOWNORMAL;
        else if (IsIconic())
            nCmdShow = SW_RESTORE;
    }
    BringWindowToTop();
    if (nCmdShow != -1) {
        ShowWindow(nCmdShow);
        BringWindowToTop();
    }
}

void CFrameWnd::OnClose()
{
    DestroyWindow();
}

void CFrameWnd::PostNcDestroy()
{
    delete this;
}
