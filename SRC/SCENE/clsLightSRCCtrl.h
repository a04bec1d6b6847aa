// The seven light sources of the scene, of which the first few are in use: how many, which one the dialog
// shows, their block in project files, and the OpenGL state of the passes that draw with them.
#pragma once

#include <array>
#include <functional>
#include <istream>
#include <memory>
#include <string>

#include "COMMON/clsDialogControl.h"
#include "CONFITEM/clsConfItem.h"
#include "CONFITEM/clsConfItemList.h"
#include "GL/BASE/clsPositionAndDirection.h"

class LightSRC_cls;
class MarkPainter_cls;
class ParamGroup_cls;
class Parameters_cls;
class SceneObj_cls;

class LightSRCCtrl_cls : public DialogControl_cls {
public:
    static constexpr int kLightNumber = 7;

    LightSRCCtrl_cls();
    ~LightSRCCtrl_cls() override;

    /// Lights in use: the others always exist, but don't shine.
    int GetLightNumber() const;
    LightSRC_cls& GetLight(int index) const { return *mapCLight[static_cast<size_t>(index)]; }
    /// The one that the dialog shows; -1 when none is in use.
    int GetCurrentLight() const;
    /// Show this one in the dialog, and its rows as the selected ones; others than those in use do nothing.
    void SelectLight(int index);
    /// The same when the user chose it elsewhere; whatever isn't a light changes nothing.
    void ShowObject(const SceneObj_cls* pObject);

    // Steps of the undo list.
    /// One more light in use, which becomes the current one; nothing more than seven.
    void AddLight();
    /// The current light goes: those behind it move down. Nothing when none is in use.
    void RemoveLight();

    /// All lights as they were made, two of them in use.
    void SetToDefault();
    /// Lights in use stand on the time lines.
    void UpdateTLShown();
    wxString Serialize();
    /// Reads on from the stream when `line` is the block's marker.
    void ReadStrLine(std::wistream& stream, const wxString& line);
    /// A curve of a light by its identifier, else null.
    Parameters_cls* GetPCParamFromID(const wxString& id) const;

    int GetNumberLightVisible() const;
    int GetNumberLightWithShadow() const;
    int GetFirstShadowedLight() const; ///< 0 when there is none
    /// It is in use and shines.
    bool IsShadowed(int index) const;
    /// What GL_POSITION takes (LightSRC_cls::GetLightInfo), in the scene's coordinates.
    void GetPosition(int index, double time, float* pPos) const;
    int GetFirstValidLight() const; ///< -1 when there is none
    /// GL_LIGHT0 and so on.
    static unsigned GetLightType(int index);
    /// LightSRC_cls::GetLightInfo of one of them.
    void GetLightInfo(double time, float* pPos, float* pAngles, int index, bool bDirection,
                      SceneObj_cls* pBox) const;
    /// What lights that follow the camera follow from here on: that of a view, whatever its faces look at.
    void SetCamera(const PositionAndDirection_cls& camera) { mCCamera = camera; }
    /// The lights in use, in their order, as a scene for POV-Ray has them (LightSRC_cls::GetStrPovLight).
    std::string GetStrPovLights(double time, int moreDecimals) const;
    /// Place all of them for a time.
    void UpdateCurrentObj(double time);

    // These need a current OpenGL context with the camera in the model-view matrix.

    void GLDisableAllLight() const;
    /// All lights in use; ambient light comes with the first one that is visible.
    void SetNonShadowLight(double time) const;
    /// The lights that throw no shadow, and ambient light; of those that do `share` of their strength.
    void SetBasicLight(double time, bool bShadowOption, float share = 0.0f) const;
    /// One light alone as OpenGL light 0, without ambient light.
    void GLSetSingleDiffuse(int index, double time) const;
    /// The marks of the lights in use.
    void GLDraw(MarkPainter_cls& painter) const;

    long long mUpdateMask; ///< of its commands
    int mCurrentLight = 0; ///< may lie behind the lights in use: see GetCurrentLight
    ConfItemList_cls mCConfItemList;
    ConfItemINT_cls mCLightNumber;
    ParamGroup_cls* mpCTopGroup; ///< folder of the lights' folders on the time lines; owned

    std::function<void()> mOnRows;                ///< other rows of the time lines are to be shown
    std::function<void(SceneObj_cls*)> mOnSelect; ///< a light was chosen here

protected:
    OwnedDialog_cls* MakeDialog(wxWindow* pParent) override;

private:
    void GLSetAllBlack() const;
    void ReadLights(std::wistream& stream);

    PositionAndDirection_cls mCCamera;
    std::array<std::unique_ptr<LightSRC_cls>, kLightNumber> mapCLight;
};
