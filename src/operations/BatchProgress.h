#pragma once

#include <QString>

namespace orvanlite {

/// Shows the progress of a long batch.
class BatchProgress {
public:
    BatchProgress() = default;
    BatchProgress(const BatchProgress&) = delete;
    BatchProgress& operator=(const BatchProgress&) = delete;
    virtual ~BatchProgress() = default;

    virtual void show(const QString& label, int count) = 0;
    virtual void hide() = 0;
    /// From 0 to 1. Also called while nothing is shown.
    virtual void setProgress(double progress) = 0;
};

} // namespace orvanlite
