#pragma once

#include <QString>

namespace orvanlite::platform {

class FileManager;

/// Creates the folder with mode 0700, and missing parents. An existing folder is left unchanged.
/// Errors: none; check with requirePrivateFolder().
void makePrivateFolder(const QString& path);

/// Requires a real folder (no link) of the effective user with mode 0700 that only this user and root can
/// replace. Then only these two can read or replace files in it.
/// Errors: FileError with the path of the offending folder.
void requirePrivateFolder(const QString& path);

/// Removes batch scripts and counters left by a killed run: pairs that have not changed for an hour. A script
/// that outlives its window still updates its counter.
/// Errors: none; nothing is removed from a folder that is not private.
void removeOldBatchFiles(FileManager& files, const QString& folder);

} // namespace orvanlite::platform
