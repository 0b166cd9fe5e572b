// The area in which the page of images shows its picture.
#pragma once

#include <vgui/vgui.h>

enum class ImageView { Plain, Stretched, Transparent, Dithered, Palette };

// Draws one picture, which is the page's, on white.
class ImageCanvas : public CStatic
{
    DECLARE_MESSAGE_MAP()

public:
    explicit ImageCanvas(CDib& dib) : m_dib(dib) {}

    // Shows the picture in that way; to be called after each change of the picture, too.
    void Show(ImageView view);
    // Play an effect from 1 to 20. After a wipe the canvas stays blank until Show is called.
    void Reveal(int effect, int step, DWORD delay);
    void Wipe(int effect, int step, DWORD delay);

protected:
    afx_msg void OnPaint();
    afx_msg BOOL OnEraseBkgnd(CDC* pDC);

private:
    void Draw(CDC& dc, const CRect& client);
    void DrawPicture(CDC& dc, const CRect& client);
    // Where the picture lies: in the middle, or at the corner if it is too large.
    [[nodiscard]] CPoint Corner(const CRect& client) const;

    CDib& m_dib;
    ImageView m_view = ImageView::Plain;
    bool m_isWiped = false;
};
