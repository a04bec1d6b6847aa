#include "POVRAY/clsPovFormat.h"

#include <algorithm>
#include <cmath>

#include <wx/intl.h>

#include "COMMON/clsSplitPath.h"

namespace {

struct Format_st {
    const char* mName;
    const char* mLetter; ///< of "Output_File_Type="
    int mBits;           ///< a channel; 0: not told
    bool mbJpeg;
    const char* mEnding;
    bool mbRefused; ///< POV-Ray takes no such line
    bool mbAlpha;   ///< keeps transparency
};

// The numbers of the rows stand in projects.
constexpr Format_st kFormats[] = {
    {"PNG(3x8bit)", "N", 0, false, ".png", false, true},
    {"PNG(3x12bit)", "N", 12, false, ".png", false, true},
    {"PNG(3x16bit)", "", 0, false, ".png", true, true},
    {"SYS(BMP/PICT)", "S", 16, false, ".bmp", true, false},
    {"PPM", "P", 0, false, ".ppm", false, false},
    {"JPEG", "J", 0, true, ".jpg", false, false},
    {"EXR", "E", 0, false, ".exr", false, true},
    {"HDR", "H", 0, false, ".hdr", false, false},
    {wxTRANSLATE("PNG, 16 bits a channel"), "N", 16, false, ".png", false, true},
};
constexpr unsigned kFormatNumber = unsigned(sizeof(kFormats) / sizeof(kFormats[0]));
constexpr int kJpegQuality = 95;

wxString OnOff(bool bOn) { return bOn ? "on\n" : "off\n"; }
wxString ZeroOne(bool bOn) { return bOn ? "1\n" : "0\n"; }

/// The name as it stands between quotes; POV-Ray knows quotes of both kinds, and no escapes.
wxString Quoted(const wxString& name) {
    const char* const quote = name.Contains("\"") ? "'" : "\"";
    return quote + name + quote;
}

} // namespace

PovFormat_cls::PovFormat_cls() { PovFormat_cls::SetToDefault(); }

void PovFormat_cls::SetToDefault() {
    mConfList.Clear();
    mConfList.Add(&mOutputFormat, "PovOutputFomat=", "0");
    mConfList.Add(&mWidth, "PovCameraWidth=", "640");
    mConfList.Add(&mHeight, "PovCameraHeight=", "480");
    mConfList.Add(&mFileAbsolute, "PovFileAbsolute=", "0");
    mConfList.Add(&mAntialias, "PovAntialias=", "0");
    mConfList.Add(&mDisplay, "PovDisplay=", "1");
    mConfList.Add(&mPauseWhenDone, "PovPauseWhenDone=", "0");
    mConfList.Add(&mJitter, "PovJitter=", "0");
    mConfList.Add(&mOutputAlpha, "PovOutputAlpha=", "0");
    mConfList.Add(&mAntiAliasThreshold, "PovAntiAliasThreshold=", "0.15");
    mConfList.Add(&mJitterAmount, "PovJitterAmount=", "1");
    mConfList.Add(&mAntiAliasDepth, "PovAntiAliasDepth=", "3");
    mConfList.Add(&mFastColoring, "PovFastColoring=", "1");
    mConfList.Add(&mBoundingMethod, "PovBoundingMethod=", "1");
}

void PovFormat_cls::Repair() {
    mOutputFormat.mValue = std::min(mOutputFormat.mValue, kFormatNumber - 1);
    mWidth.mValue = std::clamp(mWidth.mValue, 1, kMaxSize);
    mHeight.mValue = std::clamp(mHeight.mValue, 1, kMaxSize);
    if (!std::isfinite(mAntiAliasThreshold.mValue)) mConfList.SetToDefault(&mAntiAliasThreshold);
    if (!std::isfinite(mJitterAmount.mValue)) mConfList.SetToDefault(&mJitterAmount);
    mAntiAliasDepth.mValue = std::clamp(mAntiAliasDepth.mValue, 1, 9); // what POV-Ray takes
    mBoundingMethod.mValue = std::min(mBoundingMethod.mValue, 1u);
}

wxString PovFormat_cls::GetStrPovFormat(const wxString& iniPath, bool bAbsolute) const {
    const Format_st& format = kFormats[mOutputFormat.mValue];
    wxString text = wxString::Format("width=%d\nheight=%d\n", mWidth.mValue, mHeight.mValue);
    text += "DISPLAY=" + OnOff(mDisplay.mValue) + "Pause_When_Done=" + OnOff(mPauseWhenDone.mValue);
    text += "Version=3.7\nDisplay_Gamma=1\nFile_Gamma=1\nRender_Block_Size=48\nRender_Pattern=3\n";
    if (mBoundingMethod.mValue == 1) text += "Bounding_Method=2\n";
    text += "Antialias=" + ZeroOne(mAntialias.mValue);
    if (mAntialias.mValue)
        text += wxString::Format("Antialias_Threshold=%f\nAntialias_Depth=%d\n",
                                 double(mAntiAliasThreshold.mValue), mAntiAliasDepth.mValue);
    text += "Jitter=" + ZeroOne(mJitter.mValue);
    if (mJitter.mValue) text += wxString::Format("Jitter_Amount=%f\n", double(mJitterAmount.mValue));
    if (format.mBits > 0) text += wxString::Format("Bits_Per_Color=%d\n", format.mBits);
    text += wxString("Output_File_Type=") + format.mLetter + "\n";
    if (format.mbJpeg) text += wxString::Format("Compression=%d\n", kJpegQuality);
    text += "Output_Alpha=" + ZeroOne(mOutputAlpha.mValue);
    const SplitPath_cls split(iniPath);
    const wxString name = bAbsolute ? split.mStrNoExt : split.mStrStem;
    text += "Input_File_Name=" + Quoted(name + ".pov") + "\n";
    return text + "Output_File_Name=" + Quoted(name) + "\n";
}

bool PovFormat_cls::IsReadableName(const wxString& path) {
    return path.IsAscii() && path.find_first_of("\"'\\") == wxString::npos;
}

std::vector<wxString> PovFormat_cls::GetFormatNames() {
    std::vector<wxString> names;
    for (const Format_st& format : kFormats)
        names.push_back(wxGetTranslation(format.mName));
    return names;
}

wxString PovFormat_cls::GetRefusal() const {
    if (!kFormats[mOutputFormat.mValue].mbRefused) return wxString();
    return wxString::Format(_("POV-Ray 3.7 refuses the line that \"%s\" writes and makes no picture."),
                            kFormats[mOutputFormat.mValue].mName);
}

wxString PovFormat_cls::GetPictureEnding() const { return kFormats[mOutputFormat.mValue].mEnding; }

bool PovFormat_cls::HasAlpha() const { return kFormats[mOutputFormat.mValue].mbAlpha; }
