#pragma once

#include <QString>

#include <utility>
#include <vector>

namespace orvanlite::platform {
class FileManager;
}

namespace orvanlite {

struct BatchItem;

/// Finds what failed moves of a script leave behind. To another volume `mv` copies, and when the disk is full it keeps
/// a part of the copy, which the next scan would list as a second plugin.
class PartialCopies {
public:
    /// Before the script runs: notes the moves to a free destination that they do not share.
    PartialCopies(platform::FileManager& files, const std::vector<BatchItem>& items);

    /// Afterwards: removes destinations whose source still has everything that they have.
    /// Errors: none. A copy that this user may not remove stays.
    void remove() const;

private:
    using Move = std::pair<QString, QString>;

    platform::FileManager& m_files;
    std::vector<Move> m_moves; ///< source and destination
};

} // namespace orvanlite
