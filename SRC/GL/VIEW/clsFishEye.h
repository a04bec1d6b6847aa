// Views wider than one projection can show: four square faces of 90 degrees each, put together as a dome
// picture (fisheye) or as a strip around the eye (panorama).
//
// Faces 0 and 1 look 45 degrees to the left and to the right. Faces 2 and 3 look straight up and down for a
// dome, and backward over the left and the right shoulder for a strip.
#pragma once

#include <memory>
#include <vector>

#include <epoxy/gl.h>

class FBO_cls;
class GLPerspective_cls;
class PositionAndDirection_cls;
struct ShownPart_st;

class FishEye_cls {
public:
    static constexpr int kFaces = 4;
    enum Mode { MODE_FLAT = 0, MODE_FISHEYE = 1, MODE_PANORAMA = 2 };

    /// Where a point of a face's texture goes: in the picture's middle is the origin, and 1 is the side of
    /// the dome picture, or the width of the strip.
    struct Vertex_st {
        float mTexture[2];
        float mPlace[2];
    };

    FishEye_cls();
    ~FishEye_cls();
    FishEye_cls(const FishEye_cls&) = delete;
    FishEye_cls& operator=(const FishEye_cls&) = delete;

    /// Angles that a dome or a strip can be made for; degrees.
    static double LimitAngle(double angle);
    static int GetFaceNumber(int mode) { return mode == MODE_FLAT ? 1 : kFaces; }
    /// Turn a camera from the view's direction to that of a face.
    static void TurnToFace(int face, int mode, PositionAndDirection_cls* pCamera);
    /// Strips of quads that map a face to the dome picture of `angle` degrees from rim to rim, or to the
    /// strip, whose width shows twice the angle. Each strip has `GetStripLength(mode)` vertices.
    static std::vector<Vertex_st> MakeFaceMesh(int face, int mode, double angle);
    static int GetStripLength(int mode);
    /// Half the height of the strip that all columns fill.
    static double GetStripHalfHeight(double angle);

    // One paint: Begin, then for each face FH (the buffer is the target and the projection is set) and LH
    // (the buffer is finished), then the gathering, then End. All need a current context.

    /// Faces of `size` pixels, of which `shown` is looked at; `clipW` and `clipH` are the picture's shape in
    /// a flat view.
    void MakeFishEyeBegin(int clipW, int clipH, int size, const ShownPart_st& shown);
    /// The camera is turned to the face; the perspective becomes the face's.
    void MakeFishEyeProcessFH(int face, PositionAndDirection_cls* pCamera, GLPerspective_cls* pPerspective,
                              int mode);
    void MakeFishEyeProcessLH(int face);
    /// Without `bKeep` only the first face's memory is kept for the next paint.
    void MakeFishEyeEnd(bool bKeep);

    /// The dome picture into the present target, w by h pixels of it, as a disc in its middle. Outside the
    /// disc, and where no face reaches, there is the clear colour.
    void GatherFishEye(double angle, bool bAdditive, int w, int h);
    /// The strip across the whole width of the present target.
    void GatherCylinder(double angle, bool bAdditive, int w, int h);

    double GetClipAspectRatio() const { return double(mClipW) / mClipH; } ///< of the picture
    const FBO_cls* GetFace(int face) const { return mpCFBO[face].get(); }
    /// How often the dome's lists were made; for tests.
    int GetListCount() const { return mListCount; }

private:
    void GatherGLSetting(bool bAdditive, int w, int h);
    void MakeLists(int mode, double angle);
    void DrawFaces(int mode, double angle);
    void FillWithBlack();

    int mSize = 2048; ///< of the faces
    int mClipW = 1;
    int mClipH = 1;
    std::unique_ptr<FBO_cls> mpCFBO[kFaces];
    double mAngle[2] = {-1.0, -1.0}; ///< for which the lists were made, dome and strip
    GLuint mDList[2] = {0, 0};       ///< first of four, dome and strip
    int mListCount = 0;
};
