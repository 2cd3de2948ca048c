#pragma once

#include <QLabel>

namespace orvanlite {

/// A line of text whose digits are all equally wide, also in fonts whose own digits are not: a number that counts
/// up does not push its surroundings about.
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
