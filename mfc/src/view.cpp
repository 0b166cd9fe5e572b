#include <afxhtml.h>

IMPLEMENT_DYNAMIC(CView, CWnd)

BEGIN_MESSAGE_MAP(CView, CWnd)
    ON_WM_PAINT()
END_MESSAGE_MAP()

CView::CView() = default;

CView::~CView() = default;

void CView::OnInitialUpdate()
{
    OnUpdate(nullptr, 0, nullptr);
}

void CView::OnUpdate(CView*, LPARAM, CObject*)
{
    Invalidate();
}

BOOL CView::PreCreateWindow(CREATESTRUCT& cs)
{
    if (cs.lpszClass == nullptr) {
        cs.lpszClass = AfxRegisterWndClass(CS_DBLCLKS, ::LoadCursor(nullptr, IDC_ARROW),
                                           reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1));
    }
    return CWnd::PreCreateWindow(cs);
}

void CView::PostNcDestroy()
{
    delete this;
}

void CView::OnPaint()
{
    CPaintDC dc(this);
    OnDraw(&dc);
}
