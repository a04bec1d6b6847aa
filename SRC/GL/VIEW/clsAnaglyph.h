// Mixes the pictures of two eyes for red-cyan glasses (GL/anaglyph.frag has the numbers and their source).
#pragma once

#include <memory>

class FBO_cls;
class ShaderProgram_cls;

class Anaglyph_cls {
public:
    Anaglyph_cls();
    ~Anaglyph_cls();

    /// Make the program, once, with a current context. False without its files, or with broken ones, which
    /// the user is told.
    bool Initialize();
    /// Both eyes over the whole of the present viewport, in the state that is set.
    void Draw(const FBO_cls& left, const FBO_cls& right) const;

private:
    bool mbInitialized = false;
    std::unique_ptr<ShaderProgram_cls> mpCProgram;
};
