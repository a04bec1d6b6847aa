// Put before the C library of the film maker: the libraries by which the program makes its own threads get
// none. Those of OpenGL and the toolkit keep theirs.
#include <dlfcn.h>
#include <pthread.h>

#include <cerrno>
#include <cstring>

using Create_t = int (*)(pthread_t*, const pthread_attr_t*, void* (*)(void*), void*);

extern "C" int pthread_create(pthread_t* pThread, const pthread_attr_t* pAttributes, void* (*start)(void*),
                              void* pArgument) {
    Dl_info caller;
    if (dladdr(__builtin_return_address(0), &caller) != 0 &&
        (std::strstr(caller.dli_fname, "libstdc++") || std::strstr(caller.dli_fname, "libwx_base")))
        return EAGAIN;
    static const auto sReal = reinterpret_cast<Create_t>(dlsym(RTLD_NEXT, "pthread_create"));
    return sReal(pThread, pAttributes, start, pArgument);
}
