#include "gui/sheet/QtAccessibility.h"

#include <QAccessible>
#include <QAccessibleObject>
#include <QApplication>
#include <QWidget>
#include <QWindow>
#include <vector>

namespace tavrin::sheet {
namespace {

/// The application with its embedded windows after those that Qt counts.
class EmbeddedAccessibility final : public QAccessibleApplication {
public:
    int childCount() const override {
        return QAccessibleApplication::childCount() + static_cast<int>(listEmbedded().size());
    }

    QAccessibleInterface* child(int index) const override {
        const int own = QAccessibleApplication::childCount();
        if (index < own) {
            return QAccessibleApplication::child(index);
        }
        const auto embedded = listEmbedded();
        const auto rest = static_cast<std::size_t>(index - own);
        return rest < embedded.size() ? QAccessible::queryAccessibleInterface(embedded[rest])
                                      : nullptr;
    }

    int indexOfChild(const QAccessibleInterface* child) const override {
        const auto embedded = listEmbedded();
        for (std::size_t i = 0; i < embedded.size(); ++i) {
            if (child->object() == embedded[i]) {
                return QAccessibleApplication::childCount() + static_cast<int>(i);
            }
        }
        return QAccessibleApplication::indexOfChild(child);
    }

private:
    static std::vector<QWidget*> listEmbedded() {
        std::vector<QWidget*> embedded;
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            if (widget->windowHandle() != nullptr && widget->windowHandle()->parent() != nullptr) {
                embedded.push_back(widget);
            }
        }
        return embedded;
    }
};

QAccessibleInterface* makeInterface(const QString&, QObject* object) {
    return object == qApp ? new EmbeddedAccessibility : nullptr;
}

}  // namespace

void installQtAccessibility() {
    QAccessible::installFactory(makeInterface);
}

}  // namespace tavrin::sheet
