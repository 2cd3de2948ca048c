#pragma once

#include <QAbstractButton>

class QVariantAnimation;

namespace orvanlite {

/// A row with a text, a small text under it, and a switch at its end. Both texts wrap where the room is short. It takes
/// a click and the space bar anywhere.
class SwitchRow final : public QAbstractButton {
    Q_OBJECT

public:
    SwitchRow(const QString& text, const QString& smallText, bool reducesMotion, QWidget* parent);

    /// Without telling anybody; slides while it is seen.
    void setOn(bool isOn);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    /// On purpose nothing: the switch shows what is the case, after the click has been acted upon.
    void nextCheckState() override {}

private:
    [[nodiscard]] QFont smallFont() const;
    /// The heights of the two texts, wrapped to the width.
    [[nodiscard]] QSize textHeights(int width) const;

    QString m_smallText;
    bool m_reducesMotion;
    bool m_showsFocus = false; ///< from the first use of the keyboard on, until a click
    double m_position = 0;     ///< of the knob
    QVariantAnimation* m_slide;
};

} // namespace orvanlite
