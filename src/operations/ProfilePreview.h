#pragma once

#include "operations/CatalogueRows.h"
#include "operations/ProfileComparison.h"

class QObject;

namespace orvanlite {

struct ProfileChanges;

/// The previewed profile, its comparison with the catalogue, and the rows that a preview shows. Changes no
/// files.
class ProfilePreview {
public:
    /// Observes the rows until `context` is destroyed.
    ProfilePreview(const CatalogueRows& rows, QObject* context);
    ProfilePreview(const ProfilePreview&) = delete;
    ProfilePreview& operator=(const ProfilePreview&) = delete;

    /// The previewed profile: a copy, which must be replaced when the stored one changes.
    Observable<std::optional<PluginProfile>> activeProfile;
    /// What a preview shows: "changes", "enabled" or "disabled"; anything else means all. Assigning "changes"
    /// compares again.
    Observable<QString> profileViewFilter{QStringLiteral("changes")};
    /// On purpose only counted: cycles through 0, 1, 2 with every sort by status during a preview.
    Observable<int> profileSortMode{2};
    /// Plugins whose state differs from the previewed profile, in catalogue order. Kept when the preview
    /// ends.
    Observable<AudioPlugins> cachedProfileChanges;

    [[nodiscard]] bool isActive() const { return activeProfile->has_value(); }
    [[nodiscard]] bool isPreviewing(const QUuid& profileId) const;
    /// Counts a sort by status. Must be called after each one.
    void statusSorted();

    /// What the tables show: the loaded rows, filtered by `profileViewFilter` during a preview. The reference
    /// is valid until the next assignment to the rows, the filter, the profile or `cachedProfileChanges`.
    [[nodiscard]] const AudioPlugins& filteredPlugins() const;
    /// Compares the previewed profile with the catalogue again.
    void refreshProfileChanges();
    /// The plugins that applying the profile would move.
    [[nodiscard]] ProfileChanges profileChanges(const PluginProfile& profile) const;
    /// Their number. Cheap enough for every row and redraw.
    [[nodiscard]] int profileChangeCount(const PluginProfile& profile) const;

private:
    [[nodiscard]] AudioPlugins agreeingPlugins(bool enabled) const;

    const CatalogueRows& m_rows;
    // Caches, invalidated when their inputs are assigned.
    mutable ProfileComparison m_comparison;
    mutable std::optional<AudioPlugins> m_agreeingPlugins;
};

} // namespace orvanlite
