// Owner of the dialog "View and Camera Config".
#pragma once

#include <functional>

#include "COMMON/clsDialogControl.h"

class AnchorPath_cls;
class CameraPath_cls;
class SharedView_cls;
class StereoGram_cls;
class ViewHost_cls;

class CameraPathCtrl_cls : public DialogControl_cls {
public:
    /// All of them outlive this.
    CameraPathCtrl_cls(ViewHost_cls& host, SharedView_cls& shared, StereoGram_cls* pStereo)
        : mHost(host), mShared(shared), mpCStereo(pStereo) {}

    /// The tab of another view comes to the front.
    void ShowView(int view);

    ViewHost_cls& mHost;
    SharedView_cls& mShared;
    StereoGram_cls* mpCStereo;
    int mCurrentView = 0;             ///< whose tab is in front
    std::function<double()> mGetRate; ///< pictures of the film a second

protected:
    OwnedDialog_cls* MakeDialog(wxWindow* pParent) override;
};
