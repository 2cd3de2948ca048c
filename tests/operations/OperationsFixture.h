#pragma once

#include "catalogue/PluginDatabase.h"
#include "model/Uuid.h"
#include "operations/BatchProgress.h"
#include "operations/PluginManagerViewModel.h"
#include "platform/freedesktop/FreedesktopScriptRunner.h"
#include "records/ActivityLogManager.h"
#include "support/Fakes.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <memory>

namespace orvanlite::test {

using namespace Qt::StringLiterals;

/// Writes down what the progress panel is told.
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

/// A view model on a real catalogue and real files. Scripts run for real, without a password.
class OperationsTest : public testing::Test {
protected:
    OperationsTest() { m_system.scripts.runner = &m_runner; }
    /// Whatever still sleeps ends, so that its frame is freed.
    void TearDown() override { m_system.clock.advance(std::chrono::seconds(1)); }

    /// The view model under test, made on first use.
    PluginManagerViewModel& model()
    {
        if (!m_model)
            m_model = std::make_unique<PluginManagerViewModel>(m_system.platform, m_database, m_log);
        m_model->setBatchProgress(&m_progress);
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
    /// The rows in the order of the names given.
    AudioPlugins rows(const QStringList& names)
    {
        AudioPlugins found;
        for (const QString& name : names)
            found.push_back(row(name));
        return found;
    }
    /// "{name} {Enabled or Disabled}" of every row, by name; what the catalogue holds and what lies on disk agree
    /// when this is the same after a scan.
    [[nodiscard]] QStringList states() const
    {
        QStringList all;
        for (const AudioPlugin& each : m_database.queryPlugins({}, "name"_L1, true, 1000, 0))
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
    /// A tool that scripts find before the real one. Gets its number of calls in `$n` and the folder of the
    /// scripts in `$temporary`.
    void standIn(const QString& tool, const QByteArray& lines) const
    {
        const QString path = u"/tools/"_s + tool;
        const QByteArray counter = m_root.at(u"/tools/calls").toUtf8();
        m_root.addFile(path, "#!/bin/sh\nprintf . >> " + counter + "\nn=$(wc -c < " + counter +
                                 ")\ntemporary=" + m_system.layout.temporary.toUtf8() + '\n' + lines);
        QFile::setPermissions(m_root.at(path), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    /// What lies in the folder of the scripts.
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
    QString m_printed;

private:
    std::unique_ptr<PluginManagerViewModel> m_model;
};

} // namespace orvanlite::test
