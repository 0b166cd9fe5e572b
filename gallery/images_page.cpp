// The page of images: opening, converting, processing, showing, revealing, wiping and saving a picture.
#include "gallery/image_canvas.h"
#include "gallery/pages.h"
#include "gallery/resource.h"
#include "gallery/sample_picture.h"

#include <afxdlgs.h>
#include <algorithm>
#include <iterator>

namespace
{

constexpr WORD kDepths[] = {1, 4, 8, 16, 24, 32};

// In the order of ImageView.
constexpr LPCWSTR kViews[] = {L"原样 Plain", L"拉伸 Stretched", L"透明 Transparent", L"抖动 Dithered",
                              L"调色板 Palette"};

constexpr LPCWSTR kEffects[] = {
    L"1 自上而下 Down",         L"2 自下而上 Up",
    L"3 自左而右 Right",        L"4 自右而左 Left",
    L"5 上下合拢 Close in y",   L"6 左右合拢 Close in x",
    L"7 向下滑入 Slide down",   L"8 向上滑入 Slide up",
    L"9 向右滑入 Slide right",  L"10 向左滑入 Slide left",
    L"11 上下滑入 Halves in y", L"12 左右滑入 Halves in x",
    L"13 左下右上 Down and up", L"14 上右下左 Right and left",
    L"15 竖条交错 Columns",     L"16 横条交错 Rows",
    L"17 竖百叶窗 Blind x",     L"18 横百叶窗 Blind y",
    L"19 马赛克 Mosaic",        L"20 淡入淡出 Fade",
};
constexpr int kMosaic = 19; // with this effect and the next one, the step is no distance
constexpr int kMaxStep = 64;
constexpr int kMaxDelay = 100; // milliseconds

struct Operation {
    LPCWSTR name;
    int (*apply)(CDib& dib);
};

constexpr Operation kOperations[] = {
    {L"旋转90° Rotate 90°", [](CDib& dib) { return dib.Rotate90(); }},
    {L"旋转180° Rotate 180°", [](CDib& dib) { return dib.Rotate180(); }},
    {L"旋转270° Rotate 270°", [](CDib& dib) { return dib.Rotate270(); }},
    {L"水平翻转 Flip horizontally", [](CDib& dib) { return dib.FlipHorz(); }},
    {L"垂直翻转 Flip vertically", [](CDib& dib) { return dib.FlipVert(); }},
    {L"缩小一半 Half size", [](CDib& dib) { return dib.Zoom(0.5, 0.5); }},
    {L"放大一半 One and a half", [](CDib& dib) { return dib.Zoom(1.5, 1.5); }},
    {L"加宽画布 Wider canvas",
     [](CDib& dib) {
         return dib.ChangeCanvasSize(dib.GetWidth() + 20, dib.GetHeight() + 20, CDib::CanvasCenter);
     }},
    {L"变亮 Brighter", [](CDib& dib) { return dib.AdjustBrightness(30); }},
    {L"变暗 Darker", [](CDib& dib) { return dib.AdjustBrightness(-30); }},
    {L"加强对比 More contrast", [](CDib& dib) { return dib.AdjustContrast(40); }},
    {L"偏红 Redder", [](CDib& dib) { return dib.AdjustColor(40, 0, 0, 0); }},
    {L"灰度 Grey", [](CDib& dib) { return dib.ChangeToGrayscale(CDib::GrayBT601, 0, 0, 0); }},
    {L"减为16色 16 colours", [](CDib& dib) { return dib.ColorQuantize(16); }},
    {L"减为256色 256 colours", [](CDib& dib) { return dib.ColorQuantize(256); }},
    {L"边缘增强 Edges", [](CDib& dib) { return dib.EdgeEnhance(60, CDib::EdgeBoth); }},
    {L"锐化 Sharpen", [](CDib& dib) { return dib.HighPass(60, CDib::HighPassLaplace4); }},
    {L"平滑 Smooth", [](CDib& dib) { return dib.LowPass(100, CDib::LowPassGauss); }},
    {L"中值滤波 Median", [](CDib& dib) { return dib.MedianFilter(5); }},
    {L"去掉蓝色 No blue", [](CDib& dib) { return dib.FilteRGB(CDib::ChannelRed | CDib::ChannelGreen); }},
    {L"红色通道 Red channel", [](CDib& dib) { return dib.SeparateRGB(CDib::ChannelRed); }},
};

// Replaces one object's image by a copy of another's.
bool CopyImage(const CDib& from, CDib& to)
{
    const HGLOBAL block = from.GetHandle();
    auto* const memory = block != nullptr ? static_cast<LPBYTE>(::GlobalLock(block)) : nullptr;
    if (memory == nullptr)
        return false;
    const bool isCopied = to.Create(memory) != FALSE;
    ::GlobalUnlock(block);
    return isCopied;
}

class ImagesDlg : public PageDlg
{
    DECLARE_MESSAGE_MAP()

public:
    explicit ImagesDlg(const PageHost& host) : PageDlg(IDD_IMAGES, &host.window), m_canvas(m_dib)
    {
        m_bHelpBtn = false;
    }

    void Shoot(ShotWriter& shots)
    {
        OnSample();
        m_original.SetSelect(TRUE);
        shots.Take(*this, L"images");
        ShootView(shots, ImageView::Dithered, L"images-dithered");
        m_dib.ColorQuantize(16);
        ShootView(shots, ImageView::Palette, L"images-palette");
        m_dib.LowPass(100, CDib::LowPassGauss);
        ShootView(shots, ImageView::Stretched, L"images-stretched");
        DrawSamplePicture(m_dib);
        m_dib.ChangeCanvasSize(m_dib.GetWidth() + 20, m_dib.GetHeight() + 20, CDib::CanvasCenter);
        ShootView(shots, ImageView::Transparent, L"images-transparent");
        OnSample();
    }

protected:
    void DoDataExchange(CDataExchange* pDX) override
    {
        PageDlg::DoDataExchange(pDX);
        DDX_Control(pDX, IDC_IMAGE_CANVAS, m_canvas);
        DDX_Control(pDX, IDC_IMAGE_ORIGINAL, m_original);
    }

    BOOL OnInitDialog() override
    {
        PageDlg::OnInitDialog();
        for (const WORD depth : kDepths) {
            CString text;
            text.Format(L"%d 位 bits", depth);
            Combo(IDC_IMAGE_DEPTH).AddString(text);
        }
        for (const LPCWSTR view : kViews)
            Combo(IDC_IMAGE_VIEW).AddString(view);
        for (const LPCWSTR effect : kEffects)
            Combo(IDC_IMAGE_EFFECT).AddString(effect);
        for (const Operation& operation : kOperations)
            Combo(IDC_IMAGE_OPERATION).AddString(operation.name);
        for (const UINT id : {IDC_IMAGE_VIEW, IDC_IMAGE_EFFECT, IDC_IMAGE_OPERATION})
            Combo(id).SetCurSel(0);
        SetDlgItemInt(IDC_IMAGE_STEP, 4);
        SetDlgItemInt(IDC_IMAGE_DELAY, 10);
        AddToolTips(IDC_IMAGE_ORIGINAL, L"单击恢复原图。 Click to go back to this picture.");
        OnSample();
        return TRUE;
    }

    afx_msg void OnSample()
    {
        if (DrawSamplePicture(m_dib))
            m_original.SetDib(&m_dib);
        ShowPicture();
    }

    afx_msg void OnOpen()
    {
        CFileDialog dialog(TRUE, nullptr, nullptr, OFN_HIDEREADONLY | OFN_FILEMUSTEXIST,
                           L"图像 Pictures (*.bmp;*.png;*.jpg;*.gif)|*.bmp;*.png;*.jpg;*.jpeg;*.gif|"
                           L"所有文件 All files (*.*)|*.*||",
                           this);
        if (RunPageModal(dialog) != IDOK)
            return;
        if (!m_original.SetBmp(dialog.GetPathName()))
            AfxMessageBox(L"无法读取该图像。 The picture cannot be read.");
        OnRestore();
    }

    afx_msg void OnSave()
    {
        CFileDialog dialog(FALSE, L"bmp", L"image.bmp", OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT,
                           L"位图 Bitmap (*.bmp)|*.bmp||", this);
        if (RunPageModal(dialog) == IDOK && !m_dib.Save(dialog.GetPathName()))
            AfxMessageBox(L"无法保存该图像。 The picture cannot be saved.");
    }

    afx_msg void OnRestore()
    {
        if (m_original.GetDib() != nullptr)
            CopyImage(*m_original.GetDib(), m_dib);
        ShowPicture();
    }

    afx_msg void OnDepth()
    {
        const int choice = Combo(IDC_IMAGE_DEPTH).GetCurSel();
        if (choice >= 0)
            Report(m_dib.ConvertFormat(kDepths[choice]));
    }

    afx_msg void OnApply()
    {
        const int choice = Combo(IDC_IMAGE_OPERATION).GetCurSel();
        if (choice < 0)
            return;
        const CWaitCursor wait;
        Report(kOperations[choice].apply(m_dib));
    }

    afx_msg void OnView() { ShowPicture(); }
    afx_msg void OnReveal() { Play(&ImageCanvas::Reveal); }
    afx_msg void OnWipe() { Play(&ImageCanvas::Wipe); }

private:
    CComboBox& Combo(UINT id) { return *static_cast<CComboBox*>(GetDlgItem(static_cast<int>(id))); }

    void Play(void (ImageCanvas::*play)(int effect, int step, DWORD delay))
    {
        const int effect = Combo(IDC_IMAGE_EFFECT).GetCurSel() + 1;
        int step = std::clamp(static_cast<int>(GetDlgItemInt(IDC_IMAGE_STEP)), 1, kMaxStep);
        const int delay = std::clamp(static_cast<int>(GetDlgItemInt(IDC_IMAGE_DELAY)), 0, kMaxDelay);
        // Blocks and frames instead of pixels: larger numbers make them as quick as the others.
        if (effect >= kMosaic)
            step *= 4;
        Combo(IDC_IMAGE_VIEW).SetCurSel(0);
        (m_canvas.*play)(effect, step, delay);
    }

    void Report(int isDone)
    {
        ShowPicture();
        if (!isDone)
            SetDlgItemText(IDC_IMAGE_STATE, L"此图像不支持该操作。 Not possible with this picture.");
    }

    // Brings canvas, text and depth up to date with the picture.
    void ShowPicture()
    {
        m_canvas.Show(static_cast<ImageView>(std::max(0, Combo(IDC_IMAGE_VIEW).GetCurSel())));
        CString state;
        state.Format(L"%d × %d，%d 位 bits", static_cast<int>(m_dib.GetWidth()),
                     static_cast<int>(m_dib.GetHeight()), m_dib.GetBitCount());
        if (const WORD colors = m_dib.GetColorNumber(); colors > 0)
            state.AppendFormat(L"，%d 色 colours", colors);
        SetDlgItemText(IDC_IMAGE_STATE, state);
        const auto* const depth = std::ranges::find(kDepths, m_dib.GetBitCount());
        Combo(IDC_IMAGE_DEPTH)
            .SetCurSel(depth != std::end(kDepths) ? static_cast<int>(depth - std::begin(kDepths)) : -1);
    }

    void ShootView(ShotWriter& shots, ImageView view, LPCWSTR name)
    {
        Combo(IDC_IMAGE_VIEW).SetCurSel(static_cast<int>(view));
        ShowPicture();
        shots.Take(*this, name);
        Combo(IDC_IMAGE_VIEW).SetCurSel(0);
    }

    CDib m_dib;
    ImageCanvas m_canvas;
    VBmpStatic m_original;
};

BEGIN_MESSAGE_MAP(ImagesDlg, PageDlg)
    ON_BN_CLICKED(IDC_IMAGE_SAMPLE, &ImagesDlg::OnSample)
    ON_BN_CLICKED(IDC_IMAGE_OPEN, &ImagesDlg::OnOpen)
    ON_BN_CLICKED(IDC_IMAGE_SAVE, &ImagesDlg::OnSave)
    ON_BN_CLICKED(IDC_IMAGE_APPLY, &ImagesDlg::OnApply)
    ON_BN_CLICKED(IDC_IMAGE_REVEAL, &ImagesDlg::OnReveal)
    ON_BN_CLICKED(IDC_IMAGE_WIPE, &ImagesDlg::OnWipe)
    ON_CONTROL(STN_CLICKED, IDC_IMAGE_ORIGINAL, &ImagesDlg::OnRestore)
    ON_CBN_SELCHANGE(IDC_IMAGE_DEPTH, &ImagesDlg::OnDepth)
    ON_CBN_SELCHANGE(IDC_IMAGE_VIEW, &ImagesDlg::OnView)
END_MESSAGE_MAP()

} // namespace

GalleryPage ImagesPage()
{
    return {
        L"图像 Images",
        L"打开、转换、处理、显示、显现、擦除与保存图像。\n"
        L"Open, convert, process, show, reveal, wipe and save a picture.",
        [](const PageHost& host) -> std::unique_ptr<PageDlg> { return std::make_unique<ImagesDlg>(host); },
        [](PageDlg& page, const PageHost&, ShotWriter& shots) {
            static_cast<ImagesDlg&>(page).Shoot(shots);
        }};
}
