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
        CPen penGray;         // of clrGray
        CPen penFrame;        // of clrFrame
        CPen penHot;          // of clrHot
    };

    // The skinned dialog's non-client area and background.
    struct DlgGroup {
        int nFrameWidth;              // width of the sizing frame, at most 5
        int nCaptionHeight;           // height of the caption
        COLORREF clrFrameOuter;       // outermost frame ring
        COLORREF clrFrameInner;       // second frame ring
        COLORREF clrFrameFill;        // remaining frame rings and the caption's bottom line
        COLORREF clrCapBtnBorder;     // outline of the caption buttons
        COLORREF clrCapBtnGlyph;      // glyphs of the caption buttons
        COLORREF clrCapBtnGlyphLight; // light colour for glyphs; not used by the library itself
        COLORREF clrBk;               // background
        COLORREF clrCapActiveFrom;    // active caption, top of the gradient
        COLORREF clrCapActiveTo;      // active caption, bottom
        COLORREF clrCapActiveText;    // text of the active caption
        COLORREF clrText;             // text
        COLORREF clrCapInactiveText;  // text of the inactive caption
        COLORREF clrCapInactiveFrom;  // inactive caption, top of the gradient
        COLORREF clrCapInactiveTo;    // inactive caption, bottom
        CPen penFrameOuter;           // of clrFrameOuter
        CPen penFrameFill;            // of clrFrameFill
        CPen penCapBtnBorder;         // of clrCapBtnBorder
        CPen penCapBtnGlyph;          // of clrCapBtnGlyph, 2 pixels
        CPen penCapBtnGlyphLight;     // of clrCapBtnGlyphLight, 2 pixels; not used by the library itself
        CBrush brBk;                  // of clrBk
    };

    // Push buttons.
    struct BtnGroup {
        int nCornerSize;      // width and height of the rounded corners
        COLORREF clrFrom;     // top of the gradient
        COLORREF clrTo;       // bottom of the gradient
        COLORREF clrFrame;    // frame
        COLORREF clrHotFrame; // bevel inside the frame
        CPen penFrame;        // of clrFrame
        CPen penHotFrame;     // of clrHotFrame; not used by the library itself
    };

    // Edit fields.
    struct EditGroup {
        COLORREF clrFrame; // frame
    };

    // Group boxes.
    struct GroupGroup {
        COLORREF clrFrom;      // top of the title band
        COLORREF clrTo;        // bottom of the title band
        COLORREF clrLine;      // frame
        COLORREF clrTitleText; // caption
        CPen penLine;          // of clrLine
    };

    // Check boxes. The three pens are deliberately never given a handle.
    struct CheckGroup {
        int nBoxSize;     // width and height of the box
        COLORREF clrBox;  // outline of the box
        COLORREF clrMark; // check mark
        COLORREF clrText; // caption
        CPen penBox;      // empty
        CPen penMark;     // empty
        CPen penHotBox;   // empty
    };

    // Radio buttons.
    struct RadioGroup {
        int nBoxSize;     // diameter of the circle
        COLORREF clrBox;  // outline of the circle
        COLORREF clrMark; // dot of a checked button
        COLORREF clrText; // caption
    };

    // Combo boxes and the date-time control.
    struct ComboGroup {
        int nBtnWidth;         // width of the drop-down button
        COLORREF clrFrame;     // frame
        COLORREF clrBtnBorder; // outline of the button
        COLORREF clrBtnFrom;   // button, top of the gradient
        COLORREF clrBtnTo;     // button, bottom of the gradient
        COLORREF clrGlyph;     // triangle on the button
    };

    // List boxes and list controls.
    struct ListGroup {
        COLORREF clrFrame; // frame
    };

    // Tab controls and tab pages.
    struct TabGroup {
        COLORREF clrPageBk; // background of pages and tabs
        COLORREF clrFrame;  // frames of page and tabs
        COLORREF clrFrom;   // top of a tab
        COLORREF clrTo;     // bottom of a tab; flat tabs
    };

    // Property lists; the two selection colours are the system's at load time.
    struct PropListGroup {
        COLORREF clrGrid;    // lines between the cells
        COLORREF clrSelBk;   // background of the selected row
        COLORREF clrSelText; // text of the selected row
    };

    // Progress bars.
    struct ProgressGroup {
        int nStep;        // from one block to the next
        COLORREF clrFrom; // light side of the bar
        COLORREF clrTo;   // dark side of the bar
    };

    // Outline controls; the tab control uses some too.
    struct OutlineGroup {
        COLORREF clrBk;        // background
        COLORREF clrFrame;     // frame
        COLORREF clrTitleText; // text of the title
        COLORREF clrTitleFrom; // title, top of the gradient
        COLORREF clrTitleTo;   // title, bottom of the gradient
        COLORREF clrSelFrom;   // selected item, top of the gradient
        COLORREF clrSelTo;     // selected item, bottom
    };

    CommonGroup Common{};     // used by most controls
    DlgGroup Dlg{};           // skinned dialogs
    BtnGroup Btn{};           // push buttons
    EditGroup Edit{};         // edit fields
    GroupGroup Group{};       // group boxes
    CheckGroup Check{};       // check boxes
    RadioGroup Radio{};       // radio buttons
    ComboGroup Combo{};       // combo boxes, date and time
    ListGroup List{};         // list boxes and list controls
    TabGroup Tab{};           // tabs and pages
    PropListGroup PropList{}; // property lists
    ProgressGroup Progress{}; // progress bars
    OutlineGroup Outline{};   // outlines

private:
    void PrepareColors();
    void PrepareGdiObjs();
    void DeleteGdiObjs();
};

// The palette of the loaded library.
extern VGUI_API VGuiManager VGM;
