#include "PDATA/SnapshotWriter.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstring>

#include <wx/intl.h>
#include <wx/stopwatch.h>

#include "COMMON/SafeFile.h"
#include "COMMON/clsSplitPath.h"
#include "PDATA/SnapshotRecords.h"
#include "PDATA/clsGrammerBase.h"
#include "PDATA/clsPDataBlock.h"
#include "PDATA/clsPDataSnap.h"

namespace {

constexpr size_t kBufferBytes = 1 << 20;
constexpr size_t kLongestDouble = 400; // "%f" of any double

void Append(std::vector<char>& buffer, size_t& used, const void* pBytes, size_t length) {
    std::memcpy(buffer.data() + used, pBytes, length);
    used += length;
}

} // namespace

SnapshotSource_st SnapshotSource_st::Of(const PDataBlock_cls& block, double dt, int step) {
    SnapshotSource_st source;
    source.mTime = block.mpCSnap->mTime;
    source.mDT = dt;
    source.mStep = std::max(step, 1);
    if (!block.mbAllocated) return source;
    source.mArrays = block;
    if (!block.mbHasID) source.mArrays.mpID = nullptr;
    source.mNumber = std::max(block.mParticleNumber, 0);
    return source;
}

long long SnapshotSource_st::GetRecordCount() const {
    if (mpKept) return mNumber > 0 ? static_cast<long long>(mpKept->size()) : 0;
    return (mNumber + mStep - 1) / mStep;
}

bool SnapshotSource_st::IsSame(const SnapshotSource_st& other) const {
    return mArrays.mpPos == other.mArrays.mpPos && mArrays.mpVel == other.mArrays.mpVel &&
           mArrays.mpID == other.mArrays.mpID && mNumber == other.mNumber && mTime == other.mTime &&
           mDT == other.mDT && mStep == other.mStep && mpKept == other.mpKept;
}

SnapshotWriter_cls::SnapshotWriter_cls(const wxString& path, const GrammerBase_cls& grammar, bool bText,
                                       const SnapshotSource_st& source)
    : mStrPath(path), mSource(source), mHead(grammar.GetHeaderGrammer()), mBody(grammar.GetBodyGrammer()),
      mbText(bText), mCount(source.GetRecordCount()), mBuffer(kBufferBytes),
      mpFile(std::make_unique<SafeFile_cls>(path)) {
    std::printf("%s time=%f\n", NarrowPath(path).c_str(), source.GetTime());
    if (!mpFile->IsOpen())
        Fail(mpFile->GetReason());
    else if (mbText || mCount > 0)
        PutHeader();
}

SnapshotWriter_cls::~SnapshotWriter_cls() = default;

SnapshotWriter_cls::State SnapshotWriter_cls::Write(long millis) {
    const wxStopWatch watch;
    while (mState == State::Busy) {
        if (mDone < mCount)
            PutPiece();
        else
            Finish();
        if (millis >= 0 && watch.Time() >= millis) break;
    }
    return mState;
}

int SnapshotWriter_cls::GetPercent() const { return mCount > 0 ? int(100 * mDone / mCount) : 100; }

// 16 codes at most: the buffer is far larger.
void SnapshotWriter_cls::PutHeader() {
    const auto time = static_cast<float>(mSource.GetTime());
    const auto count = static_cast<int>(mCount);
    for (const int code : mHead) {
        char* pOut = mBuffer.data() + mUsed;
        if (!mbText) {
            if (code == HEAD_TIME) Append(mBuffer, mUsed, &time, sizeof time);
            if (code == HEAD_NUMBER) Append(mBuffer, mUsed, &count, sizeof count);
            if (IsHeadDummy(code))
                mUsed += static_cast<size_t>(GrammerBase_cls::GetHeadItemByte(code)); // zeros
        } else if (code == HEAD_TIME) {
            pOut = std::to_chars(pOut, pOut + kLongestDouble, mSource.GetTime(), std::chars_format::fixed, 6)
                       .ptr;
            *pOut++ = '\n';
            mUsed = static_cast<size_t>(pOut - mBuffer.data());
        } else if (code == HEAD_NUMBER) {
            pOut = std::to_chars(pOut, pOut + kLongestDouble, count).ptr;
            *pOut++ = '\n';
            mUsed = static_cast<size_t>(pOut - mBuffer.data());
        } else if (IsHeadDummy(code)) {
            // No line ends: that is how the format is.
            for (int k = 0; k < GrammerBase_cls::GetHeadItemLine(code); ++k)
                Append(mBuffer, mUsed, "dummy", 5);
        }
    }
}

// As many records as the buffer takes.
void SnapshotWriter_cls::PutPiece() {
    const size_t longest = mbText ? GetLongestTextRecord(mBody) : GetBinaryRecord(mBody);
    const long long room =
        longest > 0 ? static_cast<long long>((kBufferBytes - mUsed) / longest) : mCount - mDone;
    const long long end = mDone + std::min(std::max(room, 0LL), mCount - mDone);
    if (mbText)
        mUsed += PutTextRecords(mBuffer.data() + mUsed, mBody, mSource, mDone, end);
    else
        mUsed += PutBinaryRecords(mBuffer.data() + mUsed, mBody, mSource, mDone, end);
    mDone = end;
    Flush();
}

void SnapshotWriter_cls::Flush() {
    if (mUsed > 0 && !mpFile->Write(mBuffer.data(), mUsed)) Fail(mpFile->GetReason());
    mUsed = 0;
}

void SnapshotWriter_cls::Finish() {
    Flush();
    if (mState != State::Busy) return;
    if (!mpFile->Commit(ToDisk::Later)) {
        Fail(mpFile->GetReason());
    } else if (!mbText && mCount == 0) {
        mbEmptyFrame = true;
        Fail(_("there are no particles to write"));
    } else {
        mState = State::Written;
        mpFile.reset();
    }
}

void SnapshotWriter_cls::Fail(const wxString& reason) {
    mState = State::Failed;
    mStrReason = reason + ": " + mStrPath; // a long path may be cut where it is shown
    mpFile.reset();
}
