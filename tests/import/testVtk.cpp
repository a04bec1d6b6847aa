// Points of VTK files, legacy and XML.
#include <cmath>

#include <gtest/gtest.h>

#include "RunImport.h"
#include "VtkWriter.h"

namespace {

using Floats = std::vector<float>;
using Doubles = std::vector<double>;
using Ints = std::vector<int>;

const std::string kAscii = "# vtk DataFile Version 3.0\nof a test\nASCII\nDATASET POLYDATA\n";
const std::string kBinary = "# vtk DataFile Version 4.2\nof a test\nBINARY\nDATASET UNSTRUCTURED_GRID\n";

/// Three points in this form, appended or where they are declared.
std::string MakeXml(const VtkForm_st& form, bool bAppended) {
    const Doubles pos = {0.1, 2, 3, 1e300, 5, 6, -7, 8, 9};
    const Floats vel = {1, 2, 3, 4, 5, 6, 7, 8, 9};
    const std::vector<int64_t> ids = {30, 10, 20};
    const std::string packed[] = {form.Pack(vel), form.Pack(ids), form.Pack(pos)};
    const char* const heads[] = {"type=\"Float32\" Name=\"Velocity\" NumberOfComponents=\"3\"",
                                 "type=\"Int64\" Name=\"id\"", "type=\"Float64\" NumberOfComponents=\"3\""};
    std::string arrays[3];
    std::string appended;
    for (size_t i = 0; i < 3; ++i) {
        arrays[i] = "<DataArray " + std::string(heads[i]);
        if (bAppended)
            arrays[i] += " format=\"appended\" offset=\"" + std::to_string(appended.size()) + "\"/>";
        else
            arrays[i] += " format=\"binary\">\n  " + packed[i] + "\n</DataArray>";
        appended += packed[i];
    }
    std::string text =
        form.Root("PolyData") +
        "<PolyData><FieldData><DataArray type=\"Float64\" Name=\"TimeValue\" NumberOfTuples=\"1\" "
        "format=\"ascii\">2.5</DataArray></FieldData>"
        "<Piece NumberOfPoints=\"3\"><PointData>" +
        arrays[0] + arrays[1] + "</PointData><CellData/><Points>" + arrays[2] +
        "</Points></Piece></PolyData>";
    if (bAppended)
        text += "<AppendedData encoding=\"" + std::string(form.mbBase64 ? "base64" : "raw") + "\">\n _" +
                appended + "\n</AppendedData>";
    return text + "</VTKFile>\n";
}

} // namespace

TEST(ImportVtk, LegacyFilesOfLettersHaveAllTheirSectionsPassedOver) {
    const ImportFolder_st folder;
    std::string numbers; // nine of each point
    for (int i = 0; i < 27; ++i)
        numbers += std::to_string(i) + " ";
    const std::string text = kAscii +
                             "FIELD FieldData 2\nTIME 1 1 double\n0.25\nnames 1 2 string\none\ntwo words\n"
                             "POINTS 3 float\n1 2 3 4\n5 6 7 8 9\nMETADATA\nINFORMATION 0\n\n"
                             "VERTICES 2 5\n1 0 2 1 2\n"
                             "LINES 2 2\nOFFSETS vtktypeint64\n0 2\nCONNECTIVITY vtktypeint64\n0 1\n"
                             "CELL_DATA 2\nSCALARS density float\nLOOKUP_TABLE default\n1 2\n"
                             "VECTORS velocity float\n1 1 1 1 1 1\n"
                             "POINT_DATA 3\nSCALARS Particle%20Kind int 1\nLOOKUP_TABLE default\n2 0 1\n"
                             "VECTORS velocity double\n.1 .2 .3 4 5 6 7 8 nan\nTENSORS t float\n" +
                             numbers + "\nFIELD more 2\ndensity 1 3 double\n0.1 1e-50 3\nmany 18 3 int\n" +
                             numbers + numbers + "\n";
    const ImportRunResult_st run =
        folder.Run({folder.Write("a.vtk", Gzip(text)), "--columns", "type=Particle Kind,radius=t:4"});
    ASSERT_EQ(run.mStatus, 0) << run.mErr;
    const ReadSnapshot_st snap = folder.ReadSnapshot(0);
    EXPECT_EQ(snap.mTime, 0.25f);
    EXPECT_EQ(snap.mPos, (Floats{1, 2, 3, 4, 5, 6, 7, 8, 9}));
    EXPECT_EQ(snap.mType, (Ints{2, 0, 1}));
    EXPECT_EQ(snap.mRadius, (Floats{4, 13, 22}));
    EXPECT_EQ(snap.mValue, (Floats{0.1f, 0, 3}));
    ASSERT_EQ(snap.mVel.size(), 9u);
    EXPECT_EQ(snap.mVel[1], 0.2f);
    EXPECT_TRUE(std::isnan(snap.mVel[8]));
}

TEST(ImportVtk, LegacyFilesOfBytesHaveTheHighestFirst) {
    const ImportFolder_st folder;
    float odd = 0; // not a number, with bits of its own
    const unsigned bits = 0x7fa0dead;
    std::memcpy(&odd, &bits, 4);
    const std::string text =
        kBinary + "POINTS 2 float\n" + VtkBytes(Floats{1, odd, 3, 4, 5, 6}, true) + "\nCELLS 2 4\n" +
        VtkBytes(Ints{1, 0x20202020, 1, 1}, true) + "\nCELL_TYPES 2\n" + VtkBytes(Ints{1, 1}, true) +
        "\nPOINT_DATA 2\nCOLOR_SCALARS c 3\nabcdef\nSCALARS mask bit\nLOOKUP_TABLE default\n\x40\n" +
        "GLOBAL_IDS id vtktypeint64\n" + VtkBytes(std::vector<int64_t>{1ll << 40, 3}, true) +
        "\nSCALARS energy double\n" + VtkBytes(Doubles{1.0 + 0x1.000001p-24, -2}, true) + "\n";
    const ImportRunResult_st run = folder.Run({folder.Write("a.vtk", text)});
    ASSERT_EQ(run.mStatus, 0) << run.mErr;
    const ReadSnapshot_st snap = folder.ReadSnapshot(0);
    EXPECT_EQ(snap.mID, (Ints{-1, 3}));
    EXPECT_EQ(snap.mPos[0], 1.0f);
    EXPECT_EQ(std::memcmp(&snap.mPos[1], &bits, 4), 0);
    EXPECT_EQ(snap.mValue, (Floats{1.00000011920928955f, -2}));
}

TEST(ImportVtk, XmlHoldsArraysInManyForms) {
    for (int i = 0; i < 24; ++i) {
        VtkForm_st form;
        form.mbBig = i & 1;
        form.mbWide = i & 2;
        form.mBlock = i & 4 ? 16 : 0; // several blocks, the last one not full
        form.mbBase64 = i < 16;
        const ImportFolder_st folder;
        const ImportRunResult_st run = folder.Run({folder.Write("a.vtp", MakeXml(form, i >= 8))});
        ASSERT_EQ(run.mStatus, 0) << i << run.mErr;
        const ReadSnapshot_st snap = folder.ReadSnapshot(0);
        EXPECT_EQ(snap.mTime, 2.5f);
        EXPECT_EQ(snap.mID, (Ints{10, 20, 30})) << i;
        EXPECT_EQ(snap.mPos, (Floats{HUGE_VALF, 5, 6, -7, 8, 9, 0.1f, 2, 3})) << i;
        EXPECT_EQ(snap.mVel, (Floats{4, 5, 6, 7, 8, 9, 1, 2, 3})) << i;
    }
}

// Parts of a step may be named one by one, or by a file that names them; what a part lacks is 0.
TEST(ImportVtk, CollectionsAndPiecesMakeSnapshots) {
    const ImportFolder_st folder;
    const auto piece = [](const std::string& pos, const std::string& data) {
        return "<VTKFile type=\"UnstructuredGrid\"><UnstructuredGrid><Piece "
               "NumberOfPoints=\"0\"><Points/></Piece>"
               "<Piece NumberOfPoints=\"1\"><Points><DataArray type=\"Float32\" NumberOfComponents=\"3\">" +
               pos + "</DataArray></Points><PointData>" + data +
               "</PointData></Piece></UnstructuredGrid></VTKFile>";
    };
    const std::string rho = "<DataArray type=\"Float32\" Name=\"rho\" format=\"ascii\">4</DataArray>";
    folder.Write("p_0.vtu", piece("1 2 3", rho));
    folder.Write("p_1.vtu", piece("4 5 6", ""));
    folder.Write("q.pvtu",
                 "<VTKFile type=\"PUnstructuredGrid\"><PUnstructuredGrid><PPoints><PDataArray/></PPoints>"
                 "<Piece Source=\"p_0.vtu\"/><Piece Source=\"p_1.vtu\"/></PUnstructuredGrid></VTKFile>");
    folder.Write(
        "p.pvd",
        "<VTKFile type=\"Collection\"><Collection>"
        "<DataSet timestep=\"2\" file=\"q.pvtu\"/><DataSet timestep=\"1\" part=\"0\" file=\"p_0.vtu\"/>"
        "<DataSet timestep=\"2\" file=\"p_0.vtu\"/></Collection></VTKFile>");
    const ImportRunResult_st run = folder.Run({folder / "p.pvd", folder / "p_0.vtu", folder / "q.pvtu"});
    ASSERT_EQ(run.mStatus, 0) << run.mErr;
    ASSERT_EQ(folder.CountSnapshots(), 2) << "parts that were read are no snapshots of their own";
    EXPECT_EQ(folder.ReadSnapshot(0).mTime, 1.0f);
    EXPECT_EQ(folder.ReadSnapshot(0).mPos, (Floats{1, 2, 3}));
    EXPECT_EQ(folder.ReadSnapshot(1).mPos, (Floats{1, 2, 3, 4, 5, 6, 1, 2, 3}));
    EXPECT_EQ(folder.ReadSnapshot(1).mValue, (Floats{4, 0, 4}));
}

TEST(ImportVtk, WhatIsDamagedIsToldAndTakesNoMemory) {
    const std::string head = "<VTKFile type=\"PolyData\" compressor=\"vtkZLibDataCompressor\">";
    const std::string root = "<VTKFile type=\"PolyData\">";
    const std::string plain = root + "<PolyData>";
    const auto points = [](const std::string& count, const std::string& array) {
        return "<PolyData><Piece NumberOfPoints=\"" + count +
               "\"><Points><DataArray type=\"Float32\" NumberOfComponents=\"3\" " + array +
               "</Points></Piece></PolyData></VTKFile>";
    };
    VtkForm_st packed;
    packed.mBlock = 8;
    std::string damaged = packed.Pack(Floats{1, 2, 3});
    damaged[damaged.size() - 8] = damaged[damaged.size() - 8] == 'A' ? 'B' : 'A';
    std::string deep = plain;
    for (int i = 0; i < 1000; ++i)
        deep += "<a>";
    const std::pair<std::string, std::string> cases[] = {
        {kAscii + "POINTS 3 float\n1 2 3 4 5 6 7 8\n", "ends within POINTS"},
        {kAscii + "POINTS 99999999999 float\n1 2 3\n", "should be followed by other numbers"},
        {kAscii + "POINTS 9999999999 float\n1 2 3\n", "ends within POINTS"},
        {kAscii + "POINTS 1 float\n1 2 x\n", "\"x\" can't be such a number"},
        {kAscii + "POINTS 1 floats\n1 2 3\n", "is no kind of number"},
        {kAscii + "POINTS 1 float\n1 2 3\nPOINT_DATA 2\n", "is of 2 points, but there are 1"},
        {kAscii + "POINTS 1 float\n1 2 3\nPOINT_DATA 1\nSCALARS id float\nLOOKUP_TABLE default\n1.5\n",
         "\"1.5\" can't be such a number"},
        {kAscii + "FIELD f 1000000000\n", "ends within a FIELD"},
        {kAscii + "WORMS 1 2\n", "\"WORMS\" is no word of this format"},
        {kAscii, "there are no points in it"},
        {kBinary + "POINTS 1000000000 double\nxyz", "ends within POINTS"},
        {"# vtk DataFile Version 2.0\nt\nASCII\nDATASET STRUCTURED_POINTS\n", "is no data set of points"},
        {"<?xml version=\"1.0\"?><a/>", "is XML, but not of VTK"},
        {plain + "<Piece", "no XML"},
        {deep, "elements in too many elements"},
        {"<?xml version=\"1.0\"?><!DOCTYPE x [<!ENTITY a \"b\">]>" + plain, "has a document type"},
        {root + points("1", "format=\"ascii\">1    2    </DataArray>"), "Points ends after 0 of 1"},
        {root + points("2000000000", "format=\"ascii\">1 2 3</DataArray>"), "more than the file can hold"},
        {root + points("20000000000", "/>"), "NumberOfPoints makes no sense"},
        {root + points("1", "format=\"binary\">????AAAAAAAAAAAAAAAAAAAA</DataArray>"),
         "letters that no base64 has"},
        {root +
             points("1", "format=\"binary\">" + VtkForm_st().Pack(Floats{1, 2}) + "AAAAAAAAAAAA</DataArray>"),
         "should have 12 bytes, but has 8"},
        {root + points("1", "format=\"appended\" offset=\"5\"/>"), "AppendedData, which is missing"},
        {head + points("1", "format=\"binary\">" + damaged + "</DataArray>"), "it is damaged"},
        {head + points("1", "format=\"binary\">" + packed.Pack(Floats{1, 2}) + "</DataArray>"),
         "should have 12 bytes, but has others"},
        {"<VTKFile type=\"PolyData\" compressor=\"vtkLZ4DataCompressor\">" +
             points("1", "format=\"binary\">AAAA</DataArray>"),
         "write it with zlib"},
        {"<VTKFile type=\"Collection\"><Collection><DataSet file=\"self.pvd\"/></Collection></VTKFile>",
         "self.pvd: should hold points, but names files"},
        {"<VTKFile type=\"PPolyData\"><Piece Source=\"self.pvd\"/></VTKFile>",
         "self.pvd: should hold points, but names files"},
    };
    const ImportFolder_st folder;
    folder.Write("self.pvd", "<VTKFile type=\"Collection\"><DataSet file=\"self.pvd\"/></VTKFile>");
    std::vector<std::string> files = {"--from=vtk"};
    for (const auto& [text, reason] : cases)
        files.push_back(folder.Write("f" + std::to_string(files.size()), text));
    const ImportRunResult_st run = folder.Run(files);
    EXPECT_EQ(run.mStatus, 1);
    EXPECT_LT(run.mPeakKB, 200000);
    for (size_t i = 0; i < std::size(cases); ++i) {
        const std::string own = "/f" + std::to_string(i + 1) + ": ";
        const std::string& reason = cases[i].second;
        const size_t place = reason.find("self.pvd") == 0 ? 0 : run.mErr.find(own);
        ASSERT_NE(place, std::string::npos) << own << reason << "\n" << run.mErr;
        const size_t end = run.mErr.find(place == 0 ? "\n\n" : "\n", place);
        EXPECT_NE(run.mErr.substr(place, end - place).find(reason), std::string::npos)
            << reason << "\n"
            << run.mErr.substr(place, end - place);
    }
}
