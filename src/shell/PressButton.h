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
        none,   ///< bare text; a light ground under the pointer only
        accent, ///< on the accent colour at opacity 0.1
    };

    /// `iconKey` may be empty.
    PressButton(const QString& text, const QString& iconKey, Ground ground, QWidget* parent);

    /// The colour of text and icon: primary, unless set here.
    void setTextColour(const QColor& colour);
    void setReducesMotion(bool reduces) { m_reducesMotion = reduces; }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    void animateTo(double scale);

    QString m_iconKey;
    Ground m_ground;
    QColor m_textColour;
    bool m_reducesMotion = false;
    double m_scale = 1;
    QVariantAnimation* m_animation;
};

} // namespace orvanlite
