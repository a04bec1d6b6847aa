// Every frame of the shipped data sets, against the facts that stand beside them.
#include <cmath>
#include <dirent.h>
#include <fstream>
#include <map>
#include <sstream>

#include "ReaderTestTools.h"

namespace {

const std::string kRoot = MORENTIS_TEST_ROOT;

/// The facts file of one set: words of each line, by the line's first word.
struct Facts_st {
    std::string mDir;
    std::map<std::string, std::vector<std::vector<std::string>>> mLines;

    std::vector<int> Codes(const std::string& word) const {
        std::vector<int> codes;
        for (const std::string& code : mLines.at(word).at(0))
            codes.push_back(std::stoi(code));
        return codes;
    }
};

bool LoadFacts(const std::string& dir, Facts_st* pFacts) {
    std::ifstream stream(dir + "/FACTS.txt");
    pFacts->mDir = dir;
    for (std::string line; std::getline(stream, line);) {
        std::istringstream words(line);
        std::string first, word;
        words >> first;
        std::vector<std::string> rest;
        while (words >> word)
            rest.push_back(word);
        pFacts->mLines[first].push_back(rest);
    }
    return pFacts->mLines.count("frame") > 0;
}

std::vector<Facts_st> AllSets() {
    std::vector<Facts_st> sets;
    for (const char* parent : {"/examples", "/tests/data", "/tests/data/small"}) {
        DIR* dir = opendir((kRoot + parent).c_str());
        if (!dir) continue;
        for (const dirent* entry = readdir(dir); entry; entry = readdir(dir)) {
            Facts_st facts;
            if (entry->d_name[0] != '.' && LoadFacts(kRoot + parent + "/" + entry->d_name, &facts))
                sets.push_back(facts);
        }
        closedir(dir);
    }
    return sets;
}

// "-" tells that the grammar has no such item.
void ExpectFact(const std::string& fact, double value, double tolerance, const char* what) {
    if (fact == "-") return;
    const double expected = std::stod(fact);
    EXPECT_NEAR(expected, value, tolerance * std::max(1.0, std::abs(expected))) << what;
}

// Columns from the particle count on: min, max, mean speed, mean, min and max value, number of each type.
void CheckFrame(const std::vector<std::string>& fact, const ParticleArrays_st& arrays, size_t number) {
    double low[4] = {1e300, 1e300, 1e300, 1e300}, high[4] = {-1e300, -1e300, -1e300, -1e300};
    double speed = 0, value = 0;
    int types[5] = {0, 0, 0, 0, 0};
    for (size_t i = 0; i < number; ++i) {
        const float* v = arrays.mpVel[i];
        const float all[4] = {arrays.mpPos[i][0], arrays.mpPos[i][1], arrays.mpPos[i][2], arrays.mpValue1[i]};
        for (int k = 0; k < 4; ++k) {
            low[k] = std::min(low[k], static_cast<double>(all[k]));
            high[k] = std::max(high[k], static_cast<double>(all[k]));
        }
        speed += std::sqrt(static_cast<double>(v[0]) * static_cast<double>(v[0]) +
                           static_cast<double>(v[1]) * static_cast<double>(v[1]) +
                           static_cast<double>(v[2]) * static_cast<double>(v[2]));
        value += static_cast<double>(all[3]);
        ASSERT_LE(arrays.mpType[i], 4);
        ++types[arrays.mpType[i]];
    }
    const double count = static_cast<double>(number);
    for (size_t k = 0; k < 3; ++k) {
        ExpectFact(fact[4 + k], low[k], 1e-6, "minimum");
        ExpectFact(fact[7 + k], high[k], 1e-6, "maximum");
    }
    ExpectFact(fact[10], speed / count, 1e-5, "mean speed");
    ExpectFact(fact[11], value / count, 1e-5, "mean value");
    ExpectFact(fact[12], low[3], 1e-6, "minimum value");
    ExpectFact(fact[13], high[3], 1e-6, "maximum value");
    for (size_t k = 0; k < 5; ++k)
        ExpectFact(fact[14 + k], types[k], 0, "number of a type");
}

// "id I frame K row R pos X Y Z radius type value", and for sets without IDs "row R frame K pos X Y Z value".
void CheckParticles(const Facts_st& facts, const std::string& frame, const ParticleArrays_st& arrays) {
    for (const char* kind : {"id", "row"}) {
        const auto lines = facts.mLines.find(kind);
        if (lines == facts.mLines.end()) continue;
        for (const std::vector<std::string>& f : lines->second) {
            if (f.size() < 8 || f[2] != frame) continue;
            const bool bId = kind[0] == 'i';
            const size_t row = static_cast<size_t>(std::stoi(bId ? f[4] : f[0]));
            const size_t pos = bId ? 6 : 4;
            if (bId) {
                EXPECT_EQ(std::stoi(f[0]), arrays.mpID[row]);
            }
            for (size_t k = 0; k < 3; ++k)
                ExpectFact(f[pos + k], static_cast<double>(arrays.mpPos[row][k]), 1e-6, "position");
            if (bId) ExpectFact(f[9], static_cast<double>(arrays.mpRadius[row]), 1e-6, "radius");
            if (bId) ExpectFact(f[10], arrays.mpType[row], 0, "type");
            ExpectFact(f.back(), static_cast<double>(arrays.mpValue1[row]), 1e-6, "value");
        }
    }
}

void CheckSet(const Facts_st& facts) {
    const bool bText = facts.mLines.at("kind")[0][0] == "text";
    const TestLoader_cls loader(bText ? 1 : 0, facts.Codes("header"), facts.Codes("body"));
    for (const std::vector<std::string>& fact : facts.mLines.at("frame")) {
        const std::string path = facts.mDir + "/" + fact[1];
        SCOPED_TRACE(path);
        const SnapshotHeader_st header = ReadSnapshotHeader(loader, wxString::FromUTF8(path.c_str()));
        ASSERT_TRUE(header.mbOk) << header.mStrError;
        EXPECT_EQ(fact[2] != "-", header.mbHasTime);
        ExpectFact(fact[2], header.mTime, 1e-6, "time");
        ASSERT_EQ(std::stoi(fact[3]), header.mNumber);
        std::string first;
        for (int threads = 1; threads <= (bText ? 4 : 1); ++threads) {
            const ThreadCount_cls count(threads);
            const TestArrays_cls arrays(header.mNumber);
            ReadBody(loader, path, header.mNumber, arrays);
            if (threads == 1 && header.mNumber > 0) {
                first = arrays.AllBytes();
                CheckFrame(fact, arrays.mArrays, static_cast<size_t>(header.mNumber));
                CheckParticles(facts, fact[0], arrays.mArrays);
            }
            EXPECT_TRUE(first.empty() || first == arrays.AllBytes()) << threads << " threads";
        }
    }
}

} // namespace

TEST(ReaderFacts, HoldForEveryFrameOfEveryShippedSet) {
    const std::vector<Facts_st> sets = AllSets();
    ASSERT_GE(sets.size(), 10u) << "the data sets are missing from examples and tests/data";
    for (const Facts_st& facts : sets)
        CheckSet(facts);
}
