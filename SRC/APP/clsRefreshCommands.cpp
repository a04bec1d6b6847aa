#include "APP/clsRefreshCommands.h"

#include "APP/BindMenu.h"
#include "APP/clsFrameMain.h"
#include "COMMON/EventIds.h"
#include "GL/VIEW/clsTopHalfPanel.h"

RefreshCommands_cls::RefreshCommands_cls(FrameMain_cls& frame) : mFrame(frame) {
    BindMenu(mFrame, this, ID_REFRESH_GL, &RefreshCommands_cls::OnMenuRefreshGL);
    BindMenu(mFrame, this, ID_REFRESH_TL, &RefreshCommands_cls::OnMenuRefreshTL);
    BindMenu(mFrame, this, ID_REFRESH_SB, &RefreshCommands_cls::OnMenuRefreshSB);
    BindMenu(mFrame, this, ID_REFRESH_ATTRIB, &RefreshCommands_cls::OnMenuRefreshAttrib);
    BindMenu(mFrame, this, ID_REFRESH_DRAW_OPTIONS, &RefreshCommands_cls::OnMenuRefreshDrawOptions);
    BindMenu(mFrame, this, ID_REFRESH_EXPOSURE, &RefreshCommands_cls::OnMenuRefreshExposure);
}

void RefreshCommands_cls::OnMenuRefreshGL(wxCommandEvent&) { mFrame.RefreshGL(); }

void RefreshCommands_cls::OnMenuRefreshTL(wxCommandEvent&) { mFrame.RefreshTL(); }

void RefreshCommands_cls::OnMenuRefreshSB(wxCommandEvent&) { mFrame.UpdateStatusText(); }

void RefreshCommands_cls::OnMenuRefreshAttrib(wxCommandEvent&) { mFrame.GetPCTopHalf()->RefreshAttrib(); }

void RefreshCommands_cls::OnMenuRefreshDrawOptions(wxCommandEvent&) {
    mFrame.GetPCTopHalf()->RefreshDrawOptions();
}

void RefreshCommands_cls::OnMenuRefreshExposure(wxCommandEvent&) { mFrame.GetPCTopHalf()->RefreshExposure(); }
