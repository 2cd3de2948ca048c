#include "discovery/Manufacturers.h"

#include <gtest/gtest.h>

namespace orvanlite::test {
namespace {

using namespace Qt::StringLiterals;
using enum PluginFormat;

struct Entry {
    QString name;
    PluginFormat format;
    QString maker;
    QString wanted;
};

TEST(Manufacturers, CrossReference)
{
    struct Row {
        const char* name;
        std::vector<Entry> entries;
    };
    const Row rows[] = {
        {"nothing", {}},
        {"an Audio Unit outranks, names match in lower case",
         {{u"Foo"_s, au, u"Acme"_s, u"Acme"_s}, {u"foo"_s, vst3, u"Other"_s, u"Acme"_s}}},
        {"even when it comes later",
         {{u"Foo"_s, vst3, u"Other"_s, u"Acme"_s}, {u"FOO"_s, au, u"Acme"_s, u"Acme"_s}}},
        {"the last Audio Unit wins",
         {{u"Foo"_s, au, u"A"_s, u"B"_s}, {u"Foo"_s, au, u"B"_s, u"B"_s}, {u"Foo"_s, vst3, u""_s, u"B"_s}}},
        {"a generic later Audio Unit does not",
         {{u"Foo"_s, au, u"A"_s, u"A"_s}, {u"Foo"_s, au, u"Unknown"_s, u"A"_s}}},
        {"a generic Audio Unit lends nothing",
         {{u"Foo"_s, au, u"YourCompany"_s, u"A"_s}, {u"Foo"_s, aax, u"A"_s, u"A"_s}}},
        {"the first of the others wins",
         {{u"Foo"_s, vst3, u"A"_s, u"A"_s}, {u"Foo"_s, clap, u"B"_s, u"A"_s}}},
        {"an empty maker is generic",
         {{u"Foo"_s, vst3, u""_s, u"Acme"_s}, {u"Foo"_s, clap, u"Acme"_s, u"Acme"_s}}},
        {"generic without a better copy stays",
         {{u"Foo"_s, vst3, u"Synth"_s, u"Synth"_s}, {u"Bar"_s, vst3, u""_s, u""_s}}},
        {"Waves takes part",
         {{u"Foo"_s, vst3, u"FX"_s, u"Waves Audio"_s},
          {u"Foo"_s, wavesBundle, u"Waves Audio"_s, u"Waves Audio"_s}}},
        {"spellings",
         {{u"a"_s, vst3, u"ACUSTICA"_s, u"Acustica Audio"_s},
          {u"b"_s, au, u"AcusticAudio"_s, u"Acustica Audio"_s},
          {u"c"_s, vst3, u"apogeedigital"_s, u"Apogee"_s},
          {u"d"_s, vst3, u"blackroosteraudio"_s, u"Black Rooster Audio"_s},
          {u"e"_s, vst3, u"synchroarts"_s, u"Synchro Arts"_s},
          {u"f"_s, vst3, u"uvisoundsource"_s, u"UVI"_s},
          {u"g"_s, vst3, u"valhalladsp"_s, u"Valhalla DSP"_s},
          {u"h"_s, vst3, u"Valhalla DSP, LLC"_s, u"Valhalla DSP"_s},
          {u"i"_s, vst3, u"futureaudioworkshop"_s, u"Future Audio Workshop"_s},
          {u"j"_s, vst3, u"nomadfactory"_s, u"Nomad Factory"_s},
          {u"k"_s, vst3, u"soundradix"_s, u"Sound Radix"_s},
          {u"l"_s, vst3, u"mixedinkey"_s, u"Mixed In Key"_s},
          {u"m"_s, vst3, u"_510K"_s, u"510k"_s},
          {u"n"_s, vst3, u"MCDSP"_s, u"McDSP"_s},
          {u"o"_s, vst3, u"Izotope"_s, u"iZotope"_s},
          {u"p"_s, vst3, u"acondigital"_s, u"Acon Digital"_s},
          {u"q"_s, vst3, u"gforce"_s, u"GForce Software"_s},
          {u"r"_s, vst3, u"hitnmix"_s, u"Hit'n'Mix"_s},
          {u"s"_s, vst3, u"Acustica Audio Ltd"_s, u"Acustica Audio Ltd"_s}}},
        {"a spelling that is lent",
         {{u"g"_s, au, u"gforce"_s, u"GForce Software"_s}, {u"G"_s, vst2, u"Other"_s, u"GForce Software"_s}}},
        {"accents and other scripts in lower case",
         {{u"\u00C4\u0416"_s, au, u"Acme"_s, u"Acme"_s}, {u"\u00E4\u0436"_s, clap, u""_s, u"Acme"_s}}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        AudioPlugins plugins;
        AudioPlugins wanted;
        for (const Entry& entry : row.entries) {
            AudioPlugin plugin;
            plugin.name = entry.name;
            plugin.format = entry.format;
            plugin.manufacturer = entry.maker;
            plugins.push_back(plugin);
            plugin.manufacturer = entry.wanted;
            wanted.push_back(plugin);
        }
        const AudioPlugins found = crossReferenceManufacturers(plugins);
        EXPECT_TRUE(found == wanted);
        for (std::size_t i = 0; i < wanted.size() && i < found.size(); ++i)
            EXPECT_EQ(found[i].manufacturer, wanted[i].manufacturer);
    }
}

TEST(Manufacturers, EveryGenericWordIsPassedOver)
{
    for (const char* word :
         {"yourcompany", "your company", "mycompany", "my company", "company", "developer", "unknown", "",
          "aaxplugin", "vst3", "vst", "component", "clap", "synth", "fx", "effect", "instrument"}) {
        SCOPED_TRACE(word);
        AudioPlugins plugins(2);
        plugins[0].manufacturer = QString::fromLatin1(word).toUpper();
        plugins[1].manufacturer = u"Maker"_s;
        plugins[1].format = PluginFormat::clap;
        EXPECT_EQ(crossReferenceManufacturers(plugins)[0].manufacturer, u"Maker"_s);
    }
}

} // namespace
} // namespace orvanlite::test
