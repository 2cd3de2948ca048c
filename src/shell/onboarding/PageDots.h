#pragma once

#include <QWidget>

class QVariantAnimation;

namespace orvanlite {

/// A dot for each page, the current one drawn long. It springs into its new length.
class PageDots final : public QWidget {
    Q_OBJECT

public:
    PageDots(int count, QWidget* parent);

    void setCurrent(int page);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    int m_count;
    int m_current = 0;
    int m_previous = 0;
    double m_share = 1; ///< how far the length has gone from the dot before to this one; springs beyond 1
    QVariantAnimation* m_animation;
};

} // namespace orvanlite
