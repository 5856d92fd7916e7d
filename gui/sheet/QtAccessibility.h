#pragma once

namespace tavrin::sheet {

/// Shows embedded widgets to assistive technology: Qt itself leaves out windows inside windows of
/// others. Once, after QApplication has been created; main thread.
void installQtAccessibility();

}  // namespace tavrin::sheet
