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

    // The class identifier of the control that Create makes: this library's own identifier for the control,
    // which is not part of it. Register the control under it, or put the control's own in its one place here.
    static const CLSID& GetClsid();

    // Create the control as CWnd::CreateControl does: rect in client coordinates of the parent, in pixels.
    // The first form ignores the class name and the context. pPersist, which stays the caller's, holds the
    // control's saved state from its position on: a stream, or with bStorage a storage. FALSE when the
    // control is not registered, or refuses.
    BOOL Create(LPCTSTR lpszClassName, LPCTSTR lpszWindowName, DWORD dwStyle, const RECT& rect,
                CWnd* pParentWnd, UINT nID, CCreateContext* pContext = nullptr) override;
    BOOL Create(LPCTSTR lpszWindowName, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID,
                CFile* pPersist = nullptr, BOOL bStorage = FALSE);

    // The control's foreground colour (stock property).
    COLORREF GetForeColor();
    // Sets the foreground colour.
    void SetForeColor(COLORREF newValue);

    // Begins a new sketch.
    void SetInit();
    // Hands the control its host program, as a value that the two agree on.
    void SetAutoCad(long autoCad);
    // Hands the control the name that it takes here.
    void SetGAJJTK(LPCTSTR name);
    // Hands the control the name that it takes here.
    void SetGAJJTName(LPCTSTR name);
    // Sets the colour of the axes.
    void SetAxisColor(long color);
    // Sets the point of the axes.
    void SetAxialCoord(float x, float y);
    // Sets the point that the sketch is turned about.
    void SetRotatePoint(float x, float y);
    // Sets the angle that the sketch is turned by.
    void SetRotateAngle(float angle);
    // Fills an array with the entities.
    void GetEntityArray(long* entities);
    // Replaces entities and attributes by those of two arrays.
    void SetEntityArray(long* entities, long* attributes);
    // Sets the background colour.
    void SetBkColor(long color);
    // The background colour.
    long GetBkColor();
    // Whether the user may edit attributes in the sketch.
    void SetEditAttr(long edit);
    // Whether the control shows its menu.
    void SetShowMenu(long show);
    // Whether the control shows its dialog.
    void SetShowDlg(long show);
    // The control's record of an attribute, which stays the control's; null when it answers none.
    const VOAttribute* GetAttribute(const CString& name);
    // The attribute's value as text, empty when it has none.
    CString GetAttributeValue(const CString& name);
    // Sets an attribute's value. The control's result.
    long SetAttributeValue(LPCTSTR name, LPCTSTR value);
    // Highlights an attribute. The control's result.
    long HighlightAttribute(LPCTSTR name);
    // Has the control tell a callback when an attribute changes.
    void SubscribeAttChangeNotify(long* callback);
    // Has the control tell a callback when an attribute is selected.
    void SubscribeAttSelectNotify(long* callback);
    // Ends a subscription of SubscribeAttChangeNotify.
    void UnSubscribeAttChangeNotify(long* callback);
    // Ends a subscription of SubscribeAttSelectNotify.
    void UnSubscribeAttSelectNotify(long* callback);
    // Fills an array with the attributes.
    void GetAttributeArray(long* attributes);
    // Sets the time of the flashing of highlighted attributes, in the control's unit.
    void SetHighlightFlashTime(long time);
    // Resets all attributes.
    void ResetAllAttribute();
    // Whether the axes are drawn.
    void SetDrawAxis(long draw);
    // Whether a border is drawn.
    void SetDrawBorder(long draw);
    // Sets the colour of the border.
    void SetBorderColor(long color);
    // Has the control make a bitmap of the sketch. The arguments are the control's.
    void GetBmpSketch(long* bitmap, long arg2, long arg3, long arg4, long arg5, long arg6);
    // Sets the height of texts.
    void SetTextHigh(short height);
    // Has the control refresh what is being edited.
    void UpdateEdit();
    // Fits the sketch into the control.
    void FitSize();
    // The number of entities.
    long GetEntityCount();
    // As SubscribeAttChangeNotify, with the control's result.
    long SubscribeAttChangeNotifyEx(long* callback);
    // As UnSubscribeAttChangeNotify, with the control's result.
    long UnSubscribeAttChangeNotifyEx(long* callback);
    // The name of an entity and the information kept with it. The caller frees the two texts with
    // SysFreeString; they must be null or its own before.
    long GetEntityInfoByIndex(long index, BSTR* name, BSTR* info);
    // The information kept with an entity, by the entity's name.
    CString GetEntityInfoByName(LPCTSTR name);
    // Sets the information kept with an entity, by the entity's index. The control's result.
    long SetEntityInfoByIndex(long index, LPCTSTR info);
    // The same, by the entity's name.
    long SetEntityInfoByName(LPCTSTR name, LPCTSTR info);
    // Begins editing the first attribute.
    void StartFirstEditAttr();
    // Sorts the entities by name.
    void SortEntsByName(LPCTSTR name);
    // Sets an entity's colour. The control's result.
    long SetEntityColor(LPCTSTR name, long color);
    // Hands the control a stream of the given size. The control's result.
    long SetGAJJTStream(long* stream, long size);
    // Sets the value of a text, by its name. The control's result.
    long SetTextValue(LPCTSTR name, LPCTSTR value);
    // Has the control create an entity.
    void CreateEntity();
    // Sets the offset of an entity, given by the control's number for it.
    void SetExcursionEntity(short entity, double excursion);
    // Hands the control its setting for the deletion of entity data.
    void SetDeleteEntData(long data);
    // Shows the control's about box.
    void AboutBox();

private:
    // The members themselves, whose results the public ones read.
    void GetAttribute(LPCTSTR name, COleVariant& result);
    void GetAttributeValue(LPCTSTR name, COleVariant& result);

    template <class Result = void, class... Args>
    Result Call(DISPID member, Args... args);
};
