#pragma once

#include <QString>
#include <QStringList>

#include <map>
#include <string>

namespace orvanlite::test {

/// The paths of a folder and everything in it, each with its content.
using Tree = std::map<std::string, std::string>;

[[nodiscard]] Tree treeOf(const QString& root);

/// Removes an entry with everything in it.
void removeFrom(Tree& tree, const std::string& path);

/// Moves an entry with everything in it and creates the folders of its destination.
void moveWithin(Tree& tree, const std::string& source, const std::string& destination);

/// The first difference between two trees; empty when they are equal.
[[nodiscard]] std::string difference(const Tree& found, const Tree& wanted);

/// 400 file names that a shell would misread without quotes. Executed, they would leave a file "canary".
[[nodiscard]] QStringList hostileNames();

} // namespace orvanlite::test
