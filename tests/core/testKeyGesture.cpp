// The hand on keys: what is picked, what a press, a drag and a release mean, what a band selects.
#include "PARAM/KeyGesture.h"
#include "ParamTest.h"

namespace {

using State = KeyGesture_cls::State;
using Pick = KeyGesture_cls::Pick;

TEST(KeyPicker, TheNearestKeyWithinReachAndOfTwoAtOnePlaceTheSelectedOrTopmost) {
    KeyPicker_cls picker(100.0, 100.0, 7.0);
    picker.OfferKey(0, 3, 106.0, 104.0, false); // 7.2 away
    EXPECT_FALSE(picker.GetHit(false).IsAny());
    picker.OfferKey(0, 4, 104.0, 100.0, false);
    picker.OfferKey(1, 5, 102.0, 100.0, false);
    picker.OfferKey(2, 6, 105.0, 100.0, true); // selected, but plainly farther
    EXPECT_EQ(picker.GetKey(), (KeyHit{1, 5, 0}));
    picker.OfferKey(3, 7, 102.0, 100.0, false);
    EXPECT_EQ(picker.GetKey(), (KeyHit{3, 7, 0})) << "drawn later";
    picker.OfferKey(4, 8, 102.5, 100.0, true);
    picker.OfferKey(5, 9, 102.0, 100.0, false);
    EXPECT_EQ(picker.GetKey(), (KeyHit{4, 8, 0})) << "the drag of the others must begin here";
}

// Whatever the window: what the hand is on is what it gets.
TEST(KeyPicker, OfKeyAndHandleTheNearerAndTheHandleAtOnePlace) {
    const auto pick = [](double key, double handle, bool bKeyFirst) {
        KeyPicker_cls picker(0.0, 0.0, 7.0);
        picker.OfferHandle(0, 1, 1, handle, 0.0);
        picker.OfferKey(2, 3, key, 0.0, false);
        return picker.GetHit(bKeyFirst);
    };
    const KeyHit key = {2, 3, 0};
    const KeyHit handle = {0, 1, 1};
    EXPECT_EQ(pick(5.0, 2.0, false), handle);
    EXPECT_EQ(pick(2.0, 5.0, false), key);
    EXPECT_EQ(pick(3.0, 3.0, false), handle) << "Shift and Ctrl reach the key";
    EXPECT_EQ(pick(5.0, 2.0, true), key);
    EXPECT_EQ(pick(50.0, 2.0, true), handle) << "no key is there";
    EXPECT_EQ(pick(2.0, 50.0, false), key);
    // A bonus for selected keys is for keys among themselves.
    KeyPicker_cls picker(0.0, 0.0, 7.0);
    picker.OfferKey(2, 3, 3.0, 0.0, true);
    picker.OfferHandle(0, 1, -1, 1.9, 0.0);
    picker.OfferHandle(0, 1, 1, 4.0, 0.0);
    EXPECT_EQ(picker.GetHit(false), (KeyHit{0, 1, -1}));
}

TEST(KeyGesture, APressPicksByModifiersAndAClickOnOneOfManyLeavesItAlone) {
    const KeyHit key = {0, 2, 0};
    struct Case_st {
        bool mbSelected, mbShift, mbCtrl;
        Pick mPress, mClick;
    };
    for (const Case_st& one : {Case_st{false, false, false, Pick::ALONE, Pick::KEEP},
                               Case_st{true, false, false, Pick::KEEP, Pick::ALONE},
                               Case_st{true, true, false, Pick::ADD, Pick::KEEP},
                               Case_st{false, true, false, Pick::ADD, Pick::KEEP},
                               Case_st{true, false, true, Pick::TOGGLE, Pick::KEEP},
                               Case_st{true, true, true, Pick::TOGGLE, Pick::KEEP}}) {
        SCOPED_TRACE(testing::Message() << one.mbSelected << one.mbShift << one.mbCtrl);
        KeyGesture_cls gesture;
        EXPECT_EQ(gesture.Press({10, 10}, key, one.mbSelected, one.mbShift, one.mbCtrl), one.mPress);
        Pick pick = Pick::CLEAR;
        EXPECT_EQ(gesture.Release(&pick), State::KEY);
        EXPECT_EQ(pick, one.mClick);
        EXPECT_FALSE(gesture.IsActive());
        // A drag of it is no click.
        gesture.Press({10, 10}, key, one.mbSelected, one.mbShift, one.mbCtrl);
        EXPECT_TRUE(gesture.Drag({10, 20}));
        EXPECT_EQ(gesture.Release(&pick), State::MOVE);
        EXPECT_EQ(pick, Pick::KEEP);
    }
}

TEST(KeyGesture, NothingHappensBelowTheThresholdAndEachPressHasItsDrag) {
    KeyGesture_cls gesture;
    EXPECT_FALSE(gesture.Drag({500, 500})) << "nothing is pressed";
    const std::pair<KeyHit, State> presses[] = {
        {{0, 1, 0}, State::MOVE}, {{0, 1, -1}, State::TURN}, {KeyHit(), State::BAND}};
    for (const auto& [hit, drag] : presses) {
        gesture.Press({10, 10}, hit, true, false, false);
        const State pressed = gesture.Get();
        EXPECT_FALSE(gesture.Drag({12, 8}));
        EXPECT_EQ(gesture.Get(), pressed);
        EXPECT_TRUE(gesture.Drag({10, 7}));
        EXPECT_EQ(gesture.Get(), drag);
        EXPECT_FALSE(gesture.Drag({10, 10})) << "begun once; back at the start it goes on";
        EXPECT_EQ(gesture.Cancel(), drag);
        EXPECT_FALSE(gesture.IsActive());
    }
    gesture.Grip({10, 10});
    EXPECT_FALSE(gesture.Drag({15, 10}, 6)) << "screens with small pixels";
    EXPECT_TRUE(gesture.Drag({16, 10}, 6));
    EXPECT_EQ(gesture.GetWay(false), (KeyPoint{6, 0}));
    Pick pick = Pick::CLEAR;
    EXPECT_EQ(gesture.Release(&pick), State::PAN);
    EXPECT_EQ(pick, Pick::KEEP);
    // One axis is the longer one.
    gesture.Press({0, 0}, {0, 1, 0}, true, false, false);
    gesture.Drag({-9, 8});
    EXPECT_EQ(gesture.GetWay(true), (KeyPoint{-9, 0}));
    EXPECT_EQ(gesture.GetWay(false), (KeyPoint{-9, 8}));
    gesture.Drag({5, -8});
    EXPECT_EQ(gesture.GetWay(true), (KeyPoint{0, -8}));
}

TEST(KeyGesture, AClickOnTheGroundClearsUnlessSomethingIsHeld) {
    for (const bool bShift : {false, true}) {
        KeyGesture_cls gesture;
        EXPECT_EQ(gesture.Press({1, 1}, KeyHit(), false, bShift, false), Pick::KEEP) << "it may be a band";
        Pick pick = Pick::KEEP;
        EXPECT_EQ(gesture.Release(&pick), State::GROUND);
        EXPECT_EQ(pick, bShift ? Pick::KEEP : Pick::CLEAR);
    }
}

class KeyBand : public ParamTest {
protected:
    KeyBand() {
        mCurve.SelectKey(0, true);
        mCurve.SelectKey(2, true);
        mCBand.Begin({&mCurve});
    }
    std::string Bits() const {
        std::string bits;
        for (const KeyFrame_cls& key : mCurve.GetKeys())
            bits += key.mbSelected ? '1' : '0';
        return bits;
    }
    /// A band from key to key.
    void Band(bool bShift, bool bCtrl, int from, int to) {
        KeyGesture_cls gesture;
        gesture.Press({0, 0}, KeyHit(), false, bShift, bCtrl);
        gesture.Drag({9, 9});
        mCBand.Select(gesture, [=](Parameters_cls&, int key) { return key >= from && key <= to; });
    }

    Curve mCurve{{MakeKey(0.0, 1), MakeKey(0.2, 2), MakeKey(0.4, 3), MakeKey(0.6, 4)}};
    KeyBand_cls mCBand;
};

TEST_F(KeyBand, GrowsAndShrinksOverTheSelectionOfThePress) {
    Band(false, false, 1, 2);
    EXPECT_EQ(Bits(), "0110");
    Band(true, false, 1, 3);
    EXPECT_EQ(Bits(), "1111");
    Band(true, false, 1, 1);
    EXPECT_EQ(Bits(), "1110") << "what the band left again is as it was";
    Band(false, true, 2, 3);
    EXPECT_EQ(Bits(), "1001");
    Band(false, true, 3, 3);
    EXPECT_EQ(Bits(), "1011") << "turned over once, not twice";
    mCBand.Restore();
    EXPECT_EQ(Bits(), "1010");
}

TEST_F(KeyBand, CurvesThatGoOrLoseKeysMeanwhileDoNoHarm) {
    auto gone = std::make_unique<Curve>(std::vector<KeyFrame_cls>{MakeKey(0.5, 1)});
    mCBand.Begin({gone.get(), &mCurve});
    gone.reset();
    mCurve.ExecCommandSetKeys({MakeKey(0.1, 1)});
    Band(false, false, 0, 9);
    EXPECT_EQ(Bits(), "1");
    mCBand.Restore();
    EXPECT_EQ(Bits(), "1") << "the first key's bit";
}

} // namespace
