#include "shell/toolkit/TickList.h"

#include "shell/toolkit/AppTheme.h"
#include "shell/toolkit/Icons.h"
#include "shell/toolkit/ToolTips.h"

#include <QPainter>
#include <QStyledItemDelegate>

#include <algorithm>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr int kPaddingX = 8;
constexpr int kPaddingY = 5;
constexpr int kSmallestIcon = 16;
constexpr int kGap = 8;
constexpr int kBadgePaddingX = 5;
constexpr double kCaption = 0.86;
constexpr double kBadgeTint = 0.1;
constexpr double kRowRadius = 5;
constexpr double kCardRadius = 8;
constexpr int kCardPadding = 4;

/// The check box scales with the text.
int iconSize(const QFont& font) { return std::max(kSmallestIcon, QFontMetrics(font).ascent()); }

int rowHeight(const QFont& font)
{
    return std::max(QFontMetrics(font).height(), iconSize(font)) + 2 * kPaddingY;
}

class TickRowDelegate final : public QStyledItemDelegate {
public:
    TickRowDelegate(const TickListModel& model, TickList* list)
        : QStyledItemDelegate(list)
        , m_model(model)
        , m_list(*list)
    {}

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option,
                                 const QModelIndex& /*index*/) const override
    {
        return {0, rowHeight(option.font)};
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(Qt::NoPen);
        if (option.state & QStyle::State_MouseOver) {
            painter->setBrush(AppTheme::withOpacity(AppTheme::primary(option.palette), 0.06));
            painter->drawRoundedRect(option.rect, kRowRadius, kRowRadius);
        }
        paintRow(*painter, option, m_model.row(index.row()));
        m_list.paintFocus(*painter, option, index, kRowRadius);
        painter->restore();
    }

private:
    /// Laid out from the right: remark, badge; the name gets the remaining width.
    static void paintRow(QPainter& painter, const QStyleOptionViewItem& option, const TickRow& row)
    {
        const QPalette& colours = option.palette;
        const QColor secondary = AppTheme::secondary(colours);
        QRect rect = option.rect.adjusted(kPaddingX, 0, -kPaddingX, 0);
        const int icon = iconSize(option.font);
        drawIcon(painter, QRectF(rect.left(), rect.center().y() - icon / 2.0 + 0.5, icon, icon),
                 row.isTicked ? u"checkmark.square.fill"_s : u"square"_s,
                 row.isTicked ? AppTheme::accent(colours) : secondary);
        rect.setLeft(rect.left() + icon + kGap);
        const QFont caption = AppTheme::scaled(option.font, kCaption);
        const QFontMetrics metrics(caption);
        const auto takeFromRight = [&](int width) {
            const QRect taken(rect.right() - width, rect.top(), width + 1, rect.height());
            rect.setRight(taken.left() - kGap);
            return taken;
        };
        if (!row.remark.isEmpty()) {
            // At least as wide as the longest standard remark, so that the badges align.
            const int width =
                std::max(metrics.horizontalAdvance(u"Disabled"_s), metrics.horizontalAdvance(row.remark));
            drawLine(painter, takeFromRight(width + 1), caption, secondary, row.remark, Qt::AlignRight);
        }
        if (!row.badge.isEmpty()) {
            const QRect badgeArea =
                takeFromRight(metrics.horizontalAdvance(row.badge) + 1 + 2 * kBadgePaddingX);
            QRectF badge(badgeArea);
            badge.setHeight(metrics.height() + 2);
            badge.moveCenter(QRectF(badgeArea).center());
            painter.setPen(Qt::NoPen);
            painter.setBrush(AppTheme::withOpacity(AppTheme::accent(colours), kBadgeTint));
            painter.drawRoundedRect(badge, kRowRadius - 1, kRowRadius - 1);
            drawLine(painter, badgeArea, caption, AppTheme::legible(AppTheme::accent(colours), colours),
                     row.badge, Qt::AlignHCenter);
        }
        drawLine(painter, rect, option.font, row.isTicked ? AppTheme::primary(colours) : secondary, row.name,
                 Qt::AlignLeft);
    }

    const TickListModel& m_model;
    const TickList& m_list;
};

} // namespace

void TickListModel::setRows(std::vector<TickRow> rows)
{
    const auto hasSameId = [](const TickRow& one, const TickRow& other) { return one.id == other.id; };
    if (!std::equal(rows.begin(), rows.end(), m_rows.begin(), m_rows.end(), hasSameId)) {
        beginResetModel();
        m_rows = std::move(rows);
        endResetModel();
        return;
    }
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (rows[i] == m_rows[i])
            continue;
        m_rows[i] = std::move(rows[i]);
        const QModelIndex changed = index(static_cast<int>(i));
        Q_EMIT dataChanged(changed, changed);
    }
}

int TickListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QVariant TickListModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    const TickRow& shown = row(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return shown.name;
    case Qt::ToolTipRole:
        return plainToolTip(shown.name);
    case Qt::AccessibleTextRole: {
        QStringList texts{shown.name, shown.badge, shown.remark};
        texts.removeAll(QString());
        return texts.join(u", "_s);
    }
    case Qt::CheckStateRole:
        return shown.isTicked ? Qt::Checked : Qt::Unchecked;
    default:
        return {};
    }
}

Qt::ItemFlags TickListModel::flags(const QModelIndex& /*index*/) const
{
    return Qt::ItemIsEnabled | Qt::ItemIsUserCheckable | Qt::ItemNeverHasChildren;
}

TickList::TickList(int largestHeight, QWidget* parent)
    : CardView(parent)
    , m_largestHeight(largestHeight)
{
    setModel(&m_model);
    setItemDelegate(new TickRowDelegate(m_model, this));
    setUniformItemSizes(true);
    setViewportMargins(kCardPadding, kCardPadding, kCardPadding, kCardPadding);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Maximum);
    setAutoFillBackground(false);
}

void TickList::setRows(std::vector<TickRow> rows)
{
    const int before = m_model.rowCount();
    m_model.setRows(std::move(rows));
    if (m_model.rowCount() != before)
        updateGeometry();
}

int TickList::heightOf(int rows) const { return rows * rowHeight(font()) + 2 * kCardPadding; }

QSize TickList::sizeHint() const
{
    return {QListView::sizeHint().width(),
            std::min(heightOf(std::max(1, m_model.rowCount())), m_largestHeight)};
}

QSize TickList::minimumSizeHint() const { return {0, std::min(sizeHint().height(), heightOf(2))}; }

bool TickList::event(QEvent* event)
{
    if (event->type() == QEvent::Paint) { // paints the frame; rows are painted by the viewport
        QPainter painter(this);
        liquidGlassCard(painter, rect(), kCardRadius, palette());
        return true;
    }
    return QListView::event(event);
}

} // namespace orvanlite
