#include "cli/CliCommand.h"

#include "model/PluginLocations.h"
#include "platform/FileManager.h"

namespace orvanlite {

using namespace Qt::StringLiterals;

CliCommand::CliCommand(const platform::FileManager& files, const platform::SystemLayout& layout,
                       PrintLine print)
    : m_files(files)
    , m_layout(layout)
    , m_print(std::move(print))
{}

void CliCommand::run(const CliArguments& arguments) const
{
    m_print(u"🎛️ Plugin Manager - Audio Plugin Management Tool"_s);
    m_print(QString(50, u'='));
    if (!arguments.action) {
        m_print(u"Use --action <scan|list|enable|disable> to perform operations"_s);
        m_print(u"Use --help for more information"_s);
        m_print(u"\n💡 To launch the GUI interface, run:"_s);
        m_print(u"   PluginManager GUI"_s);
        return;
    }
    const QString action = arguments.action->toLower();
    if (action == u"scan") {
        scanPlugins();
    } else if (action == u"list") {
        // On purpose: a list is a scan with another heading.
        m_print(u"📋 Listing audio plugins..."_s);
        scanPlugins();
    } else if (action == u"enable" || action == u"disable") {
        togglePlugin(arguments, action == u"enable");
    } else {
        m_print(u"❌ Unknown action: "_s + *arguments.action);
        m_print(u"Available actions: scan, list, enable, disable"_s);
    }
}

void CliCommand::scanPlugins() const
{
    m_print(u"🔍 Scanning for audio plugins..."_s);
    const PluginLocations locations(m_layout);
    qsizetype total = 0;
    // All system folders come before the user's folders.
    for (const qsizetype index : {0, 1}) {
        for (const PluginFormat format : allCases<PluginFormat>) {
            const QStringList folders = locations.systemPaths(format);
            if (!folders.isEmpty()) // with the home "/", the system's folders count twice
                total += countEntries(folders.value(index, folders.constFirst()));
        }
    }
    m_print(u"\n✅ Scan complete. Found %1 total plugins."_s.arg(total));
}

qsizetype CliCommand::countEntries(const QString& folder) const
{
    if (!m_files.exists(folder)) {
        m_print(u"📁 "_s + folder + u": Directory not found"_s);
        return 0;
    }
    try {
        const auto count =
            static_cast<qsizetype>(m_files.list(folder, platform::HiddenEntries::include).size());
        m_print(u"📁 "_s + folder + u": "_s + QString::number(count) + u" plugins"_s);
        return count;
    } catch (const platform::FileError& error) {
        m_print(u"❌ Error scanning "_s + folder + u": "_s + error.message);
        return 0;
    }
}

void CliCommand::togglePlugin(const CliArguments& arguments, bool enable) const
{
    if (!arguments.name) {
        m_print(u"❌ Plugin name required for enable/disable operations"_s);
        m_print(u"Use: --name <plugin-name>"_s);
        return;
    }
    m_print((enable ? u"Enabling plugin: "_s : u"Disabling plugin: "_s) + *arguments.name);
    if (arguments.format)
        m_print(u"Format filter: "_s + *arguments.format);
    // On purpose: only the GUI enables and disables plugins.
    m_print(u"⚠️ Plugin management functionality will be implemented in the GUI version"_s);
    m_print(u"💡 Run 'PluginManager GUI' to launch the graphical interface"_s);
}

} // namespace orvanlite
