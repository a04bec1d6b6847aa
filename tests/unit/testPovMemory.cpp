// What POV-Ray takes for scenes of many particles, a texture each or one for all of a material.
#include <algorithm>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <memory>
#include <random>
#include <string>

#include <gtest/gtest.h>

#include "FourAttributes.h"
#include "GL/DRAW/clsArrayAndIndex.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsPovParticles.h"
#include "GL/DRAW/clsSnapData.h"
#include "StoreFixture.h"
#include "TempFolder.h"

namespace {

struct Cost_st {
    double mSeconds = 0.0; ///< of the processor, for parsing
    double mBytes = 0.0;   ///< the most that were there
};

/// Of POV-Ray, for a picture of a few pixels.
Cost_st Render(const TempFolder_cls& folder, const std::string& data) {
    folder.Write("scene.pov",
                 "camera{location <-200,0,0> look_at 0} light_source{<-200,9,9> rgb 1}\n" + data);
    const pid_t child = fork();
    if (child == 0) {
        dup2(open("/dev/null", O_RDWR), 1);
        if (chdir(folder.GetPath().c_str()) == 0 && dup2(open("words.txt", O_WRONLY | O_CREAT, 0600), 2) == 2)
            execlp("povray", "povray", "+Iscene.pov", "+Oscene", "+W4", "+H4", "-D", "-P", "+MV3.7", "+WT1",
                   "Bounding_Method=2", nullptr);
        _exit(127);
    }
    int status = -1;
    rusage usage = {};
    EXPECT_EQ(wait4(child, &status, 0, &usage), child);
    EXPECT_EQ(status, 0);
    // "Parse Time: ...", and in the line behind it "using 1 thread(s) with 0.241 CPU-seconds total"
    std::ifstream file(folder.GetPath() + "/words.txt");
    const std::string words(std::istreambuf_iterator<char>(file), {});
    const size_t at = words.find(" with ", words.find("Parse Time:"));
    Cost_st cost;
    cost.mBytes = double(usage.ru_maxrss) * 1024.0;
    if (words.find("Parse Time:") != std::string::npos && at != std::string::npos)
        cost.mSeconds = std::atof(words.c_str() + at + 6);
    return cost;
}

// Of a hundred thousand spheres, with the 15 MB that POV-Ray takes for an empty scene.
TEST(PovMemory, GroupsTakeAThirdOfTimeAndMemory) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "the memory of who starts a process counts as its own";
#endif
    constexpr int kNumber = 30000;
    HandBlock_st hand(kNumber, 1);
    FourAttributes_st attributes;
    for (GLAttribute_cls* one : attributes.mp)
        one->mDrawType.mValue = DRAW_SPHERE;
    std::mt19937 random(3);
    std::uniform_real_distribution<float> side(-50, 50);
    std::vector<ArrayAndIndex_cls> entries;
    for (int i = 0; i < kNumber; ++i) {
        for (float& v : hand.mBlock.mpPos[i])
            v = side(random);
        hand.mBlock.mpRadius[i] = 0.5f;
        hand.mBlock.mpType[i] = static_cast<unsigned char>(i % 4);
        entries.push_back({i, 0.0f, 1.0f});
    }
    SnapData_cls snap(&hand.mBlock, attributes.mp, 0.0, 1);
    PovParticles_cls::List_st list;
    list.mpEntries = entries.data();
    list.mNumber = kNumber;
    const TempFolder_cls folder;
    const Cost_st empty = Render(folder, "");
    Cost_st costs[2];
    for (const bool bGroup : {false, true}) {
        PovTextOptions_st options;
        options.mbGroupMaterials = bGroup;
        const PovParticles_cls particles(snap, attributes.mp, list, options);
        std::string text;
        particles.Append(&text, PovText_cls(options), nullptr, bGroup);
        if (!bGroup) text += "object{PARTICLES}\n";
        costs[bGroup] = Render(folder, text);
        // A core that is shared looks slow: the better of two.
        if (bGroup) costs[bGroup].mSeconds = std::min(costs[bGroup].mSeconds, Render(folder, text).mSeconds);
        const double bytes = costs[bGroup].mBytes - empty.mBytes;
        EXPECT_GT(particles.GetPovBytes(1e18), 0.75 * bytes) << "what users are told of";
        EXPECT_LT(particles.GetPovBytes(1e18), 1.5 * bytes);
    }
    ASSERT_GT(costs[1].mSeconds, 0.0);
    const auto ofMany = [&](const Cost_st& cost) {
        return empty.mBytes + (cost.mBytes - empty.mBytes) * 100000.0 / kNumber;
    };
    EXPECT_LT(ofMany(costs[1]), ofMany(costs[0]) / 3);
    EXPECT_LT(costs[1].mSeconds, costs[0].mSeconds / 3);
}

} // namespace
