#include "HostileTree.h"

#include <QRandomGenerator>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace orvanlite::test {

using namespace Qt::StringLiterals;

namespace fs = std::filesystem;

Tree treeOf(const QString& root)
{
    Tree tree{{root.toStdString(), "(folder)"}};
    for (const auto& entry : fs::recursive_directory_iterator(root.toStdString())) {
        std::string content = entry.is_symlink() ? "(link)" : "(folder)";
        if (entry.is_regular_file() && !entry.is_symlink()) {
            std::ifstream file(entry.path(), std::ios::binary);
            content.assign(std::istreambuf_iterator<char>(file), {});
        }
        tree.emplace(entry.path().string(), content);
    }
    return tree;
}

void takeOut(Tree& tree, const std::string& path)
{
    std::erase_if(tree,
                  [&](const auto& each) { return each.first == path || each.first.starts_with(path + '/'); });
}

void moveWithin(Tree& tree, const std::string& source, const std::string& destination)
{
    for (fs::path folder = fs::path(destination).parent_path(); !tree.contains(folder.string());
         folder = folder.parent_path())
        tree.emplace(folder.string(), "(folder)");
    Tree moved;
    for (const auto& [path, content] : tree) {
        if (path == source || path.starts_with(source + '/'))
            moved.emplace(destination + path.substr(source.size()), content);
    }
    takeOut(tree, source);
    tree.merge(moved);
}

std::string difference(const Tree& found, const Tree& wanted)
{
    for (const auto& [path, content] : wanted) {
        const auto same = found.find(path);
        if (same == found.end())
            return "missing: " + path;
        if (same->second != content)
            return "changed: " + path;
    }
    for (const auto& [path, content] : found) {
        if (!wanted.contains(path))
            return "left over: " + path;
    }
    return {};
}

QStringList hostileNames()
{
    const QString known =
        u"O'Neil.vst3¦''¦'\"'\"'¦\"quoted\"¦two  blanks¦ ¦\n¦line\nfeed\n¦\r\n¦tab\t¦$HOME¦${IFS}¦$(touch canary)¦"
        "`touch canary`¦'; touch canary; '¦\"; touch canary; \"¦\n touch canary\n¦' && touch canary && echo '¦"
        "x;touch canary¦& touch canary &¦| touch canary¦> canary¦-rf¦--¦-t canary¦*¦?¦[a-z]*¦{a,b}¦~¦#¦!!¦%s%n¦\\¦\\n¦"
        "\\'¦end\\¦a\\\\b¦a\\b¦\" & (do shell script \"touch canary\") & \"¦x\" with administrator privileges¦"
        "\u0001\u001b[2J¦Übergröße¦U\u0308ber¦シンセ¦Синт.component¦عود¦🎛️¦\u2028\ufeff¦$'\\n'¦.hidden¦..."_s;
    QStringList names = known.split(u'¦');
    names << QString(255, u'n') << QString(85, u'語') << QString(250, u'\'');
    const QString alphabet = u"'\"\\$`();&|<>*?[]{}~#!%-=+^@,.:_ \n\r\tantouchy é語🎹"_s;
    QRandomGenerator random(20'24);
    while (names.size() < 400) {
        QString name;
        for (int left = random.bounded(1, 40); left > 0; --left)
            name += alphabet.at(random.bounded(static_cast<int>(alphabet.size())));
        name = QString::fromUtf8(name.toUtf8()); // half of a surrogate pair is no letter
        if (name != u"."_s && name != u".."_s && !names.contains(name))
            names.append(name);
    }
    return names;
}

} // namespace orvanlite::test
