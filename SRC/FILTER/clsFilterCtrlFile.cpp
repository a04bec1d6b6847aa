// The block of a list of filters in projects.
#include <wx/intl.h>

#include "FILTER/clsFilterCtrl.h"
#include "FILTER/clsFilterData.h"
#include "FILTER/clsFilterLists.h"
#include "PARAM/ParamText.h"

namespace {

wxString Marker(int index, const char* pWhich) {
    return wxString::Format("---FilterCtrl%d%s", index, pWhich);
}

/// Takes the next line back into the stream when it begins another block.
bool IsForeign(std::wistream& stream, const wxString& line, std::wistream::pos_type before) {
    if (!line.StartsWith("---")) return false;
    stream.clear();
    stream.seekg(before);
    return true;
}

} // namespace

wxString FilterCtrl_cls::Serialize() {
    wxString text = Marker(mIndex, "Begin") + "\n";
    for (const auto& filter : mlpCFilter)
        text += filter->Serialize();
    return text + Marker(mIndex, "End") + "\n";
}

bool FilterCtrl_cls::ReadStrLine(std::wistream& stream, const wxString& line) {
    if (line != Marker(mIndex, "Begin")) return false;
    wxString next;
    while (true) {
        const auto before = stream.tellg();
        if (!ReadParamLine(stream, &next) || next == Marker(mIndex, "End")) break;
        if (IsForeign(stream, next, before)) break;
        if (next == "-FilterBegin") ReadStrLineFilter(stream);
    }
    return true;
}

void FilterCtrl_cls::ReadStrLineFilter(std::wistream& stream) {
    wxString line;
    const auto before = stream.tellg();
    if (!ReadParamLine(stream, &line) || IsForeign(stream, line, before)) return;
    ConfItemINT_cls type("FilterType=", "-1");
    if (!type.ReadStrLine(line) || !IsFilterType(type.mValue)) {
        mLists.Tell(wxString::Format(_("A filter of an unknown kind was left out: %s"), line));
        return; // its lines are passed over one by one
    }
    auto filter = GetFilterKind(type.mValue).mpMake();
    filter->mpCData->ReadBlock(stream);
    InsertFilter(std::move(filter), GetCount());
}
