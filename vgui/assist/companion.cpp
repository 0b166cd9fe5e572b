#include "vgui/assist/companion.h"

#include "vgui/assist/ole_assist.h"
#include "vgui/assist/ole_scope.h"

UINT CompanionInfomation(HWND owner, UINT, const wchar_t* arguments, UINT mode)
{
    const OleScope ole;
    COleAssist assist(owner, arguments, mode);
    return assist.Run() ? 1 : 0;
}
