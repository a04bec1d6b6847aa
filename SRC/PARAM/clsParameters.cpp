#include "PARAM/clsParameters.h"

#include <algorithm>
#include <cmath>
#include <locale>
#include <sstream>
#include <unordered_set>

#include "CONFITEM/ConfNumber.h"
#include "PARAM/ParamHooks.h"
#include "PARAM/ParamText.h"

bool Parameters_cls::msbUndoCommandMake = true;

namespace {

// Never destroyed: the undo list's copies go at the very end of the program.
std::unordered_set<const Parameters_cls*>& Living() {
    static auto* sLiving = new std::unordered_set<const Parameters_cls*>;
    return *sLiving;
}

bool IsKeyLine(const wxString& line) {
    std::wistringstream stream(line.ToStdWstring());
    stream.imbue(std::locale::classic());
    double value = 0.0;
    int numbers = 0;
    while (stream >> value)
        ++numbers;
    return numbers == 5 && stream.eof();
}

/// A count may promise more keys than there are, or fewer: what the lines are decides.
void ReadKeys(std::wistream& stream, int count, std::vector<KeyFrame_cls>* pKeys) {
    wxString line;
    for (int i = 0;; ++i) {
        const auto before = stream.tellg();
        if (!ReadParamLine(stream, &line)) return;
        if (i < count ? IsParamHeading(line) : !IsKeyLine(line)) return GoBackTo(stream, before);
        pKeys->emplace_back().ReadStrLine(line);
    }
}

} // namespace

Parameters_cls::Parameters_cls(const wxString& id, const wxString& name, bool bTimeDepend,
                               long long updateBit, ParamGroup_cls* pGroup)
    : KeyCurve_cls(bTimeDepend), mpCParamGroup(pGroup), mID(id), mName(name), mUpdateBit(updateBit) {
    DefineConfList();
    Living().insert(this);
}

Parameters_cls::Parameters_cls(const Parameters_cls& src)
    : KeyCurve_cls(src), mpCParamGroup(src.mpCParamGroup), mpCParamTL(src.mpCParamTL), mID(src.mID),
      mName(src.mName), mUpdateBit(src.mUpdateBit) {
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
    if (bRead && next.Find("itemnum ") != wxNOT_FOUND)
        ReadKeys(stream, ConfNumberFromText<int>(next.Mid(8)), &mVKeys);
    SortKey(); // nothing in a file is trusted to be in order
    AdjustAutoControl();
    if (mpCParamTL && GParamHooks.mStripRead) GParamHooks.mStripRead(mpCParamTL);
    return true;
}
