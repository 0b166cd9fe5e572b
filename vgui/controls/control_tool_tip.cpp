#include "vgui/controls/control_tool_tip.h"

namespace
{

constexpr int kMaxTipWidth = 400; // pixels

bool HasWindow(const CToolTipCtrl& tip)
{
    return ::IsWindow(tip.m_hWnd) != FALSE;
}

} // namespace

bool CreateControlTip(CToolTipCtrl& tip, CWnd& control)
{
    if (HasWindow(tip))
        return true;
    if (control.m_hWnd == nullptr || !tip.Create(&control, TTS_ALWAYSTIP))
        return false;
    tip.Activate(FALSE);
    tip.SetMaxTipWidth(kMaxTipWidth);
    return true;
}

void DestroyControlTip(CToolTipCtrl& tip)
{
    if (HasWindow(tip))
        tip.DestroyWindow();
}

void SetControlTip(CToolTipCtrl& tip, CWnd& control, LPCWSTR text, BOOL activate)
{
    if (!CreateControlTip(tip, control))
        return;
    if (tip.GetToolCount() == 0)
        tip.AddTool(&control, text);
    else
        tip.UpdateTipText(text, &control);
    tip.Activate(activate);
}

void ActivateControlTip(CToolTipCtrl& tip, BOOL activate)
{
    if (HasWindow(tip) && tip.GetToolCount() > 0)
        tip.Activate(activate);
}

void RelayToControlTip(CToolTipCtrl& tip, const CWnd& control, MSG& message)
{
    if (!HasWindow(tip) || control.m_hWnd == nullptr)
        return;
    CPoint point = message.pt;
    control.ScreenToClient(&point);
    CRect client;
    control.GetClientRect(client);
    const bool inside = client.PtInRect(point) != FALSE;
    if (inside)
        tip.RelayEvent(&message);
    tip.Activate(inside);
}
