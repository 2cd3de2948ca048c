#pragma once

#include <QHeaderView>

namespace orvanlite {

/// The table's header. A click on a title sorts by it; by keyboard, Left and Right pick a title and Space sorts.
class PluginTableHeader final : public QHeaderView {
    Q_OBJECT

public:
    explicit PluginTableHeader(QWidget* parent);

    [[nodiscard]] QSize sizeHint() const override;

    /// What the title needs when the table is sorted by it.
    [[nodiscard]] int leastWidth(int column) const;
    /// Sorts by the title that the keys have picked.
    void sortByPicked();

Q_SIGNALS:
    /// The user wants this column as the sort; a second time turns the direction round.
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
