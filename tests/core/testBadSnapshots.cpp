// Malformed and odd snapshots: each file through head and body; the words for those that are refused.
#include <algorithm>
#include <cmath>
#include <fstream>
#include <limits>
#include <map>
#include <sstream>
#include <vector>

#include "PDATA/RecordCopy.h"
#include "ReaderTestTools.h"

namespace {

const std::string kBad = std::string(MORENTIS_TEST_ROOT) + "/tests/data/bad/";
const char* const kCheckBoth = " Check data type and header format in the data loader.";
const char* const kCheckHead = " Check the header format in the data loader.";

struct Outcome_st {
    int mNumber = -1;   ///< -1: refused
    std::string mError; ///< without the file's name
    std::string mWords; ///< what body reading told, without the file's name
    float mSum = 0;     ///< of the positions' x, to tell results apart
};

Outcome_st ReadBad(const std::string& name, int dataType, const std::vector<int>& head,
                   const std::vector<int>& body) {
    const TestLoader_cls loader(dataType, head, body);
    const std::string path = kBad + name;
    const SnapshotHeader_st header = ReadSnapshotHeader(loader, wxString::FromUTF8(path.c_str()));
    Outcome_st outcome;
    outcome.mError = header.mStrError.utf8_string();
    if (!header.mbOk) {
        EXPECT_EQ(0u, outcome.mError.find(path + "\n")) << outcome.mError;
        outcome.mError.erase(0, path.size() + 1);
        return outcome;
    }
    outcome.mNumber = header.mNumber;
    TestArrays_cls arrays(header.mNumber);
    testing::internal::CaptureStdout();
    ReadBody(loader, path, header.mNumber, arrays);
    outcome.mWords = testing::internal::GetCapturedStdout();
    for (size_t at; (at = outcome.mWords.find(path + ": ")) != std::string::npos;)
        outcome.mWords.erase(at, path.size() + 2);
    for (int i = 0; i < header.mNumber; ++i) {
        EXPECT_LE(arrays->mpType[i], 4) << name;
        outcome.mSum += arrays->mpPos[i][0];
    }
    return outcome;
}

Outcome_st ReadBinary(const std::string& name) {
    return ReadBad("binary/" + name + "/snap0000.bin", 0, {0, 1}, {0, 1, 5, 6, 7, 8});
}

Outcome_st ReadText(const std::string& name) {
    return ReadBad("text/" + name + "/snap0000.txt", 1, {0, 1}, {0, 1, 5, 6, 7, 8});
}

Outcome_st ReadLammps(const std::string& name) {
    return ReadBad("lammps/" + name + "/snap0000.txt", 1, {2, 0, 2, 1, 2, 3, 2}, {6, 7, 0, 1, 8});
}

std::string Refuse(long long number, int bytes) {
    return "The header says " + std::to_string(number) + " particles, but the file has " +
           std::to_string(bytes) + " bytes." + kCheckBoth;
}

std::string Ends(int found, int number) {
    return "the file ends after " + std::to_string(found) + " of " + std::to_string(number) +
           " particles, the others are zero\n";
}

std::string Short(int lines, int first) {
    return std::to_string(lines) + " lines lack numbers or hold other text, the first is line " +
           std::to_string(first) + "\n";
}

// Every snapshot that the manifest lists survives; a valid one has the count that stands there.
void CheckManifest() {
    std::ifstream manifest(kBad + "MANIFEST.txt");
    int files = 0;
    for (std::string line; std::getline(manifest, line);) {
        std::vector<std::string> fields;
        std::istringstream stream(line);
        for (std::string field; std::getline(stream, field, ';');)
            fields.push_back(field.substr(field[0] == ' ' ? 1 : 0));
        if (line[0] == '#' || fields.size() < 6 || line.find("snap0000") == std::string::npos) continue;
        while (fields[0].back() == ' ')
            fields[0].pop_back();
        std::vector<int> lists[2];
        for (size_t k = 0; k < 2; ++k) {
            std::istringstream codes(fields[2 + k]);
            for (int code; codes >> code;)
                lists[k].push_back(code);
        }
        const Outcome_st outcome = ReadBad(fields[0], fields[1][0] == 't' ? 1 : 0, lists[0], lists[1]);
        const std::string& expect = fields.back();
        if (expect.rfind("valid ", 0) == 0) {
            EXPECT_EQ(std::stoi(expect.substr(6)), outcome.mNumber) << line;
        }
        ++files;
    }
    EXPECT_GT(files, 75);
}

} // namespace

TEST(BadSnapshots, SurviveAllOfTheManifest) { CheckManifest(); }

TEST(BadSnapshots, BinaryOnesAreRefusedWithTheseWords) {
    const std::string cut = "The file ends within its header (it has 6 bytes).";
    const std::map<std::string, std::string> errors = {{"count_huge", Refuse(2147483647, 4008)},
                                                       {"count_54m", Refuse(53687092, 4008)},
                                                       {"count_107m", Refuse(107374183, 4008)},
                                                       {"count_negative", Refuse(-1, 4008)},
                                                       {"count_min", Refuse(-2147483648LL, 4008)},
                                                       {"big_endian", Refuse(1677721600, 4008)},
                                                       {"empty", "The file is empty."},
                                                       {"header_only", Refuse(100, 8)},
                                                       {"header_cut", cut + kCheckHead}};
    for (const auto& [name, error] : errors)
        EXPECT_EQ(error, ReadBinary(name).mError) << name;
    EXPECT_EQ(-1, ReadBinary("text_read_as_binary").mNumber);
}

TEST(BadSnapshots, BinaryOnesThatEndEarlyKeepWhatIsThere) {
    EXPECT_EQ(Ends(99, 100), ReadBinary("half_record").mWords);
    EXPECT_EQ(Ends(99, 100), ReadBinary("one_byte_short").mWords);
    EXPECT_EQ(Ends(100, 101), ReadBinary("count_too_big").mWords);
    const float whole = ReadBinary("ok_reference").mSum;
    for (const char* name : {"half_record", "one_byte_short", "count_too_big", "one_byte_long"})
        EXPECT_EQ(whole, ReadBinary(name).mSum) << name;
    EXPECT_EQ("", ReadBinary("one_byte_long").mWords);
    EXPECT_EQ("", ReadBinary("count_too_small").mWords);
}

// Nothing draws them; the others are as good as ever.
TEST(BadSnapshots, ParticlesWithoutAPlaceAreTold) {
    const auto told = [](int number, int all) {
        return std::to_string(number) + " of " + std::to_string(all) +
               " particles aren't drawn, their place is no number or too far\n";
    };
    EXPECT_EQ(told(10, 100), ReadBinary("nan_positions").mWords);
    EXPECT_EQ(told(10, 100), ReadBinary("inf_positions").mWords);
    EXPECT_EQ(told(100, 100), ReadBinary("all_nan").mWords);
    EXPECT_EQ(told(15, 100), ReadText("nan_inf").mWords);
    EXPECT_EQ(told(1, 100), ReadText("overflow_numbers").mWords);
    EXPECT_EQ("", ReadBinary("radius_bad").mWords) << "the place is what counts";
}

// As many are looked at together, of which few are none.
TEST(BadSnapshots, ParticlesWithoutAPlaceAreFoundAmongMany) {
    const float none = std::numeric_limits<float>::quiet_NaN(), far = 2e38f;
    for (const size_t stride : {3u, 7u})
        for (const size_t number : {255u, 256u, 257u, 512u, 513u, 1000u}) {
            std::vector<float> records(stride * number, 3e37f);
            for (size_t i = 0; stride > 3 && i < number; ++i)
                records[stride * i + 3] = none; // no part of the place
            size_t expected = 0;
            const auto count = [&] {
                return CountPlaceless(reinterpret_cast<const unsigned char*>(records.data()),
                                      stride * sizeof(float), number);
            };
            for (const size_t i : {size_t(0), size_t(255), size_t(256), number - 1}) {
                float* const place = &records[stride * std::min(i, number - 1)];
                EXPECT_EQ(count(), expected) << stride << " " << number;
                if (place[0] == 3e37f) ++expected;
                if (i % 2 == 0) std::fill_n(place, 2, far); // numbers, but their sum isn't
                if (i % 2 != 0) place[0] = place[2] = none;
            }
            EXPECT_EQ(count(), expected) << stride << " " << number;
        }
}

TEST(BadSnapshots, TextOnesAreRefusedWithTheseWords) {
    const std::string noCount = std::string("There is no particle count in line 2 of the file.") + kCheckHead;
    const std::map<std::string, std::string> errors = {{"count_word", noCount},
                                                       {"only_newlines", noCount},
                                                       {"utf16", noCount},
                                                       {"empty", "The file is empty."}};
    for (const auto& [name, error] : errors)
        EXPECT_EQ(error, ReadText(name).mError) << name;
    for (const char* name : {"count_huge", "count_over_int", "count_negative", "no_whitespace_huge",
                             "binary_read_as_text", "header_only"})
        EXPECT_FALSE(ReadText(name).mError.empty()) << name;
}

TEST(BadSnapshots, TextOnesTellWhatTheirLinesLack) {
    const std::map<std::string, std::string> words = {{"too_few_columns", Short(50, 53)},
                                                      {"one_short_line", Short(1, 44)},
                                                      {"letters", Short(1, 44)},
                                                      {"count_too_big", Ends(100, 101)},
                                                      {"too_many_columns", ""},
                                                      {"crlf", ""},
                                                      {"tabs_and_spaces", ""},
                                                      {"long_line", ""},
                                                      {"long_token", ""},
                                                      {"no_final_newline", ""}};
    for (const auto& [name, expected] : words)
        EXPECT_EQ(expected, ReadText(name).mWords) << name;
    const float whole = ReadText("ok_reference").mSum;
    for (const char* name :
         {"crlf", "mixed_line_ends", "no_final_newline", "tabs_and_spaces", "count_too_big"})
        EXPECT_EQ(whole, ReadText(name).mSum) << name;
}

TEST(BadSnapshots, LammpsOnesNeverReadAnotherFrame) {
    const Outcome_st two = ReadLammps("two_frames_in_one");
    EXPECT_EQ(350, two.mNumber);
    EXPECT_EQ("", two.mWords);
    EXPECT_NE("", ReadLammps("truncated").mWords);
    EXPECT_NE("", ReadLammps("missing_header_line").mError);
    EXPECT_EQ(0, ReadLammps("extra_header_line").mNumber) << "the time step stands where the count should";
}
