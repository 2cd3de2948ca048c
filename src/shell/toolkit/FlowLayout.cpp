#include "shell/toolkit/FlowLayout.h"

#include <algorithm>
#include <iterator>

namespace orvanlite {

FlowLayout::FlowLayout(QWidget* parent, int spacing, int lineSpacing)
    : QLayout(parent)
    , m_lineSpacing(lineSpacing)
{
    setContentsMargins(0, 0, 0, 0);
    setSpacing(spacing);
}

FlowLayout::~FlowLayout() { qDeleteAll(m_items); }

FlowLayout::Arrangement FlowLayout::arrange(const std::vector<QSize>& sizes, int width, int spacing,
                                            int lineSpacing)
{
    Arrangement result;
    result.places.reserve(sizes.size());
    int x = 0;
    int y = 0;
    std::size_t lineStart = 0;
    int lineHeight = 0;
    const auto endLine = [&] {
        for (std::size_t i = lineStart; i < result.places.size(); ++i)
            result.places[i].moveTop(y + (lineHeight - result.places[i].height()) / 2);
        lineStart = result.places.size();
        result.height = y + lineHeight;
    };
    for (const QSize& size : sizes) {
        const int itemWidth = std::min(size.width(), std::max(width, 1));
        if (x > 0 && x + itemWidth > width) {
            endLine();
            x = 0;
            y += lineHeight + lineSpacing;
            lineHeight = 0;
        }
        result.places.emplace_back(x, y, itemWidth, size.height());
        lineHeight = std::max(lineHeight, size.height());
        x += itemWidth + spacing;
    }
    endLine();
    return result;
}

QLayoutItem* FlowLayout::itemAt(int index) const
{
    return index >= 0 && index < count() ? m_items[static_cast<std::size_t>(index)] : nullptr;
}

QLayoutItem* FlowLayout::takeAt(int index)
{
    QLayoutItem* item = itemAt(index);
    if (item)
        m_items.erase(m_items.begin() + index);
    return item;
}

std::vector<QLayoutItem*> FlowLayout::visibleItems() const
{
    std::vector<QLayoutItem*> visible;
    std::copy_if(m_items.begin(), m_items.end(), std::back_inserter(visible),
                 [](const QLayoutItem* item) { return !item->isEmpty(); });
    return visible;
}

FlowLayout::Arrangement FlowLayout::arrangeItems(int width) const
{
    std::vector<QSize> sizes;
    for (QLayoutItem* item : visibleItems()) {
        QSize size = item->sizeHint();
        if (size.width() > width && item->hasHeightForWidth())
            size.setHeight(item->heightForWidth(width));
        sizes.push_back(size);
    }
    return arrange(sizes, width, spacing(), m_lineSpacing);
}

int FlowLayout::heightForWidth(int width) const
{
    const QMargins margins = contentsMargins();
    return arrangeItems(width - margins.left() - margins.right()).height + margins.top() + margins.bottom();
}

QSize FlowLayout::sizeHint() const
{
    QSize hint(0, 0);
    const std::vector<QLayoutItem*> visible = visibleItems();
    for (const QLayoutItem* item : visible) {
        const QSize size = item->sizeHint();
        hint = QSize(hint.width() + size.width(), std::max(hint.height(), size.height()));
    }
    const QSize gaps(std::max(0, static_cast<int>(visible.size()) - 1) * spacing(), 0);
    return (hint + gaps).grownBy(contentsMargins());
}

QSize FlowLayout::minimumSize() const
{
    QSize least(0, 0);
    for (const QLayoutItem* item : visibleItems())
        least = least.expandedTo(item->minimumSize());
    return least.grownBy(contentsMargins());
}

void FlowLayout::setGeometry(const QRect& rect)
{
    QLayout::setGeometry(rect);
    const QRect inner = rect.marginsRemoved(contentsMargins());
    const std::vector<QLayoutItem*> visible = visibleItems();
    const Arrangement arranged = arrangeItems(inner.width());
    for (std::size_t i = 0; i < visible.size(); ++i)
        visible[i]->setGeometry(arranged.places[i].translated(inner.topLeft()));
}

} // namespace orvanlite
