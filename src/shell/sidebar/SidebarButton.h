#pragma once

#include "shell/toolkit/Control.h"

namespace orvanlite {

/// Base of the sidebar's buttons: an icon in a slot, a text that is elided if space is short (and then
/// complete in the tooltip), and a count at the end.
class SidebarButton : public Control {
    Q_OBJECT

public:
    void setIconKey(const QString& key);
    [[nodiscard]] const QString& iconKey() const { return m_iconKey; }
    /// The count at the end, also for screen readers; empty for none.
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
        int paddingX = 8;
        int paddingY = 6;
        double cornerRadius = 7;
        double hoverScale = 1;
    };
    SidebarButton(const Measures& measures, QWidget* parent);

    virtual void paintGround(QPainter& painter, const QRectF& ground) const;
    [[nodiscard]] virtual QColor ink() const;
    [[nodiscard]] virtual QColor iconInk() const;

    void paint(QPainter& painter) const final;
    [[nodiscard]] FocusRing focusRing() const override;
    bool event(QEvent* event) override;

    const Measures m_measures;

private:
    /// The row without the margin into which it grows on hover.
    [[nodiscard]] QRectF ground() const;
    [[nodiscard]] QRectF textRect() const;
    [[nodiscard]] QString shownLabel() const;

    QString m_iconKey;
    QString m_count;
};

} // namespace orvanlite
