// VPen and VBrush, the scoped holders.
#include "vgui/foundation/draw_helpers.h"

namespace
{

constexpr int kPenWidth = 1;

HDC HandleOf(const CDC* pDC)
{
    return pDC != nullptr ? pDC->m_hDC : nullptr;
}

} // namespace

VPen::VPen(HDC hDC, COLORREF clr) : m_hDC(hDC)
{
    Select(clr);
}

VPen::VPen(CDC* pDC, COLORREF clr) : VPen(HandleOf(pDC), clr) {}

VPen::~VPen()
{
    Deselect();
}

void VPen::Color(COLORREF clr)
{
    Deselect();
    DeleteObject();
    Select(clr);
}

COLORREF VPen::Color() const
{
    LOGPEN pen;
    return ::GetObject(m_hObject, sizeof pen, &pen) == sizeof pen ? pen.lopnColor : VGNoColor;
}

void VPen::Select(COLORREF clr)
{
    CreatePen(PS_SOLID, kPenWidth, clr);
    m_hOldObject = ::SelectObject(m_hDC, m_hObject);
}

void VPen::Deselect()
{
    if (m_hOldObject != nullptr)
        ::SelectObject(m_hDC, m_hOldObject);
    m_hOldObject = nullptr;
}

VBrush::VBrush(HDC hDC, COLORREF clr) : m_hDC(hDC)
{
    Select(clr);
}

VBrush::VBrush(CDC* pDC, COLORREF clr) : VBrush(HandleOf(pDC), clr) {}

VBrush::~VBrush()
{
    Deselect();
}

void VBrush::Color(COLORREF clr)
{
    Deselect();
    DeleteObject();
    Select(clr);
}

COLORREF VBrush::Color() const
{
    LOGBRUSH brush;
    if (::GetObject(m_hObject, sizeof brush, &brush) != sizeof brush || brush.lbStyle == BS_NULL)
        return VGNoColor;
    return brush.lbColor;
}

// The system's brush is stored without attaching it: it is not ours, and several holders share it.
void VBrush::Select(COLORREF clr)
{
    if (clr == VGNoColor)
        m_hObject = ::GetStockObject(NULL_BRUSH);
    else
        CreateSolidBrush(clr);
    m_hOldObject = ::SelectObject(m_hDC, m_hObject);
}

void VBrush::Deselect()
{
    if (m_hOldObject != nullptr)
        ::SelectObject(m_hDC, m_hOldObject);
    m_hOldObject = nullptr;
    if (m_hObject == ::GetStockObject(NULL_BRUSH))
        m_hObject = nullptr;
}
