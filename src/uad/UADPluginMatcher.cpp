#include "uad/UADPluginMatcher.h"

#include "uad/UADText.h"

#include <algorithm>
#include <array>
#include <numeric>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

/// Minimum length in characters for matching names by prefix.
constexpr int kShortestBeginning = 5;

struct SpecialName {
    QStringView fragment; ///< of the profile's name, lower case
    QStringView prefix;   ///< of file names
};

/// Plugins whose file names differ too much from their profile names.
constexpr std::array kSpecialNameTable{
    SpecialName{u"shadow hills mastering compressor class a", u"UAD Shadow Hills Class A Mastering Comp"},
    SpecialName{u"shadow hills mastering compressor class a", u"UAD Shadow Hills Mastering Compressor"},
    SpecialName{u"dangerous bax eq", u"UAD Dangerous BAX EQ"},
    SpecialName{u"api 500 eq", u"UAD API 5"},
    SpecialName{u"friedman amplifiers", u"UAD Friedman"},
    SpecialName{u"tube-tech eq", u"UAD Tube-Tech"},
    SpecialName{u"ampeg svt-3 pro", u"UAD Ampeg SVT3Pro"},
    SpecialName{u"ampeg svt-vr", u"UAD Ampeg SVTVR"},
    SpecialName{u"engl 646", u"UAD ENGL E646"},
    SpecialName{u"engl 765", u"UAD ENGL E765"},
    SpecialName{u"massenburg", u"UAD MDWEQ5"},
    SpecialName{u"neve dynamics", u"UAD Neve 2254"},
    SpecialName{u"neve dynamics", u"UAD Neve 33609"},
};

constexpr std::array<QStringView, 23> kStopWords{
    u"amplifier", u"digital",   u"delay",  u"pitch",   u"shifter", u"tube",    u"reverb",   u"effects",
    u"and",       u"the",       u"for",    u"with",    u"bass",    u"guitar",  u"noise",    u"suppressor",
    u"ambience",  u"reduction", u"stereo", u"limiter", u"classic", u"studios", u"reference"};

constexpr std::array<std::pair<QStringView, QStringView>, 10> kWordMap{{
    {u"microphone", u"mic"},
    {u"preamplifier", u"preamp"},
    {u"collection", u"col"},
    {u"mastering", u"mast"},
    {u"channel", u"ch"},
    {u"strip", u"st"},
    {u"compressor", u"comp"},
    {u"limiter", u"lim"}, // on purpose without effect: it is a stop word, and those take precedence
    {u"dynamics", u"dyn"},
    {u"equalizer", u"eq"},
}};

/// Replacements of words: empty for a stop word, otherwise its short form. Words not listed stay.
const UADTextMap<QStringView>& replacements()
{
    static const UADTextMap<QStringView> words = [] {
        UADTextMap<QStringView> all(kWordMap.begin(), kWordMap.end());
        for (const QStringView word : kStopWords)
            all[word] = {};
        return all;
    }();
    return words;
}

/// The name in lower case, without the manufacturer's prefix at any position.
QString lowerWithoutVendor(QString name) { return name.remove(u"UAD "_s).toLower(); }

QString withoutMono(QString name) { return name.remove(u"(m)"_s); }

bool isAlphanumeric(char32_t c) { return QChar::isLetterOrNumber(c) || QChar::isMark(c); }

/// Characters as users count them: combining marks belong to their letter. Stops counting at `enough`.
int characterCount(QStringView text, int enough)
{
    int count = 0;
    for (qsizetype i = 0; i < text.size() && count < enough;)
        count += QChar::isMark(takeCodePoint(text, i)) ? 0 : 1;
    return count;
}

bool isLongBeginning(QStringView text)
{
    return characterCount(text, kShortestBeginning) == kShortestBeginning;
}

/// Calls the function with each token of the text; duplicates are possible.
template <typename Function>
void forEachToken(QStringView lower, Function function)
{
    const auto take = [&function](QStringView piece) {
        if (characterCount(piece, 2) < 2)
            return;
        const auto replaced = replacements().find(piece);
        if (replaced == replacements().end())
            function(piece);
        else if (!replaced->second.isEmpty())
            function(replaced->second);
    };
    qsizetype begin = 0;
    for (qsizetype here = 0, next = 0; here < lower.size(); here = next) {
        if (isAlphanumeric(takeCodePoint(lower, next)))
            continue;
        take(lower.sliced(begin, here - begin));
        begin = next;
    }
    take(lower.sliced(begin));
}

} // namespace

QSet<QString> uadTokens(const QString& name)
{
    QSet<QString> tokens;
    forEachToken(lowerWithoutVendor(name), [&tokens](QStringView token) { tokens.insert(token.toString()); });
    return tokens;
}

UADPluginMatcher::UADPluginMatcher(const AudioPlugins& plugins)
    : m_plugins(plugins)
    , m_nextRow(plugins.size())
{
    m_names.reserve(plugins.size());
    for (std::size_t row = 0; row < plugins.size(); ++row) {
        const QString& name = plugins[row].name;
        const auto [known, isNew] = m_names.try_emplace(name, Name{row, row, std::nullopt});
        Name& rows = known->second;
        if (isNew && name.startsWith(u"UAD "_s))
            rows.entry = entryOf(name, row);
        m_nextRow[rows.lastRow] = row;
        rows.lastRow = row;
        if (rows.entry)
            m_entries[*rows.entry].lastRow = row;
    }
    sortEntries();
    indexTokens();
}

std::size_t UADPluginMatcher::entryOf(const QString& name, std::size_t row)
{
    QString text = lowerWithoutVendor(withoutMono(name));
    if (const QStringView trimmed = withoutBlanks(text); trimmed.size() < text.size())
        text = trimmed.toString();
    // The keys here and in m_tokenIds are views of the entry's text.
    const auto [known, isNew] = m_entryByText.try_emplace(text, m_entries.size());
    if (!isNew)
        return known->second;
    m_entries.push_back({text, row, row, tokenIdsOf(text)});
    m_longestText = std::max(m_longestText, text.size());
    return known->second;
}

std::vector<int> UADPluginMatcher::tokenIdsOf(QStringView text)
{
    std::vector<int> ids;
    forEachToken(text, [&](QStringView token) {
        ids.push_back(m_tokenIds.try_emplace(token, static_cast<int>(m_tokenIds.size())).first->second);
    });
    std::sort(ids.begin(), ids.end());
    ids.erase(std::unique(ids.begin(), ids.end()), ids.end());
    return ids;
}

void UADPluginMatcher::sortEntries()
{
    m_sortedEntries.resize(m_entries.size());
    std::iota(m_sortedEntries.begin(), m_sortedEntries.end(), std::size_t{0});
    const auto isLess = [this](std::size_t left, std::size_t right) {
        return m_entries[left].text < m_entries[right].text;
    };
    // A catalogue sorted by name usually leaves nothing to do.
    if (!std::is_sorted(m_sortedEntries.begin(), m_sortedEntries.end(), isLess))
        std::sort(m_sortedEntries.begin(), m_sortedEntries.end(), isLess);
}

void UADPluginMatcher::indexTokens()
{
    std::vector<int> uses(m_tokenIds.size());
    const auto usesOf = [&uses](int token) -> int& { return uses[static_cast<std::size_t>(token)]; };
    for (const Entry& entry : m_entries) {
        for (const int token : entry.tokens)
            ++usesOf(token);
    }
    // An entry can only match a name that contains its rarest token, so it is indexed by that one alone.
    m_entriesByRarestToken.resize(uses.size());
    for (std::size_t i = 0; i < m_entries.size(); ++i) {
        const std::vector<int>& tokens = m_entries[i].tokens;
        if (tokens.size() < 2)
            continue; // a single word would match far too many names
        const int rarest = *std::min_element(tokens.begin(), tokens.end(), [&usesOf](int left, int right) {
            return usesOf(left) < usesOf(right);
        });
        m_entriesByRarestToken[static_cast<std::size_t>(rarest)].push_back(i);
    }
}

std::vector<std::size_t> UADPluginMatcher::matches(const QString& uadName) const
{
    Rows special = specialMatches(uadName);
    if (!special.empty())
        return special;
    std::optional<std::size_t> candidate = candidateByName(uadName);
    if (!candidate)
        candidate = candidateByTokens(uadName);
    return candidate ? variantsOf(m_plugins[*candidate].name) : Rows{};
}

UADPluginMatcher::Rows UADPluginMatcher::specialMatches(const QString& uadName) const
{
    const QString lower = uadName.toLower();
    Rows rows;
    for (const SpecialName& special : kSpecialNameTable) {
        if (!lower.contains(special.fragment))
            continue;
        for (std::size_t row = 0; row < m_plugins.size(); ++row) {
            if (m_plugins[row].name.startsWith(special.prefix))
                rows.push_back(row);
        }
    }
    // No prefix is the start of another one, so there are no duplicates.
    std::sort(rows.begin(), rows.end());
    return rows;
}

std::optional<std::size_t> UADPluginMatcher::candidateByName(const QString& uadName) const
{
    const QString stripped = lowerWithoutVendor(uadName);
    std::optional<std::size_t> first;
    const auto consider = [this, &first](std::size_t entry) {
        first = std::min(first.value_or(m_entries[entry].firstRow), m_entries[entry].firstRow);
    };
    if (const auto equal = m_entryByText.find(stripped); equal != m_entryByText.end())
        consider(equal->second);
    const qsizetype longest = std::min(stripped.size() - 1, m_longestText);
    for (qsizetype length = kShortestBeginning; length <= longest; ++length) {
        const QStringView beginning = QStringView(stripped).first(length);
        const auto shorter = m_entryByText.find(beginning);
        if (shorter != m_entryByText.end() && isLongBeginning(beginning))
            consider(shorter->second);
    }
    if (!isLongBeginning(stripped))
        return first;
    auto longer = std::lower_bound(
        m_sortedEntries.begin(), m_sortedEntries.end(), stripped,
        [this](std::size_t entry, const QString& text) { return m_entries[entry].text < text; });
    for (; longer != m_sortedEntries.end() && m_entries[*longer].text.startsWith(stripped); ++longer)
        consider(*longer);
    return first;
}

std::optional<std::size_t> UADPluginMatcher::candidateByTokens(const QString& uadName) const
{
    std::vector<int> wanted;
    for (const QString& token : uadTokens(uadName)) {
        if (const auto id = m_tokenIds.find(token); id != m_tokenIds.end())
            wanted.push_back(id->second);
    }
    std::sort(wanted.begin(), wanted.end());
    std::optional<std::size_t> last;
    for (const int token : wanted) {
        for (const std::size_t i : m_entriesByRarestToken[static_cast<std::size_t>(token)]) {
            const Entry& entry = m_entries[i];
            if (std::includes(wanted.begin(), wanted.end(), entry.tokens.begin(), entry.tokens.end()))
                last = std::max(last.value_or(entry.lastRow), entry.lastRow);
        }
    }
    return last;
}

UADPluginMatcher::Rows UADPluginMatcher::variantsOf(const QString& name) const
{
    const QString base = withoutBlanks(withoutMono(name)).toString();
    Rows rows;
    appendRowsOf(base, rows);
    appendRowsOf(base + u"(m)"_s, rows);
    std::sort(rows.begin(), rows.end());
    return rows;
}

void UADPluginMatcher::appendRowsOf(QStringView name, Rows& rows) const
{
    const auto known = m_names.find(name);
    if (known == m_names.end())
        return;
    const auto& [firstRow, lastRow, entry] = known->second;
    for (std::size_t row = firstRow; row != lastRow; row = m_nextRow[row])
        rows.push_back(row);
    rows.push_back(lastRow);
}

} // namespace orvanlite
