// Draws connections between pairs of particles: bonds, links.
#pragma once

#include <functional>
#include <string>

#include "BOND/clsBondHistory.h"
#include "BOND/clsPovObjectSticks.h"
#include "FILTER/clsFilterBase.h"
#include "FILTER/clsFilterData.h"
#include "FILTER/clsSceneObjTexture.h"
#include "GL/DRAW/clsGLSticks.h"

class PovText_cls;

class FilterStickData_cls final : public FilterData_cls {
public:
    enum Type : unsigned { LINE = 0, CYLINDER = 1 };
    enum Source : unsigned { LOAD_FILE = 0, CALCULATE = 1 };

    FilterStickData_cls();
    std::vector<ConfItemSTR_cls*> GetPaths() override { return {&mCStickPath}; }
    SceneObjTexture_cls* GetTexture() override { return &mCTexture; }
    /// All settings of another one, its name too.
    void CopySettings(FilterStickData_cls& other);

    ConfItemUINT_cls mCStickType;
    ConfItemFLOAT_cls mCStickRadius; ///< of a cylinder
    ConfItemINT_cls mCStickWidth;    ///< of a line, pixels
    ConfItemUINT_cls mCCalcType;
    ConfItemSTR_cls mCStickPath; ///< a pattern that gets the frame's number
    ConfItemUINT_cls mCCritType; ///< the rule of distances
    ConfItemFLOAT_cls mCCritA;
    ConfItemFLOAT_cls mCCritB;
    ConfItemUINT_cls mCSpecType; ///< 0 any types, 1 A with B
    ConfItemINT_cls mCSpecA;
    ConfItemINT_cls mCSpecB;
    SceneObjTexture_cls mCTexture;
    ConfItemBOOL_cls mCAcross;     ///< through the faces of the periodic box, too
    ConfItemFLOAT_cls mCKeepUntil; ///< with the rule "Step": bonds break at this distance; 0: at A
};

class FilterStick_cls final : public FilterOf_cls<FilterStickData_cls, FILTER_STICK> {
public:
    void OnRemoved() override;
    bool HasBrokenFile() const override;

    /// Once a picture, before any of its copies: the sticks of snapshot `frame`, whose particles these are.
    /// `filmFrame`: the film's whole frame, by which kept bonds are followed. False: they aren't known there
    /// yet, and there are no sticks.
    bool Prepare(const StickParticles_st& particles, int frame, int filmFrame);
    /// What was prepared, in a copy that has neighbours in the directions of `copyMask`
    /// (PovObjectSticks_cls). Needs a current OpenGL context with the copy's place in the model-view matrix.
    /// False: told to stop.
    bool GLDrawStick(const StickParticles_st& particles, unsigned copyMask);

    // Bonds that outlast the distance at which they form; BondFollower_cls hands the frames over.
    bool KeepsBonds() const;
    /// The frame that is to be handed over next so that the bonds of `frame` become known, those from
    /// `firstFrame` on being followed; -1: none.
    int GetNeededFrame(int firstFrame, int frame);
    /// Particles of a needed frame; `isStopped` as of PairFinder_cls.
    void AddFrame(int frame, const StickParticles_st& particles, const std::function<bool()>& isStopped);
    void ForgetBonds() { mHistory.Clear(); }
    // Of a scene for POV-Ray: the macro of a stick, and what was prepared
    // (PovObjectSticks_cls::AppendPovSticks).
    std::string GetStrPovCylinderMacro(const PovText_cls& pov) const;
    void GetStrPovSticksRef(std::string* pText, const float (*pPos)[3], int step, const PovText_cls& pov,
                            bool bAgain) const;
    /// What was prepared last.
    const PovObjectSticks_cls& GetSticks() const { return mSticks; }

private:
    StickRule_st GetRule() const;
    StickCell_st GetCell() const;
    wxString MakeList(const StickParticles_st& particles, int frame, int filmFrame);
    void TellIfAny(const wxString& told) const;

    PovObjectSticks_cls mSticks;
    BondHistory_cls mHistory{size_t(64) << 20}; ///< less than its own measure: many filters may have one
    GLSticks_cls mGLSticks;
    bool mbBrokenFile = false;
};
