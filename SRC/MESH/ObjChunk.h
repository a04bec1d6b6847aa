// A piece of the text of an OBJ file, taken apart on a thread of its own.
//
// Lines that count:
//   v x y z ...            a corner's place; what stands behind (a weight, a colour) is passed over
//   vn x y z               a normal
//   f a b c ...            a face of three or more corners, each "v", "v/t", "v//n" or "v/t/n"; it is cut
//   into
//                          triangles that share the first corner
// Numbers of corners and normals begin at 1; negative ones count back from the last that stands above. A
// backslash at the end lets such a line go on. All other lines are passed over.
#pragma once

#include <algorithm>
#include <climits>
#include <vector>

#include "COMMON/WideRegisters.h"
#include "MESH/clsPovObjectMesh.h"

/// Numbers of a kind that are added one after the other.
template <class T>
class ObjList_cls {
public:
    /// Places for `more` numbers, which count from now on.
    T* Add(size_t more) {
        if (mNumber + more > mvData.size()) mvData.resize(2 * mvData.size() + more + GetRoom());
        T* p = mvData.data() + mNumber;
        mNumber += more;
        return p;
    }
    /// A short text has few numbers: no more than that many come next.
    void Expect(size_t most) { mExpected = most; }
    void Cut(size_t number) { mNumber = number; }
    size_t GetNumber() const { return mNumber; }
    T* Data() { return mvData.data(); }
    const T* Data() const { return mvData.data(); }
    bool IsEmpty() const { return mNumber == 0; }

private:
    static constexpr size_t kFirst = 1 << 18; ///< pages that aren't touched cost nothing

    size_t GetRoom() const { return mvData.empty() ? std::min(kFirst, mExpected) : kFirst; }

    std::vector<T, BigAllocator_cls<T>> mvData;
    size_t mExpected = kFirst;
    size_t mNumber = 0;
};

/// How many digits the numbers of a kind had that came last.
struct ObjGuess_st {
    size_t mFraction = 6;
    size_t mVertex = 6;
    size_t mTexture = 0;
    size_t mNormal = 6;
};

class ObjChunk_cls {
public:
    static constexpr int kNone = INT_MIN; ///< a number of a corner or normal that isn't there

    /// Take whole lines apart. A line feed stands in front of `end`, and one with zeros behind it
    /// (EndMeshText).
    void Parse(const char* begin, const char* end);

    ObjList_cls<float> mVertex;
    ObjList_cls<float> mNormal;
    ObjList_cls<int> mFaceVertex; ///< from 0, three a triangle
    ObjList_cls<int> mFaceNormal; ///< the same, or nothing
    /// Places in these lists whose numbers count from the first vertex (normal) of this piece.
    ObjList_cls<size_t> mBackVertex;
    ObjList_cls<size_t> mBackNormal;
    size_t mFaces = 0;                ///< lines
    size_t mBadFaces = 0;             ///< of them, that can't be read or have fewer than three corners
    size_t mBadPlaces = 0;            ///< lines of places and normals that can't be read whole
    bool mbWide = HasWideRegisters(); ///< how lines are read, not what comes out

private:
    struct Corner_st {
        int mVertex = kNone;
        int mNormal = kNone;
        bool mbBackVertex = false;
        bool mbBackNormal = false;
    };

    const char* ParsePlace(const char* p, ObjList_cls<float>* pList);
    const char* ParseFace(const char* p);
    const char* ParsePlainFace(const char* p);
    const char* ParsePlaces(const char* p, bool bNormals);
    const char* ParseFaces(const char* p);
    const char* ParseCorner(const char* p, Corner_st* pCorner);
    void AddTriangle(const Corner_st& a, const Corner_st& b, const Corner_st& c);
    void AddNormals(const Corner_st& a, const Corner_st& b, const Corner_st& c);

    ObjGuess_st mGuess;
    const char* mpEnd = nullptr; ///< a line feed stands in front of it
};
