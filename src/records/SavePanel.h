#pragma once

#include <QString>

#include <functional>

namespace orvanlite {

struct SaveRequest {
    QString title;
    QString fileName; ///< proposed
    QString typeName; ///< of such files, e.g. "PDF document"
    QString suffix;   ///< without the dot; appended to a typed name without one
};

/// Asks the user where to save a file.
class SavePanel {
public:
    SavePanel() = default;
    SavePanel(const SavePanel&) = delete;
    SavePanel& operator=(const SavePanel&) = delete;
    virtual ~SavePanel() = default;

    /// Returns at once. `chosen` is called later, once, with the confirmed path, and not at all on cancel.
    virtual void ask(const SaveRequest& request, std::function<void(const QString& path)> chosen) = 0;
};

} // namespace orvanlite
