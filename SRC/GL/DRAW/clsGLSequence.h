// Draws one file sequence: owns the four attribute sets and the draw calls' state, and keeps the one
// draw-time snapshot. UI thread; drawing with a current context.
#pragma once

#include <memory>
#include <vector>

#include "PDATA/ParticleArrays.h"
#include "PDATA/clsSequenceDrawing.h"

class DrawOption_cls;
class GLAttribute_cls;
class GLDrawData_cls;
class PDataSnap_cls;
class PositionAndDirection_cls;
struct FitCloud_st;

class GLSequence_cls : public SequenceDrawing_cls {
public:
    static constexpr int kAttributeNumber = kParticleClasses;

    GLSequence_cls(PDataSequence_cls& sequence, DrawOption_cls* pDrawOption);
    ~GLSequence_cls() override;

    /// For the store: each of its sequences gets one of these.
    static MakeSequenceDrawing GetMaker(DrawOption_cls* pDrawOption);
    /// What draws a sequence of a store that was made with GetMaker.
    static GLSequence_cls& Of(const PDataSequence_cls& sequence);

    /// Camera for sorting and billboards, and what moves the data (GLDrawData_cls::SetCameraPos).
    void SetCameraInfo(const PositionAndDirection_cls& camera, const double* pPlace = nullptr);
    /// Draw snapshot `frame` (the last one when it lies past the end), `dt` behind its time. `face` 0 sorts.
    /// Lights: GLDrawData_cls::SetLightSourceInfo. With `bShadowPass` only their shadows.
    void GLDrawData(int face, int frame, double dt, int lightCount, const float* pLight, bool bShadowPass);
    /// The draw alone: `dt` behind the time of `snap`, which may be of no sequence. Rebuilds the draw-time
    /// snapshot when it no longer fits.
    static void DrawSnapshot(int face, PDataSnap_cls& snap, GLDrawData_cls* pDraw,
                             GLAttribute_cls** ppAttribute, double dt);
    void RefreshGLAttribTex();
    /// What GLDrawData draws: as it was drawn, or where nothing was yet, at the snapshot's own time; filters
    /// as they are at double index `time`. Empty while the snapshot isn't loaded; refers to its arrays, which
    /// stand until the next event.
    FitCloud_st GetDrawnCloud(int frame, double dt, double time) const;
    /// Numbers of the particles that the filters keep, `dt` behind the time of snapshot `frame`, of those
    /// that downsizing leaves; filters at double index `time`, whatever the order of drawing. Null: they keep
    /// all.
    std::shared_ptr<const std::vector<int>> GetKept(int frame, double dt, double time) const;

    bool AreSlopesNeeded() const override;
    int GetThinning() const override;
    void LetGo(PDataBlock_cls& block) override;
    wxString Serialize() const override;
    void ReadStrLine(std::wistream& stream, const wxString& line) override;

    GLDrawData_cls* mpCGLDrawData;                     ///< owned
    GLAttribute_cls* mpCGLAttribute[kAttributeNumber]; ///< owned

private:
    PDataSequence_cls& mSequence; ///< owner
    wxString mStrPrefix;          ///< of the attributes' keys
};
