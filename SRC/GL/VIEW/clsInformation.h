// One particle in numbers: as it is drawn, or as it stands in its file. The page "Info".
#pragma once

#include <functional>

#include "CONFITEM/clsConfItem.h"
#include "CONFITEM/clsConfItemList.h"

class InformationGUI_cls;
class ParticlePanel_cls;
class PDataBlock_cls;
class ParticleWatch_cls;
class SnapData_cls;
class wxWindow;

class Information_cls {
public:
    static constexpr double kTimeUnset = -9999.0;
    enum Type { INTERPOLATED = 0, RAW_DATA = 1 };

    /// What the page shows.
    struct Values_st {
        float mPos[3] = {0, 0, 0};
        float mVel[3] = {0, 0, 0}; ///< as read, or from here to the next snapshot
        float mRadius = 0.0f;
        float mValue1 = 0.0f;
        int mType = 0;
        int mID = 0;               ///< 0 where the data have none
        double mTime = kTimeUnset; ///< of the snapshot, or as drawn
        bool mbThere = false;
        bool operator==(const Values_st& other) const;
    };

    Information_cls();
    Information_cls(const Information_cls&) = delete;
    Information_cls& operator=(const Information_cls&) = delete;

    /// Where the block of the present frame comes from: null while it isn't read.
    void Connect(std::function<const PDataBlock_cls*()> getBlock) { mGetBlock = std::move(getBlock); }
    /// Tell where in the scene a place of the drawn data is: in world coordinates, changed in place.
    void ConnectPlace(std::function<void(float* pPos)> place) { mPlace = std::move(place); }
    /// The drawn particle as it stands in the scene.
    Values_st GetDrawnValues(const SnapData_cls* pSnap, int index) const;
    /// The page shows what is picked there, and what it shows is picked.
    void Connect(ParticleWatch_cls* pParticles) { mpCParticles = pParticles; }
    /// What its button "Camera to Anchor" does.
    std::function<void()> mToAnchor;
    /// The user has chosen another index.
    void OnIndex();
    /// Look again at what is drawn, or at the file's data; cheap when the page isn't seen.
    void Update();
    wxWindow* InstantiateGUI(wxWindow* pParent);

    static Values_st GetValues(const SnapData_cls* pSnap, int index);
    static Values_st GetValues(const PDataBlock_cls* pBlock, int index);

    InformationGUI_cls* mpCGUI = nullptr;        ///< owned by its notebook
    ParticlePanel_cls* mpCParticleGUI = nullptr; ///< the same
    ConfItemList_cls mConfList;
    ConfItemINT_cls mIndex; ///< place of the particle in its file, from 0
    ConfItemINT_cls mType;  ///< a Type

private:
    bool FollowPicked(const PDataBlock_cls* pBlock);

    ParticleWatch_cls* mpCParticles = nullptr;
    std::function<const PDataBlock_cls*()> mGetBlock;
    std::function<void(float* pPos)> mPlace;
};
