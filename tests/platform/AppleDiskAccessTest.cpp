#include "platform/apple/AppleDiskAccess.h"

#include "support/TempRoot.h"

#include <gtest/gtest.h>

#include <optional>

namespace orvanlite::test {

using namespace Qt::StringLiterals;

TEST(AppleDiskAccessTest, IsGrantedIfTheDatabaseOfPermissionsCanBeRead)
{
    const std::pair<std::optional<QByteArray>, bool> rows[] = {
        {QByteArray("SQLite format 3\0\x10\0", 18), true},
        {QByteArray("SQLite format 3"), false}, // cut off
        {QByteArray("SQLite format 4\0", 16), false},
        {QByteArray(), false},
        {std::nullopt, false}, // a folder: opens on no system
    };
    for (const auto& [content, wanted] : rows) {
        SCOPED_TRACE(content ? content->constData() : "folder");
        const TempRoot root;
        const platform::SystemLayout layout = root.layout();
        const platform::AppleDiskAccess access(layout);
        const QString path = u"/Library/Application Support/com.apple.TCC/TCC.db"_s;
        EXPECT_FALSE(access.isGranted()) << "no database";
        content ? root.addFile(path, *content) : root.addFolder(path);
        EXPECT_EQ(access.isGranted(), wanted);
    }
}

} // namespace orvanlite::test
