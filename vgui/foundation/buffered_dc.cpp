#include "vgui/foundation/buffered_dc.h"

#include <algorithm>

VBufferedDC::VBufferedDC(CDC& target, const CRect& rect, Start start) : m_target(target), m_rect(rect)
{
    if (m_rect.IsRectEmpty())
        m_rect.SetRectEmpty();
    if (!CreatePicture()) {
        Attach(m_target.m_hDC);
        return;
    }
    TakeSettings();
    if (start == Start::Target)
        BitBlt(m_rect.left, m_rect.top, m_rect.Width(), m_rect.Height(), &m_target, m_rect.left, m_rect.top,
               SRCCOPY);
}

VBufferedDC::~VBufferedDC()
{
    if (m_oldBitmap == nullptr) {
        Detach();
        return;
    }
    m_target.BitBlt(m_rect.left, m_rect.top, m_rect.Width(), m_rect.Height(), this, m_rect.left, m_rect.top,
                    SRCCOPY);
    ::SelectObject(m_hDC, m_oldFont);
    ::SelectObject(m_hDC, m_oldBitmap);
}

bool VBufferedDC::CreatePicture()
{
    if (!CreateCompatibleDC(&m_target))
        return false;
    const int width = std::max(m_rect.Width(), 1);
    const int height = std::max(m_rect.Height(), 1);
    if (m_picture.CreateCompatibleBitmap(&m_target, width, height))
        m_oldBitmap = ::SelectObject(m_hDC, m_picture.m_hObject);
    if (m_oldBitmap == nullptr)
        DeleteDC();
    return m_oldBitmap != nullptr;
}

void VBufferedDC::TakeSettings()
{
    ::SetViewportOrgEx(m_hDC, -m_rect.left, -m_rect.top, nullptr);
    m_oldFont = ::SelectObject(m_hDC, ::GetCurrentObject(m_target.m_hDC, OBJ_FONT));
    SetTextColor(m_target.GetTextColor());
    SetBkColor(m_target.GetBkColor());
    SetBkMode(m_target.GetBkMode());
}
