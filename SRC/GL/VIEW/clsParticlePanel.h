// What goes with the picked particle, below its values on the page "Info".
#pragma once

#include "WIDGET/clsMultiInputPanel.h"

class ParticleWatch_cls;

class ParticlePanel_cls : public MultiInputPanel_cls {
public:
    /// `toAnchor` is what the button does.
    ParticlePanel_cls(wxWindow* pParent, ParticleWatch_cls& particles, std::function<void()> toAnchor);
    /// Show what is picked now.
    void UpdateParticle();

protected:
    void FuncHookClick(int row) override;

private:
    ParticleWatch_cls& mParticles;
    std::function<void()> mToAnchor;
    int mTicks = 0; ///< as last seen
    int mMarks = 0; ///< rows
    int mLabel = 0;
    int mButton = 0;
};
