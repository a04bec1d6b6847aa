#include "GL/BASE/clsShaderProgram.h"

#include <epoxy/gl.h>

#include "GL/BASE/clsGLState.h"

namespace {

constexpr int kNeededVersion = 20; // of OpenGL, that is GLSL 1.10; the compiler judges 1.20

GLuint CompileShader(GLenum kind, const std::string& source, const std::string& defines, bool* pGood) {
    const GLuint shader = glCreateShader(kind);
    // The version must stay in front of everything.
    const size_t version = source.find("#version");
    const size_t line = version == std::string::npos ? 0 : source.find('\n', version) + 1;
    const std::string text = source.substr(0, line) + defines + source.substr(line);
    const char* pText = text.c_str();
    glShaderSource(shader, 1, &pText, nullptr);
    glCompileShader(shader);
    GLint compiled = 0;
    glGetShaderiv(shader, GL_COMPILE_STATUS, &compiled);
    *pGood = compiled != 0;
    return shader;
}

} // namespace

bool HasShaders() { return epoxy_gl_version() >= kNeededVersion; }

std::string printShaderInfoLog(unsigned shader) {
    GLint length = 0;
    glGetShaderiv(shader, GL_INFO_LOG_LENGTH, &length);
    if (length < 2) return {};
    std::string log(static_cast<size_t>(length), '\0');
    glGetShaderInfoLog(shader, length, nullptr, log.data());
    log.resize(log.find('\0'));
    return log;
}

std::string printProgramInfoLog(unsigned program) {
    GLint length = 0;
    glGetProgramiv(program, GL_INFO_LOG_LENGTH, &length);
    if (length < 2) return {};
    std::string log(static_cast<size_t>(length), '\0');
    glGetProgramInfoLog(program, length, nullptr, log.data());
    log.resize(log.find('\0'));
    return log;
}

ShaderProgram_cls::~ShaderProgram_cls() {
    if (mProgram != 0 && IsGLContextCurrent()) glDeleteProgram(mProgram);
}

bool ShaderProgram_cls::Make(const std::string& vertex, const std::string& fragment,
                             const std::string& defines, const Attributes& attributes) {
    if (!HasShaders()) {
        mLog = "This OpenGL has no shaders.";
        return false;
    }
    const GLuint vertexShader = CompileShader(GL_VERTEX_SHADER, vertex, defines, &mbVertexCompiled);
    const GLuint fragmentShader = CompileShader(GL_FRAGMENT_SHADER, fragment, defines, &mbFragmentCompiled);
    const GLuint program = glCreateProgram();
    glAttachShader(program, vertexShader);
    glAttachShader(program, fragmentShader);
    for (const auto& [place, name] : attributes)
        glBindAttribLocation(program, place, name);
    GLint linked = 0;
    if (mbVertexCompiled && mbFragmentCompiled) {
        glLinkProgram(program);
        glGetProgramiv(program, GL_LINK_STATUS, &linked);
    }
    mLog = printShaderInfoLog(vertexShader) + printShaderInfoLog(fragmentShader);
    if (linked == 0) mLog += printProgramInfoLog(program);
    glDeleteShader(vertexShader);
    glDeleteShader(fragmentShader);
    if (linked == 0)
        glDeleteProgram(program);
    else
        mProgram = program;
    return IsMade();
}

bool ShaderProgram_cls::HasAttribute(const char* name) const {
    return IsMade() && glGetAttribLocation(mProgram, name) >= 0;
}

int ShaderProgram_cls::GetUniform(const char* name) const {
    return IsMade() ? glGetUniformLocation(mProgram, name) : -1;
}
