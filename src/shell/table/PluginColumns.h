#pragma once

#include "model/AudioPlugin.h"
#include "operations/PluginSort.h"

#include <array>

namespace orvanlite {

/// Columns of the plugin table, in order. Columns that a preview hides come last.
enum class PluginColumn { status, name, manufacturer, format, version, lastUsed };
inline constexpr int kPluginColumnCount = static_cast<int>(PluginColumn::lastUsed) + 1;

/// Effect of the previewed profile on a plugin.
enum class PreviewState { none, willEnable, willDisable, staysEnabled, staysDisabled };

/// How the cells of a column are drawn and react to clicks.
enum class PluginCell {
    status,  ///< a switch, or the change in the previewed profile
    title,   ///< the main text of the row, in full in the tooltip
    link,    ///< opens the manufacturer's website
    badge,   ///< the format icon and a text on a rounded background
    text,    ///< in the secondary colour
    caption, ///< small and in the secondary colour
};

/// Definition of a column.
struct PluginColumnRow {
    PluginColumn column{};
    QStringView title;
    PluginSortKey sortKey{};
    PluginCell cell{};
    double share = 0;        ///< initial share of the table width; the shares of all columns add up to 1
    double previewShare = 0; ///< share in a preview; 0 hides the column
    QStringView usualText{}; ///< sets the minimum width: never elided
    int leastCharacters = 0; ///< minimum width in average characters, if there is no usual text
    /// Text of the cell, also for screen readers.
    QString (*text)(const AudioPlugin& plugin, PreviewState preview, Date now) = nullptr;
    /// Accessible description and tooltip; null for none.
    QString (*description)(const AudioPlugin& plugin, PreviewState preview) = nullptr;
    /// Whether the text is a placeholder for an unknown value; null for never.
    bool (*isUnknown)(const AudioPlugin& plugin) = nullptr;

    [[nodiscard]] constexpr bool isShown(bool inPreview) const { return !inPreview || previewShare > 0; }
};

/// Indexed by column number.
extern const std::array<PluginColumnRow, kPluginColumnCount> kPluginColumns;

[[nodiscard]] inline const PluginColumnRow& pluginColumn(int number)
{
    return kPluginColumns[static_cast<std::size_t>(number)];
}

} // namespace orvanlite
