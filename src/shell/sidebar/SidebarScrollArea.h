#pragma once

#include <QScrollArea>

class QVariantAnimation;

namespace orvanlite {

/// A part of the sidebar that scrolls if its height is short. The space of the scroll bar is always reserved,
/// so that the content does not move when the bar appears.
class SidebarScrollArea final : public QScrollArea {
    Q_OBJECT

public:
    /// `leastHeight` is the minimum height, unless the content needs less. The preferred and maximum height
    /// is that of the content if `isAsHighAsContent`; otherwise the area takes all available height.
    SidebarScrollArea(QWidget* content, int leastHeight, bool isAsHighAsContent, QWidget* parent);

    /// Scrolls until the widget, a part of the content, is as close to the top as possible.
    void scrollToTop(QWidget* widget);

    /// Scrolls only until the whole widget is visible, or its top if it is higher than the viewport.
    void scrollIntoView(QWidget* widget);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void showEdges();
    void scrollTo(QWidget* widget, bool isToTop);
    /// Where the running scroll ends.
    [[nodiscard]] int scrollEnd() const;

    QWidget* m_topEdge; ///< lines shown where more content can be scrolled to
    QWidget* m_bottomEdge;
    int m_leastHeight;
    bool m_isAsHighAsContent;
    QWidget* m_target = nullptr;
    bool m_isToTop = true;
    int m_start = 0;
    QVariantAnimation* m_animation;
};

} // namespace orvanlite
