// A dialog with many controls opened, painted again and closed.
#include "bench/bench.h"
#include "bench/bench_dialog.h"

#include <array>
#include <string>

namespace
{

constexpr int kColumns = 20;
constexpr int kCellWidth = 22; // dialog units
constexpr int kCellHeight = 13;
const CPoint kPlace(20, 20);

struct Kind {
    LPCWSTR windowClass;
    DWORD style;
};
constexpr auto kKinds = std::to_array<Kind>({
    {L"BUTTON", BS_PUSHBUTTON},
    {L"BUTTON", BS_AUTOCHECKBOX},
    {L"BUTTON", BS_AUTORADIOBUTTON},
    {L"EDIT", WS_BORDER | ES_AUTOHSCROLL},
    {L"STATIC", SS_LEFT},
    {L"COMBOBOX", CBS_DROPDOWNLIST},
    {L"LISTBOX", WS_BORDER},
});

support::DialogTemplate MixedTemplate(int count)
{
    const int rows = (count + kColumns - 1) / kColumns;
    support::DialogTemplate t(L"bench", kColumns * kCellWidth, rows * kCellHeight,
                              WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | DS_SETFONT);
    for (int i = 0; i < count; ++i) {
        const Kind& kind = kKinds[static_cast<size_t>(i) % kKinds.size()];
        t.Item(kind.windowClass, L"item " + std::to_wstring(i), static_cast<UINT>(100 + i),
               i % kColumns * kCellWidth, i / kColumns * kCellHeight, kCellWidth - 1, kCellHeight - 1,
               kind.style | WS_TABSTOP);
    }
    return t;
}

// One dialog that is opened and closed again and again.
template <class Dialog>
class Reopened
{
public:
    explicit Reopened(const support::DialogTemplate& t) : m_template(t) {}

    void Close()
    {
        if (m_dialog.m_hWnd != nullptr)
            m_dialog.DestroyWindow();
    }
    void OpenAnew()
    {
        Close();
        Open();
    }
    bench::Work Opening()
    {
        return {[this] { Open(); }, [this] { Close(); }};
    }
    bench::Work Closing()
    {
        return {[this] { Close(); }, [this] { OpenAnew(); }};
    }
    bench::Work Repainting()
    {
        return {[this] { bench::RepaintAll(m_dialog.m_hWnd); }};
    }

private:
    void Open() { bench::Open(m_dialog, m_template, kPlace); }

    const support::DialogTemplate& m_template;
    Dialog m_dialog;
};

void Run()
{
    for (const int count : bench::Sizes({5, 50, 500})) {
        const support::DialogTemplate t = MixedTemplate(count);
        Reopened<bench::StockDlg> stock(t);
        Reopened<bench::SkinnedDlg> ours(t);
        bench::Compare("opened and first painted", count, "controls", ours.Opening(),
                       {"stock dialog of the same template", stock.Opening()});
        ours.OpenAnew();
        stock.OpenAnew();
        bench::Compare("painted again", count, "controls", ours.Repainting(),
                       {"stock dialog of the same template", stock.Repainting()});
        bench::Compare("closed", count, "controls", ours.Closing(),
                       {"stock dialog of the same template", stock.Closing()});
        ours.Close();
        stock.Close();
    }
}

const bench::Subject g_subject("dialog", &Run);

} // namespace
