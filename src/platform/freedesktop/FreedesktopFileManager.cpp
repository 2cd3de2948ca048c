#include "platform/freedesktop/FreedesktopFileManager.h"

#include <QSet>

namespace orvanlite::platform {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 kLargestHiddenList = 1 << 20;

QList<QByteArray> hiddenNames(const FileManager& files, const QString& list)
{
    const auto content = files.read(list, kLargestHiddenList);
    return content ? content->split('\n') : QList<QByteArray>();
}

} // namespace

void FreedesktopFileManager::setHidden(const QString& path)
{
    const qsizetype slash = path.lastIndexOf(u'/');
    const QString list = path.first(slash + 1) + u".hidden"_s;
    const QByteArray name = path.sliced(slash + 1).toUtf8();
    QList<QByteArray> names = hiddenNames(*this, list);
    if (names.contains(name))
        return;
    names.removeAll(QByteArray());
    names.append(name);
    write(list, names.join('\n') + '\n', WriteMode::inPlace);
}

void FreedesktopFileManager::removeMarkedAsHidden(const QString& folder, bool hasDotHidden,
                                                  std::vector<DirectoryEntry>& entries) const
{
    if (!hasDotHidden)
        return;
    const QList<QByteArray> lines = hiddenNames(*this, folder + u"/.hidden"_s);
    const QSet<QByteArray> names(lines.begin(), lines.end());
    std::erase_if(entries, [&](const DirectoryEntry& entry) { return names.contains(entry.name.toUtf8()); });
}

} // namespace orvanlite::platform
