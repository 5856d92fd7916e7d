#include "gui/widgets/Modality.h"

#ifdef __WXGTK__
#include <gtk/gtk.h>
#endif

namespace tavrin::widgets {

void standOutsideModality([[maybe_unused]] wxNonOwnedWindow& window) {
#ifdef __WXGTK__
    // GTK's dialogs are modal within their window group only; other systems do not have this.
    GtkWindowGroup* const group = gtk_window_group_new();
    gtk_window_group_add_window(group, GTK_WINDOW(window.GetHandle()));
    g_object_unref(group);
#endif
}

}  // namespace tavrin::widgets
