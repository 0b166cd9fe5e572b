// Controls and dialogs when memory or the system's objects run out.
#include "tests/controls/skinned_host.h"
#include "tests/support/pixels.h"
#include "tests/support/recorder.h"
#include "tests/support/refusals.h"
#include "vgui/composite/combo_tree.h"
#include "vgui/composite/outline.h"
#include "vgui/composite/property_list.h"
#include "vgui/composite/tip_window.h"
#include "vgui/controls/bmp_static.h"
#include "vgui/controls/buttons.h"
#include "vgui/controls/date_time_ctrl.h"
#include "vgui/controls/progress_ctrl.h"
#include "vgui/controls/spin_button_ctrl.h"
#include "vgui/controls/splitter_bar.h"
#include "vgui/controls/themed_controls.h"
#include "vgui/controls/tool_bar.h"
#include "vgui/controls/tree_controls.h"
#include "vgui/dialogs/tab_pages.h"
#include "vgui/foundation/gdi_scope.h"
#include "vgui/foundation/window_helpers.h"

#include <memory>

using namespace support;

namespace
{

constexpr DWORD kChild = WS_CHILD | WS_VISIBLE;
constexpr UINT kId = 1000;
const CRect kPlace(10, 10, 150, 60);

HostWnd* g_host = nullptr;

struct WindowCloser {
    void operator()(HWND window) const
    {
        if (::IsWindow(window))
            ::DestroyWindow(window);
    }
};
using OwnedWindow = std::unique_ptr<std::remove_pointer_t<HWND>, WindowCloser>;

// Has the window painted, crossed by the mouse and asked for a picture.
void Use(CWnd& window)
{
    if (!::IsWindow(window.m_hWnd))
        return;
    window.RedrawWindow(nullptr, nullptr,
                        RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
    window.SendMessage(WM_MOUSEMOVE, 0, MAKELPARAM(5, 5));
    // Lists and trees wait for the button to come up before they return.
    window.PostMessage(WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
    window.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
    MSG message;
    while (::PeekMessage(&message, window.m_hWnd, WM_LBUTTONUP, WM_LBUTTONUP, PM_REMOVE))
        ::DispatchMessage(&message);
    window.RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    window.SendMessage(WM_MOUSELEAVE);
    const DibSurface surface(200, 100);
    window.SendMessage(WM_PRINTCLIENT, reinterpret_cast<WPARAM>(surface.DC().m_hDC), PRF_CLIENT);
    window.EnableWindow(FALSE);
    window.RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
}

// A control that dresses a window of the system's.
template <class Control>
RefusedOperation Dressed(const char* name, LPCWSTR windowClass, DWORD style = 0,
                         const std::function<void(Control&)>& prepare = nullptr)
{
    return {name, [=] {
                const OwnedWindow window(::CreateWindowExW(
                    0, windowClass, L"text", kChild | style, kPlace.left, kPlace.top, kPlace.Width(),
                    kPlace.Height(), g_host->m_hWnd, reinterpret_cast<HMENU>(kId), nullptr, nullptr));
                Control control;
                if (!control.SubclassWindow(window.get()))
                    return;
                if (prepare)
                    prepare(control);
                Use(control);
            }};
}

void FillList(VListCtrl& list)
{
    list.InsertColumn(0, L"column", LVCFMT_LEFT, 60);
    list.InsertItem(0, L"item");
}

template <class Tree>
void FillTree(Tree& tree)
{
    const HTREEITEM root = tree.InsertItem(L"root");
    tree.InsertItem(L"leaf", root);
    tree.Expand(root, TVE_EXPAND);
}

std::vector<RefusedOperation> Controls()
{
    return {
        Dressed<VButtonST>("image button", L"BUTTON", 0,
                           [](VButtonST& button) {
                               button.SetTooltipText(L"tip");
                               button.SetBitmaps(::CreateBitmap(8, 8, 1, 32, nullptr), RGB(1, 2, 3));
                               button.DrawTransparent(TRUE);
                           }),
        Dressed<VButtonST>(
            "button with an icon", L"BUTTON", 0,
            [](VButtonST& button) { button.SetIcon(::CopyIcon(::LoadIcon(nullptr, IDI_WARNING))); }),
        Dressed<VButton>("button", L"BUTTON", BS_DEFPUSHBUTTON),
        Dressed<VFlatButton>("flat button", L"BUTTON"),
        Dressed<VCheckBox>("check box", L"BUTTON", BS_AUTOCHECKBOX),
        Dressed<VRadioBtn>("radio button", L"BUTTON", BS_AUTORADIOBUTTON),
        Dressed<VHotTrackBtn>("hot-track button", L"BUTTON"),
        Dressed<VUrlEmailBtn>("link", L"BUTTON"),
        Dressed<VGroup>("group box", L"BUTTON", BS_GROUPBOX, [](VGroup& group) { group.SetUseTitle(TRUE); }),
        Dressed<VEdit>("edit field", L"EDIT", WS_BORDER),
        Dressed<VListBox>("list box", L"LISTBOX", WS_BORDER, [](VListBox& list) { list.AddString(L"a"); }),
        Dressed<VComboBox>("combo box", L"COMBOBOX", CBS_DROPDOWNLIST,
                           [](VComboBox& combo) {
                               combo.AddString(L"a");
                               combo.SetTooltipText(L"tip", TRUE);
                           }),
        Dressed<VListCtrl>("list", WC_LISTVIEW, LVS_REPORT, FillList),
        Dressed<VTreeCtrl>("tree", WC_TREEVIEW, TVS_HASBUTTONS, FillTree<VTreeCtrl>),
        Dressed<VCheckTreeCtrl>("check tree", WC_TREEVIEW, 0, FillTree<VCheckTreeCtrl>),
        Dressed<VProgressCtrl>("progress bar", PROGRESS_CLASS, 0,
                               [](VProgressCtrl& bar) {
                                   bar.SetPos(50);
                                   bar.SetMarquee(TRUE, 1);
                               }),
        Dressed<VSpinButtonCtrl>("spin button", UPDOWN_CLASS),
        Dressed<VDateTimeCtrl>("date field", DATETIMEPICK_CLASS),
        Dressed<VDateTimeCtrl>("time field", DATETIMEPICK_CLASS, DTS_UPDOWN | DTS_TIMEFORMAT),
        Dressed<VBmpStatic>("picture", L"STATIC", 0,
                            [](VBmpStatic& picture) {
                                const VOwnedBitmap bitmap(::CreateBitmap(8, 8, 1, 32, nullptr));
                                picture.SetBmp(bitmap.Get());
                            }),
        Dressed<VTabCtrl>("tabs", WC_TABCONTROL, 0, [](VTabCtrl& tabs) { tabs.InsertItem(0, L"tab"); }),
        Dressed<VOutlineEx>("outline", L"STATIC"),
    };
}

class OpenList : public VPropertyList
{
public:
    using VPropertyList::StartEdit;
};

class OpenGrid : public VPropertyGrid
{
public:
    using VPropertyGrid::StartEdit;
};

void UseList()
{
    OpenList list;
    for (const auto kind : {VPropertyList::PIET_COMBO, VPropertyList::PIET_EDIT, VPropertyList::PIET_GROUP})
        list.AddItem(L"name", L"value", L"one|two", kind);
    if (!list.Create(kChild | WS_VSCROLL | LBS_NOTIFY | LBS_OWNERDRAWFIXED | LBS_HASSTRINGS, kPlace, g_host,
                     kId))
        return;
    for (int row = 0; row < std::min(list.GetCount(), 2); ++row)
        list.StartEdit(row);
    Use(list);
}

void UseGrid()
{
    OpenGrid grid;
    if (!grid.Create(kChild | LVS_REPORT, kPlace, g_host, kId))
        return;
    grid.InsertColumn(0, L"column", LVCFMT_LEFT, 80);
    grid.InsertItem(0, L"cell");
    grid.StartEdit(0, 0);
    Use(grid);
}

void UseComboTree()
{
    ComboTree combo;
    combo.SetHasCheckboxes(TRUE);
    if (!combo.Create(CRect(10, 10, 170, 34), 180, 160, g_host, kId))
        return;
    combo.AddString(L"root/leaf");
    combo.ShowDropDown(TRUE);
    Use(combo.GetTree());
    combo.ShowDropDown(FALSE);
    Use(combo);
}

void UseTip()
{
    CXTTipWindow tip;
    if (!tip.Create(g_host))
        return;
    tip.SetTipText(L"title", L"body");
    tip.ShowTipWindow(CPoint(40, 40), VGTipShadow);
    Use(tip);
}

void UseToolBar()
{
    VToolBar bar;
    if (!bar.DlgCreate(g_host, kPlace, kId))
        return;
    bar.SetButton(0, 1, 0, BTNS_BUTTON, L"text", L"tip");
    bar.SetButton(1, 2, 0, BTNS_DROPDOWN);
    bar.EnableButton(2, FALSE);
    Use(bar);
}

void UseSplitter()
{
    CSplitterBar bar;
    if (!bar.Create(kChild, CRect(50, 0, 60, 50), g_host, kId, 0))
        return;
    bar.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
    bar.SendMessage(WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(15, 5));
    bar.SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(15, 5));
    Use(bar);
}

std::vector<RefusedOperation> Composites()
{
    return {
        {"property list", UseList},   {"property grid", UseGrid},
        {"combo tree", UseComboTree}, {"tip", UseTip},
        {"tool bar", UseToolBar},     {"splitter bar", UseSplitter},
    };
}

DialogTemplate EveryKind()
{
    DialogTemplate t(L"Skinned", 200, 100,
                     WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | WS_MAXIMIZEBOX | DS_SETFONT);
    t.Static(100, L"text", 5, 5, 40, 10).Edit(101, 5, 20, 40, 12);
    t.Button(IDOK, L"OK", 5, 40, 40, 12, BS_DEFPUSHBUTTON)
        .Button(102, L"box", 5, 60, 40, 12, BS_AUTOCHECKBOX);
    t.Button(103, L"radio", 5, 80, 40, 12, BS_AUTORADIOBUTTON)
        .Button(104, L"group", 50, 5, 40, 30, BS_GROUPBOX);
    t.Item(L"LISTBOX", L"", 105, 50, 40, 40, 20, 0).Item(L"COMBOBOX", L"", 106, 50, 60, 40, 40, CBS_DROPDOWN);
    t.Item(WC_TREEVIEW, L"", 107, 100, 5, 40, 20, 0).Item(WC_LISTVIEW, L"", 108, 100, 30, 40, 20, LVS_REPORT);
    t.Item(PROGRESS_CLASS, L"", 109, 100, 60, 40, 10, 0).Item(UPDOWN_CLASS, L"", 110, 100, 80, 10, 15, 0);
    t.Item(DATETIMEPICK_CLASS, L"", 111, 150, 5, 40, 12, 0).Item(WC_TABCONTROL, L"", 112, 150, 25, 40, 30, 0);
    return t;
}

void UseDialog()
{
    static const DialogTemplate everyKind = EveryKind();
    SkinnedHost dialog;
    if (!dialog.Open(everyKind))
        return;
    dialog.AddToolTips(101, L"tip");
    dialog.SetWindowPos(nullptr, 0, 0, 500, 300, SWP_NOMOVE | SWP_NOZORDER);
    Use(dialog);
}

void UseModalDialog()
{
    static const DialogTemplate everyKind = EveryKind();
    class Modal : public VGuiDlg
    {
    public:
        Modal() : VGuiDlg(0, g_host) { InitModalIndirect(everyKind.Get(), g_host); }

    protected:
        BOOL OnInitDialog() override
        {
            PostMessage(WM_COMMAND, IDCANCEL); // first: the rest may throw
            return VGuiDlg::OnInitDialog();
        }
    };
    Modal().DoModal();
    // Whatever has failed, the program can go on.
    EXPECT_TRUE(g_host->IsWindowEnabled());
}

std::vector<RefusedOperation> Dialogs()
{
    // What both ask for is refused to the modal one.
    return {{"modal dialog", UseModalDialog}, {"dialog", UseDialog}};
}

class RefusedWindows : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(host.Open({300, 200}));
        g_host = &host;
        // A link that is clicked starts no browser.
        usualOpener = VGSetShellOpener([](SHELLEXECUTEINFOW*) -> BOOL { return TRUE; });
    }
    void TearDown() override { VGSetShellOpener(usualOpener); }

    HostWnd host;
    VGShellOpener usualOpener = nullptr;
};

} // namespace

TEST_F(RefusedWindows, ObjectsForControls)
{
    ExpectRefusalsSurvived(Refused::Objects, Controls());
}

TEST_F(RefusedWindows, MemoryForControls)
{
    ExpectRefusalsSurvived(Refused::Memory, Controls());
}

TEST_F(RefusedWindows, ObjectsForComposites)
{
    ExpectRefusalsSurvived(Refused::Objects, Composites());
}

TEST_F(RefusedWindows, MemoryForComposites)
{
    ExpectRefusalsSurvived(Refused::Memory, Composites());
}

TEST_F(RefusedWindows, ObjectsForDialogs)
{
    ExpectRefusalsSurvived(Refused::Objects, Dialogs());
}

TEST_F(RefusedWindows, MemoryForDialogs)
{
    // Of dialogs whose creation an exception breaks off, Wine keeps the system menus.
    std::vector<RefusedOperation> dialogs = Dialogs();
    for (RefusedOperation& operation : dialogs)
        operation.countsObjects = false;
    ExpectRefusalsSurvived(Refused::Memory, dialogs);
}
