#pragma once

#include "model/AudioPlugin.h"
#include "model/ConsolidatedPlugin.h"
#include "model/Observable.h"
#include "model/PluginKeyTransfer.h"

#include <QSet>

#include <functional>

class QObject;

namespace orvanlite {

class PluginDatabase;
struct PluginFilter;

/// What the user has picked: the selection across filters and pages, and its content folded by name for the bulk
/// pane, where single variants can be switched off. Holds ids; records are read from the catalogue when needed.
class BulkSelection {
public:
    /// `context` ends its reactions to assignments.
    BulkSelection(const PluginDatabase& database, QObject* context);
    BulkSelection(const BulkSelection&) = delete;
    BulkSelection& operator=(const BulkSelection&) = delete;

    /// The true selection. Ids of rows that are filtered away, not loaded or gone since a scan stay in it.
    QSet<QUuid> persistedSelections;
    /// The rows selected in the table: ids of loaded rows only.
    Observable<QSet<QUuid>> selectedPlugins;
    Observable<std::vector<ConsolidatedPlugin>> consolidatedBulkPlugins;
    /// Variants that an action of the bulk pane includes.
    Observable<QSet<QUuid>> bulkActiveVariants;
    /// Keys of the selection, ready for a drag.
    Observable<PluginKeyTransfer> cachedPluginKeysTransfer;

    void clearSelection();
    /// Adds rows selected in the table. What is deselected there stays in the selection, so that it grows by clicks
    /// across searches.
    void collectSelection(const QSet<QUuid>& added);
    /// Selects everything outside the filter, and nothing else: the earlier selection plays no part.
    void selectOutside(const PluginFilter& filter);
    /// Selects in the table those of the rows that are in the selection; nothing changes while it is empty.
    void selectLoaded(const AudioPlugins& rows);
    /// Takes deleted plugins out. The bulk pane shows them until its next rebuild.
    void forget(const QSet<QUuid>& ids);
    /// Takes every plugin out whose name contains "waveshell" in any case.
    void removeWavesPluginsFromSelection();
    /// Takes all formats of these names out, in one pass.
    void deselectPluginsByNames(const QSet<QString>& names);
    void deselectPluginsByName(const QString& name) { deselectPluginsByNames({name}); }

    /// Folds the selection by name, with every variant switched on.
    void refreshBulkPane();
    void updateCachedTransfer();
    void toggleBulkVariant(const QUuid& id);
    /// The formats in the bulk pane, in ascending order of their raw values.
    [[nodiscard]] std::vector<PluginFormat> selectedFormatsInBulk() const;
    /// All variants of the format are switched on; false when there are none.
    [[nodiscard]] bool isFormatFullyActive(PluginFormat format) const;
    /// Some variants of the format are switched on, but not all.
    [[nodiscard]] bool isFormatPartiallyActive(PluginFormat format) const;
    /// Switches all variants of the format off if all are on, otherwise all on.
    void toggleBulkFormat(PluginFormat format);

    /// The selected plugins that still have a row, in row order. A fresh query.
    [[nodiscard]] AudioPlugins selectedRecords() const;
    /// What an action of the bulk pane acts on: the selected plugins whose variant is switched on, by name. A fresh
    /// query.
    [[nodiscard]] AudioPlugins bulkActionPlugins() const;
    /// Whether such an action would disable a Waves bundle.
    [[nodiscard]] bool selectionContainsWavesBundleToDisable() const;

private:
    [[nodiscard]] QSet<QUuid> bulkVariantIds(PluginFormat format) const;
    void removeFromSelection(const std::function<bool(const AudioPlugin&)>& isMeant);

    const PluginDatabase& m_database;
};

} // namespace orvanlite
