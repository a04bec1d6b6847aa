// The pass that counts shadow volumes in the stencil: afterwards it isn't zero where the first thing that a
// pixel shows lies in at least one of them.
//
// Seven bits count; what enters a volume counts up and what leaves it down, whatever the order, as counters
// wrap. The eighth bit keeps what was found so far, as often as more volumes than seven bits can tell might
// cover a pixel. Counted is what lies behind the first thing of a pixel, so the eye may be in any volume.
#pragma once

#include "GL/DRAW/clsStencilCover.h"

class ShadowStencil_cls {
public:
    /// From here on volumes are drawn: into the stencil alone or, with `bShow`, so that they can be seen.
    /// Needs a current context and the depths of what is in the picture. No two may be there at a time.
    explicit ShadowStencil_cls(bool bShow);
    /// Everything as it was, but for the stencil's content.
    ~ShadowStencil_cls();
    ShadowStencil_cls(const ShadowStencil_cls&) = delete;
    ShadowStencil_cls& operator=(const ShadowStencil_cls&) = delete;

    /// The one that is there, or null.
    static ShadowStencil_cls* Current() { return mspCurrent; }
    bool IsShown() const { return mbShown; }
    /// To be told of each volume (StencilCover_cls::Add). True: what was drawn so far must be folded.
    bool Count(float left, float bottom, float right, float top) {
        return mCover.Add(left, bottom, right, top);
    }
    bool IsClamped() const { return mbClamped; } ///< OpenGL keeps what lies beyond the far plane
    /// Keep what the volumes drawn so far cover, and count on from zero. The program in use stays.
    void Fold();
    /// A texture of the depths of what is in the picture, as large as the viewport; bound to the unit in use.
    void BindDepths();
    /// What is drawn in this scope marks the pixels it fills as in shadow.
    class MarkScope_cls {
    public:
        MarkScope_cls();
        ~MarkScope_cls();
        MarkScope_cls(const MarkScope_cls&) = delete;
        MarkScope_cls& operator=(const MarkScope_cls&) = delete;
    };

    static constexpr unsigned kFound = 0x80; ///< the bit of a pixel that lies in shadow
    static bool msbClamps;                   ///< does it use OpenGL's depth clamp where that is there?

    /// Later drawing reaches pixels in shadow alone.
    static void SelectShadowed();
    /// Pixels that are selected get this colour and, with `bFar`, nothing in front of it.
    static void Fill(const float* pColor, bool bFar);

private:
    static ShadowStencil_cls* mspCurrent;

    bool mbShown;
    bool mbClamped = false;
    unsigned mDepths = 0; ///< GL texture
    StencilCover_cls mCover;
};
