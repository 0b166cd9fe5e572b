#include "vgui/foundation/gui_manager.h"

#include <algorithm>

namespace
{

constexpr int kMaxFrameWidth = 5;
constexpr int kControlFrameFade = 128;
constexpr int kProgressStep = 12;
constexpr int kThinPen = 1;
constexpr int kGlyphPen = 2;

} // namespace

VGuiManager VGM;

VGuiManager::VGuiManager()
{
    PrepareGdiObjs();
}

VGuiManager::~VGuiManager()
{
    DeleteGdiObjs();
}

// The order counts: a copy reads what was assigned before it, and nPrevFrameWidth the width before this call.
void VGuiManager::PrepareColors()
{
    Common.nPrevFrameWidth = Dlg.nFrameWidth;
    Common.nCtrlFrameFade = kControlFrameFade;
    Dlg.nFrameWidth = std::min(::GetSystemMetrics(SM_CYFRAME), kMaxFrameWidth);
    Dlg.nCaptionHeight = ::GetSystemMetrics(SM_CYMENU);

    Common.clrGray = RGB(128, 128, 128);
    Common.clrFrame = RGB(47, 95, 179);
    Common.clrLight = RGB(202, 218, 241);
    Common.clrWhite = RGB(253, 250, 246);
    Common.clrHot = RGB(255, 193, 111);
    Common.clrLink = RGB(0, 0, 255);
    Common.clrLinkHot = RGB(255, 0, 0);

    Dlg.clrFrameOuter = RGB(38, 87, 166);
    Dlg.clrFrameInner = RGB(117, 179, 255);
    Dlg.clrFrameFill = RGB(72, 138, 214);
    Dlg.clrCapBtnBorder = RGB(156, 179, 196);
    Dlg.clrCapBtnGlyph = RGB(48, 65, 120);
    Dlg.clrCapBtnGlyphLight = RGB(136, 184, 249);
    Dlg.clrBk = RGB(255, 252, 246);
    Dlg.clrCapActiveFrom = RGB(83, 135, 208);
    Dlg.clrCapActiveTo = RGB(137, 199, 255);
    Dlg.clrCapActiveText = RGB(41, 57, 129);
    Dlg.clrText = RGB(0, 0, 0);
    Dlg.clrCapInactiveText = RGB(219, 236, 255);
    Dlg.clrCapInactiveFrom = RGB(85, 128, 186);
    Dlg.clrCapInactiveTo = RGB(111, 159, 210);

    Btn.nCornerSize = Dlg.nFrameWidth;
    Btn.clrFrom = Common.clrWhite;
    Btn.clrTo = Common.clrLight;
    Btn.clrFrame = Common.clrFrame;
    Btn.clrHotFrame = RGB(149, 180, 232);

    Edit.clrFrame = Common.clrFrame;

    Group.clrFrom = Common.clrWhite;
    Group.clrTo = Common.clrLight;
    Group.clrLine = RGB(208, 208, 191);
    Group.clrTitleText = RGB(0, 70, 213);

    Check.nBoxSize = ::GetSystemMetrics(SM_CYMENU) - Dlg.nFrameWidth;
    Check.clrBox = Common.clrFrame;
    Check.clrMark = RGB(71, 196, 58);
    Check.clrText = Dlg.clrText;

    Radio.nBoxSize = Check.nBoxSize;
    Radio.clrBox = Check.clrBox;
    Radio.clrMark = Check.clrMark;
    Radio.clrText = Check.clrText;

    Combo.nBtnWidth = Check.nBoxSize;
    Combo.clrFrame = Common.clrFrame;
    Combo.clrBtnBorder = RGB(156, 179, 196);
    Combo.clrBtnFrom = Common.clrWhite;
    Combo.clrBtnTo = Common.clrLight;
    Combo.clrGlyph = Dlg.clrCapBtnGlyph;

    List.clrFrame = Common.clrFrame;

    Tab.clrPageBk = RGB(250, 250, 251);
    Tab.clrFrame = Common.clrFrame;
    Tab.clrFrom = Common.clrWhite;
    Tab.clrTo = Common.clrLight;

    PropList.clrGrid = RGB(208, 208, 191);
    PropList.clrSelBk = ::GetSysColor(COLOR_HIGHLIGHT);
    PropList.clrSelText = ::GetSysColor(COLOR_HIGHLIGHTTEXT);

    Progress.nStep = kProgressStep;
    Progress.clrFrom = RGB(201, 255, 188);
    Progress.clrTo = RGB(71, 196, 58);

    Outline.clrBk = RGB(217, 234, 252);
    Outline.clrFrame = RGB(66, 145, 220);
    Outline.clrTitleText = RGB(0, 51, 102);
    Outline.clrTitleFrom = RGB(208, 228, 247);
    Outline.clrTitleTo = RGB(66, 145, 250);
    Outline.clrSelFrom = RGB(255, 255, 180);
    Outline.clrSelTo = RGB(255, 148, 0);
}

void VGuiManager::PrepareGdiObjs()
{
    PrepareColors();
    Common.penFrame.CreatePen(PS_SOLID, kThinPen, Common.clrFrame);
    Common.penGray.CreatePen(PS_SOLID, kThinPen, Common.clrGray);
    Common.penHot.CreatePen(PS_SOLID, kThinPen, Common.clrHot);
    Dlg.penFrameOuter.CreatePen(PS_SOLID, kThinPen, Dlg.clrFrameOuter);
    Dlg.penFrameFill.CreatePen(PS_SOLID, kThinPen, Dlg.clrFrameFill);
    Dlg.penCapBtnBorder.CreatePen(PS_SOLID, kThinPen, Dlg.clrCapBtnBorder);
    Dlg.penCapBtnGlyph.CreatePen(PS_SOLID, kGlyphPen, Dlg.clrCapBtnGlyph);
    Dlg.penCapBtnGlyphLight.CreatePen(PS_SOLID, kGlyphPen, Dlg.clrCapBtnGlyphLight);
    Dlg.brBk.CreateSolidBrush(Dlg.clrBk);
    Btn.penFrame.CreatePen(PS_SOLID, kThinPen, Btn.clrFrame);
    Btn.penHotFrame.CreatePen(PS_SOLID, kThinPen, Btn.clrHotFrame);
    Group.penLine.CreatePen(PS_SOLID, kThinPen, Group.clrLine);
}

void VGuiManager::DeleteGdiObjs()
{
    CGdiObject* const objects[] = {
        &Common.penFrame,  &Common.penGray,      &Common.penHot,      &Dlg.penFrameOuter,
        &Dlg.penFrameFill, &Dlg.penCapBtnBorder, &Dlg.penCapBtnGlyph, &Dlg.penCapBtnGlyphLight,
        &Dlg.brBk,         &Btn.penFrame,        &Btn.penHotFrame,    &Group.penLine,
    };
    for (CGdiObject* object : objects)
        object->DeleteObject();
}
