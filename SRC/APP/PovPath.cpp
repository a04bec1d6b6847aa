#include "APP/PovPath.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>
#include <vector>

#include <wx/intl.h>

#include "APP/clsMain.h"
#include "COMMON/MsgBox.h"
#include "COMMON/RuntimeFiles.h"
#include "COMMON/SafeFile.h"
#include "PARAM/clsParamGroup.h"
#include "POVRAY/TEXT/clsPovSerialize.h"
#include "SCENE/clsAnchorPath.h"
#include "SCENE/clsCameraPath.h"
#include "TIME/clsTimeCtrl.h"

namespace {

using Text = PovSerialize_cls;
constexpr long long kMostPlaces = 20000; // of a film's way

struct Way_st {
    std::vector<std::pair<double, std::array<double, 3>>> mPlaces; ///< double index, and where it is
    int mUnknown = 0;       ///< pictures whose place has to be looked for
    bool mbFollows = false; ///< else its curves alone say where it is
};

/// Where the film's pictures have the anchor; of very long films every so many.
Way_st FindWay(const AnchorPath_cls& anchor, const FilmTime_cls& time) {
    Way_st way;
    const long long steps = std::max(time.GetAnimInterp(), 1);
    const long long pictures = std::max(time.GetMaxFrame(), 0) * steps;
    const long long stride = pictures / kMostPlaces + 1;
    for (long long k = 0; k <= pictures; k = k < pictures ? std::min(k + stride, pictures) : k + 1) {
        const double index = time.GetDoubleIndex(static_cast<int>(k / steps), static_cast<int>(k % steps));
        std::array<double, 3> place;
        const AnchorPath_cls::Followed followed =
            anchor.mFollow ? anchor.mFollow(index, place.data()) : AnchorPath_cls::NOTHING;
        way.mbFollows = way.mbFollows || followed != AnchorPath_cls::NOTHING;
        if (followed == AnchorPath_cls::LATE) {
            ++way.mUnknown;
            continue;
        }
        for (size_t i = 0; i < 3 && followed == AnchorPath_cls::NOTHING; ++i)
            place[i] = anchor.mpCTranslate->mVParams[i].Evaluate(index, Parameters_cls::msResolution);
        way.mPlaces.emplace_back(index, place);
    }
    return way;
}

std::string GetStrPlace(const std::array<double, 3>& place) {
    return "<" + Text::PovOutG(place[0]) + "," + Text::PovOutG(place[1]) + "," + Text::PovOutG(place[2]) +
           ">";
}

std::string GetStrWay(const Way_st& way, const ParamGroup_cls& group) {
    std::string text = "#declare Anchor_Place = " + GetStrPlace(way.mPlaces.front().second) + ";\n";
    if (way.mPlaces.size() > 1) {
        text = "#declare Anchor_Way = spline {\n\tlinear_spline";
        for (const auto& [index, place] : way.mPlaces)
            text +=
                (text.back() == '>' ? ",\n\t" : "\n\t") + Text::PovOutG(index) + ", " + GetStrPlace(place);
        text += "\n}\n#declare Anchor_Place = Anchor_Way(t0) + <0,0,0>;\n";
    }
    for (size_t i = 0; i < 3; ++i) {
        wxString name = group.mVParams[i].mID;
        name.Replace(" ", "_");
        text += "#declare " + name.utf8_string() + " = Anchor_Place." + "xyz"[i] + ";\n";
    }
    return text;
}

wxString GetStrAnchor(const Main_cls& main) {
    AnchorPath_cls& anchor = *main.mpCAnchorPath;
    const FilmTime_cls& time = *main.mpCTimeCtrl;
    const Way_st way = FindWay(anchor, time);
    anchor.UpdateCurrentObj(time.GetDoubleIndex()); // what it stands in was moved to other times
    if (way.mUnknown > 0)
        Notice("pov-ray path",
               wxString::Format(
                   _("Where the followed particle is isn't known yet in %d of %d pictures; the path "
                     "goes straight there. Play the film once, or tick \"Trail\"."),
                   way.mUnknown, way.mUnknown + static_cast<int>(way.mPlaces.size())));
    return way.mbFollows && !way.mPlaces.empty() ? wxString::FromUTF8(GetStrWay(way, *anchor.mpCTranslate))
                                                 : anchor.mpCTranslate->GetStrExpression();
}

} // namespace

wxString GetPathPov(const Main_cls& main) {
    constexpr size_t kMostTemplate = 1000000;
    const bool bAnchor = main.mpCCameraPath->mCLookAnchor.mValue;
    wxString text = "#declare t0 = clock;\n" + main.mpCCameraPath->mpCTranslate->GetStrExpression() +
                    main.mpCCameraPath->mpCRotate->GetStrExpression();
    if (bAnchor) text += GetStrAnchor(main);
    const wxString path =
        FindRuntimeFile(bAnchor ? "Resource/cameratemplate.pov" : "Resource/cameratemplateNA.pov");
    std::string camera;
    if (ReadWholeFile(path, kMostTemplate, &camera) == ReadFileResult::Ok)
        return text + wxString::FromUTF8(camera);
    Notice("pov-ray template", wxString::Format(_("The camera's template %s can't be read."), path));
    return text;
}
