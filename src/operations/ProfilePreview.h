#pragma once

#include "operations/CatalogueRows.h"
#include "operations/ProfileComparison.h"

class QObject;

namespace orvanlite {

struct ProfileChanges;

/// The profile under preview, compared with the catalogue, and the slice of the rows that a preview shows. Touches no
/// files.
class ProfilePreview {
public:
    /// Follows the rows until `context` dies.
    ProfilePreview(const CatalogueRows& rows, QObject* context);
    ProfilePreview(const ProfilePreview&) = delete;
    ProfilePreview& operator=(const ProfilePreview&) = delete;

    /// The profile under preview: a copy, to be replaced when the stored one changes.
    Observable<std::optional<PluginProfile>> activeProfile;
    /// What a preview shows: "changes", "enabled", "disabled"; anything else is all. Setting it to "changes"
    /// compares again.
    Observable<QString> profileViewFilter{QStringLiteral("changes")};
    /// On purpose only counted: moves through 0, 1, 2 with every sort by status under a preview.
    Observable<int> profileSortMode{2};
    /// Plugins whose state differs from the profile under preview, in catalogue order. Stays as it is when the
    /// preview ends.
    Observable<AudioPlugins> cachedProfileChanges;

    [[nodiscard]] bool isActive() const { return activeProfile->has_value(); }
    [[nodiscard]] bool isPreviewing(const QUuid& profileId) const;
    /// Counts a sort by status; to be called after every change of the sort.
    void statusSorted();

    /// What the tables show: the loaded rows, and under a preview the slice that `profileViewFilter` names. Valid
    /// until the next assignment to any of these, the profile or `cachedProfileChanges`.
    [[nodiscard]] const AudioPlugins& filteredPlugins() const;
    /// Compares the profile under preview with the catalogue again.
    void refreshProfileChanges();
    /// What applying the profile would move.
    [[nodiscard]] ProfileChanges profileChanges(const PluginProfile& profile) const;
    /// The number of these. Cheap enough for every row at every redraw.
    [[nodiscard]] int profileChangeCount(const PluginProfile& profile) const;

private:
    [[nodiscard]] AudioPlugins agreeingPlugins(bool enabled) const;

    const CatalogueRows& m_rows;
    // Results that are kept until what they were computed from is assigned.
    mutable ProfileComparison m_comparison;
    mutable std::optional<AudioPlugins> m_agreeingPlugins;
};

} // namespace orvanlite
