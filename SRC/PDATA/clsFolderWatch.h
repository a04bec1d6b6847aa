// Watches the folder of a sequence for new snapshots, on a thread of its own: file systems that are slow or
// hang hold up nobody. All calls come from one thread.
#pragma once

#include <memory>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include <wx/stopwatch.h>

#include "PDATA/clsSequenceLook.h"

class GrammerBase_cls;

class FolderWatch_cls {
public:
    enum class Way {
        Told, ///< the kernel tells of changes, where the file system lets it; and looks as below
        Poll  ///< a look each kMillis
    };
    static constexpr long kMillis = 1000;

    /// See SequenceLook_cls.
    FolderWatch_cls(const FileSequence_cls& sequence, int length, int most, Way way = Way::Told,
                    long millis = kMillis);
    /// Waits for a look under way, but not for a file system that hangs: then the thread ends by itself.
    ~FolderWatch_cls();
    FolderWatch_cls(const FolderWatch_cls&) = delete;
    FolderWatch_cls& operator=(const FolderWatch_cls&) = delete;

    /// To be called a few times a second: begins a look when one is due. Never waits. `wanted` is asked for
    /// only then. \return what has come and isn't taken; null: nothing.
    template <class WANTED>
    const SequenceNews_st* Tick(const GrammerBase_cls& grammar, WANTED wanted) {
        const SequenceNews_st* pNews = FindNews();
        if (!pNews && IsDue()) Begin(grammar, wanted());
        return pNews;
    }
    /// The news that Tick told have gone where they belong.
    void NewsTaken();

private:
    struct Job_st;

    const SequenceNews_st* FindNews();
    bool IsDue();
    bool IsWorking() const;
    void Begin(const GrammerBase_cls& grammar, const std::vector<int>& wanted);
    void Join();

    const long mMillis;
    std::shared_ptr<Job_st> mpJob; ///< the worker's while it works
    std::thread mThread;
    wxStopWatch mSince; ///< the last regular look's begin
    bool mbFirst = true;
};
