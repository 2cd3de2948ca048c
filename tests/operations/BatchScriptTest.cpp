#include "operations/BatchScript.h"

#include "platform/freedesktop/AdministratorScript.h"
#include "support/TempRoot.h"

#include <QProcess>
#include <QRandomGenerator>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>

namespace orvanlite::test {

using namespace Qt::StringLiterals;

namespace {

namespace fs = std::filesystem;

/// A root and every file and folder below it with its content.
using Tree = std::map<std::string, std::string>;

Tree treeOf(const QString& root)
{
    Tree tree{{root.toStdString(), "(folder)"}};
    for (const auto& entry : fs::recursive_directory_iterator(root.toStdString())) {
        std::string content = "(folder)";
        if (entry.is_regular_file()) {
            std::ifstream file(entry.path(), std::ios::binary);
            content.assign(std::istreambuf_iterator<char>(file), {});
        }
        tree.emplace(entry.path().string(), content);
    }
    return tree;
}

/// The tree after a move of one entry with all that is in it; the folder of the destination comes into being.
void expectMove(Tree& tree, const std::string& source, const std::string& destination)
{
    for (fs::path folder = fs::path(destination).parent_path(); !tree.contains(folder.string());
         folder = folder.parent_path())
        tree.emplace(folder.string(), "(folder)");
    Tree moved;
    for (auto each = tree.lower_bound(source); each != tree.end() && each->first.starts_with(source);) {
        const std::string rest = each->first.substr(source.size());
        if (rest.empty() || rest.front() == '/') {
            moved.emplace(destination + rest, each->second);
            each = tree.erase(each);
        } else {
            ++each;
        }
    }
    tree.merge(moved);
}

/// Names that a shell would trip over if it ever saw them bare; what they would do if run is to leave a file
/// "canary" behind.
QStringList hostileNames()
{
    const QString known =
        u"O'Neil.vst3¦''¦'\"'\"'¦\"quoted\"¦two  blanks¦ ¦\n¦line\nfeed\n¦\r\n¦tab\t¦$HOME¦${IFS}¦$(touch canary)¦"
        "`touch canary`¦'; touch canary; '¦\"; touch canary; \"¦\n touch canary\n¦' && touch canary && echo '¦"
        "x;touch canary¦& touch canary &¦| touch canary¦> canary¦-rf¦--¦-t canary¦*¦?¦[a-z]*¦{a,b}¦~¦#¦!!¦%s%n¦\\¦\\n¦"
        "\\'¦end\\¦\u0001\u001b[2J¦Übergröße¦U\u0308ber¦シンセ¦Синт.component¦عود¦🎛️¦\u2028\ufeff¦$'\\n'¦"
        ".hidden¦..."_s;
    QStringList names = known.split(u'¦');
    names << QString(255, u'n') << QString(85, u'語') << QString(250, u'\'');
    const QString alphabet = u"'\"\\$`();&|<>*?[]{}~#!%-=+^@,.:_ \n\r\tantouchy é語🎹"_s;
    QRandomGenerator random(20'24);
    while (names.size() < 400) {
        QString name;
        for (int left = random.bounded(1, 40); left > 0; --left)
            name += alphabet.at(random.bounded(static_cast<int>(alphabet.size())));
        // Half of a pair of surrogates is no letter.
        name = QString::fromUtf8(name.toUtf8());
        if (name != u"."_s && name != u".."_s && !names.contains(name))
            names.append(name);
    }
    return names;
}

BatchItem item(const QString& source, const QString& destination) { return {{}, source, destination}; }

} // namespace

TEST(BatchScriptTest, IsTheSameByteForByte)
{
    EXPECT_EQ(batchScript({}, u"/t/progress.txt"_s), u"#!/bin/sh\nn=0"_s);
    const std::vector<BatchItem> items{
        item(u"/Library/a b/O'Neil.vst3"_s, u"/Library/Disabled/VST3/O'Neil.vst3"_s),
        item(u"/x/$(y)\n\\z\"é"_s, u"/d's/e/f"_s)};
    EXPECT_EQ(batchScript(items, u"/it's/progress.txt"_s).toUtf8(), QByteArray(R"sh(#!/bin/sh
n=0
mkdir -p '/Library/Disabled/VST3' && mv '/Library/a b/O'"'"'Neil.vst3' '/Library/Disabled/VST3/O'"'"'Neil.vst3'
n=$((n+1)) && printf '%d' $n > '/it'"'"'s/progress.txt'
mkdir -p '/d'"'"'s/e' && mv '/x/$(y)
\z"é' '/d'"'"'s/e/f'
n=$((n+1)) && printf '%d' $n > '/it'"'"'s/progress.txt')sh"));
    EXPECT_EQ(
        batchAppleScript(u"/t/it's.sh"_s),
        u"do shell script \"chmod +x '/t/it'\"'\"'s.sh' && '/t/it'\"'\"'s.sh'\" with administrator privileges"_s);
}

TEST(BatchScriptTest, MovesHostileNamesAndNothingElse)
{
    const TempRoot root;
    const QString longFolder = u"/deep"_s + (u'/' + QString(200, u'd')).repeated(8);
    std::vector<BatchItem> items;
    const QStringList names = hostileNames();
    for (qsizetype i = 0; i < names.size(); ++i) {
        // Every third in a folder of that name as well, every fourth a bundle, some very deep.
        QString source = u"/in"_s;
        if (i % 7 == 0)
            source += longFolder;
        if (i % 3 == 0)
            source += u"/folder"_s + QString::number(i) + u'/' + names[i];
        source += u'/' + names[i];
        const QByteArray content = QByteArray::number(i);
        root.addFile(i % 4 == 0 ? source + u"/Contents/file"_s : source, content);
        const QString folder = i % 5 == 0 ? u"/folders/"_s + names[i] : u"/out"_s;
        items.push_back(item(root.at(source), root.at(folder + u'/' + names[i])));
    }
    // What the names would hit as patterns or options.
    for (const QString& bystander :
         {u"/in/a"_s, u"/in/b"_s, u"/in/canaries"_s, u"/a"_s, u"/Users/tester/x"_s})
        root.addFile(bystander, "bystander");
    const QString progress = root.at(u"/progress 'of' $(touch canary).txt");
    const QString script = root.at(u"/batch.sh");
    root.addFile(u"/batch.sh", batchScript(items, progress).toUtf8());

    Tree wanted = treeOf(root.path());
    for (const BatchItem& each : items)
        expectMove(wanted, each.source.toStdString(), each.destination.toStdString());
    wanted.emplace(progress.toStdString(), std::to_string(items.size()));

    const auto command = platform::parseAdministratorScript(batchAppleScript(script));
    ASSERT_TRUE(std::holds_alternative<QString>(command));
    QProcess shell;
    shell.setWorkingDirectory(root.path());
    shell.start(u"/bin/sh"_s, {u"-c"_s, std::get<QString>(command)});
    ASSERT_TRUE(shell.waitForFinished());
    EXPECT_EQ(shell.exitCode(), 0);
    EXPECT_EQ(shell.readAllStandardError(), QByteArray());
    EXPECT_EQ(shell.readAllStandardOutput(), QByteArray());

    const Tree found = treeOf(root.path());
    EXPECT_EQ(found.size(), wanted.size());
    for (const auto& [path, content] : wanted) {
        const auto same = found.find(path);
        ASSERT_NE(same, found.end()) << path;
        EXPECT_EQ(same->second, content) << path;
    }
}

} // namespace orvanlite::test
