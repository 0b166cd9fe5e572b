#include "vgui/controls/sketch_control.h"

#include "tests/support/active_x_control.h"
#include "tests/support/census.h"
#include "tests/support/recorder.h"
#include "tests/support/rounds.h"

#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

using namespace support;

namespace
{

constexpr UINT kId = 12;
const CRect kPlace(5, 5, 85, 45);

class SketchControl : public CensusTest
{
protected:
    void SetUp() override
    {
        AfxEnableControlContainer();
        ASSERT_TRUE(host.Open({100, 60}));
        ASSERT_TRUE(sketch.Create(L"草图", WS_VISIBLE, kPlace, &host, kId));
        registered.calls.clear();
    }

    ActiveXControlClass registered{CVOSlide4::GetClsid()};
    HostWnd host;
    CVOSlide4 sketch;
};

std::wstring Text(const COleVariant& value)
{
    switch (value.vt) {
    case VT_I2:
        return L"short " + std::to_wstring(value.iVal);
    case VT_I4:
        return L"long " + std::to_wstring(value.lVal);
    case VT_R4:
        return L"float " + std::to_wstring(value.fltVal);
    case VT_R8:
        return L"double " + std::to_wstring(value.dblVal);
    case VT_BSTR:
        return L"BSTR " + std::wstring(value.bstrVal);
    case VT_I4 | VT_BYREF:
        return L"long* " + std::to_wstring(*value.plVal);
    case VT_BSTR | VT_BYREF:
        return L"BSTR*";
    default:
        return L"type " + std::to_wstring(value.vt);
    }
}

// What came of a call: the member, its arguments, whether a result was asked for, and the result.
struct Row {
    DISPID member;
    std::vector<std::wstring> arguments;
    bool result; // 1000 + the member, where there is one
    std::function<long(CVOSlide4&)> call;
};

#define NONE(expression) [](CVOSlide4& s) { return expression, 0L; }
#define LONG(expression) [](CVOSlide4& s) { return expression; }

long g_one = 1;
long g_two = 2;

const std::vector<Row>& Rows()
{
    static const std::vector<Row> rows{
        {1, {}, false, NONE(s.SetInit())},
        {2, {L"long 7"}, false, NONE(s.SetAutoCad(7))},
        {3, {L"BSTR 甲"}, false, NONE(s.SetGAJJTK(L"甲"))},
        {4, {L"BSTR 乙"}, false, NONE(s.SetGAJJTName(L"乙"))},
        {5, {L"long 255"}, false, NONE(s.SetAxisColor(RGB(255, 0, 0)))},
        {6, {L"float 1.500000", L"float -2.250000"}, false, NONE(s.SetAxialCoord(1.5f, -2.25f))},
        {7, {L"float 3.000000", L"float 4.000000"}, false, NONE(s.SetRotatePoint(3, 4))},
        {8, {L"float 0.500000"}, false, NONE(s.SetRotateAngle(0.5f))},
        {9, {L"long* 1"}, false, NONE(s.GetEntityArray(&g_one))},
        {10, {L"long* 1", L"long* 2"}, false, NONE(s.SetEntityArray(&g_one, &g_two))},
        {11, {L"long 65280"}, false, NONE(s.SetBkColor(RGB(0, 255, 0)))},
        {12, {}, true, LONG(s.GetBkColor())},
        {13, {L"long -1"}, false, NONE(s.SetEditAttr(-1))},
        {14, {L"long 1"}, false, NONE(s.SetShowMenu(1))},
        {15, {L"long 0"}, false, NONE(s.SetShowDlg(0))},
        {18, {L"BSTR 名", L"BSTR 值"}, true, LONG(s.SetAttributeValue(L"名", L"值"))},
        {19, {L"BSTR 名"}, true, LONG(s.HighlightAttribute(L"名"))},
        {20, {L"long* 1"}, false, NONE(s.SubscribeAttChangeNotify(&g_one))},
        {21, {L"long* 2"}, false, NONE(s.SubscribeAttSelectNotify(&g_two))},
        {22, {L"long* 1"}, false, NONE(s.UnSubscribeAttChangeNotify(&g_one))},
        {23, {L"long* 2"}, false, NONE(s.UnSubscribeAttSelectNotify(&g_two))},
        {24, {L"long* 1"}, false, NONE(s.GetAttributeArray(&g_one))},
        {25, {L"long 300"}, false, NONE(s.SetHighlightFlashTime(300))},
        {26, {}, false, NONE(s.ResetAllAttribute())},
        {27, {L"long 1"}, false, NONE(s.SetDrawAxis(1))},
        {28, {L"long 1"}, false, NONE(s.SetDrawBorder(1))},
        {29, {L"long 16711680"}, false, NONE(s.SetBorderColor(RGB(0, 0, 255)))},
        {30,
         {L"long* 1", L"long 2", L"long 3", L"long 4", L"long 5", L"long 6"},
         false,
         NONE(s.GetBmpSketch(&g_one, 2, 3, 4, 5, 6))},
        {31, {L"short -9"}, false, NONE(s.SetTextHigh(-9))},
        {32, {}, false, NONE(s.UpdateEdit())},
        {33, {}, false, NONE(s.FitSize())},
        {34, {}, true, LONG(s.GetEntityCount())},
        {35, {L"long* 1"}, true, LONG(s.SubscribeAttChangeNotifyEx(&g_one))},
        {36, {L"long* 2"}, true, LONG(s.UnSubscribeAttChangeNotifyEx(&g_two))},
        {39, {L"long 3", L"BSTR 信息"}, true, LONG(s.SetEntityInfoByIndex(3, L"信息"))},
        {40, {L"BSTR 名", L"BSTR 信息"}, true, LONG(s.SetEntityInfoByName(L"名", L"信息"))},
        {41, {}, false, NONE(s.StartFirstEditAttr())},
        {42, {L"BSTR 名"}, false, NONE(s.SortEntsByName(L"名"))},
        {43, {L"BSTR 名", L"long 255"}, true, LONG(s.SetEntityColor(L"名", 255))},
        {44, {L"long* 2", L"long 8"}, true, LONG(s.SetGAJJTStream(&g_two, 8))},
        {45, {L"BSTR 名", L"BSTR "}, true, LONG(s.SetTextValue(L"名", L""))},
        {46, {}, false, NONE(s.CreateEntity())},
        {47, {L"short 2", L"double 0.125000"}, false, NONE(s.SetExcursionEntity(2, 0.125))},
        {48, {L"long 5"}, false, NONE(s.SetDeleteEntData(5))},
        {DISPID_ABOUTBOX, {}, false, NONE(s.AboutBox())},
    };
    return rows;
}

} // namespace

TEST_F(SketchControl, MembersArriveWithTheirTypes)
{
    bool resultAsked = false;
    registered.answer = [&](const ControlCall& call, VARIANT* result, EXCEPINFO*) {
        resultAsked = result != nullptr;
        return result != nullptr ? ::VariantCopy(result, COleVariant(1000L + call.member)) : S_OK;
    };
    for (const Row& row : Rows()) {
        registered.calls.clear();
        const long result = row.call(sketch);
        ASSERT_EQ(registered.calls.size(), 1u) << row.member;
        const ControlCall& call = registered.calls[0];
        EXPECT_EQ(call.member, row.member);
        EXPECT_EQ(call.flags, DISPATCH_METHOD) << row.member;
        std::vector<std::wstring> arguments;
        for (const COleVariant& argument : call.arguments)
            arguments.push_back(Text(argument));
        EXPECT_EQ(arguments, row.arguments) << row.member;
        EXPECT_EQ(resultAsked, row.result) << row.member;
        EXPECT_EQ(result, row.result ? 1000 + row.member : 0) << row.member;
    }
}

TEST_F(SketchControl, TextsComeBack)
{
    registered.answer = [&](const ControlCall& call, VARIANT* result, EXCEPINFO*) {
        if (call.member == 38)
            return ::VariantCopy(
                result, COleVariant((L"信息 " + std::wstring(call.arguments.at(0).bstrVal)).c_str()));
        EXPECT_EQ(call.member, 37);
        EXPECT_EQ(call.arguments.at(0).lVal, 4);
        *call.arguments.at(1).pbstrVal = ::SysAllocString(L"名称");
        *call.arguments.at(2).pbstrVal = ::SysAllocString(L"说明");
        return ::VariantCopy(result, COleVariant(1L));
    };
    EXPECT_STREQ(sketch.GetEntityInfoByName(L"墙"), L"信息 墙");
    BSTR name = nullptr;
    BSTR info = nullptr;
    EXPECT_EQ(sketch.GetEntityInfoByIndex(4, &name, &info), 1);
    EXPECT_STREQ(name, L"名称");
    EXPECT_STREQ(info, L"说明");
    ::SysFreeString(name);
    ::SysFreeString(info);
}

TEST_F(SketchControl, AttributesComeByPointerOrText)
{
    long record = 0;
    COleVariant answer;
    registered.answer = [&](const ControlCall& call, VARIANT* result, EXCEPINFO*) {
        EXPECT_EQ(Text(call.arguments.at(0)), L"BSTR 宽度");
        EXPECT_TRUE(call.member == 16 || call.member == 17);
        return ::VariantCopy(result, answer);
    };
    const auto* const address = reinterpret_cast<const VOAttribute*>(&record);
    answer.vt = VT_I4 | VT_BYREF;
    answer.plVal = &record;
    EXPECT_EQ(sketch.GetAttribute(L"宽度"), address);
    answer.vt = VT_I8;
    answer.llVal = reinterpret_cast<LONGLONG>(&record);
    EXPECT_EQ(sketch.GetAttribute(L"宽度"), address);
    answer = COleVariant(0x7FFF0000L);
    EXPECT_EQ(reinterpret_cast<ULONG_PTR>(sketch.GetAttribute(L"宽度")), 0x7FFF0000u);
    answer.Clear();
    EXPECT_EQ(sketch.GetAttribute(L"宽度"), nullptr);
    EXPECT_STREQ(sketch.GetAttributeValue(L"宽度"), L"");
    answer = COleVariant(L"120");
    EXPECT_EQ(sketch.GetAttribute(L"宽度"), nullptr); // a text is freed with the result
    EXPECT_STREQ(sketch.GetAttributeValue(L"宽度"), L"120");
    answer = COleVariant(120L);
    EXPECT_STREQ(sketch.GetAttributeValue(L"宽度"), L"120");
}

TEST_F(SketchControl, ForegroundColorIsTheStockProperty)
{
    sketch.SetForeColor(RGB(1, 2, 3));
    ASSERT_EQ(registered.calls.size(), 1u);
    EXPECT_EQ(registered.calls[0].member, -513);
    EXPECT_EQ(registered.calls[0].flags, DISPATCH_PROPERTYPUT);
    EXPECT_EQ(Text(registered.calls[0].arguments.at(0)), L"long " + std::to_wstring(RGB(1, 2, 3)));
    EXPECT_EQ(sketch.GetForeColor(), RGB(1, 2, 3));
}

TEST_F(SketchControl, FailuresAreThrown)
{
    registered.answer = [](const ControlCall& call, VARIANT*, EXCEPINFO* exception) -> HRESULT {
        if (call.member != 19)
            return E_ACCESSDENIED;
        exception->bstrDescription = ::SysAllocString(L"没有此属性");
        return DISP_E_EXCEPTION;
    };
    try {
        sketch.HighlightAttribute(L"无");
        FAIL();
    } catch (COleDispatchException* e) {
        EXPECT_STREQ(e->m_strDescription, L"没有此属性");
        e->Delete();
    }
    try {
        sketch.FitSize();
        FAIL();
    } catch (COleException* e) {
        EXPECT_EQ(e->m_sc, E_ACCESSDENIED);
        e->Delete();
    }
}

TEST_F(SketchControl, ACallMayEndTheControl)
{
    registered.answer = [&](const ControlCall&, VARIANT* result, EXCEPINFO*) {
        sketch.DestroyWindow();
        EXPECT_EQ(registered.controls, 1); // until it has answered
        return ::VariantCopy(result, COleVariant(8L));
    };
    EXPECT_EQ(sketch.GetEntityCount(), 8);
    EXPECT_EQ(registered.controls, 0);
}

TEST_F(SketchControl, WithoutAControlNothingHappens)
{
    CVOSlide4 none;
    none.SetInit();
    none.SetForeColor(1);
    EXPECT_EQ(none.GetForeColor(), 0u);
    EXPECT_EQ(none.GetEntityCount(), 0);
    EXPECT_STREQ(none.GetEntityInfoByName(L"x"), L"");
    EXPECT_EQ(none.GetAttribute(L"x"), nullptr);
    EXPECT_STREQ(none.GetAttributeValue(L"x"), L"");
    EXPECT_TRUE(registered.calls.empty());
}

TEST_F(SketchControl, IsMadeByNameAndWithItsState)
{
    sketch.DestroyWindow();
    const std::unique_ptr<CObject> made(RUNTIME_CLASS(CVOSlide4)->CreateObject());
    auto* const control = DYNAMIC_DOWNCAST(CVOSlide4, made.get());
    ASSERT_NE(control, nullptr);
    // The form of CWnd has no state to give.
    CWnd* const window = control;
    ASSERT_TRUE(window->Create(L"ignored", L"草图", WS_VISIBLE, kPlace, &host, kId));
    EXPECT_EQ(control->m_hWnd, registered.window);
    EXPECT_STREQ(registered.properties.at(DISPID_CAPTION).bstrVal, L"草图");
    EXPECT_EQ(registered.Logged("Load"), 0);
    control->DestroyWindow();

    CMemFile file;
    file.Write("state", 5);
    file.SeekToBegin();
    ASSERT_TRUE(control->Create(nullptr, WS_VISIBLE, kPlace, &host, kId, &file, FALSE));
    EXPECT_EQ(registered.loaded, "state");
    control->DestroyWindow();

    // A file that throws when it is read.
    WCHAR folder[MAX_PATH];
    WCHAR path[MAX_PATH];
    ::GetTempPath(MAX_PATH, folder);
    ::GetTempFileName(folder, L"vgs", 0, path);
    {
        CFile unreadable(path, CFile::modeCreate | CFile::modeWrite);
        unreadable.Write("state", 5);
        unreadable.SeekToBegin();
        EXPECT_FALSE(control->Create(nullptr, WS_VISIBLE, kPlace, &host, kId, &unreadable));
    }
    ::DeleteFile(path);
    EXPECT_EQ(host.GetOleControlSite(kId), nullptr);
    EXPECT_EQ(registered.controls, 0);
}

TEST_F(SketchControl, RoundsLeaveNothing)
{
    ExpectRoundsLeaveNothing([this] {
        CVOSlide4 destroyed;
        CVOSlide4 left;
        for (CVOSlide4* another : {&destroyed, &left}) {
            ASSERT_TRUE(another->Create(L"", WS_VISIBLE, kPlace, &host, kId + 1));
            another->SetInit();
        }
        destroyed.DestroyWindow();
    });
    EXPECT_EQ(registered.controls, 1);
}
