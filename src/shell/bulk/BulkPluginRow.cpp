#include "shell/bulk/BulkPluginRow.h"

#include "shell/toolkit/AppTheme.h"
#include "shell/toolkit/ChipButton.h"
#include "shell/toolkit/FlowLayout.h"
#include "shell/toolkit/Motion.h"
#include "shell/toolkit/ToolTips.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QToolTip>
#include <QVariantAnimation>

#include <algorithm>
#include <cmath>
#include <utility>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr int kPaddingX = 10;
constexpr int kPaddingY = 4;
constexpr int kSpacing = 8;
constexpr int kChipSpacing = 6;
constexpr int kChipLineSpacing = 4;
constexpr double kCornerRadius = 5;
/// Maximum share of the row for the chips if the name needs the rest.
constexpr double kChipsShare = 0.62;

constexpr double kHoldMilliseconds = 220;
constexpr double kFadeMilliseconds = 900;
constexpr double kHighlightOpacity = 0.45;
constexpr double kHighlightScale = 1.015;

double spring(double milliseconds) { return springAt(milliseconds / 1000, 0.25, 0.6); }

bool movesBetweenRows(int key)
{
    return key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_PageUp || key == Qt::Key_PageDown ||
           key == Qt::Key_Home || key == Qt::Key_End;
}

} // namespace

void BulkRowLayout::setFont(const QFont& font)
{
    m_font = font;
    m_chipFont = ChipButton::fontFor(ChipButton::Kind::variant, font);
    m_chipSizes.clear();
}

QSize BulkRowLayout::chipSize(const QString& label) const
{
    const auto known = m_chipSizes.constFind(label);
    if (known != m_chipSizes.constEnd())
        return *known;
    return *m_chipSizes.insert(label, ChipButton::sizeFor(ChipButton::Kind::variant, label, m_chipFont));
}

BulkRowLayout::Places BulkRowLayout::places(const ConsolidatedPlugin& plugin, int width) const
{
    std::vector<QSize> sizes;
    sizes.reserve(plugin.variants.size());
    int oneLine = 0;
    for (const FormatVariant& variant : plugin.variants) {
        sizes.push_back(chipSize(variant.badgeLabel()));
        oneLine += sizes.back().width() + (oneLine > 0 ? kChipSpacing : 0);
    }
    const QFontMetrics metrics(m_font);
    const int inner = width - 2 * kPaddingX;
    int room = static_cast<int>(inner * kChipsShare);
    // Measure the name only if needed: measuring thousands is slow.
    if (oneLine > room)
        room = std::max(room, inner - kSpacing - metrics.horizontalAdvance(plugin.name));
    const FlowLayout::Arrangement chips = FlowLayout::arrange(sizes, room, kChipSpacing, kChipLineSpacing);

    Places result;
    const int content = std::max(metrics.height(), chips.height);
    result.height = content + 2 * kPaddingY;
    result.chips = chips.places;
    int used = 0;
    for (const QRect& chip : result.chips)
        used = std::max(used, chip.x() + chip.width());
    const QPoint start(width - kPaddingX - used, kPaddingY + (content - chips.height) / 2);
    for (QRect& chip : result.chips)
        chip.translate(start);
    result.name = QRect(kPaddingX, 0, std::max(0, start.x() - kSpacing - kPaddingX), result.height);
    return result;
}

BulkPluginRow::BulkPluginRow(const BulkRowLayout& places, int number, QWidget* parent)
    : Control(parent)
    , m_layout(places)
{
    setObjectName(u"bulkRow%1"_s.arg(number));
    setCheckable(true);
    setFocusPolicy(Qt::ClickFocus);
}

void BulkPluginRow::showPlugin(const ConsolidatedPlugin& plugin, const QSet<QUuid>& activeVariants,
                               bool isMarked, bool isAnimated)
{
    const bool isOther = plugin.name != m_plugin.name;
    if (isOther)
        stopHighlight();
    m_plugin = plugin;
    setLabel(plugin.name);
    while (m_chips.size() < plugin.variants.size())
        m_chips.push_back(addChip());
    for (std::size_t i = 0; i < m_chips.size(); ++i) {
        const bool isUsed = i < plugin.variants.size();
        if (isUsed) {
            const FormatVariant& variant = plugin.variants[i];
            m_chips[i]->setLabel(variant.badgeLabel());
            m_chips[i]->setState(activeVariants.contains(variant.id) ? ChipState::active : ChipState::off,
                                 isAnimated && !isOther);
        }
        m_chips[i]->setVisible(isUsed);
    }
    placeChips();
    setChecked(isMarked);
    update();
}

ChipButton* BulkPluginRow::addChip()
{
    const std::size_t index = m_chips.size();
    auto* chip = new ChipButton(ChipButton::Kind::variant, this);
    chip->setObjectName(objectName() + u"Chip%1"_s.arg(index));
    chip->setFocusPolicy(m_isCurrent ? Qt::StrongFocus : Qt::ClickFocus);
    chip->installEventFilter(this);
    QWidget::setTabOrder(index == 0 ? static_cast<QWidget*>(this) : m_chips.back(), chip);
    connect(chip, &QAbstractButton::clicked, this, [this, index] {
        if (index < m_plugin.variants.size())
            Q_EMIT variantClicked(m_plugin.variants[index].id);
    });
    return chip;
}

QSize BulkPluginRow::sizeHint() const
{
    return {width(), m_layout.places(m_plugin, width() - 2 * kBleedX).height + 2 * kBleedY};
}

void BulkPluginRow::placeChips()
{
    m_places = m_layout.places(m_plugin, width() - 2 * kBleedX);
    const QPointF centre = QRectF(rect()).center();
    for (std::size_t i = 0; i < m_places.chips.size(); ++i) {
        QRect place = m_places.chips[i].translated(kBleedX, kBleedY);
        const QPointF grown = centre + (QRectF(place).center() - centre) * m_scale;
        place.translate(qRound(grown.x() - QRectF(place).center().x()),
                        qRound(grown.y() - QRectF(place).center().y()));
        m_chips[i]->setGeometry(place);
    }
}

void BulkPluginRow::setCurrent(bool isCurrent)
{
    if (m_isCurrent == isCurrent)
        return;
    m_isCurrent = isCurrent;
    const Qt::FocusPolicy policy = isCurrent ? Qt::StrongFocus : Qt::ClickFocus;
    setFocusPolicy(policy);
    for (ChipButton* chip : m_chips)
        chip->setFocusPolicy(policy);
}

void BulkPluginRow::highlight()
{
    if (reducesMotion(this))
        return;
    if (!m_animation) {
        constexpr double whole = kHoldMilliseconds + kFadeMilliseconds;
        m_animation = new QVariantAnimation(this);
        m_animation->setDuration(static_cast<int>(whole));
        m_animation->setStartValue(0.0);
        m_animation->setEndValue(whole);
        connect(m_animation, &QVariantAnimation::valueChanged, this,
                [this](const QVariant& value) { setHighlightTime(value.toDouble()); });
    }
    m_animation->stop();
    setHighlightTime(0);
    m_animation->start();
}

void BulkPluginRow::stopHighlight()
{
    if (m_animation)
        m_animation->stop();
    m_highlight = 0;
    m_scale = 1;
}

void BulkPluginRow::setHighlightTime(double milliseconds)
{
    const double faded = std::clamp((milliseconds - kHoldMilliseconds) / kFadeMilliseconds, 0.0, 1.0);
    m_highlight = std::pow(1 - faded, 2); // eases out
    m_scale = 1 + (kHighlightScale - 1) * (spring(milliseconds) - spring(milliseconds - kHoldMilliseconds));
    placeChips();
    update();
}

QRectF BulkPluginRow::bounds() const { return QRectF(rect()).adjusted(kBleedX, kBleedY, -kBleedX, -kBleedY); }

void BulkPluginRow::paint(QPainter& painter) const
{
    const QRectF bounds = this->bounds();
    const QPalette& colours = palette();
    painter.translate(bounds.center());
    painter.scale(m_scale, m_scale);
    painter.translate(-bounds.center());
    painter.setPen(Qt::NoPen);
    const auto fill = [&](const QColor& colour, double opacity) {
        painter.setBrush(AppTheme::withOpacity(colour, opacity));
        painter.drawRoundedRect(bounds, kCornerRadius, kCornerRadius);
    };
    if (isChecked())
        fill(AppTheme::accent(colours), AppTheme::isDark(colours) ? 0.36 : 0.2);
    if (underMouse())
        fill(AppTheme::primary(colours), 0.05);
    if (m_highlight > 0)
        fill(AppTheme::accentPink(), kHighlightOpacity * m_highlight);
    drawLine(painter, m_places.name.translated(kBleedX, kBleedY), font(), AppTheme::primary(colours),
             m_plugin.name);
}

Control::FocusRing BulkPluginRow::focusRing() const { return accentRing(bounds(), kCornerRadius); }

void BulkPluginRow::resizeEvent(QResizeEvent* event)
{
    Control::resizeEvent(event);
    placeChips();
}

void BulkPluginRow::keyPressEvent(QKeyEvent* event)
{
    if (movesBetweenRows(event->key()))
        Q_EMIT moveRequested(event->key());
    else
        Control::keyPressEvent(event);
}

bool BulkPluginRow::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip) {
        const bool isCut = fontMetrics().horizontalAdvance(m_plugin.name) > m_places.name.width();
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(),
                           isCut ? plainToolTip(m_plugin.name) : QString(), this);
        return true;
    }
    return Control::event(event);
}

void BulkPluginRow::focusInEvent(QFocusEvent* event)
{
    Control::focusInEvent(event);
    Q_EMIT focused();
}

bool BulkPluginRow::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::FocusIn)
        Q_EMIT focused();
    return Control::eventFilter(watched, event);
}

} // namespace orvanlite
