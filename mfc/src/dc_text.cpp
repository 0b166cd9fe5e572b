// CDC: text and fonts.
#include <afxwin.h>

#include "dc_both.h"

#include <algorithm>
#include <vector>

using afx_subset::HandleOf;
using afx_subset::OnBoth;

namespace
{

// The text in a buffer that DrawText may write to: with DT_MODIFYSTRING it adds up to four characters.
std::vector<TCHAR> WritableCopy(const CString& text)
{
    constexpr int growth = 4;
    std::vector<TCHAR> copy(text.GetLength() + growth + 1);
    std::copy_n(text.GetString(), text.GetLength(), copy.begin());
    return copy;
}

CSize TextExtent(HDC dc, LPCTSTR text, int count)
{
    CSize size;
    ::GetTextExtentPoint32(dc, text, count, &size);
    return size;
}

CSize FromExtent(DWORD extent)
{
    return CSize(LOWORD(extent), HIWORD(extent));
}

} // namespace

// ---- Output

BOOL CDC::TextOut(int x, int y, LPCTSTR lpszString, int nCount)
{
    return ::TextOut(m_hDC, x, y, lpszString, nCount);
}

BOOL CDC::TextOut(int x, int y, const CString& str)
{
    return TextOut(x, y, str.GetString(), str.GetLength());
}

BOOL CDC::ExtTextOut(int x, int y, UINT nOptions, LPCRECT lpRect, LPCTSTR lpszString, UINT nCount,
                     LPINT lpDxWidths)
{
    return ::ExtTextOut(m_hDC, x, y, nOptions, lpRect, lpszString, nCount, lpDxWidths);
}

BOOL CDC::ExtTextOut(int x, int y, UINT nOptions, LPCRECT lpRect, const CString& str, LPINT lpDxWidths)
{
    return ExtTextOut(x, y, nOptions, lpRect, str.GetString(), str.GetLength(), lpDxWidths);
}

CSize CDC::TabbedTextOut(int x, int y, LPCTSTR lpszString, int nCount, int nTabPositions,
                         LPINT lpnTabStopPositions, int nTabOrigin)
{
    return FromExtent(
        ::TabbedTextOut(m_hDC, x, y, lpszString, nCount, nTabPositions, lpnTabStopPositions, nTabOrigin));
}

CSize CDC::TabbedTextOut(int x, int y, const CString& str, int nTabPositions, LPINT lpnTabStopPositions,
                         int nTabOrigin)
{
    return TabbedTextOut(x, y, str.GetString(), str.GetLength(), nTabPositions, lpnTabStopPositions,
                         nTabOrigin);
}

int CDC::DrawText(LPCTSTR lpszString, int nCount, LPRECT lpRect, UINT nFormat)
{
    return ::DrawText(m_hDC, lpszString, nCount, lpRect, nFormat);
}

int CDC::DrawText(const CString& str, LPRECT lpRect, UINT nFormat)
{
    if ((nFormat & DT_MODIFYSTRING) == 0)
        return DrawText(str.GetString(), str.GetLength(), lpRect, nFormat);
    const auto copy = WritableCopy(str);
    return DrawText(copy.data(), str.GetLength(), lpRect, nFormat);
}

int CDC::DrawTextEx(LPTSTR lpszString, int nCount, LPRECT lpRect, UINT nFormat, LPDRAWTEXTPARAMS lpDTParams)
{
    return ::DrawTextEx(m_hDC, lpszString, nCount, lpRect, nFormat, lpDTParams);
}

int CDC::DrawTextEx(const CString& str, LPRECT lpRect, UINT nFormat, LPDRAWTEXTPARAMS lpDTParams)
{
    auto copy = WritableCopy(str);
    return DrawTextEx(copy.data(), str.GetLength(), lpRect, nFormat, lpDTParams);
}

BOOL CDC::GrayString(CBrush* pBrush, BOOL(CALLBACK* lpfnOutput)(HDC, LPARAM, int), LPARAM lpData, int nCount,
                     int x, int y, int nWidth, int nHeight)
{
    return ::GrayString(m_hDC, HandleOf<HBRUSH>(pBrush), lpfnOutput, lpData, nCount, x, y, nWidth, nHeight);
}

// ---- Extents

CSize CDC::GetTextExtent(LPCTSTR lpszString, int nCount) const
{
    return TextExtent(m_hAttribDC, lpszString, nCount);
}

CSize CDC::GetTextExtent(const CString& str) const
{
    return GetTextExtent(str.GetString(), str.GetLength());
}

CSize CDC::GetOutputTextExtent(LPCTSTR lpszString, int nCount) const
{
    return TextExtent(m_hDC, lpszString, nCount);
}

CSize CDC::GetOutputTextExtent(const CString& str) const
{
    return GetOutputTextExtent(str.GetString(), str.GetLength());
}

CSize CDC::GetTabbedTextExtent(LPCTSTR lpszString, int nCount, int nTabPositions,
                               LPINT lpnTabStopPositions) const
{
    return FromExtent(
        ::GetTabbedTextExtent(m_hAttribDC, lpszString, nCount, nTabPositions, lpnTabStopPositions));
}

CSize CDC::GetTabbedTextExtent(const CString& str, int nTabPositions, LPINT lpnTabStopPositions) const
{
    return GetTabbedTextExtent(str.GetString(), str.GetLength(), nTabPositions, lpnTabStopPositions);
}

CSize CDC::GetOutputTabbedTextExtent(LPCTSTR lpszString, int nCount, int nTabPositions,
                                     LPINT lpnTabStopPositions) const
{
    return FromExtent(::GetTabbedTextExtent(m_hDC, lpszString, nCount, nTabPositions, lpnTabStopPositions));
}

CSize CDC::GetOutputTabbedTextExtent(const CString& str, int nTabPositions, LPINT lpnTabStopPositions) const
{
    return GetOutputTabbedTextExtent(str.GetString(), str.GetLength(), nTabPositions, lpnTabStopPositions);
}

BOOL CDC::GetTextExtentExPointI(LPWORD pgiIn, int cgi, int nMaxExtent, LPINT lpnFit, LPINT alpDx,
                                LPSIZE lpSize) const
{
    return ::GetTextExtentExPointI(m_hAttribDC, pgiIn, cgi, nMaxExtent, lpnFit, alpDx, lpSize);
}

BOOL CDC::GetTextExtentPointI(LPWORD pgiIn, int cgi, LPSIZE lpSize) const
{
    return ::GetTextExtentPointI(m_hAttribDC, pgiIn, cgi, lpSize);
}

// ---- Attributes

UINT CDC::GetTextAlign() const
{
    return ::GetTextAlign(m_hAttribDC);
}

UINT CDC::SetTextAlign(UINT nFlags)
{
    return OnBoth(*this, UINT{GDI_ERROR}, [=](HDC dc) { return ::SetTextAlign(dc, nFlags); });
}

int CDC::GetTextFace(int nCount, LPTSTR lpszFacename) const
{
    if (lpszFacename == nullptr)
        return ::GetTextFace(m_hAttribDC, 0, nullptr);
    if (nCount <= 0 || ::GetTextFace(m_hAttribDC, nCount, lpszFacename) == 0)
        return 0;
    // The system counts the terminating zero, too.
    return ::lstrlen(lpszFacename);
}

int CDC::GetTextFace(CString& rString) const
{
    const int size = GetTextFace(0, nullptr);
    if (size <= 0)
        return 0;
    const int length = GetTextFace(size, rString.GetBuffer(size));
    rString.ReleaseBuffer(length);
    return length;
}

BOOL CDC::GetTextMetrics(LPTEXTMETRIC lpMetrics) const
{
    return ::GetTextMetrics(m_hAttribDC, lpMetrics);
}

BOOL CDC::GetOutputTextMetrics(LPTEXTMETRIC lpMetrics) const
{
    return ::GetTextMetrics(m_hDC, lpMetrics);
}

int CDC::SetTextJustification(int nBreakExtra, int nBreakCount)
{
    return OnBoth(*this, 0, [=](HDC dc) { return ::SetTextJustification(dc, nBreakExtra, nBreakCount); });
}

int CDC::GetTextCharacterExtra() const
{
    return ::GetTextCharacterExtra(m_hAttribDC);
}

int CDC::SetTextCharacterExtra(int nCharExtra)
{
    constexpr int invalidSpacing = static_cast<int>(0x80000000);
    return OnBoth(*this, invalidSpacing, [=](HDC dc) { return ::SetTextCharacterExtra(dc, nCharExtra); });
}

DWORD CDC::GetCharacterPlacement(LPCTSTR lpString, int nCount, int nMaxExtent, LPGCP_RESULTS lpResults,
                                 DWORD dwFlags) const
{
    return ::GetCharacterPlacement(m_hAttribDC, lpString, nCount, nMaxExtent, lpResults, dwFlags);
}

DWORD CDC::GetCharacterPlacement(CString& str, int nMaxExtent, LPGCP_RESULTS lpResults, DWORD dwFlags) const
{
    return GetCharacterPlacement(str.GetString(), str.GetLength(), nMaxExtent, lpResults, dwFlags);
}

// ---- Fonts

BOOL CDC::GetCharWidth(UINT nFirstChar, UINT nLastChar, LPINT lpBuffer) const
{
    return ::GetCharWidth32(m_hAttribDC, nFirstChar, nLastChar, lpBuffer);
}

BOOL CDC::GetCharWidth(UINT nFirstChar, UINT nLastChar, float* lpFloatBuffer) const
{
    return ::GetCharWidthFloat(m_hAttribDC, nFirstChar, nLastChar, lpFloatBuffer);
}

BOOL CDC::GetOutputCharWidth(UINT nFirstChar, UINT nLastChar, LPINT lpBuffer) const
{
    return ::GetCharWidth32(m_hDC, nFirstChar, nLastChar, lpBuffer);
}

BOOL CDC::GetCharWidthI(UINT giFirst, UINT cgi, LPWORD pgi, LPINT lpBuffer) const
{
    return ::GetCharWidthI(m_hAttribDC, giFirst, cgi, pgi, lpBuffer);
}

BOOL CDC::GetCharABCWidths(UINT nFirstChar, UINT nLastChar, LPABC lpabc) const
{
    return ::GetCharABCWidths(m_hAttribDC, nFirstChar, nLastChar, lpabc);
}

BOOL CDC::GetCharABCWidths(UINT nFirstChar, UINT nLastChar, LPABCFLOAT lpABCF) const
{
    return ::GetCharABCWidthsFloat(m_hAttribDC, nFirstChar, nLastChar, lpABCF);
}

BOOL CDC::GetCharABCWidthsI(UINT giFirst, UINT cgi, LPWORD pgi, LPABC lpabc) const
{
    return ::GetCharABCWidthsI(m_hAttribDC, giFirst, cgi, pgi, lpabc);
}

CSize CDC::GetAspectRatioFilter() const
{
    CSize size;
    ::GetAspectRatioFilterEx(m_hAttribDC, &size);
    return size;
}

DWORD CDC::SetMapperFlags(DWORD dwFlag)
{
    return OnBoth(*this, DWORD{GDI_ERROR}, [=](HDC dc) { return ::SetMapperFlags(dc, dwFlag); });
}

DWORD CDC::GetFontData(DWORD dwTable, DWORD dwOffset, LPVOID lpData, DWORD cbData) const
{
    return ::GetFontData(m_hAttribDC, dwTable, dwOffset, lpData, cbData);
}

DWORD CDC::GetFontLanguageInfo() const
{
    return ::GetFontLanguageInfo(m_hAttribDC);
}

int CDC::GetKerningPairs(int nPairs, LPKERNINGPAIR lpkrnpair) const
{
    return static_cast<int>(::GetKerningPairs(m_hAttribDC, nPairs, lpkrnpair));
}

UINT CDC::GetOutlineTextMetrics(UINT cbData, LPOUTLINETEXTMETRIC lpotm) const
{
    return ::GetOutlineTextMetrics(m_hAttribDC, cbData, lpotm);
}

DWORD CDC::GetGlyphOutline(UINT nChar, UINT nFormat, LPGLYPHMETRICS lpgm, DWORD cbBuffer, LPVOID lpBuffer,
                           const MAT2* lpmat2) const
{
    return ::GetGlyphOutline(m_hAttribDC, nChar, nFormat, lpgm, cbBuffer, lpBuffer, lpmat2);
}
