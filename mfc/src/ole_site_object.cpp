#include "ole_site_object.h"

using namespace afx_subset;

namespace
{

constexpr int kHimetricPerInch = 2540;

// The top-level window as a control sees it: a frame without room for tool bars and without a menu to share.
class FrameObject final : public Counted<IOleInPlaceFrame>
{
public:
    explicit FrameObject(HWND window) : m_window(window) {}

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override
    {
        const bool known = iid == IID_IUnknown || iid == IID_IOleWindow || iid == IID_IOleInPlaceUIWindow ||
                           iid == IID_IOleInPlaceFrame;
        return Answer(known ? this : nullptr, object);
    }
    STDMETHODIMP GetWindow(HWND* window) override
    {
        *window = m_window;
        return m_window != nullptr ? S_OK : E_FAIL;
    }
    STDMETHODIMP ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }
    STDMETHODIMP GetBorder(RECT*) override { return INPLACE_E_NOTOOLSPACE; }
    STDMETHODIMP RequestBorderSpace(const BORDERWIDTHS*) override { return INPLACE_E_NOTOOLSPACE; }
    STDMETHODIMP SetBorderSpace(const BORDERWIDTHS* widths) override
    {
        return widths == nullptr ? S_OK : OLE_E_INVALIDRECT;
    }
    STDMETHODIMP SetActiveObject(IOleInPlaceActiveObject*, const OLECHAR*) override { return S_OK; }
    STDMETHODIMP InsertMenus(HMENU, OLEMENUGROUPWIDTHS*) override { return E_NOTIMPL; }
    STDMETHODIMP SetMenu(HMENU, HOLEMENU, HWND) override { return S_OK; }
    STDMETHODIMP RemoveMenus(HMENU) override { return S_OK; }
    STDMETHODIMP SetStatusText(const OLECHAR*) override { return S_OK; }
    STDMETHODIMP EnableModeless(BOOL) override { return S_OK; }
    STDMETHODIMP TranslateAccelerator(MSG*, WORD) override { return S_FALSE; }

private:
    ~FrameObject() override = default;

    HWND m_window;
};

SIZE ScreenDpi()
{
    const HDC screen = ::GetDC(nullptr);
    const SIZE dpi{::GetDeviceCaps(screen, LOGPIXELSX), ::GetDeviceCaps(screen, LOGPIXELSY)};
    ::ReleaseDC(nullptr, screen);
    return dpi;
}

} // namespace

SIZEL afx_subset::HimetricFromPixels(SIZE pixels)
{
    const SIZE dpi = ScreenDpi();
    return {::MulDiv(pixels.cx, kHimetricPerInch, dpi.cx), ::MulDiv(pixels.cy, kHimetricPerInch, dpi.cy)};
}

SIZE afx_subset::PixelsFromHimetric(SIZEL himetric)
{
    const SIZE dpi = ScreenDpi();
    return {::MulDiv(himetric.cx, dpi.cx, kHimetricPerInch), ::MulDiv(himetric.cy, dpi.cy, kHimetricPerInch)};
}

STDMETHODIMP SiteObject::QueryInterface(REFIID iid, void** object)
{
    if (iid == IID_IUnknown || iid == IID_IOleClientSite)
        return Answer(static_cast<IOleClientSite*>(this), object);
    if (iid == IID_IOleWindow || iid == IID_IOleInPlaceSite)
        return Answer(static_cast<IOleInPlaceSite*>(this), object);
    if (iid == IID_IOleControlSite)
        return Answer(static_cast<IOleControlSite*>(this), object);
    if (iid == IID_IDispatch)
        return Answer(static_cast<IDispatch*>(this), object);
    return Answer(nullptr, object);
}

// ---- IOleClientSite

STDMETHODIMP SiteObject::GetMoniker(DWORD, DWORD, IMoniker** moniker)
{
    *moniker = nullptr;
    return E_NOTIMPL;
}

STDMETHODIMP SiteObject::GetContainer(IOleContainer** container)
{
    *container = nullptr;
    return E_NOINTERFACE;
}

// ---- IOleInPlaceSite

STDMETHODIMP SiteObject::GetWindow(HWND* window)
{
    *window = m_site != nullptr ? m_site->m_pCtrlCont->m_pWnd->GetSafeHwnd() : nullptr;
    return *window != nullptr ? S_OK : E_UNEXPECTED;
}

STDMETHODIMP SiteObject::OnInPlaceActivate()
{
    if (m_site == nullptr || m_site->m_pObject == nullptr)
        return E_UNEXPECTED;
    if (m_site->m_pInPlaceObject != nullptr)
        return S_OK;
    return m_site->m_pObject->QueryInterface(IID_IOleInPlaceObject,
                                             reinterpret_cast<void**>(&m_site->m_pInPlaceObject));
}

STDMETHODIMP SiteObject::OnUIActivate()
{
    if (m_site == nullptr || m_site->m_pObject == nullptr)
        return E_UNEXPECTED;
    if (m_site->m_pActiveObject == nullptr)
        m_site->m_pObject->QueryInterface(IID_IOleInPlaceActiveObject,
                                          reinterpret_cast<void**>(&m_site->m_pActiveObject));
    m_site->m_pCtrlCont->OnUIActivate(m_site);
    return S_OK;
}

STDMETHODIMP SiteObject::GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document,
                                          RECT* position, RECT* clip, OLEINPLACEFRAMEINFO* frameInfo)
{
    *frame = nullptr;
    *document = nullptr;
    HWND parent = nullptr;
    if (FAILED(GetWindow(&parent)))
        return E_UNEXPECTED;
    const HWND top = ::GetAncestor(parent, GA_ROOT);
    *frame = new FrameObject(top);
    *position = m_site->m_rect;
    // Sites do not clip: the parent window does.
    *clip = m_site->m_rect;
    frameInfo->fMDIApp = FALSE;
    frameInfo->hwndFrame = top;
    frameInfo->haccel = nullptr;
    frameInfo->cAccelEntries = 0;
    return S_OK;
}

STDMETHODIMP SiteObject::OnUIDeactivate(BOOL)
{
    if (m_site == nullptr)
        return E_UNEXPECTED;
    if (m_site->m_pCtrlCont->m_pSiteUIActive == m_site)
        m_site->m_pCtrlCont->m_pSiteUIActive = nullptr;
    if (IOleInPlaceActiveObject* const active = std::exchange(m_site->m_pActiveObject, nullptr))
        active->Release();
    return S_OK;
}

STDMETHODIMP SiteObject::OnInPlaceDeactivate()
{
    if (m_site == nullptr)
        return E_UNEXPECTED;
    m_site->DetachWindow();
    if (IOleInPlaceObject* const inPlace = std::exchange(m_site->m_pInPlaceObject, nullptr))
        inPlace->Release();
    return S_OK;
}

STDMETHODIMP SiteObject::OnPosRectChange(const RECT* position)
{
    if (m_site == nullptr)
        return E_UNEXPECTED;
    m_site->m_rect = *position;
    if (m_site->m_pInPlaceObject == nullptr)
        return S_OK;
    return m_site->m_pInPlaceObject->SetObjectRects(m_site->m_rect, m_site->m_rect);
}

// ---- IOleControlSite

STDMETHODIMP SiteObject::OnControlInfoChanged()
{
    if (m_site == nullptr)
        return E_UNEXPECTED;
    m_site->GetControlInfo();
    return S_OK;
}

STDMETHODIMP SiteObject::GetExtendedControl(IDispatch** control)
{
    *control = nullptr;
    return E_NOTIMPL;
}

STDMETHODIMP SiteObject::TransformCoords(POINTL* himetric, POINTF* container, DWORD flags)
{
    // The container's units are pixels, and positions have the same origin as sizes.
    if ((flags & XFORMCOORDS_HIMETRICTOCONTAINER) != 0) {
        const SIZE pixels = PixelsFromHimetric({himetric->x, himetric->y});
        container->x = static_cast<float>(pixels.cx);
        container->y = static_cast<float>(pixels.cy);
        return S_OK;
    }
    if ((flags & XFORMCOORDS_CONTAINERTOHIMETRIC) != 0) {
        const SIZEL size =
            HimetricFromPixels({static_cast<LONG>(container->x), static_cast<LONG>(container->y)});
        himetric->x = size.cx;
        himetric->y = size.cy;
        return S_OK;
    }
    return E_INVALIDARG;
}

STDMETHODIMP SiteObject::TranslateAccelerator(MSG* msg, DWORD)
{
    // A control hands back what moves about in a dialog, such as Tab.
    HWND parent = nullptr;
    if (FAILED(GetWindow(&parent)) || DYNAMIC_DOWNCAST(CDialog, m_site->m_pCtrlCont->m_pWnd) == nullptr)
        return S_FALSE;
    return ::IsDialogMessage(parent, msg) ? S_OK : S_FALSE;
}

// ---- Ambient properties and events

STDMETHODIMP SiteObject::GetTypeInfoCount(UINT* count)
{
    *count = 0;
    return S_OK;
}

STDMETHODIMP SiteObject::GetTypeInfo(UINT, LCID, ITypeInfo** info)
{
    *info = nullptr;
    return E_NOTIMPL;
}

STDMETHODIMP SiteObject::Invoke(DISPID dispid, REFIID, LCID, WORD flags, DISPPARAMS*, VARIANT* result,
                                EXCEPINFO*, UINT*)
{
    if (m_site == nullptr || (flags & DISPATCH_PROPERTYGET) == 0)
        return DISP_E_MEMBERNOTFOUND;
    if (result == nullptr)
        return E_POINTER;
    ::VariantInit(result);
    return WithoutExceptions([&] {
        const BOOL known = m_site->m_pCtrlCont->m_pWnd->OnAmbientProperty(m_site, dispid, result);
        return known ? S_OK : DISP_E_MEMBERNOTFOUND;
    });
}

STDMETHODIMP SiteObject::EventSink::QueryInterface(REFIID iid, void** object)
{
    // Controls ask for the events' own interface, whose methods come in by Invoke.
    const bool known = iid == IID_IUnknown || iid == IID_IDispatch ||
                       (m_owner.m_site != nullptr && iid == m_owner.m_site->m_iidEvents);
    return Answer(known ? this : nullptr, object);
}

STDMETHODIMP SiteObject::EventSink::Invoke(DISPID dispid, REFIID, LCID, WORD, DISPPARAMS* params, VARIANT*,
                                           EXCEPINFO*, UINT*)
{
    if (m_owner.m_site == nullptr || params == nullptr)
        return E_UNEXPECTED;
    return WithoutExceptions([&] { return m_owner.m_site->OnEvent(dispid, *params); });
}
