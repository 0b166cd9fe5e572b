#include "tests/controls/themed_fixture.h"

#include <functional>
#include <memory>

using namespace support;
using namespace themed;

namespace
{

class OpenListBox : public VListBox
{
public:
    using VListBox::ItemAt;
    using VListBox::m_nTipItem;
    using VListBox::m_pToolTip;
};

// A control that ends while it handles a message, as one does whose parent is told and destroys it.
template <class Control>
struct Vanishing : Control {
    UINT last = 0;
    std::function<void()> vanish;
    LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        const LRESULT result = Control::DefWindowProc(message, wParam, lParam);
        if (message == last) {
            const std::function<void()> end = vanish; // which frees this one's
            end();
        }
        return result;
    }
};

class ThemedControls : public Fixture
{
};

} // namespace

TEST_F(ThemedControls, FramesFollowTheEnabledState)
{
    const COLORREF background = ::GetSysColor(COLOR_BTNFACE);
    VEdit edit;
    ASSERT_TRUE(edit.CreateEx(WS_EX_CLIENTEDGE, L"EDIT", L"", kChild, kPlace, &host, kId));
    ExpectEnabledFrame(edit, VGM.Edit.clrFrame);
    edit.EnableWindow(FALSE);
    ExpectDisabledFrame(edit, background);
    edit.EnableWindow(TRUE);
    ExpectEnabledFrame(edit, VGM.Edit.clrFrame);
    edit.DestroyWindow();

    VListBox list;
    CreateList(list, WS_VSCROLL | LBS_DISABLENOSCROLL);
    ExpectEnabledFrame(list, VGM.List.clrFrame);
    list.EnableWindow(FALSE);
    ExpectDisabledFrame(list, background);
    list.DestroyWindow();

    VListCtrl items;
    ASSERT_TRUE(items.CreateEx(WS_EX_CLIENTEDGE, kChild | LVS_REPORT, kPlace, &host, kId));
    items.InsertColumn(0, L"column", LVCFMT_LEFT, 80);
    ExpectEnabledFrame(items, VGM.List.clrFrame);
    items.EnableWindow(FALSE);
    ExpectEnabledFrame(items, VGM.List.clrFrame);
}

TEST_F(ThemedControls, EditWithoutAnEdgeHasNoFrame)
{
    VEdit edit;
    ASSERT_TRUE(edit.CreateEx(0, L"EDIT", L"", kChild, kPlace, &host, kId));
    PumpMessages();
    EXPECT_EQ(CaptureWindow(edit.m_hWnd).Count(VGM.Edit.clrFrame), 0);
}

TEST_F(ThemedControls, ListItemsCarryTheirData)
{
    VListBox list;
    CreateList(list);
    EXPECT_EQ(list.AddItem(L"one", 7), 0);
    EXPECT_EQ(list.AddItem(L"two", -1), 1);
    EXPECT_EQ(list.InsertItem(0, L"zero", 7), 0);
    EXPECT_EQ(list.InsertItem(-1, nullptr, ~ULONG_PTR{0} >> 1), 3);
    EXPECT_EQ(list.FindItemByItemData(7), 0);
    EXPECT_EQ(list.FindItemByItemData(-1), 2);
    EXPECT_EQ(list.FindItemByItemData(8), -1);
    CString text;
    list.GetItem(2, text);
    EXPECT_EQ(text, L"two");
    list.GetItem(99, text);
    EXPECT_EQ(text, L"");

    EXPECT_LT(list.InsertItem(50, L"beyond", 5), 0);
    EXPECT_EQ(list.GetCount(), 4);
    EXPECT_EQ(list.FindItemByItemData(5), -1);
    EXPECT_EQ(list.FindItemByItemData(7), 0);
}

TEST_F(ThemedControls, SetTextKeepsEverythingButTheText)
{
    for (const DWORD style : {DWORD{0}, DWORD{LBS_EXTENDEDSEL}, DWORD{LBS_SORT}}) {
        VListBox list;
        CreateList(list, style | WS_VSCROLL | LBS_NOTIFY);
        for (const LPCWSTR text : {L"a", L"b", L"c", L"d", L"e", L"f", L"g", L"h", L"i", L"j", L"k", L"l"})
            list.AddItem(text, text[0]);
        const bool multiple = style == LBS_EXTENDEDSEL;
        if (multiple)
            list.SetSel(1, TRUE);
        else
            list.SetCurSel(1);
        list.SetTopIndex(3);
        const int top = list.GetTopIndex();
        host.RecordAlso(WM_DELETEITEM);
        host.Clear();

        for (const int missing : {-1, 12, 4711})
            list.SetText(missing, L"nobody");
        list.SetText(1, L"new");
        list.SetText(2, nullptr);
        EXPECT_EQ(list.GetCount(), 12);
        EXPECT_EQ(list.GetItemData(1), DWORD_PTR{'b'});
        EXPECT_EQ(list.GetItemData(2), DWORD_PTR{'c'});
        EXPECT_EQ(list.GetItemData(3), DWORD_PTR{'d'});
        CString text;
        list.GetItem(1, text);
        EXPECT_EQ(text, L"new");
        list.GetItem(2, text);
        EXPECT_EQ(text, L"");
        for (const int missing : {-1, 12}) {
            text = L"former";
            list.GetItem(missing, text);
            EXPECT_EQ(text, L"") << missing;
        }
        EXPECT_EQ(list.GetTopIndex(), top);
        EXPECT_EQ(multiple ? list.GetSel(1) > 0 : list.GetCurSel() == 1, true);
        EXPECT_EQ(multiple ? list.GetSel(2) > 0 : list.GetCurSel() == 2, false);
        // An owner that frees the item data when told of a deletion must not hear of this one.
        EXPECT_TRUE(host.Messages(WM_DELETEITEM).empty());
        EXPECT_TRUE(host.CommandCodes(kId).empty());
        list.ResetContent();
    }
}

TEST_F(ThemedControls, ExactSearchSelects)
{
    VListBox list;
    CreateList(list);
    VComboBox combo;
    CreateCombo(combo);
    for (const LPCWSTR text : {L"abc", L"ab", L"AB"}) {
        list.AddItem(text, 0);
        combo.AddString(text);
    }
    const struct {
        int start;
        LPCWSTR text;
        int found;
    } cases[] = {{-1, L"ab", 1},    {1, L"ab", 2},       {2, L"ab", 1},
                 {-1, L"a", -1},    {-77, L"abc", 0},    {4711, L"abc", 0},
                 {-1, nullptr, -1}, {INT_MIN, L"ab", 1}, {INT_MAX, L"x", -1}};
    for (const auto& c : cases) {
        list.SetCurSel(-1);
        combo.SetCurSel(-1);
        EXPECT_EQ(list.SelectStringExact(c.start, c.text), c.found) << c.start;
        EXPECT_EQ(list.GetCurSel(), c.found);
        EXPECT_EQ(combo.SelectStringExact(c.start, c.text), c.found) << c.start;
        EXPECT_EQ(combo.GetCurSel(), c.found);
    }
}

TEST_F(ThemedControls, TipFollowsTheMouseOverTheItems)
{
    SkinnedHost dlg;
    DialogTemplate t(L"tips", 200, 120);
    t.Button(kOtherId, L"elsewhere", 120, 10, 60, 14);
    t.Item(L"STATIC", L"", kId, 10, 10, 80, 80, 0);
    ASSERT_TRUE(dlg.Open(t));
    OpenListBox list;
    ASSERT_TRUE(list.Create(kChild | LBS_NOINTEGRALHEIGHT, PlaceOf(*dlg.GetDlgItem(kId)), &dlg, kId + 10));
    for (const LPCWSTR text : {L"直线", L"arc", L"text"})
        list.AddItem(text, 0);
    EXPECT_EQ(list.EnableTips(), 1);
    EXPECT_EQ(list.EnableTips(), 1);
    CToolTipCtrl& tip = dlg.GetToolTipCtrl();
    EXPECT_EQ(list.m_pToolTip, &tip);
    EXPECT_EQ(tip.GetToolCount(), 2);

    const auto tipText = [&] { return TipText(tip, &list); };
    const auto hoverItem = [&](int item) {
        CRect rect;
        list.GetItemRect(item, rect);
        MoveTo(ClientToScreen(list.m_hWnd, rect.CenterPoint()));
    };
    hoverItem(1);
    EXPECT_EQ(tipText(), L"arc");
    EXPECT_TRUE(PumpUntil([&] { return tip.IsWindowVisible() != FALSE; }));
    hoverItem(0);
    EXPECT_EQ(tipText(), L"直线");
    EXPECT_EQ(list.m_nTipItem, 0);
    list.SetText(0, L"折线");
    EXPECT_EQ(tipText(), L"");
    MoveTo(CenterOf(list.m_hWnd));
    hoverItem(0);
    EXPECT_EQ(tipText(), L"折线");
    CRect client;
    list.GetClientRect(client);
    MoveTo(ClientToScreen(list.m_hWnd, {5, client.bottom - 3})); // below the last item
    EXPECT_EQ(tipText(), L"");
    EXPECT_EQ(list.m_nTipItem, -1);
    hoverItem(0);
    EXPECT_EQ(tipText(), L"折线");

    // What comes or goes above the tip's item moves it away.
    const std::pair<std::function<void()>, bool> changes[] = {{[&] { list.AddString(L"end"); }, false},
                                                              {[&] { list.DeleteString(2); }, false},
                                                              {[&] { list.InsertString(0, L"first"); }, true},
                                                              {[&] { list.DeleteString(0); }, true},
                                                              {[&] { list.ResetContent(); }, true}};
    for (const auto& [change, forgets] : changes) {
        hoverItem(0);
        hoverItem(1);
        EXPECT_EQ(list.m_nTipItem, 1);
        change();
        EXPECT_EQ(list.m_nTipItem, forgets ? -1 : 1);
        EXPECT_EQ(tipText().IsEmpty() != FALSE, forgets);
    }

    MoveTo(CenterOf(::GetDlgItem(dlg.m_hWnd, kOtherId)));
    EXPECT_TRUE(PumpUntil([&] { return tip.IsWindowVisible() == FALSE; }));

    list.DestroyWindow();
    EXPECT_EQ(list.m_pToolTip, nullptr);
    EXPECT_EQ(tip.GetToolCount(), 1);
}

TEST_F(ThemedControls, ListAnswersItemsBeyondSixteenBits)
{
    OpenListBox list;
    CreateList(list, LBS_NODATA | LBS_OWNERDRAWFIXED);
    constexpr int kTop = 0x10000 - 3;
    list.SendMessage(LB_SETCOUNT, 0x10000 + 50);
    list.SetTopIndex(kTop);
    for (const int item : {kTop, kTop + 3, kTop + 4}) {
        CRect rect;
        list.GetItemRect(item, rect);
        EXPECT_EQ(list.ItemAt(rect.CenterPoint()), item);
    }
    list.SetTopIndex(0);
    EXPECT_EQ(list.ItemAt({5, 2}), 0);
}

TEST_F(ThemedControls, TipsDoNotStayWithAFormerWindow)
{
    OpenListBox list;
    OpenComboBox combo;
    for (int round = 0; round < 2; ++round) {
        SkinnedHost dlg;
        DialogTemplate t(L"tips", 200, 120);
        ASSERT_TRUE(dlg.Open(t));
        const auto open = [](CWnd& control, LPCWSTR windowClass, CWnd& parent) {
            ASSERT_TRUE(control.SubclassWindow(::CreateWindowW(windowClass, L"", kChild, 10, 10, 80, 60,
                                                               parent.m_hWnd, nullptr, nullptr, nullptr)));
        };
        open(list, L"LISTBOX", dlg);
        list.EnableTips();
        EXPECT_EQ(list.m_pToolTip, &dlg.GetToolTipCtrl());
        EXPECT_EQ(dlg.GetToolTipCtrl().GetToolCount(), 2); // the dialog's own and the list's
        open(combo, L"COMBOBOX", host);
        combo.SetTooltipText(L"tip", FALSE);
        EXPECT_EQ(TipText(combo.m_toolTip, &combo), L"tip");
        list.UnsubclassWindow();
        ::DestroyWindow(combo.UnsubclassWindow());
    }
}

TEST_F(ThemedControls, ControlsMayEndWhileTheyHandleAMessage)
{
    auto list = std::make_unique<Vanishing<OpenListBox>>();
    CreateList(*list);
    list->AddString(L"item");
    list->m_nTipItem = 0;
    list->last = WM_MOUSEMOVE;
    list->vanish = [&] { list.reset(); };
    list->SendMessage(WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(5, 90));
    EXPECT_EQ(list, nullptr);

    auto group = std::make_unique<Vanishing<VGroup>>();
    ASSERT_TRUE(group->Create(L"", kChild | BS_GROUPBOX, kPlace, &host, kId));
    group->last = WM_ENABLE;
    group->vanish = [&] { group.reset(); };
    group->EnableWindow(FALSE);
    EXPECT_EQ(group, nullptr);
}

TEST_F(ThemedControls, ListWithoutASkinnedParentHasNoTips)
{
    OpenListBox list;
    CreateList(list);
    EXPECT_EQ(list.EnableTips(), 1);
    EXPECT_EQ(list.m_pToolTip, nullptr);
}

TEST_F(ThemedControls, DialogReplacesItsControlsAndMarksTheTippedCombo)
{
    SkinnedHost dlg;
    DialogTemplate t(L"replaced", 200, 120);
    t.Item(L"BUTTON", L"组(&G)", 10, 5, 5, 80, 50, BS_GROUPBOX);
    t.Edit(11, 10, 20, 60, 12);
    t.Item(L"COMBOBOX", L"", 12, 100, 20, 60, 60, CBS_DROPDOWNLIST);
    t.Item(L"LISTBOX", L"", 13, 10, 60, 60, 40, LBS_NOTIFY | WS_BORDER);
    ASSERT_TRUE(dlg.Open(t));
    EXPECT_TRUE(dlg.GetDlgItem(10)->IsKindOf(RUNTIME_CLASS(VGroup)));
    EXPECT_TRUE(dlg.GetDlgItem(11)->IsKindOf(RUNTIME_CLASS(VEdit)));
    EXPECT_TRUE(dlg.GetDlgItem(12)->IsKindOf(RUNTIME_CLASS(VComboBox)));
    EXPECT_TRUE(dlg.GetDlgItem(13)->IsKindOf(RUNTIME_CLASS(VListBox)));

    VComboBox& combo = *static_cast<VComboBox*>(dlg.GetDlgItem(12));
    ExpectComboFace(combo, false, VGM.Combo.clrGlyph);
    combo.SetTooltipText(L"former", TRUE);
    combo.SetTooltipText(L"tip", TRUE);
    EXPECT_EQ(TipText(dlg.GetToolTipCtrl(), &combo), L"tip");
    ExpectComboFace(combo, false, RGB(255, 0, 0));
    combo.EnableWindow(FALSE);
    ExpectDisabledFrame(combo, dlg.GetBkClr());
}

TEST_F(ThemedControls, GroupLeavesItsControlsAndTheInsideAlone)
{
    constexpr COLORREF kInside = RGB(1, 2, 3);
    host.SetAnswer([&](UINT message, WPARAM wParam, LPARAM) -> std::optional<LRESULT> {
        if (message != WM_ERASEBKGND)
            return {};
        CRect client;
        host.GetClientRect(client);
        CDC::FromHandle(reinterpret_cast<HDC>(wParam))->FillSolidRect(client, kInside);
        return 1;
    });
    CStatic control;
    ASSERT_TRUE(control.Create(L"", kChild | SS_WHITERECT, CRect(30, 18, 90, 60), &host));
    VGroup group;
    ASSERT_TRUE(group.Create(L"", kChild | BS_GROUPBOX, kPlace, &host, kId));
    host.Invalidate();
    PumpMessages();
    for (const bool title : {false, true}) {
        group.SetUseTitle(title);
        group.EnableWindow(title);
        group.SetWindowText(title ? L"a caption" : L"");
        PumpMessages();
        group.RedrawWindow(); // alone, after everything else
        const DibSurface shown = CaptureClient(host.m_hWnd);
        EXPECT_EQ(shown.Count(kWhite, CRect(30, 18, 90, 60)), 60 * 42);
        EXPECT_EQ(shown.Pixel(kPlace.left + 80, kPlace.bottom - 1), VGM.Group.clrLine);
        EXPECT_EQ(shown.Pixel(kPlace.left, kPlace.CenterPoint().y), VGM.Group.clrLine);
        EXPECT_EQ(shown.Pixel(kPlace.CenterPoint() + CSize(40, 0)), kInside);
        EXPECT_EQ(shown.Pixel(kPlace.right - 4, kPlace.top + 10) == kInside, !title);
    }
    group.MoveWindow(kPlace.left, kPlace.top, kPlace.Width() + 40, kPlace.Height() + 40);
    PumpMessages();
    const DibSurface grown = CaptureClient(host.m_hWnd);
    EXPECT_EQ(grown.Count(VGM.Group.clrLine, CRect(25, 80, 215, 155)), 0) << "the former frame is left";
    EXPECT_EQ(grown.Count(kWhite, CRect(30, 18, 90, 60)), 60 * 42);
}

TEST_F(ThemedControls, GroupCaptionFollowsStyleAndFont)
{
    const int third = kPlace.Width() / 3;
    CFont large;
    ASSERT_TRUE(large.CreatePointFont(240, L"Arial"));
    for (const int title : {0, 1}) {
        int place = 0;
        for (const DWORD style : {BS_LEFT, BS_CENTER, BS_RIGHT}) {
            VGroup group;
            ASSERT_TRUE(group.Create(L"HH", kChild | BS_GROUPBOX | style, kPlace, &host, kId));
            group.SetUseTitle(title);
            group.SetTitleHeight(40);
            const auto ink = [&](int part) {
                PumpMessages();
                const CRect area(part * third, 0, (part + 1) * third, kPlace.Height());
                return CaptureClient(group.m_hWnd).Count(VGM.Group.clrTitleText, area);
            };
            for (int part = 0; part < 3; ++part)
                EXPECT_EQ(ink(part) > 0, part == place) << style << ' ' << title;
            const int letters = ink(place);
            group.SetFont(&large);
            EXPECT_GT(ink(place), letters);
            ++place;
        }
    }
}

TEST_F(ThemedControls, GroupsShareALineButNotAButtons)
{
    CRect half = kPlace;
    half.right = kPlace.CenterPoint().x + 1;
    VGroup left, right;
    ASSERT_TRUE(left.Create(L"", kChild | BS_GROUPBOX, half, &host, kId));
    half.OffsetRect(half.Width() - 1, 0);
    ASSERT_TRUE(right.Create(L"", kChild | BS_GROUPBOX, half, &host, kOtherId));
    CButton button;
    ASSERT_TRUE(button.Create(L"", kChild, CRect(half.left - 5, 40, half.left + 15, 60), &host, 502));
    host.Invalidate();
    PumpMessages();
    const DibSurface shown = CaptureClient(host.m_hWnd);
    EXPECT_EQ(shown.Pixel(half.left, 90), VGM.Group.clrLine);
    EXPECT_NE(shown.Pixel(half.left, 50), VGM.Group.clrLine);
}

TEST_F(ThemedControls, GroupCaptionFitsTheBox)
{
    VGroup group;
    ASSERT_TRUE(group.Create(L"一 &Caption", kChild | BS_GROUPBOX, kPlace, &host, kId));
    EXPECT_EQ(group.SetTitleHeight(30), 20);
    EXPECT_EQ(group.SetTitleHeight(20), 30);
    EXPECT_EQ(group.SetUseTitle(1), 0);
    const auto ink = [&](COLORREF color) {
        PumpMessages();
        return CaptureClient(group.m_hWnd).Count(color);
    };
    for (const int title : {0, 1}) {
        group.SetUseTitle(title);
        group.SetWindowText(L"一 &Caption");
        const int letters = ink(VGM.Group.clrTitleText);
        EXPECT_GT(letters, 20);
        group.EnableWindow(FALSE);
        EXPECT_EQ(ink(VGM.Group.clrTitleText), 0);
        EXPECT_EQ(ink(VGM.Common.clrGray), letters);
        group.EnableWindow(TRUE);
        group.SetWindowText(CString(L'W', 400)); // as wide as a box can show, with an ellipsis
        PumpMessages();
        const DibSurface shown = CaptureClient(group.m_hWnd);
        EXPECT_EQ(shown.Count(VGM.Group.clrTitleText, CRect(shown.Width() - 6, 0, shown.Width(), 40)), 0);
        EXPECT_GT(shown.Count(VGM.Group.clrTitleText, CRect(shown.Width() - 30, 0, shown.Width(), 40)), 0);
    }
    for (const int height : {INT_MIN, 0, 1, 4000, INT_MAX}) { // a band that fills the box ends in a line
        group.SetTitleHeight(height);
        PumpMessages();
        const COLORREF last = ClientPixel(group.m_hWnd, {2, kPlace.Height() - 2});
        EXPECT_EQ(last == VGM.Group.clrLine, height > 1) << height;
    }
}
