#include "SCENE/clsAnchorPath.h"

#include <epoxy/gl.h>

namespace {
const char* const kMarker = "---AnchorPath";
}

AnchorPath_cls::AnchorPath_cls() : SceneObj_cls("Anchor", true, true) {
    mCConfItemListBase.Add(&mCVisible, "AnchorVisible=", "1");
    const DirectEdit_cls direct;
    SetInitValueTrans(0, 0, 0);
    SetInitValueRot(0, 0, 0);
    SetInitValueScale(1, 1, 1);
}

void AnchorPath_cls::GLDraw(bool bPick) const {
    static const Position_cls kOrigin;
    bool bMoves = false;
    for (const Parameters_cls& param : mpCTranslate->mVParams)
        bMoves |= param.mbTimeDepend.mValue;
    glDisable(GL_LIGHTING);
    glDisable(GL_TEXTURE_2D);
    const bool bShown = bMoves || mbSelected || mCCurrent.Position_cls::operator!=(kOrigin);
    // The mark of the anchor comes here, and the handles of a selected one.
    if (!bPick && bShown) GLDrawPath();
}

wxString AnchorPath_cls::Serialize() { return SerializeBlock(kMarker, {mpCTranslate}); }

void AnchorPath_cls::ReadStrLine(std::wistream& stream, const wxString& line) {
    ReadBlock(stream, line, kMarker, {mpCTranslate});
}
