#include "WIDGET/TIMELINE/clsCacheBar.h"

#include <wx/dcbuffer.h>
#include <wx/settings.h>

#include "PDATA/clsPDataSeqCtrl.h"
#include "PDATA/clsPDataSequence.h"
#include "PDATA/clsPDataSnap.h"
#include "TIME/clsTimeCtrl.h"

namespace {
constexpr int kHeight = 10;

wxString NameOf(CacheState state) {
    switch (state) {
    case CacheState::Loading:
        return _("being read");
    case CacheState::Loaded:
        return _("in memory");
    case CacheState::Interpolated:
        return _("in memory, interpolated");
    case CacheState::Unreadable:
        return _("can't be read");
    default:
        return _("on disk");
    }
}

} // namespace

CacheBar_cls::CacheBar_cls(wxWindow* pParent, TimeCtrl_cls* pTime, PDataSeqCtrl_cls* pStore)
    : TimelineStrip_cls(pParent, pTime, kHeight), mpCStore(pStore) {
    Bind(wxEVT_PAINT, &CacheBar_cls::OnPaint, this);
    Bind(wxEVT_MOTION, &CacheBar_cls::OnMotion, this);
}

CacheState CacheBar_cls::GetState(int frame) const {
    const PDataSequence_cls* sequence = mpCStore->GetPCActiveFileSequence();
    const int index = mpCTime->GetRemappedIndex(frame);
    if (index < 0 || index >= PDataSequence_cls::kMaxSnap) return CacheState::Empty;
    const PDataSnap_cls* snap = sequence->mpCSnap[index];
    if (!snap || snap->mStrFilePath.empty()) return CacheState::Empty;
    if (snap->mFileStatus == FILE_UNUSABLE) return CacheState::Unreadable;
    if (snap->mbInterpolated.load(std::memory_order_acquire)) return CacheState::Interpolated;
    if (snap->mbLoaded.load(std::memory_order_acquire)) return CacheState::Loaded;
    return snap->mbLoadStarted ? CacheState::Loading : CacheState::Empty;
}

std::vector<CacheState> CacheBar_cls::Columns() const {
    return BuildCacheColumns(GetScale(), [this](int frame) { return GetState(frame); });
}

void CacheBar_cls::RefreshIfChanged() {
    if (IsShownOnScreen() && Columns() != mShown) Refresh();
}

wxColour CacheBar_cls::ColourOf(CacheState state) const {
    switch (state) {
    case CacheState::Partial:
        return Mix(wxSYS_COLOUR_BTNFACE, wxSYS_COLOUR_HIGHLIGHT, 0.3);
    case CacheState::Loading:
        return wxColour(240, 180, 40);
    case CacheState::Loaded:
        return Mix(wxSYS_COLOUR_BTNFACE, wxSYS_COLOUR_HIGHLIGHT, 0.6);
    case CacheState::Interpolated:
        return wxSystemSettings::GetColour(wxSYS_COLOUR_HIGHLIGHT);
    case CacheState::Unreadable:
        return wxColour(205, 60, 50);
    default:
        return Mix(wxSYS_COLOUR_BTNFACE, wxSYS_COLOUR_BTNTEXT, 0.12);
    }
}

void CacheBar_cls::OnPaint(wxPaintEvent&) {
    wxAutoBufferedPaintDC dc(this);
    dc.SetBackground(wxBrush(wxSystemSettings::GetColour(wxSYS_COLOUR_BTNFACE)));
    dc.Clear();
    mShown = Columns();
    const int left = GetScale().mLeft;
    const int top = FromDIP(2);
    const int height = GetClientSize().y - 2 * top;
    dc.SetPen(*wxTRANSPARENT_PEN);
    // Neighbours of one colour make one rectangle.
    for (size_t begin = 0; begin < mShown.size();) {
        size_t end = begin + 1;
        while (end < mShown.size() && mShown[end] == mShown[begin])
            ++end;
        dc.SetBrush(wxBrush(ColourOf(mShown[begin])));
        dc.DrawRectangle(left + static_cast<int>(begin), top, static_cast<int>(end - begin), height);
        begin = end;
    }
}

void CacheBar_cls::OnMotion(wxMouseEvent& event) {
    const int frame = GetScale().ToFrame(event.GetX());
    if (frame != mTipFrame)
        SetToolTip(wxString::Format(_("Snapshot of frame %d: %s"), frame, NameOf(GetState(frame))));
    mTipFrame = frame;
    event.Skip();
}
