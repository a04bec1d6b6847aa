// Bonds that last: what holds at a frame follows from the frames since the first one, however one gets there.
#include <algorithm>
#include <set>

#include <gtest/gtest.h>

#include "BOND/clsBondHistory.h"
#include "BOND/clsPairFinder.h"
#include "BOND/clsPovObjectSticks.h"
#include "StickTestTools.h"

namespace {

constexpr int kFrames = 60;
constexpr int kFirst = 5;

StickRule_st MakeKeepingRule(float a, float keep) {
    StickRule_st rule;
    rule.mA = a;
    rule.mKeepUntil = keep;
    return rule;
}

/// Particles that wander in a periodic box, and are stored in another order in every frame.
std::vector<StickData_st> MakeFilm(size_t number, float edge, bool bShuffle) {
    std::mt19937 random(77);
    std::normal_distribution<float> step(0.0f, 0.06f);
    StickData_st data = MakeRandomParticles(7, number, edge);
    data.type.clear();
    for (size_t i = 0; i < number; ++i)
        data.id.push_back(static_cast<int>(i) * 3 - 40);
    std::vector<StickData_st> film;
    for (int frame = 0; frame < kFrames; ++frame) {
        for (auto& p : data.pos)
            for (float& x : p) {
                x += step(random);
                x -= edge * std::floor(x / edge);
            }
        data.time = static_cast<float>(frame);
        film.push_back(data);
        if (!bShuffle) continue;
        StickData_st& stored = film.back();
        std::vector<size_t> order(number);
        for (size_t i = 0; i < number; ++i)
            order[i] = i;
        std::shuffle(order.begin(), order.end(), random);
        for (size_t i = 0; i < number; ++i) {
            stored.pos[i] = data.pos[order[i]];
            stored.id[i] = data.id[order[i]];
        }
    }
    return film;
}

/// By the words of the rule: formed below A, kept while nearer than the other distance. From the first frame
/// on.
std::vector<std::set<uint64_t>> FollowPlainly(const std::vector<StickData_st>& film, const StickRule_st& rule,
                                              const StickCell_st& cell) {
    std::vector<std::set<uint64_t>> states;
    std::set<uint64_t> bonds;
    for (size_t f = kFirst; f < film.size(); ++f) {
        const StickParticles_st particles = film[f].Get();
        const auto keysWithin = [&](float distance) {
            StickRule_st within = rule;
            within.mA = distance;
            std::set<uint64_t> keys;
            for (const auto& stick : FindPlainly(film[f], within, cell))
                keys.insert(GetBondKey(particles, std::get<0>(stick), std::get<1>(stick)));
            return keys;
        };
        std::set<uint64_t> now = keysWithin(rule.mA);
        for (const uint64_t key : keysWithin(rule.mKeepUntil))
            if (bonds.count(key) > 0) now.insert(key);
        bonds.swap(now);
        states.push_back(bonds);
    }
    return states;
}

/// What a user of the history does: hands over what it asks for.
int Catch(BondHistory_cls* pHistory, const std::vector<StickData_st>& film, int frame) {
    int handed = 0;
    for (int f; (f = pHistory->GetNeededFrame(frame)) >= 0; ++handed)
        EXPECT_EQ(pHistory->AddFrame(f, film[size_t(f)].Get()), "");
    return handed;
}

std::set<uint64_t> GetSet(const BondHistory_cls& history, int frame) {
    const BondSet_t* pBonds = history.GetBonds(frame);
    EXPECT_NE(pBonds, nullptr) << frame;
    return pBonds ? std::set<uint64_t>(pBonds->begin(), pBonds->end()) : std::set<uint64_t>();
}

} // namespace

TEST(BondHistory, BondsHoldFromTheirFormingToTheLargerDistance) {
    for (const bool bShuffle : {false, true})
        for (const bool bAcross : {false, true}) {
            const std::vector<StickData_st> film = MakeFilm(120, 4.0f, bShuffle);
            StickRule_st rule = MakeKeepingRule(0.6f, 0.9f);
            rule.mbAcross = bAcross;
            const StickCell_st cell = MakeCube(4.0f);
            BondHistory_cls history;
            history.Set(rule, cell, kFirst);
            const auto states = FollowPlainly(film, rule, cell);
            size_t kept = 0;
            for (int frame = kFirst; frame < kFrames; ++frame) {
                EXPECT_EQ(Catch(&history, film, frame), 1);
                const std::set<uint64_t>& wanted = states[size_t(frame - kFirst)];
                ASSERT_EQ(GetSet(history, frame), wanted) << frame << bShuffle << bAcross;
                StickRule_st alone = rule;
                alone.mKeepUntil = 0.0f;
                kept += wanted.size() - FindPlainly(film[size_t(frame)], alone, cell).size();
            }
            EXPECT_GT(kept, 300u) << "the larger distance has no effect";
        }
}

TEST(BondHistory, EveryRoadToAFrameGivesTheSameBonds) {
    const std::vector<StickData_st> film = MakeFilm(150, 4.0f, true);
    const StickRule_st rule = MakeKeepingRule(0.6f, 0.9f);
    BondHistory_cls whole, tight(4000);
    whole.Set(rule, {}, kFirst);
    tight.Set(rule, {}, kFirst);
    Catch(&whole, film, kFrames - 1);
    EXPECT_EQ(whole.GetNeededFrame(kFrames - 1), -1);
    EXPECT_EQ(whole.GetNeededFrame(kFirst - 1), -1) << "nothing can be known before the first";
    EXPECT_EQ(whole.GetBonds(kFirst - 1), nullptr);
    int handed = 0;
    for (const int frame : {50, 49, 48, 47, 12, 59, 5, 30, 31, 29, 6, 58}) {
        handed += Catch(&tight, film, frame);
        EXPECT_EQ(GetSet(tight, frame), GetSet(whole, frame)) << frame;
        EXPECT_LE(tight.GetBytes(), 4000u);
    }
    EXPECT_GT(handed, kFrames) << "some were forgotten";
    EXPECT_LT(handed, 250) << "and not all of them";
    // What isn't asked for is ignored; another first frame is another history.
    EXPECT_EQ(tight.AddFrame(3, film[3].Get()), "");
    EXPECT_EQ(tight.GetBonds(3), nullptr);
    const unsigned long long serial = tight.GetSerial();
    tight.Set(rule, {}, kFirst);
    EXPECT_EQ(tight.GetSerial(), serial);
    tight.Set(rule, {}, kFirst + 1);
    EXPECT_NE(tight.GetSerial(), serial);
    EXPECT_EQ(tight.GetNeededFrame(20), kFirst + 1);
}

TEST(BondHistory, AFrameWithoutParticlesChangesNothing) {
    std::vector<StickData_st> film = MakeFilm(100, 3.0f, false);
    const StickRule_st rule = MakeKeepingRule(0.6f, 0.9f);
    film[20] = StickData_st();
    BondHistory_cls history;
    history.Set(rule, {}, kFirst);
    Catch(&history, film, 21);
    EXPECT_EQ(GetSet(history, 20), GetSet(history, 19));
    EXPECT_FALSE(GetSet(history, 19).empty());
    history.mIsStopped = [] { return true; };
    EXPECT_EQ(history.AddFrame(22, film[22].Get()), "");
    EXPECT_EQ(history.GetNeededFrame(22), 22) << "stopped by hand";
    history.mIsStopped = nullptr;
    Catch(&history, film, 22);
    EXPECT_FALSE(GetSet(history, 22).empty());
}

TEST(BondHistory, SticksOfAFrameAreItsBonds) {
    const std::vector<StickData_st> film = MakeFilm(150, 4.0f, true);
    const StickRule_st rule = MakeKeepingRule(0.6f, 0.9f);
    BondHistory_cls history;
    history.Set(rule, {}, kFirst);
    PovObjectSticks_cls sticks;
    for (const int frame : {30, 12}) {
        const StickParticles_st particles = film[size_t(frame)].Get();
        StickRule_st alone = rule;
        alone.mKeepUntil = 0.0f;
        // Not caught up yet: as at a first frame.
        if (frame == 30) {
            EXPECT_EQ(sticks.CalcFromData(particles, frame, rule, {}, &history), "");
            EXPECT_EQ(GetTuples(sticks), FindPlainly(film[size_t(frame)], alone));
        }
        Catch(&history, film, frame);
        EXPECT_EQ(sticks.CalcFromData(particles, frame, rule, {}, &history), "");
        std::set<uint64_t> keys;
        for (size_t k = 0; k < sticks.GetNumber(); ++k)
            keys.insert(GetBondKey(particles, sticks.mvIndexA[k], sticks.mvIndexB[k]));
        EXPECT_EQ(keys, GetSet(history, frame));
        EXPECT_GT(keys.size(), FindPlainly(film[size_t(frame)], alone).size());
        EXPECT_TRUE(std::is_sorted(sticks.mvIndexA.begin(), sticks.mvIndexA.end()));
    }
    // Of the other rules it is no part.
    StickRule_st ramp = rule;
    ramp.mCritType = STICK_RAMP;
    EXPECT_EQ(sticks.CalcFromData(film[12].Get(), 12, ramp, {}, &history), "");
    EXPECT_EQ(GetTuples(sticks), FindPlainly(film[12], ramp));
}
