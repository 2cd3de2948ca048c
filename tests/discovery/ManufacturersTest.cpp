#include "discovery/Manufacturers.h"

#include <gtest/gtest.h>

namespace orvanlite::test {
namespace {

using namespace Qt::StringLiterals;
using enum PluginFormat;

TEST(Manufacturers, CrossReference)
{
    using Entry =
        std::tuple<QString, PluginFormat, QString, QString>; // the last is the expected manufacturer
    const std::tuple<const char*, std::vector<Entry>> rows[] = {
        {"an Audio Unit outranks, names match in lower case",
         {{u"Foo"_s, au, u"Acme"_s, u"Acme"_s}, {u"foo"_s, vst3, u"Other"_s, u"Acme"_s}}},
        {"even later", {{u"Foo"_s, vst3, u"Other"_s, u"Acme"_s}, {u"FOO"_s, au, u"Acme"_s, u"Acme"_s}}},
        {"the last Audio Unit wins",
         {{u"Foo"_s, au, u"A"_s, u"B"_s}, {u"Foo"_s, au, u"B"_s, u"B"_s}, {u"Foo"_s, vst3, u""_s, u"B"_s}}},
        {"unless it is generic", {{u"Foo"_s, au, u"A"_s, u"A"_s}, {u"Foo"_s, au, u"Unknown"_s, u"A"_s}}},
        {"a generic Audio Unit lends nothing",
         {{u"Foo"_s, au, u"YourCompany"_s, u"A"_s}, {u"Foo"_s, aax, u"A"_s, u"A"_s}}},
        {"the first other wins", {{u"Foo"_s, vst3, u"A"_s, u"A"_s}, {u"Foo"_s, clap, u"B"_s, u"A"_s}}},
        {"an empty manufacturer is generic",
         {{u"Foo"_s, vst3, u""_s, u"Acme"_s}, {u"Foo"_s, clap, u"Acme"_s, u"Acme"_s}}},
        {"generic without a better copy stays",
         {{u"Foo"_s, vst3, u"Synth"_s, u"Synth"_s}, {u"Bar"_s, vst3, u""_s, u""_s}}},
        {"Waves takes part",
         {{u"Foo"_s, vst3, u"FX"_s, u"Acme"_s}, {u"Foo"_s, wavesBundle, u"Acme"_s, u"Acme"_s}}},
        {"spellings",
         {{u"a"_s, vst3, u"ACUSTICA"_s, u"Acustica Audio"_s},
          {u"h"_s, vst3, u"Valhalla DSP, LLC"_s, u"Valhalla DSP"_s},
          {u"s"_s, vst3, u"Acustica Audio Ltd"_s, u"Acustica Audio Ltd"_s}}},
        {"a spelling that is lent",
         {{u"g"_s, au, u"gforce"_s, u"GForce Software"_s}, {u"G"_s, vst2, u"Other"_s, u"GForce Software"_s}}},
        {"accents and other scripts in lower case",
         {{u"\u00C4\u0416"_s, au, u"Acme"_s, u"Acme"_s}, {u"\u00E4\u0436"_s, clap, u""_s, u"Acme"_s}}},
    };
    for (const auto& [title, entries] : rows) {
        SCOPED_TRACE(title);
        AudioPlugins plugins(entries.size());
        for (std::size_t i = 0; i < entries.size(); ++i)
            std::tie(plugins[i].name, plugins[i].format, plugins[i].manufacturer, std::ignore) = entries[i];
        const AudioPlugins found = crossReferenceManufacturers(plugins);
        ASSERT_EQ(found.size(), plugins.size());
        for (std::size_t i = 0; i < found.size(); ++i)
            EXPECT_EQ(found[i].manufacturer, std::get<3>(entries[i]));
    }
}

} // namespace
} // namespace orvanlite::test
