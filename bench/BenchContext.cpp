#include "BenchContext.h"

#include <epoxy/gl.h>

#include <GL/freeglut.h>

#include <cstdlib>

#include <wx/image.h>

#include "GL/BASE/clsGLStrings2D.h"

bool MakeBenchContext() {
    if (!std::getenv("DISPLAY")) return false;
    static bool sbMade = false;
    if (sbMade) return true;
    GLStrings2D_cls::InitializeGLUT();
    glutInitDisplayMode(GLUT_RGBA | GLUT_DOUBLE | GLUT_DEPTH | GLUT_STENCIL);
    glutInitWindowSize(64, 64);
    glutCreateWindow("bench");
    glutHideWindow();
    wxImage::AddHandler(new wxPNGHandler);
    return sbMade = true;
}
