#pragma once

#include <QAbstractButton>

class QVariantAnimation;

namespace orvanlite {

/// A button of an icon, a text or both. Its label shrinks to 0.96 of its size while it is pressed, and a ground
/// shows under the pointer; without motion where the user has asked for less.
class PressButton final : public QAbstractButton {
    Q_OBJECT

public:
    enum class Ground {
        none,     ///< bare text; a light ground under the pointer only
        compact,  ///< like none, with little room around: for several in a row
        accent,   ///< on the accent colour at opacity 0.1
        bordered, ///< a framed ground in the tint, if one is set
    };

    /// `iconKey` may be empty.
    PressButton(const QString& text, const QString& iconKey, Ground ground, QWidget* parent);

    /// The colour of text and icon, asked anew for light and dark: primary, unless set here.
    void setTextColour(QColor (*colour)(const QPalette&));
    /// The colour of a bordered button, asked anew for light and dark, e.g. &AppTheme::green.
    void setTint(QColor (*tint)(const QPalette&));
    void setReducesMotion(bool reduces) { m_reducesMotion = reduces; }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void animateTo(double scale);
    void paintGround(QPainter& painter) const;
    [[nodiscard]] QColor labelColour() const;
    [[nodiscard]] int paddingX() const;
    [[nodiscard]] int iconExtent() const;

    QString m_iconKey;
    Ground m_ground;
    QColor (*m_textColour)(const QPalette&) = nullptr;
    QColor (*m_tint)(const QPalette&) = nullptr;
    bool m_reducesMotion = false;
    bool m_showsFocus = true; ///< not after a click
    double m_scale = 1;
    QVariantAnimation* m_animation;
};

} // namespace orvanlite
