// The kinds of filters: one table for menus, lists and files.
#pragma once

#include <memory>

#include <wx/string.h>

class FilterBase_cls;

/// As "FilterType=" in projects.
enum FilterType {
    FILTER_BOOLEAN = 0,
    FILTER_DATABOX = 1,
    FILTER_OBJECT = 2,
    FILTER_GRID = 3,
    FILTER_FOG = 4,
    FILTER_FILTERING = 5,
    FILTER_COPY = 6,
    FILTER_STICK = 7,
};
constexpr int kFilterTypes = 8;

/// The lists, in the order in which they stand in projects.
enum FilterList { FILTER_LIST_BOOLEAN = 0, FILTER_LIST_OBJECT = 1, FILTER_LIST_WORLD = 2 };
constexpr int kFilterLists = 3;

struct FilterKind_st {
    const char* mWord; ///< begins the names, untranslated as files have them
    FilterList mList;  ///< where it may be added
    std::unique_ptr<FilterBase_cls> (*mpMake)();
};

bool IsFilterType(int type);
/// `type` is one of FilterType.
const FilterKind_st& GetFilterKind(int type);
/// The word in the user's language.
wxString GetFilterLabel(int type);
