// Every control class painted again, frame and all, against its stock counterpart with the same content.
#include "bench/bench.h"
#include "bench/bench_dialog.h"
#include "vgui/vgui.h"

#include <array>
#include <memory>
#include <string>

namespace
{

const CRect kPlace(20, 20, 220, 44);       // what shows one line
const CRect kLargePlace(20, 20, 220, 220); // what shows many
constexpr int kLines = 20;
constexpr UINT kFirstId = 100;
constexpr COLORREF kTipBack = RGB(255, 255, 225);

using Fill = void (*)(HWND control);
using Maker = std::unique_ptr<CWnd> (*)(CWnd& dialog, const CRect& place, LPCWSTR windowClass, DWORD style);

// One class: what it replaces, and how both get their content.
struct ControlRow {
    const char* name;
    const char* yardstick;
    LPCWSTR windowClass; // the stock one
    DWORD style;
    CRect place;
    Maker make;
    Fill fill;
};

std::wstring Line(int number)
{
    return L"第 line " + std::to_wstring(number);
}

HWND NewStock(CWnd& dialog, const CRect& place, LPCWSTR windowClass, DWORD style)
{
    const HWND control = ::CreateWindowW(windowClass, L"确定 text", WS_CHILD | WS_VISIBLE | style, place.left,
                                         place.top, place.Width(), place.Height(), dialog.m_hWnd,
                                         reinterpret_cast<HMENU>(UINT_PTR{kFirstId}), nullptr, nullptr);
    bench::Require(control != nullptr, "creating a stock control");
    ::SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(dialog.GetFont()->m_hObject), TRUE);
    return control;
}

template <class Control>
std::unique_ptr<CWnd> Subclassed(CWnd& dialog, const CRect& place, LPCWSTR windowClass, DWORD style)
{
    auto control = std::make_unique<Control>();
    bench::Require(control->SubclassWindow(NewStock(dialog, place, windowClass, style)), "subclassing");
    return control;
}

std::unique_ptr<CWnd> NewComboTree(CWnd& dialog, const CRect& place, LPCWSTR, DWORD)
{
    auto combo = std::make_unique<ComboTree>();
    bench::Require(combo->Create(place, 200, 200, &dialog, kFirstId), "creating a tree combo box");
    combo->SelectString(L"text", combo->AddString(L"text"));
    return combo;
}

template <class List>
std::unique_ptr<CWnd> NewList(CWnd& dialog, const CRect& place, LPCWSTR, DWORD style)
{
    auto list = std::make_unique<List>();
    bench::Require(list->Create(WS_CHILD | WS_VISIBLE | style, place, &dialog, kFirstId),
                   "creating a property list");
    list->SetFont(dialog.GetFont());
    return list;
}

std::unique_ptr<CWnd> NewPropertyList(CWnd& dialog, const CRect& place, LPCWSTR windowClass, DWORD style)
{
    std::unique_ptr<CWnd> list = NewList<VPropertyList>(
        dialog, place, windowClass, style | LBS_OWNERDRAWFIXED | LBS_HASSTRINGS | LBS_NOINTEGRALHEIGHT);
    for (int i = 0; i < kLines; ++i)
        static_cast<VPropertyList&>(*list).AddItem(Line(i).c_str(), Line(i).c_str(), L"",
                                                   VPropertyList::PIET_EDIT);
    return list;
}

std::unique_ptr<CWnd> NewSplitter(CWnd& dialog, const CRect& place, LPCWSTR, DWORD)
{
    auto bar = std::make_unique<CSplitterBar>();
    bench::Require(bar->Create(WS_CHILD | WS_VISIBLE, place, &dialog, kFirstId, TRUE), "creating a splitter");
    return bar;
}

std::unique_ptr<CWnd> NewOutline(CWnd& dialog, const CRect& place, LPCWSTR windowClass, DWORD style)
{
    std::unique_ptr<CWnd> outline = Subclassed<VOutlineEx>(dialog, place, windowClass, style);
    for (int i = 0; i < 6; ++i)
        static_cast<VOutlineEx&>(*outline).AddItem(Line(i).c_str(), 0);
    return outline;
}

void FillList(HWND control)
{
    for (int i = 0; i < kLines; ++i)
        ::SendMessageW(control, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(Line(i).c_str()));
}

void FillCombo(HWND control)
{
    ::SendMessageW(control, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(L"确定 text"));
    ::SendMessageW(control, CB_SETCURSEL, 0, 0);
}

void FillReport(HWND control)
{
    CListCtrl list;
    list.Attach(control);
    list.InsertColumn(0, L"name", LVCFMT_LEFT, 90);
    list.InsertColumn(1, L"value", LVCFMT_LEFT, 90);
    for (int i = 0; i < kLines; ++i) {
        list.InsertItem(i, Line(i).c_str());
        list.SetItemText(i, 1, Line(i).c_str());
    }
    list.Detach();
}

void FillTree(HWND control)
{
    for (int i = 0; i < kLines; ++i) {
        TVINSERTSTRUCTW insert{TVI_ROOT, TVI_LAST, {}};
        std::wstring text = Line(i);
        insert.item.mask = TVIF_TEXT;
        insert.item.pszText = text.data();
        ::SendMessageW(control, TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&insert));
    }
}

void FillProgress(HWND control)
{
    ::SendMessageW(control, PBM_SETPOS, 60, 0);
}

void FillTools(HWND control)
{
    ::SendMessageW(control, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
    for (int i = 0; i < 6; ++i) {
        TBBUTTON button{};
        button.idCommand = i + 1;
        button.fsState = TBSTATE_ENABLED;
        button.iString = reinterpret_cast<INT_PTR>(L"工具");
        button.iBitmap = I_IMAGENONE;
        ::SendMessageW(control, TB_ADDBUTTONSW, 1, reinterpret_cast<LPARAM>(&button));
    }
}

void FillTabs(HWND control)
{
    for (int i = 0; i < 3; ++i) {
        TCITEMW item{};
        std::wstring text = Line(i);
        item.mask = TCIF_TEXT;
        item.pszText = text.data();
        ::SendMessageW(control, TCM_INSERTITEMW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&item));
    }
}

void FillNothing(HWND) {}

constexpr DWORD kListStyle = WS_BORDER | WS_VSCROLL;
constexpr DWORD kTreeStyle = WS_BORDER | TVS_HASLINES | TVS_HASBUTTONS | TVS_LINESATROOT;
constexpr DWORD kBarStyle = CCS_NORESIZE | CCS_NODIVIDER | CCS_NOPARENTALIGN | TBSTYLE_FLAT | TBSTYLE_LIST;

const ControlRow kRows[] = {
    {"VButtonST", "push button", L"Button", BS_PUSHBUTTON, kPlace, &Subclassed<VButtonST>, &FillNothing},
    {"VButton", "push button", L"Button", BS_PUSHBUTTON, kPlace, &Subclassed<VButton>, &FillNothing},
    {"VFlatButton", "push button", L"Button", BS_PUSHBUTTON, kPlace, &Subclassed<VFlatButton>, &FillNothing},
    {"VCheckBox", "check box", L"Button", BS_AUTOCHECKBOX, kPlace, &Subclassed<VCheckBox>, &FillNothing},
    {"VRadioBtn", "radio button", L"Button", BS_AUTORADIOBUTTON, kPlace, &Subclassed<VRadioBtn>,
     &FillNothing},
    {"VUrlEmailBtn", "push button", L"Button", BS_PUSHBUTTON, kPlace, &Subclassed<VUrlEmailBtn>,
     &FillNothing},
    {"VGroup", "group box", L"Button", BS_GROUPBOX, kLargePlace, &Subclassed<VGroup>, &FillNothing},
    {"VEdit", "edit field", L"Edit", WS_BORDER, kPlace, &Subclassed<VEdit>, &FillNothing},
    {"VComboBox", "combo box", L"ComboBox", CBS_DROPDOWNLIST, kPlace, &Subclassed<VComboBox>, &FillCombo},
    {"VListBox, 20 lines", "list box", L"ListBox", kListStyle, kLargePlace, &Subclassed<VListBox>, &FillList},
    {"VListCtrl, 20 rows", "list control", WC_LISTVIEWW, WS_BORDER | LVS_REPORT, kLargePlace,
     &Subclassed<VListCtrl>, &FillReport},
    {"VTreeCtrl, 20 items", "tree", WC_TREEVIEWW, kTreeStyle, kLargePlace, &Subclassed<VTreeCtrl>, &FillTree},
    {"VCheckTreeCtrl, 20 items", "tree with check boxes", WC_TREEVIEWW, kTreeStyle | TVS_CHECKBOXES,
     kLargePlace,
     [](CWnd& dialog, const CRect& place, LPCWSTR windowClass, DWORD style) {
         return Subclassed<VCheckTreeCtrl>(dialog, place, windowClass, style & ~DWORD{TVS_CHECKBOXES});
     },
     &FillTree},
    {"VProgressCtrl", "progress bar", PROGRESS_CLASSW, 0, kPlace, &Subclassed<VProgressCtrl>, &FillProgress},
    {"VSpinButtonCtrl", "up-down control", UPDOWN_CLASSW, 0, kPlace, &Subclassed<VSpinButtonCtrl>,
     &FillNothing},
    {"VDateTimeCtrl", "date and time picker", DATETIMEPICK_CLASSW, WS_BORDER, kPlace,
     &Subclassed<VDateTimeCtrl>, &FillNothing},
    {"VToolBar, 6 buttons", "tool bar", TOOLBARCLASSNAMEW, kBarStyle, kPlace, &Subclassed<VToolBar>,
     &FillTools},
    {"VTabCtrl, 3 tabs", "tab control", WC_TABCONTROLW, 0, kLargePlace, &Subclassed<VTabCtrl>, &FillTabs},
    {"CSplitterBar", "grey static", L"Static", SS_GRAYRECT, kPlace, &NewSplitter, &FillNothing},
    {"ComboTree", "combo box", L"ComboBox", CBS_DROPDOWNLIST, kPlace, &NewComboTree, &FillNothing},
    {"VPropertyList, 20 rows", "list control of two columns", WC_LISTVIEWW, kListStyle | LVS_REPORT,
     kLargePlace,
     [](CWnd& dialog, const CRect& place, LPCWSTR windowClass, DWORD) {
         return NewPropertyList(dialog, place, windowClass, kListStyle);
     },
     &FillReport},
    {"VPropertyGrid, 20 rows", "list control of two columns", WC_LISTVIEWW, kListStyle | LVS_REPORT,
     kLargePlace, &NewList<VPropertyGrid>, &FillReport},
    {"VOutlineEx, 6 items", "list box", L"ListBox", WS_BORDER, kLargePlace,
     [](CWnd& dialog, const CRect& place, LPCWSTR, DWORD) { return NewOutline(dialog, place, L"Static", 0); },
     &FillList},
};

bench::Work Repainting(HWND window)
{
    return {[window] { bench::RepaintAll(window); }};
}

void MeasureControl(bench::DialogPair& dialogs, const ControlRow& row)
{
    const HWND stock = NewStock(dialogs.stock, row.place, row.windowClass, row.style);
    row.fill(stock);
    const std::unique_ptr<CWnd> ours = row.make(dialogs.ours, row.place, row.windowClass, row.style);
    std::array<wchar_t, 64> windowClass{};
    ::GetClassNameW(ours->m_hWnd, windowClass.data(), static_cast<int>(windowClass.size()));
    if (::lstrcmpiW(windowClass.data(), row.windowClass) == 0)
        row.fill(ours->m_hWnd);
    bench::Compare(row.name, 0, "", Repainting(ours->m_hWnd), {row.yardstick, Repainting(stock)});
    ::DestroyWindow(stock);
    ours->DestroyWindow();
}

// Both show the picture pixel by pixel, without stretching it.
void MeasurePicture(bench::DialogPair& dialogs)
{
    constexpr DWORD kSize = 160; // pixels
    CDib dib;
    dib.Create(kSize, kSize, 24);
    VBmpStatic ours;
    bench::Require(ours.SubclassWindow(NewStock(dialogs.ours, kLargePlace, L"Static", 0)) &&
                       ours.SetDib(&dib),
                   "showing a picture");
    ours.SetScaling(VBmpStatic::Scaling::Actual);
    const HWND stock = NewStock(dialogs.stock, kLargePlace, L"Static", SS_BITMAP | SS_CENTERIMAGE);
    ::SendMessageW(stock, STM_SETIMAGE, IMAGE_BITMAP,
                   reinterpret_cast<LPARAM>(dib.GetBitmap()->GetSafeHandle()));
    bench::Compare("VBmpStatic, 160 x 160 pixels", 0, "", Repainting(ours.m_hWnd),
                   {"static with a bitmap", Repainting(stock)});
    ours.DestroyWindow();
    ::DestroyWindow(stock);
}

void MeasureTip(bench::DialogPair& dialogs)
{
    const CPoint place(700, 500);
    CXTTipWindow ours;
    bench::Require(ours.Create(&dialogs.ours), "creating a tip window");
    ours.SetTipText(L"title", L"one line\nanother line");
    ours.ShowTipWindow(place);
    CToolTipCtrl stock;
    stock.Create(&dialogs.stock, TTS_ALWAYSTIP);
    TTTOOLINFOW tool{};
    tool.cbSize = TTTOOLINFOW_V2_SIZE;
    tool.uFlags = TTF_TRACK | TTF_ABSOLUTE;
    tool.hwnd = dialogs.stock.m_hWnd;
    wchar_t text[] = L"one line\nanother line";
    tool.lpszText = text;
    stock.SendMessage(TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    stock.SendMessage(TTM_SETMAXTIPWIDTH, 0, 200);
    stock.SendMessage(TTM_TRACKPOSITION, 0, MAKELPARAM(100, 500));
    stock.SendMessage(TTM_TRACKACTIVATE, TRUE, reinterpret_cast<LPARAM>(&tool));
    bench::Require(ours.IsWindowVisible() && stock.IsWindowVisible(), "showing the tips");
    bench::Compare("CXTTipWindow, 2 lines and a title", 0, "", Repainting(ours.m_hWnd),
                   {"tooltip of 2 lines", Repainting(stock.m_hWnd)});
    stock.DestroyWindow();
    ours.DestroyWindow();
}

void Run()
{
    bench::DialogPair dialogs;
    const auto frame = [](CWnd& dialog) {
        return bench::Work{[&dialog] {
            ::RedrawWindow(dialog.m_hWnd, nullptr, nullptr,
                           RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_NOCHILDREN | RDW_UPDATENOW);
        }};
    };
    bench::Compare("VGuiDlg, frame, caption and background", 0, "", frame(dialogs.ours),
                   {"stock dialog", frame(dialogs.stock)});
    for (const ControlRow& row : kRows)
        MeasureControl(dialogs, row);
    MeasurePicture(dialogs);
    MeasureTip(dialogs);
}

const bench::Subject g_subject("repaint", &Run);

} // namespace
