#include "FILTER/clsFilterData.h"

#include <sstream>

#include <wx/intl.h>

#include "COLORCURVE/clsColorCurve.h"
#include "COMMON/FramePath.h"
#include "COMMON/UpdateBits.h"
#include "COMMON/clsMyVector.h"
#include "FILTER/FilterKinds.h"
#include "GL/BASE/clsGLGuides.h"
#include "PARAM/ParamText.h"
#include "PDATA/clsPDataSequence.h"

const wxString kFilterNumber = "%02d";
const wxString kNoPath = "NONE";

namespace {

const char* const kObjectName = "Filter"; // begins identifiers until the list gives the filter its name
constexpr long long kUpdateMask = UPDATE_FILTER_REFRESH | UPDATE_TL | UPDATE_GL;

/// The lines of a filter's block, without its end, which is taken. Where another block begins this one was
/// cut, and that line stays in the stream.
std::wstring TakeOwnLines(std::wistream& stream, bool* pbCut) {
    wxString text;
    wxString line;
    *pbCut = true;
    while (true) {
        const auto before = stream.tellg();
        if (!ReadParamLine(stream, &line)) break;
        if (line == "-FilterEnd") {
            *pbCut = false;
            break;
        }
        if (line.StartsWith("---") || line == "-FilterBegin") {
            GoBackTo(stream, before);
            break;
        }
        text += line + "\n";
    }
    return text.ToStdWstring();
}

} // namespace

FilterData_cls::FilterData_cls(bool bShowOnTimeLine, bool bWithParams)
    : SceneObj_cls(kObjectName, bShowOnTimeLine, bWithParams) {
    mCVisible.mValue = true;
    mCConfItemList.Add(&mCValid, "FilterValid=", "1");
    mCConfItemList.Add(&mCName, "FilterName=", "");
}

FilterData_cls::~FilterData_cls() = default;

ColorCurve_cls* FilterData_cls::AddColorCurve(const wxString& id, const wxString& color) {
    mvpCColorCurve.push_back(std::make_unique<ColorCurve_cls>(id, wxGetTranslation(id), color));
    return mvpCColorCurve.back().get();
}

void FilterData_cls::AddOptional(ConfItem_cls* pItem, const wxString& key, const wxString& value) {
    pItem->SetItem(key, value);
    mVOptional.push_back({pItem, pItem->Serialize()});
}

std::unique_ptr<ParamGroup_cls> FilterData_cls::MakeGroup(const wxString& name, int dimension,
                                                          const wxString* pSuffixes) {
    auto group = std::make_unique<ParamGroup_cls>(name, dimension, pSuffixes, kUpdateMask, false);
    group->mpCSceneObj = this;
    mpCObjectGroup->mVpCChilds.push_back(group.get());
    return group;
}

wxString FilterData_cls::Serialize() {
    const wxString& folder = PDataSequence_cls::msStrProjectDir;
    std::vector<wxString> kept;
    for (ConfItemSTR_cls* path : GetPaths()) {
        kept.push_back(path->mStrValue);
        if (folder.empty() || path->mStrValue == kNoPath) continue;
        const wxString text = FramePath_cls(path->mStrValue, mStrFolder).GetForProject(folder, mLastFrame);
        if (text != kNoPath) path->mStrValue = text; // a file may bear that name
    }
    wxString text = mCConfItemList.SerializeAll();
    size_t next = 0;
    for (ConfItemSTR_cls* path : GetPaths())
        path->mStrValue = kept[next++];
    for (const Optional_st& optional : mVOptional) {
        const wxString line = optional.mpItem->Serialize();
        if (line != optional.mStrFirst) text += line;
    }
    text += mpCObjectGroup->Serialize();
    for (const auto& curve : mvpCColorCurve)
        text += curve->Serialize();
    return text;
}

FilterData_cls::Unread_st FilterData_cls::ReadBlock(std::wistream& stream) {
    // On its own: what reads a curve counts its lines, and a cut one would take those of the next block.
    Unread_st unread;
    std::wistringstream own(TakeOwnLines(stream, &unread.mbEnd));
    const auto count = [&unread](const wxString& lost, bool bTaken) {
        if (!bTaken && !lost.empty()) ++unread.mLines;
    };
    wxString line;
    bool bMore = ReadParamLine(own, &line);
    for (; bMore && !line.Contains("ParamGroup="); bMore = ReadParamLine(own, &line))
        count(line, ReadItem(line) || ReadGroupOrCurve(own, line));
    mStrFolder = PDataSequence_cls::msStrProjectDir;
    ChangeCustomName(NAME_TRANSLATED);
    for (; bMore; bMore = ReadParamLine(own, &line))
        count(line, ReadGroupOrCurve(own, line));
    return unread;
}

bool FilterData_cls::ReadItem(const wxString& line) {
    bool bTaken = mCConfItemList.ReadStrLineAll(line);
    for (const Optional_st& optional : mVOptional)
        bTaken = optional.mpItem->ReadStrLine(line) || bTaken;
    return bTaken;
}

bool FilterData_cls::ReadGroupOrCurve(std::wistream& stream, const wxString& line) {
    for (ParamGroup_cls* group : GetGroups())
        if (group->ReadStrLine(stream, line)) return true;
    for (const auto& curve : mvpCColorCurve)
        if (curve->ReadStrLine(stream, line)) return true;
    return false;
}

void FilterData_cls::InitNew() {
    const DirectEdit_cls direct;
    SetInitValueScale(1.0, 1.0, 1.0);
}

// A frame is turned about y, then x, then z, and its edges are scaled before that.
void FilterData_cls::GetGuideAxes(int mode, double out[3][3]) const {
    SceneObj_cls::GetGuideAxes(GLGuides_cls::TRANSLATE, out);
    if (mode == GLGuides_cls::TRANSLATE) return;
    double angles[3];
    GetRotation(kCurrent, angles);
    for (int axis = 0; axis < 3; ++axis) {
        const bool bAll = mode == GLGuides_cls::SCALE;
        if (bAll) MyVector::Rotate(out[axis], angles[1], 1);
        if (bAll || axis < 2) {
            if (bAll || axis == 1) MyVector::Rotate(out[axis], angles[0], 0);
            MyVector::Rotate(out[axis], angles[2], 2);
        }
    }
}

// Once: the name may hold that word, too.
void FilterData_cls::ReplaceParameterName(const wxString& name) {
    if (mpCObjectGroup->mID == kObjectName) mpCObjectGroup->ReplaceID(kObjectName, name);
}

void FilterData_cls::ChangeCustomName(NameWords words) {
    for (int type = 0; type < kFilterTypes; ++type) {
        const wxString plain = GetFilterKind(type).mWord;
        const wxString label = GetFilterLabel(type);
        if (words == NAME_PLAIN)
            mCName.mStrValue.Replace(label, plain);
        else
            mCName.mStrValue.Replace(plain, label);
    }
}
