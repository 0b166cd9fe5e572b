// The ready-made collections: arrays, lists and maps of the element types that programs need most.
//
// They share their code with the templates in afxtempl.h, whose docstrings say how the members behave.
// Collections of pointers and objects delete nothing that they hold. The pointer collections cannot be
// serialized; those of objects store the objects themselves.
#pragma once

#include "afx.h"
#include "afxtempl.h"

class AFX_SUBSET_API CByteArray : public CArray<BYTE, BYTE>
{
    DECLARE_SERIAL(CByteArray)
};

class AFX_SUBSET_API CWordArray : public CArray<WORD, WORD>
{
    DECLARE_SERIAL(CWordArray)
};

class AFX_SUBSET_API CDWordArray : public CArray<DWORD, DWORD>
{
    DECLARE_SERIAL(CDWordArray)
};

// Not for archives: the size of its elements is the compiler's.
class AFX_SUBSET_API CUIntArray : public CArray<UINT, UINT>
{
    DECLARE_DYNAMIC(CUIntArray)
public:
    void Serialize(CArchive& ar) override { CObject::Serialize(ar); }
};

class AFX_SUBSET_API CPtrArray : public CArray<void*, void*>
{
    DECLARE_DYNAMIC(CPtrArray)
public:
    void Serialize(CArchive& ar) override { CObject::Serialize(ar); }
};

class AFX_SUBSET_API CObArray : public CArray<CObject*, CObject*>
{
    DECLARE_SERIAL(CObArray)
};

class AFX_SUBSET_API CStringArray : public CArray<CString, const CString&>
{
    DECLARE_SERIAL(CStringArray)
};

class AFX_SUBSET_API CPtrList : public CList<void*, void*>
{
    DECLARE_DYNAMIC(CPtrList)
public:
    explicit CPtrList(INT_PTR nBlockSize = 10) : CList(nBlockSize) {}
    void Serialize(CArchive& ar) override { CObject::Serialize(ar); }
};

class AFX_SUBSET_API CObList : public CList<CObject*, CObject*>
{
    DECLARE_SERIAL(CObList)
public:
    explicit CObList(INT_PTR nBlockSize = 10) : CList(nBlockSize) {}
};

class AFX_SUBSET_API CStringList : public CList<CString, const CString&>
{
    DECLARE_SERIAL(CStringList)
public:
    explicit CStringList(INT_PTR nBlockSize = 10) : CList(nBlockSize) {}
};

class AFX_SUBSET_API CMapPtrToPtr : public CMap<void*, void*, void*, void*>
{
    DECLARE_DYNAMIC(CMapPtrToPtr)
public:
    explicit CMapPtrToPtr(INT_PTR nBlockSize = 10) : CMap(nBlockSize) {}
    void Serialize(CArchive& ar) override { CObject::Serialize(ar); }
};

class AFX_SUBSET_API CMapPtrToWord : public CMap<void*, void*, WORD, WORD>
{
    DECLARE_DYNAMIC(CMapPtrToWord)
public:
    explicit CMapPtrToWord(INT_PTR nBlockSize = 10) : CMap(nBlockSize) {}
    void Serialize(CArchive& ar) override { CObject::Serialize(ar); }
};

class AFX_SUBSET_API CMapWordToPtr : public CMap<WORD, WORD, void*, void*>
{
    DECLARE_DYNAMIC(CMapWordToPtr)
public:
    explicit CMapWordToPtr(INT_PTR nBlockSize = 10) : CMap(nBlockSize) {}
    void Serialize(CArchive& ar) override { CObject::Serialize(ar); }
};

class AFX_SUBSET_API CMapWordToOb : public CMap<WORD, WORD, CObject*, CObject*>
{
    DECLARE_SERIAL(CMapWordToOb)
public:
    explicit CMapWordToOb(INT_PTR nBlockSize = 10) : CMap(nBlockSize) {}
};

class AFX_SUBSET_API CMapStringToPtr : public CMap<CString, LPCTSTR, void*, void*>
{
    DECLARE_DYNAMIC(CMapStringToPtr)
public:
    explicit CMapStringToPtr(INT_PTR nBlockSize = 10) : CMap(nBlockSize) {}
    void Serialize(CArchive& ar) override { CObject::Serialize(ar); }
};

class AFX_SUBSET_API CMapStringToOb : public CMap<CString, LPCTSTR, CObject*, CObject*>
{
    DECLARE_SERIAL(CMapStringToOb)
public:
    explicit CMapStringToOb(INT_PTR nBlockSize = 10) : CMap(nBlockSize) {}
};

class AFX_SUBSET_API CMapStringToString : public CMap<CString, LPCTSTR, CString, LPCTSTR>
{
    DECLARE_SERIAL(CMapStringToString)
public:
    explicit CMapStringToString(INT_PTR nBlockSize = 10) : CMap(nBlockSize) {}
};
