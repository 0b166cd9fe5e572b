// The controls of a window, and CWnd's part in containing and being a control.
#include <afxocc.h>

#include "ole_ptr.h"
#include "ole_site_object.h"

#include <algorithm>
#include <cstdarg>

using namespace afx_subset;

COleControlContainer::COleControlContainer(CWnd* pWnd) : m_pWnd(pWnd) {}

COleControlContainer::~COleControlContainer()
{
    // One by one: a control that goes may be the last to use another one's window object.
    while (!m_sites.empty())
        Remove(m_sites.back().get());
}

BOOL COleControlContainer::CreateControl(CWnd* pWndCtrl, REFCLSID clsid, LPCTSTR lpszWindowName,
                                         DWORD dwStyle, const POINT* ppt, const SIZE* psize, UINT nID,
                                         CFile* pPersist, BOOL bStorage, BSTR bstrLicKey)
{
    COleControlSite* site = nullptr;
    if (!m_pWnd->CreateControlSite(this, &site, nID, clsid) || site == nullptr)
        return FALSE;
    m_sites.emplace_back(site);
    const ComPtr<SiteObject> alive(site->m_pSiteObject);
    // The file that the state is read from may throw.
    const HRESULT result = WithoutExceptions([&] {
        return site->CreateControl(pWndCtrl, clsid, lpszWindowName, dwStyle, ppt, psize, nID, pPersist,
                                   bStorage, bstrLicKey);
    });
    if (SUCCEEDED(result))
        return TRUE;
    TRACE(_T("A control cannot be created: %08x.\n"), static_cast<unsigned>(result));
    // A site that is gone may have gone with this container.
    if (alive->HasSite())
        Remove(site);
    return FALSE;
}

COleControlSite* COleControlContainer::FindItem(UINT nID) const
{
    const auto found =
        std::find_if(m_sites.begin(), m_sites.end(), [nID](const auto& site) { return site->m_nID == nID; });
    return found != m_sites.end() ? found->get() : nullptr;
}

void COleControlContainer::Remove(COleControlSite* pSite)
{
    const auto found = std::find_if(m_sites.begin(), m_sites.end(),
                                    [pSite](const auto& site) { return site.get() == pSite; });
    if (found == m_sites.end())
        return;
    // Out of the list first: while it ends, the control may cause others to go.
    const std::unique_ptr<COleControlSite> site = std::move(*found);
    m_sites.erase(found);
}

void COleControlContainer::OnUIActivate(COleControlSite* pSite)
{
    COleControlSite* const former = std::exchange(m_pSiteUIActive, pSite);
    if (former == nullptr || former == pSite || former->m_pInPlaceObject == nullptr)
        return;
    const ComPtr<IOleInPlaceObject> inPlace(former->m_pInPlaceObject);
    inPlace->UIDeactivate();
}

void COleControlContainer::DeactivateAll()
{
    for (size_t i = 0; i < m_sites.size(); ++i)
        m_sites[i]->Deactivate();
}

BOOL COleControlContainer::OnMnemonic(MSG* pMsg)
{
    for (size_t i = 0; i < m_sites.size(); ++i) {
        const ComPtr<SiteObject> alive(m_sites[i]->m_pSiteObject);
        // A site that has gone over it may have gone with this container; the key has had its effect.
        if (m_sites[i]->OnMnemonic(pMsg) || !alive->HasSite())
            return TRUE;
    }
    return FALSE;
}

// ---- CWnd

BOOL CWnd::CreateControl(LPCTSTR pszClass, LPCTSTR pszWindowName, DWORD dwStyle, const RECT& rect,
                         CWnd* pParentWnd, UINT nID, CFile* pPersist, BOOL bStorage, BSTR bstrLicKey)
{
    CLSID clsid{};
    if (pszClass == nullptr || FAILED(pszClass[0] == L'{' ? ::CLSIDFromString(pszClass, &clsid)
                                                          : ::CLSIDFromProgID(pszClass, &clsid)))
        return FALSE;
    return CreateControl(clsid, pszWindowName, dwStyle, rect, pParentWnd, nID, pPersist, bStorage,
                         bstrLicKey);
}

BOOL CWnd::CreateControl(REFCLSID clsid, LPCTSTR pszWindowName, DWORD dwStyle, const RECT& rect,
                         CWnd* pParentWnd, UINT nID, CFile* pPersist, BOOL bStorage, BSTR bstrLicKey)
{
    const CRect place(rect);
    const CPoint origin = place.TopLeft();
    const CSize size = place.Size();
    return CreateControl(clsid, pszWindowName, dwStyle, &origin, &size, pParentWnd, nID, pPersist, bStorage,
                         bstrLicKey);
}

BOOL CWnd::CreateControl(REFCLSID clsid, LPCTSTR pszWindowName, DWORD dwStyle, const POINT* ppt,
                         const SIZE* psize, CWnd* pParentWnd, UINT nID, CFile* pPersist, BOOL bStorage,
                         BSTR bstrLicKey)
{
    if (!AfxGetModuleState()->m_bControlContainer) {
        TRACE(_T("CreateControl needs AfxEnableControlContainer.\n"));
        return FALSE;
    }
    const bool free = m_hWnd == nullptr && m_pCtrlSite == nullptr;
    if (!free || ppt == nullptr || pParentWnd->GetSafeHwnd() == nullptr ||
        FromHandlePermanent(pParentWnd->m_hWnd) != pParentWnd)
        return FALSE;
    AfxOleInit();
    if (pParentWnd->m_pCtrlCont == nullptr)
        pParentWnd->m_pCtrlCont = new COleControlContainer(pParentWnd);
    return pParentWnd->m_pCtrlCont->CreateControl(this, clsid, pszWindowName, dwStyle, ppt, psize, nID,
                                                  pPersist, bStorage, bstrLicKey);
}

BOOL CWnd::CreateControlSite(COleControlContainer* pContainer, COleControlSite** ppSite, UINT, REFCLSID)
{
    *ppSite = new COleControlSite(pContainer);
    return TRUE;
}

LPUNKNOWN CWnd::GetControlUnknown()
{
    return m_pCtrlSite != nullptr ? m_pCtrlSite->m_pObject : nullptr;
}

void AFX_CDECL CWnd::InvokeHelper(DISPID dwDispID, WORD wFlags, VARTYPE vtRet, void* pvRet,
                                  const BYTE* pbParamInfo, ...)
{
    if (m_pCtrlSite == nullptr)
        return;
    va_list list;
    va_start(list, pbParamInfo);
    m_pCtrlSite->InvokeHelperV(dwDispID, wFlags, vtRet, pvRet, pbParamInfo, list);
    va_end(list);
}

void CWnd::GetProperty(DISPID dwDispID, VARTYPE vtProp, void* pvProp) const
{
    if (m_pCtrlSite != nullptr)
        m_pCtrlSite->GetProperty(dwDispID, vtProp, pvProp);
}

void AFX_CDECL CWnd::SetProperty(DISPID dwDispID, VARTYPE vtProp, ...)
{
    if (m_pCtrlSite == nullptr)
        return;
    va_list list;
    va_start(list, vtProp);
    m_pCtrlSite->SetPropertyV(dwDispID, vtProp, list);
    va_end(list);
}

COleControlSite* CWnd::GetOleControlSite(UINT idControl) const
{
    return m_pCtrlCont != nullptr ? m_pCtrlCont->FindItem(idControl) : nullptr;
}

// ---- Ambient properties

namespace
{

// The colours that the window would give a static control; its brush is not looked at.
COLORREF ControlColor(const CWnd& window, COLORREF (*read)(HDC))
{
    const HDC dc = ::GetDC(window.m_hWnd);
    window.SendMessage(WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(dc),
                       reinterpret_cast<LPARAM>(window.m_hWnd));
    const COLORREF color = read(dc);
    ::ReleaseDC(window.m_hWnd, dc);
    return color;
}

LPDISPATCH NewFont(const CWnd& window)
{
    LOGFONT logFont{};
    CFont* const windowFont = window.GetFont();
    const HGDIOBJ font = windowFont != nullptr ? windowFont->m_hObject : ::GetStockObject(DEFAULT_GUI_FONT);
    ::GetObject(font, sizeof(logFont), &logFont);
    const HDC screen = ::GetDC(nullptr);
    const LONGLONG points = -::MulDiv(logFont.lfHeight, 72, ::GetDeviceCaps(screen, LOGPIXELSY));
    ::ReleaseDC(nullptr, screen);

    FONTDESC description{};
    description.cbSizeofstruct = sizeof(description);
    description.lpstrName = logFont.lfFaceName;
    description.cySize.int64 = (points > 0 ? points : -points) * 10000; // a currency
    description.sWeight = static_cast<SHORT>(logFont.lfWeight);
    description.sCharset = logFont.lfCharSet;
    description.fItalic = logFont.lfItalic;
    description.fUnderline = logFont.lfUnderline;
    description.fStrikethrough = logFont.lfStrikeOut;
    LPDISPATCH object = nullptr;
    ::OleCreateFontIndirect(&description, IID_IDispatch, reinterpret_cast<void**>(&object));
    return object;
}

void SetBool(VARIANT& value, bool on)
{
    value.vt = VT_BOOL;
    value.boolVal = on ? VARIANT_TRUE : VARIANT_FALSE;
}

void SetLong(VARIANT& value, LONG number)
{
    value.vt = VT_I4;
    value.lVal = number;
}

} // namespace

BOOL CWnd::OnAmbientProperty(COleControlSite*, DISPID dispid, VARIANT* pvar)
{
    switch (dispid) {
    case DISPID_AMBIENT_BACKCOLOR:
        SetLong(*pvar, static_cast<LONG>(ControlColor(*this, ::GetBkColor)));
        return TRUE;
    case DISPID_AMBIENT_FORECOLOR:
        SetLong(*pvar, static_cast<LONG>(ControlColor(*this, ::GetTextColor)));
        return TRUE;
    case DISPID_AMBIENT_FONT:
        pvar->vt = VT_DISPATCH;
        pvar->pdispVal = NewFont(*this);
        return pvar->pdispVal != nullptr;
    case DISPID_AMBIENT_LOCALEID:
        SetLong(*pvar, static_cast<LONG>(::GetThreadLocale()));
        return TRUE;
    case DISPID_AMBIENT_USERMODE:
    case DISPID_AMBIENT_SUPPORTSMNEMONICS:
    case DISPID_AMBIENT_AUTOCLIP:
        SetBool(*pvar, true);
        return TRUE;
    case DISPID_AMBIENT_UIDEAD:
    case DISPID_AMBIENT_SHOWGRABHANDLES:
    case DISPID_AMBIENT_SHOWHATCHING:
    case DISPID_AMBIENT_DISPLAYASDEFAULT:
    case DISPID_AMBIENT_MESSAGEREFLECT:
        SetBool(*pvar, false);
        return TRUE;
    default:
        return FALSE;
    }
}
