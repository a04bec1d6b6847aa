// Groups of curves: values, keys in all dimensions, copying, identifiers, text.
#include "PARAM/clsParamGroup.h"

#include "ParamTest.h"

namespace {

const wxString kXyz[] = {"x", "y", "z"};
using Doubles = std::vector<double>;

Doubles ValuesOf(ParamGroup_cls& group, double t) {
    Doubles values(group.mVParams.size());
    group.GetInterpolatedValue(values.data(), t, Parameters_cls::kCurrent);
    return values;
}

class ParamGroup : public ParamTest {
protected:
    wxString Text() { return mGroup.Serialize(); }
    std::vector<size_t> KeyCounts() const {
        std::vector<size_t> counts;
        for (const Parameters_cls& param : mGroup.mVParams)
            counts.push_back(param.GetKeys().size());
        return counts;
    }
    ParamGroup_cls mGroup{"Filter Translate", 3, kXyz, 4102, true};
};

TEST_F(ParamGroup, StartsWithOneZeroKeyACurve) {
    EXPECT_EQ(mGroup.mVParams[1].mID, "Filter Translate y");
    EXPECT_EQ(mGroup.mVParams[1].mName, "y");
    EXPECT_EQ(mGroup.mVParams[1].mpCParamGroup, &mGroup);
    EXPECT_FALSE(mGroup.mbFolder);
    EXPECT_TRUE(mGroup.mbLinked);
    EXPECT_EQ(ValuesOf(mGroup, 0.5), (Doubles{0, 0, 0}));
    EXPECT_EQ(KeyCounts(), (std::vector<size_t>{1, 1, 1}));
    const ParamGroup_cls folder("Folder", 0, nullptr, 0, false);
    EXPECT_TRUE(folder.mbFolder);
    EXPECT_FALSE(ParamGroup_cls("Empty", -1, nullptr, 0, false).mbFolder);
}

TEST_F(ParamGroup, ValuesAreCachedAndEvaluated) {
    const double values[] = {1, 2, 3};
    mGroup.SetKeyFrame(values, true, 1.0);
    EXPECT_EQ(ValuesOf(mGroup, 0.5), (Doubles{0.5, 1, 1.5}));
    mGroup.mVParams[0].mCurrentValue = 9;
    EXPECT_EQ(ValuesOf(mGroup, -1.0), (Doubles{9, 1, 1.5})) << "now is what the user sees";
}

TEST_F(ParamGroup, AKeyInOneDimensionBringsKeysInAll) {
    const double values[] = {0, 5, 0};
    mGroup.SetKeyFrame(values, false, 0.5);
    EXPECT_EQ(KeyCounts(), (std::vector<size_t>{2, 2, 2}));
    const unsigned position = GCUndoList.GetCurrent();
    mGroup.SetKeyFrame(values, false, 0.5);
    EXPECT_EQ(GCUndoList.GetCurrent(), position) << "nothing new, no step";
    mGroup.SetKeyFrame(values, true, 0.25);
    EXPECT_EQ(KeyCounts(), (std::vector<size_t>{3, 3, 3}));
    GCUndoList.UndoCurrent();
    GCUndoList.UndoCurrent();
    EXPECT_EQ(KeyCounts(), (std::vector<size_t>{1, 1, 1}));
    EXPECT_FALSE(GCUndoList.IsUndoable());
    mGroup.mVParams[1].mCurrentValue = 8;
    mGroup.SetKeyFrameIfChanged(0.75);
    EXPECT_EQ(KeyCounts(), (std::vector<size_t>{1, 2, 1}));
}

TEST_F(ParamGroup, InsertedKeysGoToOnesNearbyInTheFilm) {
    mGroup.InsertKey(-1, 0.5, 0);
    EXPECT_EQ(KeyCounts(), (std::vector<size_t>{2, 2, 2}));
    mGroup.InsertKey(0, 0.512, ParamGroup_cls::kNoValue);
    mGroup.InsertKey(0, 0.512, 0.0);
    EXPECT_EQ(KeyCounts()[0], 2u) << "within 0.015 of the film, whatever its length";
    mGroup.InsertKey(0, 0.512, 3.0);
    EXPECT_EQ(mGroup.mVParams[0].GetKeyFrameValue(2), 3.0) << "another value is a key beside";
    mGroup.InsertKey(1, 0.6, ParamGroup_cls::kNoValue);
    mGroup.InsertKey(2, 0.6, 4.0);
    EXPECT_EQ(KeyCounts(), (std::vector<size_t>{3, 3, 3}));
    Parameters_cls::msCurrentDoubleIndex = 0.9;
    mGroup.InsertKey(2, -1.0, 6.0);
    EXPECT_EQ(mGroup.mVParams[2].GetKeyFrameValue(3), 6.0);
    mGroup.InsertKey(3, 0.3, 6.0);
}

TEST_F(ParamGroup, LinkedEditsReachAllCurves) {
    const double values[] = {1, 2, 3};
    mGroup.SetKeyFrame(values, true, 1.0);
    Parameters_cls& y = mGroup.mVParams[1];
    y.InsertKeyQueue(0.5);
    EXPECT_EQ(KeyCounts(), (std::vector<size_t>{3, 3, 3}));
    EXPECT_EQ(y.GetKeyFrameValue(1), 1.0);
    EXPECT_TRUE(y.DeleteKeyQueue(0.5));
    EXPECT_EQ(KeyCounts(), (std::vector<size_t>{2, 2, 2}));
    EXPECT_FALSE(y.DeleteKeyQueue(0.5));
    GCUndoList.UndoCurrent();
    EXPECT_EQ(KeyCounts(), (std::vector<size_t>{3, 3, 3})) << "one step";
    y.DeleteKeyQueue(0.5);

    mGroup.mbLinked = false;
    y.InsertKeyQueue(0.7);
    EXPECT_EQ(KeyCounts(), (std::vector<size_t>{2, 3, 2}));
    EXPECT_EQ(y.GetKeyFrameValue(1), 0.0) << "alone and at a given time: zero, not the curve's value";
    Parameters_cls::msCurrentDoubleIndex = 0.85;
    y.InsertKeyQueue(-1.0);
    EXPECT_DOUBLE_EQ(y.GetKeyFrameValue(2), 1.0) << "now: half way to the last key";
}

TEST_F(ParamGroup, CopyingTakesTheCurveAndNotTheName) {
    ParamGroup_cls other("Template", 3, kXyz, 1, false);
    SetKeys(other.mVParams[2], {MakeKey(0.5, 7, INTERP_STEP)});
    ParamGroup_cls narrow("Narrow", 1, kXyz, 1, true);
    mGroup.CopyFromP(&narrow);
    EXPECT_FALSE(GCUndoList.IsUndoable());
    const wxString before = Text();
    mGroup.CopyFromP(&other);
    EXPECT_EQ(mGroup.mVParams[2].GetKeyFrameValue(0), 7);
    EXPECT_EQ(mGroup.mVParams[2].mID, "Filter Translate z");
    EXPECT_EQ(mGroup.mVParams[2].mpCParamGroup, &mGroup);
    EXPECT_FALSE(mGroup.mVParams[2].mbTimeDepend.mValue);
    GCUndoList.UndoCurrent();
    EXPECT_EQ(Text(), before);
    EXPECT_FALSE(GCUndoList.IsUndoable());
    mGroup.CopyParamGroupFromP(&other);
    EXPECT_EQ(mGroup.mVParams[2].mID, "Template z");
    EXPECT_EQ(mGroup.mVParams[2].mpCParamGroup, &mGroup);
    EXPECT_EQ(Text(), other.Serialize());
    EXPECT_FALSE(GCUndoList.IsUndoable());
}

TEST_F(ParamGroup, SwapRotatesTheCurvesUnderTheirNames) {
    for (int i = 0; i < 3; ++i)
        mGroup.mVParams[size_t(i)].ExecCommandInitSet(i + 1);
    const wxString before = Text();
    mGroup.Swap(4);
    mGroup.Swap(0);
    EXPECT_FALSE(GCUndoList.IsUndoable());
    mGroup.Swap(3);
    EXPECT_EQ(ValuesOf(mGroup, 0.0), (Doubles{2, 3, 1}));
    EXPECT_EQ(mGroup.mVParams[0].mName, "x");
    mGroup.Swap(2);
    EXPECT_EQ(ValuesOf(mGroup, 0.0), (Doubles{3, 2, 1}));
    GCUndoList.UndoCurrent();
    mGroup.Swap(3);
    mGroup.Swap(3);
    EXPECT_EQ(Text(), before) << "three rotations are none";
}

TEST_F(ParamGroup, IdentifiersChangeThroughAllChildren) {
    ParamGroup_cls folder("Filter", 0, nullptr, 0, false);
    folder.mVpCChilds.push_back(&mGroup);
    folder.ReplaceID("Filter", "Fog 01");
    EXPECT_EQ(mGroup.mID, "Fog 01 Translate");
    EXPECT_EQ(mGroup.mName, "Filter Translate") << "files keep the old key";
    EXPECT_EQ(folder.GetPCParamFromID("Fog 01 Translate z"), &mGroup.mVParams[2]);
    EXPECT_EQ(folder.GetPCParamFromID("Filter Translate z"), nullptr);
    EXPECT_EQ(folder.Serialize(), Text());
    EXPECT_EQ(folder.SerializeChilds(), Text());
    mGroup.Export();
    EXPECT_EQ(mCopied, "#declare Fog_01_Translate_x = 0;\n#declare Fog_01_Translate_y = 0;\n"
                       "#declare Fog_01_Translate_z = 0;\n");
}

TEST_F(ParamGroup, TextFormRoundTrip) {
    const double values[] = {1, 2, 3};
    mGroup.SetKeyFrame(values, true, 0.5);
    mGroup.mVParams[2].SetTimeDependent(false);
    const wxString text = Text();
    EXPECT_TRUE(
        text.StartsWith("-ParamGroup=Filter Translate\ndimension=3\nStart\nParameter_x\ntimeDepend=1\n"
                        "periodic=0\nitemnum 2\n"))
        << text;
    ParamGroup_cls read("Filter Translate", 3, kXyz, 0, true);
    EXPECT_EQ(ReadText(read, "-ParamGroup=Filter\nfirst\n" + text + "last\n"),
              (std::vector<std::string>{"-ParamGroup=Filter", "first", "last"}));
    EXPECT_EQ(read.Serialize(), text);
}

TEST_F(ParamGroup, WrongDimensionsAndCutFilesReadWhatIsThere) {
    wxString text = Text();
    text.Replace("dimension=3", "dimension=2000000000");
    text.Replace("itemnum 1\n0.0", "itemnum 1\n0.25");
    ParamGroup_cls read("Filter Translate", 3, kXyz, 0, true);
    EXPECT_EQ(ReadText(read, text + "last\n"), (std::vector<std::string>{"last"}));
    EXPECT_EQ(read.mVParams[2].GetKeyFrameDoubleIndex(0), 0.25);
    EXPECT_TRUE(read.Serialize().Contains("dimension=3\n"));
    ReadText(read, "-ParamGroup=Filter Translate\ndimension=-7\nStart\n");
    ReadText(read, "-ParamGroup=Filter Translate\n\ndimension=3\nno start\n");
    ReadText(read, text.Left(90));
    EXPECT_EQ(read.GetDimension(), 3);
    // The text of another block is its own.
    ParamGroup_cls cut("Filter Translate", 3, kXyz, 0, true);
    EXPECT_EQ(ReadText(cut, "-ParamGroup=Filter Translate\ndimension=3\nStart\nParameter_x\nitemnum 5\n"
                            "0.5 1 7 0 0\n---Other\nlast\n"),
              (std::vector<std::string>{"---Other", "last"}));
    EXPECT_EQ(cut.mVParams[0].GetKeyNumber(), 1);
    EXPECT_EQ(cut.mVParams[1].GetKeyNumber(), 1) << "what a curve begins with";
    ParamGroup_cls none("None", -1, nullptr, 0, true);
    ReadText(none, "-ParamGroup=None\ndimension=4\nStart\nParameter_x\n");
    EXPECT_EQ(none.GetDimension(), 0);
}

} // namespace
