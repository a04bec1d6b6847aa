#include "APP/FilmFrames.h"

#include <algorithm>
#include <climits>
#include <utility>

#include <wx/intl.h>

#include "TIME/clsTimeCtrl.h"

namespace {

constexpr size_t kMostPictures = 10000000; // a list of them takes 120 MB

int DivideDown(int a, int b) { return a / b - (a % b != 0 && a < 0 ? 1 : 0); }

/// Nothing moves behind these two.
bool IsEnd(const TimeCtrl_cls& time, int frame) {
    return frame == time.GetWAMax() || frame == time.GetMaxFrame();
}

/// Does the film stop at this frame, going by the stepping from the start?
bool IsOnGrid(const TimeCtrl_cls& time, int frame) { return frame % time.GetAnimStep() == 0; }

void AddFrame(const TimeCtrl_cls& time, int frame, std::vector<FilmFrame_st>* pFilm) {
    const int steps = IsEnd(time, frame) ? 1 : time.GetAnimInterp();
    for (int step = 0; step < steps && pFilm->size() <= kMostPictures; ++step)
        pFilm->push_back({frame, step, GetFilmNumber(time, frame, step)});
}

/// False, with a text and nothing left, when there are more than anyone can want.
bool IsBounded(std::vector<FilmFrame_st>* pFilm, wxString* pError) {
    if (pFilm->size() <= kMostPictures) return true;
    pFilm->clear();
    *pError = wxString::Format("the film has more than %d pictures; look at the project's work area and "
                               "interval",
                               int(kMostPictures));
    return false;
}

} // namespace

int GetFilmNumber(const TimeCtrl_cls& time, int frame, int step) {
    const long long offset = DivideDown(frame - time.GetWAMin(), time.GetAnimStep());
    const long long number = offset * time.GetAnimInterp() + step + time.GetWAMin();
    return int(std::clamp<long long>(number, INT_MIN, INT_MAX));
}

std::vector<FilmFrame_st> ListFilm(const TimeCtrl_cls& time, wxString* pError) {
    std::vector<FilmFrame_st> film;
    int frame = time.GetWAMin();
    int step = 0;
    // The walk stays at its end or goes back.
    for (std::pair<int, int> before = {frame, -1};
         std::make_pair(frame, step) > before && film.size() <= kMostPictures;) {
        before = {frame, step};
        const FilmFrame_st now = {frame, step, GetFilmNumber(time, frame, step)};
        if (film.empty() || now.mNumber > film.back().mNumber)
            film.push_back(now);
        else if (now.mNumber == film.back().mNumber)
            film.back() = now;
        ++step;
        time.CalcNextFrameFromStep(&frame, &step, true, false);
    }
    IsBounded(&film, pError);
    return film;
}

wxString GetEarlyEnd(const TimeCtrl_cls& time, const std::vector<FilmFrame_st>& film, int* pBegin) {
    const int start = time.GetWAMin();
    const int stepping = time.GetAnimStep();
    const int end = std::min(time.GetWAMax(), time.GetMaxFrame()) / stepping * stepping;
    if (start % stepping == 0 || film.empty() || film.back().mFrame >= end) return wxString();
    const int before = start / stepping * stepping;
    const int begin = before + stepping <= end ? before + stepping : before;
    if (pBegin) *pBegin = begin;
    return wxString::Format(
        _("The work area begins at frame %d, which the stepping of %d leaves out, so the film "
          "ends after %d pictures. Let it begin at frame %d."),
        start, stepping, int(film.size()), begin);
}

std::vector<FilmFrame_st> ListFilmPart(const TimeCtrl_cls& time, int first, int last, int step,
                                       wxString* pError) {
    std::vector<FilmFrame_st> film;
    const int stepping = time.GetAnimStep();
    if (first > time.GetMaxFrame())
        *pError = wxString::Format("the film's last frame is %d", time.GetMaxFrame());
    else if (step % stepping != 0)
        *pError = wxString::Format("the project shows every frame of %d only; STEP must be a multiple of it",
                                   stepping);
    if (!pError->empty()) return film;
    // The walk has its own mind where the work area doesn't begin or end on the stepping's grid.
    const std::vector<FilmFrame_st> whole = step == 0 ? ListFilm(time, pError) : std::vector<FilmFrame_st>();
    if (!pError->empty()) return film;
    const auto isInWalk = [&](int frame) {
        return step == 0 && frame >= time.GetWAMin() && frame <= time.GetWAMax();
    };
    last = std::min(last, time.GetMaxFrame());
    while (first <= last && step != 0 && !IsOnGrid(time, first))
        ++first;
    for (const FilmFrame_st& one : whole)
        if (one.mFrame >= first && one.mFrame <= last) film.push_back(one);
    for (int frame = first; frame <= last && film.size() <= kMostPictures; frame += std::max(step, 1))
        if (!isInWalk(frame) && IsOnGrid(time, frame)) AddFrame(time, frame, &film);
    if (!IsBounded(&film, pError)) return film;
    std::stable_sort(film.begin(), film.end(), [](const FilmFrame_st& a, const FilmFrame_st& b) {
        return std::make_pair(a.mFrame, a.mStep) < std::make_pair(b.mFrame, b.mStep);
    });
    if (film.empty())
        *pError = wxString::Format("the project shows every frame of %d only, none of these", stepping);
    return film;
}

wxString ListFrames(const std::set<int>& frames, const std::map<int, int>& begins) {
    wxString text = frames.size() == 1 ? "frame " : "frames ";
    const auto begin = [&begins](int frame) {
        const auto found = begins.find(frame);
        return found == begins.end() ? 0 : found->second;
    };
    for (auto at = frames.begin(); at != frames.end();) {
        const int first = *at;
        int last = first;
        while (++at != frames.end() && *at == last + 1 && begin(first) == 0 && begin(*at) == 0)
            ++last;
        if (first != *frames.begin()) text += ", ";
        text += wxString::Format("%d", first);
        if (begin(first) > 0) text += wxString::Format(" (from step %d)", begin(first));
        if (last > first) text += wxString::Format(last == first + 1 ? ", %d" : " to %d", last);
    }
    return text;
}
