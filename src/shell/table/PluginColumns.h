#pragma once

#include "model/AudioPlugin.h"
#include "operations/PluginSort.h"

#include <array>

namespace orvanlite {

/// Columns of the plugin table, in order. Those that a preview hides come last.
enum class PluginColumn { status, name, manufacturer, format, version, lastUsed };
inline constexpr int kPluginColumnCount = static_cast<int>(PluginColumn::lastUsed) + 1;

/// What a profile under preview would make of a plugin.
enum class PreviewState { none, willEnable, willDisable, staysEnabled, staysDisabled };

/// How the cells of a column are drawn, and what a click on them does.
enum class PluginCell {
    status,  ///< a switch, or what the profile under preview would change
    title,   ///< the strongest text of the row, in full in the tooltip
    link,    ///< opens the manufacturer's website
    badge,   ///< the format's icon and a text on a rounded background
    text,    ///< in the secondary colour
    caption, ///< small and in the secondary colour
};

/// Everything that the table knows of one column.
struct PluginColumnRow {
    PluginColumn column{};
    QStringView title;
    PluginSortKey sortKey{};
    PluginCell cell{};
    double share = 0;        ///< of the table's width at the start; those of all columns add up to 1
    double previewShare = 0; ///< under a preview; 0 hides the column there
    QStringView usualText{}; ///< is never cut: the least width of the column
    int leastCharacters = 0; ///< the least width in average characters, without a usual text
    /// What the cell says, to screen readers too.
    QString (*text)(const AudioPlugin& plugin, PreviewState preview, Date now) = nullptr;
    /// What a screen reader says behind the text, and the tooltip; null for nothing.
    QString (*description)(const AudioPlugin& plugin, PreviewState preview) = nullptr;
    /// Whether the text only says that something is unknown; null for never.
    bool (*isUnknown)(const AudioPlugin& plugin) = nullptr;

    [[nodiscard]] constexpr bool isShown(bool inPreview) const { return !inPreview || previewShare > 0; }
};

/// By the number of the column.
extern const std::array<PluginColumnRow, kPluginColumnCount> kPluginColumns;

[[nodiscard]] inline const PluginColumnRow& pluginColumn(int number)
{
    return kPluginColumns[static_cast<std::size_t>(number)];
}

} // namespace orvanlite
