#pragma once

#include <QHeaderView>

namespace orvanlite {

/// The table header. A click on a title sorts by it; Left and Right move the keyboard focus between titles
/// and Space sorts.
class PluginTableHeader final : public QHeaderView {
    Q_OBJECT

public:
    explicit PluginTableHeader(QWidget* parent);

    [[nodiscard]] QSize sizeHint() const override;

    /// Minimum width of the title, including the sort indicator.
    [[nodiscard]] int leastWidth(int column) const;
    /// Sorts by the title with the keyboard focus.
    void sortByPicked();

Q_SIGNALS:
    /// The user requests sorting by this column; repeating it reverses the direction.
    void sortRequested(int column);

protected:
    void paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void pick(int column);
    void announce();

    int m_picked = 0;
};

} // namespace orvanlite
