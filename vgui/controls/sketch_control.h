// The ActiveX control that shows a sketch of entities with attributes.
#pragma once

#include "vgui/export.h"

#include <afxdisp.h>

// The control's record of one attribute. Its layout is the control's own affair.
struct VOAttribute;

// Creates the sketch control in a window and passes every call on to it. The host enables control containment
// (AfxEnableControlContainer) before.
//
// Nothing is kept here: each method calls the control's member of the same name. A member that fails, or
// raises an exception, throws COleException or COleDispatchException. Without a control nothing happens:
// results are 0, an empty text, null. Colours are COLORREF values; lengths, angles and coordinates are the
// sketch's own. A long* goes to the control as it stands, as the address of a value, an array or a callback:
// it must be what the control expects, for as long as the control uses it.
class VGUI_API CVOSlide4 : public CWnd
{
    DECLARE_DYNCREATE(CVOSlide4)

public:
    CVOSlide4() = default;

    // The class identifier of the control that Create makes.
    static const CLSID& GetClsid();

    // Create the control as CWnd::CreateControl does: rect in client coordinates of the parent, in pixels.
    // The first form ignores the class name and the context. pPersist, which stays the caller's, holds the
    // control's saved state from its position on: a stream, or with bStorage a storage. FALSE when the
    // control is not registered, or refuses.
    BOOL Create(LPCTSTR lpszClassName, LPCTSTR lpszWindowName, DWORD dwStyle, const RECT& rect,
                CWnd* pParentWnd, UINT nID, CCreateContext* pContext = nullptr) override;
    BOOL Create(LPCTSTR lpszWindowName, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID,
                CFile* pPersist = nullptr, BOOL bStorage = FALSE);

    COLORREF GetForeColor();
    void SetForeColor(COLORREF newValue);

    void SetInit();
    void SetAutoCad(long autoCad);
    void SetGAJJTK(LPCTSTR name);
    void SetGAJJTName(LPCTSTR name);
    void SetAxisColor(long color);
    void SetAxialCoord(float x, float y);
    void SetRotatePoint(float x, float y);
    void SetRotateAngle(float angle);
    void GetEntityArray(long* entities);
    void SetEntityArray(long* entities, long* attributes);
    void SetBkColor(long color);
    long GetBkColor();
    void SetEditAttr(long edit);
    void SetShowMenu(long show);
    void SetShowDlg(long show);
    // The control's record of an attribute, which stays the control's; null when it answers none.
    const VOAttribute* GetAttribute(const CString& name);
    // The attribute's value as text, empty when it has none.
    CString GetAttributeValue(const CString& name);
    long SetAttributeValue(LPCTSTR name, LPCTSTR value);
    long HighlightAttribute(LPCTSTR name);
    void SubscribeAttChangeNotify(long* callback);
    void SubscribeAttSelectNotify(long* callback);
    void UnSubscribeAttChangeNotify(long* callback);
    void UnSubscribeAttSelectNotify(long* callback);
    void GetAttributeArray(long* attributes);
    void SetHighlightFlashTime(long time);
    void ResetAllAttribute();
    void SetDrawAxis(long draw);
    void SetDrawBorder(long draw);
    void SetBorderColor(long color);
    void GetBmpSketch(long* bitmap, long arg2, long arg3, long arg4, long arg5, long arg6);
    void SetTextHigh(short height);
    void UpdateEdit();
    void FitSize();
    long GetEntityCount();
    long SubscribeAttChangeNotifyEx(long* callback);
    long UnSubscribeAttChangeNotifyEx(long* callback);
    // The caller frees the two texts with SysFreeString; they must be null or its own before.
    long GetEntityInfoByIndex(long index, BSTR* name, BSTR* info);
    CString GetEntityInfoByName(LPCTSTR name);
    long SetEntityInfoByIndex(long index, LPCTSTR info);
    long SetEntityInfoByName(LPCTSTR name, LPCTSTR info);
    void StartFirstEditAttr();
    void SortEntsByName(LPCTSTR name);
    long SetEntityColor(LPCTSTR name, long color);
    long SetGAJJTStream(long* stream, long size);
    long SetTextValue(LPCTSTR name, LPCTSTR value);
    void CreateEntity();
    void SetExcursionEntity(short entity, double excursion);
    void SetDeleteEntData(long data);
    void AboutBox();

private:
    // The members themselves, whose results the public ones read.
    void GetAttribute(LPCTSTR name, COleVariant& result);
    void GetAttributeValue(LPCTSTR name, COleVariant& result);

    template <class Result = void, class... Args>
    Result Call(DISPID member, Args... args);
};
