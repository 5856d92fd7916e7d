#pragma once

// GTK and X11, without the macros of X11 that are names in Qt.

#include <X11/Xlib.h>
#include <gdk/gdkprivate.h>
#include <gtk/gtk.h>
#include <gtk/gtkx.h>
#include <wx/nativewin.h>

#undef None
#undef Bool
#undef Status
#undef KeyPress
#undef KeyRelease
#undef FocusIn
#undef FocusOut
#undef FontChange
#undef Always
#undef CursorShape
#undef Expose
#undef Unsorted
