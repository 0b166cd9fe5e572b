// The shared look: the colours, metrics, pens and brushes that every dialog and control draws with.
#pragma once

#include "vgui/export.h"

#include <afxwin.h>

// One record per client of the palette. All values are set once, when the library is loaded, and are only
// read afterwards: a later change of the system's colours or metrics does not reach them. Metrics are in
// pixels, colours are COLORREF values. The pens are solid, 1 pixel wide unless said; they and the brush
// belong to the manager: select them, never delete them.
class VGUI_API VGuiManager
{
public:
    // Reads the system metrics and colours of this moment and creates the pens and the brush. Pens and
    // brushes that could not be created stay empty; selecting them then changes nothing.
    VGuiManager();
    virtual ~VGuiManager();
    VGuiManager(const VGuiManager&) = delete;
    VGuiManager& operator=(const VGuiManager&) = delete;

    // Used by most controls.
    struct CommonGroup {
        int nPrevFrameWidth;  // Dlg.nFrameWidth before it was computed, so 0 after the first preparation
        int nCtrlFrameFade;   // nFade of VGDraw3dCtrlFrame for control frames
        COLORREF clrGray;     // neutral and disabled frames
        COLORREF clrFrame;    // control frames
        COLORREF clrLight;    // light end of control gradients
        COLORREF clrWhite;    // white end of control gradients
        COLORREF clrHot;      // mouse over
        COLORREF clrReserved; // never set
        COLORREF clrLink;     // link text
        COLORREF clrLinkHot;  // link text, second state
        CPen penGray;
        CPen penFrame;
        CPen penHot;
    };

    // The skinned dialog's non-client area and background.
    struct DlgGroup {
        int nFrameWidth;    // sizing frame, at most 5
        int nCaptionHeight; // caption
        COLORREF clrFrameOuter;
        COLORREF clrFrameInner;
        COLORREF clrFrameFill; // remaining frame rings and the caption's bottom line
        COLORREF clrCapBtnBorder;
        COLORREF clrCapBtnGlyph;
        COLORREF clrCapBtnGlyphLight;
        COLORREF clrBk;
        COLORREF clrCapActiveFrom; // caption gradients run from top (From) to bottom (To)
        COLORREF clrCapActiveTo;
        COLORREF clrCapActiveText;
        COLORREF clrText;
        COLORREF clrCapInactiveText;
        COLORREF clrCapInactiveFrom;
        COLORREF clrCapInactiveTo;
        CPen penFrameOuter;
        CPen penFrameFill;
        CPen penCapBtnBorder;
        CPen penCapBtnGlyph;      // 2 pixels
        CPen penCapBtnGlyphLight; // 2 pixels
        CBrush brBk;
    };

    // Push buttons.
    struct BtnGroup {
        int nCornerSize;
        COLORREF clrFrom;
        COLORREF clrTo;
        COLORREF clrFrame;
        COLORREF clrHotFrame;
        CPen penFrame;
        CPen penHotFrame;
    };

    struct EditGroup {
        COLORREF clrFrame;
    };

    // Group boxes.
    struct GroupGroup {
        COLORREF clrFrom;
        COLORREF clrTo;
        COLORREF clrLine;
        COLORREF clrTitleText;
        CPen penLine;
    };

    // Check boxes. The three pens are deliberately never given a handle.
    struct CheckGroup {
        int nBoxSize;
        COLORREF clrBox;
        COLORREF clrMark;
        COLORREF clrText;
        CPen penBox;
        CPen penMark;
        CPen penHotBox;
    };

    struct RadioGroup {
        int nBoxSize;
        COLORREF clrBox;
        COLORREF clrMark;
        COLORREF clrText;
    };

    // Combo boxes and the date-time control.
    struct ComboGroup {
        int nBtnWidth;
        COLORREF clrFrame;
        COLORREF clrBtnBorder;
        COLORREF clrBtnFrom;
        COLORREF clrBtnTo;
        COLORREF clrGlyph;
    };

    // List boxes and list controls.
    struct ListGroup {
        COLORREF clrFrame;
    };

    // Tab controls and tab pages.
    struct TabGroup {
        COLORREF clrPageBk;
        COLORREF clrFrame;
        COLORREF clrFrom;
        COLORREF clrTo;
    };

    // Property lists; the two selection colours are the system's at load time.
    struct PropListGroup {
        COLORREF clrGrid;
        COLORREF clrSelBk;
        COLORREF clrSelText;
    };

    struct ProgressGroup {
        int nStep;
        COLORREF clrFrom;
        COLORREF clrTo;
    };

    // Outline controls; the tab control uses some too.
    struct OutlineGroup {
        COLORREF clrBk;
        COLORREF clrFrame;
        COLORREF clrTitleText;
        COLORREF clrTitleFrom;
        COLORREF clrTitleTo;
        COLORREF clrSelFrom;
        COLORREF clrSelTo;
    };

    CommonGroup Common{};
    DlgGroup Dlg{};
    BtnGroup Btn{};
    EditGroup Edit{};
    GroupGroup Group{};
    CheckGroup Check{};
    RadioGroup Radio{};
    ComboGroup Combo{};
    ListGroup List{};
    TabGroup Tab{};
    PropListGroup PropList{};
    ProgressGroup Progress{};
    OutlineGroup Outline{};

private:
    void PrepareColors();
    void PrepareGdiObjs();
    void DeleteGdiObjs();
};

// The palette of the loaded library.
extern VGUI_API VGuiManager VGM;
