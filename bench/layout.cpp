// The resizers on a dialog with many controls, against one batch of moves to places known beforehand.
#include "bench/bench.h"
#include "bench/bench_dialog.h"
#include "vgui/dialogs/dlg_resizer.h"

#include <string_view>
#include <vector>

namespace
{

constexpr int kColumns = 20;
constexpr int kCellWidth = 22; // pixels
constexpr int kCellHeight = 16;
constexpr int kGrowth = 40; // what the dialog grows by and shrinks again

class Scene
{
public:
    explicit Scene(int count)
    {
        bench::Open(
            m_dialog,
            support::DialogTemplate(L"bench", 320, 300,
                                    WS_POPUP | WS_CAPTION | WS_THICKFRAME | WS_CLIPCHILDREN | DS_SETFONT),
            CPoint(20, 20));
        m_dialog.GetClientRect(m_client);
        for (int i = 0; i < count; ++i) {
            const CPoint corner(i % kColumns * kCellWidth, i / kColumns * kCellHeight);
            m_places.emplace_back(corner, CSize(kCellWidth - 2, kCellHeight - 2));
            m_controls.push_back(::CreateWindowW(L"Static", L"text", WS_CHILD | WS_VISIBLE, corner.x,
                                                 corner.y, kCellWidth - 2, kCellHeight - 2, m_dialog.m_hWnd,
                                                 nullptr, nullptr, nullptr));
        }
        m_resizer.Init(&m_dialog);
        m_exact.Init(&m_dialog);
        for (const HWND control : m_controls) {
            m_resizer.AddControl(CWnd::FromHandle(control), VDlgResizer::MoveAll);
            m_exact.AddControl(CWnd::FromHandle(control), 0.5, 0.5, 0.25, 0.25);
        }
    }
    Scene(const Scene&) = delete;
    Scene& operator=(const Scene&) = delete;
    ~Scene() { m_dialog.DestroyWindow(); }

    template <class Resizer>
    bench::Work ByResizer(Resizer& resizer)
    {
        return {[this, &resizer] {
            for (const int growth : {kGrowth, 0}) {
                resizer.ResizeAll(SIZE_RESTORED, m_client.right + growth, m_client.bottom + growth);
                Paint();
            }
        }};
    }
    bench::Work ByBatch(int dx, int dy)
    {
        return {[this, dx, dy] {
            for (const bool grown : {true, false}) {
                MoveAll(grown ? CPoint(dx, dy) : CPoint(0, 0));
                m_dialog.Invalidate();
                Paint();
            }
        }};
    }
    VDlgResizer m_resizer;
    VDlgResizerEx m_exact;

private:
    void MoveAll(CPoint offset)
    {
        HDWP batch = ::BeginDeferWindowPos(static_cast<int>(m_controls.size()));
        for (size_t i = 0; i < m_controls.size(); ++i) {
            const CRect place = m_places[i] + offset;
            batch = ::DeferWindowPos(batch, m_controls[i], nullptr, place.left, place.top, place.Width(),
                                     place.Height(), SWP_NOZORDER);
        }
        ::EndDeferWindowPos(batch);
    }
    void Paint() { ::RedrawWindow(m_dialog.m_hWnd, nullptr, nullptr, RDW_ALLCHILDREN | RDW_UPDATENOW); }

    bench::StockDlg m_dialog;
    CRect m_client;
    std::vector<HWND> m_controls;
    std::vector<CRect> m_places;
};

void Run()
{
    constexpr std::string_view kYardstick = "DeferWindowPos to places known beforehand";
    for (const int count : bench::Sizes({5, 50, 500})) {
        Scene scene(count);
        bench::Compare("VDlgResizer, grown, shrunk and painted", count, "controls",
                       scene.ByResizer(scene.m_resizer), {kYardstick, scene.ByBatch(kGrowth, kGrowth)});
        bench::Compare("VDlgResizerEx, grown, shrunk and painted", count, "controls",
                       scene.ByResizer(scene.m_exact), {kYardstick, scene.ByBatch(kGrowth / 2, kGrowth / 4)});
    }
}

const bench::Subject g_subject("layout", &Run);

} // namespace
