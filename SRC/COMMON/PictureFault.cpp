#include "COMMON/PictureFault.h"

#include <utility>

namespace {

wxString sFault;

} // namespace

void TellPictureFault(const wxString& text) {
    if (sFault.empty()) sFault = text;
}

bool HasPictureFault() { return !sFault.empty(); }

wxString TakePictureFault() { return std::exchange(sFault, wxString()); }
