#include "tests/support/dialog_template.h"
#include "tests/support/host_test.h"
#include "tests/support/modal.h"
#include "vgui/dialogs/dlg_resizer.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <functional>
#include <limits>
#include <memory>
#include <random>
#include <stdexcept>
#include <utility>
#include <vector>

using namespace support;

namespace
{

constexpr UINT kFirstId = 100;
constexpr int kRandomResizes = 5000;
const CSize kClient{400, 300};
const CRect kRect{50, 40, 250, 190};

class DlgResizer : public HostTest
{
protected:
    void SetUp() override { ASSERT_TRUE(host.Open(kClient)); }

    // A child of the host with the ids from kFirstId on.
    CWnd& AddChild(const CRect& rect = kRect)
    {
        auto child = std::make_unique<CStatic>();
        const auto id = kFirstId + static_cast<UINT>(m_children.size());
        EXPECT_TRUE(child->Create(L"", WS_CHILD | WS_VISIBLE, rect, &host, id));
        m_children.push_back(std::move(child));
        return *m_children.back();
    }

    // The host, which keeps its real size, tells the resizer that it changed by this much.
    static void ResizeBy(VDlgResizerBase& resizer, int dx, int dy)
    {
        const CSize size = resizer.GetClientSize();
        resizer.ResizeAll(SIZE_RESTORED, size.cx + dx, size.cy + dy);
    }

    std::vector<std::unique_ptr<CStatic>> m_children;
};

// The frame of a resizer over one window, whose layout step a test supplies.
class CustomResizer : public VDlgResizerBase
{
public:
    explicit CustomResizer(HWND control, std::function<void()> step) : m_control(control), m_step(step) {}
    using VDlgResizerBase::ISVALIDEWND;
    using VDlgResizerBase::SaveClientSize;
    HWND Dialog() const { return m_hWnd; }
    INT_PTR GetSize() const override { return 1; }

private:
    HWND GetAt(INT_PTR) const override { return m_control; }
    void ResizeControl(int, void*, int, int) override { m_step(); }

    HWND m_control;
    std::function<void()> m_step;
};

// A dialog as hosts write it.
class ResizingDlg : public CDialog
{
public:
    VDlgResizer anchors;
    VDlgResizerEx shares;

protected:
    BOOL OnInitDialog() override
    {
        CDialog::OnInitDialog();
        anchors.Init(this);
        anchors.AddControl(IDOK, VDlgResizer::MoveAll);
        anchors.AddControl(kFirstId, VDlgResizer::MoveRight | VDlgResizer::MoveBottom);
        shares.Init(this);
        shares.AddControl(IDCANCEL, 0.5, 0.5, 0.5, 0.5);
        return TRUE;
    }
    void OnOK() override { DestroyWindow(); }
    afx_msg void OnSize(UINT type, int cx, int cy)
    {
        CDialog::OnSize(type, cx, cy);
        anchors.ResizeAll(type, cx, cy);
        shares.ResizeAll(type, cx, cy);
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(ResizingDlg, CDialog)
    ON_WM_SIZE()
END_MESSAGE_MAP()

DialogTemplate ResizingTemplate()
{
    constexpr DWORD kStyle =
        WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | WS_MINIMIZEBOX | WS_MAXIMIZEBOX | DS_SETFONT;
    DialogTemplate t(L"Resizing", 200, 120, kStyle);
    t.Edit(kFirstId, 10, 10, 180, 80).Button(IDOK, L"OK", 90, 100, 50, 14);
    t.Button(IDCANCEL, L"Cancel", 30, 100, 50, 14);
    return t;
}

// Where a control must be: its edges as plain numbers, which keep a size below zero that a window cannot
// have.
struct Edges {
    int left, top, right, bottom;

    CRect Shown() const { return {left, top, std::max(left, right), std::max(top, bottom)}; }
};

} // namespace

// Sizes that range from nothing to more than the screen, so that controls shrink below nothing and come back.
TEST_F(DlgResizer, RandomResizesFollowTheTruncationRule)
{
    host.ShowWindow(SW_HIDE);
    const UINT rules[] = {0x1A, 0x35};
    VDlgResizer resizer;
    resizer.Init(&host);
    std::vector<Edges> model;
    for (const UINT flags : rules) {
        resizer.AddControl(&AddChild(), flags);
        model.push_back({kRect.left, kRect.top, kRect.right, kRect.bottom});
    }
    std::mt19937 random(20);
    std::uniform_int_distribution<int> width(0, 1600);
    std::uniform_int_distribution<int> height(0, 1200);
    CSize size = kClient;
    for (int round = 0; round < kRandomResizes; ++round) {
        const CSize next(width(random), height(random));
        resizer.ResizeAll(SIZE_RESTORED, next.cx, next.cy);
        const int dx = next.cx - size.cx;
        const int dy = next.cy - size.cy;
        const int half = (dx < 0 ? -1 : 1) * (std::abs(dx) >> 1);
        for (size_t i = 0; i < std::size(rules); ++i) {
            Edges& edges = model[i];
            edges.left += (rules[i] & 1) * dx + ((rules[i] >> 5) & 1) * half;
            edges.right += ((rules[i] >> 1) & 1) * dx + ((rules[i] >> 4) & 1) * half;
            edges.top += ((rules[i] >> 2) & 1) * dy;
            edges.bottom += ((rules[i] >> 3) & 1) * dy;
            ASSERT_EQ(PlaceOf(*m_children[i]), edges.Shown()) << "round " << round << ", rule " << rules[i];
        }
        size = next;
    }
}

TEST_F(DlgResizer, AControlOfNoSizeGetsItsLastOneBack)
{
    VDlgResizer anchors;
    anchors.Init(&host);
    CWnd& anchored = AddChild();
    anchors.AddControl(&anchored, VDlgResizer::MoveRight);
    VDlgResizerEx shares;
    shares.Init(&host);
    CWnd& shared = AddChild();
    shares.AddControl(&shared, 0, 1, 0, 0);
    CWnd& untouched = AddChild({10, 10, 10, 10});
    anchors.AddControl(&untouched, 0);

    ResizeBy(anchors, 4, 4);
    ResizeBy(shares, 4, 4);
    for (CWnd* child : {&anchored, &shared})
        child->SetWindowPos(nullptr, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOZORDER);
    ResizeBy(anchors, 6, 0);
    ResizeBy(shares, 6, 0);
    const CRect grown(kRect.left, kRect.top, kRect.right + 10, kRect.bottom);
    EXPECT_EQ(PlaceOf(anchored), grown);
    EXPECT_EQ(PlaceOf(shared), grown);
    EXPECT_EQ(PlaceOf(untouched), CRect(10, 10, 10, 10)); // there is no last size yet
}

TEST_F(DlgResizer, MinimisingRestoringAndMaximisingPutEverythingBack)
{
    ResizingDlg dlg;
    ASSERT_TRUE(dlg.CreateIndirect(ResizingTemplate().Get()));
    dlg.SetWindowPos(nullptr, 100, 100, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    dlg.ShowWindow(SW_SHOW);
    PumpMessages();
    const auto places = [&] {
        std::vector<CRect> rects;
        for (const int id : {int{kFirstId}, IDOK, IDCANCEL})
            rects.push_back(PlaceOf(*dlg.GetDlgItem(id)));
        return rects;
    };
    const std::vector<CRect> before = places();
    const CSize size = dlg.anchors.GetClientSize();

    dlg.ShowWindow(SW_MINIMIZE);
    PumpMessages();
    ASSERT_TRUE(dlg.IsIconic());
    EXPECT_EQ(dlg.anchors.GetClientSize(), size);
    EXPECT_EQ(dlg.shares.GetClientSize(), size);
    dlg.ShowWindow(SW_RESTORE);
    PumpMessages();
    EXPECT_EQ(places(), before);

    dlg.ShowWindow(SW_MAXIMIZE);
    PumpMessages();
    const CSize grown = dlg.anchors.GetClientSize() - size;
    ASSERT_GT(grown.cx, 100);
    const std::vector<CRect> large = places();
    EXPECT_EQ(large[0], CRect(before[0].TopLeft(), before[0].BottomRight() + grown));
    EXPECT_EQ(large[1], before[1] + CPoint(grown));
    EXPECT_EQ(large[2], before[2] + CPoint(grown.cx / 2, grown.cy / 2));
    dlg.ShowWindow(SW_RESTORE);
    PumpMessages();
    EXPECT_EQ(places(), before);
    dlg.DestroyWindow();
}

// All controls move when the batch ends: while the second is laid out, the first still has its old place.
TEST_F(DlgResizer, OneBatchMovesAllAndThenTheDialogIsInvalidated)
{
    CWnd& first = AddChild();
    CWnd& second = AddChild();
    std::vector<CRect> seen;
    struct Watch : VDlgResizerBase {
        Watch(HWND a, HWND b, std::function<void()> look) : windows{a, b}, onLayout(look) {}
        INT_PTR GetSize() const override { return 2; }
        HWND GetAt(INT_PTR index) const override { return windows[index]; }
        void ResizeControl(int index, void* batch, int dx, int dy) override
        {
            onLayout();
            EXPECT_NE(::DeferWindowPos(batch, windows[index], nullptr, dx, dy, 20, 20, SWP_NOZORDER),
                      nullptr);
            onLayout();
        }
        HWND windows[2];
        std::function<void()> onLayout;
    } resizer(first.m_hWnd, second.m_hWnd, [&] { seen.push_back(PlaceOf(first)); });
    resizer.Init(&host);
    host.UpdateWindow();
    ASSERT_FALSE(host.GetUpdateRect(nullptr));

    ResizeBy(resizer, 5, 6);
    EXPECT_EQ(seen, std::vector<CRect>(4, kRect));
    EXPECT_EQ(PlaceOf(first), CRect(CPoint(5, 6), CSize(20, 20)));
    EXPECT_EQ(PlaceOf(second), CRect(CPoint(5, 6), CSize(20, 20)));
    CRect dirty;
    EXPECT_TRUE(host.GetUpdateRect(dirty));
    EXPECT_EQ(dirty, CRect(CPoint(0, 0), kClient));
    MessageSpy spy(host.m_hWnd);
    host.UpdateWindow();
    EXPECT_EQ(spy.Count(WM_ERASEBKGND), 1);
}

TEST_F(DlgResizer, ExceptionsAreReportedAndMoveNothing)
{
    CWnd& child = AddChild();
    const std::function<void()> faults[] = {[] { AfxThrowInvalidArgException(); },
                                            [] { throw std::runtime_error("fault"); }, [] { throw 1; }};
    for (const auto& fault : faults) {
        CustomResizer resizer(child.m_hWnd, fault);
        resizer.Init(&host);
        auto answer = AnswerMessageBox(IDOK);
        EXPECT_NO_THROW(resizer.ResizeAll(SIZE_RESTORED, 500, 400));
        EXPECT_EQ(answer.Text(), L"控件异常!");
        EXPECT_EQ(resizer.GetClientSize(), CSize(500, 400));
        EXPECT_EQ(PlaceOf(child), kRect);
    }
}

TEST_F(DlgResizer, AnIndexBeyondTheRecordsIsAnException)
{
    struct Overstating : VDlgResizer {
        INT_PTR GetSize() const override { return VDlgResizer::GetSize() + 1; }
    } anchors;
    struct OverstatingEx : VDlgResizerEx {
        INT_PTR GetSize() const override { return VDlgResizerEx::GetSize() + 1; }
    } shares;
    CWnd& child = AddChild();
    anchors.Init(&host);
    anchors.AddControl(&child, VDlgResizer::MoveAll);
    shares.Init(&host);
    shares.AddControl(&child, 1, 1, 1, 1);
    for (VDlgResizerBase* resizer :
         {static_cast<VDlgResizerBase*>(&anchors), static_cast<VDlgResizerBase*>(&shares)}) {
        auto answer = AnswerMessageBox(IDOK);
        ResizeBy(*resizer, 10, 10);
        EXPECT_TRUE(answer.Shown());
        EXPECT_EQ(PlaceOf(child), kRect);
        EXPECT_THROW((void)resizer->SearchWnd(&host), CInvalidArgException*);
    }
}

TEST_F(DlgResizer, WindowsThatAreGoneOrMissingAreSkipped)
{
    VDlgResizer resizer;
    CWnd& child = AddChild();
    CWnd& doomed = AddChild();
    resizer.AddControl(&child, VDlgResizer::MoveAll); // no dialog yet
    resizer.Init(nullptr);
    CWnd empty;
    resizer.Init(&empty);
    resizer.ResizeAll(SIZE_RESTORED, 1, 1);
    EXPECT_EQ(resizer.GetSize(), 0);
    EXPECT_EQ(resizer.GetClientSize(), CSize(0, 0));

    resizer.Init(&host);
    resizer.AddControl(static_cast<CWnd*>(nullptr), VDlgResizer::MoveAll);
    resizer.AddControl(&empty, VDlgResizer::MoveAll);
    resizer.AddControl(4711, VDlgResizer::MoveAll);
    EXPECT_EQ(resizer.GetSize(), 0);
    resizer.AddControl(&doomed, VDlgResizer::MoveAll);
    resizer.AddControl(kFirstId, VDlgResizer::MoveAll);
    EXPECT_EQ(resizer.GetSize(), 2);
    doomed.DestroyWindow();
    ResizeBy(resizer, 8, 9);
    EXPECT_EQ(PlaceOf(child), kRect + CPoint(8, 9));
    EXPECT_EQ(resizer.SearchWnd(&doomed), -1);
    resizer.Resize(&doomed, 5, 5, VDlgResizer::MoveAll);
    resizer.SetControl(&empty, 0);
    resizer.SetControl(static_cast<CWnd*>(nullptr), 0);
    resizer.Resize(4711, 5, 5, 0);

    host.DestroyWindow();
    ResizeBy(resizer, 8, 9);
    resizer.AddControl(kFirstId, VDlgResizer::MoveAll);
    EXPECT_EQ(resizer.GetSize(), 2);
    EXPECT_EQ(resizer.GetClientSize(), kClient + CSize(8, 9)); // the layout of a dead dialog is none
}

// A control that reacts to its move by destroying its neighbour, the dialog, and the resizer itself.
TEST_F(DlgResizer, ControlsMayDestroyEverythingWhileTheyAreMoved)
{
    struct Bomb : CStatic {
        std::function<void()> onMoved;
        LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
        {
            if (message == WM_WINDOWPOSCHANGED && onMoved)
                std::exchange(onMoved, nullptr)();
            return CStatic::WindowProc(message, wParam, lParam);
        }
    } bomb;
    ASSERT_TRUE(bomb.Create(L"", WS_CHILD | WS_VISIBLE, kRect, &host, 1));
    CWnd& neighbour = AddChild();
    CWnd& last = AddChild();
    auto resizer = std::make_unique<VDlgResizerEx>();
    resizer->Init(&host);
    for (CWnd* child : {static_cast<CWnd*>(&bomb), &neighbour, &last})
        resizer->AddControl(child, 1, 1, 1, 1);
    bomb.onMoved = [&] { neighbour.DestroyWindow(); };
    ResizeBy(*resizer, 1, 2);
    EXPECT_EQ(neighbour.m_hWnd, nullptr);
    EXPECT_EQ(PlaceOf(last), kRect + CPoint(1, 2));

    bomb.onMoved = [&] {
        resizer.reset();
        host.DestroyWindow();
    };
    ResizeBy(*resizer, 1, 2);
    EXPECT_EQ(resizer, nullptr);
    EXPECT_EQ(host.m_hWnd, nullptr);
}

TEST_F(DlgResizer, RulesCanBeChangedAndControlsLaidOutSingly)
{
    VDlgResizer resizer;
    resizer.Init(&host);
    CWnd& child = AddChild();
    CWnd& other = AddChild();
    resizer.AddControl(kFirstId, VDlgResizer::MoveAll);
    resizer.AddControl(&child, VDlgResizer::MoveLeft); // a second record, which nobody finds
    resizer.AddControl(&other, SRESIZERSCALE(1, 2, 3, 4));
    EXPECT_EQ(resizer.GetSize(), 3);
    EXPECT_EQ(resizer.SearchWnd(&child), 0);
    EXPECT_EQ(resizer.SearchWnd(&other), 2);
    CSize size(-1, -1);
    EXPECT_FALSE(resizer.GetCtrlSize(&host, size));
    EXPECT_EQ(size, CSize(-1, -1));
    EXPECT_TRUE(resizer.GetCtrlSize(&child, size));
    EXPECT_EQ(size, CSize(0, 0));

    host.UpdateWindow();
    resizer.Resize(kFirstId, 10, 20, VDlgResizer::MoveRight);
    const CRect wider(kRect.left, kRect.top, kRect.right + 10, kRect.bottom);
    EXPECT_EQ(PlaceOf(child), wider);
    EXPECT_TRUE(child.GetUpdateRect(nullptr));
    EXPECT_EQ(PlaceOf(other), kRect);
    EXPECT_EQ(resizer.GetClientSize(), kClient);

    resizer.SetControl(&other, VDlgResizer::MoveBottom);
    ResizeBy(resizer, 10, 20);
    EXPECT_EQ(PlaceOf(other), CRect(kRect.left, kRect.top, kRect.right, kRect.bottom + 20));
    EXPECT_TRUE(resizer.GetCtrlSize(&other, size));
    EXPECT_EQ(size, PlaceOf(other).Size());
    EXPECT_EQ(PlaceOf(child), CRect(wider.left + 10, wider.top, wider.right, wider.bottom)); // the later one

    resizer.SetClientSize(1000, 1000);
    resizer.ResizeAll(SIZE_RESTORED, 1000, 1001);
    EXPECT_EQ(PlaceOf(other).bottom, kRect.bottom + 21);
}

TEST_F(DlgResizer, ScaleSwapsItsFirstTwoArgumentsOnceOnly)
{
    const SRESIZERSCALE scale(1, 2, 3, 4);
    SRESIZERSCALE copy(0, 0, 0, 0);
    copy = scale;
    for (const SRESIZERSCALE& s : {scale, copy}) {
        EXPECT_EQ(s.fLeft, 2);
        EXPECT_EQ(s.fRight, 1);
        EXPECT_EQ(s.fTop, 3);
        EXPECT_EQ(s.fBottom, 4);
    }
    VDlgResizer resizer;
    resizer.Init(&host);
    AddChild();
    resizer.AddControl(kFirstId, scale);
    ResizeBy(resizer, 10, 20);
    EXPECT_EQ(PlaceOf(*m_children[0]), kRect + CPoint(10, 20));
}

TEST_F(DlgResizer, CopiesGoTheirOwnWay)
{
    CWnd& child = AddChild();
    VDlgResizer resizer;
    resizer.Init(&host);
    resizer.AddControl(&child, VDlgResizer::MoveLeft);
    VDlgResizer copy(resizer);
    copy.SetControl(&child, VDlgResizer::MoveAll);
    ResizeBy(resizer, 10, 0);
    EXPECT_EQ(copy.GetClientSize(), kClient);
    ResizeBy(copy, 5, 5);
    EXPECT_EQ(PlaceOf(child), CRect(kRect.left + 15, kRect.top + 5, kRect.right + 5, kRect.bottom + 5));

    CustomResizer base(child.m_hWnd, [] {});
    base.Init(&host);
    base.SetClientSize(7, 8);
    CustomResizer assigned(nullptr, [] {});
    assigned = base;
    EXPECT_EQ(assigned.Dialog(), host.m_hWnd);
    EXPECT_EQ(assigned.GetClientSize(), CSize(7, 8));
    assigned.SaveClientSize();
    EXPECT_EQ(assigned.GetClientSize(), kClient);
    EXPECT_TRUE(CustomResizer::ISVALIDEWND(&child));
    host.DestroyWindow();
    EXPECT_FALSE(CustomResizer::ISVALIDEWND(&child));
    EXPECT_FALSE(CustomResizer::ISVALIDEWND(nullptr));
    base.SaveClientSize();
    EXPECT_EQ(base.GetClientSize(), CSize(0, 0));
}

TEST_F(DlgResizer, AbsurdSizesAndSharesAreHarmless)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    VDlgResizer anchors;
    VDlgResizerEx shares;
    anchors.Init(&host);
    shares.Init(&host);
    anchors.AddControl(&AddChild(), 0x3F);
    CWnd& still = AddChild();
    shares.AddControl(&still, nan, nan, nan, nan);
    shares.AddControl(&AddChild(), HUGE_VAL, -HUGE_VAL, 1e30, -1e30);
    for (const int size : {INT_MAX, INT_MIN, 0, INT_MAX, -1}) {
        anchors.ResizeAll(SIZE_RESTORED, size, size);
        shares.ResizeAll(SIZE_RESTORED, size, size);
    }
    EXPECT_EQ(PlaceOf(still), kRect);
    shares.SetControl(kFirstId + 1, 1, 1, 1, 1); // what was not a number has left no trace
    ResizeBy(shares, 3, 4);
    EXPECT_EQ(PlaceOf(still), kRect + CPoint(3, 4));
}

TEST_F(DlgResizer, FractionsAreCarriedToTheNextResize)
{
    VDlgResizerEx resizer;
    resizer.Init(&host);
    CWnd& child = AddChild();
    resizer.AddControl(&child, 0.5, 0.5, 0, 0);
    std::vector<int> lefts;
    for (const int dx : {1, 1, 1, -1, -1, -1, -1, -1}) {
        ResizeBy(resizer, dx, 9);
        EXPECT_EQ(PlaceOf(child).Size(), kRect.Size());
        EXPECT_EQ(PlaceOf(child).top, kRect.top);
        lefts.push_back(PlaceOf(child).left - kRect.left);
    }
    EXPECT_EQ(lefts, (std::vector<int>{0, 1, 1, 1, 1, 0, 0, -1}));

    // The control alone, by another rule, from a carry of nothing.
    resizer.Resize(kFirstId, 4, 8, 0.25F, 1.0F, 0.0F, 0.5F);
    EXPECT_EQ(PlaceOf(child), CRect(kRect.left, kRect.top, kRect.right + 3, kRect.bottom + 4));
}

TEST_F(DlgResizer, RandomResizesNeverDrift)
{
    struct Shares {
        double left, right, top, bottom;
    };
    const Shares rules[] = {{0.5, 0.5, 0.125, 1}, {1.0 / 3, 0.7, 0.01, 0.9}};
    host.ShowWindow(SW_HIDE);
    VDlgResizerEx resizer;
    resizer.Init(&host);
    for (const Shares& rule : rules)
        resizer.AddControl(&AddChild(), rule.left, rule.right, rule.top, rule.bottom);

    std::mt19937 random(22);
    std::uniform_int_distribution<int> width(kClient.cx, 1600);
    std::uniform_int_distribution<int> height(kClient.cy, 1200);
    // Single precision itself strays a little over so many sums.
    constexpr double kPixel = 1.01;
    for (int round = 0; round < kRandomResizes; ++round) {
        const CSize size(width(random), height(random));
        resizer.ResizeAll(SIZE_RESTORED, size.cx, size.cy);
        const CSize grown = size - kClient;
        for (size_t i = 0; i < std::size(rules); ++i) {
            const CRect rect = PlaceOf(*m_children[i]);
            ASSERT_LE(std::abs(kRect.left + grown.cx * rules[i].left - rect.left), kPixel) << round;
            ASSERT_LE(std::abs(kRect.right + grown.cx * rules[i].right - rect.right), kPixel) << round;
            ASSERT_LE(std::abs(kRect.top + grown.cy * rules[i].top - rect.top), kPixel) << round;
            ASSERT_LE(std::abs(kRect.bottom + grown.cy * rules[i].bottom - rect.bottom), kPixel) << round;
        }
    }
}
