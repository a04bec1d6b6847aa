// What marks, frames and handles in the views are drawn by: on the screen, or for a click that asks what lies
// under it. Who draws a mark says it once, and what is seen is what is hit.
#pragma once

#include <array>

/// Coordinates are those of the scene, moved by what the matrix operations have multiplied so far, the last
/// one first. The camera stands below them all. UI thread only.
class MarkPainter_cls {
public:
    enum class Shape { Points, Lines, Strip, Loop, Fan };
    using Point = std::array<float, 3>;

    virtual ~MarkPainter_cls() = default;
    MarkPainter_cls& operator=(const MarkPainter_cls&) = delete;

    /// Nothing is drawn: a click is looking for what is under it.
    virtual bool IsPick() const = 0;
    virtual void PushMatrix() = 0;
    virtual void PopMatrix() = 0;
    virtual void Multiply(const double* pMatrix) = 0; ///< 4 by 4, column by column
    void Translate(const double* pWay);
    void Rotate(double degrees, int axis); ///< about x, y or z; right-handed
    void Scale(const double* pFactors);
    /// To the eye's coordinates, the camera included.
    virtual void GetModelView(double out[16]) const = 0;

    virtual void SetColor(float r, float g, float b) = 0;
    /// A pattern of 16 steps of a line's pixels; 0xFFFF is a whole line.
    virtual void SetDashes(unsigned pattern) = 0;
    /// Lines of what follows are this many pixels of the window wide, with a light rim that parts them from
    /// what is dark behind; 0: as the lines of the scene are.
    virtual void SetHandle(float width) = 0;
    virtual void Draw(Shape shape, const Point* pPoints, int number) = 0;

    /// What is drawn until PopName is known to clicks by this number, within that of the names around it.
    virtual void PushName(int name) = 0;
    virtual void PopName() = 0;

    /// What a pixel of the window (of a screen with twice the density: two) is there in units of the scene,
    /// for things that keep their size on the screen; 0 behind the eye. Before Scale.
    double GetPixel(const double place[3]) const;
    /// Distance from the plane of the eye; negative behind it.
    double GetDepth(const double place[3]) const;
    /// Are handles of the selected item, and what the pointer brings about, to be seen? Not in pictures that
    /// are written.
    bool mbHandles = true;

protected:
    /// `pProjection` as OpenGL has it. `pixelsAcross` of the window are as wide as the projection.
    MarkPainter_cls(const double* pProjection, double pixelsAcross);
    MarkPainter_cls(const MarkPainter_cls&) = default;
    virtual void DoTranslate(const double* pWay) = 0;
    virtual void DoRotate(double degrees, const double* pAxis) = 0;
    virtual void DoScale(const double* pFactors) = 0;

    double mProjection[16];
    double mPixelsAcross;
};

/// A matrix of its own.
class MarkScope_cls {
public:
    explicit MarkScope_cls(MarkPainter_cls& painter) : mPainter(painter) { mPainter.PushMatrix(); }
    ~MarkScope_cls() { mPainter.PopMatrix(); }
    MarkScope_cls(const MarkScope_cls&) = delete;
    MarkScope_cls& operator=(const MarkScope_cls&) = delete;

private:
    MarkPainter_cls& mPainter;
};

/// A name that clicks know.
class MarkName_cls {
public:
    MarkName_cls(MarkPainter_cls& painter, int name) : mPainter(painter) { mPainter.PushName(name); }
    ~MarkName_cls() { mPainter.PopName(); }
    MarkName_cls(const MarkName_cls&) = delete;
    MarkName_cls& operator=(const MarkName_cls&) = delete;

private:
    MarkPainter_cls& mPainter;
};
