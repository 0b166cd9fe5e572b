// The page of the outline: a strip of items that drives pages, and one without a title.
#include "gallery/pages.h"
#include "gallery/resource.h"

#include <array>

namespace
{

struct OutlineEntry {
    LPCWSTR title;
    LPCWSTR text;
};

constexpr std::array kEntries{
    OutlineEntry{L"常规 General", L"名称、材料与质量。\nName, material and mass."},
    OutlineEntry{L"显示 Display", L"颜色、透明度与线型。\nColour, transparency and lines."},
    OutlineEntry{L"公差 Tolerance", L"尺寸公差与形位公差。\nTolerances of size and shape."},
    OutlineEntry{L"高级 Advanced", L"精度与重建选项。\nPrecision and rebuilding."},
};

class TextPage : public VTabPage
{
public:
    TextPage() : VTabPage(IDD_OUTLINE_PAGE) {}

    LPCWSTR m_text = L"";

protected:
    BOOL OnInitDialog() override
    {
        VTabPage::OnInitDialog();
        SetDlgItemText(IDC_OUTLINE_TEXT, m_text);
        return TRUE;
    }
};

class OutlineDlg : public PageDlg
{
    DECLARE_MESSAGE_MAP()

public:
    explicit OutlineDlg(const PageHost& host) : PageDlg(IDD_OUTLINE, &host.window)
    {
        m_bHelpBtn = false;
        for (const OutlineEntry& entry : kEntries) {
            m_outline.AddItem(entry.title, 0);
            m_plain.AddItem(entry.title, 0);
        }
        m_outline.SetTitle(L"属性 Properties");
    }

    void Shoot(ShotWriter& shots)
    {
        shots.Take(*this, L"outline");
        CPoint pointer;
        ::GetCursorPos(&pointer);
        const CPoint item = ItemPoint(1);
        m_outline.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(item.x, item.y));
        CPoint hot = ItemPoint(2);
        m_outline.ClientToScreen(&hot);
        ::SetCursorPos(hot.x, hot.y);
        HandlePendingMessages();
        shots.TakeAsItIs(*this, L"outline-second");
        ::SetCursorPos(pointer.x, pointer.y);
    }

protected:
    BOOL OnInitDialog() override
    {
        PageDlg::OnInitDialog();
        m_outline.SubclassDlgItem(IDC_OUTLINE, this);
        m_plain.SubclassDlgItem(IDC_OUTLINE_PLAIN, this);
        m_tabs.SubclassDlgItem(IDC_OUTLINE_TABS, this);
        m_tabs.SetOutDrivenMode(1);
        for (size_t i = 0; i < m_pages.size(); ++i) {
            m_pages[i].m_text = kEntries[i].text;
            if (m_tabs.GetPageNum() <= static_cast<int>(i))
                m_tabs.AddPage(kEntries[i].title, &m_pages[i], 1, 0, 1);
        }
        m_outline.SetSelected(0);
        m_plain.SetSelected(kEntries.back().title);
        m_tabs.SetActive(0);
        return TRUE;
    }

    afx_msg LRESULT OnSelected(WPARAM wParam, LPARAM lParam)
    {
        const int selected = static_cast<int>(wParam);
        m_tabs.SetActive(selected);
        CString text;
        text.Format(L"%d → %d", static_cast<int>(lParam), selected);
        SetDlgItemText(IDC_OUTLINE_TOLD, text);
        return 0;
    }

private:
    // In the first outline's client coordinates.
    static CPoint ItemPoint(int index)
    {
        constexpr int kItemsTop = 32;
        constexpr int kItemHeight = 31;
        return {20, kItemsTop + index * kItemHeight + kItemHeight / 2};
    }

    std::array<TextPage, kEntries.size()> m_pages;
    VOutlineEx m_outline;
    VOutlineEx m_plain;
    VTabDlgCtrl m_tabs;
};

BEGIN_MESSAGE_MAP(OutlineDlg, PageDlg)
    ON_MESSAGE(VGOutlineSelected, &OutlineDlg::OnSelected)
END_MESSAGE_MAP()

} // namespace

GalleryPage OutlinePage()
{
    return {
        L"大纲 Outline",
        L"带标题与不带标题的大纲，单击切换页面。\nOutlines with and without a title; a click shows a page.",
        [](const PageHost& host) -> std::unique_ptr<PageDlg> { return std::make_unique<OutlineDlg>(host); },
        [](PageDlg& page, const PageHost&, ShotWriter& shots) {
            static_cast<OutlineDlg&>(page).Shoot(shots);
        }};
}
