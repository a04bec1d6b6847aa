// The project in a picture: written and read back in every form, and files that only seem to carry one.
#include "IMAGE/PictureOrigin.h"

#include <zlib.h>

#include <cstring>
#include <fstream>
#include <iterator>

#include <gtest/gtest.h>
#include <wx/image.h>
#include <wx/log.h>

#include "APP/ProjectText.h"
#include "IMAGE/ImageFile.h"
#include "IMAGE/PngText.h"
#include "IMAGE/TiffText.h"
#include "TempFolder.h"

namespace {

std::string ReadAll(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

class PictureOrigin : public ::testing::Test {
protected:
    void SetUp() override {
        if (!wxImage::FindHandler(wxBITMAP_TYPE_PNG)) wxInitAllImageHandlers();
        mOrigin.mData = "melt0000.bin\nrun%04d.txt";
        mOrigin.mSoftware = "Morentis 0.80.0";
        mOrigin.mProject = "DataSequence0=0\n/data/Körner/melt0000.bin\n";
        for (int i = 0; i < 3000; ++i)
            mOrigin.mProject += "Key" + std::to_string(i * i) + "=\t" + std::to_string(i) + "\n";
    }
    /// A picture of noise; its path.
    std::string Write(const std::string& name, bool bAlpha, bool bCarries, bool bSmallest = false) {
        wxImage image(33, 21);
        unsigned state = 5;
        for (int i = 0; i < 33 * 21 * 3; ++i)
            image.GetData()[i] = static_cast<unsigned char>((state = state * 1103515245u + 12345u) >> 16);
        if (bAlpha) image.SetAlpha();
        for (int i = 0; i < 33 * 21 && bAlpha; ++i)
            image.GetAlpha()[i] = static_cast<unsigned char>(i);
        ImageFormat_st format;
        format.mbSmallestPNG = bSmallest;
        format.mOrigin.mFrame = "12+1/4";
        if (bCarries) format.mOrigin.mpPack = std::make_shared<OriginPack_cls>(mOrigin);
        const std::string path = mTemp.GetPath() + "/" + name;
        EXPECT_EQ(WriteImageFile(image, path, format), "");
        return path;
    }
    OriginFound Read(const std::string& path) { return ReadPictureOrigin(path, &mRead, &mReason); }
    OriginFound ReadBytes(const std::string& bytes) { return Read(mTemp.Write("bytes", bytes)); }
    /// A PNG with a chunk whose data are these and whose checksum is right.
    static std::string MakePng(const std::string& data, std::uint32_t length = 0) {
        const auto number = [](std::uint32_t value) {
            std::string bytes;
            for (const int shift : {24, 16, 8, 0})
                bytes += char(value >> shift & 0xff);
            return bytes;
        };
        const std::string chunk = "iTXt" + data;
        const auto sum =
            std::uint32_t(crc32(0, reinterpret_cast<const Bytef*>(chunk.data()), uInt(chunk.size())));
        const std::string head("\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0\0\1\0\0\0\1\10\2\0\0\0\x90wS\xde", 33);
        return head + number(length > 0 ? length : std::uint32_t(data.size())) + chunk + number(sum);
    }
    /// A project chunk's data up to the text.
    static std::string Head(char compressed) {
        return std::string("Morentis-Project\0", 17) + compressed + std::string(3, '\0');
    }
    static std::string Deflate(const std::string& text) {
        std::string bytes(compressBound(uLong(text.size())), '\0');
        uLongf length = uLongf(bytes.size());
        compress(reinterpret_cast<Bytef*>(bytes.data()), &length, reinterpret_cast<const Bytef*>(text.data()),
                 uLong(text.size()));
        bytes.resize(length);
        return bytes;
    }

    TempFolder_cls mTemp;
    PictureOrigin_st mOrigin;
    PictureOrigin_st mRead;
    wxString mReason;
};

/// What libraries say about a file.
class LogLines_cls : public wxLog {
public:
    LogLines_cls() : mpOld(SetActiveTarget(this)) {}
    ~LogLines_cls() override { SetActiveTarget(mpOld); }
    wxString mText;

protected:
    void DoLogRecord(wxLogLevel, const wxString& text, const wxLogRecordInfo&) override { mText += text; }

private:
    wxLog* mpOld;
};

TEST_F(PictureOrigin, EveryFormReadsBackAndShowsTheSamePixels) {
    for (const std::string ending : {"png", "tif", "TIFF"})
        for (const int form : {0, 1, 2, 3}) {
            SCOPED_TRACE(ending + " " + std::to_string(form));
            const bool bAlpha = form % 2 == 1, bSmallest = form > 1;
            const std::string plain = Write("plain." + ending, bAlpha, false, bSmallest);
            const std::string full = Write("full." + ending, bAlpha, true, bSmallest);
            EXPECT_EQ(Read(plain), OriginFound::None);
            ASSERT_EQ(Read(full), OriginFound::Whole) << mReason;
            EXPECT_TRUE(mRead.mProject == mOrigin.mProject);
            EXPECT_EQ(mRead.mFrame, "12+1/4");
            EXPECT_EQ(mRead.mData, mOrigin.mData);
            EXPECT_EQ(mRead.mSoftware, mOrigin.mSoftware);
            LogLines_cls log;
            const wxImage a(plain), b(full);
            EXPECT_EQ(log.mText, "") << "other readers don't mind";
            ASSERT_EQ(b.GetSize(), wxSize(33, 21));
            ASSERT_EQ(b.HasAlpha(), bAlpha);
            EXPECT_EQ(0, std::memcmp(a.GetData(), b.GetData(), 33 * 21 * 3));
            EXPECT_TRUE(!bAlpha || 0 == std::memcmp(a.GetAlpha(), b.GetAlpha(), 33 * 21));
            // What is added is added: all else stays byte for byte.
            const std::string before = ReadAll(plain), after = ReadAll(full);
            const size_t more = after.size() - before.size();
            if (ending == "png") {
                EXPECT_TRUE(after.substr(0, 33) + after.substr(33 + more) == before);
                EXPECT_LT(more, mOrigin.mProject.size()) << "it is compressed";
            } else {
                EXPECT_TRUE(after.substr(8, before.size() - 8) == before.substr(8));
            }
        }
    for (const std::string ending : {"jpg", "bmp"})
        EXPECT_TRUE(ReadAll(Write("a." + ending, false, false)) ==
                    ReadAll(Write("b." + ending, false, true)));
}

TEST_F(PictureOrigin, ATiffOfTheOtherByteOrderAndOneWithTextsOfItsOwn) {
    // One entry: a description of four bytes, which stands in its place.
    std::string bytes("MM\0*\0\0\0\x08\0\1\1\x0e\0\2\0\0\0\4abc\0\0\0\0\0", 26);
    EXPECT_EQ(ReadBytes(bytes), OriginFound::None);
    SetTiffTexts("Morentis-Frame: 7\nMorentis-Data: d\nMorentis-Project:\nabc", "x", &bytes);
    ASSERT_EQ(ReadBytes(bytes), OriginFound::Whole);
    EXPECT_EQ(mRead.mProject + mRead.mFrame + mRead.mData + mRead.mSoftware, "abc7dx");
    SetTiffTexts("another", "", &bytes);
    EXPECT_EQ(ReadBytes(bytes), OriginFound::None);
    EXPECT_EQ(mRead.mSoftware, "");
}

TEST_F(PictureOrigin, HostilePngsSayWhatIsWrong) {
    EXPECT_EQ(ReadBytes(MakePng(Head(0) + "text")), OriginFound::Whole);
    EXPECT_EQ(mRead.mProject, "text");
    EXPECT_EQ(ReadBytes(MakePng(Head(1) + Deflate("text"))), OriginFound::Whole);
    EXPECT_EQ(mRead.mProject, "text");
    const std::string bomb = Deflate(std::string(kLongestOrigin + 1, 'x'));
    struct Case_st {
        std::string mBytes;
        const char* mpReason;
    };
    const Case_st cases[] = {
        {MakePng(Head(1) + bomb), "larger than 64 MB"},
        {MakePng(Head(0) + "text", 0x7fffffff), "larger than 64 MB"},
        {MakePng(Head(0) + "text", 5000), "cut off"},
        {MakePng(Head(0) + "text").substr(0, 60), "cut off"},
        {MakePng(Head(1) + Deflate("text").substr(0, 5)), "damaged"},
        {MakePng(Head(1) + "no such thing"), "damaged"},
        {MakePng(Head(2) + "text"), "damaged"},
        {MakePng(Head(1).substr(0, 17)), "damaged"},
        {MakePng(Head(0).substr(0, 20)), "damaged"},
        {MakePng(Head(0) + std::string("a\0b", 3)), "no text"},
        {MakePng(Head(1) + Deflate(std::string("a\0b", 3))), "no text"},
    };
    for (const Case_st& one : cases) {
        EXPECT_EQ(ReadBytes(one.mBytes), OriginFound::Broken) << one.mpReason;
        EXPECT_TRUE(mReason.Contains(one.mpReason)) << mReason << ", not " << one.mpReason;
    }
    std::string flipped = ReadAll(Write("a.png", false, true));
    flipped[flipped.find("Morentis-Project") + 200] ^= 1;
    EXPECT_EQ(ReadBytes(flipped), OriginFound::Broken);
    EXPECT_TRUE(mReason.Contains("damaged"));
    // Others' texts, whatever they are like, and what is no picture.
    for (const std::string& bytes :
         {MakePng(std::string("Software\0\7", 10)), MakePng("Morentis-Project"),
          MakePng(std::string("Morentis-Frame\0\0\0\0\0", 19) + "12"), std::string(), std::string("II*"),
          ReadAll(Write("b.jpg", false, false))})
        EXPECT_EQ(ReadBytes(bytes), OriginFound::None);
    for (const char* path : {"/nowhere.png", "/tmp", "/dev/zero"})
        EXPECT_EQ(Read(path), OriginFound::None) << path;
}

TEST_F(PictureOrigin, HostileTiffsSayWhatIsWrong) {
    const std::string whole = ReadAll(Write("a.tif", false, true));
    const size_t entry = whole.rfind(std::string("\x0e\1\2\0", 4)); // the description's, little-endian
    ASSERT_NE(entry, std::string::npos);
    const auto with = [&](size_t at, const std::string& bytes) {
        std::string changed = whole;
        return changed.replace(at, bytes.size(), bytes);
    };
    EXPECT_EQ(ReadBytes(with(entry + 4, "\xff\xff\xff\x7f")), OriginFound::Broken);
    EXPECT_TRUE(mReason.Contains("larger")) << mReason;
    EXPECT_EQ(ReadBytes(with(entry + 8, "\xf0\xff\xff\xff")), OriginFound::Broken);
    EXPECT_TRUE(mReason.Contains("cut off")) << mReason;
    EXPECT_EQ(ReadBytes(with(entry + 2, "\7")), OriginFound::Broken);
    EXPECT_TRUE(mReason.Contains("damaged")) << mReason;
    EXPECT_EQ(ReadBytes(with(whole.find("DataSequence0"), std::string(1, '\0'))), OriginFound::Broken);
    EXPECT_TRUE(mReason.Contains("no text")) << mReason;
    EXPECT_EQ(ReadBytes(with(4, "\xff\xff\xff\xff")), OriginFound::None);
    for (const size_t length : {whole.size() / 2, size_t(9)})
        EXPECT_NE(ReadBytes(whole.substr(0, length)), OriginFound::Whole) << length;
}

TEST_F(PictureOrigin, FramesAsText) {
    int frame = -1, step = -1, steps = -1;
    EXPECT_TRUE(ReadFrameText(MakeFrameText(12, 0, 4), &frame, &step, &steps));
    EXPECT_EQ(frame * 100 + step * 10 + steps, 1201);
    EXPECT_TRUE(ReadFrameText(MakeFrameText(12, 3, 4), &frame, &step, &steps));
    EXPECT_EQ(frame * 100 + step * 10 + steps, 1234);
    for (const char* wrong :
         {"", "-1", " 1", "1 ", "1+", "1+1", "1+4/4", "1+1/", "1.5", "9999999999", "1+1/2x"})
        EXPECT_FALSE(ReadFrameText(wrong, &frame, &step, &steps)) << wrong;
}

TEST_F(PictureOrigin, ATextThatIsAProjectNamesItsData) {
    const std::wstring text =
        L"Panel0=1\nDataSequence0=0\nmelt0000.bin\nDataSequence1=1\n\nDataSequenceX=1\nno\n";
    EXPECT_TRUE(IsProjectText(text));
    EXPECT_EQ(ListProjectData(text), std::vector<wxString>{"melt0000.bin"});
    EXPECT_FALSE(IsProjectText(L"DataSequence\nDataSequenceX=\n"));
}

} // namespace
