// Particles in a cube before a camera, drawn into a buffer: the ground of benchmarks that draw.
#pragma once

#include <functional>
#include <memory>

#include "BenchTimes.h"
#include "GL/BASE/clsFBO.h"
#include "GL/DRAW/clsDrawOption.h"
#include "GL/DRAW/clsGLDrawData.h"
#include "PDATA/clsPDataSnap.h"

class GLAttribute_cls;
class PDataBlock_cls;
class SnapData_cls;

class BenchScene_cls {
public:
    static constexpr int kSize = 2048;  ///< pixels of the buffer
    static constexpr double kEye = 4.0; ///< the camera's distance from the middle of the cube
    static constexpr double kAngle = 35.0;
    static constexpr float kPixel = 0.00125f; ///< about one pixel of the buffer, where the particles are

    /// Seconds.
    struct Took_st {
        double wall, work; ///< work: of all threads
    };

protected:
    /// The cube reaches from -1 to 1. Sets what is particular of a particle; `random` is from 0 to 1.
    using Fill = std::function<void(PDataBlock_cls& block, int i, float random)>;
    BenchScene_cls(int number, const Fill& fill);
    ~BenchScene_cls();
    BenchScene_cls(const BenchScene_cls&) = delete;
    BenchScene_cls& operator=(const BenchScene_cls&) = delete;

    /// Once the attributes are set.
    void MakeDrawn();
    /// Camera, buffer and depth test stand; `prepare` isn't counted.
    Took_st Time(const std::function<void()>& prepare, const std::function<void()>& draw);

    DrawOption_cls mOption;
    std::unique_ptr<GLAttribute_cls> mAttribute[4];
    GLAttribute_cls* mpAttribute[4] = {};
    PDataSnap_cls mSnap;
    std::unique_ptr<SnapData_cls> mDrawn;
    GLDrawData_cls mDraw;

private:
    FBO_cls mTarget;
};
