#include "operations/ShellCommands.h"

#include "HostileTree.h"
#include "platform/AdministratorScript.h"
#include "support/TempRoot.h"

#include <QProcess>

namespace orvanlite::test {

TEST(ShellCommandsTest, BatchMovesHostileNamesAndNothingElse)
{
    const TempRoot root;
    const QString longFolder = u"/deep"_s + (u'/' + QString(200, u'd')).repeated(8);
    std::vector<BatchItem> items;
    const QStringList names = hostileNames();
    for (qsizetype i = 0; i < names.size(); ++i) {
        // Every third is in a folder of the same name, every fourth is a bundle, some are nested deeply.
        QString source = u"/in"_s;
        if (i % 7 == 0)
            source += longFolder;
        if (i % 3 == 0)
            source += u"/folder"_s + QString::number(i) + u'/' + names[i];
        source += u'/' + names[i];
        const QByteArray content = QByteArray::number(i);
        root.addFile(i % 4 == 0 ? source + u"/Contents/file"_s : source, content);
        const QString folder = i % 5 == 0 ? u"/folders/"_s + names[i] : u"/out"_s;
        items.push_back({{}, root.at(source), root.at(folder + u'/' + names[i])});
    }
    // These match the names when read as patterns or options.
    for (const QString& bystander :
         {u"/in/a"_s, u"/in/b"_s, u"/in/canaries"_s, u"/a"_s, u"/Users/tester/x"_s})
        root.addFile(bystander, "bystander");
    const QString progress = root.at(u"/progress 'of' $(touch canary).txt");
    const QString script = root.at(u"/batch.sh");
    root.addFile(u"/batch.sh", batchScript(items, progress).toUtf8());

    Tree before = treeOf(root.path());
    const auto command = platform::parseAdministratorScript(batchAppleScript(script));
    ASSERT_TRUE(std::holds_alternative<QString>(command));
    QProcess shell;
    shell.setWorkingDirectory(root.path());
    shell.start(u"/bin/sh"_s, {u"-c"_s, std::get<QString>(command)});
    ASSERT_TRUE(shell.waitForFinished());
    EXPECT_EQ(shell.exitCode(), 0);
    EXPECT_EQ(shell.readAllStandardError(), QByteArray());
    EXPECT_EQ(shell.readAllStandardOutput(), QByteArray());

    Tree after = treeOf(root.path());
    EXPECT_EQ(takeFrom(after, progress), (Tree{{"", std::to_string(items.size())}}));
    for (const BatchItem& each : items)
        EXPECT_EQ(takeFrom(after, each.destination), takeFrom(before, each.source));
    for (const QStringView created : {u"/out", u"/folders"})
        takeFrom(after, root.at(created));
    EXPECT_EQ(difference(after, before), "");
}

} // namespace orvanlite::test
