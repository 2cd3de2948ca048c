#include "shell/table/PluginTableModel.h"

#include "platform/Clock.h"
#include "shell/toolkit/Icons.h"
#include "shell/toolkit/ToolTips.h"

#include <algorithm>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

QString previewIcon(PreviewState state)
{
    static const std::array keys{QString(), u"arrow.up.circle.fill"_s, u"arrow.down.circle.fill"_s,
                                 u"checkmark.circle.fill"_s, u"xmark.circle.fill"_s};
    return keys[static_cast<std::size_t>(state)];
}

/// Small enough to be freed within a frame.
constexpr std::size_t kFreedAtOnce = 4000;

} // namespace

PluginLeftovers::PluginLeftovers()
{
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { freeSome(); });
}

void PluginLeftovers::take(AudioPlugins plugins)
{
    if (plugins.size() <= kFreedAtOnce)
        return;
    m_lists.push_back(std::move(plugins));
    m_timer.start(0);
}

void PluginLeftovers::freeSome()
{
    AudioPlugins& list = m_lists.back();
    list.erase(list.end() - static_cast<std::ptrdiff_t>(std::min(list.size(), kFreedAtOnce)), list.end());
    if (list.empty())
        m_lists.pop_back();
    if (m_lists.empty())
        m_timer.stop();
}

PluginTableModel::PluginTableModel(const platform::Clock& clock, QObject* parent)
    : QAbstractTableModel(parent)
    , m_clock(clock)
{}

std::size_t PluginTableModel::commonHead(const AudioPlugins& plugins) const
{
    const std::size_t shorter = std::min(plugins.size(), m_plugins.size());
    for (std::size_t i = 0; i < shorter; ++i) {
        if (plugins[i].id != m_plugins[i].id)
            return i;
    }
    return shorter;
}

void PluginTableModel::setPlugins(const AudioPlugins& plugins)
{
    const std::size_t oldCount = m_plugins.size();
    const std::size_t head = commonHead(plugins);
    if (head < std::min(oldCount, plugins.size()) || head == 0) {
        if (oldCount == 0 && plugins.empty())
            return;
        beginResetModel();
        m_leftovers.take(std::exchange(m_plugins, plugins));
        endResetModel();
        return;
    }
    changeInPlace(plugins, head);
    if (plugins.size() > oldCount) {
        beginInsertRows({}, static_cast<int>(oldCount), static_cast<int>(plugins.size()) - 1);
        m_plugins.insert(m_plugins.end(), plugins.begin() + static_cast<std::ptrdiff_t>(oldCount),
                         plugins.end());
        endInsertRows();
    } else if (plugins.size() < oldCount) {
        beginRemoveRows({}, static_cast<int>(plugins.size()), static_cast<int>(oldCount) - 1);
        const auto tail = m_plugins.begin() + static_cast<std::ptrdiff_t>(plugins.size());
        m_leftovers.take({std::make_move_iterator(tail), std::make_move_iterator(m_plugins.end())});
        m_plugins.erase(tail, m_plugins.end());
        endRemoveRows();
    }
}

void PluginTableModel::changeInPlace(const AudioPlugins& plugins, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i) {
        AudioPlugin& row = m_plugins[i];
        if (row == plugins[i])
            continue;
        const bool switched = row.isEnabled != plugins[i].isEnabled;
        row = plugins[i];
        const int number = static_cast<int>(i);
        // No list of roles, so that screen readers are notified of the check state as well as the text.
        Q_EMIT dataChanged(index(number, 0), index(number, kPluginColumnCount - 1));
        if (switched)
            Q_EMIT stateChanged(row.id, row.isEnabled);
    }
}

void PluginTableModel::setPreview(const std::optional<QSet<QString>>& enabledKeys)
{
    if (m_previewKeys == enabledKeys)
        return;
    m_previewKeys = enabledKeys;
    if (!m_plugins.empty())
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, kPluginColumnCount - 1));
}

PreviewState PluginTableModel::previewState(const AudioPlugin& plugin) const
{
    if (!m_previewKeys)
        return PreviewState::none;
    const bool isTarget = m_previewKeys->contains(pluginKey(plugin.name, plugin.format));
    if (isTarget == plugin.isEnabled)
        return isTarget ? PreviewState::staysEnabled : PreviewState::staysDisabled;
    return isTarget ? PreviewState::willEnable : PreviewState::willDisable;
}

int PluginTableModel::rowOf(const QString& originalPath) const
{
    const auto found = std::find_if(m_plugins.begin(), m_plugins.end(), [&](const AudioPlugin& each) {
        return each.originalPath == originalPath;
    });
    return found == m_plugins.end() ? -1 : static_cast<int>(found - m_plugins.begin());
}

int PluginTableModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_plugins.size());
}

int PluginTableModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : kPluginColumnCount;
}

QString PluginTableModel::text(const AudioPlugin& plugin, const PluginColumnRow& column) const
{
    return column.text(plugin, previewState(plugin), Date::fromUnix(m_clock.now()));
}

QString PluginTableModel::description(const AudioPlugin& plugin, const PluginColumnRow& column) const
{
    return column.description ? column.description(plugin, previewState(plugin)) : QString();
}

QVariant PluginTableModel::toolTip(const AudioPlugin& plugin, const PluginColumnRow& column) const
{
    switch (column.cell) {
    case PluginCell::status:
        return {};
    case PluginCell::title: // may be elided
        return plainToolTip(text(plugin, column) + u'\n' + description(plugin, column));
    default:
        return plainToolTip(description(plugin, column));
    }
}

QVariant PluginTableModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    const AudioPlugin& row = plugin(index.row());
    const PluginColumnRow& column = pluginColumn(index.column());
    const bool isSwitch = column.cell == PluginCell::status && !isPreview();
    switch (role) {
    case Qt::DisplayRole:
        return isSwitch ? QVariant() : text(row, column);
    case Qt::AccessibleTextRole:
        return text(row, column);
    case Qt::AccessibleDescriptionRole:
        return description(row, column);
    case Qt::ToolTipRole:
        return toolTip(row, column);
    case Qt::CheckStateRole:
        if (isSwitch)
            return row.isEnabled ? Qt::Checked : Qt::Unchecked;
        return {};
    case IsFadedRole:
        return column.isUnknown && column.isUnknown(row);
    case IconRole:
        if (column.cell == PluginCell::status && isPreview())
            return previewIcon(previewState(row));
        return column.cell == PluginCell::badge ? formatIcon(row.format) : QVariant();
    case PreviewRole:
        return static_cast<int>(previewState(row));
    default:
        return {};
    }
}

bool PluginTableModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (isPreview() || role != Qt::CheckStateRole || index.column() != static_cast<int>(PluginColumn::status))
        return false;
    const AudioPlugin row = plugin(index.row());
    if (row.isEnabled == (value.toInt() == Qt::Checked))
        return false;
    Q_EMIT toggleRequested(row);
    return true;
}

QVariant PluginTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= kPluginColumnCount)
        return {};
    if (role == Qt::TextAlignmentRole)
        return QVariant(Qt::AlignLeft | Qt::AlignVCenter);
    return role == Qt::DisplayRole ? pluginColumn(section).title.toString() : QVariant();
}

Qt::ItemFlags PluginTableModel::flags(const QModelIndex& index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    const Qt::ItemFlags flags = Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemNeverHasChildren;
    const bool isSwitch = index.column() == static_cast<int>(PluginColumn::status) && !isPreview();
    return isSwitch ? flags | Qt::ItemIsUserCheckable : flags;
}

} // namespace orvanlite
