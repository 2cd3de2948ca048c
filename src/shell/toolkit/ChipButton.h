#pragma once

#include "shell/toolkit/Control.h"

namespace orvanlite {

/// Whether the format or variant of a chip takes part in an action, possibly for some of the plugins only.
enum class ChipState { active, partlyActive, off };

/// A dot and a label that toggle a format or one of its variants. Clicks do not change the state; the owner
/// sets it once the change has been carried out.
class ChipButton final : public Control {
    Q_OBJECT

public:
    enum class Kind {
        format,  ///< three states
        variant, ///< smaller, two states
    };

    ChipButton(Kind kind, QWidget* parent);

    /// The animation takes 0.25 s and is skipped while the chip is hidden.
    void setState(ChipState state, bool isAnimated = false);
    [[nodiscard]] ChipState state() const { return m_state; }

    [[nodiscard]] QSize sizeHint() const override { return sizeFor(m_kind, label(), font()); }
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }
    /// Size of a chip with this text, for layout before it exists. `chipFont` is the result of fontFor().
    [[nodiscard]] static QSize sizeFor(Kind kind, const QString& text, const QFont& chipFont);
    /// Font of a chip whose parent has the given font.
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
    Glide* m_progress; ///< from the previous state to the current one
};

} // namespace orvanlite
