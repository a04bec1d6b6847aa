#include "IMPORT/ParticleSource.h"

namespace {

template <class COLUMN>
void Size(COLUMN* pColumn, bool bThere, size_t size) {
    // Growing would copy what is overwritten anyway.
    if (pColumn->capacity() < size) COLUMN().swap(*pColumn);
    pColumn->resize(bThere ? size : 0);
}

} // namespace

void ImportSnapshot_st::MakeRoom() {
    const auto number = static_cast<size_t>(mNumber);
    Size(&mPos, true, 3 * number);
    Size(&mVel, (mColumns & IMPORT_VEL) != 0, 3 * number);
    Size(&mRadius, (mColumns & IMPORT_RADIUS) != 0, number);
    Size(&mValue, (mColumns & IMPORT_VALUE) != 0, number);
    Size(&mID, (mColumns & IMPORT_ID) != 0, number);
    mOrder.clear();
    Size(&mType, (mColumns & IMPORT_TYPE) != 0, number);
}

const std::string* ImportChoice_st::Find(const std::string& role) const {
    const auto found = mColumns.find(role);
    return found == mColumns.end() ? nullptr : &found->second;
}
