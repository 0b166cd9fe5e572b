// The COM faces of a control's site.
#pragma once

#include "ole_object.h"

#include <afxocc.h>

namespace afx_subset
{

// What a control is given as its site, which a control may hold longer than its site lives; it then answers
// E_UNEXPECTED. Whoever calls into a control holds it too, to see whether the site has outlived the call: the
// control may run code of the host, which may end the control.
class SiteObject final : public Counted<IOleClientSite, IOleInPlaceSite, IOleControlSite, IDispatch>
{
public:
    explicit SiteObject(COleControlSite* site) : m_site(site), m_events(*this) {}

    // The site is gone.
    void Forget() { m_site = nullptr; }
    bool HasSite() const { return m_site != nullptr; }
    // The sink that is advised of the control's events.
    IDispatch* Events() { return &m_events; }
    IOleClientSite* ClientSite() { return this; }

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override;

    // IOleClientSite
    STDMETHODIMP SaveObject() override { return E_NOTIMPL; }
    STDMETHODIMP GetMoniker(DWORD assign, DWORD which, IMoniker** moniker) override;
    STDMETHODIMP GetContainer(IOleContainer** container) override;
    STDMETHODIMP ShowObject() override { return S_OK; }
    STDMETHODIMP OnShowWindow(BOOL) override { return S_OK; }
    STDMETHODIMP RequestNewObjectLayout() override { return E_NOTIMPL; }

    // IOleInPlaceSite
    STDMETHODIMP GetWindow(HWND* window) override;
    STDMETHODIMP ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }
    STDMETHODIMP CanInPlaceActivate() override { return S_OK; }
    STDMETHODIMP OnInPlaceActivate() override;
    STDMETHODIMP OnUIActivate() override;
    STDMETHODIMP GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document, RECT* position,
                                  RECT* clip, OLEINPLACEFRAMEINFO* frameInfo) override;
    STDMETHODIMP Scroll(SIZE) override { return S_FALSE; }
    STDMETHODIMP OnUIDeactivate(BOOL undoable) override;
    STDMETHODIMP OnInPlaceDeactivate() override;
    STDMETHODIMP DiscardUndoState() override { return E_NOTIMPL; }
    STDMETHODIMP DeactivateAndUndo() override { return E_NOTIMPL; }
    STDMETHODIMP OnPosRectChange(const RECT* position) override;

    // IOleControlSite
    STDMETHODIMP OnControlInfoChanged() override;
    STDMETHODIMP LockInPlaceActive(BOOL) override { return S_OK; }
    STDMETHODIMP GetExtendedControl(IDispatch** control) override;
    STDMETHODIMP TransformCoords(POINTL* himetric, POINTF* container, DWORD flags) override;
    STDMETHODIMP TranslateAccelerator(MSG* msg, DWORD modifiers) override;
    STDMETHODIMP OnFocus(BOOL) override { return S_OK; }
    STDMETHODIMP ShowPropertyFrame() override { return E_NOTIMPL; }

    // IDispatch: the ambient properties
    STDMETHODIMP GetTypeInfoCount(UINT* count) override;
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo** info) override;
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return DISP_E_UNKNOWNNAME; }
    STDMETHODIMP Invoke(DISPID dispid, REFIID, LCID, WORD flags, DISPPARAMS* params, VARIANT* result,
                        EXCEPINFO*, UINT*) override;

private:
    ~SiteObject() override = default;

    // The events' own IDispatch; it shares the count.
    class EventSink : public IDispatch
    {
    public:
        explicit EventSink(SiteObject& owner) : m_owner(owner) {}
        STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
        STDMETHODIMP_(ULONG) AddRef() override { return m_owner.AddRef(); }
        STDMETHODIMP_(ULONG) Release() override { return m_owner.Release(); }
        STDMETHODIMP GetTypeInfoCount(UINT* count) override { return m_owner.GetTypeInfoCount(count); }
        STDMETHODIMP GetTypeInfo(UINT i, LCID lcid, ITypeInfo** info) override
        {
            return m_owner.GetTypeInfo(i, lcid, info);
        }
        STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override
        {
            return DISP_E_UNKNOWNNAME;
        }
        STDMETHODIMP Invoke(DISPID dispid, REFIID, LCID, WORD, DISPPARAMS* params, VARIANT*, EXCEPINFO*,
                            UINT*) override;

    private:
        SiteObject& m_owner;
    };

    COleControlSite* m_site;
    EventSink m_events;

    friend class EventSink;
};

// Pixels and units of 0.01 mm at the screen's resolution.
SIZEL HimetricFromPixels(SIZE pixels);
SIZE PixelsFromHimetric(SIZEL himetric);

} // namespace afx_subset
