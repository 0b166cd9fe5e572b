// The gallery's main window: the list of pages and a drawing area.
#pragma once

#include "gallery/pages.h"
#include "gallery/point_canvas.h"
#include "gallery/resource.h"

#include <memory>
#include <vector>

class MainDlg : public VGuiDlg
{
    DECLARE_DYNAMIC(MainDlg)

public:
    MainDlg();
    MainDlg(const MainDlg&) = delete;
    MainDlg& operator=(const MainDlg&) = delete;
    ~MainDlg() override;

    // CDialog's, with the main template.
    using VGuiDlg::Create;
    // Pictures of this window and of all pages. The window must exist; it is left open.
    void TakeShots(ShotWriter& shots);

protected:
    BOOL OnInitDialog() override;
    void OnOK() override;
    void OnCancel() override;
    afx_msg void OnOpen();
    afx_msg void OnSelectPage();
    afx_msg void OnSize(UINT nType, int cx, int cy);
    afx_msg void OnDestroy();
    DECLARE_MESSAGE_MAP()

private:
    void FillPageList();
    void LayOut();
    void TakeHelpShot(ShotWriter& shots);
    [[nodiscard]] int SelectedPage() const;
    // The page's dialog, made when it is first asked for.
    PageDlg& Page(int index);

    PointCanvas m_canvas;
    PageHost m_host{*this, m_canvas};
    std::vector<std::unique_ptr<PageDlg>> m_pages; // by index in GalleryPages, null until opened
};
