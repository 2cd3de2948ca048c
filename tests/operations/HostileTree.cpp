#include "HostileTree.h"

#include <QRandomGenerator>

#include <algorithm>
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

Tree takeFrom(Tree& tree, const QString& path)
{
    const std::string start = path.toStdString();
    Tree taken;
    std::erase_if(tree, [&](const auto& each) {
        const bool isWithin = each.first == start || each.first.starts_with(start + '/');
        if (isWithin)
            taken.emplace(each.first.substr(start.size()), each.second);
        return isWithin;
    });
    return taken;
}

std::string difference(const Tree& found, const Tree& wanted)
{
    const auto [left, right] = std::mismatch(found.begin(), found.end(), wanted.begin(), wanted.end());
    if (left == found.end() && right == wanted.end())
        return {};
    return "found " + (left == found.end() ? "the end" : left->first) + ", wanted " +
           (right == wanted.end() ? "the end" : right->first);
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
        name = QString::fromUtf8(name.toUtf8()); // drops unpaired surrogates
        if (name != u"."_s && name != u".."_s && !names.contains(name))
            names.append(name);
    }
    return names;
}

} // namespace orvanlite::test
