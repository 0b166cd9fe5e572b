// Painting off screen, so that a window never shows a half-finished picture.
#pragma once

#include "vgui/export.h"

#include <afxwin.h>

// A device context to paint into, which shows the finished picture in one step when the block ends:
//
//     CPaintDC target(this);
//     VBufferedDC dc(target, client);
//     Draw(dc);
//
// Coordinates, font, text and background colour and background mode are the target's. Without memory for the
// picture everything is painted on the target directly.
class VGUI_API VBufferedDC : public CDC
{
public:
    // What the picture shows before anything is painted.
    enum class Start {
        Blank,  // the whole rectangle is going to be painted
        Target, // what the target shows there is kept where nothing is painted
    };

    // target and rect's picture: rect is in the target's logical coordinates, which must be pixels (MM_TEXT).
    // An empty rectangle paints nothing. The target must outlive this object and must not be used meanwhile.
    VBufferedDC(CDC& target, const CRect& rect, Start start = Start::Blank);
    // Copies the picture to the target.
    ~VBufferedDC() override;
    VBufferedDC(const VBufferedDC&) = delete;
    VBufferedDC& operator=(const VBufferedDC&) = delete;

private:
    bool CreatePicture();
    void TakeSettings();

    CDC& m_target;
    CRect m_rect;
    CBitmap m_picture;
    HGDIOBJ m_oldBitmap = nullptr; // null while the target itself is painted on
    HGDIOBJ m_oldFont = nullptr;
};
