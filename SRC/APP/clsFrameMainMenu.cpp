// The menus, as one table.
#include "APP/clsFrameMain.h"

#include <wx/menu.h>

#include "APP/clsFileMenu.h"
#include "COMMON/EventIds.h"
#include "WIDGET/clsMyArtProvider.h"

namespace {

enum class Entry { Normal, Check, Radio, Separator, SubBegin, SubEnd };

struct MenuEntry_st {
    Entry mKind;
    const char* mLabel;    ///< goes through the catalogue
    const char* mMnemonic; ///< one letter, null for none
    const char* mShortcut; ///< accelerator text, null for none
    int mId;
    const char* mIcon; ///< file under ICONS, null for none
};

constexpr int kIconSize = 24;

constexpr MenuEntry_st kSeparator = {Entry::Separator, nullptr, nullptr, nullptr, 0, nullptr};
constexpr MenuEntry_st kSubEnd = {Entry::SubEnd, nullptr, nullptr, nullptr, 0, nullptr};

constexpr MenuEntry_st kFile[] = {
    {Entry::Normal, wxTRANSLATE("Open Project"), "O", "Ctrl-O", ID_OPEN_PROJECT, nullptr},
    {Entry::Normal, wxTRANSLATE("Save Project"), "S", "Ctrl-S", ID_SAVE_PROJECT, nullptr},
    {Entry::Normal, wxTRANSLATE("Save Project As"), "S", "Ctrl-Shift-S", ID_SAVE_PROJECT_AS, nullptr},
    kSeparator,
    {Entry::Normal, wxTRANSLATE("Load Particle Data"), "L", "Ctrl-Alt-O", ID_LOAD_DATA, nullptr},
    {Entry::Normal, wxTRANSLATE("Guess and Open Data"), "G", "Ctrl-Alt-G", ID_GUESS_DATA, "Guess"},
    {Entry::Normal, wxTRANSLATE("Save Snapshot"), "I", "F7", ID_SAVE_IMAGE_SNAP, nullptr},
    {Entry::Normal, wxTRANSLATE("Save Image Sequence"), "A", "F8", ID_SAVE_IMAGE_SEQ, "ImgSequence"},
    {Entry::SubBegin, wxTRANSLATE("Export"), "E", nullptr, ID_EXPORT_MENU, nullptr},
    {Entry::Normal, wxTRANSLATE("Export Particle Data"), "P", nullptr, ID_EXPORT_DATA, nullptr},
    {Entry::Normal, wxTRANSLATE("Export Path to Clipboard (.pov)"), "C", nullptr, ID_EXPORT_PATH_POV,
     nullptr},
    kSubEnd,
    {Entry::Check, wxTRANSLATE("Follow"), "F", nullptr, ID_FOLLOW, nullptr},
    {Entry::Check, wxTRANSLATE("Stay at the Newest"), "N", nullptr, ID_FOLLOW_NEWEST, nullptr},
    {Entry::Normal, wxTRANSLATE("Close Particle Data"), "W", "Ctrl-W", ID_CLOSE_DATA, nullptr},
    kSeparator,
    {Entry::SubBegin, wxTRANSLATE("Recent Projects"), "R", nullptr, ID_RECENT_PROJECTS_MENU, nullptr},
    kSubEnd,
    {Entry::SubBegin, wxTRANSLATE("Recent Data"), "D", nullptr, ID_RECENT_DATA_MENU, nullptr},
    kSubEnd,
    kSeparator,
    {Entry::Normal, wxTRANSLATE("Quit"), "Q", "Q", ID_QUIT, nullptr},
};

constexpr MenuEntry_st kEdit[] = {
    {Entry::Normal, wxTRANSLATE("Undo"), "U", "Ctrl-Z", ID_UNDO, nullptr},
    {Entry::Normal, wxTRANSLATE("Redo"), "R", "Ctrl-Y", ID_REDO, nullptr},
    {Entry::Normal, wxTRANSLATE("Copy View"), "C", "Ctrl-Shift-C", ID_COPY_VIEW, nullptr},
    {Entry::Normal, wxTRANSLATE("Move Frame"), "G", "Ctrl-G", ID_GO, nullptr},
    {Entry::Check, wxTRANSLATE("Time Remap"), "R", nullptr, ID_TIME_REMAP, nullptr},
    {Entry::SubBegin, wxTRANSLATE("Remove Cache"), "D", nullptr, ID_REMOVE_CACHE_MENU, nullptr},
    {Entry::Normal, wxTRANSLATE("Snapshot"), nullptr, "F5", ID_REMOVE_CACHE_SNAP, nullptr},
    {Entry::Normal, wxTRANSLATE("All Cache"), nullptr, "Ctrl-Alt-F5", ID_REMOVE_CACHE_ALL, nullptr},
    kSubEnd,
    kSeparator,
    {Entry::Normal, wxTRANSLATE("Scene Config"), "S", "Ctrl-K", ID_SCENE, "Scene"},
    {Entry::Normal, wxTRANSLATE("Preference"), "P", "Ctrl-Alt-P", ID_PREFERENCE, "Preference"},
};

constexpr MenuEntry_st kFilter[] = {
    {Entry::SubBegin, wxTRANSLATE("Bool"), "B", nullptr, ID_FILTER_BOOL_MENU, nullptr},
    {Entry::Normal, wxTRANSLATE("Boolean"), "B", nullptr, ID_FILTER_BOOLEAN, nullptr},
    {Entry::Normal, wxTRANSLATE("Filtering"), "T", nullptr, ID_FILTER_FILTERING, nullptr},
    kSubEnd,
    {Entry::SubBegin, wxTRANSLATE("Object"), "B", nullptr, ID_FILTER_OBJECT_MENU, nullptr},
    {Entry::Normal, wxTRANSLATE("DataBox"), "C", nullptr, ID_FILTER_DATABOX, nullptr},
    {Entry::Normal, wxTRANSLATE("Object"), "O", nullptr, ID_FILTER_OBJECT, nullptr},
    {Entry::Normal, wxTRANSLATE("Stick"), "S", nullptr, ID_FILTER_STICK, nullptr},
    {Entry::Normal, wxTRANSLATE("Grid"), "G", nullptr, ID_FILTER_GRID, nullptr},
    kSubEnd,
    {Entry::SubBegin, wxTRANSLATE("World"), "W", nullptr, ID_FILTER_WORLD_MENU, nullptr},
    {Entry::Normal, wxTRANSLATE("CopyBox"), "C", nullptr, ID_FILTER_COPYBOX, nullptr},
    {Entry::Normal, wxTRANSLATE("Fog"), "F", nullptr, ID_FILTER_FOG, nullptr},
    kSubEnd,
    kSeparator,
    {Entry::Normal, wxTRANSLATE("Up"), "U", nullptr, ID_FILTER_UP, nullptr},
    {Entry::Normal, wxTRANSLATE("Down"), "D", nullptr, ID_FILTER_DOWN, nullptr},
    {Entry::Normal, wxTRANSLATE("Delete"), "X", nullptr, ID_FILTER_DELETE, nullptr},
};

constexpr MenuEntry_st kPovRay[] = {
    {Entry::Normal, wxTRANSLATE("Pov-Ray Rendering Configure"), "R", "Ctrl-R", ID_POVRAY, "PovRay"},
    kSeparator,
    {Entry::Normal, wxTRANSLATE("Export Pov-Ray scene file (Snapshot)"), nullptr, nullptr, ID_POV_EXPORT_SNAP,
     nullptr},
    {Entry::Normal, wxTRANSLATE("Export Pov-Ray scene file (Animation)"), nullptr, nullptr,
     ID_POV_EXPORT_ANIM, nullptr},
    {Entry::Normal, wxTRANSLATE("Render scene using Pov-Ray (Snapshot)"), nullptr, nullptr,
     ID_POV_RENDER_SNAP, nullptr},
    {Entry::Normal, wxTRANSLATE("Render scene using Pov-Ray (Animation)"), nullptr, nullptr,
     ID_POV_RENDER_ANIM, nullptr},
};

constexpr MenuEntry_st kView[] = {
    {Entry::Radio, wxTRANSLATE("1 panel"), nullptr, "Alt-1", ID_VIEW_PANEL_TYPE_0, nullptr},
    {Entry::Radio, wxTRANSLATE("2 panels (vertical)"), nullptr, "Alt-2", ID_VIEW_PANEL_TYPE_1, "splitV"},
    {Entry::Radio, wxTRANSLATE("2 panels (horizontal)"), nullptr, "Alt-3", ID_VIEW_PANEL_TYPE_2, "splitH"},
    {Entry::Radio, wxTRANSLATE("4 panelsA"), nullptr, "Alt-4", ID_VIEW_PANEL_TYPE_3, "split4"},
    {Entry::Radio, wxTRANSLATE("4 panelsB"), nullptr, "Alt-5", ID_VIEW_PANEL_TYPE_4, "split4"},
    kSeparator,
    {Entry::Check, wxTRANSLATE("Extra Panel"), "0", "Alt-0", ID_VIEW_EXTRA, nullptr},
    {Entry::Check, wxTRANSLATE("Tool Bar"), "T", nullptr, ID_TOOL_BAR, nullptr},
    kSeparator,
    {Entry::Normal, wxTRANSLATE("Fit View"), "F", "Home", ID_FIT_VIEW, "FitView"},
};

constexpr MenuEntry_st kDialog[] = {
    {Entry::Normal, wxTRANSLATE("View and Camera Config"), "U", "Ctrl-U", ID_CAMERA_PATH, "Camera"},
    {Entry::Normal, wxTRANSLATE("Light Source Editor"), "L", "Ctrl-L", ID_LIGHT_SOURCE, "LightSource"},
    {Entry::Normal, wxTRANSLATE("Color Curve Editor"), "J", "Ctrl-J", ID_COLOR_CURVE, "Color"},
    {Entry::Normal, wxTRANSLATE("Texture Editor"), "J", "Ctrl-T", ID_TEX_PROPERTY, "Texture"},
    {Entry::Normal, wxTRANSLATE("Stereogram Config"), "S", "Ctrl-M", ID_STEREOGRAM, "StereoGram"},
    {Entry::Normal, wxTRANSLATE("Periodic Boundary"), "P", "Ctrl-B", ID_PERIODIC_BOUNDARY,
     "PeriodicBoundary"},
};

constexpr MenuEntry_st kHelp[] = {
    {Entry::Normal, wxTRANSLATE("About"), "A", nullptr, ID_ABOUT, nullptr},
    {Entry::Normal, wxTRANSLATE("About Open GL"), "G", nullptr, ID_ABOUT_GL, nullptr},
    {Entry::Normal, wxTRANSLATE("Save Report..."), "R", nullptr, ID_SAVE_REPORT, nullptr},
    kSeparator,
    {Entry::Normal, wxTRANSLATE("Unlock (for Debug)"), "U", nullptr, ID_UNLOCK, nullptr},
    {Entry::Normal, wxTRANSLATE("Special (for Debug)"), "S", nullptr, ID_SPECIAL, nullptr},
};

wxString LabelOf(const MenuEntry_st& entry) {
    wxString label = wxGetTranslation(entry.mLabel);
    if (entry.mMnemonic) label += wxString::Format("(&%s)", entry.mMnemonic);
    if (entry.mShortcut) label += wxString::Format("\t%s", entry.mShortcut);
    return label;
}

wxItemKind KindOf(Entry kind) {
    if (kind == Entry::Check) return wxITEM_CHECK;
    return kind == Entry::Radio ? wxITEM_RADIO : wxITEM_NORMAL;
}

void AddBitmapMenu(wxMenu* menu, const MenuEntry_st& entry) {
    auto* item = new wxMenuItem(menu, entry.mId, LabelOf(entry), wxEmptyString, KindOf(entry.mKind));
    if (entry.mIcon && entry.mKind == Entry::Normal)
        item->SetBitmap(MyArtProvider::GetIcon(entry.mIcon, kIconSize)); // none where the file is missing
    menu->Append(item);
}

template <size_t N>
wxMenu* MakeMenu(const MenuEntry_st (&entries)[N]) {
    auto* menu = new wxMenu;
    wxMenu* target = menu;
    for (const MenuEntry_st& entry : entries) {
        if (entry.mKind == Entry::Separator) {
            target->AppendSeparator();
        } else if (entry.mKind == Entry::SubBegin) {
            target = new wxMenu;
            menu->Append(entry.mId, LabelOf(entry), target);
        } else if (entry.mKind == Entry::SubEnd) {
            target = menu;
        } else {
            AddBitmapMenu(target, entry);
        }
    }
    return menu;
}

wxString Title(const wxString& name, const char* mnemonic) {
    return wxString::Format("%s(&%s)", name, mnemonic);
}

} // namespace

void FrameMain_cls::CreateMenus() {
    auto* bar = new wxMenuBar;
    bar->Append(MakeMenu(kFile), Title(_("File"), "F"));
    bar->Append(MakeMenu(kEdit), Title(_("Edit"), "E"));
    bar->Append(MakeMenu(kFilter), Title(_("Filter"), "L"));
    bar->Append(MakeMenu(kPovRay), Title(_("Pov-Ray"), "P"));
    bar->Append(MakeMenu(kView), Title(_("View"), "V"));
    bar->Append(MakeMenu(kDialog), Title(_("Dialog"), "D"));
    bar->Append(MakeMenu(kHelp), Title(_("Help"), "H"));
    SetMenuBar(bar);
    mpCFileMenu->FillRecentMenus();
}
