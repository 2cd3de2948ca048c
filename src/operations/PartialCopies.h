#pragma once

#include "platform/FileManager.h"

#include <vector>

namespace orvanlite {

struct BatchItem;

/// Finds what failed moves of a script leave behind. To another volume `mv` copies, and when the disk is full
/// it keeps a part of the copy, which the next scan would list as a second plugin.
class PartialCopies {
public:
    /// Before the script runs: notes the moves to a free destination that is theirs alone, and from where no
    /// other item moves to.
    PartialCopies(platform::FileManager& files, const std::vector<BatchItem>& items);

    /// After a script that has run to its end: removes destinations whose source is still the same and has
    /// everything that they have.
    /// Errors: none. A copy that this user may not remove stays, and so does one of files above 256 MB.
    void remove() const;

private:
    struct Move {
        QString source;
        QString destination;
        platform::FileStatus original; ///< of the source, before the script
    };
    [[nodiscard]] bool isUnfinished(const Move& move) const;

    platform::FileManager& m_files;
    std::vector<Move> m_moves;
};

} // namespace orvanlite
