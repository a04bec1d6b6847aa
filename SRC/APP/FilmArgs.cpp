#include "APP/FilmArgs.h"

#include <algorithm>
#include <functional>
#include <map>

#include <wx/filename.h>

#include "COMMON/clsSplitPath.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "IMAGE/VideoFile.h"
#include "IMAGE/clsImgSequence.h"
#include "PDATA/clsFileSequence.h"
#include "SCENE/clsStereoGram.h"

namespace {

constexpr int kMaxFrame = 1000000000;
constexpr int kMaxMemoryMB = 100000000;
constexpr int kMaxThreads = 64;
constexpr int kMaxJobs = 1024;

wxString Quote(const wxString& text) { return "\"" + text + "\""; }

/// A whole number of digits alone, from low to high.
bool ReadInt(const wxString& text, int low, int high, int* pValue) {
    if (text.empty() || text.length() > 10) return false;
    for (const wxUniChar c : text)
        if (c < '0' || c > '9') return false;
    long long value = 0;
    if (!text.ToLongLong(&value) || value < low || value > high) return false;
    *pValue = int(value);
    return true;
}

bool ReadFloat(const wxString& text, double low, double high, float* pValue) {
    double value = 0.0;
    if (text.find_first_not_of("0123456789.") != wxString::npos || !text.ToCDouble(&value)) return false;
    if (!(value >= low && value <= high)) return false;
    *pValue = float(value);
    return true;
}

wxString ReadFrames(const wxString& text, FilmArgs_st* pArgs) {
    wxString step;
    const wxString range = text.BeforeFirst(':', &step);
    wxString last;
    const wxString first = range.BeforeFirst('-', &last);
    const bool bStep = text.Contains(":");
    if (!range.Contains("-")) last = first;
    if (!ReadInt(first, 0, kMaxFrame, &pArgs->mFirst) || !ReadInt(last, 0, kMaxFrame, &pArgs->mLast) ||
        (bStep && !ReadInt(step, 1, kMaxFrame, &pArgs->mStep)))
        return "--frames: " + Quote(text) + " is no range of frames; give FIRST-LAST or FIRST-LAST:STEP";
    if (pArgs->mFirst > pArgs->mLast) return "--frames: " + Quote(text) + " ends before it begins";
    pArgs->mbFrames = true;
    return wxString();
}

wxString ReadSize(const wxString& text, FilmArgs_st* pArgs) {
    wxString h;
    const wxString w = text.BeforeFirst('x', &h);
    constexpr int kMost = ImgSequence_cls::kMaxSize;
    if (ReadInt(w, 1, kMost, &pArgs->mW) && ReadInt(h, 1, kMost, &pArgs->mH)) return wxString();
    return wxString::Format("--size: %s is no size; give WIDTHxHEIGHT, each from 1 to %d", Quote(text),
                            kMost);
}

wxString ReadView(const wxString& text, FilmArgs_st* pArgs) {
    constexpr int kMost = MainGLCanvas_cls::kViewNumber - 1;
    if (ReadInt(text, 0, kMost, &pArgs->mView)) return wxString();
    return wxString::Format("--view: %s is no view; there are 0 to %d", Quote(text), kMost);
}

wxString ReadBlur(const wxString& text, FilmArgs_st* pArgs) {
    wxString steps;
    const wxString length = text.BeforeFirst('/', &steps);
    constexpr int kMost = ImgSequence_cls::kMaxBlurSteps;
    if (!ReadFloat(length, 0.0, 1.0, &pArgs->mBlurLength) || !ReadInt(steps, 1, kMost, &pArgs->mBlurSteps))
        return wxString::Format("--blur: %s is no motion blur; give LENGTH/STEPS, a length from 0 to 1 and "
                                "1 to %d steps",
                                Quote(text), kMost);
    pArgs->mbBlur = true;
    return wxString();
}

wxString ReadVideo(const wxString& text, FilmArgs_st* pArgs) {
    pArgs->mVideo = text;
    if (IsVideoEnding(text)) return wxString();
    return "--video: " + Quote(text) + " has no ending of a video; there are " + GetVideoEndings();
}

wxString ReadMemory(const wxString& text, FilmArgs_st* pArgs) {
    if (ReadInt(text, 1, kMaxMemoryMB, &pArgs->mMemoryMB)) return wxString();
    return wxString::Format("--memory: %s is no limit; give 1 to %d MB", Quote(text), kMaxMemoryMB);
}

wxString ReadThreads(const wxString& text, FilmArgs_st* pArgs) {
    if (ReadInt(text, 1, kMaxThreads, &pArgs->mThreads)) return wxString();
    return wxString::Format("--threads: %s is no number of threads; give 1 to %d", Quote(text), kMaxThreads);
}

wxString ReadDraw(const wxString& text, FilmArgs_st* pArgs) {
    if (ReadDrawWay(text, pArgs->mDraw)) return wxString();
    return "--draw: " + Quote(text) + " is no way to draw; there are auto, gl and cpu";
}

wxString ReadJobs(const wxString& text, FilmArgs_st* pArgs) {
    if (ReadInt(text, 1, kMaxJobs, &pArgs->mJobs)) return wxString();
    return wxString::Format("--jobs: %s is no number of frames; give 1 to %d", Quote(text), kMaxJobs);
}

wxString ReadDamaged(const wxString& text, FilmArgs_st* pArgs) {
    pArgs->mbDamagedOk = text == "ok";
    return pArgs->mbDamagedOk ? wxString() : "--damaged: there is only \"ok\"";
}

struct StereoWord_st {
    const char* mpWord;
    int mOutput;
};

constexpr StereoWord_st kStereoWords[] = {
    {"off", FilmArgs_st::kStereoOff},
    {"left", StereoGram_cls::OUTPUT_LEFT},
    {"right", StereoGram_cls::OUTPUT_RIGHT},
    {"separate", StereoGram_cls::OUTPUT_LINE_BY_LINE}, // whose files hold an eye each
    {"red-cyan", StereoGram_cls::OUTPUT_RED_CYAN},
    {"red-cyan-dubois", StereoGram_cls::OUTPUT_RED_CYAN_DUBOIS},
    {"yellow-blue", StereoGram_cls::OUTPUT_YELLOW_BLUE},
    {"side-by-side", StereoGram_cls::OUTPUT_SIDE_BY_SIDE},
    {"side-by-side-full", StereoGram_cls::OUTPUT_SIDE_BY_SIDE_FULL},
    {"top-bottom", StereoGram_cls::OUTPUT_TOP_BOTTOM},
    {"top-bottom-full", StereoGram_cls::OUTPUT_TOP_BOTTOM_FULL},
};

wxString ReadStereo(const wxString& text, FilmArgs_st* pArgs) {
    wxString all;
    for (const StereoWord_st& word : kStereoWords) {
        all += (all.empty() ? "" : ", ") + wxString(word.mpWord);
        if (text != word.mpWord) continue;
        pArgs->mStereo = word.mOutput;
        pArgs->mbStereoSeparate = word.mOutput == StereoGram_cls::OUTPUT_LINE_BY_LINE;
        return wxString();
    }
    return "--stereo: " + Quote(text) + " is no output; there are " + all;
}

wxString ReadRate(const wxString& text, FilmArgs_st* pArgs) {
    pArgs->mRate = text;
    if (IsVideoRate(text)) return wxString();
    return "--fps: " + Quote(text) + " is no rate; give pictures a second, such as 25, 23.976 or 30000/1001";
}

struct Option_st {
    bool mbValue;
    std::function<wxString(const wxString& value, FilmArgs_st* pArgs)> mTake;
};

template <auto MEMBER>
Option_st Flag() {
    return {false, [](const wxString&, FilmArgs_st* pArgs) {
                pArgs->*MEMBER = true;
                return wxString();
            }};
}

template <auto MEMBER>
Option_st Text() {
    return {true, [](const wxString& value, FilmArgs_st* pArgs) {
                pArgs->*MEMBER = value;
                return wxString();
            }};
}

const std::map<wxString, Option_st>& Options() {
    static const std::map<wxString, Option_st> sOptions = {
        {"--frames", {true, ReadFrames}},
        {"--size", {true, ReadSize}},
        {"--output", Text<&FilmArgs_st::mOutput>()},
        {"--view", {true, ReadView}},
        {"--blur", {true, ReadBlur}},
        {"--stereo", {true, ReadStereo}},
        {"--transparent", Flag<&FilmArgs_st::mbTransparent>()},
        {"--resume", Flag<&FilmArgs_st::mbResume>()},
        {"--provenance", Flag<&FilmArgs_st::mbProvenance>()},
        {"--video", {true, ReadVideo}},
        {"--fps", {true, ReadRate}},
        {"--write-project", Text<&FilmArgs_st::mWriteProject>()},
        {"--export-data", Text<&FilmArgs_st::mExport>()},
        {"--pov-export", Text<&FilmArgs_st::mPovExport>()},
        {"--pov-render", Text<&FilmArgs_st::mPovRender>()},
        {"--jobs", {true, ReadJobs}},
        {"--memory", {true, ReadMemory}},
        {"--draw", {true, ReadDraw}},
        {"--threads", {true, ReadThreads}},
        {"--damaged", {true, ReadDamaged}},
        {"--quiet", Flag<&FilmArgs_st::mbQuiet>()},
        {"--timing", Flag<&FilmArgs_st::mbTiming>()},
        {"--help", Flag<&FilmArgs_st::mbHelp>()},
        {"--version", Flag<&FilmArgs_st::mbVersion>()},
    };
    return sOptions;
}

/// One option, and the word behind it where that is its value; `i` moves on to the last word used.
wxString ReadOption(const std::vector<wxString>& words, size_t* pI, FilmArgs_st* pArgs) {
    wxString value;
    const wxString& word = words[*pI];
    const wxString name = word.BeforeFirst('=', &value);
    const auto found = Options().find(name);
    if (found == Options().end()) return "there is no option " + Quote(name);
    const bool bInWord = word.Contains("=");
    if (!found->second.mbValue && bInWord) return name + " takes no value";
    if (found->second.mbValue && !bInWord) {
        if (*pI + 1 >= words.size()) return name + " lacks its value";
        value = words[++*pI];
    }
    if (found->second.mbValue && value.empty()) return name + " lacks its value";
    return found->second.mTake(value, pArgs);
}

wxString CheckTogether(const FilmArgs_st& args) {
    if (args.mProject.empty()) return "no project is named";
    if (!args.mRate.empty() && args.mVideo.empty()) return "--fps is for --video";
    if (args.mJobs != 1 && args.mPovRender.empty()) return "--jobs is for --pov-render";
    if (!IsPovFilm(args)) return wxString();
    if (!args.mPovExport.empty() && !args.mPovRender.empty())
        return "--pov-render writes the scenes too; leave --pov-export away";
    if (!args.mOutput.empty()) return "--output is for drawn pictures; POV-Ray's bear their scenes' names";
    if (args.mStereo != FilmArgs_st::kProjectStereo) return "--stereo is for drawn pictures";
    if (args.mbProvenance) return "--provenance is for drawn pictures";
    if (!args.mVideo.empty() && args.mPovRender.empty()) return "--video needs pictures: give --pov-render";
    return wxString();
}

/// Endings that the program's image writers know.
const char* const kEndings[] = {"png", "jpg", "jpeg", "tif", "tiff", "bmp"};
/// Of those, the ones with room for alpha, and for texts.
const char* const kRichEndings[] = {"png", "tif", "tiff"};

template <size_t N>
bool IsOneOf(const wxString& ending, const char* const (&endings)[N]) {
    return std::any_of(std::begin(endings), std::end(endings),
                       [&](const char* one) { return ending.IsSameAs(one, false); });
}

template <size_t N>
wxString Join(const char* const (&endings)[N]) {
    wxString text;
    for (const char* one : endings)
        text += (text.empty() ? "" : ", ") + wxString(one);
    return text;
}

/// The absolute folder of a file.
wxString FolderOf(const wxString& path) {
    wxFileName name(path);
    name.MakeAbsolute();
    return name.GetPath();
}

/// One that can be made in a folder that is there is as good. More that are missing are rather a mistake.
wxString CheckFolder(const wxString& option, const wxString& path) {
    const wxString folder = FolderOf(path);
    if (path.empty() || wxFileName::DirExists(folder) ||
        (!wxFileName::FileExists(folder) && wxFileName::DirExists(FolderOf(folder))))
        return wxString();
    return option + ": the folder " + Quote(folder) + " is not there; make it first";
}

/// Does the name hold a number in a form that makes no sequence, such as "%d"? A folder may bear anything.
bool HasOddTag(const wxString& path) {
    const FileSequence_cls name(SplitPath_cls(path).GetPathStr(12));
    return name.mDigits < 0 && name.GetModifiedStr(0, 0) != name.GetModifiedStr(1, 0);
}

wxString CheckName(const wxString& option, wxString* pOutput) {
    FileSequence_cls sequence(*pOutput);
    sequence.AdoptFormat();
    if (HasOddTag(*pOutput))
        return option + ": " + Quote(*pOutput) + " has an odd number; give %01d to %05d where it goes";
    if (sequence.mDigits < 0) {
        sequence.Set(*pOutput); // more digits than a tag can have give way to four
        sequence.AppendDefaultSequenceTag();
    }
    *pOutput = sequence.mStrPath;
    return CheckFolder(option, sequence.GetModifiedStr(0, 0));
}

} // namespace

wxString ParseFilmArgs(const std::vector<wxString>& words, FilmArgs_st* pArgs) {
    bool bOptions = true;
    for (size_t i = 0; i < words.size(); ++i) {
        if (bOptions && words[i] == "--") {
            bOptions = false;
        } else if (bOptions && words[i].StartsWith("-")) {
            const wxString error = ReadOption(words, &i, pArgs);
            if (!error.empty()) return error;
        } else if (words[i].empty()) {
            return "a project of no name can't be opened";
        } else if (!pArgs->mProject.empty()) {
            return "one project at a time: " + Quote(pArgs->mProject) + " and " + Quote(words[i]) +
                   " are two";
        } else {
            pArgs->mProject = words[i];
        }
    }
    if (pArgs->mbHelp || pArgs->mbVersion) return wxString();
    const wxString error = CheckTogether(*pArgs);
    if (!error.empty()) return error;
    const wxString nowhere = CheckFolder("--video", pArgs->mVideo);
    if (!nowhere.empty()) return nowhere;
    for (const auto& [option, folder] : {std::make_pair("--pov-export", pArgs->mPovExport),
                                         std::make_pair("--pov-render", pArgs->mPovRender)}) {
        const wxString wrong = folder.empty() ? wxString() : CheckFolder(option, folder + "/scene");
        if (!wrong.empty()) return wrong;
    }
    if (!pArgs->mExport.empty()) {
        const wxString wrong = CheckFilmExport(&pArgs->mExport);
        if (!wrong.empty()) return wrong;
    }
    return pArgs->mOutput.empty() ? wxString() : CheckFilmOutput(&pArgs->mOutput, *pArgs);
}

wxString CheckFilmOutput(wxString* pOutput, const FilmArgs_st& args) {
    if (!pOutput->empty() && SplitPath_cls(*pOutput).mStrExt.empty()) *pOutput += ".png";
    const wxString ending = SplitPath_cls(*pOutput).mStrExt.Mid(1);
    if (!IsOneOf(ending, kEndings))
        return "--output: " + Quote(*pOutput) + " has no ending of a picture; there are " + Join(kEndings);
    const bool bRich = IsOneOf(ending, kRichEndings);
    if (args.mbTransparent && !bRich)
        return "--transparent: " + Quote(ending) + " files keep no transparency; give --output one of " +
               Join(kRichEndings);
    if (args.mbProvenance && !bRich)
        return "--provenance: " + Quote(ending) + " files carry no project; give --output one of " +
               Join(kRichEndings);
    return CheckName("--output", pOutput);
}

wxString MakeFilmFolder(const wxString& path) {
    const wxString folder = FolderOf(path);
    if (path.empty() || wxFileName::DirExists(folder) || wxFileName::Mkdir(folder)) return wxString();
    if (wxFileName::DirExists(folder)) return wxString(); // another part of the film was faster
    return "the folder " + Quote(folder) + " can't be made";
}

wxString CheckFilmExport(wxString* pOutput) { return CheckName("--export-data", pOutput); }
