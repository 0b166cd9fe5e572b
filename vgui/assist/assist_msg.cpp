#include "vgui/assist/assist_msg.h"

#include "vgui/assist/resource_scope.h"
#include "vgui/res/resource.h"

IMPLEMENT_DYNAMIC(CAssistMsg, CDialog)

CAssistMsg::CAssistMsg(CWnd* parent) : CDialog(IDD_ASSIST_MSG, parent) {}

void CAssistMsg::SetMsg(LPCWSTR text, int mode)
{
    m_strText = text;
    m_nMode = mode;
}

void CAssistMsg::ShowMissingEntry(LPCWSTR topic)
{
    const VResourceScope resources;
    CAssistMsg notice;
    notice.SetMsg(topic, MissingEntry);
    notice.DoModal();
}

void CAssistMsg::DoDataExchange(CDataExchange* pDX)
{
    CDialog::DoDataExchange(pDX);
    DDX_Control(pDX, IDC_ASSIST_MSG_HEADLINE, m_stcHeadline);
    DDX_Control(pDX, IDC_ASSIST_MSG_BODY, m_edtBody);
}

BOOL CAssistMsg::OnInitDialog()
{
    CDialog::OnInitDialog();
    if (m_nMode == MissingEntry) {
        SetWindowText(L"无法读取 " + m_strText + L" 的目录");
        m_edtBody.SetWindowText(
            L"[" + m_strText +
            L"]\r\nCaption=标题（如：工程设置）\r\nDirectory=相对路径（如：设置\\工程设置）");
    } else {
        SetWindowText(L"温馨提示");
        m_stcHeadline.SetWindowText(L"帮助系统尚未完善！");
        m_edtBody.SetWindowText(m_strText);
    }
    return TRUE;
}
