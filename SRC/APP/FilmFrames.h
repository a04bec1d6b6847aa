// Which positions of the clock make a film, and the numbers of their files.
#pragma once

#include <map>
#include <set>
#include <vector>

#include <wx/string.h>

class TimeCtrl_cls;

struct FilmFrame_st {
    int mFrame;
    int mStep;   ///< interpolation step
    int mNumber; ///< of the file
    bool operator==(const FilmFrame_st& o) const {
        return mFrame == o.mFrame && mStep == o.mStep && mNumber == o.mNumber;
    }
};

/// Number of a position's file: the work area's first frame bears its own number, as the dialog of image
/// sequences proposes when it opens, and each step counts one. It doesn't depend on the part of the film that
/// is made, nor on what the project was last told in that dialog.
int GetFilmNumber(const TimeCtrl_cls& time, int frame, int step);

/// The whole film: the positions that an image sequence visits, one a file. Where two fall on one file, it is
/// the one that the sequence leaves there. Empty with a text where it has more than ten million pictures.
std::vector<FilmFrame_st> ListFilm(const TimeCtrl_cls& time, wxString* pError);

/// Where the work area's start isn't on the stepping's grid, steps between frames can't leave it, and the
/// film ends at once: what to say about it, and in *pBegin, if given, a start that helps. Empty for a film
/// that comes to its end.
wxString GetEarlyEnd(const TimeCtrl_cls& time, const std::vector<FilmFrame_st>& film, int* pBegin);

/// Frames `first` to `last`, each with its interpolation steps, the last one of the work area and of the film
/// with one alone; `step` counts frames, 0 is the stepping. Parts that meet make up the same as one that
/// holds both. Empty with a text where that isn't a part of the film.
std::vector<FilmFrame_st> ListFilmPart(const TimeCtrl_cls& time, int first, int last, int step,
                                       wxString* pError);

/// "frame 3" or "frames 3, 5 to 9"; of those in `begins` only what comes from this step on is meant:
/// "frames 3 (from step 2), 4 to 9".
wxString ListFrames(const std::set<int>& frames, const std::map<int, int>& begins = {});
