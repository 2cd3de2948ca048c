#include "OperationsFixture.h"

namespace orvanlite::test {

class ViewModelScanTest : public OperationsTest {};

TEST_F(ViewModelScanTest, FillsTheCatalogueAndTellsWhatIsNew)
{
    m_root.addBundle(u"/Library/Audio/Plug-Ins/VST3/Alpha.vst3");
    m_root.addBundle(u"/Users/tester/Library/Audio/Plug-Ins/CLAP/beta.clap");
    QList<bool> loading;
    model().isLoading.observe(&model(), [&] { loading.append(*model().isLoading); });

    scan();
    EXPECT_EQ(m_printed, u"🔍 Scan debug: existingKeys.count = 0\n"
                         "🔍 Scan debug: plugins.count = 2\n"
                         "⚠️ Scan debug: existingKeys.isEmpty, skipping new plugin detection\n"_s);
    EXPECT_TRUE(model().newlyDetectedPlugins->empty());
    EXPECT_EQ(shownNames(), (QStringList{u"Alpha"_s, u"beta"_s}));
    EXPECT_EQ(model().plugins->size(), 2U);
    EXPECT_EQ(loading, (QList<bool>{true, false}));

    // Moved to another folder it is the same plugin; a new format of a known name is new.
    m_system.files.move(m_root.at(u"/Users/tester/Library/Audio/Plug-Ins/CLAP/beta.clap"),
                        m_root.at(u"/Library/Audio/Plug-Ins/Disabled/CLAP/beta.clap"));
    m_root.addBundle(u"/Library/Audio/Plug-Ins/VST/Alpha.vst");
    scan();
    EXPECT_EQ(m_printed, u"🔍 Scan debug: existingKeys.count = 2\n"
                         "🔍 Scan debug: plugins.count = 3\n"
                         "🆕 New plugin detected: Alpha (VST)\n"
                         "🔍 Scan debug: newlyDetectedPlugins.count = 1\n"_s);
    ASSERT_EQ(model().newlyDetectedPlugins->size(), 1U);
    EXPECT_EQ(model().newlyDetectedPlugins->front().format, PluginFormat::vst2);
    EXPECT_FALSE(row(u"beta"_s).isEnabled);

    scan();
    EXPECT_TRUE(model().newlyDetectedPlugins->empty());
}

TEST_F(ViewModelScanTest, ClearsTheErrorAtItsStartOnly)
{
    model().error = PluginError(PluginError::Kind::unknownError, u"old"_s);
    model().refreshAllState();
    EXPECT_TRUE(model().error->has_value());
    scan();
    EXPECT_FALSE(model().error->has_value());
}

TEST_F(ViewModelScanTest, IsBusyUntilTheCatalogueHasTheResult)
{
    m_root.addBundle(u"/Library/Audio/Plug-Ins/VST3/Alpha.vst3");
    std::size_t loadedWhileBusy = 0;
    model().displayedPlugins.observe(&model(), [&] {
        if (*model().isLoading)
            loadedWhileBusy = model().displayedPlugins->size();
    });
    scan();
    EXPECT_EQ(loadedWhileBusy, 1U);
    EXPECT_FALSE(*model().isLoading);
}

TEST_F(ViewModelScanTest, StaysUsableOnACatalogueThatCannotBeOpened)
{
    m_root.addFolder(u"/blocked/plugins.db");
    testing::internal::CaptureStdout();
    PluginDatabase blocked(m_system.platform, m_root.at(u"/blocked/plugins.db"));
    EXPECT_TRUE(testing::internal::GetCapturedStdout().starts_with("❌ Failed to open database at "));
    m_root.addBundle(u"/Library/Audio/Plug-Ins/VST3/Alpha.vst3");
    PluginManagerViewModel viewModel(m_system.platform, blocked, m_log);
    testing::internal::CaptureStdout();
    runTask(viewModel.scanForPlugins());
    testing::internal::GetCapturedStdout();
    EXPECT_EQ(viewModel.plugins->size(), 1U);
    EXPECT_TRUE(viewModel.displayedPlugins->empty());
    EXPECT_EQ(*viewModel.dbTotalCount, 0);
    EXPECT_FALSE(*viewModel.isLoading);
}

} // namespace orvanlite::test
