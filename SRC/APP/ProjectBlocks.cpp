#include "APP/ProjectBlocks.h"

#include "APP/clsFileMenu.h"
#include "APP/clsFollowRun.h"
#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "FILTER/clsFilterLists.h"
#include "GL/BASE/clsPreference.h"
#include "GL/DRAW/clsDrawOption.h"
#include "GL/DRAW/clsShadowVolume.h"
#include "GL/VIEW/clsExposure.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GL/VIEW/clsOverlay.h"
#include "GL/VIEW/clsParticleWatch.h"
#include "GL/VIEW/clsSharedView.h"
#include "IMAGE/clsImgSequence.h"
#include "PDATA/clsDataExporter.h"
#include "PDATA/clsDataLoader.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "PDATA/clsPeriodicBoundary.h"
#include "POVRAY/clsPovRayCtrl.h"
#include "SCENE/clsAnchorPath.h"
#include "SCENE/clsCameraPath.h"
#include "SCENE/clsLightSRCCtrl.h"
#include "SCENE/clsStereoGram.h"
#include "TIME/clsTimeCtrl.h"

namespace {

using Stream = std::wistream;

/// For an object of the hub: its lines, one at a time or with the stream for what lies behind them.
template <auto MEMBER>
wxString Write(Main_cls& hub) {
    return (hub.*MEMBER)->Serialize();
}
template <auto MEMBER>
void ReadLine(Main_cls& hub, Stream&, const wxString& line) {
    (hub.*MEMBER)->ReadStrLine(line);
}
template <auto MEMBER>
void ReadBlock(Main_cls& hub, Stream& stream, const wxString& line) {
    (hub.*MEMBER)->ReadStrLine(stream, line);
}

wxString WriteFramePaths(Main_cls& hub) { return hub.mpCFrameMain->SerializeForConfigure(); }
wxString WritePovPaths(Main_cls& hub) { return hub.mpCPovRayCtrl->SerializeForConfigure(); }
wxString WritePreference(Main_cls& hub) { return hub.mpCFrameMain->GetPCPreference()->Serialize(); }
void ReadPreference(Main_cls& hub, Stream&, const wxString& line) {
    hub.mpCFrameMain->GetPCPreference()->ReadStrLine(line);
}
wxString WriteCanvasStatics(Main_cls& hub) {
    return hub.mpCFrameMain->GetPCSharedView()->SerializeStaticMember();
}
void ReadCanvasStatics(Main_cls& hub, Stream& stream, const wxString& line) {
    hub.mpCFrameMain->GetPCSharedView()->ReadStrLineStaticMember(stream, line);
}
wxString WriteShadows(Main_cls&) { return ShadowVolume_cls::SerializeStaticMember(); }
void ReadShadows(Main_cls&, Stream&, const wxString& line) {
    ShadowVolume_cls::ReadStrLineStaticMember(line);
}
wxString WriteFollow(Main_cls& hub) {
    const FollowRun_cls* follow = hub.mpCFrameMain->GetPCFileMenu()->GetFollow();
    return follow ? follow->Serialize() : wxString();
}
void ReadFollow(Main_cls& hub, Stream&, const wxString& line) {
    if (FollowRun_cls* follow = hub.mpCFrameMain->GetPCFileMenu()->GetFollow()) follow->ReadStrLine(line);
}
// Files keep their shape: the reader takes the views from block 5.
wxString WriteViewsAgain(Main_cls& hub) {
    wxString text;
    for (int view = 0; view < MainGLCanvas_cls::kExtraPanel; ++view)
        text += hub.mpCFrameMain->GetPCGLCanvas(view)->Serialize();
    return text;
}

} // namespace

const std::vector<ProjectBlock_st>& GetProjectBlocks() {
    static const std::vector<ProjectBlock_st> sBlocks = {
        {1, "loader", true, Write<&Main_cls::mpCDataLoader>, ReadLine<&Main_cls::mpCDataLoader>},
        {2, "exporter", true, Write<&Main_cls::mpCDataExporter>, ReadLine<&Main_cls::mpCDataExporter>},
        {3, "last paths", true, WriteFramePaths, ReadLine<&Main_cls::mpCFrameMain>}, // reads block 5 too
        {4, "scene export paths", true, WritePovPaths, nullptr},
        {5, "layout and views", false, Write<&Main_cls::mpCFrameMain>, nullptr},
        {6, "time and time remap", false, Write<&Main_cls::mpCTimeCtrl>, ReadBlock<&Main_cls::mpCTimeCtrl>},
        {7, "draw options", false, Write<&Main_cls::mpCDrawOption>, ReadLine<&Main_cls::mpCDrawOption>},
        {8, "overlay", false, Write<&Main_cls::mpCOverlay>, ReadLine<&Main_cls::mpCOverlay>},
        {9, "exposure", false, Write<&Main_cls::mpCExposure>, ReadLine<&Main_cls::mpCExposure>},
        {10, "data and looks", false, Write<&Main_cls::mpCPDataSeqCtrl>,
         ReadBlock<&Main_cls::mpCPDataSeqCtrl>},
        {11, "periodic box", false, Write<&Main_cls::mpCPeriodicBoundary>,
         ReadLine<&Main_cls::mpCPeriodicBoundary>},
        {12, "camera path", false, Write<&Main_cls::mpCCameraPath>, ReadBlock<&Main_cls::mpCCameraPath>},
        {13, "anchor path", false, Write<&Main_cls::mpCAnchorPath>, ReadBlock<&Main_cls::mpCAnchorPath>},
        {14, "light sources", false, Write<&Main_cls::mpCLightSRCCtrl>,
         ReadBlock<&Main_cls::mpCLightSRCCtrl>},
        {15, "stereogram", false, Write<&Main_cls::mpCStereoGram>, ReadBlock<&Main_cls::mpCStereoGram>},
        {16, "scene export", false, Write<&Main_cls::mpCPovRayCtrl>,
         ReadLine<&Main_cls::mpCPovRayCtrl>}, // reads block 4 too,
        {17, "preferences", false, WritePreference, ReadPreference},
        {18, "shared by all views", false, WriteCanvasStatics, ReadCanvasStatics},
        {19, "shadow volumes", false, WriteShadows, ReadShadows},
        {20, "views 0 to 3 once more", false, WriteViewsAgain, nullptr},
        {21, "filters", false, Write<&Main_cls::mpCFilters>, ReadBlock<&Main_cls::mpCFilters>},
        {22, "image sequence", false, Write<&Main_cls::mpCImgSequence>, ReadLine<&Main_cls::mpCImgSequence>},
        {23, "picked particle", false, Write<&Main_cls::mpCParticles>, ReadLine<&Main_cls::mpCParticles>},
        {24, "following", false, WriteFollow, ReadFollow},
    };
    return sBlocks;
}

wxString WriteProjectBlocks(Main_cls& hub, bool bFull) {
    wxString text;
    for (const ProjectBlock_st& block : GetProjectBlocks())
        if (block.mpWrite && (bFull || block.mbConfigure)) text += block.mpWrite(hub);
    return text;
}

void ReadProjectBlocks(Main_cls& hub, std::wistream& stream, const wxString& line) {
    for (const ProjectBlock_st& block : GetProjectBlocks())
        if (block.mpRead) block.mpRead(hub, stream, line);
}
