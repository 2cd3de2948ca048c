#pragma once

#include "model/AudioPlugin.h"

#include <QByteArrayView>

#include <optional>
#include <vector>

namespace orvanlite::platform {
struct SystemLayout;
}

/// Commands that a shell runs as root. Paths are inserted only through shellQuoted().
namespace orvanlite {

/// The text as one shell word: in single quotes, with each `'` written as `'"'"'`.
[[nodiscard]] QString shellQuoted(const QString& text);

/// AppleScript source that runs the command as root. On purpose the command is not escaped for the
/// AppleScript string literal: a path with an apostrophe, a quotation mark or a backslash gives a script that
/// does not compile, and nothing is moved or deleted.
[[nodiscard]] QString administratorScript(const QString& command);

enum class ParentFolder { create, mustExist };

[[nodiscard]] QString moveCommand(const QString& source, const QString& destination, ParentFolder parent);

/// Appended to the move of an Audio Unit: clears the system's Audio Unit cache and kills its registrar, which
/// then rescans the folders. On purpose the final "true" hides both a failed move and a failed flush.
[[nodiscard]] QString audioUnitCacheFlush(const platform::SystemLayout& layout);

/// Deletes the files at the current paths and stops at the first failure.
[[nodiscard]] QString deletionCommand(const AudioPlugins& plugins);

/// One plugin of a batch with its move.
struct BatchItem {
    AudioPlugin plugin;
    QString source;
    QString destination;
};

/// Shell script that moves every item and writes the number of finished ones to the progress file.
/// Shape: lines separated by line feeds, without a trailing one. A failed line does not stop the script: the
///        counter advances even after a failed move, and the exit status is that of the last line.
[[nodiscard]] QString batchScript(const std::vector<BatchItem>& items, const QString& progressFile);

/// Fraction of the finished items, 0...1, from the content of the progress file.
/// Errors: empty for anything but a number, and for a batch without items.
[[nodiscard]] std::optional<double> batchProgress(QByteArrayView counter, qsizetype items);

/// AppleScript source that makes the script file executable and runs it as root.
[[nodiscard]] QString batchAppleScript(const QString& scriptFile);

} // namespace orvanlite
