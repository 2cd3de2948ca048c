#include "shell/sidebar/ManufacturerTable.h"

#include "shell/toolkit/AppTheme.h"
#include "shell/toolkit/Icons.h"
#include "shell/toolkit/ToolTips.h"

#include <QHeaderView>
#include <QHelpEvent>
#include <QPainter>
#include <QStyledItemDelegate>
#include <QToolTip>

#include <array>
#include <utility>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr int kRowHeight = 26;
constexpr int kTextPaddingY = 4;
constexpr int kPaddingX = 8;
constexpr int kIconSlot = 14;
constexpr int kIconGap = 8;
constexpr int kTextEnd = 6;
constexpr int kLinkIcon = 11;
constexpr int kLinkWidth = 28;
constexpr double kCornerRadius = 6;

bool isLink(const QModelIndex& index)
{
    return index.column() == static_cast<int>(ManufacturerColumn::website);
}

QString nameOf(const QModelIndex& index)
{
    return index.siblingAtColumn(static_cast<int>(ManufacturerColumn::name)).data().toString();
}

/// Draws the cells of a manufacturer, with their hover, pressed and focus state.
class ManufacturerDelegate final : public QStyledItemDelegate {
public:
    explicit ManufacturerDelegate(const ManufacturerTable& table, QObject* parent)
        : QStyledItemDelegate(parent)
        , m_table(table)
    {}

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        paintGround(*painter, option, index);
        if (isLink(index))
            paintLink(*painter, option, index);
        else
            paintName(*painter, option, index);
        painter->restore();
    }

    /// Shows the tooltip only for elided names.
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override
    {
        if (!isLink(index) &&
            option.fontMetrics.horizontalAdvance(nameOf(index)) <= textRect(option.rect).width()) {
            QToolTip::hideText();
            return true;
        }
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    }

private:
    static QRect textRect(const QRect& cell)
    {
        return cell.adjusted(kPaddingX + kIconSlot + kIconGap, 0, -kTextEnd, 0);
    }

    void paintGround(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
    {
        const QRectF ground = QRectF(option.rect).adjusted(1, 1, -1, -1);
        if (m_table.hovered() == index) {
            const double strength = m_table.isPressed(index) ? 0.14 : 0.07;
            painter.setPen(Qt::NoPen);
            painter.setBrush(AppTheme::withOpacity(AppTheme::primary(option.palette), strength));
            painter.drawRoundedRect(ground, kCornerRadius, kCornerRadius);
        }
        m_table.paintFocus(painter, option, index, kCornerRadius);
    }

    static void paintName(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index)
    {
        const bool isMarked = index.data(Qt::CheckStateRole).toInt() == Qt::Checked;
        const QRectF icon(option.rect.left() + kPaddingX, option.rect.center().y() - (kIconSlot - 1) / 2.0,
                          kIconSlot, kIconSlot);
        drawIcon(painter, icon, isMarked ? u"checkmark.circle.fill"_s : u"circle"_s,
                 isMarked ? AppTheme::accent(option.palette) : AppTheme::secondary(option.palette));
        const QRect text = textRect(option.rect);
        drawLine(painter, text, option.font, AppTheme::primary(option.palette), nameOf(index));
    }

    void paintLink(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
    {
        QRectF icon(0, 0, kLinkIcon, kLinkIcon);
        icon.moveCenter(QRectF(option.rect).center());
        const bool isStrong = m_table.hovered() == index || m_table.showsFocus(index);
        drawIcon(painter, icon, u"arrow.up.right"_s,
                 isStrong ? AppTheme::primary(option.palette) : AppTheme::secondary(option.palette));
    }

    const ManufacturerTable& m_table;
};

} // namespace

void ManufacturerTableModel::setManufacturers(const QStringList& names, const QSet<QString>& marked)
{
    if (names != m_names) {
        beginResetModel();
        m_names = names;
        m_marked = marked;
        endResetModel();
        return;
    }
    const QSet<QString> before = std::exchange(m_marked, marked);
    for (int row = 0; row < rowCount(); ++row) {
        if (before.contains(m_names[row]) != marked.contains(m_names[row]))
            Q_EMIT dataChanged(index(row, 0), index(row, 0));
    }
}

int ManufacturerTableModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_names.size());
}

int ManufacturerTableModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : kManufacturerColumnCount;
}

QVariant ManufacturerTableModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    const QString& name = m_names[index.row()];
    const bool isMarked = m_marked.contains(name);
    const bool isForLink = isLink(index);
    switch (role) {
    case Qt::DisplayRole:
        return isForLink ? QVariant() : name;
    case Qt::ToolTipRole:
        return plainToolTip(isForLink ? u"Visit "_s + name + u" website"_s : name);
    case Qt::AccessibleTextRole:
        return isForLink ? u"Visit "_s + name + u" website"_s : name;
    case Qt::CheckStateRole:
        return isForLink ? QVariant() : isMarked ? Qt::Checked : Qt::Unchecked;
    case Qt::AccessibleDescriptionRole:
        return isForLink ? QString() : isMarked ? u"Filter is on"_s : u"Filter is off"_s;
    default:
        return {};
    }
}

QVariant ManufacturerTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    static const std::array<QString, kManufacturerColumnCount> titles{u"Manufacturer"_s, u"Website"_s};
    if (orientation != Qt::Horizontal || section < 0 || section >= kManufacturerColumnCount)
        return {};
    return role == Qt::DisplayRole ? titles[static_cast<std::size_t>(section)] : QVariant();
}

Qt::ItemFlags ManufacturerTableModel::flags(const QModelIndex& index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    const Qt::ItemFlags flags = Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemNeverHasChildren;
    return isLink(index) ? flags : flags | Qt::ItemIsUserCheckable;
}

ManufacturerTable::ManufacturerTable(int greatestHeight, QWidget* parent)
    : CardView(parent)
    , m_model(new ManufacturerTableModel(this))
    , m_greatestHeight(greatestHeight)
{
    setObjectName(u"manufacturerTable"_s);
    setAccessibleName(u"Manufacturers"_s);
    setModel(m_model);
    setItemDelegate(new ManufacturerDelegate(*this, this));
    setTabKeyNavigation(false);
    setShowGrid(false);
    horizontalHeader()->hide();
    horizontalHeader()->setMinimumSectionSize(kLinkWidth);
    horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    fitHeight();
}

void ManufacturerTable::setManufacturers(const QStringList& names, const QSet<QString>& marked)
{
    const QString current = nameOf(currentIndex());
    const int column = std::max(0, currentIndex().column());
    const int scroll = verticalScrollBar()->value();
    const bool isSameList = names == m_model->names();
    m_model->setManufacturers(names, marked);
    if (isSameList)
        return;
    fitHeight();
    const auto row = current.isNull() ? -1 : static_cast<int>(names.indexOf(current));
    // The view's own setCurrentIndex() would scroll to the row.
    if (row >= 0)
        selectionModel()->setCurrentIndex(m_model->index(row, column), QItemSelectionModel::NoUpdate);
    executeDelayedItemsLayout();
    verticalScrollBar()->setValue(scroll);
}

void ManufacturerTable::fitHeight()
{
    const int rowHeight = std::max(kRowHeight, fontMetrics().height() + 2 * kTextPaddingY);
    verticalHeader()->setMinimumSectionSize(rowHeight);
    verticalHeader()->setDefaultSectionSize(rowHeight);
    setFixedHeight(std::min(m_greatestHeight, rowHeight * m_model->rowCount()));
}

bool ManufacturerTable::isPressed(const QModelIndex& index) const { return m_pressed == index; }

void ManufacturerTable::activate(const QModelIndex& index)
{
    if (isLink(index))
        Q_EMIT linkActivated(nameOf(index));
    else if (index.isValid())
        Q_EMIT nameActivated(nameOf(index));
}

void ManufacturerTable::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter)
        CardView::keyPressEvent(event);
    else if (isLink(currentIndex()) && !KeyRepeat::isRepeat(*event))
        activate(currentIndex());
}

void ManufacturerTable::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        m_pressed = indexAt(event->position().toPoint());
    CardView::mousePressEvent(event);
    viewport()->update();
}

void ManufacturerTable::mouseReleaseEvent(QMouseEvent* event)
{
    m_pressed = QModelIndex();
    CardView::mouseReleaseEvent(event);
    viewport()->update();
}

void ManufacturerTable::mouseMoveEvent(QMouseEvent* event)
{
    hover(indexAt(event->position().toPoint()));
    // On purpose not passed to the base class: dragging must not change the current row.
}

void ManufacturerTable::leaveEvent(QEvent* event)
{
    hover({});
    CardView::leaveEvent(event);
}

void ManufacturerTable::hover(const QModelIndex& index)
{
    if (m_hovered == index)
        return;
    m_hovered = index;
    viewport()->setCursor(index.isValid() && isLink(index) ? Qt::PointingHandCursor : Qt::ArrowCursor);
    viewport()->update();
}

void ManufacturerTable::changeEvent(QEvent* event)
{
    CardView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        fitHeight();
}

void ManufacturerTable::resizeEvent(QResizeEvent* event)
{
    CardView::resizeEvent(event);
    setColumnWidth(static_cast<int>(ManufacturerColumn::website), kLinkWidth);
    setColumnWidth(static_cast<int>(ManufacturerColumn::name), viewport()->width() - kLinkWidth);
}

void ManufacturerTable::scrollContentsBy(int dx, int dy)
{
    CardView::scrollContentsBy(dx, dy);
    if (viewport()->underMouse())
        hover(indexAt(viewport()->mapFromGlobal(QCursor::pos())));
}

} // namespace orvanlite
