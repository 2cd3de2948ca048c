#pragma once

#include "shell/toolkit/CardView.h"
#include "uad/UADPluginAuth.h"

#include <QAbstractListModel>
#include <QColor>
#include <QListView>

#include <functional>
#include <vector>

namespace orvanlite {

class UADCleanupManager;

/// The demos, grouped under section headings.
class UADPluginListModel final : public QAbstractListModel {
    Q_OBJECT

public:
    using Colour = std::function<QColor(const QPalette&)>;

    /// A heading, or an entry below one. Plugins already disabled cannot be selected.
    struct Row {
        QString heading; ///< empty for an entry
        QString iconKey;
        Colour colour;
        UADPluginAuth entry;
    };

    using QAbstractListModel::QAbstractListModel;

    /// Unchanged entries are updated in place; otherwise the model is reset.
    void show(const UADCleanupManager& cleanup);
    [[nodiscard]] const Row& row(int number) const { return m_rows[static_cast<std::size_t>(number)]; }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    std::vector<Row> m_rows;
};

/// A click anywhere on a row, or Space, selects or deselects it.
class UADPluginList final : public CardView<QListView> {
    Q_OBJECT

public:
    UADPluginList(UADPluginListModel& model, QWidget* parent);

Q_SIGNALS:
    void toggled(const QUuid& id);

protected:
    void activate(const QModelIndex& index) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    /// Skips the heading in the first row.
    [[nodiscard]] QModelIndex firstIndex() const override { return m_model.index(1); }

private:
    UADPluginListModel& m_model;
};

} // namespace orvanlite
