#include <afxext.h>

IMPLEMENT_DYNAMIC(CControlBar, CWnd)

CControlBar::~CControlBar() = default;
