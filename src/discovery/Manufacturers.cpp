#include "discovery/Manufacturers.h"

#include <QHash>
#include <QSet>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

/// Words in lower case that build tools and templates leave in a maker's place.
const QSet<QString>& genericManufacturers()
{
    static const QSet<QString> words{
        u"yourcompany"_s, u"your company"_s, u"mycompany"_s, u"my company"_s, u"company"_s,
        u"developer"_s,   u"unknown"_s,      u""_s,          u"aaxplugin"_s,  u"vst3"_s,
        u"vst"_s,         u"component"_s,    u"clap"_s,      u"synth"_s,      u"fx"_s,
        u"effect"_s,      u"instrument"_s,
    };
    return words;
}

/// Spellings in lower case, and the form that users are shown.
const QHash<QString, QString>& manufacturerNormalization()
{
    static const QHash<QString, QString> forms{
        {u"acustica"_s, u"Acustica Audio"_s},
        {u"acusticaudio"_s, u"Acustica Audio"_s},
        {u"apogeedigital"_s, u"Apogee"_s},
        {u"blackroosteraudio"_s, u"Black Rooster Audio"_s},
        {u"synchroarts"_s, u"Synchro Arts"_s},
        {u"uvisoundsource"_s, u"UVI"_s},
        {u"valhalladsp"_s, u"Valhalla DSP"_s},
        {u"valhalla dsp, llc"_s, u"Valhalla DSP"_s},
        {u"futureaudioworkshop"_s, u"Future Audio Workshop"_s},
        {u"nomadfactory"_s, u"Nomad Factory"_s},
        {u"soundradix"_s, u"Sound Radix"_s},
        {u"mixedinkey"_s, u"Mixed In Key"_s},
        {u"_510k"_s, u"510k"_s},
        {u"mcdsp"_s, u"McDSP"_s},
        {u"izotope"_s, u"iZotope"_s},
        {u"acondigital"_s, u"Acon Digital"_s},
        {u"gforce"_s, u"GForce Software"_s},
        {u"hitnmix"_s, u"Hit'n'Mix"_s},
    };
    return forms;
}

/// What a maker's text is worth, found out once for every distinct text: few makers make many plugins.
class MakerTexts {
public:
    struct Maker {
        bool isGeneric = false;
        QString normalized;
    };

    const Maker& operator[](const QString& text)
    {
        auto found = m_makers.constFind(text);
        if (found == m_makers.constEnd()) {
            const QString lowered = text.toLower();
            const Maker maker{genericManufacturers().contains(lowered),
                              manufacturerNormalization().value(lowered, text)};
            found = m_makers.insert(text, maker);
        }
        return *found;
    }

private:
    QHash<QString, Maker> m_makers;
};

} // namespace

AudioPlugins crossReferenceManufacturers(AudioPlugins plugins)
{
    MakerTexts texts;
    QStringList names; // in lower case, in the order of the plugins
    names.reserve(static_cast<qsizetype>(plugins.size()));
    for (const AudioPlugin& plugin : plugins)
        names.append(plugin.name.toLower());

    QHash<QString, QString> makers;
    makers.reserve(names.size());
    qsizetype i = 0;
    for (const AudioPlugin& plugin : plugins) {
        const QString& name = names[i++];
        if (plugin.format == PluginFormat::au && !texts[plugin.manufacturer].isGeneric)
            makers.insert(name, plugin.manufacturer);
    }
    i = 0;
    for (const AudioPlugin& plugin : plugins) {
        const QString& name = names[i++];
        if (plugin.format != PluginFormat::au && !makers.contains(name) &&
            !texts[plugin.manufacturer].isGeneric)
            makers.insert(name, plugin.manufacturer);
    }
    i = 0;
    for (AudioPlugin& plugin : plugins) {
        const auto entry = makers.constFind(names[i++]);
        plugin.manufacturer = texts[entry == makers.constEnd() ? plugin.manufacturer : *entry].normalized;
    }
    return plugins;
}

} // namespace orvanlite
