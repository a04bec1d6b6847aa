#include "ProjectInputs.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace {

const char* const kNumbers[] = {"0",
                                "1",
                                "-1",
                                "0.333333333",
                                "1e300",
                                "-1e-300",
                                "nan",
                                "-inf",
                                "2147483648",
                                "-2147483649",
                                "99999999999999999999",
                                "0,5",
                                "1.000,25",
                                "0x10",
                                "",
                                "abc",
                                "1e400",
                                "65536",
                                "10000",
                                "4294967295",
                                "100000000"};

template <size_t N>
const char* Pick(std::mt19937& random, const char* const (&words)[N]) {
    return words[random() % N];
}

bool OneIn(std::mt19937& random, unsigned n) { return random() % n == 0; }

} // namespace

ProjectInputs_cls::ProjectInputs_cls() {
    const std::string root = MORENTIS_TEST_ROOT;
    for (const char* folder : {"/examples", "/tests/data"})
        for (const auto& entry : std::filesystem::recursive_directory_iterator(root + folder)) {
            if (entry.path().extension() != ".mrp" || !entry.is_regular_file()) continue;
            std::ifstream file(entry.path(), std::ios::binary);
            Lines lines;
            std::string line;
            while (std::getline(file, line))
                lines.push_back(line.substr(0, 2000));
            if (!lines.empty()) mProjects.push_back(lines);
        }
    std::sort(mProjects.begin(), mProjects.end()); // whatever order the folder has
}

void ProjectInputs_cls::AddKeys(std::mt19937& random, Lines* pLines) {
    static const struct {
        const char* mpMarker;
        const char* mpName;
        std::vector<const char*> mCurves;
    } kGroups[] = {{"---TimeRemap", "Time Remap", {"Time"}},
                   {"---CameraPath", "Camera Translate", {"x", "y", "z"}},
                   {"---CameraPath", "Camera Rotation", {"x", "y", "z"}},
                   {"---AnchorPath", "Anchor Translate", {"x", "y", "z"}},
                   {"---Nobody", "Nobody", {"x"}}};
    const auto& group = kGroups[random() % 5];
    pLines->push_back(group.mpMarker);
    if (OneIn(random, 2)) pLines->push_back(std::string("CameraVAngle=") + Pick(random, kNumbers));
    if (OneIn(random, 4)) pLines->push_back(std::string("CameraGeometry=") + Pick(random, kNumbers));
    pLines->push_back(std::string("-ParamGroup=") + group.mpName);
    if (!OneIn(random, 8))
        pLines->push_back("dimension=" + (OneIn(random, 4) ? std::string(Pick(random, kNumbers))
                                                           : std::to_string(group.mCurves.size())));
    if (!OneIn(random, 8)) pLines->push_back("Start");
    for (const char* curve : group.mCurves) {
        pLines->push_back(std::string("Parameter_") + curve);
        pLines->push_back(std::string("timeDepend=") + (OneIn(random, 2) ? "1" : "0"));
        pLines->push_back(std::string("periodic=") + (OneIn(random, 3) ? Pick(random, kNumbers) : "0"));
        const unsigned keys = OneIn(random, 3000) ? 10000 : random() % 8;
        pLines->push_back("itemnum " +
                          (OneIn(random, 6) ? std::string(Pick(random, kNumbers)) : std::to_string(keys)));
        for (unsigned k = 0; k < keys; ++k) {
            // In order, out of it, at equal places.
            const double place = OneIn(random, 4) ? double(random() % 5) / 4.0 : double(k) / keys;
            std::string line = OneIn(random, 10) ? Pick(random, kNumbers) : std::to_string(place);
            line += " " + std::to_string(OneIn(random, 20) ? unsigned(random()) : random() % 5);
            for (int n = 0; n < 3; ++n)
                line += std::string(" ") +
                        (OneIn(random, 10) ? Pick(random, kNumbers) : std::to_string(int(random()) / 1000.0));
            pLines->push_back(line + " ");
        }
    }
}

/// The block of one of the lists, of some filters; types of all kinds, and some of none.
void ProjectInputs_cls::AddFilters(std::mt19937& random, Lines* pLines) {
    static const char* const kKeys[] = {
        "FilterValid=",   "FilterName=",     "OperatorType=",    "RegionType=",    "BorderFactor=",
        "FilteringType=", "IndexType=",      "FilteringString=", "CopyArrayMin0=", "CopyArrayMax0=",
        "CopyArrayMin1=", "CopyArrayMax1=",  "CopyArrayMin2=",   "CopyArrayMax2=", "FogType=",
        "FogStart=",      "FogEnd=",         "GridType=",        "GridMin=",       "GridMax=",
        "GridLineNum=",   "GridCoord=",      "ObjectType=",      "ImportPath=",    "ArrayVector0=",
        "StickType=",     "StickRadius=",    "StickWidth=",      "CalcType=",      "StickPath=",
        "CritType=",      "CritA=",          "SpecType=",        "ShaderType=",    "Shininess=",
        "TransmitType=",  "NormalPattern0=", "Unknown="};
    static const char* const kTexts[] = {"Boolean00", "%02d", "%s%n", "0-99999999999",
                                         "5-2",       "-5",   "abc",  ",,,,"};
    static const char* const kNames[] = {"Translate", "Rotation", "Scale", "Anchor", "Parameter"};
    const std::string list = std::to_string(random() % 3);
    pLines->push_back("---FilterCtrl" + list + "Begin");
    for (auto filters = random() % (OneIn(random, 200) ? 1000 : 4); filters > 0; --filters) {
        pLines->push_back("-FilterBegin");
        pLines->push_back("FilterType=" + (OneIn(random, 8) ? std::string(Pick(random, kNumbers))
                                                            : std::to_string(random() % 8)));
        for (auto keys = random() % 6; keys > 0; --keys)
            pLines->push_back(std::string(Pick(random, kKeys)) +
                              (OneIn(random, 2) ? Pick(random, kNumbers) : Pick(random, kTexts)));
        for (auto groups = random() % 4; groups > 0; --groups) {
            pLines->push_back(std::string("-ParamGroup=Filter ") + Pick(random, kNames));
            pLines->push_back("dimension=" + (OneIn(random, 6) ? std::string(Pick(random, kNumbers)) : "3"));
            pLines->push_back("Start");
            for (const char* curve : {"x", "y", "z"}) {
                pLines->push_back(std::string("Parameter_") + curve);
                pLines->push_back(std::string("timeDepend=") + (OneIn(random, 2) ? "1" : "0"));
                pLines->push_back("itemnum " +
                                  (OneIn(random, 6) ? std::string(Pick(random, kNumbers)) : "1"));
                pLines->push_back("0 1 " + std::string(Pick(random, kNumbers)) + " 0 0 ");
            }
        }
        if (!OneIn(random, 10)) pLines->push_back("-FilterEnd");
    }
    if (!OneIn(random, 10)) pLines->push_back("---FilterCtrl" + list + "End");
}

void ProjectInputs_cls::SpoilLine(std::mt19937& random, std::string* pLine) {
    const size_t equals = pLine->find('=');
    const size_t at = pLine->empty() ? 0 : random() % pLine->size();
    switch (random() % 10) {
    case 0:
    case 1:
    case 2:
        if (equals != std::string::npos) *pLine = pLine->substr(0, equals + 1) + Pick(random, kNumbers);
        break;
    case 3: // more values than there is room for
        for (auto k = random() % 40; k > 0; --k)
            *pLine += std::string(" ") + Pick(random, kNumbers);
        break;
    case 4:
        pLine->resize(at);
        break;
    case 5:
        if (!pLine->empty()) (*pLine)[at] = char(random());
        break;
    case 6:
        *pLine += "\r";
        break;
    case 7: // latin-1, UTF-16 marks, half of a letter, a zero
        pLine->insert(at, std::string("\xE9\xFF\xFE\xC3\0", 5).substr(random() % 4));
        break;
    case 8:
        pLine->insert(0, " ");
        break;
    default:
        pLine->append(OneIn(random, 3000) ? 1100000 : random() % 300, 'x');
    }
}

std::string ProjectInputs_cls::Make(std::mt19937& random) const {
    Lines lines;
    for (auto stretch = 1 + random() % 4; stretch > 0; --stretch) {
        const Lines& project = mProjects[random() % mProjects.size()];
        const size_t first = random() % project.size();
        const size_t last = std::min(project.size(), first + 1 + random() % 12);
        lines.insert(lines.end(), project.begin() + std::ptrdiff_t(first),
                     project.begin() + std::ptrdiff_t(last));
        if (OneIn(random, 3)) AddKeys(random, &lines);
        if (OneIn(random, 3)) AddFilters(random, &lines);
    }
    for (std::string& line : lines)
        if (OneIn(random, 4)) SpoilLine(random, &line);
    if (OneIn(random, 4)) { // lost, doubled
        lines.erase(lines.begin() + std::ptrdiff_t(random() % lines.size()));
        if (!lines.empty()) lines.push_back(lines[random() % lines.size()]);
    }
    std::string text;
    for (const std::string& line : lines)
        text += line + "\n";
    if (OneIn(random, 6)) text.resize(random() % (text.size() + 1));
    return text;
}
