// A view's page of the dialog "View and Camera Config": its camera, pivot, angle and clip planes as numbers.
#pragma once

#include <optional>

#include "GL/BASE/clsPositionAndDirection.h"
#include "WIDGET/clsMultiInputPanel.h"

class MainGLCanvas_cls;

class ViewPage_cls : public MultiInputPanel_cls {
public:
    ViewPage_cls(wxWindow* pParent, MainGLCanvas_cls& canvas);

    /// From the view, as it is now.
    void ShowView();
    /// A fisheye has a row of its own; true when it came or went.
    bool HideAndShowView();
    /// The free camera back to where a program starts; one step. Nothing in a view that follows the path.
    void SetViewToDefault();
    MainGLCanvas_cls& GetCanvas() const { return mCanvas; }

    /// Rows, in their order.
    enum Row {
        ROW_GEOMETRY, ///< and "Default"
        ROW_TRANSLATE,
        ROW_ROTATE,
        ROW_PIVOT,
        ROW_ANGLE,
        ROW_DEPTH,
        ROW_FISHEYE ///< "Distortion", "Fisheye Grid"
    };

private:
    /// What a step of the undo list brings back.
    struct State_st {
        int mMode = 0;
        int mGeometry = 0;
        PositionAndDirection_cls mCamera;
        double mPivot[3] = {0, 0, 0};
        float mAngle = 35.0f;
        float mDepth[2] = {0.03f, 5000.0f};
        bool mbDistortion = false;
        bool mbGrid = false;
        bool operator==(const State_st& other) const;
    };
    static State_st GetState(MainGLCanvas_cls& canvas);
    static void SetState(MainGLCanvas_cls& canvas, const State_st& state);
    void AddRows();
    void OnEdit(int row, bool bFinal);
    void LeaveStep(const State_st& before);
    void TakeRow(int row);
    void TurnCamera();
    double GetAspect() const;

    MainGLCanvas_cls& mCanvas;
    std::optional<State_st> mBefore; ///< while a gesture is under way
    // What the fields hold.
    int mGeometry = 0;
    float mTranslate[3] = {0, 0, 0};
    float mRotate[3] = {0, 0, 0}; ///< roll, pitch, yaw
    float mPivot[3] = {0, 0, 0};
    float mAngle[2] = {35, 35}; ///< of height and width
    float mShownWidth = 35;     ///< the second one, until it is typed in
    float mDepth[2] = {0.03f, 5000.0f};
    bool mbDistortion = false;
    bool mbGrid = false;
    bool mbWasFisheye = true; ///< the row is there
};
