// Owners for Windows handles and scopes for what is changed in a device context.
#pragma once

#include <afxwin.h>
#include <type_traits>
#include <utility>

// Owns one handle and closes it when it goes out of scope. A null handle is "nothing owned". Closer is a
// function object that closes a handle.
template <class Handle, class Closer>
class VOwnedHandle
{
public:
    VOwnedHandle() = default;
    explicit VOwnedHandle(Handle handle) : m_handle(handle) {}
    VOwnedHandle(VOwnedHandle&& other) noexcept : m_handle(other.Release()) {}
    VOwnedHandle& operator=(VOwnedHandle&& other) noexcept
    {
        if (this != &other)
            Reset(other.Release());
        return *this;
    }
    ~VOwnedHandle() { Reset(); }

    [[nodiscard]] Handle Get() const { return m_handle; }
    explicit operator bool() const { return m_handle != nullptr; }

    // Gives the handle to the caller, who closes it from now on.
    [[nodiscard]] Handle Release() { return std::exchange(m_handle, nullptr); }

    // Closes what is held and takes ownership of another handle.
    void Reset(Handle handle = nullptr)
    {
        if (Handle old = std::exchange(m_handle, handle))
            Closer()(old);
    }

private:
    Handle m_handle = nullptr;
};

// The functions are wrapped because the address of an imported one is no constant to every compiler.
struct VGdiObjectCloser {
    void operator()(HGDIOBJ handle) const { ::DeleteObject(handle); }
};
struct VMemoryDCCloser {
    void operator()(HDC handle) const { ::DeleteDC(handle); }
};
struct VScreenDCCloser {
    void operator()(HDC handle) const { ::ReleaseDC(nullptr, handle); }
};
struct VIconCloser {
    void operator()(HICON handle) const { ::DestroyIcon(handle); }
};
struct VGlobalCloser {
    void operator()(HGLOBAL handle) const { ::GlobalFree(handle); }
};
struct VKernelHandleCloser {
    void operator()(HANDLE handle) const { ::CloseHandle(handle); }
};

using VOwnedBitmap = VOwnedHandle<HBITMAP, VGdiObjectCloser>;
using VOwnedBrush = VOwnedHandle<HBRUSH, VGdiObjectCloser>;
using VOwnedFont = VOwnedHandle<HFONT, VGdiObjectCloser>;
using VOwnedPalette = VOwnedHandle<HPALETTE, VGdiObjectCloser>;
using VOwnedPen = VOwnedHandle<HPEN, VGdiObjectCloser>;
using VOwnedRegion = VOwnedHandle<HRGN, VGdiObjectCloser>;
using VOwnedMemoryDC = VOwnedHandle<HDC, VMemoryDCCloser>;
// Holds what GetDC(nullptr) gave.
using VOwnedScreenDC = VOwnedHandle<HDC, VScreenDCCloser>;
using VOwnedIcon = VOwnedHandle<HICON, VIconCloser>;
using VOwnedGlobal = VOwnedHandle<HGLOBAL, VGlobalCloser>;
// Null, not INVALID_HANDLE_VALUE, stands for "nothing owned".
using VOwnedKernelHandle = VOwnedHandle<HANDLE, VKernelHandleCloser>;

// Selects a pen, brush, font, bitmap or stock object into a device context and puts the previous one back
// at the end of the block. The object stays the caller's and must outlive the scope; with a null context or
// object nothing happens. Scopes on one context end in the reverse order of their beginning.
class VSelectScope
{
public:
    VSelectScope(HDC hDC, HGDIOBJ hObject)
        : m_hDC(hDC),
          m_hOldObject(hDC != nullptr && hObject != nullptr ? ::SelectObject(hDC, hObject) : nullptr)
    {
    }
    VSelectScope(CDC& dc, const CGdiObject& object) : VSelectScope(dc.m_hDC, object.m_hObject) {}
    VSelectScope(const VSelectScope&) = delete;
    VSelectScope& operator=(const VSelectScope&) = delete;
    ~VSelectScope()
    {
        if (m_hOldObject != nullptr && m_hOldObject != HGDI_ERROR)
            ::SelectObject(m_hDC, m_hOldObject);
    }

private:
    HDC m_hDC;
    HGDIOBJ m_hOldObject;
};

// Sets one piece of device context state and puts the previous value back at the end of the block:
//   VBkModeScope transparent(dc.m_hDC, TRANSPARENT);
// Setter is a function object around the Win32 setter, which returns the previous value, or Setter::Failed
// when nothing was changed.
template <class Setter>
class VDCStateScope
{
public:
    using Value = decltype(Setter::Failed);

    VDCStateScope(HDC hDC, std::remove_const_t<Value> value)
        : m_hDC(hDC), m_oldValue(hDC != nullptr ? Setter()(hDC, value) : Setter::Failed)
    {
    }
    VDCStateScope(const VDCStateScope&) = delete;
    VDCStateScope& operator=(const VDCStateScope&) = delete;
    ~VDCStateScope()
    {
        if (m_oldValue != Setter::Failed)
            Setter()(m_hDC, m_oldValue);
    }

private:
    HDC m_hDC;
    Value m_oldValue;
};

struct VBkModeSetter {
    static constexpr int Failed = 0;
    int operator()(HDC hDC, int value) const { return ::SetBkMode(hDC, value); }
};
struct VRop2Setter {
    static constexpr int Failed = 0;
    int operator()(HDC hDC, int value) const { return ::SetROP2(hDC, value); }
};
struct VStretchModeSetter {
    static constexpr int Failed = 0;
    int operator()(HDC hDC, int value) const { return ::SetStretchBltMode(hDC, value); }
};
struct VBkColorSetter {
    static constexpr COLORREF Failed = CLR_INVALID;
    COLORREF operator()(HDC hDC, COLORREF value) const { return ::SetBkColor(hDC, value); }
};
struct VTextColorSetter {
    static constexpr COLORREF Failed = CLR_INVALID;
    COLORREF operator()(HDC hDC, COLORREF value) const { return ::SetTextColor(hDC, value); }
};
struct VTextAlignSetter {
    static constexpr UINT Failed = GDI_ERROR;
    UINT operator()(HDC hDC, UINT value) const { return ::SetTextAlign(hDC, value); }
};

using VBkModeScope = VDCStateScope<VBkModeSetter>;
using VRop2Scope = VDCStateScope<VRop2Setter>;
using VStretchModeScope = VDCStateScope<VStretchModeSetter>;
using VBkColorScope = VDCStateScope<VBkColorSetter>;
using VTextColorScope = VDCStateScope<VTextColorSetter>;
using VTextAlignScope = VDCStateScope<VTextAlignSetter>;
