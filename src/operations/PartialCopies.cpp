#include "operations/PartialCopies.h"

#include "operations/ShellCommands.h"
#include "platform/FileManager.h"
#include "platform/Path.h"

#include <QHash>

#include <algorithm>

namespace orvanlite {

namespace {

using platform::DirectoryEntry;
using platform::EntryKind;

bool isPartOfFile(const platform::FileManager& files, const QString& copy, const QString& source)
{
    const auto copied = files.status(copy);
    const auto original = files.status(source);
    return copied && original && !copied->isDirectory && !original->isDirectory &&
           copied->size <= original->size;
}

/// Whether every entry of the copy is in the source too, with at least its size. Throws FileError.
bool isPartOfFolder(const platform::FileManager& files, const QString& copy, const QString& source)
{
    constexpr auto kAll = platform::HiddenEntries::include;
    const std::vector<DirectoryEntry> originals = files.list(source, kAll);
    const auto isPart = [&](const DirectoryEntry& entry) {
        if (std::find(originals.begin(), originals.end(), entry) == originals.end())
            return false;
        const QString copied = platform::join(copy, entry.name);
        const QString original = platform::join(source, entry.name);
        switch (entry.kind) {
        case EntryKind::directory:
            return isPartOfFolder(files, copied, original);
        case EntryKind::file:
            return isPartOfFile(files, copied, original);
        case EntryKind::unresolved:
            break; // a link has no content of its own
        }
        return true;
    };
    const std::vector<DirectoryEntry> entries = files.list(copy, kAll);
    return std::all_of(entries.begin(), entries.end(), isPart);
}

} // namespace

PartialCopies::PartialCopies(platform::FileManager& files, const std::vector<BatchItem>& items)
    : m_files(files)
{
    QHash<QString, int> uses;
    for (const BatchItem& item : items)
        ++uses[item.destination];
    for (const BatchItem& item : items) {
        if (uses.value(item.destination) == 1 && !files.exists(item.destination))
            m_moves.emplace_back(item.source, item.destination);
    }
}

void PartialCopies::remove() const
{
    for (const auto& [source, destination] : m_moves) {
        if (!m_files.exists(source) || !m_files.exists(destination))
            continue;
        try {
            const bool isFolder = m_files.status(source)->isDirectory;
            if (isFolder ? isPartOfFolder(m_files, destination, source)
                         : isPartOfFile(m_files, destination, source))
                m_files.remove(destination);
        } catch (const platform::FileError&) {
            continue; // the next scan lists the copy
        }
    }
}

} // namespace orvanlite
