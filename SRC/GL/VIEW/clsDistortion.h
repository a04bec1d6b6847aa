// A mesh from a file that warps the dome picture, for a projector that shines on a mirror.
//
// The mesh stands in the plane of x and z and is stretched over the whole picture; its texture coordinates
// say which place of the dome picture is seen there.
#pragma once

#include <string>
#include <vector>

#include <wx/string.h>

class Distortion_cls {
public:
    /// Read a mesh of quads in the Wavefront text form: lines "v", "vt", "vn" and "f" with four corners of
    /// three numbers each, counted from 1; other lines are passed over. A file that isn't there leaves the
    /// object unready without a word. False when there is no usable mesh; GetProblem says why.
    bool ReadWavefrontObject(const wxString& path);
    /// The same from the file's text; `name` is what messages call it.
    bool ReadText(const std::string& text, const wxString& name);
    bool IsReady() const { return mbReady; }
    /// What is wrong with the file, with its line; empty when it is read.
    wxString GetProblem() const { return mStrProblem; }

    /// No turn and no tilt of a half sphere.
    bool IsDefault() const;
    /// Look elsewhere on the dome: the mesh's texture points stand on a dome of `angle` degrees from rim to
    /// rim, which is tilted by `tilt` about the picture's horizontal axis and then turned by `rotate`; all
    /// degrees. The points stay inside the picture.
    void UpdateTransformedTex(double rotate, double tilt, double angle);

    /// Look at the whole mesh in a target of w by h pixels. With GLDrawDistortedTexture needs a context.
    static void SetGLSetting(int w, int h);
    /// The bound texture through the mesh; nothing while there is none. `zoom` above 1 shows the middle
    /// larger, `flip` -1 turns the texture upside down, `bTransformed` takes the points of
    /// UpdateTransformedTex.
    void GLDrawDistortedTexture(double aspect, double zoom, bool bTransformed, int flip) const;

    /// Ends of x, y, z, low and high in turn.
    const double* GetMinMax() const { return mMinMax; }
    size_t GetQuadCount() const { return mVFaceVertex.size() / 4; }
    /// Texture point of a corner, 0 to 1; before or after UpdateTransformedTex.
    void GetTexture(size_t corner, bool bTransformed, float out[2]) const;

private:
    void Clear();
    bool Fail(const wxString& text);
    bool TakeLine(const std::string& line);
    bool TakeFace(const std::string& line);
    bool CheckIndices();
    bool CheckGeometry();

    bool mbReady = false;
    wxString mStrProblem;
    double mMinMax[6] = {0, 0, 0, 0, 0, 0};
    double mRotate = 0.0;
    double mTilt = 0.0;
    double mAngle = 180.0;
    std::vector<float> mVX, mVY, mVZ;
    std::vector<float> mVU, mVV;
    std::vector<float> mVTransU, mVTransV;
    std::vector<float> mVNormalX, mVNormalY;
    std::vector<int> mVFaceVertex, mVFaceTexture, mVFaceNormal; ///< from 0, four a quad
};
