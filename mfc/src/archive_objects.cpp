// CArchive: objects, stored once each, and their classes.
#include "archive_maps.h"

#include <algorithm>
#include <memory>

namespace
{

// What stands before an object: nothing (null), a class not met before, a class met before (its number with
// the class bit), or an object met before (its number). Numbers that need more than 15 bits follow a mark.
constexpr WORD kNullTag = 0;
constexpr WORD kNewClassTag = 0xFFFF;
constexpr WORD kClassTag = 0x8000;
constexpr DWORD kBigClassTag = 0x80000000;
constexpr WORD kBigObjectTag = 0x7FFF;
constexpr DWORD kMaxMapCount = 0x3FFFFFFE;

constexpr UINT kNotSerializable = 0xFFFF;

// An archive can nest its objects as deep as it likes, so the stack is watched, not the depth.
bool StackIsShort()
{
    constexpr ULONG_PTR kReserve = 128 * 1024;
    ULONG_PTR low = 0;
    ULONG_PTR high = 0;
    GetCurrentThreadStackLimits(&low, &high);
    const char here = 0;
    return reinterpret_cast<ULONG_PTR>(&here) - low < kReserve;
}

void RequireSerializable(const CRuntimeClass* type)
{
    if (type->m_wSchema == kNotSerializable)
        AfxThrowNotSupportedException();
}

} // namespace

CArchive::ObjectMaps& CArchive::Maps()
{
    if (m_pMaps == nullptr)
        m_pMaps = new ObjectMaps;
    return *m_pMaps;
}

UINT CArchive::GetObjectSchema()
{
    const UINT schema = m_nObjectSchema;
    m_nObjectSchema = static_cast<UINT>(-1);
    return schema;
}

void CArchive::SetLoadParams(UINT nGrowBy)
{
    Maps().loaded.reserve(std::min<UINT>(nGrowBy, 65536));
}

void CArchive::SetStoreParams(UINT nHashSize, UINT)
{
    Maps().stored.reserve(std::min<UINT>(nHashSize, 65536));
}

// ---- Storing
// -----------------------------------------------------------------------------------------------

void CArchive::WriteTag(DWORD tag, bool isClass)
{
    if (tag < kBigObjectTag)
        *this << static_cast<WORD>(isClass ? kClassTag | tag : tag);
    else
        *this << kBigObjectTag << (isClass ? kBigClassTag | tag : tag);
}

DWORD CArchive::StoreIndexOf(const void* object) const
{
    if (m_pMaps == nullptr)
        return 0;
    const auto found = m_pMaps->stored.find(object);
    return found == m_pMaps->stored.end() ? 0 : found->second;
}

void CArchive::WriteObject(const CObject* pOb)
{
    RequireStoring();
    if (pOb == nullptr) {
        *this << kNullTag;
        return;
    }
    if (const DWORD index = StoreIndexOf(pOb)) {
        WriteTag(index, false);
        return;
    }
    WriteClass(pOb->GetRuntimeClass());
    MapObject(pOb);
    const_cast<CObject*>(pOb)->Serialize(*this);
}

void CArchive::WriteClass(const CRuntimeClass* pClassRef)
{
    RequireStoring();
    if (pClassRef == nullptr)
        AfxThrowInvalidArgException();
    RequireSerializable(pClassRef);
    if (const DWORD index = StoreIndexOf(pClassRef)) {
        WriteTag(index, true);
        return;
    }
    ObjectMaps& maps = Maps();
    if (maps.storeCount > kMaxMapCount)
        AfxThrowArchiveException(CArchiveException::badIndex, m_strFileName);
    *this << kNewClassTag;
    pClassRef->Store(*this);
    maps.stored[pClassRef] = maps.storeCount++;
}

void CArchive::MapObject(const CObject* pOb)
{
    ObjectMaps& maps = Maps();
    if (maps.Next(IsStoring()) > kMaxMapCount)
        AfxThrowArchiveException(CArchiveException::badIndex, m_strFileName);
    if (IsStoring())
        maps.stored[pOb] = maps.storeCount++;
    else
        maps.loaded.push_back({const_cast<CObject*>(pOb), nullptr, 0});
}

// ---- Loading
// -----------------------------------------------------------------------------------------------

CRuntimeClass* CArchive::ReadNewClass(UINT* pSchema)
{
    UINT stored = 0;
    CRuntimeClass* const type = CRuntimeClass::Load(*this, &stored);
    if (type == nullptr || type->m_wSchema == kNotSerializable)
        AfxThrowArchiveException(CArchiveException::badClass, m_strFileName);
    const bool versionable = (type->m_wSchema & VERSIONABLE_SCHEMA) != 0;
    if (!versionable && (type->m_wSchema & 0xFFFF) != stored)
        AfxThrowArchiveException(CArchiveException::badSchema, m_strFileName);
    if (Maps().loaded.size() > kMaxMapCount)
        AfxThrowArchiveException(CArchiveException::badIndex, m_strFileName);
    Maps().loaded.push_back({nullptr, type, stored});
    *pSchema = stored;
    return type;
}

CRuntimeClass* CArchive::ReadClass(const CRuntimeClass* pClassRefRequested, UINT* pSchema, DWORD* pObTag)
{
    RequireLoading();
    if (pClassRefRequested != nullptr)
        RequireSerializable(pClassRefRequested);

    WORD mark = 0;
    *this >> mark;
    DWORD tag = 0;
    if (mark == kBigObjectTag)
        *this >> tag;
    else
        tag = (mark & kClassTag) != 0 ? kBigClassTag | (mark & ~kClassTag) : mark;

    if ((tag & kBigClassTag) == 0) {
        if (pObTag == nullptr)
            AfxThrowArchiveException(CArchiveException::badIndex, m_strFileName);
        *pObTag = tag;
        return nullptr;
    }

    CRuntimeClass* type = nullptr;
    UINT schema = 0;
    if (mark == kNewClassTag) {
        type = ReadNewClass(&schema);
    } else {
        const DWORD index = tag & ~kBigClassTag;
        const std::vector<ObjectMaps::Entry>& loaded = Maps().loaded;
        if (index >= loaded.size() || loaded[index].type == nullptr)
            AfxThrowArchiveException(CArchiveException::badIndex, m_strFileName);
        type = loaded[index].type;
        schema = loaded[index].schema;
    }
    if (pClassRefRequested != nullptr && !type->IsDerivedFrom(pClassRefRequested))
        AfxThrowArchiveException(CArchiveException::badClass, m_strFileName);
    if (pSchema != nullptr)
        *pSchema = schema;
    else
        m_nObjectSchema = schema;
    return type;
}

CObject* CArchive::LoadNewObject(CRuntimeClass* stored, UINT schema)
{
    if (StackIsShort())
        AfxThrowArchiveException(CArchiveException::genericException, m_strFileName);
    std::unique_ptr<CObject> object(stored->CreateObject());
    if (object == nullptr)
        AfxThrowMemoryException();
    // Known before its contents are read, for they may refer back to it.
    const size_t index = Maps().loaded.size();
    MapObject(object.get());
    const UINT outerSchema = m_nObjectSchema;
    m_nObjectSchema = schema;
    try {
        object->Serialize(*this);
    } catch (...) {
        // Nobody else has the half-read object, so it goes.
        if (m_pMaps != nullptr && index < m_pMaps->loaded.size())
            m_pMaps->loaded[index].object = nullptr;
        throw;
    }
    m_nObjectSchema = outerSchema;
    return object.release();
}

CObject* CArchive::ReadObject(const CRuntimeClass* pClass)
{
    UINT schema = 0;
    DWORD tag = 0;
    CRuntimeClass* const stored = ReadClass(pClass, &schema, &tag);
    if (stored != nullptr)
        return LoadNewObject(stored, schema);

    const std::vector<ObjectMaps::Entry>& loaded = Maps().loaded;
    if (tag >= loaded.size() || loaded[tag].type != nullptr)
        AfxThrowArchiveException(CArchiveException::badIndex, m_strFileName);
    CObject* const object = loaded[tag].object;
    if (object != nullptr && pClass != nullptr && !object->IsKindOf(pClass))
        AfxThrowArchiveException(CArchiveException::badClass, m_strFileName);
    return object;
}

void CArchive::SerializeClass(const CRuntimeClass* pClassRef)
{
    if (IsStoring())
        WriteClass(pClassRef);
    else
        ReadClass(pClassRef);
}

CArchive& AFXAPI operator<<(CArchive& ar, const CObject* pOb)
{
    ar.WriteObject(pOb);
    return ar;
}

CArchive& AFXAPI operator>>(CArchive& ar, CObject*& pOb)
{
    pOb = ar.ReadObject(nullptr);
    return ar;
}

CArchive& AFXAPI operator>>(CArchive& ar, const CObject*& pOb)
{
    pOb = ar.ReadObject(nullptr);
    return ar;
}
