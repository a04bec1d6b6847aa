// X errors for the length of a scope. The toolkit ends the process at the first error that the X server
// reports; while OpenGL is brought up, an error only means that there is none.
#pragma once

class XErrorScope_cls {
public:
    /// Errors of earlier requests still go where they belonged; from here on they are counted.
    XErrorScope_cls();
    ~XErrorScope_cls();
    XErrorScope_cls(const XErrorScope_cls&) = delete;
    XErrorScope_cls& operator=(const XErrorScope_cls&) = delete;

    /// Wait for the server's answers to all requests of this scope so far: did it refuse one?
    bool HasFailed() const;

private:
    void (*mpOuterHandler)() = nullptr;
    int mOuterCount = 0; ///< errors of the scope around this one
};
