// A GLSL program made of two files. All views share it, as they share all GL objects.
#pragma once

#include <epoxy/gl.h>

#include <wx/string.h>

class GLProgram_cls {
public:
    enum class Result {
        Ok,
        NoFile,     ///< a file is missing or can't be read, or this OpenGL has no shaders
        NotCompiled ///< the driver refuses a shader or the program
    };

    GLProgram_cls() = default;
    ~GLProgram_cls();
    GLProgram_cls(const GLProgram_cls&) = delete;
    GLProgram_cls& operator=(const GLProgram_cls&) = delete;

    /// Build from run-time files such as "GL/exposure.vert". On failure there is no program, and `pProblem`
    /// names the file and says why, in the driver's words. Needs a current context.
    Result Build(const wxString& vertexFile, const wxString& fragmentFile, wxString* pProblem);
    bool IsBuilt() const { return mProgram != 0; }
    /// Draw with it until UseNone.
    void Use() const { glUseProgram(mProgram); }
    static void UseNone() { glUseProgram(0); }
    /// -1 where the program has no such uniform.
    GLint GetUniform(const char* name) const { return glGetUniformLocation(mProgram, name); }

private:
    GLuint mProgram = 0;
};
