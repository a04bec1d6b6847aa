// Text snapshots: the numbers are those of sscanf on each line, whatever the line and the threads.
#include <cmath>
#include <clocale>
#include <cstring>
#include <random>

#include <unistd.h>

#include "CommaLocale.h"
#include "ReaderTestTools.h"
#include "PDATA/NumberScan.h"

namespace {

const std::vector<int> kHead{0, 1};
const std::vector<int> kDefault{0, 1, 5, 6, 7, 8};

// The plain way, kept simple: one sscanf a line with a format made of the items.
struct Plain_st {
    float mPos[3] = {0, 0, 0}, mVel[3] = {0, 0, 0}, mRadius = 0, mValue = 0;
    int mID = 0, mType = 0;
    bool mbType = false;
};

Plain_st ScanDefault(const std::string& line) {
    Plain_st p;
    const int number =
        std::sscanf(line.c_str(), "%f %f %f %f %f %f %f %d %d %f", p.mPos, p.mPos + 1, p.mPos + 2, p.mVel,
                    p.mVel + 1, p.mVel + 2, &p.mRadius, &p.mID, &p.mType, &p.mValue);
    p.mbType = number >= 9;
    return p;
}

void ExpectLine(const TestArrays_cls& arrays, size_t i, const std::string& line) {
    const Plain_st p = ScanDefault(line);
    const int byte = p.mType & 255;
    const bool bSame =
        memcmp(p.mPos, arrays->mpPos[i], 12) == 0 && memcmp(p.mVel, arrays->mpVel[i], 12) == 0 &&
        memcmp(&p.mRadius, arrays->mpRadius + i, 4) == 0 && memcmp(&p.mValue, arrays->mpValue1 + i, 4) == 0 &&
        p.mID == arrays->mpID[i] && (p.mbType ? std::min(byte, 4) : 0) == arrays->mpType[i];
    ASSERT_TRUE(bSame) << "line " << i << ": " << line;
}

// Numbers that hurt: long, tiny, huge, half way between two floats, and what isn't a plain number at all.
class NastyNumbers_cls {
public:
    std::string Next() {
        char text[400];
        switch (mRandom() % 24) {
        case 0:
            return Format(text, "%.9g", Bits());
        case 1:
            return Format(text, "%.17g", Bits());
        case 2:
            return Format(text, "%a", Bits());
        case 3:
            return Format(text, "%.50e", HalfWay());
        case 4:
            return Format(text, "%.20g", HalfWay());
        case 5:
            return Format(text, "%.30f", HalfWay() * 1e-3);
        case 6:
            return Format(text, "%.3e", std::pow(10.0, Real() * 50));
        case 7:
            return Format(text, "%g", 1.4e-45 * std::abs(Real()) * 100);
        case 8:
            return Format(text, "%.12g", 3.4028235e38 * (1 + Real() * 1e-7));
        case 9:
            return Odd();
        case 10:
            return std::to_string(static_cast<int>(mRandom()));
        case 11:
            return std::to_string(mRandom()) + std::to_string(mRandom()) + "." + std::to_string(mRandom());
        case 12:
            return "." + std::to_string(mRandom());
        case 13:
            return "+" + std::to_string(mRandom() % 1000) + ".";
        case 14:
            return "-000" + std::to_string(mRandom() % 10) + ".5E-0" + std::to_string(mRandom() % 10);
        default:
            return Format(text, "%.*f", Real() * 100);
        }
    }
    std::string Int() {
        return mRandom() % 40 == 0 ? Next() : std::to_string(static_cast<int>(mRandom() % 20000) - 9);
    }
    std::string Blank() {
        static const char* const sBlanks[] = {" ", "  ", "\t", " \r", "\v", "", "   \f ", " "};
        return mRandom() % 8 == 0 ? sBlanks[mRandom() % 8] : " ";
    }
    unsigned Random() { return static_cast<unsigned>(mRandom()); }

private:
    std::string Format(char* text, const char* format, double value) {
        if (std::strchr(format, '*'))
            snprintf(text, 400, "%.*f", static_cast<int>(mRandom() % 12), value);
        else if (std::strcmp(format, "%a") == 0)
            snprintf(text, 400, "%a", value);
        else { // precision and letter of the format
            const int precision = format[1] == '.' ? atoi(format + 2) : 6;
            const char letter = format[strlen(format) - 1];
            if (letter == 'e') snprintf(text, 400, "%.*e", precision, value);
            if (letter == 'f') snprintf(text, 400, "%.*f", precision, value);
            if (letter == 'g') snprintf(text, 400, "%.*g", precision, value);
        }
        return text;
    }
    std::string Odd() {
        static const char* const sOdd[] = {"nan",
                                           "NaN(12)",
                                           "inf",
                                           "-Infinity",
                                           "1e400",
                                           "1e-400",
                                           "0x1.8p3",
                                           "0x",
                                           "1e",
                                           "1e+",
                                           "-",
                                           "+",
                                           ".",
                                           "-.5",
                                           "5.",
                                           "12.0",
                                           "1,5",
                                           "0.1D+00",
                                           "C",
                                           "1.5abc",
                                           "--1",
                                           "1-2",
                                           "99999999999",
                                           "-99999999999999999999",
                                           "0.000000000000000000000000000000000000001",
                                           "340282356779733661637539395458142568447",
                                           "16777217",
                                           "16777219",
                                           "9007199254740993",
                                           "1e00000001",
                                           "2147483648"};
        return sOdd[mRandom() % (sizeof sOdd / sizeof sOdd[0])];
    }
    double Bits() {
        float value;
        const unsigned bits = Random();
        memcpy(&value, &bits, 4);
        return static_cast<double>(value);
    }
    // Exactly, or nearly, between two floats.
    double HalfWay() {
        const float low =
            static_cast<float>(std::abs(Real()) * std::pow(10.0, static_cast<int>(mRandom() % 20) - 10));
        const double middle =
            (static_cast<double>(low) + static_cast<double>(std::nextafter(low, 1e30f))) / 2;
        return mRandom() % 2 ? middle : std::nextafter(middle, mRandom() % 2 ? 1e300 : -1e300);
    }
    double Real() { return std::uniform_real_distribution<double>(-1, 1)(mRandom); }
    std::mt19937 mRandom{20240607};
};

} // namespace

// A quarter of a million nasty numbers in 100,000 lines, read with 1 to 4 threads.
TEST(TextReader, GivesTheNumbersOfSscanfOnEachLine) {
    const int number = 100000;
    NastyNumbers_cls nasty;
    std::vector<std::string> lines;
    std::string text = "1.5\n" + std::to_string(number) + "\n";
    for (int i = 0; i < number; ++i) {
        std::string line = nasty.Blank() == "\t" ? "  " : "";
        const unsigned columns = nasty.Random() % 10 == 0 ? nasty.Random() % 13 : 10;
        for (unsigned k = 0; k < columns; ++k)
            line += (k == 7 || k == 8 ? nasty.Int() : nasty.Next()) + nasty.Blank();
        if (nasty.Random() % 500 == 0) line.insert(line.size() / 2, 1, '\0');
        text += line + "\n";
        lines.push_back(line);
    }
    TempDir_cls dir;
    const std::string path = dir.Write("nasty.txt", text);
    TestLoader_cls loader(1, kHead, kDefault);
    std::string first;
    for (int threads = 1; threads <= 4; ++threads) {
        ThreadCount_cls count(threads);
        TestArrays_cls arrays(number);
        ReadBody(loader, path, number, arrays);
        if (threads == 1) {
            for (int i = 0; i < number && !HasFatalFailure(); ++i)
                ExpectLine(arrays, static_cast<size_t>(i), lines[static_cast<size_t>(i)]);
            first = arrays.AllBytes();
        }
        EXPECT_TRUE(first == arrays.AllBytes()) << threads << " threads";
    }
}

// Each float that the scanner works out itself is the one that strtof gives.
TEST(TextReader, ScansPlainNumbersExactly) {
    NastyNumbers_cls nasty;
    int plain = 0;
    for (int i = 0; i < 300000; ++i) {
        const std::string text = nasty.Next() + std::string(kScanPad, '\0');
        const char* cursor = text.c_str();
        float value = 0;
        if (!ScanFloat(cursor, value)) continue;
        ++plain;
        char* end = nullptr;
        const float expected = strtof(text.c_str(), &end);
        ASSERT_EQ(0, memcmp(&value, &expected, 4)) << text;
        ASSERT_EQ(static_cast<const char*>(end), cursor) << text;
    }
    EXPECT_GT(plain, 150000);
}

TEST(TextReader, LeavesZeroWhereALineLacksNumbers) {
    TempDir_cls dir;
    const std::string path = dir.Write(
        "short.txt", "0\n5\n1 2 3 4 5 6 7 8 3 9\n1 2\n\n1 2 3 4 5 6 7 8\n1 2 3 4 5 6 7 8 7 9 extra 11\n");
    TestLoader_cls loader(1, kHead, kDefault);
    TestArrays_cls arrays(7);
    testing::internal::CaptureStdout();
    ReadBody(loader, path, 7, arrays);
    const std::string words = testing::internal::GetCapturedStdout();
    EXPECT_EQ(path + ": the file ends after 5 of 7 particles, the others are zero\n" + path +
                  ": 3 lines lack numbers or hold other text, the first is line 4\n",
              words);
    EXPECT_EQ(3, arrays->mpType[0]);
    EXPECT_EQ(2.0f, arrays->mpPos[1][1]);
    EXPECT_EQ(0.0f, arrays->mpPos[1][2]);
    EXPECT_EQ(0.0f, arrays->mpPos[2][0]);
    EXPECT_EQ(8, arrays->mpID[3]);
    EXPECT_EQ(0, arrays->mpType[3]) << "a line without a type leaves it alone";
    EXPECT_EQ(4, arrays->mpType[4]) << "7 is over 4";
    for (size_t i = 5; i < 7; ++i)
        EXPECT_EQ(0.0f, arrays->mpValue1[i] + arrays->mpPos[i][0] + arrays->mpDRadius[i]);
}

TEST(TextReader, TakesItemsInAnyOrderAndNumber) {
    // Dummy*10 twice, Dummy*3, a code that doesn't exist, the position twice: 30 numbers a line.
    TestLoader_cls loader(1, {3, 1}, {4, 0, 77, 3, 7, 4, 0, 8});
    std::string line;
    for (int k = 0; k < 31; ++k)
        line += std::to_string(k % 10) + (k % 5 == 0 ? "\t" : " ");
    TempDir_cls dir;
    const std::string path = dir.Write("many.txt", "a\nb\nc\n2\n" + line + "\r\n" + line);
    TestArrays_cls arrays(2);
    ReadBody(loader, path, 2, arrays);
    for (size_t i = 0; i < 2; ++i) {
        EXPECT_EQ(7.0f, arrays->mpPos[i][0]) << "the last of two wins";
        EXPECT_EQ(9.0f, arrays->mpPos[i][2]);
        EXPECT_EQ(4, arrays->mpType[i]);
        EXPECT_EQ(0.0f, arrays->mpValue1[i]);
        EXPECT_EQ(0, arrays->mpID[i]);
        EXPECT_EQ(0.0f, arrays->mpVel[i][1]);
    }
}

TEST(TextReader, CopesWithLinesLongerThanItsChunks) {
    const std::string longLine =
        "1 2 3 4 5 6 0." + std::string(700000, '3') + " 8 1 9" + std::string(300000, ' ');
    std::string text = "0\n403\n" + std::string(600000, 'h') + "\n"; // a head line that nobody needs
    for (int i = 0; i < 400; ++i)
        text += (i == 7 ? longLine : std::to_string(i) + " 2 3 4 5 6 7 8 1 9") + "\n";
    text += longLine + "\n" + longLine + "\n4 5 6";
    TempDir_cls dir;
    const std::string path = dir.Write("long.txt", text);
    TestLoader_cls loader(1, {0, 1, 2}, kDefault);
    std::string first;
    for (int threads = 1; threads <= 4; ++threads) {
        ThreadCount_cls count(threads);
        TestArrays_cls arrays(403);
        ReadBody(loader, path, 403, arrays);
        EXPECT_EQ(6.0f, arrays->mpPos[6][0]);
        EXPECT_EQ(0.33333334f, arrays->mpRadius[7]);
        EXPECT_EQ(9.0f, arrays->mpValue1[7]);
        EXPECT_EQ(399.0f, arrays->mpPos[399][0]);
        EXPECT_EQ(9.0f, arrays->mpValue1[401]);
        EXPECT_EQ(6.0f, arrays->mpPos[402][2]);
        if (threads == 1) first = arrays.AllBytes();
        EXPECT_TRUE(first == arrays.AllBytes());
    }
}

// Offsets past 31 bits, on a file with a hole that holds no line end.
TEST(TextReader, WorksBeyondTwoGigabytes) {
    constexpr long long kHole = 2200000000;
    // A hole is read fast from memory, and takes none.
    const std::filesystem::path shared = "/dev/shm";
    const bool bShared = access(shared.c_str(), W_OK) == 0;
    const TempFolder_cls dir("morentis_", bShared ? shared : std::filesystem::temp_directory_path());
    const std::string path = dir.Write("big.txt", "0\n3\n1 2 3\n4 5 6");
    FILE* file = fopen(path.c_str(), "r+b");
    ASSERT_EQ(0, fseeko(file, kHole, SEEK_SET));
    ASSERT_GT(fputs("\n7 8 9\n", file), 0);
    fclose(file);
    const TestLoader_cls loader(1, kHead, {0});
    EXPECT_EQ(3, ReadSnapshotHeader(loader, wxString::FromUTF8(path.c_str())).mNumber);
    TestArrays_cls arrays(3);
    ReadBody(loader, path, 3, arrays);
    EXPECT_EQ(3.0f, arrays->mpPos[0][2]);
    EXPECT_EQ(6.0f, arrays->mpPos[1][2]);
    EXPECT_EQ(9.0f, arrays->mpPos[2][2]);
}

TEST(TextReader, KeepsThePointUnderACommaLocale) {
    const CommaLocale_cls comma(LC_NUMERIC);
    ASSERT_TRUE(comma.mbActive);
    TempDir_cls dir;
    const std::string path = dir.Write("point.txt", "2.5\n1\n1.5 0x1.8p0 3.25e0 4 5 6 7 8 1 1.5nan\n");
    TestLoader_cls loader(1, kHead, kDefault);
    const SnapshotHeader_st header = ReadSnapshotHeader(loader, wxString::FromUTF8(path.c_str()));
    TestArrays_cls arrays(1);
    ReadBody(loader, path, 1, arrays);
    EXPECT_EQ(2.5, header.mTime);
    EXPECT_EQ(1.5f, arrays->mpPos[0][0]);
    EXPECT_EQ(1.5f, arrays->mpPos[0][1]);
    EXPECT_EQ(1.5f, arrays->mpValue1[0]);
}

TEST(TextReader, AdjustsInTheOrderShiftScaleLogarithm) {
    TempDir_cls dir;
    const std::string path = dir.Write("adjust.txt", "0\n3\n1 2 3 4 5 6 7 8 1 100\n1 2 3 4 5 6 7 8 1 -5\n");
    TestLoader_cls loader(1, kHead, kDefault);
    for (const char* line :
         {"LoaderTranslate=1 2 3", "LoaderScale=2", "LoaderScaleValue1=10", "LoaderLogarithm=1"})
        loader.ReadStrLine(line);
    TestArrays_cls arrays(3);
    ReadBody(loader, path, 3, arrays);
    EXPECT_EQ(4.0f, arrays->mpPos[0][0]);
    EXPECT_EQ(12.0f, arrays->mpPos[0][2]);
    EXPECT_EQ(8.0f, arrays->mpVel[0][0]) << "velocities are scaled, not shifted";
    EXPECT_EQ(14.0f, arrays->mpRadius[0]);
    EXPECT_EQ(3.0f, arrays->mpValue1[0]);
    EXPECT_EQ(0.0f, arrays->mpValue1[1]) << "no logarithm of a negative value";
    EXPECT_EQ(4.0f, arrays->mpPos[2][1]) << "particles that the file lacks are adjusted zeros";

    loader.ReadStrLine("LoaderScale=0");
    loader.ReadStrLine("LoaderScaleValue1=0");
    ReadBody(loader, path, 3, arrays);
    EXPECT_EQ(2.0f, arrays->mpPos[0][0]) << "a scale of 0 leaves the data alone";
    EXPECT_EQ(2.0f, arrays->mpValue1[0]);
}
