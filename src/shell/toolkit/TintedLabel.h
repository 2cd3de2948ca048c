#pragma once

#include <QLabel>

#include <functional>

namespace orvanlite {

/// A text or icon whose colour is re-evaluated when the palette changes.
class TintedLabel : public QLabel {
public:
    using Colour = std::function<QColor(const QPalette&)>;

    TintedLabel(const QString& text, Colour colour, QWidget* parent);
    /// Shows the icon instead of text. Decorative: hidden from screen readers.
    void setIcon(const QString& key, int size);

protected:
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void apply();

    Colour m_colour;
    QString m_iconKey;
};

} // namespace orvanlite
