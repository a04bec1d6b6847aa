#include "APP/ProjectInputs.h"

#include <algorithm>

#include "APP/clsMain.h"
#include "COMMON/FramePath.h"
#include "COMMON/RuntimeFiles.h"
#include "FILTER/clsFilterBase.h"
#include "FILTER/clsFilterData.h"
#include "FILTER/clsFilterLists.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsGLSequence.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "PDATA/clsPDataSequence.h"

namespace {

/// Of a filter that is off, too: it may be on when the run is over.
void AddFilterFiles(FilterData_cls& data, int frames, std::vector<wxString>* pFiles) {
    for (const ConfItemSTR_cls* text : data.GetPaths()) {
        const FramePath_cls path(text->mStrValue, data.mStrFolder);
        for (int frame = 0; frame < (path.HasNumber() ? frames : 1); ++frame)
            pFiles->push_back(path.GetFile(frame));
    }
}

} // namespace

std::vector<wxString> ListProjectInputs(const Main_cls& hub) {
    std::vector<wxString> files;
    const PDataSequence_cls& sequence = *hub.mpCPDataSeqCtrl->GetPCActiveFileSequence();
    const int frames = std::min(sequence.GetSeqLength(), PDataSequence_cls::kMaxSnap);
    for (int i = 0; i < frames; ++i)
        files.push_back(sequence.GetFilename(i));
    for (int list = 0; list < kFilterLists; ++list) {
        const FilterCtrl_cls& filters = hub.mpCFilters->Get(list);
        for (int i = 0; i < filters.GetCount(); ++i)
            AddFilterFiles(*filters.GetPCFilter(i)->GetPCData(), frames, &files);
    }
    for (const GLAttribute_cls* attribute : GLSequence_cls::Of(sequence).mpCGLAttribute)
        files.push_back(FindRuntimeFile(attribute->mTexFileBillboard.mStrValue));
    return files;
}
