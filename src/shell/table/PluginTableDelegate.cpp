#include "shell/table/PluginTableDelegate.h"

#include "shell/table/PluginTableModel.h"
#include "shell/toolkit/AppTheme.h"
#include "shell/toolkit/Icons.h"
#include "shell/toolkit/Motion.h"
#include "shell/toolkit/SwitchPainting.h"

#include <QHeaderView>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QTableView>
#include <QToolTip>
#include <QVariantAnimation>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr int kRowHeight = 34;
constexpr int kRowPadding = 12;
constexpr int kCellPadding = 10;
constexpr int kRowInset = 6;
constexpr double kRowRadius = 6;

constexpr int kLinkIconSize = 12;
constexpr int kLinkSpacing = 3;
constexpr int kBadgeIconSize = 13;
constexpr int kBadgePaddingX = 7;
constexpr int kBadgePaddingY = 3;
constexpr int kStatusPaddingX = 6;

PluginCell cellOf(const QModelIndex& index) { return pluginColumn(index.column()).cell; }

QString textOf(const QModelIndex& index) { return index.data(Qt::DisplayRole).toString(); }

QRect contentRect(const QRect& cell) { return cell.adjusted(kCellPadding, 0, -kCellPadding, 0); }

PreviewState previewOf(const QModelIndex& index)
{
    return static_cast<PreviewState>(index.data(PluginTableModel::PreviewRole).toInt());
}

/// Whether the previewed profile would change the state of the plugin.
bool isChanged(const QModelIndex& index)
{
    const PreviewState state = previewOf(index);
    return state == PreviewState::willEnable || state == PreviewState::willDisable;
}

QColor changedText(const QPalette& colours) { return AppTheme::legible(AppTheme::orange(colours), colours); }

/// Colours of the status badge in a preview.
struct PreviewLook {
    QColor foreground; ///< icon and text
    QColor background;
};

PreviewLook previewLook(PreviewState state, const QPalette& colours)
{
    switch (state) {
    case PreviewState::staysEnabled:
        return {AppTheme::legible(AppTheme::green(colours), colours),
                AppTheme::withOpacity(AppTheme::green(colours), 0.08)};
    case PreviewState::staysDisabled:
        return {AppTheme::withOpacity(AppTheme::legible(AppTheme::red(colours), colours), 0.7),
                AppTheme::withOpacity(AppTheme::red(colours), 0.06)};
    default:
        return {changedText(colours), AppTheme::withOpacity(AppTheme::orange(colours), 0.15)};
    }
}

QFont smallFont(const QFont& font) { return AppTheme::scaled(font, AppTheme::kCaption); }

/// Semibold, so that it is legible in the faded colour of a plugin that stays disabled.
QFont statusFont(const QFont& font) { return AppTheme::semibold(font, AppTheme::kCaption); }

} // namespace

PluginTableDelegate::PluginTableDelegate(const PluginTableModel& model, QObject* parent)
    : QStyledItemDelegate(parent)
    , m_model(model)
{}

void PluginTableDelegate::animateSwitch(const QUuid& id, bool isEnabled)
{
    if (reducesMotion(static_cast<const QWidget*>(parent())))
        return;
    const double from = m_switchPositions.value(id, isEnabled ? 0 : 1);
    m_switchPositions.insert(id, from);
    auto* slide = new QVariantAnimation(this);
    slide->setDuration(kSwitchMilliseconds);
    slide->setEasingCurve(QEasingCurve::InOutQuad);
    slide->setStartValue(from);
    slide->setEndValue(isEnabled ? 1.0 : 0.0);
    connect(slide, &QVariantAnimation::valueChanged, this, [this, id](const QVariant& value) {
        m_switchPositions.insert(id, value.toDouble());
        Q_EMIT needsRepaint();
    });
    connect(slide, &QVariantAnimation::finished, this, [this, id] {
        m_switchPositions.remove(id);
        Q_EMIT needsRepaint();
    });
    slide->start(QAbstractAnimation::DeleteWhenStopped);
}

int PluginTableDelegate::rowHeight(const QFontMetrics& metrics)
{
    return std::max(kRowHeight, metrics.height() + kRowPadding);
}

QRect PluginTableDelegate::switchRect(const QRect& cell)
{
    const QRect content = contentRect(cell);
    return {QPoint(content.left(), content.center().y() - kSwitchSize.height() / 2 + 1), kSwitchSize};
}

QRect PluginTableDelegate::linkRect(const QRect& cell, const QModelIndex& index, const QFont& font) const
{
    if (cellOf(index) != PluginCell::link || m_model.isPreview() ||
        index.data(PluginTableModel::IsFadedRole).toBool())
        return {};
    const QFontMetrics metrics(font);
    QRect rect = contentRect(cell);
    // One extra pixel: the advance is rounded, and a text that is a fraction too wide would be elided.
    const int wanted = metrics.horizontalAdvance(textOf(index)) + 1 + kLinkSpacing + kLinkIconSize;
    rect.setWidth(std::min(rect.width(), wanted));
    const int height = metrics.height() + 2 * kBadgePaddingY;
    rect.setTop(rect.center().y() - height / 2);
    rect.setHeight(height);
    return rect;
}

void PluginTableDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                const QModelIndex& index) const
{
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setClipRect(cell.rect);
    paintGround(*painter, cell, index);
    switch (cellOf(index)) {
    case PluginCell::status:
        if (previewOf(index) == PreviewState::none)
            paintSwitch(*painter, cell, index);
        else
            paintPreviewStatus(*painter, cell, index);
        break;
    case PluginCell::link:
        paintLink(*painter, cell, index);
        break;
    case PluginCell::badge:
        paintBadge(*painter, cell, index);
        break;
    default:
        paintText(*painter, cell, index);
    }
    painter->restore();
}

void PluginTableDelegate::paintGround(QPainter& painter, const QStyleOptionViewItem& option,
                                      const QModelIndex& index) const
{
    const auto* table = qobject_cast<const QTableView*>(option.widget);
    if (!table)
        return;
    // One rounded rectangle spans the whole row; each cell paints its part.
    const QHeaderView& header = *table->horizontalHeader();
    const QRectF row(kRowInset - header.offset(), option.rect.top() + 1,
                     std::max(header.length(), table->viewport()->width()) - 2 * kRowInset,
                     option.rect.height() - 2);
    painter.setPen(Qt::NoPen);
    if (option.state & QStyle::State_Selected) {
        painter.setBrush(
            AppTheme::withOpacity(AppTheme::accent(option.palette), table->hasFocus() ? 0.26 : 0.16));
        painter.drawRoundedRect(row, kRowRadius, kRowRadius);
    } else if (index.row() % 2 == 1) {
        painter.setBrush(AppTheme::bgSurface(option.palette));
        painter.drawRoundedRect(row, kRowRadius, kRowRadius);
    }
    if (m_showsFocus && table->hasFocus() && table->currentIndex().row() == index.row()) {
        painter.setPen(QPen(AppTheme::accent(option.palette), 1.5));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(row.adjusted(0.75, 0.75, -0.75, -0.75), kRowRadius, kRowRadius);
        if (table->currentIndex() == index && cellOf(index) == PluginCell::link) {
            // Return opens the link: show which cell it applies to.
            const QRectF link = QRectF(linkRect(option.rect, index, option.font)).adjusted(-4, 0, 4, 0);
            if (link.isValid())
                painter.drawRoundedRect(link, 4, 4);
        }
    }
}

void PluginTableDelegate::paintPreviewStatus(QPainter& painter, const QStyleOptionViewItem& option,
                                             const QModelIndex& index) const
{
    const PreviewLook look = previewLook(previewOf(index), option.palette);
    const QFont font = statusFont(option.font);
    const QFontMetrics metrics(font);
    const QString text = textOf(index);
    QRectF badge = contentRect(option.rect);
    const int wanted =
        metrics.horizontalAdvance(text) + 1 + kBadgeIconSize + kLinkSpacing + 2 * kStatusPaddingX;
    badge.setWidth(std::min<double>(badge.width(), wanted));
    const double height = metrics.height() + 2 * kBadgePaddingY;
    badge.setTop(option.rect.center().y() - height / 2 + 0.5);
    badge.setHeight(height);
    painter.setPen(Qt::NoPen);
    painter.setBrush(look.background);
    painter.drawRoundedRect(badge, 4, 4);
    const QRectF icon(badge.left() + kStatusPaddingX, badge.center().y() - kBadgeIconSize / 2.0,
                      kBadgeIconSize, kBadgeIconSize);
    drawIcon(painter, icon, index.data(PluginTableModel::IconRole).toString(), look.foreground);
    QRectF label = badge.adjusted(0, 0, -kStatusPaddingX + 1, 0);
    label.setLeft(icon.right() + kLinkSpacing);
    painter.setFont(font);
    painter.setPen(look.foreground);
    painter.drawText(label, Qt::AlignLeft | Qt::AlignVCenter,
                     metrics.elidedText(text, Qt::ElideRight, static_cast<int>(label.width())));
}

void PluginTableDelegate::paintSwitch(QPainter& painter, const QStyleOptionViewItem& option,
                                      const QModelIndex& index) const
{
    const AudioPlugin& plugin = m_model.plugin(index.row());
    const double position = m_switchPositions.value(plugin.id, plugin.isEnabled ? 1 : 0);
    drawSwitch(painter, switchRect(option.rect), position, option.palette);
}

void PluginTableDelegate::paintLink(QPainter& painter, const QStyleOptionViewItem& option,
                                    const QModelIndex& index) const
{
    if (m_model.isPreview() || index.data(PluginTableModel::IsFadedRole).toBool()) {
        paintText(painter, option, index);
        return;
    }
    const QRect link = linkRect(option.rect, index, option.font);
    const bool isHovered = m_hoveredLink == index;
    QFont font = option.font;
    font.setUnderline(isHovered);
    // The accent colour is illegible on the background of a selected row.
    const bool isSelected = option.state & QStyle::State_Selected;
    const QColor colour =
        isHovered && !isSelected ? AppTheme::accent(option.palette) : AppTheme::primary(option.palette);
    // As high as the cell, so that the text aligns with its neighbours.
    const QRect label(link.left(), option.rect.top(), link.width() - kLinkSpacing - kLinkIconSize,
                      option.rect.height());
    painter.setFont(font);
    painter.setPen(colour);
    painter.drawText(label, Qt::AlignLeft | Qt::AlignVCenter,
                     option.fontMetrics.elidedText(textOf(index), Qt::ElideRight, label.width()));
    const QRectF icon(link.right() - kLinkIconSize + 1, link.center().y() - kLinkIconSize / 2.0,
                      kLinkIconSize, kLinkIconSize);
    drawIcon(painter, icon, u"arrow.up.right"_s,
             isHovered ? colour : AppTheme::withOpacity(AppTheme::secondary(option.palette), 0.8));
}

void PluginTableDelegate::paintBadge(QPainter& painter, const QStyleOptionViewItem& option,
                                     const QModelIndex& index) const
{
    const QFont font = smallFont(option.font);
    const QFontMetrics metrics(font);
    const QString text = textOf(index);
    QRectF badge = contentRect(option.rect);
    const int wanted =
        metrics.horizontalAdvance(text) + 1 + kBadgeIconSize + kLinkSpacing + 1 + 2 * kBadgePaddingX;
    badge.setWidth(std::min<double>(badge.width(), wanted));
    const double height = metrics.height() + 2 * kBadgePaddingY;
    badge.setTop(option.rect.center().y() - height / 2 + 0.5);
    badge.setHeight(height);

    const bool isMoved = isChanged(index);
    const QColor colour = isMoved ? changedText(option.palette) : AppTheme::primary(option.palette);
    painter.setPen(Qt::NoPen);
    painter.setBrush(isMoved ? AppTheme::withOpacity(AppTheme::orange(option.palette), 0.15)
                             : AppTheme::withOpacity(AppTheme::accent(option.palette), 0.1));
    painter.drawRoundedRect(badge, 4, 4);
    const QRectF icon(badge.left() + kBadgePaddingX, badge.center().y() - kBadgeIconSize / 2.0,
                      kBadgeIconSize, kBadgeIconSize);
    drawIcon(painter, icon, index.data(PluginTableModel::IconRole).toString(), colour);
    QRectF label = badge.adjusted(0, 0, -kBadgePaddingX + 1, 0);
    label.setLeft(icon.right() + kLinkSpacing + 1);
    painter.setFont(font);
    painter.setPen(colour);
    painter.drawText(label, Qt::AlignLeft | Qt::AlignVCenter,
                     metrics.elidedText(text, Qt::ElideRight, static_cast<int>(label.width())));
}

void PluginTableDelegate::paintText(QPainter& painter, const QStyleOptionViewItem& option,
                                    const QModelIndex& index) const
{
    QFont font = option.font;
    QColor colour = AppTheme::secondary(option.palette);
    switch (cellOf(index)) {
    case PluginCell::title:
        font.setWeight(QFont::Medium);
        if (previewOf(index) != PreviewState::staysDisabled)
            colour = AppTheme::primary(option.palette);
        break;
    case PluginCell::link:
        if (!index.data(PluginTableModel::IsFadedRole).toBool())
            colour = AppTheme::primary(option.palette);
        break;
    case PluginCell::caption:
        font = smallFont(font);
        if (index.data(PluginTableModel::IsFadedRole).toBool())
            colour = AppTheme::withOpacity(colour, 0.5);
        break;
    default:
        break;
    }
    const QRect content = contentRect(option.rect);
    if (isChanged(index)) {
        colour = changedText(option.palette);
        painter.setPen(Qt::NoPen);
        painter.setBrush(AppTheme::withOpacity(AppTheme::orange(option.palette), 0.12));
        painter.drawRoundedRect(QRectF(option.rect).adjusted(3, 4, -3, -4), 4, 4);
    }
    painter.setFont(font);
    painter.setPen(colour);
    painter.drawText(content, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                     QFontMetrics(font).elidedText(textOf(index), Qt::ElideRight, content.width()));
}

QSize PluginTableDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    return {widthFor(cellOf(index), textOf(index), option.font), rowHeight(option.fontMetrics)};
}

int PluginTableDelegate::widthFor(PluginCell cell, const QString& text, const QFont& font) const
{
    const auto needs = [&text](const QFont& each) { return QFontMetrics(each).horizontalAdvance(text) + 1; };
    switch (cell) {
    case PluginCell::status:
        return 2 * kCellPadding + (m_model.isPreview() ? needs(statusFont(font)) + kBadgeIconSize +
                                                             kLinkSpacing + 2 * kStatusPaddingX
                                                       : kSwitchSize.width());
    case PluginCell::link:
        return needs(font) + 2 * kCellPadding + kLinkSpacing + kLinkIconSize;
    case PluginCell::badge:
        return needs(smallFont(font)) + 2 * kCellPadding + kBadgeIconSize + kLinkSpacing + 1 +
               2 * kBadgePaddingX;
    default:
        return needs(font) + 2 * kCellPadding;
    }
}

int PluginTableDelegate::leastWidth(const PluginColumnRow& column, const QFont& font) const
{
    return column.usualText.isEmpty() ? column.leastCharacters * QFontMetrics(font).averageCharWidth()
                                      : widthFor(column.cell, column.usualText.toString(), font);
}

bool PluginTableDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                                    const QStyleOptionViewItem& option, const QModelIndex& index)
{
    // The tooltip of a manufacturer cell describes its link, which may be narrower than the cell.
    if (index.isValid() && cellOf(index) == PluginCell::link &&
        !linkRect(option.rect, index, view->font()).contains(event->pos())) {
        QToolTip::hideText();
        return true;
    }
    return QStyledItemDelegate::helpEvent(event, view, option, index);
}

bool PluginTableDelegate::editorEvent(QEvent* event, QAbstractItemModel* model,
                                      const QStyleOptionViewItem& option, const QModelIndex& index)
{
    if (event->type() != QEvent::MouseButtonRelease)
        return false;
    const auto* mouse = static_cast<QMouseEvent*>(event);
    if (mouse->button() != Qt::LeftButton)
        return false;
    const QPoint position = mouse->position().toPoint();
    if (cellOf(index) == PluginCell::status && switchRect(option.rect).contains(position)) {
        const bool isOn = index.data(Qt::CheckStateRole).toInt() == Qt::Checked;
        return model->setData(index, isOn ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
    }
    if (linkRect(option.rect, index, option.font).contains(position)) {
        Q_EMIT linkActivated(index);
        return true;
    }
    return false;
}

} // namespace orvanlite
