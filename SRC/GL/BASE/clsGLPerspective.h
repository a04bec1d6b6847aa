// The projection of a view: angle, clip planes, the window's shape and the shape that is shown.
#pragma once

class PositionAndDirection_cls;

/// Drawing goes into a square buffer; its middle, cut to the clip shape, is what a window or an image
/// file shows. Matrices are column-major.
class GLPerspective_cls {
public:
    bool mbPerspective = true; ///< false: orthographic
    bool mbFitWidth = false;   ///< orthographic: the anchor distance spans the width, not the height
    double mAngle;             ///< degrees, of the picture's height
    double mNear, mFar;        ///< distances of the clip planes
    int mWindowW, mWindowH;    ///< pixels of the buffer
    int mClipW, mClipH;        ///< pixels of the picture, of which only the ratio counts

    explicit GLPerspective_cls(int width = 640, int height = 480, double angle = 35, double nearPlane = 0.03,
                               double farPlane = 5000);

    void SetWindowSize(int width, int height);
    void SetClipSize(int width, int height);
    double GetAspectRatio() const;     ///< of the window, width / height
    double GetClipAspectRatio() const; ///< of the picture, width / height

    /// The angle of the square buffer in degrees: widened where the picture is wider than high.
    double GetSquareAngle() const;
    /// How far an orthographic view of this width (the eye's distance from the anchor) reaches before and
    /// behind the eye: 1000, or the far plane where that is nearer than 1; twice the width where that would
    /// cut the anchor.
    static double GetOrthoDepth(double width, double farPlane);
    void GetProjectionMatrix(const PositionAndDirection_cls& camera, double out[16]) const;
    static void GetModelViewMatrix(const PositionAndDirection_cls& camera, double out[16]);
    /// Where a point lies in the square buffer, each of x, y and depth -1 to 1 inside. False, with
    /// `win` as it was, for a point in or behind the plane of the eye.
    bool Project(const PositionAndDirection_cls& camera, const double p[3], double win[3]) const;

    // These need a current OpenGL context.

    /// Viewport of the whole window.
    void SetViewportOnGL() const;
    /// Load the projection matrix; the matrix mode is GL_MODELVIEW afterwards.
    void SetPerspectiveOnGL(const PositionAndDirection_cls& camera) const;
    /// Load the view of a camera into GL_MODELVIEW or GL_PROJECTION, which stays the matrix mode.
    void SetModelOrProjectionViewOnGL(const PositionAndDirection_cls& camera, unsigned matrixMode) const;
    /// Draw in pixels from the lower left corner until Pop2DMatrix. The viewport is not put back.
    static void Push2DMatrix(int width, int height);
    static void Pop2DMatrix();
};
