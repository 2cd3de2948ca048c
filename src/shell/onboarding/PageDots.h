#pragma once

#include <QWidget>

class QVariantAnimation;

namespace orvanlite {

/// A dot for each page, with the current one elongated. Changes have a spring animation.
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
    double m_share = 1; ///< progress of the change from the previous dot; overshoots 1
    QVariantAnimation* m_animation;
};

} // namespace orvanlite
