#include "APP/clsCommandLoadData.h"

#include "APP/clsMain.h"
#include "COMMON/UpdateBits.h"
#include "TIME/clsTimeCtrl.h"

CommandLoadData_cls::CommandLoadData_cls(Main_cls* pMain, const wxString& path)
    : CommandItem_cls(UPDATE_GL | UPDATE_TL), mpCMain(pMain), mStrPath(path) {}

void CommandLoadData_cls::Execute(bool) {
    if (mStrPath.empty())
        mpCMain->CloseData();
    else
        mpCMain->OpenDataFile(mStrPath);
    if (mClock) mpCMain->mpCTimeCtrl->SetState(*mClock);
    UpdateBit();
}
