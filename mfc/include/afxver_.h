// Calling conventions, export marks and other compiler settings of the framework headers.
#pragma once

// Microsoft's MFC defines it. Objects of the two frameworks mean nothing to each other.
#ifdef _MFC_VER
#error "This subset of MFC cannot be mixed with Microsoft's MFC in one program"
#endif

#ifndef _UNICODE
#define _UNICODE
#endif
#ifndef UNICODE
#define UNICODE
#endif
#ifndef STRICT
#define STRICT
#endif
#ifndef WINVER
#define WINVER 0x0A00
#endif
#ifndef _WIN32_WINNT
#define _WIN32_WINNT 0x0A00
#endif

// Marks what the framework DLL exports. AFX_SUBSET_BUILD is defined while the DLL itself is compiled.
#ifdef AFX_SUBSET_BUILD
#define AFX_SUBSET_API __declspec(dllexport)
#else
#define AFX_SUBSET_API __declspec(dllimport)
#endif

// Before the inline members of class templates that the framework DLL instantiates: the compiler does not
// export those, so a program that is built without optimisation must not look for them in the DLL.
#define AFX_SUBSET_INLINE __attribute__((always_inline))

// For hosts' own extension DLLs: AFX_EXT_CLASS exports in the DLL (_AFXEXT) and imports elsewhere.
#ifdef _AFXEXT
#define AFX_EXT_CLASS __declspec(dllexport)
#else
#define AFX_EXT_CLASS __declspec(dllimport)
#endif
#define AFX_EXT_API AFX_EXT_CLASS
#define AFX_EXT_DATA AFX_EXT_CLASS

#define AFXAPI __stdcall
#define AFX_CDECL __cdecl
#define AFX_MSG_CALL
#define afx_msg
// A library that exports classes with DECLARE_SERIAL says here, around them, how.
#define AFX_API
#define AFX_DATA
#define AFX_DATADEF
#define AFX_COMDAT
#define AFX_NOVTABLE
