// CGdiObject: the handle of a pen, brush, font, bitmap, palette or region, and who owns it.
#include <afxwin.h>

#include "gdi_handle_traits.h"

using afx_subset::GdiMap;

IMPLEMENT_DYNCREATE(CGdiObject, CObject)

namespace afx_subset
{

namespace
{

CGdiObject* NewObjectOfType(DWORD type)
{
    switch (type) {
    case OBJ_PEN:
    case OBJ_EXTPEN:
        return new CPen;
    case OBJ_BRUSH:
        return new CBrush;
    case OBJ_FONT:
        return new CFont;
    case OBJ_BITMAP:
        return new CBitmap;
    case OBJ_PAL:
        return new CPalette;
    case OBJ_REGION:
        return new CRgn;
    default:
        return new CGdiObject;
    }
}

} // namespace

CGdiObject* HandleTraits<CGdiObject>::Make(HGDIOBJ handle)
{
    CGdiObject* object = NewObjectOfType(::GetObjectType(handle));
    object->m_hObject = handle;
    return object;
}

void HandleTraits<CGdiObject>::Drop(CGdiObject* object)
{
    object->m_hObject = nullptr;
    delete object;
}

} // namespace afx_subset

CGdiObject::CGdiObject() : m_hObject(nullptr) {}

CGdiObject::~CGdiObject()
{
    DeleteObject();
}

CGdiObject::operator HGDIOBJ() const
{
    return GetSafeHandle();
}

HGDIOBJ CGdiObject::GetSafeHandle() const
{
    return this == nullptr ? nullptr : m_hObject;
}

CGdiObject* PASCAL CGdiObject::FromHandle(HGDIOBJ hObject)
{
    CGdiObject* object = GdiMap().FromHandle(hObject);
    // A temporary object whose handle was deleted or detached through it stands again for the same value,
    // which the system has given to a new object.
    if (object != nullptr)
        object->m_hObject = hObject;
    return object;
}

void PASCAL CGdiObject::DeleteTempMap()
{
    GdiMap().DropTemporaries();
}

BOOL CGdiObject::Attach(HGDIOBJ hObject)
{
    ASSERT(m_hObject == nullptr);
    if (hObject == nullptr)
        return FALSE;
    // Only a program error gets here with another handle still held; that one goes on living without us.
    Detach();
    m_hObject = hObject;
    GdiMap().SetPermanent(hObject, this);
    return TRUE;
}

HGDIOBJ CGdiObject::Detach()
{
    const HGDIOBJ handle = m_hObject;
    if (handle != nullptr && GdiMap().Permanent(handle) == this)
        GdiMap().RemoveHandle(handle);
    m_hObject = nullptr;
    return handle;
}

BOOL CGdiObject::DeleteObject()
{
    return m_hObject != nullptr && ::DeleteObject(Detach());
}

int CGdiObject::GetObject(int nCount, LPVOID lpObject) const
{
    return ::GetObject(m_hObject, nCount, lpObject);
}

UINT CGdiObject::GetObjectType() const
{
    return m_hObject == nullptr ? 0 : ::GetObjectType(m_hObject);
}

BOOL CGdiObject::CreateStockObject(int nIndex)
{
    return Attach(::GetStockObject(nIndex));
}

BOOL CGdiObject::UnrealizeObject()
{
    return ::UnrealizeObject(m_hObject);
}

BOOL CGdiObject::operator==(const CGdiObject& obj) const
{
    return m_hObject == obj.m_hObject;
}

BOOL CGdiObject::operator!=(const CGdiObject& obj) const
{
    return m_hObject != obj.m_hObject;
}
