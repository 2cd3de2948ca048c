#pragma once

#include "shell/toolkit/Control.h"

namespace orvanlite {

/// A button of an icon, a text or both. A background shows under the pointer; its label shrinks while it is pressed.
class PressButton final : public Control {
    Q_OBJECT

public:
    enum class Ground {
        none,     ///< bare text; a light background under the pointer only
        compact,  ///< like none, with little room around: for several in a row
        accent,   ///< on the accent colour at opacity 0.1
        bordered, ///< a framed background in the tint, if one is set
    };

    /// `iconKey` may be empty.
    PressButton(const QString& text, const QString& iconKey, Ground ground, QWidget* parent);

    /// The colour of text and icon, from the palette: primary, unless set here.
    void setTextColour(QColor (*colour)(const QPalette&));
    /// The colour of a bordered button, from the palette, e.g. &AppTheme::green.
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

/// A button of an icon alone in the secondary colour, with its meaning as tooltip and name.
[[nodiscard]] PressButton* makeIconButton(const QString& iconKey, const QString& meaning,
                                          const QString& objectName, QWidget* parent,
                                          PressButton::Ground ground = PressButton::Ground::none);

} // namespace orvanlite
