// The page of OpenGL: a lit ring that turns, drawn into a bitmap and in a window of its own.
#include "gallery/pages.h"
#include "gallery/resource.h"

#include <cmath>
#include <GL/gl.h>
#include <numbers>

namespace
{

constexpr UINT_PTR kSpinTimer = 1;
constexpr UINT kSpinInterval = 30;     // milliseconds
constexpr float kSpinStep = 3;         // degrees
constexpr float kFirstAngle = 35;      // degrees
constexpr SIZE kWindowSize{320, 300};  // pixels
constexpr SIZE kWindowOffset{120, 60}; // from the dialog
constexpr int kSegments = 64;
constexpr int kSides = 32;
constexpr double kRingRadius = 1;
constexpr double kTubeRadius = 0.42;
constexpr double kViewSize = 1.7; // half of what the smaller side shows

// A ring around the z axis under one light from the upper left.
class RingGL : public CGL
{
public:
    int OnInit() override
    {
        constexpr float lightPosition[] = {-2, 3, 4, 0};
        constexpr float ambient[] = {0.15f, 0.15f, 0.2f, 1};
        constexpr float shine[] = {1, 1, 1, 1};
        constexpr float shininess = 40;
        ::glClearColor(0.93f, 0.95f, 0.98f, 1);
        ::glEnable(GL_DEPTH_TEST);
        ::glEnable(GL_LIGHTING);
        ::glEnable(GL_LIGHT0);
        ::glEnable(GL_COLOR_MATERIAL);
        ::glLightfv(GL_LIGHT0, GL_POSITION, lightPosition);
        ::glLightModelfv(GL_LIGHT_MODEL_AMBIENT, ambient);
        ::glMaterialfv(GL_FRONT_AND_BACK, GL_SPECULAR, shine);
        ::glMaterialf(GL_FRONT_AND_BACK, GL_SHININESS, shininess);
        return TRUE;
    }

    int OnResize(int cx, int cy) override
    {
        const double smaller = cx < cy ? cx : cy;
        const double x = kViewSize * cx / smaller;
        const double y = kViewSize * cy / smaller;
        ::glViewport(0, 0, cx, cy);
        ::glMatrixMode(GL_PROJECTION);
        ::glLoadIdentity();
        ::glOrtho(-x, x, -y, y, -2 * kViewSize, 2 * kViewSize);
        ::glMatrixMode(GL_MODELVIEW);
        return TRUE;
    }

    int OnRender() override
    {
        ::glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        ::glLoadIdentity();
        ::glRotatef(-55, 1, 0, 0);
        ::glRotatef(m_angle, 0, 1, 0.3f);
        for (int segment = 0; segment < kSegments; ++segment) {
            const bool even = segment / 4 % 2 == 0;
            ::glColor3f(even ? 0.16f : 0.95f, even ? 0.42f : 0.60f, even ? 0.75f : 0.15f);
            ::glBegin(GL_QUAD_STRIP);
            for (int side = 0; side <= kSides; ++side) {
                Vertex(segment, side);
                Vertex(segment + 1, side);
            }
            ::glEnd();
        }
        return TRUE;
    }

    float m_angle = kFirstAngle; // degrees

private:
    static void Vertex(int segment, int side)
    {
        const double around = 2 * std::numbers::pi * segment / kSegments;
        const double tube = 2 * std::numbers::pi * side / kSides;
        const double radius = kRingRadius + kTubeRadius * std::cos(tube);
        ::glNormal3d(std::cos(tube) * std::cos(around), std::cos(tube) * std::sin(around), std::sin(tube));
        ::glVertex3d(radius * std::cos(around), radius * std::sin(around), kTubeRadius * std::sin(tube));
    }
};

// A window of any size that the ring fills, drawn on the window itself. OpenGL has it to itself: not every
// system mixes OpenGL and other drawing in one window.
class RingWnd : public CWnd
{
    DECLARE_MESSAGE_MAP()

public:
    // Creates the window unless it is there, and shows it in front. False when there is no OpenGL for it.
    bool Open(CWnd& owner)
    {
        if (m_hWnd == nullptr) {
            CRect place;
            owner.GetWindowRect(place);
            place.OffsetRect(kWindowOffset);
            const LPCTSTR windowClass = AfxRegisterWndClass(0, ::LoadCursor(nullptr, IDC_ARROW));
            if (!CreateEx(0, windowClass, L"窗口中的 OpenGL in a window", WS_OVERLAPPEDWINDOW, place.left,
                          place.top, kWindowSize.cx, kWindowSize.cy, owner.m_hWnd, nullptr))
                return false;
            if (!m_gl.Create(this, PFD_TYPE_RGBA,
                             PFD_DRAW_TO_WINDOW | PFD_SUPPORT_OPENGL | PFD_DOUBLEBUFFER)) {
                DestroyWindow();
                return false;
            }
            m_gl.Init();
        }
        ShowWindow(SW_SHOW);
        SetForegroundWindow();
        return true;
    }

    void Show(float angle)
    {
        m_gl.m_angle = angle;
        if (m_hWnd != nullptr)
            Invalidate(FALSE);
    }

protected:
    afx_msg BOOL OnEraseBkgnd(CDC*) { return TRUE; }
    afx_msg void OnSize(UINT nType, int cx, int cy)
    {
        CWnd::OnSize(nType, cx, cy);
        m_gl.Resize(cx, cy);
        Invalidate(FALSE);
    }
    afx_msg void OnPaint()
    {
        const CPaintDC dc(this);
        m_gl.Render();
    }
    afx_msg void OnDestroy()
    {
        m_gl.Destroy();
        CWnd::OnDestroy();
    }

private:
    RingGL m_gl;
};

BEGIN_MESSAGE_MAP(RingWnd, CWnd)
    ON_WM_ERASEBKGND()
    ON_WM_SIZE()
    ON_WM_PAINT()
    ON_WM_DESTROY()
END_MESSAGE_MAP()

// A bitmap that the ring is drawn into.
class RingPicture
{
public:
    ~RingPicture() { Destroy(); }

    bool Create(CSize size)
    {
        Destroy();
        BITMAPINFO info{};
        info.bmiHeader = {sizeof(BITMAPINFOHEADER), size.cx, size.cy, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        void* bits = nullptr;
        if (!m_bitmap.Attach(::CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0)) ||
            !m_memory.CreateCompatibleDC(nullptr))
            return false;
        m_memory.SelectObject(&m_bitmap);
        if (!m_gl.Create(&m_memory, PFD_TYPE_RGBA, PFD_DRAW_TO_BITMAP | PFD_SUPPORT_OPENGL | PFD_SUPPORT_GDI))
            return false;
        m_gl.Init();
        return m_gl.Resize(size.cx, size.cy) != FALSE;
    }

    CDC& Draw(float angle)
    {
        m_gl.m_angle = angle;
        m_gl.Render();
        return m_memory;
    }

    void Destroy()
    {
        m_gl.Destroy();
        m_memory.DeleteDC();
        m_bitmap.DeleteObject();
    }

private:
    CDC m_memory;
    CBitmap m_bitmap;
    RingGL m_gl;
};

class OpenGlDlg : public PageDlg
{
    DECLARE_MESSAGE_MAP()

public:
    explicit OpenGlDlg(CWnd* owner) : PageDlg(IDD_OPENGL, owner) { m_bHelpBtn = false; }

    void Shoot(ShotWriter& shots)
    {
        // At rest, so that the pictures are the same each time.
        CheckDlgButton(IDC_GL_SPIN, BST_UNCHECKED);
        OnSpin();
        Turn(kFirstAngle);
        shots.Take(*this, L"opengl");
        if (m_window.Open(*this)) {
            m_window.Show(kFirstAngle);
            shots.Take(m_window, L"opengl-window");
            m_window.DestroyWindow();
        } else {
            shots.Fail(L"opengl-window");
        }
    }

protected:
    BOOL OnInitDialog() override
    {
        PageDlg::OnInitDialog();
        CWnd* const place = GetDlgItem(IDC_GL_PICTURE);
        place->GetWindowRect(m_picturePlace);
        ScreenToClient(m_picturePlace);
        m_drawable = m_picture.Create(m_picturePlace.Size());
        if (m_drawable)
            place->DestroyWindow();
        else
            place->SetWindowText(L"不能用 OpenGL 画到位图。 OpenGL does not draw on bitmaps here.");
        CheckDlgButton(IDC_GL_SPIN, BST_CHECKED);
        OnSpin();
        return TRUE;
    }

    afx_msg void OnSpin()
    {
        if (IsDlgButtonChecked(IDC_GL_SPIN) == BST_CHECKED)
            SetTimer(kSpinTimer, kSpinInterval, nullptr);
        else
            KillTimer(kSpinTimer);
    }
    afx_msg void OnShowWindowed()
    {
        if (!m_window.Open(*this))
            MessageBox(L"没有 OpenGL。 There is no OpenGL here.");
    }
    afx_msg void OnTimer(UINT_PTR nIDEvent)
    {
        if (nIDEvent == kSpinTimer)
            Turn(std::fmod(m_angle + kSpinStep, 360.0f));
        else
            PageDlg::OnTimer(nIDEvent);
    }
    afx_msg void OnPaint()
    {
        CPaintDC dc(this);
        if (m_drawable)
            dc.BitBlt(m_picturePlace.left, m_picturePlace.top, m_picturePlace.Width(),
                      m_picturePlace.Height(), &m_picture.Draw(m_angle), 0, 0, SRCCOPY);
    }
    afx_msg void OnDestroy()
    {
        m_picture.Destroy();
        PageDlg::OnDestroy();
    }

private:
    void Turn(float angle)
    {
        m_angle = angle;
        InvalidateRect(m_picturePlace, FALSE);
        m_window.Show(angle);
    }

    RingWnd m_window;
    RingPicture m_picture;
    CRect m_picturePlace; // client coordinates
    float m_angle = kFirstAngle;
    bool m_drawable = false;
};

BEGIN_MESSAGE_MAP(OpenGlDlg, PageDlg)
    ON_BN_CLICKED(IDC_GL_SPIN, &OpenGlDlg::OnSpin)
    ON_BN_CLICKED(IDC_GL_WINDOW, &OpenGlDlg::OnShowWindowed)
    ON_WM_TIMER()
    ON_WM_PAINT()
    ON_WM_DESTROY()
END_MESSAGE_MAP()

} // namespace

GalleryPage OpenGlPage()
{
    return {L"三维图形 OpenGL",
            L"受光照的旋转圆环，画到位图或窗口。\nA lit ring that turns, on a bitmap and on a window.",
            [](const PageHost& host) -> std::unique_ptr<PageDlg> {
                return std::make_unique<OpenGlDlg>(&host.window);
            },
            [](PageDlg& page, const PageHost&, ShotWriter& shots) {
                static_cast<OpenGlDlg&>(page).Shoot(shots);
            }};
}
