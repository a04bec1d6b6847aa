#include "GL/BASE/clsGLInfo.h"

#include <epoxy/gl.h>

#include <cstdio>

#include <wx/intl.h>

#include "GL/BASE/DrawWay.h"

bool GLInfo_cls::msbInitialized = false;
wxString GLInfo_cls::msStrVersion = "0.0";
wxString GLInfo_cls::msStrVendor;
wxString GLInfo_cls::msStrRenderer;
wxString GLInfo_cls::msStrGLSL = "GLSL Not Implemented";
bool GLInfo_cls::msbSoftware = false;
int GLInfo_cls::msMaxVertices = 0;
int GLInfo_cls::msMaxIndices = 0;
int GLInfo_cls::msMaxTexture = 0;

namespace {

wxString ReadGLText(GLenum name) {
    const GLubyte* pText = glGetString(name);
    return pText ? wxString::FromUTF8(reinterpret_cast<const char*>(pText)) : wxString();
}

} // namespace

void GLInfo_cls::Initialize() {
    if (msbInitialized) return;
    msbInitialized = true;
    msStrVersion = ReadGLText(GL_VERSION);
    msStrVendor = ReadGLText(GL_VENDOR);
    msStrRenderer = ReadGLText(GL_RENDERER);
    msbSoftware = IsSoftwareRenderer(msStrRenderer);
    int major = 0;
    int minor = 0;
    const wxString glsl = ReadGLText(GL_SHADING_LANGUAGE_VERSION);
    if (std::sscanf(glsl.utf8_str(), "%d.%d", &major, &minor) == 2)
        msStrGLSL = wxString::Format("GLSL ver. %d.%d", major, minor);
    glGetIntegerv(GL_MAX_ELEMENTS_VERTICES, &msMaxVertices);
    glGetIntegerv(GL_MAX_ELEMENTS_INDICES, &msMaxIndices);
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &msMaxTexture);
}

bool GLInfo_cls::IsSoftware() {
    Initialize();
    return msbSoftware;
}

wxString GLInfo_cls::GetGLMaxElementsVertices() {
    return wxString::Format("Max Elements Vertices: %d", msMaxVertices);
}

wxString GLInfo_cls::GetGLMaxElementsIndices() {
    return wxString::Format("Max Elements Indices: %d", msMaxIndices);
}

wxString GLInfo_cls::GetText() {
    if (!msbInitialized) return _("No view has been drawn yet.");
    wxString text;
    text << "OpenGL " << msStrVersion << "\n"
         << msStrGLSL << "\n"
         << msStrVendor << "\n"
         << msStrRenderer << "\n";
    text << GetGLMaxElementsVertices() << "\n" << GetGLMaxElementsIndices() << "\n";
    text << wxString::Format("Max Texture Size: %d", msMaxTexture) << "\n";
    text << GetDrawWayText();
    return text;
}
