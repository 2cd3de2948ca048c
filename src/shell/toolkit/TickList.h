#pragma once

#include "shell/toolkit/CardView.h"

#include <QAbstractListModel>
#include <QListView>
#include <QUuid>

#include <vector>

namespace orvanlite {

/// A row with a check box.
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

    /// Rows with the same ids in the same order are updated in place; anything else resets the model.
    void setRows(std::vector<TickRow> rows);
    [[nodiscard]] const TickRow& row(int number) const { return m_rows[static_cast<std::size_t>(number)]; }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    std::vector<TickRow> m_rows;
};

/// Rows with check boxes on a card that grows up to a maximum height and then scrolls. A click anywhere on a
/// row or Space only requests the toggle; the owner then calls setRows().
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
