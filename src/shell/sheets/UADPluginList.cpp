#include "shell/sheets/UADPluginList.h"

#include "shell/toolkit/AppTheme.h"
#include "shell/toolkit/Icons.h"
#include "shell/toolkit/ToolTips.h"
#include "uad/UADCleanupManager.h"

#include <QPainter>
#include <QStyledItemDelegate>

#include <algorithm>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr int kPaddingX = 12;
constexpr int kPaddingY = 6;
constexpr int kHeadingGap = 8; ///< additional space above a heading
constexpr int kIconSize = 16;
constexpr int kGap = 8;
constexpr double kCaption = 0.88;
constexpr double kCornerRadius = 6;

/// Text at the right end of an entry.
QString remark(const UADPluginAuth& entry)
{
    return entry.isAlreadyDisabled ? u"Already disabled"_s : entry.status.displayString();
}

class UADPluginRow final : public QStyledItemDelegate {
public:
    UADPluginRow(UADPluginList& list, const UADPluginListModel& model)
        : QStyledItemDelegate(&list)
        , m_list(list)
        , m_model(model)
    {}

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        const int text = std::max(option.fontMetrics.height(), kIconSize);
        return {0, text + 2 * kPaddingY + (m_model.row(index.row()).heading.isEmpty() ? 0 : kHeadingGap)};
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        const UADPluginListModel::Row& row = m_model.row(index.row());
        if (row.heading.isEmpty())
            paintEntry(*painter, option, row.entry);
        else
            paintHeading(*painter, option, row);
        m_list.paintFocus(*painter, option, index, kCornerRadius);
        painter->restore();
    }

private:
    static void paintHeading(QPainter& painter, const QStyleOptionViewItem& option,
                             const UADPluginListModel::Row& row)
    {
        QColor colour = row.colour(option.palette);
        if (colour.alpha() == 255)
            colour = AppTheme::legible(colour, option.palette);
        const QRect rect = option.rect.adjusted(kPaddingX, kHeadingGap, -kPaddingX, 0);
        drawIcon(painter, QRectF(rect.left(), rect.center().y() - kIconSize / 2.0, kIconSize, kIconSize),
                 row.iconKey, colour);
        drawLine(painter, rect.adjusted(kIconSize + kGap, 0, 0, 0), AppTheme::semibold(option.font), colour,
                 row.heading);
    }

    static void paintEntry(QPainter& painter, const QStyleOptionViewItem& option, const UADPluginAuth& entry)
    {
        const QPalette& colours = option.palette;
        const QColor secondary = AppTheme::secondary(colours);
        if (!entry.isAlreadyDisabled && (option.state & QStyle::State_MouseOver)) {
            painter.setPen(Qt::NoPen);
            painter.setBrush(AppTheme::bgSurface(colours));
            painter.drawRoundedRect(option.rect, kCornerRadius, kCornerRadius);
        }
        const QRect rect = option.rect.adjusted(kPaddingX, 0, -kPaddingX, 0);
        const bool isOn = entry.isAlreadyDisabled || entry.isSelected;
        const QColor sign = entry.isAlreadyDisabled ? AppTheme::withOpacity(secondary, 0.4)
                            : entry.isSelected      ? AppTheme::accent(colours)
                                                    : AppTheme::withOpacity(secondary, 0.5);
        drawIcon(painter, QRectF(rect.left(), rect.center().y() - kIconSize / 2.0, kIconSize, kIconSize),
                 isOn ? u"checkmark.circle.fill"_s : u"circle"_s, sign);

        const QFont caption = AppTheme::scaled(option.font, kCaption);
        const QString end = remark(entry);
        const int endWidth = QFontMetrics(caption).horizontalAdvance(end) + 1;
        QColor ink = secondary;
        if (!entry.isAlreadyDisabled) {
            const bool isOwned = entry.status.state == UADPluginAuth::UADAuthState::authorized;
            ink = AppTheme::legible(isOwned ? AppTheme::green(colours) : AppTheme::orange(colours), colours);
        }
        drawLine(painter, rect, caption, ink, end, Qt::AlignRight);
        drawLine(painter, rect.adjusted(kIconSize + kGap, 0, -endWidth - kGap, 0), option.font,
                 entry.isAlreadyDisabled ? secondary : AppTheme::primary(colours), entry.name);
    }

    const UADPluginList& m_list;
    const UADPluginListModel& m_model;
};

} // namespace

void UADPluginListModel::show(const UADCleanupManager& cleanup)
{
    std::vector<Row> rows;
    const auto add = [&rows](const QString& heading, const QString& iconKey, const Colour& colour,
                             UADPluginAuths entries, bool areOff) {
        std::erase_if(entries,
                      [areOff](const UADPluginAuth& each) { return each.isAlreadyDisabled != areOff; });
        if (entries.empty())
            return;
        rows.push_back({heading, iconKey, colour, {}});
        for (UADPluginAuth& entry : entries)
            rows.push_back({{}, {}, {}, std::move(entry)});
    };
    add(u"Demo Expired — no longer usable"_s, u"clock.badge.xmark"_s, &AppTheme::red,
        cleanup.expiredPlugins(), false);
    add(u"Active Demo — still playable but not owned"_s, u"clock"_s, &AppTheme::orange,
        cleanup.activeDemoPlugins(), false);
    add(u"Demo Not Started — never owned or trialed"_s, u"xmark.circle"_s, &AppTheme::secondary,
        cleanup.notStartedPlugins(), false);
    add(u"Already disabled"_s, u"eye.slash"_s, &AppTheme::secondary, *cleanup.demoPlugins, true);

    const bool isSameList = std::equal(
        rows.begin(), rows.end(), m_rows.begin(), m_rows.end(), [](const Row& one, const Row& other) {
            return one.heading == other.heading && one.entry.id == other.entry.id;
        });
    if (!isSameList) {
        beginResetModel();
        m_rows = std::move(rows);
        endResetModel();
        return;
    }
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (rows[i].entry == m_rows[i].entry)
            continue;
        m_rows[i].entry = rows[i].entry;
        const QModelIndex changed = index(static_cast<int>(i));
        Q_EMIT dataChanged(changed, changed);
    }
}

int UADPluginListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QVariant UADPluginListModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    const Row& shown = row(index.row());
    const bool isHeading = !shown.heading.isEmpty();
    switch (role) {
    case Qt::DisplayRole:
        return isHeading ? shown.heading : shown.entry.name;
    case Qt::ToolTipRole:
        return isHeading ? QVariant() : plainToolTip(shown.entry.name);
    case Qt::AccessibleTextRole:
        return isHeading ? shown.heading : shown.entry.name + u", "_s + remark(shown.entry);
    case Qt::CheckStateRole:
        if (isHeading || shown.entry.isAlreadyDisabled)
            return {};
        return shown.entry.isSelected ? Qt::Checked : Qt::Unchecked;
    default:
        return {};
    }
}

Qt::ItemFlags UADPluginListModel::flags(const QModelIndex& index) const
{
    const Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemNeverHasChildren;
    return index.data(Qt::CheckStateRole).isValid() ? flags | Qt::ItemIsUserCheckable : flags;
}

UADPluginList::UADPluginList(UADPluginListModel& model, QWidget* parent)
    : CardView(parent)
    , m_model(model)
{
    setObjectName(u"uadPluginList"_s);
    setAccessibleName(u"UAD demo plugins"_s);
    setModel(&model);
    setItemDelegate(new UADPluginRow(*this, model));
}

void UADPluginList::activate(const QModelIndex& index)
{
    if (index.flags() & Qt::ItemIsUserCheckable)
        Q_EMIT toggled(m_model.row(index.row()).entry.id);
}

QModelIndex UADPluginList::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers)
{
    // Headings are skipped: there is nothing to do on them. The first row is one, so a search upwards that
    // reaches it continues downwards.
    const QModelIndex target = CardView::moveCursor(action, modifiers);
    if (!target.isValid())
        return target;
    int row = target.row();
    for (int step = row < currentIndex().row() ? -1 : 1; !m_model.row(row).heading.isEmpty(); row += step) {
        if (row == 0)
            step = 1;
    }
    return m_model.index(row);
}

} // namespace orvanlite
