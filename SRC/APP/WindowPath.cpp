#include "APP/WindowPath.h"

#include <cxxabi.h>

#include <cstdlib>
#include <memory>
#include <typeinfo>
#include <vector>

#include <wx/toplevel.h>
#include <wx/window.h>

#include "COMMON/ActLine.h"

namespace {

constexpr long kMostAlike = 100000; ///< windows of one class
constexpr size_t kMostParts = 60;

/// Of the class that an object is, without "_cls".
wxString ClassOf(const wxWindow* pWindow) {
    int status = 0;
    const std::unique_ptr<char, void (*)(void*)> name(
        abi::__cxa_demangle(typeid(*pWindow).name(), nullptr, nullptr, &status), std::free);
    const wxString text = name ? wxString::FromUTF8(name.get()) : wxString("Window");
    wxString start;
    return text.EndsWith("_cls", &start) ? start : text.AfterLast(':');
}

/// Panels that only hold others say nothing to a reader.
bool IsPlumbing(const wxString& name) { return name.StartsWith("wx"); }

/// Counts the windows of a class below `root` until `stop`, or until as many as `number`.
struct Search_st {
    wxString mClass;
    const wxWindow* mpStop;
    long mNumber;
    long mCount = 0;

    wxWindow* Look(const wxWindow* pRoot) {
        for (wxWindow* child : pRoot->GetChildren()) {
            if (child->IsTopLevel()) continue;
            if (ClassOf(child) == mClass && (++mCount == mNumber || child == mpStop)) return child;
            if (wxWindow* found = Look(child)) return found;
        }
        return nullptr;
    }
    wxWindow* LookAtTop() {
        for (wxWindow* window : wxTopLevelWindows)
            if (!window->IsBeingDeleted() && ClassOf(window) == mClass &&
                (++mCount == mNumber || window == mpStop))
                return window;
        return nullptr;
    }
};

wxString Part(const Search_st& search) {
    return search.mCount > 1 ? wxString::Format("%s.%ld", search.mClass, search.mCount) : search.mClass;
}

} // namespace

wxString GetWindowPath(const wxWindow* pWindow) {
    const wxWindow* top = wxGetTopLevelParent(const_cast<wxWindow*>(pWindow));
    if (!top || ClassOf(top).StartsWith("wx")) return wxString();
    std::vector<const wxWindow*> chain; // from the window up
    for (const wxWindow* window = pWindow; window != top; window = window->GetParent())
        if (window == pWindow || !IsPlumbing(ClassOf(window))) chain.push_back(window);
    Search_st first{ClassOf(top), top, -1};
    first.LookAtTop();
    wxString path = Part(first);
    const wxWindow* above = top;
    for (auto at = chain.rbegin(); at != chain.rend(); above = *at++) {
        Search_st search{ClassOf(*at), *at, -1};
        search.Look(above);
        path += "/" + Part(search);
    }
    return path;
}

wxWindow* FindWindowByPath(const wxString& path) {
    wxWindow* window = nullptr;
    wxString rest = path;
    for (size_t part = 0; !rest.empty() && part < kMostParts; ++part) {
        const wxString word = rest.BeforeFirst('/');
        rest = rest.AfterFirst('/');
        long number = 1;
        if (word.Contains(".") && !ReadActCount(word.AfterFirst('.'), 1, kMostAlike, &number)) return nullptr;
        Search_st search{word.BeforeFirst('.'), nullptr, number};
        window = window ? search.Look(window) : search.LookAtTop();
        if (!window) return nullptr;
    }
    return rest.empty() ? window : nullptr;
}
