#pragma once

#include <QString>

namespace orvanlite::platform {

class FileManager;

/// Creates the folder with mode 0700, and missing parents. An existing folder stays as it is.
/// Errors: none; requirePrivateFolder() finds out.
void makePrivateFolder(const QString& path);

/// Makes sure that the path is a real folder of the effective user with mode 0700, and that nobody else but root can put
/// another one in its place. Nobody else can then read, replace or even name what is in it, as the names of scripts
/// cannot be guessed.
/// Errors: FileError with the path of the folder that is not as it should be.
void requirePrivateFolder(const QString& path);

/// Removes scripts of batches and their counters from the folder when neither has changed for an hour: an earlier run
/// was killed. A script may still run although its window has been closed; it then writes its counter.
/// Errors: none; nothing is removed from a folder that is not private.
void removeOldBatchFiles(FileManager& files, const QString& folder);

} // namespace orvanlite::platform
