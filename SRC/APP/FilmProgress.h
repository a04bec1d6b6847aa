// Tells on a terminal, or in lines of a log, how far a film is.
#pragma once

#include <cstdio>
#include <string>

#include <wx/stopwatch.h>

class FilmProgress_cls {
public:
    /// `pOut` null: says nothing.
    FilmProgress_cls(std::FILE* pOut, bool bTerminal) : mpOut(pOut), mbTerminal(bTerminal) {}

    void Begin(int total);
    /// One more is finished: drawn, or there already.
    void Count(bool bDrawn);
    /// Take the bar away and say this; nothing may follow on its line.
    void Say(const std::string& text);
    /// The bar makes room for other words on the terminal.
    void ClearBar();
    int GetDone() const { return mDrawn + mKept; }
    int GetDrawn() const { return mDrawn; }
    int GetKept() const { return mKept; }
    double GetSeconds() const { return double(mWatch.Time()) / 1000.0; }

    /// "Frame 12 of 300, 3.4 frames/s, 1:05 left"; rates and times only where something is known of them.
    static std::string MakeLine(int done, int total, int drawn, double seconds);
    /// "[####----]", of `width` characters inside.
    static std::string MakeBar(int done, int total, int width);

private:
    void Show();

    std::FILE* mpOut;
    bool mbTerminal;
    bool mbBar = false; ///< the bar stands on the terminal's line
    wxStopWatch mWatch;
    long mLastShown = 0; ///< milliseconds of it
    int mTotal = 0;
    int mDrawn = 0;
    int mKept = 0;
};
