// The blocks of placed objects in project files.
#include "PARAM/ParamText.h"
#include "SCENE/clsSceneObj.h"

namespace {

/// Lines of one block. A line that begins another block goes back, so that its owner finds it.
class BlockReader_cls {
public:
    explicit BlockReader_cls(std::wistream& stream) : mStream(stream) {}

    /// False at the end of the block or the stream.
    bool Read() {
        mStart = mStream.tellg();
        if (!ReadParamLine(mStream, &mStrLine)) return false;
        if (!mStrLine.StartsWith("--")) return true;
        PutBack();
        return false;
    }
    void PutBack() {
        if (mStart == std::wistream::pos_type(-1)) return;
        mStream.clear();
        mStream.seekg(mStart);
    }

    wxString mStrLine;

private:
    std::wistream& mStream;
    std::wistream::pos_type mStart = -1;
};

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
    BlockReader_cls reader(stream);
    bool bMore = reader.Read();
    while (bMore && reader.mStrLine.Find("ParamGroup=") == wxNOT_FOUND) {
        mCConfItemListBase.ReadStrLineAll(reader.mStrLine);
        bMore = reader.Read();
    }
    for (ParamGroup_cls* const* group = groups.begin(); bMore && group != groups.end(); ++group) {
        if (!(*group)->ReadStrLine(stream, reader.mStrLine)) {
            reader.PutBack();
            break;
        }
        bMore = group + 1 != groups.end() && reader.Read();
    }
    return true;
}
