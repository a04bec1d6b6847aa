#include "IMPORT/Hdf5Guard.h"

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>

#include "IMPORT/ParticleSource.h"

namespace {

constexpr rlim_t kMostSeconds = 10; // of the processor: a look takes milliseconds

} // namespace

bool LookFirst(const std::string& path, const std::function<bool()>& look) {
    const pid_t child = fork();
    if (child < 0) return look();
    if (child == 0) {
        const rlimit none = {0, 0};
        const rlimit seconds = {kMostSeconds, kMostSeconds}; // damage may send it round for minutes
        setrlimit(RLIMIT_CORE, &none);
        setrlimit(RLIMIT_CPU, &seconds);
        close(STDERR_FILENO); // what the C library says of it would be all that the user sees
        bool bYes = false;
        try {
            bYes = look();
        } catch (...) { // the reader tells it
        }
        _exit(bYes ? 1 : 0);
    }
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    if (WIFSIGNALED(status)) throw ImportError_cls(path + ": is damaged; the HDF5 library can't read it");
    return WEXITSTATUS(status) == 1;
}
