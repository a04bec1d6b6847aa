// Sticks between particles to OpenGL, as lines or as cylinders, gathered into batches in the order of the
// list. Their light is that of the fixed pipeline whatever the particles' shader is.
#pragma once

#include <vector>

class PovObjectSticks_cls;
class ViewScale_cls;
struct StickParticles_st;

enum StickType : unsigned { STICK_LINE = 0, STICK_CYLINDER = 1 };

struct StickStyle_st {
    unsigned mType = STICK_LINE; ///< a StickType; others aren't drawn
    float mAlpha = 1.0f;         ///< times the weight of each stick
    float mRadius = 0.5f;        ///< of cylinders, which have open ends
    int mWidth = 10;             ///< of lines, pixels
    int mShininess = 10;         ///< of cylinders, 0 to 128
};

class GLSticks_cls {
public:
    /// Draw a list that fits the particles (others draw nothing) in the copy of the data whose place the
    /// model-view matrix has, and which has neighbours in the directions of `copyMask`. The depth state is
    /// the caller's; all state is as before afterwards, but no shader is in use. A cylinder along the z axis
    /// has no side to start from and isn't drawn; neither are sticks with an end that is no number or isn't
    /// filled. False: told to stop.
    bool Draw(const PovObjectSticks_cls& sticks, const StickParticles_st& particles,
              const StickStyle_st& style, unsigned copyMask);

private:
    // Instances: a cylinder repeated at many places; Fixed: its corners one by one, the same with the fixed
    // pipeline alone.
    enum class Form { Lines, Instances, Fixed };
    struct End_st;

    void Begin(const StickStyle_st& style);
    void End();
    int GetCapacity() const;
    bool Add(const float* pFirst, const float* pSecond, float weight, const StickStyle_st& style);
    void AddFixed(const float* pFirst, const float* pSecond, const float* pAxis, const float* pSide,
                  const float* pColor, float radius);
    void Flush();
    float GetCost(const ViewScale_cls& view, const float* pFirst, const float* pSecond,
                  const StickStyle_st& style) const;

    std::vector<float> mVBatch;
    Form mForm = Form::Lines;
    int mCount = 0;         ///< sticks gathered
    float mMinAlpha = 1.0f; ///< of what is gathered
};
