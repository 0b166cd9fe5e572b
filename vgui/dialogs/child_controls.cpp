#include "vgui/dialogs/child_controls.h"

#include "vgui/controls/buttons.h"
#include "vgui/controls/themed_controls.h"

#include <array>
#include <memory>
#include <optional>

namespace
{

constexpr int kAnyType = -1;
// The part of a button's style that tells push buttons, check boxes, radio buttons and group boxes apart.
constexpr DWORD kButtonTypeMask = 0x1F;

// What the dialogs have to know of one control class of the library. A null function means: not for this
// class.
struct ControlRow {
    LPCWSTR windowClass; // the standard class that it replaces
    int buttonType;      // BS_..., kAnyType for classes other than "Button"
    CRuntimeClass* (*runtimeClass)();
    std::unique_ptr<CWnd> (*create)();
    void (*setCheck)(CWnd& control, int state); // takes over the check state and repaints
    int (*getCheck)(CWnd& control);             // of check boxes and radio buttons
    bool ownTextColor;
};

template <class Control>
CRuntimeClass* RuntimeClassOf()
{
    return RUNTIME_CLASS(Control);
}

template <class Control>
std::unique_ptr<CWnd> Make()
{
    return std::make_unique<Control>();
}

template <class Control>
void SetCheckOf(CWnd& control, int state)
{
    static_cast<Control&>(control).SetCheck(state, TRUE);
}

template <class Control>
int GetCheckOf(CWnd& control)
{
    return static_cast<Control&>(control).GetCheck();
}

// A control without a check state of its own.
template <class Control>
constexpr ControlRow PlainRow(LPCWSTR windowClass, int buttonType = kAnyType, bool ownTextColor = false)
{
    return {windowClass, buttonType,  &RuntimeClassOf<Control>, &Make<Control>, nullptr,
            nullptr,     ownTextColor};
}

// A push button, which takes a check state over but has none that is asked for.
template <class Control>
constexpr ControlRow PushRow(int buttonType)
{
    return {L"Button", buttonType, &RuntimeClassOf<Control>, &Make<Control>, &SetCheckOf<Control>,
            nullptr,   false};
}

template <class Control>
constexpr ControlRow CheckRow(int buttonType)
{
    ControlRow row = PushRow<Control>(buttonType);
    row.getCheck = &GetCheckOf<Control>;
    return row;
}

// The one place that names the library's control classes.
constexpr auto kControls = std::to_array<ControlRow>({
    PushRow<VButton>(BS_PUSHBUTTON),
    PushRow<VButton>(BS_DEFPUSHBUTTON),
    CheckRow<VCheckBox>(BS_AUTOCHECKBOX),
    CheckRow<VRadioBtn>(BS_AUTORADIOBUTTON),
    PlainRow<VGroup>(L"Button", BS_GROUPBOX),
    PlainRow<VEdit>(L"Edit"),
    PlainRow<VComboBox>(L"ComboBox", kAnyType, true),
    PlainRow<VListBox>(L"ListBox"),
});

const ControlRow* RowForStandard(HWND child)
{
    std::array<wchar_t, 64> name{};
    ::GetClassNameW(child, name.data(), static_cast<int>(name.size()));
    const int type = static_cast<int>(::GetWindowLongPtrW(child, GWL_STYLE) & kButtonTypeMask);
    for (const ControlRow& row : kControls) {
        if (::lstrcmpiW(row.windowClass, name.data()) == 0 &&
            (row.buttonType == kAnyType || row.buttonType == type))
            return &row;
    }
    return nullptr;
}

const ControlRow* RowForLibrary(CWnd& control)
{
    for (const ControlRow& row : kControls) {
        if (control.IsKindOf(row.runtimeClass()))
            return &row;
    }
    return nullptr;
}

void Replace(HWND child, const ControlRow& row, CArray<CWnd*>& owned)
{
    std::optional<int> check;
    if (row.setCheck != nullptr)
        check = static_cast<int>(::SendMessageW(child, BM_GETCHECK, 0, 0));
    std::unique_ptr<CWnd> control = row.create();
    if (!control->SubclassWindow(child))
        return;
    if (check)
        row.setCheck(*control, *check);
    owned.Add(control.get());
    control.release();
}

} // namespace

void ReplaceStandardControls(CWnd& dialog, CArray<CWnd*>& owned)
{
    HWND next = nullptr;
    for (HWND child = ::GetWindow(dialog.GetSafeHwnd(), GW_CHILD); child != nullptr; child = next) {
        next = ::GetWindow(child, GW_HWNDNEXT);
        const ControlRow* row = CWnd::FromHandlePermanent(child) == nullptr ? RowForStandard(child) : nullptr;
        if (row != nullptr)
            Replace(child, *row, owned);
    }
}

bool GetReplacedCheck(CWnd& control, int& state)
{
    const ControlRow* row = RowForLibrary(control);
    if (row == nullptr || row->getCheck == nullptr)
        return false;
    state = row->getCheck(control);
    return true;
}

bool SetReplacedCheck(CWnd& control, int state)
{
    const ControlRow* row = RowForLibrary(control);
    if (row == nullptr || row->getCheck == nullptr)
        return false;
    row->setCheck(control, state);
    return true;
}

bool ChoosesOwnTextColor(CWnd& control)
{
    const ControlRow* row = RowForLibrary(control);
    return row != nullptr && row->ownTextColor;
}
