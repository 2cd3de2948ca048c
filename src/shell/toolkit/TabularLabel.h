#pragma once

#include <QLabel>

namespace orvanlite {

/// A line of text with tabular figures, even in fonts without them, so that a counter does not shift its
/// neighbours.
class TabularLabel final : public QLabel {
    Q_OBJECT

public:
    using QLabel::QLabel;

    [[nodiscard]] int widthOf(const QString& text) const;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace orvanlite
