#pragma once

#include "model/AudioPlugin.h"
#include "shell/table/PluginColumns.h"

#include <QAbstractTableModel>
#include <QSet>
#include <QTimer>

#include <optional>

namespace orvanlite::platform {
class Clock;
}

namespace orvanlite {

/// Frees discarded rows in batches. Freeing 100,000 at once would stall typing.
class PluginLeftovers final {
public:
    PluginLeftovers();
    void take(AudioPlugins plugins);

private:
    void freeSome();

    std::vector<AudioPlugins> m_lists;
    QTimer m_timer;
};

/// The rows of the plugin table. Holds copies; does not query the catalogue.
class PluginTableModel final : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Role {
        IsFadedRole = Qt::UserRole, ///< bool: the value of the cell is unknown
        IconRole,                   ///< key of the icon in front of the text
        PreviewRole,                ///< int of PreviewState: none in the plain table
    };

    explicit PluginTableModel(const platform::Clock& clock, QObject* parent = nullptr);

    /// Replaces the rows. Rows with the same ids in the same order are updated in place; a longer or shorter
    /// list with the same beginning inserts or removes rows at the end; any other list resets the model.
    void setPlugins(const AudioPlugins& plugins);

    /// Shows the changes of a profile with these enabled keys, or the plain table if nullopt. In a preview
    /// the status cells describe the change instead of being switches, and manufacturers are not links.
    void setPreview(const std::optional<QSet<QString>>& enabledKeys);
    [[nodiscard]] bool isPreview() const { return m_previewKeys.has_value(); }
    [[nodiscard]] PreviewState previewState(const AudioPlugin& plugin) const;

    [[nodiscard]] const AudioPlugins& plugins() const { return m_plugins; }
    [[nodiscard]] const AudioPlugin& plugin(int row) const
    {
        return m_plugins[static_cast<std::size_t>(row)];
    }
    /// Row of the plugin with this original path, or -1.
    [[nodiscard]] int rowOf(const QString& originalPath) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    /// Setting the check state of a status cell emits toggleRequested(); the row changes once the toggle has
    /// succeeded.
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;

Q_SIGNALS:
    void toggleRequested(const orvanlite::AudioPlugin& plugin);
    /// A row was enabled or disabled by an update in place.
    void stateChanged(const QUuid& id, bool isEnabled);

private:
    [[nodiscard]] QString text(const AudioPlugin& plugin, const PluginColumnRow& column) const;
    [[nodiscard]] QString description(const AudioPlugin& plugin, const PluginColumnRow& column) const;
    [[nodiscard]] QVariant toolTip(const AudioPlugin& plugin, const PluginColumnRow& column) const;
    [[nodiscard]] std::size_t commonHead(const AudioPlugins& plugins) const;
    void changeInPlace(const AudioPlugins& plugins, std::size_t count);

    const platform::Clock& m_clock;
    AudioPlugins m_plugins;
    PluginLeftovers m_leftovers;
    std::optional<QSet<QString>> m_previewKeys;
};

} // namespace orvanlite
