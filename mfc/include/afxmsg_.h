// Message maps. An entry holds a thunk that is made for one handler of one class, so a handler whose
// signature does not fit its message is refused by the compiler.
#pragma once

#include <type_traits>

class CCmdTarget;
class CCmdUI;
class CDC;
class CListBox;
class CMenu;
class CScrollBar;
class CWnd;

// Notification codes of WM_COMMAND routing.
#define CN_COMMAND 0
#define CN_UPDATE_COMMAND_UI ((UINT)(-1))

// Reflected messages are the original message plus this base.
#define WM_REFLECT_BASE 0xBC00
// All WM_CTLCOLOR* messages arrive at message maps as this one, with an AFX_CTLCOLOR in lParam.
#define WM_CTLCOLOR 0x0019

struct AFX_CTLCOLOR {
    HWND hWnd;
    HDC hDC;
    UINT nCtlType;
};

struct AFX_NOTIFY {
    LRESULT* pResult;
    NMHDR* pNMHDR;
};

// One dispatch: the message or command as it came, and where its result goes.
struct AFX_MSG_DISPATCH {
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
    LRESULT result;
    UINT nID;           // command and notification routing
    AFX_NOTIFY* notify; // notification routing
    CCmdUI* pCmdUI;     // CN_UPDATE_COMMAND_UI
};

// Calls the handler of an entry; FALSE lets the search for a handler go on.
typedef BOOL (*AFX_PMSG)(CCmdTarget* pTarget, AFX_MSG_DISPATCH& dispatch);

struct AFX_MSGMAP_ENTRY {
    UINT nMessage; // a window message, WM_COMMAND, WM_NOTIFY or a reflected form
    UINT nCode;    // control code or CN_ code
    UINT nID;      // first control or command id, 0 for window messages
    UINT nLastID;
    UINT* pnRegistered; // address of a registered message's number
    AFX_PMSG pfn;       // null ends the map
};

struct AFX_MSGMAP {
    const AFX_MSGMAP*(PASCAL* pfnGetBaseMap)();
    const AFX_MSGMAP_ENTRY* lpEntries;
};

#define DECLARE_MESSAGE_MAP()                                                                                \
protected:                                                                                                   \
    static const AFX_MSGMAP* PASCAL GetThisMessageMap();                                                     \
    virtual const AFX_MSGMAP* GetMessageMap() const;

#define BEGIN_MESSAGE_MAP(theClass, baseClass)                                                               \
    const AFX_MSGMAP* theClass::GetMessageMap() const                                                        \
    {                                                                                                        \
        return GetThisMessageMap();                                                                          \
    }                                                                                                        \
    const AFX_MSGMAP* PASCAL theClass::GetThisMessageMap()                                                   \
    {                                                                                                        \
        typedef theClass ThisClass;                                                                          \
        typedef baseClass TheBaseClass;                                                                      \
        static const AFX_MSGMAP_ENTRY _messageEntries[] = {

#define BEGIN_TEMPLATE_MESSAGE_MAP(theClass, type_name, baseClass)                                           \
    template <typename type_name>                                                                            \
    const AFX_MSGMAP* theClass<type_name>::GetMessageMap() const                                             \
    {                                                                                                        \
        return GetThisMessageMap();                                                                          \
    }                                                                                                        \
    template <typename type_name>                                                                            \
    const AFX_MSGMAP* PASCAL theClass<type_name>::GetThisMessageMap()                                        \
    {                                                                                                        \
        typedef theClass<type_name> ThisClass;                                                               \
        typedef baseClass TheBaseClass;                                                                      \
        static const AFX_MSGMAP_ENTRY _messageEntries[] = {

#define END_MESSAGE_MAP()                                                                                    \
    {                                                                                                        \
        0, 0, 0, 0, nullptr, nullptr                                                                         \
    }                                                                                                        \
    }                                                                                                        \
    ;                                                                                                        \
    static const AFX_MSGMAP messageMap = {&TheBaseClass::GetThisMessageMap, &_messageEntries[0]};            \
    return &messageMap;                                                                                      \
    }

// How arguments are taken out of a message, one small type each.
namespace afxsig
{
using Dispatch = AFX_MSG_DISPATCH;

template <class T, class Raw>
T FromRaw(Raw raw)
{
    if constexpr (std::is_pointer_v<T>)
        return reinterpret_cast<T>(raw);
    else
        return static_cast<T>(raw);
}

template <class T>
struct W {
    static T Get(Dispatch& d) { return FromRaw<T>(d.wParam); }
};
template <class T>
struct L {
    static T Get(Dispatch& d) { return FromRaw<T>(d.lParam); }
};
struct LoW {
    static WORD Get(Dispatch& d) { return LOWORD(d.wParam); }
};
struct HiW {
    static WORD Get(Dispatch& d) { return HIWORD(d.wParam); }
};
struct LoL {
    static WORD Get(Dispatch& d) { return LOWORD(d.lParam); }
};
struct HiL {
    static WORD Get(Dispatch& d) { return HIWORD(d.lParam); }
};
struct SLoL {
    static int Get(Dispatch& d) { return static_cast<short>(LOWORD(d.lParam)); }
};
struct SHiL {
    static int Get(Dispatch& d) { return static_cast<short>(HIWORD(d.lParam)); }
};
struct SHiW {
    static short Get(Dispatch& d) { return static_cast<short>(HIWORD(d.wParam)); }
};
struct PointL {
    static CPoint Get(Dispatch& d) { return CPoint(SLoL::Get(d), SHiL::Get(d)); }
};
// Objects that stand for handles; temporary ones unless the handle is attached to an object.
struct AFX_SUBSET_API WndW {
    static CWnd* Get(Dispatch& d);
};
struct AFX_SUBSET_API WndL {
    static CWnd* Get(Dispatch& d);
};
struct AFX_SUBSET_API DcW {
    static CDC* Get(Dispatch& d);
};
struct AFX_SUBSET_API MenuW {
    static CMenu* Get(Dispatch& d);
};
struct AFX_SUBSET_API MenuL {
    static CMenu* Get(Dispatch& d);
};
struct AFX_SUBSET_API ListBoxL {
    static CListBox* Get(Dispatch& d);
};
struct AFX_SUBSET_API ScrollBarL {
    static CScrollBar* Get(Dispatch& d);
};
struct AFX_SUBSET_API CtlColorDc {
    static CDC* Get(Dispatch& d);
};
struct AFX_SUBSET_API CtlColorWnd {
    static CWnd* Get(Dispatch& d);
};
struct CtlColorType {
    static UINT Get(Dispatch& d) { return reinterpret_cast<AFX_CTLCOLOR*>(d.lParam)->nCtlType; }
};
struct Id {
    static UINT Get(Dispatch& d) { return d.nID; }
};
struct CmdUI {
    static CCmdUI* Get(Dispatch& d) { return d.pCmdUI; }
};
struct Nmhdr {
    static NMHDR* Get(Dispatch& d) { return d.notify->pNMHDR; }
};
struct NotifyResult {
    static LRESULT* Get(Dispatch& d) { return d.notify->pResult; }
};

template <class R>
LRESULT ToResult(R value)
{
    if constexpr (std::is_pointer_v<R>)
        return reinterpret_cast<LRESULT>(value);
    else
        return static_cast<LRESULT>(value);
}

// The handler's value is the message's result; the message is handled.
template <class... Args>
struct Message {
    template <class Target, class Handler>
    static BOOL Call(Target* target, Handler handler, Dispatch& d)
    {
        if constexpr (std::is_void_v<decltype((target->*handler)(Args::Get(d)...))>)
            (target->*handler)(Args::Get(d)...);
        else
            d.result = ToResult((target->*handler)(Args::Get(d)...));
        return TRUE;
    }
};

// The same, but a zero result means that the handler has declined.
template <class... Args>
struct NonZero {
    template <class Target, class Handler>
    static BOOL Call(Target* target, Handler handler, Dispatch& d)
    {
        Message<Args...>::Call(target, handler, d);
        return d.result != 0;
    }
};

// A command or notification handler: void has handled it, BOOL says whether it has.
template <class... Args>
struct Command {
    template <class Target, class Handler>
    static BOOL Call(Target* target, Handler handler, Dispatch& d)
    {
        if constexpr (std::is_void_v<decltype((target->*handler)(Args::Get(d)...))>) {
            (target->*handler)(Args::Get(d)...);
            return TRUE;
        } else {
            return (target->*handler)(Args::Get(d)...);
        }
    }
};

// Binds a handler to its decoder. GetHandler is a stateless lambda that answers the member pointer.
template <class Target, class Decoder, class GetHandler>
constexpr AFX_PMSG Bind(GetHandler)
{
    return [](CCmdTarget* target, Dispatch& d) -> BOOL {
        return Decoder::Call(static_cast<Target*>(target), GetHandler{}(), d);
    };
}
} // namespace afxsig

#define AFX_MEMBER_(R, params, fn) [] { return static_cast<R(ThisClass::*) params>(fn); }
#define AFX_BIND_(decoder, R, params, fn) afxsig::Bind<ThisClass, afxsig::decoder>(AFX_MEMBER_(R, params, fn))
#define AFX_WM_(message, R, params, fn, ...)                                                                 \
    {                                                                                                        \
        message,                                                                                             \
        0,                                                                                                   \
        0,                                                                                                   \
        0,                                                                                                   \
        nullptr,                                                                                             \
        afxsig::Bind<ThisClass, afxsig::Message<__VA_ARGS__>>(AFX_MEMBER_(R, params, &ThisClass::fn))},

// Commands, controls and notifications.
#define ON_COMMAND(id, fn)                                                                                   \
    {WM_COMMAND, (UINT)CN_COMMAND, (UINT)(id), (UINT)(id), nullptr, AFX_BIND_(Command<>, void, (), fn)},
#define ON_COMMAND_EX(id, fn)                                                                                \
    {WM_COMMAND, (UINT)CN_COMMAND, (UINT)(id),                                                               \
     (UINT)(id), nullptr,          AFX_BIND_(Command<afxsig::Id>, BOOL, (UINT), fn)},
#define ON_COMMAND_RANGE(id, idLast, fn)                                                                     \
    {WM_COMMAND,     (UINT)CN_COMMAND, (UINT)(id),                                                           \
     (UINT)(idLast), nullptr,          AFX_BIND_(Command<afxsig::Id>, void, (UINT), fn)},
#define ON_UPDATE_COMMAND_UI(id, fn)                                                                         \
    {WM_COMMAND, CN_UPDATE_COMMAND_UI,                                                                       \
     (UINT)(id), (UINT)(id),                                                                                 \
     nullptr,    AFX_BIND_(Command<afxsig::CmdUI>, void, (CCmdUI*), fn)},
#define ON_UPDATE_COMMAND_UI_RANGE(id, idLast, fn)                                                           \
    {WM_COMMAND, CN_UPDATE_COMMAND_UI,                                                                       \
     (UINT)(id), (UINT)(idLast),                                                                             \
     nullptr,    AFX_BIND_(Command<afxsig::CmdUI>, void, (CCmdUI*), fn)},
#define ON_CONTROL(code, id, fn)                                                                             \
    {WM_COMMAND, (WORD)(code), (UINT)(id), (UINT)(id), nullptr, AFX_BIND_(Command<>, void, (), fn)},
#define ON_CONTROL_RANGE(code, id, idLast, fn)                                                               \
    {WM_COMMAND,     (WORD)(code), (UINT)(id),                                                               \
     (UINT)(idLast), nullptr,      AFX_BIND_(Command<afxsig::Id>, void, (UINT), fn)},
#define ON_CONTROL_REFLECT(code, fn)                                                                         \
    {WM_REFLECT_BASE + WM_COMMAND, (WORD)(code), 0, 0, nullptr, AFX_BIND_(Command<>, void, (), fn)},
#define ON_CONTROL_REFLECT_EX(code, fn)                                                                      \
    {WM_REFLECT_BASE + WM_COMMAND, (WORD)(code), 0, 0, nullptr, AFX_BIND_(Command<>, BOOL, (), fn)},
#define ON_NOTIFY(code, id, fn)                                                                              \
    {WM_NOTIFY,                                                                                              \
     (WORD)(int)(code),                                                                                      \
     (UINT)(id),                                                                                             \
     (UINT)(id),                                                                                             \
     nullptr,                                                                                                \
     afxsig::Bind<ThisClass, afxsig::Command<afxsig::Nmhdr, afxsig::NotifyResult>>(                          \
         AFX_MEMBER_(void, (NMHDR*, LRESULT*), fn))},
#define AFX_ON_NOTIFY_ID_(R, code, id, idLast, fn)                                                           \
    {WM_NOTIFY,                                                                                              \
     (WORD)(int)(code),                                                                                      \
     (UINT)(id),                                                                                             \
     (UINT)(idLast),                                                                                         \
     nullptr,                                                                                                \
     afxsig::Bind<ThisClass, afxsig::Command<afxsig::Id, afxsig::Nmhdr, afxsig::NotifyResult>>(              \
         AFX_MEMBER_(R, (UINT, NMHDR*, LRESULT*), fn))},
#define ON_NOTIFY_EX(code, id, fn) AFX_ON_NOTIFY_ID_(BOOL, code, id, id, fn)
#define ON_NOTIFY_RANGE(code, id, idLast, fn) AFX_ON_NOTIFY_ID_(void, code, id, idLast, fn)
#define ON_NOTIFY_EX_RANGE(code, id, idLast, fn) AFX_ON_NOTIFY_ID_(BOOL, code, id, idLast, fn)
#define AFX_ON_NOTIFY_REFLECT_(R, code, fn)                                                                  \
    {WM_REFLECT_BASE + WM_NOTIFY,                                                                            \
     (WORD)(int)(code),                                                                                      \
     0,                                                                                                      \
     0,                                                                                                      \
     nullptr,                                                                                                \
     afxsig::Bind<ThisClass, afxsig::Command<afxsig::Nmhdr, afxsig::NotifyResult>>(                          \
         AFX_MEMBER_(R, (NMHDR*, LRESULT*), fn))},
#define ON_NOTIFY_REFLECT(code, fn) AFX_ON_NOTIFY_REFLECT_(void, code, fn)
#define ON_NOTIFY_REFLECT_EX(code, fn) AFX_ON_NOTIFY_REFLECT_(BOOL, code, fn)
#define ON_UPDATE_COMMAND_UI_REFLECT(fn)                                                                     \
    {WM_REFLECT_BASE + WM_COMMAND,                                                                           \
     CN_UPDATE_COMMAND_UI,                                                                                   \
     0,                                                                                                      \
     0,                                                                                                      \
     nullptr,                                                                                                \
     AFX_BIND_(Command<afxsig::CmdUI>, void, (CCmdUI*), fn)},

// Messages of the host's own.
#define ON_MESSAGE(message, fn)                                                                              \
    {message,                                                                                                \
     0,                                                                                                      \
     0,                                                                                                      \
     0,                                                                                                      \
     nullptr,                                                                                                \
     afxsig::Bind<ThisClass, afxsig::Message<afxsig::W<WPARAM>, afxsig::L<LPARAM>>>(                         \
         AFX_MEMBER_(LRESULT, (WPARAM, LPARAM), fn))},
#define ON_MESSAGE_VOID(message, fn) {message, 0, 0, 0, nullptr, AFX_BIND_(Message<>, void, (), fn)},
#define ON_REGISTERED_MESSAGE(variable, fn)                                                                  \
    {0xC000,                                                                                                 \
     0,                                                                                                      \
     0,                                                                                                      \
     0,                                                                                                      \
     (UINT*)&(variable),                                                                                     \
     afxsig::Bind<ThisClass, afxsig::Message<afxsig::W<WPARAM>, afxsig::L<LPARAM>>>(                         \
         AFX_MEMBER_(LRESULT, (WPARAM, LPARAM), fn))},
#define ON_THREAD_MESSAGE(message, fn)                                                                       \
    {message,                                                                                                \
     0,                                                                                                      \
     0,                                                                                                      \
     0,                                                                                                      \
     nullptr,                                                                                                \
     afxsig::Bind<ThisClass, afxsig::Message<afxsig::W<WPARAM>, afxsig::L<LPARAM>>>(                         \
         AFX_MEMBER_(void, (WPARAM, LPARAM), fn))},

// Reflected messages with fixed handler names.
#define ON_WM_CTLCOLOR_REFLECT()                                                                             \
    {WM_REFLECT_BASE + WM_CTLCOLOR,                                                                          \
     0,                                                                                                      \
     0,                                                                                                      \
     0,                                                                                                      \
     nullptr,                                                                                                \
     afxsig::Bind<ThisClass, afxsig::NonZero<afxsig::CtlColorDc, afxsig::CtlColorType>>(                     \
         AFX_MEMBER_(HBRUSH, (CDC*, UINT), &ThisClass::CtlColor))},
#define ON_WM_DRAWITEM_REFLECT()                                                                             \
    AFX_WM_(WM_REFLECT_BASE + WM_DRAWITEM, void, (LPDRAWITEMSTRUCT), DrawItem, afxsig::L<LPDRAWITEMSTRUCT>)
#define ON_WM_MEASUREITEM_REFLECT()                                                                          \
    AFX_WM_(WM_REFLECT_BASE + WM_MEASUREITEM, void, (LPMEASUREITEMSTRUCT), MeasureItem,                      \
            afxsig::L<LPMEASUREITEMSTRUCT>)
#define ON_WM_DELETEITEM_REFLECT()                                                                           \
    AFX_WM_(WM_REFLECT_BASE + WM_DELETEITEM, void, (LPDELETEITEMSTRUCT), DeleteItem,                         \
            afxsig::L<LPDELETEITEMSTRUCT>)
#define ON_WM_COMPAREITEM_REFLECT()                                                                          \
    AFX_WM_(WM_REFLECT_BASE + WM_COMPAREITEM, int, (LPCOMPAREITEMSTRUCT), CompareItem,                       \
            afxsig::L<LPCOMPAREITEMSTRUCT>)
#define ON_WM_CHARTOITEM_REFLECT()                                                                           \
    AFX_WM_(WM_REFLECT_BASE + WM_CHARTOITEM, int, (UINT, UINT), CharToItem, afxsig::LoW, afxsig::HiW)
#define ON_WM_VKEYTOITEM_REFLECT()                                                                           \
    AFX_WM_(WM_REFLECT_BASE + WM_VKEYTOITEM, int, (UINT, UINT), VKeyToItem, afxsig::LoW, afxsig::HiW)
#define ON_WM_HSCROLL_REFLECT()                                                                              \
    AFX_WM_(WM_REFLECT_BASE + WM_HSCROLL, void, (UINT, UINT), HScroll, afxsig::LoW, afxsig::HiW)
#define ON_WM_VSCROLL_REFLECT()                                                                              \
    AFX_WM_(WM_REFLECT_BASE + WM_VSCROLL, void, (UINT, UINT), VScroll, afxsig::LoW, afxsig::HiW)
#define ON_WM_PARENTNOTIFY_REFLECT()                                                                         \
    AFX_WM_(WM_REFLECT_BASE + WM_PARENTNOTIFY, void, (UINT, LPARAM), ParentNotify, afxsig::LoW,              \
            afxsig::L<LPARAM>)

// Window messages with fixed handler names.
#define ON_WM_ACTIVATE()                                                                                     \
    AFX_WM_(WM_ACTIVATE, void, (UINT, CWnd*, BOOL), OnActivate, afxsig::LoW, afxsig::WndL, afxsig::HiW)
#define ON_WM_ACTIVATEAPP()                                                                                  \
    AFX_WM_(WM_ACTIVATEAPP, void, (BOOL, DWORD), OnActivateApp, afxsig::W<BOOL>, afxsig::L<DWORD>)
#define ON_WM_CANCELMODE() AFX_WM_(WM_CANCELMODE, void, (), OnCancelMode)
#define ON_WM_CAPTURECHANGED() AFX_WM_(WM_CAPTURECHANGED, void, (CWnd*), OnCaptureChanged, afxsig::WndL)
#define AFX_WM_KEY_(message, fn)                                                                             \
    AFX_WM_(message, void, (UINT, UINT, UINT), fn, afxsig::W<UINT>, afxsig::LoL, afxsig::HiL)
#define ON_WM_CHAR() AFX_WM_KEY_(WM_CHAR, OnChar)
#define ON_WM_CHARTOITEM()                                                                                   \
    AFX_WM_(WM_CHARTOITEM, int, (UINT, CListBox*, UINT), OnCharToItem, afxsig::LoW, afxsig::ListBoxL,        \
            afxsig::HiW)
#define ON_WM_CLOSE() AFX_WM_(WM_CLOSE, void, (), OnClose)
#define ON_WM_COMPAREITEM()                                                                                  \
    AFX_WM_(WM_COMPAREITEM, int, (int, LPCOMPAREITEMSTRUCT), OnCompareItem, afxsig::W<int>,                  \
            afxsig::L<LPCOMPAREITEMSTRUCT>)
#define ON_WM_CONTEXTMENU()                                                                                  \
    AFX_WM_(WM_CONTEXTMENU, void, (CWnd*, CPoint), OnContextMenu, afxsig::WndW, afxsig::PointL)
#define ON_WM_COPYDATA()                                                                                     \
    AFX_WM_(WM_COPYDATA, BOOL, (CWnd*, COPYDATASTRUCT*), OnCopyData, afxsig::WndW, afxsig::L<COPYDATASTRUCT*>)
#define ON_WM_CREATE() AFX_WM_(WM_CREATE, int, (LPCREATESTRUCT), OnCreate, afxsig::L<LPCREATESTRUCT>)
#define ON_WM_CTLCOLOR()                                                                                     \
    AFX_WM_(WM_CTLCOLOR, HBRUSH, (CDC*, CWnd*, UINT), OnCtlColor, afxsig::CtlColorDc, afxsig::CtlColorWnd,   \
            afxsig::CtlColorType)
#define ON_WM_DEADCHAR() AFX_WM_KEY_(WM_DEADCHAR, OnDeadChar)
#define ON_WM_DELETEITEM()                                                                                   \
    AFX_WM_(WM_DELETEITEM, void, (int, LPDELETEITEMSTRUCT), OnDeleteItem, afxsig::W<int>,                    \
            afxsig::L<LPDELETEITEMSTRUCT>)
#define ON_WM_DESTROY() AFX_WM_(WM_DESTROY, void, (), OnDestroy)
#define ON_WM_DISPLAYCHANGE()                                                                                \
    AFX_WM_(WM_DISPLAYCHANGE, void, (UINT, int, int), OnDisplayChange, afxsig::W<UINT>, afxsig::LoL,         \
            afxsig::HiL)
#define ON_WM_DRAWITEM()                                                                                     \
    AFX_WM_(WM_DRAWITEM, void, (int, LPDRAWITEMSTRUCT), OnDrawItem, afxsig::W<int>,                          \
            afxsig::L<LPDRAWITEMSTRUCT>)
#define ON_WM_DROPFILES() AFX_WM_(WM_DROPFILES, void, (HDROP), OnDropFiles, afxsig::W<HDROP>)
#define ON_WM_ENABLE() AFX_WM_(WM_ENABLE, void, (BOOL), OnEnable, afxsig::W<BOOL>)
#define ON_WM_ENDSESSION() AFX_WM_(WM_ENDSESSION, void, (BOOL), OnEndSession, afxsig::W<BOOL>)
#define ON_WM_ENTERIDLE()                                                                                    \
    AFX_WM_(WM_ENTERIDLE, void, (UINT, CWnd*), OnEnterIdle, afxsig::W<UINT>, afxsig::WndL)
#define ON_WM_ENTERSIZEMOVE() AFX_WM_(WM_ENTERSIZEMOVE, void, (), OnEnterSizeMove)
#define ON_WM_EXITSIZEMOVE() AFX_WM_(WM_EXITSIZEMOVE, void, (), OnExitSizeMove)
#define ON_WM_ERASEBKGND() AFX_WM_(WM_ERASEBKGND, BOOL, (CDC*), OnEraseBkgnd, afxsig::DcW)
#define ON_WM_GETDLGCODE() AFX_WM_(WM_GETDLGCODE, UINT, (), OnGetDlgCode)
#define ON_WM_GETMINMAXINFO()                                                                                \
    AFX_WM_(WM_GETMINMAXINFO, void, (MINMAXINFO*), OnGetMinMaxInfo, afxsig::L<MINMAXINFO*>)
#define ON_WM_HELPINFO() AFX_WM_(WM_HELP, BOOL, (HELPINFO*), OnHelpInfo, afxsig::L<HELPINFO*>)
#define ON_WM_HSCROLL()                                                                                      \
    AFX_WM_(WM_HSCROLL, void, (UINT, UINT, CScrollBar*), OnHScroll, afxsig::LoW, afxsig::HiW,                \
            afxsig::ScrollBarL)
#define ON_WM_INITMENU() AFX_WM_(WM_INITMENU, void, (CMenu*), OnInitMenu, afxsig::MenuW)
#define ON_WM_INITMENUPOPUP()                                                                                \
    AFX_WM_(WM_INITMENUPOPUP, void, (CMenu*, UINT, BOOL), OnInitMenuPopup, afxsig::MenuW, afxsig::LoL,       \
            afxsig::HiL)
#define ON_WM_UNINITMENUPOPUP()                                                                              \
    AFX_WM_(WM_UNINITMENUPOPUP, void, (CMenu*, UINT), OnUnInitMenuPopup, afxsig::MenuW, afxsig::HiL)
#define ON_WM_KEYDOWN() AFX_WM_KEY_(WM_KEYDOWN, OnKeyDown)
#define ON_WM_KEYUP() AFX_WM_KEY_(WM_KEYUP, OnKeyUp)
#define ON_WM_KILLFOCUS() AFX_WM_(WM_KILLFOCUS, void, (CWnd*), OnKillFocus, afxsig::WndW)
#define AFX_WM_MOUSE_(message, fn) AFX_WM_(message, void, (UINT, CPoint), fn, afxsig::W<UINT>, afxsig::PointL)
#define ON_WM_LBUTTONDBLCLK() AFX_WM_MOUSE_(WM_LBUTTONDBLCLK, OnLButtonDblClk)
#define ON_WM_LBUTTONDOWN() AFX_WM_MOUSE_(WM_LBUTTONDOWN, OnLButtonDown)
#define ON_WM_LBUTTONUP() AFX_WM_MOUSE_(WM_LBUTTONUP, OnLButtonUp)
#define ON_WM_MBUTTONDBLCLK() AFX_WM_MOUSE_(WM_MBUTTONDBLCLK, OnMButtonDblClk)
#define ON_WM_MBUTTONDOWN() AFX_WM_MOUSE_(WM_MBUTTONDOWN, OnMButtonDown)
#define ON_WM_MBUTTONUP() AFX_WM_MOUSE_(WM_MBUTTONUP, OnMButtonUp)
#define ON_WM_MEASUREITEM()                                                                                  \
    AFX_WM_(WM_MEASUREITEM, void, (int, LPMEASUREITEMSTRUCT), OnMeasureItem, afxsig::W<int>,                 \
            afxsig::L<LPMEASUREITEMSTRUCT>)
#define ON_WM_MENUCHAR()                                                                                     \
    AFX_WM_(WM_MENUCHAR, LRESULT, (UINT, UINT, CMenu*), OnMenuChar, afxsig::LoW, afxsig::HiW, afxsig::MenuL)
#define ON_WM_MENUSELECT()                                                                                   \
    AFX_WM_(WM_MENUSELECT, void, (UINT, UINT, HMENU), OnMenuSelect, afxsig::LoW, afxsig::HiW,                \
            afxsig::L<HMENU>)
#define ON_WM_MOUSEACTIVATE()                                                                                \
    AFX_WM_(WM_MOUSEACTIVATE, int, (CWnd*, UINT, UINT), OnMouseActivate, afxsig::WndW, afxsig::LoL,          \
            afxsig::HiL)
#define ON_WM_MOUSEHOVER() AFX_WM_MOUSE_(WM_MOUSEHOVER, OnMouseHover)
#define ON_WM_MOUSELEAVE() AFX_WM_(WM_MOUSELEAVE, void, (), OnMouseLeave)
#define ON_WM_MOUSEMOVE() AFX_WM_MOUSE_(WM_MOUSEMOVE, OnMouseMove)
#define ON_WM_MOUSEWHEEL()                                                                                   \
    AFX_WM_(WM_MOUSEWHEEL, BOOL, (UINT, short, CPoint), OnMouseWheel, afxsig::LoW, afxsig::SHiW,             \
            afxsig::PointL)
#define ON_WM_MOVE() AFX_WM_(WM_MOVE, void, (int, int), OnMove, afxsig::SLoL, afxsig::SHiL)
#define ON_WM_MOVING() AFX_WM_(WM_MOVING, void, (UINT, LPRECT), OnMoving, afxsig::W<UINT>, afxsig::L<LPRECT>)
#define ON_WM_NCACTIVATE() AFX_WM_(WM_NCACTIVATE, BOOL, (BOOL), OnNcActivate, afxsig::W<BOOL>)
#define ON_WM_NCCALCSIZE()                                                                                   \
    AFX_WM_(WM_NCCALCSIZE, void, (BOOL, NCCALCSIZE_PARAMS*), OnNcCalcSize, afxsig::W<BOOL>,                  \
            afxsig::L<NCCALCSIZE_PARAMS*>)
#define ON_WM_NCCREATE() AFX_WM_(WM_NCCREATE, BOOL, (LPCREATESTRUCT), OnNcCreate, afxsig::L<LPCREATESTRUCT>)
#define ON_WM_NCDESTROY() AFX_WM_(WM_NCDESTROY, void, (), OnNcDestroy)
#define ON_WM_NCHITTEST() AFX_WM_(WM_NCHITTEST, LRESULT, (CPoint), OnNcHitTest, afxsig::PointL)
#define ON_WM_NCLBUTTONDBLCLK() AFX_WM_MOUSE_(WM_NCLBUTTONDBLCLK, OnNcLButtonDblClk)
#define ON_WM_NCLBUTTONDOWN() AFX_WM_MOUSE_(WM_NCLBUTTONDOWN, OnNcLButtonDown)
#define ON_WM_NCLBUTTONUP() AFX_WM_MOUSE_(WM_NCLBUTTONUP, OnNcLButtonUp)
#define ON_WM_NCMOUSELEAVE() AFX_WM_(WM_NCMOUSELEAVE, void, (), OnNcMouseLeave)
#define ON_WM_NCMOUSEMOVE() AFX_WM_MOUSE_(WM_NCMOUSEMOVE, OnNcMouseMove)
#define ON_WM_NCPAINT() AFX_WM_(WM_NCPAINT, void, (), OnNcPaint)
#define ON_WM_NCRBUTTONDOWN() AFX_WM_MOUSE_(WM_NCRBUTTONDOWN, OnNcRButtonDown)
#define ON_WM_NCRBUTTONUP() AFX_WM_MOUSE_(WM_NCRBUTTONUP, OnNcRButtonUp)
#define ON_WM_PAINT() AFX_WM_(WM_PAINT, void, (), OnPaint)
#define ON_WM_PALETTECHANGED() AFX_WM_(WM_PALETTECHANGED, void, (CWnd*), OnPaletteChanged, afxsig::WndW)
#define ON_WM_PARENTNOTIFY()                                                                                 \
    AFX_WM_(WM_PARENTNOTIFY, void, (UINT, LPARAM), OnParentNotify, afxsig::LoW, afxsig::L<LPARAM>)
#define ON_WM_QUERYDRAGICON() AFX_WM_(WM_QUERYDRAGICON, HCURSOR, (), OnQueryDragIcon)
#define ON_WM_QUERYENDSESSION() AFX_WM_(WM_QUERYENDSESSION, BOOL, (), OnQueryEndSession)
#define ON_WM_QUERYNEWPALETTE() AFX_WM_(WM_QUERYNEWPALETTE, BOOL, (), OnQueryNewPalette)
#define ON_WM_RBUTTONDBLCLK() AFX_WM_MOUSE_(WM_RBUTTONDBLCLK, OnRButtonDblClk)
#define ON_WM_RBUTTONDOWN() AFX_WM_MOUSE_(WM_RBUTTONDOWN, OnRButtonDown)
#define ON_WM_RBUTTONUP() AFX_WM_MOUSE_(WM_RBUTTONUP, OnRButtonUp)
#define ON_WM_SETCURSOR()                                                                                    \
    AFX_WM_(WM_SETCURSOR, BOOL, (CWnd*, UINT, UINT), OnSetCursor, afxsig::WndW, afxsig::LoL, afxsig::HiL)
#define ON_WM_SETFOCUS() AFX_WM_(WM_SETFOCUS, void, (CWnd*), OnSetFocus, afxsig::WndW)
#define ON_WM_SETTINGCHANGE()                                                                                \
    AFX_WM_(WM_SETTINGCHANGE, void, (UINT, LPCTSTR), OnSettingChange, afxsig::W<UINT>, afxsig::L<LPCTSTR>)
#define ON_WM_SHOWWINDOW()                                                                                   \
    AFX_WM_(WM_SHOWWINDOW, void, (BOOL, UINT), OnShowWindow, afxsig::W<BOOL>, afxsig::L<UINT>)
#define ON_WM_SIZE()                                                                                         \
    AFX_WM_(WM_SIZE, void, (UINT, int, int), OnSize, afxsig::W<UINT>, afxsig::LoL, afxsig::HiL)
#define ON_WM_SIZING() AFX_WM_(WM_SIZING, void, (UINT, LPRECT), OnSizing, afxsig::W<UINT>, afxsig::L<LPRECT>)
#define ON_WM_STYLECHANGED()                                                                                 \
    AFX_WM_(WM_STYLECHANGED, void, (int, LPSTYLESTRUCT), OnStyleChanged, afxsig::W<int>,                     \
            afxsig::L<LPSTYLESTRUCT>)
#define ON_WM_STYLECHANGING()                                                                                \
    AFX_WM_(WM_STYLECHANGING, void, (int, LPSTYLESTRUCT), OnStyleChanging, afxsig::W<int>,                   \
            afxsig::L<LPSTYLESTRUCT>)
#define ON_WM_SYSCHAR() AFX_WM_KEY_(WM_SYSCHAR, OnSysChar)
#define ON_WM_SYSCOLORCHANGE() AFX_WM_(WM_SYSCOLORCHANGE, void, (), OnSysColorChange)
#define ON_WM_SYSCOMMAND()                                                                                   \
    AFX_WM_(WM_SYSCOMMAND, void, (UINT, LPARAM), OnSysCommand, afxsig::W<UINT>, afxsig::L<LPARAM>)
#define ON_WM_SYSKEYDOWN() AFX_WM_KEY_(WM_SYSKEYDOWN, OnSysKeyDown)
#define ON_WM_SYSKEYUP() AFX_WM_KEY_(WM_SYSKEYUP, OnSysKeyUp)
#define ON_WM_TIMER() AFX_WM_(WM_TIMER, void, (UINT_PTR), OnTimer, afxsig::W<UINT_PTR>)
#define ON_WM_VKEYTOITEM()                                                                                   \
    AFX_WM_(WM_VKEYTOITEM, int, (UINT, CListBox*, UINT), OnVKeyToItem, afxsig::LoW, afxsig::ListBoxL,        \
            afxsig::HiW)
#define ON_WM_VSCROLL()                                                                                      \
    AFX_WM_(WM_VSCROLL, void, (UINT, UINT, CScrollBar*), OnVScroll, afxsig::LoW, afxsig::HiW,                \
            afxsig::ScrollBarL)
#define ON_WM_WINDOWPOSCHANGED()                                                                             \
    AFX_WM_(WM_WINDOWPOSCHANGED, void, (WINDOWPOS*), OnWindowPosChanged, afxsig::L<WINDOWPOS*>)
#define ON_WM_WINDOWPOSCHANGING()                                                                            \
    AFX_WM_(WM_WINDOWPOSCHANGING, void, (WINDOWPOS*), OnWindowPosChanging, afxsig::L<WINDOWPOS*>)

// Control notifications by name.
#define ON_BN_CLICKED(id, fn) ON_CONTROL(BN_CLICKED, id, fn)
#define ON_BN_DOUBLECLICKED(id, fn) ON_CONTROL(BN_DOUBLECLICKED, id, fn)
#define ON_BN_SETFOCUS(id, fn) ON_CONTROL(BN_SETFOCUS, id, fn)
#define ON_BN_KILLFOCUS(id, fn) ON_CONTROL(BN_KILLFOCUS, id, fn)
#define ON_CBN_CLOSEUP(id, fn) ON_CONTROL(CBN_CLOSEUP, id, fn)
#define ON_CBN_DBLCLK(id, fn) ON_CONTROL(CBN_DBLCLK, id, fn)
#define ON_CBN_DROPDOWN(id, fn) ON_CONTROL(CBN_DROPDOWN, id, fn)
#define ON_CBN_EDITCHANGE(id, fn) ON_CONTROL(CBN_EDITCHANGE, id, fn)
#define ON_CBN_EDITUPDATE(id, fn) ON_CONTROL(CBN_EDITUPDATE, id, fn)
#define ON_CBN_ERRSPACE(id, fn) ON_CONTROL(CBN_ERRSPACE, id, fn)
#define ON_CBN_KILLFOCUS(id, fn) ON_CONTROL(CBN_KILLFOCUS, id, fn)
#define ON_CBN_SELCHANGE(id, fn) ON_CONTROL(CBN_SELCHANGE, id, fn)
#define ON_CBN_SELENDCANCEL(id, fn) ON_CONTROL(CBN_SELENDCANCEL, id, fn)
#define ON_CBN_SELENDOK(id, fn) ON_CONTROL(CBN_SELENDOK, id, fn)
#define ON_CBN_SETFOCUS(id, fn) ON_CONTROL(CBN_SETFOCUS, id, fn)
#define ON_EN_CHANGE(id, fn) ON_CONTROL(EN_CHANGE, id, fn)
#define ON_EN_KILLFOCUS(id, fn) ON_CONTROL(EN_KILLFOCUS, id, fn)
#define ON_EN_MAXTEXT(id, fn) ON_CONTROL(EN_MAXTEXT, id, fn)
#define ON_EN_SETFOCUS(id, fn) ON_CONTROL(EN_SETFOCUS, id, fn)
#define ON_EN_UPDATE(id, fn) ON_CONTROL(EN_UPDATE, id, fn)
#define ON_LBN_DBLCLK(id, fn) ON_CONTROL(LBN_DBLCLK, id, fn)
#define ON_LBN_KILLFOCUS(id, fn) ON_CONTROL(LBN_KILLFOCUS, id, fn)
#define ON_LBN_SELCANCEL(id, fn) ON_CONTROL(LBN_SELCANCEL, id, fn)
#define ON_LBN_SELCHANGE(id, fn) ON_CONTROL(LBN_SELCHANGE, id, fn)
#define ON_LBN_SETFOCUS(id, fn) ON_CONTROL(LBN_SETFOCUS, id, fn)
#define ON_STN_CLICKED(id, fn) ON_CONTROL(STN_CLICKED, id, fn)
#define ON_STN_DBLCLK(id, fn) ON_CONTROL(STN_DBLCLK, id, fn)
