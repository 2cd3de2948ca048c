#pragma once

#include "operations/BulkAction.h"

#include <QWidget>

#include <utility>
#include <vector>

namespace orvanlite {

class SidebarButton;
struct PluginFilter;

/// The three actions on everything that the filters match. It starts none: it tells which one was asked for.
class SidebarActions final : public QWidget {
    Q_OBJECT

public:
    explicit SidebarActions(QWidget* parent);

    /// Names the buttons by what they would act on.
    void setFilter(const PluginFilter& filter);

Q_SIGNALS:
    void requested(orvanlite::BulkAction action);

private:
    std::vector<std::pair<BulkAction, SidebarButton*>> m_buttons;
};

} // namespace orvanlite
