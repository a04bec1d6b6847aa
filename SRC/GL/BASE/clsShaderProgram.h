// A GLSL program made of two source texts.
#pragma once

#include <string>
#include <utility>
#include <vector>

class ShaderProgram_cls {
public:
    ShaderProgram_cls() = default;
    ~ShaderProgram_cls();
    ShaderProgram_cls(const ShaderProgram_cls&) = delete;
    ShaderProgram_cls& operator=(const ShaderProgram_cls&) = delete;

    /// Vertex attributes of a program and where they stand.
    using Attributes = std::vector<std::pair<unsigned, const char*>>;

    /// Compile and link, with the lines of `defines` behind the version. False on failure, and then the
    /// log tells why.
    bool Make(const std::string& vertex, const std::string& fragment, const std::string& defines = "",
              const Attributes& attributes = {});
    bool IsMade() const { return mProgram != 0; }
    bool HasAttribute(const char* name) const;
    int GetUniform(const char* name) const; ///< -1 when the program has no use for it
    const std::string& GetLog() const { return mLog; }

    unsigned mProgram = 0; ///< GL name
    bool mbVertexCompiled = false;
    bool mbFragmentCompiled = false;

private:
    std::string mLog;
};

/// GLSL of this OpenGL: can programs be used at all?
bool HasShaders();

std::string printShaderInfoLog(unsigned shader);
std::string printProgramInfoLog(unsigned program);
