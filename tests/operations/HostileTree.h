#pragma once

#include <QString>
#include <QStringList>

#include <map>
#include <string>

namespace orvanlite::test {

/// A root and every file, link and folder below it, each with its content.
using Tree = std::map<std::string, std::string>;

[[nodiscard]] Tree treeOf(const QString& root);

/// The tree without an entry and all that is in it.
void takeOut(Tree& tree, const std::string& path);

/// Moves an entry with all that is in it, with the folders of its destination.
void moveWithin(Tree& tree, const std::string& source, const std::string& destination);

/// The first difference between two trees; empty when they are the same.
[[nodiscard]] std::string difference(const Tree& found, const Tree& wanted);

/// 400 file names that a shell would trip over if it ever saw them unquoted; run as commands they would leave a file
/// "canary".
[[nodiscard]] QStringList hostileNames();

} // namespace orvanlite::test
