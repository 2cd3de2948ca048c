#include "shell/PluginTableView.h"

#include "shell/PluginTableDelegate.h"
#include "shell/PluginTableHeader.h"
#include "shell/PluginTableModel.h"
#include "shell/ThinScrollBar.h"

#include <QKeyEvent>
#include <QProxyStyle>
#include <QScrollBar>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr int kRowHeight = 34;

/// Below this the titles and badges would be cut, and the table scrolls sideways.
constexpr int kSmallestWidth = 780;
constexpr int kSmallestPreviewWidth = 660;

/// Leaves the ground of the rows to the delegate.
class BareRowStyle final : public QProxyStyle {
public:
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override
    {
        if (element != PE_PanelItemViewRow)
            QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
};

} // namespace

PluginTableView::PluginTableView(PluginTableModel& model, bool reducesMotion, QWidget* parent)
    : QTableView(parent)
    , m_model(model)
    , m_delegate(new PluginTableDelegate(model, reducesMotion, this))
    , m_header(new PluginTableHeader(this))
{
    setObjectName(u"pluginTable"_s);
    auto* bareRows = new BareRowStyle;
    bareRows->setParent(this);
    setStyle(bareRows);
    setAccessibleName(u"Plugins"_s);
    setHorizontalHeader(m_header);
    setModel(&model);
    setItemDelegate(m_delegate);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setTabKeyNavigation(false);
    setShowGrid(false);
    setFrameShape(QFrame::NoFrame);
    setMouseTracking(true);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setVerticalScrollBarPolicy(
        Qt::ScrollBarAlwaysOn); // seen only when needed, and the columns stay where they are
    setCornerWidget(new QWidget(this));
    setCornerButtonEnabled(false);
    setVerticalScrollBar(new ThinScrollBar(Qt::Vertical, this));
    setHorizontalScrollBar(new ThinScrollBar(Qt::Horizontal, this));
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(std::max(kRowHeight, fontMetrics().height() + 12));
    m_header->setStretchLastSection(false);
    viewport()->setAutoFillBackground(false);

    connect(m_header, &QHeaderView::sectionResized, this, [this] { takeOverShares(); });
    connect(&model, &PluginTableModel::stateChanged, m_delegate, &PluginTableDelegate::animateSwitch);
    connect(m_delegate, &PluginTableDelegate::needsRepaint, viewport(), qOverload<>(&QWidget::update));
    connect(m_delegate, &PluginTableDelegate::linkActivated, this, &PluginTableView::linkActivated);
}

bool PluginTableView::showsLastRow() const
{
    const int last = m_model.rowCount() - 1;
    return last >= 0 && rowViewportPosition(last) < viewport()->height();
}

void PluginTableView::keyPressEvent(QKeyEvent* event)
{
    showKeyboardFocus(true);
    const QModelIndex current = currentIndex();
    const bool command = event->modifiers() & Qt::ControlModifier;
    switch (event->key()) {
    case Qt::Key_Space:
        // A key that is held down must not move files to and fro.
        if (current.isValid() && !event->isAutoRepeat()) {
            const QModelIndex status = current.siblingAtColumn(static_cast<int>(PluginColumn::status));
            const bool isOn = status.data(Qt::CheckStateRole).toInt() == Qt::Checked;
            m_model.setData(status, isOn ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
        }
        return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (!event->isAutoRepeat() && current.column() == static_cast<int>(PluginColumn::manufacturer) &&
            !current.data(PluginTableModel::IsFadedRole).toBool())
            Q_EMIT linkActivated(current);
        return;
    case Qt::Key_Up:
    case Qt::Key_Down:
        if (command) {
            goToRow(event->key() == Qt::Key_Up ? 0 : m_model.rowCount() - 1, event->modifiers());
            return;
        }
        break;
    case Qt::Key_F10:
        if (event->modifiers() & Qt::ShiftModifier) {
            Q_EMIT customContextMenuRequested(visualRect(current).center());
            return;
        }
        break;
    default:
        break;
    }
    QTableView::keyPressEvent(event);
}

void PluginTableView::goToRow(int row, Qt::KeyboardModifiers modifiers)
{
    if (row < 0)
        return;
    const QModelIndex target = m_model.index(row, std::max(0, currentIndex().column()));
    if ((modifiers & Qt::ShiftModifier) && currentIndex().isValid()) {
        const QItemSelection span(m_model.index(std::min(row, currentIndex().row()), 0),
                                  m_model.index(std::max(row, currentIndex().row()), kPluginColumnCount - 1));
        selectionModel()->select(span, QItemSelectionModel::Select);
        selectionModel()->setCurrentIndex(target, QItemSelectionModel::NoUpdate);
    } else {
        // Not setCurrentIndex() of the view: it would look at the Control key that is held and toggle the mark.
        selectionModel()->setCurrentIndex(target,
                                          QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    }
    scrollTo(target);
}

void PluginTableView::showKeyboardFocus(bool shows)
{
    if (m_delegate->showsFocus() == shows)
        return;
    m_delegate->setShowsFocus(shows);
    viewport()->update();
}

void PluginTableView::focusInEvent(QFocusEvent* event)
{
    QTableView::focusInEvent(event);
    showKeyboardFocus(event->reason() != Qt::MouseFocusReason);
    viewport()->update();
}

void PluginTableView::focusOutEvent(QFocusEvent* event)
{
    QTableView::focusOutEvent(event);
    viewport()->update();
}

void PluginTableView::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    QTableView::currentChanged(current, previous);
    viewport()->update(); // the mark of the current row runs through all its cells
}

void PluginTableView::mousePressEvent(QMouseEvent* event)
{
    showKeyboardFocus(false);
    QTableView::mousePressEvent(event);
}

void PluginTableView::mouseDoubleClickEvent(QMouseEvent* event)
{
    // Two quick clicks on a switch are two clicks.
    mousePressEvent(event);
}

void PluginTableView::followPointer(const QPoint& position)
{
    const QModelIndex index = indexAt(position);
    const bool isOnLink =
        index.isValid() && m_delegate->linkRect(visualRect(index), index, font()).contains(position);
    hoverLink(isOnLink ? index : QModelIndex());
}

void PluginTableView::hoverLink(const QModelIndex& index)
{
    if (m_hovered == index)
        return;
    m_hovered = index;
    m_delegate->setHoveredLink(index);
    viewport()->setCursor(index.isValid() ? Qt::PointingHandCursor : Qt::ArrowCursor);
    viewport()->update();
}

void PluginTableView::mouseMoveEvent(QMouseEvent* event)
{
    followPointer(event->position().toPoint());
    QTableView::mouseMoveEvent(event);
}

void PluginTableView::leaveEvent(QEvent* event)
{
    hoverLink({});
    QTableView::leaveEvent(event);
}

void PluginTableView::showModelColumns()
{
    m_isLayingOut = true;
    for (const PluginColumn column : {PluginColumn::version, PluginColumn::lastUsed})
        setColumnHidden(static_cast<int>(column), m_model.isPreview());
    layoutColumns();
}

void PluginTableView::layoutColumns()
{
    m_isLayingOut = true;
    const int width =
        std::max(viewport()->width(), m_model.isPreview() ? kSmallestPreviewWidth : kSmallestWidth);
    const int last = static_cast<int>(m_model.isPreview() ? PluginColumn::format : PluginColumn::lastUsed);
    int left = width;
    for (int column = 0; column <= last; ++column) {
        const int share =
            column == last ? left : static_cast<int>(width * shares()[static_cast<std::size_t>(column)]);
        m_header->resizeSection(column, share);
        left -= share;
    }
    m_isLayingOut = false;
}

void PluginTableView::takeOverShares()
{
    if (m_isLayingOut || m_header->length() <= 0)
        return;
    for (int column = 0; column < kPluginColumnCount; ++column)
        shares()[static_cast<std::size_t>(column)] =
            double(m_header->sectionSize(column)) / m_header->length();
}

void PluginTableView::resizeEvent(QResizeEvent* event)
{
    QTableView::resizeEvent(event);
    // The bulk pane that comes up under the table must not cover the row that has just been picked.
    const int current = currentIndex().isValid() ? rowViewportPosition(currentIndex().row()) : -1;
    if (current >= 0 && current < event->oldSize().height() &&
        current + rowHeight(0) > event->size().height())
        scrollTo(currentIndex());
    if (event->size().width() != event->oldSize().width())
        layoutColumns();
    Q_EMIT viewportChanged();
}

void PluginTableView::scrollContentsBy(int dx, int dy)
{
    QTableView::scrollContentsBy(dx, dy);
    if (viewport()->underMouse())
        followPointer(viewport()->mapFromGlobal(QCursor::pos()));
    Q_EMIT viewportChanged();
}

} // namespace orvanlite
