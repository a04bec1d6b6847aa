// The selected item, and the hand that drags it. There is one selection and one hand in the whole program.
#pragma once

#include <functional>

#include <wx/string.h>

#include "GL/BASE/clsPositionAndDirection.h"

class MouseNormalized_cls;
class SceneObj_cls;

/// The first move of a drag lets the hand take the item over: from there to the end it stands where the
/// statics say, whatever its curves. The curves get keys at the end alone, as one step of the undo list. No
/// number that isn't finite gets into them.
class MoveItem_cls {
public:
    /// What a view knows that the item is dragged in.
    struct View_st {
        PositionAndDirection_cls mCamera;
        double mAspect = 1.0; ///< width / height
        /// Parts of the window that the picture under the hand takes: a half of it for an eye that has one.
        double mPart[2] = {1.0, 1.0};
        /// Where a place of the scene is seen, in half windows (MouseNormalized_cls); false: nowhere.
        std::function<bool(const double place[3], double out[2])> mProject;
        double mGridUnit = 1.0; ///< a cell of the ground grid
        bool mbSnap = false;    ///< to a tenth of that, 5 degrees, a factor of tenths
    };

    static SceneObj_cls* mspCSelectedObject; ///< null: none
    static double msSelectedItemPos[3];      ///< the item's place during a drag
    static double msSelectedItemPosOrg[3];   ///< at its start
    static double msSelectedItemDRot[3];     ///< degrees that the drag adds
    static double msSelectedItemScale[3];    ///< factors of the drag

    /// Ends a drag without a trace.
    static void SetSelection(SceneObj_cls* pObject);
    /// Is the hand holding the selected item?
    static bool IsDragging();
    /// To round values, as of the hand's last move?
    static bool IsSnapping();
    /// The hand takes over: the item as it is now.
    static void InitializeMoveItem();

    /// One event of the mouse, in this mode (GLGuides_cls::Type), along the axis that the item's drag mode
    /// tells. `bInvert`: the axis points to the eye, so the hand turns the other way. False: nothing changes.
    static bool MoveItem(const View_st& view, const MouseNormalized_cls& mouse, int mode, bool bInvert);
    /// Does the axis about which a drag would turn the item point to the eye?
    static bool IsAxisFlipped(const PositionAndDirection_cls& camera);
    /// Another way of moving from here on: what the drag did so far is taken back.
    static void Restart();
    /// Another axis: what the drag did so far goes along that.
    static void ChangeAxis(int mode);
    /// Figures, point, sign and Backspace set the amount of the drag: a way, degrees, a factor. Without an
    /// axis a way goes along x and a turn is about z. Once the last figure is gone the hand counts again,
    /// from where it is. False for other keys.
    static bool TypeKey(int keycode, int mode);
    /// The amount of the drag, for the user.
    static wxString GetDragText(int mode);

    /// What the hand did goes into the values of the curves' fields, and the drag is over.
    static void FinishDragging();
    /// The same and keys from it, a step of the undo list; nothing while no drag runs.
    static void EndDrag();
    /// The item is back where it was.
    static void CancelDrag();
    /// The dashed line from where the item was to the mouse, which is `toX` and `toY` in half windows, into a
    /// window of w by h pixels. Only where the way between them counts. Needs a current OpenGL context.
    static void DrawMouseGuide(const View_st& view, double toX, double toY, int mode, int w, int h);

private:
    static void MoveItemTranslate(const View_st& view, double dx, double dy, int axis);
    static void MoveItemRotate(double value, int axis);
    static void MoveItemScale(double value, int axis);
    static void Snap(int mode, int axis);
    static void TakeTyped(int mode);
};
