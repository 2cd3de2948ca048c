#pragma once

#include "shell/toolkit/CardView.h"

#include <QAbstractTableModel>
#include <QSet>
#include <QStringList>
#include <QTableView>

namespace orvanlite {

enum class ManufacturerColumn { name, website };
inline constexpr int kManufacturerColumnCount = 2;

/// The makers to filter by: each with its mark, and the link to its site.
class ManufacturerTableModel final : public QAbstractTableModel {
    Q_OBJECT

public:
    using QAbstractTableModel::QAbstractTableModel;

    /// Takes over names and marks. The same names change in place; any others reset the model.
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

/// The makers as a list that is as high as its rows, up to a limit, and scrolls from there on. Only rows in view cost
/// anything.
///
/// Keys: up and down go through the rows, left and right between name and link; Space does what a click there does,
/// Return opens the link.
class ManufacturerTable final : public CardView<QTableView> {
    Q_OBJECT

public:
    ManufacturerTable(int greatestHeight, QWidget* parent);

    /// Scroll position and current row stay where they are as far as the new names allow.
    void setManufacturers(const QStringList& names, const QSet<QString>& marked);

    /// Where the pointer or the keyboard is, for the painting.
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
