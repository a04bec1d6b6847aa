// A grammar with all of its 16 places taken, and lines with more numbers than any one scan takes.
#include "ReaderTestTools.h"

namespace {

const std::vector<int> kHead16{2, 3, 4, 0, 2, 2, 3, 1, 4, 2, 2, 2, 2, 2, 3, 2};
const std::vector<int> kBody16{4, 0, 4, 1, 2, 5, 3, 6, 4, 7, 2, 8, 4, 4, 3, 2};

// What stands in word k of particle i: every word of a file is another number.
int Word(int i, int k) { return 100 * i + k; }

std::vector<int> WithoutSizes(const std::vector<int>& body) {
    std::vector<int> words; // the item code of each word
    for (const int code : body)
        words.insert(words.end(), static_cast<size_t>(GrammerBase_cls::GetBodyItemByte(code) / 4), code);
    return words;
}

void ExpectParticles(const TestArrays_cls& arrays) {
    for (int i = 0; i < 2; ++i) {
        const size_t n = static_cast<size_t>(i);
        EXPECT_EQ(static_cast<float>(Word(i, 10)), arrays->mpPos[n][0]);
        EXPECT_EQ(static_cast<float>(Word(i, 12)), arrays->mpPos[n][2]);
        EXPECT_EQ(static_cast<float>(Word(i, 25)), arrays->mpVel[n][2]);
        EXPECT_EQ(static_cast<float>(Word(i, 27)), arrays->mpRadius[n]);
        EXPECT_EQ(Word(i, 31), arrays->mpID[n]);
        EXPECT_EQ(i == 0 ? 3 : 4, arrays->mpType[n]);
        EXPECT_EQ(static_cast<float>(Word(i, 44)), arrays->mpValue1[n]);
    }
}

} // namespace

TEST(FullGrammar, SixteenItemsAreReadFromBinary) {
    TestLoader_cls loader(0, kHead16, kBody16);
    ASSERT_EQ(16u, loader.mCItemHead.mCount);
    ASSERT_EQ(16u, loader.mCItemBody.mCount);
    const int count = 2;
    // Behind 14 dummy words the time, behind 5 more the count, then 19 words that nobody needs.
    std::string bytes = std::string(4 * 14, 'x') + Pack(6.5f) + std::string(4 * 5, 'x') + Pack(count) +
                        std::string(4 * 19, 'x');
    ASSERT_EQ(static_cast<size_t>(loader.GetHeaderByte()), bytes.size());
    const std::vector<int> words = WithoutSizes(kBody16);
    for (int i = 0; i < count; ++i)
        for (size_t k = 0; k < words.size(); ++k) {
            const int word = words[k] == BODY_TYPE ? 3 + 6 * i : Word(i, static_cast<int>(k));
            bytes +=
                words[k] == BODY_ID || words[k] == BODY_TYPE ? Pack(word) : Pack(static_cast<float>(word));
        }
    TempDir_cls dir;
    const std::string path = dir.Write("full.bin", bytes);
    const SnapshotHeader_st header = ReadSnapshotHeader(loader, wxString::FromUTF8(path.c_str()));
    EXPECT_TRUE(header.mbOk) << header.mStrError;
    EXPECT_EQ(6.5, header.mTime);
    ASSERT_EQ(count, header.mNumber);
    TestArrays_cls arrays(count);
    ReadBody(loader, path, count, arrays);
    ExpectParticles(arrays);

    // Its line survives a project; a seventeenth item is dropped.
    TestLoader_cls other(0, {0, 1}, {0});
    EXPECT_TRUE(other.ReadStrLine(wxString(loader.mCItemBody.Serialize()).Trim() + " 8"));
    EXPECT_EQ(kBody16, other.GetBodyGrammer());
}

TEST(FullGrammar, MoreThanEighteenConversionsAreReadFromText) {
    // The head's lines before the count are one each for an item, so the big dummies stand behind it.
    TestLoader_cls loader(1, {0, 1, 2, 3, 4, 2, 2, 2, 2, 2, 2, 2, 2, 2, 2, 2}, kBody16);
    std::string text = "6.5\n2\n";
    for (int line = 2; line < loader.GetHeaderLine(); ++line)
        text += "head\n";
    const std::vector<int> words = WithoutSizes(kBody16);
    ASSERT_GT(words.size(), 18u);
    for (int i = 0; i < 2; ++i) {
        for (size_t k = 0; k < words.size(); ++k)
            text += std::to_string(words[k] == BODY_TYPE ? 3 + 6 * i : Word(i, static_cast<int>(k))) + " ";
        text += "\n";
    }
    TempDir_cls dir;
    const std::string path = dir.Write("full.txt", text);
    EXPECT_EQ(2, ReadSnapshotHeader(loader, wxString::FromUTF8(path.c_str())).mNumber);
    for (int threads = 1; threads <= 4; ++threads) {
        const ThreadCount_cls count(threads);
        TestArrays_cls arrays(2);
        ReadBody(loader, path, 2, arrays);
        ExpectParticles(arrays);
    }
}
