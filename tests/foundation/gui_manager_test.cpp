#include "tests/support/census.h"
#include "vgui/foundation/gui_manager.h"

#include <array>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace
{

constexpr int kObjectCount = 12;

// What a pen or brush must look like; width 0 stands for the brush.
struct Expected {
    const CGdiObject* object;
    int width;
    COLORREF color;
};

std::array<Expected, kObjectCount> ExpectedObjects(const VGuiManager& manager)
{
    return {{
        {&manager.Common.penFrame, 1, RGB(47, 95, 179)},
        {&manager.Common.penGray, 1, RGB(128, 128, 128)},
        {&manager.Common.penHot, 1, RGB(255, 193, 111)},
        {&manager.Dlg.penFrameOuter, 1, RGB(38, 87, 166)},
        {&manager.Dlg.penFrameFill, 1, RGB(72, 138, 214)},
        {&manager.Dlg.penCapBtnBorder, 1, RGB(156, 179, 196)},
        {&manager.Dlg.penCapBtnGlyph, 2, RGB(48, 65, 120)},
        {&manager.Dlg.penCapBtnGlyphLight, 2, RGB(136, 184, 249)},
        {&manager.Dlg.brBk, 0, RGB(255, 252, 246)},
        {&manager.Btn.penFrame, 1, RGB(47, 95, 179)},
        {&manager.Btn.penHotFrame, 1, RGB(149, 180, 232)},
        {&manager.Group.penLine, 1, RGB(208, 208, 191)},
    }};
}

std::vector<HGDIOBJ> Handles(const VGuiManager& manager)
{
    std::vector<HGDIOBJ> handles;
    for (const Expected& expected : ExpectedObjects(manager))
        handles.push_back(expected.object->m_hObject);
    return handles;
}

int CountAlive(const std::vector<HGDIOBJ>& handles)
{
    int alive = 0;
    for (const HGDIOBJ handle : handles)
        alive += ::GetObjectType(handle) != 0;
    return alive;
}

void ExpectObjects(const VGuiManager& manager)
{
    for (const Expected& expected : ExpectedObjects(manager)) {
        if (expected.width == 0) {
            LOGBRUSH brush = {};
            ASSERT_EQ(::GetObject(expected.object->m_hObject, sizeof brush, &brush), int{sizeof brush});
            EXPECT_EQ(brush.lbStyle, UINT{BS_SOLID});
            EXPECT_EQ(brush.lbColor, expected.color);
        } else {
            LOGPEN pen = {};
            ASSERT_EQ(::GetObject(expected.object->m_hObject, sizeof pen, &pen), int{sizeof pen});
            EXPECT_EQ(pen.lopnStyle, UINT{PS_SOLID});
            EXPECT_EQ(pen.lopnWidth.x, expected.width);
            EXPECT_EQ(pen.lopnColor, expected.color);
        }
    }
}

// Sets the width of sizing frames of this session, and the old one again.
class BorderWidthScope
{
public:
    explicit BorderWidthScope(int width)
    {
        m_old.cbSize = sizeof m_old;
        m_valid = ::SystemParametersInfo(SPI_GETNONCLIENTMETRICS, sizeof m_old, &m_old, 0) != FALSE;
        NONCLIENTMETRICS changed = m_old;
        changed.iBorderWidth = width;
        m_valid = m_valid && Set(changed);
    }
    ~BorderWidthScope()
    {
        if (m_valid)
            Set(m_old);
    }

    bool IsValid() const { return m_valid; }

private:
    static bool Set(NONCLIENTMETRICS metrics)
    {
        return ::SystemParametersInfo(SPI_SETNONCLIENTMETRICS, sizeof metrics, &metrics, 0) != FALSE;
    }

    NONCLIENTMETRICS m_old = {};
    bool m_valid;
};

} // namespace

TEST(GuiManagerTest, SharedMetrics)
{
    const int frame = std::min(::GetSystemMetrics(SM_CYFRAME), 5);
    const int box = ::GetSystemMetrics(SM_CYMENU) - frame;
    EXPECT_EQ(VGM.Common.nPrevFrameWidth, 0);
    EXPECT_EQ(VGM.Common.nCtrlFrameFade, 128);
    EXPECT_EQ(VGM.Dlg.nFrameWidth, frame);
    EXPECT_EQ(VGM.Dlg.nCaptionHeight, ::GetSystemMetrics(SM_CYMENU));
    EXPECT_EQ(VGM.Btn.nCornerSize, frame);
    EXPECT_EQ(VGM.Check.nBoxSize, box);
    EXPECT_EQ(VGM.Radio.nBoxSize, box);
    EXPECT_EQ(VGM.Combo.nBtnWidth, box);
    EXPECT_EQ(VGM.Progress.nStep, 12);
}

TEST(GuiManagerTest, SharedColors)
{
    constexpr COLORREF frame = RGB(47, 95, 179);
    constexpr COLORREF light = RGB(202, 218, 241);
    constexpr COLORREF white = RGB(253, 250, 246);
    const struct {
        const char* name;
        COLORREF actual;
        COLORREF expected;
    } colors[] = {
        {"Common.clrGray", VGM.Common.clrGray, RGB(128, 128, 128)},
        {"Common.clrFrame", VGM.Common.clrFrame, frame},
        {"Common.clrLight", VGM.Common.clrLight, light},
        {"Common.clrWhite", VGM.Common.clrWhite, white},
        {"Common.clrHot", VGM.Common.clrHot, RGB(255, 193, 111)},
        {"Common.clrReserved", VGM.Common.clrReserved, 0},
        {"Common.clrLink", VGM.Common.clrLink, RGB(0, 0, 255)},
        {"Common.clrLinkHot", VGM.Common.clrLinkHot, RGB(255, 0, 0)},
        {"Dlg.clrFrameOuter", VGM.Dlg.clrFrameOuter, RGB(38, 87, 166)},
        {"Dlg.clrFrameInner", VGM.Dlg.clrFrameInner, RGB(117, 179, 255)},
        {"Dlg.clrFrameFill", VGM.Dlg.clrFrameFill, RGB(72, 138, 214)},
        {"Dlg.clrCapBtnBorder", VGM.Dlg.clrCapBtnBorder, RGB(156, 179, 196)},
        {"Dlg.clrCapBtnGlyph", VGM.Dlg.clrCapBtnGlyph, RGB(48, 65, 120)},
        {"Dlg.clrCapBtnGlyphLight", VGM.Dlg.clrCapBtnGlyphLight, RGB(136, 184, 249)},
        {"Dlg.clrBk", VGM.Dlg.clrBk, RGB(255, 252, 246)},
        {"Dlg.clrCapActiveFrom", VGM.Dlg.clrCapActiveFrom, RGB(83, 135, 208)},
        {"Dlg.clrCapActiveTo", VGM.Dlg.clrCapActiveTo, RGB(137, 199, 255)},
        {"Dlg.clrCapActiveText", VGM.Dlg.clrCapActiveText, RGB(41, 57, 129)},
        {"Dlg.clrText", VGM.Dlg.clrText, RGB(0, 0, 0)},
        {"Dlg.clrCapInactiveText", VGM.Dlg.clrCapInactiveText, RGB(219, 236, 255)},
        {"Dlg.clrCapInactiveFrom", VGM.Dlg.clrCapInactiveFrom, RGB(85, 128, 186)},
        {"Dlg.clrCapInactiveTo", VGM.Dlg.clrCapInactiveTo, RGB(111, 159, 210)},
        {"Btn.clrFrom", VGM.Btn.clrFrom, white},
        {"Btn.clrTo", VGM.Btn.clrTo, light},
        {"Btn.clrFrame", VGM.Btn.clrFrame, frame},
        {"Btn.clrHotFrame", VGM.Btn.clrHotFrame, RGB(149, 180, 232)},
        {"Edit.clrFrame", VGM.Edit.clrFrame, frame},
        {"Group.clrFrom", VGM.Group.clrFrom, white},
        {"Group.clrTo", VGM.Group.clrTo, light},
        {"Group.clrLine", VGM.Group.clrLine, RGB(208, 208, 191)},
        {"Group.clrTitleText", VGM.Group.clrTitleText, RGB(0, 70, 213)},
        {"Check.clrBox", VGM.Check.clrBox, frame},
        {"Check.clrMark", VGM.Check.clrMark, RGB(71, 196, 58)},
        {"Check.clrText", VGM.Check.clrText, RGB(0, 0, 0)},
        {"Radio.clrBox", VGM.Radio.clrBox, frame},
        {"Radio.clrMark", VGM.Radio.clrMark, RGB(71, 196, 58)},
        {"Radio.clrText", VGM.Radio.clrText, RGB(0, 0, 0)},
        {"Combo.clrFrame", VGM.Combo.clrFrame, frame},
        {"Combo.clrBtnBorder", VGM.Combo.clrBtnBorder, RGB(156, 179, 196)},
        {"Combo.clrBtnFrom", VGM.Combo.clrBtnFrom, white},
        {"Combo.clrBtnTo", VGM.Combo.clrBtnTo, light},
        {"Combo.clrGlyph", VGM.Combo.clrGlyph, RGB(48, 65, 120)},
        {"List.clrFrame", VGM.List.clrFrame, frame},
        {"Tab.clrPageBk", VGM.Tab.clrPageBk, RGB(250, 250, 251)},
        {"Tab.clrFrame", VGM.Tab.clrFrame, frame},
        {"Tab.clrFrom", VGM.Tab.clrFrom, white},
        {"Tab.clrTo", VGM.Tab.clrTo, light},
        {"PropList.clrGrid", VGM.PropList.clrGrid, RGB(208, 208, 191)},
        {"PropList.clrSelBk", VGM.PropList.clrSelBk, ::GetSysColor(COLOR_HIGHLIGHT)},
        {"PropList.clrSelText", VGM.PropList.clrSelText, ::GetSysColor(COLOR_HIGHLIGHTTEXT)},
        {"Progress.clrFrom", VGM.Progress.clrFrom, RGB(201, 255, 188)},
        {"Progress.clrTo", VGM.Progress.clrTo, RGB(71, 196, 58)},
        {"Outline.clrBk", VGM.Outline.clrBk, RGB(217, 234, 252)},
        {"Outline.clrFrame", VGM.Outline.clrFrame, RGB(66, 145, 220)},
        {"Outline.clrTitleText", VGM.Outline.clrTitleText, RGB(0, 51, 102)},
        {"Outline.clrTitleFrom", VGM.Outline.clrTitleFrom, RGB(208, 228, 247)},
        {"Outline.clrTitleTo", VGM.Outline.clrTitleTo, RGB(66, 145, 250)},
        {"Outline.clrSelFrom", VGM.Outline.clrSelFrom, RGB(255, 255, 180)},
        {"Outline.clrSelTo", VGM.Outline.clrSelTo, RGB(255, 148, 0)},
    };
    for (const auto& color : colors)
        EXPECT_EQ(color.actual, color.expected) << color.name;
}

TEST(GuiManagerTest, SharedPensAndBrush)
{
    ExpectObjects(VGM);
    EXPECT_EQ(VGM.Check.penBox.m_hObject, nullptr);
    EXPECT_EQ(VGM.Check.penMark.m_hObject, nullptr);
    EXPECT_EQ(VGM.Check.penHotBox.m_hObject, nullptr);
}

TEST(GuiManagerTest, WideSystemFramesAreCutToFivePixels)
{
    const BorderWidthScope wide(9);
    if (!wide.IsValid() || ::GetSystemMetrics(SM_CYFRAME) <= 5)
        GTEST_SKIP() << "this system does not let its frames be widened";
    const VGuiManager manager;
    EXPECT_EQ(manager.Dlg.nFrameWidth, 5);
    EXPECT_EQ(manager.Check.nBoxSize, ::GetSystemMetrics(SM_CYMENU) - 5);
}

TEST(GuiManagerTest, SystemColorsAreThoseOfTheMomentOfPreparation)
{
    const INT index = COLOR_HIGHLIGHT;
    const COLORREF old = ::GetSysColor(index);
    const COLORREF changed = RGB(1, 2, 3);
    ASSERT_TRUE(::SetSysColors(1, &index, &changed));
    const VGuiManager manager;
    ::SetSysColors(1, &index, &old);
    EXPECT_EQ(manager.PropList.clrSelBk, changed);
    EXPECT_EQ(VGM.PropList.clrSelBk, old);
}

TEST(GuiManagerTest, ObjectsAreDeletedWithTheManager)
{
    const support::Census census;
    std::vector<HGDIOBJ> handles;
    {
        const VGuiManager manager;
        ExpectObjects(manager);
        handles = Handles(manager);
        EXPECT_EQ(CountAlive(handles), kObjectCount);
    }
    EXPECT_EQ(CountAlive(handles), 0);
    census.ExpectUnchanged();
    EXPECT_EQ(CountAlive(Handles(VGM)), kObjectCount);
}

// A copy of the library under another name is a second library to the system, and one that can be unloaded.
TEST(GuiManagerTest, ObjectsAreDeletedWhenTheLibraryIsUnloaded)
{
    wchar_t original[MAX_PATH] = {};
    wchar_t folder[MAX_PATH] = {};
    ASSERT_NE(::GetModuleFileNameW(::GetModuleHandleW(L"vgui.dll"), original, MAX_PATH), 0u);
    ASSERT_NE(::GetTempPathW(MAX_PATH, folder), 0u);
    const std::wstring copy =
        std::wstring(folder) + L"vgui-copy-" + std::to_wstring(::GetCurrentProcessId()) + L".dll";
    ASSERT_TRUE(::CopyFileW(original, copy.c_str(), FALSE));

    // The first load leaves behind what the system keeps per process.
    for (int round = 0; round < 2; ++round) {
        const support::Census census;
        const HMODULE library = ::LoadLibraryW(copy.c_str());
        ASSERT_NE(library, nullptr);
        FARPROC shared = ::GetProcAddress(library, "VGM");
        if (shared == nullptr)
            shared = ::GetProcAddress(library, "?VGM@@3VVGuiManager@@A");
        ASSERT_NE(shared, nullptr);
        const auto* manager = reinterpret_cast<const VGuiManager*>(shared);
        EXPECT_NE(manager, &VGM);
        ExpectObjects(*manager);
        const std::vector<HGDIOBJ> handles = Handles(*manager);
        EXPECT_EQ(CountAlive(handles), kObjectCount);

        ASSERT_TRUE(::FreeLibrary(library));
        ASSERT_EQ(::GetModuleHandleW(copy.c_str()), nullptr);
        EXPECT_EQ(CountAlive(handles), 0);
        if (round > 0)
            census.ExpectUnchanged();
    }
    EXPECT_TRUE(::DeleteFileW(copy.c_str()));
}
