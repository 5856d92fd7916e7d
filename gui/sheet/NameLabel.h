#pragma once

#include <QString>
#include <QWidget>

namespace tavrin::sheet {

/// A text in one line that ends with dots where there is no room for it.
class NameLabel final : public QWidget {
public:
    explicit NameLabel(QString text, QWidget* parent = nullptr);

    void setText(const QString& text);
    const QString& getText() const { return text_; }
    void setColor(const QColor& color);
    void setBold(bool isBold);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString text_;
    QColor color_;
};

}  // namespace tavrin::sheet
