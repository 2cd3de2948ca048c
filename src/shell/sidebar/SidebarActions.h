#pragma once

#include "operations/BulkAction.h"

#include <QWidget>

#include <utility>
#include <vector>

namespace orvanlite {

class SidebarButton;
struct PluginFilter;

/// Buttons for the three actions on all filtered plugins. Starts no action itself: it reports requests.
class SidebarActions final : public QWidget {
    Q_OBJECT

public:
    explicit SidebarActions(QWidget* parent);

    /// Updates the labels, which name what the buttons would act on.
    void setFilter(const PluginFilter& filter);

Q_SIGNALS:
    void requested(orvanlite::BulkAction action);

private:
    std::vector<std::pair<BulkAction, SidebarButton*>> m_buttons;
};

} // namespace orvanlite
