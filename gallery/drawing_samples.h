// What the page of drawing functions shows.
#pragma once

#include <afxwin.h>
#include <vector>

// One call of a drawing function.
struct DrawingSample {
    LPCWSTR name;       // the function
    LPCWSTR parameters; // what it is called with
    // Draws into the rectangle; its top left corner is the origin of the context.
    void (*draw)(CDC& dc, const CRect& rect);
};

struct DrawingSection {
    LPCWSTR title;
    std::vector<DrawingSample> samples;
};

const std::vector<DrawingSection>& DrawingSections();
