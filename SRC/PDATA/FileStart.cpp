#include "PDATA/FileStart.h"

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <wx/intl.h>

#include "COMMON/clsSplitPath.h"

namespace {
wxString SystemError(int code) { return wxString::FromUTF8(std::strerror(code)); }
} // namespace

FileStart_st ReadFileStart(const wxString& path, size_t wanted) {
    FileStart_st start;
    const int file = open(NarrowPath(path).c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    struct stat status;
    if (file < 0 || fstat(file, &status) != 0) {
        start.mStrError = wxString::Format(_("The file can't be opened: %s."), SystemError(errno));
        if (file >= 0) close(file);
        return start;
    }
    if (!S_ISREG(status.st_mode)) {
        start.mStrError = S_ISDIR(status.st_mode) ? _("This is a directory and not a snapshot file.")
                                                  : _("This is no regular file.");
        close(file);
        return start;
    }
    start.mSize = status.st_size;
    start.mBytes.resize(wanted);
    size_t length = 0;
    ssize_t got = 0;
    while (length < wanted && (got = read(file, &start.mBytes[length], wanted - length)) > 0)
        length += static_cast<size_t>(got);
    if (got < 0) start.mStrError = wxString::Format(_("The file can't be read: %s."), SystemError(errno));
    start.mBytes.resize(length);
    close(file);
    return start;
}
