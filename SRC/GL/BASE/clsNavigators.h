// What a view shows of itself over its picture: how hands move items, as three buttons, and where the axes
// point.
#pragma once

#include <array>
#include <memory>

class FBO_cls;
class GLButton_cls;
class PositionAndDirection_cls;

class Navigators_cls {
public:
    Navigators_cls();
    ~Navigators_cls();

    // Of all views.
    static int msManipulatorMode; ///< a GLGuides_cls::Type
    static void RotationMode();
    static void TranslationMode();
    static void ScaleMode();
    /// The buttons' pictures; needs a current OpenGL context.
    static void InitializeStaticMembers();
    static void DestructStaticMembers();

    // Mouse places and widths in units of the screen (GLButton_cls).
    /// A press there: true when it chose a mode.
    static bool CheckGLButton(int x, int y, int w);
    /// True when the pointer came onto a button, or left one.
    static bool UpdateStatus(int x, int y, int w);

    // Into a window of w by h pixels, `scale` of them a unit; need a current OpenGL context.
    static void DrawButton(int w, int h, double scale);
    /// The axes as this camera sees them, in the lower left corner.
    void Show(const PositionAndDirection_cls& camera, int w, int h, double scale);

private:
    static void ShowArrow();

    /// In the order in which they are asked: scale, rotate, translate.
    static std::array<std::unique_ptr<GLButton_cls>, 3> msCGLBTN;
    std::unique_ptr<FBO_cls> mpCFBO; ///< null until it is drawn first
};
