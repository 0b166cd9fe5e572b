// Automation: calling objects through IDispatch, variants, exceptions, and the events of ActiveX controls.
#pragma once

#include <afxwin.h>
#include <ole2.h>
#include <olectl.h>

#include <afxevt_.h>

typedef const VARIANT* LPCVARIANT;

// Initialises OLE for the calling thread; later calls do nothing. It ends with the program, or with a thread
// that CWinThread has begun. FALSE when OLE refuses, as on a thread of a multithreaded apartment.
AFX_SUBSET_API BOOL AFXAPI AfxOleInit();

// A failed OLE call.
class AFX_SUBSET_API COleException : public CException
{
    DECLARE_DYNAMIC(COleException)

public:
    COleException();
    // The status code for any exception: that of a COleException, else the nearest general one.
    static SCODE PASCAL Process(const CException* pAnyException);
    // The system's text for the status code.
    BOOL GetErrorMessage(LPTSTR lpszError, UINT nMaxError, PUINT pnHelpContext = nullptr) const override;

    SCODE m_sc = S_OK;
};

// An exception that an automation object has raised.
class AFX_SUBSET_API COleDispatchException : public CException
{
    DECLARE_DYNAMIC(COleDispatchException)

public:
    COleDispatchException(LPCTSTR lpszDescription, UINT nHelpID, WORD wCode);
    BOOL GetErrorMessage(LPTSTR lpszError, UINT nMaxError, PUINT pnHelpContext = nullptr) const override;

    WORD m_wCode;
    CString m_strDescription;
    DWORD m_dwHelpContext;
    CString m_strHelpFile;
    CString m_strSource;
};

[[noreturn]] AFX_SUBSET_API void AFXAPI AfxThrowOleException(SCODE sc);
[[noreturn]] AFX_SUBSET_API void AFXAPI AfxThrowOleDispatchException(WORD wCode, LPCTSTR lpszDescription,
                                                                     UINT nHelpID = 0);
[[noreturn]] AFX_SUBSET_API void AFXAPI AfxThrowOleDispatchException(WORD wCode, UINT nDescriptionID,
                                                                     UINT nHelpID = (UINT)-1);

// A VARIANT that owns its value. Failed conversions and copies throw COleException or CMemoryException.
class AFX_SUBSET_API COleVariant : public tagVARIANT
{
public:
    COleVariant();
    COleVariant(const VARIANT& varSrc);
    COleVariant(const COleVariant& varSrc);
    COleVariant(LPCVARIANT pSrc);
    COleVariant(LPCTSTR lpszSrc);
    COleVariant(const CString& strSrc);
    COleVariant(BYTE nSrc);
    COleVariant(short nSrc, VARTYPE vtSrc = VT_I2); // or VT_BOOL
    COleVariant(long lSrc, VARTYPE vtSrc = VT_I4);  // or VT_ERROR, VT_BOOL
    COleVariant(float fltSrc);
    COleVariant(double dblSrc);
    ~COleVariant();

    const COleVariant& operator=(const VARIANT& varSrc);
    const COleVariant& operator=(const COleVariant& varSrc);
    const COleVariant& operator=(LPCTSTR lpszSrc);
    // Converts *pSrc, or this object's own value when null, to the type and keeps the result; on failure this
    // object is unchanged.
    void ChangeType(VARTYPE vartype, LPVARIANT pSrc = nullptr);
    void Clear();
    // Takes the value over; varSrc becomes empty.
    void Attach(VARIANT& varSrc);
    // Gives the value to the caller, who clears it.
    VARIANT Detach();
    BOOL operator==(const VARIANT& varSrc) const;
    operator LPCVARIANT() const { return this; }
    operator LPVARIANT() { return this; }
};

// Calls the methods and properties of one automation object.
class AFX_SUBSET_API COleDispatchDriver
{
public:
    COleDispatchDriver() = default;
    // Takes the caller's reference over unless bAutoRelease is FALSE.
    COleDispatchDriver(LPDISPATCH lpDispatch, BOOL bAutoRelease = TRUE);
    COleDispatchDriver(const COleDispatchDriver& dispatchSrc);
    const COleDispatchDriver& operator=(const COleDispatchDriver& dispatchSrc);
    ~COleDispatchDriver();

    LPDISPATCH m_lpDispatch = nullptr;
    BOOL m_bAutoRelease = TRUE;

    // FALSE, with the status code in pError, when there is no such object.
    BOOL CreateDispatch(REFCLSID clsid, COleException* pError = nullptr);
    BOOL CreateDispatch(LPCTSTR lpszProgID, COleException* pError = nullptr);
    void AttachDispatch(LPDISPATCH lpDispatch, BOOL bAutoRelease = TRUE);
    LPDISPATCH DetachDispatch();
    void ReleaseDispatch();
    operator LPDISPATCH() { return m_lpDispatch; }

    // Invokes a member with the parameters that pbParamInfo lists as VTS_ constants; null for none. VTS_CY
    // and VTS_VARIANT take pointers, VTS_BSTR a text. The result goes to pvRet, converted to vtRet: BSTR as a
    // CString, BOOL as a BOOL, others as themselves; VT_EMPTY drops it. An exception that the object raises
    // throws COleDispatchException, any other failure COleException; pvRet is left alone then, and when there
    // is no object, which does nothing.
    void AFX_CDECL InvokeHelper(DISPID dwDispID, WORD wFlags, VARTYPE vtRet, void* pvRet,
                                const BYTE* pbParamInfo, ...);
    void InvokeHelperV(DISPID dwDispID, WORD wFlags, VARTYPE vtRet, void* pvRet, const BYTE* pbParamInfo,
                       va_list argList);
    void GetProperty(DISPID dwDispID, VARTYPE vtProp, void* pvProp) const;
    void AFX_CDECL SetProperty(DISPID dwDispID, VARTYPE vtProp, ...);
    void SetPropertyV(DISPID dwDispID, VARTYPE vtProp, va_list argList);
};
