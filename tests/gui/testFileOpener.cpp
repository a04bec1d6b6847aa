// Files that are handed over from outside: dropped on the window, or named on the command line.
#include <cstdlib>

#include "APP/ForeignFile.h"
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
            paths.push_back(wxString::FromUTF8(file[0] == '/' ? file : Root() + file));
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

TEST_F(FileOpener, OtherProgramsFilesAreImportedAndOpened) {
    const std::string path = std::getenv("PATH");
    setenv("PATH", (fs::path(MORENTIS_PROGRAM).parent_path().string() + ":" + path).c_str(), 1);
    const auto write = [this](const std::string& name, const std::string& bytes) {
        std::ofstream(mDir / name, std::ios::binary) << bytes;
        return mDir / name;
    };
    const std::string head = "# vtk DataFile Version 3.0\nt\nASCII\nDATASET POLYDATA\nPOINTS 2 float\n";
    const std::string second = write("run_10.vtk", head + "0 0 0 2 2 2\n");
    const std::string first = write("run_9.vtk", head + "0 0 0 1 1 1\n");
    Later({{HasDialog, [] {
                Snap("import");
                KeyNow(WXK_RETURN);
            }}});
    Hand({first});
    EXPECT_TRUE(PumpUntil([] { return Frame()->GetTitle().EndsWith("run_9_import.mrp"); }));
    EXPECT_TRUE(Settle());
    EXPECT_TRUE(mVMessages.empty());
    EXPECT_EQ(Store()->GetPCActiveFileSequence()->GetSeqLength(), 2) << "all that are numbered like it";
    EXPECT_TRUE(fs::exists(mDir / "run_9_import/run_9_import.mrp"));

    // Escape: as it was. What can't be read is told.
    const std::string broken = write("s.hdf5", "\x89HDF\r\n\x1a\n and no more");
    Later({{HasDialog, [] { KeyNow(WXK_ESCAPE); }}});
    Hand({broken}, true);
    EXPECT_TRUE(mVMessages.empty());
    Later({{HasDialog, [] { KeyNow(WXK_RETURN); }}});
    Hand({broken});
    EXPECT_TRUE(PumpUntil([this] { return WasTold("couldn't be imported"); }));
    EXPECT_TRUE(WasTold("s.hdf5: can't be opened as HDF5"));
    EXPECT_FALSE(fs::exists(mDir / "s_import"));

    EXPECT_EQ(GetForeignKind(write("a.csv", "x,y\n1,2\n")), ForeignKind::Likely);
    EXPECT_EQ(GetForeignKind(write("a.txt", "x,y\n1,2\n")), ForeignKind::None);
    EXPECT_EQ(GetForeignKind(write("a.dump", "ITEM: TIMESTEP\n")), ForeignKind::Likely);
    EXPECT_EQ(GetForeignKind(write("a.pvd", "<?xml version=\"1.0\"?>\n<VTKFile type")), ForeignKind::Sure);
    EXPECT_EQ(GetForeignKind(mDir.mPath.string()), ForeignKind::None);
    EXPECT_EQ(ProposeImportFolder(first), mDir / "run_9_import2");
    setenv("PATH", path.c_str(), 1);
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
