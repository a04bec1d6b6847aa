// The base of whatever has a place, a direction and a size in the scene and can be key-framed.
#pragma once

#include <array>
#include <initializer_list>
#include <istream>
#include <utility>

#include <wx/string.h>

#include "CONFITEM/clsConfItem.h"
#include "CONFITEM/clsConfItemList.h"
#include "GL/BASE/clsPositionAndDirection.h"
#include "PARAM/clsParamGroup.h"
#include "POVRAY/TEXT/clsPovSerialize.h"

class MarkPainter_cls;

/// Angles are degrees; times are double indices (PARAM/clsParameters.h). An object looks along x, its up
/// is z, then it turns by z as yaw, y as pitch and x as roll. Main thread only.
class SceneObj_cls : public PovSerialize_cls {
public:
    static constexpr double kCurrent = Parameters_cls::kCurrent;
    enum TargetMode : unsigned { TARGET_NONE = 0, TARGET_ORIGIN = 1 };

    /// `name` is the groups' name in files: "Camera" gives "Camera Translate" and so on. With
    /// `bShowOnTimeLine` the three groups stand under the folder group; without `bWithParams` there are
    /// no groups at all.
    SceneObj_cls(const wxString& name, bool bShowOnTimeLine, bool bWithParams);
    SceneObj_cls(const SceneObj_cls&) = delete;
    SceneObj_cls& operator=(const SceneObj_cls&) = delete;
    virtual ~SceneObj_cls();

    /// Values edited in a panel that differ from their curves become keys at the current time.
    virtual void AssignSceneObjParam();
    /// Place the object for a time: fills mCCurrent and mCScaleCurrent.
    virtual void UpdateCurrentObj(double time);

    // Values that an object begins with.
    void SetInitValueTrans(double x, double y, double z) { SetInitValue(mpCTranslate, x, y, z); }
    void SetInitValueRot(double x, double y, double z) { SetInitValue(mpCRotate, x, y, z); }
    void SetInitValueScale(double x, double y, double z) { SetInitValue(mpCScale, x, y, z); }
    /// A key of all three dimensions at the time itself, as one step: a constant group is made time
    /// dependent first, since its one value has no place in time.
    static void SetKeyAt(ParamGroup_cls* pGroup, const double* pValues, double time);
    /// Take type, target, visibility and curves of another object, as one step.
    void CopyFromP_SceneObj(SceneObj_cls* pSrc);
    /// The group with this identifier, the folder included; null when it is none of ours.
    ParamGroup_cls* GetPCParamGroupFromTag(const wxString& id) const;
    /// Free the folder group; translate, rotate and scale stay.
    void DeleteObjectGroup();

    /// Turn a vector into the object's frame.
    void CalcRelativeVector(float* p, double time);
    /// A point of the world in the object's coordinates, turned around the anchor if there is one. A
    /// scale of 0 gives what a division by 0 gives.
    void CalcRelativePosition(float* p, double time, ParamGroup_cls* pCAnchor);
    /// Where the object points: along -x without rotation. The x rotation has no effect.
    std::array<double, 3> GetVDirectionVector(double time);
    /// In the mode TARGET_ORIGIN turn to the origin and key the rotation that it takes.
    void Targetting();

    /// Scale, place and rotation as transforms of a scene for POV-Ray, in this order, which isn't that of
    /// OpenGL: there the rotation acts last, on the place too. One a line, those that change nothing left
    /// out.
    std::string GetStrPovModelview(double time, const std::string& indent, int decimals) const;

    // Place, rotation in degrees and scale at a time; while a hand drags the object, as the hand holds it.
    void GetTranslation(double time, double out[3]) const;
    void GetRotation(double time, double out[3]) const;
    void GetScaling(double time, double out[3]) const;
    /// A place of its curves in the scene, and back.
    virtual void ToScene(double* pPlace) const;
    virtual void FromScene(double* pPlace) const;
    /// Can hands move it in this way (GLGuides_cls::Type)? Not where nothing would come of it.
    virtual bool TakesMode(int mode) const;
    /// Why hands can't move it at all just now; empty: they can.
    virtual wxString GetWhyHeld() const { return wxString(); }
    /// Unit vectors, a row each, of what x, y and z of its curves do in the scene in such a way.
    virtual void GetGuideAxes(int mode, double out[3][3]) const;
    /// What the user knows it by.
    virtual wxString GetShownName() const { return wxString(); }

    void Select(bool bSelected);
    /// Lock a drag to an axis or handle, or free it when it is locked to this one.
    void ToggleDragMode(int mode) { mDragMode = mDragMode == mode ? kNoDrag : mode; }
    void SetDragMode(int mode) {
        if (mDragMode == kNoDrag) mDragMode = mode;
    }

    // These need a current OpenGL context.

    /// Multiply the current matrix: the scale acts last, also on the place.
    void GLSetMatrix() const;
    /// A hundred points along the film's way of the object, when it is visible.
    void GLDrawPath() const;
    /// The handles of the present mode (Navigators_cls), at its place.
    void GLDrawGuide(MarkPainter_cls& painter) const;
    /// The colour of its marks, brighter under the pointer.
    void SetMarkColor(MarkPainter_cls& painter, float r, float g, float b) const;

    static const SceneObj_cls* mspCHovered; ///< the pointer is over its mark
    bool mbSelected = false;
    bool mbDragging = false; ///< the mouse moves it right now
    int mObjectType = 0;     ///< 1: a light source
    int mPickName = 0;       ///< what a click on it is known by
    static constexpr int kNoDrag = -1;
    int mDragMode = kNoDrag; ///< axis or handle that drags are locked to
    ParamGroup_cls* mpCTranslate = nullptr;
    ParamGroup_cls* mpCRotate = nullptr;
    ParamGroup_cls* mpCScale = nullptr;
    ParamGroup_cls* mpCObjectGroup = nullptr; ///< folder: the object's line on the time line
    ConfItemList_cls mCConfItemListBase;      ///< a subclass adds its items, the two below included
    ConfItemUINT_cls mCTarget;                ///< a TargetMode
    ConfItemBOOL_cls mCVisible;
    PositionAndDirection_cls mCCurrent; ///< placement at the time last asked for
    double mCScaleCurrent[3] = {0, 0, 0};
    PositionAndDirection_cls mCPrevious;

protected:
    /// Edits within the scope change the curves directly and are no steps.
    class DirectEdit_cls {
    public:
        DirectEdit_cls() : mbOuter(std::exchange(Parameters_cls::msbUndoCommandMake, false)) {}
        ~DirectEdit_cls() { Parameters_cls::msbUndoCommandMake = mbOuter; }
        DirectEdit_cls(const DirectEdit_cls&) = delete;
        DirectEdit_cls& operator=(const DirectEdit_cls&) = delete;

    private:
        bool mbOuter;
    };

    /// All curves of a group as when they were made, with these values; no step.
    static void SetConstant(ParamGroup_cls& group, const double* values, unsigned kind = INTERP_HERMITE_AUTO);

    // The block of an object in a file: a marker line, the items, then some of the groups.
    using Groups = std::initializer_list<ParamGroup_cls*>;
    wxString SerializeBlock(const wxString& marker, Groups groups);
    /// Reads on behind the marker, groups in this order; any of them may be missing. A line that begins
    /// with "--" belongs to another block and stays in the stream. True when `line` was the marker.
    bool ReadBlock(std::wistream& stream, const wxString& line, const wxString& marker, Groups groups);

private:
    static void SetInitValue(ParamGroup_cls* pGroup, double x, double y, double z);
};
