#include <afxdisp.h>

#include <utility>

namespace
{

void Check(HRESULT result)
{
    if (result == E_OUTOFMEMORY)
        AfxThrowMemoryException();
    if (FAILED(result))
        AfxThrowOleException(result);
}

// The source is not changed; older headers do not say so.
HRESULT Copy(VARIANT* target, const VARIANT& source)
{
    return ::VariantCopy(target, const_cast<VARIANT*>(&source));
}

BSTR NewBstr(LPCTSTR text)
{
    const BSTR copy = ::SysAllocString(text != nullptr ? text : L"");
    if (copy == nullptr)
        AfxThrowMemoryException();
    return copy;
}

} // namespace

COleVariant::COleVariant()
{
    ::VariantInit(this);
}

COleVariant::COleVariant(const VARIANT& varSrc) : COleVariant()
{
    Check(Copy(this, varSrc));
}

COleVariant::COleVariant(const COleVariant& varSrc) : COleVariant(static_cast<const VARIANT&>(varSrc)) {}

COleVariant::COleVariant(LPCVARIANT pSrc) : COleVariant(*pSrc) {}

COleVariant::COleVariant(LPCTSTR lpszSrc) : COleVariant()
{
    bstrVal = NewBstr(lpszSrc);
    vt = VT_BSTR;
}

COleVariant::COleVariant(const CString& strSrc) : COleVariant(strSrc.GetString()) {}

COleVariant::COleVariant(BYTE nSrc) : COleVariant()
{
    vt = VT_UI1;
    bVal = nSrc;
}

COleVariant::COleVariant(short nSrc, VARTYPE vtSrc) : COleVariant()
{
    ASSERT(vtSrc == VT_I2 || vtSrc == VT_BOOL);
    vt = vtSrc;
    iVal = vtSrc == VT_BOOL && nSrc != 0 ? VARIANT_TRUE : nSrc;
}

COleVariant::COleVariant(long lSrc, VARTYPE vtSrc) : COleVariant()
{
    ASSERT(vtSrc == VT_I4 || vtSrc == VT_ERROR || vtSrc == VT_BOOL);
    vt = vtSrc;
    if (vtSrc == VT_BOOL)
        boolVal = lSrc != 0 ? VARIANT_TRUE : VARIANT_FALSE;
    else
        lVal = lSrc;
}

COleVariant::COleVariant(float fltSrc) : COleVariant()
{
    vt = VT_R4;
    fltVal = fltSrc;
}

COleVariant::COleVariant(double dblSrc) : COleVariant()
{
    vt = VT_R8;
    dblVal = dblSrc;
}

COleVariant::~COleVariant()
{
    ::VariantClear(this);
}

const COleVariant& COleVariant::operator=(const VARIANT& varSrc)
{
    if (&varSrc != this)
        Check(Copy(this, varSrc));
    return *this;
}

const COleVariant& COleVariant::operator=(const COleVariant& varSrc)
{
    return *this = static_cast<const VARIANT&>(varSrc);
}

const COleVariant& COleVariant::operator=(LPCTSTR lpszSrc)
{
    COleVariant copy(lpszSrc);
    std::swap(static_cast<VARIANT&>(*this), static_cast<VARIANT&>(copy));
    return *this;
}

void COleVariant::ChangeType(VARTYPE vartype, LPVARIANT pSrc)
{
    Check(::VariantChangeType(this, pSrc != nullptr ? pSrc : this, 0, vartype));
}

void COleVariant::Clear()
{
    Check(::VariantClear(this));
}

void COleVariant::Attach(VARIANT& varSrc)
{
    Clear();
    static_cast<VARIANT&>(*this) = varSrc;
    varSrc.vt = VT_EMPTY;
}

VARIANT COleVariant::Detach()
{
    const VARIANT value = *this;
    vt = VT_EMPTY;
    return value;
}

BOOL COleVariant::operator==(const VARIANT& varSrc) const
{
    if (vt != varSrc.vt)
        return FALSE;
    if (vt == VT_EMPTY || vt == VT_NULL)
        return TRUE;
    return ::VarCmp(const_cast<COleVariant*>(this), const_cast<VARIANT*>(&varSrc), LOCALE_USER_DEFAULT, 0) ==
           VARCMP_EQ;
}
