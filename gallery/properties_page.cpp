// The page of the property list and the property grid.
#include "gallery/pages.h"
#include "gallery/resource.h"

namespace
{

using List = VPropertyList;

struct Property {
    LPCWSTR name;
    LPCWSTR value;
    LPCWSTR choices;
    List::PIET kind;
};

constexpr Property kProperties[] = {
    {L"常规 General", L"", L"", List::PIET_GROUP},
    {L"名称 Name", L"圆 12", L"", List::PIET_EDIT},
    {L"图层 Layer", L"轮廓 Outline", L"0|轮廓 Outline|标注 Dimensions|剖面线 Hatch", List::PIET_DROPLIST},
    {L"线型比例 Scale", L"2.5", L"0.5|1|2|5", List::PIET_COMBO},
    {L"几何 Geometry", L"", L"", List::PIET_GROUP},
    {L"圆心 Centre", L"100, 250", L"", List::PIET_EDIT},
    {L"半径 Radius", L"42.5", L"", List::PIET_EDIT},
    {L"方向 Direction", L"逆时针 Left", L"顺时针 Right|逆时针 Left", List::PIET_DROPLIST},
    {L"显示 View", L"", L"", List::PIET_GROUP},
    {L"颜色 Colour", L"红 Red", L"红 Red|黄 Yellow|绿 Green|蓝 Blue", List::PIET_COMBO},
    {L"备注 Remarks", L"一段比单元格长得多的说明文字 A remark longer than its cell", L"", List::PIET_EDIT},
};
constexpr int kEditRow = 1;
constexpr int kDropListRow = 2;
constexpr int kComboRow = 3;

class SampleList : public VPropertyList
{
public:
    using VPropertyList::EndEdit;
    using VPropertyList::StartEdit;
};

class SampleGrid : public VPropertyGrid
{
public:
    using VPropertyGrid::EndEdit;
    using VPropertyGrid::StartEdit;
};

class PropertiesDlg : public PageDlg
{
    DECLARE_MESSAGE_MAP()

public:
    explicit PropertiesDlg(CWnd* owner) : PageDlg(IDD_PROPERTIES, owner) { m_bHelpBtn = false; }

    void Shoot(ShotWriter& shots)
    {
        shots.Take(*this, L"properties");
        struct {
            int row;
            LPCWSTR name;
        } const editors[] = {{kEditRow, L"properties-edit"},
                             {kDropListRow, L"properties-drop-list"},
                             {kComboRow, L"properties-combo"}};
        for (const auto& editor : editors) {
            m_list.StartEdit(editor.row);
            shots.Take(*this, editor.name);
        }
        m_list.EndEdit(true);
        m_grid.StartEdit(1, 1);
        shots.Take(*this, L"properties-grid");
        m_grid.EndEdit(true);
    }

protected:
    BOOL OnInitDialog() override
    {
        // Before the dialog puts a plain list box of the library's in its place.
        m_list.SubclassDlgItem(IDC_PROPERTY_LIST, this);
        PageDlg::OnInitDialog();
        m_grid.SubclassDlgItem(IDC_PROPERTY_GRID, this);
        m_list.SetPercent(42, 58);
        for (const Property& property : kProperties)
            m_list.AddItem(property.name, property.value, property.choices, property.kind);
        FillGrid();
        return TRUE;
    }

    afx_msg void OnOneClick()
    {
        m_grid.SetSingleClickStartEdit(IsDlgButtonChecked(IDC_PROPERTY_ONE_CLICK) != 0);
    }

    afx_msg LRESULT OnPropertyMessage(WPARAM wParam, LPARAM)
    {
        const int row = static_cast<int>(wParam);
        const bool stored = GetCurrentMessage()->message == List::kValueStored;
        CString text;
        if (stored)
            text.Format(L"已存 Stored: %s = %s", m_list.GetItemName(row).GetString(),
                        m_list.GetItemValue(row).GetString());
        else
            text.Format(L"编辑 Editing: %s", m_list.GetItemName(row).GetString());
        SetDlgItemText(IDC_PROPERTY_MESSAGES, text);
        return 0;
    }

private:
    void FillGrid()
    {
        struct {
            LPCWSTR title;
            int format;
            int percent;
        } const columns[] = {{L"名称 Name", LVCFMT_LEFT, 36},
                             {L"X", LVCFMT_RIGHT, 18},
                             {L"Y", LVCFMT_RIGHT, 18},
                             {L"标注 Note", LVCFMT_LEFT, 28}};
        CRect client;
        m_grid.GetClientRect(client);
        int column = 0;
        for (const auto& item : columns)
            m_grid.InsertColumn(column++, item.title, item.format, client.Width() * item.percent / 100);
        m_grid.SetEditable(0, false);
        for (int row = 0; row < 5; ++row) {
            CString text;
            text.Format(L"端点 Point %d", row + 1);
            m_grid.InsertItem(row, text);
            for (column = 1; column < 3; ++column) {
                text.Format(L"%d.%d", row * 37 + column * 12, row * column % 10);
                m_grid.SetItemText(row, column, text);
            }
        }
        m_grid.SetItemText(0, 3, L"起点 Start");
    }

    SampleList m_list;
    SampleGrid m_grid;
};

BEGIN_MESSAGE_MAP(PropertiesDlg, PageDlg)
    ON_BN_CLICKED(IDC_PROPERTY_ONE_CLICK, &PropertiesDlg::OnOneClick)
    ON_MESSAGE(List::kValueStored, &PropertiesDlg::OnPropertyMessage)
    ON_MESSAGE(List::kEditStarted, &PropertiesDlg::OnPropertyMessage)
END_MESSAGE_MAP()

} // namespace

GalleryPage PropertiesPage()
{
    return {L"特性表与表格 Property list and grid",
            L"就地编辑的特性表与表格，以及特性表发送的消息。\n"
            L"A property list and a grid, edited in place, and the messages of the list.",
            [](const PageHost& host) -> std::unique_ptr<PageDlg> {
                return std::make_unique<PropertiesDlg>(&host.window);
            },
            [](PageDlg& page, const PageHost&, ShotWriter& shots) {
                static_cast<PropertiesDlg&>(page).Shoot(shots);
            }};
}
