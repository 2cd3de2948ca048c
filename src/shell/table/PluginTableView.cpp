#include "shell/table/PluginTableView.h"

#include "shell/table/PluginTableDelegate.h"
#include "shell/table/PluginTableHeader.h"
#include "shell/table/PluginTableModel.h"
#include "shell/toolkit/Announce.h"
#include "shell/toolkit/KeyRepeat.h"
#include "shell/toolkit/RelativeFont.h"
#include "shell/toolkit/ThinScrollBar.h"

#include <QApplication>
#include <QKeyEvent>
#include <QProxyStyle>
#include <QScopedValueRollback>
#include <QScrollBar>

#include <algorithm>
#include <numeric>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

/// Leaves the row background to the delegate.
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

PluginTableView::PluginTableView(PluginTableModel& model, QWidget* parent)
    : QTableView(parent)
    , m_model(model)
    , m_delegate(new PluginTableDelegate(model, this))
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
    // Painted only when needed, but always reserved so that the columns keep their width.
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setCornerWidget(new QWidget(this));
    setCornerButtonEnabled(false);
    setVerticalScrollBar(new ThinScrollBar(Qt::Vertical, this));
    setHorizontalScrollBar(new ThinScrollBar(Qt::Horizontal, this));
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(PluginTableDelegate::rowHeight(fontMetrics()));
    m_header->setStretchLastSection(false);
    for (std::size_t i = 0; i < kPluginColumns.size(); ++i) {
        m_shares[i] = kPluginColumns[i].share;
        m_previewShares[i] = kPluginColumns[i].previewShare;
    }
    viewport()->setAutoFillBackground(false);

    connect(m_header, &QHeaderView::sectionResized, this, [this] { takeOverShares(); });
    connect(&model, &PluginTableModel::stateChanged, m_delegate, &PluginTableDelegate::animateSwitch);
    connect(m_delegate, &PluginTableDelegate::needsRepaint, viewport(), qOverload<>(&QWidget::update));
    connect(m_delegate, &PluginTableDelegate::linkActivated, this, &PluginTableView::linkActivated);
    onFontChange(this, [this] {
        verticalHeader()->setDefaultSectionSize(PluginTableDelegate::rowHeight(fontMetrics()));
        layoutColumns();
    });
}

bool PluginTableView::showsLastRow() const
{
    const int last = m_model.rowCount() - 1;
    return last >= 0 && rowViewportPosition(last) < viewport()->height();
}

void PluginTableView::keyPressEvent(QKeyEvent* event)
{
    showKeyboardFocus(true);
    if (actOnCurrentRow(*event) || moveCurrentRow(*event))
        return;
    const QScopedValueRollback goesByCells(m_goesByCells, true);
    QTableView::keyPressEvent(event);
}

bool PluginTableView::actOnCurrentRow(const QKeyEvent& event)
{
    const QModelIndex current = currentIndex();
    switch (event.key()) {
    case Qt::Key_Space:
        // Key repeat must not move files back and forth.
        if (!current.isValid() || KeyRepeat::isRepeat(event))
            return true;
        if (isTypingName() && event.modifiers() == Qt::NoModifier) {
            keyboardSearch(event.text());
            return true;
        }
        if (event.modifiers() & (Qt::ShiftModifier | Qt::ControlModifier)) {
            selectionModel()->select(current, QItemSelectionModel::Toggle | QItemSelectionModel::Rows);
        } else {
            const QModelIndex status = current.siblingAtColumn(static_cast<int>(PluginColumn::status));
            const bool isOn = status.data(Qt::CheckStateRole).toInt() == Qt::Checked;
            m_model.setData(status, isOn ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
        }
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (!KeyRepeat::isRepeat(event) && current.column() == static_cast<int>(PluginColumn::manufacturer) &&
            !current.data(PluginTableModel::IsFadedRole).toBool())
            Q_EMIT linkActivated(current);
        return true;
    case Qt::Key_F10:
        if (!(event.modifiers() & Qt::ShiftModifier))
            return false;
        Q_EMIT customContextMenuRequested(visualRect(current).center());
        return true;
    default:
        return false;
    }
}

bool PluginTableView::moveCurrentRow(const QKeyEvent& event)
{
    if (event.key() != Qt::Key_Up && event.key() != Qt::Key_Down)
        return false;
    const bool isUp = event.key() == Qt::Key_Up;
    const int last = m_model.rowCount() - 1;
    const int row = currentIndex().row();
    if (event.modifiers() & Qt::ControlModifier) {
        goToRow(isUp ? 0 : last, event.modifiers());
        return true;
    }
    if (event.modifiers() & Qt::AltModifier) {
        // Moves the current row without selecting it.
        if (last >= 0) {
            const int target = std::clamp(m_isCurrentFromFocus ? row : row + (isUp ? -1 : 1), 0, last);
            m_isCurrentFromFocus = false;
            selectionModel()->setCurrentIndex(m_model.index(target, std::max(0, currentIndex().column())),
                                              QItemSelectionModel::NoUpdate);
        }
        return true;
    }
    if (m_isCurrentFromFocus) {
        // The first key press selects the row with the focus ring; otherwise it could not be selected alone.
        goToRow(row, Qt::NoModifier);
        return true;
    }
    return false;
}

void PluginTableView::goToRow(int row, Qt::KeyboardModifiers modifiers)
{
    if (row < 0)
        return;
    m_isCurrentFromFocus = false;
    const QModelIndex target = m_model.index(row, std::max(0, currentIndex().column()));
    if ((modifiers & Qt::ShiftModifier) && currentIndex().isValid()) {
        const QItemSelection span(m_model.index(std::min(row, currentIndex().row()), 0),
                                  m_model.index(std::max(row, currentIndex().row()), kPluginColumnCount - 1));
        selectionModel()->select(span, QItemSelectionModel::Select);
        selectionModel()->setCurrentIndex(target, QItemSelectionModel::NoUpdate);
    } else {
        // Not the setCurrentIndex() of the view: with Control held it would toggle the selection.
        selectionModel()->setCurrentIndex(target,
                                          QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    }
    scrollTo(target);
}

bool PluginTableView::isTypingName() const
{
    return m_sinceTyped.isValid() && !m_sinceTyped.hasExpired(QApplication::keyboardInputInterval());
}

void PluginTableView::keyboardSearch(const QString& letters)
{
    // The base class would search the current column, and select the row, which adds it to the bulk pane.
    const bool continues = isTypingName();
    m_sinceTyped.start();
    const bool repeats = continues && m_typed == letters;
    if (!repeats)
        m_typed = continues ? m_typed + letters : letters;
    // A new or repeated letter goes on to the next name; further letters may keep the row.
    const int next = currentIndex().row() + (continues && !repeats ? 0 : 1);
    if (goToName(m_typed, next))
        return;
    Q_EMIT nameNotFound();
    goToName(m_typed, next);
}

bool PluginTableView::goToName(const QString& start, int firstRow)
{
    const int rows = m_model.rowCount();
    for (int i = 0; i < rows; ++i) {
        const int row = (std::max(0, firstRow) + i) % rows;
        if (!m_model.plugin(row).name.startsWith(start, Qt::CaseInsensitive))
            continue;
        m_isCurrentFromFocus = false;
        const QModelIndex found = m_model.index(row, std::max(0, currentIndex().column()));
        selectionModel()->setCurrentIndex(found, QItemSelectionModel::NoUpdate);
        scrollTo(found);
        return true;
    }
    return false;
}

void PluginTableView::scrollTo(const QModelIndex& index, ScrollHint hint)
{
    const int left = horizontalScrollBar()->value();
    QTableView::scrollTo(index, hint);
    // Scroll vertically only, except for keys that move between cells: a click must not scroll sideways.
    if (!m_goesByCells)
        horizontalScrollBar()->setValue(left);
}

void PluginTableView::keepACurrentRow()
{
    if (!hasFocus() || currentIndex().isValid() || m_model.rowCount() == 0)
        return;
    selectionModel()->setCurrentIndex(m_model.index(0, 0), QItemSelectionModel::NoUpdate);
    m_isCurrentFromFocus = true;
}

void PluginTableView::startOver()
{
    // Reloads preserve the scroll position and the current row; a reset discards them.
    selectionModel()->clearCurrentIndex();
    verticalScrollBar()->setValue(0);
    horizontalScrollBar()->setValue(0);
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
    const bool hadCurrent = currentIndex().isValid();
    QTableView::focusInEvent(event);
    m_isCurrentFromFocus = !hadCurrent && currentIndex().isValid();
    showKeyboardFocus(event->reason() != Qt::MouseFocusReason);
    announceCurrentRow(this);
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
    m_isCurrentFromFocus = false;
    viewport()->update(); // the focus ring spans all cells of the row
}

void PluginTableView::mousePressEvent(QMouseEvent* event)
{
    showKeyboardFocus(false);
    m_isCurrentFromFocus = false;
    QTableView::mousePressEvent(event);
}

void PluginTableView::mouseDoubleClickEvent(QMouseEvent* event)
{
    // A double click on a switch counts as two clicks.
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
    for (int column = 0; column < kPluginColumnCount; ++column)
        setColumnHidden(column, !pluginColumn(column).isShown(m_model.isPreview()));
    layoutColumns();
}

int PluginTableView::leastWidth(int column) const
{
    return std::max(m_header->leastWidth(column), m_delegate->leastWidth(pluginColumn(column), font()));
}

void PluginTableView::layoutColumns()
{
    m_isLayingOut = true;
    const auto isShown = [this](int column) { return pluginColumn(column).isShown(m_model.isPreview()); };
    std::array<int, kPluginColumnCount> least{};
    for (int column = 0; column < kPluginColumnCount; ++column)
        least[static_cast<std::size_t>(column)] = isShown(column) ? leastWidth(column) : 0;
    // If the window is too narrow, the table scrolls horizontally.
    const int width = std::max(viewport()->width(), std::accumulate(least.begin(), least.end(), 0));
    std::array<int, kPluginColumnCount> widths{};
    int spare = width;
    for (std::size_t column = 0; column < least.size(); ++column) {
        widths[column] = std::max(least[column], static_cast<int>(width * shares()[column]));
        spare -= widths[column];
    }
    // Width that columns get beyond their shares is taken from the two with long texts; spare width goes to
    // them.
    auto& name = widths[static_cast<std::size_t>(PluginColumn::name)];
    auto& manufacturer = widths[static_cast<std::size_t>(PluginColumn::manufacturer)];
    const int leastManufacturer = least[static_cast<std::size_t>(PluginColumn::manufacturer)];
    const int forManufacturer = std::max(leastManufacturer - manufacturer, spare * 2 / 5);
    manufacturer += forManufacturer;
    name += spare - forManufacturer;
    for (int column = 0; column < kPluginColumnCount; ++column) {
        if (isShown(column))
            m_header->resizeSection(column, widths[static_cast<std::size_t>(column)]);
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
    // Anything that shrinks the table within the window, such as the bulk pane, must not hide the row just
    // selected. Shrinking the window may.
    const QSize windowSize = window()->size();
    if (windowSize == m_windowSize)
        keepCurrentRowInSight(event->oldSize().height(), event->size().height());
    m_windowSize = windowSize;
    if (event->size().width() != event->oldSize().width())
        layoutColumns();
    Q_EMIT viewportChanged();
}

void PluginTableView::keepCurrentRowInSight(int oldHeight, int newHeight)
{
    const int current = currentIndex().isValid() ? rowViewportPosition(currentIndex().row()) : -1;
    if (current >= 0 && current < oldHeight && current + rowHeight(0) > newHeight)
        scrollTo(currentIndex());
}

void PluginTableView::scrollContentsBy(int dx, int dy)
{
    QTableView::scrollContentsBy(dx, dy);
    if (viewport()->underMouse())
        followPointer(viewport()->mapFromGlobal(QCursor::pos()));
    Q_EMIT viewportChanged();
}

} // namespace orvanlite
