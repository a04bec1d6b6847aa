#include "GL/BASE/clsGLProgram.h"

#include <vector>

#include <wx/intl.h>

#include "COMMON/RuntimeFiles.h"
#include "COMMON/SafeFile.h"
#include "GL/BASE/clsGLState.h"

namespace {

constexpr size_t kLargestSource = 1 << 20; // bytes; a shader has a few thousand

wxString GetLog(GLuint object, bool bProgram) {
    GLint length = 0;
    if (bProgram)
        glGetProgramiv(object, GL_INFO_LOG_LENGTH, &length);
    else
        glGetShaderiv(object, GL_INFO_LOG_LENGTH, &length);
    if (length < 2) return wxString();
    std::vector<char> log(static_cast<size_t>(length));
    if (bProgram)
        glGetProgramInfoLog(object, length, nullptr, log.data());
    else
        glGetShaderInfoLog(object, length, nullptr, log.data());
    return wxString::FromUTF8(log.data());
}

/// A shader object for the length of a build; a program that took it keeps it alive.
class Shader_cls {
public:
    explicit Shader_cls(GLenum type) : mShader(glCreateShader(type)) {}
    ~Shader_cls() { glDeleteShader(mShader); }
    Shader_cls(const Shader_cls&) = delete;
    Shader_cls& operator=(const Shader_cls&) = delete;

    GLProgram_cls::Result Compile(const wxString& file, wxString* pProblem) {
        std::string source;
        if (ReadWholeFile(FindRuntimeFile(file), kLargestSource, &source) != ReadFileResult::Ok) {
            *pProblem = wxString::Format(_("The shader file %s can't be read."), file);
            return GLProgram_cls::Result::NoFile;
        }
        const GLchar* text = source.data();
        const auto length = static_cast<GLint>(source.size());
        glShaderSource(mShader, 1, &text, &length);
        glCompileShader(mShader);
        GLint status = GL_FALSE;
        glGetShaderiv(mShader, GL_COMPILE_STATUS, &status);
        if (status == GL_TRUE) return GLProgram_cls::Result::Ok;
        *pProblem = file + ":\n" + GetLog(mShader, false);
        return GLProgram_cls::Result::NotCompiled;
    }

    GLuint mShader;
};

} // namespace

GLProgram_cls::~GLProgram_cls() {
    if (mProgram != 0 && IsGLContextCurrent()) glDeleteProgram(mProgram);
}

GLProgram_cls::Result GLProgram_cls::Build(const wxString& vertexFile, const wxString& fragmentFile,
                                           wxString* pProblem) {
    if (mProgram != 0) glDeleteProgram(mProgram);
    mProgram = 0;
    if (epoxy_gl_version() < 20) {
        *pProblem = _("This OpenGL has no shaders.");
        return Result::NoFile;
    }
    Shader_cls vertex(GL_VERTEX_SHADER);
    Shader_cls fragment(GL_FRAGMENT_SHADER);
    Result result = vertex.Compile(vertexFile, pProblem);
    if (result == Result::Ok) result = fragment.Compile(fragmentFile, pProblem);
    if (result != Result::Ok) return result;
    const GLuint program = glCreateProgram();
    glAttachShader(program, vertex.mShader);
    glAttachShader(program, fragment.mShader);
    glLinkProgram(program);
    GLint status = GL_FALSE;
    glGetProgramiv(program, GL_LINK_STATUS, &status);
    if (status == GL_TRUE) {
        mProgram = program;
        return Result::Ok;
    }
    *pProblem = vertexFile + ", " + fragmentFile + ":\n" + GetLog(program, true);
    glDeleteProgram(program);
    return Result::NotCompiled;
}
