#include "IMPORT/PlainFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "IMPORT/ParticleSource.h"

int OpenPlainFile(const std::string& path, long long* pBytes) {
    const int file = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    struct stat facts {};
    if (file < 0 || fstat(file, &facts) != 0) {
        const std::string reason = std::strerror(errno);
        if (file >= 0) close(file);
        throw ImportError_cls(path + ": " + reason);
    }
    if (S_ISREG(facts.st_mode)) {
        *pBytes = facts.st_size;
        return file;
    }
    close(file);
    throw ImportError_cls(path + ": is no plain file");
}
