#include "shell/sidebar/ActivityLogList.h"

#include "platform/Clock.h"
#include "shell/toolkit/AppTheme.h"
#include "shell/toolkit/Icons.h"
#include "shell/toolkit/ToolTips.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyledItemDelegate>
#include <QToolTip>

#include <algorithm>
#include <array>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr int kPaddingX = 8;
constexpr int kPaddingY = 5;
constexpr int kIconSlot = 16;
constexpr int kIconSize = 14;
constexpr int kGap = 8;
constexpr int kLineGap = 1;
constexpr double kCornerRadius = 6;

/// Icon of an action, and the colour of icon and label.
struct ActionLook {
    QString icon;
    QColor colour;
};

ActionLook actionLook(ActivityAction action, const QPalette& colours)
{
    switch (action) {
    case ActivityAction::enabled:
        return {u"checkmark.circle.fill"_s, AppTheme::legible(AppTheme::green(colours), colours)};
    case ActivityAction::disabled:
        return {u"xmark.circle.fill"_s,
                AppTheme::withOpacity(AppTheme::legible(AppTheme::red(colours), colours), 0.8)};
    case ActivityAction::deleted:
        break;
    }
    return {u"trash.fill"_s, AppTheme::textTertiary(colours)};
}

/// Texts of a row and their positions, for one font and one width.
struct RowLayout {
    RowLayout(const QRect& row, const QFont& font, const QString& action, const QString& timeAgo)
        : name(AppTheme::scaled(font, AppTheme::kCaption))
        , small(AppTheme::scaled(font, AppTheme::kSmallCaption))
        , strong(AppTheme::semibold(small))
    {
        const int upper = QFontMetrics(name).height();
        const int lower = QFontMetrics(small).height();
        const int top = row.top() + (row.height() - upper - kLineGap - lower) / 2;
        const int right = std::max(QFontMetrics(strong).horizontalAdvance(action),
                                   QFontMetrics(small).horizontalAdvance(timeAgo)) +
                          1;
        const int textLeft = row.left() + kPaddingX + kIconSlot + kGap;
        const int rightLeft = row.right() + 1 - kPaddingX - right;
        icon = QRect(row.left() + kPaddingX, row.center().y() - kIconSize / 2 + 1, kIconSlot, kIconSize);
        nameRect = QRect(textLeft, top, rightLeft - kGap - textLeft, upper);
        formatRect = QRect(textLeft, nameRect.bottom() + 1 + kLineGap, nameRect.width(), lower);
        actionRect = QRect(rightLeft, top, right, upper);
        timeRect = QRect(rightLeft, formatRect.top(), right, lower);
    }

    QFont name;
    QFont small;
    QFont strong;
    QRect icon;
    QRect nameRect;
    QRect formatRect;
    QRect actionRect;
    QRect timeRect;
};

/// Draws an entry: the action's icon, the plugin above its format, and on the right the action above its age.
class ActivityLogRow final : public QStyledItemDelegate {
public:
    explicit ActivityLogRow(const ActivityLogList& list, QObject* parent)
        : QStyledItemDelegate(parent)
        , m_list(list)
    {}

    static int height(const QFont& font)
    {
        return QFontMetrics(AppTheme::scaled(font, AppTheme::kCaption)).height() + kLineGap +
               QFontMetrics(AppTheme::scaled(font, AppTheme::kSmallCaption)).height() + 2 * kPaddingY;
    }

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& /*index*/) const override
    {
        return {0, height(option.font)};
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        const ActivityLogEntry& entry = m_list.entries().entry(index.row());
        const QString action = rawValue(entry.action);
        const QString timeAgo = index.data(ActivityLogModel::TimeAgoRole).toString();
        const RowLayout places(option.rect, option.font, action, timeAgo);
        const ActionLook look = actionLook(entry.action, option.palette);
        const QColor secondary = AppTheme::textSecondary(option.palette);
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        drawIcon(*painter, places.icon, look.icon, look.colour);
        drawLine(*painter, places.nameRect, places.name, AppTheme::textPrimary(option.palette),
                 entry.pluginName);
        drawLine(*painter, places.formatRect, places.small, secondary, entry.format);
        drawLine(*painter, places.actionRect, places.strong, look.colour, action, Qt::AlignRight);
        drawLine(*painter, places.timeRect, places.small, secondary, timeAgo, Qt::AlignRight);
        m_list.paintFocus(*painter, option, index, kCornerRadius);
        painter->restore();
    }

    /// Shows the tooltip only for elided names.
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override
    {
        if (index.isValid()) {
            const ActivityLogEntry& entry = m_list.entries().entry(index.row());
            const RowLayout places(option.rect, option.font, rawValue(entry.action),
                                   index.data(ActivityLogModel::TimeAgoRole).toString());
            if (QFontMetrics(places.name).horizontalAdvance(entry.pluginName) <= places.nameRect.width()) {
                QToolTip::hideText();
                return true;
            }
        }
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    }

private:
    const ActivityLogList& m_list;
};

} // namespace

ActivityLogModel::ActivityLogModel(const platform::Clock& clock, QObject* parent)
    : QAbstractListModel(parent)
    , m_clock(clock)
{}

void ActivityLogModel::setEntries(const std::vector<ActivityLogEntry>& entries)
{
    if (entries == m_entries)
        return;
    // New entries precede the one that was on top.
    const auto oldTop =
        m_entries.empty() ? entries.end() : std::find(entries.begin(), entries.end(), m_entries.front());
    const auto kept = static_cast<std::size_t>(entries.end() - oldTop);
    const bool isContinued =
        kept > 0 && kept <= m_entries.size() && std::equal(oldTop, entries.end(), m_entries.begin());
    if (!isContinued) {
        beginResetModel();
        m_entries = entries;
        endResetModel();
        return;
    }
    if (kept < m_entries.size()) {
        beginRemoveRows({}, static_cast<int>(kept), rowCount() - 1);
        m_entries.resize(kept);
        endRemoveRows();
    }
    if (oldTop != entries.begin()) {
        beginInsertRows({}, 0, static_cast<int>(oldTop - entries.begin()) - 1);
        m_entries = entries;
        endInsertRows();
    }
}

int ActivityLogModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_entries.size());
}

QVariant ActivityLogModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    const ActivityLogEntry& each = entry(index.row());
    // Computed at each call, as nothing notifies the model when an age changes.
    const auto timeAgo = [&] { return each.timeAgo(Date::fromUnix(m_clock.now())); };
    switch (role) {
    case Qt::DisplayRole:
        return each.pluginName;
    case Qt::ToolTipRole:
        return plainToolTip(each.pluginName);
    case Qt::AccessibleTextRole:
        return QStringList{each.pluginName, each.format, rawValue(each.action), timeAgo()}.join(u", "_s);
    case TimeAgoRole:
        return timeAgo();
    default:
        return {};
    }
}

ActivityLogList::ActivityLogList(const platform::Clock& clock, QWidget* parent)
    : CardView(parent)
    , m_model(new ActivityLogModel(clock, this))
{
    setObjectName(u"activityLogList"_s);
    setAccessibleName(u"Recent Activity"_s);
    setModel(m_model);
    setItemDelegate(new ActivityLogRow(*this, this));
    setUniformItemSizes(true);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
}

void ActivityLogList::setEntries(const std::vector<ActivityLogEntry>& entries)
{
    const int rows = m_model->rowCount();
    const int scroll = verticalScrollBar()->value();
    const QPersistentModelIndex top = m_model->index(0, 0);
    m_model->setEntries(entries);
    if (m_model->rowCount() != rows)
        updateGeometry();
    executeDelayedItemsLayout();
    // Further down, keep the same entry in view; at the top, show the newest.
    if (scroll > 0 && top.isValid())
        verticalScrollBar()->setValue(scroll + top.row() * rowHeight());
    viewport()->update(); // the ages too
}

int ActivityLogList::rowHeight() const { return ActivityLogRow::height(font()); }

QSize ActivityLogList::sizeHint() const
{
    return {QListView::sizeHint().width(), rowHeight() * m_model->rowCount()};
}

QSize ActivityLogList::minimumSizeHint() const { return {0, rowHeight() * std::min(1, m_model->rowCount())}; }

} // namespace orvanlite
