#include "GL/VIEW/clsParticlePanel.h"

#include <wx/intl.h>

#include "COMMON/UpdateBits.h"
#include "GL/VIEW/clsParticleWatch.h"

ParticlePanel_cls::ParticlePanel_cls(wxWindow* pParent, ParticleWatch_cls& particles,
                                     std::function<void()> toAnchor)
    : MultiInputPanel_cls(pParent), mParticles(particles), mToAnchor(std::move(toAnchor)) {
    AddStatic(
        _("Picked"), [this] { return mParticles.IsPicked() ? mParticles.GetText() : wxString(_("none")); },
        _("The picked particle, by its ID or, where the file has none, its place in it. Pick one with Ctrl "
          "and a "
          "click in a view; Escape ends it"));
    mMarks =
        AddCheck(_("Anchor"), &mParticles.mbFollow, _("Follow"),
                 _("The anchor goes with the particle through the film; where the particle is missing, it "
                   "stays where it was"));
    AddCheckTo(mMarks, &mParticles.mbTrail, _("Trail"),
               _("The particle's way over the work area is a line in the scene, in pictures and films, too"));
    mLabel = AddCheck(_("Label"), &mParticles.mbLabel, _("In Pictures"),
                      _("Pictures and films that are written show the ring and the name, too"));
    mButton =
        AddButton("", _("Camera to Anchor"),
                  _("The active view's camera turns around the anchor from now on; one that follows the "
                    "camera path looks at it; one along an axis comes there once"));
    SetUndo(UPDATE_GL | UPDATE_DRAW_OPTIONS);
    UpdateParticle();
}

void ParticlePanel_cls::UpdateParticle() {
    UpdateValues();
    mTicks = mParticles.CountTicks();
    for (const int row : {mMarks, mLabel})
        EnableRow(row, mParticles.IsPicked());
}

void ParticlePanel_cls::FuncHookClick(int row) {
    if (row != mButton)
        mParticles.OnTick(mTicks == 0);
    else if (mToAnchor)
        mToAnchor();
}
