#pragma once

#include <QAbstractButton>

class QVariantAnimation;

namespace orvanlite {

/// What the buttons of the sidebar share: a row of an icon in a slot, a text that ends in an ellipsis where the room
/// is short (the whole of it is in the tooltip then), and a number at its end. It shrinks to 0.96 of its size while it
/// is pressed; without motion where the user has asked for less.
class SidebarButton : public QAbstractButton {
    Q_OBJECT

public:
    /// The text as it is seen; an ampersand in it makes no shortcut.
    void setLabel(const QString& label);
    [[nodiscard]] const QString& label() const { return m_label; }
    void setIconKey(const QString& key);
    [[nodiscard]] const QString& iconKey() const { return m_iconKey; }
    /// The number at the end, also for readers; empty for none.
    void setCount(const QString& count);
    [[nodiscard]] const QString& count() const { return m_count; }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    /// In logical pixels.
    struct Measures {
        int iconSlot = 20;
        int iconSize = 16;
        int gap = 8;
        int paddingY = 6;
        double cornerRadius = 7;
        double hoverScale = 1;
    };
    SidebarButton(const Measures& measures, bool reducesMotion, QWidget* parent);

    virtual void paintGround(QPainter& painter, const QRectF& ground) const = 0;
    [[nodiscard]] virtual QColor ink() const = 0;
    [[nodiscard]] virtual QColor iconInk() const { return ink(); }
    /// Of the mark of the keyboard; it must stand out from the ground.
    [[nodiscard]] virtual QColor ringInk() const;

    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    /// On purpose nothing: what a click switches shows itself when it has been switched.
    void nextCheckState() override {}

    const Measures m_measures;

private:
    /// The row without the room into which it grows under the pointer.
    [[nodiscard]] QRectF ground() const;
    [[nodiscard]] QRectF textRect() const;
    [[nodiscard]] QString shownLabel() const;
    void animate(int milliseconds);
    void paintRow(QPainter& painter) const;

    bool m_reducesMotion;
    bool m_showsFocus = false; ///< from the first use of the keyboard on, until a click
    QString m_label;
    QString m_iconKey;
    QString m_count;
    double m_scale = 1;
    QVariantAnimation* m_animation;
};

} // namespace orvanlite
