#include "WIDGET/clsImgSizeTemplate.h"

#include <wx/intl.h>

namespace {

struct Size_st {
    int mW;
    int mH;
};

constexpr Size_st kSizes[] = {{1024, 768},  {1600, 1200}, {800, 600}, {640, 480}, {320, 240},
                              {1920, 1080}, {1366, 768},  {960, 540}, {480, 270}, {1024, 1024},
                              {2048, 2048}, {4096, 4096}, {512, 512}};
constexpr int kSizeNumber = int(sizeof(kSizes) / sizeof(kSizes[0]));

} // namespace

std::vector<wxString> ImgSizeTemplate_cls::GetLabels() {
    std::vector<wxString> labels = {_("Custom")};
    for (const Size_st& size : kSizes)
        labels.push_back(wxString::Format("%dx%d", size.mW, size.mH));
    return labels;
}

bool ImgSizeTemplate_cls::SetGeometry(int index, int* pW, int* pH) {
    if (index < 1 || index > kSizeNumber) return true;
    *pW = kSizes[index - 1].mW;
    *pH = kSizes[index - 1].mH;
    return false;
}

int ImgSizeTemplate_cls::SetIndexFromGeometry(int w, int h) {
    for (int i = 0; i < kSizeNumber; ++i)
        if (kSizes[i].mW == w && kSizes[i].mH == h) return i + 1;
    return 0;
}
