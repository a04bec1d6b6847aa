// The blocks of placed objects in project files.
#include "PARAM/ParamText.h"
#include "SCENE/clsSceneObj.h"

namespace {

/// Does the next line begin another block? Looks ahead by what every stream in memory can take back.
bool IsMarkerNext(std::wistream& stream) {
    if (stream.peek() != L'-') return false;
    stream.get();
    const bool bMarker = stream.peek() == L'-';
    stream.unget();
    return bMarker;
}

/// The next line of this block; false at its end.
bool ReadOwnLine(std::wistream& stream, wxString* pLine) {
    return !IsMarkerNext(stream) && ReadParamLine(stream, pLine);
}

} // namespace

wxString SceneObj_cls::SerializeBlock(const wxString& marker, Groups groups) {
    wxString text = marker + "\n" + mCConfItemListBase.SerializeAll();
    for (ParamGroup_cls* group : groups)
        text += group->Serialize();
    return text;
}

bool SceneObj_cls::ReadBlock(std::wistream& stream, const wxString& line, const wxString& marker,
                             Groups groups) {
    if (line != marker) return false;
    wxString next;
    bool bMore = ReadOwnLine(stream, &next);
    while (bMore && next.Find("ParamGroup=") == wxNOT_FOUND) {
        mCConfItemListBase.ReadStrLineAll(next);
        bMore = ReadOwnLine(stream, &next);
    }
    size_t left = groups.size();
    for (ParamGroup_cls* group : groups) {
        --left;
        if (bMore && group->ReadStrLine(stream, next)) bMore = left > 0 && ReadOwnLine(stream, &next);
    }
    return true;
}
