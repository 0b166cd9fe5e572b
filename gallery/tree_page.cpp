// The page of trees: check boxes with the commands of a context menu, disabled, and the plain tree.
#include "gallery/pages.h"
#include "gallery/resource.h"

#include <array>

namespace
{

constexpr int kParts = 3;

// A small design document: groups of parts of features.
void FillTree(CTreeCtrl& tree)
{
    static constexpr std::array kGroups{L"草图 Sketches", L"特征 Features", L"装配 Assembly"};
    static constexpr std::array kFeatures{L"拉伸 Extrude", L"旋转 Revolve", L"圆角 Fillet"};
    for (const LPCWSTR group : kGroups) {
        const HTREEITEM top = tree.InsertItem(group);
        for (int part = 1; part <= kParts; ++part) {
            CString text;
            text.Format(L"零件 Part %d", part);
            const HTREEITEM item = tree.InsertItem(text, top);
            for (const LPCWSTR feature : kFeatures)
                tree.InsertItem(feature, item);
        }
    }
}

class TreeDlg : public PageDlg
{
    DECLARE_MESSAGE_MAP()

public:
    explicit TreeDlg(const PageHost& host) : PageDlg(IDD_TREES, &host.window) { m_bHelpBtn = false; }

    void Shoot(ShotWriter& shots)
    {
        m_checkTree.SetFocus();
        shots.Take(*this, L"trees");

        SendDlgItemMessage(IDC_TREE_REVERSE, BM_CLICK);
        m_plainTree.SetFocus();
        CPoint pointer;
        ::GetCursorPos(&pointer);
        CRect label;
        m_plainTree.GetItemRect(m_plainTree.GetRootItem(), label, TRUE);
        m_plainTree.ClientToScreen(label);
        ::SetCursorPos(label.left + 2, label.top + 2);
        shots.TakeAsItIs(*this, L"trees-reversed");
        ::SetCursorPos(pointer.x, pointer.y);
    }

protected:
    BOOL OnInitDialog() override
    {
        PageDlg::OnInitDialog();
        m_checkTree.SubclassDlgItem(IDC_CHECK_TREE, this);
        m_disabledTree.SubclassDlgItem(IDC_DISABLED_TREE, this);
        m_plainTree.SubclassDlgItem(IDC_PLAIN_TREE, this);
        for (VCheckTreeCtrl* tree : {&m_checkTree, &m_disabledTree}) {
            FillTree(*tree);
            const HTREEITEM first = tree->GetRootItem();
            const HTREEITEM second = tree->GetNextSiblingItem(first);
            tree->Check(second);
            tree->Uncheck(tree->GetChildItem(tree->GetChildItem(second)));
            tree->Check(tree->GetNextSiblingItem(tree->GetChildItem(first)));
            tree->Expand(second, TVE_EXPAND);
            tree->Expand(tree->GetChildItem(second), TVE_EXPAND);
            tree->SelectItem(tree->GetChildItem(second));
        }
        FillTree(m_plainTree);
        ExpandTreeItem(&m_plainTree, m_plainTree.GetRootItem());
        m_plainTree.SelectItem(m_plainTree.GetChildItem(m_plainTree.GetRootItem()));
        m_plainTree.SelectSetFirstVisible(m_plainTree.GetRootItem());
        CheckDlgButton(IDC_TREE_BOXES, BST_CHECKED);
        return TRUE;
    }

    afx_msg void OnCheckAll() { m_checkTree.SendMessage(WM_COMMAND, VGTreeCheckAll); }
    afx_msg void OnUncheckAll() { m_checkTree.SendMessage(WM_COMMAND, VGTreeUncheckAll); }
    afx_msg void OnReverse() { m_checkTree.SendMessage(WM_COMMAND, VGTreeReverseAll); }
    afx_msg void OnTextToggles()
    {
        m_checkTree.SetClickOnTextCheck(IsDlgButtonChecked(IDC_TREE_ON_TEXT) == BST_CHECKED);
    }
    afx_msg void OnShowBoxes()
    {
        const bool show = IsDlgButtonChecked(IDC_TREE_BOXES) == BST_CHECKED;
        m_checkTree.SetUseCheck(show);
        m_disabledTree.SetUseCheck(show);
    }

    // The tree keeps its own context menu back; the commands of this one go to the tree.
    afx_msg void OnTreeRightClick(NMHDR* /*pNMHDR*/, LRESULT* pResult)
    {
        CMenu menu;
        menu.CreatePopupMenu();
        menu.AppendMenu(MF_STRING, VGTreeCheckAll, L"全选 Check all");
        menu.AppendMenu(MF_STRING, VGTreeUncheckAll, L"全不选 Uncheck all");
        menu.AppendMenu(MF_STRING, VGTreeReverseAll, L"反选 Reverse");
        CPoint point;
        ::GetCursorPos(&point);
        menu.TrackPopupMenu(TPM_RIGHTBUTTON, point.x, point.y, &m_checkTree);
        *pResult = TRUE;
    }

    afx_msg LRESULT OnCheckClicked(WPARAM wParam, LPARAM lParam)
    {
        const auto item = reinterpret_cast<HTREEITEM>(wParam);
        CString text;
        text.Format(L"%s：%d → %d", static_cast<LPCWSTR>(m_checkTree.GetItemText(item)),
                    static_cast<int>(lParam), m_checkTree.GetNodeCheckStat(item));
        SetDlgItemText(IDC_TREE_TOLD, text);
        return 0;
    }

private:
    VCheckTreeCtrl m_checkTree;
    VCheckTreeCtrl m_disabledTree;
    VTreeCtrl m_plainTree;
};

BEGIN_MESSAGE_MAP(TreeDlg, PageDlg)
    ON_BN_CLICKED(IDC_TREE_CHECK_ALL, &TreeDlg::OnCheckAll)
    ON_BN_CLICKED(IDC_TREE_UNCHECK_ALL, &TreeDlg::OnUncheckAll)
    ON_BN_CLICKED(IDC_TREE_REVERSE, &TreeDlg::OnReverse)
    ON_BN_CLICKED(IDC_TREE_ON_TEXT, &TreeDlg::OnTextToggles)
    ON_BN_CLICKED(IDC_TREE_BOXES, &TreeDlg::OnShowBoxes)
    ON_NOTIFY(NM_RCLICK, IDC_CHECK_TREE, &TreeDlg::OnTreeRightClick)
    ON_MESSAGE(VGTreeCheckClicked, &TreeDlg::OnCheckClicked)
END_MESSAGE_MAP()

} // namespace

GalleryPage TreePage()
{
    return {
        L"树 Trees",
        L"三态复选树及其命令，启用与禁用，与普通树。\n"
        L"Trees of three-state check boxes with their commands, enabled and disabled, and the plain tree.",
        [](const PageHost& host) -> std::unique_ptr<PageDlg> { return std::make_unique<TreeDlg>(host); },
        [](PageDlg& page, const PageHost&, ShotWriter& shots) { static_cast<TreeDlg&>(page).Shoot(shots); }};
}
