// What the store asks of whoever draws its sequences.
#include "StoreFixture.h"

#include <sstream>

#include "PDATA/clsDataExporter.h"

namespace {

struct Asked_st {
    bool mbSlopes = false;
    int mThinning = 1;
    std::vector<int> mVLetGo; ///< indices of the blocks, whose arrays stood then
    wxString mStrRead;
};

class RecordedDrawing_cls : public SequenceDrawing_cls {
public:
    RecordedDrawing_cls(int seqIndex, Asked_st& asked) : mSeqIndex(seqIndex), mAsked(asked) {}
    bool AreSlopesNeeded() const override { return mAsked.mbSlopes; }
    int GetThinning() const override { return mAsked.mThinning; }
    void LetGo(PDataBlock_cls& block) override {
        if (block.mbAllocated && block.mpPos) mAsked.mVLetGo.push_back(block.mpCSnap->mIndex);
    }
    wxString Serialize() const override { return wxString::Format("Look%d=x\n", mSeqIndex); }
    void ReadStrLine(std::wistream&, const wxString& line) override {
        if (mSeqIndex == 0) mAsked.mStrRead += line + "|";
    }

private:
    int mSeqIndex;
    Asked_st& mAsked;
};

struct AskedHolder_st {
    Asked_st mAsked;
};

class SequenceDrawing : protected AskedHolder_st, public StoreFixture {
protected:
    SequenceDrawing()
        : StoreFixture([this](PDataSequence_cls& sequence) {
              return std::make_unique<RecordedDrawing_cls>(sequence.mSeqIndex, mAsked);
          }) {}
};

TEST_F(SequenceDrawing, IsToldBeforeArraysGo) {
    OpenRun(3);
    for (const int index : {0, 2})
        mStore.PrepareIndex(index, 0.0, false, true);
    EXPECT_TRUE(mAsked.mVLetGo.empty());
    Snap(2).ReleaseData();
    EXPECT_EQ(mAsked.mVLetGo, std::vector<int>{2});
    mStore.ClearData(-1, -2, true);
    EXPECT_EQ(mAsked.mVLetGo, (std::vector<int>{2, 0}));
}

TEST_F(SequenceDrawing, MayNeedSlopesAtASnapshotsOwnTime) {
    OpenRun(2);
    mStore.PrepareIndex(0, 0.0, false, true);
    EXPECT_TRUE(mStore.IsTheIndexReady(0, 0.0, false));
    mAsked.mbSlopes = true;
    EXPECT_FALSE(mStore.IsTheIndexReady(0, 0.0, false));
    mStore.PrepareIndex(0, 0.0, false, true);
    EXPECT_TRUE(mStore.IsTheIndexReady(0, 0.0, false));
    EXPECT_FLOAT_EQ(Snap(0).mpCBlock->mpVel[0][0], 0.5f);
}

TEST_F(SequenceDrawing, ThinsOutAnExport) {
    OpenRun(2);
    mStore.PrepareIndex(0, 0.0, false, true);
    mAsked.mThinning = 4;
    DataExporter_cls exporter(&mLoader);
    exporter.mCLastSavedFile.mStrValue = wxString::FromUTF8(mFolder + "/out%04d.dat");
    exporter.AdoptTypedPath();
    exporter.BeginRun(1);
    while (!Sequence().ExportData(&exporter, 0, 0.0, 0)) {
    }
    // Time, number, then particles 0, 4 and 8 of 40 bytes each.
    EXPECT_EQ(std::filesystem::file_size(mFolder + "/out0000.dat"), 8u + 3u * 40u);
}

TEST_F(SequenceDrawing, WritesBehindThePathAndReadsWhatTheStoreLeaves) {
    EXPECT_EQ(mStore.Serialize(), "DataSequence0=0\n\nLook0=x\nDataSequence1=1\n\nLook1=x\n"
                                  "DataSequence2=2\n\nLook2=x\nDataSequence3=3\n\nLook3=x\n");
    std::wistringstream stream(L"\nLook0=x\n");
    mStore.ReadStrLine(stream, "DataSequence0=0"); // takes the path's line
    mStore.ReadStrLine(stream, "Look0=x");
    EXPECT_TRUE(mAsked.mStrRead.Contains("Look0=x|"));
    EXPECT_FALSE(mAsked.mStrRead.Contains("||"));
}

} // namespace
