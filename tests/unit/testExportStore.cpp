// Exported snapshots of a store, read back by the program's own readers.
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "DrawnStoreFixture.h"
#include "GL/DRAW/clsSnapData.h"
#include "PDATA/clsDataExporter.h"
#include "ReaderTestTools.h"

namespace {

namespace fs = std::filesystem;

const std::vector<int> kDefaultHead = {0, 1};
const std::vector<int> kDefaultBody = {0, 1, 5, 6, 7, 8};

std::string ReadFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

class ExportStore : public DrawnStoreFixture {
protected:
    /// Export the data `frac` behind snapshot `index`, as a paint does.
    std::string ExportAt(DataExporter_cls& exporter, int index, double frac, int downsize = 1) {
        mStore.PrepareIndex(index, frac, false, true);
        mOption.mDownSizing.mValue = downsize;
        exporter.mCLastSavedFile.mStrValue = wxString::FromUTF8(mFolder + "/out%04d.dat");
        exporter.AdoptTypedPath();
        exporter.BeginRun(1);
        while (!Sequence().ExportData(&exporter, index, Sequence().GetDT(index, frac), 0)) {
        }
        return mFolder + "/out0000.dat";
    }
};

TEST_F(ExportStore, DefaultsReadBackAsTheSameParticles) {
    OpenRun(2);
    for (const int type : {0, 1}) {
        DataExporter_cls exporter(nullptr);
        exporter.mCItemDataType.mValue = type;
        const std::string path = ExportAt(exporter, 1, 0.0);
        const TestLoader_cls loader(type, kDefaultHead, kDefaultBody);
        const TestArrays_cls arrays(10);
        ReadBody(loader, path, 10, arrays);
        const PDataBlock_cls& block = *Snap(1).mpCBlock;
        EXPECT_EQ(std::memcmp(arrays->mpPos, block.mpPos, 120), 0) << type;
        EXPECT_EQ(std::memcmp(arrays->mpVel, block.mpVel, 120), 0) << type;
        EXPECT_EQ(std::memcmp(arrays->mpRadius, block.mpRadius, 40), 0) << type;
        EXPECT_EQ(std::memcmp(arrays->mpValue1, block.mpValue1, 40), 0) << type;
        EXPECT_EQ(std::memcmp(arrays->mpID, block.mpID, 40), 0) << type;
        EXPECT_EQ(std::memcmp(arrays->mpType, block.mpType, 10), 0) << type;
    }
}

TEST_F(ExportStore, AFractionIsWhatTheViewDraws) {
    OpenRun(2);
    DataExporter_cls exporter(nullptr);
    const double frac = 0.3;
    const std::string path = ExportAt(exporter, 0, frac);
    const PDataBlock_cls& block = *Snap(0).mpCBlock;
    const double dt = Sequence().GetDT(0, frac);
    ASSERT_EQ(dt, 0.6);
    const SnapData_cls drawn(Snap(0).mpCBlock, Drawing().mpCGLAttribute, dt, 1);
    const TestLoader_cls loader(0, kDefaultHead, kDefaultBody);
    const TestArrays_cls arrays(10);
    ReadBody(loader, path, 10, arrays);
    EXPECT_NE(std::memcmp(arrays->mpPos, block.mpPos, 120), 0) << "it moved";
    EXPECT_EQ(std::memcmp(arrays->mpPos, drawn.mpPos, 120), 0);
    EXPECT_EQ(std::memcmp(arrays->mpRadius, drawn.mpRadius, 40), 0);
    EXPECT_EQ(std::memcmp(arrays->mpValue1, drawn.mpValue1, 40), 0);
    EXPECT_EQ(std::memcmp(arrays->mpVel, block.mpVel, 120), 0) << "as stored";
    float time = 0.0f;
    std::memcpy(&time, ReadFile(path).data(), sizeof time);
    EXPECT_EQ(time, 0.6f) << "the moment that the particles are of";
}

TEST_F(ExportStore, ThinnedOutAsTheViewsAre) {
    OpenRun(1);
    DataExporter_cls exporter(nullptr);
    exporter.SetHeaderGrammer({1});
    exporter.SetBodyGrammer({6});
    EXPECT_EQ(ReadFile(ExportAt(exporter, 0, 0.0, 4)), Pack(3, 0, 4, 8));
}

TEST_F(ExportStore, ASnapshotWhoseFileIsMissingFails) {
    OpenRun(3);
    fs::remove(PathOf(1));
    DataExporter_cls exporter(nullptr);
    ExportAt(exporter, 1, 0.0);
    EXPECT_EQ(exporter.mExportedCount, 0);
    EXPECT_TRUE(exporter.HasFailed());
}

} // namespace
