// Collections as templates: arrays, doubly linked lists, hash maps, and type-safe wrappers of the untyped
// ones.
//
// An index, position or size that does not fit throws CInvalidArgException*; want of memory throws
// CMemoryException*. Collections hold copies of what they are given and delete no pointers.
#pragma once

#include "afx.h"

#include <memory>
#include <utility>

// ---- What the collections ask of their elements
// ------------------------------------------------------------

// Stores or loads elements. The general form moves the bytes of plain data; other types need a specialisation
// and throw CNotSupportedException* without one.
template <class TYPE>
void AFXAPI SerializeElements(CArchive& ar, TYPE* pElements, INT_PTR nCount)
{
    if (!std::is_trivially_copyable_v<TYPE>)
        AfxThrowNotSupportedException();
    // In pieces that fit the archive's counts.
    BYTE* bytes = reinterpret_cast<BYTE*>(pElements);
    ULONGLONG left = static_cast<ULONGLONG>(nCount) * sizeof(TYPE);
    while (left > 0) {
        const UINT piece = static_cast<UINT>(left < 0x7FFFFFFF ? left : 0x7FFFFFFF);
        if (ar.IsStoring())
            ar.Write(bytes, piece);
        else if (ar.Read(bytes, piece) != piece)
            AfxThrowArchiveException(CArchiveException::endOfFile);
        bytes += piece;
        left -= piece;
    }
}
template <>
AFX_SUBSET_API void AFXAPI SerializeElements<CStringW>(CArchive& ar, CStringW* pElements, INT_PTR nCount);
template <>
AFX_SUBSET_API void AFXAPI SerializeElements<CStringA>(CArchive& ar, CStringA* pElements, INT_PTR nCount);
template <>
AFX_SUBSET_API void AFXAPI SerializeElements<CObject*>(CArchive& ar, CObject** pElements, INT_PTR nCount);

template <class TYPE>
void AFXAPI DumpElements(CDumpContext&, const TYPE*, INT_PTR)
{
}

// Equality of a stored element and a given one.
template <class TYPE, class ARG_TYPE>
BOOL AFXAPI CompareElements(const TYPE* pElement1, const ARG_TYPE* pElement2)
{
    return *pElement1 == *pElement2;
}

template <class ARG_KEY>
UINT AFXAPI HashKey(ARG_KEY key)
{
    // The low bits of addresses and of many numbers vary little, so all of them are mixed in.
    ULONGLONG value;
    if constexpr (std::is_pointer_v<std::remove_cvref_t<ARG_KEY>>)
        value = reinterpret_cast<ULONG_PTR>(key);
    else
        value = static_cast<ULONGLONG>(key);
    value ^= value >> 32;
    value *= 0x9E3779B97F4A7C15ULL;
    return static_cast<UINT>(value >> 32);
}
template <>
AFX_SUBSET_API UINT AFXAPI HashKey<LPCWSTR>(LPCWSTR key);
template <>
AFX_SUBSET_API UINT AFXAPI HashKey<LPCSTR>(LPCSTR key);
template <>
inline UINT AFXAPI HashKey<const CStringW&>(const CStringW& key)
{
    return HashKey<LPCWSTR>(key);
}
template <>
inline UINT AFXAPI HashKey<CStringW>(CStringW key)
{
    return HashKey<LPCWSTR>(key);
}
template <>
inline UINT AFXAPI HashKey<const CStringA&>(const CStringA& key)
{
    return HashKey<LPCSTR>(key);
}
template <>
inline UINT AFXAPI HashKey<CStringA>(CStringA key)
{
    return HashKey<LPCSTR>(key);
}

namespace afx_subset
{

// Raw storage for elements; allocation failures come out as the framework's exception.
template <class TYPE>
TYPE* AllocateElements(INT_PTR count)
{
    if (static_cast<ULONGLONG>(count) > MAXINT_PTR / sizeof(TYPE))
        AfxThrowMemoryException();
    void* memory = ::operator new(static_cast<size_t>(count) * sizeof(TYPE), std::nothrow);
    if (memory == nullptr)
        AfxThrowMemoryException();
    return static_cast<TYPE*>(memory);
}

// A place in a list or map; want of memory comes out as the framework's exception.
struct CollectionNode : public __POSITION {
    void* operator new(size_t size) { return AllocateElements<BYTE>(static_cast<INT_PTR>(size)); }
    void operator delete(void* memory) { ::operator delete(memory); }
};

// The count of elements in an archive, refused when it cannot be real.
inline INT_PTR ReadElementCount(CArchive& ar)
{
    const DWORD_PTR count = ar.ReadCount();
    if (count > static_cast<DWORD_PTR>(MAXINT_PTR))
        AfxThrowArchiveException(CArchiveException::badIndex);
    return static_cast<INT_PTR>(count);
}

} // namespace afx_subset

// ---- CArray
// ------------------------------------------------------------------------------------------------

// A dynamic array of value-initialised elements.
template <class TYPE, class ARG_TYPE = const TYPE&>
class CArray : public CObject
{
public:
    typedef TYPE BASE_TYPE;
    typedef ARG_TYPE BASE_ARG_TYPE;

    CArray() = default;
    ~CArray() override { Release(); }

    INT_PTR GetSize() const { return m_nSize; }
    INT_PTR GetCount() const { return m_nSize; }
    BOOL IsEmpty() const { return m_nSize == 0; }
    // -1 for an empty array.
    INT_PTR GetUpperBound() const { return m_nSize - 1; }
    // Grows with value-initialised elements or cuts off. nGrowBy above 0 is the least growth in elements from
    // now on; 0 leaves it to the array.
    void SetSize(INT_PTR nNewSize, INT_PTR nGrowBy = -1);
    void FreeExtra() { Reallocate(m_nSize); }
    void RemoveAll() { Release(); }

    const TYPE& GetAt(INT_PTR nIndex) const { return m_pData[Checked(nIndex)]; }
    TYPE& GetAt(INT_PTR nIndex) { return m_pData[Checked(nIndex)]; }
    void SetAt(INT_PTR nIndex, ARG_TYPE newElement) { m_pData[Checked(nIndex)] = newElement; }
    const TYPE& ElementAt(INT_PTR nIndex) const { return m_pData[Checked(nIndex)]; }
    TYPE& ElementAt(INT_PTR nIndex) { return m_pData[Checked(nIndex)]; }
    const TYPE& operator[](INT_PTR nIndex) const { return m_pData[Checked(nIndex)]; }
    TYPE& operator[](INT_PTR nIndex) { return m_pData[Checked(nIndex)]; }
    // The elements in a row, null for an empty array.
    const TYPE* GetData() const { return m_pData; }
    TYPE* GetData() { return m_pData; }

    // Grows the array up to the index if need be.
    void SetAtGrow(INT_PTR nIndex, ARG_TYPE newElement);
    // The index of the new element.
    INT_PTR Add(ARG_TYPE newElement);
    // The index of the first element appended.
    INT_PTR Append(const CArray& src);
    void Copy(const CArray& src);
    // Inserts nCount copies; past the end, the array grows up to the index first.
    void InsertAt(INT_PTR nIndex, ARG_TYPE newElement, INT_PTR nCount = 1);
    void InsertAt(INT_PTR nStartIndex, CArray* pNewArray);
    void RemoveAt(INT_PTR nIndex, INT_PTR nCount = 1);

    void Serialize(CArchive& ar) override;

private:
    INT_PTR Checked(INT_PTR nIndex) const
    {
        if (nIndex < 0 || nIndex >= m_nSize)
            AfxThrowInvalidArgException();
        return nIndex;
    }
    INT_PTR GrownCapacity(INT_PTR needed) const;
    void Reallocate(INT_PTR capacity);
    void Release();
    // Opens a gap of value-initialised elements.
    void OpenGap(INT_PTR nIndex, INT_PTR nCount);

    TYPE* m_pData = nullptr;
    INT_PTR m_nSize = 0;
    INT_PTR m_nMaxSize = 0;
    INT_PTR m_nGrowBy = 0;
};

// ---- CList
// -------------------------------------------------------------------------------------------------

// A doubly linked list. A POSITION stays valid until its element is removed; null means "none".
template <class TYPE, class ARG_TYPE = const TYPE&>
class CList : public CObject
{
protected:
    struct CNode : public afx_subset::CollectionNode {
        explicit CNode(ARG_TYPE value) : data(value) {}
        CNode() : data() {}
        CNode* pNext = nullptr;
        CNode* pPrev = nullptr;
        TYPE data;
    };

public:
    typedef TYPE BASE_TYPE;
    typedef ARG_TYPE BASE_ARG_TYPE;

    // The block size is accepted and not needed: nodes are allocated one by one.
    explicit CList(INT_PTR nBlockSize = 10) { UNUSED_ALWAYS(nBlockSize); }
    ~CList() override { RemoveAll(); }

    INT_PTR GetCount() const { return m_nCount; }
    INT_PTR GetSize() const { return m_nCount; }
    BOOL IsEmpty() const { return m_nCount == 0; }

    TYPE& GetHead() { return Checked(m_pNodeHead)->data; }
    const TYPE& GetHead() const { return Checked(m_pNodeHead)->data; }
    TYPE& GetTail() { return Checked(m_pNodeTail)->data; }
    const TYPE& GetTail() const { return Checked(m_pNodeTail)->data; }
    TYPE RemoveHead() { return Take(Checked(m_pNodeHead)); }
    TYPE RemoveTail() { return Take(Checked(m_pNodeTail)); }

    POSITION AddHead(ARG_TYPE newElement) { return Link(new CNode(newElement), m_pNodeHead); }
    POSITION AddTail(ARG_TYPE newElement) { return Link(new CNode(newElement), nullptr); }
    // Adds the other list's elements in their order.
    void AddHead(CList* pNewList);
    void AddTail(CList* pNewList);
    void RemoveAll();

    POSITION GetHeadPosition() const { return m_pNodeHead; }
    POSITION GetTailPosition() const { return m_pNodeTail; }
    // The element at the position, which moves on and is null behind the last element.
    TYPE& GetNext(POSITION& rPosition)
    {
        CNode* node = NodeAt(rPosition);
        rPosition = node->pNext;
        return node->data;
    }
    const TYPE& GetNext(POSITION& rPosition) const { return const_cast<CList*>(this)->GetNext(rPosition); }
    TYPE& GetPrev(POSITION& rPosition)
    {
        CNode* node = NodeAt(rPosition);
        rPosition = node->pPrev;
        return node->data;
    }
    const TYPE& GetPrev(POSITION& rPosition) const { return const_cast<CList*>(this)->GetPrev(rPosition); }
    TYPE& GetAt(POSITION position) { return NodeAt(position)->data; }
    const TYPE& GetAt(POSITION position) const { return NodeAt(position)->data; }
    void SetAt(POSITION pos, ARG_TYPE newElement) { NodeAt(pos)->data = newElement; }
    void RemoveAt(POSITION position) { Unlink(NodeAt(position)); }
    // With a null position, at the head (before) or at the tail (after).
    POSITION InsertBefore(POSITION position, ARG_TYPE newElement);
    POSITION InsertAfter(POSITION position, ARG_TYPE newElement);

    // The first element equal to the value, searched behind startAfter; null when there is none.
    POSITION Find(ARG_TYPE searchValue, POSITION startAfter = NULL) const;
    // The position of the zero-based element; null outside the list.
    POSITION FindIndex(INT_PTR nIndex) const;

    void Serialize(CArchive& ar) override;

private:
    static CNode* Checked(CNode* node)
    {
        if (node == nullptr)
            AfxThrowInvalidArgException();
        return node;
    }
    static CNode* NodeAt(POSITION position) { return Checked(static_cast<CNode*>(position)); }
    // Links a node before another one, at the tail for null.
    CNode* Link(CNode* node, CNode* before);
    void Unlink(CNode* node);
    TYPE Take(CNode* node)
    {
        TYPE value = std::move(node->data);
        Unlink(node);
        return value;
    }

    CNode* m_pNodeHead = nullptr;
    CNode* m_pNodeTail = nullptr;
    INT_PTR m_nCount = 0;
};

// ---- CMap
// --------------------------------------------------------------------------------------------------

// A hash map with unique keys. Removing the association that GetNextAssoc has just answered is safe while
// iterating; adding is not.
template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
class CMap : public CObject
{
public:
    class CPair
    {
    public:
        const KEY key;
        VALUE value;

    protected:
        explicit CPair(ARG_KEY keyval) : key(keyval), value() {}
    };

protected:
    class CAssoc : public CPair, public afx_subset::CollectionNode
    {
        friend class CMap;
        CAssoc(ARG_KEY key, UINT hash, CAssoc* next) : CPair(key), pNext(next), nHashValue(hash) {}
        CAssoc* pNext;
        UINT nHashValue;
    };

public:
    typedef KEY BASE_KEY;
    typedef ARG_KEY BASE_ARG_KEY;
    typedef VALUE BASE_VALUE;
    typedef ARG_VALUE BASE_ARG_VALUE;

    // The block size is accepted and not needed.
    explicit CMap(INT_PTR nBlockSize = 10) { UNUSED_ALWAYS(nBlockSize); }
    ~CMap() override { RemoveAll(); }

    INT_PTR GetCount() const { return m_nCount; }
    INT_PTR GetSize() const { return m_nCount; }
    BOOL IsEmpty() const { return m_nCount == 0; }

    BOOL Lookup(ARG_KEY key, VALUE& rValue) const;
    const CPair* PLookup(ARG_KEY key) const { return FindAssoc(key, HashKey<ARG_KEY>(key)); }
    CPair* PLookup(ARG_KEY key) { return FindAssoc(key, HashKey<ARG_KEY>(key)); }
    // The value of the key, added value-initialised if it is absent.
    VALUE& operator[](ARG_KEY key);
    void SetAt(ARG_KEY key, ARG_VALUE newValue) { (*this)[key] = newValue; }
    BOOL RemoveKey(ARG_KEY key);
    void RemoveAll();

    // Null for an empty map.
    POSITION GetStartPosition() const { return FirstFrom(0); }
    void GetNextAssoc(POSITION& rNextPosition, KEY& rKey, VALUE& rValue) const;
    const CPair* PGetFirstAssoc() const { return FirstFrom(0); }
    CPair* PGetFirstAssoc() { return FirstFrom(0); }
    const CPair* PGetNextAssoc(const CPair* pAssocRec) const { return Following(pAssocRec); }
    CPair* PGetNextAssoc(const CPair* pAssocRec) { return Following(pAssocRec); }

    UINT GetHashTableSize() const { return m_nHashTableSize; }
    // Sets the number of hash buckets. Only an empty map can be changed.
    void InitHashTable(UINT hashSize, BOOL bAllocNow = TRUE);

    void Serialize(CArchive& ar) override;

private:
    CAssoc* FindAssoc(ARG_KEY key, UINT hash) const;
    CAssoc* FirstFrom(UINT bucket) const;
    CAssoc* Following(const CPair* pair) const;

    std::unique_ptr<CAssoc*[]> m_pHashTable;
    UINT m_nHashTableSize = 17;
    INT_PTR m_nCount = 0;
};

// ---- Type-safe faces of the untyped collections
// ------------------------------------------------------------

// CPtrArray or CObArray with elements of a pointer type.
template <class BASE_CLASS, class TYPE>
class CTypedPtrArray : public BASE_CLASS
{
public:
    TYPE GetAt(INT_PTR nIndex) const { return static_cast<TYPE>(BASE_CLASS::GetAt(nIndex)); }
    TYPE& ElementAt(INT_PTR nIndex) { return reinterpret_cast<TYPE&>(BASE_CLASS::ElementAt(nIndex)); }
    void SetAt(INT_PTR nIndex, TYPE ptr) { BASE_CLASS::SetAt(nIndex, ptr); }
    void SetAtGrow(INT_PTR nIndex, TYPE newElement) { BASE_CLASS::SetAtGrow(nIndex, newElement); }
    INT_PTR Add(TYPE newElement) { return BASE_CLASS::Add(newElement); }
    INT_PTR Append(const CTypedPtrArray& src) { return BASE_CLASS::Append(src); }
    void Copy(const CTypedPtrArray& src) { BASE_CLASS::Copy(src); }
    void InsertAt(INT_PTR nIndex, TYPE newElement, INT_PTR nCount = 1)
    {
        BASE_CLASS::InsertAt(nIndex, newElement, nCount);
    }
    void InsertAt(INT_PTR nStartIndex, CTypedPtrArray* pNewArray)
    {
        BASE_CLASS::InsertAt(nStartIndex, pNewArray);
    }
    TYPE operator[](INT_PTR nIndex) const { return GetAt(nIndex); }
    TYPE& operator[](INT_PTR nIndex) { return ElementAt(nIndex); }
};

// CPtrList or CObList with elements of a pointer type.
template <class BASE_CLASS, class TYPE>
class CTypedPtrList : public BASE_CLASS
{
public:
    explicit CTypedPtrList(INT_PTR nBlockSize = 10) : BASE_CLASS(nBlockSize) {}

    TYPE& GetHead() { return reinterpret_cast<TYPE&>(BASE_CLASS::GetHead()); }
    TYPE GetHead() const { return static_cast<TYPE>(BASE_CLASS::GetHead()); }
    TYPE& GetTail() { return reinterpret_cast<TYPE&>(BASE_CLASS::GetTail()); }
    TYPE GetTail() const { return static_cast<TYPE>(BASE_CLASS::GetTail()); }
    TYPE RemoveHead() { return static_cast<TYPE>(BASE_CLASS::RemoveHead()); }
    TYPE RemoveTail() { return static_cast<TYPE>(BASE_CLASS::RemoveTail()); }
    POSITION AddHead(TYPE newElement) { return BASE_CLASS::AddHead(newElement); }
    POSITION AddTail(TYPE newElement) { return BASE_CLASS::AddTail(newElement); }
    void AddHead(CTypedPtrList* pNewList) { BASE_CLASS::AddHead(pNewList); }
    void AddTail(CTypedPtrList* pNewList) { BASE_CLASS::AddTail(pNewList); }
    TYPE& GetNext(POSITION& rPosition) { return reinterpret_cast<TYPE&>(BASE_CLASS::GetNext(rPosition)); }
    TYPE GetNext(POSITION& rPosition) const { return static_cast<TYPE>(BASE_CLASS::GetNext(rPosition)); }
    TYPE& GetPrev(POSITION& rPosition) { return reinterpret_cast<TYPE&>(BASE_CLASS::GetPrev(rPosition)); }
    TYPE GetPrev(POSITION& rPosition) const { return static_cast<TYPE>(BASE_CLASS::GetPrev(rPosition)); }
    TYPE& GetAt(POSITION position) { return reinterpret_cast<TYPE&>(BASE_CLASS::GetAt(position)); }
    TYPE GetAt(POSITION position) const { return static_cast<TYPE>(BASE_CLASS::GetAt(position)); }
    void SetAt(POSITION pos, TYPE newElement) { BASE_CLASS::SetAt(pos, newElement); }
};

// An untyped map with keys and values of the given types.
template <class BASE_CLASS, class KEY, class VALUE>
class CTypedPtrMap : public BASE_CLASS
{
public:
    explicit CTypedPtrMap(INT_PTR nBlockSize = 10) : BASE_CLASS(nBlockSize) {}

    BOOL Lookup(typename BASE_CLASS::BASE_ARG_KEY key, VALUE& rValue) const
    {
        typename BASE_CLASS::BASE_VALUE value;
        if (!BASE_CLASS::Lookup(key, value))
            return FALSE;
        rValue = (VALUE)value;
        return TRUE;
    }
    VALUE& operator[](typename BASE_CLASS::BASE_ARG_KEY key)
    {
        return reinterpret_cast<VALUE&>(BASE_CLASS::operator[](key));
    }
    void SetAt(KEY key, VALUE newValue)
    {
        // The C casts serve pointers and integers alike, as keys and values may be either.
        BASE_CLASS::SetAt((typename BASE_CLASS::BASE_ARG_KEY)key,
                          (typename BASE_CLASS::BASE_ARG_VALUE)newValue);
    }
    BOOL RemoveKey(KEY key) { return BASE_CLASS::RemoveKey((typename BASE_CLASS::BASE_ARG_KEY)key); }
    void GetNextAssoc(POSITION& rPosition, KEY& rKey, VALUE& rValue) const
    {
        typename BASE_CLASS::BASE_KEY key;
        typename BASE_CLASS::BASE_VALUE value;
        BASE_CLASS::GetNextAssoc(rPosition, key, value);
        rKey = (KEY)key;
        rValue = (VALUE)value;
    }
};

// ---- Members of CArray
// -------------------------------------------------------------------------------------

template <class TYPE, class ARG_TYPE>
INT_PTR CArray<TYPE, ARG_TYPE>::GrownCapacity(INT_PTR needed) const
{
    const INT_PTR step = m_nGrowBy > 0 ? m_nGrowBy : (m_nSize / 2 > 4 ? m_nSize / 2 : 4);
    return needed > m_nMaxSize + step ? needed : m_nMaxSize + step;
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::Reallocate(INT_PTR capacity)
{
    if (capacity == m_nMaxSize)
        return;
    TYPE* data = nullptr;
    if (capacity > 0) {
        data = afx_subset::AllocateElements<TYPE>(capacity);
        std::uninitialized_move_n(m_pData, m_nSize, data);
    }
    std::destroy_n(m_pData, m_nSize);
    ::operator delete(m_pData);
    m_pData = data;
    m_nMaxSize = capacity;
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::Release()
{
    std::destroy_n(m_pData, m_nSize);
    ::operator delete(m_pData);
    m_pData = nullptr;
    m_nSize = m_nMaxSize = 0;
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::SetSize(INT_PTR nNewSize, INT_PTR nGrowBy)
{
    if (nNewSize < 0)
        AfxThrowInvalidArgException();
    if (nGrowBy >= 0)
        m_nGrowBy = nGrowBy;
    if (nNewSize == 0) {
        Release();
    } else if (nNewSize <= m_nSize) {
        std::destroy_n(m_pData + nNewSize, m_nSize - nNewSize);
        m_nSize = nNewSize;
    } else {
        if (nNewSize > m_nMaxSize)
            Reallocate(m_nMaxSize == 0 && m_nGrowBy < nNewSize ? nNewSize : GrownCapacity(nNewSize));
        std::uninitialized_value_construct_n(m_pData + m_nSize, nNewSize - m_nSize);
        m_nSize = nNewSize;
    }
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::SetAtGrow(INT_PTR nIndex, ARG_TYPE newElement)
{
    if (nIndex < 0)
        AfxThrowInvalidArgException();
    if (nIndex < m_nSize) {
        m_pData[nIndex] = newElement;
        return;
    }
    // The element may lie in this array, which growing moves.
    TYPE element(newElement);
    SetSize(nIndex + 1, -1);
    m_pData[nIndex] = std::move(element);
}

template <class TYPE, class ARG_TYPE>
INT_PTR CArray<TYPE, ARG_TYPE>::Add(ARG_TYPE newElement)
{
    const INT_PTR index = m_nSize;
    SetAtGrow(index, newElement);
    return index;
}

template <class TYPE, class ARG_TYPE>
INT_PTR CArray<TYPE, ARG_TYPE>::Append(const CArray& src)
{
    const INT_PTR first = m_nSize;
    const INT_PTR count = src.m_nSize; // src may be this array
    if (count > 0)
        SetSize(first + count);
    for (INT_PTR i = 0; i < count; ++i)
        m_pData[first + i] = src.m_pData[i];
    return first;
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::Copy(const CArray& src)
{
    if (this == &src)
        return;
    SetSize(src.m_nSize);
    for (INT_PTR i = 0; i < m_nSize; ++i)
        m_pData[i] = src.m_pData[i];
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::OpenGap(INT_PTR nIndex, INT_PTR nCount)
{
    const INT_PTR oldSize = m_nSize;
    SetSize((nIndex > oldSize ? nIndex : oldSize) + nCount, -1);
    if (nIndex >= oldSize)
        return;
    std::move_backward(m_pData + nIndex, m_pData + oldSize, m_pData + m_nSize);
    for (INT_PTR i = nIndex; i < nIndex + nCount; ++i)
        m_pData[i] = TYPE();
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::InsertAt(INT_PTR nIndex, ARG_TYPE newElement, INT_PTR nCount)
{
    if (nIndex < 0 || nCount <= 0 || nIndex > MAXINT_PTR - nCount || m_nSize > MAXINT_PTR - nCount)
        AfxThrowInvalidArgException();
    const TYPE element(newElement);
    OpenGap(nIndex, nCount);
    for (INT_PTR i = nIndex; i < nIndex + nCount; ++i)
        m_pData[i] = element;
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::InsertAt(INT_PTR nStartIndex, CArray* pNewArray)
{
    if (nStartIndex < 0 || pNewArray == nullptr)
        AfxThrowInvalidArgException();
    CArray copy; // pNewArray may be this array
    copy.Copy(*pNewArray);
    if (copy.m_nSize == 0)
        return;
    if (nStartIndex > MAXINT_PTR - copy.m_nSize)
        AfxThrowInvalidArgException();
    OpenGap(nStartIndex, copy.m_nSize);
    for (INT_PTR i = 0; i < copy.m_nSize; ++i)
        m_pData[nStartIndex + i] = std::move(copy.m_pData[i]);
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::RemoveAt(INT_PTR nIndex, INT_PTR nCount)
{
    if (nIndex < 0 || nCount < 0 || nIndex > m_nSize || nCount > m_nSize - nIndex)
        AfxThrowInvalidArgException();
    if (nCount == 0)
        return;
    std::move(m_pData + nIndex + nCount, m_pData + m_nSize, m_pData + nIndex);
    std::destroy_n(m_pData + m_nSize - nCount, nCount);
    m_nSize -= nCount;
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::Serialize(CArchive& ar)
{
    CObject::Serialize(ar);
    if (ar.IsStoring()) {
        ar.WriteCount(m_nSize);
        SerializeElements<TYPE>(ar, m_pData, m_nSize);
        return;
    }
    // The count is not trusted: the array grows as elements really arrive.
    constexpr INT_PTR kStep = 4096;
    INT_PTR left = afx_subset::ReadElementCount(ar);
    RemoveAll();
    while (left > 0) {
        const INT_PTR first = m_nSize;
        const INT_PTR step = left < kStep ? left : kStep;
        SetSize(first + step);
        SerializeElements<TYPE>(ar, m_pData + first, step);
        left -= step;
    }
}

// ---- Members of CList
// --------------------------------------------------------------------------------------

template <class TYPE, class ARG_TYPE>
typename CList<TYPE, ARG_TYPE>::CNode* CList<TYPE, ARG_TYPE>::Link(CNode* node, CNode* before)
{
    node->pNext = before;
    node->pPrev = before != nullptr ? before->pPrev : m_pNodeTail;
    (node->pPrev != nullptr ? node->pPrev->pNext : m_pNodeHead) = node;
    (before != nullptr ? before->pPrev : m_pNodeTail) = node;
    ++m_nCount;
    return node;
}

template <class TYPE, class ARG_TYPE>
void CList<TYPE, ARG_TYPE>::Unlink(CNode* node)
{
    (node->pPrev != nullptr ? node->pPrev->pNext : m_pNodeHead) = node->pNext;
    (node->pNext != nullptr ? node->pNext->pPrev : m_pNodeTail) = node->pPrev;
    --m_nCount;
    delete node;
}

template <class TYPE, class ARG_TYPE>
void CList<TYPE, ARG_TYPE>::AddTail(CList* pNewList)
{
    if (pNewList == nullptr)
        AfxThrowInvalidArgException();
    // Counted beforehand, for the list may be this one.
    INT_PTR left = pNewList->m_nCount;
    for (CNode* node = pNewList->m_pNodeHead; left > 0; --left, node = node->pNext)
        AddTail(node->data);
}

template <class TYPE, class ARG_TYPE>
void CList<TYPE, ARG_TYPE>::AddHead(CList* pNewList)
{
    if (pNewList == nullptr)
        AfxThrowInvalidArgException();
    INT_PTR left = pNewList->m_nCount;
    for (CNode* node = pNewList->m_pNodeTail; left > 0; --left, node = node->pPrev)
        AddHead(node->data);
}

template <class TYPE, class ARG_TYPE>
void CList<TYPE, ARG_TYPE>::RemoveAll()
{
    while (m_pNodeHead != nullptr)
        Unlink(m_pNodeHead);
}

template <class TYPE, class ARG_TYPE>
POSITION CList<TYPE, ARG_TYPE>::InsertBefore(POSITION position, ARG_TYPE newElement)
{
    if (position == nullptr)
        return AddHead(newElement);
    return Link(new CNode(newElement), NodeAt(position));
}

template <class TYPE, class ARG_TYPE>
POSITION CList<TYPE, ARG_TYPE>::InsertAfter(POSITION position, ARG_TYPE newElement)
{
    if (position == nullptr)
        return AddTail(newElement);
    return Link(new CNode(newElement), NodeAt(position)->pNext);
}

template <class TYPE, class ARG_TYPE>
POSITION CList<TYPE, ARG_TYPE>::Find(ARG_TYPE searchValue, POSITION startAfter) const
{
    CNode* node = startAfter == nullptr ? m_pNodeHead : NodeAt(startAfter)->pNext;
    for (; node != nullptr; node = node->pNext) {
        if (CompareElements(&node->data, &searchValue))
            return node;
    }
    return nullptr;
}

template <class TYPE, class ARG_TYPE>
POSITION CList<TYPE, ARG_TYPE>::FindIndex(INT_PTR nIndex) const
{
    if (nIndex < 0 || nIndex >= m_nCount)
        return nullptr;
    CNode* node = m_pNodeHead;
    while (nIndex-- > 0)
        node = node->pNext;
    return node;
}

template <class TYPE, class ARG_TYPE>
void CList<TYPE, ARG_TYPE>::Serialize(CArchive& ar)
{
    CObject::Serialize(ar);
    if (ar.IsStoring()) {
        ar.WriteCount(m_nCount);
        for (CNode* node = m_pNodeHead; node != nullptr; node = node->pNext)
            SerializeElements<TYPE>(ar, &node->data, 1);
        return;
    }
    for (INT_PTR left = afx_subset::ReadElementCount(ar); left > 0; --left) {
        TYPE element[1] = {};
        SerializeElements<TYPE>(ar, element, 1);
        AddTail(element[0]);
    }
}

// ---- Members of CMap
// ---------------------------------------------------------------------------------------

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
typename CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::CAssoc*
CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::FindAssoc(ARG_KEY key, UINT hash) const
{
    if (m_pHashTable == nullptr)
        return nullptr;
    CAssoc* assoc = m_pHashTable[hash % m_nHashTableSize];
    while (assoc != nullptr && !(assoc->nHashValue == hash && CompareElements(&assoc->key, &key)))
        assoc = assoc->pNext;
    return assoc;
}

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
typename CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::CAssoc*
CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::FirstFrom(UINT bucket) const
{
    if (m_nCount == 0)
        return nullptr;
    for (; bucket < m_nHashTableSize; ++bucket) {
        if (m_pHashTable[bucket] != nullptr)
            return m_pHashTable[bucket];
    }
    return nullptr;
}

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
typename CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::CAssoc*
CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::Following(const CPair* pair) const
{
    if (pair == nullptr)
        AfxThrowInvalidArgException();
    const CAssoc* assoc = static_cast<const CAssoc*>(pair);
    return assoc->pNext != nullptr ? assoc->pNext : FirstFrom(assoc->nHashValue % m_nHashTableSize + 1);
}

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
BOOL CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::Lookup(ARG_KEY key, VALUE& rValue) const
{
    const CPair* pair = PLookup(key);
    if (pair == nullptr)
        return FALSE;
    rValue = pair->value;
    return TRUE;
}

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
VALUE& CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::operator[](ARG_KEY key)
{
    const UINT hash = HashKey<ARG_KEY>(key);
    if (CAssoc* found = FindAssoc(key, hash))
        return found->value;
    if (m_pHashTable == nullptr)
        InitHashTable(m_nHashTableSize);
    CAssoc*& bucket = m_pHashTable[hash % m_nHashTableSize];
    bucket = new CAssoc(key, hash, bucket);
    ++m_nCount;
    return bucket->value;
}

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
BOOL CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::RemoveKey(ARG_KEY key)
{
    CAssoc* found = FindAssoc(key, HashKey<ARG_KEY>(key));
    if (found == nullptr)
        return FALSE;
    CAssoc** link = &m_pHashTable[found->nHashValue % m_nHashTableSize];
    while (*link != found)
        link = &(*link)->pNext;
    *link = found->pNext;
    --m_nCount;
    delete found;
    return TRUE;
}

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
void CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::RemoveAll()
{
    for (UINT bucket = 0; m_pHashTable != nullptr && bucket < m_nHashTableSize; ++bucket) {
        while (CAssoc* assoc = m_pHashTable[bucket]) {
            m_pHashTable[bucket] = assoc->pNext;
            delete assoc;
        }
    }
    m_pHashTable.reset();
    m_nCount = 0;
}

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
void CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::GetNextAssoc(POSITION& rNextPosition, KEY& rKey,
                                                        VALUE& rValue) const
{
    if (rNextPosition == nullptr)
        AfxThrowInvalidArgException();
    // The position is the association to answer now; the one behind it is found before the caller can remove
    // this one.
    const CAssoc* assoc =
        rNextPosition == BEFORE_START_POSITION ? FirstFrom(0) : static_cast<CAssoc*>(rNextPosition);
    if (assoc == nullptr)
        AfxThrowInvalidArgException();
    rNextPosition = Following(assoc);
    rKey = assoc->key;
    rValue = assoc->value;
}

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
void CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::InitHashTable(UINT hashSize, BOOL bAllocNow)
{
    if (m_nCount != 0 || hashSize == 0)
        AfxThrowInvalidArgException();
    m_pHashTable.reset();
    m_nHashTableSize = hashSize;
    if (!bAllocNow)
        return;
    m_pHashTable.reset(new (std::nothrow) CAssoc*[hashSize]());
    if (m_pHashTable == nullptr)
        AfxThrowMemoryException();
}

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
void CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::Serialize(CArchive& ar)
{
    CObject::Serialize(ar);
    if (ar.IsStoring()) {
        ar.WriteCount(m_nCount);
        for (CPair* pair = PGetFirstAssoc(); pair != nullptr; pair = PGetNextAssoc(pair)) {
            SerializeElements<KEY>(ar, const_cast<KEY*>(&pair->key), 1);
            SerializeElements<VALUE>(ar, &pair->value, 1);
        }
        return;
    }
    for (INT_PTR left = afx_subset::ReadElementCount(ar); left > 0; --left) {
        KEY key[1] = {};
        VALUE value[1] = {};
        SerializeElements<KEY>(ar, key, 1);
        SerializeElements<VALUE>(ar, value, 1);
        SetAt(key[0], value[0]);
    }
}
