#pragma once

#include <QLayout>
#include <QRect>

#include <vector>

namespace orvanlite {

/// Lays its items in a line and starts another one where they do not fit, as words do.
class FlowLayout final : public QLayout {
public:
    FlowLayout(QWidget* parent, int spacing, int lineSpacing);
    ~FlowLayout() override;

    struct Arrangement {
        std::vector<QRect> places; ///< in the order of the sizes, from (0, 0) on
        int height = 0;            ///< 0 without items
    };
    /// Items of one line are centred on it. An item wider than `width` gets a line of its own and is cut to it.
    [[nodiscard]] static Arrangement arrange(const std::vector<QSize>& sizes, int width, int spacing,
                                             int lineSpacing);

    void addItem(QLayoutItem* item) override { m_items.push_back(item); }
    [[nodiscard]] int count() const override { return static_cast<int>(m_items.size()); }
    [[nodiscard]] QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override;
    [[nodiscard]] Qt::Orientations expandingDirections() const override { return {}; }
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSize() const override;
    void setGeometry(const QRect& rect) override;

private:
    [[nodiscard]] std::vector<QLayoutItem*> visibleItems() const;
    [[nodiscard]] Arrangement arrangeItems(int width) const;

    std::vector<QLayoutItem*> m_items;
    int m_lineSpacing;
};

} // namespace orvanlite
