#include "PDATA/clsDataLoader.h"

#include "APP/clsMain.h"

DataLoader_cls::DataLoader_cls(Main_cls* pMain) : GrammerBase_cls("DataLoad"), mpCMain(pMain) {
    Add(&mCItemLastOpened, "LastOpenedFile=", "NONE");
    Add(&mCItemInterpolateType, "InterpolateType=", "1");
    Add(&mCItemVariableNumber, "VariableNumber=", "0");
    Add(&mCItemTranslate, "LoaderTranslate=", "0 0 0");
    Add(&mCItemScale, "LoaderScale=", "1");
    Add(&mCItemScaleValue1, "LoaderScaleValue1=", "1");
    Add(&mCItemLogarithm, "LoaderLogarithm=", "0");
}

void DataLoader_cls::SetToDefault() {
    for (ConfItem_cls* item : std::initializer_list<ConfItem_cls*>{&mCItemTranslate, &mCItemScale,
                                                                   &mCItemScaleValue1, &mCItemLogarithm})
        ConfItemList_cls::SetToDefault(item);
}

void DataLoader_cls::OpenDataFile(const wxString& path) {
    if (!mpCMain) return;
    mpCMain->OpenDataFileCommand(path);
    mCItemLastOpened.mStrValue = path;
    mpCMain->NoteOpenedData(path);
}
