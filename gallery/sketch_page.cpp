// The page of the sketch control: the control where its class is registered, else what is missing.
#include "gallery/pages.h"
#include "gallery/resource.h"

namespace
{

CString ClassText()
{
    WCHAR text[40] = L"";
    ::StringFromGUID2(CVOSlide4::GetClsid(), text, static_cast<int>(_countof(text)));
    return text;
}

class SketchDlg : public PageDlg
{
    DECLARE_MESSAGE_MAP()

public:
    explicit SketchDlg(CWnd* owner) : PageDlg(IDD_SKETCH, owner) { m_bHelpBtn = false; }

protected:
    BOOL OnInitDialog() override
    {
        PageDlg::OnInitDialog();
        AfxEnableControlContainer();
        CWnd* const frame = GetDlgItem(IDC_SKETCH);
        CRect place;
        frame->GetWindowRect(place);
        ScreenToClient(place);
        const bool shown =
            m_sketch.Create(L"", WS_VISIBLE | WS_TABSTOP, place, this, IDC_SKETCH_CONTROL) != FALSE;
        GetDlgItem(IDC_SKETCH_ABOUT)->EnableWindow(shown);
        if (shown) {
            frame->DestroyWindow();
            Report([this] {
                m_sketch.SetInit();
                m_sketch.FitSize();
            });
        } else {
            frame->SetWindowText(L"本机未注册草图控件：\nThe sketch control is not registered here:\n\n" +
                                 ClassText());
        }
        return TRUE;
    }

    afx_msg void OnAbout()
    {
        Report([this] { m_sketch.AboutBox(); });
    }

private:
    // Says what a call of the control has failed with.
    template <class Calls>
    void Report(Calls calls)
    {
        try {
            calls();
        } catch (CException* e) {
            e->ReportError();
            e->Delete();
        }
    }

    CVOSlide4 m_sketch;
};

BEGIN_MESSAGE_MAP(SketchDlg, PageDlg)
    ON_BN_CLICKED(IDC_SKETCH_ABOUT, &SketchDlg::OnAbout)
END_MESSAGE_MAP()

} // namespace

GalleryPage SketchPage()
{
    return {L"草图控件 Sketch control",
            L"承载图形草图的 ActiveX 控件。\nThe ActiveX control that shows a sketch.",
            [](const PageHost& host) -> std::unique_ptr<PageDlg> {
                return std::make_unique<SketchDlg>(&host.window);
            },
            [](PageDlg& page, const PageHost&, ShotWriter& shots) { shots.Take(page, L"sketch-control"); }};
}
