#include "IMAGE/VideoFile.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <sstream>

#include <wx/intl.h>

#include "COMMON/Eye.h"
#include "COMMON/clsSplitPath.h"
#include "SCENE/clsStereoGram.h"

namespace {

const char* const kEndings[] = {"mp4", "mov", "mkv"};
constexpr double kMaxRate = 1000.0;

bool ReadPositive(const wxString& text, double* pValue) {
    return !text.empty() && text.length() < 16 && text.find_first_not_of("0123456789.") == wxString::npos &&
           text.ToCDouble(pValue) && *pValue > 0.0;
}

/// Frame packing goes by the numbers of H.264.
std::vector<const char*> GetStereoWords(VideoStereo stereo, const std::string& target) {
    const bool bMatroska = wxString::FromUTF8(target).Lower().EndsWith(".mkv");
    std::vector<const char*> words;
    const char* mode = nullptr;
    if (stereo == VideoStereo::SideBySide) {
        words = {"-x264-params", "frame-packing=3"};
        mode = "stereo_mode=left_right";
    } else if (stereo == VideoStereo::TopBottom) {
        words = {"-x264-params", "frame-packing=4"};
        mode = "stereo_mode=top_bottom";
    } else if (stereo == VideoStereo::RedCyan) {
        mode = "stereo_mode=anaglyph_cyan_red";
    }
    if (mode && bMatroska) words.insert(words.end(), {"-metadata:s:v:0", mode});
    return words;
}

} // namespace

VideoStereo GetVideoStereo(const StereoGram_cls& stereo) {
    if (!stereo.IsStereo() || stereo.IsDualOutput()) return VideoStereo::None;
    switch (stereo.GetOutput()) {
    case StereoGram_cls::OUTPUT_SIDE_BY_SIDE:
    case StereoGram_cls::OUTPUT_SIDE_BY_SIDE_FULL:
        return VideoStereo::SideBySide;
    case StereoGram_cls::OUTPUT_TOP_BOTTOM:
    case StereoGram_cls::OUTPUT_TOP_BOTTOM_FULL:
        return VideoStereo::TopBottom;
    case StereoGram_cls::OUTPUT_RED_CYAN:
    case StereoGram_cls::OUTPUT_RED_CYAN_DUBOIS:
        return VideoStereo::RedCyan;
    default:
        return VideoStereo::None;
    }
}

wxString FindVideoTool() {
    const char* path = std::getenv("PATH");
    std::istringstream folders(path ? path : "");
    for (std::string folder; std::getline(folders, folder, ':');) {
        const std::string tool = (folder.empty() ? "." : folder) + "/ffmpeg";
        if (access(tool.c_str(), X_OK) == 0) return wxString(tool.c_str(), *wxConvFileName);
    }
    return wxString();
}

wxString GetVideoToolHint() { return _("Videos need ffmpeg: install the package ffmpeg."); }

wxString GetVideoEndings() {
    wxString text;
    for (const char* ending : kEndings)
        text += (text.empty() ? "" : ", ") + wxString(ending);
    return text;
}

bool IsVideoEnding(const wxString& path) {
    const wxString own = SplitPath_cls(path).mStrExt.Mid(1);
    return std::any_of(std::begin(kEndings), std::end(kEndings),
                       [&](const char* ending) { return own.IsSameAs(ending, false); });
}

bool IsVideoRate(const wxString& text) {
    wxString below;
    const wxString above = text.BeforeFirst('/', &below);
    double rate = 0.0;
    if (!ReadPositive(above, &rate)) return false;
    if (text.Contains("/")) {
        double divisor = 0.0;
        if (above.Contains(".") || below.Contains(".") || !ReadPositive(below, &divisor)) return false;
        rate /= divisor;
    }
    return rate <= kMaxRate;
}

wxString MakeVideoRate(float rate) { return wxString::FromCDouble(double(rate), 3); }

wxString MakeVideoPath(const wxString& pictures) {
    const SplitPath_cls split(pictures);
    wxString stem = split.mStrStem;
    const size_t tag = stem.find("%0");
    if (tag != wxString::npos) {
        size_t end = stem.find('d', tag);
        stem.erase(tag, end == wxString::npos ? wxString::npos : end + 1 - tag);
    }
    while (!stem.empty() && (stem.Last() == '_' || stem.Last() == '-' || stem.Last() == '.'))
        stem.RemoveLast();
    if (stem.empty()) stem = "film";
    return (split.mStrDir.empty() ? wxString() : split.mStrDir + "/") + stem + ".mp4";
}

wxString GetEyePath(const wxString& path, int eye) {
    if (eye == EYE_NONE) return path;
    const SplitPath_cls split(path);
    return split.mStrNoExt + (eye == EYE_LEFT ? "L" : "R") + split.mStrExt;
}

std::vector<std::string> MakeVideoCommand(const std::string& tool, const std::string& folder,
                                          const std::string& ending, const std::string& target,
                                          const std::string& rate, bool bTransparent, VideoStereo stereo) {
    std::string filter = bTransparent ? "format=gbrap,premultiply=inplace=1,format=gbrp," : "";
    filter += "pad=ceil(iw/2)*2:ceil(ih/2)*2,scale=out_color_matrix=bt709:out_range=tv,format=yuv420p";
    std::vector<std::string> words = {tool,
                                      "-hide_banner",
                                      "-loglevel",
                                      "error",
                                      "-nostdin",
                                      "-y",
                                      "-framerate",
                                      rate,
                                      "-f",
                                      "image2",
                                      "-start_number",
                                      "0",
                                      "-i",
                                      folder + "/%08d." + ending,
                                      "-vf",
                                      filter,
                                      "-c:v",
                                      "libx264",
                                      "-crf",
                                      "18",
                                      "-preset",
                                      "medium",
                                      "-pix_fmt",
                                      "yuv420p",
                                      "-colorspace",
                                      "bt709",
                                      "-color_primaries",
                                      "bt709",
                                      "-color_trc",
                                      "bt709",
                                      "-color_range",
                                      "tv",
                                      "-movflags",
                                      "+faststart"};
    for (const char* word : GetStereoWords(stereo, target))
        words.emplace_back(word);
    words.push_back(target);
    return words;
}
