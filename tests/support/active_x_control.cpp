#include "tests/support/active_x_control.h"

#include <algorithm>
#include <utility>

namespace support
{

namespace
{

// The interface of the events.
constexpr IID kEvents = {0x5B8D3B1E, 0x6E0B, 0x4C43, {0x8E, 0x3A, 0x91, 0x1A, 0x40, 0x5F, 0x0C, 0x26}};
constexpr LPCWSTR kWindowClass = L"VGui test ActiveX control";
constexpr ULONG kSavedBytes = 5; // how many of a stream a control reads

} // namespace

struct ActiveXControlClass::Object final : IOleObject,
                                           IOleInPlaceObject,
                                           IOleInPlaceActiveObject,
                                           IOleControl,
                                           IDispatch,
                                           IPersistStreamInit,
                                           IPersistStorage,
                                           IConnectionPointContainer,
                                           IConnectionPoint,
                                           IProvideClassInfo2 {
    explicit Object(ActiveXControlClass& owner) : m_owner(owner)
    {
        ++m_owner.controls;
        m_owner.m_newest = this;
        ACCEL accelerator{FALT, kMnemonic, 1};
        m_mnemonics = ::CreateAcceleratorTable(&accelerator, 1);
    }
    ~Object()
    {
        ::DestroyAcceleratorTable(m_mnemonics);
        if (m_site != nullptr)
            m_site->Release();
        if (m_sink != nullptr)
            m_owner.log.emplace_back("sink left behind");
        --m_owner.controls;
        if (m_owner.m_newest == this)
            m_owner.m_newest = nullptr;
    }

    // IUnknown
    STDMETHODIMP QueryInterface(REFIID iid, void** object) override
    {
        *object = nullptr;
        Give<IOleObject>(iid, object, {IID_IUnknown, IID_IOleObject});
        Give<IOleInPlaceObject>(iid, object, {IID_IOleWindow, IID_IOleInPlaceObject});
        Give<IOleInPlaceActiveObject>(iid, object, {IID_IOleInPlaceActiveObject});
        Give<IOleControl>(iid, object, {IID_IOleControl});
        Give<IDispatch>(iid, object, {IID_IDispatch});
        Give<IPersistStreamInit>(iid, object, {IID_IPersistStreamInit});
        Give<IPersistStorage>(iid, object, {IID_IPersistStorage});
        Give<IConnectionPointContainer>(iid, object, {IID_IConnectionPointContainer});
        Give<IConnectionPoint>(iid, object, {IID_IConnectionPoint});
        Give<IProvideClassInfo2>(iid, object, {IID_IProvideClassInfo, IID_IProvideClassInfo2});
        if (*object == nullptr)
            return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return static_cast<ULONG>(++m_references); }
    STDMETHODIMP_(ULONG) Release() override
    {
        const LONG left = --m_references;
        if (left == 0)
            delete this;
        return static_cast<ULONG>(left);
    }

    // IOleObject
    STDMETHODIMP SetClientSite(IOleClientSite* site) override
    {
        if (site != nullptr)
            site->AddRef();
        if (m_site != nullptr)
            m_site->Release();
        m_owner.site = m_site = site;
        return S_OK;
    }
    STDMETHODIMP GetClientSite(IOleClientSite** site) override { return *site = nullptr, E_NOTIMPL; }
    STDMETHODIMP SetHostNames(LPCOLESTR, LPCOLESTR) override { return S_OK; }
    STDMETHODIMP Close(DWORD) override
    {
        m_owner.log.emplace_back("Close");
        return InPlaceDeactivate();
    }
    STDMETHODIMP SetMoniker(DWORD, IMoniker*) override { return E_NOTIMPL; }
    STDMETHODIMP GetMoniker(DWORD, DWORD, IMoniker**) override { return E_NOTIMPL; }
    STDMETHODIMP InitFromData(IDataObject*, BOOL, DWORD) override { return E_NOTIMPL; }
    STDMETHODIMP GetClipboardData(DWORD, IDataObject**) override { return E_NOTIMPL; }
    STDMETHODIMP DoVerb(LONG verb, LPMSG, IOleClientSite*, LONG, HWND parent, LPCRECT place) override
    {
        if (verb != OLEIVERB_INPLACEACTIVATE)
            return OLEOBJ_S_INVALIDVERB;
        return m_owner.refuseActivation ? E_FAIL : Activate(parent, place);
    }
    STDMETHODIMP EnumVerbs(IEnumOLEVERB**) override { return E_NOTIMPL; }
    STDMETHODIMP Update() override { return S_OK; }
    STDMETHODIMP IsUpToDate() override { return S_OK; }
    STDMETHODIMP GetUserClassID(CLSID*) override { return E_NOTIMPL; }
    STDMETHODIMP GetUserType(DWORD, LPOLESTR*) override { return E_NOTIMPL; }
    STDMETHODIMP SetExtent(DWORD, SIZEL*) override { return m_owner.Tell("SetExtent"), S_OK; }
    STDMETHODIMP GetExtent(DWORD, SIZEL* extent) override { return *extent = kExtent, S_OK; }
    STDMETHODIMP Advise(IAdviseSink*, DWORD*) override { return E_NOTIMPL; }
    STDMETHODIMP EnumAdvise(IEnumSTATDATA**) override { return E_NOTIMPL; }
    STDMETHODIMP GetMiscStatus(DWORD, DWORD* status) override
    {
        return *status = OLEMISC_INSIDEOUT | OLEMISC_ACTIVATEWHENVISIBLE, S_OK;
    }
    STDMETHODIMP SetColorScheme(LOGPALETTE*) override { return E_NOTIMPL; }

    // IOleInPlaceObject
    STDMETHODIMP GetWindow(HWND* window) override
    {
        *window = m_window;
        return *window != nullptr ? S_OK : E_FAIL;
    }
    STDMETHODIMP ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }
    STDMETHODIMP InPlaceDeactivate() override
    {
        if (m_inPlaceSite == nullptr)
            return S_OK;
        UIDeactivate();
        m_owner.log.emplace_back(::IsWindow(m_window) ? "InPlaceDeactivate"
                                                      : "InPlaceDeactivate without a window");
        IOleInPlaceSite* const site = std::exchange(m_inPlaceSite, nullptr);
        if (m_window != nullptr)
            ::DestroyWindow(m_window);
        site->OnInPlaceDeactivate();
        site->Release();
        return S_OK;
    }
    STDMETHODIMP UIDeactivate() override
    {
        if (std::exchange(m_uiActive, false)) {
            m_owner.log.emplace_back("UIDeactivate");
            m_inPlaceSite->OnUIDeactivate(FALSE);
        }
        return S_OK;
    }
    STDMETHODIMP SetObjectRects(LPCRECT place, LPCRECT) override
    {
        m_owner.place = *place;
        ::MoveWindow(m_window, place->left, place->top, place->right - place->left,
                     place->bottom - place->top, TRUE);
        return S_OK;
    }
    STDMETHODIMP ReactivateAndUndo() override { return E_NOTIMPL; }

    // IOleInPlaceActiveObject
    STDMETHODIMP TranslateAccelerator(LPMSG msg) override
    {
        if (msg->message == WM_KEYDOWN && msg->wParam == kAccelerator) {
            m_owner.log.emplace_back("TranslateAccelerator");
            return S_OK;
        }
        return S_FALSE;
    }
    STDMETHODIMP OnFrameWindowActivate(BOOL) override { return S_OK; }
    STDMETHODIMP OnDocWindowActivate(BOOL) override { return S_OK; }
    STDMETHODIMP ResizeBorder(LPCRECT, IOleInPlaceUIWindow*, BOOL) override { return S_OK; }
    STDMETHODIMP EnableModeless(BOOL) override { return S_OK; }

    // IOleControl
    STDMETHODIMP GetControlInfo(CONTROLINFO* info) override
    {
        info->hAccel = m_mnemonics;
        info->cAccel = 1;
        info->dwFlags = 0;
        return S_OK;
    }
    STDMETHODIMP OnMnemonic(MSG*) override
    {
        m_owner.log.emplace_back("OnMnemonic");
        m_owner.Tell("OnMnemonic");
        return m_owner.refuseMnemonics ? E_FAIL : S_OK;
    }
    STDMETHODIMP OnAmbientPropertyChange(DISPID) override { return S_OK; }
    STDMETHODIMP FreezeEvents(BOOL) override { return S_OK; }

    // IDispatch
    STDMETHODIMP GetTypeInfoCount(UINT* count) override { return *count = 0, S_OK; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    STDMETHODIMP Invoke(DISPID member, REFIID, LCID, WORD flags, DISPPARAMS* params, VARIANT* result,
                        EXCEPINFO* exception, UINT*) override
    {
        ControlCall call{member, flags, {}};
        for (UINT i = params->cArgs; i-- > 0;)
            call.arguments.emplace_back(params->rgvarg[i]);
        m_owner.calls.push_back(call);
        if ((flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0) {
            if (params->cNamedArgs != 1 || params->rgdispidNamedArgs[0] != DISPID_PROPERTYPUT)
                return DISP_E_PARAMNOTOPTIONAL;
            m_owner.properties[member] = call.arguments.at(0);
            return S_OK;
        }
        if (flags == DISPATCH_PROPERTYGET)
            return m_owner.properties.count(member) != 0
                       ? ::VariantCopy(result, m_owner.properties.at(member))
                       : DISP_E_MEMBERNOTFOUND;
        return m_owner.answer ? m_owner.answer(call, result, exception) : S_OK;
    }

    // IPersistStreamInit
    STDMETHODIMP GetClassID(CLSID*) override { return E_NOTIMPL; }
    STDMETHODIMP IsDirty() override { return S_FALSE; }
    STDMETHODIMP Load(IStream* stream) override
    {
        char bytes[kSavedBytes];
        ULONG read = 0;
        stream->Read(bytes, kSavedBytes, &read);
        m_owner.loaded.assign(bytes, read);
        m_owner.log.emplace_back("Load");
        return m_owner.refuseState || read != kSavedBytes ? E_FAIL : S_OK;
    }
    STDMETHODIMP Save(IStream*, BOOL) override { return E_NOTIMPL; }
    STDMETHODIMP GetSizeMax(ULARGE_INTEGER*) override { return E_NOTIMPL; }
    STDMETHODIMP InitNew() override
    {
        m_owner.log.emplace_back("InitNew");
        return m_owner.refuseState ? E_FAIL : S_OK;
    }

    // IPersistStorage
    STDMETHODIMP InitNew(IStorage*) override { return E_UNEXPECTED; } // streams come first
    STDMETHODIMP Load(IStorage* storage) override
    {
        IStream* stream = nullptr;
        const HRESULT result =
            storage->OpenStream(kStreamName, nullptr, STGM_READ | STGM_SHARE_EXCLUSIVE, 0, &stream);
        if (FAILED(result))
            return result;
        const HRESULT loaded = Load(stream);
        stream->Release();
        return loaded;
    }
    STDMETHODIMP Save(IStorage*, BOOL) override { return E_NOTIMPL; }
    STDMETHODIMP SaveCompleted(IStorage*) override { return E_NOTIMPL; }
    STDMETHODIMP HandsOffStorage() override { return S_OK; }

    // IConnectionPointContainer and its one point
    STDMETHODIMP EnumConnectionPoints(IEnumConnectionPoints**) override { return E_NOTIMPL; }
    STDMETHODIMP FindConnectionPoint(REFIID iid, IConnectionPoint** point) override
    {
        if (iid != kEvents)
            return *point = nullptr, CONNECT_E_NOCONNECTION;
        AddRef();
        return *point = this, S_OK;
    }
    STDMETHODIMP GetConnectionInterface(IID* iid) override { return *iid = kEvents, S_OK; }
    STDMETHODIMP GetConnectionPointContainer(IConnectionPointContainer**) override { return E_NOTIMPL; }
    STDMETHODIMP Advise(IUnknown* sink, DWORD* cookie) override
    {
        *cookie = 1;
        return sink->QueryInterface(kEvents, reinterpret_cast<void**>(&m_sink));
    }
    // Also IOleObject's, which nobody can have advised.
    STDMETHODIMP Unadvise(DWORD) override
    {
        if (IDispatch* const sink = std::exchange(m_sink, nullptr))
            sink->Release();
        return S_OK;
    }
    STDMETHODIMP EnumConnections(IEnumConnections**) override { return E_NOTIMPL; }

    // IProvideClassInfo2
    STDMETHODIMP GetClassInfo(ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetGUID(DWORD kind, GUID* guid) override
    {
        return *guid = kEvents, kind == GUIDKIND_DEFAULT_SOURCE_DISP_IID ? S_OK : E_INVALIDARG;
    }

private:
    template <class Interface>
    void Give(REFIID wanted, void** object, std::initializer_list<IID> answered)
    {
        if (std::find(answered.begin(), answered.end(), wanted) != answered.end())
            *object = static_cast<Interface*>(this);
    }

    HRESULT Activate(HWND parent, LPCRECT place)
    {
        if (m_inPlaceSite != nullptr)
            return S_OK;
        if (m_site == nullptr ||
            FAILED(m_site->QueryInterface(IID_IOleInPlaceSite, reinterpret_cast<void**>(&m_inPlaceSite))))
            return E_UNEXPECTED;
        IOleInPlaceFrame* frame = nullptr;
        IOleInPlaceUIWindow* document = nullptr;
        RECT clip{};
        OLEINPLACEFRAMEINFO info{sizeof(info), TRUE, nullptr, nullptr, 7};
        if (m_inPlaceSite->CanInPlaceActivate() != S_OK || FAILED(m_inPlaceSite->OnInPlaceActivate()) ||
            FAILED(m_inPlaceSite->GetWindowContext(&frame, &document, m_owner.place, &clip, &info)))
            return E_FAIL;
        frame->Release();
        WNDCLASS windowClass{};
        windowClass.style = CS_DBLCLKS;
        windowClass.lpfnWndProc = &WindowProc;
        windowClass.lpszClassName = kWindowClass;
        ::RegisterClass(&windowClass);
        m_owner.window = m_window = ::CreateWindow(
            kWindowClass, L"", WS_CHILD | WS_VISIBLE, place->left, place->top, place->right - place->left,
            place->bottom - place->top, parent, nullptr, nullptr, this);
        m_owner.log.emplace_back("InPlaceActivate");
        m_owner.Tell("InPlaceActivate");
        return S_OK;
    }

    static LRESULT CALLBACK WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
    {
        if (message == WM_NCCREATE)
            ::SetWindowLongPtr(
                window, GWLP_USERDATA,
                reinterpret_cast<LONG_PTR>(reinterpret_cast<CREATESTRUCT*>(lParam)->lpCreateParams));
        auto* const control = reinterpret_cast<Object*>(::GetWindowLongPtr(window, GWLP_USERDATA));
        switch (message) {
        case WM_PAINT: {
            PAINTSTRUCT paint;
            const HDC dc = ::BeginPaint(window, &paint);
            ::SetDCBrushColor(dc, kColor);
            ::FillRect(dc, &paint.rcPaint, static_cast<HBRUSH>(::GetStockObject(DC_BRUSH)));
            ::EndPaint(window, &paint);
            return 0;
        }
        case WM_SETFOCUS:
            if (control->m_inPlaceSite != nullptr && !std::exchange(control->m_uiActive, true))
                control->m_inPlaceSite->OnUIActivate();
            return 0;
        case WM_LBUTTONDOWN: {
            control->AddRef();
            ::SetFocus(window);
            control->m_owner.Fire(kClickEvent,
                                  {static_cast<long>(LOWORD(lParam)), static_cast<long>(HIWORD(lParam))});
            control->Release();
            return 0;
        }
        case WM_NCDESTROY:
            if (control->m_owner.window == window)
                control->m_owner.window = nullptr;
            control->m_window = nullptr;
            break;
        default:
            break;
        }
        return ::DefWindowProc(window, message, wParam, lParam);
    }

    ActiveXControlClass& m_owner;
    LONG m_references = 1;
    IOleClientSite* m_site = nullptr;
    IOleInPlaceSite* m_inPlaceSite = nullptr;
    bool m_uiActive = false;
    HACCEL m_mnemonics;

public:
    HWND m_window = nullptr;
    IDispatch* m_sink = nullptr;
};

struct ActiveXControlClass::Factory final : IClassFactory2 {
    Factory(ActiveXControlClass& owner, std::wstring licenseKey)
        : m_owner(owner), m_licenseKey(std::move(licenseKey))
    {
    }

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override
    {
        const bool known = iid == IID_IUnknown || iid == IID_IClassFactory || iid == IID_IClassFactory2;
        *object = known ? this : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    // The registration owns it.
    STDMETHODIMP_(ULONG) AddRef() override { return 2; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP CreateInstance(IUnknown* outer, REFIID iid, void** object) override
    {
        return m_licenseKey.empty() ? Create(outer, iid, object) : CLASS_E_NOTLICENSED;
    }
    STDMETHODIMP LockServer(BOOL) override { return S_OK; }
    STDMETHODIMP GetLicInfo(LICINFO*) override { return E_NOTIMPL; }
    STDMETHODIMP RequestLicKey(DWORD, BSTR*) override { return E_NOTIMPL; }
    STDMETHODIMP CreateInstanceLic(IUnknown* outer, IUnknown*, REFIID iid, BSTR key, void** object) override
    {
        return key == m_licenseKey ? Create(outer, iid, object) : CLASS_E_NOTLICENSED;
    }

private:
    HRESULT Create(IUnknown* outer, REFIID iid, void** object)
    {
        *object = nullptr;
        if (outer != nullptr)
            return CLASS_E_NOAGGREGATION;
        auto* const control = new Object(m_owner);
        const HRESULT result = control->QueryInterface(iid, object);
        control->Release();
        return result;
    }

    ActiveXControlClass& m_owner;
    std::wstring m_licenseKey;
};

ActiveXControlClass::ActiveXControlClass(REFCLSID clsid, std::wstring licenseKey)
    : m_factory(std::make_unique<Factory>(*this, std::move(licenseKey)))
{
    AfxOleInit();
    ::CoRegisterClassObject(clsid, m_factory.get(), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &m_cookie);
}

ActiveXControlClass::~ActiveXControlClass()
{
    ::CoRevokeClassObject(m_cookie);
}

HRESULT ActiveXControlClass::Fire(DISPID event, std::vector<COleVariant> arguments)
{
    if (m_newest == nullptr || m_newest->m_sink == nullptr)
        return S_FALSE;
    std::reverse(arguments.begin(), arguments.end());
    std::vector<VARIANTARG> values(arguments.begin(), arguments.end());
    DISPPARAMS params{values.data(), nullptr, static_cast<UINT>(values.size()), 0};
    // The sink may go while it handles the event.
    IDispatch* const sink = m_newest->m_sink;
    sink->AddRef();
    const HRESULT result = sink->Invoke(event, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &params,
                                        nullptr, nullptr, nullptr);
    sink->Release();
    return result;
}

HRESULT ActiveXControlClass::Ambient(DISPID property, VARIANT& value) const
{
    ::VariantClear(&value);
    IDispatch* ambient = nullptr;
    if (site == nullptr || FAILED(site->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(&ambient))))
        return E_UNEXPECTED;
    DISPPARAMS none{};
    const HRESULT result = ambient->Invoke(property, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET,
                                           &none, &value, nullptr, nullptr);
    ambient->Release();
    return result;
}

void ActiveXControlClass::Tell(const std::string& method) const
{
    if (during)
        during(method);
}

int ActiveXControlClass::Logged(const std::string& entry) const
{
    return static_cast<int>(std::count(log.begin(), log.end(), entry));
}

} // namespace support
