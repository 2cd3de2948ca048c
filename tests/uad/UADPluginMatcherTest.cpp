#include "uad/UADPluginMatcher.h"
#include "model/TextOrder.h"

#include <gtest/gtest.h>

namespace orvanlite::test {

using namespace Qt::StringLiterals;

TEST(UADPluginMatcherTest, FindsTheFilesThatAProfileNameMeans)
{
    const std::tuple<QString, QString, QString> rows[] = {
        {u"UAD Shadow Hills Mastering Compressor"_s,
         u"UAD Shadow Hills Mastering Compressor|UAD Shadow Hills Mastering Compressor(m)|UAD Shadow Hills Class A"
         "|UAD Shadow Hills Mastering Compressor|UAD Shadow Hills Mastering Compressor (m)"_s,
         u"0 1 3"_s},
        {u"UAD Shadow Hills Mastering Compressor Class A"_s,
         u"UAD Shadow Hills Mastering Compressor(m)|UAD Shadow Hills Class A Mastering Comp"_s, u"0 1"_s},
        {u"UAD API 500 EQ Collection"_s, u"UAD API 500|UAD API 560|API 550"_s, u"0 1"_s},
        // The first name with the same prefix, longer or shorter, in catalogue order.
        {u"UAD Neve 1073 Preamp"_s, u"UAD Neve 1073 Preamp Legacy|UAD Neve 1073|UAD Neve 1073(m)"_s, u"0"_s},
        {u"UAD Neve 1073 Preamp"_s, u"UAD Neve|UAD Neve 1073(m)|UAD Neve 1073 Preamp|UAD Neve 1073"_s,
         u"1 3"_s},
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
    for (const auto& [uadName, catalogue, wanted] : rows) {
        SCOPED_TRACE(qPrintable(uadName));
        AudioPlugins plugins;
        for (const QString& name : catalogue.split(u'|'))
            plugins.emplace_back().name = name;
        QStringList found;
        for (const std::size_t i : UADPluginMatcher(plugins).matches(uadName))
            found.append(QString::number(i));
        EXPECT_EQ(found.join(u' '), wanted);
    }
    const QString name =
        u"UAD The Amplifier-digital_DELAY pitch,shifter tube reverb effects and for with bass guitar noise suppressor "
        "ambience reduction stereo limiter classic studios reference 2 of UAD A800 uad Cafe\u0301 microphone "
        "preamplifier collection mastering channel strip compressor dynamics equalizer"_s;
    EXPECT_EQ(plainSorted(uadTokens(name)).join(u' '),
              u"a800 cafe\u0301 ch col comp dyn eq mast mic of preamp st uad"_s);
}

} // namespace orvanlite::test
