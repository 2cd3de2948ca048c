#pragma once

#include <QLabel>

#include <functional>

namespace orvanlite {

/// A text or one of our icons in a colour that is asked anew whenever light and dark change.
class TintedLabel : public QLabel {
public:
    using Colour = std::function<QColor(const QPalette&)>;

    TintedLabel(const QString& text, Colour colour, QWidget* parent);
    /// Shows the icon in place of a text. It is decoration: readers do not see it.
    void setIcon(const QString& key, int size);

protected:
    void changeEvent(QEvent* event) override;

private:
    void apply();

    Colour m_colour;
    QString m_iconKey;
    int m_iconSize = 0;
};

} // namespace orvanlite
