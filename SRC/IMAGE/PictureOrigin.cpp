#include "IMAGE/PictureOrigin.h"

#include <algorithm>
#include <cstdio>

#include <wx/intl.h>

#include "IMAGE/PictureTexts.h"
#include "IMAGE/PngText.h"
#include "IMAGE/TiffText.h"
#include "TIME/clsFilmTime.h"

namespace {

const std::string kProject = "Morentis-Project";
const std::string kFrame = "Morentis-Frame";
const std::string kData = "Morentis-Data";
const std::string kSoftware = "Software";
constexpr char kProgram[] = "Morentis "; // its version follows
constexpr int kMostDigits = 9;

/// Readers of all kinds take a NUL for a text's end.
std::string WithoutNul(std::string text) {
    text.erase(std::remove(text.begin(), text.end(), '\0'), text.end());
    return text;
}

/// A number of digits alone, from `*pAt` on.
bool TakeNumber(const std::string& text, size_t* pAt, int* pValue) {
    const size_t begin = *pAt;
    for (*pValue = 0; *pAt < text.size() && text[*pAt] >= '0' && text[*pAt] <= '9'; ++*pAt) {
        if (*pAt - begin >= kMostDigits) return false;
        *pValue = *pValue * 10 + (text[*pAt] - '0');
    }
    return *pAt > begin;
}

bool TakeSign(const std::string& text, size_t* pAt, char sign) {
    return *pAt < text.size() && text[(*pAt)++] == sign;
}

// A description that people can read, too: lines of "key: value", the project last.
std::string MakeDescription(const PictureOrigin_st& origin, const std::string& frame) {
    std::string data = origin.mData;
    std::replace(data.begin(), data.end(), '\n', '\t');
    return kFrame + ": " + frame + "\n" + kData + ": " + data + "\n" + kProject + ":\n" + origin.mProject;
}

/// False for a description of another kind.
bool ReadDescription(const std::string& text, PictureOrigin_st* pOrigin) {
    const size_t project = text.find("\n" + kProject + ":\n");
    const size_t data = text.find("\n" + kData + ": ");
    if (text.compare(0, kFrame.size() + 2, kFrame + ": ") != 0 || project == std::string::npos ||
        data > project)
        return false;
    const size_t afterFrame = kFrame.size() + 2;
    const size_t afterData = data + kData.size() + 3;
    pOrigin->mFrame = text.substr(afterFrame, data - afterFrame);
    pOrigin->mData = text.substr(afterData, project - afterData);
    std::replace(pOrigin->mData.begin(), pOrigin->mData.end(), '\t', '\n');
    pOrigin->mProject = text.substr(project + kProject.size() + 3);
    return true;
}

/// The project's text may be missing: then the trouble tells whether one was there.
wxString ReadPng(const PictureFile_cls& file, PictureOrigin_st* pOrigin) {
    PictureTexts texts{{kProject, {}}, {kFrame, {}}, {kData, {}}, {kSoftware, {}}};
    ReadPngTexts(file, &texts);
    *pOrigin = {texts[kProject].mText, texts[kFrame].mText, texts[kData].mText, texts[kSoftware].mText};
    return texts[kProject].mTrouble;
}

wxString ReadTiff(const PictureFile_cls& file, PictureOrigin_st* pOrigin) {
    PictureText_st description;
    PictureText_st software;
    ReadTiffTexts(file, &description, &software);
    pOrigin->mSoftware = software.mText;
    if (ReadDescription(description.mText, pOrigin)) return wxString();
    const bool bOurs = software.mText.compare(0, sizeof kProgram - 1, kProgram) == 0;
    return bOurs ? description.mTrouble : wxString();
}

} // namespace

std::string MakeFrameText(int frame, int step, int steps) {
    const std::string text = std::to_string(frame);
    return step == 0 ? text : text + "+" + std::to_string(step) + "/" + std::to_string(steps);
}

bool ReadFrameText(const std::string& text, int* pFrame, int* pStep, int* pSteps) {
    *pStep = 0;
    *pSteps = 1;
    size_t at = 0;
    if (!TakeNumber(text, &at, pFrame)) return false;
    if (at == text.size()) return true;
    return TakeSign(text, &at, '+') && TakeNumber(text, &at, pStep) && TakeSign(text, &at, '/') &&
           TakeNumber(text, &at, pSteps) && at == text.size() && *pStep < *pSteps;
}

OriginPack_cls::OriginPack_cls(const PictureOrigin_st& origin)
    : mOrigin{WithoutNul(origin.mProject), "", WithoutNul(origin.mData), WithoutNul(origin.mSoftware)} {
    if (mOrigin.mProject.size() > kLongestOrigin) mOrigin.mProject.clear();
    mChunks = MakePngText(kSoftware, mOrigin.mSoftware);
    if (mOrigin.mProject.empty()) return;
    mChunks += MakePngText(kData, mOrigin.mData) + MakePngText(kProject, mOrigin.mProject);
}

void OriginPack_cls::AddToPNG(const std::string& frame, std::string* pBytes) const {
    InsertPngChunks(MakePngText(kFrame, frame) + mChunks, pBytes);
}

void OriginPack_cls::AddToTIFF(const std::string& frame, std::string* pBytes) const {
    SetTiffTexts(MakeDescription(mOrigin, frame), mOrigin.mSoftware, pBytes);
}

ImageOrigin_st MakeImageOrigin(const std::shared_ptr<const OriginPack_cls>& pPack, const FilmTime_cls& time) {
    return {pPack, MakeFrameText(time.GetFrame(), time.GetInterpStep(), time.GetAnimInterp())};
}

OriginFound ReadPictureOrigin(const wxString& path, PictureOrigin_st* pOrigin, wxString* pReason) {
    const PictureFile_cls file(path);
    *pOrigin = PictureOrigin_st();
    pReason->clear();
    if (IsPng(file))
        *pReason = ReadPng(file, pOrigin);
    else if (IsTiff(file))
        *pReason = ReadTiff(file, pOrigin);
    if (pOrigin->mProject.find('\0') != std::string::npos) *pReason = _("it is no text");
    if (!pReason->empty()) return OriginFound::Broken;
    return pOrigin->mProject.empty() ? OriginFound::None : OriginFound::Whole;
}
