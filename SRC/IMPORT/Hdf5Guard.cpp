#include "IMPORT/Hdf5Guard.h"

#include "COMMON/ChildWork.h"
#include "IMPORT/ParticleSource.h"

namespace {

constexpr unsigned long kMostSeconds = 10; // of the processor: a look takes milliseconds, damage minutes

} // namespace

bool LookFirst(const std::string& path, const std::function<bool()>& look) {
    SharedFile_cls answer;
    if (!answer.IsOpen()) return look();
    bool bYes = false;
    const auto tell = [&] {
        try {
            bYes = look();
        } catch (...) { // the reader tells it
        }
        answer.Write(&bYes, sizeof bYes);
    };
    const ChildEnd end = RunInChild(tell, kMostSeconds, nullptr);
    if (end == ChildEnd::NoChild) return look();
    if (end == ChildEnd::Fault) throw ImportError_cls(path + ": is damaged; the HDF5 library can't read it");
    return answer.Read(&bYes, sizeof bYes) && bYes;
}
