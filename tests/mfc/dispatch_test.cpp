#include "tests/support/active_x_control.h"
#include "tests/support/census.h"

#include <gtest/gtest.h>

using namespace support;

namespace
{

constexpr CLSID kClass = {0xA2E8F3D4, 0x4C56, 0x4B0E, {0xA7, 0x1B, 0x3D, 0x1F, 0x62, 0x90, 0x5E, 0x88}};
constexpr DISPID kMember = 11;
constexpr WORD kCode = 77;

class DispatchCall : public CensusTest
{
protected:
    void SetUp() override { ASSERT_TRUE(driver.CreateDispatch(kClass)); }

    ActiveXControlClass object{kClass};
    COleDispatchDriver driver;
};

// Fills the exception in as late as is allowed.
HRESULT STDMETHODCALLTYPE FillIn(EXCEPINFO* info)
{
    info->bstrDescription = ::SysAllocString(L"磁盘已满");
    return S_OK;
}

} // namespace

TEST_F(DispatchCall, PassesEveryTypeInOrder)
{
    static const BYTE types[] = VTS_UI1 VTS_I2 VTS_I4 VTS_R4 VTS_R8 VTS_CY VTS_DATE VTS_BSTR VTS_DISPATCH
        VTS_SCODE VTS_BOOL VTS_VARIANT VTS_UNKNOWN VTS_I8;
    CY money{};
    money.int64 = 12345;
    COleVariant text(L"by value");
    driver.InvokeHelper(kMember, DISPATCH_METHOD, VT_EMPTY, nullptr, types, 200, -2, -70000L, 1.5f, 2.25,
                        &money, 3.5, L"文字", driver.m_lpDispatch, E_ABORT, 7, static_cast<VARIANT*>(&text),
                        driver.m_lpDispatch, 1LL << 40);
    ASSERT_EQ(object.calls.size(), 1u);
    const ControlCall& call = object.calls[0];
    EXPECT_EQ(call.member, kMember);
    EXPECT_EQ(call.flags, DISPATCH_METHOD);
    const VARTYPE wanted[] = {VT_UI1,  VT_I2,       VT_I4,    VT_R4,   VT_R8,   VT_CY,      VT_DATE,
                              VT_BSTR, VT_DISPATCH, VT_ERROR, VT_BOOL, VT_BSTR, VT_UNKNOWN, VT_I8};
    ASSERT_EQ(call.arguments.size(), std::size(wanted));
    for (size_t i = 0; i < std::size(wanted); ++i)
        EXPECT_EQ(call.arguments[i].vt, wanted[i]) << i;
    EXPECT_EQ(call.arguments[0].bVal, 200);
    EXPECT_EQ(call.arguments[1].iVal, -2);
    EXPECT_EQ(call.arguments[2].lVal, -70000);
    EXPECT_EQ(call.arguments[3].fltVal, 1.5f);
    EXPECT_EQ(call.arguments[4].dblVal, 2.25);
    EXPECT_EQ(call.arguments[5].cyVal.int64, 12345);
    EXPECT_EQ(call.arguments[6].dblVal, 3.5);
    EXPECT_STREQ(call.arguments[7].bstrVal, L"文字");
    EXPECT_EQ(call.arguments[9].scode, E_ABORT);
    EXPECT_EQ(call.arguments[10].boolVal, VARIANT_TRUE);
    EXPECT_STREQ(call.arguments[11].bstrVal, L"by value");
    EXPECT_EQ(call.arguments[13].llVal, 1LL << 40);
    EXPECT_STREQ(text.bstrVal, L"by value"); // still the caller's
}

TEST_F(DispatchCall, ReferencesAreWrittenTo)
{
    object.answer = [](const ControlCall& call, VARIANT*, EXCEPINFO*) {
        EXPECT_EQ(call.arguments[0].vt, VT_I4 | VT_BYREF);
        *call.arguments[0].plVal += 1;
        *call.arguments[1].pbstrVal = ::SysAllocString(L"answer");
        EXPECT_EQ(*call.arguments[2].pboolVal, VARIANT_TRUE);
        *call.arguments[2].pboolVal = VARIANT_FALSE;
        *call.arguments[3].piVal = -5;
        return S_OK;
    };
    static const BYTE types[] = VTS_PI4 VTS_PBSTR VTS_PBOOL VTS_PI2;
    long number = 41;
    BSTR text = nullptr;
    BOOL flag = 2;
    short small[2] = {0, 9};
    driver.InvokeHelper(kMember, DISPATCH_METHOD, VT_EMPTY, nullptr, types, &number, &text, &flag, small);
    EXPECT_EQ(number, 42);
    EXPECT_STREQ(text, L"answer");
    ::SysFreeString(text);
    EXPECT_EQ(flag, FALSE);
    EXPECT_EQ(small[0], -5);
    EXPECT_EQ(small[1], 9);

    // No place for a flag is none.
    object.answer = [](const ControlCall& call, VARIANT*, EXCEPINFO*) {
        EXPECT_EQ(call.arguments[0].pboolVal, nullptr);
        return S_OK;
    };
    driver.InvokeHelper(kMember, DISPATCH_METHOD, VT_EMPTY, nullptr, reinterpret_cast<const BYTE*>(VTS_PBOOL),
                        nullptr);
}

TEST_F(DispatchCall, ResultsAreConverted)
{
    COleVariant answer;
    object.answer = [&](const ControlCall&, VARIANT* result, EXCEPINFO*) {
        EXPECT_NE(result, nullptr);
        return ::VariantCopy(result, &answer);
    };
    const auto ask = [&](VARTYPE type, void* place) {
        driver.InvokeHelper(kMember, DISPATCH_METHOD, type, place, nullptr);
    };
    answer = COleVariant(L"1234");
    long number[2] = {0, 5};
    ask(VT_I4, number);
    EXPECT_EQ(number[0], 1234);
    EXPECT_EQ(number[1], 5);
    short small[2] = {0, 5};
    ask(VT_I2, small);
    EXPECT_EQ(small[0], 1234);
    EXPECT_EQ(small[1], 5);
    float real[2] = {0, 5};
    ask(VT_R4, real);
    EXPECT_EQ(real[0], 1234);
    EXPECT_EQ(real[1], 5);
    double wide = 0;
    ask(VT_R8, &wide);
    EXPECT_EQ(wide, 1234);
    CString text;
    ask(VT_BSTR, &text);
    EXPECT_STREQ(text, L"1234");
    VARIANT any{};
    ask(VT_VARIANT, &any);
    EXPECT_EQ(any.vt, VT_BSTR);
    ::VariantClear(&any);

    answer = COleVariant(static_cast<short>(1), VT_BOOL);
    BOOL flag = FALSE;
    ask(VT_BOOL, &flag);
    EXPECT_EQ(flag, TRUE);

    answer = COleVariant(L"no number");
    number[0] = 8;
    EXPECT_THROW(ask(VT_I4, number), COleException*);
    EXPECT_EQ(number[0], 8);
}

TEST_F(DispatchCall, FailuresBecomeExceptions)
{
    object.answer = [](const ControlCall& call, VARIANT*, EXCEPINFO* exception) -> HRESULT {
        if (call.arguments.empty())
            return DISP_E_MEMBERNOTFOUND;
        if (call.arguments[0].vt == VT_I4)
            return exception->scode = MAKE_SCODE(SEVERITY_ERROR, FACILITY_ITF, kCode), DISP_E_EXCEPTION;
        exception->wCode = kCode;
        exception->bstrSource = ::SysAllocString(L"source");
        exception->bstrHelpFile = ::SysAllocString(L"help.hlp");
        exception->dwHelpContext = 9;
        exception->pfnDeferredFillIn = &FillIn;
        return DISP_E_EXCEPTION;
    };
    long result = 3;
    try {
        driver.InvokeHelper(kMember, DISPATCH_METHOD, VT_I4, &result, nullptr);
        FAIL();
    } catch (COleException* e) {
        EXPECT_EQ(e->m_sc, DISP_E_MEMBERNOTFOUND);
        EXPECT_EQ(COleException::Process(e), DISP_E_MEMBERNOTFOUND);
        e->Delete();
    }
    static const BYTE types[] = VTS_BSTR;
    try {
        driver.InvokeHelper(kMember, DISPATCH_METHOD, VT_I4, &result, types, L"x");
        FAIL();
    } catch (COleDispatchException* e) {
        EXPECT_EQ(e->m_wCode, kCode);
        EXPECT_STREQ(e->m_strDescription, L"磁盘已满");
        EXPECT_STREQ(e->m_strSource, L"source");
        EXPECT_STREQ(e->m_strHelpFile, L"help.hlp");
        EXPECT_EQ(e->m_dwHelpContext, 9u);
        WCHAR message[4];
        EXPECT_TRUE(e->GetErrorMessage(message, 4));
        EXPECT_STREQ(message, L"磁盘已");
        e->Delete();
    }
    EXPECT_EQ(result, 3);
    try {
        driver.InvokeHelper(kMember, DISPATCH_METHOD, VT_EMPTY, nullptr,
                            reinterpret_cast<const BYTE*>(VTS_I4), 1L);
        FAIL();
    } catch (COleDispatchException* e) {
        EXPECT_EQ(e->m_wCode, kCode); // of the status code
        e->Delete();
    }
}

TEST_F(DispatchCall, PropertiesAreSetAndRead)
{
    driver.SetProperty(5, VT_BSTR, L"红");
    driver.SetProperty(6, VT_BOOL, 4);
    CString text;
    BOOL flag = FALSE;
    driver.GetProperty(5, VT_BSTR, &text);
    driver.GetProperty(6, VT_BOOL, &flag);
    EXPECT_STREQ(text, L"红");
    EXPECT_EQ(flag, TRUE);
    EXPECT_EQ(object.calls[0].flags, DISPATCH_PROPERTYPUT);
    long missing = 0;
    EXPECT_THROW(driver.GetProperty(7, VT_I4, &missing), COleException*);
}

TEST_F(DispatchCall, DriversCountTheirReferences)
{
    EXPECT_EQ(object.controls, 1);
    {
        COleDispatchDriver copy(driver);
        COleDispatchDriver assigned;
        assigned = copy;
        assigned = assigned;
        driver.ReleaseDispatch();
        EXPECT_EQ(object.controls, 1);
        COleDispatchDriver borrowed(copy.m_lpDispatch, FALSE);
        borrowed.ReleaseDispatch();
        EXPECT_EQ(object.controls, 1);
    }
    EXPECT_EQ(object.controls, 0);

    COleException error;
    CLSID unknown = kClass;
    ++unknown.Data1;
    EXPECT_FALSE(driver.CreateDispatch(unknown, &error));
    EXPECT_EQ(error.m_sc, REGDB_E_CLASSNOTREG);
    EXPECT_FALSE(driver.CreateDispatch(L"VGui.NoSuchClass", &error));
    long untouched = 6;
    driver.InvokeHelper(kMember, DISPATCH_METHOD, VT_I4, &untouched, nullptr);
    EXPECT_EQ(untouched, 6);
}

TEST(DispatchVariant, OwnsItsValue)
{
    COleVariant text(L"17");
    COleVariant copy(text);
    EXPECT_NE(copy.bstrVal, text.bstrVal);
    EXPECT_TRUE(copy == text);
    copy.ChangeType(VT_I4);
    EXPECT_EQ(copy.lVal, 17);
    EXPECT_FALSE(copy == text);
    EXPECT_THROW(copy.ChangeType(VT_DISPATCH), COleException*);
    EXPECT_EQ(copy.lVal, 17);

    VARIANT raw = text.Detach();
    EXPECT_EQ(text.vt, VT_EMPTY);
    copy.Attach(raw);
    EXPECT_EQ(raw.vt, VT_EMPTY);
    EXPECT_STREQ(copy.bstrVal, L"17");
    copy = copy;
    copy = L"neu";
    EXPECT_STREQ(copy.bstrVal, L"neu");
    EXPECT_EQ(COleVariant(5L, VT_BOOL).boolVal, VARIANT_TRUE);
}
