#pragma once

#include "shell/toolkit/Control.h"

namespace orvanlite {

/// A row with a text, a smaller text below it and a switch at the end. Both texts wrap. Clicking anywhere on
/// the row or pressing Space emits clicked(); the owner sets the state.
class SwitchRow final : public Control {
    Q_OBJECT

public:
    SwitchRow(const QString& text, const QString& smallText, QWidget* parent);

    /// Does not emit clicked(). Animated while visible.
    void setOn(bool isOn);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;

protected:
    void paint(QPainter& painter) const override;
    [[nodiscard]] FocusRing focusRing() const override;

private:
    [[nodiscard]] QFont smallFont() const;
    /// The heights of the two texts, wrapped to the width.
    [[nodiscard]] QSize textHeights(int width) const;

    QString m_smallText;
    Glide* m_position; ///< of the knob
};

} // namespace orvanlite
