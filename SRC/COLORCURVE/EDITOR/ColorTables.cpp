// Perceptually even colour tables, thinned to the keys between which straight lines stay within 3/255 of the
// published table of 256 entries. A row is the entry's number there, red, green, blue.
//
// Viridis, Magma, Inferno, Plasma: Nathaniel Smith, Stefan van der Walt and Eric Firing, 2015 (CC0).
// Cividis: Jamie Nunez, Christopher Anderton and Ryan Renslow, "Optimizing colormaps with consideration for
// color vision deficiency", PLoS ONE 13(7), 2018 (CC0).
// Turbo: Anton Mikhailov, "Turbo, an improved rainbow colormap for visualization", 2019 (Apache-2.0).
// Coolwarm: Kenneth Moreland, "Diverging Color Maps for Scientific Visualization", 2009.
#include "COLORCURVE/EDITOR/ColorTables.h"

#include <wx/intl.h>

namespace {

constexpr double kLastEntry = 255.0;

struct Entry_st {
    int mNumber;
    double mRgb[3];
};

constexpr Entry_st kViridis[] = {{0, {0.267, 0.0049, 0.3294}},    {33, {0.278, 0.1804, 0.4867}},
                                 {68, {0.222, 0.3392, 0.5488}},   {135, {0.1211, 0.5927, 0.5446}},
                                 {157, {0.1466, 0.6731, 0.5089}}, {180, {0.2741, 0.752, 0.4366}},
                                 {213, {0.5655, 0.8424, 0.2629}}, {240, {0.8456, 0.8873, 0.0997}},
                                 {251, {0.9553, 0.9011, 0.1181}}, {255, {0.9932, 0.9062, 0.1439}}};

constexpr Entry_st kCividis[] = {{0, {0, 0.1351, 0.3048}},       {21, {0, 0.191, 0.4411}},
                                 {24, {0.0179, 0.1985, 0.4412}}, {34, {0.1176, 0.2259, 0.4343}},
                                 {70, {0.2871, 0.3241, 0.4234}}, {146, {0.5554, 0.5378, 0.4711}},
                                 {200, {0.7694, 0.707, 0.4085}}, {237, {0.9277, 0.8365, 0.2906}},
                                 {252, {0.9948, 0.893, 0.2034}}, {255, {0.9957, 0.9093, 0.2178}}};

constexpr Entry_st kMagma[] = {{0, {0.0015, 0.0005, 0.0139}},   {22, {0.0653, 0.0473, 0.1849}},
                               {46, {0.1982, 0.0639, 0.404}},   {62, {0.3041, 0.0678, 0.4808}},
                               {100, {0.5378, 0.1569, 0.5066}}, {139, {0.7862, 0.2415, 0.4502}},
                               {166, {0.9298, 0.3527, 0.3727}}, {187, {0.981, 0.4984, 0.3697}},
                               {214, {0.9972, 0.6973, 0.4772}}, {255, {0.9871, 0.9914, 0.7495}}};

constexpr Entry_st kInferno[] = {
    {0, {0.0015, 0.0005, 0.0139}},   {19, {0.0564, 0.0346, 0.1684}},  {42, {0.1973, 0.0384, 0.3675}},
    {61, {0.3226, 0.0556, 0.4264}},  {96, {0.5409, 0.1347, 0.4151}},  {134, {0.7696, 0.2361, 0.3075}},
    {169, {0.9265, 0.4054, 0.1503}}, {196, {0.9829, 0.5866, 0.0247}}, {206, {0.9879, 0.6603, 0.0517}},
    {227, {0.9698, 0.8208, 0.2387}}, {243, {0.9464, 0.9372, 0.4586}}, {255, {0.9884, 0.9984, 0.6449}}};

constexpr Entry_st kPlasma[] = {{0, {0.0504, 0.0298, 0.528}},    {16, {0.1934, 0.0184, 0.5903}},
                                {52, {0.4237, 0.0006, 0.659}},   {73, {0.5462, 0.039, 0.647}},
                                {119, {0.7642, 0.2404, 0.5021}}, {177, {0.9448, 0.5077, 0.3024}},
                                {218, {0.9946, 0.7348, 0.1689}}, {241, {0.9725, 0.8812, 0.1449}},
                                {254, {0.9419, 0.9686, 0.141}},  {255, {0.94, 0.9752, 0.1313}}};

constexpr Entry_st kTurbo[] = {
    {0, {0.19, 0.0718, 0.2322}},     {12, {0.2392, 0.2083, 0.5469}},  {24, {0.2682, 0.3382, 0.7805}},
    {36, {0.277, 0.4615, 0.9331}},   {47, {0.2625, 0.5697, 0.9977}},  {58, {0.2002, 0.6784, 0.9683}},
    {76, {0.0975, 0.8371, 0.8034}},  {86, {0.1081, 0.9014, 0.706}},   {98, {0.2214, 0.9569, 0.5691}},
    {120, {0.5466, 0.9991, 0.2958}}, {132, {0.6849, 0.9794, 0.216}},  {150, {0.8587, 0.8865, 0.2123}},
    {168, {0.9732, 0.7468, 0.2254}}, {186, {0.9942, 0.5639, 0.1592}}, {208, {0.9211, 0.3149, 0.0548}},
    {230, {0.7648, 0.1437, 0.0104}}, {252, {0.5199, 0.0276, 0.0078}}, {255, {0.4796, 0.0158, 0.0106}}};

constexpr Entry_st kCoolwarm[] = {{0, {0.2298, 0.2987, 0.7537}},   {35, {0.3992, 0.5285, 0.9285}},
                                  {66, {0.5652, 0.6994, 0.9966}},  {96, {0.724, 0.8149, 0.9757}},
                                  {128, {0.8674, 0.8644, 0.8626}}, {159, {0.9582, 0.7712, 0.6803}},
                                  {191, {0.9583, 0.6043, 0.4833}}, {224, {0.8654, 0.3711, 0.2958}},
                                  {247, {0.7527, 0.1576, 0.1843}}, {255, {0.7057, 0.0156, 0.1502}}};

constexpr Entry_st kGrey[] = {{0, {0, 0, 0}}, {255, {1, 1, 1}}};

template <size_t N>
ColorTable_st Published(const char* pName, const Entry_st (&entries)[N]) {
    ColorTable_st table;
    table.mStrName = pName;
    for (const Entry_st& entry : entries)
        table.mVKeys.push_back(
            {entry.mNumber / kLastEntry, entry.mRgb[0], entry.mRgb[1], entry.mRgb[2], 1.0});
    return table;
}

} // namespace

const std::vector<ColorTable_st>& GetClassicTables() {
    static const std::vector<ColorTable_st> sTables = {
        {wxTRANSLATE("Red Yellow"), {{0, 1, 0, 0, 1}, {1, 1, 1, 0, 1}}},
        {wxTRANSLATE("Green Red"), {{0, 0, 1, 0, 1}, {1, 1, 0, 0, 1}}},
        {wxTRANSLATE("Black White"), {{0, 0, 0, 0, 1}, {1, 1, 1, 1, 1}}},
        {wxTRANSLATE("Cold Color"), {{0, 0, 0, 1, 1}, {1, 0, 1, 1, 1}}},
        {wxTRANSLATE("Moderate Gray"), {{0, 0.5, 0.5, 0.5, 1}, {1, 0.75, 0.75, 0.75, 1}}},
        {wxTRANSLATE("Spectrum"),
         {{0, 0.03, 0, 0.07, 1},
          {0.167, 0.32, 0, 0.77, 1},
          {0.333, 0, 0.31, 0.59, 1},
          {0.5, 0, 0.78, 0, 1},
          {0.666, 0.82, 0.56, 0, 1},
          {0.833, 0.84, 0, 0, 1},
          {1, 0.26, 0, 0, 1}}},
        {wxTRANSLATE("SpectrumRGB"),
         {{0, 1, 0, 0, 1},
          {0.25, 0.5, 0, 0.5, 1},
          {0.5, 0, 0, 1, 1},
          {0.75, 0, 0.5, 0.5, 1},
          {1, 0, 1, 0, 1}}},
        {wxTRANSLATE("Incandescent"),
         {{0, 0, 0, 0, 1},
          {0.594, 0.73, 0, 0, 1},
          {0.809, 1, 0.55, 0.2, 1},
          {0.9, 0.97, 0.94, 0.07, 1},
          {1, 0.97, 0.97, 0.83, 1}}},
        {wxTRANSLATE("ColdSteel"), {{0, 1, 1, 1, 1}, {0.645, 0.05, 0.02, 0.14, 1}, {1, 0.36, 0.73, 0.76, 1}}},
    };
    return sTables;
}

const std::vector<ColorTable_st>& GetEvenTables() {
    static const std::vector<ColorTable_st> sTables = {
        Published("Viridis", kViridis), Published("Cividis", kCividis),  Published("Magma", kMagma),
        Published("Inferno", kInferno), Published("Plasma", kPlasma),    Published("Turbo", kTurbo),
        Published("Grey", kGrey),       Published("Coolwarm", kCoolwarm)};
    return sTables;
}
