#include "gallery/pages.h"

namespace
{

int g_modals = 0;

} // namespace

INT_PTR RunPageModal(CDialog& dialog)
{
    ++g_modals;
    const INT_PTR result = dialog.DoModal();
    --g_modals;
    return result;
}

bool IsPageModalRunning()
{
    return g_modals > 0;
}

IMPLEMENT_DYNAMIC(PageDlg, VGuiDlg)

PageDlg::PageDlg(UINT nIDTemplate, CWnd* pParent)
    : VGuiDlg(nIDTemplate, pParent), m_nIDTemplate(nIDTemplate), m_pOwner(pParent)
{
}

bool PageDlg::Open()
{
    if (m_hWnd == nullptr && !Create(m_nIDTemplate, m_pOwner))
        return false;
    ShowWindow(IsIconic() ? SW_RESTORE : SW_SHOW);
    SetForegroundWindow();
    return true;
}

void PageDlg::OnOK()
{
    if (!m_bModeless)
        VGuiDlg::OnOK();
    else if (UpdateData())
        DestroyWindow();
}

void PageDlg::OnCancel()
{
    if (m_bModeless)
        DestroyWindow();
    else
        VGuiDlg::OnCancel();
}

int PageDlg::OnHtmlHelp()
{
    PromptHelp();
    return 1;
}

const std::vector<GalleryPage>& GalleryPages()
{
#define GALLERY_PAGE_ROW(Page) Page(),
    static const std::vector<GalleryPage> pages{GALLERY_PAGES(GALLERY_PAGE_ROW)};
#undef GALLERY_PAGE_ROW
    return pages;
}
