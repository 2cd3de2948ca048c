#include "discovery/Manufacturers.h"

#include <QHash>
#include <QSet>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

/// Lower-case placeholders that build tools and templates leave instead of a manufacturer.
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

/// Lower-case spellings and their display form.
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

/// Caches the classification of each distinct text: many plugins share few manufacturers.
class ManufacturerTexts {
public:
    struct Manufacturer {
        bool isGeneric = false;
        QString normalized;
    };

    const Manufacturer& operator[](const QString& text)
    {
        auto found = m_manufacturers.constFind(text);
        if (found == m_manufacturers.constEnd()) {
            const QString lowered = text.toLower();
            const Manufacturer manufacturer{genericManufacturers().contains(lowered),
                                            manufacturerNormalization().value(lowered, text)};
            found = m_manufacturers.insert(text, manufacturer);
        }
        return *found;
    }

private:
    QHash<QString, Manufacturer> m_manufacturers;
};

} // namespace

AudioPlugins crossReferenceManufacturers(AudioPlugins plugins)
{
    ManufacturerTexts texts;
    QStringList names; // lower case, in plugin order
    names.reserve(static_cast<qsizetype>(plugins.size()));
    for (const AudioPlugin& plugin : plugins)
        names.append(plugin.name.toLower());

    QHash<QString, QString> manufacturers;
    manufacturers.reserve(names.size());
    qsizetype i = 0;
    for (const AudioPlugin& plugin : plugins) {
        const QString& name = names[i++];
        if (plugin.format == PluginFormat::au && !texts[plugin.manufacturer].isGeneric)
            manufacturers.insert(name, plugin.manufacturer);
    }
    i = 0;
    for (const AudioPlugin& plugin : plugins) {
        const QString& name = names[i++];
        if (plugin.format != PluginFormat::au && !manufacturers.contains(name) &&
            !texts[plugin.manufacturer].isGeneric)
            manufacturers.insert(name, plugin.manufacturer);
    }
    i = 0;
    for (AudioPlugin& plugin : plugins) {
        const auto entry = manufacturers.constFind(names[i++]);
        plugin.manufacturer =
            texts[entry == manufacturers.constEnd() ? plugin.manufacturer : *entry].normalized;
    }
    return plugins;
}

} // namespace orvanlite
