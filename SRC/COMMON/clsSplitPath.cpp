#include "COMMON/clsSplitPath.h"

#include <wx/strconv.h>

SplitPath_cls::SplitPath_cls(const wxString& path) : mStrFull(path), mStrNoExt(path) {
    const size_t slash = path.rfind('/');
    const size_t dot = path.rfind('.');
    const size_t stem = slash == wxString::npos ? 0 : slash + 1;
    if (dot != wxString::npos && dot >= stem) {
        mStrNoExt = path.substr(0, dot);
        mStrExt = path.substr(dot);
    }
    mStrStem = mStrNoExt.substr(stem);
    if (slash != wxString::npos) mStrDir = path.substr(0, slash);
}

wxString SplitPath_cls::GetPathStr(int selector) const {
    switch (selector) {
    case 0:
        return mStrDir + "/" + mStrStem + mStrExt;
    case 3:
        return mStrDir;
    case 4:
        return mStrStem;
    case 7:
        return mStrNoExt;
    case 8:
        return mStrExt;
    case 12:
        return mStrStem + mStrExt;
    default:
        return mStrFull;
    }
}

std::string NarrowPath(const wxString& path) {
    const wxCharBuffer name = path.mb_str(*wxConvFileName);
    if (name.data() && (name.length() > 0 || path.empty())) return std::string(name.data(), name.length());
    const wxScopedCharBuffer utf8 = path.utf8_str();
    return std::string(utf8.data(), utf8.length());
}

void UseAnyFileName() {
    static wxConvBrokenFileNames sConv("UTF-8");
    wxConvFileName = &sConv;
}
