// What all views share: settings that files keep once, the anchors, and GL objects, which every view's
// context knows. One owner makes it before the first view and deletes it when none paints any more.
#pragma once

#include <functional>
#include <istream>
#include <memory>
#include <optional>

#include <wx/string.h>

#include "CONFITEM/clsConfItem.h"
#include "CONFITEM/clsConfItemList.h"
#include "GL/VIEW/clsDragThinning.h"

class Anaglyph_cls;
class ColorCurve_cls;
class Distortion_cls;
class DrawClrLegend_cls;
class DrawTimeIndex_cls;
class Exposure_cls;
class FBO_cls;
class FishEye_cls;
class GLTexture_cls;
class ImgSequence_cls;
class Information_cls;
class Overlay_cls;
class ParticleWatch_cls;
class StereoGram_cls;

class SharedView_cls {
public:
    static const int msAFBOSize[5]; ///< 256 to 4096

    /// The settings of the three are somebody else's and outlive this.
    SharedView_cls(Overlay_cls* pOverlay, Exposure_cls* pExposure, Information_cls* pInformation);
    ~SharedView_cls();
    SharedView_cls(const SharedView_cls&) = delete;
    SharedView_cls& operator=(const SharedView_cls&) = delete;

    wxString SerializeStaticMember();
    void ReadStrLineStaticMember(std::wistream& stream, const wxString& line);
    /// Pixels of a face's side.
    int GetFBOSize() const;
    /// Exposure and mask, with the first view that has a context; needs it to be current.
    void InitializeGL();
    /// Made when it is first drawn; null before InitializeGL.
    const GLTexture_cls* GetFisheyeGrid();
    /// The clear colour: behind the scene (0) or around the picture (1), unless a grey stands for both.
    void SetGLBGColor(int which, const std::optional<float>& plainGrey);

    bool mbFilm = false;         ///< all pictures from now on are those of one film
    bool msbKeepPicture = false; ///< read every picture back before it is shown, for tests; slow
    ConfItemUINT_cls msCFBOSizeIndex;
    ConfItemFLOAT_cls msCLineWidth;
    ConfItemUINT_cls msCTagFontIndex;
    ConfItemList_cls msCConfListStatic;
    std::unique_ptr<ColorCurve_cls> mspCClrCurveBG;
    std::unique_ptr<ColorCurve_cls> mspCClrCurveOut;
    std::unique_ptr<ColorCurve_cls> mspCClrCurveTag;
    DragThinning_cls mThinning;
    /// Set by the hub; an empty one does nothing. A click found an item, known by this name
    /// (ViewPick_cls::FindObject): it becomes the selected one.
    std::function<void(int name)> mOnPicked;
    /// What the pointer is over, or what a hand in a view does; empty: nothing.
    std::function<void(const wxString& text)> mOnPointed;
    double msCAnchorPos[3] = {0, 0, 0};      ///< that of free and linked views
    double msCAnchorPosOrtho[3] = {0, 0, 0}; ///< that of views along the axes

    // Members go in the reverse order of their making: GL objects of views' pictures first.
    std::unique_ptr<GLTexture_cls> mspCMask; ///< null until the first view has a context
    std::unique_ptr<DrawTimeIndex_cls> mspCDrawTimeIndex;
    std::unique_ptr<DrawClrLegend_cls> mspCDrawClrLegend;
    std::unique_ptr<FishEye_cls> mspCFishEyeCtrl;
    std::unique_ptr<Distortion_cls> mspCDistortion;
    std::unique_ptr<FBO_cls> mspCStage; ///< one finished picture before it is added to others of an image
    std::unique_ptr<Anaglyph_cls> mspCAnaglyph;
    std::unique_ptr<FBO_cls> mspCLeftEye[4]; ///< waits to be mixed with the other: by GatherTarget
    std::unique_ptr<FBO_cls> mspCDome;       ///< the dome picture; kept for its memory
    Exposure_cls* mspCExposureLink;
    Information_cls* mspCInformationLink;
    ParticleWatch_cls* mspCParticles = nullptr;   ///< null: no particle can be picked
    StereoGram_cls* mspCStereogramLink = nullptr; ///< null: every view has one eye
    ImgSequence_cls* mspCImgSeqLinked =
        nullptr; ///< told the active window's size; null before the first dialog

private:
    std::unique_ptr<GLTexture_cls> mFisheyeGrid;
};
