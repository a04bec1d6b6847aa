#include "APP/clsMyApp.h"

#include <malloc.h>

#include <cstdlib>

namespace {

constexpr int kOwnMapping = 1 << 20; // bytes

} // namespace

int main(int argc, char** argv) {
    // Pictures and buffers of many megabytes come and go for days. The C library would soon take them from
    // the heap, where they leave holes between small blocks, and the window would grow with the hours.
    mallopt(M_MMAP_THRESHOLD, kOwnMapping);
    // The OpenGL canvas speaks GLX: in a Wayland session the program runs through XWayland.
    setenv("GDK_BACKEND", "x11", 1);
    return RunMorentis(argc, argv);
}
