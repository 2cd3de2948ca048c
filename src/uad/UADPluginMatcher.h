#pragma once

#include "model/AudioPlugin.h"
#include "uad/UADText.h"

#include <QSet>

#include <optional>
#include <vector>

namespace orvanlite {

/// The words of a plugin's name that tell it from others: without the vendor's prefix and filler words, in the
/// short forms that file names use.
[[nodiscard]] QSet<QString> uadTokens(const QString& name);

/// Finds the plugin files that a name of the UAD system profile means: the names there are not those of the files.
///
/// A list of special names comes first; then the best candidate among the files whose name begins with "UAD ", of
/// which all formats are taken, with and without "(m)". The candidate is the first file whose name equals the
/// profile's or is longer or shorter at its end, and failing that the last one all of whose tokens the profile's
/// name has. What this takes of each file is worked out once, so that a name costs no walk over the list.
class UADPluginMatcher final {
public:
    /// The list has to outlive this object and stay as it is.
    explicit UADPluginMatcher(const AudioPlugins& plugins);
    UADPluginMatcher(const UADPluginMatcher&) = delete;
    UADPluginMatcher& operator=(const UADPluginMatcher&) = delete;

    /// Positions in the list, ascending; empty for a name that means none of the plugins.
    [[nodiscard]] std::vector<std::size_t> matches(const QString& uadName) const;

private:
    using Rows = std::vector<std::size_t>;

    /// What a file's name says when its prefix, its "(m)" and its letter case are gone. Several names may say the
    /// same.
    struct Entry {
        QString text;
        std::size_t firstRow = 0;
        std::size_t lastRow = 0;
        std::vector<int> tokens; ///< ascending, each once
    };
    struct Name {
        std::size_t firstRow = 0;
        std::size_t lastRow = 0;
        std::optional<std::size_t> entry; ///< nothing without the vendor's prefix
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
    std::vector<std::size_t> m_nextRow; ///< of the same name; nothing behind a last one
    std::vector<Entry> m_entries;
    UADTextMap<std::size_t> m_entryByText;
    std::vector<std::size_t> m_sortedEntries; ///< by text
    qsizetype m_longestText = 0;
    UADTextMap<int> m_tokenIds;
    std::vector<std::vector<std::size_t>> m_entriesByRarestToken;
};

} // namespace orvanlite
