#pragma once

#include "foundation/data/Attributes.h"
#include "foundation/data/UiAttributes.h"

#include <QMenu>

namespace tavrin::sheet {

/// Does an action of a menu; the text is what it is called there.
using RunListAction = Function<void(const QString& text, const UiListAction& action)>;

/// What the list's attributes offer to add to it and to replace it by. Menus without entries say
/// so. The menus delete themselves when they close. Throws an Exception when the presets cannot be
/// listed.
QMenu* makeAddMenu(const Attributes& attributes, const RunListAction& run, QWidget* parent);
QMenu* makePresetsMenu(const Attributes& attributes, const RunListAction& run, QWidget* parent);

}  // namespace tavrin::sheet
