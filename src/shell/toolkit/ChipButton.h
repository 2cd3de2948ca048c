#pragma once

#include "shell/toolkit/Control.h"

namespace orvanlite {

/// How much of what a chip stands for takes part in an action.
enum class ChipState { active, partlyActive, off };

/// A dot and a text that switch a format or one of its variants. It never switches itself: its owner sets the state
/// after the change of what it stands for.
class ChipButton final : public Control {
    Q_OBJECT

public:
    enum class Kind {
        format,  ///< of three states
        variant, ///< smaller, of two
    };

    ChipButton(Kind kind, QWidget* parent);

    /// Animated, it takes 0.25 s; only where it is seen and the state differs.
    void setState(ChipState state, bool isAnimated = false);
    [[nodiscard]] ChipState state() const { return m_state; }

    [[nodiscard]] QSize sizeHint() const override { return sizeFor(m_kind, label(), font()); }
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }
    /// The size of a chip of this text in the font of its surroundings, known before it exists.
    [[nodiscard]] static QSize sizeFor(Kind kind, const QString& text, const QFont& chipFont);
    /// The font of a chip in surroundings of this font.
    [[nodiscard]] static QFont fontFor(Kind kind, QFont surroundings);

protected:
    void paint(QPainter& painter) const override;
    [[nodiscard]] FocusRing focusRing() const override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    struct Colours {
        QColor dot;
        QColor text;
    };
    [[nodiscard]] Colours coloursOf(ChipState state) const;

    Kind m_kind;
    ChipState m_state = ChipState::off;
    ChipState m_earlierState = ChipState::off;
    Glide* m_progress; ///< from the earlier state to the present one
};

} // namespace orvanlite
