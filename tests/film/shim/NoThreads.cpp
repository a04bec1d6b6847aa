// Put before the C library of the film maker: the libraries by which the program makes its own threads get
// none. Those of OpenGL and the toolkit keep theirs. With MORENTIS_NO_SPACE=n each disk has room for n
// blocks, with MORENTIS_NO_PATIENCE short naps are over sixteen times as fast.
#include <dlfcn.h>
#include <pthread.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>

using Create_t = int (*)(pthread_t*, const pthread_attr_t*, void* (*)(void*), void*);

extern "C" int pthread_create(pthread_t* pThread, const pthread_attr_t* pAttributes, void* (*start)(void*),
                              void* pArgument) noexcept {
    Dl_info caller;
    if (dladdr(__builtin_return_address(0), &caller) != 0 &&
        (std::strstr(caller.dli_fname, "libstdc++") || std::strstr(caller.dli_fname, "libwx_base")))
        return EAGAIN;
    static const auto sReal = reinterpret_cast<Create_t>(dlsym(RTLD_NEXT, "pthread_create"));
    return sReal(pThread, pAttributes, start, pArgument);
}

template <class FACTS>
static int StatFull(const char* name, const char* path, FACTS* pFacts) {
    const auto real = reinterpret_cast<int (*)(const char*, FACTS*)>(dlsym(RTLD_NEXT, name));
    const int result = real(path, pFacts);
    if (const char* blocks = std::getenv("MORENTIS_NO_SPACE")) pFacts->f_bavail = unsigned(std::atoi(blocks));
    return result;
}

extern "C" int statvfs(const char* path, struct statvfs* pFacts) noexcept {
    return StatFull("statvfs", path, pFacts);
}
extern "C" int statvfs64(const char* path, struct statvfs64* pFacts) noexcept {
    return StatFull("statvfs64", path, pFacts);
}

extern "C" int usleep(useconds_t micros) {
    static const auto sReal = reinterpret_cast<int (*)(useconds_t)>(dlsym(RTLD_NEXT, "usleep"));
    return sReal(std::getenv("MORENTIS_NO_PATIENCE") ? micros / 16 : micros);
}
