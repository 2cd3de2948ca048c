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

constexpr qint64 kLargestCompared = 1 << 28; // bytes; larger files count as different

/// Whether the source's content begins with all of the copy's.
bool isPartOfFile(const platform::FileManager& files, const QString& copy, const QString& source)
{
    const auto copied = files.read(copy, kLargestCompared);
    const auto original = copied ? files.read(source, kLargestCompared) : std::nullopt;
    return original && original->startsWith(*copied);
}

/// Whether every entry of the copy is in the source too, and every file a part of the source's. Throws
/// FileError.
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
        const auto original = files.status(item.source);
        // Another item may arrive where this one came from: plugins of mixed state swap their places.
        if (original && uses.value(item.destination) == 1 && !uses.contains(item.source) &&
            !files.exists(item.destination))
            m_moves.push_back({item.source, item.destination, *original});
    }
}

bool PartialCopies::isUnfinished(const Move& move) const
{
    // An installer may have put a new plugin where a moved one came from.
    const auto now = m_files.status(move.source);
    if (!now || now->number != move.original.number || now->isDirectory != move.original.isDirectory ||
        now->modificationTime != move.original.modificationTime ||
        now->modificationNanoseconds != move.original.modificationNanoseconds)
        return false;
    return now->isDirectory ? isPartOfFolder(m_files, move.destination, move.source)
                            : isPartOfFile(m_files, move.destination, move.source);
}

void PartialCopies::remove() const
{
    for (const Move& move : m_moves) {
        try {
            if (m_files.exists(move.destination) && isUnfinished(move))
                m_files.remove(move.destination);
        } catch (const platform::FileError&) {
            continue; // the next scan lists the copy
        }
    }
}

} // namespace orvanlite
