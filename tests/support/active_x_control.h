// An ActiveX control for tests: a window that paints one colour, and members that record their calls.
#pragma once

#include <afxdisp.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace support
{

// A call of a member as it reached the control.
struct ControlCall {
    DISPID member;
    WORD flags;
    std::vector<COleVariant> arguments; // in the order of the call; references as they came
};

// What the registered class does, and what its newest control was told. Controls write here until they are
// gone; the registration outlives them.
class ActiveXControlClass
{
public:
    static constexpr COLORREF kColor = RGB(20, 140, 60);
    static constexpr DISPID kClickEvent = 1;         // (long x, long y)
    static constexpr DISPID kAskEvent = 2;           // (LPCTSTR question, VARIANT_BOOL* answer, VARIANT* any)
    static constexpr SIZEL kExtent{2540, 1270};      // 0.01 mm
    static constexpr WCHAR kMnemonic = L'q';         // with Alt
    static constexpr LPCWSTR kStreamName = L"state"; // where it looks in a storage
    static constexpr UINT kAccelerator = VK_F9;

    // Registers the class for this process until the object goes; the license key is none when empty.
    explicit ActiveXControlClass(REFCLSID clsid, std::wstring licenseKey = {});
    ~ActiveXControlClass();
    ActiveXControlClass(const ActiveXControlClass&) = delete;
    ActiveXControlClass& operator=(const ActiveXControlClass&) = delete;

    // Answers a call: a result for it, or a failure with what it says about an exception.
    using Answer = std::function<HRESULT(const ControlCall& call, VARIANT* result, EXCEPINFO* exception)>;
    Answer answer;

    // The newest control: what it received and what became of it.
    std::vector<ControlCall> calls;
    std::vector<std::string> log; // "InitNew", "Load", "InPlaceActivate" ...
    std::map<DISPID, COleVariant> properties;
    std::string loaded;             // what it has read from a stream
    HWND window = nullptr;          // while it is active in place
    CRect place;                    // where its site has put it
    IOleClientSite* site = nullptr; // not counted
    int controls = 0;               // how many are alive

    // Sends an event from the newest control; the control's result, S_FALSE without a listener.
    HRESULT Fire(DISPID event, std::vector<COleVariant> arguments);
    // Asks the newest control's site for an ambient property.
    HRESULT Ambient(DISPID property, VARIANT& value) const;

    [[nodiscard]] int Logged(const std::string& entry) const;

    // Called by the newest control in its methods, which are named: "SetExtent", "InPlaceActivate".
    std::function<void(const std::string& method)> during;

    // Has the next controls refuse to be activated in place, or to be initialised.
    bool refuseActivation = false;
    bool refuseState = false;
    bool refuseMnemonics = false; // each control leaves them to the next one

    struct Object;

private:
    void Tell(const std::string& method) const;

    struct Factory;
    std::unique_ptr<Factory> m_factory;
    DWORD m_cookie = 0;
    Object* m_newest = nullptr;
};

} // namespace support
