// Image lists and tool tips. Part of afxcmn.h.
#pragma once

class CArchive;
class CBitmap;

// What CToolTipCtrl::GetToolInfo fills in.
class CToolInfo : public tagTOOLINFOW
{
public:
    TCHAR szText[256];
};

// An array of images of one size. The object owns the list that it is attached to and destroys it in its
// destructor; Detach gives it up.
class AFX_SUBSET_API CImageList : public CObject
{
    DECLARE_DYNCREATE(CImageList)

public:
    HIMAGELIST m_hImageList = nullptr;

    CImageList() = default;
    ~CImageList() override;

    // All of these need an object without a list, else they answer FALSE and leave it alone. Sizes are in
    // pixels.
    BOOL Create(int cx, int cy, UINT nFlags, int nInitial, int nGrow);
    BOOL Create(UINT nBitmapID, int cx, int nGrow, COLORREF crMask);
    BOOL Create(LPCTSTR lpszBitmapID, int cx, int nGrow, COLORREF crMask);
    BOOL Create(CImageList& imagelist1, int nImage1, CImageList& imagelist2, int nImage2, int dx, int dy);
    BOOL Create(CImageList* pImageList);
    BOOL Attach(HIMAGELIST hImageList);
    HIMAGELIST Detach();
    BOOL DeleteImageList();

    // The object attached to the handle; FromHandle makes a temporary one, valid until idle time, if there is
    // none.
    static CImageList* PASCAL FromHandle(HIMAGELIST hImageList);
    static CImageList* PASCAL FromHandlePermanent(HIMAGELIST hImageList);
    static void PASCAL DeleteTempMap();
    HIMAGELIST GetSafeHandle() const;
    operator HIMAGELIST() const;

    int GetImageCount() const;
    BOOL SetImageCount(UINT uNewCount);
    COLORREF SetBkColor(COLORREF cr);
    COLORREF GetBkColor() const;
    // The bitmaps in the answer stay the list's.
    BOOL GetImageInfo(int nImage, IMAGEINFO* pImageInfo) const;

    // Images are copied; bitmaps and icons stay the caller's. Add answers the first new index, -1 on failure.
    int Add(CBitmap* pbmImage, CBitmap* pbmMask);
    int Add(CBitmap* pbmImage, COLORREF crMask);
    int Add(HICON hIcon);
    // Remove: -1 takes all images out.
    BOOL Remove(int nImage);
    BOOL Replace(int nImage, CBitmap* pbmImage, CBitmap* pbmMask);
    int Replace(int nImage, HICON hIcon);
    BOOL Copy(int iDst, int iSrc, UINT uFlags = ILCF_MOVE);
    BOOL Copy(int iDst, CImageList* pSrc, int iSrc, UINT uFlags = ILCF_MOVE);
    // The icon is the caller's to destroy.
    HICON ExtractIcon(int nImage);
    // nOverlay counts from 1.
    BOOL SetOverlayImage(int nImage, int nOverlay);

    // Positions are in the DC's logical coordinates.
    BOOL Draw(CDC* pDC, int nImage, POINT pt, UINT nStyle);
    BOOL DrawEx(CDC* pDC, int nImage, POINT pt, SIZE sz, COLORREF clrBk, COLORREF clrFg, UINT nStyle);
    // cbSize and himl are filled in.
    BOOL DrawIndirect(IMAGELISTDRAWPARAMS* pimldp);
    BOOL DrawIndirect(CDC* pDC, int nImage, POINT pt, SIZE sz, POINT ptOrigin, UINT fStyle = ILD_NORMAL,
                      DWORD dwRop = SRCCOPY, COLORREF rgbBack = CLR_DEFAULT, COLORREF rgbFore = CLR_DEFAULT,
                      DWORD fState = ILS_NORMAL, DWORD Frame = 0, COLORREF crEffect = CLR_DEFAULT);

    // Dragging an image. DragEnter's point is relative to the window's upper left corner (not its client
    // area's).
    BOOL BeginDrag(int nImage, CPoint ptHotSpot);
    static void PASCAL EndDrag();
    static BOOL PASCAL DragMove(CPoint pt);
    BOOL SetDragCursorImage(int nDrag, CPoint ptHotSpot);
    static BOOL PASCAL DragShowNolock(BOOL bShow);
    // A temporary object; null while nothing is dragged.
    static CImageList* PASCAL GetDragImage(LPPOINT lpPoint, LPPOINT lpPointHotSpot);
    static BOOL PASCAL DragEnter(CWnd* pWndLock, CPoint point);
    static BOOL PASCAL DragLeave(CWnd* pWndLock);

    // Read needs an object without a list. FALSE when the archive fails or holds no image list.
    BOOL Read(CArchive* pArchive);
    BOOL Write(CArchive* pArchive);

private:
    // Attaches a list just made; destroys it again when that cannot be.
    BOOL AdoptNew(HIMAGELIST created);
};

// A tool tip window. A tool is a whole window (nIDTool 0) or a rectangle of one (nIDTool not 0), in the
// window's client coordinates.
class AFX_SUBSET_API CToolTipCtrl : public CWnd
{
    DECLARE_DYNAMIC(CToolTipCtrl)

public:
    CToolTipCtrl() = default;
    ~CToolTipCtrl() override;
    virtual BOOL Create(CWnd* pParentWnd, DWORD dwStyle = 0);
    virtual BOOL CreateEx(CWnd* pParentWnd, DWORD dwStyle = 0, DWORD dwStyleEx = 0);

    // A missing tool leaves the string empty. At most 32767 characters.
    void GetText(CString& str, CWnd* pWnd, UINT_PTR nIDTool = 0) const;
    // The text is cut to fit ToolInfo.szText. A callback tool has LPSTR_TEXTCALLBACK in lpszText.
    BOOL GetToolInfo(CToolInfo& ToolInfo, CWnd* pWnd, UINT_PTR nIDTool = 0) const;
    void SetToolInfo(LPTOOLINFO lpToolInfo);
    void SetToolRect(CWnd* pWnd, UINT_PTR nIDTool, LPCRECT lpRect);
    int GetToolCount() const;
    // TTDT_ values and milliseconds.
    int GetDelayTime(DWORD dwDuration) const;
    void SetDelayTime(DWORD dwDuration, int iTime);
    void SetDelayTime(UINT nDelay);
    COLORREF GetTipBkColor() const;
    COLORREF GetTipTextColor() const;
    void SetTipBkColor(COLORREF clr);
    void SetTipTextColor(COLORREF clr);
    // Pixels; -1 for no limit, which also keeps the tip on one line.
    int GetMaxTipWidth() const;
    int SetMaxTipWidth(int iWidth);
    void GetMargin(LPRECT lprc) const;
    void SetMargin(LPRECT lprc);
    BOOL GetCurrentTool(LPTOOLINFO lpToolInfo) const;
    CSize GetBubbleSize(LPTOOLINFO lpToolInfo) const;
    BOOL SetTitle(UINT uIcon, LPCTSTR lpstrTitle);
    void GetTitle(PTTGETTITLE pttgt) const;
    BOOL AdjustRect(LPRECT lprc, BOOL bLarger = TRUE);

    void Activate(BOOL bActivate);
    // Either lpRectTool and nIDTool are both given, or neither. nIDText names a string resource; a missing
    // one answers FALSE. LPSTR_TEXTCALLBACK asks the parent of pWnd (for a rectangle: pWnd) with
    // TTN_NEEDTEXT.
    BOOL AddTool(CWnd* pWnd, UINT nIDText, LPCRECT lpRectTool = nullptr, UINT_PTR nIDTool = 0);
    BOOL AddTool(CWnd* pWnd, LPCTSTR lpszText = LPSTR_TEXTCALLBACK, LPCRECT lpRectTool = nullptr,
                 UINT_PTR nIDTool = 0);
    void DelTool(CWnd* pWnd, UINT_PTR nIDTool = 0);
    BOOL HitTest(CWnd* pWnd, CPoint pt, LPTOOLINFO lpToolInfo) const;
    void RelayEvent(LPMSG lpMsg);
    void UpdateTipText(LPCTSTR lpszText, CWnd* pWnd, UINT_PTR nIDTool = 0);
    void UpdateTipText(UINT nIDText, CWnd* pWnd, UINT_PTR nIDTool = 0);
    void Update();
    void Pop();
    void Popup();
    HRESULT SetWindowTheme(LPCWSTR pszSubAppName);
};
