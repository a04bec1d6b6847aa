#include "PARAM/clsParameters.h"

#include <algorithm>
#include <cmath>
#include <unordered_set>

#include "CONFITEM/ConfNumber.h"
#include "PARAM/ParamHooks.h"
#include "PARAM/ParamText.h"

int Parameters_cls::msFrameNumber = 100;
int Parameters_cls::msAnimInterp = 1;
double Parameters_cls::msResolution = 0.01;
double Parameters_cls::msCurrentDoubleIndex = 0.0;
bool Parameters_cls::msbUndoCommandMake = true;

namespace {

// Never destroyed: the undo list's copies go at the very end of the program.
std::unordered_set<const Parameters_cls*>& Living() {
    static auto* sLiving = new std::unordered_set<const Parameters_cls*>;
    return *sLiving;
}

} // namespace

Parameters_cls::Parameters_cls(const wxString& id, const wxString& name, bool bTimeDepend,
                               long long updateBit, ParamGroup_cls* pGroup)
    : mpCParamGroup(pGroup), mID(id), mName(name), mUpdateBit(updateBit), mVKeys(1) {
    mbTimeDepend.SetItem("timeDepend=", bTimeDepend ? "1" : "0");
    mPeriodic.SetItem("periodic=", "0");
    DefineConfList();
    Living().insert(this);
}

Parameters_cls::Parameters_cls(const Parameters_cls& src)
    : mbTimeDepend(src.mbTimeDepend), mPeriodic(src.mPeriodic), mpCParamGroup(src.mpCParamGroup),
      mpCParamTL(src.mpCParamTL), mID(src.mID), mName(src.mName), mUpdateBit(src.mUpdateBit),
      mCurrentValue(src.mCurrentValue), mVKeys(src.mVKeys) {
    DefineConfList();
    Living().insert(this);
}

unsigned long long Parameters_cls::NextSerial() {
    static unsigned long long sLast = 0;
    return ++sLast;
}

Parameters_cls::~Parameters_cls() { Living().erase(this); }

bool Parameters_cls::IsAlive(const Parameters_cls* pParam) { return Living().count(pParam) > 0; }

void Parameters_cls::DefineConfList() {
    mConfList.Clear();
    mConfList.mbUseDefault = false; // the items have their values
    mConfList.Add(&mbTimeDepend, "timeDepend=", "0");
    mConfList.Add(&mPeriodic, "periodic=", "0");
}

void Parameters_cls::CopyFromP(const Parameters_cls* pSrc) {
    mpCParamGroup = pSrc->mpCParamGroup;
    mID = pSrc->mID;
    mName = pSrc->mName;
    mUpdateBit = pSrc->mUpdateBit;
    CopyCurveFromP(*pSrc);
}

void Parameters_cls::CopyCurveFromP(const Parameters_cls& src) {
    mbTimeDepend = src.mbTimeDepend;
    mPeriodic = src.mPeriodic;
    mCurrentValue = src.mCurrentValue;
    mVKeys = src.mVKeys;
    DefineConfList();
}

void Parameters_cls::SetFrameNumber(int frames, int stepsPerFrame) {
    msFrameNumber = frames;
    msAnimInterp = std::max(stepsPerFrame, 1);
    msResolution = frames < 1 ? 1.0 : 1.0 / frames / msAnimInterp;
}

double Parameters_cls::Quantize(double doubleIndex, unsigned n) {
    if (n == kFilmGrid) n = msFrameNumber > 0 ? unsigned(msFrameNumber) : 0;
    const double halves = doubleIndex * n * 2;
    if (n == 0 || !(std::fabs(halves) < 1e15)) return 0.0;
    return double((static_cast<long long>(halves) + 1) / 2) / n;
}

const KeyFrame_cls& Parameters_cls::KeyAt(int i) const {
    static const KeyFrame_cls sNone;
    return IsIndex(i) ? mVKeys[size_t(i)] : sNone;
}

bool Parameters_cls::IsKeyFrame(double doubleIndex, double resolution) const {
    return !mbTimeDepend.mValue || GetKeyFrameIndexFromDouble(doubleIndex, resolution, false) >= 0;
}

int Parameters_cls::CheckOverWrite(double doubleIndex, double resolution) const {
    const double t = Time(doubleIndex);
    const double half = Resolution(resolution) / 2;
    for (int i = GetKeyNumber() - 1; i >= 0; --i)
        if (std::fabs(KeyAt(i).mDoubleIndex - t) < half) return i;
    return -1;
}

int Parameters_cls::GetKeyFrameIndexFromDouble(double doubleIndex, double resolution, bool bNearest) const {
    const double t = Time(doubleIndex);
    const double half = Resolution(resolution) / 2;
    for (int i = 0; i < GetKeyNumber(); ++i)
        if (KeyAt(i).mDoubleIndex < t + half && KeyAt(i).mDoubleIndex >= t - half) return i;
    if (!bNearest || mVKeys.empty()) return -1;
    return std::max(GetKeyFrameIndexToInsert(doubleIndex, resolution) - 1, 0);
}

int Parameters_cls::GetKeyFrameIndexToInsert(double doubleIndex, double resolution) const {
    const double limit = Time(doubleIndex) + Resolution(resolution) / 2;
    const auto beyond = std::find_if(mVKeys.begin(), mVKeys.end(),
                                     [limit](const KeyFrame_cls& key) { return key.mDoubleIndex > limit; });
    return int(beyond - mVKeys.begin());
}

double Parameters_cls::GetNextKeyPosDoubleIndex(double doubleIndex, double resolution) const {
    return KeyAt(std::min(GetKeyFrameIndexToInsert(doubleIndex, resolution), GetKeyNumber() - 1))
        .mDoubleIndex;
}

double Parameters_cls::GetPrevKeyPosDoubleIndex(double doubleIndex, double resolution) const {
    const double limit = Time(doubleIndex) - Resolution(resolution) / 2;
    for (int i = GetKeyNumber() - 1; i >= 0; --i)
        if (KeyAt(i).mDoubleIndex < limit) return KeyAt(i).mDoubleIndex;
    return 0.0;
}

int Parameters_cls::GetAdjacentKey(double doubleIndex, int dir) const {
    if (mVKeys.empty()) return -1;
    const double t = Time(doubleIndex);
    const int last = GetKeyNumber() - 1;
    const int here = GetKeyFrameIndexFromDouble(t, kCurrent, false);
    if (here >= 0) return std::clamp(here + dir, 0, last);
    int i = dir < 0 ? last : 0;
    if (dir < 0)
        while (i > 0 && KeyAt(i).mDoubleIndex >= t)
            --i;
    else
        while (i < last && KeyAt(i).mDoubleIndex <= t)
            ++i;
    return i;
}

bool Parameters_cls::IsValueChanged(double doubleIndex) const {
    const double t = mbTimeDepend.mValue ? Time(doubleIndex) : 0.0;
    return mCurrentValue != Evaluate(t, msResolution);
}

void Parameters_cls::GroupRefresh() {
    if (mpCParamGroup && GParamHooks.mGroupRefresh) GParamHooks.mGroupRefresh(mpCParamGroup);
}

void Parameters_cls::CheckSnippingTag(std::vector<bool>* pTags) const {
    for (const KeyFrame_cls& key : mVKeys) {
        const double frame = std::trunc(msFrameNumber * key.mDoubleIndex + 0.1);
        if (!(frame >= 0.0 && frame < double(pTags->size()))) continue;
        (*pTags)[size_t(frame)] = true;
        if (GParamHooks.mMarkSnipping) GParamHooks.mMarkSnipping(int(frame));
    }
}

wxString Parameters_cls::GetClipboardText() const {
    wxString keys;
    for (const KeyFrame_cls& key : mVKeys)
        if (key.mbSelected) keys += key.Serialize();
    if (keys.empty()) return keys;
    return "Parameter_" + mName + "\nitemnum " + ConfNumberToText(GetSelectedKeyNum()) + "\n" + keys;
}

void Parameters_cls::CopyKeyFrameToClipBoard() const {
    const wxString text = GetClipboardText();
    if (!text.empty() && GParamHooks.mClipboard) GParamHooks.mClipboard(text);
}

wxString Parameters_cls::Serialize() {
    wxString text = "Parameter_" + mName + "\n" + mConfList.SerializeAll() + "itemnum ";
    text += ConfNumberToText(GetKeyNumber()) + "\n";
    // Automatic tangents are worked out anew when a file is read, from positions and values that the text
    // has rounded. Written are those, so that saving again gives the same text.
    Parameters_cls asRead(*this);
    for (KeyFrame_cls& key : asRead.mVKeys) {
        const wxString line = key.Serialize();
        key = KeyFrame_cls();
        key.ReadStrLine(line);
    }
    asRead.SortKey();
    asRead.AdjustAutoControl();
    for (const KeyFrame_cls& key : asRead.mVKeys)
        text += key.Serialize();
    return text;
}

bool Parameters_cls::ReadStrLine(std::wistream& stream, const wxString& line) {
    if (line.Find("Parameter_" + mName) == wxNOT_FOUND) return false;
    mVKeys.clear();
    wxString next;
    bool bRead;
    while ((bRead = ReadParamLine(stream, &next)) && mConfList.ReadStrLineAll(next)) {
    }
    if (bRead && next.Find("itemnum ") != wxNOT_FOUND) {
        // A count may promise more than there is: the end of the stream ends it too.
        const int count = ConfNumberFromText<int>(next.Mid(8));
        for (int i = 0; i < count && ReadParamLine(stream, &next); ++i)
            mVKeys.emplace_back().ReadStrLine(next);
    }
    SortKey(); // nothing in a file is trusted to be in order
    AdjustAutoControl();
    if (mpCParamTL && GParamHooks.mStripRead) GParamHooks.mStripRead(mpCParamTL);
    return true;
}
