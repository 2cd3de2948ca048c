#include "uad/UADPluginMatcher.h"
#include "model/TextOrder.h"

#include <QRandomGenerator>

#include <gtest/gtest.h>

namespace orvanlite::test {

using namespace Qt::StringLiterals;

namespace {

AudioPlugins pluginsOf(const QStringList& names)
{
    AudioPlugins plugins;
    for (const QString& name : names) {
        AudioPlugin plugin;
        plugin.name = name;
        plugins.push_back(plugin);
    }
    return plugins;
}

/// The rule as it is told, one plugin after the other and without anything kept ready.
std::vector<std::size_t> plainMatches(const QString& uadName, const AudioPlugins& plugins)
{
    const QString stripped = QString(uadName).replace(u"UAD "_s, QString()).toLower();
    std::optional<QString> best;
    for (const AudioPlugin& plugin : plugins) {
        if (!plugin.name.startsWith(u"UAD "_s))
            continue;
        const QString plain = QString(plugin.name).replace(u"(m)"_s, QString());
        const QString cleaned = QString(plain).replace(u"UAD "_s, QString()).toLower().trimmed();
        const QSet<QString> have = uadTokens(plain);
        if (cleaned == stripped || (stripped.startsWith(cleaned) && cleaned.size() >= 5) ||
            (cleaned.startsWith(stripped) && stripped.size() >= 5)) {
            best = plugin.name;
            break;
        }
        if (have.size() >= 2 && uadTokens(uadName).contains(have))
            best = plugin.name;
    }
    const QString base = best.value_or(QString()).replace(u"(m)"_s, QString()).trimmed();
    std::vector<std::size_t> found;
    for (std::size_t i = 0; i < plugins.size(); ++i) {
        if (best && (plugins[i].name == base || plugins[i].name == base + u"(m)"_s))
            found.push_back(i);
    }
    return found;
}

} // namespace

TEST(UADPluginMatcherTest, FindsTheFilesThatAProfileNameMeans)
{
    const struct {
        QString uadName;
        QString catalogue;
        QString wanted; ///< positions
    } rows[] = {
        {u"UAD Shadow Hills Mastering Compressor"_s,
         u"UAD Shadow Hills Mastering Compressor|UAD Shadow Hills Mastering Compressor(m)|UAD Shadow Hills Class A"
         "|UAD Shadow Hills Mastering Compressor|UAD Shadow Hills Mastering Compressor (m)"_s,
         u"0 1 3"_s},
        {u"UAD Shadow Hills Mastering Compressor Class A"_s,
         u"UAD Shadow Hills Mastering Compressor(m)|UAD Other|UAD Shadow Hills Class A Mastering Comp"_s,
         u"0 2"_s},
        {u"UAD API 500 EQ Collection"_s, u"UAD API 500|UAD API 560|API 550"_s, u"0 1"_s},
        // Fewer than five characters need equality.
        {u"UAD 1176 Rev A"_s, u"UAD 1176"_s, u""_s},
        {u"UAD 1176"_s, u"UAD 1176LN|UAD 1176(m)"_s, u"1"_s},
        {u"UAD Cafe\u0301"_s, u"UAD Cafe\u0301 Deluxe"_s, u""_s}, // four letters, the last with an accent
        {u"UAD Studer A800"_s, u"Studer A800|uad Studer A800"_s, u""_s},
        // Tokens: two at least, all of them in the profile's name, the last one wins, names win over them.
        {u"UAD Neve 88RS Channel Strip"_s, u"UAD 88RS Neve Ch|UAD St 88RS|UAD Strip Neve Legacy"_s, u"1"_s},
        {u"UAD Century Tube Channel Strip"_s, u"UAD Ch Strip|UAD Century|UAD St Century"_s, u"1"_s},
        {u"UAD Ocean Way"_s, u"UAD Studios Ocean|UAD Way"_s, u""_s},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(qPrintable(row.uadName));
        const AudioPlugins plugins = pluginsOf(row.catalogue.split(u'|'));
        QStringList found;
        for (const std::size_t i : UADPluginMatcher(plugins).matches(row.uadName))
            found.append(QString::number(i));
        EXPECT_EQ(found.join(u' '), row.wanted);
    }
    const QString name =
        u"UAD The Amplifier-digital_DELAY pitch,shifter tube reverb effects and for with bass guitar noise suppressor "
        "ambience reduction stereo limiter classic studios reference 2 of UAD A800 uad Cafe\u0301 microphone "
        "preamplifier collection mastering channel strip compressor dynamics equalizer"_s;
    EXPECT_EQ(plainSorted(uadTokens(name)).join(u' '),
              u"a800 cafe\u0301 ch col comp dyn eq mast mic of preamp st uad"_s);
}

TEST(UADPluginMatcherTest, EqualsThePlainRuleOnGeneratedNames)
{
    const QStringList words =
        u"Neve,1073,Preamp,Preamplifier,EQ,Legacy,API,500,Dynamic,2254,Channel Strip,Classic,UAD,Ne,neve,x"_s
            .split(u',');
    QRandomGenerator random(11);
    const auto anyOf = [&random](const QStringList& texts) {
        return texts[random.bounded(static_cast<int>(texts.size()))];
    };
    const auto makeName = [&](const QString& prefixes, const QString& suffixes) {
        QStringList parts;
        for (int i = random.bounded(1, 4); i > 0; --i)
            parts.append(anyOf(words));
        return anyOf(prefixes.split(u'|')) + parts.join(u' ') + anyOf(suffixes.split(u'|'));
    };
    int hits = 0, misses = 0;
    for (int round = 0; round < 20; ++round) {
        QStringList catalogue;
        for (int i = 0; i < 40; ++i)
            catalogue.append(makeName(u"UAD |UAD |UAD  |"_s, u"||(m)| (m)| "_s));
        const AudioPlugins plugins = pluginsOf(catalogue + catalogue.mid(10, 15));
        const UADPluginMatcher matcher(plugins);
        for (int i = 0; i < 100; ++i) {
            const QString name = makeName(u"UAD |UAD |"_s, u"|| Collection| "_s);
            const std::vector<std::size_t> wanted = plainMatches(name, plugins);
            ASSERT_EQ(matcher.matches(name), wanted) << qPrintable(name + u": "_s + catalogue.join(u','));
            ++(wanted.empty() ? misses : hits);
        }
    }
    EXPECT_GT(std::min(hits, misses), 400);
}

} // namespace orvanlite::test
