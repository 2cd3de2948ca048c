#pragma once

#include "model/AudioPlugin.h"
#include "model/ConsolidatedPlugin.h"
#include "model/DeferredObservable.h"
#include "model/Observable.h"
#include "model/PluginKeyTransfer.h"

#include <QSet>

#include <functional>

class QObject;

namespace orvanlite {

class PluginDatabase;
struct PluginFilter;

/// The selection across filters and pages, and its content grouped by name for the bulk pane, where
/// individual variants can be switched off. Holds ids; records are read from the catalogue when needed.
class BulkSelection {
public:
    /// Observes its own values until `context` is destroyed.
    BulkSelection(const PluginDatabase& database, QObject* context);
    BulkSelection(const BulkSelection&) = delete;
    BulkSelection& operator=(const BulkSelection&) = delete;

    /// The actual selection. Keeps ids of rows that are filtered out, not loaded or removed by a scan.
    QSet<QUuid> persistedSelections;
    /// The rows selected in the table; only loaded ones.
    Observable<QSet<QUuid>> selectedPlugins;
    Observable<std::vector<ConsolidatedPlugin>> consolidatedBulkPlugins;
    /// Variants that an action of the bulk pane includes.
    Observable<QSet<QUuid>> bulkActiveVariants;
    /// Keys of the selection for drag and drop. Queried when read: the selection changes far more often than
    /// it is dragged.
    DeferredObservable<PluginKeyTransfer> cachedPluginKeysTransfer;

    void clearSelection();
    /// Adds rows selected in the table. Rows deselected there stay in the selection, so that it grows across
    /// searches.
    void collectSelection(const QSet<QUuid>& added);
    /// Selects exactly the rows outside the filter, regardless of the earlier selection.
    void selectOutside(const PluginFilter& filter);
    /// Selects in the table those rows that are in the selection. No effect while the selection is empty.
    void selectLoaded(const AudioPlugins& rows);
    /// Removes deleted plugins. The bulk pane shows them until its next rebuild.
    void forget(const QSet<QUuid>& ids);
    /// Removes every plugin whose name contains "waveshell", case-insensitively.
    void removeWavesPluginsFromSelection();
    /// Removes all formats of these names.
    void deselectPluginsByNames(const QSet<QString>& names);
    void deselectPluginsByName(const QString& name) { deselectPluginsByNames({name}); }

    /// Groups the selection by name, with every variant switched on. Notifies even if nothing has changed,
    /// but queries only after a change of the selection or the catalogue.
    void refreshBulkPane();
    void updateCachedTransfer();
    void toggleBulkVariant(const QUuid& id);
    /// The formats in the bulk pane, sorted by raw value.
    [[nodiscard]] std::vector<PluginFormat> selectedFormatsInBulk() const;
    /// All variants of the format are switched on; false when there are none.
    [[nodiscard]] bool isFormatFullyActive(PluginFormat format) const;
    /// Some variants of the format are switched on, but not all.
    [[nodiscard]] bool isFormatPartiallyActive(PluginFormat format) const;
    /// Switches all variants of the format off if all are on, otherwise all on.
    void toggleBulkFormat(PluginFormat format);

    /// Queries the selected plugins that still have a row, in row order.
    [[nodiscard]] AudioPlugins selectedRecords() const;
    /// Queries the plugins that a bulk action affects: selected, with their variant switched on, sorted by
    /// name.
    [[nodiscard]] AudioPlugins bulkActionPlugins() const;
    /// Whether a bulk action would disable a Waves bundle.
    [[nodiscard]] bool selectionContainsWavesBundleToDisable() const;

private:
    [[nodiscard]] QSet<QUuid> bulkVariantIds(PluginFormat format) const;
    void removeFromSelection(const std::function<bool(const AudioPlugin&)>& isMeant);
    [[nodiscard]] bool hasTransferKeys() const;
    [[nodiscard]] bool isGrouped() const;

    const PluginDatabase& m_database;
    QSet<QUuid> m_transferIds; ///< of the deferred transfer
    /// What consolidatedBulkPlugins was built from, and the ids of its variants.
    struct {
        QSet<QUuid> selection;
        quint64 revision = 0;
        QSet<QUuid> ids;
    } m_grouped;
};

} // namespace orvanlite
