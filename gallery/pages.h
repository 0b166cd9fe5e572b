// The gallery's pages. A new page is a file that defines its row, and a line in GALLERY_PAGES.
#pragma once

#include "gallery/shot_writer.h"

#include <vgui/vgui.h>

#include <memory>
#include <vector>

class PointCanvas;

// A dialog that the main dialog opens modeless and owns; closing it destroys the window, not the object.
class PageDlg : public VGuiDlg
{
    DECLARE_DYNAMIC(PageDlg)

public:
    PageDlg(UINT nIDTemplate, CWnd* pParent);

    // Creates the window unless it is there, and shows it in front. False when it cannot be created.
    bool Open();

protected:
    void OnOK() override;
    void OnCancel() override;
    // Opens the help, and keeps F1 from going on to the main dialog, which would show its own.
    int OnHtmlHelp() override;

private:
    UINT m_nIDTemplate;
    CWnd* m_pOwner;
};

// Runs a page's modal dialog; the main dialog stays open as long.
INT_PTR RunPageModal(CDialog& dialog);
[[nodiscard]] bool IsPageModalRunning();

// What pages may use of the main dialog. It outlives them.
struct PageHost {
    CWnd& window;
    PointCanvas& canvas;
};

// One page of the gallery.
struct GalleryPage {
    LPCWSTR title;       // in the list of pages
    LPCWSTR description; // what there is to see
    std::unique_ptr<PageDlg> (*create)(const PageHost& host);
    // Takes the pictures of the page, which is open.
    void (*shoot)(PageDlg& page, const PageHost& host, ShotWriter& shots);
};

#define GALLERY_PAGES(ROW)                                                                                   \
    ROW(DialogsPage)                                                                                         \
    ROW(EditorCommandPage)                                                                                   \
    ROW(LayoutPage)                                                                                          \
    ROW(TabsPage)                                                                                            \
    ROW(WizardPage)                                                                                          \
    ROW(PanesPage)                                                                                           \
    ROW(InputsPage)                                                                                          \
    ROW(SmallControlsPage)                                                                                   \
    ROW(ButtonsPage)                                                                                         \
    ROW(ChecksPage)                                                                                          \
    ROW(TreePage)                                                                                            \
    ROW(OutlinePage)                                                                                         \
    ROW(TipPage)                                                                                             \
    ROW(ComboTreePage)                                                                                       \
    ROW(OpenGlPage)                                                                                          \
    ROW(ImagesPage)                                                                                          \
    ROW(PropertiesPage)                                                                                      \
    ROW(MediaPage)                                                                                           \
    ROW(SketchPage)                                                                                          \
    ROW(CompanionPage)                                                                                       \
    ROW(DrawingPage)

#define GALLERY_DECLARE_PAGE(Page) GalleryPage Page();
GALLERY_PAGES(GALLERY_DECLARE_PAGE)
#undef GALLERY_DECLARE_PAGE

// All pages in the order of the list.
const std::vector<GalleryPage>& GalleryPages();
