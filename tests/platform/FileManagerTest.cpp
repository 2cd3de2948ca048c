#include "platform/freedesktop/FreedesktopFileManager.h"
#include "platform/posix/PrivateFolder.h"
#include "support/TempRoot.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <array>
#include <functional>

namespace orvanlite::test {

using namespace Qt::StringLiterals;
using namespace platform;

namespace {

class FileManagerTest : public testing::Test {
protected:
    TempRoot root;
    FreedesktopFileManager files;

    /// Names and kinds as one text, in plain order: "d:folder f:file".
    [[nodiscard]] QString listed(QStringView folder, HiddenEntries hidden) const
    {
        QStringList texts;
        for (const DirectoryEntry& entry : files.list(root.at(folder), hidden))
            texts.append(QString(u"dfu"_s.at(static_cast<int>(entry.kind))) + u':' + entry.name);
        texts.sort();
        return texts.join(u' ');
    }
};

mode_t modeOf(const QString& path)
{
    struct stat information {};
    return ::stat(path.toUtf8().constData(), &information) == 0 ? information.st_mode & 0777 : 0;
}

void setTimes(const QString& path, qint64 access, qint64 modification)
{
    const std::array times{timespec{access, 0}, timespec{modification, 0}};
    ASSERT_EQ(::utimensat(AT_FDCWD, path.toUtf8().constData(), times.data(), AT_SYMLINK_NOFOLLOW), 0);
}

/// The error's number and path, or 0 and nothing.
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

TEST_F(FileManagerTest, HidingAddsOneLineAndKeepsTheUsersList)
{
    const struct {
        const char* name;
        QByteArray before, after;
    } rows[] = {
        {"fresh", {}, "Disabled\n"},
        {"last line without an end", "b\n\na", "b\n\na\nDisabled\n"},
        {"hidden already", "Disabled\nb", "Disabled\nb"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        root.addFile(u"/h/.hidden", row.before);
        if (row.before.isEmpty())
            files.remove(root.at(u"/h/.hidden"));
        files.setHidden(root.at(u"/h/Disabled"));
        EXPECT_EQ(root.content(u"/h/.hidden"), row.after);
    }
    root.addFile(u"/h/.hidden", QByteArray((1 << 20) + 1, 'x'));
    EXPECT_EQ(errorOf([&] { files.setHidden(root.at(u"/h/D")); }).first, EIO);
    EXPECT_EQ(root.content(u"/h/.hidden").size(), (1 << 20) + 1);
    EXPECT_EQ(errorOf([&] { files.setHidden(root.at(u"/h/a\nb")); }).first, EINVAL);
}

TEST_F(FileManagerTest, HidingIsSilentWithoutRights)
{
    root.addFile(u"/list/.hidden", "x\n");
    root.addFolder(u"/none");
    ::chmod(root.path().toUtf8().constData(), 0755);
    ::chmod(root.at(u"/list/.hidden").toUtf8().constData(), 0444);
    ::chmod(root.at(u"/none").toUtf8().constData(), 0555);
    const bool isRoot = ::geteuid() == 0;
    constexpr uid_t kNobody = 65534;
    ASSERT_TRUE(!isRoot || ::seteuid(kNobody) == 0);
    const int withList = errorOf([&] { files.setHidden(root.at(u"/list/D")); }).first;
    const int withoutList = errorOf([&] { files.setHidden(root.at(u"/none/D")); }).first;
    ASSERT_TRUE(!isRoot || ::seteuid(0) == 0);
    EXPECT_EQ(withList, 0);
    EXPECT_EQ(withoutList, 0);
    EXPECT_EQ(root.content(u"/list/.hidden"), "x\n");
    EXPECT_FALSE(root.exists(u"/none/.hidden"));
}

TEST_F(FileManagerTest, AnswersQuestionsWithoutThrowing)
{
    root.addFile(u"/q/file", "12345");
    root.addFile(u"/q/empty");
    QFile::link(root.at(u"/q/file"), root.at(u"/q/link"));
    QFile::link(root.at(u"/nowhere"), root.at(u"/q/dangling"));
    ::mkfifo(root.at(u"/q/pipe").toUtf8().constData(), 0600);
    setTimes(root.at(u"/q/file"), 1'000'000'001, 1'000'000'002);
    EXPECT_EQ(files.status(root.at(u"/q/link")), (FileStatus{false, 5, 1'000'000'001, 1'000'000'002}));
    const struct {
        QString path;
        bool exists;
        std::optional<QByteArray> content; // of at most five bytes
    } rows[] = {
        {root.at(u"/q/file"), true, "12345"},
        {root.at(u"/q/link"), true, "12345"},
        {root.at(u"/q/empty"), true, ""},
        {root.at(u"/q/dangling"), false, std::nullopt},
        {root.at(u"/q/pipe"), true, std::nullopt},
        {root.at(u"/q"), true, std::nullopt},
        {root.at(u"/q/none"), false, std::nullopt},
        {root.at(u"/q/file/below"), false, std::nullopt},
        {root.at(u"/q/file") + QChar(QChar::Null) + u".txt"_s, false, std::nullopt},
        {QString(), false, std::nullopt},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.path.toStdString());
        EXPECT_EQ(files.exists(row.path), row.exists);
        EXPECT_EQ(files.status(row.path).has_value(), row.exists);
        EXPECT_EQ(files.read(row.path, 5), row.content);
    }
    EXPECT_EQ(files.read(root.at(u"/q/file"), 4), std::nullopt);
    EXPECT_TRUE(files.status(root.at(u"/q"))->isDirectory);
}

TEST_F(FileManagerTest, WritesInPlaceOrWhole)
{
    root.addFolder(u"/w");
    const QString file = root.at(u"/w/file");
    files.write(file, QByteArray("first, longer"), WriteMode::inPlace);
    ::chmod(file.toUtf8().constData(), 0640);
    files.write(file, "second", WriteMode::inPlace);
    EXPECT_EQ(root.content(u"/w/file"), "second");
    EXPECT_EQ(modeOf(file), 0640U) << "the file itself is written";
    files.write(file, "third", WriteMode::replaceFile);
    EXPECT_EQ(root.content(u"/w/file"), "third");
    root.addFolder(u"/w/folder");
    for (const WriteMode mode : {WriteMode::inPlace, WriteMode::replaceFile}) {
        EXPECT_EQ(errorOf([&] { files.write(root.at(u"/w/folder"), "x", mode); }),
                  std::pair(EISDIR, root.at(u"/w/folder")));
        EXPECT_EQ(errorOf([&] { files.write(root.at(u"/none/x"), "x", mode); }).first, ENOENT);
    }
    QFile::link(u"file"_s, root.at(u"/w/link"));
    files.write(root.at(u"/w/link"), "fourth", WriteMode::replaceFile);
    EXPECT_EQ(root.content(u"/w/file"), "fourth");
    EXPECT_EQ(root.names(u"/w"), (QStringList{u"file"_s, u"folder"_s, u"link"_s}))
        << "nothing is left behind";
    EXPECT_TRUE(QFileInfo(root.at(u"/w/link")).isSymLink());
}

TEST_F(FileManagerTest, WrittenFilesKeepTheirRights)
{
    const struct {
        mode_t umask;
        mode_t before; // 0 for a new file
        mode_t inPlace, replaced;
    } rows[] = {
        {022, 0, 0644, 0644},    {077, 0, 0600, 0600},    {0, 0, 0666, 0666},      {002, 0, 0664, 0664},
        {077, 0644, 0644, 0644}, {022, 0600, 0600, 0600}, {022, 0666, 0666, 0666}, {0, 0640, 0640, 0640},
    };
    const QString folder = root.at(u"/private");
    makePrivateFolder(folder);
    const QString file = folder + u"/file"_s;
    for (const auto& row : rows) {
        for (const WriteMode mode : {WriteMode::inPlace, WriteMode::replaceFile, WriteMode::privateFile}) {
            SCOPED_TRACE(testing::Message() << std::oct << row.umask << ' ' << row.before);
            QFile::remove(file);
            if (row.before != 0) {
                root.addFile(u"/private/file");
                ::chmod(file.toUtf8().constData(), row.before);
            }
            const mode_t umaskBefore = ::umask(row.umask);
            files.write(file, "x", mode);
            ::umask(umaskBefore);
            const mode_t wanted = mode == WriteMode::inPlace       ? row.inPlace
                                  : mode == WriteMode::replaceFile ? row.replaced
                                                                   : 0600U;
            EXPECT_EQ(modeOf(file), wanted);
        }
    }
    if (geteuid() != 0)
        return; // only root can give files away
    struct stat status {};
    ASSERT_EQ(::chown(file.toUtf8().constData(), 4711, 4712), 0);
    files.write(file, "y", WriteMode::replaceFile);
    ASSERT_EQ(::stat(file.toUtf8().constData(), &status), 0);
    EXPECT_EQ(std::pair(status.st_uid, status.st_gid), std::pair(uid_t(4711), gid_t(4712)));
    // Another user may write to the file, but not to its folder.
    ASSERT_EQ(::chown(folder.toUtf8().constData(), 0, 0), 0);
    const auto asOther = [&] {
        ::chmod(root.path().toUtf8().constData(), 0755);
        ::chmod(folder.toUtf8().constData(), 0755);
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
    const auto codeOf = [&](const QString& in) {
        return errorOf([&] { files.write(in + u"/x"_s, "x", WriteMode::privateFile); }).first;
    };
    EXPECT_EQ(codeOf(root.at(u"/none")), ENOENT);
    EXPECT_EQ(codeOf(root.at(u"/file")), ENOTDIR);
    EXPECT_EQ(codeOf(root.at(u"/link")), ENOTDIR) << "who owns the link can change it";
    for (const mode_t mode : {0755, 0710, 0701, 0500}) {
        ::chmod(folder.toUtf8().constData(), mode);
        makePrivateFolder(folder);
        EXPECT_EQ(codeOf(folder), EPERM) << mode;
    }
    ::chmod(folder.toUtf8().constData(), 02700); // as below a folder that hands its group on
    EXPECT_EQ(codeOf(folder), 0);
    if (::chown(folder.toUtf8().constData(), 4711, getegid()) == 0) { // as only root can
        EXPECT_EQ(codeOf(folder), EPERM);
    }
    EXPECT_EQ(root.names(u"/private"), QStringList{u"x"_s}) << "otherwise nothing is written";
    EXPECT_EQ(root.names(u"/real"), QStringList());
}

TEST_F(FileManagerTest, PrivateFoldersCannotBeReplacedByOthers)
{
    constexpr uid_t kOther = 4711;
    const QByteArray way = root.at(u"/way").toUtf8();
    makePrivateFolder(root.at(u"/way/private"));
    QFile::link(u"way"_s, root.at(u"/link"));
    const struct {
        mode_t mode;
        uid_t owner;
        gid_t group;
        bool isSafe;
    } rows[] = {
        {0755, geteuid(), getegid(), true}, {0777, geteuid(), getegid(), false},
        {01777, geteuid(), kOther, true},   {0775, geteuid(), kOther, false},
        {0775, geteuid(), geteuid(), true}, {0700, kOther, kOther, false},
        {01777, kOther, kOther, false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << std::oct << row.mode << ' ' << row.owner);
        if (::chown(way.constData(), row.owner, row.group) != 0)
            continue; // only root can
        ::chmod(way.constData(), row.mode);
        const std::pair wanted = row.isSafe ? std::pair(0, QString()) : std::pair(EPERM, root.at(u"/way"));
        for (const QString& folder : {root.at(u"/way/private"), root.at(u"/link/private")})
            EXPECT_EQ(errorOf([&] { requirePrivateFolder(folder); }), wanted);
    }
    ::chown(way.constData(), geteuid(), getegid());
    ::chmod(way.constData(), 0755);
    EXPECT_EQ(errorOf([&] { requirePrivateFolder(root.at(u"/link/private")); }).first, 0);
    if (::lchown(root.at(u"/link").toUtf8().constData(), kOther, kOther) == 0) { // the same
        EXPECT_EQ(errorOf([&] { requirePrivateFolder(root.at(u"/link/private")); }).first, EPERM);
    }
}

TEST_F(FileManagerTest, OldFilesOfBatchesAreRemoved)
{
    const QString folder = root.at(u"/private");
    makePrivateFolder(folder);
    constexpr int kOld = 2 * 3600;
    const std::pair<QString, int> rows[] = {
        {u"orvanlite_batch_A.sh"_s, kOld},     {u"orvanlite_progress_A.txt"_s, kOld},
        {u"orvanlite_progress_B.txt"_s, kOld}, {u"orvanlite_batch_C.sh"_s, kOld},
        {u"orvanlite_progress_C.txt"_s, 60},   {u"orvanlite_batch_D.sh"_s, 0},
        {u"orvanlite_batch_E.sh.bak"_s, kOld}, {u"other"_s, kOld},
    };
    for (const auto& [name, age] : rows) {
        root.addFile(u"/private/"_s + name);
        const std::array times{timespec{time(nullptr) - age, 0}, timespec{time(nullptr) - age, 0}};
        ::utimensat(AT_FDCWD, (folder + u'/' + name).toUtf8().constData(), times.data(), 0);
    }
    ::chmod(folder.toUtf8().constData(), 0755);
    removeOldBatchFiles(files, folder);
    EXPECT_EQ(root.names(u"/private").size(), std::ssize(rows)) << "it may be another user's";
    ::chmod(folder.toUtf8().constData(), 0700);
    removeOldBatchFiles(files, folder);
    const QStringList wanted{u"orvanlite_batch_C.sh"_s, u"orvanlite_batch_D.sh"_s,
                             u"orvanlite_batch_E.sh.bak"_s, u"orvanlite_progress_C.txt"_s, u"other"_s};
    EXPECT_EQ(root.names(u"/private"), wanted);
    removeOldBatchFiles(files, root.at(u"/none"));
}

TEST_F(FileManagerTest, MovesOnlyToAFreeName)
{
    root.addFile(u"/m/source", "s");
    root.addFile(u"/m/other", "o");
    root.addFolder(u"/m/empty folder");
    root.addFolder(u"/m/folder");
    QFile::link(root.at(u"/nowhere"), root.at(u"/m/dangling"));
    const struct {
        QStringView source, destination;
        int code;
        QStringView path;
    } rows[] = {
        {u"/m/source", u"/m/other", EEXIST, u"/m/other"},
        {u"/m/source", u"/m/dangling", EEXIST, u"/m/dangling"},
        {u"/m/folder", u"/m/empty folder", EEXIST, u"/m/empty folder"},
        {u"/m/none", u"/m/new", ENOENT, u"/m/none"},
        {u"/m/source", u"/none/new", ENOENT, u"/none/new"},
        {u"/m/folder", u"/m/folder/below", EINVAL, u"/m/folder/below"},
        {u"/m/dangling", u"/m/moved link", 0, u""},
        {u"/m/source", u"/m/folder/moved", 0, u""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.destination.toString().toStdString());
        const QString path = row.code ? root.at(row.path) : QString();
        EXPECT_EQ(errorOf([&] { files.move(root.at(row.source), root.at(row.destination)); }),
                  std::pair(row.code, path));
    }
    EXPECT_EQ(root.content(u"/m/folder/moved"), "s");
    EXPECT_EQ(root.content(u"/m/other"), "o");
    EXPECT_EQ(root.names(u"/m"), (QStringList{u"empty folder"_s, u"folder"_s, u"moved link"_s, u"other"_s}));
}

TEST_F(FileManagerTest, MovesToAnotherVolumeWithTimesAndLinks)
{
    const QTemporaryDir volume(u"/dev/shm/orvanlite-XXXXXX"_s);
    struct stat here {
    }, there{};
    if (!volume.isValid() || ::stat(volume.path().toUtf8().constData(), &there) != 0 ||
        ::stat(root.path().toUtf8().constData(), &here) != 0 || here.st_dev == there.st_dev)
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
    for (const QStringView part : parts) {
        struct stat status {};
        ASSERT_EQ(::lstat((moved + part.toString()).toUtf8().constData(), &status), 0);
        EXPECT_EQ(status.st_mtime, 1'222'222'222) << part.toUtf8().constData();
    }
    root.addFile(u"/v/file", "f");
    EXPECT_EQ(errorOf([&] { files.move(root.at(u"/v/file"), moved); }), std::pair(EEXIST, moved));
    // What cannot be copied stays, and nothing of it is seen on the other side.
    root.addFile(u"/v/B/file", "f");
    ::mkfifo(root.at(u"/v/B/pipe").toUtf8().constData(), 0600);
    EXPECT_NE(errorOf([&] { files.move(root.at(u"/v/B"), volume.filePath(u"B"_s)); }).first, 0);
    EXPECT_EQ(root.names(u"/v/B"), (QStringList{u"file"_s, u"pipe"_s}));
    EXPECT_EQ(QDir(volume.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
              QStringList{u"A.vst3"_s});
}

TEST_F(FileManagerTest, RemovesTreesAndLinksThemselves)
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
    EXPECT_EQ(errorOf([&] { files.createDirectory(root.at(u"/c/file")); }).first, ENOTDIR);
    EXPECT_EQ(errorOf([&] { files.createDirectory(root.at(u"/c/file/below")); }).first, ENOTDIR);
}

TEST_F(FileManagerTest, ListsANameThatIsNoTextButFailsToTouchIt)
{
    root.addFolder(u"/n");
    const QByteArray raw = root.at(u"/n/").toUtf8() + "a\xff.vst3";
    const int made = ::open(raw.constData(), O_CREAT | O_WRONLY, 0600);
    if (made < 0 && errno == EILSEQ)
        GTEST_SKIP() << "this file system takes no such names";
    ASSERT_EQ(::close(made), 0);
    const auto entries = files.list(root.at(u"/n"), HiddenEntries::skip);
    ASSERT_EQ(entries.size(), 1U);
    EXPECT_EQ(entries[0].name, u"a\uFFFD.vst3"_s);
    EXPECT_EQ(errorOf([&] { files.move(root.at(u"/n/") + entries[0].name, root.at(u"/n/b")); }).first,
              ENOENT);
    EXPECT_EQ(::access(raw.constData(), F_OK), 0);
    ::unlink(raw.constData());
}

} // namespace orvanlite::test
