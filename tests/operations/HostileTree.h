#pragma once

#include <QString>
#include <QStringList>

#include <map>
#include <string>

namespace orvanlite::test {

/// The paths of a folder and everything in it, each with its content.
using Tree = std::map<std::string, std::string>;

[[nodiscard]] Tree treeOf(const QString& root);

/// Removes an entry with everything in it. Returns these with paths relative to it.
Tree takeFrom(Tree& tree, const QString& path);

/// The first difference between two trees; empty when they are equal.
[[nodiscard]] std::string difference(const Tree& found, const Tree& wanted);

/// 400 file names that a shell would misread without quotes. Executed, they would leave a file "canary".
[[nodiscard]] QStringList hostileNames();

} // namespace orvanlite::test
