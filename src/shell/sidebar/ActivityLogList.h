#pragma once

#include "records/ActivityLogEntry.h"
#include "shell/toolkit/CardView.h"

#include <QAbstractListModel>
#include <QListView>

#include <vector>

namespace orvanlite::platform {
class Clock;
}

namespace orvanlite {

/// The lines of the activity log.
class ActivityLogModel final : public QAbstractListModel {
    Q_OBJECT

public:
    enum Role { TimeAgoRole = Qt::UserRole };

    ActivityLogModel(const platform::Clock& clock, QObject* parent);

    /// Inserts entries added at the top and removes those dropped from the end; otherwise resets the model.
    void setEntries(const std::vector<ActivityLogEntry>& entries);
    [[nodiscard]] const ActivityLogEntry& entry(int row) const
    {
        return m_entries[static_cast<std::size_t>(row)];
    }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

private:
    const platform::Clock& m_clock;
    std::vector<ActivityLogEntry> m_entries;
};

/// The activity log as a list as high as its rows if there is space; otherwise it scrolls.
class ActivityLogList final : public CardView<QListView> {
    Q_OBJECT

public:
    ActivityLogList(const platform::Clock& clock, QWidget* parent);

    void setEntries(const std::vector<ActivityLogEntry>& entries);
    [[nodiscard]] const ActivityLogModel& entries() const { return *m_model; }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

private:
    [[nodiscard]] int rowHeight() const;

    ActivityLogModel* m_model;
};

} // namespace orvanlite
