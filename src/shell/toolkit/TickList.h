#pragma once

#include "shell/toolkit/CardView.h"

#include <QAbstractListModel>
#include <QListView>
#include <QUuid>

#include <vector>

namespace orvanlite {

/// A line with a check box.
struct TickRow {
    QUuid id;
    QString name;
    QString badge;  ///< may be empty
    QString remark; ///< at the right end; may be empty
    bool isTicked = false;

    bool operator==(const TickRow&) const = default;
};

class TickListModel final : public QAbstractListModel {
    Q_OBJECT

public:
    using QAbstractListModel::QAbstractListModel;

    /// The same ids in the same order change in place; any others reset the model.
    void setRows(std::vector<TickRow> rows);
    [[nodiscard]] const TickRow& row(int number) const { return m_rows[static_cast<std::size_t>(number)]; }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    std::vector<TickRow> m_rows;
};

/// Check rows on a card that is as high as they are up to a limit, and scrolls then. A click anywhere on a row or the
/// space bar asks for its change; the owner sets the rows anew.
class TickList final : public CardView<QListView> {
    Q_OBJECT

public:
    TickList(int largestHeight, QWidget* parent);

    void setRows(std::vector<TickRow> rows);
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

Q_SIGNALS:
    void toggled(int row);

protected:
    bool event(QEvent* event) override;
    void activate(const QModelIndex& index) override { Q_EMIT toggled(index.row()); }

private:
    [[nodiscard]] int heightOf(int rows) const;

    const int m_largestHeight;
    TickListModel m_model;
};

} // namespace orvanlite
