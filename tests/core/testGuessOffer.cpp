// What a guess offers beside the layout: on the shipped sets, on files made for one question each, and
// taken over as one step of the undo list.
#include <algorithm>
#include <cmath>
#include <numeric>
#include <random>

#include "PARAM/clsUndoManager.h"
#include "PDATA/GrammarGuess.h"
#include "PDATA/GuessApply.h"
#include "PDATA/GuessSample.h"
#include "PDATA/clsPeriodicBoundary.h"
#include "ReaderTestTools.h"

namespace {

const std::string kRoot = MORENTIS_TEST_ROOT;
using Codes = std::vector<int>;
using Kind = GuessOfferKind;

std::vector<GuessOffer_st> OffersFor(const std::string& path, const Codes& head = {0, 1},
                                     const Codes& body = {0, 1, 5, 6, 7, 8}, float scale = 1) {
    const wxString name = wxString::FromUTF8(path.c_str());
    return MakeGuessOffers(name, GuessGrammar(name, TestLoader_cls(0, head, body)), scale);
}

// "+" ticked, "-" not; the values as they are shown.
std::string Text(const std::vector<GuessOffer_st>& offers) {
    std::string text;
    for (const GuessOffer_st& offer : offers)
        text += (text.empty() ? "" : " ") + std::string(offer.mbTicked ? "+" : "-") +
                (offer.mStrName + "=" + offer.mStrValue).utf8_string();
    return text;
}

const GuessOffer_st* Find(const std::vector<GuessOffer_st>& offers, Kind kind) {
    for (const GuessOffer_st& offer : offers)
        if (offer.mKind == kind) return &offer;
    return nullptr;
}

/// Particles of a made file.
struct Made_st {
    std::vector<int> mIds; ///< empty: no such column
    std::vector<std::array<double, 3>> mPos;
    std::vector<int> mTypes;
};

// `number` particles on a cubic lattice with a distance of 2, IDs from 1, of one type.
Made_st Lattice(int edge) {
    Made_st made;
    for (int i = 0; i < edge * edge * edge; ++i) {
        made.mPos.push_back({2.0 * (i % edge), 2.0 * (i / edge % edge), 2.0 * (i / edge / edge)});
        made.mIds.push_back(i + 1);
    }
    return made;
}

Made_st Reordered(const Made_st& made, const std::vector<size_t>& order) {
    Made_st out;
    for (const size_t i : order) {
        out.mPos.push_back(made.mPos[i]);
        if (!made.mIds.empty()) out.mIds.push_back(made.mIds[i]);
        if (!made.mTypes.empty()) out.mTypes.push_back(made.mTypes[i]);
    }
    return out;
}

std::vector<size_t> Shuffle(size_t number) {
    std::vector<size_t> order(number);
    std::iota(order.begin(), order.end(), 0);
    std::shuffle(order.begin(), order.end(), std::mt19937(7));
    return order;
}

std::string Dump(const Made_st& made, const std::string& box = "ITEM: BOX BOUNDS ff ff ff\n0 9\n0 9\n0 9\n") {
    std::string text = "ITEM: TIMESTEP\n0\nITEM: NUMBER OF ATOMS\n" + std::to_string(made.mPos.size()) +
                       "\n" + box + "ITEM: ATOMS";
    text += (made.mIds.empty() ? "" : " id") + std::string(made.mTypes.empty() ? "" : " type") + " x y z\n";
    for (size_t i = 0; i < made.mPos.size(); ++i) {
        if (!made.mIds.empty()) text += std::to_string(made.mIds[i]) + " ";
        if (!made.mTypes.empty()) text += std::to_string(made.mTypes[i]) + " ";
        for (const double x : made.mPos[i])
            text += std::to_string(x) + " ";
        text += "\n";
    }
    return text;
}

std::string Binary(const Made_st& made) {
    std::string bytes = Pack(0.0f, static_cast<int>(made.mPos.size()));
    for (size_t i = 0; i < made.mPos.size(); ++i)
        bytes += Pack(static_cast<float>(made.mPos[i][0]), static_cast<float>(made.mPos[i][1]),
                      static_cast<float>(made.mPos[i][2]), made.mIds[i], static_cast<int>(i % 2 + 1));
    return bytes;
}

class GuessOffer : public testing::Test {
protected:
    std::vector<GuessOffer_st> Offers(const std::vector<std::string>& files) {
        std::string first;
        for (size_t i = 0; i < files.size(); ++i) {
            const std::string path = mDir.Write("run" + std::to_string(i) + ".dump", files[i]);
            if (i == 0) first = path;
        }
        return OffersFor(first);
    }
    TempDir_cls mDir;
};

} // namespace

TEST_F(GuessOffer, KnowsTheShippedSets) {
    struct Case_st {
        const char* mpFile;
        const char* mpText;
        Codes mHead, mBody;
    };
    const Codes head{0, 1}, body{0, 1, 5, 6, 7, 8};
    const Case_st cases[] = {
        {"examples/lj_melt_text/melt0000.txt",
         "+Interpolation=Linear +Particle Number=Constant +Boundary=Periodic in xyz space, 11.7572 x 11.7572 "
         "x "
         "11.7572 +Classification=Use Attrib0 Only (fast) +Radius=Constant, 0.393",
         head, body},
        {"examples/lj_unsorted_text/unsorted001.txt",
         "+Interpolation=Linear +Particle Number=Variable +Boundary=Periodic in xyz space, 10.0776 x 10.0776 "
         "x "
         "10.0776 +Classification=Use All Attrib +Radius=Constant, 0.388",
         head, body},
        {"examples/deposit_text/deposit0.txt",
         "+Interpolation=Linear +Particle Number=Variable +Boundary=Periodic in x-y plane, 7.93701 x 7.93701 "
         "x "
         "15.874 +Classification=Use All Attrib +Radius=Constant, 0.354",
         head, body},
        {"examples/friction_text/friction0000.dump",
         "+Interpolation=Linear +Particle Number=Constant +Boundary=No Periodic Boundary Condition "
         "+Classification=Use All Attrib +Radius=Constant, 0.473",
         head, body},
        {"examples/galaxy_small_bin/galaxy0000.bin",
         "+Interpolation=Linear +Particle Number=Constant +Classification=Use All Attrib", head, body},
        {"examples/galaxy_small_tipsy/tipsy0000.bin", "+Interpolation=Linear +Particle Number=Constant",
         Codes{2, 2, 1, 2, 2, 2, 2, 2}, Codes{2, 0, 1, 5, 8}},
        {"tests/data/small/pour_radius_text/pour01.txt",
         "+Interpolation=Linear +Particle Number=Variable +Boundary=Periodic in x-y plane, 12 x 12 x 30 "
         "+Classification=Use Attrib0 Only (fast)",
         head, body},
    };
    for (const Case_st& c : cases)
        EXPECT_EQ(c.mpText, Text(OffersFor(kRoot + "/" + c.mpFile, c.mHead, c.mBody))) << c.mpFile;
    for (const GuessOffer_st& offer : OffersFor(kRoot + "/examples/lj_melt_text/melt0000.txt"))
        EXPECT_TRUE(offer.mStrReason.EndsWith(".")) << offer.mStrReason;
}

TEST_F(GuessOffer, ComparesTheOrderOfTwoFiles) {
    const Made_st all = Lattice(6);
    const std::vector<size_t> shuffled = Shuffle(all.mPos.size());
    Made_st fewer = all, repeated = all, bare = all;
    fewer.mPos.pop_back();
    fewer.mIds.pop_back();
    repeated.mIds.assign(all.mIds.size(), 1);
    bare.mIds.clear();
    Made_st moved = bare;
    for (auto& pos : moved.mPos)
        pos[0] += 0.5;
    const auto motion = [](const std::vector<GuessOffer_st>& offers) {
        const std::string text = Text(offers);
        return text.substr(0, text.find(" +Boundary"));
    };
    const std::string constant = "+Interpolation=Linear +Particle Number=Constant";
    const std::string variable = "+Interpolation=Linear +Particle Number=Variable";
    EXPECT_EQ(constant, motion(Offers({Dump(all), Dump(all)})));
    EXPECT_EQ(variable, motion(Offers({Dump(all), Dump(Reordered(all, shuffled))})));
    EXPECT_EQ(variable, motion(Offers({Dump(fewer), Dump(all)})));
    EXPECT_EQ(variable, motion(Offers({Dump(all), Dump(fewer)})));
    EXPECT_EQ(constant, motion(Offers({Dump(bare), Dump(moved)})));
    EXPECT_EQ("+Interpolation=No Interpolate +Particle Number=Constant",
              motion(Offers({Dump(bare), Dump(Reordered(moved, shuffled))})));
    EXPECT_EQ(constant, motion(Offers({Dump(repeated), Dump(repeated)}))) << "IDs that repeat tell nothing";
    std::vector<std::string> late(12, Dump(all));
    late[10] = Dump(fewer);
    EXPECT_EQ(variable, motion(Offers(late))) << "the tenth file is looked at too";
    TempDir_cls other;
    EXPECT_EQ(variable, motion(OffersFor(other.Write("one.dump", Dump(all))))) << "no second file, but IDs";
    EXPECT_EQ("+Boundary=No", Text(OffersFor(other.Write("bare.dump", Dump(bare)))).substr(0, 12))
        << "one file without IDs tells nothing of motion";
    const Made_st none;
    EXPECT_EQ(constant, motion(Offers({Dump(none), Dump(all), Dump(all)}))) << "empty files are passed over";
}

// Files of which a part is read: some 30 million bytes in all, of which a few are looked at.
TEST_F(GuessOffer, LooksAtPartsOfLargeFiles) {
    const Made_st all = Lattice(70);
    const std::vector<size_t> shuffled = Shuffle(all.mPos.size());
    const Codes head{0, 1}, body{0, 6, 7};
    TempDir_cls dir;
    const std::string first = dir.Write("a0.bin", Binary(all));
    dir.Write("a1.bin", Binary(Reordered(all, shuffled)));
    const auto withoutRadius = [](const std::vector<GuessOffer_st>& offers) {
        EXPECT_NEAR(0.8, static_cast<double>(Find(offers, Kind::Radius)->mRadius), 0.03);
        const std::string text = Text(offers);
        return text.substr(0, text.find(" +Radius"));
    };
    EXPECT_EQ("+Interpolation=Linear +Particle Number=Sort by ID -Classification=Use All Attrib",
              withoutRadius(OffersFor(first, head, body)));
    const std::string second = dir.Write("b0.bin", Binary(all));
    dir.Write("b1.bin", Binary(all));
    EXPECT_EQ("+Interpolation=Linear +Particle Number=Constant +Classification=Use All Attrib",
              withoutRadius(OffersFor(second, head, body)));
    // Lines are found again wherever a piece begins.
    const std::string text = dir.Write("c0.dump", Dump(all));
    EXPECT_EQ("+Interpolation=Linear +Particle Number=Variable +Boundary=No Periodic Boundary Condition",
              withoutRadius(OffersFor(text)));
}

// Cut files, numbers that are none, counts that lie: offers or none, and never a radius that can't be drawn.
TEST_F(GuessOffer, SurvivesDamagedFiles) {
    const Made_st lattice = Lattice(3);
    const std::string whole = Dump(lattice, "ITEM: BOX BOUNDS xy xz yz pp pp pp\n0 10 1\n0 8 2\n0 6 3\n");
    std::mt19937 random(17);
    static const char sText[] = "0123456789 -.e\nnaif\0";
    for (int round = 0; round < 300; ++round) {
        std::string files[2] = {whole, whole};
        for (std::string& file : files) {
            for (unsigned k = random() % 8; k > 0; --k)
                file[random() % file.size()] = sText[random() % (sizeof sText - 1)];
            if (random() % 3 == 0) file.resize(random() % file.size());
        }
        for (const GuessOffer_st& offer : Offers({files[0], files[1]})) {
            EXPECT_FALSE(offer.mStrValue.empty() || offer.mStrReason.empty());
            EXPECT_TRUE(offer.mKind != Kind::Radius || (offer.mRadius > 0 && std::isfinite(offer.mRadius)));
        }
    }
    const std::string head = "ITEM: TIMESTEP\n0\nITEM: NUMBER OF ATOMS\n4\nITEM: ATOMS id type x y z\n";
    Offers({head + "1 1 nan nan nan\n2 1 inf 0 0\n3 1e300 1 1e300 1\n4 -1e300 nan 3 4\n", head});
    EXPECT_TRUE(OffersFor(mDir.Name("missing.dump")).empty());
}

TEST_F(GuessOffer, ReadsBoxesOfHeaders) {
    const Made_st lattice = Lattice(3);
    const auto box = [this, &lattice](const std::string& header, float scale) {
        const std::string path = mDir.Write("box.dump", Dump(lattice, header));
        const auto offers = OffersFor(path, {0, 1}, {0, 1, 5, 6, 7, 8}, scale);
        const GuessOffer_st* offer = Find(offers, Kind::Periodic);
        if (!offer) return std::string("none");
        std::string text = (offer->mbTicked ? "+" : "-") + std::to_string(offer->mChoice);
        for (const auto& vector : offer->mBox)
            text += wxString::Format(" (%g %g %g)", static_cast<double>(vector[0]),
                                     static_cast<double>(vector[1]), static_cast<double>(vector[2]))
                        .utf8_string();
        return text;
    };
    const std::string bounds = "ITEM: BOX BOUNDS ";
    EXPECT_EQ("+2 (2 0 0) (0 4 0) (0 0 6)", box(bounds + "pp pp pp\n-1 1\n1 5\n0 6\n", 1));
    EXPECT_EQ("+2 (20 0 0) (0 40 0) (0 0 60)", box(bounds + "pp pp pp\n-1 1\n1 5\n0 6\n", 10)) << "scaled";
    EXPECT_EQ("+1 (2 0 0) (0 4 0) (0 0 6)", box(bounds + "pp pp ss\n-1 1\n1 5\n0 6\n", 0)) << "0: no scale";
    EXPECT_EQ("+0 (0 0 0) (0 0 0) (0 0 0)", box(bounds + "ff pp pp\n-1 1\n1 5\n0 6\n", 1));
    EXPECT_EQ("+0 (0 0 0) (0 0 0) (0 0 0)", box(bounds + "fp pp pp\n-1 1\n1 5\n0 6\n", 1));
    EXPECT_EQ("-2 (2 0 0) (0 4 0) (0 0 6)", box("ITEM: BOX BOUNDS\n-1 1\n1 5\n0 6\n", 1)) << "nothing told";
    // Bounds of all corners of a = (10 0 0), b = (2 8 0), c = (-3 1 6) at the origin, and with no tilt.
    EXPECT_EQ("+2 (10 0 0) (2 8 0) (-3 1 6)", box(bounds + "xy xz yz pp pp pp\n-3 12 2\n0 9 -3\n0 6 1\n", 1));
    EXPECT_EQ("+2 (10 0 0) (0 8 0) (0 0 6)", box(bounds + "xy xz yz pp pp pp\n0 10 0\n0 8 0\n0 6 0\n", 1));
    EXPECT_EQ("+2 (1 2 0) (0 5 1) (3 0 7)",
              box(bounds + "abc origin pp pp pp\n1 2 0 -4\n0 5 1 -4\n3 0 7 -4\n", 1));
    EXPECT_EQ("+1 (4 0 0) (1 5 0) (0 0 6)", box("Lattice=\"4 0 0 1 5 0 0 0 6\" pbc=\"T T F\"\n", 1));
    EXPECT_EQ("none", box(bounds + "pp pp pp\n1 1\n1 5\n0 6\n", 1)) << "no volume";
    EXPECT_EQ("none", box(bounds + "pp pp pp\nnan 1\n1 5\n0 6\n", 1));
    EXPECT_EQ("none", box("a comment\n", 1));
    const std::string plain = mDir.Write("plain.dump", Dump(lattice));
    const auto radius = [&plain](float scale) {
        return Find(OffersFor(plain, {0, 1}, {0, 1, 5, 6, 7, 8}, scale), Kind::Radius)->mRadius;
    };
    EXPECT_NEAR(10, static_cast<double>(radius(10) / radius(1)), 0.1) << "radii are scaled as boxes are";
    // Fractions of a box are in a box of edge 1.
    const std::string fractions =
        "ITEM: TIMESTEP\n0\nITEM: NUMBER OF ATOMS\n2\nITEM: BOX BOUNDS pp pp pp\n0 50\n0 "
        "50\n0 50\nITEM: ATOMS id xs ys zs\n1 .1 .2 .3\n2 .4 .5 .6\n";
    EXPECT_EQ(1.0f, Find(OffersFor(mDir.Write("xs.dump", fractions)), Kind::Periodic)->mBox[2][2]);
}

TEST_F(GuessOffer, ClassifiesByTheTypesThatOccur) {
    Made_st made = Lattice(3);
    const auto classes = [this, &made](const std::vector<int>& types) {
        made.mTypes.clear();
        for (size_t i = 0; i < made.mPos.size(); ++i)
            made.mTypes.push_back(types[i % types.size()]);
        const auto offers = Offers({Dump(made), Dump(made)});
        const GuessOffer_st* offer = Find(offers, Kind::Classification);
        return std::to_string(offer->mChoice) + (offer->mbColors ? " colours: " : ": ") +
               offer->mStrReason.utf8_string();
    };
    EXPECT_EQ("1 colours: Types 1, 2 look as the pages \"Attrib\" of these numbers say.", classes({1, 2}));
    EXPECT_EQ("1 colours: Types 0, 3 look as the pages \"Attrib\" of these numbers say. Others look as "
              "\"Attrib 0\".",
              classes({3, 9, 0}));
    EXPECT_EQ("0: All particles have type 1: the page \"Attrib 0\" is theirs.", classes({1}));
    EXPECT_EQ("0: All types are of one class: the page \"Attrib 0\" is theirs.", classes({4, 5}));
    made.mTypes.clear();
    EXPECT_EQ(nullptr, Find(Offers({Dump(made)}), Kind::Classification));
}

TEST(MeanDistance, IsThatOfTheDensity) {
    using Positions = std::vector<GuessSample_st::Position>;
    std::mt19937 random(11);
    std::uniform_real_distribution<float> unit(0, 1);
    Positions cube, slab, line, stray;
    for (int i = 0; i < 8000; ++i) {
        cube.push_back({20 * unit(random), 20 * unit(random), 20 * unit(random)});
        slab.push_back({80 * unit(random), 100 * unit(random), 0.01f * unit(random)});
        line.push_back({5, 5, 4000 * unit(random)});
    }
    EXPECT_NEAR(1.0, GetMeanDistance(cube, 8000), 0.02);
    EXPECT_NEAR(0.5, GetMeanDistance(cube, 64000), 0.01) << "of a sample of an eighth";
    EXPECT_NEAR(1.0, GetMeanDistance(slab, 8000), 0.02);
    EXPECT_NEAR(0.5, GetMeanDistance(line, 8000), 0.02);
    stray = cube;
    stray[5] = {1e9f, -1e9f, 0};
    stray[7] = {NAN, 0, INFINITY};
    EXPECT_NEAR(1.0, GetMeanDistance(stray, 8000), 0.02) << "one that flew away counts for nothing";
    EXPECT_EQ(0.0, GetMeanDistance(Positions(100, {1, 2, 3}), 100));
    EXPECT_EQ(0.0, GetMeanDistance({{1, 2, 3}}, 1));
    EXPECT_EQ(0.0, GetMeanDistance({}, 0));
}

TEST(GuessApply, IsOneStep) {
    PeriodicBoundary_cls periodic;
    TestLoader_cls loader(0, {0, 1}, {0, 1, 5, 6, 7, 8});
    loader.mpCPeriodic = &periodic;
    GCUndoList.Clear();
    const wxString before = loader.Serialize() + periodic.Serialize();
    const wxString path = wxString::FromUTF8((kRoot + "/examples/lj_unsorted_text/unsorted001.txt").c_str());
    const GrammarGuess_st guess = GuessGrammar(path, loader);
    std::vector<GuessOffer_st> offers = MakeGuessOffers(path, guess, 1);
    GuessLooks_st looks;
    int shown = 0;
    GGuessHooks.mApplyLooks = [&looks](const GuessLooks_st& value) { looks = value; };
    GGuessHooks.mShowValues = [&shown] { ++shown; };

    ApplyGuess(&loader, guess, offers);
    EXPECT_EQ(1, loader.mCItemDataType.mValue);
    EXPECT_EQ(Codes({0, 6, 7, 1, 8}), loader.GetBodyGrammer());
    EXPECT_EQ(0u, loader.mCItemInterpolateType.mValue);
    EXPECT_EQ(1u, loader.mCItemVariableNumber.mValue);
    EXPECT_EQ(2u, periodic.mCPeriodicType.mValue);
    EXPECT_FLOAT_EQ(10.0775771f, periodic.mCPeriodicBaseVector1.mValue[1]);
    EXPECT_EQ(1u, looks.mClassify.value_or(9));
    EXPECT_TRUE(looks.mbColors);
    EXPECT_FLOAT_EQ(0.388f, looks.mRadius.value_or(0));
    EXPECT_EQ(1, shown);
    const unsigned steps = GCUndoList.GetCurrent();
    ApplyGuess(&loader, guess, offers);
    EXPECT_EQ(steps, GCUndoList.GetCurrent()) << "what is so already makes no step";
    GCUndoList.UndoCurrent();
    EXPECT_EQ(before, loader.Serialize() + periodic.Serialize());
    EXPECT_EQ(0u, GCUndoList.GetCurrent());

    for (GuessOffer_st& offer : offers)
        offer.mbTicked = false;
    ApplyGuess(&loader, guess, offers);
    EXPECT_EQ(1, loader.mCItemDataType.mValue) << "the layout is taken in any case";
    EXPECT_EQ(1u, loader.mCItemInterpolateType.mValue);
    EXPECT_EQ(0u, periodic.mCPeriodicType.mValue);
    EXPECT_FALSE(looks.mClassify || looks.mbColors || looks.mRadius);
    GCUndoList.Clear();
    GGuessHooks = GuessHooks_st();
}
