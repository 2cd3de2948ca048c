#include "shell/bulk/BulkListAccessible.h"

#include "shell/bulk/BulkPluginList.h"

#include <algorithm>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

/// A row that is out of view and therefore has no widget.
class AbsentRow final : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    AbsentRow(QWidget& column, BulkPluginList& list, int position)
        : m_column(column)
        , m_list(list)
        , m_position(position)
    {}

    [[nodiscard]] int position() const { return m_position; }

    [[nodiscard]] bool isValid() const override { return m_position < m_list.rowCount(); }
    [[nodiscard]] QObject* object() const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* parent() const override
    {
        return QAccessible::queryAccessibleInterface(&m_column);
    }
    [[nodiscard]] QAccessibleInterface* child(int /*index*/) const override { return nullptr; }
    [[nodiscard]] int childCount() const override { return 0; }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* /*child*/) const override { return -1; }
    [[nodiscard]] QAccessibleInterface* childAt(int /*x*/, int /*y*/) const override { return nullptr; }

    [[nodiscard]] QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Name ? m_list.rowName(m_position) : QString();
    }
    void setText(QAccessible::Text /*kind*/, const QString& /*text*/) override {}
    [[nodiscard]] QRect rect() const override
    {
        const QRect row = m_list.rowRect(m_position);
        return {m_column.mapToGlobal(row.topLeft()), row.size()};
    }
    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::ListItem; }
    [[nodiscard]] QAccessible::State state() const override
    {
        QAccessible::State state;
        state.focusable = true;
        state.selectable = true;
        state.selected = m_list.isRowMarked(m_position);
        state.offscreen = true;
        state.invisible = !m_column.isVisible();
        return state;
    }

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                    : nullptr;
    }
    [[nodiscard]] QStringList actionNames() const override { return {toggleAction(), setFocusAction()}; }
    void doAction(const QString& action) override
    {
        if (action == toggleAction())
            Q_EMIT m_list.nameClicked(m_list.rowName(m_position));
        else if (action == setFocusAction())
            m_list.focusRow(m_position);
    }
    [[nodiscard]] QStringList keyBindingsForAction(const QString& /*action*/) const override { return {}; }

private:
    QWidget& m_column;
    BulkPluginList& m_list;
    int m_position;
};

QAccessibleInterface* makeAccessible(const QString& className, QObject* object)
{
    if (className != "QWidget"_L1 ||
        object->objectName() != QLatin1StringView(BulkListAccessible::kColumnName))
        return nullptr;
    auto* column = static_cast<QWidget*>(object);
    for (QWidget* each = column->parentWidget(); each; each = each->parentWidget()) {
        if (auto* list = qobject_cast<BulkPluginList*>(each))
            return new BulkListAccessible(column, *list);
    }
    return nullptr;
}

} // namespace

BulkListAccessible::BulkListAccessible(QWidget* column, BulkPluginList& list)
    : QAccessibleWidget(column, QAccessible::List)
    , m_list(list)
{}

BulkListAccessible::~BulkListAccessible() { reload(); }

void BulkListAccessible::install()
{
    static const bool isInstalled = (QAccessible::installFactory(makeAccessible), true);
    Q_UNUSED(isInstalled)
}

void BulkListAccessible::reload()
{
    for (const QAccessible::Id id : m_absentRows) {
        if (id != 0)
            QAccessible::deleteAccessibleInterface(id);
    }
    m_absentRows.clear();
}

int BulkListAccessible::childCount() const { return m_list.rowCount(); }

QAccessibleInterface* BulkListAccessible::child(int index) const
{
    if (index < 0 || index >= childCount())
        return nullptr;
    if (QWidget* row = m_list.builtRow(index))
        return QAccessible::queryAccessibleInterface(row);
    // Never shorter: reload() deletes the rows that are gone.
    m_absentRows.resize(std::max(m_absentRows.size(), static_cast<std::size_t>(childCount())));
    QAccessible::Id& id = m_absentRows[static_cast<std::size_t>(index)];
    if (id == 0)
        id = QAccessible::registerAccessibleInterface(new AbsentRow(*widget(), m_list, index));
    return QAccessible::accessibleInterface(id);
}

int BulkListAccessible::indexOfChild(const QAccessibleInterface* child) const
{
    if (const auto* absent = dynamic_cast<const AbsentRow*>(child))
        return absent->position();
    const auto* row = child ? qobject_cast<BulkPluginRow*>(child->object()) : nullptr;
    return row ? m_list.positionOf(*row) : -1;
}

QAccessibleInterface* BulkListAccessible::childAt(int x, int y) const
{
    const QPoint place = widget()->mapFromGlobal(QPoint(x, y));
    return widget()->rect().contains(place) ? child(m_list.positionAt(place.y())) : nullptr;
}

} // namespace orvanlite
