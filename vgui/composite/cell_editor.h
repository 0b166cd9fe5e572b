// What the property list's and the property grid's editors share.
#pragma once

#include <afxwin.h>

// Of an edit field over a value.
inline constexpr DWORD kCellEditStyle = WS_CHILD | WS_BORDER | ES_AUTOHSCROLL | ES_NOHIDESEL;

// Whether an editor is shown, even while the window that it is in is not. Not one that has no window any
// more.
inline bool IsEditorShown(const CWnd& editor)
{
    return ::IsWindow(editor.m_hWnd) && (editor.GetStyle() & WS_VISIBLE) != 0;
}

// Whether an editor was left behind in a former window of its control, which was detached and not destroyed.
inline bool IsEditorElsewhere(const CWnd& editor, HWND control)
{
    return editor.m_hWnd != nullptr && ::GetParent(editor.m_hWnd) != control;
}
