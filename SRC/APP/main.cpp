#include "APP/clsMyApp.h"

#include <cstdlib>

int main(int argc, char** argv) {
    // The OpenGL canvas speaks GLX: in a Wayland session the program runs through XWayland.
    setenv("GDK_BACKEND", "x11", 1);
    return RunMorentis(argc, argv);
}
