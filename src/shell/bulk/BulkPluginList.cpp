#include "shell/bulk/BulkPluginList.h"

#include "operations/BulkSelection.h"
#include "shell/bulk/BulkListAccessible.h"
#include "shell/toolkit/Motion.h"
#include "shell/toolkit/ThinScrollBar.h"

#include <QApplication>
#include <QEvent>
#include <QScopedValueRollback>

#include <algorithm>
#include <utility>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr int kPaddingX = 8;
constexpr int kPaddingY = 4;
constexpr int kSmallestHeight = 40;
constexpr int kSpacing = 3;
constexpr int kScrollMilliseconds = 350;
constexpr int kWheelStep = 20;

static_assert(kPaddingX == BulkPluginRow::kBleedX, "a highlighted row grows into the padding");

} // namespace

BulkPluginList::BulkPluginList(const BulkSelection& selection, const QSet<QString>& selectedNames,
                               QWidget* parent)
    : QScrollArea(parent)
    , m_selection(selection)
    , m_selectedNames(selectedNames)
    , m_column(new QWidget)
    , m_scrolling(new Glide(0, kScrollMilliseconds, this,
                            [this] { verticalScrollBar()->setValue(qRound(m_scrolling->value())); }))
{
    BulkListAccessible::install();
    setObjectName(u"bulkPluginList"_s);
    setFocusPolicy(Qt::NoFocus);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBar(new ThinScrollBar(Qt::Vertical, this));
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn); // paints nothing when there is nothing to scroll
    verticalScrollBar()->setSingleStep(kWheelStep);
    m_column->setObjectName(QLatin1StringView(BulkListAccessible::kColumnName));
    setWidget(m_column);
    m_column->setAccessibleName(u"Selected plugins"_s);
    m_column->setAutoFillBackground(false);
    viewport()->setAutoFillBackground(false);
    m_rowLayout.setFont(font());

    m_scrolling->setEasingCurve(QEasingCurve::OutCubic);
    connect(verticalScrollBar(), &QAbstractSlider::valueChanged, this, [this] { buildRows(); });
    // Scrolling by the user takes precedence.
    connect(verticalScrollBar(), &QAbstractSlider::actionTriggered, m_scrolling, &QAbstractAnimation::stop);
}

const std::vector<ConsolidatedPlugin>& BulkPluginList::plugins() const
{
    return *m_selection.consolidatedBulkPlugins;
}

void BulkPluginList::reload()
{
    QSet<QString> names;
    names.reserve(static_cast<qsizetype>(plugins().size()));
    for (const ConsolidatedPlugin& plugin : plugins())
        names.insert(plugin.name);
    m_seenNames.intersect(names); // a name that comes back is highlighted again

    const bool hasGrown = plugins().size() > std::exchange(m_previousCount, plugins().size());
    const auto current =
        std::find_if(plugins().begin(), plugins().end(),
                     [this](const ConsolidatedPlugin& each) { return each.name == m_currentName; });
    if (current != plugins().end())
        m_currentIndex = static_cast<std::size_t>(current - plugins().begin());
    m_currentIndex = plugins().empty() ? 0 : std::min(m_currentIndex, plugins().size() - 1);
    m_currentName = plugins().empty() ? QString() : plugins()[m_currentIndex].name;
    layOut();
    if (auto* spoken = QAccessible::isActive() ? dynamic_cast<BulkListAccessible*>(
                                                     QAccessible::queryAccessibleInterface(m_column))
                                               : nullptr)
        spoken->reload();
    if (hasGrown)
        scrollToLast();
}

void BulkPluginList::layOut()
{
    const int width = viewport()->width() - 2 * kPaddingX;
    m_tops.clear();
    m_tops.reserve(plugins().size() + 1);
    int top = kPaddingY;
    for (const ConsolidatedPlugin& plugin : plugins()) {
        m_tops.push_back(top);
        top += m_rowLayout.places(plugin, width).height + kSpacing;
    }
    m_tops.push_back(top);
    {
        // The new height may move the scroll bar, which must not build the rows twice.
        const QScopedValueRollback building(m_isBuilding, true);
        m_column->resize(viewport()->width(), plugins().empty() ? 0 : top - kSpacing + kPaddingY);
        if (m_isAtLastWanted)
            verticalScrollBar()->setValue(verticalScrollBar()->maximum());
    }
    buildRows();
}

std::size_t BulkPluginList::rowAt(int y) const
{
    const auto below = std::upper_bound(m_tops.begin(), m_tops.end() - 1, y);
    return below == m_tops.begin() ? 0 : static_cast<std::size_t>(below - m_tops.begin()) - 1;
}

void BulkPluginList::renderRows(bool isAnimated) { buildRows(isAnimated); }

void BulkPluginList::buildRows(bool isAnimated)
{
    if (m_isBuilding || !isVisible() || m_tops.size() != plugins().size() + 1)
        return;
    const QWidget* focus = QApplication::focusWidget();
    const bool hadFocus = focus && m_column->isAncestorOf(focus);
    {
        const QScopedValueRollback building(m_isBuilding, true);
        std::vector<std::size_t> wanted;
        if (!plugins().empty()) {
            const int top = verticalScrollBar()->value();
            const std::size_t last = rowAt(top + viewport()->height() - 1);
            for (std::size_t index = rowAt(top); index <= last; ++index)
                wanted.push_back(index);
            if (m_currentIndex < wanted.front() || m_currentIndex > last)
                wanted.push_back(m_currentIndex); // reachable by Tab
        }
        QHash<QString, BulkPluginRow*> rows;
        for (const std::size_t index : wanted) {
            const QString& name = plugins()[index].name;
            if (BulkPluginRow* row = m_rows.take(name))
                rows.insert(name, row);
        }
        for (BulkPluginRow* row : std::as_const(m_rows))
            m_spares.push_back(row);
        m_rows = std::move(rows);
        for (const std::size_t index : wanted) {
            BulkPluginRow*& row = m_rows[plugins()[index].name];
            if (!row)
                row = freeRow(m_spares);
            placeRow(*row, index, isAnimated);
        }
        for (BulkPluginRow* row : m_spares)
            row->hide();
    }
    if (hadFocus)
        restoreFocus();
}

BulkPluginRow* BulkPluginList::freeRow(std::vector<BulkPluginRow*>& unused)
{
    if (!unused.empty()) {
        BulkPluginRow* row = unused.back();
        unused.pop_back();
        return row;
    }
    auto* row = new BulkPluginRow(m_rowLayout, m_rowCount++, m_column);
    connect(row, &QAbstractButton::clicked, this, [this, row] { Q_EMIT nameClicked(row->pluginName()); });
    connect(row, &BulkPluginRow::variantClicked, this, &BulkPluginList::variantClicked);
    connect(row, &BulkPluginRow::moveRequested, this, &BulkPluginList::moveCurrent);
    connect(row, &BulkPluginRow::focused, this, [this, row] {
        if (!m_isBuilding)
            makeCurrent(row->pluginName());
    });
    return row;
}

void BulkPluginList::placeRow(BulkPluginRow& row, std::size_t index, bool isAnimated)
{
    const ConsolidatedPlugin& plugin = plugins()[index];
    const int height = m_tops[index + 1] - m_tops[index] - kSpacing;
    row.setGeometry(kPaddingX - BulkPluginRow::kBleedX, m_tops[index] - BulkPluginRow::kBleedY,
                    viewport()->width() - 2 * (kPaddingX - BulkPluginRow::kBleedX),
                    height + 2 * BulkPluginRow::kBleedY);
    row.showPlugin(plugin, *m_selection.bulkActiveVariants, m_selectedNames.contains(plugin.name),
                   isAnimated);
    row.setCurrent(index == m_currentIndex);
    row.show();
    const int top = m_tops[index] - verticalScrollBar()->value();
    const bool isInView = top < viewport()->height() && top + height > 0;
    if (isInView && !m_seenNames.contains(plugin.name)) {
        m_seenNames.insert(plugin.name);
        row.highlight();
    }
}

void BulkPluginList::setPreferredHeight(int height)
{
    m_preferredHeight = height;
    updateGeometry();
}

QSize BulkPluginList::sizeHint() const
{
    return {QAbstractScrollArea::sizeHint().width(), m_preferredHeight};
}

QSize BulkPluginList::minimumSizeHint() const { return {0, std::min(m_preferredHeight, kSmallestHeight)}; }

void BulkPluginList::focusCurrentRow()
{
    if (plugins().empty())
        return;
    if (BulkPluginRow* row = m_rows.value(m_currentName))
        row->setFocus(Qt::OtherFocusReason);
    else
        moveCurrent(Qt::Key_Home);
}

void BulkPluginList::restoreFocus()
{
    BulkPluginRow* row = m_rows.value(m_currentName);
    const QWidget* focus = QApplication::focusWidget();
    if (row && row != focus && !row->isAncestorOf(focus))
        row->setFocus(Qt::OtherFocusReason);
}

std::vector<BulkPluginRow*> BulkPluginList::builtRows() const
{
    std::vector<BulkPluginRow*> rows(m_rows.begin(), m_rows.end());
    std::sort(rows.begin(), rows.end(),
              [](const QWidget* left, const QWidget* right) { return left->y() < right->y(); });
    return rows;
}

void BulkPluginList::makeCurrent(const QString& name)
{
    const auto found = std::find_if(plugins().begin(), plugins().end(),
                                    [&name](const ConsolidatedPlugin& each) { return each.name == name; });
    if (found == plugins().end() || name == m_currentName)
        return;
    m_currentName = name;
    m_currentIndex = static_cast<std::size_t>(found - plugins().begin());
    for (BulkPluginRow* row : std::as_const(m_rows))
        row->setCurrent(row->pluginName() == name);
}

void BulkPluginList::moveCurrent(int key)
{
    if (plugins().empty() || m_tops.size() != plugins().size() + 1)
        return;
    const std::size_t last = plugins().size() - 1;
    const int page = viewport()->height();
    std::size_t target = m_currentIndex;
    switch (key) {
    case Qt::Key_Up:
        target = target > 0 ? target - 1 : 0;
        break;
    case Qt::Key_Down:
        target = std::min(target + 1, last);
        break;
    case Qt::Key_PageUp:
        target = std::min(target > 0 ? target - 1 : 0, rowAt(m_tops[target] - page));
        break;
    case Qt::Key_PageDown:
        target = std::min(std::max(target + 1, rowAt(m_tops[target] + page)), last);
        break;
    case Qt::Key_Home:
        target = 0;
        break;
    default:
        target = last;
        break;
    }
    focusRow(static_cast<int>(target));
}

void BulkPluginList::focusRow(int position)
{
    if (position < 0 || position >= rowCount() || m_tops.size() != plugins().size() + 1)
        return;
    m_currentIndex = static_cast<std::size_t>(position);
    m_currentName = plugins()[m_currentIndex].name;
    scrollTo(m_currentIndex);
    buildRows();
    if (BulkPluginRow* row = m_rows.value(m_currentName))
        row->setFocus(Qt::OtherFocusReason);
}

QString BulkPluginList::rowName(int position) const
{
    return position >= 0 && position < rowCount() ? plugins()[static_cast<std::size_t>(position)].name
                                                  : QString();
}

bool BulkPluginList::isRowMarked(int position) const { return m_selectedNames.contains(rowName(position)); }

QRect BulkPluginList::rowRect(int position) const
{
    const auto index = static_cast<std::size_t>(position);
    if (index + 1 >= m_tops.size())
        return {};
    return {kPaddingX, m_tops[index], viewport()->width() - 2 * kPaddingX,
            m_tops[index + 1] - m_tops[index] - kSpacing};
}

BulkPluginRow* BulkPluginList::builtRow(int position) const { return m_rows.value(rowName(position)); }

int BulkPluginList::positionOf(const BulkPluginRow& row) const
{
    if (m_rows.value(row.pluginName()) != &row)
        return -1;
    const int position = positionAt(row.geometry().center().y());
    return rowName(position) == row.pluginName() ? position : -1;
}

void BulkPluginList::scrollTo(std::size_t index)
{
    m_scrolling->stop();
    const int top = m_tops[index] - kPaddingY;
    const int bottom = m_tops[index + 1] - kSpacing + kPaddingY - viewport()->height();
    const int value = verticalScrollBar()->value();
    if (value > top)
        verticalScrollBar()->setValue(top);
    else if (value < bottom)
        verticalScrollBar()->setValue(bottom);
}

void BulkPluginList::scrollToLast()
{
    m_scrolling->stop();
    m_isAtLastWanted = !isVisible();
    m_scrolling->glideFrom(verticalScrollBar()->value(), verticalScrollBar()->maximum());
}

void BulkPluginList::resizeEvent(QResizeEvent* event)
{
    QScrollArea::resizeEvent(event);
    verticalScrollBar()->setPageStep(viewport()->height());
    layOut();
}

void BulkPluginList::showEvent(QShowEvent* event)
{
    QScrollArea::showEvent(event);
    layOut();
    m_isAtLastWanted = false;
}

void BulkPluginList::changeEvent(QEvent* event)
{
    QScrollArea::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        m_rowLayout.setFont(font());
        layOut();
    }
}

} // namespace orvanlite
