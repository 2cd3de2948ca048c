#pragma once

#include <QHash>
#include <QStyledItemDelegate>
#include <QUuid>

class QVariantAnimation;

namespace orvanlite {

class PluginTableModel;
enum class PluginCell;
struct PluginColumnRow;

/// Draws the cells of the plugin table (switch, manufacturer link, format badge and plain text) on the
/// rounded background of the row.
class PluginTableDelegate final : public QStyledItemDelegate {
    Q_OBJECT

public:
    PluginTableDelegate(const PluginTableModel& model, QObject* parent);

    /// Animates the switch of the row to its new state.
    void animateSwitch(const QUuid& id, bool isEnabled);

    /// Clickable area of the link in a manufacturer cell.
    [[nodiscard]] QRect linkRect(const QRect& cell, const QModelIndex& index, const QFont& font) const;
    [[nodiscard]] static int rowHeight(const QFontMetrics& metrics);
    /// Clickable area of the switch in a status cell.
    [[nodiscard]] static QRect switchRect(const QRect& cell);

    /// Minimum width for the usual text of the column in this font.
    [[nodiscard]] int leastWidth(const PluginColumnRow& column, const QFont& font) const;

    void setHoveredLink(const QModelIndex& index) { m_hoveredLink = index; }
    [[nodiscard]] bool showsFocus() const { return m_showsFocus; }
    void setShowsFocus(bool shows) { m_showsFocus = shows; }

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                     const QModelIndex& index) override;
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

Q_SIGNALS:
    void needsRepaint();
    void linkActivated(const QModelIndex& index);

private:
    [[nodiscard]] int widthFor(PluginCell cell, const QString& text, const QFont& font) const;
    void paintGround(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index) const;
    void paintPreviewStatus(QPainter& painter, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const;
    void paintSwitch(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index) const;
    void paintLink(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index) const;
    void paintBadge(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index) const;
    void paintText(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index) const;

    const PluginTableModel& m_model;
    bool m_showsFocus = true;
    /// Positions of switches being animated: 0 is off, 1 is on.
    QHash<QUuid, double> m_switchPositions;
    QPersistentModelIndex m_hoveredLink;
};

} // namespace orvanlite
