// What the OpenGL of this machine says about itself; read once, with a current context.
#pragma once

#include <wx/string.h>

class GLInfo_cls {
public:
    /// Read all; later calls do nothing.
    static void Initialize();

    static wxString GetGLVersionStr() { return msStrVersion; }
    /// Is the driver one of software, so that the processor draws? The first call needs a current context.
    static bool IsSoftware();
    static wxString GetRenderer() { return msStrRenderer; }
    static wxString GetGLMaxElementsVertices();
    static wxString GetGLMaxElementsIndices();
    /// One fact a line, for a box; the last says who draws particles, and why.
    static wxString GetText();

private:
    static bool msbInitialized;
    static wxString msStrVersion;
    static wxString msStrVendor;
    static wxString msStrRenderer;
    static wxString msStrGLSL;
    static bool msbSoftware;
    static int msMaxVertices;
    static int msMaxIndices;
    static int msMaxTexture;
};
