// Files that are handed over from outside: dropped on the window, or named on the command line.
#include "APP/WindowArgs.h"
#include "APP/clsFileMenu.h"
#include "FILTER/clsFilterLists.h"
#include "FILTER/clsFilterObject.h"
#include "PDATA/EDITOR/clsDataLoaderGUI.h"
#include "PDATA/clsDataLoader.h"
#include "ProjectTest.h"

namespace {

class FileOpener : public ProjectTest {
protected:
    void Hand(const std::vector<std::string>& files, bool bAtStart = false) {
        std::vector<wxString> paths;
        for (const std::string& file : files)
            paths.push_back(wxString::FromUTF8(Root() + file));
        Frame()->GetPCFileMenu()->GetOpener().Open(paths, bAtStart);
        EXPECT_TRUE(Settle());
    }
    static bool HasMelt() { return Store()->GetStrActiveFileSequencePath().Contains("melt00"); }
    static FilterCtrl_cls& Objects() { return Hub()->mpCFilters->GetObject(); }
};

} // namespace

TEST_F(FileOpener, MeshesComeBesideTheFirstProjectAsStepsOfTheirOwn) {
    Hand({"examples/deposit_text/nozzle.obj", "examples/lj_melt_bin/lj_melt_bin.mrp",
          "examples/deposit_text/deposit_text.mrp"});
    EXPECT_EQ(Frame()->GetTitle(), "*Morentis3 - " + Root() + "examples/lj_melt_bin/lj_melt_bin.mrp");
    EXPECT_TRUE(mVMessages.empty());
    ASSERT_EQ(Objects().GetCount(), 1);
    const auto& data = static_cast<const FilterObjectData_cls&>(*Objects().GetPCFilter(0)->mpCData);
    EXPECT_EQ(data.mCObjectType.mValue, FilterObjectData_cls::IMPORT);
    EXPECT_EQ(data.mCImportPath.mStrValue, Root() + "examples/deposit_text/nozzle.obj");
    EXPECT_GT(Grab(0).CountLit(60), 0);
    Menu(ID_UNDO);
    EXPECT_EQ(Objects().GetCount(), 0);
    EXPECT_TRUE(HasMelt()) << "the data stay";
}

TEST_F(FileOpener, AFileOfAnotherLayoutIsAskedAbout) {
    Hub()->mpCDataLoader->SetToDefault();
    Hand({"examples/lj_melt_bin/melt0000.bin"}, true);
    EXPECT_TRUE(mVMessages.empty()) << "it has the present layout";
    EXPECT_TRUE(HasMelt());

    mAnswers = {false};
    Hand({"examples/lj_melt_text/melt0000.txt"}, true);
    EXPECT_TRUE(WasTold("doesn't look like a file of the present layout"));
    EXPECT_EQ(Hub()->mpCDataLoader->mCItemLastOpened.mStrValue,
              Root() + "examples/lj_melt_text/melt0000.txt");

    mVMessages.clear();
    Later({{HasDialog, [] { KeyNow(WXK_ESCAPE); }}});
    Hand({"examples/lj_unsorted_text/unsorted001.txt"}, true); // yes, and the proposal is cancelled
    EXPECT_EQ(mVMessages.size(), 1u);
    EXPECT_NE(Hub()->mpCDataLoader->mCItemLastOpened.mStrValue,
              Root() + "examples/lj_unsorted_text/unsorted001.txt");
}

TEST_F(FileOpener, WhatCantBeOpenedIsTold) {
    Hand({"docs/images/film.png"});
    EXPECT_TRUE(WasTold("film.png is a picture"));
    mVMessages.clear();
    Hand({"examples/nothing.mrp"});
    EXPECT_TRUE(WasTold("nothing.mrp"));
    mVMessages.clear();
    Hand({"examples/nothing.dat"}, true);
    EXPECT_TRUE(WasTold("nothing.dat"));
    EXPECT_EQ(mVMessages.size(), 1u) << "no layout is proposed for a file that isn't there";
}

TEST_F(FileOpener, WordsOfTheCommandLine) {
    WindowArgs_st args;
    EXPECT_EQ(ParseWindowArgs({"a b.mrp", "--", "--help", "/tmp/x.obj"}, &args), "");
    EXPECT_FALSE(args.mbHelp);
    ASSERT_EQ(args.mVFiles.size(), 3u);
    EXPECT_EQ(args.mVFiles[0], wxGetCwd() + "/a b.mrp");
    EXPECT_EQ(args.mVFiles[1], wxGetCwd() + "/--help");
    EXPECT_EQ(args.mVFiles[2], "/tmp/x.obj");
    for (const char* wrong : {"--foo", "-x", ""})
        EXPECT_NE(ParseWindowArgs({wrong}, &args), "") << wrong;
    EXPECT_EQ(GetFileKind("/a.b/C.MRP"), FileKind::Project);
    EXPECT_EQ(GetFileKind("x.Stl"), FileKind::Mesh);
    EXPECT_EQ(GetFileKind("snap.0001"), FileKind::Data);
}
