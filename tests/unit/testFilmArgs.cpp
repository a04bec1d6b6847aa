// The film maker's command line: each wrong form is told in one line, each right one is understood.
#include "APP/FilmArgs.h"
#include "APP/FilmHelp.h"

#include <cstdlib>
#include <filesystem>

#include <gtest/gtest.h>

#include "PDATA/clsFileSequence.h"
#include "SCENE/clsStereoGram.h"
#include "TempFolder.h"

namespace {

using Words = std::vector<wxString>;

wxString Parse(const Words& words, FilmArgs_st* pArgs) { return ParseFilmArgs(words, pArgs); }

FilmArgs_st ParseGood(Words words) {
    words.push_back("a.mrp");
    FilmArgs_st args;
    EXPECT_EQ(Parse(words, &args), "");
    return args;
}

TEST(FilmArgs, KnowsTheOutputsOfTwoEyes) {
    EXPECT_EQ(ParseGood({}).mStereo, int(FilmArgs_st::kProjectStereo));
    EXPECT_EQ(ParseGood({"--stereo", "off"}).mStereo, int(FilmArgs_st::kStereoOff));
    const FilmArgs_st both = ParseGood({"--stereo=red-cyan-dubois"});
    EXPECT_EQ(both.mStereo, StereoGram_cls::OUTPUT_RED_CYAN_DUBOIS);
    EXPECT_FALSE(both.mbStereoSeparate);
    const FilmArgs_st apart = ParseGood({"--stereo", "separate"});
    EXPECT_EQ(apart.mStereo, StereoGram_cls::OUTPUT_LINE_BY_LINE) << "each file shows a whole eye";
    EXPECT_TRUE(apart.mbStereoSeparate);
    FilmArgs_st args;
    EXPECT_EQ(Parse({"--stereo", "line-by-line", "a.mrp"}, &args),
              "--stereo: \"line-by-line\" is no output; there are off, left, right, separate, red-cyan, "
              "red-cyan-dubois, yellow-blue, side-by-side, side-by-side-full, top-bottom, top-bottom-full");
}

TEST(FilmArgs, TakesEveryOption) {
    const FilmArgs_st args = ParseGood({"--frames",
                                        "10-20:5",
                                        "--size=1280x720",
                                        "--output",
                                        "/tmp/f.png",
                                        "--view",
                                        "4",
                                        "--blur",
                                        "0.25/8",
                                        "--transparent",
                                        "--resume",
                                        "--video",
                                        "film.MKV",
                                        "--fps",
                                        "30000/1001",
                                        "--quiet",
                                        "--damaged",
                                        "ok",
                                        "--memory",
                                        "4000",
                                        "--threads",
                                        "8",
                                        "--draw",
                                        "cpu"});
    EXPECT_EQ(args.mDraw, DrawWay::CPU);
    EXPECT_EQ(args.mProject, "a.mrp");
    EXPECT_TRUE(args.mbFrames && args.mbBlur && args.mbTransparent && args.mbResume && args.mbQuiet);
    EXPECT_TRUE(args.mbDamagedOk);
    EXPECT_EQ(args.mMemoryMB, 4000);
    EXPECT_EQ(args.mThreads, 8);
    EXPECT_EQ(args.mFirst, 10);
    EXPECT_EQ(args.mLast, 20);
    EXPECT_EQ(args.mStep, 5);
    EXPECT_EQ(args.mW, 1280);
    EXPECT_EQ(args.mH, 720);
    EXPECT_EQ(args.mOutput, "/tmp/f%04d.png") << "a number field is given to a name without one";
    EXPECT_EQ(args.mView, 4);
    EXPECT_EQ(args.mBlurLength, 0.25f);
    EXPECT_EQ(args.mBlurSteps, 8);
    EXPECT_EQ(args.mVideo, "film.MKV");
    EXPECT_EQ(args.mRate, "30000/1001");

    const FilmArgs_st plain = ParseGood({});
    EXPECT_FALSE(plain.mbFrames || plain.mbBlur || plain.mbTransparent || plain.mbResume || plain.mbQuiet);
    EXPECT_EQ(plain.mView, 0);
    EXPECT_EQ(plain.mW, 0);
    EXPECT_EQ(ParseGood({"--frames", "7"}).mLast, 7) << "one frame";
    EXPECT_EQ(ParseGood({"--frames", "7"}).mStep, 0);
    EXPECT_EQ(plain.mDraw, DrawWay::Auto);
    FilmArgs_st odd;
    EXPECT_EQ(Parse({"--draw", "fast", "a.mrp"}, &odd),
              "--draw: \"fast\" is no way to draw; there are auto, gl and cpu");
    EXPECT_EQ(Parse({"--", "--odd.mrp"}, &odd), "");
    EXPECT_EQ(odd.mProject, "--odd.mrp");
}

TEST(FilmArgs, HelpAndVersionNeedNoProject) {
    FilmArgs_st args;
    EXPECT_EQ(Parse({"--help"}, &args), "");
    EXPECT_TRUE(args.mbHelp);
    FilmArgs_st other;
    EXPECT_EQ(Parse({"--version"}, &other), "");
    EXPECT_TRUE(other.mbVersion);
    for (const char* option :
         {"--frames", "--size", "--output", "--view", "--blur", "--transparent", "--resume", "--video",
          "--fps", "--export-data", "--quiet", "--help", "--version"})
        EXPECT_TRUE(GetFilmHelp().Contains(option)) << option;
}

struct Wrong_st {
    Words mWords;
    const char* mAbout; ///< what the line must name
};

TEST(FilmArgs, TellsWhatIsWrongInOneLine) {
    const Wrong_st cases[] = {
        {{}, "no project"},
        {{"--quiet"}, "no project"},
        {{"a.mrp", "b.mrp"}, "\"b.mrp\""},
        {{""}, "no name"},
        {{"--frame", "1-2", "a.mrp"}, "no option \"--frame\""},
        {{"-x", "a.mrp"}, "no option \"-x\""},
        {{"--quiet=1", "a.mrp"}, "--quiet takes no value"},
        {{"a.mrp", "--size"}, "--size lacks"},
        {{"--output=", "a.mrp"}, "--output lacks"},
        {{"--frames", "", "a.mrp"}, "--frames lacks"},
        {{"--frames", "-5", "a.mrp"}, "FIRST-LAST"},
        {{"--frames", "5-", "a.mrp"}, "FIRST-LAST"},
        {{"--frames", "a-b", "a.mrp"}, "FIRST-LAST"},
        {{"--frames", "1-2-3", "a.mrp"}, "FIRST-LAST"},
        {{"--frames", "1-9:0", "a.mrp"}, "FIRST-LAST"},
        {{"--frames", "1-9:", "a.mrp"}, "FIRST-LAST"},
        {{"--frames", "1.5-9", "a.mrp"}, "FIRST-LAST"},
        {{"--frames", "0-99999999999", "a.mrp"}, "FIRST-LAST"},
        {{"--frames", "9-1", "a.mrp"}, "before it begins"},
        {{"--size", "640", "a.mrp"}, "WIDTHxHEIGHT"},
        {{"--size", "0x480", "a.mrp"}, "WIDTHxHEIGHT"},
        {{"--size", "640x16385", "a.mrp"}, "16384"},
        {{"--size", "640x480x3", "a.mrp"}, "WIDTHxHEIGHT"},
        {{"--size", "-1x5", "a.mrp"}, "WIDTHxHEIGHT"},
        {{"--view", "5", "a.mrp"}, "0 to 4"},
        {{"--view", "-1", "a.mrp"}, "0 to 4"},
        {{"--blur", "0.5", "a.mrp"}, "LENGTH/STEPS"},
        {{"--blur", "1.5/4", "a.mrp"}, "LENGTH/STEPS"},
        {{"--blur", "nan/4", "a.mrp"}, "LENGTH/STEPS"},
        {{"--blur", "0.5/0", "a.mrp"}, "LENGTH/STEPS"},
        {{"--blur", "0.5/257", "a.mrp"}, "LENGTH/STEPS"},
        {{"--video", "film.avi", "a.mrp"}, "mp4, mov, mkv"},
        {{"--video", "film.mp4", "--fps", "0", "a.mrp"}, "--fps"},
        {{"--video", "film.mp4", "--fps", "25/0", "a.mrp"}, "--fps"},
        {{"--video", "film.mp4", "--fps", "1/2/3", "a.mrp"}, "--fps"},
        {{"--video", "film.mp4", "--fps", "-25", "a.mrp"}, "--fps"},
        {{"--video", "film.mp4", "--fps", "1001", "a.mrp"}, "--fps"},
        {{"--fps", "25", "a.mrp"}, "--fps is for --video"},
        {{"--output", "f%04d.", "a.mrp"}, "png, jpg, jpeg, tif, tiff, bmp"},
        {{"--output", "f%06d.png", "a.mrp"}, "%01d to %05d"},
        {{"--output", "f%d.png", "a.mrp"}, "%01d to %05d"},
        {{"--export-data", "f%3d", "a.mrp"}, "%01d to %05d"},
        {{"--video", "/nowhere/at/all/film.mp4", "a.mrp"}, "\"/nowhere/at/all\""},
        {{"--output", "f%04d.gif", "a.mrp"}, "png, jpg, jpeg, tif, tiff, bmp"},
        {{"--output", "/nowhere/at/all/f%04d.png", "a.mrp"}, "\"/nowhere/at/all\""},
        {{"--transparent", "--output", "f%04d.jpg", "a.mrp"}, "--transparent"},
        {{"--transparent", "--output", "f%04d.bmp", "a.mrp"}, "png, tif, tiff"},
        {{"--provenance", "--output", "f%04d.jpg", "a.mrp"}, "carry no project"},
        {{"--provenance", "--pov-render", "/tmp", "a.mrp"}, "--provenance is for drawn pictures"},
        {{"--pov-render", "/tmp", "--pov-export", "/tmp", "a.mrp"}, "leave --pov-export away"},
        {{"--pov-render", "/tmp", "--output", "a.png", "a.mrp"}, "--output is for drawn pictures"},
        {{"--jobs", "4", "a.mrp"}, "--jobs is for --pov-render"},
        {{"--pov-render", "/tmp", "--jobs", "0", "a.mrp"}, "--jobs: \"0\""},
        {{"--pov-render", "/nowhere/at/all", "a.mrp"}, "--pov-render: the folder"},
    };
    for (const Wrong_st& one : cases) {
        FilmArgs_st args;
        const wxString error = Parse(one.mWords, &args);
        wxString line;
        for (const wxString& word : one.mWords)
            line += word + " ";
        EXPECT_TRUE(error.Contains(one.mAbout)) << line << ": " << error;
        EXPECT_FALSE(error.Contains("\n")) << line;
    }
}

TEST(FilmArgs, OutputNamesFollowTheImageSequence) {
    const auto check = [](wxString name) {
        EXPECT_EQ(CheckFilmOutput(&name, {}), "");
        return name;
    };
    EXPECT_EQ(check("/tmp/f%04d.png"), "/tmp/f%04d.png");
    EXPECT_EQ(check("f%03d.JPG"), "f%03d.JPG");
    EXPECT_EQ(check("f0017.tif"), "f%04d.tif") << "digits at the end are the number's place";
    EXPECT_EQ(check("f.bmp"), "f%04d.bmp");
    EXPECT_EQ(check("f20240131.png"), "f%04d.png") << "no tag is as wide";
    EXPECT_EQ(check("f%04d"), "f%04d.png") << "the name that the writer gives it";
    EXPECT_EQ(check("f"), "f%04d.png");
    wxString data = "d%03d";
    EXPECT_EQ(CheckFilmExport(&data), "");
    EXPECT_EQ(data, "d%03d") << "data need no ending";
    // A "%" in a folder is part of its name, beside a typed number "%%" is one.
    const TempFolder_cls temp;
    const std::string& base = temp.GetPath();
    for (const char* name : {"50%", "a%%b", "50% done"}) {
        const wxString folder = wxString(base) + "/" + name;
        std::filesystem::create_directory(folder.utf8_string());
        wxString path = check(folder + "/x0001.png");
        EXPECT_EQ(FileSequence_cls(path).GetModifiedStr(7, 0), folder + "/x0007.png");
        EXPECT_EQ(check(path), path) << "it has its form";
        path = check(folder + "/x.png");
        EXPECT_EQ(FileSequence_cls(path).GetModifiedStr(7, 0), folder + "/x0007.png");
    }
    EXPECT_EQ(check(wxString(base) + "/50%/f%04d.png"), wxString(base) + "/50%/f%04d.png");
    wxString alpha = "f%04d.tiff";
    FilmArgs_st rich;
    rich.mbTransparent = rich.mbProvenance = true;
    EXPECT_EQ(CheckFilmOutput(&alpha, rich), "");
}

} // namespace
