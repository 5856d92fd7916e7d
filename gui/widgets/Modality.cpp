#include "gui/widgets/Modality.h"

#ifdef __WXGTK__
#include <gtk/gtk.h>
#endif

#include <memory>
#include <utility>

namespace tavrin::widgets {

#ifdef __WXGTK__

namespace {

struct OutsideClick {
    wxNonOwnedWindow& dialog;
    Function<void()> function;
};

gboolean onButtonPress(GtkWidget*, GdkEventButton* event, gpointer data) {
    const auto& click = *static_cast<OutsideClick*>(data);
    const wxPoint position(static_cast<int>(event->x_root), static_cast<int>(event->y_root));
    if (!click.dialog.GetScreenRect().Contains(position)) {
        // A copy, as the function may end the registration.
        const Function<void()> function = click.function;
        function();
    }
    return FALSE;
}

}  // namespace

void standOutsideModality(wxNonOwnedWindow& window) {
    // GTK's dialogs are modal within their window group only.
    GtkWindowGroup* const group = gtk_window_group_new();
    gtk_window_group_add_window(group, GTK_WINDOW(window.GetHandle()));
    g_object_unref(group);
}

CallbackLifetime callOnClickOutside(wxNonOwnedWindow& dialog, Function<void()> function) {
    // GTK gives a modal dialog the clicks on the windows that it blocks.
    auto click = std::make_shared<OutsideClick>(OutsideClick{dialog, std::move(function)});
    GtkWidget* const widget = dialog.GetHandle();
    const gulong handler =
        g_signal_connect(widget, "button-press-event", G_CALLBACK(onButtonPress), click.get());
    return CallbackLifetime(
        [widget, handler, click] { g_signal_handler_disconnect(widget, handler); });
}

#else

// Elsewhere modality blocks only frames and dialogs, and these get no clicks that could be told.
void standOutsideModality(wxNonOwnedWindow&) {}
CallbackLifetime callOnClickOutside(wxNonOwnedWindow&, Function<void()>) {
    return {};
}

#endif

}  // namespace tavrin::widgets
