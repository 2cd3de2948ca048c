#pragma once

#include "shell/toolkit/CardView.h"

#include <QAbstractTableModel>
#include <QSet>
#include <QStringList>
#include <QTableView>

namespace orvanlite {

enum class ManufacturerColumn { name, website };
inline constexpr int kManufacturerColumnCount = 2;

/// The manufacturers to filter by, each with its selection state and a link to its website.
class ManufacturerTableModel final : public QAbstractTableModel {
    Q_OBJECT

public:
    using QAbstractTableModel::QAbstractTableModel;

    /// `marked` are the selected names. Unchanged names are updated in place; otherwise the model is reset.
    void setManufacturers(const QStringList& names, const QSet<QString>& marked);
    [[nodiscard]] const QStringList& names() const { return m_names; }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    QStringList m_names;
    QSet<QString> m_marked;
};

/// The manufacturers as a list as high as its rows, up to a limit; beyond that it scrolls.
///
/// Keys: Up and Down move between rows, Left and Right between name and link; Space acts like a click, Return
/// opens the link.
class ManufacturerTable final : public CardView<QTableView> {
    Q_OBJECT

public:
    ManufacturerTable(int greatestHeight, QWidget* parent);

    /// Keeps scroll position and current row if possible.
    void setManufacturers(const QStringList& names, const QSet<QString>& marked);

    /// The cell under the pointer.
    [[nodiscard]] const QPersistentModelIndex& hovered() const { return m_hovered; }
    [[nodiscard]] bool isPressed(const QModelIndex& index) const;

Q_SIGNALS:
    void nameActivated(const QString& name);
    void linkActivated(const QString& name);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void activate(const QModelIndex& index) override;

private:
    void hover(const QModelIndex& index);
    void fitHeight();

    ManufacturerTableModel* m_model;
    int m_greatestHeight;
    QPersistentModelIndex m_hovered;
    QPersistentModelIndex m_pressed;
};

} // namespace orvanlite
