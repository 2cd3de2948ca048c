#pragma once

#include "model/AudioPlugin.h"
#include "uad/UADText.h"

#include <QSet>

#include <optional>
#include <vector>

namespace orvanlite {

/// The distinctive words of a plugin's name: without the manufacturer's prefix and stop words, in the short
/// forms that file names use.
[[nodiscard]] QSet<QString> uadTokens(const QString& name);

/// Finds the plugin files for a name in the UAD system profile, which differs from the file names.
///
/// A table of special names comes first, then the best candidate among the files whose name begins with "UAD
/// ". The candidate is the first file whose name equals the profile's or is a prefix or an extension of it;
/// otherwise the last file whose tokens all occur in the profile's name. All formats of the candidate match,
/// with and without "(m)". The files are indexed once, so that a lookup does not iterate over the list.
class UADPluginMatcher final {
public:
    /// The list must outlive this object and not change.
    explicit UADPluginMatcher(const AudioPlugins& plugins);
    UADPluginMatcher(const UADPluginMatcher&) = delete;
    UADPluginMatcher& operator=(const UADPluginMatcher&) = delete;

    /// Indexes into the list, ascending; empty when nothing matches.
    [[nodiscard]] std::vector<std::size_t> matches(const QString& uadName) const;

private:
    using Rows = std::vector<std::size_t>;

    /// A file's name in lower case, without prefix and "(m)". Several names may share one entry.
    struct Entry {
        QString text;
        std::size_t firstRow = 0;
        std::size_t lastRow = 0;
        std::vector<int> tokens; ///< ascending, unique
    };
    struct Name {
        std::size_t firstRow = 0;
        std::size_t lastRow = 0;
        std::optional<std::size_t> entry; ///< nothing without the manufacturer's prefix
    };

    [[nodiscard]] std::size_t entryOf(const QString& name, std::size_t row);
    [[nodiscard]] std::vector<int> tokenIdsOf(QStringView text);
    void sortEntries();
    void indexTokens();
    [[nodiscard]] Rows specialMatches(const QString& uadName) const;
    [[nodiscard]] std::optional<std::size_t> candidateByName(const QString& uadName) const;
    [[nodiscard]] std::optional<std::size_t> candidateByTokens(const QString& uadName) const;
    [[nodiscard]] Rows variantsOf(const QString& name) const;
    void appendRowsOf(QStringView name, Rows& rows) const;

    const AudioPlugins& m_plugins;
    UADTextMap<Name> m_names;
    std::vector<std::size_t> m_nextRow; ///< with the same name; undefined for the last one
    std::vector<Entry> m_entries;
    UADTextMap<std::size_t> m_entryByText;
    std::vector<std::size_t> m_sortedEntries; ///< by text
    qsizetype m_longestText = 0;
    UADTextMap<int> m_tokenIds;
    std::vector<std::vector<std::size_t>> m_entriesByRarestToken;
};

} // namespace orvanlite
