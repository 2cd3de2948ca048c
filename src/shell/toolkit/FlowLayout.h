#pragma once

#include <QLayout>
#include <QRect>

#include <vector>

namespace orvanlite {

/// Lays out items in lines, wrapping like words.
class FlowLayout final : public QLayout {
public:
    FlowLayout(QWidget* parent, int spacing, int lineSpacing);
    ~FlowLayout() override;

    struct Arrangement {
        std::vector<QRect> places; ///< in the order of the sizes, origin (0, 0)
        int height = 0;            ///< 0 without items
    };
    /// Items are vertically centred within their line. An item wider than `width` gets its own line and is
    /// clipped to it.
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
