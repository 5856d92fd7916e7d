#pragma once

#include <QWidget>

class QHBoxLayout;
class QVBoxLayout;

namespace tavrin::sheet {

class CollapsibleHeader;

/// A title with a body below it that a click on the title, or Space, Left and Right, hides and
/// shows.
class Collapsible final : public QWidget {
    Q_OBJECT

public:
    enum class Level { Section, Item };

    Collapsible(const QString& title, Level level, QWidget* parent = nullptr);

    /// Of a part that does nothing now.
    void setDimmed(bool isDimmed);
    /// Owns it; null for a title alone. There must be none before.
    void setBody(QWidget* body);
    /// In the title, before its text and at its end; owns them.
    void addLeading(QWidget* control);
    void addTrailing(QWidget* control);
    /// What has the keyboard when the whole is chosen.
    QWidget* getHeader() const;

    bool isExpanded() const { return isExpanded_; }
    void setExpanded(bool isExpanded);

Q_SIGNALS:
    void collapsibleStateChanged(bool isExpanded);

private:
    CollapsibleHeader* header_;
    QVBoxLayout* layout_;
    QWidget* body_ = nullptr;
    bool isExpanded_ = true;
};

}  // namespace tavrin::sheet
