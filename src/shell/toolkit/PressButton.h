#pragma once

#include "shell/toolkit/Control.h"

namespace orvanlite {

/// A button with an icon, a text or both. A background appears under the pointer; the label shrinks while
/// pressed.
class PressButton final : public Control {
    Q_OBJECT

public:
    enum class Ground {
        none,     ///< no background; a light one under the pointer
        compact,  ///< like none, with less padding: for several in a row
        accent,   ///< accent colour at opacity 0.1
        bordered, ///< bordered background in the tint, if one is set
    };

    /// `iconKey` may be empty.
    PressButton(const QString& text, const QString& iconKey, Ground ground, QWidget* parent);

    /// Colour of text and icon, derived from the palette; primary by default.
    void setTextColour(QColor (*colour)(const QPalette&));
    /// Colour of a bordered button, derived from the palette, e.g. &AppTheme::green.
    void setTint(QColor (*tint)(const QPalette&));

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paint(QPainter& painter) const override;
    [[nodiscard]] FocusRing focusRing() const override;

private:
    void paintGround(QPainter& painter) const;
    [[nodiscard]] QColor labelColour() const;
    [[nodiscard]] int paddingX() const;
    [[nodiscard]] int iconExtent() const;

    QString m_iconKey;
    Ground m_ground;
    QColor (*m_textColour)(const QPalette&) = nullptr;
    QColor (*m_tint)(const QPalette&) = nullptr;
};

/// An icon-only button in the secondary colour; `meaning` is its tooltip and accessible name.
[[nodiscard]] PressButton* makeIconButton(const QString& iconKey, const QString& meaning,
                                          const QString& objectName, QWidget* parent,
                                          PressButton::Ground ground = PressButton::Ground::none);

} // namespace orvanlite
