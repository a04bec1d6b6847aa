// What the tests of the snapshot readers share: temporary files, arrays, and one call that reads.
#pragma once

#include <cstdlib>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <unistd.h>

#include "COMMON/Globals.h"
#include "PDATA/SnapshotBody.h"
#include "PDATA/SnapshotHeader.h"
#include "PDATA/clsArrayPool.h"
#include "PDATA/clsDataLoader.h"
#include "TempFolder.h"

/// A folder for files of a test.
class TempDir_cls : public TempFolder_cls {
public:
    std::string Name(const std::string& name) const { return GetPath() + "/" + name; }
    std::string Write(const std::string& name, const std::string& bytes) const {
        const std::string path = Name(name);
        FILE* file = fopen(path.c_str(), "wb");
        if (!file || fwrite(bytes.data(), 1, bytes.size(), file) != bytes.size()) std::abort();
        fclose(file);
        return path;
    }
};

/// The bytes of some values, one after the other.
template <class... T>
std::string Pack(const T&... values) {
    std::string bytes;
    (bytes.append(reinterpret_cast<const char*>(&values), sizeof values), ...);
    return bytes;
}

/// Arrays that held something else before.
class TestArrays_cls {
public:
    explicit TestArrays_cls(int number) : mNumber(number) {
        if (number <= 0) return;
        if (!mPool.AllocateParticles(static_cast<size_t>(number), true, &mArrays)) std::abort();
        mArrays.mZeroBits = 0;
        const size_t size = static_cast<size_t>(number);
        memset(static_cast<void*>(mArrays.mpPos), 0x41, 12 * size);
        memset(static_cast<void*>(mArrays.mpVel), 0x42, 12 * size);
        for (float* array : {mArrays.mpRadius, mArrays.mpValue1, mArrays.mpDRadius, mArrays.mpDValue1})
            memset(array, 0x43, 4 * size);
        memset(mArrays.mpID, 0x44, 4 * size);
        memset(mArrays.mpType, 0x45, size);
    }
    ~TestArrays_cls() { mPool.FreeParticles(&mArrays); }
    TestArrays_cls(const TestArrays_cls&) = delete;
    TestArrays_cls& operator=(const TestArrays_cls&) = delete;
    const ParticleArrays_st* operator->() const { return &mArrays; }
    /// Every byte of every array, to compare two results.
    std::string AllBytes() const {
        const size_t size = static_cast<size_t>(mNumber);
        std::string bytes;
        const auto add = [&bytes](const void* array, size_t length) {
            bytes.append(static_cast<const char*>(array), length);
        };
        add(mArrays.mpPos, 12 * size);
        add(mArrays.mpVel, 12 * size);
        for (const float* array : {mArrays.mpRadius, mArrays.mpValue1, mArrays.mpDRadius, mArrays.mpDValue1})
            add(array, 4 * size);
        add(mArrays.mpID, 4 * size);
        add(mArrays.mpType, size);
        return bytes;
    }
    ParticleArrays_st mArrays;

private:
    int mNumber;
    ArrayPool_cls mPool{0};
};

/// A loader with a grammar.
class TestLoader_cls : public DataLoader_cls {
public:
    TestLoader_cls(int dataType, const std::vector<int>& head, const std::vector<int>& body)
        : DataLoader_cls(nullptr) {
        mCItemDataType.mValue = dataType;
        SetHeaderGrammer(head);
        SetBodyGrammer(body);
    }
};

inline void ReadBody(const DataLoader_cls& loader, const std::string& path, int number,
                     const TestArrays_cls& arrays) {
    ReadSnapshotBody(
        MakeSnapshotBody(loader, wxString::FromUTF8(path.c_str()), number, arrays.mArrays, true));
}

/// Sets the number of text parser threads for the length of a scope.
class ThreadCount_cls {
public:
    explicit ThreadCount_cls(int number) : mBefore(GThreadNumberReadAscii.exchange(number)) {}
    ~ThreadCount_cls() { GThreadNumberReadAscii.store(mBefore); }
    ThreadCount_cls(const ThreadCount_cls&) = delete;
    ThreadCount_cls& operator=(const ThreadCount_cls&) = delete;

private:
    int mBefore;
};
