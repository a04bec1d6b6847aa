#include "IMAGE/PictureTexts.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include <wx/intl.h>

#include "COMMON/clsSplitPath.h"
#include "IMAGE/PictureOrigin.h"

// Without O_NONBLOCK a pipe would hold us until somebody writes.
PictureFile_cls::PictureFile_cls(const wxString& path)
    : mFile(open(NarrowPath(path).c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC)) {
    struct stat facts {};
    if (mFile >= 0 && fstat(mFile, &facts) == 0 && S_ISREG(facts.st_mode) && facts.st_size > 0)
        mSize = std::uint64_t(facts.st_size);
}

PictureFile_cls::~PictureFile_cls() {
    if (mFile >= 0) close(mFile);
}

bool PictureFile_cls::Read(std::uint64_t at, size_t length, std::string* pBytes) const {
    if (at > mSize || length > mSize - at) return false;
    pBytes->resize(length);
    for (size_t done = 0; done < length;) {
        const ssize_t count = pread(mFile, pBytes->data() + done, length - done, off_t(at + done));
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return false; // cut off meanwhile
        done += size_t(count);
    }
    return true;
}

wxString SayCutOff() { return _("it is cut off"); }
wxString SayDamaged() { return _("it is damaged"); }
wxString SayTooLong() { return wxString::Format(_("it is larger than %d MB"), int(kLongestOrigin >> 20)); }
