// A store on a folder of its own, and blocks made by hand, for the tests around it.
#pragma once

#include <cstdio>
#include <fstream>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "COMMON/Globals.h"
#include "COMMON/MsgBox.h"
#include "PDATA/clsDataLoader.h"
#include "PDATA/clsPDataBlock.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "PDATA/clsPDataSnap.h"
#include "TempFolder.h"

/// A block without a file, owned by a slot of no sequence. Values are pseudo-random, IDs ascend from 0.
struct HandBlock_st {
    HandBlock_st(int number, unsigned seed, double time = 0.0) : mSnap(nullptr, 0), mBlock(*mSnap.mpCBlock) {
        mSnap.mTime = time;
        mBlock.Allocate(number);
        mBlock.mInterpolateType = 0;
        std::mt19937 random(seed);
        std::uniform_real_distribution<float> value(-5.0f, 5.0f);
        for (int i = 0; i < number; ++i) {
            for (int c = 0; c < 3; ++c) {
                mBlock.mpPos[i][c] = value(random);
                mBlock.mpVel[i][c] = value(random);
            }
            mBlock.mpRadius[i] = value(random);
            mBlock.mpDRadius[i] = value(random);
            mBlock.mpValue1[i] = value(random);
            mBlock.mpDValue1[i] = value(random);
            mBlock.mpType[i] = static_cast<unsigned char>(random() % 5);
            mBlock.mpID[i] = i;
        }
    }

    PDataSnap_cls mSnap;
    PDataBlock_cls& mBlock;
};

class StoreFixture : public ::testing::Test {
protected:
    /// Nobody draws the sequences but what `makeDrawing` makes.
    explicit StoreFixture(const MakeSequenceDrawing& makeDrawing = {})
        : mLoader(nullptr), mStore(makeDrawing, false) {
        mLoader.mCItemInterpolateType.mValue = 0;
        PDataBlock_cls::mspCDataLoaderLink = &mLoader;
        SetMessageHandler([this](MessageKind kind, const wxString& text, const wxString&) {
            mMessages.push_back({kind, text});
            return true;
        });
    }
    ~StoreFixture() override {
        mStore.ClearData(-2, -2, true);
        PDataBlock_cls::mspCDataLoaderLink = nullptr;
        PDataSequence_cls::msStrProjectDir.clear();
        SetMessageHandler({});
    }

    std::string PathOf(int index) const {
        char name[32];
        std::snprintf(name, sizeof name, "/run%04d.bin", index);
        return mFolder + name;
    }
    /// Particle i of a snapshot: x = index + i, radius = 1 + i, ID = firstID + i, type = i % 5, value = 10 *
    /// i.
    void WriteSnap(int index, float time, int number, int firstID = 0) const {
        std::ofstream file(PathOf(index), std::ios::binary);
        const auto put = [&file](const auto& value) {
            file.write(reinterpret_cast<const char*>(&value), sizeof value);
        };
        put(time);
        put(number);
        for (int i = 0; i < number; ++i) {
            const float head[7] = {float(index + i), 2, 3, 4, 5, 6, float(1 + i)};
            put(head);
            put(firstID + i);
            put(i % 5);
            put(float(10 * i));
        }
    }
    /// Snapshots 0 to count - 1 of ten particles at times 0, 2, 4 and so on; opened.
    void OpenRun(int count) {
        for (int i = 0; i < count; ++i)
            WriteSnap(i, 2.0f * float(i), 10);
        mStore.OpenDataFile(PathOf(0));
    }
    PDataSequence_cls& Sequence() { return *mStore.GetPCActiveFileSequence(); }
    PDataSnap_cls& Snap(int index) { return *Sequence().mpCSnap[index]; }

    struct Message_st {
        MessageKind mKind;
        wxString mText;
    };
    TempFolder_cls mTemp;
    const std::string mFolder = mTemp.GetPath();
    std::vector<Message_st> mMessages;
    DataLoader_cls mLoader;
    PDataSeqCtrl_cls mStore;
};
