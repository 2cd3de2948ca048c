#pragma once

#include <QScrollArea>

class QVariantAnimation;

namespace orvanlite {

/// A part of the sidebar that scrolls where its height is short. The scroll bar's place is always kept, so that
/// nothing moves aside when it comes.
class SidebarScrollArea final : public QScrollArea {
    Q_OBJECT

public:
    /// Asks for no more height than `height`; without one, for that of its content.
    SidebarScrollArea(QWidget* content, int leastHeight, bool isAsHighAsContent, QWidget* parent);

    /// Scrolls until the widget, part of the content, is at the top, or as near to it as the content lets it.
    void scrollToTop(QWidget* widget);

    /// Scrolls no further than until the whole widget is in view, or its top where it is higher than the view.
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

    QWidget* m_topEdge; ///< lines where the content goes on behind
    QWidget* m_bottomEdge;
    int m_leastHeight;
    bool m_isAsHighAsContent;
    QWidget* m_target = nullptr;
    bool m_isToTop = true;
    int m_start = 0;
    QVariantAnimation* m_animation;
};

} // namespace orvanlite
