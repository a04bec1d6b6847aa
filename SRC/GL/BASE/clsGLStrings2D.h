// Small text in a view, in pixels of the window.
#pragma once

#include <wx/string.h>

class GLStrings2D_cls {
public:
    enum class Font { Helvetica10, Helvetica12, Helvetica18, Fixed13, Fixed15, Times10, Times24 };

    /// Once per process, with a display.
    static void InitializeGLUT();

    /// Pixels of what is drawn into.
    void SetWindowGeometry(int w, int h);
    /// Text in the current colour with its left end at x. y counts from the bottom edge to the baseline;
    /// with `bFromTop` from the top edge, 12 pixels lower than the number says. A line feed goes 24 pixels
    /// down. Characters that the font lacks show as "?": what is drawn is Latin, so it stays English, also so
    /// that pictures are the same in every language.
    void Draw(Font font, const wxString& text, int x, int y, bool bFromTop) const;
    /// A line of text in strokes of the current line width, as high as the font but for a factor, so that it
    /// keeps its share of pictures of any size. Left end and baseline from the lower left corner.
    void DrawStrokes(Font font, const wxString& text, double x, double y, double factor) const;

private:
    int mW = 1;
    int mH = 1;
    static bool msbGLUTInitialized;
};
