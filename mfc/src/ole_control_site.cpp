// A control's life in its site: creation, activation in place, events, destruction.
#include <afxocc.h>

#include "ole_control_state.h"
#include "ole_events.h"
#include "ole_ptr.h"
#include "ole_site_object.h"

#include <cstdarg>

using namespace afx_subset;

COleControlSite::COleControlSite(COleControlContainer* pCtrlCont)
    : m_pCtrlCont(pCtrlCont), m_pSiteObject(new SiteObject(this))
{
}

COleControlSite::~COleControlSite()
{
    Close();
    m_pSiteObject->Forget();
    m_pSiteObject->Release();
}

// ---- Creation

HRESULT COleControlSite::CreateControl(CWnd* pWndCtrl, REFCLSID clsid, LPCTSTR lpszWindowName, DWORD dwStyle,
                                       const POINT* ppt, const SIZE* psize, UINT nID, CFile* pPersist,
                                       BOOL bStorage, BSTR bstrLicKey)
{
    m_nID = nID;
    m_dwStyle = dwStyle;
    m_rect = CRect(*ppt, psize != nullptr ? *psize : SIZE{});
    const ComPtr<SiteObject> alive(m_pSiteObject);
    HRESULT result = CreateObject(clsid, bstrLicKey);
    if (SUCCEEDED(result))
        result = LoadState(pPersist, bStorage);
    if (!alive->HasSite())
        return E_UNEXPECTED;
    if (FAILED(result)) {
        Close();
        return result;
    }
    m_pWndCtrl = pWndCtrl;
    m_pWndCtrl->m_pCtrlSite = this;
    if (lpszWindowName != nullptr)
        SetWindowText(lpszWindowName);
    if (alive->HasSite())
        ApplyStyle();
    if (alive->HasSite() && psize != nullptr)
        SetExtent();
    if (alive->HasSite() && psize == nullptr)
        TakeExtent();
    if (alive->HasSite())
        ConnectEvents();
    return alive->HasSite() ? ActivateAtFirst() : E_UNEXPECTED;
}

HRESULT COleControlSite::ActivateAtFirst()
{
    const ComPtr<SiteObject> alive(m_pSiteObject);
    GetControlInfo();
    if ((m_dwMiscStatus & OLEMISC_INVISIBLEATRUNTIME) != 0)
        return S_OK;
    // A control that is not to be seen yet is active all the same, so that there is a window to show later.
    const HRESULT result = DoVerb(OLEIVERB_INPLACEACTIVATE);
    if (!alive->HasSite())
        return E_UNEXPECTED;
    if (FAILED(result)) {
        DetachWindow();
        m_pWndCtrl->m_pCtrlSite = nullptr;
        m_pWndCtrl = nullptr;
        Close();
    } else if ((m_dwStyle & WS_VISIBLE) == 0) {
        ShowWindow(SW_HIDE);
    }
    return result;
}

HRESULT COleControlSite::CreateObject(REFCLSID clsid, BSTR bstrLicKey)
{
    HRESULT result = E_FAIL;
    if (bstrLicKey == nullptr) {
        result = ::CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER,
                                    IID_IOleObject, reinterpret_cast<void**>(&m_pObject));
    } else {
        ComPtr<IClassFactory2> factory;
        result = ::CoGetClassObject(clsid, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER, nullptr,
                                    IID_IClassFactory2, factory.ReceiveVoid());
        if (SUCCEEDED(result))
            result = factory->CreateInstanceLic(nullptr, nullptr, IID_IOleObject, bstrLicKey,
                                                reinterpret_cast<void**>(&m_pObject));
    }
    if (FAILED(result))
        return result;
    m_pObject->GetMiscStatus(DVASPECT_CONTENT, &m_dwMiscStatus);
    m_pObject->QueryInterface(IID_IOleControl, reinterpret_cast<void**>(&m_pControl));
    LPDISPATCH dispatch = nullptr;
    if (SUCCEEDED(m_pObject->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(&dispatch))))
        m_dispDriver.AttachDispatch(dispatch);
    return S_OK;
}

HRESULT COleControlSite::LoadState(CFile* pPersist, BOOL bStorage)
{
    // Some controls want to ask for ambient properties while they load, others must not know their site yet.
    const bool siteFirst = (m_dwMiscStatus & OLEMISC_SETCLIENTSITEFIRST) != 0;
    // Once the control knows its site, it may end it.
    const ComPtr<IOleObject> object(m_pObject);
    const ComPtr<IOleClientSite> site(m_pSiteObject->ClientSite());
    HRESULT result = siteFirst ? object->SetClientSite(site.Get()) : S_OK;
    if (SUCCEEDED(result)) {
        if (pPersist == nullptr)
            result = InitControlState(object.Get());
        else
            result = bStorage ? LoadControlStorage(object.Get(), *pPersist)
                              : LoadControlStream(object.Get(), *pPersist);
    }
    if (SUCCEEDED(result) && !siteFirst)
        result = object->SetClientSite(site.Get());
    return result;
}

void COleControlSite::ApplyStyle()
{
    const ComPtr<SiteObject> alive(m_pSiteObject);
    if ((m_dwStyle & WS_DISABLED) != 0)
        SafeSetProperty(DISPID_ENABLED, VT_BOOL, FALSE);
    if (alive->HasSite() && (m_dwStyle & WS_BORDER) != 0)
        SafeSetProperty(DISPID_BORDERSTYLE, VT_I2, 1);
}

void COleControlSite::SetExtent()
{
    SIZEL size = HimetricFromPixels(m_rect.Size());
    const ComPtr<IOleObject> object(m_pObject);
    object->SetExtent(DVASPECT_CONTENT, &size);
}

void COleControlSite::TakeExtent()
{
    SIZEL size{};
    if (SUCCEEDED(m_pObject->GetExtent(DVASPECT_CONTENT, &size)))
        m_rect = CRect(m_rect.TopLeft(), CSize(PixelsFromHimetric(size)));
}

HRESULT COleControlSite::DoVerb(LONG nVerb, LPMSG lpMsg)
{
    if (m_pObject == nullptr)
        return E_UNEXPECTED;
    const ComPtr<SiteObject> alive(m_pSiteObject);
    const ComPtr<IOleObject> object(m_pObject);
    const CRect place(m_rect);
    const HRESULT result =
        object->DoVerb(nVerb, lpMsg, alive->ClientSite(), 0, m_pCtrlCont->m_pWnd->GetSafeHwnd(), place);
    if (!alive->HasSite())
        return E_UNEXPECTED;
    if (SUCCEEDED(result))
        AttachWindow();
    return result;
}

// ---- The control's window

void COleControlSite::AttachWindow()
{
    HWND window = nullptr;
    if (m_hWnd != nullptr || m_pWndCtrl == nullptr || m_pInPlaceObject == nullptr ||
        FAILED(m_pInPlaceObject->GetWindow(&window)) || !::IsWindow(window))
        return;
    m_hWnd = window;
    if (CWnd::FromHandlePermanent(window) == nullptr && m_pWndCtrl->m_hWnd == nullptr)
        m_pWndCtrl->Attach(window);
    constexpr DWORD dialogStyles = WS_GROUP | WS_TABSTOP;
    const LONG_PTR style = ::GetWindowLongPtr(window, GWL_STYLE);
    ::SetWindowLongPtr(window, GWL_STYLE,
                       (style & ~static_cast<LONG_PTR>(dialogStyles)) | (m_dwStyle & dialogStyles));
    ::SetWindowLongPtr(window, GWLP_ID, static_cast<LONG_PTR>(m_nID));
}

void COleControlSite::DetachWindow()
{
    if (m_pWndCtrl != nullptr && m_hWnd != nullptr && m_pWndCtrl->m_hWnd == m_hWnd)
        m_pWndCtrl->Detach();
    m_hWnd = nullptr;
}

void COleControlSite::MoveWindow(int x, int y, int nWidth, int nHeight)
{
    const CRect place(x, y, x + nWidth, y + nHeight);
    const ComPtr<SiteObject> alive(m_pSiteObject);
    m_rect = place;
    if (m_pObject != nullptr)
        SetExtent();
    if (!alive->HasSite() || m_pInPlaceObject == nullptr)
        return;
    const ComPtr<IOleInPlaceObject> inPlace(m_pInPlaceObject);
    inPlace->SetObjectRects(place, place);
}

BOOL COleControlSite::SetWindowPos(const CWnd* pWndInsertAfter, int x, int y, int cx, int cy, UINT nFlags)
{
    constexpr UINT samePlace = SWP_NOMOVE | SWP_NOSIZE;
    const HWND window = m_hWnd; // also when the control ends this site
    if ((nFlags & samePlace) != samePlace) {
        const CPoint origin = (nFlags & SWP_NOMOVE) != 0 ? m_rect.TopLeft() : CPoint(x, y);
        const CSize size = (nFlags & SWP_NOSIZE) != 0 ? m_rect.Size() : CSize(cx, cy);
        MoveWindow(origin.x, origin.y, size.cx, size.cy);
    }
    // The rest is the window's own affair.
    return ::SetWindowPos(window, pWndInsertAfter->GetSafeHwnd(), 0, 0, 0, 0, nFlags | samePlace);
}

BOOL COleControlSite::ShowWindow(int nCmdShow)
{
    return ::ShowWindow(m_hWnd, nCmdShow);
}

BOOL COleControlSite::EnableWindow(BOOL bEnable)
{
    const HWND window = m_hWnd;
    SafeSetProperty(DISPID_ENABLED, VT_BOOL, bEnable);
    return ::EnableWindow(window, bEnable);
}

void COleControlSite::SetWindowText(LPCTSTR lpszString)
{
    const ComPtr<SiteObject> alive(m_pSiteObject);
    if (!SafeSetProperty(DISPID_CAPTION, VT_BSTR, lpszString) && alive->HasSite())
        SafeSetProperty(DISPID_TEXT, VT_BSTR, lpszString);
}

void COleControlSite::GetWindowText(CString& str) const
{
    const ComPtr<SiteObject> alive(m_pSiteObject);
    str.Empty();
    for (const DISPID property : {DISPID_CAPTION, DISPID_TEXT}) {
        try {
            if (alive->HasSite())
                GetProperty(property, VT_BSTR, &str);
            return;
        } catch (CException* e) {
            e->Delete();
        }
    }
}

int COleControlSite::GetDlgCtrlID() const
{
    return static_cast<int>(m_nID);
}

// ---- Members of the control

void AFX_CDECL COleControlSite::InvokeHelper(DISPID dwDispID, WORD wFlags, VARTYPE vtRet, void* pvRet,
                                             const BYTE* pbParamInfo, ...)
{
    va_list list;
    va_start(list, pbParamInfo);
    InvokeHelperV(dwDispID, wFlags, vtRet, pvRet, pbParamInfo, list);
    va_end(list);
}

void COleControlSite::InvokeHelperV(DISPID dwDispID, WORD wFlags, VARTYPE vtRet, void* pvRet,
                                    const BYTE* pbParamInfo, va_list argList)
{
    m_dispDriver.InvokeHelperV(dwDispID, wFlags, vtRet, pvRet, pbParamInfo, argList);
}

void COleControlSite::GetProperty(DISPID dwDispID, VARTYPE vtProp, void* pvProp) const
{
    m_dispDriver.GetProperty(dwDispID, vtProp, pvProp);
}

void COleControlSite::SetPropertyV(DISPID dwDispID, VARTYPE vtProp, va_list argList)
{
    m_dispDriver.SetPropertyV(dwDispID, vtProp, argList);
}

BOOL AFX_CDECL COleControlSite::SafeSetProperty(DISPID dwDispID, VARTYPE vtProp, ...)
{
    if (m_dispDriver.m_lpDispatch == nullptr)
        return FALSE;
    va_list list;
    va_start(list, vtProp);
    BOOL done = TRUE;
    try {
        SetPropertyV(dwDispID, vtProp, list);
    } catch (CException* e) {
        e->Delete();
        done = FALSE;
    }
    va_end(list);
    return done;
}

// ---- Keys

void COleControlSite::GetControlInfo()
{
    m_ctlInfo = {};
    m_ctlInfo.cb = sizeof(m_ctlInfo);
    if (m_pControl == nullptr || FAILED(m_pControl->GetControlInfo(&m_ctlInfo)))
        m_ctlInfo.cAccel = 0;
}

BOOL COleControlSite::TranslateAccelerator(MSG* pMsg)
{
    const bool key = pMsg->message >= WM_KEYFIRST && pMsg->message <= WM_KEYLAST;
    if (!key || m_pActiveObject == nullptr)
        return FALSE;
    const ComPtr<IOleInPlaceActiveObject> active(m_pActiveObject);
    return active->TranslateAccelerator(pMsg) == S_OK;
}

BOOL COleControlSite::OnMnemonic(MSG* pMsg)
{
    if (m_ctlInfo.cAccel == 0 || m_pControl == nullptr || !::IsWindowVisible(m_hWnd) ||
        !::IsWindowEnabled(m_hWnd) || !::IsAccelerator(m_ctlInfo.hAccel, m_ctlInfo.cAccel, pMsg, nullptr))
        return FALSE;
    const ComPtr<IOleControl> control(m_pControl);
    return SUCCEEDED(control->OnMnemonic(pMsg));
}

// ---- Events

BOOL COleControlSite::GetEventIID(IID* piid)
{
    ComPtr<IProvideClassInfo2> classInfo;
    return SUCCEEDED(classInfo.From(m_pObject)) &&
           SUCCEEDED(classInfo->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, piid));
}

void COleControlSite::ConnectEvents()
{
    ComPtr<IConnectionPointContainer> container;
    ComPtr<IConnectionPoint> point;
    if (GetEventIID(&m_iidEvents) && SUCCEEDED(container.From(m_pObject)) &&
        SUCCEEDED(container->FindConnectionPoint(m_iidEvents, point.Receive())))
        point->Advise(m_pSiteObject->Events(), &m_dwEventSink);
}

void COleControlSite::DisconnectEvents()
{
    ComPtr<IConnectionPointContainer> container;
    ComPtr<IConnectionPoint> point;
    if (m_dwEventSink != 0 && SUCCEEDED(container.From(m_pObject)) &&
        SUCCEEDED(container->FindConnectionPoint(m_iidEvents, point.Receive())))
        point->Unadvise(m_dwEventSink);
    m_dwEventSink = 0;
}

HRESULT COleControlSite::OnEvent(DISPID dispid, const DISPPARAMS& params)
{
    // The control's own object comes first. Its handler may end the control, and this site with it.
    const ComPtr<SiteObject> alive(m_pSiteObject);
    if (CCmdTarget* const control = m_pWndCtrl) {
        const HRESULT result =
            DispatchEvent(control, control->GetEventSinkMap(), TRUE, m_nID, dispid, params);
        if (result != S_FALSE)
            return result;
        if (!alive->HasSite())
            return S_OK;
    }
    CCmdTarget* const window = m_pCtrlCont->m_pWnd;
    const HRESULT result = DispatchEvent(window, window->GetEventSinkMap(), FALSE, m_nID, dispid, params);
    return result == S_FALSE ? S_OK : result;
}

// ---- Destruction

void COleControlSite::Deactivate()
{
    if (m_pInPlaceObject == nullptr)
        return;
    const ComPtr<IOleInPlaceObject> inPlace(m_pInPlaceObject);
    inPlace->UIDeactivate();
    inPlace->InPlaceDeactivate();
}

BOOL COleControlSite::DestroyControl()
{
    if (m_pObject == nullptr)
        return FALSE;
    m_pCtrlCont->Remove(this);
    return TRUE;
}

void COleControlSite::Close()
{
    if (m_pObject != nullptr) {
        DisconnectEvents();
        Deactivate();
        m_pObject->Close(OLECLOSE_NOSAVE);
        m_pObject->SetClientSite(nullptr);
    }
    DetachWindow();
    if (m_pCtrlCont->m_pSiteUIActive == this)
        m_pCtrlCont->m_pSiteUIActive = nullptr;
    m_dispDriver.ReleaseDispatch();
    ReleaseMember(m_pActiveObject);
    ReleaseMember(m_pInPlaceObject);
    ReleaseMember(m_pControl);
    ReleaseMember(m_pObject);
    if (CWnd* const window = std::exchange(m_pWndCtrl, nullptr)) {
        window->m_pCtrlSite = nullptr;
        window->PostNcDestroy();
    }
}
