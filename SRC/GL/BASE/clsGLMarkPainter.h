// Marks on the screen, through OpenGL's fixed pipeline.
#pragma once

#include "GL/BASE/clsMarkPainter.h"

/// Needs a current OpenGL context with the camera in the model-view matrix, which it multiplies.
class GLMarkPainter_cls final : public MarkPainter_cls {
public:
    /// Lines of the scene are `lineWidth` pixels of the buffer wide; a pixel of the window is `pixel` of
    /// them.
    GLMarkPainter_cls(const double* pProjection, double pixelsAcross, float lineWidth, float pixel);

    bool IsPick() const override { return false; }
    void PushMatrix() override;
    void PopMatrix() override;
    void Multiply(const double* pMatrix) override;
    void GetModelView(double out[16]) const override;
    void SetColor(float r, float g, float b) override;
    void SetDashes(unsigned pattern) override;
    void SetHandle(float width) override;
    void Draw(Shape shape, const Point* pPoints, int number) override;
    void PushName(int) override {}
    void PopName() override {}

protected:
    void DoTranslate(const double* pWay) override;
    void DoRotate(double degrees, const double* pAxis) override;
    void DoScale(const double* pFactors) override;

private:
    void DrawRim(unsigned mode, int number) const;

    float mLineWidth;
    float mPixel;
    float mHandle = 0.0f;
    bool mbCulls = false; ///< outside handles
    float mColor[3] = {1, 1, 1};
};
