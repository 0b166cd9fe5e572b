// The mouse driven over controls. Stock controls do not answer to it, so the yardstick's are told to paint
// themselves again whenever the mouse comes or goes, which is what a host would do for the same look.
#include "bench/bench.h"
#include "bench/bench_dialog.h"
#include "vgui/vgui.h"

#include <memory>
#include <string>
#include <vector>

namespace
{

const CSize kButtonSize(28, 24); // pixels
constexpr int kMovesInside = 1000;
const CRect kListPlace(10, 60, 210, 260);

enum class Repaints { ByItself, ByHost };

std::vector<HWND> NewButtons(CWnd& dialog, int count, DWORD style)
{
    std::vector<HWND> buttons;
    for (int i = 0; i < count; ++i)
        buttons.push_back(::CreateWindowW(L"Button", L"on", WS_CHILD | WS_VISIBLE | style,
                                          10 + i % 20 * (kButtonSize.cx + 2),
                                          10 + i / 20 * (kButtonSize.cy + 2), kButtonSize.cx, kButtonSize.cy,
                                          dialog.m_hWnd, nullptr, nullptr, nullptr));
    return buttons;
}

void PutMouseOn(HWND control)
{
    CRect place;
    ::GetWindowRect(control, &place);
    ::SetCursorPos(place.CenterPoint().x, place.CenterPoint().y);
}

// The mouse comes to each control and leaves it for the next one; every picture is painted.
bench::Work Passing(const std::vector<HWND>& controls, Repaints repaints)
{
    return {[&controls, repaints] {
        for (const HWND control : controls) {
            for (const UINT message : {WM_MOUSEMOVE, WM_MOUSELEAVE}) {
                ::SendMessageW(control, message, 0, message == WM_MOUSEMOVE ? MAKELPARAM(5, 5) : 0);
                if (repaints == Repaints::ByHost)
                    ::InvalidateRect(control, nullptr, TRUE);
                ::UpdateWindow(control);
            }
        }
    }};
}

// The mouse moves on one control; nothing changes after the first move.
bench::Work MovingInside(HWND control)
{
    return {[control] {
        for (int i = 0; i < kMovesInside; ++i) {
            ::SendMessageW(control, WM_MOUSEMOVE, 0, MAKELPARAM(3 + i % 20, 3 + i % 15));
            ::UpdateWindow(control);
        }
    }};
}

template <class Control>
void MeasureButtons(bench::DialogPair& dialogs, const char* name, DWORD style)
{
    for (const int count : bench::Sizes({1, 10, 100})) {
        const std::vector<HWND> stock = NewButtons(dialogs.stock, count, style);
        const std::vector<HWND> windows = NewButtons(dialogs.ours, count, style);
        std::vector<std::unique_ptr<Control>> ours;
        for (const HWND window : windows) {
            ours.push_back(std::make_unique<Control>());
            ours.back()->SubclassWindow(window);
        }
        bench::RepaintAll(dialogs.stock.m_hWnd);
        bench::RepaintAll(dialogs.ours.m_hWnd);
        bench::Compare(std::string(name) + ", mouse over each and away", count, "controls",
                       Passing(windows, Repaints::ByItself),
                       {"stock control, painted when told to", Passing(stock, Repaints::ByHost)});
        if (count == 1) {
            PutMouseOn(windows[0]);
            bench::Compare(std::string(name) + ", moves on one", kMovesInside, "moves",
                           MovingInside(windows[0]),
                           {"stock control, nothing painted", MovingInside(stock[0])});
        }
        for (const auto& control : ours)
            control->DestroyWindow();
        for (const HWND window : stock)
            ::DestroyWindow(window);
    }
}

void FillTree(CTreeCtrl& tree, int count)
{
    for (int i = 0; i < count; ++i)
        tree.InsertItem((L"item " + std::to_wstring(i)).c_str());
}

// The mouse goes down the items that are seen.
bench::Work PassingItems(CTreeCtrl& tree, Repaints repaints)
{
    return {[&tree, repaints] {
        HTREEITEM last = nullptr;
        for (HTREEITEM item = tree.GetFirstVisibleItem(); item != nullptr;
             item = tree.GetNextVisibleItem(item)) {
            CRect place;
            if (!tree.GetItemRect(item, place, TRUE) || place.bottom > kListPlace.Height())
                break;
            tree.SendMessage(WM_MOUSEMOVE, 0, MAKELPARAM(place.CenterPoint().x, place.CenterPoint().y));
            if (repaints == Repaints::ByHost) {
                tree.InvalidateRect(place);
                if (last != nullptr && tree.GetItemRect(last, place, TRUE))
                    tree.InvalidateRect(place);
                last = item;
            }
            tree.UpdateWindow();
        }
        tree.SendMessage(WM_MOUSELEAVE);
        tree.UpdateWindow();
    }};
}

void MeasureTrees(bench::DialogPair& dialogs)
{
    constexpr DWORD kStyle = WS_CHILD | WS_VISIBLE | WS_BORDER | TVS_HASLINES | TVS_HASBUTTONS;
    for (const int count : bench::Sizes({100, 1000, 10000})) {
        CTreeCtrl stock;
        VTreeCtrl ours;
        bench::Require(stock.Create(kStyle, kListPlace, &dialogs.stock, 1) &&
                           ours.Create(kStyle, kListPlace, &dialogs.ours, 1),
                       "creating a tree");
        FillTree(stock, count);
        FillTree(ours, count);
        bench::RepaintAll(stock.m_hWnd);
        bench::RepaintAll(ours.m_hWnd);
        bench::Compare("VTreeCtrl, mouse down the items seen", count, "items",
                       PassingItems(ours, Repaints::ByItself),
                       {"stock tree, two items painted when told to", PassingItems(stock, Repaints::ByHost)});
        stock.DestroyWindow();
        ours.DestroyWindow();
    }
}

void Run()
{
    bench::DialogPair dialogs;
    dialogs.ours.SetForegroundWindow();
    MeasureButtons<VButton>(dialogs, "VButton", BS_PUSHBUTTON);
    MeasureButtons<VCheckBox>(dialogs, "VCheckBox", BS_AUTOCHECKBOX);
    MeasureTrees(dialogs);
}

const bench::Subject g_subject("hover", &Run);

} // namespace
