#include "PARAM/clsParamGroup.h"

#include <algorithm>

#include "CONFITEM/ConfNumber.h"
#include "PARAM/ParamHooks.h"
#include "PARAM/ParamText.h"
#include "PARAM/clsUndoManager.h"

namespace {
// A key inserted by hand goes to one already there within this part of the film, whatever its length.
constexpr double kInsertResolution = 0.03;
} // namespace

ParamGroup_cls::ParamGroup_cls(const wxString& name, int dimension, const wxString* pSuffixes,
                               long long updateBit, bool bTimeDepend)
    : mName(name), mID(name), mbFolder(dimension == 0) {
    mConfList.Add(&mDimension, "dimension=", ConfNumberToText(dimension));
    mVParams.reserve(size_t(std::max(dimension, 0)));
    for (int i = 0; i < dimension; ++i)
        mVParams.emplace_back(name + " " + pSuffixes[i], pSuffixes[i], bTimeDepend, updateBit, this);
}

void ParamGroup_cls::GetInterpolatedValue(double* pOut, double doubleIndex, double resolution) {
    for (Parameters_cls& param : mVParams)
        *pOut++ = doubleIndex == kCurrent ? param.mCurrentValue
                                          : param.GetInterpolatedValue(doubleIndex, resolution);
}

void ParamGroup_cls::SetKeyFrame(const double* pValues, bool bForce, double doubleIndex) {
    bool bChanged = false;
    for (size_t i = 0; i < mVParams.size(); ++i) {
        mVParams[i].mCurrentValue = pValues[i];
        bChanged |= mVParams[i].IsValueChanged(doubleIndex);
    }
    if (!bChanged && !bForce) return;
    const UndoBlock_cls block(Parameters_cls::msbUndoCommandMake);
    for (Parameters_cls& param : mVParams)
        param.SetChangedValueKey(doubleIndex, 0.0, 0.0, kCurrent);
}

void ParamGroup_cls::SetKeyFrameIfChanged(double doubleIndex) {
    for (Parameters_cls& param : mVParams)
        if (param.IsValueChanged(doubleIndex)) param.SetChangedValueKey(doubleIndex, 0.0, 0.0, kCurrent);
}

void ParamGroup_cls::InsertKey(int dim, double doubleIndex, double value) {
    const double t = Parameters_cls::Time(doubleIndex);
    if (dim == -1) {
        const UndoBlock_cls block(Parameters_cls::msbUndoCommandMake);
        for (Parameters_cls& param : mVParams)
            param.InsertKey(t, param.GetInterpolatedValue(t), 0.0, 0.0);
        return;
    }
    if (dim < 0 || dim >= GetDimension()) return;
    Parameters_cls& param = mVParams[size_t(dim)];
    const bool bThere = param.IsKeyFrame(t, kInsertResolution);
    const double here = param.GetInterpolatedValue(t);
    if (value == kNoValue) value = here;
    if (bThere && value == here) return;
    param.InsertKey(t, value, 0.0, 0.0);
}

void ParamGroup_cls::SetTimeDependent(bool bTimeDepend) {
    const UndoBlock_cls block(Parameters_cls::msbUndoCommandMake);
    for (Parameters_cls& param : mVParams)
        param.SetTimeDependent(bTimeDepend);
}

void ParamGroup_cls::Flip() {
    const UndoBlock_cls block(Parameters_cls::msbUndoCommandMake);
    for (Parameters_cls& param : mVParams)
        param.Flip();
}

void ParamGroup_cls::CopyFromP(ParamGroup_cls* pSrc) {
    if (pSrc->mVParams.size() != mVParams.size()) return;
    const UndoBlock_cls block(Parameters_cls::msbUndoCommandMake);
    for (size_t i = 0; i < mVParams.size(); ++i)
        mVParams[i].CopyParameterFromP(&pSrc->mVParams[i]);
}

void ParamGroup_cls::CopyParamGroupFromP(const ParamGroup_cls* pSrc) {
    mName = pSrc->mName;
    mID = pSrc->mID;
    mbFolder = pSrc->mbFolder;
    mbOpen = pSrc->mbOpen;
    mbLinked = pSrc->mbLinked;
    mbVisible = pSrc->mbVisible;
    mbShy = pSrc->mbShy;
    for (size_t i = 0; i < std::min(mVParams.size(), pSrc->mVParams.size()); ++i) {
        mVParams[i].CopyFromP(&pSrc->mVParams[i]);
        mVParams[i].mpCParamGroup = this;
    }
}

void ParamGroup_cls::Swap(int n) {
    if (n < 1 || n > GetDimension() || GetDimension() == 1) return;
    const UndoBlock_cls block(Parameters_cls::msbUndoCommandMake);
    const Parameters_cls first(mVParams[0]);
    for (size_t i = 0; i + 1 < size_t(n); ++i)
        mVParams[i].CopyParameterFromP(&mVParams[i + 1]);
    mVParams[size_t(n) - 1].CopyParameterFromP(&first);
}

void ParamGroup_cls::ReplaceID(const wxString& from, const wxString& to) {
    mID.Replace(from, to);
    for (Parameters_cls& param : mVParams)
        param.mID.Replace(from, to);
    for (ParamGroup_cls* child : mVpCChilds)
        child->ReplaceID(from, to);
}

Parameters_cls* ParamGroup_cls::GetPCParamFromID(const wxString& id) {
    for (Parameters_cls& param : mVParams)
        if (param.mID == id) return &param;
    for (ParamGroup_cls* child : mVpCChilds)
        if (Parameters_cls* found = child->GetPCParamFromID(id)) return found;
    return nullptr;
}

wxString ParamGroup_cls::GetStrExpression() const {
    wxString text;
    for (const Parameters_cls& param : mVParams) {
        wxString name = param.mID;
        name.Replace(" ", "_");
        text += param.GetStrExpression(name);
    }
    return text;
}

void ParamGroup_cls::Export() const {
    if (GParamHooks.mClipboard) GParamHooks.mClipboard(GetStrExpression());
}

wxString ParamGroup_cls::Serialize() {
    if (mbFolder) return SerializeChilds();
    wxString text = "-ParamGroup=" + mName + "\n" + mConfList.SerializeAll() + "Start\n";
    for (Parameters_cls& param : mVParams)
        text += param.Serialize();
    return text;
}

wxString ParamGroup_cls::SerializeChilds() {
    wxString text;
    for (ParamGroup_cls* child : mVpCChilds)
        text += child->Serialize();
    return text;
}

bool ParamGroup_cls::ReadStrLine(std::wistream& stream, const wxString& line) {
    if (line != "-ParamGroup=" + mName) return false;
    const int built = mDimension.mValue;
    wxString next;
    while (ReadParamLine(stream, &next) && next != "Start")
        mConfList.ReadStrLineAll(next);
    // A file may speak of more curves than there are, or fewer; a save counts what is there.
    const int count = std::min(mDimension.mValue, GetDimension());
    mDimension.mValue = built;
    for (int i = 0; i < count; ++i) {
        const auto before = stream.tellg();
        if (!ReadParamLine(stream, &next)) break;
        if (mVParams[size_t(i)].ReadStrLine(stream, next)) continue;
        if (!IsParamHeading(next) || next.StartsWith("Parameter_")) continue;
        GoBackTo(stream, before); // the block was cut
        break;
    }
    return true;
}
