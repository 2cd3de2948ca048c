#include "platform/freedesktop/FreedesktopFileManager.h"
#include "platform/posix/PrivateFolder.h"
#include "support/TempRoot.h"

#include <fcntl.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>

#include <array>
#include <functional>

namespace orvanlite::test {

using namespace platform;

namespace {

class FileManagerTest : public testing::Test {
protected:
    TempRoot root;
    FreedesktopFileManager files;

    /// Kinds and names in plain order: "d:folder f:file".
    [[nodiscard]] QString listed(QStringView folder, HiddenEntries hidden) const
    {
        QStringList texts;
        for (const DirectoryEntry& entry : files.list(root.at(folder), hidden))
            texts.append(QString(u"dfu"_s.at(static_cast<int>(entry.kind))) + u':' + entry.name);
        texts.sort();
        return texts.join(u' ');
    }
};

mode_t modeOf(const QString& path) { return statusOf(path).st_mode & 07777; }

void setTimes(const QString& path, qint64 access, qint64 modification)
{
    const std::array times{timespec{access, 0}, timespec{modification, 0}};
    ASSERT_EQ(::utimensat(AT_FDCWD, path.toUtf8().constData(), times.data(), AT_SYMLINK_NOFOLLOW), 0);
}

std::pair<int, QString> errorOf(const std::function<void()>& call)
{
    try {
        call();
    } catch (const FileError& error) {
        return {error.code, error.path};
    }
    return {0, QString()};
}

} // namespace

TEST_F(FileManagerTest, ListsAllKindsAndHidesByDotAndByList)
{
    root.addFolder(u"/f/Folder");
    root.addFile(u"/f/Straße");
    root.addFile(u"/f/.dotted");
    QFile::link(root.at(u"/nowhere"), root.at(u"/f/link"));
    EXPECT_EQ(listed(u"/f", HiddenEntries::skip), u"d:Folder f:Straße u:link"_s);
    root.addFile(u"/f/.hidden", "absent\n\nStraße\nFold");
    EXPECT_EQ(listed(u"/f", HiddenEntries::skip), u"d:Folder u:link"_s);
    EXPECT_EQ(listed(u"/f", HiddenEntries::include), u"d:Folder f:.dotted f:.hidden f:Straße u:link"_s);
    EXPECT_EQ(errorOf([&] { (void)files.list(root.at(u"/f/Straße"), HiddenEntries::skip); }),
              std::pair(ENOTDIR, root.at(u"/f/Straße")));
}

TEST_F(FileManagerTest, HidingAddsOneLineToTheUsersList)
{
    root.addFolder(u"/h");
    files.setHidden(root.at(u"/h/Disabled"));
    EXPECT_EQ(root.content(u"/h/.hidden"), "Disabled\n");
    for (const auto& [before, after] : {std::pair<QByteArray, QByteArray>("b\n\na", "b\n\na\nDisabled\n"),
                                        {"Disabled\nb", "Disabled\nb"}}) {
        root.addFile(u"/h/.hidden", before);
        files.setHidden(root.at(u"/h/Disabled"));
        EXPECT_EQ(root.content(u"/h/.hidden"), after);
    }
    root.addFile(u"/h/.hidden", QByteArray((1 << 20) + 1, 'x'));
    EXPECT_EQ(errorOf([&] { files.setHidden(root.at(u"/h/D")); }).first, EIO);
    EXPECT_EQ(root.content(u"/h/.hidden").size(), (1 << 20) + 1);
    EXPECT_EQ(errorOf([&] { files.setHidden(root.at(u"/h/a\nb")); }).first, EINVAL);

    root.addFile(u"/list/.hidden", "x\n");
    root.addFolder(u"/none");
    for (const auto& [path, mode] : {std::pair(u"", 0755), {u"/list/.hidden", 0444}, {u"/none", 0555}})
        root.setMode(path, static_cast<mode_t>(mode));
    {
        const WithoutRights denied;
        for (const QStringView path : {u"/list/D", u"/none/D"})
            EXPECT_EQ(errorOf([&] { files.setHidden(root.at(path)); }).first, 0) << "is not reported";
    }
    EXPECT_EQ(root.content(u"/list/.hidden"), "x\n");
    EXPECT_FALSE(root.exists(u"/none/.hidden"));
}

TEST_F(FileManagerTest, QueriesDoNotThrow)
{
    root.addFile(u"/q/file", "12345");
    root.addFile(u"/q/empty");
    QFile::link(root.at(u"/q/file"), root.at(u"/q/link"));
    QFile::link(root.at(u"/nowhere"), root.at(u"/q/dangling"));
    ::mkfifo(root.at(u"/q/pipe").toUtf8().constData(), 0600);
    setTimes(root.at(u"/q/file"), 1'000'000'001, 1'000'000'002);
    EXPECT_EQ(files.status(root.at(u"/q/link")),
              (FileStatus{false, 5, 1'000'000'001, 1'000'000'002, 0, statusOf(root.at(u"/q/file")).st_ino}));
    const std::tuple<QString, bool, std::optional<QByteArray>> rows[] = {
        {root.at(u"/q/link"), true, "12345"},
        {root.at(u"/q/empty"), true, ""},
        {root.at(u"/q/dangling"), false, {}},
        {root.at(u"/q/pipe"), true, {}},
        {root.at(u"/q"), true, {}},
        {root.at(u"/q/none"), false, {}},
        {root.at(u"/q/file/below"), false, {}},
        {root.at(u"/q/file") + QChar(QChar::Null) + u".txt"_s, false, {}},
        {QString(), false, {}},
    };
    for (const auto& [path, exists, content] : rows) {
        SCOPED_TRACE(path.toStdString());
        EXPECT_EQ(files.exists(path), exists);
        EXPECT_EQ(files.status(path).has_value(), exists);
        EXPECT_EQ(files.read(path, 5), content);
    }
    EXPECT_EQ(files.read(root.at(u"/q/file"), 4), std::nullopt);
    EXPECT_TRUE(files.status(root.at(u"/q"))->isDirectory);
}

TEST_F(FileManagerTest, WritesInPlaceOrReplacesTheFile)
{
    root.addFolder(u"/w");
    const QString file = root.at(u"/w/file");
    files.write(file, QByteArray("first, longer"), WriteMode::inPlace);
    files.write(file, "second", WriteMode::inPlace);
    EXPECT_EQ(root.content(u"/w/file"), "second");
    files.write(file, "third", WriteMode::replaceFile);
    EXPECT_EQ(root.content(u"/w/file"), "third");
    root.addFolder(u"/w/folder");
    for (const WriteMode mode : {WriteMode::inPlace, WriteMode::replaceFile}) {
        EXPECT_EQ(errorOf([&] { files.write(root.at(u"/w/folder"), "x", mode); }),
                  std::pair(EISDIR, root.at(u"/w/folder")));
        EXPECT_EQ(errorOf([&] { files.write(root.at(u"/none/x"), "x", mode); }).first, ENOENT);
    }
    ::mkfifo(root.at(u"/w/pipe").toUtf8().constData(), 0600);
    for (const WriteMode mode : {WriteMode::inPlace, WriteMode::replaceFile}) {
        EXPECT_EQ(errorOf([&] { files.write(root.at(u"/w/pipe"), "x", mode); }).first, ENXIO)
            << "nobody reads";
        EXPECT_EQ(errorOf([&] { files.write(u"/dev/full"_s, "x", mode); }).first, ENOSPC);
        EXPECT_EQ(errorOf([&] { files.write(u"/dev/null"_s, "x", mode); }).first, 0);
    }
    files.remove(root.at(u"/w/pipe"));
    QFile::link(u"file"_s, root.at(u"/w/link"));
    files.write(root.at(u"/w/link"), "fourth", WriteMode::replaceFile);
    EXPECT_EQ(root.content(u"/w/file"), "fourth");
    EXPECT_EQ(root.names(u"/w"), (QStringList{u"file"_s, u"folder"_s, u"link"_s}))
        << "no temporary file is left";
    const ino_t number = statusOf(file).st_ino;
    files.write(root.at(u"/w/link"), "fifth", WriteMode::inPlace);
    EXPECT_EQ(root.content(u"/w/file"), "fifth");
    EXPECT_EQ(statusOf(file).st_ino, number);
    EXPECT_TRUE(QFileInfo(root.at(u"/w/link")).isSymLink());
}

TEST_F(FileManagerTest, WritingKeepsModeAndOwner)
{
    // The umask, the mode before (0 for a new file) and after.
    const std::tuple<mode_t, mode_t, mode_t> rows[] = {
        {022, 0, 0644},    {077, 0, 0600},    {0, 0, 0666},      {002, 0, 0664},
        {077, 0644, 0644}, {022, 0600, 0600}, {022, 0666, 0666}, {0, 0640, 0640},
    };
    const QString folder = root.at(u"/private");
    makePrivateFolder(folder);
    const QString file = folder + u"/file"_s;
    for (const auto& [umask, before, after] : rows) {
        for (const WriteMode mode : {WriteMode::inPlace, WriteMode::replaceFile, WriteMode::privateFile}) {
            SCOPED_TRACE(testing::Message() << std::oct << umask << ' ' << before);
            QFile::remove(file);
            if (before != 0) {
                root.addFile(u"/private/file");
                root.setMode(u"/private/file", before);
            }
            const mode_t umaskBefore = ::umask(umask);
            files.write(file, "x", mode);
            ::umask(umaskBefore);
            EXPECT_EQ(modeOf(file), mode == WriteMode::privateFile ? 0600U : after);
        }
    }
    if (geteuid() != 0)
        return; // only root can change owners
    ASSERT_EQ(::chown(file.toUtf8().constData(), 4711, 4712), 0);
    files.write(file, "y", WriteMode::replaceFile);
    EXPECT_EQ(std::pair(statusOf(file).st_uid, statusOf(file).st_gid), std::pair(uid_t(4711), gid_t(4712)));
    // A user who may write to the file, but not to its folder.
    ASSERT_EQ(::chown(folder.toUtf8().constData(), 0, 0), 0);
    const auto asOther = [&] {
        root.setMode(u"", 0755);
        root.setMode(u"/private", 0755);
        const bool isOther = setgid(4712) == 0 && setuid(4711) == 0;
        files.write(file, "z", WriteMode::replaceFile);
        ::_exit(isOther && files.read(file, 1) == "z" ? 0 : 1);
    };
    EXPECT_EXIT(asOther(), testing::ExitedWithCode(0), "");
}

TEST_F(FileManagerTest, PrivateFilesNeedAPrivateFolder)
{
    const QString folder = root.at(u"/private");
    makePrivateFolder(folder);
    makePrivateFolder(root.at(u"/real"));
    QFile::link(u"real"_s, root.at(u"/link"));
    root.addFile(u"/file");
    const auto codeOf = [&](QStringView in) {
        return errorOf([&] { files.write(root.at(in) + u"/x"_s, "x", WriteMode::privateFile); }).first;
    };
    EXPECT_EQ(codeOf(u"/none"), ENOENT);
    EXPECT_EQ(codeOf(u"/file"), ENOTDIR);
    EXPECT_EQ(codeOf(u"/link"), ENOTDIR) << "the owner of the link can change it";
    for (const mode_t mode : {0710, 0701, 0500}) {
        root.setMode(u"/private", mode);
        makePrivateFolder(folder);
        EXPECT_EQ(codeOf(u"/private"), EPERM) << mode;
    }
    root.setMode(u"/private", 02700); // inherited from a folder with the set-group-ID bit
    EXPECT_EQ(codeOf(u"/private"), 0);
    if (::chown(folder.toUtf8().constData(), 4711, getegid()) == 0) { // only root can
        EXPECT_EQ(codeOf(u"/private"), EPERM);
    }
    EXPECT_EQ(root.names(u"/private"), QStringList{u"x"_s}) << "nothing else is written";
    EXPECT_EQ(root.names(u"/real"), QStringList());
}

TEST_F(FileManagerTest, RefusesPrivateFoldersThatOthersCanReplace)
{
    constexpr uid_t kOther = 4711;
    const QByteArray parent = root.at(u"/parent").toUtf8();
    makePrivateFolder(root.at(u"/parent/private"));
    QFile::link(u"parent"_s, root.at(u"/link"));
    const auto errorIn = [&](QStringView folder) {
        return errorOf([&] { requirePrivateFolder(root.at(folder)); });
    };
    const std::tuple<mode_t, uid_t, gid_t, bool> rows[] = {
        {0777, geteuid(), getegid(), false}, {01777, geteuid(), kOther, true},
        {0775, geteuid(), kOther, false},    {0775, geteuid(), geteuid(), true},
        {0700, kOther, kOther, false},       {01777, kOther, kOther, false},
        {0755, geteuid(), getegid(), true},
    };
    for (const auto& [mode, owner, group, isSafe] : rows) {
        SCOPED_TRACE(testing::Message() << std::oct << mode << ' ' << owner);
        if (::chown(parent.constData(), owner, group) != 0)
            continue; // only root can
        root.setMode(u"/parent", mode);
        for (const QStringView folder : {u"/parent/private", u"/link/private"})
            EXPECT_EQ(errorIn(folder),
                      isSafe ? std::pair(0, QString()) : std::pair(EPERM, root.at(u"/parent")));
    }
    if (::lchown(root.at(u"/link").toUtf8().constData(), kOther, kOther) == 0) { // only root can
        EXPECT_EQ(errorIn(u"/link/private").first, EPERM);
    }
}

TEST_F(FileManagerTest, RemovesOldBatchFiles)
{
    const QString folder = root.at(u"/private");
    makePrivateFolder(folder);
    constexpr int kOld = 2 * 3600;
    const std::pair<const char*, int> rows[] = {
        {"batch_A.sh", kOld},   {"progress_A.txt", kOld}, {"progress_B.txt", kOld}, {"batch_C.sh", kOld},
        {"progress_C.txt", 60}, {"batch_D.sh", 0},        {"batch_E.sh.bak", kOld},
    };
    for (const auto& [name, age] : rows) {
        const QString file = u"/orvanlite_"_s + QLatin1StringView(name);
        root.addFile(u"/private"_s + file);
        setTimes(folder + file, time(nullptr) - age, time(nullptr) - age);
    }
    root.setMode(u"/private", 0755);
    removeOldBatchFiles(files, folder);
    EXPECT_EQ(root.names(u"/private").size(), std::ssize(rows)) << "another user may own it";
    root.setMode(u"/private", 0700);
    removeOldBatchFiles(files, folder);
    EXPECT_EQ(
        root.names(u"/private").join(u' '),
        u"orvanlite_batch_C.sh orvanlite_batch_D.sh orvanlite_batch_E.sh.bak orvanlite_progress_C.txt"_s);
    removeOldBatchFiles(files, root.at(u"/none"));
}

TEST_F(FileManagerTest, MovesOnlyToAnUnusedPath)
{
    root.addFile(u"/m/source", "s");
    root.addFile(u"/m/other", "o");
    root.addFolder(u"/m/empty folder");
    root.addFolder(u"/m/folder");
    QFile::link(root.at(u"/nowhere"), root.at(u"/m/dangling"));
    const std::tuple<QStringView, QStringView, int, QStringView> rows[] = {
        {u"/m/source", u"/m/other", EEXIST, u"/m/other"},
        {u"/m/source", u"/m/dangling", EEXIST, u"/m/dangling"},
        {u"/m/folder", u"/m/empty folder", EEXIST, u"/m/empty folder"},
        {u"/m/none", u"/m/new", ENOENT, u"/m/none"},
        {u"/m/source", u"/none/new", ENOENT, u"/none/new"},
        {u"/m/folder", u"/m/folder/below", EINVAL, u"/m/folder/below"},
        {u"/m/dangling", u"/m/moved link", 0, u""},
        {u"/m/source", u"/m/folder/moved", 0, u""},
    };
    for (const auto& [source, destination, code, path] : rows)
        EXPECT_EQ(errorOf([&] { files.move(root.at(source), root.at(destination)); }),
                  std::pair(code, code ? root.at(path) : QString()))
            << destination.toUtf8().constData();
    EXPECT_EQ(root.content(u"/m/folder/moved"), "s");
    EXPECT_EQ(root.content(u"/m/other"), "o");
    EXPECT_EQ(root.names(u"/m"), (QStringList{u"empty folder"_s, u"folder"_s, u"moved link"_s, u"other"_s}));
}

TEST_F(FileManagerTest, MovesToAnotherVolumeWithTimesAndLinks)
{
    const QTemporaryDir volume(u"/dev/shm/orvanlite-XXXXXX"_s);
    if (!volume.isValid() || statusOf(volume.path()).st_dev == statusOf(root.path()).st_dev)
        GTEST_SKIP() << "no second volume here";
    root.addFile(u"/v/A.vst3/Contents/Info.plist", "p");
    QFile::link(u"Contents"_s, root.at(u"/v/A.vst3/link"));
    const QString moved = volume.filePath(u"A.vst3"_s);
    const QStringView parts[] = {u"/Contents/Info.plist", u"/Contents", u"/link", u""};
    for (const QStringView part : parts)
        setTimes(root.at(u"/v/A.vst3") + part.toString(), 1'111'111'111, 1'222'222'222);

    files.move(root.at(u"/v/A.vst3"), moved);
    EXPECT_FALSE(root.exists(u"/v/A.vst3"));
    EXPECT_EQ(files.read(moved + u"/link/Info.plist"_s, 10), QByteArray("p"));
    EXPECT_EQ(QFile(moved + u"/link"_s).symLinkTarget(), moved + u"/Contents"_s);
    for (const QStringView part : parts)
        EXPECT_EQ(statusOf(moved + part.toString()).st_mtime, 1'222'222'222) << part.toUtf8().constData();
    root.addFile(u"/v/file", "f");
    EXPECT_EQ(errorOf([&] { files.move(root.at(u"/v/file"), moved); }), std::pair(EEXIST, moved));
    // A pipe cannot be copied: its folder stays, and nothing appears on the other volume.
    root.addFile(u"/v/B/file", "f");
    ::mkfifo(root.at(u"/v/B/pipe").toUtf8().constData(), 0600);
    EXPECT_NE(errorOf([&] { files.move(root.at(u"/v/B"), volume.filePath(u"B"_s)); }).first, 0);
    EXPECT_EQ(root.names(u"/v/B"), (QStringList{u"file"_s, u"pipe"_s}));
    EXPECT_EQ(QDir(volume.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
              QStringList{u"A.vst3"_s});
}

TEST_F(FileManagerTest, RemovesTreesAndLinksButNotTheirTargets)
{
    root.addFile(u"/r/kept/file", "k");
    root.addFile(u"/r/tree/a/b/c");
    QFile::link(root.at(u"/r/kept"), root.at(u"/r/tree/a/link"));
    QFile::link(root.at(u"/r/kept"), root.at(u"/r/link"));
    files.remove(root.at(u"/r/tree"));
    files.remove(root.at(u"/r/link"));
    EXPECT_EQ(root.names(u"/r"), QStringList{u"kept"_s});
    EXPECT_EQ(root.content(u"/r/kept/file"), "k");
    for (const QString& path : {root.at(u"/r/none"), QString(), root.at(u"/r/kept") + QChar(QChar::Null)})
        EXPECT_EQ(errorOf([&] { files.remove(path); }).first, ENOENT) << path.toStdString();
    EXPECT_EQ(errorOf([&] { files.remove(root.at(u"/r/kept/file/below")); }).first, ENOTDIR);
    EXPECT_TRUE(root.exists(u"/r/kept/file"));
}

TEST_F(FileManagerTest, CreatesMissingFolders)
{
    files.createDirectory(root.at(u"/c/a/b"));
    files.createDirectory(root.at(u"/c/a/b"));
    EXPECT_TRUE(files.status(root.at(u"/c/a/b"))->isDirectory);
    root.addFile(u"/c/file");
    for (const QStringView path : {u"/c/file", u"/c/file/below"})
        EXPECT_EQ(errorOf([&] { files.createDirectory(root.at(path)); }).first, ENOTDIR);
}

TEST_F(FileManagerTest, ListsButDoesNotAccessNamesThatAreNotUtf8)
{
    root.addFolder(u"/n");
    const QByteArray raw = root.at(u"/n/").toUtf8() + "a\xff.vst3";
    const int made = ::open(raw.constData(), O_CREAT | O_WRONLY, 0600);
    if (made < 0 && errno == EILSEQ)
        GTEST_SKIP() << "this file system has no such names";
    ::close(made);
    const auto entries = files.list(root.at(u"/n"), HiddenEntries::skip);
    ASSERT_EQ(entries.size(), 1U);
    EXPECT_EQ(entries[0].name, u"a\uFFFD.vst3"_s);
    EXPECT_EQ(errorOf([&] { files.move(root.at(u"/n/") + entries[0].name, root.at(u"/n/b")); }).first,
              ENOENT);
    EXPECT_EQ(::access(raw.constData(), F_OK), 0);
    ::unlink(raw.constData());
}

} // namespace orvanlite::test
