#include "tests/support/html_object.h"

#include <afxdhtml.h>
#include <gtest/gtest.h>
#include <mshtml.h>

using namespace support;

namespace
{

constexpr IID kControlEvents = {0x2C1C7E5A, 0x4B0D, 0x4E6F, {0x9A, 0x31, 0x5D, 0x6E, 0x70, 0x12, 0x8B, 0x44}};
constexpr DISPID kPlayed = 3; // of the control, as is the next
constexpr DISPID kClosing = 4;
constexpr DISPID kBlur = static_cast<DISPID>(DISPID_EVMETH_ONBLUR);

class Sink : public CDHtmlEventSink
{
    DECLARE_DHTML_EVENT_MAP()

public:
    HRESULT OnButton(IHTMLElement* element) { return Note("button", element); }
    HRESULT OnWarning(IHTMLElement* element) { return Note("warning", element); }
    HRESULT OnImage(IHTMLElement* element) { return Note("image", element); }
    HRESULT OnField(IHTMLElement* element) { return Note("field", element); }
    HRESULT OnAnyKey(IHTMLElement* element) { return Note("key", element); }
    void OnPlayed(long frames, LPCTSTR film, BOOL whole)
    {
        log.push_back("played");
        EXPECT_EQ(frames, 25);
        EXPECT_STREQ(film, L"影片");
        EXPECT_TRUE(whole);
    }

    void OnClosing(VARIANT_BOOL* cancel, double* when, const CY& price)
    {
        *cancel = VARIANT_TRUE;
        *when += static_cast<double>(price.int64);
    }

    std::vector<std::string> log;
    IUnknown* source = nullptr;
    HRESULT answer = S_OK;
    IUnknown* disconnected = nullptr; // by the next handler

private:
    HRESULT Note(const char* handler, IHTMLElement* element)
    {
        log.emplace_back(handler);
        // An element of the test is nothing but its IDispatch.
        source = reinterpret_cast<IDispatch*>(element);
        if (disconnected != nullptr)
            DisconnectDHtmlEvents(std::exchange(disconnected, nullptr));
        return answer;
    }
};

BEGIN_DHTML_EVENT_MAP(Sink)
DHTML_EVENT_ONCLICK(L"play", OnButton)
DHTML_EVENT_CLASS(DISPID_EVMETH_ONCLICK, L"warning", OnWarning)
DHTML_EVENT_TAG(DISPID_EVMETH_ONCLICK, L"IMG", OnImage)
DHTML_EVENT_ONBLUR(L"field", OnField)
DHTML_EVENT_ONFOCUS(L"field", OnField)
DHTML_EVENT_ONCHANGE(L"not on the page", OnField)
DHTML_EVENT_ONKEYDOWN(nullptr, OnAnyKey)
DHTML_EVENT_AXCONTROL(kPlayed, L"player", OnPlayed)
DHTML_EVENT_AXCONTROL(kClosing, L"player", OnClosing)
END_DHTML_EVENT_MAP()

COleVariant Reference(VARTYPE type, void* place)
{
    COleVariant reference;
    reference.vt = static_cast<VARTYPE>(type | VT_BYREF);
    reference.byref = place;
    return reference;
}

class DhtmlEventSink : public testing::Test
{
protected:
    DhtmlEventSink()
    {
        page.elements = {{L"field", &field}, {L"player", &tag}};
        tag.properties[L"object"] = ObjectVariant(&player);
        for (HtmlObject* element : {&field, &button, &tag})
            element->isElement = true;
        button.properties[L"id"] = COleVariant(L"play");
    }
    void ExpectNothingHeld()
    {
        tag.properties.clear();
        for (const HtmlObject* object : {&page, &field, &button, &tag, &player}) {
            EXPECT_FALSE(object->IsConnected());
            EXPECT_EQ(object->references, 0);
        }
    }

    HtmlObject page{__uuidof(HTMLDocumentEvents2)};
    HtmlObject field{__uuidof(HTMLElementEvents2)};
    HtmlObject button{__uuidof(HTMLElementEvents2)};
    HtmlObject tag{__uuidof(HTMLElementEvents2)};
    HtmlObject player{kControlEvents};
};

} // namespace

TEST_F(DhtmlEventSink, EventsReachTheirHandlers)
{
    Sink sink;
    ASSERT_EQ(sink.ConnectDHtmlEvents(page.Dispatch()), S_OK);
    EXPECT_EQ(field.advised, 1); // for both events
    HtmlObject other;
    other.isElement = true;
    const struct {
        HtmlObject& fired;
        DISPID event;
        LPCWSTR property;
        LPCWSTR value;
        std::vector<std::string> log;
    } cases[] = {
        {page, DISPID_EVMETH_ONCLICK, L"id", L"play", {"button"}},
        {page, DISPID_EVMETH_ONCLICK, L"className", L"warning", {"warning"}},
        {page, DISPID_EVMETH_ONCLICK, L"tagName", L"img", {"image"}},
        {page, DISPID_EVMETH_ONCLICK, L"id", L"pause", {}},
        {page, kBlur, L"id", L"field", {}}, // bubbles nowhere
        {page, DISPID_EVMETH_ONKEYDOWN, L"id", L"any", {"key"}},
        {field, kBlur, L"id", L"field", {"field"}},
        {field, DISPID_EVMETH_ONCLICK, L"id", L"play", {}},
    };
    for (const auto& [fired, event, property, value, log] : cases) {
        sink.log.clear();
        other.properties = {{property, COleVariant(value)}};
        EXPECT_EQ(fired.Fire(event, &other).vt, VT_EMPTY);
        EXPECT_EQ(sink.log, log) << event;
        EXPECT_TRUE(log.empty() || sink.source == other.Dispatch());
    }
    sink.log.clear();
    EXPECT_EQ(player.FireWith(kPlayed, {COleVariant(static_cast<long>(25)), COleVariant(L"影片"),
                                        COleVariant(static_cast<short>(TRUE), VT_BOOL)}),
              S_OK);
    EXPECT_EQ(sink.log, std::vector<std::string>{"played"});
    EXPECT_EQ(player.FireWith(kPlayed, {}), DISP_E_BADPARAMCOUNT);

    VARIANT_BOOL cancelled = VARIANT_FALSE;
    DATE closing = 2;
    COleVariant price;
    price.vt = VT_CY;
    price.cyVal.int64 = 5;
    EXPECT_EQ(
        player.FireWith(kClosing, {Reference(VT_BOOL, &cancelled), Reference(VT_DATE, &closing), price}),
        S_OK);
    EXPECT_EQ(cancelled, VARIANT_TRUE);
    EXPECT_EQ(closing, 7);
    sink.DisconnectDHtmlEvents(page.Dispatch());
    ExpectNothingHeld();
}

TEST_F(DhtmlEventSink, AHandlerCanStopWhatThePageDoes)
{
    Sink sink;
    ASSERT_EQ(sink.ConnectDHtmlEvents(page.Dispatch()), S_OK);
    sink.answer = S_FALSE;
    const COleVariant result = page.Fire(DISPID_EVMETH_ONCLICK, &button);
    ASSERT_EQ(result.vt, VT_BOOL);
    EXPECT_EQ(result.boolVal, VARIANT_FALSE);
}

TEST_F(DhtmlEventSink, ConnectionsEndOnceAndWithTheSink)
{
    {
        Sink sink;
        EXPECT_EQ(sink.ConnectDHtmlEvents(nullptr), E_POINTER);
        EXPECT_TRUE(FAILED(sink.ConnectDHtmlEvents(field.Dispatch()))); // no document
        ASSERT_EQ(sink.ConnectDHtmlEvents(page.Dispatch()), S_OK);
        ASSERT_EQ(sink.ConnectDHtmlEvents(page.Dispatch()), S_OK); // in place of the former connections
        sink.DisconnectDHtmlEvents(button.Dispatch());             // which is not connected
        EXPECT_TRUE(page.IsConnected());
        sink.disconnected = page.Dispatch();
        page.Fire(DISPID_EVMETH_ONCLICK, &button);
        EXPECT_FALSE(page.IsConnected());
        EXPECT_FALSE(field.IsConnected());
        ASSERT_EQ(sink.ConnectDHtmlEvents(page.Dispatch()), S_OK);
    }
    ExpectNothingHeld();
}
