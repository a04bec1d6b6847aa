#include "IMPORT/clsRowParser.h"

#include <algorithm>
#include <climits>

#include "IMPORT/ImportText.h"

namespace {

// Worked out in double and rounded once.
void PlaceInBox(const ImportBox_st& box, const double* pShares, float* pPos) {
    for (size_t axis = 0; axis < 3; ++axis) {
        double place = box.mOrigin[axis];
        for (size_t k = 0; k < 3; ++k)
            place += pShares[k] * box.mEdge[k][axis];
        pPos[axis] = static_cast<float>(place);
    }
}

} // namespace

void RowParser_cls::SetColumns(const std::vector<std::string>& names, const ImportChoice_st& choice) {
    mpTypeNames = choice.mpTypeNames;
    mRoles.SetColumns(names, choice);
}

template <class T>
std::string RowParser_cls::Take(const std::vector<std::string_view>& fields, int column, T* pValue) const {
    const auto k = static_cast<size_t>(column);
    if (ReadNumber(fields[k], pValue)) return std::string();
    return "\"" + std::string(fields[k].substr(0, 40)) + "\" in column " + mRoles.GetNames()[k] +
           " is no number";
}

std::string RowParser_cls::TakeType(std::string_view text, int* pType) {
    long long number = 0;
    if (ReadNumber(text, &number)) {
        *pType = static_cast<int>(std::clamp<long long>(number, INT_MIN, INT_MAX));
        return std::string();
    }
    if (text.empty()) return "the type is empty";
    auto found = mpTypeNames->find(text);
    if (found == mpTypeNames->end())
        found = mpTypeNames->emplace(std::string(text), static_cast<int>(mpTypeNames->size())).first;
    *pType = found->second;
    return std::string();
}

// What is missing is 0; the first fault counts.
std::string RowParser_cls::ParseRow(const std::vector<std::string_view>& fields, size_t i,
                                    ImportSnapshot_st* pSnap) {
    if (fields.size() < GetCount())
        return "has " + std::to_string(fields.size()) + " of " + std::to_string(GetCount()) + " columns";
    std::string wrong;
    const auto take = [&](int column, auto* pValue) {
        if (wrong.empty() && column >= 0) wrong = Take(fields, column, pValue);
    };
    if (mRoles.AreScaled()) {
        double shares[3] = {0, 0, 0};
        for (size_t k = 0; k < 3; ++k)
            take(mRoles.GetPos(k), &shares[k]);
        PlaceInBox(pSnap->mBox, shares, &pSnap->mPos[3 * i]);
    }
    for (size_t axis = 0; axis < 3; ++axis) {
        if (!mRoles.AreScaled()) {
            pSnap->mPos[3 * i + axis] = 0.0f;
            take(mRoles.GetPos(axis), &pSnap->mPos[3 * i + axis]);
        }
        if (!(GetColumns() & IMPORT_VEL)) continue;
        pSnap->mVel[3 * i + axis] = 0.0f;
        take(mRoles.GetVel(axis), &pSnap->mVel[3 * i + axis]);
    }
    if (mRoles.GetRadius() >= 0) take(mRoles.GetRadius(), &pSnap->mRadius[i]);
    if (mRoles.IsDiameter()) pSnap->mRadius[i] *= 0.5f;
    if (mRoles.GetID() >= 0) take(mRoles.GetID(), &pSnap->mID[i]);
    if (mRoles.GetValue() >= 0) take(mRoles.GetValue(), &pSnap->mValue[i]);
    if (mRoles.GetType() >= 0 && wrong.empty())
        wrong = TakeType(fields[static_cast<size_t>(mRoles.GetType())], &pSnap->mType[i]);
    return wrong;
}
