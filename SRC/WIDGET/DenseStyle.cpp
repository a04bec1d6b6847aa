#include "WIDGET/DenseStyle.h"

#include <dlfcn.h>

#include <wx/window.h>

namespace {

// Paddings only. Selectors are those of the toolkit's own themes.
const char* const kStyle =
    "entry, spinbutton entry { min-height: 22px; padding: 0px 4px; }"
    "button { min-height: 22px; min-width: 16px; padding: 0px 6px; }"
    "button#narrow { padding: 0px 2px; }"
    "combobox button { min-height: 18px; padding: 0px 4px; }"
    "checkbutton, radiobutton { min-height: 22px; padding: 0px; }"
    "notebook header tab { min-height: 22px; padding: 1px 8px; }"
    "treeview header button, treeview.view header button { min-height: 18px; padding: 0px 4px; }";

// Buttons that fit their text exactly get no padding at all from the toolkit's own rule for them; this one
// goes before it.
const char* const kRoom = "button.text-button { padding: 0px 5px; }";

template <class F>
F Symbol(const char* name) {
    return reinterpret_cast<F>(dlsym(RTLD_DEFAULT, name));
}

} // namespace

void MakeNarrow(wxWindow* pButton) {
    auto* name = Symbol<void (*)(void*, const char*)>("gtk_widget_set_name");
    if (!name) return;
    name(pButton->GetHandle(), "narrow");
    pButton->InvalidateBestSize();
    pButton->SetInitialSize(); // it has kept the size of the wider one
}

// The toolkit is already in the process; asking the loader for its functions spares a build dependency
// on its headers for five calls.
void InstallDenseStyle() {
    static bool sbDone = false;
    if (sbDone) return;
    sbDone = true;
    auto* make = Symbol<void* (*)()>("gtk_css_provider_new");
    auto* load = Symbol<int (*)(void*, const char*, long, void**)>("gtk_css_provider_load_from_data");
    auto* screen = Symbol<void* (*)()>("gdk_screen_get_default");
    auto* add = Symbol<void (*)(void*, void*, unsigned)>("gtk_style_context_add_provider_for_screen");
    auto* unref = Symbol<void (*)(void*)>("g_object_unref");
    if (!make || !load || !screen || !add || !unref) return;
    constexpr unsigned kApplication = 600; // priority of applications, below the user's own style
    void* display = screen();
    if (!display) return;
    unsigned priority = kApplication;
    for (const char* style : {kStyle, kRoom}) {
        void* provider = make();
        load(provider, style, -1, nullptr);
        add(display, provider, priority++);
        unref(provider);
    }
}
