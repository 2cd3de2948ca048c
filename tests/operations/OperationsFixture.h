#pragma once

#include "catalogue/PluginDatabase.h"
#include "model/Uuid.h"
#include "operations/BatchProgress.h"
#include "operations/PluginManagerViewModel.h"
#include "platform/freedesktop/FreedesktopScriptRunner.h"
#include "records/ActivityLogManager.h"
#include "support/Fakes.h"

#include <QDir>

#include <memory>

namespace orvanlite::test {

class RecordingProgress final : public BatchProgress {
public:
    QStringList calls;
    std::vector<double> values;
    std::function<void()> whenHidden;

    void show(const QString& label, int count) override
    {
        calls.append(label + u" #"_s + QString::number(count));
    }
    void hide() override
    {
        calls.append(u"hide"_s);
        if (whenHidden)
            whenHidden();
    }
    void setProgress(double progress) override { values.push_back(progress); }
};

/// A view model on a real catalogue and real files. Scripts are executed, without a password.
class OperationsTest : public testing::Test {
protected:
    OperationsTest() { m_system.scripts.runner = &m_runner; }
    /// Ends sleeping coroutines, so that their frames are freed.
    void TearDown() override { m_system.clock.advance(std::chrono::seconds(1)); }

    PluginManagerViewModel& model()
    {
        if (!m_model)
            m_model = std::make_unique<PluginManagerViewModel>(m_system.platform, m_database, m_log);
        m_model->setBatchProgress(&m_progress);
        return *m_model;
    }
    void scan()
    {
        m_printed = printedBy([this] { runTask(model().scanForPlugins()); });
    }
    [[nodiscard]] AudioPlugins allRows() const
    {
        return m_database.queryPlugins({}, "name"_L1, true, 1000, 0);
    }
    AudioPlugin row(const QString& name)
    {
        for (const AudioPlugin& each : allRows()) {
            if (each.name == name)
                return each;
        }
        ADD_FAILURE() << "no row is named " << qPrintable(name);
        return {};
    }
    AudioPlugins rows(const QStringList& names)
    {
        AudioPlugins found;
        for (const QString& name : names)
            found.push_back(row(name));
        return found;
    }
    /// "{name} {Enabled or Disabled}" of every row, by name.
    [[nodiscard]] QStringList states() const
    {
        QStringList all;
        for (const AudioPlugin& each : allRows())
            all.append(each.name + u' ' + each.statusValue());
        return all;
    }
    /// "{action} {name}" of every entry, newest first.
    [[nodiscard]] QStringList logged() const
    {
        QStringList all;
        for (const ActivityLogEntry& each : *m_log.entries)
            all.append(rawValue(each.action) + u' ' + each.pluginName);
        return all;
    }
    /// Replaces a tool for scripts. Has its number of calls in `$n` and the folder of the scripts in
    /// `$temporary`.
    void replaceTool(const QString& tool, const QByteArray& lines) const
    {
        const QByteArray counter = m_root.at(u"/tools/calls").toUtf8();
        m_root.addScript(u"/tools/"_s + tool, "printf . >> " + counter + "\nn=$(wc -c < " + counter +
                                                  ")\ntemporary=" + m_system.layout.temporary.toUtf8() +
                                                  '\n' + lines);
    }
    [[nodiscard]] QStringList temporaryFiles() const
    {
        return QDir(m_system.layout.temporary).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    }
    [[nodiscard]] QStringList shownNames()
    {
        QStringList names;
        for (const AudioPlugin& each : model().filteredPlugins())
            names.append(each.name);
        return names;
    }
    void fill(int count)
    {
        AudioPlugins plugins;
        for (int i = 0; i < count; ++i) {
            AudioPlugin plugin;
            plugin.id = makeUuid();
            plugin.name = u"Plugin %1"_s.arg(i, 4, 10, QChar(u'0'));
            plugin.manufacturer = i % 2 == 0 ? u"Even"_s : u"Odd"_s;
            plugin.format = i % 2 == 0 ? PluginFormat::vst3 : PluginFormat::clap;
            plugin.originalPath = plugin.currentPath = m_system.root.at(u"/Library/") + plugin.name;
            plugin.isEnabled = i % 10 != 0;
            plugins.push_back(plugin);
        }
        m_database.replaceAllPlugins(plugins);
    }
    [[nodiscard]] int countPosts() const
    {
        return m_system.notifications.count(u"com.yourcompany.Orvanlite.pluginCountChanged");
    }

    TestPlatform m_system;
    const TempRoot& m_root = m_system.root;
    platform::FreedesktopScriptRunner m_runner{m_system.layout, platform::Elevation::none};
    RecordingProgress m_progress;
    PluginDatabase m_database{m_system.platform, m_system.layout.applicationFolder() + u"/plugins.db"_s};
    ActivityLogManager m_log{m_system.platform};
    std::string m_printed;

private:
    std::unique_ptr<PluginManagerViewModel> m_model;
};

} // namespace orvanlite::test
