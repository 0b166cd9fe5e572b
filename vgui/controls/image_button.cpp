// How VButtonST is set up: its pictures, looks, actions and tooltip.
#include "vgui/controls/image_button.h"

#include "vgui/controls/control_tool_tip.h"
#include "vgui/foundation/skin_host.h"

#include <algorithm>
#include <cwchar>

namespace
{

constexpr BYTE kFirstTextAlign = 3;
constexpr BYTE kLastAlign = 5;

// The module that has a resource, null for the id 0.
HINSTANCE ModuleOf(int id, LPCWSTR type)
{
    return id == 0 ? nullptr : AfxFindResourceHandle(MAKEINTRESOURCEW(id), type);
}

// An image of a resource at its own size, null for 0 or when there is none. The caller owns it.
HANDLE LoadResourceImage(HINSTANCE module, int id, UINT type)
{
    return id == 0 ? nullptr : ::LoadImageW(module, MAKEINTRESOURCEW(id), type, 0, 0, LR_DEFAULTCOLOR);
}

// The pair of images that a setter takes, both from the module that has the first one. False when one that
// was asked for is missing; then there is none.
template <class Handle, class Destroy>
bool LoadPair(int idIn, int idOut, LPCWSTR resourceType, UINT imageType, Handle& in, Handle& out,
              Destroy destroy)
{
    const HINSTANCE module = ModuleOf(idIn, resourceType);
    in = static_cast<Handle>(LoadResourceImage(module, idIn, imageType));
    out = in == nullptr ? nullptr : static_cast<Handle>(LoadResourceImage(module, idOut, imageType));
    const bool complete = (in != nullptr || idIn == 0) && (out != nullptr || in == nullptr || idOut == 0);
    if (!complete && in != nullptr)
        destroy(in);
    return complete;
}

// The size is told by the hot spot, which lies in an icon's centre.
bool ReadIconSize(HICON icon, DWORD& width, DWORD& height)
{
    ICONINFO info{};
    if (!::GetIconInfo(icon, &info))
        return false;
    if (info.hbmMask != nullptr)
        ::DeleteObject(info.hbmMask);
    if (info.hbmColor != nullptr)
        ::DeleteObject(info.hbmColor);
    width = info.xHotspot * 2;
    height = info.yHotspot * 2;
    return true;
}

} // namespace

VButtonST::VButtonST()
{
    FreeResources(FALSE);
    SetDefaultColors(FALSE);
    SetURL(nullptr);
}

VButtonST::~VButtonST()
{
    DropBackground();
    FreeResources();
    if (cursor != nullptr)
        ::DestroyCursor(cursor);
    if (menu != nullptr)
        ::DestroyMenu(menu);
}

void VButtonST::FreeResources(BOOL bCheckForNull)
{
    for (Icon& icon : icons) {
        if (bCheckForNull && icon.handle != nullptr)
            ::DestroyIcon(icon.handle);
        icon = {};
    }
    for (Bitmap& bitmap : bitmaps) {
        if (bCheckForNull && bitmap.handle != nullptr)
            ::DeleteObject(bitmap.handle);
        if (bCheckForNull && bitmap.mask != nullptr)
            ::DeleteObject(bitmap.mask);
        bitmap = {};
    }
}

void VButtonST::Repaint(BOOL bRepaint)
{
    if (bRepaint && m_hWnd != nullptr)
        Invalidate();
}

// ---- Settings

DWORD VButtonST::SetIcon(int nIconIn, int nIconOut)
{
    HICON in = nullptr;
    HICON out = nullptr;
    const bool complete = LoadPair(nIconIn, nIconOut, RT_GROUP_ICON, IMAGE_ICON, in, out,
                                   [](HICON icon) { ::DestroyIcon(icon); });
    const DWORD result = SetIcon(complete ? in : nullptr, complete ? out : nullptr);
    return complete ? result : StResultBadResource;
}

DWORD VButtonST::SetIcon(HICON hIconIn, HICON hIconOut)
{
    FreeResources();
    if (hIconIn != nullptr) {
        // Both are ours from here on, so that a failure with the first does not lose the second.
        icons[0].handle = hIconIn;
        icons[1].handle = hIconOut != hIconIn ? hIconOut : nullptr;
        for (Icon& icon : icons) {
            if (icon.handle == nullptr || ReadIconSize(icon.handle, icon.width, icon.height))
                continue;
            FreeResources();
            return StResultBadResource;
        }
    }
    Repaint(TRUE);
    return StResultOk;
}

DWORD VButtonST::SetBitmaps(int nBitmapIn, COLORREF crTransIn, int nBitmapOut, COLORREF crTransOut)
{
    HBITMAP in = nullptr;
    HBITMAP out = nullptr;
    const bool complete = LoadPair(nBitmapIn, nBitmapOut, RT_BITMAP, IMAGE_BITMAP, in, out,
                                   [](HBITMAP bitmap) { ::DeleteObject(bitmap); });
    const DWORD result = SetBitmaps(complete ? in : nullptr, crTransIn, complete ? out : nullptr, crTransOut);
    return complete ? result : StResultBadResource;
}

DWORD VButtonST::SetBitmaps(HBITMAP hIn, COLORREF crTransIn, HBITMAP hOut, COLORREF crTransOut)
{
    FreeResources();
    if (hIn != nullptr) {
        bitmaps[0].handle = hIn;
        bitmaps[0].transparent = crTransIn;
        bitmaps[1].handle = hOut != hIn ? hOut : nullptr;
        bitmaps[1].transparent = crTransOut;
        for (Bitmap& bitmap : bitmaps) {
            if (bitmap.handle == nullptr)
                continue;
            BITMAP size{};
            if (::GetObject(bitmap.handle, sizeof size, &size) == 0) {
                FreeResources();
                return StResultBadResource;
            }
            bitmap.width = static_cast<DWORD>(size.bmWidth);
            bitmap.height = static_cast<DWORD>(size.bmHeight);
            bitmap.mask = CreateBitmapMask(bitmap.handle, bitmap.width, bitmap.height, bitmap.transparent);
            if (bitmap.mask == nullptr) {
                FreeResources();
                return StResultMaskFailed;
            }
        }
    }
    Repaint(TRUE);
    return StResultOk;
}

DWORD VButtonST::SetFlat(BOOL bFlat, BOOL bRepaint)
{
    if (!bFlat)
        CancelHover();
    flat = bFlat;
    Repaint(bRepaint);
    return StResultOk;
}

DWORD VButtonST::SetAlign(BYTE byAlign, BOOL bRepaint)
{
    if (byAlign > kLastAlign)
        return StResultBadAlign;
    if (byAlign < kFirstTextAlign)
        imageAlign = byAlign;
    else
        textAlign = byAlign - kFirstTextAlign;
    Repaint(bRepaint);
    return StResultOk;
}

DWORD VButtonST::SetCheck(int nCheck, BOOL bRepaint)
{
    if (!isToggle)
        return StResultOk;
    checked = nCheck != 0 ? 1 : 0;
    Repaint(bRepaint);
    return StResultOk;
}

DWORD VButtonST::SetDefaultColors(BOOL bRepaint)
{
    for (const int background : {ColorBkIn, ColorBkOut, ColorBkFocus})
        colors[background] = ::GetSysColor(COLOR_BTNFACE);
    for (const int text : {ColorFgIn, ColorFgOut, ColorFgFocus})
        colors[text] = ::GetSysColor(COLOR_BTNTEXT);
    Repaint(bRepaint);
    return StResultOk;
}

DWORD VButtonST::SetColor(BYTE byColorIndex, COLORREF crColor, BOOL bRepaint)
{
    if (byColorIndex >= kColors)
        return StResultBadIndex;
    colors[byColorIndex] = crColor;
    Repaint(bRepaint);
    return StResultOk;
}

DWORD VButtonST::GetColor(BYTE byColorIndex, COLORREF* crpColor)
{
    if (byColorIndex >= kColors)
        return StResultBadIndex;
    if (crpColor != nullptr)
        *crpColor = colors[byColorIndex];
    return StResultOk;
}

DWORD VButtonST::SetAlwaysTrack(BOOL bAlwaysTrack)
{
    alwaysTrack = bAlwaysTrack;
    return StResultOk;
}

DWORD VButtonST::SetBtnCursor(int nCursorId, BOOL bRepaint)
{
    if (cursor != nullptr)
        ::DestroyCursor(cursor);
    cursor = static_cast<HCURSOR>(
        LoadResourceImage(ModuleOf(nCursorId, RT_GROUP_CURSOR), nCursorId, IMAGE_CURSOR));
    Repaint(bRepaint);
    return nCursorId != 0 && cursor == nullptr ? StResultBadResource : StResultOk;
}

DWORD VButtonST::DrawBorder(BOOL bEnable, BOOL bRepaint)
{
    drawBorder = bEnable;
    Repaint(bRepaint);
    return StResultOk;
}

DWORD VButtonST::DrawFlatFocus(BOOL bDrawFlatFocus, BOOL bRepaint)
{
    drawFlatFocus = bDrawFlatFocus;
    Repaint(bRepaint);
    return StResultOk;
}

void VButtonST::DrawTransparent(BOOL bRepaint)
{
    transparent = TRUE;
    DropBackground();
    if (!bRepaint || m_hWnd == nullptr)
        return;
    Repaint(TRUE);
    // What this button has painted so far must not become its background. Last, since the parent may destroy
    // the button while it paints.
    CRect place;
    GetWindowRect(place);
    if (CWnd* parent = GetParent()) {
        parent->ScreenToClient(place);
        parent->RedrawWindow(place, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_NOCHILDREN);
    }
}

DWORD VButtonST::SetURL(LPCWSTR lpszURL)
{
    std::fill_n(url, kMaxUrl, L'\0');
    if (lpszURL != nullptr)
        std::copy_n(lpszURL, ::wcsnlen(lpszURL, kMaxUrl), url);
    return StResultOk;
}

DWORD VButtonST::SetMenu(UINT nMenu, HWND hParentWnd, BOOL bRepaint)
{
    if (menu != nullptr)
        ::DestroyMenu(menu);
    menu = nullptr;
    menuOwner = nullptr;
    menuShown = FALSE;
    if (nMenu != 0) {
        const LPCWSTR name = MAKEINTRESOURCEW(nMenu);
        menu = ::LoadMenuW(AfxFindResourceHandle(name, RT_MENU), name);
        if (menu == nullptr)
            return StResultBadResource;
        menuOwner = hParentWnd;
    }
    Repaint(bRepaint);
    return StResultOk;
}

// ---- Tooltip

void VButtonST::InitToolTip()
{
    if (VSkinHost::Of(this) == nullptr)
        CreateControlTip(toolTip, *this);
}

void VButtonST::SetTooltipText(LPCWSTR lpszText, BOOL bActivate)
{
    if (lpszText == nullptr || m_hWnd == nullptr)
        return;
    VSkinHost* const host = VSkinHost::Of(this);
    if (host == nullptr)
        SetControlTip(toolTip, *this, lpszText, bActivate);
    else
        host->AddToolTips(this, lpszText);
}

void VButtonST::SetTooltipText(int nText, BOOL bActivate)
{
    CString text;
    if (text.LoadString(static_cast<UINT>(nText)) && !text.IsEmpty())
        SetTooltipText(static_cast<LPCWSTR>(text), bActivate);
}

void VButtonST::ActivateTooltip(BOOL bEnable)
{
    ActivateControlTip(toolTip, bEnable);
}

BOOL VButtonST::PreTranslateMessage(MSG* pMsg)
{
    if (pMsg == nullptr)
        return FALSE;
    RelayToControlTip(toolTip, *this, *pMsg);
    return CButton::PreTranslateMessage(pMsg);
}
