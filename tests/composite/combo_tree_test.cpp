#include "tests/composite/combo_tree_fixture.h"
#include "tests/support/dialog_template.h"
#include "tests/support/modal.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <new>
#include <optional>
#include <utility>

using namespace support;

namespace
{

// Opens the drop list's image list, to be in the way of another one.
class OpenList : public ComboTreeDropList
{
public:
    static constexpr CImageList ComboTreeDropList::*kImages = &OpenList::m_checkImages;
};

// Does something when the hooked window has been shown or hidden: SWP_SHOWWINDOW, SWP_HIDEWINDOW.
class DoAtShow : public CComboSubclassWnd
{
public:
    DoAtShow(UINT flag, std::function<void()> deed) : m_flag(flag), m_deed(std::move(deed)) {}

    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        const bool isIt = message == WM_WINDOWPOSCHANGED &&
                          (reinterpret_cast<const WINDOWPOS*>(lParam)->flags & m_flag) != 0;
        const LRESULT result = CComboSubclassWnd::WindowProc(message, wParam, lParam);
        if (isIt)
            m_deed();
        return result;
    }

private:
    UINT m_flag;
    std::function<void()> m_deed;
};

class ComboTreeControl : public ComboTreeTest
{
protected:
    // Deletes the object; what is written to its memory from now on is seen, what is read leads nowhere.
    void EndCombo()
    {
        combo.~OpenCombo();
        std::memset(static_cast<void*>(&combo), kDead, sizeof(combo));
        m_ended = true;
    }
    // Makes it again if it was deleted.
    void ReviveCombo()
    {
        if (!std::exchange(m_ended, false))
            return;
        const auto* const bytes = reinterpret_cast<const BYTE*>(&combo);
        EXPECT_EQ(std::count(bytes, bytes + sizeof(combo), kDead), static_cast<ptrdiff_t>(sizeof(combo)));
        new (&combo) OpenCombo;
    }

private:
    static constexpr BYTE kDead = 0xDD;
    bool m_ended = false;
};

} // namespace

TEST_F(ComboTreeControl, IsMadeOfEditButtonAndHiddenTree)
{
    EXPECT_FALSE(combo.Create(CRect(0, 0, 50, 20), 10, 10, nullptr, kComboId));
    const HGDIOBJ font = ::GetStockObject(ANSI_FIXED_FONT);
    host.SetAnswer([&](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (message == WM_GETFONT)
            return reinterpret_cast<LRESULT>(font);
        return {};
    });
    Open();
    EXPECT_FALSE(combo.Create(CRect(0, 0, 50, 20), 10, 10, &host, kComboId));
    EXPECT_EQ(combo.GetStyle() & (WS_CHILD | WS_VISIBLE | WS_TABSTOP),
              DWORD{WS_CHILD | WS_VISIBLE | WS_TABSTOP});
    EXPECT_EQ(combo.GetExStyle() & WS_EX_CLIENTEDGE, DWORD{WS_EX_CLIENTEDGE});

    const auto checkPlaces = [&] {
        CRect client;
        combo.GetClientRect(client);
        CRect edit = client;
        edit.right -= ::GetSystemMetrics(SM_CXVSCROLL);
        CRect button = client;
        button.left = edit.right;
        for (const auto& [window, place] : {std::pair<CWnd*, CRect>(&combo.GetEdit(), edit),
                                            std::pair<CWnd*, CRect>(&combo.GetDropDownButton(), button)}) {
            CRect rect;
            window->GetWindowRect(rect);
            combo.ScreenToClient(rect);
            EXPECT_EQ(rect, place);
        }
    };
    checkPlaces();
    combo.MoveWindow(5, 5, 200, 40);
    checkPlaces();
    EXPECT_EQ(combo.GetDlgItem(4317), &combo.GetDropDownButton());
    EXPECT_EQ(combo.GetDlgItem(4318), &combo.GetEdit());
    EXPECT_EQ(tree.GetDlgCtrlID(), 4319);
    EXPECT_EQ(combo.GetEdit().GetFont()->m_hObject, font);
    EXPECT_EQ(tree.GetStyle() & 0xFFFF,
              DWORD{TVS_HASBUTTONS | TVS_HASLINES | TVS_LINESATROOT | TVS_NOTOOLTIPS});
    EXPECT_EQ(::GetAncestor(tree.m_hWnd, GA_PARENT), ::GetDesktopWindow());
    EXPECT_FALSE(tree.IsWindowVisible());
    CRect rect;
    tree.GetWindowRect(rect);
    EXPECT_EQ(rect.Size(), kDropped);

    combo.SetWindowText(L"text");
    EXPECT_EQ(combo.GetWindowText(), L"text");
    EXPECT_EQ(combo.SendMessage(WM_GETDLGCODE), 0x85);
    EXPECT_EQ(combo.GetDropDownButton().SendMessage(WM_GETDLGCODE), 0x85);
    EXPECT_EQ(tree.SendMessage(WM_GETDLGCODE), 0x85);
    EXPECT_TRUE(combo.SetHasCheckboxes(FALSE));
    EXPECT_FALSE(combo.SetHasCheckboxes(TRUE));
    EXPECT_FALSE(combo.GetHasCheckboxes());

    ASSERT_EQ(::GetFocus(), host.m_hWnd);
    EXPECT_FALSE(combo.EnableWindow(FALSE));
    EXPECT_EQ(::GetFocus(), host.m_hWnd); // it was not in the combo box
    for (const CWnd* part : {static_cast<CWnd*>(&combo), static_cast<CWnd*>(&combo.GetEdit()),
                             static_cast<CWnd*>(&combo.GetDropDownButton()), static_cast<CWnd*>(&tree)})
        EXPECT_FALSE(part->IsWindowEnabled());
    EXPECT_TRUE(combo.EnableWindow(TRUE));
    EXPECT_TRUE(tree.IsWindowEnabled());
}

TEST_F(ComboTreeControl, TakesThePlaceOfADialogsComboBox)
{
    constexpr UINT kBefore = 10;
    constexpr UINT kAfter = 11;
    DialogTemplate t(L"dialog", 160, 80);
    t.Edit(kBefore, 5, 5, 60, 12);
    t.Item(L"COMBOBOX", L"", kComboId, 5, 20, 80, 70, CBS_DROPDOWN | WS_TABSTOP);
    t.Edit(kAfter, 5, 40, 60, 12);
    CDialog dialog;
    ASSERT_TRUE(dialog.CreateIndirect(t.Get()));
    CWnd* const placeholder = dialog.GetDlgItem(kComboId);
    CRect place;
    placeholder->GetWindowRect(place);
    CRect dropped(0, 0, 0, 0);
    placeholder->SendMessage(CB_GETDROPPEDCONTROLRECT, 0, reinterpret_cast<LPARAM>(&dropped));

    EXPECT_FALSE(combo.SubclassDlgItem(kComboId, nullptr));
    EXPECT_FALSE(combo.SubclassDlgItem(kComboId + 1, &dialog));
    ASSERT_TRUE(combo.SubclassDlgItem(kComboId, &dialog));
    EXPECT_EQ(dialog.GetDlgItem(kComboId), &combo);
    CRect rect;
    combo.GetWindowRect(rect);
    EXPECT_EQ(rect, place);
    EXPECT_EQ(CSize(combo.GetDroppedWidth(), combo.GetDroppedHeight()), dropped.Size());
    EXPECT_EQ(dialog.GetNextDlgTabItem(dialog.GetDlgItem(kBefore)), &combo);
    EXPECT_EQ(dialog.GetNextDlgTabItem(&combo), dialog.GetDlgItem(kAfter));
    dialog.DestroyWindow();
    EXPECT_EQ(tree.m_hWnd, nullptr);
}

TEST_F(ComboTreeControl, SaysThatTheCheckBitmapIsMissing)
{
    ASSERT_TRUE(host.Open());
    combo.SetHasCheckboxes(TRUE);
    CImageList& images = tree.*OpenList::kImages;
    images.Create(4, 4, ILC_COLOR, 1, 1); // no second list can be made
    auto box = AnswerMessageBox(IDOK);
    EXPECT_FALSE(combo.Create(CRect(0, 0, 100, 20), 10, 10, &host, kComboId));
    EXPECT_EQ(box.Text(),
              L"Can't create tree check image list! Make sure bitmap with \"COMBOTREECHECKS\" (note "
              L"quotes) was added as resource");
    EXPECT_EQ(combo.m_hWnd, nullptr);
    EXPECT_EQ(tree.m_hWnd, nullptr);
    images.DeleteImageList();
    EXPECT_TRUE(combo.Create(CRect(0, 0, 100, 20), 10, 10, &host, kComboId));
}

TEST_F(ComboTreeControl, ShowsTheCheckImages)
{
    Open(true);
    CImageList* const images = tree.GetImageList(TVSIL_STATE);
    ASSERT_NE(images, nullptr);
    EXPECT_EQ(images->GetImageCount(), 5);
    DibSurface shown(65, 13);
    for (int i = 0; i < 5; ++i)
        images->Draw(&shown.DC(), i, CPoint(13 * i, 0), ILD_NORMAL);
    constexpr COLORREF kRed = RGB(255, 0, 0);
    for (int i = 1; i < 5; ++i) {
        const CRect inside(13 * i + 2, 2, 13 * i + 11, 11);
        const COLORREF frame = i == 4 ? kRed : RGB(0, 0, 0);
        const COLORREF fill = i == 3 ? RGB(192, 192, 192) : DibSurface::kBackground;
        const int ticked = i == 2 || i == 3 ? shown.Count(kRed, inside) : 0;
        EXPECT_EQ(ticked > 10, i == 2 || i == 3) << i;
        EXPECT_EQ(shown.Count(fill, inside), 81 - ticked) << i;
        EXPECT_EQ(shown.Count(frame, CRect(13 * i, 0, 13 * i + 13, 13)), 40) << i;
    }
}

TEST_F(ComboTreeControl, DrawsTheButtonAsAScrollArrow)
{
    Open();
    const auto expectFace = [&](UINT state) {
        combo.GetDropDownButton().UpdateWindow();
        const DibSurface shown = CaptureClient(combo.GetDropDownButton().m_hWnd);
        DibSurface wanted(shown.Width(), shown.Height());
        CRect face = wanted.Bounds();
        ::DrawFrameControl(wanted.DC().m_hDC, face, DFC_SCROLL, DFCS_SCROLLDOWN | state);
        EXPECT_TRUE(AreasEqual(shown, face, wanted, {0, 0}));
    };
    expectFace(0);
    MoveTo(CenterOf(combo.GetDropDownButton().m_hWnd));
    Press();
    expectFace(DFCS_PUSHED);
    Release();
    combo.HideTree();
    combo.EnableWindow(FALSE);
    expectFace(DFCS_INACTIVE);
}

TEST_F(ComboTreeControl, DropsDownWhereThereIsRoom)
{
    Open();
    CRect place;
    combo.GetWindowRect(place);
    CRect hostPlace;
    host.GetWindowRect(hostPlace);
    const CSize inset = place.TopLeft() - hostPlace.TopLeft();
    const CSize screen(::GetSystemMetrics(SM_CXSCREEN), ::GetSystemMetrics(SM_CYSCREEN));
    const int left = screen.cx - kDropped.cx; // the last corner with room to the right and below
    const int top = screen.cy - kDropped.cy - place.Height();
    struct Case {
        CPoint corner; // of the control
        bool above, alignedRight;
    };
    for (const Case& at : {Case{{30, 30}, false, false}, Case{{left, top}, false, false},
                           Case{{left + 1, top}, false, true}, Case{{left, top + 1}, true, false},
                           Case{{screen.cx - place.Width(), screen.cy - place.Height()}, true, true}}) {
        const CPoint moved = at.corner - inset;
        host.SetWindowPos(nullptr, moved.x, moved.y, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
        place.MoveToXY(at.corner);
        const CRect wanted(CPoint(at.alignedRight ? place.right - kDropped.cx : place.left,
                                  at.above ? place.top - kDropped.cy : place.bottom),
                           kDropped);
        CRect rect;
        combo.GetDroppedControlRect(rect);
        EXPECT_EQ(rect, wanted);
        combo.ShowDropDown(TRUE);
        tree.GetWindowRect(rect);
        EXPECT_EQ(rect, wanted);
        EXPECT_NE(tree.GetExStyle() & WS_EX_TOPMOST, 0u);
        combo.ShowDropDown(FALSE);
    }
    combo.GetDroppedControlRect(nullptr);

    host.SetWindowPos(nullptr, 30, 30, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    combo.ShowTree();
    EXPECT_EQ(combo.SetDroppedWidth(90), 0);
    EXPECT_EQ(combo.SetDroppedHeight(70), 0);
    CRect rect;
    tree.GetWindowRect(rect);
    EXPECT_EQ(rect.Size(), CSize(90, 70));
    EXPECT_EQ(combo.GetDroppedHeight(), 70);
    combo.SetDroppedWidth(UINT_MAX); // more than a window can be
    combo.SetDroppedHeight(UINT_MAX);
    combo.GetDroppedControlRect(rect);
    EXPECT_GT(rect.Width(), 0x7000);
    EXPECT_GT(rect.Height(), 0x7000);
}

TEST_F(ComboTreeControl, ButtonAndCallsOpenAndClose)
{
    Open();
    Add({L"a", L"b"});
    const HWND button = combo.GetDropDownButton().m_hWnd;
    Click(button);
    EXPECT_TRUE(IsDown());
    EXPECT_EQ(::GetFocus(), combo.GetEdit().m_hWnd);
    EXPECT_EQ(Told(), (Codes{CBN_SETFOCUS, CBN_DROPDOWN}));
    EXPECT_TRUE(combo.IsMouseOnButton());
    EXPECT_FALSE(combo.IsMouseOnEdit());
    tree.SelectItem(Find(L"b"));
    Click(button); // takes what is selected
    EXPECT_FALSE(IsDown());
    EXPECT_FALSE(tree.IsWindowVisible());
    EXPECT_EQ(combo.GetWindowText(), L"b");
    EXPECT_EQ(Told(), (Codes{CBN_SELENDOK}));
    EXPECT_TRUE(combo.IsEditHighlightOn());

    combo.ShowDropDown(FALSE);
    EXPECT_EQ(Told(), Codes{});
    combo.ShowDropDown(TRUE);
    combo.ShowDropDown(TRUE);
    EXPECT_EQ(Told(), (Codes{CBN_SETFOCUS, CBN_DROPDOWN}));
    combo.ShowDropDown(FALSE);
    EXPECT_EQ(Told(), Codes{});
    ::SetFocus(host.m_hWnd);
    EXPECT_FALSE(combo.IsEditHighlightOn());
    EXPECT_EQ(Told(), (Codes{CBN_KILLFOCUS}));
    Click(combo.GetEdit().m_hWnd);
    Type(L"xy");
    EXPECT_EQ(Told(), (Codes{CBN_SETFOCUS, CBN_EDITCHANGE, CBN_EDITCHANGE}));
    // No word while the tree is down.
    combo.ShowTree();
    host.Clear();
    ::SetFocus(host.m_hWnd);
    EXPECT_EQ(Told(), Codes{});
}

TEST_F(ComboTreeControl, ClicksInTheTreeSelectAndChoose)
{
    OpenDropped({L"a", L"f/g", L"z"});
    tree.SelectItem(Find(L"a"));
    // Told before the selection moves.
    HTREEITEM atNotification = nullptr;
    host.SetAnswer([&](UINT message, WPARAM wParam, LPARAM) -> std::optional<LRESULT> {
        if (message == WM_COMMAND && HIWORD(wParam) == CBN_SELCHANGE)
            atNotification = combo.GetCurSel();
        return {};
    });
    Click(On(L"z"));
    EXPECT_EQ(atNotification, Find(L"a"));
    EXPECT_EQ(combo.GetCurSel(), Find(L"z"));
    EXPECT_EQ(Told(), (Codes{CBN_SELCHANGE}));
    Click(On(L"z"));
    EXPECT_TRUE(IsDown());
    EXPECT_EQ(Told(), Codes{});
    EXPECT_EQ(combo.GetWindowText(), L"");
    EXPECT_EQ(::GetFocus(), combo.GetEdit().m_hWnd);

    DoubleClick(On(L"f/g"));
    EXPECT_FALSE(IsDown());
    EXPECT_EQ(combo.GetWindowText(), L"g");
    EXPECT_EQ(Told(), (Codes{CBN_SELCHANGE, CBN_DBLCLK, CBN_SELENDOK}));

    // The button of a folder that closes around the selected item.
    const int button = -static_cast<int>(tree.GetIndent()) / 2;
    for (const bool twice : {false, true}) {
        combo.ExpandBranch(Find(L"f"));
        tree.SelectItem(Find(L"f/g"));
        Drop();
        if (twice) {
            CPoint point = On(L"f", button);
            tree.ScreenToClient(&point);
            tree.SendMessage(WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(point.x, point.y));
        } else {
            Click(On(L"f", button));
        }
        EXPECT_EQ(combo.GetCurSel(), Find(L"f"));
        EXPECT_EQ(Told(), (Codes{CBN_SELCHANGE}));
    }
    combo.ExpandBranch(Find(L"f"));
    tree.SelectItem(Find(L"f/g"));

    combo.SetEnableSelectParent(FALSE);
    Drop();
    DoubleClick(On(L"f")); // expands or collapses only
    EXPECT_TRUE(IsDown());
    EXPECT_EQ(tree.GetItemState(Find(L"f"), TVIS_EXPANDED) & TVIS_EXPANDED, 0u);
    EXPECT_EQ(Told(), (Codes{CBN_SELCHANGE}));
    combo.OnSelection();
    EXPECT_FALSE(IsDown());
    EXPECT_EQ(combo.GetWindowText(), L"g");
    EXPECT_EQ(Told(), Codes{});
}

// Expanding a folder in the last row scrolls other items under the mouse.
TEST_F(ComboTreeControl, DoubleClickIsMeantForWhatWasThere)
{
    combo.SetEnableSelectParent(FALSE);
    Open();
    for (int i = 0; i < 20; ++i)
        combo.AddString((L"folder/leaf " + std::to_wstring(i)).c_str());
    Drop();
    for (UINT rows = tree.GetVisibleCount(); rows > 1; --rows)
        tree.InsertItem(L"a", TVI_ROOT, TVI_FIRST);
    tree.SelectItem(tree.GetRootItem());
    DoubleClick(On(L"folder", 30)); // also right of where leaves begin
    EXPECT_NE(tree.GetFirstVisibleItem(), tree.GetRootItem());
    EXPECT_TRUE(IsDown());
    EXPECT_EQ(Told(), (Codes{CBN_SELCHANGE}));
}

TEST_F(ComboTreeControl, BoxesToggleAndEveryItemMayBeChosen)
{
    combo.SetEnableSelectParent(FALSE);
    OpenDropped({L"f/g", L"f/h"}, true);
    tree.SelectItem(Find(L"f/h"));
    Click(OnBox(L"f/g"));
    EXPECT_EQ(combo.GetCurSel(), Find(L"f/h"));
    EXPECT_EQ(tree.GetCheckState(Find(L"f/g")), ComboTreeChecked);
    EXPECT_EQ(tree.GetCheckState(Find(L"f")), ComboTreePartlyChecked);
    EXPECT_EQ(Told(), (Codes{CBN_CHECKCHANGE}));
    DoubleClick(OnBox(L"f/g")); // twice, however quickly
    EXPECT_TRUE(IsDown());
    EXPECT_EQ(tree.GetCheckState(Find(L"f/g")), ComboTreeChecked);
    EXPECT_EQ(Told(), (Codes{CBN_CHECKCHANGE, CBN_CHECKCHANGE}));
    tree.SelectItem(Find(L"f"));
    combo.OnSelection();
    EXPECT_EQ(combo.GetWindowText(), L"f");
    EXPECT_EQ(Told(), (Codes{CBN_SELENDOK}));
}

TEST_F(ComboTreeControl, ShowsTheSelectionWhileTheEditHasTheFocus)
{
    Open();
    Add({L"aaaa", L"bbbb"});
    tree.SelectItem(Find(L"bbbb"));
    Drop();
    tree.UpdateWindow();
    const auto background = [&](LPCWSTR path) {
        CRect label;
        tree.GetItemRect(Find(path), label, TRUE);
        return ClientPixel(tree.m_hWnd, label.TopLeft() + CSize(1, 1));
    };
    EXPECT_EQ(background(L"aaaa"), ::GetSysColor(COLOR_WINDOW));
    EXPECT_EQ(background(L"bbbb"), ::GetSysColor(COLOR_HIGHLIGHT));
    Key(VK_UP);
    tree.UpdateWindow();
    EXPECT_EQ(background(L"aaaa"), ::GetSysColor(COLOR_HIGHLIGHT));
    EXPECT_EQ(background(L"bbbb"), ::GetSysColor(COLOR_WINDOW));
    CRect label;
    tree.GetItemRect(Find(L"aaaa"), label, TRUE);
    EXPECT_GT(CaptureClient(tree.m_hWnd).Count(::GetSysColor(COLOR_HIGHLIGHTTEXT), label), 0);

    // Also of a label that is scrolled out of view in part.
    combo.SetDroppedWidth(label.right);
    tree.SetItemText(Find(L"aaaa"), L"aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa");
    tree.SendMessage(WM_HSCROLL, SB_PAGERIGHT);
    tree.UpdateWindow();
    tree.GetItemRect(tree.GetRootItem(), label, TRUE);
    ASSERT_LT(label.left, 0);
    EXPECT_GT(CaptureClient(tree.m_hWnd).Count(::GetSysColor(COLOR_HIGHLIGHT), label), 100);
}

TEST_F(ComboTreeControl, ParentsMessagesCancel)
{
    Open();
    Add({L"a"});
    const HWND self = combo.m_hWnd;
    const auto own = reinterpret_cast<LPARAM>(self);
    WINDOWPOS nowhere{
        host.m_hWnd, nullptr, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE};
    struct Case {
        UINT message;
        WPARAM wParam;
        LPARAM lParam;
        bool cancels;
    };
    const auto pos = reinterpret_cast<LPARAM>(&nowhere);
    for (const Case& sent :
         {Case{WM_WINDOWPOSCHANGING, 0, pos, true}, Case{WM_WINDOWPOSCHANGED, 0, pos, true},
          Case{WM_NCLBUTTONDOWN, HTNOWHERE, 0, true}, Case{WM_NCRBUTTONDOWN, HTNOWHERE, 0, true},
          Case{WM_NCMBUTTONDOWN, HTNOWHERE, 0, true}, Case{WM_SYSKEYDOWN, 'Q', 0, true},
          Case{WM_SYSCOMMAND, 0xF, 0, true}, Case{WM_LBUTTONDOWN, 0, 0, true},
          Case{WM_RBUTTONDOWN, 0, 0, true}, Case{WM_MBUTTONDOWN, 0, 0, true}, Case{WM_COMMAND, 77, own, true},
          Case{WM_COMMAND, kComboId, 0, true}, Case{WM_COMMAND, kComboId, own, false},
          Case{WM_KEYDOWN, 'Q', 0, false}, Case{WM_MOUSEMOVE, 0, 0, false},
          Case{WM_LBUTTONUP, 0, 0, false}}) {
        Drop();
        MessageSpy spy(host.m_hWnd);
        host.SendMessage(sent.message, sent.wParam, sent.lParam);
        EXPECT_EQ(IsDown(), !sent.cancels) << std::hex << sent.message << " " << sent.wParam;
        EXPECT_GE(spy.Count(sent.message), 1);
        const Codes codes = Told();
        EXPECT_EQ(std::count(codes.begin(), codes.end(), CBN_SELENDCANCEL), sent.cancels ? 1 : 0);
        combo.HideTree();
    }
    // Closed, the parent is its own master again.
    host.Clear();
    host.SendMessage(WM_LBUTTONDOWN);
    EXPECT_EQ(Told(), Codes{});
    Drop();
    tree.SendMessage(WM_ACTIVATEAPP, FALSE);
    EXPECT_FALSE(IsDown());
    EXPECT_EQ(Told(), (Codes{CBN_SELENDCANCEL}));
    Drop();
    tree.SendMessage(WM_CLOSE);
    EXPECT_FALSE(IsDown());
    EXPECT_NE(tree.m_hWnd, nullptr);
    // A handler that moves the parent is not told twice, and the tree does not stay where the parent was.
    for (const int ending : {CBN_SELENDCANCEL, CBN_SELENDOK}) {
        Drop();
        tree.SelectItem(tree.GetRootItem());
        host.SetAnswer([this, ending](UINT message, WPARAM wParam, LPARAM) -> std::optional<LRESULT> {
            if (message == WM_COMMAND && HIWORD(wParam) == ending) {
                host.SetWindowPos(nullptr, 60, 60, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
                EXPECT_FALSE(tree.IsWindowVisible());
            }
            return {};
        });
        host.Clear();
        ending == CBN_SELENDOK ? combo.OnSelection() : combo.OnCancel();
        EXPECT_EQ(Told(), Codes{ending});
    }
}

TEST_F(ComboTreeControl, WheelTurnsTheTree)
{
    Open();
    for (int i = 0; i < 40; ++i)
        combo.AddString(std::to_wstring(i).c_str());
    Drop();
    MessageSpy spy(tree.m_hWnd);
    host.RecordAlso(WM_MOUSEWHEEL);
    MoveTo(ClientToScreen(host.m_hWnd, {250, 220}));
    Wheel(-WHEEL_DELTA);
    EXPECT_GE(spy.Count(WM_MOUSEWHEEL), 1);
    EXPECT_NE(tree.GetFirstVisibleItem(), tree.GetRootItem());
    EXPECT_TRUE(host.Messages(WM_MOUSEWHEEL).empty());
    EXPECT_TRUE(IsDown());
}

TEST_F(ComboTreeControl, SurvivesWhatHandlersDo)
{
    // The codes at which the handler acts; the input that leads to them.
    const auto click = [this] { Click(On(L"b")); };
    const auto doubleClick = [this] { DoubleClick(On(L"b")); };
    const std::vector<std::pair<int, std::function<void()>>> cases{
        {CBN_SETFOCUS, [this] { ::SetFocus(host.m_hWnd), combo.ShowTree(); }},
        {CBN_DROPDOWN, [this] { combo.HideTree(), combo.ShowTree(); }},
        {CBN_SELCHANGE, click},
        {CBN_SELCHANGE, [] { Key(VK_DOWN); }},
        {CBN_DBLCLK, doubleClick},
        {CBN_SELENDOK, doubleClick},
        {CBN_SELENDOK, [] { Key(VK_RETURN); }},
        {CBN_SELENDOK, [] { Key(VK_TAB); }},
        {CBN_SELENDCANCEL, [] { Key(VK_ESCAPE); }},
        {CBN_SELENDCANCEL, [this] { host.SendMessage(WM_LBUTTONDOWN); }},
        {CBN_CHECKCHANGE, [] { Key(VK_SPACE); }},
        {CBN_CHECKCHANGE, [this] { Click(OnBox(L"b")); }},
        {CBN_EDITCHANGE, [] { Type(L"q"); }},
        {CBN_SELENDOK, [this] { Click(combo.GetDropDownButton().m_hWnd); }},
        {CBN_KILLFOCUS, [this] { combo.HideTree(), combo.EnableWindow(FALSE); }},
    };
    const std::vector<std::function<void()>> deeds{
        [this] { combo.DestroyWindow(); }, [this] { tree.DestroyWindow(); }, [this] { host.DestroyWindow(); },
        [this] { combo.ResetContent(); },  [this] { combo.HideTree(); },     [this] { EndCombo(); }};
    for (const auto& deed : deeds)
        for (const auto& [code, input] : cases) {
            OpenDropped({L"a", L"b"}, true);
            tree.SelectItem(Find(L"a"));
            bool acted = false;
            host.SetAnswer([&](UINT message, WPARAM wParam, LPARAM) -> std::optional<LRESULT> {
                if (message == WM_COMMAND && HIWORD(wParam) == code && !acted) {
                    acted = true;
                    deed();
                }
                return {};
            });
            input();
            EXPECT_TRUE(acted) << code;
            host.SetAnswer({});
            ReviveCombo();
            if (combo.m_hWnd != nullptr && tree.m_hWnd == nullptr) {
                EXPECT_FALSE(combo.GetDroppedState());
                combo.ShowTree();
                EXPECT_EQ(combo.AddString(L"x"), nullptr);
                EXPECT_EQ(combo.DeleteString(TVI_ROOT), -1);
                EXPECT_EQ(combo.GetLastItem(nullptr), nullptr);
            }
            if (host.m_hWnd != nullptr)
                host.DestroyWindow();
            EXPECT_FALSE(combo.GetDroppedState());
        }
}

TEST_F(ComboTreeControl, SurvivesItsEndWhileItIsShownAndHidden)
{
    const std::vector<std::function<void()>> deeds{[this] { combo.DestroyWindow(); }, [this] { EndCombo(); }};
    for (const auto& deed : deeds)
        for (const UINT flag : {SWP_SHOWWINDOW, SWP_HIDEWINDOW}) {
            Open();
            DoAtShow hook(flag, deed);
            ASSERT_TRUE(hook.HookWindow(tree.m_hWnd));
            combo.ShowTree();
            if (flag == SWP_HIDEWINDOW)
                combo.HideTree();
            ReviveCombo();
            EXPECT_EQ(combo.m_hWnd, nullptr);
            EXPECT_FALSE(combo.GetDroppedState());
            host.DestroyWindow();
        }
}

TEST_F(ComboTreeControl, PartsAreSafeOnTheirOwn)
{
    Open();
    ComboTreeHook hook;
    EXPECT_TRUE(hook.HookWindow(host.m_hWnd));
    for (const UINT message : {WM_LBUTTONDOWN, WM_MOUSEWHEEL, WM_COMMAND})
        EXPECT_EQ(host.SendMessage(message), 0);
    ComboTreeDropList list;
    EXPECT_FALSE(list.CreateEx(0, WS_CHILD, CRect(0, 0, 9, 9), &host, 1));
    EXPECT_EQ(list.m_hWnd, nullptr);
    EXPECT_FALSE(list.IsChoosable(nullptr));
}

TEST_F(ComboTreeControl, DeletionMovesTheTextOn)
{
    Open();
    Add({L"a", L"b", L"c/d"});
    tree.SelectItem(Find(L"b"));
    combo.SetWindowText(L"b");
    EXPECT_EQ(combo.DeleteString(nullptr), -1);
    EXPECT_EQ(combo.DeleteString(Find(L"a")), 0);
    EXPECT_EQ(combo.GetWindowText(), L"b");
    EXPECT_EQ(Told(), Codes{});
    EXPECT_EQ(combo.DeleteString(Find(L"b")), 0);
    ASSERT_NE(combo.GetCurSel(), nullptr);
    EXPECT_EQ(combo.GetWindowText(), combo.GetCurrentTreeItem());
    EXPECT_EQ(Told(), (Codes{CBN_SELCHANGE}));
    EXPECT_EQ(combo.DeleteString(Find(L"c")), 0);
    EXPECT_EQ(combo.GetWindowText(), L"");
    EXPECT_EQ(Told(), Codes{});
    combo.SetWindowText(L"kept");
    combo.AddString(L"e");
    combo.ResetContent();
    EXPECT_EQ(tree.GetCount(), 0u);
    EXPECT_EQ(combo.GetWindowText(), L"kept");
}
