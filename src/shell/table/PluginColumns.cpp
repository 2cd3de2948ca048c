#include "shell/table/PluginColumns.h"

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

QString statusText(const AudioPlugin& plugin, PreviewState preview, Date /*now*/)
{
    switch (preview) {
    case PreviewState::willEnable:
        return u"Will Enable"_s;
    case PreviewState::willDisable:
        return u"Will Disable"_s;
    case PreviewState::staysEnabled:
        return u"Enabled"_s;
    case PreviewState::staysDisabled:
        return u"Disabled"_s;
    case PreviewState::none:
        break;
    }
    return plugin.statusValue();
}

QString websiteAction(const AudioPlugin& plugin, PreviewState preview)
{
    const bool isLink = preview == PreviewState::none && !plugin.manufacturer.isEmpty();
    return isLink ? u"Visit "_s + plugin.manufacturer + u" website"_s : QString();
}

using Plugin = const AudioPlugin&;

} // namespace

constexpr std::array<PluginColumnRow, kPluginColumnCount> kPluginColumns{{
    {.column = PluginColumn::status,
     .title = u"Status",
     .sortKey = PluginSortKey::statusValue,
     .cell = PluginCell::status,
     .share = 0.08,
     .previewShare = 0.17,
     .usualText = u"Will Disable",
     .text = &statusText,
     .description =
         [](Plugin plugin, PreviewState preview) {
             return preview == PreviewState::none ? u"Switch for "_s + plugin.name : QString();
         }},
    {.column = PluginColumn::name,
     .title = u"Name",
     .sortKey = PluginSortKey::name,
     .cell = PluginCell::title,
     .share = 0.31,
     .previewShare = 0.37,
     .leastCharacters = 20,
     .text = [](Plugin plugin, PreviewState, Date) { return plugin.name; },
     .description = [](Plugin plugin, PreviewState) { return plugin.currentPath; }},
    {.column = PluginColumn::manufacturer,
     .title = u"Manufacturer",
     .sortKey = PluginSortKey::manufacturer,
     .cell = PluginCell::link,
     .share = 0.24,
     .previewShare = 0.28,
     .leastCharacters = 16,
     .text = [](Plugin plugin, PreviewState,
                Date) { return plugin.manufacturer.isEmpty() ? u"Unknown"_s : plugin.manufacturer; },
     .description = &websiteAction,
     .isUnknown = [](Plugin plugin) { return plugin.manufacturer.isEmpty(); }},
    {.column = PluginColumn::format,
     .title = u"Format",
     .sortKey = PluginSortKey::format,
     .cell = PluginCell::badge,
     .share = 0.14,
     .previewShare = 0.18,
     .usualText = u"Audio Units",
     .text = [](Plugin plugin, PreviewState, Date) { return rawValue(plugin.format); }},
    {.column = PluginColumn::version,
     .title = u"Version",
     .sortKey = PluginSortKey::versionValue,
     .cell = PluginCell::text,
     .share = 0.10,
     .usualText = u"10.10.10",
     .text = [](Plugin plugin, PreviewState, Date) { return plugin.versionValue(); }},
    {.column = PluginColumn::lastUsed,
     .title = u"Last Used(Est.)", // On purpose: without a space
     .sortKey = PluginSortKey::lastUsedValue,
     .cell = PluginCell::caption,
     .share = 0.13,
     .usualText = u"10 months ago",
     .text = [](Plugin plugin, PreviewState, Date now) { return plugin.lastUsedValue(now); },
     .isUnknown = [](Plugin plugin) { return !plugin.lastUsed; }},
}};

static_assert(
    [] {
        double share = 0;
        double previewShare = 0;
        for (std::size_t i = 0; i < kPluginColumns.size(); ++i) {
            const PluginColumnRow& row = kPluginColumns[i];
            const bool isHidden = !row.isShown(true);
            const bool isShownBehindHidden = i > 0 && !isHidden && !kPluginColumns[i - 1].isShown(true);
            if (static_cast<std::size_t>(row.column) != i || isShownBehindHidden)
                return false;
            share += row.share;
            previewShare += row.previewShare;
        }
        const auto isWhole = [](double sum) { return sum > 0.999 && sum < 1.001; };
        return isWhole(share) && isWhole(previewShare);
    }(),
    "each column has its row, in order, those that a preview hides come last, and the shares add up to 1");

} // namespace orvanlite
