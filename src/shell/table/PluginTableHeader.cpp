#include "shell/table/PluginTableHeader.h"

#include "shell/table/PluginTableView.h"
#include "shell/toolkit/AppTheme.h"
#include "shell/toolkit/Icons.h"
#include "shell/toolkit/KeyRepeat.h"

#include <QAccessibleWidget>
#include <QKeyEvent>
#include <QPainter>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr int kHeight = 30;
constexpr int kPadding = 10;
constexpr int kArrowSize = 12;
constexpr int kArrowGap = 4;

/// Exposes the focused title to screen readers, as a button that can be pressed.
class HeaderAccessible final : public QAccessibleWidget {
public:
    explicit HeaderAccessible(PluginTableHeader* header)
        : QAccessibleWidget(header, QAccessible::ButtonMenu)
    {}

    [[nodiscard]] QAccessibleInterface* parent() const override
    {
        return QAccessible::queryAccessibleInterface(widget()->parentWidget()->parentWidget());
    }
    [[nodiscard]] int childCount() const override { return 0; } // only scroll bars
    [[nodiscard]] QStringList actionNames() const override { return {pressAction()}; }
    void doAction(const QString& action) override
    {
        if (action == pressAction())
            static_cast<PluginTableHeader*>(widget())->sortByPicked();
    }
};

/// The widget that holds the table, with the header as its first child: tables know only their cells, and
/// screen readers ignore objects that their parent does not list.
class HolderAccessible final : public QAccessibleWidget {
public:
    HolderAccessible(QWidget* holder, PluginTableHeader* header)
        : QAccessibleWidget(holder)
        , m_header(header)
    {}

    [[nodiscard]] int childCount() const override { return QAccessibleWidget::childCount() + 1; }
    [[nodiscard]] QAccessibleInterface* child(int index) const override
    {
        return index == 0 ? QAccessible::queryAccessibleInterface(m_header)
                          : QAccessibleWidget::child(index - 1);
    }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override
    {
        const bool isHeader = child && child->object() == m_header;
        const int index = isHeader ? -1 : QAccessibleWidget::indexOfChild(child);
        return isHeader ? 0 : index < 0 ? -1 : index + 1;
    }

private:
    PluginTableHeader* m_header;
};

QAccessibleInterface* makeHeaderAccessible(const QString& className, QObject* object)
{
    // Called for every class from the object's own up to QObject.
    if (!object->isWidgetType() || className != QLatin1StringView(object->metaObject()->className()))
        return nullptr;
    if (auto* header = qobject_cast<PluginTableHeader*>(object))
        return new HeaderAccessible(header);
    const auto* table = object->findChild<PluginTableView*>({}, Qt::FindDirectChildrenOnly);
    return table ? new HolderAccessible(static_cast<QWidget*>(object), table->header()) : nullptr;
}

} // namespace

PluginTableHeader::PluginTableHeader(QWidget* parent)
    : QHeaderView(Qt::Horizontal, parent)
{
    static const bool isInstalled = (QAccessible::installFactory(makeHeaderAccessible), true);
    Q_UNUSED(isInstalled)
    setObjectName(u"pluginTableHeader"_s);
    setSectionsClickable(true);
    setHighlightSections(false);
    setSortIndicatorShown(false); // drawn in paintSection()
    setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    setMinimumSectionSize(64);
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setAutoFillBackground(false);
    connect(this, &QHeaderView::sectionClicked, this, [this](int column) {
        pick(column);
        sortByPicked();
    });
    connect(this, &QHeaderView::sortIndicatorChanged, this, [this] {
        viewport()->update();
        announce();
    });
}

QSize PluginTableHeader::sizeHint() const
{
    return {QHeaderView::sizeHint().width(), std::max(kHeight, fontMetrics().height() + kPadding)};
}

int PluginTableHeader::leastWidth(int column) const
{
    QFont strong = font();
    strong.setWeight(QFont::DemiBold);
    const QString title = model()->headerData(column, Qt::Horizontal).toString();
    return QFontMetrics(strong).horizontalAdvance(title) + 1 + kPadding + kPadding / 2 + kArrowSize +
           kArrowGap;
}

void PluginTableHeader::paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const
{
    if (!rect.isValid())
        return;
    painter->save();
    const bool isSorted = sortIndicatorSection() == logicalIndex;
    const QColor colour = isSorted ? AppTheme::primary(palette()) : AppTheme::secondary(palette());
    painter->setPen(AppTheme::separator(palette()));
    painter->drawLine(rect.bottomLeft(), rect.bottomRight());

    QFont titleFont = font();
    titleFont.setWeight(isSorted ? QFont::DemiBold : QFont::Medium);
    painter->setFont(titleFont);
    painter->setPen(colour);
    QRect label = rect.adjusted(kPadding, 0, -kPadding / 2, 0);
    if (isSorted)
        label.setRight(label.right() - kArrowSize - kArrowGap);
    const QFontMetrics metrics(titleFont);
    const QString title = model()->headerData(logicalIndex, Qt::Horizontal).toString();
    const QString shown = metrics.elidedText(title, Qt::ElideRight, label.width());
    painter->drawText(label, Qt::AlignLeft | Qt::AlignVCenter, shown);
    if (isSorted) {
        const QString arrow =
            sortIndicatorOrder() == Qt::AscendingOrder ? u"chevron.up"_s : u"chevron.down"_s;
        const QRectF arrowRect(label.left() + metrics.horizontalAdvance(shown) + kArrowGap,
                               rect.center().y() - kArrowSize / 2.0, kArrowSize, kArrowSize);
        drawIcon(*painter, arrowRect, arrow, colour);
    }
    if (hasFocus() && m_picked == logicalIndex) {
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(QPen(AppTheme::accent(palette()), 2));
        painter->drawRoundedRect(QRectF(rect).adjusted(3, 3, -3, -3), 4, 4);
    }
    painter->restore();
}

void PluginTableHeader::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Left:
        pick(m_picked - 1);
        break;
    case Qt::Key_Right:
        pick(m_picked + 1);
        break;
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (!KeyRepeat::isRepeat(*event))
            sortByPicked();
        break;
    default:
        // The base class would move a current cell, which a header does not have.
        event->ignore();
    }
}

void PluginTableHeader::sortByPicked() { Q_EMIT sortRequested(m_picked); }

void PluginTableHeader::pick(int column)
{
    // Hidden columns come last.
    m_picked = std::clamp(column, 0, std::max(0, count() - hiddenSectionCount() - 1));
    viewport()->update();
    announce();
}

void PluginTableHeader::announce()
{
    if (!model())
        return;
    const QString title = model()->headerData(m_picked, Qt::Horizontal).toString();
    QString name = u"Sort by "_s + title;
    if (sortIndicatorSection() == m_picked)
        name += sortIndicatorOrder() == Qt::AscendingOrder ? u", ascending"_s : u", descending"_s;
    setAccessibleName(name); // screen readers announce the change
}

void PluginTableHeader::focusInEvent(QFocusEvent* event)
{
    QHeaderView::focusInEvent(event);
    if (event->reason() != Qt::ActiveWindowFocusReason && event->reason() != Qt::PopupFocusReason)
        m_picked = std::clamp(sortIndicatorSection(), 0, std::max(0, count() - hiddenSectionCount() - 1));
    announce();
    viewport()->update();
}

void PluginTableHeader::focusOutEvent(QFocusEvent* event)
{
    QHeaderView::focusOutEvent(event);
    viewport()->update();
}

} // namespace orvanlite
