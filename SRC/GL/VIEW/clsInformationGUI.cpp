#include "GL/VIEW/clsInformationGUI.h"

#include <wx/intl.h>
#include <wx/panel.h>
#include <wx/sizer.h>

#include "COMMON/UpdateBits.h"
#include "GL/VIEW/clsParticlePanel.h"

InformationGUI_cls::InformationGUI_cls(wxWindow* pParent, Information_cls* pInformation)
    : MultiInputPanel_cls(pParent), mpCInformation(pInformation) {
    NumSpec index;
    index.mMin = 0;
    index.mMax = 2147483647;
    AddNumber(_("Index"), &pInformation->mIndex.mValue, 1, index,
              _("Which particle: its place in the file, from 0"));
    AddChoice(_("Values"), &pInformation->mType.mValue, {_("Interp."), _("Raw Data")},
              _("As drawn at this time, or as in the snapshot's file"));
    for (int axis = 0; axis < 3; ++axis)
        AddStatic(
            wxString(wxUniChar("xyz"[axis])),
            [this, axis] { return wxString::Format("%g", double(mValues.mPos[axis])); },
            _("Position in scaled coordinates; as drawn, where the DataBox has moved it"));
    AddStatic(
        _("type/ID"), [this] { return wxString::Format("%d / %d", mValues.mType, mValues.mID); },
        _("Type and identifier of the particle"));
    AddStatic(
        _("rad./value"),
        [this] { return wxString::Format("%g / %g", double(mValues.mRadius), double(mValues.mValue1)); },
        _("Radius and Value1 of the particle"));
    AddStatic(
        _("velocity"),
        [this] {
            return wxString::Format("%g, %g, %g", double(mValues.mVel[0]), double(mValues.mVel[1]),
                                    double(mValues.mVel[2]));
        },
        _("Velocity of the particle: as read from its file, or the way to the next snapshot for a unit of "
          "time "
          "once that was needed"));
    AddStatic(
        _("Time"),
        [this] {
            if (mValues.mTime == Information_cls::kTimeUnset) return wxString(_("Not Defined"));
            return wxString::Format("%g", mValues.mTime);
        },
        _("Time of these values, in the unit of the data"));
    AddStatic(
        "", [this] { return mValues.mbThere ? wxString() : wxString(_("no such particle")); },
        _("Whether there is a particle of this index at this time"));
    SetUndo(UPDATE_DRAW_OPTIONS); // the handler looks at the particle again
}

void InformationGUI_cls::UpdateInfo(const SnapData_cls* pSnap) {
    Show(mpCInformation->GetDrawnValues(pSnap, mpCInformation->mIndex.mValue));
}

void InformationGUI_cls::UpdateInfo(const PDataBlock_cls* pBlock) {
    Show(Information_cls::GetValues(pBlock, mpCInformation->mIndex.mValue));
}

void InformationGUI_cls::Show(const Information_cls::Values_st& values) {
    if (values == mValues) return;
    mValues = values;
    UpdateValues();
}

void InformationGUI_cls::FuncHookCombobox(int) { mpCInformation->Update(); }

void InformationGUI_cls::FuncHookValue(int, bool) { mpCInformation->OnIndex(); }

wxWindow* Information_cls::InstantiateGUI(wxWindow* pParent) {
    auto* page = new wxPanel(pParent);
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    if (mpCParticles) {
        mpCParticleGUI = new ParticlePanel_cls(page, *mpCParticles, [this] {
            if (mToAnchor) mToAnchor();
        });
        sizer->Add(mpCParticleGUI, 0, wxEXPAND);
    }
    mpCGUI = new InformationGUI_cls(page, this);
    sizer->Add(mpCGUI, 1, wxEXPAND);
    page->SetSizer(sizer);
    return page;
}
