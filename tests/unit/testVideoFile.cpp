// Names, rates and the command line of videos, and the tool at work where it is installed.
#include "COMMON/Eye.h"
#include "IMAGE/VideoFile.h"

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <chrono>
#include <fstream>

#include <gtest/gtest.h>
#include <wx/image.h>

#include "IMAGE/ImageCheck.h"
#include "IMAGE/ImageFile.h"
#include "IMAGE/clsVideoMaker.h"
#include "SCENE/clsStereoGram.h"
#include "TempFolder.h"

namespace {

namespace fs = std::filesystem;

TEST(VideoFile, NamesFollowThePictures) {
    EXPECT_EQ(MakeVideoPath("run/Preview%04d.png"), "run/Preview.mp4");
    EXPECT_EQ(MakeVideoPath("f_%03d.tif"), "f.mp4");
    EXPECT_EQ(MakeVideoPath("/a/%04d.png"), "/a/film.mp4");
    EXPECT_EQ(MakeVideoPath("a.b/c%04dd.png"), "a.b/cd.mp4");
}

TEST(VideoFile, RatesAreExact) {
    for (const char* rate : {"25", "23.976", "30000/1001", "0.5", "1000"})
        EXPECT_TRUE(IsVideoRate(rate)) << rate;
    for (const char* rate :
         {"", "0", "-1", "1e3", "25/", "/2", "2.5/1", "25/0", "1/2/3", "1001", "fast", "."})
        EXPECT_FALSE(IsVideoRate(rate)) << rate;
    EXPECT_EQ(MakeVideoRate(23.976f), "23.976");
    EXPECT_TRUE(IsVideoRate(MakeVideoRate(25.0f)));
}

TEST(VideoFile, CommandLeavesNothingToChance) {
    const std::vector<std::string> words =
        MakeVideoCommand("/bin/ffmpeg", "/tmp/links", "png", "out.mp4", "30000/1001", false);
    const auto behind = [&](const char* option) {
        const auto found = std::find(words.begin(), words.end(), option);
        return found == words.end() ? std::string() : *(found + 1);
    };
    EXPECT_EQ(words.front(), "/bin/ffmpeg");
    EXPECT_EQ(words.back(), "out.mp4");
    EXPECT_EQ(behind("-framerate"), "30000/1001");
    EXPECT_EQ(behind("-i"), "/tmp/links/%08d.png");
    EXPECT_EQ(behind("-c:v"), "libx264");
    EXPECT_EQ(behind("-pix_fmt"), "yuv420p");
    EXPECT_EQ(behind("-vf").find("premultiply"), std::string::npos);
    const std::vector<std::string> clear = MakeVideoCommand("f", "l", "png", "o", "25", true);
    EXPECT_TRUE(std::any_of(clear.begin(), clear.end(), [](const std::string& word) {
        return word.find("premultiply") != std::string::npos;
    }));
}

TEST(VideoFile, TwoEyesAreToldWhereTheContainerKnows) {
    const auto words = [](VideoStereo stereo, const char* target) {
        std::string all;
        for (const std::string& word : MakeVideoCommand("f", "l", "png", target, "25", false, stereo))
            all += word + " ";
        return all;
    };
    EXPECT_EQ(words(VideoStereo::None, "o.mkv").find("stereo_mode"), std::string::npos);
    EXPECT_NE(words(VideoStereo::RedCyan, "o.MKV").find("stereo_mode=anaglyph_cyan_red o.MKV"),
              std::string::npos);
    EXPECT_EQ(words(VideoStereo::RedCyan, "o.mp4").find("anaglyph"), std::string::npos);
    EXPECT_NE(words(VideoStereo::TopBottom, "o.mp4").find("frame-packing=4 o.mp4"), std::string::npos);
    StereoGram_cls stereo;
    stereo.mCEye.mValue = StereoGram_cls::OUTPUT_SIDE_BY_SIDE_FULL;
    EXPECT_EQ(GetVideoStereo(stereo), VideoStereo::None) << "one camera";
    stereo.mCType.mValue = StereoGram_cls::TYPE_OFF_AXIS;
    EXPECT_EQ(GetVideoStereo(stereo), VideoStereo::None) << "a video for each eye";
    stereo.mCDualOutput.mValue = 0;
    EXPECT_EQ(GetVideoStereo(stereo), VideoStereo::SideBySide);
    EXPECT_EQ(GetEyePath("a/film.mp4", EYE_LEFT), "a/filmL.mp4");
}

class VideoMaker : public ::testing::Test {
protected:
    VideoMaker() {
        if (!wxImage::FindHandler(wxBITMAP_TYPE_PNG)) wxImage::AddHandler(new wxPNGHandler);
    }
    VideoJob_st MakeJob(int frames, int w, int h) {
        VideoJob_st job;
        for (int i = 0; i < frames; ++i) {
            wxImage image(w, h);
            image.SetRGB(wxRect(0, 0, w, h), 255, static_cast<unsigned char>(i * 20), 0);
            job.mFrames.push_back(wxString(mFolder) + wxString::Format("/f%d.png", 7 * i));
            image.SaveFile(job.mFrames.back());
        }
        job.mPath = wxString(mFolder) + "/film.mp4";
        return job;
    }
    /// What the tool's companion says of the video.
    std::string Probe(const char* what) {
        const std::string command =
            "ffprobe -v error -count_frames -select_streams v -show_entries stream=" + std::string(what) +
            " -of csv=p=0 '" + mFolder + "/film.mp4'";
        std::array<char, 200> line{};
        std::FILE* pipe = popen(command.c_str(), "r");
        if (!std::fgets(line.data(), int(line.size()), pipe)) line[0] = '\0';
        pclose(pipe);
        return std::string(line.data()).substr(0, std::string(line.data()).find_last_not_of("\n,") + 1);
    }
    size_t CountFiles() const {
        return size_t(std::distance(fs::directory_iterator(mFolder), fs::directory_iterator()));
    }

    TempFolder_cls mTemp{"video 50% "};
    const std::string mFolder = mTemp.GetPath();
};

TEST_F(VideoMaker, PlayersLearnOfTwoEyes) {
    ASSERT_FALSE(FindVideoTool().empty()) << "install ffmpeg";
    const auto probe = [](const wxString& path) {
        const std::string command =
            "ffmpeg -nostdin -v info -i '" + path.ToStdString() + "' -frames:v 1 -vf showinfo -f null - 2>&1";
        std::string said;
        std::array<char, 200> line{};
        std::FILE* pipe = popen(command.c_str(), "r");
        while (std::fgets(line.data(), int(line.size()), pipe))
            said += line.data();
        pclose(pipe);
        return said;
    };
    for (const char* ending : {"mkv", "mp4", "mov"})
        for (const VideoStereo stereo :
             {VideoStereo::None, VideoStereo::SideBySide, VideoStereo::TopBottom}) {
            VideoJob_st job = MakeJob(2, 32, 32);
            job.mPath = wxString(mFolder) + "/film." + ending;
            job.mStereo = stereo;
            VideoMaker_cls maker;
            ASSERT_EQ(maker.Start(job), "");
            maker.Wait([] { return false; });
            ASSERT_EQ(maker.GetError(), "");
            const std::string said = probe(job.mPath);
            const auto says = [&said](const char* words) { return said.find(words) != std::string::npos; };
            EXPECT_EQ(says("stereoscopic information"), stereo != VideoStereo::None) << ending;
            EXPECT_EQ(says("type - side by side"), stereo == VideoStereo::SideBySide) << ending << said;
            EXPECT_EQ(says("type - top and bottom"), stereo == VideoStereo::TopBottom) << ending << said;
        }
}

TEST_F(VideoMaker, MakesH264OfTheRateWithEvenSizes) {
    ASSERT_FALSE(FindVideoTool().empty()) << "install ffmpeg";
    VideoJob_st job = MakeJob(7, 33, 31);
    job.mRate = "30000/1001";
    // One whose maker was killed, and a user's own.
    for (const char* name : {"/film.12.part.mp4", "/film.cut.part.mp4"}) {
        std::ofstream(mFolder + name) << "a";
        fs::last_write_time(mFolder + name, fs::file_time_type::clock::now() - std::chrono::minutes(1));
    }
    VideoMaker_cls maker;
    ASSERT_EQ(maker.Start(job), "");
    maker.Wait([] { return false; });
    ASSERT_EQ(maker.GetError(), "");
    EXPECT_EQ(Probe("codec_name"), "h264");
    EXPECT_EQ(Probe("pix_fmt"), "yuv420p");
    EXPECT_EQ(Probe("width,height"), "34,32");
    EXPECT_EQ(Probe("r_frame_rate"), "30000/1001");
    EXPECT_EQ(Probe("nb_read_frames"), "7");
    EXPECT_TRUE(fs::remove(mFolder + "/film.cut.part.mp4"));
    EXPECT_EQ(CountFiles(), 8u) << "nothing but pictures and video";
}

TEST_F(VideoMaker, TellsWhyThereIsNone) {
    ASSERT_FALSE(FindVideoTool().empty()) << "install ffmpeg";
    VideoJob_st job = MakeJob(2, 16, 16);
    job.mPath = wxString(mFolder) + "/missing/film.mp4";
    VideoMaker_cls maker;
    ASSERT_EQ(maker.Start(job), "");
    maker.Wait([] { return false; });
    EXPECT_FALSE(maker.GetError().empty());
    EXPECT_FALSE(maker.Start({{}, job.mPath, "25", false}).empty()) << "no pictures";
    job.mPath = wxString(mFolder) + "/film.mp4";
    ASSERT_EQ(maker.Start(job), "");
    maker.Stop();
    EXPECT_FALSE(maker.IsRunning());
    EXPECT_EQ(CountFiles(), 2u) << "a video given up leaves nothing";
}

// A program in the place of the tool complains as it does: the reason first, and at last that it gave up.
TEST_F(VideoMaker, TellsTheToolsOwnReason) {
    const VideoJob_st job = MakeJob(1, 16, 16);
    const std::string tool = mFolder + "/ffmpeg", path = std::getenv("PATH");
    std::ofstream(tool) << "#!/bin/sh\n>&2 echo '[libx264 @ 0x5581] width not divisible by 2 (33x31)'\n"
                           ">&2 echo '[libx264 @ 0x5581] width not divisible by 2 (33x31)'\n"
                           ">&2 echo 'Error while opening encoder'\n>&2 echo 'Conversion failed!'\nexit 1\n";
    fs::permissions(tool, fs::perms::owner_all);
    setenv("PATH", (mFolder + ":" + path).c_str(), 1);
    VideoMaker_cls maker;
    EXPECT_EQ(maker.Start(job), "");
    maker.Wait([] { return false; });
    EXPECT_EQ(maker.GetError(), "width not divisible by 2 (33x31); Error while opening encoder");
    std::ofstream(tool) << "#!/bin/sh\nexit 1\n"; // without a word
    EXPECT_EQ(maker.Start(job), "");
    maker.Wait([] { return false; });
    EXPECT_EQ(maker.GetError(), "ffmpeg ended before it was done");
    setenv("PATH", path.c_str(), 1);
}

TEST_F(VideoMaker, WholePicturesAreKnown) {
    const VideoJob_st job = MakeJob(1, 33, 31);
    const std::string path = job.mFrames[0].utf8_string();
    EXPECT_TRUE(IsWholeImage(job.mFrames[0], 33, 31, false));
    EXPECT_FALSE(IsWholeImage(job.mFrames[0], 33, 32, false)) << "another size";
    EXPECT_FALSE(IsWholeImage(wxString(mFolder) + "/none.png", 33, 31, false));
    fs::resize_file(path, fs::file_size(path) - 20);
    EXPECT_FALSE(IsWholeImage(job.mFrames[0], 33, 31, false)) << "cut off";
    fs::resize_file(path, 0);
    EXPECT_FALSE(IsWholeImage(job.mFrames[0], 33, 31, false));
    if (!wxImage::FindHandler(wxBITMAP_TYPE_JPEG)) wxImage::AddHandler(new wxJPEGHandler);
    wxImage image(64, 64);
    const std::string photo = mFolder + "/f.jpg";
    ASSERT_TRUE(image.SaveFile(photo, wxBITMAP_TYPE_JPEG));
    EXPECT_TRUE(IsWholeImage(photo, 64, 64, false));
    fs::resize_file(photo, fs::file_size(photo) - 2);
    EXPECT_FALSE(IsWholeImage(photo, 64, 64, false)) << "its reader would fill it up";
}

// As an earlier film may leave them that was killed, or ran out of room.
TEST_F(VideoMaker, PicturesThatMissTheirLastBytesAreNotWhole) {
    if (!wxImage::FindHandler(wxBITMAP_TYPE_JPEG)) wxImage::AddHandler(new wxJPEGHandler);
    if (!wxImage::FindHandler(wxBITMAP_TYPE_TIFF)) wxImage::AddHandler(new wxTIFFHandler);
    if (!wxImage::FindHandler(wxBITMAP_TYPE_BMP)) wxImage::AddHandler(new wxBMPHandler);
    wxImage image(37, 23);
    for (int i = 0; i < 37 * 23; ++i)
        image.GetData()[3 * i] = static_cast<unsigned char>(i * 7 % 251);
    for (const std::string ending : {"png", "jpg", "tif", "bmp"}) {
        const std::string path = mFolder + "/whole." + ending, cut = mFolder + "/cut." + ending;
        ASSERT_EQ(WriteImageFile(image, path, {}), "");
        EXPECT_TRUE(IsWholeImage(path, 37, 23, false)) << ending;
        for (const unsigned missing : {1u, 2u, 4u, 8u, 12u, 20u, 300u, unsigned(fs::file_size(path))}) {
            fs::copy_file(path, cut, fs::copy_options::overwrite_existing);
            fs::resize_file(cut, fs::file_size(path) - missing);
            EXPECT_FALSE(IsWholeImage(cut, 37, 23, false)) << ending << " without " << missing << " bytes";
            fs::resize_file(cut, fs::file_size(path)); // zeros where a disk lost what was not yet on it
            if (missing > 2 && ending != "bmp") {
                EXPECT_FALSE(IsWholeImage(cut, 37, 23, false)) << ending << " " << missing;
            }
        }
    }
}

TEST_F(VideoMaker, PicturesAreStoredWithAlphaOrWithout) {
    if (!wxImage::FindHandler(wxBITMAP_TYPE_TIFF)) wxImage::AddHandler(new wxTIFFHandler);
    for (const std::string ending : {"png", "tif"}) {
        const wxString path = mFolder + "/a." + ending;
        wxImage image(16, 8);
        ASSERT_EQ(WriteImageFile(image, path, {}), "");
        EXPECT_TRUE(IsWholeImage(path, 16, 8, false)) << ending;
        EXPECT_FALSE(IsWholeImage(path, 16, 8, true)) << ending;
        image.InitAlpha(); // all of it covers
        ASSERT_EQ(WriteImageFile(image, path, {}), "");
        EXPECT_TRUE(IsWholeImage(path, 16, 8, true)) << ending;
        EXPECT_FALSE(IsWholeImage(path, 16, 8, false)) << ending;
    }
}

bool IsProcessThere(pid_t pid) {
    std::ifstream file("/proc/" + std::to_string(pid) + "/stat");
    std::string line;
    return std::getline(file, line) && line.find(") Z") == std::string::npos;
}

// A program in the place of the tool tells its process number and works for a long time.
TEST_F(VideoMaker, TheToolDoesNotOutliveUs) {
    const VideoJob_st job = MakeJob(1, 16, 16);
    const std::string tool = mFolder + "/ffmpeg", number = mFolder + "/number";
    std::ofstream(tool) << "#!/bin/sh\necho $$ > '" << number << "'\nexec sleep 60\n";
    fs::permissions(tool, fs::perms::owner_all);
    const pid_t child = fork();
    if (child == 0) {
        setenv("PATH", (mFolder + ":/usr/bin:/bin").c_str(), 1);
        auto* maker = new VideoMaker_cls;
        if (!maker->Start(job).empty()) _exit(1);
        for (int tries = 0; tries < 2000 && (!fs::exists(number) || fs::file_size(number) == 0); ++tries)
            usleep(5000);
        _exit(0);
    }
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_EQ(status, 0);
    pid_t pid = 0;
    ASSERT_TRUE(std::ifstream(number) >> pid);
    for (int tries = 0; tries < 2000 && IsProcessThere(pid); ++tries)
        usleep(5000);
    EXPECT_FALSE(IsProcessThere(pid));
}

} // namespace
