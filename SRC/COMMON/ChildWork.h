// Work that a library may end the process over: a child does it and brings what came of it.
#pragma once

#include <atomic>
#include <cstddef>
#include <functional>

enum class ChildEnd {
    Done,     ///< what it wrote is there
    Fault,    ///< a signal ended it
    NoMemory, ///< there was too little for it
    Stopped,  ///< by the caller
    NoChild   ///< none could be made: nothing was done
};

/// A file in memory that parent and child share; gone with the last of them.
class SharedFile_cls {
public:
    SharedFile_cls();
    ~SharedFile_cls();
    SharedFile_cls(const SharedFile_cls&) = delete;
    SharedFile_cls& operator=(const SharedFile_cls&) = delete;
    bool IsOpen() const { return mFile >= 0; }
    /// At its end; false where memory is short.
    bool Write(const void* pBytes, size_t length);
    /// From its start on; false where there are fewer.
    bool Read(void* pBytes, size_t length);
    /// Bytes that can still be read.
    size_t GetLeft() const;

private:
    int mFile;
    long long mRead = 0;
};

/// Run `work` in a child and wait for it; it may take `seconds` of the processor, longer is a fault. It must
/// not ask what other threads of ours may hold: no window, no translated text. Throws nothing of `work`'s:
/// std::bad_alloc is told, others are faults.
ChildEnd RunInChild(const std::function<void()>& work, unsigned long seconds, const std::atomic<bool>* pStop);
