#include "demo/PluginLibrary.h"

#include "demo/BundleWriter.h"

#include "model/PluginLocations.h"
#include "platform/SystemLayout.h"

#include <array>
#include <random>
#include <span>

namespace orvanlite::demo {

using namespace Qt::StringLiterals;

namespace {

/// A manufacturer: its name in Audio Units, and the part of its other bundles' identifiers.
struct Manufacturer {
    const char* name;
    const char* identifier;
    bool hasOwnFolder; ///< keeps its plugins in a folder with its name
};

constexpr Manufacturer kManufacturers[] = {
    {"Halvbro Audio", "halvbro", true},
    {"Kestrelmoor", "kestrelmoor", false},
    {"Tindra Labs", "tindralabs", true},
    {"Okapi Circuit", "okapi-circuit", false},
    {"Murkwell", "murkwell", true},
    {"Fennholt Audio", "fennholtaudio", false},
    {"Quillon Sound", "quillonsound", false},
    {"Bramblewick", "Bramblewick", true},
    {"Nordvik Tonal", "nordviktonal", false},
    {"Zephra Works", "zephra", false},
    {"Ombergo", "ombergo", false},
    {"Lumivale", "lumivale", true},
    {"Ruvido Suono", "ruvidosuono", false},
    {"Pellhaven Devices", "pellhaven", false},
    {"Ikarin", "ikarin", false},
    {"Sablewood Acoustics", "sablewood", true},
    {"Drosselwerk", "drosselwerk", false},
    {"Tarn & Hollow", "tarnandhollow", true},
    {"Vexley Audio", "vexleyaudio", false},
    {"Copperfen", "copperfen", false},
    {"Mirelune", "mirelune", false},
    {"Ostinara", "ostinara", false},
    {"Graupelklang", "graupelklang", true},
    {"Yarrowgate", "yarrowgate", false},
    {"Plinth & Co.", "plinthco", false},
    {"Aurelis Tone", "aurelistone", false},
    {"Koboldton", "yourcompany", false}, // kept the template's identifier
    {"Wrenfield", "wrenfield", true},
    {"Ночная Студия", "nochnaya", false},
    {"音叉工房", "onsa", false},
};

constexpr const char* kWordStarts[] = {"Bra", "Ce", "Dro", "Fi", "Gu", "Hal", "Jo", "Ka",
                                       "Lo",  "Mi", "Nu",  "Or", "Pe", "Qui", "Ra"};
constexpr const char* kWordEnds[] = {"vex", "lmo", "ntra", "sko"};
constexpr const char* kKinds[] = {"EQ",       "Compressor", "Limiter", "Plate",   "Echo",  "Chorus",
                                  "Tape",     "Gate",       "Synth",   "Strings", "Meter", "Drive",
                                  "De-Esser", "Phaser",     "Punch",   "Width"};
constexpr int kWordsPerManufacturer = 2;
constexpr int kKindsPerWord = 8;
static_assert(std::size(kManufacturers) * kWordsPerManufacturer ==
              std::size(kWordStarts) * std::size(kWordEnds));

/// Names that are difficult for shells, property lists, tables or sorting.
constexpr const char* kOddNames[] = {
    "Producer's Pick",
    "It's 'Quoted'",
    "A|B Switch",
    "Left | Right",
    "The \"Loud\" One",
    "Dust & Wire",
    "50% Wet",
    "Cash $HOME",
    "Back`tick",
    "Back\\slash",
    "Star * Field",
    "Semi;Colon",
    "Two  Blanks",
    "-Dash First",
    "<Angle>",
    "Größenwandler",
    "Ηχώ Βαθιά",
    "Ночной Хор",
    "琴音",
    "ガラスの森",
    "صدى الليل",
    "🌊 Swell",
    "v1.2.3",
    "Ends in dots...",
    "lower case first",
    "Un nom si long qu'aucune colonne ne le montre en entier, ni la barre, ni le rapport, ni la fiche imprimée"};

constexpr double kAges[] = {0,  0.4, 1.2, 2,   3.5, 6,   8,   12,  20,   29,  33,
                            61, 90,  150, 240, 340, 370, 500, 800, 1500, 2600};

class LibraryBuilder {
public:
    explicit LibraryBuilder(const platform::SystemLayout& layout)
        : m_layout(layout)
        , m_locations(layout)
        , m_writer(layout)
    {}

    void addProducts();
    void addOddities();
    void addWaves();
    void addUAD();
    [[nodiscard]] int count() const { return m_count; }

private:
    void addProduct(const Manufacturer& manufacturer, const QString& name);
    void addRecord(const Manufacturer& manufacturer, const QString& name, PluginFormat format);
    [[nodiscard]] QString folderFor(const Manufacturer& manufacturer, PluginFormat format);
    [[nodiscard]] Bundle bundleFor(const Manufacturer& manufacturer, const QString& name,
                                   PluginFormat format);

    /// True in this percentage of calls.
    bool chance(unsigned percent) { return m_random() % 100 < percent; }
    template <typename Array>
    const auto& anyOf(const Array& items)
    {
        return items[m_random() % std::size(items)];
    }

    const platform::SystemLayout& m_layout;
    const PluginLocations m_locations;
    BundleWriter m_writer;
    // The engine gives the same numbers on every system; the distributions of the standard library do not.
    std::mt19937 m_random{20240229};
    int m_count = 0;
};

QString text(const char* utf8) { return QString::fromUtf8(utf8); }

/// Keeps the characters that are valid in an identifier: "Quillon Sound" -> "QuillonSound".
QString identifierPart(const QString& name)
{
    QString part;
    for (const QChar c : name) {
        if (c.isLetterOrNumber() && c.unicode() < 0x80)
            part += c;
    }
    return part.isEmpty() ? u"plugin"_s : part;
}

void LibraryBuilder::addProducts()
{
    for (std::size_t m = 0; m < std::size(kManufacturers); ++m) {
        for (std::size_t w = 0; w < kWordsPerManufacturer; ++w) {
            const std::size_t word = m * kWordsPerManufacturer + w;
            const QString stem =
                text(kWordStarts[word / std::size(kWordEnds)]) + text(kWordEnds[word % std::size(kWordEnds)]);
            for (std::size_t k = 0; k < kKindsPerWord; ++k) {
                const std::size_t kind = (word * 5 + k) % std::size(kKinds);
                addProduct(kManufacturers[m], stem + u' ' + text(kKinds[kind]));
            }
        }
    }
}

void LibraryBuilder::addProduct(const Manufacturer& manufacturer, const QString& name)
{
    const std::pair<PluginFormat, unsigned> shares[] = {
        {PluginFormat::au, 75}, {PluginFormat::vst2, 50}, {PluginFormat::aax, 60}, {PluginFormat::clap, 30}};
    addRecord(manufacturer, name, PluginFormat::vst3);
    for (const auto& [format, share] : shares) {
        if (chance(share))
            addRecord(manufacturer, name, format);
    }
}

void LibraryBuilder::addRecord(const Manufacturer& manufacturer, const QString& name, PluginFormat format)
{
    const QString file = u'/' + name + u'.' + PluginLocations::bundleExtension(format).toString();
    Bundle bundle = bundleFor(manufacturer, name, format);
    bundle.path = folderFor(manufacturer, format) + file;
    m_writer.write(bundle);
    ++m_count;
}

QString LibraryBuilder::folderFor(const Manufacturer& manufacturer, PluginFormat format)
{
    const QString own = manufacturer.hasOwnFolder ? u'/' + text(manufacturer.name) : QString();
    if (chance(14)) {
        if (format == PluginFormat::aax)
            return m_layout.aaxUnusedDirectory();
        return m_locations.centralDisabledDirectory(format) + (chance(20) ? own : QString());
    }
    return m_locations.systemPaths(format).at(chance(18) ? 1 : 0) + own;
}

Bundle LibraryBuilder::bundleFor(const Manufacturer& manufacturer, const QString& name, PluginFormat format)
{
    Bundle bundle;
    bundle.infoForm = chance(30) ? InfoForm::binary : InfoForm::xml;
    if (!chance(8))
        bundle.version = u"%1.%2.%3"_s.arg(1 + m_random() % 6).arg(m_random() % 10).arg(m_random() % 4);
    // The formats of one manufacturer rarely agree on its spelling.
    const QString piece = text(manufacturer.identifier);
    bundle.identifier = (format == PluginFormat::aax ? u"COM."_s + piece.toUpper() : u"com."_s + piece) +
                        u'.' + identifierPart(name) + u'.' +
                        PluginLocations::bundleExtension(format).toString();
    if (format == PluginFormat::au)
        bundle.componentName = text(manufacturer.name) + u": "_s + name;
    if (format == PluginFormat::clap && chance(50)) {
        bundle.infoForm = InfoForm::none;
        bundle.clapVendor = text(manufacturer.name);
    }
    if (!chance(5))
        bundle.executable = chance(10) ? u"Core"_s : name;
    bundle.daysUnused = anyOf(kAges);
    return bundle;
}

void LibraryBuilder::addOddities()
{
    std::size_t manufacturer = 0;
    for (const char* name : kOddNames) {
        addRecord(kManufacturers[manufacturer % std::size(kManufacturers)], text(name), PluginFormat::vst3);
        addRecord(kManufacturers[manufacturer % std::size(kManufacturers)], text(name), PluginFormat::au);
        manufacturer += 7;
    }
    const QString vst = m_locations.systemPaths(PluginFormat::vst2).front();
    const QString vst3 = m_locations.systemPaths(PluginFormat::vst3).front();
    const QString userVst3 = m_locations.systemPaths(PluginFormat::vst3).back();
    const QString homeUnused = m_layout.inHome(u"/Library/Application Support/Avid/Audio/Plug-Ins (Unused)");

    // A plugin that is a plain file, copies of one plugin in two folders, a plugin four folders deep, one in
    // a folder that only looks like a plugin, and one disabled by the user in the home folder.
    m_writer.writeFile(vst + u"/Old Timer.vst"_s, "no bundle\n");
    for (const QString& folder : {vst3, userVst3})
        m_writer.write({.path = folder + u"/Twice There.vst3"_s, .identifier = u"org.tindralabs.twice"_s});
    m_writer.write({.path = vst3 + u"/A/B/C/D/Deep Down.vst3"_s, .identifier = u"com.lumivale.deep"_s});
    m_writer.write({.path = vst3 + u"/Loud Case.VST3/Inside.vst3"_s, .version = u""_s});
    m_writer.write({.path = homeUnused + u"/Shelved.aaxplugin"_s, .identifier = u"com.ikarin.shelved"_s});
    m_count += 6;

    // None of these is found as a plugin.
    m_writer.write({.path = vst3 + u"/Twice There.vst3/Contents/Nested.vst3"_s});
    m_writer.writeFile(vst3 + u"/Read me.txt"_s, "Thank you for your purchase.\n");
    m_writer.writeFile(vst3 + u"/.Hidden.vst3"_s, "hidden\n");
    m_writer.write({.path = vst + u"/Lost Here.vst3"_s});

    // A damaged property list only removes the plugin's manufacturer and version.
    m_writer.write({.path = vst3 + u"/Scratched.vst3"_s, .infoForm = InfoForm::none});
    m_writer.writeFile(vst3 + u"/Scratched.vst3/Contents/Info.plist"_s, "<plist><dict><key>CFBundle");
    ++m_count;
}

void LibraryBuilder::addWaves()
{
    const QString waves = m_layout.wavesDirectory();
    const struct {
        const char* version;
        unsigned share;    ///< percentage of the plugins
        unsigned disabled; ///< percentage of those
    } folders[] = {{"V13", 20, 100}, {"V14", 70, 30}, {"V15", 85, 10}};
    for (const auto& folder : folders) {
        const QString plugins = waves + u"/Plug-Ins "_s + text(folder.version);
        for (const char* start : kWordStarts) {
            for (std::size_t k = 0; k < 6; ++k) {
                if (!chance(folder.share))
                    continue;
                const QString parent = chance(folder.disabled) ? plugins + u"/Disabled"_s : plugins;
                m_writer.makeFolder(parent + u'/' + text(start) + u"mber "_s + text(kKinds[2 * k]) +
                                    u".bundle"_s);
                ++m_count;
            }
        }
        if (folder.share > 50) { // the oldest version was removed without its plugins
            m_writer.makeFolder(waves + u"/WaveShells "_s + text(folder.version) +
                                u"/Waves AU Reg Utility "_s + text(folder.version).sliced(1) +
                                u".app/Contents/MacOS"_s);
        }
    }
    m_writer.writeFile(waves + u"/Plug-Ins V9"_s, "a file, no folder\n");
    m_writer.writeFile(waves + u"/Plug-Ins V15/notes.txt"_s, "no plugin\n");

    // The containers of all Waves plugins, which are never listed.
    const std::pair<PluginFormat, const char*> shells[] = {{PluginFormat::au, "WaveShell1-AU 15.0"},
                                                           {PluginFormat::vst3, "WaveShell1-VST3 14.0"},
                                                           {PluginFormat::vst3, "WaveShell1-VST3 15.0"},
                                                           {PluginFormat::vst2, "WaveShell1-VST 14.0"},
                                                           {PluginFormat::aax, "WaveShell1-AAX 15.0"}};
    for (const auto& [format, name] : shells) {
        m_writer.write({.path = m_locations.systemPaths(format).front() + u'/' + text(name) + u'.' +
                                PluginLocations::bundleExtension(format).toString(),
                        .identifier = u"com.waves.shell"_s});
    }
}

void LibraryBuilder::addUAD()
{
    const struct {
        const char* name;
        const char* status; ///< as written by the manufacturer's control panel
    } products[] = {
        {"UAD Ambervale Compressor", "Authorized"},
        {"UAD Bramble 33 Preamp", "Demo expired"},
        {"UAD Cindertop EQ", "Demo expired"},
        {"UAD Dunmoor Tape", "Demo (11 days left)"},
        {"UAD Elderglass Plate", "Authorized"},
        {"UAD Fennwick Limiter", "Demo not started"},
        {"UAD Gorsehill Channel", "Demo (2 days left)"},
        {"UAD Harrowgate Chorus", "Demo not started"},
    };
    QByteArray profile = "UAD System Profile\n\nUAD-2 Plug-in Authorizations\n";
    for (const auto& product : products) {
        const QString name = text(product.name);
        profile += QByteArray(product.name) + ": " + product.status + '\n';
        for (const PluginFormat format :
             {PluginFormat::au, PluginFormat::vst3, PluginFormat::vst2, PluginFormat::aax}) {
            // In two of the formats, the mono version is a separate file.
            const bool hasMono = format == PluginFormat::au || format == PluginFormat::vst2;
            for (const QString& file : hasMono ? QStringList{name, name + u"(m)"_s} : QStringList{name}) {
                m_writer.write({.path = m_locations.systemPaths(format).front() + u'/' + file + u'.' +
                                        PluginLocations::bundleExtension(format).toString(),
                                .version = u"11.2.0"_s,
                                .identifier = u"com.uaudio."_s + identifierPart(name),
                                .daysUnused = 40});
                ++m_count;
            }
        }
    }
    m_writer.writeFile(m_layout.desktop + u"/UADSystemProfile.txt"_s, profile + "--- End of section\n");
}

} // namespace

int makePluginLibrary(const platform::SystemLayout& layout)
{
    LibraryBuilder builder(layout);
    builder.addProducts();
    builder.addOddities();
    builder.addWaves();
    builder.addUAD();
    return builder.count();
}

} // namespace orvanlite::demo
