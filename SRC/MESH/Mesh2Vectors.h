// The vectors of a mesh2 block, "<a, b, c>" one after the other, taken apart on several threads at a time.
//
// A block is cut behind closing brackets. How many of those each piece has tells where its vectors belong, so
// pieces are read straight to their places. That is right only where brackets stand in pairs with three
// numbers each; from the first piece on that has others, vectors are looked for one after the other.
#pragma once

#include <vector>

#include "MESH/clsPovObjectMesh.h"

class Mesh2Text_cls;

/// A block of floats or of ints. What it throws is std::bad_alloc.
class Mesh2Vectors_cls {
public:
    /// Text from the number of vectors to the brace behind them, null for no block at all. The number is
    /// kept.
    void Set(Mesh2Text_cls& text, const char* begin, const char* end, MeshFloats* pFloats);
    /// `bDigits`: numbers of textures may stand between the vectors.
    void Set(Mesh2Text_cls& text, const char* begin, const char* end, MeshInts* pInts, bool bDigits);

    /// In this order; pieces by several threads at a time.
    size_t GetPieces() const { return mvPieces.size(); }
    void MakeRoom();
    /// `pBuffer`: a thread's own.
    void ReadPiece(size_t k, std::vector<char>* pBuffer);
    /// Read on from the first piece that isn't plain.
    void Finish();

    /// The greatest of a block's ints, negative ones being greater than all others; 0 when there are none.
    unsigned GetMost() const;
    /// Are there as many vectors as the file tells?
    bool HasCount() const;
    /// Do POV-Ray and this reader take the block for the same? No: it may hold anything.
    bool IsStrict() const;

private:
    struct Piece_st {
        const char* mpBegin = nullptr;
        const char* mpEnd = nullptr;
        size_t mVectors = 0; ///< closing brackets
        size_t mFirst = 0;   ///< vectors in front of it
        unsigned mMost = 0;
        bool mbPlain = true;
        bool mbStrict = true;
    };

    void Cut(Mesh2Text_cls& text, const char* begin, const char* end);
    template <class T, class LIST>
    void FinishList(LIST& list);

    Mesh2Text_cls* mpText = nullptr;
    std::vector<Piece_st> mvPieces;
    size_t mNumber = 0; ///< of vectors, as the file tells
    MeshFloats* mpFloats = nullptr;
    MeshInts* mpInts = nullptr;
    bool mbDigits = false;
    bool mbRest = false; ///< more vectors than that
};
