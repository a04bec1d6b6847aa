// The block of a list of filters in projects.
#include <algorithm>

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
    GoBackTo(stream, before);
    return true;
}

/// The first of them; in a project that is damaged all over nobody reads the rest.
wxString Join(const std::vector<wxString>& parts) {
    constexpr size_t kMost = 5;
    wxString text;
    for (size_t i = 0; i < std::min(parts.size(), kMost); ++i)
        text += (i > 0 ? ", " : "") + parts[i];
    return parts.size() > kMost ? text + ", ..." : text;
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
    std::vector<wxString> unread;
    while (true) {
        const auto before = stream.tellg();
        if (!ReadParamLine(stream, &next) || next == Marker(mIndex, "End")) break;
        if (IsForeign(stream, next, before)) break;
        if (next == "-FilterBegin") ReadStrLineFilter(stream, &unread);
    }
    if (!unread.empty())
        mLists.Tell(wxString::Format(_("Parts of filters could not be read: %s"), Join(unread)));
    return true;
}

void FilterCtrl_cls::ReadStrLineFilter(std::wistream& stream, std::vector<wxString>* pUnread) {
    wxString line;
    const auto before = stream.tellg();
    if (!ReadParamLine(stream, &line) || IsForeign(stream, line, before)) return;
    ConfItemINT_cls type("FilterType=", "-1");
    if (!type.ReadStrLine(line) || !IsFilterType(type.mValue)) {
        pUnread->push_back(wxString::Format(_("a filter of an unknown kind (%s)"), line));
        return; // its lines are passed over one by one
    }
    auto filter = GetFilterKind(type.mValue).mpMake();
    const FilterData_cls::Unread_st unread = filter->mpCData->ReadBlock(stream);
    FilterData_cls& data = *filter->mpCData;
    InsertFilter(std::move(filter), GetCount());
    if (unread.mbEnd) pUnread->push_back(wxString::Format(_("the end of %s"), data.mCName.mStrValue));
    if (unread.mLines > 0)
        pUnread->push_back(wxString::Format(wxPLURAL("%d line of %s", "%d lines of %s", unread.mLines),
                                            unread.mLines, data.mCName.mStrValue));
}
