#pragma once

#include <QString>

#include <functional>

namespace orvanlite {

/// What is going to be saved.
struct SaveRequest {
    QString title;
    QString fileName; ///< proposed
    QString typeName; ///< of such files, e.g. "PDF document"
    QString suffix;   ///< without the dot; a name that is typed without one gets it
};

/// Asks the user where to save a file.
class SavePanel {
public:
    SavePanel() = default;
    SavePanel(const SavePanel&) = delete;
    SavePanel& operator=(const SavePanel&) = delete;
    virtual ~SavePanel() = default;

    /// Does not wait. `chosen` gets the path that the user confirms, later and once; nothing is called when the user
    /// does not.
    virtual void ask(const SaveRequest& request, std::function<void(const QString& path)> chosen) = 0;
};

} // namespace orvanlite
