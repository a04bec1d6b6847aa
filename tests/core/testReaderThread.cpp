// The reader as a background thread: flags, progress and the events that it posts.
#include <mutex>

#include <wx/utils.h>

#include "ReaderTestTools.h"
#include "COMMON/EventIds.h"
#include "COMMON/MenuEvent.h"
#include "PDATA/clsThreadFileReader.h"

namespace {

class Recorder_cls : public MenuEventTarget_cls {
public:
    void QueueMenuEvent(int id, int) override {
        const std::lock_guard<std::mutex> lock(mMutex); // the reader's thread posts, too
        mIds.push_back(id);
    }

    std::mutex mMutex;
    std::vector<int> mIds;
};

} // namespace

TEST(ReaderThread, FillsTheArraysThenRaisesItsFlags) {
    std::string bytes = Pack(2.5f, 200000);
    for (int i = 0; i < 200000; ++i) {
        const float f = static_cast<float>(i);
        bytes += Pack(f, f, f, f, f, f, f, i, 1, f);
    }
    TempDir_cls dir;
    const wxString path = wxString::FromUTF8(dir.Write("thread.bin", bytes).c_str());
    TestLoader_cls loader(0, {0, 1}, {0, 1, 5, 6, 7, 8});
    Recorder_cls recorder;
    SetMenuEventTarget(&recorder);
    for (int round = 0; round < 20; ++round) {
        TestArrays_cls arrays(200000);
        std::atomic<bool> bFinished{false};
        GbThreadReaderFinished.store(false);
        GThreadReaderIndex.store(7);
        auto* reader = new ThreadFileReader_cls;
        GpCThreadReader.store(reader);
        std::string damage = "an older one";
        long long placeless = 7;
        reader->SetParameters(&bFinished, &damage, &placeless, &loader, path, 200000, arrays.mArrays, true);
        reader->Start();
        while (!GbThreadReaderFinished.load(std::memory_order_acquire))
            wxMilliSleep(1);
        EXPECT_TRUE(bFinished.load());
        EXPECT_EQ(damage, "");
        EXPECT_EQ(placeless, 0);
        EXPECT_EQ(-1, GThreadReaderIndex.load());
        EXPECT_EQ(100, GThreadReaderPercentage.load());
        for (int i = 0; i < 200000; i += 777)
            ASSERT_EQ(i, arrays->mpID[i]);
        while (GpCThreadReader.load())
            wxMilliSleep(1);
    }
    SetMenuEventTarget(nullptr);
    EXPECT_EQ(80u, recorder.mIds.size())
        << "progress at half and whole, then both events at the end, each round";
    EXPECT_EQ(ID_REFRESH_TL, recorder.mIds.back());
}
