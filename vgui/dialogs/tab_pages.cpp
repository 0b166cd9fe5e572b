#include "vgui/dialogs/tab_pages.h"

#include "vgui/foundation/attached.h"
#include "vgui/foundation/gui_manager.h"
#include "vgui/foundation/library_instance.h"

#include <algorithm>
#include <utility>

namespace
{

constexpr int kPageMargin = 4;          // between the control's edges, its tabs and the page
constexpr int kPageMarginOutDriven = 1; // the frame's line

// Sets a control's flag for the length of a block, at most as long as there is the control.
class FlagScope
{
public:
    FlagScope(const CWnd& control, bool& flag) : m_control(&control), m_window(control.m_hWnd), m_flag(flag)
    {
        m_flag = true;
    }
    ~FlagScope()
    {
        if (VGIsAttached(m_control, m_window))
            m_flag = false;
    }
    FlagScope(const FlagScope&) = delete;
    FlagScope& operator=(const FlagScope&) = delete;

private:
    const CWnd* m_control;
    HWND m_window;
    bool& m_flag;
};

} // namespace

PageStruct::~PageStruct()
{
    if (hBitmap != nullptr)
        ::DeleteObject(hBitmap);
}

// ---- VTabPage

IMPLEMENT_DYNAMIC(VTabPage, VGuiDlg)

VTabPage::VTabPage(UINT nIDTemplate, CWnd* pParent)
    : VGuiDlg(nIDTemplate, pParent), m_nTemplateId(nIDTemplate)
{
    m_clrBk = VGM.Tab.clrPageBk;
}

namespace
{

void PostToGrandparent(const CWnd& page, UINT command)
{
    if (const HWND dialog = ::GetParent(::GetParent(page.m_hWnd)))
        ::PostMessage(dialog, WM_COMMAND, command, 0);
}

} // namespace

void VTabPage::OnOK()
{
    PostToGrandparent(*this, IDOK);
}

void VTabPage::OnCancel()
{
    PostToGrandparent(*this, IDCANCEL);
}

// ---- VTabDlgCtrl

IMPLEMENT_DYNAMIC(VTabDlgCtrl, VTabCtrl)

BEGIN_MESSAGE_MAP(VTabDlgCtrl, VTabCtrl)
    ON_WM_CREATE()
    ON_WM_SETFOCUS()
    ON_NOTIFY_REFLECT_EX(TCN_SELCHANGE, &VTabDlgCtrl::OnSelchange)
    ON_WM_SIZE()
    ON_WM_DESTROY()
END_MESSAGE_MAP()

VTabDlgCtrl::~VTabDlgCtrl()
{
    // Now, while the pages can still be told.
    DestroyWindow();
}

void VTabDlgCtrl::PreSubclassWindow()
{
    VTabCtrl::PreSubclassWindow();
    InsertTabs();
}

int VTabDlgCtrl::OnCreate(LPCREATESTRUCT lpCreateStruct)
{
    if (VTabCtrl::OnCreate(lpCreateStruct) == -1)
        return -1;
    InsertTabs();
    return 0;
}

// Pages may have been added before there was a window to have tabs.
void VTabDlgCtrl::InsertTabs()
{
    if (m_nPageCount == 0 || GetItemCount() != 0)
        return;
    for (int page = 0; page < m_nPageCount; ++page) {
        if (m_pages[page]->bEnabled)
            InsertItem(GetItemCount(), m_pages[page]->strTitle);
    }
}

void VTabDlgCtrl::AddPage(const wchar_t* title, VTabPage* page, int enabled, UINT bitmapId, int createNow)
{
    if (page == nullptr || m_nPageCount >= MaxPages)
        return;
    auto data = std::make_unique<PageStruct>();
    data->pPage = page;
    data->strTitle = title;
    if (bitmapId != 0)
        data->hBitmap = ::LoadBitmapW(VGLibraryInstance(), MAKEINTRESOURCEW(bitmapId));
    data->bEnabled = enabled != 0;
    m_pages[m_nPageCount] = std::move(data);
    ++m_nPageCount;
    if (m_hWnd == nullptr)
        return;
    if (enabled != 0)
        InsertItem(m_nPageCount - 1, m_pages[m_nPageCount - 1]->strTitle);
    if (createNow != 0)
        EnsureInitialized(m_nPageCount - 1);
}

bool VTabDlgCtrl::HasWindow(int page) const
{
    return IsPage(page) && m_pages[page]->pPage->m_hWnd != nullptr;
}

int VTabDlgCtrl::FindPage(const wchar_t* title) const
{
    for (int page = 0; title != nullptr && page < m_nPageCount; ++page) {
        if (m_pages[page]->strTitle == title)
            return page;
    }
    return -1;
}

const PageStruct& VTabDlgCtrl::GetInnerPageData(int page) const
{
    static const PageStruct none;
    return IsPage(page) ? *m_pages[page] : none;
}

int VTabDlgCtrl::IsPageEnabled(int page) const
{
    return IsPage(page) ? m_pages[page]->bEnabled : 0;
}

// ---- Pages and tabs

int VTabDlgCtrl::MapPageToTabItem(int page) const
{
    int item = page;
    for (int below = 0; below < std::min(page, m_nPageCount); ++below)
        item -= m_pages[below]->bEnabled ? 0 : 1;
    return item;
}

int VTabDlgCtrl::MapTabItemToPage(int item) const
{
    int enabled = 0;
    for (int page = 0; page < m_nPageCount; ++page) {
        enabled += m_pages[page]->bEnabled ? 1 : 0;
        if (enabled > item)
            return page;
    }
    return m_nPageCount;
}

// The next enabled page after a page, from the last one on to the first; -1 when there is none but itself.
int VTabDlgCtrl::FindNextEnabled(int page) const
{
    for (int step = 1; step < m_nPageCount; ++step) {
        const int next = (page + step) % m_nPageCount;
        if (m_pages[next]->bEnabled)
            return next;
    }
    return -1;
}

void VTabDlgCtrl::EnablePage(const wchar_t* title, int enable, int* nextActive)
{
    EnablePage(FindPage(title), enable, nextActive);
}

void VTabDlgCtrl::EnablePage(int page, int enable, int* nextActive)
{
    if (!IsPage(page) || m_pages[page]->bEnabled == enable)
        return;
    // The flag is inverted and not set, so any other value toggles; this is intended.
    PageStruct& data = *m_pages[page];
    data.bEnabled = !data.bEnabled;
    if (m_hWnd == nullptr)
        return;
    const HWND self = m_hWnd;
    const int item = MapPageToTabItem(page);
    if (!data.bEnabled) {
        DeleteItem(item);
        if (page == m_nActive)
            ReplaceActivePage(page, nextActive);
    } else {
        InsertItem(item, data.strTitle);
    }
    if (!VGIsAttached(this, self) || !HasWindow(m_nActive))
        return;
    // A tab that comes or goes before the active page's tab moves the latter.
    if (m_pages[m_nActive]->bEnabled)
        SetCurSel(MapPageToTabItem(m_nActive));
    m_pages[m_nActive]->pPage->Invalidate();
}

void VTabDlgCtrl::ReplaceActivePage(int page, const int* nextActive)
{
    const bool given = nextActive != nullptr && *nextActive != page && IsPageEnabled(*nextActive) != 0;
    const int next = given ? *nextActive : FindNextEnabled(page);
    if (next < 0) {
        DeactivePage();
        return;
    }
    if (ShowPage(next))
        SetCurSel(MapPageToTabItem(next));
}

void VTabDlgCtrl::SetActive(const wchar_t* title)
{
    SetActive(FindPage(title));
}

void VTabDlgCtrl::SetActive(int page)
{
    if (!IsPage(page) || m_hWnd == nullptr)
        return;
    EnablePage(page, 1, nullptr);
    if (ShowPage(page))
        SetCurSel(MapPageToTabItem(page));
}

void VTabDlgCtrl::SetOutDrivenMode(int outDriven)
{
    const bool tabsComeBack = m_bOutDriven != 0 && outDriven == 0;
    m_bOutDriven = outDriven;
    if (m_hWnd == nullptr)
        return;
    ShowScrollArrows(outDriven == 0);
    // Clicks that had no effect have moved the selection.
    if (tabsComeBack && IsPageEnabled(m_nActive))
        SetCurSel(MapPageToTabItem(m_nActive));
    Invalidate();
    PlacePage();
}

void VTabDlgCtrl::OnTabsChanged()
{
    VTabCtrl::OnTabsChanged();
    // The system's part shows them whenever the tabs do not fit.
    if (m_bOutDriven)
        ShowScrollArrows(false);
}

// The arrows for tabs that do not fit, which would stand on the title band.
void VTabDlgCtrl::ShowScrollArrows(bool show)
{
    if (show) { // as far as they are needed
        CRect client;
        GetClientRect(client);
        DefWindowProc(WM_SIZE, SIZE_RESTORED, MAKELPARAM(client.Width(), client.Height()));
    } else if (const HWND arrows = ::FindWindowEx(m_hWnd, nullptr, UPDOWN_CLASS, nullptr)) {
        ::ShowWindow(arrows, SW_HIDE);
    }
}

int VTabDlgCtrl::DeactivePage()
{
    if (!IsPage(m_nActive))
        return 1;
    if (m_bLeaving)
        return 0;
    const HWND self = m_hWnd;
    {
        const FlagScope leaving(*this, m_bLeaving);
        if (m_pages[m_nActive]->pPage->OnDeactive() == 0)
            return 0;
    }
    if (!VGIsAttached(this, self))
        return 0;
    InvalidateTitle();
    if (const int left = std::exchange(m_nActive, -1); HasWindow(left))
        m_pages[left]->pPage->ShowWindow(SW_HIDE);
    return VGIsAttached(this, self) ? 1 : 0;
}

void VTabDlgCtrl::ActivePage(int page)
{
    (void)ShowPage(page);
}

// ActivePage, which answers whether the page's tab is to be selected: it is whether or not the page could be
// shown, but not when the page's own code has shown another one or has closed the control.
bool VTabDlgCtrl::ShowPage(int page)
{
    // Pages that show each other without end: the first one does not come again.
    if (!IsPage(page) || m_bActivating[page])
        return false;
    const HWND self = m_hWnd;
    if (!DeactivePage())
        return VGIsAttached(this, self);
    EnsureInitialized(page);
    if (!VGIsAttached(this, self))
        return false;
    if (!HasWindow(page))
        return true;
    {
        const FlagScope activating(*this, m_bActivating[page]);
        m_pages[page]->pPage->OnActivate();
    }
    if (!VGIsAttached(this, self) || !HasWindow(page) || m_nActive >= 0)
        return false;
    const auto isStillShown = [&] { return VGIsAttached(this, self) && m_nActive == page; };
    m_nActive = page;
    InvalidateTitle();
    PlacePage();
    if (isStillShown())
        m_pages[page]->pPage->ShowWindow(SW_SHOW);
    return isStillShown();
}

// Moves the active page to where pages are shown.
void VTabDlgCtrl::PlacePage()
{
    if (!HasWindow(m_nActive))
        return;
    const CRect rect = GetPageRect();
    m_pages[m_nActive]->pPage->SetWindowPos(nullptr, rect.left, rect.top, std::max(rect.Width(), 0),
                                            std::max(rect.Height(), 0), SWP_NOZORDER | SWP_NOACTIVATE);
}

void VTabDlgCtrl::InvalidateTitle()
{
    if (m_bOutDriven && m_hWnd != nullptr)
        InvalidateRect(GetTitleRect());
}

// Where a page is shown, in client coordinates.
CRect VTabDlgCtrl::GetPageRect() const
{
    CRect rect;
    GetClientRect(rect);
    if (m_bOutDriven) {
        rect.DeflateRect(kPageMarginOutDriven, m_nTitleHeight, kPageMarginOutDriven, kPageMarginOutDriven);
        return rect;
    }
    CRect tab(0, 0, 0, 0);
    GetItemRect(0, tab);
    rect.DeflateRect(kPageMargin, tab.Height() * GetRowCount() + kPageMargin, kPageMargin, kPageMargin);
    return rect;
}

void VTabDlgCtrl::EnsureInitialized(int page)
{
    if (!IsPage(page) || HasWindow(page) || m_hWnd == nullptr)
        return;
    VTabPage& created = *m_pages[page]->pPage;
    if (created.Create(created.GetTemplateId(), this))
        created.ShowWindow(SW_HIDE);
}

void VTabDlgCtrl::DestroyPage(int page)
{
    if (!HasWindow(page) || m_bDestroying[page])
        return;
    const HWND self = m_hWnd;
    {
        const FlagScope destroying(*this, m_bDestroying[page]);
        m_pages[page]->pPage->OnDestroyP();
    }
    if (VGIsAttached(this, self) && HasWindow(page))
        m_pages[page]->pPage->DestroyWindow();
}

void VTabDlgCtrl::ReInitPage(int page)
{
    if (!HasWindow(page))
        return;
    const HWND self = m_hWnd;
    DestroyPage(page);
    if (!VGIsAttached(this, self))
        return;
    if (page != m_nActive) {
        EnsureInitialized(page);
        return;
    }
    // There is no window left that could refuse to be left.
    m_nActive = -1;
    ActivePage(page);
}

void VTabDlgCtrl::ReInitAllPages()
{
    const HWND self = m_hWnd;
    for (int page = 0; VGIsAttached(this, self) && page < m_nPageCount; ++page)
        ReInitPage(page);
}

// ---- Messages

BOOL VTabDlgCtrl::OnSelchange(NMHDR*, LRESULT* pResult)
{
    *pResult = 0;
    const int item = GetCurSel();
    if (m_bOutDriven || item < 0)
        return FALSE;
    const HWND self = m_hWnd;
    ActivePage(MapTabItemToPage(item));
    if (VGIsAttached(this, self) && m_pfnChanged != nullptr)
        m_pfnChanged(item);
    // A dialog that went with the control is told no more.
    return !VGIsAttached(this, self);
}

void VTabDlgCtrl::OnSize(UINT nType, int cx, int cy)
{
    VTabCtrl::OnSize(nType, cx, cy);
    if (m_nActive < 0)
        return;
    // The page is hidden and shown again on the way, which would take the focus from it.
    const HWND focus = ::GetFocus();
    const bool onPage = HasWindow(m_nActive) && ::IsChild(m_pages[m_nActive]->pPage->m_hWnd, focus);
    ActivePage(m_nActive);
    if (onPage && ::IsWindow(focus) && ::GetFocus() != focus)
        ::SetFocus(focus);
}

void VTabDlgCtrl::OnDestroy()
{
    const HWND self = m_hWnd;
    VTabCtrl::OnDestroy();
    m_nActive = -1;
    m_bLeaving = false;
    m_bActivating.fill(false);
    for (int page = 0; page < m_nPageCount; ++page) {
        DestroyPage(page);
        if (!VGIsAttached(this, self))
            return;
    }
    for (auto& data : m_pages)
        data.reset();
    m_nPageCount = 0;
    m_nActive = -1; // a page may have shown another one
    m_bDestroying.fill(false);
}
