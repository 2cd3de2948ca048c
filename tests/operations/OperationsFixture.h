#pragma once

#include "catalogue/PluginDatabase.h"
#include "model/Uuid.h"
#include "operations/PluginManagerViewModel.h"
#include "platform/freedesktop/FreedesktopScriptRunner.h"
#include "records/ActivityLogManager.h"
#include "support/Fakes.h"

#include <gtest/gtest.h>

#include <memory>

namespace orvanlite::test {

using namespace Qt::StringLiterals;

/// A view model on a real catalogue and real files. Scripts run for real, without a password.
class OperationsTest : public testing::Test {
protected:
    OperationsTest() { m_system.scripts.runner = &m_runner; }

    /// The view model under test, made on first use.
    PluginManagerViewModel& model()
    {
        if (!m_model)
            m_model = std::make_unique<PluginManagerViewModel>(m_system.platform, m_database, m_log);
        return *m_model;
    }
    /// Scans what stands in the root and drops what that prints.
    void scan()
    {
        testing::internal::CaptureStdout();
        runTask(model().scanForPlugins());
        m_printed = QString::fromStdString(testing::internal::GetCapturedStdout());
    }
    /// The row of the name as the catalogue has it now.
    AudioPlugin row(const QString& name)
    {
        for (const AudioPlugin& each : m_database.queryPlugins({}, "name"_L1, true, 1000, 0)) {
            if (each.name == name)
                return each;
        }
        ADD_FAILURE() << "no row is named " << qPrintable(name);
        return {};
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
    PluginDatabase m_database{m_system.platform, m_system.layout.applicationFolder() + u"/plugins.db"_s};
    ActivityLogManager m_log{m_system.platform};
    QString m_printed;

private:
    std::unique_ptr<PluginManagerViewModel> m_model;
};

} // namespace orvanlite::test
