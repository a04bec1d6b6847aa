#include "GL/VIEW/clsDistortion.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>

#include <epoxy/gl.h>
#include <wx/intl.h>

#include "COMMON/SafeFile.h"
#include "COMMON/TextSplit.h"
#include "COMMON/clsMyVector.h"
#include "GL/BASE/clsGLPerspective.h"
#include "GL/BASE/clsGLState.h"
#include "GL/BASE/clsPositionAndDirection.h"

namespace {

constexpr size_t kLargestFile = 64u << 20; // bytes; a fine mesh has less than one million
constexpr double kSide = 10.0;             // of the square that the mesh is stretched over

/// Lines of a text, with or without carriage returns.
template <class TAKE>
bool ForEachLine(const std::string& text, TAKE take) {
    for (size_t begin = 0; begin < text.size();) {
        size_t end = text.find('\n', begin);
        if (end == std::string::npos) end = text.size();
        std::string line = text.substr(begin, end - begin);
        if (!line.empty() && line.back() == '\r') line.pop_back();
        begin = end + 1;
        if (!take(line)) return false;
    }
    return true;
}

bool IsInRange(const std::vector<int>& indices, size_t count) {
    return std::all_of(indices.begin(), indices.end(),
                       [count](int index) { return index >= 0 && size_t(index) < count; });
}

void Measure(const std::vector<float>& values, double* pLow, double* pHigh) {
    const auto [low, high] = std::minmax_element(values.begin(), values.end());
    *pLow = double(*low);
    *pHigh = double(*high);
}

} // namespace

void Distortion_cls::Clear() { *this = Distortion_cls(); }

bool Distortion_cls::Fail(const wxString& text) {
    Clear();
    mStrProblem = text;
    return false;
}

bool Distortion_cls::ReadWavefrontObject(const wxString& path) {
    std::string text;
    const ReadFileResult result = ReadWholeFile(path, kLargestFile, &text);
    if (result == ReadFileResult::Ok) return ReadText(text, path);
    return Fail(wxString::Format(result == ReadFileResult::TooLarge
                                     ? _("The distortion mesh %s is larger than 64 MB.")
                                     : _("The distortion mesh %s can't be opened."),
                                 path));
}

bool Distortion_cls::ReadText(const std::string& text, const wxString& name) {
    Clear();
    int number = 0;
    const bool bTaken = ForEachLine(text, [this, &number](const std::string& line) {
        ++number;
        return TakeLine(line);
    });
    // The reason alone stands there so far.
    if (!bTaken)
        return Fail(wxString::Format(_("The distortion mesh %s, line %d: %s"), name, number, mStrProblem));
    if (mVFaceVertex.empty()) return Fail(wxString::Format(_("The distortion mesh %s has no faces."), name));
    if (!CheckIndices())
        return Fail(
            wxString::Format(_("The distortion mesh %s: a face names a corner that isn't there."), name));
    if (!CheckGeometry())
        return Fail(wxString::Format(_("The distortion mesh %s has no extent in x and z."), name));
    UpdateTransformedTex(mRotate, mTilt, mAngle);
    mbReady = true;
    return true;
}

bool Distortion_cls::TakeLine(const std::string& line) {
    const std::string keyword = FirstWord(line);
    if (keyword == "f") return TakeFace(line);
    const bool bVertex = keyword == "v";
    const bool bTexture = keyword == "vt";
    if (!bVertex && !bTexture && keyword != "vn") return true;
    float p[3] = {0, 0, 0};
    const int count = std::sscanf(line.c_str(), "%*s %f %f %f", &p[0], &p[1], &p[2]);
    const int needed = bVertex ? 3 : 2;
    if (count < needed || !std::all_of(p, p + 3, [](float x) { return std::isfinite(x); })) {
        mStrProblem =
            wxString::Format(_("\"%s\" wants %d finite numbers."), wxString::FromUTF8(keyword), needed);
        return false;
    }
    if (bVertex) {
        mVX.push_back(p[0]);
        mVY.push_back(p[1]);
        mVZ.push_back(p[2]);
    } else if (bTexture) {
        mVU.push_back(p[0]);
        mVV.push_back(p[1]);
    } else {
        mVNormalX.push_back(p[0]);
        mVNormalY.push_back(p[1]);
    }
    return true;
}

bool Distortion_cls::TakeFace(const std::string& line) {
    int c[12];
    int used = 0;
    const int count =
        std::sscanf(line.c_str(), "%*s %d/%d/%d %d/%d/%d %d/%d/%d %d/%d/%d%n", &c[0], &c[1], &c[2], &c[3],
                    &c[4], &c[5], &c[6], &c[7], &c[8], &c[9], &c[10], &c[11], &used);
    if (count != 12 || line.find_first_not_of(" \t", size_t(used)) != std::string::npos) {
        mStrProblem = _("a face must be a quad of the form \"f v/vt/vn v/vt/vn v/vt/vn v/vt/vn\".");
        return false;
    }
    for (int corner = 0; corner < 4; ++corner) {
        // An index of 0 or below becomes one that no list has.
        const auto place = [&c, corner](int which) { return std::max(c[3 * corner + which], 0) - 1; };
        mVFaceVertex.push_back(place(0));
        mVFaceTexture.push_back(place(1));
        mVFaceNormal.push_back(place(2));
    }
    return true;
}

bool Distortion_cls::CheckIndices() {
    return IsInRange(mVFaceVertex, mVX.size()) && IsInRange(mVFaceTexture, mVU.size()) &&
           IsInRange(mVFaceNormal, mVNormalX.size());
}

bool Distortion_cls::CheckGeometry() {
    Measure(mVX, &mMinMax[0], &mMinMax[1]);
    Measure(mVY, &mMinMax[2], &mMinMax[3]);
    Measure(mVZ, &mMinMax[4], &mMinMax[5]);
    return mMinMax[1] > mMinMax[0] && mMinMax[5] > mMinMax[4];
}

bool Distortion_cls::IsDefault() const { return mRotate == 0.0 && mTilt == 0.0 && mAngle == 180.0; }

void Distortion_cls::UpdateTransformedTex(double rotate, double tilt, double angle) {
    mRotate = rotate;
    mTilt = tilt;
    mAngle = angle;
    mVTransU = mVU;
    mVTransV = mVV;
    const bool bDome = !(tilt == 0.0 && angle == 180.0);
    const double turn = MyVector::ToRadians(rotate);
    for (size_t i = 0; i < mVU.size(); ++i) {
        double x = double(mVU[i]) - 0.5;
        double y = double(mVV[i]) - 0.5;
        if (bDome) {
            const double radius = std::hypot(x, y);
            const double polar = MyVector::ToRadians(radius * angle);
            const double azimuth = std::atan2(y, x);
            double p[3] = {std::sin(polar) * std::cos(azimuth), std::sin(polar) * std::sin(azimuth),
                           std::cos(polar)};
            MyVector::Rotate(p, tilt, 0);
            const double away = MyVector::ToDegrees(std::acos(std::clamp(p[2], -1.0, 1.0))) / 180.0;
            const double around = std::atan2(p[1], p[0]);
            x = away * std::cos(around);
            y = away * std::sin(around);
        }
        mVTransU[i] = float(std::clamp(0.5 + x * std::cos(turn) - y * std::sin(turn), 0.0, 1.0));
        mVTransV[i] = float(std::clamp(0.5 + x * std::sin(turn) + y * std::cos(turn), 0.0, 1.0));
    }
}

void Distortion_cls::GetTexture(size_t corner, bool bTransformed, float out[2]) const {
    const auto index = size_t(mVFaceTexture[corner]);
    out[0] = bTransformed ? mVTransU[index] : mVU[index];
    out[1] = bTransformed ? mVTransV[index] : mVV[index];
}

void Distortion_cls::SetGLSetting(int w, int h) {
    GLPerspective_cls perspective(w, h);
    perspective.mbPerspective = false;
    PositionAndDirection_cls camera;
    const double front[3] = {0, 1, 0};
    const double up[3] = {0, 0, 1};
    camera.Set(0, -kSide, 0);
    camera.Setv(front, up);
    perspective.SetViewportOnGL();
    perspective.SetPerspectiveOnGL(camera);
    perspective.SetModelOrProjectionViewOnGL(camera, GL_MODELVIEW);
}

void Distortion_cls::GLDrawDistortedTexture(double aspect, double zoom, bool bTransformed, int flip) const {
    if (!mbReady) return;
    std::vector<float> vertices; // s, t, x, y, z
    vertices.reserve(mVFaceVertex.size() * 5);
    for (size_t corner = 0; corner < mVFaceVertex.size(); ++corner) {
        const auto place = size_t(mVFaceVertex[corner]);
        float uv[2];
        GetTexture(corner, bTransformed, uv);
        vertices.insert(vertices.end(),
                        {float(0.5 + (double(uv[0]) - 0.5) / zoom), flip == -1 ? 1.0f - uv[1] : uv[1],
                         mVX[place], mVY[place], -mVZ[place]});
    }
    const GLMatrixScope_cls matrix;
    const GLClientScope_cls client;
    const double sideways = kSide * aspect / (mMinMax[1] - mMinMax[0]);
    glScaled(sideways, sideways, kSide / (mMinMax[5] - mMinMax[4]));
    constexpr GLsizei kStride = 5 * sizeof(float);
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_TEXTURE_COORD_ARRAY);
    glTexCoordPointer(2, GL_FLOAT, kStride, vertices.data());
    glVertexPointer(3, GL_FLOAT, kStride, vertices.data() + 2);
    glDrawArrays(GL_QUADS, 0, static_cast<GLsizei>(mVFaceVertex.size()));
}
